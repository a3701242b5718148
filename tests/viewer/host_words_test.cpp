// Every line that the code below the viewer can say is known in Japanese: also the next one that somebody writes there.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include "hosts/viewer/host_words.h"
#include "hosts/viewer/language.h"

namespace orvane {
namespace {

class HostWords : public ::testing::Test {
protected:
    ~HostWords() override { InstallLanguage("en"); }
    static bool IsJapanese(const QString& text) {
        return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x3000; });
    }
    static QString Root() { return QStringLiteral(ORVANE_SAMPLES "/.."); }
    static QByteArray Read(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    /// Numbers, and what stands for them or for a name, are all one.
    static QString Plain(QString text) {
        static const QRegularExpression number("-?(?:\\d+(?:\\.\\d+)?|%\\d+)");
        return text.replace(number, "#").simplified();
    }
    /// The sentences of the context that have a Japanese one, in one text.
    static QString KnownSentences() {
        QString known;
        QXmlStreamReader reader(Read(Root() + "/translations/viewer_ja.ts"));
        QString context, source;
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement) continue;
            if (reader.name() == QStringLiteral("name")) context = reader.readElementText();
            if (reader.name() == QStringLiteral("source")) source = reader.readElementText();
            if (reader.name() == QStringLiteral("translation") && context == "HostWords" && IsJapanese(reader.readElementText()))
                known += Plain(source) + '\n';
        }
        return known;
    }
    /// The literals of a source that read like parts of a sentence: two words, or one at the edge of a longer text.
    static QStringList Sentences(const QString& path) {
        static const QRegularExpression literal("\"((?:[^\"\\\\\\n]|\\\\.)*)\"");
        static const QRegularExpression comment("//[^\\n]*|#include[^\\n]*");
        static const QRegularExpression sentence("[A-Za-z]{2,} +[a-z]|[a-z]{2,} $|^,? [a-z]{2,}");
        QString text = QString::fromUtf8(Read(path));
        text.remove(comment);
        text.replace(QRegularExpression("\"\\s*\\n\\s*\""), {});  // one literal in two lines
        QStringList found;
        for (auto matches = literal.globalMatch(text); matches.hasNext();) {
            QString words = matches.next().captured(1);
            words.replace("\\\"", "\"");
            if (words.contains(sentence)) found << words;
        }
        return found;
    }
};

TEST_F(HostWords, EveryLiteralBelowTheViewerIsPartOfASentenceWithAJapaneseOne) {
    // What the viewer never shows: tables and JSON of the command line, its places typed as text, calls of the control, and why
    // the raster library is missing, of which the control itself tells.
    const QStringList otherHosts{"map_facts.cpp", "coordinate_forms.cpp", "automation.cpp", "progress_bar.cpp",
                                 "raster_library.cpp"};
    const QStringList tables{" features in ", ", no coordinate system\\n", "mesh frame, ", " sheets, ", "zone ",
                             // counted by the viewer itself, for the layers that have data
                             "switches of layers whose items may become active", "switches of layers that may be edited"};
    const QString known = KnownSentences();
    int looked = 0;
    const auto look = [&](const QString& folder, const QStringList& names) {
        for (const QString& name : QDir(Root() + folder).entryList(names, QDir::Files)) {
            if (otherHosts.contains(name)) continue;
            for (const QString& words : Sentences(Root() + folder + '/' + name)) {
                if (tables.contains(words)) continue;
                ++looked;
                QString part = Plain(words);
                // Ends of a sentence are put together by what may come: "error: " before it, a reason behind it.
                part.remove(QRegularExpression("^(?:error: |warning: |[;:,] )|[:;,]$"));
                EXPECT_TRUE(known.contains(part)) << name.toStdString() << ": no Japanese for \"" << words.toStdString() << '"';
            }
        }
    };
    look("/hosts/common", {"*.cpp", "*.h"});
    look("/files", {"archive_check*", "archive_findings.h", "archive_save_walk.h"});
    EXPECT_GT(looked, 80);
}

TEST_F(HostWords, LinesAreInJapaneseAsTheyTurnOutToBe) {
    InstallLanguage("ja");
    for (const char* line :
         {"cannot take over /x/.a.ov-lock: Permission denied", "what an earlier save left behind in /x cannot be cleared away: x",
          "the new files cannot be put in their place: x", "it holds 3 items where the map has 4",
          "its items have other codes or mesh numbers than the map's", "a file of no use cannot be removed",
          "another program is just saving /x; try again",
          "/x/a.Ovb was saved by another program while it was read; open it again",
          "/x/a.Ovb cannot be read into a map; another program is saving it",
          "error: /x/a.Ovb does not begin with the header of its kind",
          "warning: what a save of /x left behind in /y cannot be cleared away: z",
          "error: the look through the archive did not come to its end", "no such layer: X", "it could not be looked through",
          "/x/a.Ovb was of the former set and is gone",
          "it cannot be looked through; the archive that was there will be brought back at its next opening",
          "cannot write /x/a.Ovb: the system did not take all of it",
          "item 7 of code \"ROAD\", mesh number 523, has a line break in its text, which text data cannot hold; save it as .Ovb",
          "block 3 of the index claims 4 items from number 5 on, where 6 of 10 are taken"}) {
        const QString said = Words(line);
        EXPECT_TRUE(IsJapanese(said)) << said.toStdString();
    }
    EXPECT_EQ(Words("error: /x/a 10%2.Ovl is missing (and 12 more like it)"),
              QString::fromUtf8("エラー：/x/a 10%2.Ovl がありません（ほかに同様のもの 12 件）"));
    EXPECT_EQ(Words("the index has item 3 at offset 44, but it stands at 45"),
              QString::fromUtf8("索引では図形 3 の位置が 44 ですが、実際は 45 です"));
    EXPECT_EQ(Words("/x/a.Ovb is missing; another program is saving it").count(QString::fromUtf8("。")), 1);
    InstallLanguage("en");
    for (const char* line : {"error: /x/a 10%2.Ovl is missing (and 12 more like it)", "a; b", "warning: x; save it as .Ovb",
                             "it holds 3 items where the map has 4"}) {
        EXPECT_EQ(Words(line), line);
    }
}

}  // namespace
}  // namespace orvane
