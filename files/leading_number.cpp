#include "files/leading_number.h"

#include <charconv>

namespace orvane {

std::int32_t LeadingInt32(std::string_view text) {
    LeadingInt number;
    for (const char c : text) number.Feed(c);
    return number.Value();
}

double LeadingDouble(std::string_view text) {
    while (!text.empty() && LeadingInt::IsBlank(text.front())) text.remove_prefix(1);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    // The reader below would take a second sign, "inf" and "nan".
    if (text.empty() || !((text.front() >= '0' && text.front() <= '9') || text.front() == '.')) return 0;
    double magnitude = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), magnitude).ec != std::errc()) return 0;
    return negative ? -magnitude : magnitude;
}

}  // namespace orvane
