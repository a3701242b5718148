#include "platform/record/verb_text.h"

#include <algorithm>

namespace orvane {

namespace {

std::string Hex(std::uint64_t value, std::size_t digits) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (; value != 0 || text.size() < digits; value >>= 4) text.insert(text.begin(), kDigits[value & 15]);
    return "0x" + text;
}

std::string ColorText(Rgb color) { return Hex(color, 6); }

std::string PointText(Point p) { return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")"; }

std::string RectText(const Rect& r) {
    return "(" + std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom) + ")";
}

/// Printable bytes as they stand; all others, half characters of the code page among them, by their numbers.
std::string TextText(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte > 0x7E || c == '"' || c == '\\') {
            out += "\\x" + Hex(byte, 2).substr(2);
        } else {
            out += c;
        }
    }
    return out + "\"";
}

template <class Elements, class TextOf>
std::string ListText(const Elements& elements, TextOf textOf) {
    std::string text;
    for (const auto& element : elements) text += (text.empty() ? "" : " ") + textOf(element);
    return "[" + text + "]";
}

struct TextOfValue {
    VerbValueKind kind;

    std::string operator()(std::int64_t v) const {
        return kind == VerbValueKind::Hex ? Hex(static_cast<std::uint64_t>(v), 6) : std::to_string(v);
    }
    std::string operator()(const std::string& v) const {
        return kind == VerbValueKind::Pixels ? std::to_string(v.size()) + " bytes" : TextText(v);
    }
    std::string operator()(const Rect& v) const { return RectText(v); }
    std::string operator()(const std::vector<Point>& v) const { return ListText(v, PointText); }
    std::string operator()(const std::vector<std::int32_t>& v) const {
        return ListText(v, [](std::int32_t count) { return std::to_string(count); });
    }
    std::string operator()(const Pen& v) const { return PenText(v); }
    std::string operator()(const Brush& v) const { return BrushText(v); }
    std::string operator()(const Font& v) const { return FontText(v); }
    std::string operator()(BitmapNumber v) const { return "bitmap#" + std::to_string(v.value); }
    std::string operator()(ContextNumber v) const { return std::to_string(v.value); }
};

}  // namespace

std::string PenText(const Pen& pen) {
    if (pen.empty) return "pen(refused)";
    std::string text =
        "pen(" + Hex(static_cast<std::uint32_t>(pen.style), 1) + " " + std::to_string(pen.width_px) + " " + ColorText(pen.color);
    const std::vector<std::int32_t> dashes(pen.dashes.begin(),
                                           pen.dashes.begin() + (std::min)(int{pen.dashCnt}, Pen::kMaxDashes));
    if (!dashes.empty()) text += " " + TextOfValue{VerbValueKind::Counts}(dashes);
    return text + ")";
}

std::string BrushText(const Brush& brush) {
    switch (brush.style) {
        case BrushStyle::Null:
            return "brush(null)";
        case BrushStyle::Hatched:
            return "brush(hatch " + std::to_string(static_cast<std::uint32_t>(brush.hatch)) + " " + ColorText(brush.color) + ")";
        case BrushStyle::Solid:
            break;
    }
    return "brush(" + ColorText(brush.color) + ")";
}

std::string FontText(const Font& font) {
    std::string text = "font(";
    for (const std::int32_t number :
         {font.height_px, font.width_px, font.escapement_tenths, font.orientation_tenths, font.weight}) {
        text += std::to_string(number) + " ";
    }
    if (font.italic) text += "italic ";
    if (font.underline) text += "underline ";
    if (font.strikeOut) text += "strikeOut ";
    const auto end = std::find(font.faceName.begin(), font.faceName.end(), '\0');
    return text + std::to_string(font.charSet) + " \"" + std::string(font.faceName.begin(), end) + "\")";
}

std::string ValueText(const VerbValue& value, VerbValueKind kind) { return std::visit(TextOfValue{kind}, value); }

}  // namespace orvane
