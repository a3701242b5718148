// The tests of the widget need an application object, and no display unless ORVANE_TEST_PLATFORM names a platform that has one.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    const QByteArray platform = qgetenv("ORVANE_TEST_PLATFORM");
    qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? QByteArray("offscreen") : platform);
    // One test starts this program again on a screen of another scaling.
    if (qEnvironmentVariableIsSet("ORVANE_TEST_SCALE")) {
        qputenv("QT_SCALE_FACTOR", qgetenv("ORVANE_TEST_SCALE"));
    } else {
        qunsetenv("QT_SCALE_FACTOR");
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
