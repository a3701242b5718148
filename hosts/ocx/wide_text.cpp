#include "hosts/ocx/wide_text.h"

#include "platform/cp932.h"

namespace orvane {

namespace {

bool IsHigh(wchar_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLow(wchar_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t c) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace

std::optional<std::string> FromWide(std::wstring_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (IsHigh(text[i]) && i + 1 < text.size() && IsLow(text[i + 1])) {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(text[++i]) - 0xDC00);
        } else if (IsHigh(text[i]) || IsLow(text[i])) {
            return std::nullopt;
        }
        AppendUtf8(utf8, c);
    }
    return EncodeCp932(utf8);
}

std::wstring ToWide(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) text += static_cast<wchar_t>(TakeCp932(bytes));
    return text;
}

BSTR NewBstr(std::wstring_view text) {
    return text.size() > 0x3FFFFFFF ? nullptr : SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

BSTR ToBstr(std::string_view bytes) { return NewBstr(ToWide(bytes)); }

std::wstring_view View(BSTR text) { return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text)); }

std::wstring WideAscii(std::string_view text) { return {text.begin(), text.end()}; }

}  // namespace orvane
