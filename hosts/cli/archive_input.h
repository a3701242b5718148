// The archive that a command begins with.
#pragma once

#include <string>

#include "hosts/cli/command.h"
#include "store/cdigmem.h"

namespace orvane {

/// Reads the archive of that name, given as the system's own bytes, into an initialised store, with progress; tells on the console
/// when it cannot. A name without a data file's extension is that of the binary archive or, where there is none, of the text one.
Status ReadArchiveAndTell(CDigMem& store, const std::string& name);

}  // namespace orvane
