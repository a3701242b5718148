// What stands below the map of a page, whatever the page becomes: a PDF, a picture or the preview.
#include "hosts/viewer/page_footer.h"

#include <QLabel>
#include <QTableWidget>
#include <algorithm>

#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

constexpr int kDpi = 300;

int Pixels(double mm) { return qRound(mm / 25.4 * kDpi); }
bool IsDark(const QImage& image, int x, int y) { return qGray(image.pixel(x, y)) < 128; }

/// The heaps of rows with something on them, as first and last row.
std::vector<std::pair<int, int>> InkedRows(const QImage& image) {
    std::vector<std::pair<int, int>> bands;
    for (int y = 0; y < image.height(); ++y) {
        bool isInked = false;
        for (int x = 0; x < image.width() && !isInked; ++x) isInked = IsDark(image, x, y);
        if (!isInked) continue;
        if (bands.empty() || bands.back().second != y - 1) bands.emplace_back(y, y);
        bands.back().second = y;
    }
    return bands;
}

bool IsInked(const QImage& image, QRect part) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (IsDark(image, x, y)) return true;
        }
    }
    return false;
}

int LongestRun(const QImage& image) {
    int longest = 0;
    for (int y = 0; y < image.height(); ++y) {
        int run = 0;
        for (int x = 0; x < image.width(); ++x) longest = (std::max)(longest, run = IsDark(image, x, y) ? run + 1 : 0);
    }
    return longest;
}

QImage Painted(const PageFooter& footer, double width_mm) {
    QImage image(Pixels(width_mm), Pixels(footer.Height_mm()), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    footer.Paint(painter, kDpi, footer.Height_mm());
    return image;
}

TEST(PageFooterTest, WordsThatHaveRoomStandOnOneLineAtBothEnds) {
    const PageFooter footer("MAP   1:5,000", "SURVEY OFFICE", 180, 0);
    EXPECT_EQ(footer.Height_mm(), 8);
    const QImage image = Painted(footer, 180);
    EXPECT_EQ(InkedRows(image).size(), 1u);
    EXPECT_TRUE(IsInked(image, QRect(0, 0, Pixels(5), image.height())));
    EXPECT_TRUE(IsInked(image, QRect(image.width() - Pixels(5), 0, Pixels(5), image.height())));
}

TEST(PageFooterTest, WordsThatDoNotFitBesideEachOtherStandOneBelowTheOther) {
    const PageFooter footer("A MAP OF THE RIVERS   1:5,000", "THE OFFICE OF SURVEYS AND MAPS, DATA OF 2024", 80, 0);
    EXPECT_GT(footer.Height_mm(), 8);
    const QImage image = Painted(footer, 80);
    EXPECT_GE(InkedRows(image).size(), 2u);
    // The first word of the credit begins its line at the left, as the title does.
    for (const auto& [first, last] : InkedRows(image))
        EXPECT_TRUE(IsInked(image, QRect(0, first, Pixels(4), last - first + 1))) << first;
}

TEST(PageFooterTest, NothingOfALongCreditIsLost) {
    const QString word = "SURVEY ";
    const PageFooter some("MAP", word.repeated(20), 100, 0);
    const PageFooter more("MAP", word.repeated(80), 100, 0);
    EXPECT_GT(more.Height_mm(), some.Height_mm() + 20);
    const QImage image = Painted(more, 100);
    EXPECT_GE(InkedRows(image).back().second, image.height() - Pixels(4)) << "down to the last line";
    const PageFooter unbroken("MAP", QString("W").repeated(200), 100, 0);
    EXPECT_GE(InkedRows(Painted(unbroken, 100)).size(), 5u) << "a word longer than a line is broken";
}

TEST(PageFooterTest, TheBarIsTheLongestRoundLengthThatHasRoom) {
    const auto expect = [](int zoom, double ground_m, double paper_mm) {
        const BarLength bar = BarLengthAt(zoom, 50);
        EXPECT_DOUBLE_EQ(bar.ground_m, ground_m) << zoom;
        EXPECT_DOUBLE_EQ(bar.paper_mm, paper_mm) << zoom;
    };
    expect(5000, 200, 40);
    expect(10000, 500, 50);
    expect(20000, 1000, 50);
    expect(25000, 1000, 40);
    expect(2500, 100, 40);
    expect(3000, 100, 100 / 3.0);
    expect(50000000, 2000000, 40);
    expect(1, 0.05, 50);
}

class FooterWalk : public Walk {
protected:
    FooterWalk() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 300);
        Map().Call("OrvSetLayColor", {"AREA", 0x80C0A0});
        Fit();
    }
    /// The sheet as a picture, at 1:5000 with the square in its middle.
    QImage Sheet(PrintDialog& print, const char* name) {
        print.ScaleField().setValue(5000);
        EXPECT_EQ(print.WritePng(File(name)), "");
        return QImage(File(name)).convertToFormat(QImage::Format_RGB32);
    }
    /// What stands below the map.
    static QImage FooterOf(const PrintDialog& print, const QImage& sheet) {
        const QSize map = print.Setup(kDpi).map_mm;
        const int top = Pixels(10 + map.height()) + Pixels(0.5);
        return sheet.copy(Pixels(10), top, Pixels(map.width()), sheet.height() - top);
    }
};

TEST_F(FooterWalk, APictureIsThePageWithFrameTitleAndCredit) {
    PrintDialog print(Map(), "MAP", "OFFICE", window.get());
    print.PaperField().setCurrentIndex(0);
    print.TurnField().setCurrentIndex(0);
    const QImage sheet = Sheet(print, "page.png");
    EXPECT_EQ(sheet.size(), QSize(Pixels(210), Pixels(297)));
    const QImage map = RecordPage(Map(), print.Setup(kDpi)).picture;
    const QRect place(QPoint(Pixels(10), Pixels(10)), map.size());
    const QRect inside = map.rect().adjusted(3, 3, -3, -3);  // the frame is drawn on the map's edge
    EXPECT_EQ(sheet.copy(inside.translated(place.topLeft())), map.copy(inside)) << "pixel for pixel";
    for (const QPoint corner : {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight()})
        EXPECT_TRUE(IsInked(sheet, QRect(corner - QPoint(2, 2), QSize(5, 5)))) << "the frame";
    const QImage footer = FooterOf(print, sheet);
    EXPECT_TRUE(IsInked(footer, QRect(0, 0, Pixels(5), Pixels(7)))) << "the title";
    EXPECT_TRUE(IsInked(footer, QRect(footer.width() - Pixels(5), 0, Pixels(5), Pixels(7)))) << "credit and date";
    PrintDialog other(Map(), "MAP", "BUREAU", window.get());
    other.PaperField().setCurrentIndex(0);
    other.TurnField().setCurrentIndex(0);
    EXPECT_NE(FooterOf(other, Sheet(other, "other.png")), footer) << "the credit is on it";
}

TEST_F(FooterWalk, ANarrowSheetHasTheScaleAndTheCreditBelowEachOther) {
    PrintDialog print(Map(), "RIVERS AND ROADS OF THE CITY", "THE OFFICE OF SURVEYS AND MAPS OF THE LAND, DATA OF THE YEAR 2024",
                      window.get());
    print.PaperField().setCurrentIndex(print.PaperField().findData(static_cast<int>(QPageSize::JisB5)));
    print.TurnField().setCurrentIndex(0);
    const QImage footer = FooterOf(print, Sheet(print, "b5.png"));
    EXPECT_GE(InkedRows(footer).size(), 2u);
    EXPECT_LE(InkedRows(footer).back().second, footer.height() - Pixels(10)) << "above the margin";
    EXPECT_LT(print.Setup(1).map_mm.height(), 257 - 20 - 8) << "the map makes room";
}

TEST_F(FooterWalk, ABarTrueToThePrintedScaleStandsThereUnlessItIsSwitchedOff) {
    const auto longest = [&](bool trueToScale) {
        PrintDialog print(Map(), "MAP", "OFFICE", window.get());
        print.PaperField().setCurrentIndex(0);
        print.SetTrueToScale(trueToScale);
        return LongestRun(FooterOf(print, Sheet(print, "bar.png")));
    };
    EXPECT_LT(longest(true), Pixels(10));
    for (const char* mode : {"Metres", "Degrees"}) {
        Choose(mode);
        EXPECT_NEAR(longest(true), Pixels(40), 2) << "200 m at 1:5000, " << mode;
    }
    EXPECT_LT(longest(false), Pixels(10)) << "sheets have no scale";
}

TEST_F(FooterWalk, WhereXAndYGoIsSaidWhereverTheyStand) {
    const PrintDialog print(Map(), "MAP", "", window.get());
    QStringList labels;
    for (const QLabel* label : print.findChildren<QLabel*>()) labels << label->text().remove('&');
    EXPECT_TRUE(labels.contains("Middle X (east)")) << labels.join('|').toStdString();
    EXPECT_TRUE(labels.contains("Middle Y (north)"));
    labels.clear();
    for (const QLabel* label : window->Feature().findChildren<QLabel*>()) labels << label->text().remove('&');
    EXPECT_TRUE(labels.contains("Anchor X (east)")) << labels.join('|').toStdString();
    EXPECT_TRUE(labels.contains("Anchor Y (north)"));
    const auto* points = window->Feature().findChild<QTableWidget*>();
    ASSERT_NE(points, nullptr);
    EXPECT_EQ(points->horizontalHeaderItem(0)->text(), "X (east)");
    EXPECT_EQ(points->horizontalHeaderItem(1)->text(), "Y (north)");
    EXPECT_EQ(window->Place().PlaceText(10, 20), "X (east) 10.0 Y (north) 20.0") << "no zone is known";
    window->Place().TakeMap(9);
    EXPECT_EQ(window->Place().PlaceText(10, 20), "zone 9: X (north) 20.0 Y (east) 10.0") << "as surveyors name them";
}

}  // namespace
}  // namespace orvane
