#include "files/exchange_line.h"

#include <algorithm>
#include <cstring>

#include "files/leading_number.h"

namespace orvane {

namespace {

/// A field's bytes without its quotes, and which it had.
struct Unquoted {
    std::string_view text;
    bool opens = false;
    bool closes = false;
};

/// A field that is one quote alone opens a string, or closes the one that is open.
Unquoted WithoutQuotes(std::string_view field, bool isOpen) {
    Unquoted found{field};
    if (field == "\"" && isOpen) return {{}, false, true};
    if (found.text.starts_with('"')) {
        found.opens = true;
        found.text.remove_prefix(1);
    }
    if (found.text.ends_with('"')) {
        found.closes = true;
        found.text.remove_suffix(1);
    }
    return found;
}

/// False without memory; `to` is as it was then.
bool Append(GrowArray<char>& to, std::string_view text) {
    const std::size_t size = to.size();
    if (!to.Resize(size + text.size())) return false;
    if (!text.empty()) std::memcpy(to.data() + size, text.data(), text.size());
    return true;
}

}  // namespace

bool ExchangeLine::Bare(std::string_view& text) {
    const std::size_t begin = rest_.find_first_not_of(',');
    if (begin == std::string_view::npos) return false;
    const std::size_t end = (std::min)(rest_.find(',', begin), rest_.size());
    text = rest_.substr(begin, end - begin);
    rest_.remove_prefix(end);
    return true;
}

bool ExchangeLine::Skip(int cnt) {
    std::string_view field;
    for (; cnt > 0; --cnt) {
        if (!Bare(field)) return false;
    }
    return true;
}

bool ExchangeLine::Int(std::int32_t& value) {
    std::string_view field;
    if (!Bare(field)) return false;
    value = LeadingInt32(field);
    return true;
}

bool ExchangeLine::Color(Rgb& value) {
    std::int32_t number = 0;
    if (!Int(number)) return false;
    value = static_cast<Rgb>(number);
    return true;
}

bool ExchangeLine::Flag(bool& value) {
    std::int32_t number = 0;
    if (!Int(number)) return false;
    value = number != 0;
    return true;
}

bool ExchangeLine::Real(double& value) {
    std::string_view field;
    if (!Bare(field)) return false;
    value = LeadingDouble(field);
    return true;
}

bool ExchangeLine::Name(std::string_view& text) {
    std::string_view field;
    if (!Bare(field)) return false;
    const Unquoted found = WithoutQuotes(field, false);
    text = found.opens ? found.text : std::string_view{};
    return true;
}

bool ExchangeLine::ImageName(std::string_view& text) {
    bool isOpen = false;
    for (std::string_view field; Bare(field);) {
        const Unquoted found = WithoutQuotes(field, isOpen);
        if (found.opens) text = found.text;
        if (found.closes) return true;
        isOpen = isOpen || found.opens;
    }
    return false;
}

bool ExchangeLine::Joined(GrowArray<char>& text) {
    bool isOpen = false;
    for (std::string_view field; Bare(field);) {
        const Unquoted found = WithoutQuotes(field, isOpen);
        if (!Append(text, found.text)) {
            memoryRanOut_ = true;
            return false;
        }
        if (found.closes) return true;
        isOpen = true;
    }
    return false;
}

}  // namespace orvane
