#include "geo/mesh_number.h"

#include <cstdio>
#include <cstdlib>

namespace orvane {

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

MeshXY MeshOrigin(std::int32_t base, std::int32_t mesh) {
    constexpr std::int32_t kPrimary = 80000;
    constexpr std::int32_t kSheet = 10000;
    const SheetPlace from = ReadSheet(base);
    const SheetPlace to = ReadSheet(mesh);
    return {(to.column - from.column) * kPrimary + (to.columnInside - from.columnInside) * kSheet,
            (to.row - from.row) * kPrimary + (to.rowInside - from.rowInside) * kSheet};
}

}  // namespace orvane
