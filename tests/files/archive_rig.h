// Archives made byte by byte from their tables, without the code that is tested.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "files/archive.h"
#include "files/archive_parts.h"
#include "tests/support/store_dump.h"
#include "tests/support/writable_files.h"

namespace orvane {

/// A packed record, grown field by field.
struct Packed {
    std::string bytes;

    Packed& Raw(std::uint64_t bits, int size) {
        for (int i = 0; i < size; ++i, bits /= 256) bytes.push_back(static_cast<char>(bits % 256));
        return *this;
    }
    Packed& I4(std::int64_t v) { return Raw(static_cast<std::uint64_t>(v), 4); }
    Packed& U1(int v) { return Raw(static_cast<std::uint64_t>(v), 1); }
    Packed& R8(double v) {
        std::uint64_t bits = 0;
        static_assert(sizeof bits == sizeof v);
        std::memcpy(&bits, &v, sizeof v);
        return Raw(bits, 8);
    }
    Packed& Text(std::string_view text, std::size_t size) {
        bytes += text;
        bytes.append(size - text.size(), '\0');
        return *this;
    }
    Packed& Add(std::string_view more) {
        bytes += more;
        return *this;
    }
};

inline std::string Header(std::string_view title, std::string_view version) {
    std::string bytes(title);
    bytes += version;
    bytes.resize(40, '\0');
    return bytes;
}
inline std::string LayerHeader(std::string_view version) { return Header("Orva Layer Data Binary Version ", version); }
inline std::string IndexHeader(std::string_view version) { return Header("Orva Data Index Version ", version); }
inline std::string ManageHeader(std::string_view version) { return Header("Orva Data Manage Version ", version); }
inline std::string BinHeader(std::string_view version) { return Header("Orva Data Binary Version ", version); }

struct LayerFields {
    std::string code = "A";
    std::string layerName;
    int layIndex = 1;
    int layType = kLayLine;
    std::int64_t color = 0xDCDCDC;
    std::int64_t color2 = 0;
    int lineType = 0, lineSize = 1, pgnType = 0, pntType = 0;
    int dspFlg = 1, outLine = 1, spareFlg = 1, fillMode = 1, imgMode = 0;
    int imgPos = 0;
    std::string imgfname, imgactfname;
    int bmWidth = 0, bmHeight = 0;
    double imgMinScl = 0, imgMaxScl = 0;
};

inline std::string LayerRec(std::string_view version, const LayerFields& f) {
    const bool is110 = version == "1.10";
    Packed p;
    p.Text(f.code, 51).Text(f.layerName, 256).I4(f.layIndex).I4(f.layType).I4(f.color);
    if (is110) p.I4(f.color2);
    p.I4(f.lineType).I4(f.lineSize).I4(f.pgnType).I4(f.pntType);
    p.U1(f.dspFlg).U1(f.outLine).U1(f.spareFlg).U1(f.fillMode).U1(f.imgMode);
    if (is110) p.I4(f.imgPos);
    p.Text(f.imgfname, 512).Text(f.imgactfname, 512).I4(f.bmWidth).I4(f.bmHeight).R8(f.imgMinScl).R8(f.imgMaxScl);
    if (is110) p.Text("", 16);
    return p.bytes;
}

struct ItemFields {
    std::string code = "A";
    int meshNo = 0;
    int datID = 1;
    Rect rect;
    std::vector<DigPnt> pnts;
    std::int64_t pntCnt = -1;  ///< -1: as many as there are
    int lineTag = 0;
    std::string mesh;  ///< grid record and both arrays; empty: no grid
    std::string str;   ///< text record and text; empty: no text
};

inline std::string ItemRec(std::string_view version, const ItemFields& f) {
    const bool is110 = version == "1.10";
    Packed p;
    p.Text(f.code, 51).I4(f.meshNo).I4(f.datID).I4(f.rect.left).I4(f.rect.top).I4(f.rect.right).I4(f.rect.bottom);
    p.I4(f.pntCnt >= 0 ? f.pntCnt : static_cast<std::int64_t>(f.pnts.size())).U1(f.lineTag & 255);
    if (is110) p.U1(f.mesh.empty() ? 0 : 1);
    p.U1(f.str.empty() ? 0 : 1);
    if (is110) p.I4(0);
    for (const DigPnt& pnt : f.pnts) p.R8(pnt.x).R8(pnt.y).R8(pnt.z);
    return p.Add(f.mesh).Add(f.str).bytes;
}

struct StrFields {
    double x = 0, y = 0, z = 0;
    std::string fntname;
    int size = 10, style = 0, fill = 0, pos = 0, uline = 0, strike = 0;
    double angle = 0;
    std::int64_t fcolor = 0, bcolor = 0xFFFFFF;
    std::string text;
};

inline std::string StrRec(const StrFields& f) {
    Packed p;
    p.R8(f.x).R8(f.y).R8(f.z).Text(f.fntname, 65).U1(f.size & 255).U1(f.style & 255).U1(f.fill).U1(f.pos & 255).U1(f.uline);
    p.U1(f.strike).R8(f.angle).I4(f.fcolor).I4(f.bcolor).I4(static_cast<std::int64_t>(f.text.size()));
    return p.Add(f.text).bytes;
}

struct IdxBlockFields {
    std::string code = "A";
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    int count = 0, first = 0;
};

inline std::string IdxBlock(const IdxBlockFields& f) {
    return Packed().Text(f.code, 51).R8(f.minX).R8(f.minY).R8(f.maxX).R8(f.maxY).I4(f.count).I4(f.first).bytes;
}
inline std::string IdxItem(const Rect& rect, std::int64_t offset) {
    return Packed().I4(rect.left).I4(rect.top).I4(rect.right).I4(rect.bottom).I4(offset).bytes;
}
inline std::string ManageRec(std::string_view code, int meshNo, std::string_view path, double GX, double GY) {
    return Packed().Text(code, 51).I4(meshNo).Text(path, 512).R8(GX).R8(GY).bytes;
}

class ArchiveTest : public ::testing::Test {
protected:
    ArchiveTest() { store.Init(); }
    ~ArchiveTest() override { ArrayFaults::Clear(); }

    /// A binary set of one layer "A" and these items, its index naming one block of them all; no manage file.
    void PutSet(std::string_view version, const std::vector<ItemFields>& items, const std::string& base = "m") {
        std::string data = BinHeader(version);
        std::string records;
        for (const ItemFields& item : items) {
            records += IdxItem(item.rect, static_cast<std::int64_t>(data.size()));
            data += ItemRec(version, item);
        }
        const int count = static_cast<int>(items.size());
        IdxBlockFields block;
        block.code = items.empty() ? "A" : items.front().code;
        block.count = count;
        if (!items.empty()) {
            block = {block.code, 1e9, 1e9, -1e9, -1e9, count, 0};
            for (const ItemFields& item : items) {
                for (const DigPnt& pnt : item.pnts) {
                    block.minX = (std::min)(block.minX, pnt.x);
                    block.minY = (std::min)(block.minY, pnt.y);
                    block.maxX = (std::max)(block.maxX, pnt.x);
                    block.maxY = (std::max)(block.maxY, pnt.y);
                }
            }
        }
        files.Put(base + ".Ovb", data);
        files.Put(base + ".Ovl", LayerHeader(version) + LayerRec(version, {}));
        files.Put(base + ".Ovi", IndexHeader(version) + Packed().I4(1).I4(count).bytes + IdxBlock(block) + records);
    }
    bool Read(const ArcFilter& filter = {}, std::string_view name = "m.Ovb") { return ArcRead(store, files, name, filter); }
    bool Write(std::string_view name = "m.Ovb", std::string_view version = "") { return ArcWrite(store, files, name, version); }
    /// A block with a path, so that a save of it succeeds.
    DigBlock& MakeBlock(std::string_view code, std::int32_t meshNo, std::int32_t layType = kLayLine,
                        std::string_view path = "p") {
        EXPECT_TRUE(store.DigMemAlloc2(code, meshNo, layType, path, 0, 0, 0));
        return store.MutableBlock(store.FindBlock(code, meshNo).block);
    }
    void AddItem(std::string_view code, std::int32_t meshNo, std::int32_t datID, const std::vector<DigPnt>& pnts = {},
                 std::int32_t lineTag = 0) {
        ASSERT_TRUE(store.AddDigDat(code, meshNo, datID, lineTag));
        ASSERT_TRUE(pnts.empty() || store.SetDigDatPnts(code, meshNo, datID, pnts));
    }
    const DigBlock& BlockOf(std::string_view code, std::int32_t meshNo) {
        return store.Block(store.FindBlock(code, meshNo).block);
    }
    const DigDat& Item(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
        const DigDat* dat = store.FindDat(code, meshNo, datID);
        static const DigDat none;
        EXPECT_NE(dat, nullptr) << code << ' ' << meshNo << ' ' << datID;
        return dat == nullptr ? none : *dat;
    }
    /// IDs of the items of all blocks in use, block by block.
    std::vector<std::int32_t> AllIDs() const {
        std::vector<std::int32_t> ids;
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
            for (const DigDat& dat : store.Block(i).dats) ids.push_back(dat.datID);
        }
        return ids;
    }

    using IDs = std::vector<std::int32_t>;
    CDigMem store;
    WritableFiles files;
};

}  // namespace orvane
