// A picture of a page tells how far it is, and who cancels it keeps what stood there.
#include "hosts/viewer/print_dialog.h"
#include "hosts/viewer/work_progress.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PictureCancel : public Walk {
protected:
    PictureCancel() {
        MakeLayer("MANY", kLayPoint);
        for (int n = 0; n < 500; ++n) AddFeature("MANY", n + 1, {n % 60 * 5.0}, {n / 60 * 5.0});
        Fit();
        QFile old(File("page.png"));
        EXPECT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old");
        WorkProgress::SetPatience(0);
    }
    ~PictureCancel() override { WorkProgress::SetPatience(700); }
    /// Saves the page; the work is cancelled once it has come that far.
    QString Write(int cancelAt_percent) {
        PrintDialog print(Map(), "Map", "", window.get());
        print.show();
        Settle();
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, [&] {
            for (QWidget* top : QApplication::allWidgets()) {
                auto* dialog = qobject_cast<QProgressDialog*>(top);
                if (dialog == nullptr || !dialog->isVisible()) continue;
                reached = (std::max)(reached, dialog->value());
                if (dialog->value() >= cancelAt_percent) dialog->cancel();
            }
        });
        hand.start(0);
        return print.WritePng(File("page.png"));
    }
    QByteArray Stands() {
        QFile file(File("page.png"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.read(1000);
    }
    int reached = -1;
};

TEST_F(PictureCancel, BeforeTheMapIsDrawn) {
    EXPECT_EQ(Write(0), "") << "who cancelled knows it";
    EXPECT_EQ(Stands(), "old");
}

TEST_F(PictureCancel, WhileThePictureIsWritten) {
    EXPECT_EQ(Write(31), "");
    EXPECT_GE(reached, 31);
    EXPECT_EQ(Stands(), "old");
}

TEST_F(PictureCancel, NobodyCancelsAndItStands) {
    EXPECT_EQ(Write(101), "");
    EXPECT_GT(reached, 30);
    EXPECT_TRUE(Stands().startsWith("\x89PNG"));
    EXPECT_FALSE(QImage(File("page.png")).isNull());
}

}  // namespace
}  // namespace orvane
