// What the targets of the archive's files share: an input is one byte of choice and then a file.
#pragma once

#include "files/archive.h"
#include "files/archive_parts.h"
#include "fuzz/one_file.h"
#include "store/mesh_size.h"

namespace orvane {

struct ArchiveInput {
    ArchiveInput(const std::uint8_t* data, std::size_t size)
        : choice(size > 0 ? data[0] : 0), size_bytes(size > 0 ? size - 1 : 0), files(data + (size > 0 ? 1 : 0), size_bytes) {}

    bool Is110() const { return (choice & 1) != 0; }

    std::uint8_t choice;
    std::size_t size_bytes;
    OneFile files;
};

/// An empty store with the layers "A" and "M".
inline void StartStore(CDigMem& store) {
    store.Init();
    Require(store.MakeLayer("A", kLayLine) && store.MakeLayer("M", kLayMesh));
}

/// What everybody who walks the store relies on; and a file of `size` bytes cannot have brought more than so much.
inline void CheckStore(CDigMem& store, std::size_t size) {
    std::size_t points = 0;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        Require(static_cast<std::size_t>(block.datCnt) == block.dats.size() && block.datMax >= block.datCnt);
        for (const DigDat& dat : block.dats) {
            Require(dat.pntCnt >= 0 && (dat.pntCnt == 0) == !dat.pnts);
            points += static_cast<std::size_t>(dat.pntCnt);
            if (dat.meshAttr == nullptr) continue;
            Require(MeshSize(*dat.meshAttr) <= static_cast<std::size_t>(dat.pntCnt));
            Require((dat.pntCnt == 0) == !dat.meshAttr->useFlag && (dat.pntCnt == 0) == !dat.meshAttr->meshColor);
        }
    }
    Require(points <= size / 7 + 1);
    Require(store.GetDigIndexCnt() == store.BlockCnt());
}

}  // namespace orvane
