// Which tool a click and a mouse move go to, and what follows the cursor meanwhile.
#include "control/edit_tools.h"
#include "control/rubber_line.h"
#include "platform/to_int.h"
#include "select/near_segment.h"
#include "select/pick_figure.h"

namespace orvane {

void COrvane4Ctrl::ToolClick(DeviceContext& dc, std::uint32_t, Point at) {
    const Scope scope(*this);
    EditTools(*this, &dc).Click(at);
}

void COrvane4Ctrl::ToolMove(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    EditTools(*this).Move(flags, at);
}

void EditTools::Click(Point at) {
    const std::int16_t mode = ctrl_.runMode;
    switch (mode) {
        case kRunAddCollect:
            return ClickAdd(at);
        case kRunEditPntMove:
            return ClickPointMove(at);
        case kRunEditPntAdd:
            return ClickPointAdd(at);
        case kRunEditPntDel:
            return ClickPointDelete(at);
        case kRunMoveDat:
        case kRunCopyDat:
            return ClickMoveOrCopy(at, mode);
        case kRunDeleteDat:
            return ClickDelete(at);
        default:
            return;
    }
}

void EditTools::Move(std::uint32_t flags, Point at) {
    const std::int16_t mode = ctrl_.runMode;
    const bool holdsPoint = mode == kRunEditPntMove && edit_.EditPntIdx > -1 && edit_.EditPhase == 2;
    if (mode == kRunAddCollect) {
        MoveHeldPoint(edit_.EditCnt, World(at));
    } else if (holdsPoint) {
        MoveHeldPoint(edit_.EditPntIdx, World(at));
    } else if ((mode == kRunEditPntMove || mode == kRunEditPntDel) && edit_.EditPntIdx == -1) {
        ShapeCursor(at);
    } else if (mode == kRunEditPntAdd && edit_.EditPhase == 1) {
        DrawRubberBand(flags, at);
    } else if ((mode == kRunMoveDat || mode == kRunCopyDat) && edit_.EditPhase == 1) {
        MoveWholeFigure(World(at));
    }
}

void EditTools::MoveHeldPoint(std::int32_t index, const DigPnt& world) {
    store_.EditOrgPnt(Figure(), index, world.x, world.y);
    Repaint(2);
}

/// Any active figure's vertex turns the cursor, the host's own too.
void EditTools::ShapeCursor(Point at) {
    const std::optional<OrgVertex> vertex = PickOrgPoint(store_, at, ctrl_.PlaceOfPicks());
    const CursorShape wanted = vertex && vertex->ID > 0 ? CursorShape::Cross : CursorShape::Arrow;
    if (ctrl_.window().CurrentCursorShape() != wanted) ctrl_.window().SetCursorShape(wanted);
}

/// Shows where a click would insert a point. The ends are placed without rotation and scale, as clicks are read.
void EditTools::DrawRubberBand(std::uint32_t flags, Point at) {
    const DigPnt cursor = World(at);
    const NearSegmentAnswer segment = NearSegment(store_, Figure(), cursor.x, cursor.y, (flags & kMkControl) != 0);
    if (segment.index < 0) return;
    const auto pixel = [this](double x, double y) {
        return Point{TruncToInt32(store_.view.WorldToPixF(x - ctrl_.viewX)),
                     TruncToInt32(store_.view.WorldToPixF(-(y + ctrl_.viewY)))};
    };
    const Point band[] = {pixel(segment.firstX, segment.firstY), at, pixel(segment.secondX, segment.secondY)};
    DrawRubberLine(ctrl_, band);
}

void EditTools::MoveWholeFigure(const DigPnt& world) {
    store_.ShiftOrgPnts(Figure(), world.x - edit_.EditLastX, world.y - edit_.EditLastY);
    edit_.EditLastX = world.x;
    edit_.EditLastY = world.y;
    Repaint(2);
}

}  // namespace orvane
