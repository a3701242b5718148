// How closed shapes are filled.
#pragma once

#include <cstdint>

#include "platform/gdi_constants.h"
#include "platform/pen_brush_font.h"

namespace orvane {

/// Shows no fill unless the item is active.
inline constexpr std::int32_t kPgnHollow = 7;

/// A fill pattern number as drawing reads it: unknown ones are solid.
inline std::int32_t KnownPgnType(std::int32_t pgnType) { return pgnType < 0 || pgnType > kPgnHollow ? 0 : pgnType; }

/// The brush of a known fill pattern; hollow gives the solid brush, which stays unused.
inline Brush FillBrush(std::int32_t pgnType, Rgb color) {
    constexpr Hatch kHatches[] = {Hatch::BDiagonal, Hatch::Cross,      Hatch::DiagCross,
                                  Hatch::FDiagonal, Hatch::Horizontal, Hatch::Vertical};
    if (pgnType < 1 || pgnType >= kPgnHollow) return CreateSolidBrush(color);
    return CreateHatchBrush(kHatches[pgnType - 1], color);
}

/// `fillMode` 1 paints over what lies below; every other value combines with it.
inline Rop2 FillRop(std::uint8_t fillMode) { return fillMode == 1 ? Rop2::CopyPen : Rop2::MaskPen; }

}  // namespace orvane
