// The export as every host calls it: names out of code page 932, and its summary in words.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "foreign/export.h"

namespace orvane {

/// ExportVector with the hosts' converter; `layers` are codes in UTF-8, which take the place of those of the options.
ExportResult ExportMap(CDigMem& store, std::span<const std::string> layers, ExportOptions options);

/// The layers with their files, and what was left out. UTF-8, lines ending in '\n'.
std::string SummaryText(const ExportSummary& summary);
/// What was left out, one line each; empty when nothing was.
std::vector<std::string> LeftOutLines(const ExportLeftOut& leftOut);
/// "GeoPackage, GeoJSON, ..." in one line.
std::string ExportFormatNames();

}  // namespace orvane
