#include "render/vertex_marks.h"

#include <cstddef>

#include "platform/to_int.h"

namespace orvane {

namespace {

void Mark(DeviceContext& dc, Point p, std::int32_t r_px) {
    dc.Ellipse(SaturatedAdd(p.x, -r_px), SaturatedAdd(p.y, -r_px), SaturatedAdd(p.x, r_px), SaturatedAdd(p.y, r_px));
}

void MarkRun(DeviceContext& dc, std::span<const Point> pts) {
    constexpr std::int32_t kEnd_px = 5;
    constexpr std::int32_t kVertex_px = 3;
    Mark(dc, pts.front(), kEnd_px);
    for (std::size_t q = 0; q + 1 < pts.size(); ++q) {
        if (q == 1) {
            Mark(dc, pts[q], kVertex_px - 1);
            Mark(dc, pts[q], kVertex_px + 1);
        }
        Mark(dc, pts[q], kVertex_px);
    }
    Mark(dc, pts.back(), kEnd_px);
}

}  // namespace

void DrawVertexMarks(DeviceContext& dc, std::span<const Point> pts, std::span<const std::int32_t> rings) {
    if (rings.empty()) {
        MarkRun(dc, pts);
        return;
    }
    for (const std::int32_t count : rings) {
        MarkRun(dc, pts.first(static_cast<std::size_t>(count)));
        pts = pts.subspan(static_cast<std::size_t>(count));
    }
}

}  // namespace orvane
