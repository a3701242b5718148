// Taking items out of a binary data file.
#include <utility>

#include "files/archive_items.h"
#include "store/guarded_alloc.h"

namespace orvane {

static_assert(sizeof(DigPnt) == kPntSize, "points are read and written as they stand");

ItemStep BinItems::Next(DatRec& head, DigDat& dat) {
    if (source_.Remaining() == 0) return ItemStep::End;
    const bool whole = ReadHead(head) && ReadPoints(head, dat) && ReadMesh(head, dat) && ReadStr(head, dat);
    return whole ? ItemStep::Item : ItemStep::Broken;
}

bool BinItems::ReadHead(DatRec& head) {
    const unsigned char* record = source_.Take(DatRecSize(version_));
    if (record == nullptr) return false;
    FieldReader fields(record);
    head.code.Set(fields.Text(kCodeField));
    fields.Get(head.meshNo);
    fields.Get(head.datID);
    fields.Get(head.rect.left);
    fields.Get(head.rect.top);
    fields.Get(head.rect.right);
    fields.Get(head.rect.bottom);
    fields.Get(head.pntCnt);
    fields.Get(head.lineTag);
    if (version_ == ArcVersion::V110) head.hasMesh = fields.Flag() != 0;
    head.hasStr = fields.Flag() != 0;
    return head.pntCnt >= 0;
}

/// Whether the file goes on for so many records of a size.
bool BinItems::Holds(std::int32_t count, std::size_t size) const {
    return count >= 0 && static_cast<std::uint64_t>(count) * size <= source_.Remaining();
}

bool BinItems::ReadPoints(const DatRec& head, DigDat& dat) {
    if (head.pntCnt == 0) return true;
    const auto count = static_cast<std::size_t>(head.pntCnt);
    return Holds(head.pntCnt, kPntSize) && dat.pnts.Resize(0, count, false) &&
           source_.ReadNumbers(&dat.pnts.Change()->x, 3 * count);
}

bool BinItems::ReadMesh(const DatRec& head, DigDat& dat) {
    if (!head.hasMesh) return true;
    const unsigned char* record = source_.Take(kMeshRecSize);
    if (record == nullptr) return false;
    FieldReader fields(record);
    std::unique_ptr<DigMeshAttr> mesh = NewGuarded<DigMeshAttr>();
    if (mesh == nullptr) return false;
    fields.Get(mesh->hcnt);
    fields.Get(mesh->vcnt);
    mesh->arrayCnt = head.pntCnt;
    const auto count = static_cast<std::size_t>(head.pntCnt);
    if (!Holds(head.pntCnt, sizeof(std::uint8_t) + sizeof(std::uint32_t))) return false;
    if (!mesh->useFlag.Resize(0, count, false) || !source_.ReadNumbers(mesh->useFlag.Get(), count)) return false;
    if (!mesh->meshColor.Resize(0, count, false) || !source_.ReadNumbers(mesh->meshColor.Get(), count)) return false;
    dat.meshAttr = std::move(mesh);
    return true;
}

bool BinItems::ReadStr(const DatRec& head, DigDat& dat) {
    if (!head.hasStr) return true;
    const unsigned char* record = source_.Take(kStrRecSize);
    std::unique_ptr<DigStr> str = NewGuarded<DigStr>();
    if (record == nullptr || str == nullptr) return false;
    FieldReader fields(record);
    fields.Get(str->x);
    fields.Get(str->y);
    fields.Get(str->z);
    if (!AssignText(str->fntname, fields.Text(kFontField))) return false;
    str->size = fields.Get<std::int8_t>();
    str->style = fields.Get<std::int8_t>();
    str->fill = fields.Flag();
    str->pos = fields.Get<std::int8_t>();
    str->uline = fields.Flag();
    str->strike = fields.Flag();
    fields.Get(str->angle);
    fields.Get(str->fcolor);
    fields.Get(str->bcolor);
    if (!ReadText(fields.Get<std::int32_t>(), str->text)) return false;
    dat.str = std::move(str);
    return true;
}

bool BinItems::ReadText(std::int32_t textLen, std::string& text) {
    if (!Holds(textLen, 1)) return false;
    const auto size = static_cast<std::size_t>(textLen);
    if (size > text_.size() && !text_.Resize(size)) return false;
    if (!source_.Read(text_.data(), size)) return false;
    return AssignText(text, TillZero(std::string_view(text_.data(), size)));
}

}  // namespace orvane
