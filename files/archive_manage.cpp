// The manage file: path and origin of the blocks that have a path. Others lose their origin in an archive.
#include "files/archive_parts.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

/// False without memory.
bool GiveOrigin(CDigMem& store, const unsigned char* record) {
    FieldReader fields(record);
    const std::string_view code = fields.Text(kCodeField);
    const auto meshNo = fields.Get<std::int32_t>();
    const std::int32_t pos = store.FindBlock(code, meshNo).block;
    if (pos < 0) return true;
    DigBlock& block = store.MutableBlock(pos);
    if (!AssignText(block.path, fields.Text(kPathField))) return false;
    fields.Get(block.GX);
    fields.Get(block.GY);
    return true;
}

bool IsManaged(const DigBlock& block) { return block.blkState == 1 && !block.path.empty(); }

}  // namespace

bool ArcReadManage(CDigMem& store, Files& files, std::string_view name) {
    OpenError cause = OpenError::None;
    const std::unique_ptr<InputFile> file = files.OpenRead(name, &cause);
    if (file == nullptr) return cause == OpenError::Missing;
    if (!HasTitle(*file, kManageTitle)) return false;
    PackedSource source(*file);
    if (source.Size_bytes() < kHeaderSize) return false;
    source.Seek(kHeaderSize);
    for (std::uint64_t count = source.Remaining() / kManageRecSize; count > 0; --count) {
        const unsigned char* record = source.Take(kManageRecSize);
        if (record == nullptr || !GiveOrigin(store, record)) return false;
    }
    return true;
}

bool ArcWriteManage(const CDigMem& store, Files& files, std::string_view name, ArcVersion version) {
    std::int32_t i = 0;
    while (i < store.BlockCnt() && !IsManaged(store.Block(i))) ++i;
    if (i == store.BlockCnt()) return false;
    PackedSink sink(files.Create(name));
    if (!sink.Good()) return false;
    WriteHeader(sink, kManageTitle, version);
    for (; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (!IsManaged(block)) continue;
        FieldWriter<kManageRecSize> record;
        record.Text(block.code.View(), kCodeField);
        record.Put(block.meshNo);
        record.Text(block.path, kPathField);
        record.Put(block.GX);
        record.Put(block.GY);
        sink.Write(record);
    }
    return sink.Close();
}

}  // namespace orvane
