// Copies of pixels that change their size.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/qt/span_painter.h"
#include "platform/values.h"

namespace orvane {

/// A run along one axis: where it begins and how far it goes; a negative length goes back.
struct AxisRun {
    std::int64_t from = 0;
    std::int64_t length = 0;
};

/// A box of the target, and the one of the source that is stretched into it.
struct StretchRuns {
    AxisRun x;
    AxisRun y;
    AxisRun sourceX;
    AxisRun sourceY;
};

/// Stretches one box of `from` into one of `to`, within its clip, by `rule`. Lengths of different sign mirror the picture. Pixels
/// that fall together are combined by AND, which is the platform's starting mode and keeps dark lines; what has its source
/// outside `from` stays. REQUIRES: the surfaces are not the same pixels.
class Stretcher {
public:
    void Stretch(const PixelSurface& from, const PixelSurface& to, const ClipArea& clip, const StretchRuns& runs, BitRule rule);

private:
    /// The source pixels of one target pixel; none when they are outside.
    struct Span {
        std::int32_t first = 0;
        std::int32_t end = 0;
    };
    static bool IsEmpty(const Span& span) { return span.first >= span.end; }
    static void Map(std::int64_t low, std::int64_t high, AxisRun target, AxisRun source, std::int32_t sourceSize,
                    std::vector<Span>& out);

    std::vector<Span> columns_;
    std::vector<Span> rows_;
    std::vector<Pixel> gathered_;
};

}  // namespace orvane
