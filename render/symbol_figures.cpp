#include "render/symbol_figures.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

#include "platform/to_int.h"

namespace orvane {

namespace {

/// The design square of the symbol table has this many units on half a side.
constexpr double kHalfSide_units = 200.0;

Point Moved(Point p, std::int64_t dx, std::int64_t dy) {
    return {TruncToInt32(static_cast<double>(p.x + dx)), TruncToInt32(static_cast<double>(p.y + dy))};
}

/// Fills and outlines the polygon whose points lie at these offsets from the symbol's point.
template <std::size_t N>
void DrawPolygon(DeviceContext& dc, Point at, const std::int64_t (&offsets)[N][2]) {
    std::array<Point, N> pts;
    for (std::size_t i = 0; i < N; ++i) pts[i] = Moved(at, offsets[i][0], offsets[i][1]);
    dc.BeginPath();
    dc.Polygon(pts.data(), static_cast<std::int32_t>(N));
    dc.EndPath();
    dc.FillPath();
    dc.Polygon(pts.data(), static_cast<std::int32_t>(N));
}

void DrawEllipse(DeviceContext& dc, Point first, Point second) {
    dc.BeginPath();
    dc.Ellipse(first.x, first.y, second.x, second.y);
    dc.EndPath();
    dc.FillPath();
    dc.Ellipse(first.x, first.y, second.x, second.y);
}

void DrawLine(DeviceContext& dc, Point from, Point to) {
    dc.MoveToEx(from.x, from.y);
    dc.LineTo(to.x, to.y);
}

void DrawSquare(DeviceContext& dc, Point at, std::int64_t h) { DrawPolygon(dc, at, {{-h, -h}, {-h, h}, {h, h}, {h, -h}}); }

void DrawStar(DeviceContext& dc, Point at, std::int64_t h) {
    const std::int64_t q = h / 4;
    const std::int64_t t = h / 3;
    const std::int64_t u = 2 * h / 3;
    DrawPolygon(dc, at, {{0, -h}, {-q, -q}, {-h, -q}, {-t, q}, {-u, h}, {0, u}, {u, h}, {t, q}, {h, -q}, {q, -q}});
}

/// Two decimals in at least five places, whatever the locale.
void DrawValue(DeviceContext& dc, Point at, double value) {
    constexpr std::ptrdiff_t kPlaces = 5;
    char text[kPlaces + 320];  // the greatest double has 309 digits before the point
    std::fill_n(text, kPlaces, ' ');
    char* const digits = text + kPlaces;
    const char* const end = std::to_chars(digits, std::end(text), value, std::chars_format::fixed, 2).ptr;
    const char* const begin = digits - (std::max)(kPlaces - (end - digits), std::ptrdiff_t{0});
    dc.DrawTextBytes(at.x, at.y, std::string_view(begin, static_cast<std::size_t>(end - begin)));
}

void DrawDotWithValue(DeviceContext& dc, const SymbolPlace& place, std::int64_t radius) {
    DrawEllipse(dc, Moved(place.at, radius, radius), Moved(place.at, -radius, -radius));
    if (place.writesValue) DrawValue(dc, Moved(place.at, place.half, -std::int64_t{place.half}), place.value);
}

/// From the design square, whose y grows upward, to the device.
Point StrokePoint(const SymbolPlace& place, Point units) {
    const auto offset = [&place](std::int32_t c) {
        return std::int64_t{ToInt(static_cast<double>(std::int64_t{c} * place.half) / kHalfSide_units)};
    };
    return Moved(place.at, offset(units.x), -offset(units.y));
}

void DrawTableSymbol(DeviceContext& dc, const SymbolPlace& place, const SymbolDef& symbol) {
    for (std::int32_t k = 0; k < symbol.strokeCnt; ++k) {
        const auto i = static_cast<std::size_t>(k);
        DrawLine(dc, StrokePoint(place, symbol.strokeFrom[i]), StrokePoint(place, symbol.strokeTo[i]));
    }
}

}  // namespace

std::array<Point, 4> SymbolSquare(const SymbolPlace& place) {
    const std::int64_t h = place.half;
    return {Moved(place.at, -h, -h), Moved(place.at, -h, h), Moved(place.at, h, h), Moved(place.at, h, -h)};
}

void DrawSymbolFigure(DeviceContext& dc, std::int32_t pntType, const SymbolPlace& place, const SymbolDef* symbol) {
    const Point at = place.at;
    const std::int64_t h = place.half;
    switch (pntType) {
        case 0:
            return DrawPolygon(dc, at, {{0, -h}, {-h, h}, {h, h}});
        case 2:
            return DrawEllipse(dc, Moved(at, -h, -h), Moved(at, h, h));
        case 3:
            return DrawPolygon(dc, at, {{-h, 0}, {0, h}, {h, 0}, {0, -h}});
        case 4:
            return DrawStar(dc, at, h);
        case 5:
            return DrawPolygon(dc, at, {{0, h}, {-h, -h}, {h, -h}});
        case 10:
            DrawSquare(dc, at, h);
            DrawLine(dc, Moved(at, h, 0), Moved(at, -h, 0));
            DrawLine(dc, Moved(at, 0, h), Moved(at, 0, -h));
            return;
        case 11:
            return DrawDotWithValue(dc, place, h / 4);
        case 12:
            return DrawDotWithValue(dc, place, 4 * h);
        case kTableSymbol:
            if (symbol != nullptr) return DrawTableSymbol(dc, place, *symbol);
            break;
        default:
            break;
    }
    DrawSquare(dc, at, h);
}

}  // namespace orvane
