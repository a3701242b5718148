#include "platform/record/replay.h"

#include <gmock/gmock.h>

#include "platform/record/record_context.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void DrawOneOfEach(DeviceContext& dc) {
    const Point pts[] = {{0, 0}, {10, -5}, {7, 7}, {1, 2}, {3, 4}};
    const std::int32_t counts[] = {3, 2};
    const std::int32_t dashes[] = {4, 2, 1};
    Font font;
    font.height_px = 20;
    dc.SelectPen(ExtCreatePen(PenStyle::UserStyle, 1, 0x112233, 3, dashes));
    dc.SelectBrush(CreateHatchBrush(Hatch::Cross, 0x445566));
    dc.SelectFont(font);
    dc.SetROP2(Rop2::MaskPen);
    dc.SetBkMode(BkMode::Transparent);
    dc.SetBkColor(0xFF102030);
    dc.Polyline(pts, 4);
    dc.PolyPolygon(pts, counts, 2);
    dc.BeginPath();
    dc.EndPath();
    dc.FillPath();
    dc.StrokePath();
    dc.StrokeAndFillPath();
    dc.SelectClipRgn({1, 2, 3, 4}, RgnMode::Diff);
    dc.ExcludeClipRect({5, 6, 7, 8});
    dc.FillRect({9, 10, 11, 12}, CreateSolidBrush(0x778899));
    dc.PatBlt(13, 14, 15, 16, Rop3::DstInvert);
    dc.ScrollDC(-17, 18, {19, 20, 21, 22}, {23, 24, 25, 26});
    dc.BitBlt(27, 28, 29, 30, dc, 31, 32, Rop3::SrcPaint);
}

class ReplayTest : public testing::Test {
protected:
    std::shared_ptr<VerbList> recorded_ = std::make_shared<VerbList>();
    std::shared_ptr<VerbList> replayed_ = std::make_shared<VerbList>();
};

TEST_F(ReplayTest, GivesTheSameVerbsWithTheSameValues) {
    RecordContext dc(recorded_, "dc");
    DrawOneOfEach(dc);
    RecordContext target(replayed_, "dc");
    ReplayTargets targets;
    targets.SetContext(dc.Number(), target);
    Replay(*recorded_, targets);
    EXPECT_EQ(recorded_->Size(), 19u);
    EXPECT_EQ(replayed_->Lines(), recorded_->Lines());
}

TEST_F(ReplayTest, MakesAnewABitmapOfPixels) {
    RecordContext dc(recorded_, "dc");
    dc.DrawTextBytes(0, 0, "odd");  // what follows stands at no multiple of four
    const Rgb pixels[] = {0x010203, 0x040506};
    EXPECT_NE(dc.CreatePixelBitmap(2, 1, pixels), nullptr);
    EXPECT_EQ(dc.CreatePixelBitmap(2, 1, nullptr), nullptr);
    RecordContext target(replayed_, "dc");
    ReplayTargets targets;
    targets.SetContext(dc.Number(), target);
    Replay(*recorded_, targets);
    EXPECT_THAT(replayed_->Lines(), ElementsAre("dc TextOut 0 0 \"odd\"", "dc CreateDIBitmap 2 1 8 bytes bitmap#1"));
    EXPECT_EQ(std::get<std::string>(replayed_->Call(1).values[2]), std::string("\3\2\1\0\6\5\4\0", 8));
}

TEST_F(ReplayTest, MakesAnewWhatTheListMakes) {
    RecordContext dc(recorded_, "dc");
    auto memory = dc.CreateCompatibleDC();
    auto bitmap = dc.CreateCompatibleBitmap(100, 50);
    memory->SelectBitmap(bitmap.get());
    DrawOneOfEach(*memory);
    dc.BitBlt(0, 0, 100, 50, *memory, 0, 0, Rop3::SrcCopy);
    memory->SelectBitmap(nullptr);

    RecordContext target(replayed_, "dc");
    ReplayTargets targets;
    targets.SetContext(dc.Number(), target);
    Replay(*recorded_, targets);
    EXPECT_EQ(replayed_->Lines(), recorded_->Lines());
}

TEST_F(ReplayTest, ATargetThatWasToldIsUsedInPlaceOfANewOne) {
    RecordContext dc(recorded_, "dc");
    auto memory = dc.CreateCompatibleDC();
    auto bitmap = dc.CreateCompatibleBitmap(1, 1);
    memory->SelectBitmap(bitmap.get());

    RecordContext target(replayed_, "target");
    RecordContext told(replayed_, "told");
    RecordBitmap toldBitmap(77, 1, 1, nullptr);
    ReplayTargets targets;
    targets.SetContext(dc.Number(), target);
    targets.SetContext(static_cast<RecordContext&>(*memory).Number(), told);
    targets.SetBitmap(static_cast<RecordBitmap&>(*bitmap).Number(), toldBitmap);
    Replay(*recorded_, targets);
    EXPECT_THAT(replayed_->Lines(), ElementsAre("told SelectObject bitmap#77"));
}

TEST_F(ReplayTest, VerbsOfContextsWithoutATargetAreLeftOut) {
    RecordContext known(recorded_);
    RecordContext unknown(recorded_);
    unknown.BeginPath();
    unknown.CreateCompatibleDC()->EndPath();
    known.BitBlt(0, 0, 1, 1, unknown, 0, 0, Rop3::SrcCopy);
    known.EndPath();
    RecordContext target(replayed_, "known");
    ReplayTargets targets;
    targets.SetContext(known.Number(), target);
    Replay(*recorded_, targets);
    EXPECT_THAT(replayed_->Lines(), ElementsAre("known EndPath"));
}

TEST_F(ReplayTest, ABitmapThatIsNotOfTheListStaysUnselected) {
    class OwnBitmap : public Bitmap {
        std::int32_t Width_px() const override { return 1; }
        std::int32_t Height_px() const override { return 1; }
    };
    OwnBitmap bitmap;
    RecordContext dc(recorded_);
    dc.SelectBitmap(&bitmap);
    dc.CreateCompatibleBitmap(0, 0);
    RecordContext target(replayed_);
    ReplayTargets targets;
    targets.SetContext(dc.Number(), target);
    Replay(*recorded_, targets);
    EXPECT_THAT(replayed_->Lines(), IsEmpty());
}

TEST_F(ReplayTest, TargetsOfImpossibleNumbersAreIgnored) {
    RecordContext target(replayed_);
    ReplayTargets targets;
    targets.SetContext(0, target);
    targets.SetContext(-1, target);
    EXPECT_EQ(targets.Context(0), nullptr);
    EXPECT_EQ(targets.Context(-1), nullptr);
    EXPECT_EQ(targets.Context(1000), nullptr);
}

TEST_F(ReplayTest, CanBeRunAgainOnTheSameTargets) {
    RecordContext dc(recorded_, "dc");
    DrawOneOfEach(*dc.CreateCompatibleDC());
    RecordContext target(replayed_, "dc");
    ReplayTargets targets;
    targets.SetContext(dc.Number(), target);
    Replay(*recorded_, targets);
    const std::size_t once = replayed_->Size();
    Replay(*recorded_, targets);
    // The memory context is there by then and is not made a second time.
    EXPECT_EQ(replayed_->Size(), 2 * once - 1);
}

}  // namespace
}  // namespace orvane
