// The import that several commands begin with: its options, its progress and what it tells.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "control/ctrl.h"
#include "hosts/cli/command.h"

namespace orvane {

struct ImportArgs {
    std::optional<int> zone;
    std::optional<int> assumeEpsg;
    std::string byField;
    std::string frame = "plane";
    bool keepDatum = false;
};

/// Binds the import's options to `args`, which must outlive the command.
void AddImportOptions(CLI::App& command, ImportArgs& args);
/// Imports into the control's store and tells on the console what became of it. kDone and kPartly have stored something.
Status ImportAndTell(COrvane4Ctrl& ctrl, std::span<const std::string> sources, const ImportArgs& args);

}  // namespace orvane
