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
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 texts with commas, which come back without them"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "not kept by an exchange text: %1 origins of blocks that are no whole numbers, whose features come back moved"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "not kept by an exchange text: %1 fonts of texts: the text without its last character comes back for a font"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 heights of texts"),
    QT_TRANSLATE_NOOP("HostWords",
                      "not kept by an exchange text: %1 features with more than six decimals, which come back rounded"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 grids of mesh features"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "not kept by an exchange text: %1 numbers of sub layers of features that share their number, or numbers below %2"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 paths of blocks with commas, which come back cut"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 names of layers"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 images of point layers"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 second colours of layers"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 positions of images of layers"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 second colours or positions of images of sub layers"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 sub layers that share their number"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 names of sub layers: version %2 has none"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 images of sub layers: version %2 has none"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 image names of sub layers with commas, which come back cut"),
    QT_TRANSLATE_NOOP("HostWords", "not kept by an exchange text: %1 overlay figures"),
    QT_TRANSLATE_NOOP("HostWords", "change that, or save the map as .Ovb"),
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
    QT_TRANSLATE_NOOP("HostWords", "another program has saved it since"),
    QT_TRANSLATE_NOOP("HostWords", "the map has no layers or no data to save"),
    QT_TRANSLATE_NOOP("HostWords", "the map has more data than an archive can hold"),
    QT_TRANSLATE_NOOP("HostWords", "its files are links that do not lead to one archive"),
    QT_TRANSLATE_NOOP("HostWords", "the new files cannot be put in their place"),
    QT_TRANSLATE_NOOP("HostWords", "cancelled"),
    QT_TRANSLATE_NOOP("HostWords", "it could not be looked through"),
    QT_TRANSLATE_NOOP("HostWords", "its items have other codes or mesh numbers than the map's"),
    QT_TRANSLATE_NOOP("HostWords", "a file of no use cannot be removed"),
    QT_TRANSLATE_NOOP("HostWords", "the look through the archive did not come to its end"),
    QT_TRANSLATE_NOOP("HostWords", "the archive that was there will be brought back at its next opening"),
    QT_TRANSLATE_NOOP("HostWords", "save it as .Ovb"),
    QT_TRANSLATE_NOOP("HostWords", "it cannot be read"),
    QT_TRANSLATE_NOOP("HostWords", "the items of mesh number %1 have no code, which shifts the fields of text data"),
    QT_TRANSLATE_NOOP("HostWords", "the items of mesh number -%1 have no code, which shifts the fields of text data"),
    QT_TRANSLATE_NOOP("HostWords", "no items: a read answers false, though layers come in"),
    QT_TRANSLATE_NOOP("HostWords", "text of version %1 can be written, but is never read back"),
    QT_TRANSLATE_NOOP("HostWords", "a layer record has no code: a read drops it"),
    QT_TRANSLATE_NOOP("HostWords", "%1 layers are more than a map can have"),
    QT_TRANSLATE_NOOP("HostWords", "%1 blocks are more than a map can have"),
    QT_TRANSLATE_NOOP("HostWords", "block %1 of the index claims %2 items from number %3 on, where %4 of %5 are taken"),
    QT_TRANSLATE_NOOP("HostWords", "the blocks of the index end at item %1 of %2"),
    QT_TRANSLATE_NOOP("HostWords", "block %1 of the index has bounds that are no numbers: no area selects it"),
    QT_TRANSLATE_NOOP("HostWords", "block %1 of the index has bounds that do not hold its items: a read by area may miss them"),
    QT_TRANSLATE_NOOP("HostWords", "the index cannot be read at its item %1"),
    QT_TRANSLATE_NOOP("HostWords", "the index has item %1 at offset %2, but it stands at %3"),
    QT_TRANSLATE_NOOP("HostWords",
                      "the last %1 bytes of the data file, from offset %2, begin with no whole item: a read ends there"),
    QT_TRANSLATE_NOOP("HostWords", "the index lists %1 items, but the data file has %2"),
    QT_TRANSLATE_NOOP("HostWords", "line %1 of the data file is not what its place asks for: a read ends there"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "a read makes %1 blocks, one for each item of a code without a layer, and a map has room for %2: the read ends there"),
    QT_TRANSLATE_NOOP("HostWords", "there is no room for it"),
    QT_TRANSLATE_NOOP("HostWords", "there is no such file or folder"),
    QT_TRANSLATE_NOOP("HostWords", "it cannot be read"),
    QT_TRANSLATE_NOOP("HostWords", "it lies nowhere"),
    QT_TRANSLATE_NOOP("HostWords", "it took too long"),
    QT_TRANSLATE_NOOP("HostWords", "its file has changed"),
    QT_TRANSLATE_NOOP("HostWords", "too many images are open"),
    QT_TRANSLATE_NOOP("HostWords", "the reader of images cannot be started"),
    QT_TRANSLATE_NOOP("HostWords", "too much of it would have to be decoded for this scale: it, or its mask, has no overviews"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 layers where the map has %2"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 blocks where the map has %2"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 items where the map has %2"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 points where the map has %2"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 texts where the map has %2"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 grids where the map has %2"),
    QT_TRANSLATE_NOOP("HostWords", "it holds %1 paths where the map has %2"),
};

// These have names, or words of the system, in the places of %1 and on; one with more of the line spelled out comes first.
constexpr const char* kWithNames[] = {
    QT_TRANSLATE_NOOP("HostWords", "the first of these texts is of feature %1 in layer \"%2\", group %3"),
    QT_TRANSLATE_NOOP("HostWords", "layer \"%1\" has a comma or a line break in its code, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "layer \"%1\" has a line break in the name of an image, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "layer \"%1\" has a comma or a line break in its name, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "sub layer %1 of layer \"%2\" has a comma or a line break in its name, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "sub layer %1 of layer \"%2\" has a line break or a quote and a comma in the name of an image, which an "
                      "exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "group %1 has a layer without a code, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "layer \"%1\" is of no known type, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "group %1 of layer \"%2\" is there twice, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "group %1 of layer \"%2\" has a line break in its path, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "feature %1 of layer \"%2\", group %3, has a coordinate that is no number, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "feature %1 of layer \"%2\", group %3, has a text at a place that is no number, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "feature %1 of layer \"%2\", group %3, has a text with an angle that is no number, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "feature %1 of layer \"%2\", group %3, has a line break in its text, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "feature %1 of layer \"%2\", group %3, has a byte 0 in its text, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "feature %1 of layer \"%2\", group %3, has a line break in its font name, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "feature %1 of layer \"%2\", group %3, has a byte 0 in its font name, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "feature %1 of layer \"%2\", group %3, has a sub layer that is not there, which an exchange text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "feature %1 of layer \"%2\", group %3, has a quote and a comma behind it in its text, which an exchange "
                      "text cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "feature %1 of layer \"%2\", group %3, has a quote and a comma behind it in its font name, which an exchange "
        "text cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "the library %1 needs the program %2, which is not there or cannot be run"),
    QT_TRANSLATE_NOOP("HostWords", "the library %1 was built for another version"),
    QT_TRANSLATE_NOOP("HostWords", "the library %1 cannot be loaded: %2"),
    QT_TRANSLATE_NOOP("HostWords", "they need a library that is not there; it was looked for at %1"),
    QT_TRANSLATE_NOOP("HostWords", "%1 was of the former set and is gone"),
    QT_TRANSLATE_NOOP("HostWords", "no such version of an archive: %1"),
    QT_TRANSLATE_NOOP("HostWords", "cannot take over %1: %2"),
    QT_TRANSLATE_NOOP("HostWords", "cannot take over %1"),
    QT_TRANSLATE_NOOP("HostWords", "what an earlier save left behind in %1 cannot be cleared away: %2"),
    QT_TRANSLATE_NOOP("HostWords", "what an earlier save left behind in %1 cannot be cleared away"),
    QT_TRANSLATE_NOOP("HostWords", "what a save of %1 left behind in %2 cannot be cleared away: %3"),
    QT_TRANSLATE_NOOP("HostWords", "what a save of %1 left behind in %2 cannot be cleared away"),
    QT_TRANSLATE_NOOP("HostWords", "the new files cannot be put in their place: %1"),
    QT_TRANSLATE_NOOP("HostWords", "%1 is not the name of an archive, which ends in .Ovb or .Ovt"),
    QT_TRANSLATE_NOOP("HostWords", "another program is just saving %1; try again"),
    QT_TRANSLATE_NOOP("HostWords", "%1 is saved by another program again and again while it is looked at"),
    QT_TRANSLATE_NOOP("HostWords", "%1 was saved by another program while it was read; open it again"),
    QT_TRANSLATE_NOOP("HostWords", "%1 cannot be read into a map"),
    QT_TRANSLATE_NOOP("HostWords", "no such layer: %1"),
    QT_TRANSLATE_NOOP("HostWords", "code \"%1\" holds a comma, which shifts the fields of text data"),
    QT_TRANSLATE_NOOP("HostWords", "code \"%1\" holds a line break, which shifts the fields of text data"),
    QT_TRANSLATE_NOOP("HostWords", "cannot write %1: the system did not take all of it"),
    QT_TRANSLATE_NOOP("HostWords", "%1 is missing"),
    QT_TRANSLATE_NOOP("HostWords", "%1 cannot be opened"),
    QT_TRANSLATE_NOOP("HostWords", "%1 does not begin with the header of its kind"),
    QT_TRANSLATE_NOOP("HostWords", "%1 is not of version %2, as the data file is"),
    QT_TRANSLATE_NOOP("HostWords", "%1 tells no version that is known"),
    QT_TRANSLATE_NOOP("HostWords", "%1 cannot be read to its end"),
    QT_TRANSLATE_NOOP("HostWords", "%1 has %2 bytes behind its last whole record"),
    QT_TRANSLATE_NOOP("HostWords", "layer \"%1\" stands more than once: a read takes the first"),
    QT_TRANSLATE_NOOP("HostWords", "code \"%1\" has items but no layer: each of them will make a block of its own"),
    QT_TRANSLATE_NOOP("HostWords", "%1 has no layer"),
    QT_TRANSLATE_NOOP("HostWords", "%1 ends before its counts"),
    QT_TRANSLATE_NOOP("HostWords", "%1 cannot hold the %2 blocks and %3 items that it counts"),
    QT_TRANSLATE_NOOP("HostWords", "path and origin of code \"%1\", mesh number %2, are of no place: the origin is no number"),
    QT_TRANSLATE_NOOP("HostWords", "path and origin of code \"%1\", mesh number %2, stand more than once: a read takes the last"),
    QT_TRANSLATE_NOOP("HostWords", "path and origin of code \"%1\", mesh number %2, belong to no item: a read drops them"),
    QT_TRANSLATE_NOOP("HostWords", "path and origin of code \"%1\", mesh number %2, belong to no layer: a read drops them"),
    QT_TRANSLATE_NOOP(
        "HostWords", "item %1 is of code \"%2\", mesh number %3, but the index has it in a block of code \"%4\", mesh number %5"),
    QT_TRANSLATE_NOOP("HostWords", "the index gives item %1 the rectangle (%2), but it has (%3)"),
    QT_TRANSLATE_NOOP("HostWords",
                      "item %1 of code \"%2\", mesh number %3, has a coordinate that is no number, which text data cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "item %1 of code \"%2\", mesh number %3, has a text at a place that is no number, which text data cannot hold"),
    QT_TRANSLATE_NOOP(
        "HostWords",
        "item %1 of code \"%2\", mesh number %3, has a text with an angle that is no number, which text data cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "item %1 of code \"%2\", mesh number %3, has a line break in its text, which text data cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "item %1 of code \"%2\", mesh number %3, has a byte 0 in its text, which text data cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "item %1 of code \"%2\", mesh number %3, has a line break in its font name, which text data cannot hold"),
    QT_TRANSLATE_NOOP("HostWords",
                      "item %1 of code \"%2\", mesh number %3, has a byte 0 in its font name, which text data cannot hold"),
    QT_TRANSLATE_NOOP("HostWords", "%1 is in %2, which has no plane system of its own; it goes into that of %3."),
    QT_TRANSLATE_NOOP("HostWords", "%1 is on the datum %2; it goes into the plane system of the first source, on %3."),
    QT_TRANSLATE_NOOP("HostWords", "%1 is on the datum %2; it goes into the plane system that was named, on %3."),
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
    QT_TRANSLATE_NOOP("HostWords", "%1 is a device or a pipe"),
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

/// The line in the operator's language where it is known, else an empty text.
QString WholeWords(const QString& whole) {
    static const QRegularExpression number("\\d+(?:\\.\\d+)?");
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
    if (translated == pattern) return WithNames(whole);
    QString text = translated;
    // From the last one down, as the tenth begins like the first.
    for (qsizetype i = numbers.size(); i > 0; --i) text.replace('%' + QString::number(i), numbers[i - 1]);
    return text;
}

QString LineWords(const QString& whole) {
    const QString error = QStringLiteral("error: ");
    const QString warning = QStringLiteral("warning: ");
    if (whole.startsWith(error))
        return QCoreApplication::translate("HostWords", "error: %1").arg(LineWords(whole.mid(error.size())));
    if (whole.startsWith(warning))
        return QCoreApplication::translate("HostWords", "warning: %1").arg(LineWords(whole.mid(warning.size())));
    static const QRegularExpression more("^(.*) \\(and (\\d+) more like it\\)$");
    if (const QRegularExpressionMatch match = more.match(whole); match.hasMatch()) {
        const QString text = QCoreApplication::translate("HostWords", "%1 (and %2 more like it)");
        return text.arg(LineWords(match.captured(1)), match.captured(2));
    }
    // What comes on top is told behind: a name before it may end in anything.
    const QString mapIsGone = QCoreApplication::translate("orvane::MapFiles", "; the map is empty now");
    if (whole.size() > mapIsGone.size() && whole.endsWith(mapIsGone))
        return LineWords(whole.chopped(mapIsGone.size())) + mapIsGone;
    for (qsizetype at = whole.indexOf("; "); at > 0; at = whole.indexOf("; ", at + 1)) {
        const QString tail = WholeWords(whole.mid(at + 2));
        if (!tail.isEmpty()) return QCoreApplication::translate("HostWords", "%1; %2").arg(LineWords(whole.left(at)), tail);
    }
    const QString known = WholeWords(whole);
    return known.isEmpty() ? whole : known;
}

}  // namespace

QString Words(const std::string& line) { return LineWords(QString::fromStdString(line)); }

}  // namespace orvane
