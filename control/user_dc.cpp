// Drawing straight into a context that the host supplies: a printer, a metafile, a picture.
#include <memory>

#include "control/ctrl.h"
#include "control/frame_rules.h"
#include "platform/context_registry.h"
#include "platform/trace.h"
#include "render/layers.h"
#include "render/overlay_figures.h"

namespace orvane {

namespace {

/// Puts the screen's numbers back when a foreign frame ends. DeviceDpi keeps the foreign value: nothing on the screen reads it.
class ScreenNumbers {
public:
    ScreenNumbers(ViewParams& view, std::int32_t& dotPerM)
        : view_(view), dotPerM_(dotPerM), zoom_(view.Zoom), savedDotPerM_(view.DotPerM), ratio_(view.DpiRatio) {}
    ~ScreenNumbers() {
        view_.Zoom = zoom_;
        view_.DotPerM = dotPerM_ = savedDotPerM_;
        view_.DpiRatio = ratio_;
    }
    ScreenNumbers(const ScreenNumbers&) = delete;
    ScreenNumbers& operator=(const ScreenNumbers&) = delete;

private:
    ViewParams& view_;
    std::int32_t& dotPerM_;
    std::int32_t zoom_;
    std::int32_t savedDotPerM_;
    double ratio_;
};

}  // namespace

void COrvane4Ctrl::DrawUserDc(DeviceContext& dc, const Rect& rect, double x, double y, std::int32_t zoom, std::int32_t type) {
    const Scope scope(*this);
    if (drawState_ < 1 || !mapDraw) return;
    pendX = pendY = 0;
    // Without a width in millimetres nothing can be drawn to scale, so such a context stays as it is.
    const std::int32_t horzSize = dc.GetDeviceCaps(DeviceCap::HorzSize);
    if (horzSize == 0) return;
    Trace("\n\nDRAW:::::::::::::::::::::::::*****\n");
    if (type == 0) dc.PatBlt(0, 0, rect.right, rect.bottom, Rop3::Whiteness);
    if (store.view.Rotate != 0) RotateView(x, y, store.view.Rotate);

    const ScreenNumbers restore(store.view, dotPerM);
    ViewParams& view = store.view;
    view.Zoom = zoom;
    view.DeviceDpi = dc.GetDeviceCaps(DeviceCap::LogPixelsX);
    view.DpiRatio = static_cast<double>(view.DeviceDpi) / static_cast<double>(view.ScreenDpi);
    dotPerM = view.DotPerM = PixelsPerMetre(dc.GetDeviceCaps(DeviceCap::HorzRes), horzSize);

    const std::int32_t halfW = view.PixToWorld(rect.right) / 2;
    const std::int32_t halfH = view.PixToWorld(rect.bottom) / 2;
    const std::int32_t midX = TruncToInt32(x);
    const std::int32_t midY = TruncToInt32(y);
    drawArea = {SaturatedAdd(midX, SaturatedNegative(halfW)), SaturatedAdd(midY, SaturatedNegative(halfH)),
                SaturatedAdd(midX, halfW), SaturatedAdd(midY, halfH)};
    SetDrawArea(store, drawArea);

    FrameTarget frame{&dc, &dc, x - halfW, y - halfH, rect, rect, rect, 0, 0};
    if (rastOnTop == 0) rasters.RastDraw(store.view, frame);
    {
        const std::unique_ptr<DeviceContext> windowDC = window_.AcquireDC();
        frame.reference = windowDC.get();
        DrawLayers(store, frame);
        frame.reference = &dc;
    }
    DrawOrgDats(store, frame, orgStrVisible, orgTopDrawID);
    if (rastOnTop == 1) rasters.RastDraw(store.view, frame);
}

/// The four numbers are read in the order given and not by their names: hosts of the older family pass left, top, right, bottom.
void COrvane4Ctrl::UserDcDraw(std::int32_t userDC, std::int32_t top, std::int32_t left, std::int32_t bottom, std::int32_t right,
                              std::int32_t type) {
    const std::shared_ptr<DeviceContext> dc = OpenContext(userDC);
    if (dc != nullptr) DrawUserDc(*dc, {top, left, bottom, right}, viewX, viewY, store.view.Zoom, type);
}

void COrvane4Ctrl::UserDcDrawEx(std::int32_t userDC, std::int32_t top, std::int32_t left, std::int32_t bottom, std::int32_t right,
                                double x, double y, std::int32_t zoom, std::int32_t type) {
    const std::shared_ptr<DeviceContext> dc = OpenContext(userDC);
    if (dc != nullptr) DrawUserDc(*dc, {left, top, right, bottom}, x, -y, zoom, type);
}

}  // namespace orvane
