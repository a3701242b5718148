// An item as the searches answer it: by its three keys, which stay good whatever host code does meanwhile.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace orvane {

struct FoundItem {
    std::int32_t datID = -1;  ///< -1 for nothing found; an ID below 0 reads the same
    FixedText<kMaxCode> code;
    std::int32_t meshNo = 0;

    bool Found() const { return datID > -1; }
};

}  // namespace orvane
