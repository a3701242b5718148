// The walk over the store that both forms of a save have in common, and what both do to numbers.
#pragma once

#include <algorithm>
#include <cstdint>

#include "files/archive_parts.h"

namespace orvane {

/// What an archive keeps of a number in one signed byte.
inline std::int8_t LowByte(std::int32_t value) { return static_cast<std::int8_t>(value); }

/// How many of `count` grid entries the arrays hold.
inline std::size_t HeldEntries(const DigMeshAttr& mesh, std::size_t count) {
    if (!mesh.useFlag || !mesh.meshColor || mesh.arrayCnt < 0) return 0;
    return (std::min)(count, static_cast<std::size_t>(mesh.arrayCnt));
}

/// Hands `writer` every block in use (WriteBlock) and every item of it (WriteItem), in the order of the tables, and counts both.
/// True when there was a block; false also when the sink failed or the host cancelled or changed the blocks.
template <class Writer>
bool WriteItems(const CDigMem& store, IdxTables& tables, ArcWatch& watch, const PackedSink& sink, Writer& writer) {
    std::int64_t total = 0;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        if (store.Block(i).blkState == 1) total += store.Block(i).datCnt;
    }
    writer.Begin();
    const std::int32_t blockCnt = store.BlockCnt();
    for (std::int32_t i = 0; i < blockCnt; ++i) {
        if (store.Block(i).blkState != 1) continue;
        const std::int32_t datCnt = store.Block(i).datCnt;
        const std::int32_t first = tables.nItems;
        ++tables.nBlocks;
        tables.nItems = static_cast<std::int32_t>(static_cast<std::uint32_t>(first) + static_cast<std::uint32_t>(datCnt));
        writer.WriteBlock(store.Block(i), first);
        for (std::int32_t k = 0; k < datCnt; ++k) {
            writer.WriteItem(store.Block(i), store.Block(i).dats[static_cast<std::size_t>(k)]);
            if (!sink.Good()) return false;
            const auto done = [&] { return static_cast<double>(std::int64_t{first} + k + 1) / static_cast<double>(total); };
            bool asked = false;
            if (!watch.GoesOn(done, asked)) return false;
            const bool isSame = store.BlockCnt() == blockCnt && store.Block(i).blkState == 1 && store.Block(i).datCnt == datCnt;
            if (asked && !isSame) return false;
        }
    }
    return tables.nBlocks > 0;
}

}  // namespace orvane
