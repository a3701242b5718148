#include "platform/line_dda.h"

namespace orvane {

namespace {

std::uint64_t Distance(std::int32_t a, std::int32_t b) {
    const std::int64_t between = std::int64_t{b} - a;
    return static_cast<std::uint64_t>(between < 0 ? -between : between);
}

std::int32_t Moved(std::int32_t v, std::uint64_t by, bool up) {
    const auto steps = static_cast<std::int64_t>(by);
    return static_cast<std::int32_t>(up ? v + steps : v - steps);
}

}  // namespace

LineDda::LineDda(Point from, Point to) : from_(from), right_(to.x > from.x), down_(to.y > from.y) {
    const std::uint64_t dx = Distance(from.x, to.x);
    const std::uint64_t dy = Distance(from.y, to.y);
    steep_ = dy > dx;
    major_ = steep_ ? dy : dx;
    minor_ = steep_ ? dx : dy;
}

// Neither factor exceeds 2^32 - 1, so the product fits its 64 bits; doubling it would not.
Point LineDda::At(std::int64_t k) const {
    const auto along = static_cast<std::uint64_t>(k);
    const std::uint64_t scaled = along * minor_;
    const std::uint64_t rest = scaled % major_;
    const std::uint64_t aside = scaled / major_ + (rest > major_ - rest ? 1 : 0);
    return {Moved(from_.x, steep_ ? aside : along, right_), Moved(from_.y, steep_ ? along : aside, down_)};
}

}  // namespace orvane
