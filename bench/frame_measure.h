// A frame and the replay of its own recorded verbs, measured in turn on the same contexts.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "bench/workload.h"
#include "control/ctrl.h"
#include "platform/files_std.h"
#include "platform/offscreen_window.h"
#include "platform/qt/qt_context.h"
#include "platform/record/record_context.h"
#include "platform/record/replay.h"

namespace orvane::bench {

inline constexpr int kWidth_px = 1920;
inline constexpr int kHeight_px = 1080;
inline constexpr int kRounds = 15;

/// Puts a workload into a painted control.
using Fill = std::function<void(COrvane4Ctrl&)>;

/// A control that shows a workload, the view at 10 units a pixel with (0, 0) in the middle.
struct Map {
    Map(DeviceContext& device, const Fill& fill);

    OffscreenWindow window;
    StdFiles files;
    ControlPtr ctrl;
};

class FrameMeasure {
public:
    explicit FrameMeasure(const Fill& fill);

    void Frame() { map_.ctrl->Redraw(*windowDC_, 0); }
    void ReplayFrame() { Replay(*verbs_, targets_); }
    COrvane4Ctrl& Control() { return *map_.ctrl; }
    std::size_t VerbCnt() const { return verbs_->Size(); }

private:
    /// A second control draws the same frame on a recording device; its contexts are then stood for by those of the measured one.
    void RecordFrame(const Fill& fill);

    std::shared_ptr<VerbList> verbs_;
    QtContext device_;
    Map map_;
    std::unique_ptr<DeviceContext> windowDC_;
    ReplayTargets targets_;
};

double Median(std::vector<double> values);
double Milliseconds(const std::function<void()>& work);

}  // namespace orvane::bench
