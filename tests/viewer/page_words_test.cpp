// What a page does not show is told once it is written, where the preview did not tell it.
#include <QPushButton>

#include "hosts/viewer/print_dialog.h"
#include "hosts/viewer/work_progress.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PageWords : public Walk {
protected:
    PageWords() : print(Map(), "Map", "", window.get()) {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 1000);
        Fit();
        print.SetLeftOut([this] { return leftOut; });
        print.show();
        Settle();
        print.ShowPreview();
    }
    ~PageWords() override { WorkProgress::SetPatience(700); }
    void Press(const char* button) {
        for (QPushButton* one : print.findChildren<QPushButton*>()) {
            if (one->text().remove('&') == button) one->click();
        }
        Settle();
    }
    void Save(const char* button, const char* name) {
        WhenAskedForFile(File(name));
        Press(button);
    }
    QStringList leftOut;
    PrintDialog print;
};

TEST_F(PageWords, AnImageThatOnlyThePageLacksIsToldWithEachPage) {
    leftOut = {"scan.tif: why"};
    for (const char* name : {"one.pdf", "two.pdf"}) {
        said.clear();
        WhenAskedForFile(File(name));
        WhenTold(QMessageBox::Ok);
        Press("PDF…");
        EXPECT_TRUE(said.contains("scan.tif: why")) << name << said.toStdString();
        EXPECT_TRUE(QFile::exists(File(name)));
    }
}

TEST_F(PageWords, AnImageThatThePreviewLacksTooIsNotToldAgain) {
    leftOut = {"scan.tif: why"};
    print.ShowPreview();
    EXPECT_TRUE(print.Words().text().contains("scan.tif"));
    Save("PDF…", "map.pdf");
    EXPECT_TRUE(QFile::exists(File("map.pdf")));
}

TEST_F(PageWords, OfAPageThatWasCancelledNothingIsTold) {
    leftOut = {"scan.tif: why"};
    WorkProgress::SetPatience(0);
    QTimer hand;
    QObject::connect(&hand, &QTimer::timeout, [] {
        for (QWidget* top : QApplication::allWidgets()) {
            auto* dialog = qobject_cast<QProgressDialog*>(top);
            if (dialog != nullptr && dialog->isVisible() && dialog->value() >= 30) dialog->cancel();
        }
    });
    hand.start(0);
    Save("PDF…", "map.pdf");
    EXPECT_FALSE(QFile::exists(File("map.pdf")));
    Save("PNG…", "map.png");
    EXPECT_FALSE(QFile::exists(File("map.png")));
}

}  // namespace
}  // namespace orvane
