// The tests of the viewer need an application object, and no display; ORVANE_TEST_PLATFORM names one to use all the same, and
// ORVANE_TEST_SCALE its device pixel ratio.
#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    const QByteArray platform = qgetenv("ORVANE_TEST_PLATFORM");
    qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? QByteArray("offscreen") : platform);
    qputenv("QT_SCALE_FACTOR", qgetenv("ORVANE_TEST_SCALE"));
    if (qgetenv("ORVANE_TEST_SCALE").isEmpty()) qunsetenv("QT_SCALE_FACTOR");
    testing::InitGoogleTest(&argc, argv);
    if (qgetenv("ORVANE_RASTER_SERVER").isEmpty()) qputenv("ORVANE_RASTER_SERVER", ORVANE_RASTER_SERVER_FILE);
    // The settings of whoever runs the tests are none of their business.
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
