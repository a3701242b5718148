// A control under an operator's hand: mouse and keys go in, events come out as lines of text. One pixel is one map unit, the
// client area is 800 x 600, and the window stands at (100, 50) on its screen.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <utility>

#include "control/automation/table.h"
#include "control/ctrl.h"
#include "store/dat_lookup.h"
#include "tests/support/control_rig.h"
#include "tests/support/value_types.h"

namespace orvane {

/// Hears every event as "Name a b 'text' c", and sees that each argument has the kind that the surface declares.
class InputLog : public ControlEvents {
public:
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override {
        const Member* member = Surface().FindEvent(eventDispid);
        ASSERT_NE(member, nullptr) << eventDispid;
        ASSERT_EQ(args.size(), member->args.size()) << member->name;
        std::ostringstream line;
        line << member->name;
        for (std::size_t i = 0; i < args.size(); ++i) {
            EXPECT_EQ(args[i].Type(), TypeOf(member->args[i].type.kind)) << member->name << ' ' << member->args[i].name;
            std::string text;
            EXPECT_TRUE(args[i].ToBytes(text));
            line << ' ' << (args[i].Type() == Vt::Bstr ? "'" + text + "'" : text);
        }
        lines_.push_back(line.str());
        // Through a copy: the handler may take itself away.
        const auto handler = onEvent;
        if (handler) handler(member->name);
    }
    /// What was told since the last call.
    Lines Take() { return std::exchange(lines_, {}); }

    std::function<void(std::string_view event)> onEvent;

private:
    Lines lines_;
};

class InputRig : public ControlRig {
public:
    static constexpr std::uint32_t kShift = kMkShift, kCtrl = kMkControl;

    InputRig() {
        StartOneToOne();
        window.position = {100, 50};
        ctrl->SetEvents(&log);
        ctrl->OnLButtonUp(0, {700, 500});  // a plain click ends the Shift clicks of the test before
        log.Take();
        Forget();
    }

    /// Presses and moves have the left button in their flag word, a release has not. `keys` are Shift and Ctrl.
    void Down(Point at, std::uint32_t keys = 0) { ctrl->OnLButtonDown(kMkLButton | keys, at); }
    void Up(Point at, std::uint32_t keys = 0) { ctrl->OnLButtonUp(keys, at); }
    void Click(Point at, std::uint32_t keys = 0) {
        Down(at, keys);
        Up(at, keys);
    }
    void DragTo(Point at, std::uint32_t keys = 0) { ctrl->OnMouseMove(kMkLButton | keys, at); }
    void Drag(Point from, Point to, std::uint32_t keys = 0) {
        Down(from, keys);
        DragTo(to);
        Up(to, keys);
    }
    void Hover(Point at) {
        window.cursorPos = window.ClientToScreen(at);
        ctrl->OnMouseMove(0, at);
    }
    void RightDown(Point at) { ctrl->OnRButtonDown(kMkRButton, at); }
    void RightUp(Point at) { ctrl->OnRButtonUp(0, at); }
    /// As a window does: a tick reaches the control only while the timer runs.
    void Tick(std::int32_t id) {
        if (Ticks(id)) ctrl->OnTimer(id);
    }
    bool Ticks(std::int32_t id) const { return window.Timers().contains(id); }
    std::int32_t Period_ms(std::int32_t id) const { return Ticks(id) ? window.Timers().at(id).period_ms : -1; }

    /// A layer with one line at the height y of the client area, from x = 100 to 200, drawn.
    void AddRow(std::string_view code, std::int32_t y) {
        AddLine(code, {{100, -y}, {200, -y}});
        ctrl->RDMReDraw();
        Forget();
    }
    /// An overlay figure through client pixels; its number.
    std::int32_t AddFigure(std::int16_t type, Coordinates pixels, bool active = false) {
        const std::int32_t ID = ctrl->store.MakeOrgDat(type, 1, 0, 0);
        for (const auto& [x, y] : pixels) EXPECT_GT(ctrl->store.AddOrgPnt(ID, x, -y), 0);
        ctrl->store.SetOrgDataActive(ID, active);
        return ID;
    }
    bool Active(std::string_view code, std::size_t i = 0) { return Item(code, i).active == 1; }
    RectState Rubber() const { return ctrl->input.rectState; }
    Lines Events() { return log.Take(); }

    InputLog log;
};

}  // namespace orvane
