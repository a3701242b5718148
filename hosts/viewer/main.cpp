// orvane4_viewer: a window with the map.
#include <QApplication>
#include <QCommandLineParser>
#include <QToolTip>
#include <iostream>
#include <optional>
#include <utility>

#include "hosts/viewer/run_viewer.h"

namespace {

// A number that an option was given; false when it was given something else.
bool Number(const QCommandLineParser& parser, const QString& option, std::optional<int>& out) {
    if (!parser.isSet(option)) return true;
    bool good = false;
    out = parser.value(option).toInt(&good);
    if (!good) std::cerr << "--" << option.toStdString() << " needs a number\n";
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("orvane4_viewer");
    // A desktop without a theme gives hints black letters on black.
    QPalette hints = QToolTip::palette();
    hints.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFF, 0xDC));
    hints.setColor(QPalette::ToolTipText, Qt::black);
    QToolTip::setPalette(hints);
    QApplication::setApplicationVersion("0.1.0");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Shows vector data as a map in metres of a plane rectangular zone, or an archive of such a map.\n\n"
        "Keys: Home or F fits all data, + and - zoom, the arrows scroll, with Shift by nearly a window, R drags a rectangle to "
        "zoom into, E shows the events, Ctrl+O opens a file, Ctrl+Z takes an edit back. Holding the right button scrolls towards "
        "the mouse. Every key is in the menus.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(
        {"zone", "Plane rectangular zone, 1 to 19; without it the nearest one. Archives do not say in which they are.", "zone"});
    parser.addOption(
        {"assume", "EPSG code of the coordinate system of sources that name none; of archives that of a plane system.", "code"});
    parser.addOption({"by", "One layer for each value of this attribute.", "attribute"});
    parser.addOption({"credit", "Whose data it is, shown below the map; archives do not say it themselves.", "text"});
    parser.addOption({"language", "en or ja, in place of the system's and of the one chosen in the menu.", "language"});
    parser.addPositionalArgument("file", "Vector files that GDAL reads, or one archive (.Ovb or .Ovt).", "[file...]");
    parser.process(app);

    orvane::ViewerStart start;
    start.options.byField = parser.value("by").toStdString();
    if (!Number(parser, "zone", start.options.zone) || !Number(parser, "assume", start.options.assumeEpsg)) return 2;
    start.files = parser.positionalArguments();
    start.language = parser.value("language");
    start.credit = parser.value("credit");
    return orvane::RunViewer(std::move(start));
}
