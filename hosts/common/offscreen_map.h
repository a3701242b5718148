// A map without a screen: the control on an off-screen window, drawn with the qt back end.
#pragma once

#include <cstdint>
#include <string>

#include "control/ctrl.h"
#include "hosts/common/host_files.h"
#include "platform/offscreen_window.h"
#include "platform/qt/qt_context.h"

namespace orvane {

class OffscreenMap {
public:
    /// The control is initialised and painted once, so that its buffers are there. They are as large as the desktop, which is
    /// made larger for a larger picture.
    OffscreenMap(std::int32_t width_px, std::int32_t height_px);
    OffscreenMap(const OffscreenMap&) = delete;
    OffscreenMap& operator=(const OffscreenMap&) = delete;

    COrvane4Ctrl& Control() { return *ctrl_; }
    OffscreenWindow& Form() { return window_; }
    /// A paint message.
    void Paint();
    /// The client area as it stands.
    const QImage& Image() const;
    /// Writes it; false when it could not be written.
    bool SavePng(const std::string& fileName) const;

private:
    HostFiles files_;
    QtContext device_;
    OffscreenWindow window_;
    ControlPtr ctrl_;
};

}  // namespace orvane
