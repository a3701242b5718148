#include "platform/win32/wide.h"

#include <windows.h>
// windows.h comes first
#include <climits>

#include "platform/cp932.h"

namespace orvane {

std::wstring WideShown(std::string_view cp932) {
    std::wstring text;
    text.reserve(cp932.size());
    while (!cp932.empty()) text += static_cast<wchar_t>(TakeCp932(cp932));
    return text;
}

std::optional<std::wstring> WideFromUtf8(std::string_view utf8) {
    if (utf8.empty()) return std::wstring();
    if (utf8.size() > INT_MAX) return std::nullopt;
    const int bytes = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), bytes, nullptr, 0);
    if (length <= 0) return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), bytes, text.data(), length);
    return text;
}

std::optional<std::string> Utf8FromWide(std::wstring_view wide) {
    if (wide.empty()) return std::string();
    if (wide.size() > INT_MAX) return std::nullopt;
    const int length = static_cast<int>(wide.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, nullptr, 0, nullptr, nullptr);
    if (bytes <= 0) return std::nullopt;
    std::string text(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, text.data(), bytes, nullptr, nullptr);
    return text;
}

}  // namespace orvane
