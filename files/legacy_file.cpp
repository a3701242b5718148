#include "files/legacy_file.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "files/leading_number.h"
#include "files/legacy_parts.h"
#include "geo/mesh_number.h"
#include "platform/file_names.h"
#include "store/dat_lookup.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

constexpr std::size_t kMaxPath = 511;

/// Layer type by the ending of a name, 0 for another one. The ending alone is no name.
std::int32_t TypeOf(std::string_view filename) {
    constexpr std::string_view kEndings[] = {"pnt", "arc", "pgn"};
    constexpr std::int32_t kTypes[] = {kLayPoint, kLayLine, kLayPolygon};
    for (std::size_t i = 0; i < std::size(kEndings); ++i) {
        if (HasLegacyEnding(filename, kEndings[i])) return kTypes[i];
    }
    return 0;
}

/// All bytes before the one that ends the data. False when the file does not open or there is no memory.
bool LoadData(Files& files, std::string_view filename, GrowArray<char>& bytes) {
    const std::unique_ptr<InputFile> file = files.OpenRead(filename);
    if (file == nullptr) return false;
    constexpr std::size_t kPiece_bytes = 65536;
    for (;;) {
        // The size that the system tells may be a wish: memory follows what really comes.
        const std::size_t have = bytes.size();
        if (!bytes.Resize(have + kPiece_bytes)) return false;
        const std::size_t got = file->ReadAt(have, bytes.data() + have, kPiece_bytes);
        const std::string_view piece(bytes.data() + have, got);
        const std::size_t end = piece.find_first_of(std::string_view("\x1A\0", 2));
        bytes.Truncate(have + (std::min)(end, got));
        if (end != std::string_view::npos || got == 0) return true;
    }
}

/// The fields of the header line; empty ones do not count.
class HeaderFields {
public:
    explicit HeaderFields(std::string_view line) {
        while (count_ < fields_.size()) {
            const std::size_t begin = line.find_first_not_of(',');
            if (begin == std::string_view::npos) break;
            line.remove_prefix(begin);
            const std::size_t size = (std::min)(line.find(','), line.size());
            fields_[count_++] = line.substr(0, size);
            line.remove_prefix(size);
        }
    }
    std::size_t Count() const { return count_; }
    /// A field that is not there is empty, which reads as 0.
    std::string_view operator[](std::size_t i) const { return fields_[i]; }

private:
    std::array<std::string_view, 11> fields_;
    std::size_t count_ = 0;
};

/// Number of point lines by the header's two counts: `records` counts the header and the items as well. Point files, whose items
/// bring their point along, leave nothing, which stands for one each.
std::int32_t PointRecords(std::int32_t records, std::int32_t items) {
    const std::int64_t left = std::int64_t{records} - (std::int64_t{items} + 1);
    if (items >= 1 && left == 0) return items;
    return static_cast<std::int32_t>((std::max)(left, std::int64_t{(std::numeric_limits<std::int32_t>::min)()}));
}

/// Takes the header off the data. False without one, with nothing behind it, and without a count of items.
bool ReadHeader(std::string_view& data, std::int32_t meshKind, DigBlock& block, std::int32_t& itemCnt) {
    constexpr std::size_t kItemCnt = 4;
    const std::size_t end = data.find("\r\n");
    if (end == std::string_view::npos || end + 2 == data.size() || !EqualAnyCase(data.substr(0, 2), "FH")) return false;
    const HeaderFields fields(data.substr(0, end));
    data.remove_prefix(end + 2);
    itemCnt = LeadingInt32(fields[kItemCnt]);
    if (fields.Count() <= kItemCnt || itemCnt < 0) return false;
    block.recCnt = PointRecords(LeadingInt32(fields[3]), itemCnt);
    block.meshNo = LeadingInt32(fields[1]);
    const MeshXY origin = MeshOrigin(meshKind, block.meshNo);
    block.GX = origin.x;
    block.GY = origin.y;
    block.minX = LeadingDouble(fields[7]);
    block.minY = LeadingDouble(fields[8]);
    block.maxX = LeadingDouble(fields[9]);
    block.maxY = LeadingDouble(fields[10]);
    return true;
}

LegacyResult ReadBlock(CDigMem& store, Files& files, std::string_view filename, std::string_view arcCode, DigBlock& block) {
    GrowArray<char> bytes;
    if (!AssignText(block.path, TillZero(filename).substr(0, kMaxPath)) || !LoadData(files, filename, bytes)) {
        return LegacyResult::Failed;
    }
    std::string_view text(bytes.data(), bytes.size());
    std::int32_t itemCnt = 0;
    if (!ReadHeader(text, store.MeshKind(), block, itemCnt)) return LegacyResult::Failed;
    LegacyData data(text);
    switch (TypeOf(filename)) {
        case kLayPoint:
            return ReadLegacyPoints(data, itemCnt, block);
        case kLayLine:
            return ReadLegacyArcs(data, itemCnt, block);
        case kLayPolygon:
            return ReadLegacyPolygons(data, itemCnt, block, store, arcCode);
        default:
            return LegacyResult::Failed;
    }
}

/// A layer that is there keeps its type, whatever it is.
bool PutIntoStore(CDigMem& store, DigBlock&& block, std::int32_t layType) {
    if (!store.IndexHasRoom()) return false;
    const std::int32_t pos = store.MakeBareBlock(CDigMem::BlockPlace::End);
    if (pos < 0) return false;
    block.blkState = 1;
    block.datMax = block.datCnt;
    store.MutableBlock(pos) = std::move(block);
    const FixedText<kMaxCode> code = store.Block(pos).code;
    const bool hasLayer = store.FindLayDef(code.View()) >= 0 || store.MakeLayer(code.View(), layType);
    if (hasLayer && store.IndexBareBlock(pos)) return true;
    store.DropBareBlock(pos);
    return false;
}

/// The last step of a read: the host runs while the message stands, and the store may be another one afterwards.
void Tell(LegacyResult result, std::string_view path, const LegacyMessage& message) {
    if (!message) return;
    if (result == LegacyResult::NoMemory) {
        message("new memory allocateion error!", "ORVANE4", MessageIcon::Exclamation);
    } else if (result == LegacyResult::Inconsistent) {
        // "'s data contradict each other", in Japanese.
        constexpr std::string_view kContradicts =
            "\x82\xCC\x83\x66\x81\x5B\x83\x5E\x82\xC9\x96\xB5\x8F\x82\x82\xAA\x97\x4C\x82\xE8\x82\xDC\x82\xB7\x81\x42";
        std::string text;
        if (ReserveText(text, path.size() + kContradicts.size())) text.append(path).append(kContradicts);
        message(text, kLegacyContradiction, MessageIcon::Exclamation);
    }
}

}  // namespace

bool HasLegacyEnding(std::string_view name, std::string_view ending) {
    return name.size() > ending.size() && EqualAnyCase(name.substr(name.size() - ending.size()), ending);
}

bool LegacyFileRead(CDigMem& store, Files& files, std::string_view filename, std::string_view arcCode,
                    const LegacyMessage& message) {
    if (!store.InitDone()) return false;
    DigBlock block;
    const LegacyResult result = ReadBlock(store, files, filename, arcCode, block);
    if (result == LegacyResult::Read) return PutIntoStore(store, std::move(block), TypeOf(filename));
    Tell(result, block.path, message);
    return false;
}

}  // namespace orvane
