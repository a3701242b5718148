// A text as the outlines of its glyphs, for devices that take shapes of any size and no pixels.
#pragma once

#include <QPainterPath>
#include <QPolygonF>
#include <cstdint>
#include <string_view>

#include "platform/qt/text_painter.h"

namespace orvane {

/// Pixels, between the corners of pixels: pixel (x, y) reaches from there to one further.
struct TextShapes {
    QPainterPath glyphs;  ///< to be filled by the winding rule; with the bars of underlined and struck out texts
    QPolygonF cell;       ///< what an opaque background fills
};

/// The shapes of what TextPainter::Draw draws with the same look, without its hints. Empty when there is no font, or no memory.
TextShapes OutlineText(const TextState& look, std::int32_t x, std::int32_t y, std::string_view text);

}  // namespace orvane
