// The file access that the hosts of this system give to the control.
#pragma once

#include "platform/cp932.h"
#include "platform/files_std.h"

namespace orvane {

/// Names go between code page 932 and UTF-8, which the systems here use for theirs.
class HostFiles : public StdFiles {
public:
    HostFiles() {
        toSystem = DecodeCp932;
        toHost = EncodeCp932;
    }
};

}  // namespace orvane
