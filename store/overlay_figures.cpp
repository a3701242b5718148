// Overlay figures: shapes above the map that belong to no layer.
#include <algorithm>
#include <limits>

#include "store/cdigmem.h"
#include "store/dat_lookup.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

void SetLook(OrgDat& dat, std::int16_t type, std::int16_t line, Rgb color, std::int32_t fill) {
    dat.type = type;
    dat.line = line;
    dat.color = color;
    dat.fill = fill == 1 ? 1 : 0;
}

/// A point figure takes one point and keeps it.
bool HasItsOnlyPoint(const OrgDat& dat) { return dat.type == kLayPoint && dat.pntCnt > 0; }

/// The next point behind `index` that stands exactly where that one does, in a polygon: the one that closes its ring. Null when
/// there is none.
DigPnt* ClosingPoint(OrgDat& dat, std::int32_t index) {
    if (dat.type != kLayPolygon || index >= dat.pntCnt) return nullptr;
    const DigPnt at = dat.pnts[static_cast<std::size_t>(index)];
    DigPnt* found = std::find_if(dat.pnts.begin() + index + 1, dat.pnts.end(),
                                 [&](const DigPnt& pnt) { return pnt.x == at.x && pnt.y == at.y; });
    return found == dat.pnts.end() ? nullptr : found;
}

const OrgDat* Walk(std::span<const OrgDat> orgDats, std::int32_t ID) {
    const auto found = std::find_if(orgDats.begin(), orgDats.end(), [&](const OrgDat& dat) { return dat.ID == ID; });
    return found == orgDats.end() ? nullptr : &*found;
}

/// Puts a point before position `cnt`, 0 to the count of points. The new count, or -1 with nothing changed.
std::int32_t Insert(OrgDat& dat, std::int32_t cnt, double x, double y) {
    if (HasItsOnlyPoint(dat) || dat.pntCnt == (std::numeric_limits<std::int32_t>::max)()) return -1;
    if (!dat.pnts.PushBack(DigPnt{x, y, 0})) return -1;
    std::rotate(dat.pnts.begin() + cnt, dat.pnts.end() - 1, dat.pnts.end());
    return ++dat.pntCnt;
}

}  // namespace

const OrgDat* CDigMem::FindOrgDat(std::int32_t ID) const {
    if (ID < 1) return nullptr;
    // Most hosts keep a handful of figures, for which a walk is all it takes.
    if (orgLookup_ == nullptr) {
        const auto walkedCnt = static_cast<std::size_t>((std::min)(OrgDatCnt(), DatLookup::kWalkedItems));
        const OrgDat* found = Walk(OrgDats().first(walkedCnt), ID);
        if (found != nullptr || walkedCnt == orgDats_.size()) return found;
        orgLookup_ = DatLookup::Build(orgDats_);
        if (orgLookup_ == nullptr) return Walk(OrgDats().subspan(walkedCnt), ID);
    }
    const std::int32_t pos = orgLookup_->First(ID);
    return pos < 0 ? nullptr : &orgDats_[static_cast<std::size_t>(pos)];
}

std::int32_t CDigMem::MakeOrgDat(std::int16_t type, std::int16_t line, Rgb color, std::int32_t fill) {
    if (!initDone_ || OrgDatCnt() == (std::numeric_limits<std::int32_t>::max)()) return -1;
    OrgDat dat;
    dat.ID = OrgDatCnt() + 1;
    SetLook(dat, type, line, color, fill);
    if (!orgDats_.PushBack(std::move(dat))) return -1;
    const std::int32_t pos = OrgDatCnt() - 1;
    if (orgLookup_ != nullptr && !orgLookup_->Append(pos + 1, pos)) orgLookup_.reset();
    return pos + 1;
}

bool CDigMem::EditOrgDat(std::int32_t ID, std::int16_t type, std::int16_t line, Rgb color, std::int32_t fill) {
    OrgDat* dat = FindOrgDatForChange(ID);
    if (dat == nullptr) return false;
    SetLook(*dat, type, line, color, fill);
    return true;
}

std::int32_t CDigMem::DelOrgData(std::int32_t ID) {
    // A lookup would be dropped a moment later, so none is made for this search.
    const OrgDat* dat = orgLookup_ != nullptr || ID < 1 ? FindOrgDat(ID) : Walk(OrgDats(), ID);
    if (dat == nullptr) return -1;
    orgLookup_.reset();
    orgDats_.EraseAt(static_cast<std::size_t>(dat - orgDats_.begin()));
    if (orgDats_.empty()) orgDats_.Clear();
    return 0;
}

void CDigMem::DropLastOrgDat() {
    if (orgDats_.empty()) return;
    orgLookup_.reset();
    orgDats_.EraseAt(orgDats_.size() - 1);
    if (orgDats_.empty()) orgDats_.Clear();
}

std::int32_t CDigMem::AddOrgPnt(std::int32_t ID, double x, double y) {
    OrgDat* dat = FindOrgDatForChange(ID);
    return dat == nullptr ? -1 : Insert(*dat, dat->pntCnt, x, y);
}

std::int32_t CDigMem::AddOrgPntAt(std::int32_t pos, double x, double y) {
    OrgDat& dat = MutableOrgDat(pos);
    return Insert(dat, dat.pntCnt, x, y);
}

std::int32_t CDigMem::InsOrgPnt(std::int32_t ID, std::int32_t cnt, double x, double y) {
    OrgDat* dat = FindOrgDatForChange(ID);
    if (dat == nullptr || cnt < 0 || cnt > dat->pntCnt) return -1;
    return Insert(*dat, cnt, x, y);
}

std::int32_t CDigMem::DelOrgPnt(std::int32_t ID, std::int32_t cnt) {
    OrgDat* dat = FindOrgDatForChange(ID);
    if (dat == nullptr || cnt < 0 || cnt > dat->pntCnt || HasItsOnlyPoint(*dat)) return -1;
    // A figure never loses its last point; it has to be deleted as a whole.
    if (dat->pntCnt < 2) return -1;
    if (DigPnt* closing = ClosingPoint(*dat, cnt)) *closing = dat->pnts[static_cast<std::size_t>(cnt) + 1];
    const std::int32_t last = dat->pntCnt - 1;
    dat->pnts.EraseAt(static_cast<std::size_t>((std::min)(cnt, last)));
    dat->pntCnt = last;
    return last;
}

std::int32_t CDigMem::EditOrgPnt(std::int32_t ID, std::int32_t index, double x, double y) {
    OrgDat* dat = FindOrgDatForChange(ID);
    if (dat == nullptr) return -1;
    if (index < 0 || index >= dat->pntCnt) return -2;
    if (DigPnt* closing = ClosingPoint(*dat, index)) *closing = {x, y, 0};
    dat->pnts[static_cast<std::size_t>(index)] = {x, y, 0};
    return 0;
}

bool CDigMem::ShiftOrgPnts(std::int32_t ID, double dx, double dy) {
    OrgDat* dat = FindOrgDatForChange(ID);
    if (dat == nullptr) return false;
    for (DigPnt& pnt : dat->pnts) {
        pnt.x += dx;
        pnt.y += dy;
    }
    return true;
}

std::int32_t CDigMem::GetOrgID(std::int32_t pos) const {
    return pos < 0 || pos >= OrgDatCnt() ? -1 : orgDats_[static_cast<std::size_t>(pos)].ID;
}

bool CDigMem::OrgDataActive(std::int32_t ID) const {
    const OrgDat* dat = FindOrgDat(ID);
    return dat != nullptr && dat->active != 0;
}

void CDigMem::SetOrgDataActive(std::int32_t ID, bool active) {
    if (OrgDat* dat = FindOrgDatForChange(ID)) dat->active = active ? 1 : 0;
}

std::int32_t CDigMem::SetOrgDatString(std::int32_t ID, std::string_view text, double x, double y, std::int32_t size, Rgb color,
                                      std::int32_t fill) {
    OrgDat* dat = FindOrgDatForChange(ID);
    if (dat == nullptr || text.empty() || !AssignText(dat->strText, text)) return -1;
    dat->strX = x;
    dat->strY = y;
    dat->strZ = 0;
    dat->strSize = size;
    dat->strAngle = 0;
    dat->strColor = color;
    dat->strFill = fill;
    return 0;
}

}  // namespace orvane
