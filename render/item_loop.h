// The walk over a block's items that every block routine makes.
#pragma once

#include <cstddef>

#include "render/item_gate.h"

namespace orvane {

/// Asks for the points of an item before their turn comes. Each item's points are an allocation of their own, so no processor
/// foresees them, and waiting for them would cost a frame more than carrying them to the device does.
inline void FetchPoints(const DigDat& dat) {
    constexpr std::size_t kLine_bytes = 64;
    constexpr std::size_t kMost_bytes = 8 * kLine_bytes;
    const char* const at = reinterpret_cast<const char*>(dat.pnts.Get());
    const std::size_t all = dat.pntCnt > 0 ? static_cast<std::size_t>(dat.pntCnt) * sizeof(DigPnt) : 0;
    const std::size_t size = all < kMost_bytes ? all : kMost_bytes;
    for (std::size_t i = 0; i < size; i += kLine_bytes) __builtin_prefetch(at + i);
}

/// Calls `draw` with each item that passes the gate, from the first to the last.
template <class Draw>
void ForEachShownItem(DigBlock& block, std::int32_t lineTagMode, bool honourClip, Draw draw) {
    constexpr std::size_t kAhead = 8;
    const std::size_t count = block.dats.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i + kAhead < count) FetchPoints(block.dats[i + kAhead]);
        DigDat& dat = block.dats[i];
        if (PassesGate(dat, lineTagMode, honourClip)) draw(dat);
    }
}

/// Calls `draw` with each item that has a text, from the first to the last.
template <class Draw>
void ForEachTextItem(DigBlock& block, Draw draw) {
    constexpr std::size_t kAhead = 8;
    constexpr std::size_t kLine_bytes = 64;
    const std::size_t count = block.dats.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i + kAhead < count) {
            const char* const at = reinterpret_cast<const char*>(block.dats[i + kAhead].str.get());
            const std::size_t size = at != nullptr ? sizeof(DigStr) : 0;
            for (std::size_t part = 0; part < size; part += kLine_bytes) __builtin_prefetch(at + part);
        }
        DigDat& dat = block.dats[i];
        if (dat.str != nullptr) draw(dat);
    }
}

}  // namespace orvane
