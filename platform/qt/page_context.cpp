#include "platform/qt/page_context.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/pen_dashes.h"
#include "platform/qt/round_figures.h"
#include "platform/qt/text_outline.h"
#include "platform/rect.h"

namespace orvane {

namespace {

// Lines stand on the middles of pixels, and a page counts from their corners.
constexpr double kMiddle = 0.5;
constexpr int kHatchPeriod_px = 8;

QColor ToQColor(Rgb color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF), static_cast<int>(color >> 16 & 0xFF)};
}

QPainterPath PathOf(const Figures& figures) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    figures.ForEach([&](const Point* pts, std::size_t count, bool closed) {
        if (count == 0) return;
        path.moveTo(pts[0].x + kMiddle, pts[0].y + kMiddle);
        for (std::size_t i = 1; i < count; ++i) path.lineTo(pts[i].x + kMiddle, pts[i].y + kMiddle);
        if (closed) path.closeSubpath();
    });
    return path;
}

QRect BoxOf(const Figures& figures, std::int32_t margin_px) {
    const QRectF box = PathOf(figures).boundingRect();
    const double margin = margin_px + 1.0;
    return box.adjusted(-margin, -margin, margin, margin).toAlignedRect();
}

QRect ToQRect(const Rect& rect) {
    const Rect r = NormalizeRect(rect);
    return QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1));
}

QVector<double> DashesOf(const Pen& pen, double width_px) {
    QVector<double> dashes;
    if (IsStandardDash(pen.style) && pen.width_px <= 1) {
        const StandardDashes& standard = kStandardDashes[static_cast<std::size_t>(pen.style) - 1];
        for (std::size_t i = 0; i < standard.count; ++i) dashes << standard.lengths_px[i];
    } else if (pen.style == PenStyle::UserStyle || pen.style == PenStyle::GeometricFlatUser) {
        const int unit = pen.style == PenStyle::UserStyle ? kUserStyleUnit_px : 1;
        for (std::size_t i = 0; i < pen.dashCnt; ++i) dashes << pen.dashes[i] * unit;
        if (dashes.size() % 2 != 0) dashes += dashes;
    }
    for (double& dash : dashes) dash /= width_px;
    return dashes;
}

}  // namespace

PageContext::PageContext(QPainter& page, QImage& picture, const DeviceNumbers& numbers)
    : page_(page), picture_(picture), raster_(picture, numbers) {
    page_.setRenderHint(QPainter::LosslessImageRendering);
}

PageContext::~PageContext() { PlaceWaiting(); }

void PageContext::Wait(const QRect& box) {
    const QRect seen = box & picture_.rect() & clip_.On(PageRect()).boundingRect();
    if (!seen.isEmpty()) waiting_ |= seen;
}

void PageContext::PlaceWaiting() {
    if (waiting_.isEmpty()) return;
    // The picture is whole there, clip or not.
    page_.setClipping(false);
    clipped_.reset();
    page_.drawImage(waiting_, picture_.copy(waiting_));
    waiting_ = {};
    ++placed_;
}

void PageContext::BeginShape() {
    PlaceWaiting();
    // The paper is larger than the picture: what reaches over its edge would lie in the margins.
    const QRegion clip = clip_.On(PageRect()) & picture_.rect();
    if (clipped_ == clip) return;
    page_.setClipRegion(clip);
    clipped_ = clip;
}

Pen PageContext::SelectPen(const Pen& pen) {
    if (!pen.empty) state_.pen = pen;
    return raster_.SelectPen(pen);
}

Brush PageContext::SelectBrush(const Brush& brush) {
    state_.brush = brush;
    return raster_.SelectBrush(brush);
}

Font PageContext::SelectFont(const Font& font) {
    font_ = font;
    return raster_.SelectFont(font);
}

Rop2 PageContext::SetROP2(Rop2 mode) {
    if (mode >= Rop2::Black && mode <= Rop2::White) state_.rop2 = mode;
    return raster_.SetROP2(mode);
}

BkMode PageContext::SetBkMode(BkMode mode) {
    if (mode == BkMode::Transparent || mode == BkMode::Opaque) state_.bkMode = mode;
    return raster_.SetBkMode(mode);
}

Rgb PageContext::SetBkColor(Rgb color) {
    state_.bkColor = color;
    return raster_.SetBkColor(color);
}

Rgb PageContext::SetTextColor(Rgb color) {
    textColor_ = color;
    return raster_.SetTextColor(color);
}

TextAlign PageContext::SetTextAlign(TextAlign align) {
    align_ = align;
    return raster_.SetTextAlign(align);
}

ArcDirection PageContext::SetArcDirection(ArcDirection direction) {
    arcs_ = direction;
    return raster_.SetArcDirection(direction);
}

void PageContext::Stroke(const QPainterPath& path) {
    if (state_.pen.style == PenStyle::Null) return;
    const double width = (std::max)(1.0, std::abs(static_cast<double>(state_.pen.width_px)));
    QPen pen(ToQColor(state_.pen.color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (state_.pen.style == PenStyle::GeometricFlatUser) pen.setCapStyle(Qt::FlatCap);
    const QVector<double> dashes = DashesOf(state_.pen, width);
    if (!dashes.isEmpty()) {
        // Of the standard styles the gaps take the background's colour while it is opaque.
        if (IsStandardDash(state_.pen.style) && state_.bkMode == BkMode::Opaque) {
            page_.strokePath(path, QPen(ToQColor(state_.bkColor), width));
        }
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern(dashes);
    }
    page_.strokePath(path, pen);
}

void PageContext::Fill(const QPainterPath& path, const Brush& brush) {
    if (brush.style == BrushStyle::Hatched) return FillHatched(path, brush);
    if (brush.style == BrushStyle::Solid) page_.fillPath(path, ToQColor(brush.color));
}

/// The lines of the platform's hatches, whose pattern begins at the corner of the page.
void PageContext::FillHatched(const QPainterPath& path, const Brush& brush) {
    if (state_.bkMode == BkMode::Opaque) page_.fillPath(path, ToQColor(state_.bkColor));
    page_.save();
    page_.setClipPath(path, Qt::IntersectClip);
    page_.setPen(QPen(ToQColor(brush.color), 1));
    const QRect box = path.boundingRect().toAlignedRect() & picture_.rect();
    const int left = box.left() & ~(kHatchPeriod_px - 1);
    const int top = box.top() & ~(kHatchPeriod_px - 1);
    const Hatch hatch = brush.hatch;
    const auto line = [&](double x1, double y1, double x2, double y2) {
        page_.drawLine(QPointF(x1 + kMiddle, y1 + kMiddle), QPointF(x2 + kMiddle, y2 + kMiddle));
    };
    if (hatch == Hatch::Horizontal || hatch == Hatch::Cross) {
        for (int y = top + 3; y <= box.bottom(); y += kHatchPeriod_px) line(box.left() - 1, y, box.right() + 1, y);
    }
    if (hatch == Hatch::Vertical || hatch == Hatch::Cross) {
        for (int x = left + 4; x <= box.right(); x += kHatchPeriod_px) line(x, box.top() - 1, x, box.bottom() + 1);
    }
    const int width = box.right() - left + kHatchPeriod_px;
    const int height = box.bottom() - top + kHatchPeriod_px;
    if (hatch == Hatch::FDiagonal || hatch == Hatch::DiagCross) {
        for (int d = -(height & ~7) - kHatchPeriod_px; d <= width; d += kHatchPeriod_px) {
            line(left + d, top, left + d + height, top + height);
        }
    }
    if (hatch == Hatch::BDiagonal || hatch == Hatch::DiagCross) {
        for (int d = 7; d <= width + height; d += kHatchPeriod_px) line(left + d, top, left + d - height, top + height);
    }
    page_.restore();
}

void PageContext::Draw(const Figures& figures, Parts parts, bool isPath) {
    if (path_.IsOpen() && !isPath) {
        path_.Add(figures);
        return;
    }
    if (state_.rop2 == Rop2::Nop) return;
    if (state_.rop2 != Rop2::CopyPen) return Wait(BoxOf(figures, std::abs(state_.pen.width_px)));
    BeginShape();
    const QPainterPath path = PathOf(figures);
    if (parts.fill) Fill(path, state_.brush);
    if (parts.stroke) Stroke(path);
}

void PageContext::MoveToEx(std::int32_t x, std::int32_t y) {
    position_ = {x, y};
    raster_.MoveToEx(x, y);
}

void PageContext::LineTo(std::int32_t x, std::int32_t y) {
    const Point line[] = {position_, {x, y}};
    position_ = {x, y};
    raster_.LineTo(x, y);
    const std::int32_t count = 2;
    const std::uint8_t open = 0;
    Draw({line, &count, 1, &open}, {false, true}, false);
}

void PageContext::Polyline(const Point* pts, std::int32_t count) {
    raster_.Polyline(pts, count);
    const std::uint8_t open = 0;
    if (count >= 2) Draw({pts, &count, 1, &open}, {false, true}, false);
}

void PageContext::PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) {
    raster_.PolyPolygon(pts, counts, ringCnt);
    if (ringCnt < 1 || std::any_of(counts, counts + ringCnt, [](std::int32_t n) { return n < 2; })) return;
    Draw({pts, counts, static_cast<std::size_t>(ringCnt), nullptr}, {true, true}, false);
}

void PageContext::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
    raster_.Ellipse(left, top, right, bottom);
    round_.clear();
    RoundFigure({left, top, right, bottom}).Outline(ToBox(PageRect()), round_);
    const auto count = static_cast<std::int32_t>(round_.size());
    if (count >= 2) Draw({round_.data(), &count, 1, nullptr}, {true, true}, false);
}

void PageContext::ArcTo(const Rect& box, Point start, Point end) {
    raster_.ArcTo(box, start, end);
    round_.clear();
    round_.push_back(position_);
    RoundFigure(box).Arc(start, end, arcs_ == ArcDirection::Clockwise, ToBox(PageRect()), round_);
    position_ = round_.back();
    const auto count = static_cast<std::int32_t>(round_.size());
    const std::uint8_t open = 0;
    if (count >= 2) Draw({round_.data(), &count, 1, &open}, {false, true}, false);
}

void PageContext::Chord(const Rect& box, Point start, Point end) {
    raster_.Chord(box, start, end);
    round_.clear();
    RoundFigure(box).Arc(start, end, arcs_ == ArcDirection::Clockwise, ToBox(PageRect()), round_);
    const auto count = static_cast<std::int32_t>(round_.size());
    if (count >= 2) Draw({round_.data(), &count, 1, nullptr}, {true, true}, false);
}

void PageContext::BeginPath() {
    path_.Begin();
    raster_.BeginPath();
}

void PageContext::EndPath() {
    path_.End();
    raster_.EndPath();
}

void PageContext::DrawPath(Parts parts, bool closeAll) {
    if (!path_.IsFinished()) return;
    Figures figures = path_.Gathered();
    if (closeAll) figures.closed = nullptr;
    Draw(figures, parts, true);
    path_.Drop();
}

void PageContext::FillPath() {
    raster_.FillPath();
    DrawPath({true, false}, false);
}

void PageContext::StrokePath() {
    raster_.StrokePath();
    DrawPath({false, true}, false);
}

void PageContext::StrokeAndFillPath() {
    raster_.StrokeAndFillPath();
    DrawPath({true, true}, true);
}

void PageContext::DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) {
    raster_.DrawTextBytes(x, y, text);
    const TextShapes shapes =
        OutlineText({font_, textColor_, state_.bkColor, state_.bkMode, static_cast<std::uint32_t>(align_)}, x, y, text);
    BeginShape();
    if (state_.bkMode == BkMode::Opaque && !shapes.cell.isEmpty()) {
        QPainterPath cell;
        cell.addPolygon(shapes.cell);
        page_.fillPath(cell, ToQColor(state_.bkColor));
    }
    page_.fillPath(shapes.glyphs, ToQColor(textColor_));
}

void PageContext::SelectClipRgn(const Rect& region, RgnMode mode) {
    raster_.SelectClipRgn(region, mode);
    clip_.Select(region, mode, PageRect());
}

void PageContext::ExcludeClipRect(const Rect& rect) {
    raster_.ExcludeClipRect(rect);
    clip_.Exclude(rect, PageRect());
}

void PageContext::FillRect(const Rect& rect, const Brush& brush) {
    raster_.FillRect(rect, brush);
    BeginShape();
    QPainterPath path;
    path.addRect(ToQRect(rect));
    Fill(path, brush);
}

void PageContext::PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) {
    raster_.PatBlt(x, y, width, height, rop);
    const QRect box = QRect(x, y, width, height).normalized() & picture_.rect();
    if (rop != Rop3::Whiteness && rop != Rop3::Blackness && rop != Rop3::PatCopy) return Wait(box);
    if (box == picture_.rect() && rop == Rop3::Whiteness && clip_.On(PageRect()) == QRegion(box)) {
        waiting_ = {};  // paper is white
        if (placed_ == 0) return;
    }
    BeginShape();
    QPainterPath path;
    path.addRect(box);
    if (rop == Rop3::PatCopy) return Fill(path, state_.brush);
    page_.fillPath(path, rop == Rop3::Whiteness ? Qt::white : Qt::black);
}

void PageContext::BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                         std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) {
    raster_.BitBlt(x, y, width, height, &source == this ? raster_ : source, sourceX, sourceY, rop);
    Wait(QRect(x, y, width, height).normalized());
}

void PageContext::StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                             std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                             Rop3 rop) {
    raster_.StretchBlt(x, y, width, height, source, sourceX, sourceY, sourceWidth, sourceHeight, rop);
    Wait(QRect(x, y, width, height).normalized());
}

void PageContext::ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) {
    raster_.ScrollDC(dx, dy, scroll, clip);
    Wait(ToQRect(clip));
}

}  // namespace orvane
