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
    QT_TRANSLATE_NOOP("HostWords", "its files are links that do not lead to one archive"),
    QT_TRANSLATE_NOOP("HostWords", "the new files cannot be put in their place"),
    QT_TRANSLATE_NOOP("HostWords", "cancelled"),
};

// These have names, or words of the system, in the places of %1 and on; one with more of the line spelled out comes first.
constexpr const char* kWithNames[] = {
    QT_TRANSLATE_NOOP("HostWords", "%1 is in %2, which has no plane system of its own; it goes into that of %3."),
    QT_TRANSLATE_NOOP("HostWords", "%1 is on the datum %2; it goes into the plane system of the first source, on %3."),
    QT_TRANSLATE_NOOP("HostWords", "Zone %1 was taken because %2 is in it."),
    QT_TRANSLATE_NOOP("HostWords", "Zone %1 was taken: its origin is nearest to the middle of the data."),
    QT_TRANSLATE_NOOP("HostWords",
                      "Zone 19 has its origin at latitude 28 in this system and at 26 in EPSG:%1, in which the data now lies."),
    QT_TRANSLATE_NOOP("HostWords",
                      "Zone 19 has its origin at latitude 28 in this system and at 26 in EPSG:%1; coordinates that a change of "
                      "the map's frame has made are 2 degrees off."),
    QT_TRANSLATE_NOOP("HostWords", "%1 features have no value of %2; they are in a layer of their own."),
    QT_TRANSLATE_NOOP("HostWords", "layer %1 of %2 has no geometry and is left out."),
    QT_TRANSLATE_NOOP("HostWords", "Of layer %1 of %2 only the first geometry column is read."),
    QT_TRANSLATE_NOOP("HostWords", "Some layer names hold characters that code page 932 lacks; they stand as 〓 or '_'."),
    QT_TRANSLATE_NOOP("HostWords",
                      "No coordinate system is named: readers of GeoJSON will take the metres for longitude and latitude."),
    QT_TRANSLATE_NOOP("HostWords", "%1 texts were cut to 254 bytes, which is all that a Shapefile holds."),
    QT_TRANSLATE_NOOP("HostWords", "GDAL had more to say than is told here."),
    QT_TRANSLATE_NOOP("HostWords", "the data's middle does not lie in Japan; say which zone to take (--zone 1 to 19)"),
    QT_TRANSLATE_NOOP("HostWords", "no geometry in %1 could be stored"),
    QT_TRANSLATE_NOOP("HostWords", "no such file: %1"),
    QT_TRANSLATE_NOOP("HostWords", "cannot read layer %1 of %2"),
    QT_TRANSLATE_NOOP("HostWords", "cannot read %1: %2"),
    QT_TRANSLATE_NOOP("HostWords", "cannot write into the folder %1: %2"),
    QT_TRANSLATE_NOOP("HostWords", "cannot write into the folder %1"),
    QT_TRANSLATE_NOOP("HostWords", "cannot write %1: %2"),
    QT_TRANSLATE_NOOP("HostWords", "%1 is a folder"),
};

/// The line in the operator's language where it is one of those with names, else an empty text.
QString WithNames(const QString& line) {
    static const QRegularExpression place("%\\d");
    for (const char* known : kWithNames) {
        QString pattern;
        const QString text = QString::fromUtf8(known);
        const QStringList between = text.split(place);
        for (qsizetype i = 0; i < between.size(); ++i) {
            pattern += (i == 0 ? QString() : QStringLiteral("(.+?)")) + QRegularExpression::escape(between[i]);
        }
        const auto match = QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(line);
        if (!match.hasMatch()) continue;
        // All at once: a name may have a percent sign of its own.
        const QString translated = QCoreApplication::translate("HostWords", known);
        QString said;
        qsizetype done = 0;
        for (auto places = place.globalMatch(translated); places.hasNext();) {
            const QRegularExpressionMatch at = places.next();
            said += translated.mid(done, at.capturedStart() - done) + match.captured(at.captured().mid(1).toInt());
            done = at.capturedEnd();
        }
        return said + translated.mid(done);
    }
    return {};
}

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
    if (translated == pattern) {
        const QString named = WithNames(whole);
        return named.isEmpty() ? whole : named;
    }
    QString text = translated;
    for (const QString& value : numbers) text = text.arg(value);
    return text;
}

}  // namespace orvane
