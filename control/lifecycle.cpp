// Creation, init, first paint, persistence and the end of a control.
#include "control/ctrl.h"
#include "control/frame_rules.h"
#include "platform/context_registry.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

constexpr std::uint32_t kStateVersion = 0x00010000;
constexpr std::int32_t kStartZoom = 10000;
constexpr double kStartAreaLow = -10000.0;
constexpr double kStartAreaHigh = 20000.0;
constexpr Rgb kStartActiveColor = 0x0000FF;

}  // namespace

ControlPtr COrvane4Ctrl::Create(Window& window, Files& files) { return ControlPtr(new COrvane4Ctrl(window, files)); }

COrvane4Ctrl::COrvane4Ctrl(Window& window, Files& files) : window_(window), files_(files) {}

COrvane4Ctrl::~COrvane4Ctrl() {
    ++callDepth_;  // what a raster server calls at its end must not destroy this again
    // Base before top, each context before its bitmap: a bitmap must outlive its selection.
    UnregisterContext(baseHandle_);
    baseDC_.reset();
    baseBitmap_.reset();
    topDC_.reset();
    topBitmap_.reset();
    store.FreeAll();
    drawState_ = bufferState_ = -1;
    rasters.RastTerm();
    rasters.Forget();
}

void ControlDeleter::operator()(COrvane4Ctrl* ctrl) const {
    if (ctrl == nullptr) return;
    if (ctrl->callDepth_ > 0) {
        ctrl->dying_ = true;
        ctrl->events_ = nullptr;  // whoever listened may be gone as well
        return;
    }
    delete ctrl;
}

COrvane4Ctrl::Scope::Scope(COrvane4Ctrl& ctrl) : ctrl_(ctrl) { ++ctrl_.callDepth_; }

COrvane4Ctrl::Scope::~Scope() {
    if (--ctrl_.callDepth_ == 0 && ctrl_.dying_) delete &ctrl_;
}

bool COrvane4Ctrl::RDMInit() {
    const Scope scope(*this);
    const std::int32_t before = drawState_;
    const bool done = store.Init() != 0;

    store.ActiveColor = kStartActiveColor;
    store.ActivePointType = 0;
    store.DigStrVisible = 0;
    store.CutSameString = 0;
    store.LineTagMode = 1;
    store.view.Rotate = 0;
    store.view.OffX = store.view.OffY = 0;
    store.view.ScaleX = store.view.ScaleY = 1.0;
    store.view.Zoom = kStartZoom;
    store.view.AreaTop = store.view.AreaLeft = areaTop = areaLeft = kStartAreaLow;
    store.view.AreaBottom = store.view.AreaRight = areaBottom = areaRight = kStartAreaHigh;
    orgStrVisible = false;
    orgTopDrawID = 0;
    orgMoveID = orgMoveIndex = 0;
    orgMoving = false;
    devOffX = devOffY = 0;
    viewX = viewY = 0;
    pendX = pendY = 0;
    scrollActive = false;
    input.rectState = RectState::None;  // its corners stay: a timer that still runs goes on drawing them
    input.lastMovePos = {};
    input.lastMoveTime_s = 0;
    input.dblClkSeen = false;
    drawState_ = 0;
    scaleBarMode = 0;
    mapDraw = true;
    execRun = true;
    debugMode = false;
    rectZoomMode = 0;
    rasters.Forget();

    Refresh();
    if (before == 1) {
        // The buffers exist and no paint has composed yet, so the picture is made here and not by the paint just asked for.
        const std::unique_ptr<DeviceContext> dc = window_.AcquireDC();
        drawState_ = 1;
        scaleBarMode = 0;
        Redraw(*dc, 0);
    }
    return done;
}

void COrvane4Ctrl::RDMTerm() {
    const Scope scope(*this);
    if (drawState_ != -1 && rasters.IsOn()) rasters.RastTerm();
}

void COrvane4Ctrl::Refresh() { window_.Invalidate(); }

void COrvane4Ctrl::OnDraw(DeviceContext& dc, const Rect& bounds, const Rect&) {
    const Scope scope(*this);
    if (drawState_ == -1) dc.FillRect(bounds, WhiteBrush());
    if (drawState_ == 0) {
        dc.FillRect(bounds, WhiteBrush());
        FirstPaint();
    }
    if (drawState_ > 0) Redraw(dc, 1);
}

void COrvane4Ctrl::FirstPaint() {
    if (bufferState_ == -1 && !MakeBuffers()) return;
    drawState_ = 1;
}

/// Makes both buffers as large as the desktop, so that no resize of the control ever touches them, and reads the device's
/// numbers. False on a device without a width in millimetres: nothing could be drawn to scale there.
bool COrvane4Ctrl::MakeBuffers() {
    DeviceContext& desktop = window_.Desktop();
    const std::int32_t horzSize = desktop.GetDeviceCaps(DeviceCap::HorzSize);
    if (horzSize == 0) return false;

    const std::unique_ptr<DeviceContext> client = window_.AcquireDC();
    const Rect size = window_.DesktopRect();
    const auto make = [&](std::unique_ptr<DeviceContext>& dc, std::unique_ptr<Bitmap>& bitmap) {
        dc = desktop.CreateCompatibleDC();
        bitmap = client->CreateCompatibleBitmap(size.right, size.bottom);
        dc->SelectBitmap(bitmap.get());
        dc->PatBlt(0, 0, size.right, size.bottom, Rop3::Whiteness);
    };
    make(baseDC_, baseBitmap_);
    make(topDC_, topBitmap_);
    baseHandle_ = RegisterContext(*baseDC_);

    ViewParams& view = store.view;
    view.ScreenDpi = view.DeviceDpi = desktop.GetDeviceCaps(DeviceCap::LogPixelsX);
    view.DpiRatio = static_cast<double>(view.DeviceDpi) / static_cast<double>(view.ScreenDpi);
    dotPerM = view.DotPerM = PixelsPerMetre(desktop.GetDeviceCaps(DeviceCap::HorzRes), horzSize);
    bufferState_ = 0;
    return true;
}

void COrvane4Ctrl::DoPropExchange(PropertyExchange& exchange) {
    const Scope scope(*this);
    exchange.ExchangeVersion(kStateVersion, true);
    exchange.ExchangeLong("Zoom", store.view.Zoom, kStartZoom);
}

}  // namespace orvane
