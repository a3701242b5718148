#include "platform/qt/text_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane {

namespace {

constexpr std::int32_t kFullTurn_tenths = 3600;

}  // namespace

TextFrame::TextFrame(std::int32_t x, std::int32_t y, std::int32_t angle_tenths)
    : x_(x), y_(y), angle_tenths_((angle_tenths % kFullTurn_tenths + kFullTurn_tenths) % kFullTurn_tenths) {
    // Quarter turns are exact, which the functions are not.
    static constexpr double kQuarterCos[] = {1, 0, -1, 0};
    static constexpr double kQuarterSin[] = {0, 1, 0, -1};
    if (IsUpright()) {
        cos_ = kQuarterCos[angle_tenths_ / 900];
        sin_ = kQuarterSin[angle_tenths_ / 900];
    } else {
        const double angle = angle_tenths_ * std::numbers::pi / 1800;
        cos_ = std::cos(angle);
        sin_ = std::sin(angle);
    }
}

TextRun TextFrame::Reach(const Rect& area, double perX, double perY) const {
    // By value: of two arguments minmax would answer references to temporaries.
    const auto [left, right] = std::minmax({(area.left - x_) * perX, (area.right - x_) * perX});
    const auto [top, bottom] = std::minmax({(area.top - y_) * perY, (area.bottom - y_) * perY});
    return {left + top, right + bottom};
}

}  // namespace orvane
