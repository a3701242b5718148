// What the operator is asked about files.
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

#include "control/ctrl.h"
#include "hosts/common/export_map.h"
#include "hosts/common/import_map.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/map_files.h"
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
            return MapFiles::tr("Give the file its coordinate system (a .prj file), or start the viewer with --assume CODE.");
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
    if (!result.Ok()) lines << Words(result.error) << Advice(result.fault);
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
    const ImportResult result = Load(sources, options);
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
    const ImportResult result = Import(files, {});
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

bool MapFiles::SaveWithQuestions(const QString& path, const std::string& version) {
    const QStringList losses = Losses(path, version);
    if (!losses.isEmpty() && losses != toldLosses_) {
        QMessageBox box(QMessageBox::Warning, "ORVANE4",
                        tr("An archive does not keep everything of this map. Save it all the same?"),
                        QMessageBox::Save | QMessageBox::Cancel, &window_);
        QStringList shown;
        for (const QString& line : losses) shown << Words(line.toStdString());
        box.setInformativeText(shown.join('\n'));
        box.setTextFormat(Qt::PlainText);
        if (box.exec() != QMessageBox::Save) return false;
        toldLosses_ = losses;
    }
    const SavedArchive result = Save(path, version);
    if (result.saved) return true;
    if (result.error == "cancelled") return false;
    Tell(true, {tr("The map was not saved, and what stood on the disk stands there still."), Words(result.error),
                tr("Try again, or save it under another name or in another folder.")});
    return false;
}

bool MapFiles::AskSave() { return path_.isEmpty() ? AskSaveAs() : SaveWithQuestions(path_, version_); }

bool MapFiles::AskSaveAs() {
    const QString binary = Filter(tr("Archive"), "*.Ovb");
    const QString binary100 = Filter(tr("Archive, version 1.00"), "*.Ovb");
    const QString textual = Filter(tr("Archive as text"), "*.Ovt");
    QString chosen = binary;
    const QString start = path_.isEmpty() ? LastFolder() + '/' + QFileInfo(name_).completeBaseName() + ".Ovb" : path_;
    QString path =
        QFileDialog::getSaveFileName(&window_, tr("Save the map"), start, binary + ";;" + binary100 + ";;" + textual, &chosen);
    if (path.isEmpty()) return false;
    if (!IsArchiveName(path.toStdString())) {
        path += chosen == textual ? ".Ovt" : ".Ovb";
        // The question whether to replace was about the name as it was typed.
        if (ArchiveStands(QFile::encodeName(path).toStdString()) &&
            QMessageBox::question(&window_, "ORVANE4", tr("%1 exists already. Replace it?").arg(path)) != QMessageBox::Yes) {
            return false;
        }
    }
    NoteFolderOf(path);
    return SaveWithQuestions(path, chosen == binary100 ? "1.00" : "");
}

void MapFiles::AskWriteExchange() {
    const QString named = Filter(tr("Exchange text"), "*.txt");
    const QString plain = Filter(tr("Exchange text, version 1.00"), "*.txt");
    QString chosen = named;
    QString path = QFileDialog::getSaveFileName(&window_, tr("Write the exchange text"), LastFolder() + "/map.txt",
                                                named + ";;" + plain, &chosen);
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += ".txt";
    NoteFolderOf(path);
    const QString error = WriteExchange(path, chosen == plain ? "1.00" : "1.01");
    if (!error.isEmpty()) {
        Tell(true, {error, tr("Choose another folder, or make room there, and try again.")});
    } else {
        Tell(false, {tr("The text is written. Not in it: grids of meshes, second colours and image positions.")});
    }
}

void MapFiles::AskExport() {
    QStringList filters;
    for (const ExportFormatFacts& facts : ExportFormats()) {
        filters << Filter(QString::fromLatin1(facts.name), '*' + QString::fromLatin1(facts.extensions.front().data()));
    }
    QString chosen = filters.front();
    QString path =
        QFileDialog::getSaveFileName(&window_, tr("Export the map"), LastFolder() + "/map.gpkg", filters.join(";;"), &chosen);
    if (path.isEmpty()) return;
    NoteFolderOf(path);
    ExportOptions options;
    for (const ExportFormatFacts& facts : ExportFormats()) {
        if (chosen.startsWith(QString::fromLatin1(facts.name) + " (")) options.format = facts.format;
    }
    // A format of one layer a file takes a folder for several.
    if (const auto byName = ExportFormatByExtension(path.toStdString())) options.format = byName;
    const CDigMem& store = map_.Control().store;
    if (options.format && !FactsOf(*options.format).manyLayers && store.LayerCnt() > 1) {
        path = QFileInfo(path).absolutePath() + '/' + QFileInfo(path).completeBaseName();
    }
    options.path = QFile::encodeName(path).toStdString();
    options.overwrite = true;
    const ExportResult result = Export(options);
    if (result.fault == ExportFault::Cancelled) return;
    QStringList lines;
    if (!result.Ok()) lines << Words(result.error) << tr("Nothing was written, and what stood there stands there still.");
    for (const std::string& line : LeftOutLines(result.summary.leftOut)) lines << Words(line);
    for (const std::string& line : result.summary.notes) lines << Words(line);
    Tell(!result.Ok(), lines);
}

void MapFiles::AskNew() {
    if (MayLeaveMap()) New();
}

void MapFiles::AskSymbols() {
    const QString file = QFileDialog::getOpenFileName(&window_, tr("Read symbols"), LastFolder());
    if (file.isEmpty()) return;
    NoteFolderOf(file);
    map_.Call("OrvGetSymbolData", {file});
    map_.Call("OrvReDraw");
    if (map_.Control().store.symbols.empty()) Tell(true, {tr("No symbol was found. Choose a symbol file.")});
}

void MapFiles::AskLineTypes() {
    const QString file = QFileDialog::getOpenFileName(&window_, tr("Read line types"), LastFolder());
    if (file.isEmpty()) return;
    NoteFolderOf(file);
    const int count = map_.Call("OrvReadLineTypeData", {file}).toInt();
    map_.Call("OrvReDraw");
    if (count == 0) Tell(true, {tr("No line type was found. Choose a line type file.")});
    emit Added();
}

}  // namespace orvane
