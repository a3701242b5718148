#include "foreign/default_look.h"

#include <array>

namespace orvane {

namespace {

constexpr Rgb FromRgb(Rgb red, Rgb green, Rgb blue) { return red | green << 8 | blue << 16; }

struct Look {
    Rgb fill;
    Rgb line;
};

constexpr std::array<Look, 6> kLooks = {{
    {FromRgb(212, 226, 238), FromRgb(70, 110, 150)},  // blue
    {FromRgb(219, 233, 205), FromRgb(86, 126, 66)},   // green
    {FromRgb(245, 229, 200), FromRgb(160, 116, 52)},  // sand
    {FromRgb(230, 216, 234), FromRgb(120, 84, 136)},  // mauve
    {FromRgb(246, 215, 207), FromRgb(168, 88, 72)},   // rose
    {FromRgb(205, 232, 226), FromRgb(52, 122, 110)},  // teal
}};
// One for all polygons: neighbours of two layers draw their border twice.
constexpr Rgb kOutline = FromRgb(84, 100, 120);

// The symbol of points; the built-in ones go by numbers.
constexpr std::int32_t kCircle = 2;
// The line size of points that do not shrink to dots where the whole of a region is in view.
constexpr std::int32_t kOneSizeAtAllScales = 9999;

// How far down a type lies: the greatest key is drawn first.
std::int32_t Depth(std::int32_t layType) { return layType == kLayPolygon ? 2 : layType == kLayLine ? 1 : 0; }

}  // namespace

std::int32_t DefaultLayIndex(std::int32_t layType, std::int32_t pos) { return (Depth(layType) + 1) * kMaxLayers - pos; }

void SetDefaultLook(CDigMem& store, std::string_view code, std::int32_t layType, std::size_t nth) {
    const Look& look = kLooks[nth % kLooks.size()];
    store.SetLayColor(code, layType == kLayPolygon ? look.fill : look.line);
    store.SetLayColor2(code, kOutline);
    store.SetLayLineSize(code, layType == kLayPoint ? kOneSizeAtAllScales : 1);
    if (layType == kLayPoint) store.SetLayLineType(code, kCircle);
    if (layType == kLayPolygon) {
        store.SetLayPgnLine(code, false, 0);  // an outline, solid
        store.SetLayPgnMode(code, true);      // painted over what lies below
    }
}

}  // namespace orvane
