// The scroll repaint: the picture in the top buffer is shifted and only what was uncovered is drawn anew.
#include "control/ctrl.h"
#include "control/frame_rules.h"
#include "render/layers.h"
#include "render/overlay_figures.h"
#include "render/scale_bar.h"

namespace orvane {

namespace {

/// The uncovered span of one axis.
struct Span {
    std::int32_t start = 0;
    std::int32_t size = 0;
};

/// An axis that did not move gives the whole client span: a scroll along one axis alone redraws everything.
Span UncoveredSpan(const ViewParams& view, double now, double old, std::int32_t shift_px, std::int32_t clientStart,
                   std::int32_t clientEnd) {
    if (now == old) return {clientStart, clientEnd};
    if (now > old) return {SaturatedAdd(clientEnd, SaturatedNegative(shift_px)), shift_px};
    return {clientStart, ToInt(view.WorldToPixF(old - now))};
}

}  // namespace

void COrvane4Ctrl::RedrawScroll(DeviceContext& dc, double oldX, double oldY) {
    const Scope scope(*this);
    if (drawState_ < 2 || !mapDraw) return;
    const Rect client = window_.ClientRect();
    const double fx = store.view.WorldToPixF(viewX - oldX);
    const double fy = store.view.WorldToPixF(viewY - oldY);
    const std::int32_t dx = ToInt(fx);
    const std::int32_t dy = ToInt(fy);
    pendX += fx - dx;
    pendY += fy - dy;
    const Span spanX = UncoveredSpan(store.view, viewX, oldX, dx, client.left, client.right);
    const Span spanY = UncoveredSpan(store.view, viewY, oldY, dy, client.top, client.bottom);

    topDC_->ScrollDC(SaturatedNegative(dx), SaturatedNegative(dy), client, client);
    topDC_->PatBlt(spanX.start, 0, spanX.size, client.bottom, Rop3::Whiteness);
    topDC_->PatBlt(0, spanY.start, client.right, spanY.size, Rop3::Whiteness);

    const Rect box = ViewBox(store.view, viewX, viewY, client);
    if (drawArea.left > box.left || drawArea.top > box.top || drawArea.right < box.right || drawArea.bottom < box.bottom) {
        SearchWithMargin(client);
    }

    FrameTarget frame{topDC_.get(), topDC_.get(), viewX, viewY, client, {}, {}, pendX, pendY};
    frame.stripA = {spanX.start, 0, SaturatedAdd(spanX.start, spanX.size), client.bottom};
    frame.stripB = {0, spanY.start, client.right, SaturatedAdd(spanY.start, spanY.size)};
    topDC_->ExcludeClipRect(client);
    topDC_->SelectClipRgn(frame.stripA, RgnMode::Or);
    topDC_->SelectClipRgn(frame.stripB, RgnMode::Or);
    if (rastOnTop == 0) rasters.RastDraw(store.view, frame);
    DrawLayers(store, frame);
    DrawOrgDats(store, frame, orgStrVisible, orgTopDrawID);
    if (rastOnTop == 1) rasters.RastDraw(store.view, frame);
    topDC_->SelectClipRgn(client, RgnMode::Copy);

    CopyToScreen(dc, client);
    frame.dc = &dc;
    DrawScaleBar(frame, store.view, scaleBarMode, baseDC_->GetDeviceCaps(DeviceCap::LogPixelsY));
    viewX -= store.view.PixToWorldF(pendX);
    viewY -= store.view.PixToWorldF(pendY);
    pendX = pendY = 0;
}

}  // namespace orvane
