#include "platform/qt/ink.h"

#include <algorithm>
#include <cstddef>

namespace orvane {

namespace {

constexpr std::size_t kHatchCnt = 6;

// The platform's hatches in the order of their numbers; a row's leftmost pixel is its highest bit.
constexpr std::array<std::array<std::uint8_t, 8>, kHatchCnt> kHatchRows{{
    {0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00, 0x00},
    {0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08},
    {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01},
    {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80},
    {0x08, 0x08, 0x08, 0xFF, 0x08, 0x08, 0x08, 0x08},
    {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81},
}};

unsigned Code(Rop3 mode) { return static_cast<unsigned>(mode) >> 16 & 0xFFu; }

Ink HatchInk(std::size_t hatch, Mix lines, Mix gaps) {
    Ink ink;
    ink.kind = Ink::Kind::Tiled;
    for (std::size_t at = 0; at < ink.tile.size(); ++at) {
        const bool onLine = (kHatchRows[hatch][at / 8] << at % 8 & 0x80) != 0;
        ink.tile[at] = onLine ? lines : gaps;
    }
    return ink;
}

}  // namespace

// Bit 4 * pattern + 2 * source + destination of the code tells the result.
BitRule PatternRuleOf(Rop3 mode) { return (Code(mode) & 3u) | (Code(mode) >> 2 & 12u); }
BitRule SourceRuleOf(Rop3 mode) { return Code(mode) & 15u; }
bool ReadsPattern(Rop3 mode) { return (Code(mode) >> 4) != (Code(mode) & 15u); }
bool ReadsSource(Rop3 mode) { return (Code(mode) >> 2 & 0x33u) != (Code(mode) & 0x33u); }

bool Ink::IsRepeatable() const {
    if (kind != Kind::Tiled) return mix.IsRepeatable();
    return std::all_of(tile.begin(), tile.end(), [](const Mix& m) { return m.IsRepeatable(); });
}

Ink SolidInk(Mix mix) {
    Ink ink;
    ink.mix = mix;
    ink.kind = mix.IsNothing() ? Ink::Kind::Nothing : mix.IsCopy() ? Ink::Kind::Copy : Ink::Kind::Mixed;
    return ink;
}

Ink BrushInk(const Brush& brush, BitRule rule, BkMode mode, Rgb background) {
    const Mix lines = MakeMix(ToPixel(brush.color), rule);
    if (brush.style == BrushStyle::Solid) return SolidInk(lines);
    const auto hatch = static_cast<std::size_t>(brush.hatch);
    if (brush.style != BrushStyle::Hatched || hatch >= kHatchCnt) return {};
    return HatchInk(hatch, lines, mode == BkMode::Opaque ? MakeMix(ToPixel(background), rule) : Mix{});
}

}  // namespace orvane
