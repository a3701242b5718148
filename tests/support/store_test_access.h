// Lets tests bring a store into states that no operation makes.
#pragma once

#include <cstdint>

#include "store/cdigmem.h"

namespace orvane {

struct StoreTestAccess {
    /// Empties the block field of one index slot. False when there is no memory.
    static bool BreakSlot(CDigMem& store, std::int32_t pos) {
        StoreKeys& keys = store.keys_;
        if (!keys.ReserveOrphan()) return false;
        keys.GoPlain();
        keys.plain_.slots_[static_cast<std::size_t>(pos)].block = -1;
        keys.plain_.Changed();
        return true;
    }
};

}  // namespace orvane
