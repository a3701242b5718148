#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/to_int.h"
#include "render/line_polygon.h"

namespace orvane {

namespace {

/// Position of the line type in the table, or -1. The file may define a number twice, and then the later one stands.
std::int32_t FindLineType(const CDigMem& store, std::int32_t lineType) {
    for (std::size_t i = store.lineTypes.size(); i > 0; --i) {
        if (store.lineTypes[i - 1].ltId == lineType) return static_cast<std::int32_t>(i - 1);
    }
    return -1;
}

Pen DashPen(const LineTypeDef& def, std::int32_t penFactor, std::int32_t width, Rgb color) {
    // More lengths than these are never taken over; a count beyond them reads zeros, and one beyond the array is refused.
    constexpr std::size_t kCopiedDashes = 10;
    std::array<std::int32_t, Pen::kMaxDashes> dashes{};
    const auto told = static_cast<std::size_t>((std::max)(def.ltCnt, 0));
    const std::size_t copied = (std::min)({told, def.ltList.size(), kCopiedDashes});
    for (std::size_t i = 0; i < copied; ++i) dashes[i] = PenUnitsToPix(def.ltList[i], penFactor);

    if (width >= 2) {
        const Pen pen = ExtCreatePen(PenStyle::GeometricFlatUser, width, color, def.ltCnt, dashes.data());
        if (!pen.empty) return pen;
    }
    return ExtCreatePen(PenStyle::UserStyle, 1, color, def.ltCnt, dashes.data());
}

}  // namespace

PenStyle StandardStyle(std::int32_t lineType) {
    return lineType < 0 || lineType > 4 ? PenStyle::Solid : static_cast<PenStyle>(lineType);
}

std::int32_t PenUnitsToPix(std::int32_t units, std::int32_t penFactor) {
    return TruncToInt32(static_cast<double>(units) * static_cast<double>(penFactor));
}

Pen MakeLinePen(const CDigMem& store, std::int32_t lineType, std::int32_t width, Rgb color, std::int32_t& kind,
                std::int32_t& index) {
    return LinePens(store).Make(lineType, width, color, kind, index);
}

Pen LinePens::Make(std::int32_t lineType, std::int32_t width, Rgb color, std::int32_t& kind, std::int32_t& index) {
    kind = kLineStandard;
    index = -1;
    if (store_.lineTypes.empty()) return CreatePen(StandardStyle(lineType), width, color);

    index = positions_.Get(lineType, store_.lineTypes.size(), [this](std::int32_t id) { return FindLineType(store_, id); });
    if (index < 0) return CreatePen(PenStyle::Solid, width, color);
    const LineTypeDef& def = store_.lineTypes[static_cast<std::size_t>(index)];
    kind = def.ltKind;
    if (kind == kLineStandard) return CreatePen(StandardStyle(lineType), width, color);
    if (kind == kLineDashes) return DashPen(def, store_.view.PenFactor(), width, color);
    return CreatePen(PenStyle::Solid, width, color);
}

}  // namespace orvane
