// The index file of binary data.
#include "files/archive_parts.h"

namespace orvane {
namespace {

IdxBlockRec ReadBlock(const unsigned char* record) {
    FieldReader fields(record);
    IdxBlockRec block;
    block.code.Set(fields.Text(kCodeField));
    fields.Get(block.minX);
    fields.Get(block.minY);
    fields.Get(block.maxX);
    fields.Get(block.maxY);
    fields.Get(block.count);
    fields.Get(block.first);
    return block;
}

/// Whether the block's items are all in a table of `nItems`.
bool ItemsExist(const IdxBlockRec& block, std::int32_t nItems) {
    return block.count >= 0 && block.first >= 0 && std::int64_t{block.first} + block.count <= nItems;
}

}  // namespace

bool ArcReadIndex(Files& files, std::string_view name, IdxFile& index) {
    index.file = files.OpenRead(name);
    if (index.file == nullptr || !HasTitle(*index.file, kIndexTitle)) return false;
    PackedSource source(*index.file);
    source.Seek(kHeaderSize);
    const unsigned char* counts = source.Take(kIdxTablesAt - kHeaderSize);
    if (counts == nullptr) return false;
    FieldReader fields(counts);
    fields.Get(index.nBlocks);
    fields.Get(index.nItems);
    if (index.nBlocks < 0 || index.nItems < 0) return false;
    const auto blocks_bytes = static_cast<std::uint64_t>(index.nBlocks) * kIdxBlockRecSize;
    const auto items_bytes = static_cast<std::uint64_t>(index.nItems) * kIdxItemRecSize;
    if (source.Remaining() < blocks_bytes + items_bytes) return false;

    if (!index.blocks.Reserve(static_cast<std::size_t>(index.nBlocks))) return false;
    std::int64_t claimed = 0;
    for (std::int32_t i = 0; i < index.nBlocks; ++i) {
        const unsigned char* record = source.Take(kIdxBlockRecSize);
        if (record == nullptr) return false;
        IdxBlockRec block = ReadBlock(record);
        claimed += block.count;
        if (index.nItems == 0) continue;  // nothing can be selected, whatever the blocks say
        // Blocks that shared items could claim the whole table each, and a selection would never end.
        if (!ItemsExist(block, index.nItems) || claimed > index.nItems) return false;
        if (!index.blocks.PushBack(std::move(block))) return false;
    }
    return true;
}

bool ReadIdxItem(PackedSource& source, const IdxFile& index, std::int32_t number, IdxItemRec& item) {
    source.Seek(kIdxTablesAt + static_cast<std::uint64_t>(index.nBlocks) * kIdxBlockRecSize +
                static_cast<std::uint64_t>(number) * kIdxItemRecSize);
    const unsigned char* record = source.Take(kIdxItemRecSize);
    if (record == nullptr) return false;
    FieldReader fields(record);
    fields.Get(item.rect.left);
    fields.Get(item.rect.top);
    fields.Get(item.rect.right);
    fields.Get(item.rect.bottom);
    fields.Get(item.offset);
    return true;
}

bool ArcWriteIndex(Files& files, std::string_view name, ArcVersion version, const IdxTables& tables) {
    if (tables.nBlocks < 1) return false;
    PackedSink sink(files.Create(name));
    if (!sink.Good()) return false;
    WriteHeader(sink, kIndexTitle, version);
    FieldWriter<8> counts;
    counts.Put(tables.nBlocks);
    counts.Put(tables.nItems);
    sink.Write(counts);
    for (const IdxBlockRec& block : tables.blocks) {
        FieldWriter<kIdxBlockRecSize> record;
        record.Text(block.code.View(), kCodeField);
        record.Put(block.minX);
        record.Put(block.minY);
        record.Put(block.maxX);
        record.Put(block.maxY);
        record.Put(block.count);
        record.Put(block.first);
        sink.Write(record);
    }
    for (const IdxItemRec& item : tables.items) {
        FieldWriter<kIdxItemRecSize> record;
        record.Put(item.rect.left);
        record.Put(item.rect.top);
        record.Put(item.rect.right);
        record.Put(item.rect.bottom);
        record.Put(item.offset);
        sink.Write(record);
    }
    return sink.Close();
}

}  // namespace orvane
