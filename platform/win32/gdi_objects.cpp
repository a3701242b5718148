#include "platform/win32/gdi_objects.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/win32/wide.h"

namespace orvane {

namespace {

// The fourth byte of a colour would ask for a palette, which nothing here has.
COLORREF ColorOf(Rgb color) { return color & 0xFFFFFF; }

HGDIOBJ MakePen(const Pen& pen) {
    if (pen.empty) return nullptr;
    if (pen.dashCnt == 0) return ::CreatePen(static_cast<int>(pen.style), pen.width_px, ColorOf(pen.color));
    const int count = (std::min)(int{pen.dashCnt}, Pen::kMaxDashes);
    std::array<DWORD, Pen::kMaxDashes> dashes{};
    std::copy_n(pen.dashes.begin(), count, dashes.begin());
    const LOGBRUSH ink{BS_SOLID, ColorOf(pen.color), 0};
    const int width = pen.style == PenStyle::UserStyle ? 1 : (std::max)(pen.width_px, 1);
    return ::ExtCreatePen(static_cast<DWORD>(pen.style), static_cast<DWORD>(width), &ink, static_cast<DWORD>(count),
                          dashes.data());
}

HGDIOBJ MakeBrush(const Brush& brush) {
    switch (brush.style) {
        case BrushStyle::Null:
            return GetStockObject(NULL_BRUSH);
        case BrushStyle::Hatched:
            if (brush.hatch > Hatch::DiagCross) return nullptr;
            return ::CreateHatchBrush(static_cast<int>(brush.hatch), ColorOf(brush.color));
        case BrushStyle::Solid:
            break;
    }
    return ::CreateSolidBrush(ColorOf(brush.color));
}

HGDIOBJ MakeFont(const Font& font) {
    LOGFONTW wanted{};
    wanted.lfHeight = font.height_px;
    wanted.lfWidth = font.width_px;
    wanted.lfEscapement = font.escapement_tenths;
    wanted.lfOrientation = font.orientation_tenths;
    wanted.lfWeight = font.weight;
    wanted.lfItalic = font.italic ? 1 : 0;
    wanted.lfUnderline = font.underline ? 1 : 0;
    wanted.lfStrikeOut = font.strikeOut ? 1 : 0;
    wanted.lfCharSet = font.charSet;
    wanted.lfQuality = DRAFT_QUALITY;
    const auto end = std::find(font.faceName.begin(), font.faceName.end(), '\0');
    std::wstring face = WideShown({font.faceName.data(), static_cast<std::size_t>(end - font.faceName.begin())});
    // A face whose name was cut through a character may still be meant by its start.
    while (!face.empty() && face.back() == L'\xFFFD') face.pop_back();
    std::copy_n(face.begin(), (std::min)(face.size(), std::size_t{LF_FACESIZE - 1}), wanted.lfFaceName);
    return CreateFontIndirectW(&wanted);
}

}  // namespace

GdiObject OwnGdiObject(HGDIOBJ handle) {
    if (handle == nullptr) return nullptr;
    // Stock objects come here too: the system leaves them alone.
    return GdiObject(handle, [](void* object) { DeleteObject(object); });
}

GdiObject GdiObjects::PenOf(const Pen& pen) { return pens_.Get(pen, MakePen); }

GdiObject GdiObjects::BrushOf(const Brush& brush) { return brushes_.Get(brush, MakeBrush); }

GdiObject GdiObjects::FontOf(const Font& font) { return fonts_.Get(font, MakeFont); }

}  // namespace orvane
