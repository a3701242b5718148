// Small rules that hang on a layer's type.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace orvane {

/// Types that a layer may be made with. 6 and 7 pass although nothing draws them.
inline bool IsMakeableType(std::int32_t layType) { return layType >= 1 && layType <= 10 && layType != 9; }

/// The field that "the line type" means for a layer or sub layer: a point layer's symbol, a polygon layer's hatch, else the line.
template <class Look>
std::int32_t& TypeFieldOf(Look& look, std::int32_t layType) {
    if (layType == kLayPoint) return look.pntType;
    if (layType == kLayPolygon) return look.pgnType;
    return look.lineType;
}

}  // namespace orvane
