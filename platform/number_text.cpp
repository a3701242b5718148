#include "platform/number_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace orvane {

namespace {

constexpr int kFirstExponentShown = 15;
constexpr int kLastFractionShown = -4;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view WithoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// `digits` are the significant ones without a point, `exponent` is that of the first of them.
std::string PlainText(const std::string& digits, int exponent) {
    const int count = static_cast<int>(digits.size());
    if (exponent < 0) return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    if (exponent >= count - 1) return digits + std::string(static_cast<std::size_t>(exponent - count + 1), '0');
    return digits.substr(0, static_cast<std::size_t>(exponent) + 1) + "." + digits.substr(static_cast<std::size_t>(exponent) + 1);
}

std::string ExponentText(const std::string& digits, int exponent) {
    std::string text = digits.substr(0, 1);
    if (digits.size() > 1) text += "." + digits.substr(1);
    const std::string power = std::to_string(std::abs(exponent));
    return text + (exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
}

template <class Real>
bool TextOf(Real value, std::string& out) {
    if (!std::isfinite(value)) return false;
    char buffer[64];
    // "d.ddde+xx" with as many digits as the value needs; its parts are laid out below.
    const auto written = std::to_chars(buffer, buffer + sizeof(buffer), std::fabs(value), std::chars_format::scientific);
    const std::string_view shortest(buffer, static_cast<std::size_t>(written.ptr - buffer));
    const auto e = shortest.find('e');
    std::string digits(1, shortest[0]);
    if (e > 2) digits += shortest.substr(2, e - 2);
    const char* power = shortest.data() + e + (shortest[e + 1] == '+' ? 2 : 1);
    int exponent = 0;
    std::from_chars(power, written.ptr, exponent);
    const bool plain = exponent >= kLastFractionShown && exponent < kFirstExponentShown;
    out = (value < 0 ? "-" : "") + (plain ? PlainText(digits, exponent) : ExponentText(digits, exponent));
    return true;
}

}  // namespace

bool ReadNumber(std::string_view text, double& out) {
    std::string_view number = WithoutBlanks(text);
    const bool negative = !number.empty() && number.front() == '-';
    if (negative || (!number.empty() && number.front() == '+')) number.remove_prefix(1);
    // A digit or a point must come first: the reader below would take "inf" and "nan" for numbers too.
    if (number.empty() || !(IsDigit(number.front()) || number.front() == '.')) return false;
    double magnitude = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), magnitude);
    if (read.ec != std::errc() || read.ptr != number.data() + number.size()) return false;
    out = negative ? -magnitude : magnitude;
    return true;
}

bool NumberText(double value, std::string& out) { return TextOf(value, out); }

bool NumberText(float value, std::string& out) { return TextOf(value, out); }

}  // namespace orvane
