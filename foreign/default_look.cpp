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
    {FromRgb(221, 232, 240), FromRgb(84, 118, 150)},   // blue
    {FromRgb(225, 236, 215), FromRgb(98, 132, 78)},    // green
    {FromRgb(246, 234, 212), FromRgb(164, 124, 66)},   // sand
    {FromRgb(236, 224, 238), FromRgb(128, 96, 140)},   // mauve
    {FromRgb(248, 224, 218), FromRgb(172, 98, 84)},    // rose
    {FromRgb(216, 237, 233), FromRgb(66, 130, 120)},   // teal
}};

// How far down a type lies: the greatest key is drawn first.
std::int32_t Depth(std::int32_t layType) { return layType == kLayPolygon ? 2 : layType == kLayLine ? 1 : 0; }

}  // namespace

std::int32_t DefaultLayIndex(std::int32_t layType, std::int32_t pos) { return (Depth(layType) + 1) * kMaxLayers - pos; }

void SetDefaultLook(CDigMem& store, std::string_view code, std::int32_t layType, std::size_t nth) {
    const Look& look = kLooks[nth % kLooks.size()];
    store.SetLayColor(code, layType == kLayPolygon ? look.fill : look.line);
    store.SetLayColor2(code, look.line);
    store.SetLayLineSize(code, 1);
    if (layType == kLayPolygon) {
        store.SetLayPgnLine(code, false, 0);  // an outline, solid
        store.SetLayPgnMode(code, true);      // painted over what lies below
    }
}

}  // namespace orvane
