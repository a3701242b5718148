// The import as every host calls it: names into code page 932, and its summary in words.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "control/ctrl.h"
#include "foreign/import.h"

namespace orvane {

/// ImportVector into the control's store, with the hosts' converter.
ImportResult ImportMap(COrvane4Ctrl& ctrl, std::span<const std::string> sources, ImportOptions options);

/// The layers as a table, what was left out, and where the data lies. UTF-8, lines ending in '\n'.
std::string SummaryText(const ImportSummary& summary);
/// What was left out, one line each; empty when nothing was.
std::vector<std::string> LeftOutLines(const LeftOut& leftOut);

}  // namespace orvane
