// A control on an off-screen window that writes down every verb, on a screen whose numbers can be followed by eye.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "control/ctrl.h"
#include "platform/files_std.h"
#include "platform/offscreen_window.h"
#include "platform/record/record_context.h"
#include "tests/support/store_dump.h"

namespace orvane {

using Lines = std::vector<std::string>;
using Coordinates = std::initializer_list<std::pair<double, double>>;

/// A screen of one metre across 1000 pixels: `DotPerM` is 1000, and at a zoom of 1000 a pixel is one map unit.
DeviceNumbers ThousandDots();

/// Hears the control's events; `onEvent` is the host's handler.
class EventLog : public ControlEvents {
public:
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override;
    /// The zooms that OnZoomChange told, first to last, since the last call.
    std::vector<std::int32_t> Zooms() { return std::exchange(zooms_, {}); }

    std::function<void(std::int32_t zoom)> onEvent;

private:
    std::vector<std::int32_t> zooms_;
};

/// How a frame ends without rulers: the copy from the top buffer, and the rim that goes around the client area.
Lines ScreenCopy(std::string_view context = "window", std::int32_t width_px = 800, std::int32_t height_px = 600);

/// What a mode 0 frame of an empty map writes, and what a frame that only lays the overlay figures anew writes.
Lines ComposedFrame(std::int32_t width_px = 800, std::int32_t height_px = 600);
Lines RelaidFrame(std::int32_t width_px = 800, std::int32_t height_px = 600);

class ControlRig {
public:
    static constexpr std::int32_t kMesh = 1;

    explicit ControlRig(const DeviceNumbers& numbers = ThousandDots(), std::int32_t width_px = 800, std::int32_t height_px = 600);

    /// A paint message for the whole client area.
    void Paint();
    /// Init, first paint; what they wrote is forgotten. The map stands at its start, with a pixel of 10 map units.
    void Start();
    /// The same at a zoom of 1000, with limits so wide that nothing here meets them, and composed anew.
    void StartOneToOne();
    void SetArea(double left, double right, double top, double bottom);
    void SetView(double x, double y);

    /// A line layer with one block and one item.
    void AddLine(std::string_view code, Coordinates coordinates, double GX = 0, double GY = 0);
    /// One more item at the end of that block.
    void AddItem(std::string_view code, std::int32_t datID, Coordinates coordinates);
    DigBlock& Block(std::string_view code) { return ctrl->store.MutableBlock(ctrl->store.FindBlock(code, kMesh).block); }
    DigDat& Item(std::string_view code, std::size_t i) { return Block(code).dats[i]; }

    /// What was drawn since the last call: "base", "top", "window" and the verb with its values.
    Lines Verbs();
    /// The same of lines that hold `part`.
    Lines VerbsWith(std::string_view part);
    void Forget() { verbs->Clear(); }

    ViewParams& View() { return ctrl->store.view; }
    std::int32_t State() const { return ctrl->CurrentDrawState(); }

    std::shared_ptr<VerbList> verbs = std::make_shared<VerbList>();
    RecordContext device{nullptr};
    RecordContext desktop{verbs, "desktop"};
    OffscreenWindow window;
    StdFiles files;
    EventLog events;
    ControlPtr ctrl;
};

/// A context of the host's own: a printer, a metafile. It has a list of its own and is known by its number.
class ForeignContext {
public:
    explicit ForeignContext(const DeviceNumbers& numbers);
    ~ForeignContext();
    ForeignContext(const ForeignContext&) = delete;
    ForeignContext& operator=(const ForeignContext&) = delete;

    /// What was drawn since the last call, without the context's name.
    Lines Verbs();
    Lines VerbsWith(std::string_view part);

    std::shared_ptr<VerbList> verbs = std::make_shared<VerbList>();
    RecordContext dc{verbs, "foreign"};
    std::int32_t handle = 0;
};

/// What a call may not have touched, as one text: view, limits, modes and numbers of the device, without the store's records.
std::string DumpView(const COrvane4Ctrl& ctrl);

}  // namespace orvane
