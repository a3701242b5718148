// Pictures of the window and its panels for docs/viewer.md. They are made when ORVANE_SHOTS names a folder (tools/viewer_shots).
#include <QMenu>
#include <QMenuBar>
#include <QTranslator>

#include "hosts/viewer/image_placing.h"
#include "hosts/viewer/language.h"
#include "hosts/viewer/layer_presets.h"
#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class Shots : public Walk {
protected:
    void SetUp() override {
        if (qgetenv("ORVANE_SHOTS").isEmpty()) GTEST_SKIP() << "pictures are made by tools/viewer_shots";
    }
    void Shoot(QWidget& widget, const char* name) {
        Settle();
        QTest::qWait(100);
        const QImage picture = widget.grab().toImage().convertToFormat(QImage::Format_RGB888);
        EXPECT_TRUE(picture.save(qEnvironmentVariable("ORVANE_SHOTS") + '/' + name + ".png"));
    }
    void OpenTokyo(MainWindow& in) {
        ASSERT_TRUE(in.Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
        in.resize(1180, 800);
        QTest::qWait(100);
        in.FindAction("Fit")->trigger();
        Settle();
    }
};

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
