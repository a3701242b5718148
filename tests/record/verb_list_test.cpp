#include "platform/record/verb_list.h"

#include <gmock/gmock.h>

#include "platform/record/record_context.h"
#include "platform/record/verb_table.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VerbListTest, ValuesComeApartByKind) {
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list);
    const Point pts[] = {{1, 2}, {3, 4}, {5, 6}};
    const std::int32_t counts[] = {1, 2};
    const Pen pen = CreatePen(PenStyle::Dash, 2, 0x0000FF);
    dc.SelectPen(pen);
    dc.PolyPolygon(pts, counts, 2);
    dc.FillRect({1, 2, 3, 4}, NullBrush());
    dc.SetBkColor(0xFF000001);
    dc.PatBlt(-1, 2, 3, 4, Rop3::PatCopy);
    dc.BitBlt(0, 0, 1, 1, dc, 0, 0, Rop3::SrcInvert);
    dc.SelectFont(Font{});
    auto bitmap = dc.CreateCompatibleBitmap(5, 6);
    ASSERT_EQ(list->Size(), 8u);

    const std::int32_t own = dc.Number();
    using Values = std::vector<VerbValue>;
    const auto number = [](std::int64_t v) { return VerbValue(v); };
    EXPECT_EQ(list->Call(0), (VerbCall{own, "SelectObject", {pen}}));
    EXPECT_EQ(list->Call(1),
              (VerbCall{own, "PolyPolygon", Values{std::vector<Point>(pts, pts + 3), std::vector<std::int32_t>{1, 2}}}));
    EXPECT_EQ(list->Call(2), (VerbCall{own, "FillRect", Values{Rect{1, 2, 3, 4}, NullBrush()}}));
    EXPECT_EQ(list->Call(3), (VerbCall{own, "SetBkColor", Values{number(0xFF000001)}}));
    EXPECT_EQ(list->Call(4), (VerbCall{own, "PatBlt", Values{number(-1), number(2), number(3), number(4), number(0x00F00021)}}));
    EXPECT_EQ(list->Call(5), (VerbCall{own, "BitBlt",
                                       Values{number(0), number(0), number(1), number(1), ContextNumber{own}, number(0),
                                              number(0), number(0x00660046)}}));
    EXPECT_EQ(list->Call(6), (VerbCall{own, "SelectObject", Values{Font{}}}));
    EXPECT_EQ(list->Call(7), (VerbCall{own, "CreateCompatibleBitmap", Values{number(5), number(6), BitmapNumber{1}}}));
}

TEST(VerbListTest, WhatWasTakenApartCanBeWrittenAgain) {
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list);
    const Point pts[] = {{1, 2}, {3, 4}, {5, 6}};
    const std::int32_t counts[] = {1, 2};
    dc.SelectPen(CreatePen(PenStyle::Dash, 2, 0x0000FF));
    dc.PolyPolygon(pts, counts, 2);
    dc.FillRect({1, 2, 3, 4}, NullBrush());
    dc.SetBkColor(0xFF000001);
    dc.DrawTextBytes(-1, 7, "text");
    dc.BitBlt(0, 0, 1, 1, dc, 0, 0, Rop3::SrcInvert);
    dc.SelectFont(Font{});
    const auto bitmap = dc.CreateCompatibleBitmap(5, 6);
    VerbList again;
    for (std::size_t i = 0; i < list->Size(); ++i) {
        again.Append(list->Record(i).context, list->Record(i).verb, list->Call(i).values);
    }
    ASSERT_EQ(again.Size(), 8u);
    for (std::size_t i = 0; i < list->Size(); ++i) EXPECT_EQ(again.Call(i), list->Call(i)) << i;
}

TEST(VerbListTest, EqualPensAreKeptOnceAndComeBackByValue) {
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list);
    std::vector<Pen> pens;
    // More pens than the pool looks back at, each selected twice, far apart.
    for (int round = 0; round < 2; ++round) {
        for (std::uint32_t i = 0; i < 40; ++i) {
            pens.push_back(CreatePen(PenStyle::Solid, 1, i));
            dc.SelectPen(pens.back());
        }
    }
    ASSERT_EQ(list->Size(), pens.size());
    for (std::size_t i = 0; i < pens.size(); ++i) EXPECT_EQ(std::get<Pen>(list->Call(i).values[0]), pens[i]);
}

TEST(VerbListTest, ClearForgetsVerbsAndKeepsNumbers) {
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list, "dc");
    dc.BeginPath();
    list->Clear();
    EXPECT_EQ(list->Size(), 0u);
    EXPECT_EQ(list->PointCnt(), 0u);
    dc.EndPath();
    RecordContext next(list);
    EXPECT_EQ(next.Number(), dc.Number() + 1);
    EXPECT_THAT(list->Lines(), ElementsAre("dc EndPath"));
}

TEST(VerbListTest, TheLabelOfADeadContextStaysAsLongAsItsVerbs) {
    const auto list = std::make_shared<VerbList>();
    std::int32_t number = 0;
    {
        RecordContext dc(list, "window");
        number = dc.Number();
        dc.BeginPath();
    }
    EXPECT_THAT(list->Lines(), ElementsAre("window BeginPath"));
    EXPECT_THAT(list->ContextsLabelled("window"), ElementsAre(number));
    list->Clear();
    EXPECT_THAT(list->ContextsLabelled("window"), IsEmpty());
    EXPECT_EQ(list->ContextName(number), std::to_string(number));
}

TEST(VerbListTest, ALabelCanBeChangedAndTakenAway) {
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list, "first");
    dc.SetLabel("second");
    EXPECT_EQ(list->ContextName(dc.Number()), "second");
    dc.SetLabel("");
    EXPECT_EQ(list->ContextName(dc.Number()), "1");
}

TEST(VerbListTest, AFrameOfPolygonsTakesItsPointsAndLittleMore) {
    EXPECT_LE(sizeof(VerbRecord), 24u);
    const auto list = std::make_shared<VerbList>();
    RecordContext dc(list);
    const std::vector<Point> ring(21, Point{1, 1});
    const std::int32_t count = 21;
    for (int i = 0; i < 1000; ++i) dc.PolyPolygon(ring.data(), &count, 1);
    EXPECT_EQ(list->PointCnt(), 21000u);
}

TEST(VerbTableTest, EveryVerbHasARowUnderItsOwnPlace) {
    for (std::uint16_t i = 0; i < static_cast<std::uint16_t>(Verb::Count); ++i) {
        const VerbRow& row = RowOf(static_cast<Verb>(i));
        EXPECT_EQ(row.verb, static_cast<Verb>(i));
        EXPECT_FALSE(row.name.empty());
    }
}

}  // namespace
}  // namespace orvane
