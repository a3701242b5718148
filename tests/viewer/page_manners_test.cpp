// Pages and fields: a scale that follows the view again, work on a page that can be given up, and a wheel that scrolls.
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QToolBar>
#include <QWheelEvent>

#include "hosts/viewer/print_dialog.h"
#include "hosts/viewer/work_progress.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PageManners : public Walk {
protected:
    PageManners() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 300);
        Fit();
    }
    ~PageManners() override { WorkProgress::SetPatience(700); }
    static void Wheel(QWidget& field, int delta) {
        const QPointF at(field.rect().center());
        QWheelEvent event(at, field.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&field, &event);
    }
    /// Cancels whatever work shows.
    void CancelAllWork() {
        WorkProgress::SetPatience(0);
        QObject::connect(&cancel_, &QTimer::timeout, [] {
            for (QWidget* top : QApplication::allWidgets()) {
                auto* dialog = qobject_cast<QProgressDialog*>(top);
                if (dialog != nullptr && dialog->isVisible()) dialog->cancel();
            }
        });
        cancel_.start(0);
    }
    void StopCancelling() { cancel_.stop(); }

private:
    QTimer cancel_;
};

TEST_F(PageManners, AKeptScaleGoesBackToThatOfTheView) {
    const int view = Map().Zoom();
    {
        PrintDialog print(Map(), "Map", "", window.get());
        print.ScaleField().setValue(2500);
        print.reject();
    }
    Map().SetZoom(view / 2);
    {
        PrintDialog print(Map(), "Map", "", window.get());
        EXPECT_EQ(print.ScaleField().value(), 2500);
        print.ViewScale().click();
        EXPECT_EQ(print.ScaleField().value(), view / 2);
        print.reject();
    }
    Map().SetZoom(view / 4);
    const PrintDialog print(Map(), "Map", "", window.get());
    EXPECT_EQ(const_cast<PrintDialog&>(print).ScaleField().value(), view / 4) << "it follows the view again";
}

TEST_F(PageManners, FieldsOfTheToolBarsLeaveTheWheelUntilTheyHaveTheKeyboard) {
    MakeLayer("TREE", kLayPoint);
    window->RefreshNow();
    int fields = 0;
    for (const QToolBar* bar : window->findChildren<QToolBar*>()) {
        for (QComboBox* box : bar->findChildren<QComboBox*>()) {
            ++fields;
            ASSERT_GT(box->count(), 1) << box->accessibleName().toStdString();
            box->setCurrentIndex(0);
            Map().setFocus();
            Wheel(*box, -120);
            EXPECT_EQ(box->currentIndex(), 0) << box->accessibleName().toStdString();
            EXPECT_FALSE(box->hasFocus());
        }
        for (QSpinBox* box : bar->findChildren<QSpinBox*>()) {
            ++fields;
            const int before = box->value();
            Wheel(*box, -120);
            EXPECT_EQ(box->value(), before);
        }
    }
    EXPECT_GE(fields, 3);
    QComboBox& shape = window->Relations().Shape();
    shape.setCurrentIndex(0);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
    shape.setFocus();
    ASSERT_TRUE(shape.hasFocus());
    Wheel(shape, -120);
    EXPECT_EQ(shape.currentIndex(), 1);
}

TEST_F(PageManners, APageThatIsCancelledLeavesTheFileThatStoodThere) {
    QFile old(File("page.pdf"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    MakeLayer("MANY", kLayPoint);
    for (int n = 0; n < 3000; ++n) AddFeature("MANY", n + 1, {n % 60 * 5.0}, {n / 60 * 5.0});
    PrintDialog print(Map(), "Map", "", window.get());
    print.show();
    Settle();
    CancelAllWork();
    EXPECT_EQ(print.WritePdf(File("page.pdf")), "") << "who cancelled knows it";
    StopCancelling();
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
    old.close();
    EXPECT_EQ(print.WritePdf(File("page.pdf")), "");
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_TRUE(old.readAll().startsWith("%PDF"));
}

TEST_F(PageManners, APagePerformedInPartSaysSo) {
    PageSetup setup;
    setup.map_mm = QSize(100, 100);
    setup.dpi = 96;
    setup.zoom = Map().Zoom();
    const MapPage page = RecordPage(Map(), setup);
    QImage paper(page.picture.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    EXPECT_EQ(PaintPage(Map(), page, painter, [](double) { return false; }), -1);
    double last = -1;
    const auto grows = [&](double done) {
        EXPECT_GE(done, last);
        last = done;
        return true;
    };
    EXPECT_GE(PaintPage(Map(), page, painter, grows), 0);
    EXPECT_GE(last, 0.0);
    EXPECT_LE(last, 1.0);
}

TEST_F(PageManners, AnImageWhoseLoadingIsCancelledDoesNotCome) {
    QImage scan(200, 100, QImage::Format_RGB32);
    scan.fill(Qt::gray);
    for (const char* name : {"a.png", "b.png"}) ASSERT_TRUE(scan.save(File(name)));
    constexpr int kImages = 8;
    for (int n = 0; n < kImages; ++n) ASSERT_EQ(window->Images().Add(File("a.png")), "");
    CancelAllWork();
    EXPECT_EQ(window->Images().Add(File("b.png")), "");
    StopCancelling();
    EXPECT_EQ(window->Images().List().count(), kImages);
    EXPECT_EQ(Map().Control().rasters.Count(), kImages);
    EXPECT_EQ(window->History().Stack().count(), kImages);
    EXPECT_EQ(window->Images().Add(File("b.png")), "");
    EXPECT_EQ(window->Images().List().count(), kImages + 1);
}

}  // namespace
}  // namespace orvane
