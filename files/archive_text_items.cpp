// Taking items out of a text data file.
#include <algorithm>
#include <utility>

#include "files/archive_items.h"
#include "files/leading_number.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

// The shortest lines of their kind, with their ends: what a count of them needs of the file.
constexpr std::uint64_t kLeastPointLine = 8;
constexpr std::uint64_t kLeastMeshLine = 5;

/// The fields of one line, taken from the left. Commas that touch stand for one, so that an empty field does not exist.
class LineFields {
public:
    explicit LineFields(std::string_view line) : rest_(line) {}

    std::string_view Text() {
        const std::size_t begin = rest_.find_first_not_of(',');
        if (begin == std::string_view::npos) {
            complete_ = false;
            return {};
        }
        const std::size_t end = (std::min)(rest_.find(',', begin), rest_.size());
        const std::string_view field = rest_.substr(begin, end - begin);
        rest_.remove_prefix(end);
        return field;
    }
    std::int32_t Int() { return LeadingInt32(Text()); }
    double Real() { return LeadingDouble(Text()); }
    /// The low byte of a number is all that a record has room for.
    std::int8_t Byte() { return static_cast<std::int8_t>(Int()); }
    std::uint8_t Flag() { return Byte() != 0 ? 1 : 0; }
    /// Whether every field asked for was there.
    bool Complete() const { return complete_; }

private:
    std::string_view rest_;
    bool complete_ = true;
};

bool ReadLook(std::string_view line, DigStr& str) {
    LineFields fields(line);
    if (fields.Text() != "SH") return false;
    str.x = fields.Real();
    str.y = fields.Real();
    str.z = fields.Real();
    str.size = fields.Byte();
    str.style = fields.Byte();
    str.fill = fields.Flag();
    str.pos = fields.Byte();
    str.uline = fields.Flag();
    str.strike = fields.Flag();
    str.angle = fields.Real();
    str.fcolor = static_cast<std::uint32_t>(fields.Int());
    str.bcolor = static_cast<std::uint32_t>(fields.Int());
    return fields.Complete();
}

}  // namespace

bool TextItems::NextLine(std::string_view& line) {
    if (!lines_.Next(line)) return false;
    ++lineNo_;
    return true;
}

ItemStep TextItems::Next(DatRec& head, DigDat& dat) {
    std::string_view line;
    if (!NextLine(line)) return lines_.Remaining() == 0 ? ItemStep::End : ItemStep::Broken;
    if (!line.starts_with("DH")) return ItemStep::Broken;
    const bool whole = ReadHead(line, head) && ReadPoints(head, dat) && ReadMesh(head, dat) && ReadStr(head, dat);
    return whole ? ItemStep::Item : ItemStep::Broken;
}

double TextItems::Done() const {
    return 1 - static_cast<double>(lines_.Remaining()) / static_cast<double>((std::max)(lines_.Size_bytes(), std::uint64_t{1}));
}

bool TextItems::ReadHead(std::string_view line, DatRec& head) {
    LineFields fields(line);
    fields.Text();
    head.code.Set(fields.Text());
    head.meshNo = fields.Int();
    head.datID = fields.Int();
    head.rect.top = fields.Int();
    head.rect.left = fields.Int();
    head.rect.bottom = fields.Int();
    head.rect.right = fields.Int();
    head.pntCnt = fields.Int();
    head.lineTag = fields.Byte();
    if (version_ == ArcVersion::V110) head.hasMesh = fields.Flag() != 0;
    head.hasStr = fields.Flag() != 0;
    if (version_ == ArcVersion::V110) fields.Int();
    return fields.Complete() && head.pntCnt >= 0;
}

/// Whether the file has room for as many lines; the last one may lack its end.
bool TextItems::Holds(std::int32_t count, std::uint64_t line_bytes) const {
    return static_cast<std::uint64_t>(count) * line_bytes <= lines_.Remaining() + 1;
}

bool TextItems::ReadPoints(const DatRec& head, DigDat& dat) {
    if (head.pntCnt == 0) return true;
    const auto count = static_cast<std::size_t>(head.pntCnt);
    if (!Holds(head.pntCnt, kLeastPointLine) || !dat.pnts.Resize(0, count, false)) return false;
    DigPnt* const pnts = dat.pnts.Change();
    for (std::size_t i = 0; i < count; ++i) {
        std::string_view line;
        if (!NextLine(line)) return false;
        LineFields fields(line);
        if (fields.Text() != "P") return false;
        pnts[i].x = fields.Real();
        pnts[i].y = fields.Real();
        pnts[i].z = fields.Real();
        if (!fields.Complete()) return false;
    }
    return true;
}

/// `take(i, fields)` gets what stands behind the key in the i-th of as many lines as the item has points.
template <class Take>
bool TextItems::ReadMeshLines(const DatRec& head, std::string_view key, Take take) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(head.pntCnt); ++i) {
        std::string_view line;
        if (!NextLine(line)) return false;
        LineFields fields(line);
        if (fields.Text() != key) return false;
        take(i, fields);
        if (!fields.Complete()) return false;
    }
    return true;
}

bool TextItems::ReadMesh(const DatRec& head, DigDat& dat) {
    if (!head.hasMesh) return true;
    std::string_view line;
    if (!NextLine(line)) return false;
    LineFields fields(line);
    std::unique_ptr<DigMeshAttr> mesh = NewGuarded<DigMeshAttr>();
    if (mesh == nullptr || fields.Text() != "MH") return false;
    mesh->hcnt = fields.Int();
    mesh->vcnt = fields.Int();
    fields.Int();
    if (!fields.Complete() || !Holds(head.pntCnt, 2 * kLeastMeshLine)) return false;
    mesh->arrayCnt = head.pntCnt;
    const auto count = static_cast<std::size_t>(head.pntCnt);
    if (!mesh->useFlag.Resize(0, count, false) || !mesh->meshColor.Resize(0, count, false)) return false;
    // One bit is all that is kept of a use flag here; the binary form keeps the byte.
    const auto takeFlag = [&](std::size_t i, LineFields& flag) { mesh->useFlag[i] = static_cast<std::uint8_t>(flag.Int() != 0); };
    const auto takeColor = [&](std::size_t i, LineFields& color) {
        mesh->meshColor[i] = static_cast<std::uint32_t>(color.Int());
    };
    if (!ReadMeshLines(head, "M1", takeFlag) || !ReadMeshLines(head, "M2", takeColor)) return false;
    dat.meshAttr = std::move(mesh);
    return true;
}

bool TextItems::ReadStr(const DatRec& head, DigDat& dat) {
    if (!head.hasStr) return true;
    std::unique_ptr<DigStr> str = NewGuarded<DigStr>();
    std::string_view line;
    if (str == nullptr || !NextLine(line) || !ReadLook(line, *str)) return false;
    // Behind the keys everything counts, commas included.
    if (!NextLine(line) || !line.starts_with("FN,")) return false;
    if (!AssignText(str->fntname, line.substr(3, kFontField - 1))) return false;
    if (!NextLine(line) || !line.starts_with("S,") || !AssignText(str->text, line.substr(2))) return false;
    dat.str = std::move(str);
    return true;
}

}  // namespace orvane
