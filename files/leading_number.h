// Numbers at the start of a text, whatever follows them; the same whatever the locale of the process.
#pragma once

#include <cstdint>
#include <string_view>

namespace orvane {

/// Takes the characters of a text one by one and keeps its leading whole number: blanks, a sign, decimal digits; the first other
/// character ends it. Without a digit the number is 0. Values beyond 32 bits saturate.
class LeadingInt {
public:
    void Feed(char c) {
        if (ended_) return;
        if (c >= '0' && c <= '9') {
            begun_ = true;
            if (magnitude_ < kEnough) magnitude_ = magnitude_ * 10 + (c - '0');
        } else if (!begun_ && (c == '+' || c == '-')) {
            begun_ = true;
            negative_ = c == '-';
        } else if (begun_ || !IsBlank(c)) {
            ended_ = true;
        }
    }

    std::int32_t Value() const {
        const std::int64_t value = negative_ ? -magnitude_ : magnitude_;
        return static_cast<std::int32_t>(value > INT32_MAX ? INT32_MAX : value < INT32_MIN ? INT32_MIN : value);
    }

    static bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

private:
    // From here on a further digit cannot change the saturated value.
    static constexpr std::int64_t kEnough = std::int64_t{1} << 31;

    std::int64_t magnitude_ = 0;
    bool negative_ = false;
    bool begun_ = false;
    bool ended_ = false;
};

/// The whole number that `text` starts with.
std::int32_t LeadingInt32(std::string_view text);

/// The decimal number that `text` starts with, with point and exponent; 0 when there is none, when its value lies beyond a
/// double, and for infinities and NaN, which are no numbers here.
double LeadingDouble(std::string_view text);

}  // namespace orvane
