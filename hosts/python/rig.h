// The control on an off-screen window, as Python hosts and the tests drive it.
#pragma once

#include <pybind11/pybind11.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "control/automation/invoke.h"
#include "control/ctrl.h"
#include "hosts/common/host_files.h"
#include "platform/bitmap_files.h"
#include "platform/offscreen_window.h"
#include "platform/record/record_context.h"
#include "platform/record/verb_list.h"

namespace orvane::python {

namespace py = pybind11;

/// Gives the recorded verbs as tuples of context, name and values, and forgets them.
py::list TakeVerbs(VerbList& verbs);
/// Pixels of a picture row by row from the top, four bytes each: blue, green, red, unused. Raises when it keeps none.
py::bytes PixelBytes(Bitmap* bitmap);

class Rig : private ControlEvents {
public:
    /// `device` is "qt" for pixels or "record" for verbs. Raises ValueError for another one, or a side outside 1 to 32767 pixels.
    Rig(int width_px, int height_px, const std::string& device);
    ~Rig() override;

    /// Calls a member as Python does: inputs only, outputs come back behind the result. `put` writes a property.
    py::object Call(const Member& member, const py::args& args, InvokeKind kind = InvokeKind::Method);
    /// The same by a member's name or number; a property called with one value more than a read takes is written. Raises
    /// AttributeError for an unknown one.
    py::object CallByName(const py::object& nameOrDispid, const py::args& args);
    /// Adds a handler; those of an event are called in the order they came. The first thing that one raises is raised when the
    /// control has come back. AttributeError for an unknown event.
    void Connect(const std::string& event, py::function callable);
    /// Asks `callable` with the share done during overlays and relation tests; what is False ends them, and so does what it
    /// raises. None asks nobody any more.
    void OnProgress(py::object callable);
    /// Shows Python's collector the handlers, which often hold the control that they listen to; the second lets go of them.
    int VisitHandlers(visitproc visit, void* arg) const;
    void DropHandlers() {
        handlers_.clear();
        progress_ = py::none();
    }

    /// Draws the whole client area at once, and answers the paint that was asked for, if any.
    void Paint();
    /// Sides from 1 to 32767 pixels, else ValueError. The pixels that both sizes have stay, the new ones are white.
    void Resize(int width_px, int height_px);
    // Messages of the window, handled at once. What a handler of an event raises comes out of them.

    /// `message` is "ldown", "lup", "ldbl", "rdown", "rup" or "move", else ValueError; `flags` the word of its MK_ bits; x and y
    /// are client pixels, and the cursor stays where it is.
    void Mouse(const std::string& message, std::uint32_t flags, std::int32_t x, std::int32_t y);
    /// `delta` is positive away from the operator, 120 a notch; x and y are screen pixels.
    void Wheel(std::uint32_t flags, std::int32_t delta, std::int32_t x, std::int32_t y);
    void Key(std::uint32_t virtualKey);
    /// A tick of a timer; nothing happens while it does not run.
    void Tick(std::int32_t timerId);
    /// Name of the cursor's shape.
    std::string CursorName() const;

    /// The client area as PixelBytes gives it, or as a PNG file. Both raise on a recording device.
    py::bytes Pixels();
    void SavePng(const std::string& path);
    /// What the control drew since the last call. Raises on a device that keeps pixels.
    py::list Verbs();
    /// All messages shown so far, as (text, title, icon).
    py::list MessageBoxes() const;
    /// Timers that run: number to period in milliseconds.
    py::dict Timers() const;

    /// The parts themselves, for the tests and the dump; they live as long as this object.
    COrvane4Ctrl& Control() { return *ctrl_; }
    OffscreenWindow& Form() { return *window_; }

private:
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override;
    bool GoesOn(double done);
    /// Raises what a handler raised while the control was calling it.
    void RaisePending();
    void NameBuffers();

    void MakeDevice(const std::string& device);
    void MakeWindow(int width_px, int height_px);

    HostFiles files_;
    std::shared_ptr<BitmapFiles> pictures_ = std::make_shared<BitmapFiles>(files_);
    std::shared_ptr<VerbList> verbs_;
    std::unique_ptr<DeviceContext> device_;
    // What the window does to keep its own surface is no verb of the control: only the dressed contexts write.
    RecordContext silent_{nullptr};
    std::unique_ptr<OffscreenWindow> window_;
    ControlPtr ctrl_;
    std::map<std::int32_t, std::vector<py::function>> handlers_;
    py::object progress_ = py::none();
    std::optional<py::error_already_set> pending_;
};

/// A foreign context with its own device numbers: it records its verbs and keeps its pixels.
class ForeignContext {
public:
    /// Size of its picture, and its device numbers: pixels across and millimetres across the device, dots per inch both ways.
    /// Raises ValueError for a picture that cannot be made.
    ForeignContext(int width_px, int height_px, int horzres_px, int horzsize_mm, int logpixels_dpi);
    ~ForeignContext();
    ForeignContext(const ForeignContext&) = delete;
    ForeignContext& operator=(const ForeignContext&) = delete;

    /// The number that members take for this context; it is void once the object is gone.
    std::int32_t Handle() const { return handle_; }
    /// What was drawn on it since the last call.
    py::list Verbs() { return TakeVerbs(*verbs_); }
    /// Its picture, as PixelBytes gives it.
    py::bytes Pixels() const { return PixelBytes(bitmap_.get()); }

private:
    std::shared_ptr<VerbList> verbs_;
    std::unique_ptr<Bitmap> bitmap_;
    std::unique_ptr<DeviceContext> dc_;
    std::int32_t handle_ = 0;
};

}  // namespace orvane::python
