// What an operator does with the mouse and the keys, as calls from Python.
#include "hosts/python/rig.h"

namespace orvane::python {

namespace {

using Handler = void (COrvane4Ctrl::*)(std::uint32_t flags, Point at);

struct MouseMessage {
    const char* name;
    Handler handler;
};

constexpr MouseMessage kMouseMessages[] = {
    {"ldown", &COrvane4Ctrl::OnLButtonDown}, {"lup", &COrvane4Ctrl::OnLButtonUp}, {"ldbl", &COrvane4Ctrl::OnLButtonDblClk},
    {"rdown", &COrvane4Ctrl::OnRButtonDown}, {"rup", &COrvane4Ctrl::OnRButtonUp}, {"move", &COrvane4Ctrl::OnMouseMove},
};

}  // namespace

void Rig::Mouse(const std::string& message, std::uint32_t flags, std::int32_t x, std::int32_t y) {
    for (const MouseMessage& known : kMouseMessages) {
        if (message != known.name) continue;
        ((*ctrl_).*known.handler)(flags, {x, y});
        RaisePending();
        return;
    }
    throw py::value_error("message is \"ldown\", \"lup\", \"ldbl\", \"rdown\", \"rup\" or \"move\"");
}

void Rig::Wheel(std::uint32_t flags, std::int32_t delta, std::int32_t x, std::int32_t y) {
    ctrl_->OnMouseWheel(flags, delta, {x, y});
    RaisePending();
}

void Rig::Key(std::uint32_t virtualKey) {
    ctrl_->OnKeyDown(virtualKey);
    RaisePending();
}

void Rig::Tick(std::int32_t timerId) {
    if (!window_->Timers().contains(timerId)) return;
    ctrl_->OnTimer(timerId);
    RaisePending();
}

std::string Rig::CursorName() const {
    switch (window_->cursorShape) {
        case CursorShape::Arrow:
            break;
        case CursorShape::Cross:
            return "cross";
        case CursorShape::SizeAll:
            return "size_all";
        case CursorShape::Hand:
            return "hand";
        case CursorShape::Wait:
            return "wait";
        case CursorShape::Pan:
            return "pan";
        case CursorShape::Scroll:
            return "scroll";
    }
    return "arrow";
}

}  // namespace orvane::python
