#include "tests/win32/canvas.h"
#include "tests/win32/handle_probe.h"
// they bring the system headers, which come first
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "platform/record/record_context.h"
#include "platform/win32/win32_files.h"

namespace orvane {
namespace {

constexpr Rgb kRed = 0x0000FF;                 // as the seam tells it
constexpr std::uint32_t kRedPixel = 0xFF0000;  // as a bitmap holds it

TEST(Win32ContextTest, StartsAsThePlatformsContextsDo) {
    Canvas canvas;
    DeviceContext& dc = *canvas.dc;
    EXPECT_EQ(dc.SetBkMode(BkMode::Transparent), BkMode::Opaque);
    EXPECT_EQ(dc.SetBkColor(0x010203), 0xFFFFFFu);
    EXPECT_EQ(dc.SetTextColor(0x040506), 0u);
    EXPECT_EQ(dc.SetTextAlign(TextAlign::CenterBaseline), TextAlign::LeftTop);
    EXPECT_EQ(dc.SetROP2(Rop2::XorPen), Rop2::CopyPen);
    EXPECT_EQ(dc.SetArcDirection(ArcDirection::Clockwise), ArcDirection::CounterClockwise);
    EXPECT_EQ(dc.SelectPen(CreatePen(PenStyle::Dot, 1, kRed)), Pen{});
    EXPECT_EQ(dc.SelectBrush(NullBrush()), WhiteBrush());
    Font font;
    font.height_px = -12;
    EXPECT_EQ(dc.SelectFont(font), Font{});
}

TEST(Win32ContextTest, EachSetterAnswersTheValueBefore) {
    Canvas canvas;
    DeviceContext& dc = *canvas.dc;
    dc.SetBkMode(BkMode::Transparent);
    EXPECT_EQ(dc.SetBkMode(BkMode::Opaque), BkMode::Transparent);
    dc.SetBkColor(0x112233);
    EXPECT_EQ(dc.SetBkColor(0), 0x112233u);
    dc.SetTextColor(0x332211);
    EXPECT_EQ(dc.SetTextColor(0), 0x332211u);
    dc.SetTextAlign(TextAlign::RightBottom);
    EXPECT_EQ(dc.SetTextAlign(TextAlign::LeftTop), TextAlign::RightBottom);
    dc.SetROP2(Rop2::Not);
    EXPECT_EQ(dc.SetROP2(Rop2::CopyPen), Rop2::Not);
    dc.SetArcDirection(ArcDirection::Clockwise);
    EXPECT_EQ(dc.SetArcDirection(ArcDirection::CounterClockwise), ArcDirection::Clockwise);
    const Pen wide = CreatePen(PenStyle::Solid, 5, kRed);
    dc.SelectPen(wide);
    EXPECT_EQ(dc.SelectPen(Pen{}), wide);
    const Brush hatched = CreateHatchBrush(Hatch::Cross, kRed);
    dc.SelectBrush(hatched);
    EXPECT_EQ(dc.SelectBrush(NullBrush()), hatched);
}

TEST(Win32ContextTest, ModesThatThePlatformDoesNotHaveChangeNothing) {
    Canvas canvas;
    DeviceContext& dc = *canvas.dc;
    EXPECT_EQ(dc.SetROP2(static_cast<Rop2>(17)), Rop2::CopyPen);
    EXPECT_EQ(dc.SetROP2(static_cast<Rop2>(0)), Rop2::CopyPen);
    EXPECT_EQ(dc.SetROP2(Rop2::CopyPen), Rop2::CopyPen);
    EXPECT_EQ(dc.SetBkMode(static_cast<BkMode>(3)), BkMode::Opaque);
    EXPECT_EQ(dc.SetBkMode(BkMode::Opaque), BkMode::Opaque);
    const Brush none{BrushStyle::Hatched, kRed, static_cast<Hatch>(6)};
    EXPECT_EQ(dc.SelectBrush(none), WhiteBrush());
    EXPECT_EQ(dc.SelectBrush(NullBrush()), WhiteBrush()) << "the refused one was not taken";
}

TEST(Win32ContextTest, TheEmptyPenChangesNothing) {
    Canvas canvas;
    const std::int32_t none[] = {0};
    const Pen refused = ExtCreatePen(PenStyle::UserStyle, 1, kRed, 1, none);
    ASSERT_TRUE(refused.empty);
    EXPECT_EQ(canvas.dc->SelectPen(refused), Pen{});
    const Point line[] = {{1, 1}, {5, 1}};
    canvas.dc->Polyline(line, 2);
    EXPECT_EQ(canvas.At(3, 1), 0u) << "still black";
}

TEST(Win32ContextTest, AMemoryContextWithoutABitmapTakesDrawingAndLosesIt) {
    const auto dc = Win32Context::InMemory();
    dc->PatBlt(0, 0, 10, 10, Rop3::Whiteness);
    dc->LineTo(5, 5);
    Canvas canvas;
    canvas.dc->SelectBitmap(nullptr);
    canvas.dc->PatBlt(0, 0, 40, 40, Rop3::Blackness);
    EXPECT_EQ(canvas.At(5, 5), 0xFFFFFFu);
}

TEST(Win32ContextTest, BitmapsAreBlackAndHaveColoursWhateverTheContext) {
    const auto dc = Win32Context::InMemory();  // the system's own answer to this would be a bitmap of one bit
    const auto bitmap = dc->CreateCompatibleBitmap(3, 2);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Width_px(), 3);
    EXPECT_EQ(bitmap->Height_px(), 2);
    auto* const pixels = static_cast<Win32Bitmap&>(*bitmap).Pixels();
    for (int i = 0; i < 6; ++i) EXPECT_EQ(pixels[i] & 0xFFFFFF, 0u);
    dc->SelectBitmap(bitmap.get());
    dc->FillRect({0, 0, 1, 1}, CreateSolidBrush(0x123456));
    GdiFlush();
    EXPECT_EQ(pixels[0] & 0xFFFFFF, 0x563412u);
    dc->SelectBitmap(nullptr);
}

TEST(Win32ContextTest, BitmapsWithoutAreaOrWithoutMemoryAreNone) {
    const auto dc = Win32Context::InMemory();
    EXPECT_EQ(dc->CreateCompatibleBitmap(0, 5), nullptr);
    EXPECT_EQ(dc->CreateCompatibleBitmap(5, -1), nullptr);
    EXPECT_EQ(dc->CreateCompatibleBitmap(INT32_MAX, INT32_MAX), nullptr);
    EXPECT_EQ(dc->CreateMonochromeBitmap(0, 1), nullptr);
    EXPECT_EQ(dc->CreateMonochromeBitmap(INT32_MAX, 2), nullptr);
}

TEST(Win32ContextTest, ABitmapOfPixelsHasThemRowByRowFromTheTop) {
    Canvas canvas(4, 4);
    const Rgb pixels[] = {kRed, 0x00FF00, 0xFF0000, 0x123456};
    const auto bitmap = canvas.dc->CreatePixelBitmap(2, 2, pixels);
    ASSERT_NE(bitmap, nullptr);
    const auto memory = canvas.dc->CreateCompatibleDC();
    memory->SelectBitmap(bitmap.get());
    canvas.dc->BitBlt(0, 0, 2, 2, *memory, 0, 0, Rop3::SrcCopy);
    EXPECT_EQ(canvas.At(0, 0), kRedPixel);
    EXPECT_EQ(canvas.At(1, 0), 0x00FF00u);
    EXPECT_EQ(canvas.At(0, 1), 0x0000FFu);
    EXPECT_EQ(canvas.At(1, 1), 0x563412u);
    EXPECT_EQ(canvas.dc->CreatePixelBitmap(0, 2, pixels), nullptr);
    EXPECT_EQ(canvas.dc->CreatePixelBitmap(2, 2, nullptr), nullptr);
    memory->SelectBitmap(nullptr);
}

TEST(Win32ContextTest, BlitsBetweenOneBitAndColoursGoByTextAndBackgroundColour) {
    Canvas canvas(4, 1);
    canvas.dc->FillRect({1, 0, 2, 1}, CreateSolidBrush(kRed));
    canvas.dc->FillRect({2, 0, 3, 1}, CreateSolidBrush(0x00FF00));
    const auto mask = canvas.dc->CreateMonochromeBitmap(4, 1);
    const auto maskDC = canvas.dc->CreateCompatibleDC();
    maskDC->SelectBitmap(mask.get());
    canvas.dc->SetBkColor(kRed);
    maskDC->BitBlt(0, 0, 4, 1, *canvas.dc, 0, 0, Rop3::SrcCopy);
    canvas.dc->SetBkColor(0x00FFFF);    // yellow
    canvas.dc->SetTextColor(0xFF0000);  // blue
    canvas.dc->BitBlt(0, 0, 4, 1, *maskDC, 0, 0, Rop3::SrcCopy);
    const std::uint32_t first = canvas.At(0, 0);
    EXPECT_EQ(first, 0x0000FFu);
    EXPECT_EQ(canvas.At(1, 0), 0xFFFF00u) << "where the source had its background colour";
    EXPECT_EQ(canvas.At(2, 0), 0x0000FFu);
}

TEST(Win32ContextTest, AOnePixelLineLeavesItsLastPixelOutInEveryDirection) {
    Canvas canvas(9, 9);
    const Point across[] = {{1, 1}, {6, 1}};
    canvas.dc->Polyline(across, 2);
    EXPECT_EQ(canvas.Row(1), ".#####...");
    const Point back[] = {{6, 3}, {1, 3}};
    canvas.dc->Polyline(back, 2);
    EXPECT_EQ(canvas.Row(3), "..#####..");
    canvas.dc->MoveToEx(0, 5);
    canvas.dc->LineTo(3, 5);
    canvas.dc->LineTo(3, 8);
    EXPECT_EQ(canvas.Row(5), "####.....") << "the line goes on from its end";
    EXPECT_EQ(canvas.Row(7), "...#.....");
}

TEST(Win32ContextTest, FewerThanTwoPointsDrawNothing) {
    Canvas canvas(5, 5);
    const Point pts[] = {{1, 1}, {3, 1}, {3, 3}};
    canvas.dc->Polyline(pts, 1);
    canvas.dc->Polyline(pts, 0);
    canvas.dc->Polyline(pts, -1);
    canvas.dc->Polyline(nullptr, 2);
    const std::int32_t counts[] = {3, 1};
    canvas.dc->PolyPolygon(pts, counts, 2);
    canvas.dc->PolyPolygon(pts, counts, 0);
    canvas.dc->PolyPolygon(nullptr, counts, 1);
    canvas.dc->PolyPolygon(pts, nullptr, 1);
    EXPECT_EQ(canvas.CountOf(0), 0);
}

TEST(Win32ContextTest, GapsOfDashesTakeTheBackgroundColourWhileOpaque) {
    Canvas canvas(40, 4);
    canvas.dc->SetBkColor(kRed);
    canvas.dc->SelectPen(CreatePen(PenStyle::Dash, 1, 0));
    const Point line[] = {{0, 1}, {40, 1}};
    canvas.dc->Polyline(line, 2);
    const std::int32_t black = canvas.CountOf(0);
    EXPECT_GT(black, 0);
    EXPECT_EQ(canvas.CountOf(kRedPixel), 40 - black);
    canvas.dc->SetBkMode(BkMode::Transparent);
    const Point under[] = {{0, 3}, {40, 3}};
    canvas.dc->Polyline(under, 2);
    EXPECT_EQ(canvas.CountOf(0), 2 * black);
    EXPECT_EQ(canvas.CountOf(kRedPixel), 40 - black) << "no more of it";
}

TEST(Win32ContextTest, ACosmeticUserStyleCountsInUnitsOfThreePixels) {
    Canvas canvas(12, 1);
    const std::int32_t dashes[] = {1, 2};
    canvas.dc->SetBkMode(BkMode::Transparent);
    canvas.dc->SelectPen(ExtCreatePen(PenStyle::UserStyle, 1, 0, 2, dashes));
    const Point line[] = {{0, 0}, {12, 0}};
    canvas.dc->Polyline(line, 2);
    EXPECT_EQ(canvas.Row(0), "###......###");
}

TEST(Win32ContextTest, AGeometricUserStyleCountsInPixelsWithFlatEnds) {
    Canvas canvas(12, 5);
    const std::int32_t dashes[] = {4, 2};
    canvas.dc->SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 3, 0, 2, dashes));
    const Point line[] = {{0, 2}, {12, 2}};
    canvas.dc->Polyline(line, 2);
    EXPECT_EQ(canvas.Row(2), "####..####..");
    EXPECT_EQ(canvas.Row(1), canvas.Row(2));
    EXPECT_EQ(canvas.Row(3), canvas.Row(2));
    EXPECT_EQ(canvas.Row(0), "............");
    EXPECT_EQ(canvas.Row(4), "............");
}

TEST(Win32ContextTest, APolygonIsFilledAndOutlined) {
    Canvas canvas(8, 6);
    canvas.dc->SelectBrush(CreateSolidBrush(kRed));
    const Point ring[] = {{1, 1}, {6, 1}, {6, 4}, {1, 4}};
    canvas.dc->Polygon(ring, 4);
    EXPECT_EQ(canvas.Row(1), ".######.");
    EXPECT_EQ(canvas.Row(2), ".#????#.");
    EXPECT_EQ(canvas.Row(4), ".######.");
    EXPECT_EQ(canvas.CountOf(kRedPixel), 8);
}

TEST(Win32ContextTest, RingsWithinRingsAreHoles) {
    Canvas canvas(12, 12);
    canvas.dc->SelectBrush(CreateSolidBrush(kRed));
    canvas.dc->SelectPen(CreatePen(PenStyle::Null, 1, 0));
    const Point pts[] = {{0, 0}, {12, 0}, {12, 12}, {0, 12}, {4, 4}, {8, 4}, {8, 8}, {4, 8}};
    const std::int32_t counts[] = {4, 4};
    canvas.dc->PolyPolygon(pts, counts, 2);
    EXPECT_EQ(canvas.At(2, 6), kRedPixel);
    EXPECT_EQ(canvas.At(6, 6), 0xFFFFFFu);
}

TEST(Win32ContextTest, ABoxOfAnEllipseMayNameItsCornersInAnyOrder) {
    Canvas one(30, 20), other(30, 20);
    one.dc->Ellipse(2, 3, 28, 17);
    other.dc->Ellipse(28, 17, 2, 3);
    EXPECT_GT(one.CountOf(0), 20);
    for (std::int32_t y = 0; y < 20; ++y) EXPECT_EQ(one.Row(y), other.Row(y));
    EXPECT_EQ(one.At(15, 3), 0u);
    EXPECT_EQ(one.At(15, 17), 0xFFFFFFu) << "bottom lies outside";
}

TEST(Win32ContextTest, AnArcIsJoinedToThePositionAndMovesIt) {
    Canvas canvas(40, 40);
    canvas.dc->MoveToEx(39, 20);
    canvas.dc->ArcTo({10, 10, 31, 31}, {40, 20}, {20, -10});  // from the right, counter-clockwise to the top
    EXPECT_EQ(canvas.At(35, 20), 0u) << "the line to the start";
    EXPECT_EQ(canvas.At(10, 20), 0xFFFFFFu) << "the left is not on the way";
    canvas.dc->LineTo(20, 0);
    EXPECT_EQ(canvas.At(20, 5), 0u) << "from the top on";
}

TEST(Win32ContextTest, TheArcDirectionTurnsAnArcRound) {
    Canvas canvas(40, 40);
    canvas.dc->SetArcDirection(ArcDirection::Clockwise);
    canvas.dc->MoveToEx(30, 20);
    canvas.dc->ArcTo({10, 10, 31, 31}, {40, 20}, {20, -10});
    EXPECT_EQ(canvas.At(10, 20), 0u) << "the long way round";
}

TEST(Win32ContextTest, AChordIsAnAreaAndLeavesThePosition) {
    Canvas canvas(40, 40);
    canvas.dc->SelectBrush(CreateSolidBrush(kRed));
    canvas.dc->MoveToEx(0, 0);
    canvas.dc->Chord({10, 10, 31, 31}, {40, 20}, {0, 20});  // the upper half
    EXPECT_EQ(canvas.At(20, 15), kRedPixel);
    EXPECT_EQ(canvas.At(20, 25), 0xFFFFFFu);
    canvas.dc->LineTo(5, 0);
    EXPECT_EQ(canvas.At(2, 0), 0u) << "the position is still the left top";
}

TEST(Win32ContextTest, VerbsThatDrawAPathConsumeItAndDoNothingWhileItIsGathered) {
    Canvas canvas(10, 10);
    canvas.dc->SelectBrush(CreateSolidBrush(kRed));
    const Point ring[] = {{1, 1}, {8, 1}, {8, 8}, {1, 8}};
    canvas.dc->BeginPath();
    canvas.dc->Polygon(ring, 4);
    canvas.dc->FillPath();
    EXPECT_EQ(canvas.CountOf(0xFFFFFF), 100) << "still being gathered";
    canvas.dc->EndPath();
    canvas.dc->FillPath();
    EXPECT_EQ(canvas.At(4, 4), kRedPixel);
    EXPECT_EQ(canvas.CountOf(0), 0) << "no outline";
    canvas.dc->PatBlt(0, 0, 10, 10, Rop3::Whiteness);
    canvas.dc->StrokePath();
    EXPECT_EQ(canvas.CountOf(0), 0) << "consumed";
}

TEST(Win32ContextTest, StrokeAndFillPathClosesOpenFiguresAndStrokePathDoesNot) {
    const Point open[] = {{1, 1}, {8, 1}, {8, 8}};
    for (const bool fill : {false, true}) {
        Canvas canvas(10, 10);
        canvas.dc->BeginPath();
        canvas.dc->Polyline(open, 3);
        canvas.dc->EndPath();
        fill ? canvas.dc->StrokeAndFillPath() : canvas.dc->StrokePath();
        EXPECT_EQ(canvas.At(4, 1), 0u);
        EXPECT_EQ(canvas.At(4, 4), fill ? 0u : 0xFFFFFFu) << "the third side";
    }
}

TEST(Win32ContextTest, CombiningModesActOnPensAndFillsAndOnNothingElse) {
    Canvas canvas(20, 20);
    DeviceContext& dc = *canvas.dc;
    dc.SetROP2(Rop2::Not);
    const Point line[] = {{0, 0}, {5, 0}};
    dc.SelectPen(CreatePen(PenStyle::Solid, 1, kRed));
    dc.Polyline(line, 2);
    EXPECT_EQ(canvas.At(2, 0), 0u) << "inverted, not red";
    dc.FillRect({0, 5, 5, 6}, CreateSolidBrush(kRed));
    EXPECT_EQ(canvas.At(2, 5), kRedPixel);
    dc.PatBlt(0, 7, 5, 1, Rop3::Blackness);
    EXPECT_EQ(canvas.At(2, 7), 0u);
    Font font;
    font.height_px = -12;
    dc.SelectFont(font);
    dc.SetTextColor(kRed);
    dc.SetBkColor(0xFF0000);
    dc.DrawTextBytes(0, 8, "  ");
    EXPECT_EQ(canvas.At(1, 12), 0x0000FFu) << "the background of a text is copied";
}

TEST(Win32ContextTest, TheClipCombinesWithWhatIsThere) {
    Canvas canvas(10, 1);
    DeviceContext& dc = *canvas.dc;
    dc.SelectClipRgn({2, 0, 6, 1}, RgnMode::Copy);
    dc.SelectClipRgn({4, 0, 9, 1}, RgnMode::Or);
    dc.ExcludeClipRect({7, 0, 8, 1});
    dc.FillRect({0, 0, 10, 1}, CreateSolidBrush(0));
    EXPECT_EQ(canvas.Row(0), "..#####.#.");
    dc.SelectClipRgn({0, 0, 10, 1}, RgnMode::Copy);
    dc.SelectClipRgn({1, 0, 2, 1}, RgnMode::Diff);
    dc.FillRect({0, 0, 10, 1}, WhiteBrush());
    EXPECT_EQ(canvas.Row(0), "..........");
}

TEST(Win32ContextTest, WithNoClipTheFirstOneCutsTheWholeSurface) {
    Canvas canvas(6, 1);
    canvas.dc->SelectClipRgn({1, 0, 3, 1}, RgnMode::Diff);
    canvas.dc->FillRect({0, 0, 6, 1}, CreateSolidBrush(0));
    EXPECT_EQ(canvas.Row(0), "#..###");
}

TEST(Win32ContextTest, BlitsCombineWithTheTarget) {
    struct Case {
        Rop3 rop;
        std::uint32_t expected;
    };
    constexpr std::uint32_t kSource = 0xF0F000, kTarget = 0xCC00CC;
    for (const Case& c :
         {Case{Rop3::SrcCopy, kSource}, Case{Rop3::SrcAnd, kSource & kTarget}, Case{Rop3::SrcPaint, kSource | kTarget},
          Case{Rop3::SrcInvert, kSource ^ kTarget}, Case{Rop3::NotSrcCopy, ~kSource & 0xFFFFFF}, Case{Rop3::Whiteness, 0xFFFFFF},
          Case{Rop3::Blackness, 0}, Case{Rop3::DstInvert, ~kTarget & 0xFFFFFF}}) {
        Canvas source(2, 1), target(2, 1);
        source.dc->FillRect({0, 0, 2, 1}, CreateSolidBrush(0x00F0F0));
        target.dc->FillRect({0, 0, 2, 1}, CreateSolidBrush(0xCC00CC));
        target.dc->BitBlt(0, 0, 1, 1, *source.dc, 0, 0, c.rop);
        EXPECT_EQ(target.At(0, 0), c.expected) << std::hex << static_cast<std::uint32_t>(c.rop);
        EXPECT_EQ(target.At(1, 0), kTarget);
    }
}

TEST(Win32ContextTest, AModeThatReadsASourceDrawsNothingWithoutOne) {
    Canvas canvas(2, 1);
    canvas.dc->PatBlt(0, 0, 2, 1, Rop3::SrcCopy);
    EXPECT_EQ(canvas.Row(0), "..");
    RecordContext other{std::shared_ptr<VerbList>()};
    canvas.dc->BitBlt(0, 0, 2, 1, other, 0, 0, Rop3::SrcCopy);
    canvas.dc->StretchBlt(0, 0, 2, 1, other, 0, 0, 1, 1, Rop3::SrcCopy);
    EXPECT_EQ(canvas.Row(0), "..");
    canvas.dc->BitBlt(0, 0, 1, 1, other, 0, 0, Rop3::Blackness);
    EXPECT_EQ(canvas.Row(0), "#.");
}

TEST(Win32ContextTest, PixelsThatFallTogetherInAStretchAreCombinedByAnd) {
    Canvas source(4, 1), target(2, 1);
    source.dc->PatBlt(1, 0, 1, 1, Rop3::Blackness);
    target.dc->StretchBlt(0, 0, 2, 1, *source.dc, 0, 0, 4, 1, Rop3::SrcCopy);
    EXPECT_EQ(target.Row(0), "#.");
}

TEST(Win32ContextTest, AScrollMovesWhatLiesInTheRectangleAndLeavesWhatIsUncovered) {
    Canvas canvas(8, 1);
    canvas.dc->PatBlt(2, 0, 1, 1, Rop3::Blackness);
    canvas.dc->ScrollDC(3, 0, {0, 0, 8, 1}, {0, 0, 8, 1});
    EXPECT_EQ(canvas.Row(0), "..#..#..");
}

TEST(Win32ContextTest, PicturesOfFilesHaveTheirTopRowFirst) {
    const std::string name = "win32_context_test.bmp";
    const unsigned char file[] = {'B', 'M', 62, 0, 0, 0, 0, 0,  0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0,
                                  0,   2,   0,  0, 0, 1, 0, 24, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, 0,
                                  0,   0,   0,  0, 0, 0, 0, 0,  0, 0, 0,  0, 1, 2, 3,  0, 4, 5, 6, 0};
    std::ofstream(name, std::ios::binary).write(reinterpret_cast<const char*>(file), sizeof file);
    Win32Files files;
    Canvas canvas(1, 1, std::make_shared<Win32Shared>(files));
    const auto bitmap = canvas.dc->LoadBitmapFile(name);
    std::filesystem::remove(name);
    ASSERT_NE(bitmap, nullptr);
    const auto* const pixels = static_cast<Win32Bitmap&>(*bitmap).Pixels();
    EXPECT_EQ(pixels[0] & 0xFFFFFF, 0x060504u);
    EXPECT_EQ(pixels[1] & 0xFFFFFF, 0x030201u);
    EXPECT_EQ(canvas.dc->LoadBitmapFile("no such file.bmp"), nullptr);
    EXPECT_EQ(Win32Context::InMemory()->LoadBitmapFile(name), nullptr) << "nothing to read files with";
}

TEST(Win32ContextTest, ABitmapOfAnotherBackEndChangesNothing) {
    Canvas canvas(3, 1);
    RecordBitmap other(1, 3, 1, nullptr);
    canvas.dc->SelectBitmap(&other);
    canvas.dc->PatBlt(0, 0, 3, 1, Rop3::Blackness);
    EXPECT_EQ(canvas.Row(0), "###");
}

TEST(Win32ContextTest, ThousandsOfPensBrushesAndFontsLeaveNoHandleBehind) {
    const auto drawMany = [] {
        Canvas canvas(4, 4);
        for (std::int32_t i = 0; i < 2000; ++i) {
            canvas.dc->SelectPen(CreatePen(PenStyle::Solid, 1 + i % 3, static_cast<Rgb>(i)));
            canvas.dc->FillRect({0, 0, 1, 1}, CreateSolidBrush(static_cast<Rgb>(i)));
            canvas.dc->SelectBrush(CreateSolidBrush(static_cast<Rgb>(i)));
            Font font;
            font.height_px = -(8 + i % 50);
            canvas.dc->SelectFont(font);
            canvas.dc->SelectClipRgn({0, 0, 4, 4}, RgnMode::Copy);
            canvas.dc->CreateCompatibleDC();
            canvas.dc->CreateCompatibleBitmap(2, 2);
        }
    };
    const auto counted = [] { return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); };  // 0 where nobody counts
    drawMany();
    const DWORD before = counted();
    const std::uintptr_t probed = ProbeGdiHandles();
    drawMany();
    EXPECT_EQ(counted(), before);
    EXPECT_LE(ProbeGdiHandles(), probed + 10) << "one object a turn would be two thousand";
}

TEST(Win32ContextTest, ManyMoreObjectsThanAProcessMayHaveCanBeDrawnWith) {
    Canvas canvas(1, 1);
    for (std::int32_t i = 0; i < 20000; ++i) {  // the system's limit is 10,000 unless set higher, and 65,536 at most
        canvas.dc->FillRect({0, 0, 1, 1}, CreateSolidBrush(static_cast<Rgb>(i)));
        const auto dc = canvas.dc->CreateCompatibleDC();
        const auto bitmap = canvas.dc->CreateCompatibleBitmap(1, 1);
        dc->SelectBitmap(bitmap.get());
        ASSERT_NE(bitmap, nullptr) << i;
    }
    EXPECT_EQ(canvas.At(0, 0), 0x1F4E00u) << "19999 is 0x4E1F";
}

TEST(Win32ContextTest, TextBytesAreReadAsCodePage932InAnyProcess) {
    Canvas canvas(200, 40);
    Font font;
    font.height_px = -20;
    font.faceName = FaceName("\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E");  // MS Gothic in full-width letters
    canvas.dc->SelectFont(font);
    const TextSize two = canvas.dc->TextExtent("\x93\x8C\x8B\x9E");  // two characters of four bytes
    const TextSize one = canvas.dc->TextExtent("\x93\x8C");
    EXPECT_EQ(two.width_px, 2 * one.width_px);
    EXPECT_EQ(one.width_px, 20) << "as wide as its em is high";
    canvas.dc->DrawTextBytes(0, 0, "\x93\x8C\x8B\x9E");
    Canvas wide(200, 40);
    wide.dc->SelectFont(font);
    TextOutW(wide.dc->Handle(), 0, 0, L"\x6771\x4EAC", 2);
    EXPECT_GT(canvas.CountOf(0), 30);
    for (std::int32_t y = 0; y < 40; ++y) ASSERT_EQ(canvas.Row(y), wide.Row(y)) << y;
}

TEST(Win32ContextTest, HalfACharacterAndAVeryLongTextAreDrawnWithoutHarm) {
    Canvas canvas(40, 40);
    canvas.dc->DrawTextBytes(0, 0, "\x93");
    canvas.dc->DrawTextBytes(0, 0, "");
    canvas.dc->DrawTextBytes(0, 0, std::string(100000, 'x'));
    EXPECT_GT(canvas.dc->TextExtent(std::string(100000, 'x')).width_px, 8192);
    EXPECT_EQ(canvas.dc->TextExtent("").width_px, 0);
}

TEST(Win32ContextTest, AContextWithoutAHandleDrawsNothingAndAnswersZeros) {
    Win32Context none(DcHandle::Borrowed(nullptr));
    none.PatBlt(0, 0, 10, 10, Rop3::Blackness);
    none.SelectPen(CreatePen(PenStyle::Solid, 3, kRed));
    none.DrawTextBytes(0, 0, "x");
    EXPECT_EQ(none.GetDeviceCaps(DeviceCap::HorzRes), 0);
    EXPECT_EQ(none.TextExtent("x"), TextSize{});
    EXPECT_EQ(none.SetROP2(Rop2::Not), Rop2::CopyPen);
    EXPECT_NE(none.CreateCompatibleDC(), nullptr);
}

TEST(Win32ContextTest, FiguresThatEndFarOutsideCrossThePictureWhereTheyShould) {
    for (const std::int32_t width : {1, 3}) {
        Canvas canvas(40, 40);
        canvas.dc->SelectPen(CreatePen(PenStyle::Solid, width, 0));
        const Point line[] = {{-2000000000, -1000000000 + 20}, {2000000000, 1000000000 + 20}};
        canvas.dc->Polyline(line, 2);
        for (std::int32_t x = 0; x < 40; x += 2)
            EXPECT_EQ(canvas.At(x, 20 + x / 2 < 40 ? 20 + x / 2 : 39), 0u) << width << " " << x;
    }
    Canvas canvas(40, 40);
    canvas.dc->SelectBrush(CreateSolidBrush(kRed));
    canvas.dc->SelectPen(CreatePen(PenStyle::Null, 1, 0));
    const Point ring[] = {{20, -2000000000}, {2000000000, -2000000000}, {2000000000, 2000000000}, {20, 2000000000}};
    canvas.dc->Polygon(ring, 4);
    EXPECT_EQ(canvas.At(19, 20), 0xFFFFFFu);
    EXPECT_EQ(canvas.At(20, 20), kRedPixel);
    EXPECT_EQ(canvas.At(39, 39), kRedPixel);
    canvas.dc->FillRect({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, CreateSolidBrush(0));
    EXPECT_EQ(canvas.CountOf(0), 1600);
}

}  // namespace
}  // namespace orvane
