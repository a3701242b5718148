// The tools that insert and take out vertices.
#include "control/edit_tools.h"
#include "select/near_segment.h"

namespace orvane {
namespace {

bool HasFixedPoints(std::int32_t layType) { return layType == kLayPoint || layType == kLayCircle || layType == kLayEllipse; }

/// A line keeps two points, a ring its triangle.
bool CanLosePoint(std::int32_t layType, std::int32_t cnt) {
    return (layType == kLayLine && cnt >= 3) || (layType == kLayPolygon && cnt >= 5);
}

}  // namespace

void COrvane4Ctrl::FinishPointAddTool() {
    const Scope scope(*this);
    EditTools(*this).FinishPointAdd();
}

/// Hosts hear 200 from both tools. Items with a fixed number of points are only made active.
void EditTools::PickForPoints(Point at) {
    const std::optional<Picked> picked = PickToLoad(at);
    if (!picked || HasFixedPoints(picked->type)) return;
    Fire(kOnEditorStart, picked->key, picked->cnt, kRunEditPntMove);
    Load(picked->key, CircleLoad::CentreAndRim, 1);
}

void EditTools::ClickPointAdd(Point at) {
    if (edit_.EditPhase == 0) return PickForPoints(at);
    if (edit_.EditPhase != 1 || HasFixedPoints(edit_.EditType)) return;
    const DigPnt world = World(at);
    // The segment that the last search remembered changes with every point inserted into it.
    if (InsertPoint(world)) NearSegment(store_, Figure(), world.x, world.y, false);
    Repaint(2);
}

/// Puts a point where the rubber band shows it. False when no segment is remembered. A point beyond what the record holds, or
/// that the figure refuses, changes nothing.
bool EditTools::InsertPoint(const DigPnt& world) {
    const std::int32_t pos = NearSegment(store_, Figure(), world.x, world.y, true).index;
    if (pos < 0) return false;
    if (pos > edit_.EditCnt || edit_.EditCnt >= kMaxEditPnt || !ReservePnts(edit_.EditCnt + 1)) return true;
    if (store_.InsOrgPnt(Figure(), pos, world.x, world.y) < 0) return true;
    for (std::int32_t i = edit_.EditCnt; i > pos; --i) SetPnt(i, PntAt(i - 1));
    SetPnt(pos, world);
    ++edit_.EditCnt;
    return true;
}

void EditTools::FinishPointAdd() {
    const EditKey item = Edited();
    ShowItem(item);
    ctrl_.runMode = kRunNormal;
    // The new ones come at the origin and are then written over with the others; the bounds keep having seen it.
    for (std::int32_t i = edit_.EditSavedCnt; i < edit_.EditCnt; ++i) AddPnt(item, {0, 0, 0});
    WritePnts(item);
    edit_.EditBusy = 0;
    DropFigure();
    Fire(kOnEditorEnd, item, edit_.EditCnt, kRunEditPntAdd);
    Repaint(0);
}

void EditTools::ClickPointDelete(Point at) {
    if (edit_.EditPhase == 0) return PickForPoints(at);
    if (edit_.EditPhase != 1 || HasFixedPoints(edit_.EditType)) return;
    const std::int32_t vertex = PickVertex(at);
    if (vertex < 0) return CommitPointDelete();
    // It stays the marked one where nothing is removed.
    edit_.EditPntIdx = vertex;
    if (CanLosePoint(edit_.EditType, edit_.EditCnt)) DeletePoint(vertex);
}

void EditTools::DeletePoint(std::int32_t index) {
    if (!IsHeldPnt(index) || store_.DelOrgPnt(Figure(), index) < 0) return;
    if (edit_.EditType == kLayPolygon) {
        // The point that closed the ring goes to the new first one.
        const DigPnt gone = PntAt(index);
        for (std::int32_t i = index + 1; i < edit_.EditCnt; ++i) {
            if (PntAt(i).x != gone.x || PntAt(i).y != gone.y) continue;
            SetPnt(i, PntAt(index + 1));
            break;
        }
    }
    CloseUpPnts(index);
    edit_.EditPntIdx = -1;
    edit_.EditBusy = 1;
    Repaint(0);
}

void EditTools::CommitPointDelete() {
    const EditKey item = Edited();
    DropFigure();
    ShowItem(item);
    if (edit_.EditCnt < edit_.EditSavedCnt) {
        for (std::int32_t i = edit_.EditCnt; i < edit_.EditSavedCnt; ++i) {
            store_.DelDigDatPnt(item.code.View(), item.meshNo, item.datID, 0);
        }
        WritePnts(item);
        Fire(kOnEditorEnd, item, edit_.EditCnt, kRunEditPntDel);
    } else {
        Fire(kOnEditorEnd, item, 0, kEditCancelled);
    }
    EndTool();
}

}  // namespace orvane
