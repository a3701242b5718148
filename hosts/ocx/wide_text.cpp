#include "hosts/ocx/wide_text.h"

#include "platform/cp932.h"
#include "platform/win32/wide.h"

namespace orvane {

std::optional<std::string> FromWide(std::wstring_view text) {
    const std::optional<std::string> utf8 = Utf8FromWide(text);
    return utf8 ? EncodeCp932(*utf8) : std::nullopt;
}

std::wstring ToWide(std::string_view bytes) { return WideShown(bytes); }

BSTR NewBstr(std::wstring_view text) {
    return text.size() > 0x3FFFFFFF ? nullptr : SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

BSTR ToBstr(std::string_view bytes) { return NewBstr(ToWide(bytes)); }

std::wstring_view View(BSTR text) { return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text)); }

std::wstring WideAscii(std::string_view text) { return {text.begin(), text.end()}; }

}  // namespace orvane
