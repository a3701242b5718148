// Writing the binary data file, and gathering its index on the way.

#include <utility>

#include "files/archive_parts.h"
#include "files/archive_save_walk.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

std::uint64_t ItemSize_bytes(const DigDat& dat, ArcVersion version) {
    const std::uint64_t points = dat.pntCnt > 0 ? static_cast<std::uint64_t>(dat.pntCnt) : 0;
    std::uint64_t size = DatRecSize(version) + points * kPntSize;
    if (version == ArcVersion::V110 && dat.meshAttr != nullptr) size += kMeshRecSize + points * 5;
    if (dat.str != nullptr) size += kStrRecSize + dat.str->text.size();
    return size;
}

class BinWriter {
public:
    BinWriter(PackedSink& sink, ArcVersion version, IdxTables& tables) : sink_(sink), version_(version), tables_(tables) {}

    void Begin() { WriteHeader(sink_, kBinTitle, version_); }

    void WriteBlock(const DigBlock& block, std::int32_t first) {
        IdxBlockRec record;
        // A block of no items never had its code written here.
        if (block.datCnt > 0) record.code = block.code;
        record.minX = block.minX;
        record.minY = block.minY;
        record.maxX = block.maxX;
        record.maxY = block.maxY;
        record.count = block.datCnt;
        record.first = first;
        const std::size_t nItems = tables_.items.size() + static_cast<std::size_t>(block.datCnt);
        if (!tables_.blocks.PushBack(std::move(record))) tables_.failed = true;
        if (!tables_.failed && !EnsureRoom(tables_.items, nItems)) tables_.failed = true;
    }

    void WriteItem(const DigBlock& block, const DigDat& dat) {
        const IdxItemRec record{dat.rect, static_cast<std::int32_t>(sink_.Position())};
        if (!tables_.failed && !tables_.items.PushBack(record)) tables_.failed = true;
        WriteHead(block, dat);
        const std::size_t count = dat.pntCnt > 0 ? static_cast<std::size_t>(dat.pntCnt) : 0;
        if (count > 0) sink_.WriteNumbers(&dat.pnts[0].x, 3 * count);
        if (version_ == ArcVersion::V110 && dat.meshAttr != nullptr) WriteMesh(*dat.meshAttr, count);
        if (dat.str != nullptr) WriteStr(*dat.str);
    }

private:
    void WriteHead(const DigBlock& block, const DigDat& dat) {
        FieldWriter<DatRecSize(ArcVersion::V110)> record;
        record.Text(block.code.View(), kCodeField);
        record.Put(block.meshNo);
        record.Put(dat.datID);
        record.Put(dat.rect.left);
        record.Put(dat.rect.top);
        record.Put(dat.rect.right);
        record.Put(dat.rect.bottom);
        record.Put(dat.pntCnt);
        record.Put(LowByte(dat.lineTag));
        if (version_ == ArcVersion::V110) record.Put(static_cast<std::uint8_t>(dat.meshAttr != nullptr));
        record.Put(static_cast<std::uint8_t>(dat.str != nullptr));
        if (version_ == ArcVersion::V110) record.Skip(4);
        sink_.Write(record);
    }

    /// As many entries as the item has points, however many its grid has; what the grid lacks is 0.
    void WriteMesh(const DigMeshAttr& mesh, std::size_t count) {
        FieldWriter<kMeshRecSize> record;
        record.Put(mesh.hcnt);
        record.Put(mesh.vcnt);
        record.Skip(1);
        sink_.Write(record);
        const std::size_t held = HeldEntries(mesh, count);
        sink_.WriteNumbers(mesh.useFlag.Get(), held);
        sink_.WriteZeros(count - held);
        sink_.WriteNumbers(mesh.meshColor.Get(), held);
        sink_.WriteZeros((count - held) * sizeof(std::uint32_t));
    }

    void WriteStr(const DigStr& str) {
        FieldWriter<kStrRecSize> record;
        record.Put(str.x);
        record.Put(str.y);
        record.Put(str.z);
        record.Text(str.fntname, kFontField);
        record.Put(LowByte(str.size));
        record.Put(LowByte(str.style));
        record.Put(str.fill);
        record.Put(LowByte(str.pos));
        record.Put(str.uline);
        record.Put(str.strike);
        record.Put(str.angle);
        record.Put(str.fcolor);
        record.Put(str.bcolor);
        record.Put(static_cast<std::int32_t>(str.text.size()));
        sink_.Write(record);
        sink_.Write(str.text);
    }

    PackedSink& sink_;
    ArcVersion version_;
    IdxTables& tables_;
};

bool WriteBin(const CDigMem& store, Files& files, std::string_view name, ArcVersion version, IdxTables& tables, ArcWatch& watch) {
    if (store.BlockCnt() == 0) return false;
    PackedSink sink(files.Create(name));
    if (!sink.Good()) return false;
    BinWriter writer(sink, version, tables);
    const bool written = WriteItems(store, tables, watch, sink, writer);
    return sink.Close() && written;
}

}  // namespace

std::uint64_t BinDataSize_bytes(const CDigMem& store, ArcVersion version) {
    std::uint64_t size = kHeaderSize;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        if (store.Block(i).blkState != 1) continue;
        for (const DigDat& dat : store.Block(i).dats) size += ItemSize_bytes(dat, version);
    }
    return size;
}

bool ArcWriteBin100(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch) {
    return WriteBin(store, files, name, ArcVersion::V100, tables, watch);
}

bool ArcWriteBin110(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch) {
    return WriteBin(store, files, name, ArcVersion::V110, tables, watch);
}

}  // namespace orvane
