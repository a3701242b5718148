#include "tests/ocx_bridge/tokens.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "hosts/ocx/wide_text.h"

namespace orvane::test {

namespace {

Value ReadArray(std::istringstream& words) {
    int type = 0;
    long lower = 0;
    ULONG count = 0;
    words >> type >> lower >> count;
    SAFEARRAYBOUND bound{count, lower};
    Value array;
    SAFEARRAY* made = SafeArrayCreate(static_cast<VARTYPE>(type), 1, &bound);
    if (made == nullptr) return array;
    for (ULONG i = 0; i < count; ++i) {
        Value element = ReadValue(words);
        long at = lower + static_cast<long>(i);
        if (type == VT_VARIANT) {
            SafeArrayPutElement(made, &at, &element.v);
            continue;
        }
        VariantChangeTypeEx(&element.v, &element.v, LOCALE_INVARIANT, 0, static_cast<VARTYPE>(type));
        SafeArrayPutElement(made, &at, type == VT_BSTR ? static_cast<void*>(element.v.bstrVal) : &element.v.byref);
    }
    array.v.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    array.v.parray = made;
    return array;
}

void WriteArray(const VARIANT& array, std::string& line) {
    const long count = CountOf(array);
    line += " a " + std::to_string(array.vt & ~VT_ARRAY) + " 0 " + std::to_string(count < 0 ? 0 : count);
    for (long i = 0; i < count; ++i) WriteValue(Element(array, i).v, line);
}

}  // namespace

std::wstring ReadText(const std::string& hex) {
    std::wstring text;
    for (std::size_t i = 0; i + 4 <= hex.size(); i += 4) {
        text += static_cast<wchar_t>(std::strtoul(hex.substr(i, 4).c_str(), nullptr, 16));
    }
    return text;
}

void WriteText(std::wstring_view text, std::string& line) {
    char unit[8];
    for (const wchar_t c : text) {
        std::snprintf(unit, sizeof unit, "%04x", static_cast<unsigned>(c));
        line += unit;
    }
}

Value ReadValue(std::istringstream& words) {
    std::string word;
    if (!(words >> word) || word == "n") return {};
    const std::string rest = word.substr(1);
    switch (word[0]) {
        case 'b':
            return rest == "1";
        case 'i':
            return static_cast<int>(std::strtol(rest.c_str(), nullptr, 10));
        case 'd': {
            const unsigned long long bits = std::strtoull(rest.c_str(), nullptr, 16);
            double number = 0;
            std::memcpy(&number, &bits, sizeof number);
            return number;
        }
        case 's':
            return ReadText(rest);
        case 'a':
            return ReadArray(words);
        default:
            return {};
    }
}

void WriteValue(const VARIANT& value, std::string& line) {
    if ((value.vt & VT_ARRAY) != 0) return WriteArray(value, line);
    char number[32];
    switch (value.vt) {
        case VT_BOOL:
            line += value.boolVal != VARIANT_FALSE ? " b1" : " b0";
            return;
        case VT_I2:
            line += " i" + std::to_string(value.iVal);
            return;
        case VT_I4:
            line += " i" + std::to_string(value.lVal);
            return;
        case VT_R8: {
            unsigned long long bits = 0;
            std::memcpy(&bits, &value.dblVal, sizeof bits);
            std::snprintf(number, sizeof number, " d%08lx%08lx", static_cast<unsigned long>(bits >> 32),
                          static_cast<unsigned long>(bits & 0xFFFFFFFF));
            line += number;
            return;
        }
        case VT_BSTR:
            line += " s";
            WriteText(View(value.bstrVal), line);
            return;
        default:
            line += " n";
    }
}

}  // namespace orvane::test
