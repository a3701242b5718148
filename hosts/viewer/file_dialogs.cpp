// What the operator is asked about files.
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <set>

#include "control/ctrl.h"
#include "foreign/export_target.h"
#include "hosts/common/export_map.h"
#include "hosts/common/import_map.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/map_files.h"
#include "hosts/viewer/save_name.h"
#include "hosts/viewer/settings.h"

namespace orvane {

namespace {

QString Filter(const QString& name, const QString& patterns) { return name + " (" + patterns + ')'; }

const QString kArchives = "*.Ovb *.Ovt *.ovb *.ovt *.OVB *.OVT";
const QString kVectors = "*.geojson *.json *.shp *.gpkg *.gml *.kml *.fgb *.zip";
const QString kLegacy = "*.pnt *.arc *.pgn *.PNT *.ARC *.PGN";

/// What to do about a fault, a sentence.
QString Advice(ImportFault fault) {
    switch (fault) {
        case ImportFault::Missing:
            return MapFiles::tr("Look whether the file was moved or renamed, and open it from where it is.");
        case ImportFault::NoCoordinateSystem:
            return MapFiles::tr(
                "Give the file its coordinate system (a .prj file), or open it again and enter what is asked for.");
        case ImportFault::Shared:
            return MapFiles::tr("The map is unchanged. Remove that layer of the map first, or open the file alone.");
        case ImportFault::NoRoom:
            return MapFiles::tr("Open fewer files at once, or a part of them.");
        case ImportFault::Nothing:
            return MapFiles::tr("Choose a file that holds points, lines or areas.");
        case ImportFault::Unreadable:
            return MapFiles::tr(
                "The map that was there is unchanged unless it says otherwise; a copy of the file from a backup may "
                "be whole.");
        default:
            return {};
    }
}

/// What went wrong, in the operator's language: the lines of the readers are English, with names and reasons of the system.
QString Reason(ImportFault fault) {
    switch (fault) {
        case ImportFault::BadOption:
            return MapFiles::tr("These files cannot be read together or in that way.");
        case ImportFault::Missing:
            return MapFiles::tr("The file is not there or cannot be read.");
        case ImportFault::Unreadable:
            return MapFiles::tr("The file is none that can be read, or is damaged.");
        case ImportFault::NoCoordinateSystem:
            return MapFiles::tr("The file does not say what coordinate system it is in.");
        case ImportFault::NoSuchField:
            return MapFiles::tr("The file has no attribute of that name.");
        case ImportFault::Nothing:
            return MapFiles::tr("The file holds nothing that a map can show.");
        case ImportFault::Shared:
            return MapFiles::tr("The file has data of a layer and group that the map has already, and the two cannot be mixed.");
        case ImportFault::NoRoom:
            return MapFiles::tr("There is no room for that much data.");
        default:
            return {};
    }
}

QString Reason(ExportFault fault) {
    switch (fault) {
        case ExportFault::BadOption:
            return MapFiles::tr(
                "The map cannot be written under that name: the map was read from there, or it is the name of an "
                "archive.");
        case ExportFault::Exists:
            return MapFiles::tr("Something stands under that name that is not replaced.");
        case ExportFault::Nothing:
            return MapFiles::tr("The map has nothing to write.");
        case ExportFault::NotWritten:
            return MapFiles::tr("The files could not be written.");
        case ExportFault::Changed:
            return MapFiles::tr("The map changed while it was written.");
        case ExportFault::NoRoom:
            return MapFiles::tr("There is no memory to write the map.");
        default:
            return {};
    }
}

}  // namespace

void MapFiles::Tell(bool isError, const QStringList& lines) {
    if (lines.isEmpty()) return;
    QMessageBox box(isError ? QMessageBox::Warning : QMessageBox::Information, "ORVANE4", lines.join('\n'), QMessageBox::Ok,
                    &window_);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

namespace {

QStringList ResultLines(const ImportResult& result, bool withNotes) {
    QStringList lines;
    if (!result.Ok()) lines << Reason(result.fault) << Words(result.error) << Advice(result.fault);
    for (const std::string& line : LeftOutLines(result.summary.leftOut)) lines << Words(line);
    if (withNotes) {
        for (const std::string& line : result.summary.notes) lines << Words(line);
    }
    lines.removeAll(QString());
    return lines;
}

}  // namespace

void MapFiles::Open(const QStringList& sources, const ImportOptions& options) {
    if (!MayLeaveMap()) return;
    const ImportResult result = ReadAsking(true, options, [&](const ImportOptions& now) { return Load(sources, now); });
    if (result.fault == ImportFault::Cancelled) return;
    // What is wrong with an archive is more than a note on the way.
    Tell(!result.Ok(), ResultLines(result, KindOfSource(sources.front()) != SourceKind::Vector));
}

void MapFiles::AskOpen() {
    const QStringList files =
        QFileDialog::getOpenFileNames(&window_, tr("Open a map"), LastFolder(),
                                      Filter(tr("Maps and vector data"), kArchives + ' ' + kVectors + ' ' + kLegacy + " *.txt") +
                                          ";;" + Filter(tr("Archives"), kArchives) + ";;" +
                                          Filter(tr("Older map files"), kLegacy) + ";;" + Filter(tr("Exchange text"), "*.txt") +
                                          ";;" + Filter(tr("Vector data"), kVectors) + ";;" + Filter(tr("All files"), "*"));
    if (files.isEmpty()) return;
    NoteFolderOf(files.front());
    Open(files, {});
}

void MapFiles::AskOpenFolder() {
    const QString folder = QFileDialog::getExistingDirectory(&window_, tr("Open a folder of older map files"), LastFolder());
    if (!folder.isEmpty()) Open({folder}, {});
}

void MapFiles::AskImport() {
    const QStringList files =
        QFileDialog::getOpenFileNames(&window_, tr("Import into the map"), LastFolder(),
                                      Filter(tr("Vector data"), kVectors) + ";;" + Filter(tr("Older map files"), kLegacy) + ";;" +
                                          Filter(tr("Exchange text"), "*.txt") + ";;" + Filter(tr("Archives"), kArchives) + ";;" +
                                          Filter(tr("All files"), "*"));
    if (files.isEmpty()) return;
    NoteFolderOf(files.front());
    if (KindOfSources(files) == SourceKind::Vector &&
        !AskSystem(tr("The map does not say what plane system it is in. What is imported is to go into the same one."),
                   tr("not known: that of what is imported"), false))
        return;
    const bool asksZone = !place_.IsMeshMap() && place_.HomeZone() == 0;
    const ImportResult result = ReadAsking(asksZone, {}, [&](const ImportOptions& now) { return Import(files, now); });
    if (result.fault != ImportFault::Cancelled) Tell(!result.Ok(), ResultLines(result, true));
}

bool MapFiles::MayLeaveMap() {
    if (!history_.IsModified()) return true;
    QMessageBox box(QMessageBox::Question, "ORVANE4", tr("The map has changes that are not saved. Save them first?"),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    if (answer == QMessageBox::Discard) return true;
    return answer == QMessageBox::Save && AskSave();
}

bool MapFiles::MayReopen() {
    QStringList gone = Sources();
    gone.removeIf([](const QString& source) { return QFileInfo::exists(source); });
    if (gone.isEmpty()) return true;
    QMessageBox box(
        QMessageBox::Question, "ORVANE4",
        tr("%1 is not there any more, so that the map cannot be opened again from it. Save the map first?").arg(gone.front()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && AskSave());
}

bool MapFiles::MayLose(const QString& question, const QStringList& losses) {
    QMessageBox box(QMessageBox::Warning, "ORVANE4", question, QMessageBox::Save | QMessageBox::Cancel, &window_);
    QStringList shown;
    for (const QString& line : losses) shown << Words(line.toStdString());
    box.setInformativeText(shown.join('\n'));
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Save;
}

MapFiles::OverOld MapFiles::AskOverOld(const QString& why) {
    QMessageBox box(QMessageBox::Warning, "ORVANE4", why, QMessageBox::Save | QMessageBox::SaveAll | QMessageBox::Cancel,
                    &window_);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Save)->setText(tr("Save &over it"));
    box.button(QMessageBox::SaveAll)->setText(tr("Save under another &name…"));
    box.setDefaultButton(QMessageBox::SaveAll);
    const int answer = box.exec();
    if (answer == QMessageBox::Save) return OverOld::Replace;
    return answer == QMessageBox::SaveAll ? OverOld::OtherName : OverOld::Leave;
}

bool MapFiles::SaveWithQuestions(const QString& path, const std::string& version) {
    history_.CancelTool();  // what a tool shows is nothing of the map
    if (!partPlace_.empty() && PlaceOfSet(path) == partPlace_) {
        // The map may have been saved under another name since.
        const QString& shown = IsOwnSet(path) ? path_ : path;
        const OverOld answer = AskOverOld(
            tr("%1 could be read in part only. Saving over it loses what could not be read.").arg(QFileInfo(shown).fileName()));
        if (answer == OverOld::Leave) return false;
        if (answer == OverOld::OtherName) return AskSaveAs();
    }
    const QStringList losses = Losses(path, version);
    if (!losses.isEmpty() && losses != toldLosses_) {
        if (!MayLose(tr("An archive does not keep everything of this map. Save it all the same?"), losses)) return false;
        toldLosses_ = losses;
    }
    SavedArchive result = Save(path, version, Over::Own);
    if (result.others) {
        const OverOld answer = AskOverOld(
            tr("%1 was changed on the disk since this map was opened or saved here. Saving over it loses what was changed "
               "there.")
                .arg(QFileInfo(path_).fileName()));
        if (answer == OverOld::Leave) return false;
        if (answer == OverOld::OtherName) return AskSaveAs();
        result = Save(path, version);
    }
    if (result.saved) return true;
    if (result.error == "cancelled") return false;
    Tell(true, {tr("The map was not saved, and what stood on the disk stands there still."), Words(result.error),
                tr("Try again, or save it under another name or in another folder.")});
    return false;
}

bool MapFiles::AskSave() { return path_.isEmpty() ? AskSaveAs() : SaveWithQuestions(path_, version_); }

bool MapFiles::AskSaveAs() {
    constexpr std::size_t kOldVersion = 1;
    const std::vector<SaveForm> forms = {{Filter(tr("Archive"), "*.Ovb"), ".Ovb"},
                                         {Filter(tr("Archive, version 1.00"), "*.Ovb"), ".Ovb"},
                                         {Filter(tr("Archive as text"), "*.Ovt"), ".Ovt"}};
    const QString base = QFileInfo(name_).completeBaseName();
    const QString start = path_.isEmpty() ? LastFolder() + '/' + (base.isEmpty() ? "map" : base) + ".Ovb" : path_;
    const auto isArchive = [](const QString& path) { return IsArchiveName(path.toStdString()); };
    const std::optional<SaveName> name = AskSaveName(window_, tr("Save the map"), start, forms, isArchive);
    if (!name) return false;
    // The other form under the same name goes with the old set, and nobody asked about that.
    const bool otherStands = !QFileInfo::exists(name->path) && ArchiveStands(QFile::encodeName(name->path).toStdString());
    if (otherStands && !MayReplace(window_, QFileInfo(name->path).path() + '/' + QFileInfo(name->path).completeBaseName() + ".*"))
        return false;
    NoteFolderOf(name->path);
    return SaveWithQuestions(name->path, name->form == kOldVersion ? "1.00" : "");
}

void MapFiles::AskWriteExchange() {
    const std::vector<SaveForm> forms = {{Filter(tr("Exchange text"), "*.txt"), ".txt"},
                                         {Filter(tr("Exchange text, version 1.00"), "*.txt"), ".txt"}};
    // The name of an archive's file stays as it is, to be refused rather than written beside it under another.
    const auto isWhole = [](const QString& path) {
        return path.endsWith(".txt", Qt::CaseInsensitive) || HasArchiveExtension(path.toStdString());
    };
    const std::optional<SaveName> name =
        AskSaveName(window_, tr("Write the exchange text"), LastFolder() + "/map.txt", forms, isWhole);
    if (!name) return;
    NoteFolderOf(name->path);
    const std::string version = name->form == 1 ? "1.00" : "1.01";
    if (const QString why = WhyNoExchange(name->path, version); !why.isEmpty()) {
        return Tell(true, {tr("The exchange text was not written."), why});
    }
    const QStringList losses = ExchangeLosses(version);
    if (!losses.isEmpty() &&
        !MayLose(tr("An exchange text does not keep everything of this map. Write it all the same?"), losses))
        return;
    const QString error = WriteExchange(name->path, version);
    if (error == tr("cancelled")) return;
    if (!error.isEmpty()) Tell(true, {error, tr("Choose another folder, or make room there, and try again.")});
}

bool MapFiles::MayReplaceExport(const QString& typed, const ExportFormatFacts& facts, const QString& path) {
    QString stands;
    if (path != typed) {
        if (!QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) stands = path;
    } else if (!QFileInfo::exists(path)) {
        // What belongs to a file of that name goes with it.
        for (const std::string_view extension : facts.siblings) {
            const QFileInfo info(path);
            const QString sibling = info.path() + '/' + info.completeBaseName() + QString::fromLatin1(extension.data());
            if (stands.isEmpty() && QFileInfo::exists(sibling)) stands = sibling;
        }
    }
    return stands.isEmpty() || MayReplace(window_, stands);
}

void MapFiles::AskExport() {
    std::vector<SaveForm> forms;
    for (const ExportFormatFacts& facts : ExportFormats()) {
        const QString ending = QString::fromLatin1(facts.extensions.front().data());
        forms.push_back({Filter(QString::fromLatin1(facts.name), '*' + ending), ending});
    }
    const auto hasEnding = [](const QString& path) { return ExportFormatByExtension(path.toStdString()).has_value(); };
    const std::optional<SaveName> name = AskSaveName(window_, tr("Export the map"), LastFolder() + "/map.gpkg", forms, hasEnding);
    if (!name) return;
    NoteFolderOf(name->path);
    ExportOptions options;
    options.format = ExportFormatByExtension(name->path.toStdString());
    if (!options.format) return;
    // A format of one layer a file takes a folder for several.
    const ExportFormatFacts& facts = FactsOf(*options.format);
    QString path = name->path;
    std::set<std::int32_t> written;
    for (const DigIndex& entry : map_.Control().store.Index()) {
        if (map_.Control().store.Block(entry.block).datCnt > 0) written.insert(entry.layer);
    }
    if (!facts.manyLayers && written.size() > 1) {
        path = QFileInfo(path).absolutePath() + '/' + QFileInfo(path).completeBaseName();
    }
    if (!MayReplaceExport(name->path, facts, path)) return;
    if (!AskSystem(tr("The map does not say what plane system it is in, and what is exported should."),
                   tr("not known: the export names none"), true))
        return;
    options.path = QFile::encodeName(path).toStdString();
    options.overwrite = true;
    const ExportResult result = Export(options);
    if (result.fault == ExportFault::Cancelled) return;
    QStringList lines;
    if (!result.Ok())
        lines << Reason(result.fault) << Words(result.error)
              << tr("Nothing was written, and what stood there stands there still.");
    for (const std::string& line : LeftOutLines(result.summary.leftOut)) lines << Words(line);
    for (const std::string& line : result.summary.notes) lines << Words(line);
    Tell(!result.Ok(), lines);
}

void MapFiles::AskNew() {
    if (MayLeaveMap()) New();
}

}  // namespace orvane
