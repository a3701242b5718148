#include "render/overlay_figures.h"

#include <iterator>
#include <span>

#include "analysis/geometry/plane.h"
#include "platform/to_int.h"
#include "render/block_drawing.h"
#include "render/draw_scratch.h"
#include "render/line_polygon.h"
#include "render/vertex_marks.h"
#include "store/strips.h"

namespace orvane {

namespace {

/// The copy of the top figure that is drawn behind all others; it leaves the store however the drawing ends. It goes by its
/// position: after deletions its ID may be that of an older figure as well.
class TopFigure {
public:
    TopFigure(CDigMem& store, std::int32_t topID) : store_(store), topID_(topID) {
        if (topID > 0 && store.MakeOrgDat(kLayPoint, 1, 0, 0) >= 0) pos_ = store.OrgDatCnt() - 1;
    }
    ~TopFigure() {
        if (pos_ >= 0) store_.DropLastOrgDat();
    }
    TopFigure(const TopFigure&) = delete;
    TopFigure& operator=(const TopFigure&) = delete;

    void TakeLook(const OrgDat& dat) {
        if (!IsSource(dat)) return;
        OrgDat& copy = store_.MutableOrgDat(pos_);
        copy.type = dat.type;
        copy.line = dat.line;
        copy.color = dat.color;
        copy.fill = dat.fill;
    }
    /// The y goes in negated, and the drawing negates it once more.
    void TakePoints(const OrgDat& dat) {
        if (!IsSource(dat)) return;
        for (const DigPnt& pnt : dat.pnts) store_.AddOrgPntAt(pos_, pnt.x, -pnt.y);
    }

private:
    /// The copy itself may have the ID; what it would take from itself is never drawn.
    bool IsSource(const OrgDat& dat) const { return pos_ >= 0 && dat.ID == topID_ && &dat != &store_.OrgDats().back(); }

    CDigMem& store_;
    std::int32_t topID_;
    std::int32_t pos_ = -1;
};

class FigureDrawing {
public:
    FigureDrawing(const CDigMem& store, const FrameTarget& frame)
        : store_(store),
          frame_(frame),
          dc_(*frame.dc),
          penFactor_(store.view.PenFactor()),
          halfSide_px_(OrgPointHalfSide(store.view.Zoom, penFactor_)),
          transform_(store.view, frame.x, frame.y, frame.pendX, frame.pendY, 0, 0),
          activePen_(CreatePen(PenStyle::Solid, PenUnitsToPix(3, penFactor_), store.ActiveColor)),
          currentPen_(CreatePen(PenStyle::Solid, penFactor_, 0)),
          blackPen_(currentPen_),
          activeBrush_(CreateSolidBrush(store.ActiveColor)),
          currentBrush_(CreateSolidBrush(0)),
          lastLine_(penFactor_),
          selected_(dc_, currentPen_, currentBrush_) {}

    /// Room for the figure's points on the device and, for a polygon, its rings; false when it cannot be had.
    bool MakeRoom(const OrgDat& dat) {
        pts_ = scratch_.Points(dat.pntCnt);
        ringCounts_ = dat.type == kLayPolygon ? scratch_.RingCounts(dat.pntCnt) : nullptr;
        return pts_ != nullptr && (dat.type != kLayPolygon || ringCounts_ != nullptr);
    }

    /// REQUIRES: MakeRoom of the same figure, which has a point.
    void Draw(const OrgDat& dat) {
        transform_.ToDevice(dat.pnts.data(), dat.pntCnt, pts_);
        dc_.SetROP2(dat.fill != 0 ? Rop2::CopyPen : Rop2::MaskPen);
        if (!PntsInStrips(pts_, dat.pntCnt, frame_.stripA, frame_.stripB)) return;
        const std::span<const Point> pts(pts_, static_cast<std::size_t>(dat.pntCnt));
        const std::span<const std::int32_t> rings = RingsOf(dat);

        if (dat.type == kLayEllipse) DrawBox(pts);
        if (dat.active == 1 && store_.ActivePointType == 1) {
            dc_.SelectBrush(selected_.OldBrush());
            dc_.SelectPen(selected_.OldPen());
            DrawVertexMarks(dc_, pts, rings);
        }
        SelectLook(dat);
        if (dat.active == 1) {
            dc_.SelectBrush(activeBrush_);
            dc_.SelectPen(activePen_);
        }
        DrawShape(dat.type, pts, rings);
    }

private:
    std::span<const std::int32_t> RingsOf(const OrgDat& dat) const {
        if (dat.type != kLayPolygon) return {};
        const std::span<const DigPnt> pnts(dat.pnts.data(), static_cast<std::size_t>(dat.pntCnt));
        return {ringCounts_, static_cast<std::size_t>(SplitRings(pnts, ringCounts_, false))};
    }

    /// The dotted box of an ellipse. A missing second corner is the device's origin.
    void DrawBox(std::span<const Point> pts) {
        const Point p0 = pts[0];
        const Point p1 = pts.size() > 1 ? pts[1] : Point{};
        const Pen before = dc_.SelectPen(CreatePen(PenStyle::Dot, 1, 0));
        const Point box[] = {p0, {p0.x, p1.y}, p1, {p1.x, p0.y}, p0};
        dc_.Polyline(box, static_cast<std::int32_t>(std::size(box)));
        dc_.SelectPen(before);
    }

    /// One memory of line and colour serves pen and brush, whichever of them the figure before took. So a figure may get a tool
    /// of an older colour, and pictures rely on it.
    void SelectLook(const OrgDat& dat) {
        if (dat.type == kLayPolygon || dat.type == kLayCircle) {
            dc_.SelectPen(blackPen_);
            if (dat.color != lastColor_) currentBrush_ = CreateSolidBrush(dat.color);
            dc_.SelectBrush(currentBrush_);
        }
        if (dat.type == kLayLine || dat.line == 0) {
            if (dat.line != lastLine_ || dat.color != lastColor_) currentPen_ = PenOf(dat);
            dc_.SelectPen(currentPen_);
        }
        lastColor_ = dat.color;
        lastLine_ = dat.line;
    }

    Pen PenOf(const OrgDat& dat) const {
        const std::int32_t line = dat.line;
        if (line < 0) return CreatePen(PenStyle::Dot, PenUnitsToPix(-line, penFactor_), dat.color);
        return CreatePen(PenStyle::Solid, PenUnitsToPix(line == 0 ? 1 : line, penFactor_), dat.color);
    }

    void DrawShape(std::int32_t type, std::span<const Point> pts, std::span<const std::int32_t> rings) {
        const auto n = static_cast<std::int32_t>(pts.size());
        switch (type) {
            case kLayPoint:
                DrawSquare(pts[0]);
                break;
            case kLayLine:
                dc_.Polyline(pts.data(), n);
                break;
            case kLayPolygon:
                if (rings.empty()) {
                    FillThenOutline(pts.data(), n);
                } else {
                    DrawRings(pts, rings);
                }
                break;
            case kLayCircle:
                if (n > 1) DrawCircle(pts[0], pts[1]);
                break;
            case kLayEllipse:
                if (n > 1) FillEllipse(pts[0].x, pts[0].y, pts[1].x, pts[1].y);
                break;
            default:
                break;
        }
    }

    void DrawSquare(Point at) {
        const std::int32_t left = SaturatedAdd(at.x, SaturatedNegative(halfSide_px_));
        const std::int32_t top = SaturatedAdd(at.y, SaturatedNegative(halfSide_px_));
        const std::int32_t right = SaturatedAdd(at.x, halfSide_px_);
        const std::int32_t bottom = SaturatedAdd(at.y, halfSide_px_);
        const Point corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
        FillThenOutline(corners, static_cast<std::int32_t>(std::size(corners)));
    }

    void FillThenOutline(const Point* pts, std::int32_t count) {
        dc_.BeginPath();
        dc_.Polygon(pts, count);
        dc_.EndPath();
        dc_.FillPath();
        dc_.Polygon(pts, count);
    }

    void DrawRings(std::span<const Point> pts, std::span<const std::int32_t> rings) {
        dc_.BeginPath();
        dc_.PolyPolygon(pts.data(), rings.data(), static_cast<std::int32_t>(rings.size()));
        dc_.EndPath();
        dc_.StrokeAndFillPath();
    }

    void DrawCircle(Point centre, Point rim) {
        const double dx = static_cast<double>(centre.x) - static_cast<double>(rim.x);
        const double dy = static_cast<double>(centre.y) - static_cast<double>(rim.y);
        const std::int32_t r = TruncToInt32(Pythag(dx, dy));
        FillEllipse(SaturatedAdd(centre.x, -r), SaturatedAdd(centre.y, -r), SaturatedAdd(centre.x, r), SaturatedAdd(centre.y, r));
    }

    void FillEllipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
        dc_.BeginPath();
        dc_.Ellipse(left, top, right, bottom);
        dc_.EndPath();
        dc_.FillPath();
    }

    const CDigMem& store_;
    const FrameTarget& frame_;
    DeviceContext& dc_;
    std::int32_t penFactor_;
    std::int32_t halfSide_px_;
    DeviceTransform transform_;
    Pen activePen_, currentPen_, blackPen_;
    Brush activeBrush_, currentBrush_;
    std::int32_t lastLine_;  ///< begins as a width, though figures write their line number here
    Rgb lastColor_ = 0;
    DrawScratch scratch_;
    Point* pts_ = nullptr;
    std::int32_t* ringCounts_ = nullptr;
    SelectedTools selected_;
};

void DrawFigures(CDigMem& store, const FrameTarget& frame, std::int32_t orgTopDrawID) {
    FigureDrawing drawing(store, frame);
    TopFigure top(store, orgTopDrawID);
    for (const OrgDat& dat : store.OrgDats()) {
        if (dat.ID == 0) continue;
        top.TakeLook(dat);
        if (dat.pntCnt < 1) break;  // what stands behind it is not drawn in this frame
        if (!drawing.MakeRoom(dat)) continue;
        top.TakePoints(dat);
        drawing.Draw(dat);
    }
}

/// Strings have no look of their own: font and text colour are what the context carries.
void DrawStrings(const CDigMem& store, const FrameTarget& frame) {
    const DeviceTransform transform(store.view, frame.x, frame.y, frame.pendX, frame.pendY, 0, 0);
    for (const OrgDat& dat : store.OrgDats()) {
        if (dat.ID == 0 || dat.strText.empty()) continue;
        const Point at = transform.ToDevice(dat.strX, dat.strY);
        frame.dc->SetROP2(dat.strFill != 0 ? Rop2::CopyPen : Rop2::MaskPen);
        frame.dc->DrawTextBytes(at.x, at.y, dat.strText);
    }
}

}  // namespace

std::int32_t OrgPointHalfSide(std::int32_t zoom, std::int32_t penFactor) {
    struct Step {
        std::int32_t above, size;
    };
    constexpr Step kSteps[] = {{100000, 1}, {50000, 2}, {30000, 3}, {20000, 4}, {10000, 5}, {7000, 6}, {5000, 7}, {3000, 9}};
    for (const Step& step : kSteps) {
        if (zoom > step.above) return PenUnitsToPix(step.size, penFactor);
    }
    return PenUnitsToPix(10, penFactor);
}

void DrawOrgDats(CDigMem& store, const FrameTarget& frame, bool orgStrVisible, std::int32_t orgTopDrawID) {
    if (store.OrgDatCnt() == 0) return;
    DrawFigures(store, frame, orgTopDrawID);
    if (orgStrVisible) DrawStrings(store, frame);
}

}  // namespace orvane
