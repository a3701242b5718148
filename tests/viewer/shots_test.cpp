// Pictures of the window and its panels for docs/viewer.md. tools/viewer_shots makes them, by naming a folder in ORVANE_SHOTS;
// else each is compared with the one that is there.
#include <QDir>
#include <QFontInfo>
#include <QFontMetrics>
#include <QMenu>
#include <QMenuBar>
#include <QTranslator>
#include <algorithm>
#include <array>

#include "hosts/viewer/image_placing.h"
#include "hosts/viewer/language.h"
#include "hosts/viewer/layer_presets.h"
#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// All pictures, each made by one of the walks below.
const QStringList& Pictures() {
    static const QStringList names{"edit_menu", "events", "feature",  "find",  "images", "japanese", "layers",
                                   "placing",   "print",  "selected", "shape", "text",   "window"};
    return names;
}

QDir Docs() { return QDir(QStringLiteral(ORVANE_SAMPLES "/../docs/viewer")); }

/// The fonts that words are written in here, by their names and measures.
QString FontsHere() {
    const QFontInfo font(QApplication::font());
    const QFontMetrics metrics(QApplication::font());
    return QStringLiteral("%1, %2 pixels; a line has %3, \"Layers and looks\" %4, \"\u5730\u56f3\u306e\u5370\u5237\" %5\n")
        .arg(font.family())
        .arg(font.pixelSize())
        .arg(metrics.height())
        .arg(metrics.horizontalAdvance("Layers and looks"))
        .arg(metrics.horizontalAdvance(QString::fromUtf8("地図の印刷")));
}

/// The part of two pictures of one size that looks different: of squares of 8 pixels those whose mean colours are further apart
/// than an eye passes over.
double PartThatDiffers(const QImage& a, const QImage& b) {
    constexpr int kSquare = 8;
    constexpr int kFar = 16;  // of 255: anti-aliasing moves a square's mean by less
    int squares = 0;
    int differing = 0;
    for (int top = 0; top < a.height(); top += kSquare) {
        for (int left = 0; left < a.width(); left += kSquare) {
            const QRect square = QRect(left, top, kSquare, kSquare) & a.rect();
            std::array<int, 3> apart{};
            for (int y = square.top(); y <= square.bottom(); ++y) {
                for (int x = square.left(); x <= square.right(); ++x) {
                    const QRgb p = a.pixel(x, y);
                    const QRgb q = b.pixel(x, y);
                    apart[0] += qRed(p) - qRed(q);
                    apart[1] += qGreen(p) - qGreen(q);
                    apart[2] += qBlue(p) - qBlue(q);
                }
            }
            const int pixels = square.width() * square.height();
            ++squares;
            differing += std::any_of(apart.begin(), apart.end(), [&](int sum) { return std::abs(sum) > kFar * pixels; });
        }
    }
    return static_cast<double>(differing) / squares;
}

class Shots : public Walk {
protected:
    static void SetUpTestSuite() { shot_.clear(); }
    /// Where all walks ran, each picture was made.
    static void TearDownTestSuite() {
        const testing::TestSuite& suite = *testing::UnitTest::GetInstance()->current_test_suite();
        if (suite.test_to_run_count() != suite.total_test_count() || suite.skipped_test_count() > 0) return;
        shot_.sort();
        EXPECT_EQ(shot_, Pictures());
    }
    static QString Folder() { return qEnvironmentVariable("ORVANE_SHOTS"); }
    void SetUp() override {
        if (!Folder().isEmpty()) return;
        // Other systems lay dialogs out in their own manner, and know no window that has the keyboard.
        if (QGuiApplication::platformName() != "xcb") GTEST_SKIP() << "the pictures are those of an X server";
        if (window->devicePixelRatioF() != 1) GTEST_SKIP() << "the pictures are of a screen with one pixel a point";
        QFile fonts(Docs().filePath("fonts.txt"));
        ASSERT_TRUE(fonts.open(QIODevice::ReadOnly));
        const QString theirs = QString::fromUtf8(fonts.readAll());
        if (theirs != FontsHere()) {
            GTEST_SKIP() << "other fonts than those of the pictures: " << FontsHere().toStdString() << "in place of "
                         << theirs.toStdString();
        }
    }
    void Shoot(QWidget& widget, const char* name) {
        Settle();
        QTest::qWait(100);
        const QImage picture = widget.grab().toImage().convertToFormat(QImage::Format_RGB888);
        EXPECT_TRUE(Pictures().contains(name));
        shot_ << name;
        if (!Folder().isEmpty()) {
            EXPECT_TRUE(picture.save(Folder() + '/' + name + ".png"));
            QFile fonts(Folder() + "/fonts.txt");
            ASSERT_TRUE(fonts.open(QIODevice::WriteOnly));
            fonts.write(FontsHere().toUtf8());
            return;
        }
        const QImage kept = QImage(Docs().filePath(QString(name) + ".png")).convertToFormat(QImage::Format_RGB888);
        ASSERT_EQ(picture.size(), kept.size()) << name;
        const double differs = PartThatDiffers(picture, kept);
        EXPECT_LE(differs, kMostDiffers) << name << ": look at it, and run tools/viewer_shots where it is meant";
    }
    void OpenTokyo(MainWindow& in) {
        ASSERT_TRUE(in.Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
        in.resize(1180, 800);
        QTest::qWait(100);
        in.FindAction("Fit")->trigger();
        Settle();
    }

private:
    /// The date on a page and the cursor in a field are less; the frame of one small button that comes or goes is more.
    static constexpr double kMostDiffers = 0.0012;
    static inline QStringList shot_;
};

TEST(ShotsInDocs, TheFolderHasThePicturesOfTheWalksAndNoOthers) {
    QStringList files;
    for (const QString& file : Docs().entryList({"*.png"}, QDir::Files, QDir::Name)) files << QFileInfo(file).completeBaseName();
    EXPECT_EQ(files, Pictures());
}

TEST(ShotsInDocs, ThePageShowsEachOfThem) {
    QFile page(Docs().filePath("../viewer.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QByteArray text = page.readAll();
    for (const QString& name : Pictures()) {
        EXPECT_EQ(text.count(QStringLiteral("](viewer/%1.png)").arg(name).toUtf8()), 1) << name.toStdString();
    }
    EXPECT_EQ(text.count("](viewer/"), Pictures().size()) << "and none that is not there";
}

TEST_F(Shots, Window) {
    OpenTokyo(*window);
    Click({350, 400});
    Click({420, 420}, Qt::ControlModifier);
    Shoot(*window, "window");
}

TEST_F(Shots, Japanese) {
    InstallLanguage("en");
    QTranslator translator;
    ASSERT_TRUE(translator.load(":/i18n/viewer_ja.qm"));
    QApplication::installTranslator(&translator);
    {
        MainWindow japanese;
        japanese.show();
        OpenTokyo(japanese);
        Shoot(japanese, "japanese");
    }
    QApplication::removeTranslator(&translator);
}

TEST_F(Shots, LayersAndLooks) {
    MakeLayer("AREA", kLayPolygon);
    MakeLayer("ROAD", kLayLine);
    MakeLayer("TREE", kLayPoint);
    window->resize(1180, 990);
    window->Selection().hide();
    window->Feature().hide();
    window->Layers().ShowLayers();
    window->Layers().Choose("AREA");
    window->Layers().MakeSubLayer(1, "Parks");
    window->Layers().MakeSubLayer(2, "Wards");
    Shoot(window->Layers(), "layers");
}

TEST_F(Shots, FeatureAndText) {
    OpenTokyo(*window);
    Click({350, 400});
    window->resize(1180, 990);
    window->Layers().hide();
    window->Images().hide();
    window->Feature().show();
    window->Feature().raise();
    Shoot(window->Feature(), "feature");
    window->Feature().EditText();
    window->Feature().TextField().setText(QString::fromUtf8("奥多摩町"));
    window->Feature().SizeField().setValue(14);
    window->Feature().findChild<QCheckBox*>("has text")->setChecked(true);
    Shoot(window->Feature(), "text");
}

TEST_F(Shots, Find) {
    OpenTokyo(*window);
    window->Finder().ShowLayers();
    window->Finder().show();
    window->Finder().GroupField().setText("533944");
    window->Finder().Find();
    Shoot(window->Finder(), "find");
}

TEST_F(Shots, SelectByAShape) {
    OpenTokyo(*window);
    Press(Qt::Key_B);
    for (const QPoint at : {QPoint(250, 330), QPoint(480, 350), QPoint(470, 480)}) Click(at);
    QTest::mouseMove(&Map(), {270, 470});
    Shoot(*window, "shape");
    Press(Qt::Key_Return);
    Shoot(*window, "selected");
}

TEST_F(Shots, Print) {
    OpenTokyo(*window);
    window->Place().ChangeFrame(9);
    Map().Call("OrvDspFit");
    PrintDialog print(Map(), "tokyo_mesh.Ovb", "", window.get());
    print.show();
    print.ShowPreview();
    Shoot(print, "print");
}

TEST_F(Shots, Images) {
    OpenTokyo(*window);
    QImage scan(300, 200, QImage::Format_RGB32);
    scan.fill(QColor(230, 220, 190));
    ASSERT_TRUE(scan.save(File("scan_1965.png")));
    ASSERT_TRUE(scan.save(File("photo_north.png")));
    window->Images().Add(File("scan_1965.png"));
    window->Images().Add(File("photo_north.png"));
    window->Selection().hide();
    window->Feature().hide();
    window->resize(1180, 500);
    window->Images().show();
    window->Images().raise();
    window->Images().List().setCurrentRow(0);
    Shoot(window->Images(), "images");
    window->Images().AskPlace();
    auto* placing = window->findChild<QDialog*>("placing");
    ASSERT_NE(placing, nullptr);
    Shoot(*placing, "placing");
    placing->close();
}

TEST_F(Shots, EventsAndScaleBar) {
    OpenTokyo(*window);
    Choose("Metres");
    window->findChild<EventLog*>()->show();
    Click({350, 400});
    Press(Qt::Key_M);
    Click({350, 400});
    Press(Qt::Key_Escape);
    Shoot(*window, "events");
}

TEST_F(Shots, EditMenu) {
    OpenTokyo(*window);
    QMenu* edit = window->menuBar()->actions()[1]->menu();
    edit->popup({0, 0});
    Shoot(*edit, "edit_menu");
    edit->close();
}

}  // namespace
}  // namespace orvane
