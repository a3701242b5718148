#include "platform/pen_brush_font.h"

#include <algorithm>
#include <cstddef>

namespace orvane {

namespace {

bool IsStandardStyle(PenStyle style) { return static_cast<std::uint32_t>(style) <= static_cast<std::uint32_t>(PenStyle::Null); }

// The one value without a positive twin stays at the nearest width that there is.
std::int32_t AbsoluteWidth(std::int32_t width_px) { return width_px < 0 ? -(std::max)(width_px, -INT32_MAX) : width_px; }

Pen RefusedPen() {
    Pen pen;
    pen.empty = true;
    return pen;
}

bool DashesAreDrawable(std::int32_t count, const std::int32_t* dashes) {
    if (count < 1 || count > Pen::kMaxDashes || dashes == nullptr) return false;
    const auto* end = dashes + count;
    const bool anyNegative = std::any_of(dashes, end, [](std::int32_t length) { return length < 0; });
    const bool anyLength = std::any_of(dashes, end, [](std::int32_t length) { return length > 0; });
    return anyLength && !anyNegative;
}

}  // namespace

Pen CreatePen(PenStyle style, std::int32_t width_px, Rgb color) {
    Pen pen;
    pen.style = IsStandardStyle(style) ? style : PenStyle::Solid;
    pen.width_px = AbsoluteWidth(width_px);
    pen.color = color;
    return pen;
}

Pen ExtCreatePen(PenStyle style, std::int32_t width_px, Rgb color, std::int32_t count, const std::int32_t* dashes) {
    if (IsStandardStyle(style) || !DashesAreDrawable(count, dashes)) return RefusedPen();
    if (style == PenStyle::UserStyle && width_px != 1) return RefusedPen();
    Pen pen;
    pen.style = style;
    pen.width_px = AbsoluteWidth(width_px);
    pen.color = color;
    pen.dashCnt = static_cast<std::uint8_t>(count);
    std::copy_n(dashes, static_cast<std::size_t>(count), pen.dashes.begin());
    return pen;
}

Brush CreateSolidBrush(Rgb color) { return {BrushStyle::Solid, color, Hatch::Horizontal}; }

Brush CreateHatchBrush(Hatch hatch, Rgb color) { return {BrushStyle::Hatched, color, hatch}; }

Brush WhiteBrush() { return CreateSolidBrush(0xFFFFFF); }

Brush NullBrush() { return {BrushStyle::Null, 0xFFFFFF, Hatch::Horizontal}; }

std::array<char, 32> FaceName(std::string_view name) {
    std::array<char, 32> face{};
    std::copy_n(name.begin(), (std::min)(name.size(), face.size()), face.begin());
    return face;
}

}  // namespace orvane
