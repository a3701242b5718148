// Lines by MoveToEx and LineTo whose ends lie further out than the system reaches.
#include "tests/win32/canvas.h"
// canvas.h brings the system headers, which come first
#include <gtest/gtest.h>

#include "platform/win32/reach.h"

namespace orvane {
namespace {

// Through (0, 20) with the slope of a half. Both ends out of reach by different factors, so that moving each to the border alone
// would turn the line.
constexpr Point kLeftEnd{-2000000000, -1000000000 + 20};
constexpr Point kRightEnd{2000000000, 1000000000 + 20};

void ExpectTheSlantedLine(Canvas& canvas, const char* how) {
    for (std::int32_t x = 0; x < 40; x += 2) EXPECT_EQ(canvas.At(x, 20 + x / 2 < 40 ? 20 + x / 2 : 39), 0u) << how << " " << x;
    EXPECT_GE(canvas.CountOf(0), 39) << how;
}

TEST(Win32DeepLineTest, ALineWithBothEndsFarOutsideKeepsItsSlope) {
    Canvas canvas;
    canvas.dc->MoveToEx(kLeftEnd.x, kLeftEnd.y);
    canvas.dc->LineTo(kRightEnd.x, kRightEnd.y);
    ExpectTheSlantedLine(canvas, "far to far");
}

TEST(Win32DeepLineTest, ALineFromOrToAPointNearByKeepsItsSlope) {
    Canvas from;
    from.dc->MoveToEx(kLeftEnd.x, kLeftEnd.y);
    from.dc->LineTo(60, 50);
    ExpectTheSlantedLine(from, "to a near end");
    Canvas to;
    to.dc->MoveToEx(-60, -10);
    to.dc->LineTo(kRightEnd.x, kRightEnd.y);
    ExpectTheSlantedLine(to, "from a near start");
}

TEST(Win32DeepLineTest, ALineGoesOnFromAFarPoint) {
    Canvas canvas;
    canvas.dc->MoveToEx(0, -2000000000);
    canvas.dc->LineTo(kLeftEnd.x, kLeftEnd.y);
    canvas.dc->LineTo(kRightEnd.x, kRightEnd.y);
    ExpectTheSlantedLine(canvas, "second line");
    canvas.dc->MoveToEx(0, 2);
    canvas.dc->LineTo(40, 2);
    EXPECT_EQ(canvas.Row(2), std::string(40, '#')) << "a near one after it";
}

TEST(Win32DeepLineTest, AFarLineBeginsWhereAnArcEnded) {
    Canvas canvas;
    const Rect box{-20, -20, 20, 20};
    canvas.dc->MoveToEx(20, 0);
    canvas.dc->ArcTo(box, {20, 0}, {0, 20});  // counter-clockwise round the origin to its other side
    POINT end{};
    ASSERT_TRUE(GetCurrentPositionEx(canvas.dc->Handle(), &end));
    canvas.dc->PatBlt(0, 0, 40, 40, Rop3::Whiteness);
    canvas.dc->LineTo(2000000000, end.y);
    EXPECT_EQ(canvas.Row(end.y), std::string(40, '#'));
    EXPECT_EQ(canvas.CountOf(0), 40);
}

TEST(Win32DeepLineTest, AFarLineBeginsWhereAHostLeftThePosition) {
    Canvas canvas;
    ::MoveToEx(canvas.dc->Handle(), 10, 5, nullptr);
    Win32Context map(DcHandle::Borrowed(canvas.dc->Handle()));
    map.LineTo(2000000000, 5);
    EXPECT_EQ(canvas.Row(5), std::string(10, '.') + std::string(30, '#'));
}

}  // namespace
}  // namespace orvane
