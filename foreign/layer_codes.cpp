#include "foreign/layer_codes.h"

#include "store/records.h"

namespace orvane {

namespace {

// Length of the UTF-8 character that a text begins with; stray bytes count for themselves.
std::size_t CharLength(std::string_view text) {
    const auto isTail = [&](std::size_t i) { return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U; };
    if (static_cast<unsigned char>(text[0]) < 0xC0U) return 1;
    std::size_t length = 1;
    while (length < 4 && isTail(length)) ++length;
    return length;
}

}  // namespace

std::string LayerCodes::BytesOf(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    if (first < 0x20U || first == 0x7FU) return "_";
    if (first < 0x80U) return std::string(character);
    if (encode_) {
        if (const auto bytes = encode_(character)) return *bytes;
        lost_ = true;
        return encode_("〓").value_or("_");
    }
    lost_ = true;
    return "_";
}

std::string LayerCodes::Bytes(std::string_view utf8, std::size_t limit_bytes) {
    std::string out;
    while (!utf8.empty()) {
        const std::size_t length = CharLength(utf8);
        const std::string bytes = BytesOf(utf8.substr(0, length));
        if (out.size() + bytes.size() > limit_bytes) break;
        out += bytes;
        utf8.remove_prefix(length);
    }
    return out;
}

std::string LayerCodes::Make(std::string_view utf8) {
    if (utf8.empty()) utf8 = "layer";
    const std::string whole = Bytes(utf8, kMaxCode);
    std::string code = whole;
    while (!taken_.insert(code).second) {
        int& last = lastTail_.try_emplace(whole, 1).first->second;
        const std::string tail = "~" + std::to_string(++last);
        code = Bytes(utf8, kMaxCode - tail.size()) + tail;
    }
    return code;
}

}  // namespace orvane
