// The clip of a context: none, or a set of pixels that may be empty and may reach beyond the surface.
#pragma once

#include <QRegion>
#include <optional>

#include "platform/gdi_constants.h"
#include "platform/qt/span_painter.h"
#include "platform/values.h"

namespace orvane {

class ClipRegion {
public:
    /// Combines with `rect`. Where there is no clip yet, the current one is the whole of a surface of the given size. Corners may
    /// stand in any order.
    void Select(const Rect& rect, RgnMode mode, const Rect& surface);
    void Exclude(const Rect& rect, const Rect& surface) { Select(rect, RgnMode::Diff, surface); }

    /// The pixels of a surface that may be drawn on.
    QRegion On(const Rect& surface) const;

private:
    std::optional<QRegion> region_;
};

/// The rectangles of `region`, which lies on a surface, as the painters take them.
void ToClipArea(const QRegion& region, ClipArea& out);
/// The region of a rectangle with its corners in any order; what lies beyond any surface is cut off.
QRegion ToRegion(const Rect& rect);

}  // namespace orvane
