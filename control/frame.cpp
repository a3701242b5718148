// Composing a frame in the two buffers: the map in the base buffer, the map with what lies over it in the top buffer.
#include "control/ctrl.h"
#include "control/frame_rules.h"
#include "platform/trace.h"
#include "render/layers.h"
#include "render/overlay_figures.h"
#include "render/scale_bar.h"

namespace orvane {

std::int32_t SearchMargin(std::int32_t extent) {
    std::int32_t margin = extent;
    if (margin > 3000 && margin < 8000) margin /= 2;
    if (margin > 8000) margin = 5000;
    return margin;
}

Rect ViewBox(const ViewParams& view, double viewX, double viewY, const Rect& client) {
    const std::int32_t x0 = TruncToInt32(viewX);
    const std::int32_t y0 = TruncToInt32(viewY);
    return {x0, y0, SaturatedAdd(x0, view.PixToWorld(client.right)), SaturatedAdd(y0, view.PixToWorld(client.bottom))};
}

void COrvane4Ctrl::Redraw(DeviceContext& dc, std::int32_t mode) {
    const Scope scope(*this);
    if (drawState_ < 1 || !mapDraw) return;
    const Rect client = window_.ClientRect();
    baseDC_->SelectClipRgn(client, RgnMode::Copy);
    topDC_->SelectClipRgn(client, RgnMode::Copy);
    viewX -= store.view.PixToWorld(ToInt(pendX));
    viewY -= store.view.PixToWorld(ToInt(pendY));
    pendX = pendY = 0;

    FrameTarget frame{baseDC_.get(), baseDC_.get(), viewX, viewY, client, client, client, 0, 0};
    if (mode == 0 || drawState_ == 1) {
        Trace("\n\nDRAW:::::::::::::::::::::::::*****\n");
        drawState_ = 2;
        baseDC_->PatBlt(0, 0, client.right, client.bottom, Rop3::Whiteness);
        if (rastOnTop == 0) rasters.RastDraw(store.view, frame);
        SearchWithMargin(client);
        DrawLayers(store, frame);
    }
    topDC_->BitBlt(0, 0, client.right, client.bottom, *baseDC_, 0, 0, Rop3::SrcCopy);
    frame.dc = frame.reference = topDC_.get();
    DrawOrgDats(store, frame, orgStrVisible, orgTopDrawID);
    if (rastOnTop == 1) rasters.RastDraw(store.view, frame);
    CopyToScreen(dc, client);
    frame.dc = &dc;
    DrawScaleBar(frame, store.view, scaleBarMode, baseDC_->GetDeviceCaps(DeviceCap::LogPixelsY));
}

void COrvane4Ctrl::RedrawWindow(std::int32_t mode) {
    const Scope scope(*this);
    const std::unique_ptr<DeviceContext> dc = window_.AcquireDC();
    Redraw(*dc, mode);
}

void COrvane4Ctrl::RDMReDraw() {
    const Scope scope(*this);
    if (drawState_ >= 1) RedrawWindow(0);
}

/// The search covers the view and a margin on each side, so that small scrolls find their data marked already.
void COrvane4Ctrl::SearchWithMargin(const Rect& client) {
    const Rect box = ViewBox(store.view, viewX, viewY, client);
    const std::int32_t mx = SearchMargin(store.view.PixToWorld(client.right));
    const std::int32_t my = SearchMargin(store.view.PixToWorld(client.bottom));
    drawArea = {SaturatedAdd(box.left, SaturatedNegative(mx)), SaturatedAdd(box.top, SaturatedNegative(my)),
                SaturatedAdd(box.right, mx), SaturatedAdd(box.bottom, my)};
    SetDrawArea(store, drawArea);
}

/// The rim of one pixel at the left and top is never copied, and in a scale bar mode its band at the right and bottom neither.
void COrvane4Ctrl::CopyToScreen(DeviceContext& dc, const Rect& client) {
    const std::int32_t band = scaleBarMode == 0 ? 1 : 20;
    dc.BitBlt(1, 1, client.right - band, client.bottom - band, *topDC_, 1, 1, Rop3::SrcCopy);
}

}  // namespace orvane
