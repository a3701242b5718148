// Pens, brushes and fonts of a host that the seam's values cannot tell: they come back, and nothing of the map is drawn by them.
#include "tests/win32/canvas.h"
// canvas.h brings the system headers, which come first
#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr std::uint32_t kBlack = 0;
constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr COLORREF kHostColor = RGB(255, 0, 0);

/// A host's object, selected into a canvas for the test's life.
class Selected {
public:
    Selected(Canvas& canvas, HGDIOBJ object)
        : dc_(canvas.dc->Handle()), object_(object), before_(SelectObject(canvas.dc->Handle(), object)) {}
    ~Selected() {
        SelectObject(dc_, before_);
        DeleteObject(object_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ object_;
    HGDIOBJ before_;
};

/// A black line by a map on the host's context; the host has its pen again afterwards, the same one.
void ExpectABlackLine(Canvas& canvas) {
    const HDC raw = canvas.dc->Handle();
    const HGDIOBJ own = GetCurrentObject(raw, OBJ_PEN);
    {
        Win32Context map(DcHandle::Borrowed(raw));
        const Pen before = map.SelectPen(Pen{});
        const Point line[] = {{0, 1}, {10, 1}};
        map.Polyline(line, 2);
        map.SelectPen(before);
        EXPECT_EQ(GetCurrentObject(raw, OBJ_PEN), own);
        map.SelectPen(Pen{});
    }
    EXPECT_EQ(GetCurrentObject(raw, OBJ_PEN), own);
    EXPECT_EQ(canvas.CountOf(kBlack), 10) << "one pixel wide, black";
    EXPECT_EQ(canvas.CountOf(kWhite), 20);
}

/// A white area by a map on the host's context, over black; the host has its brush again afterwards.
void ExpectAWhiteArea(Canvas& canvas) {
    const HDC raw = canvas.dc->Handle();
    const HGDIOBJ own = GetCurrentObject(raw, OBJ_BRUSH);
    canvas.dc->FillRect({0, 0, 10, 3}, CreateSolidBrush(0));
    {
        Win32Context map(DcHandle::Borrowed(raw));
        const Brush before = map.SelectBrush(WhiteBrush());
        map.PatBlt(0, 0, 10, 3, Rop3::PatCopy);
        map.SelectBrush(before);
        EXPECT_EQ(GetCurrentObject(raw, OBJ_BRUSH), own);
        map.SelectBrush(WhiteBrush());
    }
    EXPECT_EQ(GetCurrentObject(raw, OBJ_BRUSH), own);
    EXPECT_EQ(canvas.CountOf(kWhite), 30);
}

TEST(Win32HostObjectsTest, AnExtendedPenOfTheHostIsNotTakenForTheBlackOne) {
    Canvas canvas(10, 3);
    const LOGBRUSH ink{BS_SOLID, kHostColor, 0};
    const Selected pen(canvas, ::ExtCreatePen(PS_GEOMETRIC | PS_SOLID, 3, &ink, 0, nullptr));
    ExpectABlackLine(canvas);
}

TEST(Win32HostObjectsTest, TheStockPenOfAContextsColourIsNotTakenForTheBlackOne) {
    Canvas canvas(10, 3);
    const Selected pen(canvas, GetStockObject(DC_PEN));
    SetDCPenColor(canvas.dc->Handle(), kHostColor);
    ExpectABlackLine(canvas);
}

TEST(Win32HostObjectsTest, APatternBrushOfTheHostIsNotTakenForTheWhiteOne) {
    Canvas canvas(10, 3);
    const WORD rows[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
    const HBITMAP pattern = CreateBitmap(8, 8, 1, 1, rows);
    {
        const Selected brush(canvas, CreatePatternBrush(pattern));
        ExpectAWhiteArea(canvas);
    }
    DeleteObject(pattern);
}

TEST(Win32HostObjectsTest, TheStockBrushOfAContextsColourIsNotTakenForTheWhiteOne) {
    Canvas canvas(10, 3);
    const Selected brush(canvas, GetStockObject(DC_BRUSH));
    SetDCBrushColor(canvas.dc->Handle(), kHostColor);
    ExpectAWhiteArea(canvas);
}

TEST(Win32HostObjectsTest, AFontWhoseFaceHasNoBytesIsNotTakenForOneWithoutAFace) {
    Canvas canvas(10, 3);
    const HDC raw = canvas.dc->Handle();
    LOGFONTW asked{};
    asked.lfHeight = -20;
    asked.lfWeight = 400;
    asked.lfCharSet = SHIFTJIS_CHARSET;
    asked.lfFaceName[0] = L'\xE9';  // not in code page 932
    const HFONT own = CreateFontIndirectW(&asked);
    const Selected font(canvas, own);
    Win32Context map(DcHandle::Borrowed(raw));
    Font wanted;
    wanted.height_px = -20;
    const Font before = map.SelectFont(wanted);
    EXPECT_NE(GetCurrentObject(raw, OBJ_FONT), own);
    map.SelectFont(before);
    EXPECT_EQ(GetCurrentObject(raw, OBJ_FONT), own);
}

}  // namespace
}  // namespace orvane
