// The steps that commands take with archives: progress on the console, and what came of them told there.
#pragma once

#include <string>

#include "hosts/cli/command.h"
#include "hosts/common/archive_save.h"
#include "store/cdigmem.h"

namespace orvane {

/// Tells, with true, that a name is not that of an archive.
bool RefusesName(const std::string& path);
/// Reads an archive into the store. kDone; kPartly when something is wrong with it, though it was read as far as it goes;
/// kNotRead. `report`, where given, gets what a look through its files found.
Status OpenAndTell(CDigMem& store, const std::string& path, ArcReport* report = nullptr);
/// Tells, with true, that `what`, which is a part only, is not written because an archive stands at `output`.
bool RefusesPlace(const std::string& output, const std::string& what);
/// Saves the store; kDone or kNotWritten.
Status SaveAndTell(CDigMem& store, const std::string& path, const std::string& version);

}  // namespace orvane
