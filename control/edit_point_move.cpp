// The point move tool: the cursor takes a vertex up and puts it down elsewhere.
#include <algorithm>

#include "control/edit_tools.h"

namespace orvane {

void COrvane4Ctrl::ToolDeleteKey(DeviceContext& dc) {
    const Scope scope(*this);
    EditTools(*this, &dc).DeleteKey();
}

void EditTools::ClickPointMove(Point at) {
    if (edit_.EditPhase == 0) {
        PickToMove(at);
    } else if (edit_.EditPhase == 2) {
        DropHeldPoint(World(at));
    } else if (edit_.EditPhase == 1 && edit_.EditType >= kLayLine) {
        // A point item that the host named has no vertex to take up, so no click ends its edit either.
        const std::int32_t vertex = PickVertex(at);
        if (vertex < 0) return CommitPointMove();
        edit_.EditPntIdx = vertex;
        edit_.EditPhase = 2;
    }
}

void EditTools::PickToMove(Point at) {
    const std::optional<Picked> picked = PickToLoad(at);
    if (!picked) return;
    Fire(kOnEditorStart, picked->key, picked->cnt, kRunEditPntMove);
    if (!Load(picked->key, CircleLoad::CentreAndRim, 1) || edit_.EditType != kLayPoint) return;
    // The cursor carries a point item at once.
    edit_.EditPhase = 2;
    edit_.EditPntIdx = 0;
    edit_.EditCnt = (std::min)(edit_.EditCnt, 1);
}

/// Later points of a polygon at the very same place go along, so that rings stay closed and shared vertices shared.
void EditTools::DropHeldPoint(const DigPnt& world) {
    const std::int32_t held = edit_.EditPntIdx;
    if (IsHeldPnt(held)) {
        const DigPnt old = PntAt(held);
        if (edit_.EditType == kLayPolygon) {
            for (std::int32_t i = held + 1; i < edit_.EditCnt; ++i) {
                if (PntAt(i).x == old.x && PntAt(i).y == old.y) SetPnt(i, world);
            }
        }
        SetPnt(held, world);
    }
    edit_.EditPntIdx = -1;
    edit_.EditPhase = 1;
    edit_.EditBusy = 1;
    if (edit_.EditType == kLayPoint) CommitPointMove();
}

void EditTools::CommitPointMove() {
    const EditKey item = Edited();
    DropFigure();
    ShowItem(item);
    WritePnts(item);
    if (edit_.EditType == kLayCircle) WriteCircle(item, PntAt(0), CircleRadius());
    Fire(kOnEditorEnd, item, edit_.EditCnt, kRunEditPntMove);
    EndTool();
}

void EditTools::DeleteKey() {
    if (ctrl_.runMode != kRunEditPntMove) return;
    if (edit_.EditPhase == 1) {
        DeleteWholeItem();
    } else if (edit_.EditPhase == 2) {
        DeleteHeldPoint();
    }
}

/// The tool goes on: the next click picks anew.
void EditTools::DeleteWholeItem() {
    const EditKey item = Edited();
    store_.DelDigDat(item.code.View(), item.meshNo, item.datID);
    DropFigure();
    EndEdit();
    Fire(kOnEditorEnd, item, 0, kRunDeleteDat);
}

/// No count is too small, and a ring is not closed again: the commit writes what is left over the item's first points, and the
/// item keeps the ones behind.
void EditTools::DeleteHeldPoint() {
    if (!IsHeldPnt(edit_.EditPntIdx) || store_.DelOrgPnt(Figure(), edit_.EditPntIdx) < 0) return;
    CloseUpPnts(edit_.EditPntIdx);
    edit_.EditPntIdx = -1;
    edit_.EditPhase = 1;
    edit_.EditBusy = 1;
}

}  // namespace orvane
