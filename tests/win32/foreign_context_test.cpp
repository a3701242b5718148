// Contexts that a host made, and what it does to ours.
#include "tests/win32/canvas.h"
// canvas.h brings the system headers, which come first
#include <gtest/gtest.h>

#include "platform/context_registry.h"
#include "platform/record/record_context.h"

namespace orvane {
namespace {

constexpr Rgb kRed = 0x0000FF;                 // as the seam tells it
constexpr std::uint32_t kRedPixel = 0xFF0000;  // as a bitmap holds it

TEST(Win32ForeignContextTest, AForeignContextKeepsItsObjectsAndItsState) {
    Canvas canvas(20, 4);
    const HDC raw = canvas.dc->Handle();
    const HPEN own = ::CreatePen(PS_SOLID, 1, RGB(0, 0, 255));
    const HGDIOBJ first = SelectObject(raw, own);
    ::SetTextColor(raw, 0x123456);
    {
        Win32Context foreign(DcHandle::Borrowed(raw));
        EXPECT_EQ(foreign.SetTextColor(0x654321), 0x123456u);
        const Pen before = foreign.SelectPen(CreatePen(PenStyle::Solid, 3, kRed));
        EXPECT_EQ(before, CreatePen(PenStyle::Solid, 1, 0xFF0000));
        foreign.SelectPen(before);
        EXPECT_EQ(GetCurrentObject(raw, OBJ_PEN), own) << "the host's own pen, not one like it";
        foreign.SelectPen(CreatePen(PenStyle::Solid, 3, kRed));
        foreign.SelectBrush(CreateSolidBrush(kRed));
    }
    EXPECT_EQ(GetCurrentObject(raw, OBJ_PEN), own);
    EXPECT_EQ(GetCurrentObject(raw, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(::GetTextColor(raw), 0x654321u) << "what was set stays";
    SelectObject(raw, first);
    DeleteObject(own);
}

TEST(Win32ForeignContextTest, APenIsSelectedAnewWhereAHostLeftAnother) {
    Canvas canvas(10, 2);
    const Pen red = CreatePen(PenStyle::Solid, 1, kRed);
    canvas.dc->SelectPen(red);
    SelectObject(canvas.dc->Handle(), GetStockObject(BLACK_PEN));
    canvas.dc->SelectPen(red);
    const Point line[] = {{0, 0}, {10, 0}};
    canvas.dc->Polyline(line, 2);
    EXPECT_EQ(canvas.CountOf(kRedPixel), 10);
}

TEST(Win32ForeignContextTest, ContextsAreRegisteredUnderTheirHandlesAndForeignHandlesAreOpened) {
    UseSystemContexts();
    Canvas canvas(4, 1);
    const std::int32_t number = RegisterContext(*canvas.dc);
    EXPECT_EQ(FromHandle(number), canvas.dc->Handle());
    EXPECT_EQ(OpenContext(number).get(), canvas.dc.get());
    UnregisterContext(number);
    {
        const auto opened = OpenContext(number);
        ASSERT_NE(opened, nullptr) << "it is a handle of the system all the same";
        EXPECT_NE(opened.get(), canvas.dc.get());
        opened->PatBlt(0, 0, 2, 1, Rop3::Blackness);
    }
    EXPECT_EQ(canvas.Row(0), "##..");
    EXPECT_EQ(OpenContext(0), nullptr);
    EXPECT_EQ(OpenContext(-1), nullptr);
    EXPECT_EQ(OpenContext(12345678), nullptr);
    const HPEN pen = ::CreatePen(PS_SOLID, 1, 0);
    EXPECT_EQ(OpenContext(static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(pen))), nullptr) << "a handle, but of a pen";
    DeleteObject(pen);
    RecordContext other{std::shared_ptr<VerbList>()};
    EXPECT_EQ(HandleOf(other), 0);
}

TEST(Win32ForeignContextTest, AMetafileTakesAFrameAndHasTheNumbersOfItsDevice) {
    const HDC meta = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(meta, nullptr);
    {
        Win32Context dc(DcHandle::Borrowed(meta));
        EXPECT_GT(dc.GetDeviceCaps(DeviceCap::HorzSize), 0);
        EXPECT_GT(dc.GetDeviceCaps(DeviceCap::LogPixelsX), 0);
        dc.SelectPen(CreatePen(PenStyle::Solid, 1, kRed));
        const Point line[] = {{0, 1}, {8, 1}};
        dc.Polyline(line, 2);
        const auto memory = dc.CreateCompatibleDC();
        const auto bitmap = dc.CreateCompatibleBitmap(2, 2);
        memory->SelectBitmap(bitmap.get());
        dc.BitBlt(0, 2, 2, 2, *memory, 0, 0, Rop3::SrcCopy);
    }
    const HENHMETAFILE made = CloseEnhMetaFile(meta);
    ASSERT_NE(made, nullptr);
    Canvas canvas(8, 8);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(made, sizeof header, &header);
    const RECT same{header.rclBounds.left, header.rclBounds.top, header.rclBounds.right, header.rclBounds.bottom};
    EXPECT_EQ(same.top, 1);
    const RECT place{0, 0, header.rclFrame.right * header.szlDevice.cx / (header.szlMillimeters.cx * 100),
                     header.rclFrame.bottom * header.szlDevice.cy / (header.szlMillimeters.cy * 100)};
    EXPECT_TRUE(PlayEnhMetaFile(canvas.dc->Handle(), made, &place));
    EXPECT_GT(canvas.CountOf(kRedPixel), 0);
    DeleteEnhMetaFile(made);
}

}  // namespace
}  // namespace orvane
