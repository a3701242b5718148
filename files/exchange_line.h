// One line of an exchange file, field by field.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/grow_array.h"
#include "platform/values.h"

namespace orvane {

/// Takes the fields of a line from left to right; empty ones do not count. Each call answers false, and leaves its argument as it
/// was, when no field is left. Calls joined by && so end with the line and leave the rest as it was cleared.
class ExchangeLine {
public:
    explicit ExchangeLine(std::string_view fields) : rest_(fields) {}

    bool Int(std::int32_t& value);
    bool Color(Rgb& value);
    /// True for any number but 0.
    bool Flag(bool& value);
    bool Real(double& value);
    bool Skip(int cnt = 1);
    /// The field as it stands.
    bool Bare(std::string_view& text);
    /// One field without its quotes. One that has no quote before it gives an empty text.
    bool Name(std::string_view& text);
    /// The name of an image file: the last field with a quote before it, up to and with the first that has a quote behind it. The
    /// line may end before that; the answer is false then, and the text what was found.
    bool ImageName(std::string_view& text);
    /// A text that commas may have cut: its fields joined, without a quote before each, up to the first with a quote behind it.
    /// The line may end before that, or memory; the answer is false then, and the text what was joined.
    bool Joined(GrowArray<char>& text);
    bool MemoryRanOut() const { return memoryRanOut_; }

private:
    std::string_view rest_;
    bool memoryRanOut_ = false;
};

}  // namespace orvane
