#include "platform/record/record_context.h"

#include <gmock/gmock.h>

#include <array>

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordContextTest : public testing::Test {
protected:
    std::vector<std::string> TakeLines() {
        auto lines = list_->Lines();
        list_->Clear();
        return lines;
    }

    std::shared_ptr<VerbList> list_ = std::make_shared<VerbList>();
    RecordContext dc_{list_, "dc"};
};

TEST_F(RecordContextTest, StartsAsThePlatformsContextsDo) {
    EXPECT_EQ(dc_.SelectPen(Pen{}), CreatePen(PenStyle::Solid, 1, 0));
    EXPECT_EQ(dc_.SelectBrush(Brush{}), WhiteBrush());
    EXPECT_EQ(dc_.SetROP2(Rop2::Nop), Rop2::CopyPen);
    EXPECT_EQ(dc_.SetBkMode(BkMode::Transparent), BkMode::Opaque);
    EXPECT_EQ(dc_.SetBkColor(0), 0xFFFFFFu);
}

TEST_F(RecordContextTest, EachSetterReturnsTheValueBefore) {
    const Pen red = CreatePen(PenStyle::Dash, 2, 0x0000FF);
    dc_.SelectPen(red);
    EXPECT_EQ(dc_.SelectPen(Pen{}), red);
    dc_.SelectBrush(NullBrush());
    EXPECT_EQ(dc_.SelectBrush(Brush{}), NullBrush());
    Font font;
    font.height_px = -12;
    dc_.SelectFont(font);
    EXPECT_EQ(dc_.SelectFont(Font{}), font);
    dc_.SetROP2(Rop2::MaskPen);
    EXPECT_EQ(dc_.SetROP2(Rop2::CopyPen), Rop2::MaskPen);
    EXPECT_EQ(dc_.SetBkMode(BkMode::Transparent), BkMode::Opaque);
    EXPECT_EQ(dc_.SetBkMode(BkMode::Opaque), BkMode::Transparent);
    dc_.SetBkColor(0x123456);
    EXPECT_EQ(dc_.SetBkColor(0), 0x123456u);
}

TEST_F(RecordContextTest, ARefusedPenIsWrittenDownAndChangesNothing) {
    const Pen red = CreatePen(PenStyle::Solid, 2, 0x0000FF);
    dc_.SelectPen(red);
    TakeLines();
    EXPECT_EQ(dc_.SelectPen(ExtCreatePen(PenStyle::UserStyle, 1, 0, 0, nullptr)), red);
    EXPECT_THAT(TakeLines(), ElementsAre("dc SelectObject pen(refused)"));
    EXPECT_EQ(dc_.SelectPen(Pen{}), red);
}

TEST_F(RecordContextTest, StateVerbsAreWrittenUnderThePlatformsNamesWithItsValues) {
    const std::int32_t dashes[] = {3, 1};
    dc_.SelectPen(CreatePen(PenStyle::DashDot, 2, 0x0000FF));
    dc_.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 4, 0xABCDEF, 2, dashes));
    dc_.SelectBrush(CreateSolidBrush(0x00FF00));
    dc_.SelectBrush(CreateHatchBrush(Hatch::DiagCross, 0x102030));
    dc_.SelectBrush(NullBrush());
    dc_.SetROP2(Rop2::MaskPen);
    dc_.SetBkMode(BkMode::Transparent);
    dc_.SetBkColor(0xFFEEDDCC);
    EXPECT_THAT(TakeLines(),
                ElementsAre("dc SelectObject pen(0x3 2 0x0000FF)", "dc SelectObject pen(0x10207 4 0xABCDEF [3 1])",
                            "dc SelectObject brush(0x00FF00)", "dc SelectObject brush(hatch 5 0x102030)",
                            "dc SelectObject brush(null)", "dc SetROP2 9", "dc SetBkMode 1", "dc SetBkColor 0xFFEEDDCC"));
}

TEST_F(RecordContextTest, AFontIsWrittenWithAllThatItIs) {
    Font font;
    font.height_px = -12;
    font.escapement_tenths = 900;
    font.weight = 700;
    font.italic = true;
    font.faceName = {'M', 'S', '\x83', '\x5C'};
    dc_.SelectFont(font);
    EXPECT_THAT(TakeLines(), ElementsAre("dc SelectObject font(-12 0 900 0 700 italic 128 \"MS\x83\x5C\")"));
    font.faceName.fill('x');  // a name that fills its field has no zero behind it
    dc_.SelectFont(font);
    EXPECT_THAT(TakeLines(), ElementsAre("dc SelectObject font(-12 0 900 0 700 italic 128 \"" + std::string(32, 'x') + "\")"));
}

TEST_F(RecordContextTest, ShapesAreWrittenWithTheirPoints) {
    const Point pts[] = {{0, 0}, {10, -5}, {7, 7}, {1, 2}, {3, 4}};
    const std::int32_t counts[] = {3, 2};
    dc_.Polyline(pts, 2);
    dc_.PolyPolygon(pts, counts, 2);
    EXPECT_THAT(TakeLines(),
                ElementsAre("dc Polyline [(0,0) (10,-5)]", "dc PolyPolygon [(0,0) (10,-5) (7,7) (1,2) (3,4)] [3 2]"));
}

TEST_F(RecordContextTest, PathClipAndAreaVerbsAreWrittenInTheOrderOfTheirArguments) {
    dc_.BeginPath();
    dc_.EndPath();
    dc_.FillPath();
    dc_.StrokePath();
    dc_.StrokeAndFillPath();
    dc_.SelectClipRgn({0, 1, 800, 600}, RgnMode::Copy);
    dc_.ExcludeClipRect({1, 2, 3, 4});
    dc_.FillRect({5, 6, 7, 8}, CreateSolidBrush(0x808080));
    dc_.PatBlt(1, 2, 3, 4, Rop3::Whiteness);
    dc_.ScrollDC(-3, 4, {0, 0, 8, 6}, {0, 0, 7, 5});
    dc_.BitBlt(1, 2, 3, 4, dc_, 5, 6, Rop3::SrcCopy);
    EXPECT_THAT(TakeLines(), ElementsAre("dc BeginPath", "dc EndPath", "dc FillPath", "dc StrokePath", "dc StrokeAndFillPath",
                                         "dc SelectClipRgn (0,1,800,600) 5", "dc ExcludeClipRect 1 2 3 4",
                                         "dc FillRect (5,6,7,8) brush(0x808080)", "dc PatBlt 1 2 3 4 0xFF0062",
                                         "dc ScrollDC -3 4 (0,0,8,6) (0,0,7,5)", "dc BitBlt 1 2 3 4 dc 5 6 0xCC0020"));
}

TEST_F(RecordContextTest, ContextsAndBitmapsAppearByNumberOrLabel) {
    auto memory = dc_.CreateCompatibleDC();
    auto bitmap = dc_.CreateCompatibleBitmap(640, 480);
    memory->SelectBitmap(bitmap.get());
    memory->SelectBitmap(nullptr);
    EXPECT_THAT(list_->Lines(), ElementsAre("dc CreateCompatibleDC 2", "dc CreateCompatibleBitmap 640 480 bitmap#1",
                                            "2 SelectObject bitmap#1", "2 SelectObject bitmap#0"));
    static_cast<RecordContext&>(*memory).SetLabel("base");
    EXPECT_EQ(list_->Line(0), "dc CreateCompatibleDC base");
    EXPECT_EQ(list_->Line(2), "base SelectObject bitmap#1");
}

TEST_F(RecordContextTest, ABitmapWithoutPixelsIsNotMadeButWrittenDown) {
    EXPECT_EQ(dc_.CreateCompatibleBitmap(0, 10), nullptr);
    EXPECT_EQ(dc_.CreateCompatibleBitmap(10, -1), nullptr);
    EXPECT_THAT(TakeLines(), ElementsAre("dc CreateCompatibleBitmap 0 10 bitmap#0", "dc CreateCompatibleBitmap 10 -1 bitmap#0"));
}

TEST_F(RecordContextTest, EmptyAndBrokenRunsOfPointsAreEmptyLists) {
    const Point pts[] = {{1, 1}, {2, 2}};
    const std::int32_t counts[] = {-5, 2};
    dc_.Polyline(nullptr, 3);
    dc_.Polyline(pts, -1);
    dc_.PolyPolygon(pts, counts, 2);
    dc_.PolyPolygon(pts, nullptr, 2);
    EXPECT_THAT(TakeLines(),
                ElementsAre("dc Polyline []", "dc Polyline []", "dc PolyPolygon [(1,1) (2,2)] [-5 2]", "dc PolyPolygon [] []"));
}

TEST_F(RecordContextTest, AllContextsOfOneListWriteInTheOrderOfTheCalls) {
    RecordContext other(list_, "other");
    dc_.BeginPath();
    other.SetROP2(Rop2::Not);
    dc_.EndPath();
    other.BitBlt(0, 0, 1, 1, dc_, 0, 0, Rop3::SrcAnd);
    EXPECT_THAT(TakeLines(),
                ElementsAre("dc BeginPath", "other SetROP2 6", "dc EndPath", "other BitBlt 0 0 1 1 dc 0 0 0x8800C6"));
}

TEST_F(RecordContextTest, AnswersTheNumbersOfTheOffscreenDesktopByItself) {
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::HorzRes), 1920);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::VertRes), 1080);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::HorzSize), 508);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::VertSize), 286);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::LogPixelsX), 96);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::LogPixelsY), 96);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::Technology), 1);
    EXPECT_THAT(TakeLines(), IsEmpty());
}

TEST_F(RecordContextTest, ItsNumbersCanBeSetToAnythingAndMemoryContextsTakeThemOver) {
    DeviceNumbers numbers;
    numbers.horzSize_mm = 0;
    numbers.logPixelsX_dpi = 600;
    dc_.SetDeviceNumbers(numbers);
    auto memory = dc_.CreateCompatibleDC();
    for (const DeviceContext* dc : {static_cast<DeviceContext*>(&dc_), memory.get()}) {
        EXPECT_EQ(dc->GetDeviceCaps(DeviceCap::HorzSize), 0);
        EXPECT_EQ(dc->GetDeviceCaps(DeviceCap::LogPixelsX), 600);
    }
}

TEST_F(RecordContextTest, NothingIsWrittenWhileRecordingIsOff) {
    list_->SetRecording(false);
    dc_.SetROP2(Rop2::Not);
    list_->SetRecording(true);
    EXPECT_THAT(TakeLines(), IsEmpty());
    EXPECT_EQ(dc_.SetROP2(Rop2::CopyPen), Rop2::Not);
}

TEST_F(RecordContextTest, AListMayGoBeforeItsContextsAndTheContextsBeforeTheirList) {
    auto early = std::make_unique<RecordContext>(std::make_shared<VerbList>());
    early->BeginPath();
    early.reset();
    {
        RecordContext brief(list_, "brief");
        brief.EndPath();
    }
    EXPECT_THAT(list_->Lines(), ElementsAre("brief EndPath"));
}

TEST_F(RecordContextTest, WithoutAListItOnlyKeepsState) {
    RecordContext silent{std::shared_ptr<VerbList>()};
    silent.SetROP2(Rop2::Not);
    EXPECT_EQ(silent.SetROP2(Rop2::CopyPen), Rop2::Not);
    auto memory = silent.CreateCompatibleDC();
    auto bitmap = silent.CreateCompatibleBitmap(2, 2);
    ASSERT_NE(bitmap, nullptr);
    memory->SelectBitmap(bitmap.get());
    memory->PatBlt(0, 0, 2, 2, Rop3::Whiteness);
    EXPECT_EQ(silent.Number(), 0);
}

// The performing back end is played by a second recorder with a list of its own.
class TeeTest : public testing::Test {
protected:
    std::shared_ptr<VerbList> list_ = std::make_shared<VerbList>();
    std::shared_ptr<VerbList> performed_ = std::make_shared<VerbList>();
    RecordContext device_{performed_, "device"};
    RecordContext dc_{list_, device_, "dc"};
};

TEST_F(TeeTest, EveryVerbIsPerformedOnTheOtherContextToo) {
    const Point pts[] = {{0, 0}, {1, 1}};
    const std::int32_t counts[] = {2};
    dc_.SelectPen(CreatePen(PenStyle::Dot, 1, 1));
    dc_.SelectBrush(CreateSolidBrush(2));
    dc_.SelectFont(Font{});
    dc_.SetROP2(Rop2::Not);
    dc_.SetBkMode(BkMode::Transparent);
    dc_.SetBkColor(3);
    dc_.Polyline(pts, 2);
    dc_.PolyPolygon(pts, counts, 1);
    dc_.BeginPath();
    dc_.EndPath();
    dc_.FillPath();
    dc_.StrokePath();
    dc_.StrokeAndFillPath();
    dc_.SelectClipRgn({0, 0, 1, 1}, RgnMode::Or);
    dc_.ExcludeClipRect({1, 1, 2, 2});
    dc_.FillRect({0, 0, 1, 1}, NullBrush());
    dc_.PatBlt(0, 0, 1, 1, Rop3::Blackness);
    dc_.ScrollDC(1, 1, {0, 0, 1, 1}, {0, 0, 2, 2});
    dc_.BitBlt(0, 0, 1, 1, dc_, 2, 2, Rop3::SrcPaint);
    device_.SetLabel("dc");
    EXPECT_EQ(list_->Size(), 19u);
    EXPECT_EQ(performed_->Lines(), list_->Lines());
}

TEST_F(TeeTest, ContextsAndBitmapsMadeAreThoseOfTheOtherBackEnd) {
    auto memory = dc_.CreateCompatibleDC();
    auto bitmap = dc_.CreateCompatibleBitmap(3, 3);
    memory->SelectBitmap(bitmap.get());
    dc_.BitBlt(0, 0, 3, 3, *memory, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(performed_->Lines(), ElementsAre("device CreateCompatibleDC 2", "device CreateCompatibleBitmap 3 3 bitmap#1",
                                                 "2 SelectObject bitmap#1", "device BitBlt 0 0 3 3 2 0 0 0xCC0020"));
}

// A back end of which only the selection of bitmaps is looked at.
class SelectionProbe : public RecordContext {
public:
    SelectionProbe() : RecordContext(std::shared_ptr<VerbList>()) {}
    void SelectBitmap(Bitmap* bitmap) override { selected = bitmap; }
    Bitmap* selected = nullptr;
};

TEST(TeeBitmapTest, ABitmapThatTheOtherBackEndMadeItselfPassesThrough) {
    class OwnBitmap : public Bitmap {
        std::int32_t Width_px() const override { return 1; }
        std::int32_t Height_px() const override { return 1; }
    };
    OwnBitmap bitmap;
    SelectionProbe device;
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list, device, "dc");
    dc.SelectBitmap(&bitmap);
    EXPECT_EQ(device.selected, &bitmap);
    EXPECT_THAT(list->Lines(), ElementsAre("dc SelectObject bitmap#-1"));
    dc.SelectBitmap(nullptr);
    EXPECT_EQ(device.selected, nullptr);
}

TEST_F(TeeTest, ABlitFromAContextThatDrawsNowhereIsWrittenButNotPerformed) {
    RecordContext nowhere(list_, "nowhere");
    dc_.BitBlt(0, 0, 1, 1, nowhere, 0, 0, Rop3::SrcCopy);
    EXPECT_EQ(list_->Size(), 1u);
    EXPECT_EQ(performed_->Size(), 0u);
}

TEST_F(TeeTest, ABlitFromAContextOfAnotherListNamesNoNumber) {
    dc_.BitBlt(0, 0, 1, 1, device_, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(list_->Lines(), ElementsAre("dc BitBlt 0 0 1 1 -1 0 0 0xCC0020"));
    EXPECT_THAT(performed_->Lines(), ElementsAre("device BitBlt 0 0 1 1 device 0 0 0xCC0020"));
}

TEST_F(TeeTest, DeviceNumbersAreThoseOfTheOtherContextUntilOthersAreSet) {
    DeviceNumbers printer;
    printer.logPixelsX_dpi = 600;
    device_.SetDeviceNumbers(printer);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::LogPixelsX), 600);
    DeviceNumbers own;
    own.logPixelsX_dpi = 72;
    dc_.SetDeviceNumbers(own);
    EXPECT_EQ(dc_.GetDeviceCaps(DeviceCap::LogPixelsX), 72);
    EXPECT_EQ(dc_.CreateCompatibleDC()->GetDeviceCaps(DeviceCap::LogPixelsX), 72);
}

}  // namespace
}  // namespace orvane
