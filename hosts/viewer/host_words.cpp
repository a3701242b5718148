#include "hosts/viewer/host_words.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace orvane {

namespace {

// Listed for the translators: the program looks them up by what the lines turn out to be.
[[maybe_unused]] constexpr const char* kKnown[] = {
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 sub layers"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 sub layer numbers of items"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 item tags beyond -%2 to %3, which come back as others"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 text sizes above %2, which come back as others"),
    QT_TRANSLATE_NOOP("HostWords",
                      "not kept by an archive: %1 text styles or positions beyond -%2 to %3, which come back as others"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 origins of blocks without a path, whose items come back moved"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 paths and origins of blocks whose code has no layer"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 blocks without items"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 overlay figures"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 grids of mesh items: version %2 has none"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 second colours of layers: version %2 has none"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an archive: %1 image positions of layers: version %2 has none"),
    QT_TRANSLATE_NOOP("HostWords", "text keeps six decimals of a coordinate, and of a use flag only whether it is %1"),
    QT_TRANSLATE_NOOP("HostWords", "text of version %1 is never read back; %2 is"),
    QT_TRANSLATE_NOOP("HostWords", "text is read only with the .Ovi file of its version beside it: keep the files together"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 features without geometry"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 lines of one place or polygons without area"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 shapes with coordinates that do not lie where the map reaches"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 geometries of a kind that the map does not hold, or broken ones"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 holes or parts without area, of polygons that were taken"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 layers without items"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 items of one place or without points"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 polygons without a closed ring of some area"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 items of text layers without a text"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 mesh items without a grid"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 items with coordinates that are no place"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 items of layers of no known type"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 rings without area, of polygons that were written"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 loose ends of polygons behind their last closed ring"),
    QT_TRANSLATE_NOOP("HostWords", "left out: %1 mesh cells without area or place"),
    QT_TRANSLATE_NOOP("HostWords", "another program is saving it"),
    QT_TRANSLATE_NOOP("HostWords", "the map has no layers or no data to save"),
    QT_TRANSLATE_NOOP("HostWords", "the map has more data than an archive can hold"),
    QT_TRANSLATE_NOOP("HostWords", "the new files cannot be put in their place"),
    QT_TRANSLATE_NOOP("HostWords", "cancelled"),
};

}  // namespace

QString Words(const std::string& line) {
    static const QRegularExpression number("\\d+(?:\\.\\d+)?");
    const QString whole = QString::fromStdString(line);
    QString pattern;
    QStringList numbers;
    qsizetype done = 0;
    for (auto matches = number.globalMatch(whole); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        numbers << match.captured();
        pattern += whole.mid(done, match.capturedStart() - done) + '%' + QString::number(numbers.size());
        done = match.capturedEnd();
    }
    pattern += whole.mid(done);
    const QString translated = QCoreApplication::translate("HostWords", pattern.toUtf8().constData());
    if (translated == pattern) return whole;
    QString text = translated;
    for (const QString& value : numbers) text = text.arg(value);
    return text;
}

}  // namespace orvane
