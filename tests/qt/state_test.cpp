#include <gmock/gmock.h>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

TEST(QtState, ContextStartsWithBlackPenWhiteBrushOpaqueModeWhiteBackgroundAndCopyPen) {
    QtContext dc;
    EXPECT_EQ(dc.SelectPen(SolidPen(kRed)), SolidPen(kBlack));
    EXPECT_EQ(dc.SelectBrush(NullBrush()), WhiteBrush());
    EXPECT_EQ(dc.SetROP2(Rop2::Not), Rop2::CopyPen);
    EXPECT_EQ(dc.SetBkMode(BkMode::Transparent), BkMode::Opaque);
    EXPECT_EQ(dc.SetBkColor(kRed), kWhite);
    EXPECT_EQ(dc.SelectFont(Font{}), Font{});
}

TEST(QtState, SettersReturnTheValueBefore) {
    QtContext dc;
    dc.SelectPen(SolidPen(kRed, 3));
    dc.SelectBrush(CreateHatchBrush(Hatch::Cross, kBlue));
    dc.SetROP2(Rop2::MaskPen);
    dc.SetBkMode(BkMode::Transparent);
    dc.SetBkColor(0x123456);
    EXPECT_EQ(dc.SelectPen(NullPen()), SolidPen(kRed, 3));
    EXPECT_EQ(dc.SelectBrush(NullBrush()), CreateHatchBrush(Hatch::Cross, kBlue));
    EXPECT_EQ(dc.SetROP2(Rop2::CopyPen), Rop2::MaskPen);
    EXPECT_EQ(dc.SetBkMode(BkMode::Opaque), BkMode::Transparent);
    EXPECT_EQ(dc.SetBkColor(kWhite), 0x123456u);
}

TEST(QtState, EmptyPenChangesNothingWhenSelected) {
    Picture picture(4, 1);
    picture.dc.SelectPen(SolidPen(kRed));
    Pen empty = SolidPen(kBlue, 5);
    empty.empty = true;
    EXPECT_EQ(picture.dc.SelectPen(empty), SolidPen(kRed));
    Polyline(picture.dc, {{0, 0}, {3, 0}});
    EXPECT_THAT(picture.Rows(), ElementsAre("rrr."));
    EXPECT_EQ(picture.dc.SelectPen(NullPen()), SolidPen(kRed));
}

TEST(QtState, ModesThatThePlatformDoesNotHaveChangeNothing) {
    QtContext dc;
    EXPECT_EQ(dc.SetROP2(static_cast<Rop2>(0)), Rop2::CopyPen);
    EXPECT_EQ(dc.SetROP2(static_cast<Rop2>(17)), Rop2::CopyPen);
    EXPECT_EQ(dc.SetROP2(Rop2::CopyPen), Rop2::CopyPen);
    EXPECT_EQ(dc.SetBkMode(static_cast<BkMode>(3)), BkMode::Opaque);
    EXPECT_EQ(dc.SetBkMode(BkMode::Opaque), BkMode::Opaque);
}

TEST(QtState, StateOutlivesTheBitmap) {
    QtContext dc;
    const auto first = dc.CreateCompatibleBitmap(4, 2);
    const auto second = dc.CreateCompatibleBitmap(4, 2);
    dc.SelectBitmap(first.get());
    dc.SelectPen(SolidPen(kRed));
    dc.SelectClipRgn({1, 0, 3, 2}, RgnMode::Copy);
    dc.SelectBitmap(second.get());
    Polyline(dc, {{0, 0}, {4, 0}});
    EXPECT_EQ(dc.Image().pixel(0, 0), 0xFF000000u);
    EXPECT_EQ(dc.Image().pixel(1, 0), 0xFFFF0000u);
    EXPECT_EQ(dc.Image().pixel(2, 0), 0xFFFF0000u);
    EXPECT_EQ(dc.Image().pixel(3, 0), 0xFF000000u);
}

TEST(QtState, DeviceNumbersAreThoseGivenAndPassOnToCompatibleContexts) {
    QtContext desktop;
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::Technology), 1);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::HorzRes), 1920);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::HorzSize), 508);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::VertRes), 1080);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::VertSize), 286);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::LogPixelsX), 96);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::LogPixelsY), 96);
    EXPECT_EQ(desktop.GetDeviceCaps(static_cast<DeviceCap>(12345)), 0);

    DeviceNumbers printer;
    printer.horzRes_px = 4800;
    printer.horzSize_mm = 203;
    printer.logPixelsX_dpi = 600;
    QtContext page(printer);
    const auto compatible = page.CreateCompatibleDC();
    EXPECT_EQ(compatible->GetDeviceCaps(DeviceCap::HorzRes), 4800);
    EXPECT_EQ(compatible->GetDeviceCaps(DeviceCap::HorzSize), 203);
    EXPECT_EQ(compatible->GetDeviceCaps(DeviceCap::LogPixelsX), 600);
}

TEST(QtBitmaps, NewBitmapIsBlack) {
    QtContext dc;
    const auto bitmap = dc.CreateCompatibleBitmap(3, 2);
    ASSERT_NE(bitmap, nullptr);
    dc.SelectBitmap(bitmap.get());
    EXPECT_EQ(dc.Image().width(), 3);
    EXPECT_EQ(dc.Image().height(), 2);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) EXPECT_EQ(dc.Image().pixel(x, y), 0xFF000000u);
    }
}

TEST(QtBitmaps, SideBelowOneAndTooManyPixelsGiveNoBitmap) {
    QtContext dc;
    EXPECT_EQ(dc.CreateCompatibleBitmap(0, 5), nullptr);
    EXPECT_EQ(dc.CreateCompatibleBitmap(5, 0), nullptr);
    EXPECT_EQ(dc.CreateCompatibleBitmap(-1, -1), nullptr);
    EXPECT_EQ(dc.CreateCompatibleBitmap(INT32_MIN, INT32_MIN), nullptr);
    EXPECT_EQ(dc.CreateCompatibleBitmap(INT32_MAX, INT32_MAX), nullptr);
    EXPECT_EQ(dc.CreateCompatibleBitmap(65536, 4097), nullptr);
}

TEST(QtBitmaps, ContextWithoutBitmapTakesEveryVerbAndDrawsNothing) {
    QtContext dc;
    QtContext other;
    Polyline(dc, {{0, 0}, {5, 5}});
    PolyPolygon(dc, {RectRing(0, 0, 5, 5)});
    dc.BeginPath();
    PolyPolygon(dc, {RectRing(0, 0, 5, 5)});
    dc.EndPath();
    dc.StrokeAndFillPath();
    dc.SelectClipRgn({0, 0, 5, 5}, RgnMode::Or);
    dc.ExcludeClipRect({1, 1, 2, 2});
    dc.FillRect({0, 0, 5, 5}, WhiteBrush());
    dc.PatBlt(0, 0, 5, 5, Rop3::Whiteness);
    dc.BitBlt(0, 0, 5, 5, other, 0, 0, Rop3::SrcCopy);
    dc.ScrollDC(1, 1, {0, 0, 5, 5}, {0, 0, 5, 5});
    EXPECT_TRUE(dc.Image().isNull());
    EXPECT_FALSE(dc.SavePng("never written.png"));
}

TEST(QtBitmaps, BitmapOfAnotherBackEndChangesNothing) {
    class Foreign : public Bitmap {
        std::int32_t Width_px() const override { return 1; }
        std::int32_t Height_px() const override { return 1; }
    };
    Foreign foreign;
    Picture picture(2, 1);
    picture.dc.SelectBitmap(&foreign);
    Polyline(picture.dc, {{0, 0}, {1, 0}});
    EXPECT_THAT(picture.Rows(), ElementsAre("#."));
}

TEST(QtBitmaps, SelectingNoneLosesWhatIsDrawnThen) {
    Picture picture(2, 1);
    picture.dc.SelectBitmap(nullptr);
    Polyline(picture.dc, {{0, 0}, {1, 0}});
    EXPECT_THAT(picture.Rows(), ElementsAre(".."));
}

TEST(QtImages, CopyOfTheImageDoesNotChangeWithLaterVerbs) {
    Picture picture(2, 1);
    const QImage before = picture.dc.Image();
    Polyline(picture.dc, {{0, 0}, {2, 0}});
    EXPECT_EQ(before.pixel(0, 0), 0xFFFFFFFFu);
    EXPECT_EQ(picture.dc.Image().pixel(0, 0), 0xFF000000u);
}

TEST(QtImages, ImageGivenAnotherSizeByItsOwnerIsDrawnOnInThatSize) {
    Picture picture(2, 2);
    Polyline(picture.dc, {{0, 0}, {9, 0}});
    picture.Image() = QImage(6, 1, QImage::Format_RGB32);
    picture.Fill(kWhite);
    Polyline(picture.dc, {{0, 0}, {5, 0}});
    EXPECT_THAT(picture.Rows(), ElementsAre("#####."));
}

TEST(QtImages, NothingIsDrawnOnAnImageWithoutThirtyTwoBits) {
    QImage mono(4, 4, QImage::Format_Grayscale8);
    mono.fill(7);
    QtContext dc(mono);
    PolyPolygon(dc, {RectRing(0, 0, 4, 4)});
    EXPECT_EQ(mono.constScanLine(2)[2], 7);
}

TEST(QtImages, ColourBytesLieAsBlueGreenRed) {
    Picture picture(2, 1);
    picture.dc.SelectPen(SolidPen(0xFF332211));  // the byte above the colour is left out
    Polyline(picture.dc, {{0, 0}, {1, 0}});
    const uchar* const bytes = picture.Image().constScanLine(0);
    EXPECT_EQ(bytes[0], 0x33);
    EXPECT_EQ(bytes[1], 0x22);
    EXPECT_EQ(bytes[2], 0x11);
    EXPECT_EQ(bytes[3], 0xFF);
}

TEST(QtImages, PngHoldsThePicture) {
    Picture picture(3, 2);
    picture.dc.SelectPen(SolidPen(kRed));
    Polyline(picture.dc, {{0, 0}, {3, 0}});
    const std::string name = testing::TempDir() + "orvane_qt_context.png";
    ASSERT_TRUE(picture.dc.SavePng(name));
    const QImage read = QImage(QString::fromStdString(name)).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(read, picture.Image());
    EXPECT_FALSE(picture.dc.SavePng(testing::TempDir() + "no such folder/picture.png"));
    std::remove(name.c_str());
}

}  // namespace
}  // namespace orvane
