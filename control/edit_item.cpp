// What the edit tools share: the item they work on, its points in the record, the rubber figure that stands in for it.
#include <algorithm>

#include "analysis/geometry/plane.h"
#include "control/edit_tools.h"
#include "select/active_items.h"
#include "select/pick_figure.h"

namespace orvane {
namespace {

constexpr Rgb kRubberColor = 0x0000FF;
constexpr std::int32_t kHiddenTag = -1;

}  // namespace

std::optional<EditTools::Picked> EditTools::Pick(Point at) {
    if (SelectForEdit(store_, at, ctrl_.PlaceOfPicks(), 0) < 1) return std::nullopt;
    const FoundItem found = FirstActive(store_);
    DatInfo info;
    if (!found.Found() || !store_.GetDigDatInfoEx(found.code.View(), found.meshNo, found.datID, info)) return std::nullopt;
    return Picked{{found.code, found.meshNo, found.datID}, info.type, info.cnt};
}

std::optional<EditTools::Picked> EditTools::PickToLoad(Point at) {
    const std::optional<Picked> picked = Pick(at);
    return picked && picked->cnt <= kMaxEditPnt ? picked : std::nullopt;
}

bool EditTools::Load(const EditKey& key, CircleLoad circle, std::int32_t activePointType) {
    DatInfo info;
    if (!store_.GetDigDatInfoEx(key.code.View(), key.meshNo, key.datID, info) || info.cnt > kMaxEditPnt) return false;
    const bool asTwo = info.type == kLayCircle && circle == CircleLoad::CentreAndRim && info.cnt > 0;
    const std::int32_t cnt = asTwo ? 2 : info.cnt;
    if (!ReservePnts(cnt) || !MakeFigure(info.type, 1)) return false;

    const DigBlock& block = store_.Block(store_.FindBlock(key.code.View(), key.meshNo).block);
    const DigDat* dat = store_.FindDat(key.code.View(), key.meshNo, key.datID);
    for (std::int32_t i = 0; i < cnt; ++i) {
        // A circle is its first point, whatever others it has: the second one here is the place on the circle east of it.
        const DigPnt& local = dat->pnts[static_cast<std::size_t>(asTwo ? 0 : i)];
        const double rim = asTwo && i == 1 ? local.z : 0;
        const DigPnt pnt{local.x + block.GX + rim, local.y + block.GY, 0};
        SetPnt(i, pnt);
        store_.AddOrgPnt(Figure(), pnt.x, pnt.y);
    }
    edit_.EditCnt = edit_.EditSavedCnt = cnt;
    edit_.EditBusy = 1;
    edit_.EditPhase = 1;
    edit_.EditPntIdx = -1;
    edit_.EditType = info.type;
    store_.ActivePointType = activePointType;
    edit_.EditCode = key.code;
    edit_.EditMesh = key.meshNo;
    edit_.EditDatId = key.datID;
    edit_.EditTag = info.lineTag;
    store_.SetDigDatInfoEx(key.code.View(), key.meshNo, key.datID, kHiddenTag, info.active);
    Repaint(0);
    return true;
}

bool EditTools::ReservePnts(std::int32_t cnt) {
    const auto needed = static_cast<std::size_t>(cnt);
    return edit_.EditPnt.size() >= needed || edit_.EditPnt.Resize(needed);
}

DigPnt EditTools::PntAt(std::int32_t index) const {
    const auto pos = static_cast<std::size_t>(index);
    return index >= 0 && pos < edit_.EditPnt.size() ? edit_.EditPnt[pos] : DigPnt{};
}

void EditTools::SetPnt(std::int32_t index, const DigPnt& pnt) {
    const auto pos = static_cast<std::size_t>(index);
    if (index >= 0 && pos < edit_.EditPnt.size()) edit_.EditPnt[pos] = pnt;
}

/// Takes one point out; the place that gets free at the end keeps its old content.
void EditTools::CloseUpPnts(std::int32_t index) {
    for (std::int32_t i = index; i + 1 < edit_.EditCnt; ++i) SetPnt(i, PntAt(i + 1));
    --edit_.EditCnt;
}

double EditTools::CircleRadius() const { return Pythag(PntAt(0).x - PntAt(1).x, PntAt(0).y - PntAt(1).y); }

bool EditTools::MakeFigure(std::int32_t type, std::int32_t line) {
    const auto number = [](std::int32_t v) { return static_cast<std::int16_t>(v); };  // figures keep 16 bits of both
    const std::int32_t ID = store_.MakeOrgDat(number(type), number(line), kRubberColor, 0);
    if (ID < 1) return false;
    edit_.EditOrgId = ID;
    edit_.EditOrgResets = store_.ResetCount();
    store_.SetOrgDataActive(ID, true);
    return true;
}

void EditTools::DropFigure() {
    store_.DelOrgData(Figure());
    edit_.EditOrgId = -1;
}

std::int32_t EditTools::PickVertex(Point at) const {
    const std::optional<OrgVertex> vertex = PickOrgPoint(store_, at, ctrl_.PlaceOfPicks());
    return vertex && vertex->ID == Figure() ? vertex->index : -1;
}

/// Local to the block as it stands now; of a missing block no origin is taken off.
DigPnt EditTools::Local(const EditKey& item, const DigPnt& world, double z) const {
    const std::int32_t pos = store_.FindBlock(item.code.View(), item.meshNo).block;
    if (pos < 0) return {world.x, world.y, z};
    return {world.x - store_.Block(pos).GX, world.y - store_.Block(pos).GY, z};
}

void EditTools::AddPnt(const EditKey& item, const DigPnt& local) {
    store_.AddDigDatPnt(item.code.View(), item.meshNo, item.datID, local);
}

void EditTools::WritePnts(const EditKey& item) {
    if (edit_.EditType == kLayCircle) return;
    for (std::int32_t i = 0; i < edit_.EditCnt; ++i) {
        store_.EditDigDatPnt(item.code.View(), item.meshNo, item.datID, i, Local(item, PntAt(i), 0));
    }
}

void EditTools::WriteCircle(const EditKey& item, const DigPnt& centre, double radius) {
    store_.EditDigDatPnt(item.code.View(), item.meshNo, item.datID, 0, Local(item, centre, radius));
}

void EditTools::Fire(std::int32_t event, const EditKey& item, std::int32_t cnt, std::int32_t editType) {
    ctrl_.Fire(event, {Variant(std::string(item.code.View())), Variant(item.meshNo), Variant(item.datID), Variant(cnt),
                       Variant(editType)});
}

void EditTools::Repaint(std::int32_t mode) {
    if (dc_ != nullptr) {
        ctrl_.Redraw(*dc_, mode);
    } else {
        ctrl_.RedrawWindow(mode);
    }
}

void EditTools::EndEdit() {
    edit_.EditCnt = 0;
    edit_.EditPntIdx = -1;
    edit_.EditBusy = 0;
    edit_.EditPhase = 0;
}

void EditTools::EndTool() {
    ctrl_.runMode = kRunNormal;
    EndEdit();
    Repaint(0);
}

}  // namespace orvane
