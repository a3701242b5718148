// The figures of point symbols.
#pragma once

#include <array>
#include <cstdint>

#include "platform/device_context.h"
#include "platform/values.h"
#include "store/records.h"

namespace orvane {

/// The `pntType` whose figure comes from the store's symbol table.
inline constexpr std::int32_t kTableSymbol = 9999;

/// One symbol on the device.
struct SymbolPlace {
    Point at;
    std::int32_t half = 0;  ///< half the side of its square, pixels
    double value = 0;       ///< what the figures with a value write beside themselves
    bool writesValue = false;
};

/// The corners of the symbol's square, from left top by left bottom to right top. Coordinates saturate.
std::array<Point, 4> SymbolSquare(const SymbolPlace& place);

/// Draws the figure of a `pntType` with the selected pen and brush; unknown ones, and a table symbol that is null, are the
/// square. Closed shapes are filled and then outlined.
void DrawSymbolFigure(DeviceContext& dc, std::int32_t pntType, const SymbolPlace& place, const SymbolDef* symbol);

}  // namespace orvane
