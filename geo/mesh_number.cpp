#include "geo/mesh_number.h"

#include <cstdio>
#include <cstdlib>

namespace orvane {
namespace {

/// A sheet number taken apart: where its sheet stands among the primary meshes, and inside its own.
struct SheetPlace {
    std::int32_t row = 0;
    std::int32_t column = 0;
    std::int32_t rowInside = 0;
    std::int32_t columnInside = 0;
};

/// The number is read as printed and not as a value: sheets beyond six digits and signed numbers get the place that their
/// leading characters spell, which a division would not give.
SheetPlace ReadSheet(std::int32_t mesh) {
    char text[12] = {};
    std::snprintf(text, sizeof text, "%06d", static_cast<int>(mesh));
    const auto group = [&text](std::size_t first, std::size_t length) {
        char digits[3] = {};
        for (std::size_t i = 0; i < length; ++i) digits[i] = text[first + i];
        return static_cast<std::int32_t>(std::atoi(digits));
    };
    return {group(0, 2), group(2, 2), group(4, 1), group(5, 1)};
}

}  // namespace

MeshXY MeshOrigin(std::int32_t base, std::int32_t mesh) {
    constexpr std::int32_t kPrimary = 80000;
    constexpr std::int32_t kSheet = 10000;
    const SheetPlace from = ReadSheet(base);
    const SheetPlace to = ReadSheet(mesh);
    return {(to.column - from.column) * kPrimary + (to.columnInside - from.columnInside) * kSheet,
            (to.row - from.row) * kPrimary + (to.rowInside - from.rowInside) * kSheet};
}

}  // namespace orvane
