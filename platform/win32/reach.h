// Figures cut to the coordinates that the system draws well. At a deep zoom a line of the map ends far outside and still crosses
// the picture; the system's devices count in 27 bits at most, some overflow earlier, and with all of them the time for a wide pen
// grows with the length.
#pragma once

#include <windows.h>
// windows.h comes first
#include <cstdint>
#include <vector>

#include "platform/values.h"

namespace orvane {

inline constexpr std::int32_t kReach_px = 1 << 20;

/// The nearest coordinate that can be drawn.
inline LONG Near(std::int32_t coordinate) {
    return coordinate > kReach_px ? kReach_px : coordinate < -kReach_px ? -kReach_px : coordinate;
}

bool IsInReach(const Point* pts, std::int64_t count);
/// Appends the parts of an open line that are in reach, each with its number of points. A crossing of the border is rounded to
/// the nearest pixel, far outside any device.
void CutLine(const Point* pts, std::int32_t count, std::vector<POINT>& out, std::vector<DWORD>& counts);
/// Appends what of a ring's area is in reach; parts may be joined along the border. Returns the number of points, which may be 0.
int CutRing(const Point* pts, std::int32_t count, std::vector<POINT>& out);

}  // namespace orvane
