#include "geo/mesh_number.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvane {
namespace {

void ExpectOrigin(std::int32_t base, std::int32_t mesh, std::int32_t x, std::int32_t y) {
    const MeshXY origin = MeshOrigin(base, mesh);
    EXPECT_EQ(origin.x, x) << base << ' ' << mesh;
    EXPECT_EQ(origin.y, y) << base << ' ' << mesh;
}

TEST(MeshNumber, SheetOfTokyoLiesWhereItsDigitsSay) { ExpectOrigin(0, 533945, 39 * 80000 + 5 * 10000, 53 * 80000 + 4 * 10000); }

TEST(MeshNumber, FewerDigitsArePaddedWithZerosInFront) {
    ExpectOrigin(0, 0, 0, 0);
    ExpectOrigin(0, 5, 50000, 0);
    ExpectOrigin(0, 45, 50000, 40000);
    ExpectOrigin(0, 12345, 23 * 80000 + 50000, 80000 + 40000);
}

TEST(MeshNumber, MoreThanSixDigitsAreCutByPosition) {
    ExpectOrigin(0, 5339457, 3170000, 4280000);
    ExpectOrigin(0, 533945999, 3170000, 4280000);
    ExpectOrigin(0, (std::numeric_limits<std::int32_t>::max)(), 47 * 80000 + 80000, 21 * 80000 + 40000);
}

TEST(MeshNumber, DigitsAboveSevenInTheLastTwoPlacesAreTakenAsTheyStand) {
    ExpectOrigin(0, 999999, 99 * 80000 + 90000, 99 * 80000 + 90000);
}

TEST(MeshNumber, BaseIsTakenAwayDigitGroupByDigitGroup) {
    ExpectOrigin(533945, 533945, 0, 0);
    ExpectOrigin(533945, 533946, 10000, 0);
    ExpectOrigin(533945, 543930, -50000, 80000 - 10000);
    ExpectOrigin(533945, 0, -3170000, -4280000);
}

TEST(MeshNumber, SignTakesThePlaceOfADigit) {
    ExpectOrigin(0, -5, 50000, 0);                                     // -00005
    ExpectOrigin(0, -533945, 33 * 80000 + 40000, -5 * 80000 + 90000);  // -5 33 9 4 5
    ExpectOrigin(0, (std::numeric_limits<std::int32_t>::min)(), 14 * 80000 + 40000, -2 * 80000 + 70000);
}

}  // namespace
}  // namespace orvane
