#include "bench/frame_measure.h"

#include <algorithm>
#include <chrono>

namespace orvane::bench {

Map::Map(DeviceContext& device, const Fill& fill) : window(device, kWidth_px, kHeight_px) {
    ctrl = COrvane4Ctrl::Create(window, files);
    ctrl->RDMInit();
    const std::unique_ptr<DeviceContext> dc = window.AcquireDC();
    ctrl->OnDraw(*dc, window.ClientRect(), window.ClientRect());
    fill(*ctrl);
    ctrl->store.view.Zoom = ctrl->dotPerM * 10;
    ctrl->viewX = -kHalfWidth;
    ctrl->viewY = -kHalfHeight;
}

FrameMeasure::FrameMeasure(const Fill& fill)
    : verbs_(std::make_shared<VerbList>()), map_(device_, fill), windowDC_(map_.window.AcquireDC()) {
    RecordFrame(fill);
}

void FrameMeasure::RecordFrame(const Fill& fill) {
    // Texts are measured by the fonts of the measured control, so that both draw the same of them.
    RecordContext desktop(verbs_, device_, "desktop");
    Map recorded(desktop, fill);
    const std::unique_ptr<DeviceContext> dc = recorded.window.AcquireDC();
    verbs_->Clear();
    recorded.ctrl->Redraw(*dc, 0);
    const auto number = [](DeviceContext* context) { return static_cast<RecordContext*>(context)->Number(); };
    targets_.SetContext(number(recorded.ctrl->BaseDC()), *map_.ctrl->BaseDC());
    targets_.SetContext(number(recorded.ctrl->TopDC()), *map_.ctrl->TopDC());
    targets_.SetContext(number(dc.get()), *windowDC_);
    verbs_->SetRecording(false);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace orvane::bench
