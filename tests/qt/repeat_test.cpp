// Small figures that come again are copied from what they gave before: nothing but the time may tell.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

constexpr int kSide_px = 120;

/// Draws the same verbs on two pictures; in the second one a hole far away in the clip keeps every figure from being kept.
class QtRepeat : public testing::Test {
protected:
    QtRepeat() : kept(kSide_px, kSide_px), plain(kSide_px, kSide_px) {
        for (QtContext* dc : {&kept.dc, &plain.dc}) {
            dc->SelectClipRgn({0, 0, kSide_px, kSide_px}, RgnMode::Copy);
            dc->SelectPen(SolidPen(kRed));
            dc->SelectBrush(CreateSolidBrush(kBlue));
        }
        plain.dc.ExcludeClipRect({kSide_px - 1, kSide_px - 1, kSide_px, kSide_px});
    }
    void Both(const std::function<void(QtContext&)>& work) {
        work(kept.dc);
        work(plain.dc);
    }
    void ExpectEqual() {
        kept.Set(kSide_px - 1, kSide_px - 1, kWhite);
        plain.Set(kSide_px - 1, kSide_px - 1, kWhite);
        EXPECT_EQ(kept.Image(), plain.Image());
        EXPECT_TRUE(kept.FourthBytesAreKept());
    }
    static void Symbol(QtContext& dc, Point at, const std::vector<Point>& offsets) {
        std::vector<Point> ring;
        for (const Point& o : offsets) ring.push_back({at.x + o.x, at.y + o.y});
        dc.BeginPath();
        PolyPolygon(dc, {ring});
        dc.EndPath();
        dc.FillPath();
        PolyPolygon(dc, {ring});
    }

    Picture kept;
    Picture plain;
};

const std::vector<Point> kTriangle{{0, -6}, {-6, 6}, {6, 6}};

TEST_F(QtRepeat, TheSamePixelsComeAtEveryPlaceAndOverTheEdges) {
    Both([](QtContext& dc) {
        for (int i = -10; i < kSide_px + 10; i += 7) {
            for (int k = -10; k < kSide_px + 10; k += 23) Symbol(dc, {i, k + i % 3}, kTriangle);
        }
    });
    ExpectEqual();
    EXPECT_GT(kept.CountOther(kWhite), 1000);
}

TEST_F(QtRepeat, AnotherPenOrBrushChangesWhatComesNext) {
    Both([](QtContext& dc) {
        for (int i = 0; i < 5; ++i) Symbol(dc, {10 + 20 * i, 20}, kTriangle);
        dc.SelectBrush(CreateSolidBrush(kGreen));
        for (int i = 0; i < 5; ++i) Symbol(dc, {10 + 20 * i, 40}, kTriangle);
        dc.SelectPen(SolidPen(kBlack));
        for (int i = 0; i < 5; ++i) Symbol(dc, {10 + 20 * i, 60}, kTriangle);
        dc.SelectPen(SolidPen(kBlack, 3));
        for (int i = 0; i < 5; ++i) Symbol(dc, {10 + 20 * i, 80}, kTriangle);
        dc.SelectPen(NullPen());
        for (int i = 0; i < 5; ++i) Symbol(dc, {10 + 20 * i, 100}, kTriangle);
    });
    ExpectEqual();
    EXPECT_EQ(kept.At(50, 20), kBlue);
    EXPECT_EQ(kept.At(50, 40), kGreen);
}

TEST_F(QtRepeat, ModesThatReadThePictureAndHatchesThatLieFixedOnItStayAsTheyAre) {
    Both([](QtContext& dc) {
        dc.SetROP2(Rop2::XorPen);
        for (int i = 0; i < 20; ++i) Symbol(dc, {20 + i, 30}, kTriangle);
        dc.SetROP2(Rop2::CopyPen);
        dc.SelectBrush(CreateHatchBrush(Hatch::DiagCross, kGreen));
        for (int i = 0; i < 20; ++i) Symbol(dc, {20 + 3 * i, 60 + i}, kTriangle);
        dc.SelectBrush(CreateSolidBrush(kBlue));
        dc.SelectPen(CreatePen(PenStyle::Dash, 1, kBlack));
        for (int i = 0; i < 20; ++i) Symbol(dc, {20 + 3 * i, 90 + i}, kTriangle);
    });
    ExpectEqual();
}

TEST_F(QtRepeat, OpenAndClosedFilledAndOutlinedFiguresOfTheSamePointsDiffer) {
    Both([](QtContext& dc) {
        for (int i = 0; i < 12; ++i) {
            const Point at{8 + 9 * i, 20};
            const std::vector<Point> pts{{at.x, at.y}, {at.x + 6, at.y}, {at.x + 6, at.y + 7}};
            Polyline(dc, pts);
            std::vector<Point> lower = pts;
            for (Point& p : lower) p.y += 30;
            PolyPolygon(dc, {lower});
            for (Point& p : lower) p.y += 30;
            dc.BeginPath();
            Polyline(dc, lower);
            dc.EndPath();
            dc.FillPath();
        }
    });
    ExpectEqual();
}

TEST_F(QtRepeat, AClipAndAnotherPictureAreHonoured) {
    QImage other(40, 30, QImage::Format_RGB32);
    other.fill(Qt::white);
    for (int i = 0; i < 4; ++i) Symbol(kept.dc, {20 + 20 * i, 20}, kTriangle);
    kept.dc.SelectClipRgn({0, 60, 50, 70}, RgnMode::Copy);
    for (int i = 0; i < 4; ++i) Symbol(kept.dc, {20 + 20 * i, 65}, kTriangle);
    int below = 0;
    for (int y = 40; y < kSide_px; ++y) {
        for (int x = 0; x < kSide_px; ++x) below += kept.At(x, y) != kWhite && (y < 60 || y >= 70 || x >= 50);
    }
    EXPECT_EQ(below, 0);
    EXPECT_EQ(kept.At(20, 65), kBlue);
    QtContext second(other);
    second.SelectPen(SolidPen(kRed));
    second.SelectBrush(CreateSolidBrush(kGreen));
    for (int i = 0; i < 4; ++i) Symbol(second, {10 + 5 * i, 15}, kTriangle);
    EXPECT_EQ(other.pixelColor(25, 16), QColor(0, 255, 0));
}

TEST_F(QtRepeat, RandomFiguresOfAFewShapesMixedWithOthers) {
    std::mt19937 random(7);
    const auto between = [&](int low, int high) {
        return static_cast<int>(random() % static_cast<unsigned>(high - low + 1)) + low;
    };
    std::vector<std::vector<Point>> shapes(6);
    for (auto& shape : shapes) {
        for (int n = between(2, 9); n > 0; --n) shape.push_back({between(-20, 20), between(-20, 20)});
    }
    for (int i = 0; i < 3000; ++i) {
        std::vector<Point> shape = shapes[static_cast<std::size_t>(between(0, 5))];
        if (between(0, 3) == 0) shape.push_back({between(-40, 40), between(-40, 40)});
        const Point at{between(-20, kSide_px + 20), between(-20, kSide_px + 20)};
        const Rgb color = static_cast<Rgb>(between(0, 0xFFFFFF));
        const bool changes = between(0, 15) == 0;
        Both([&](QtContext& dc) {
            if (changes) dc.SelectBrush(CreateSolidBrush(color));
            if (i % 50 == 0) {
                dc.Ellipse(at.x, at.y, at.x + 9, at.y + 8);
            } else {
                Symbol(dc, at, shape);
            }
        });
    }
    ExpectEqual();
}

TEST_F(QtRepeat, FarCoordinatesAreNoDanger) {
    constexpr std::int32_t kFar = 2147483647;
    Both([](QtContext& dc) {
        for (int i = 0; i < 4; ++i) {
            PolyPolygon(dc, {{{kFar, kFar}, {kFar - 3, kFar}, {kFar, kFar - 3}}});
            PolyPolygon(dc, {{{-kFar - 1, 5}, {-kFar, 5}, {-kFar, 9}}});
            PolyPolygon(dc, {{{-kFar - 1, 5}, {kFar, 5}, {kFar, 9}}});
            Polyline(dc, {{kFar, 10}, {-kFar - 1, 10}});
        }
    });
    ExpectEqual();
}

}  // namespace
}  // namespace orvane
