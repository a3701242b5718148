#include "tests/support/control_rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "platform/context_registry.h"
#include "platform/record/record_window.h"

namespace orvane {

namespace {

Lines Matching(Lines lines, std::string_view part) {
    std::erase_if(lines, [part](const std::string& line) { return line.find(part) == std::string::npos; });
    return lines;
}

void Label(DeviceContext* dc, const char* label) {
    if (auto* recorded = dynamic_cast<RecordContext*>(dc)) recorded->SetLabel(label);
}

}  // namespace

DeviceNumbers ThousandDots() {
    DeviceNumbers numbers;
    numbers.horzRes_px = 1000;
    numbers.horzSize_mm = 1000;
    return numbers;
}

void EventLog::Fire(std::int32_t eventDispid, std::span<const Variant> args) {
    EXPECT_EQ(eventDispid, kOnZoomChange);
    ASSERT_EQ(args.size(), 1u);
    std::int32_t zoom = -1;
    EXPECT_TRUE(args[0].ToI4(zoom));
    zooms_.push_back(zoom);
    // Through a copy: the handler may take itself away.
    const auto handler = onEvent;
    if (handler) handler(zoom);
}

Lines ScreenCopy(std::string_view context, std::int32_t width_px, std::int32_t height_px) {
    const std::string dc(context), w = std::to_string(width_px), h = std::to_string(height_px);
    const std::string right = std::to_string(width_px - 1), bottom = std::to_string(height_px - 1);
    return {dc + " BitBlt 1 1 " + right + " " + bottom + " top 1 1 0xCC0020", dc + " PatBlt 0 0 1 " + h + " 0x000042",
            dc + " PatBlt 0 0 " + w + " 1 0x000042", dc + " PatBlt " + right + " 0 " + w + " " + h + " 0xFF0062",
            dc + " PatBlt 0 " + bottom + " " + w + " " + h + " 0xFF0062"};
}

Lines RelaidFrame(std::int32_t width_px, std::int32_t height_px) {
    const std::string w = std::to_string(width_px), h = std::to_string(height_px);
    const std::string client = "(0,0," + w + "," + h + ")";
    Lines lines{"base SelectClipRgn " + client + " 5", "top SelectClipRgn " + client + " 5",
                "top BitBlt 0 0 " + w + " " + h + " base 0 0 0xCC0020"};
    const Lines copied = ScreenCopy("window", width_px, height_px);
    lines.insert(lines.end(), copied.begin(), copied.end());
    return lines;
}

Lines ComposedFrame(std::int32_t width_px, std::int32_t height_px) {
    Lines lines = RelaidFrame(width_px, height_px);
    lines.insert(lines.begin() + 2,
                 "base PatBlt 0 0 " + std::to_string(width_px) + " " + std::to_string(height_px) + " 0xFF0062");
    return lines;
}

ControlRig::ControlRig(const DeviceNumbers& numbers, std::int32_t width_px, std::int32_t height_px)
    : window(device, width_px, height_px), ctrl(COrvane4Ctrl::Create(window, files)) {
    desktop.SetDeviceNumbers(numbers);
    RecordWindow(window, desktop);
    ctrl->SetEvents(&events);
}

void ControlRig::Paint() {
    const auto dc = window.AcquireDC();
    ctrl->OnDraw(*dc, window.ClientRect(), window.ClientRect());
}

void ControlRig::Start() {
    EXPECT_TRUE(ctrl->RDMInit());
    Paint();
    EXPECT_EQ(State(), 2);
    Forget();
}

void ControlRig::StartOneToOne() {
    Start();
    View().Zoom = 1000;
    SetArea(-1e6, 1e6, -1e6, 1e6);
    ctrl->RDMReDraw();
    Forget();
}

void ControlRig::SetArea(double left, double right, double top, double bottom) {
    ctrl->SetAreaLeft(left);
    ctrl->SetAreaRight(right);
    ctrl->SetAreaTop(top);
    ctrl->SetAreaBottom(bottom);
    ctrl->SetModified(false);
}

void ControlRig::SetView(double x, double y) {
    ctrl->viewX = x;
    ctrl->viewY = y;
}

void ControlRig::AddLine(std::string_view code, Coordinates coordinates, double GX, double GY) {
    EXPECT_TRUE(ctrl->store.DigMemAlloc2(code, kMesh, kLayLine, "", 1, GX, GY));
    AddItem(code, 1, coordinates);
}

void ControlRig::AddItem(std::string_view code, std::int32_t datID, Coordinates coordinates) {
    EXPECT_TRUE(ctrl->store.AddDigDat(code, kMesh, datID, 0));
    for (const auto& [x, y] : coordinates) EXPECT_TRUE(ctrl->store.AddDigDatPnt(code, kMesh, datID, {x, y, 0}));
}

Lines ControlRig::Verbs() {
    if (ctrl != nullptr) {
        Label(ctrl->BaseDC(), "base");
        Label(ctrl->TopDC(), "top");
    }
    Lines lines = verbs->Lines();
    verbs->Clear();
    return lines;
}

Lines ControlRig::VerbsWith(std::string_view part) { return Matching(Verbs(), part); }

ForeignContext::ForeignContext(const DeviceNumbers& numbers) : handle(RegisterContext(dc)) { dc.SetDeviceNumbers(numbers); }

ForeignContext::~ForeignContext() { UnregisterContext(handle); }

Lines ForeignContext::Verbs() {
    Lines lines = verbs->Lines();
    verbs->Clear();
    for (std::string& line : lines) line.erase(0, line.find(' ') + 1);
    return lines;
}

Lines ForeignContext::VerbsWith(std::string_view part) { return Matching(Verbs(), part); }

std::string DumpView(const COrvane4Ctrl& ctrl) {
    const ViewParams& view = ctrl.store.view;
    std::ostringstream out;
    out.precision(17);
    out << "state " << ctrl.CurrentDrawState() << '/' << ctrl.BufferState() << " view " << ctrl.viewX << ' ' << ctrl.viewY
        << " area " << ctrl.areaLeft << ' ' << ctrl.areaRight << ' ' << ctrl.areaTop << ' ' << ctrl.areaBottom << " copies "
        << view.AreaLeft << ' ' << view.AreaRight << ' ' << view.AreaTop << ' ' << view.AreaBottom << " pend " << ctrl.pendX
        << ' ' << ctrl.pendY << " zoom " << view.Zoom << " rotate " << view.Rotate << " scale " << view.ScaleX << ' '
        << view.ScaleY << " off " << view.OffX << ' ' << view.OffY << " device " << ctrl.dotPerM << ' ' << view.DotPerM << ' '
        << view.ScreenDpi << ' ' << view.DeviceDpi << ' ' << view.DpiRatio << " modes " << ctrl.mapDraw << ctrl.scaleBarMode
        << ' ' << ctrl.rectZoomMode << ' ' << ctrl.wheelZoomMode << ' ' << ctrl.wheelRateUp << ' ' << ctrl.wheelRateDown
        << " scroll " << ctrl.scrollActive << " search " << ctrl.drawArea << " modified " << ctrl.Modified();
    return out.str();
}

}  // namespace orvane
