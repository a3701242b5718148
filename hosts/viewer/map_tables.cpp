// Symbols and line types. An init forgets them, so the files that the operator chose are kept and read again after each.
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <memory>
#include <optional>

#include "control/ctrl.h"
#include "files/line_type_file.h"
#include "files/symbol_file.h"
#include "hosts/viewer/map_files.h"
#include "hosts/viewer/settings.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

constexpr const char* kSymbolFile = "symbolFile";
constexpr const char* kLineTypeFile = "lineTypeFile";

/// Whether a line of the file is a stroke in numbers, of which the reader takes the leading digits. It takes words for zeros, and
/// so most tables for symbols.
bool HasStroke(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    static const QRegularExpression stroke(QStringLiteral("^,*\\s*[-+]?\\d+[^,]*(,+\\s*[-+]?\\d+[^,]*){4}"));
    constexpr qint64 kLongestLine_bytes = 4096;
    while (!file.atEnd()) {
        if (stroke.match(QString::fromLatin1(file.readLine(kLongestLine_bytes))).hasMatch()) return true;
    }
    return false;
}

// A read replaces the table whatever the file holds, so each file is read beside the map first.
std::unique_ptr<CDigMem> StoreToLookIn() {
    auto store = std::make_unique<CDigMem>();
    store->Init();
    return store;
}

bool HoldsSymbols(Files& files, const std::string& name, const QString& path) {
    const std::unique_ptr<CDigMem> look = StoreToLookIn();
    ReadSymbolData(*look, files, name);
    return !look->symbols.empty() && HasStroke(path);
}

bool HoldsLineTypes(Files& files, const std::string& name) {
    const std::unique_ptr<CDigMem> look = StoreToLookIn();
    return ReadLineTypeData(*look, files, name) > 0;
}

}  // namespace

bool MapFiles::ReadSymbols(const QString& path) {
    const std::optional<std::string> name = EncodeCp932(path.toStdString());
    if (!name || !HoldsSymbols(map_.Control().files(), *name, path)) return false;
    map_.Call("OrvGetSymbolData", {path});
    Settings().setValue(kSymbolFile, QFileInfo(path).absoluteFilePath());
    return true;
}

bool MapFiles::ReadLineTypes(const QString& path) {
    const std::optional<std::string> name = EncodeCp932(path.toStdString());
    if (!name || !HoldsLineTypes(map_.Control().files(), *name)) return false;
    map_.Call("OrvReadLineTypeData", {path});
    Settings().setValue(kLineTypeFile, QFileInfo(path).absoluteFilePath());
    return true;
}

QStringList MapFiles::ReadTables() {
    QStringList notes;
    const QString symbols = Settings().value(kSymbolFile).toString();
    if (!symbols.isEmpty() && !ReadSymbols(symbols))
        notes << tr("error: the symbols are not those of %1, which cannot be read any more; choose a symbol file").arg(symbols);
    const QString lineTypes = Settings().value(kLineTypeFile).toString();
    if (!lineTypes.isEmpty() && !ReadLineTypes(lineTypes)) {
        notes << tr("error: the line types are not those of %1, which cannot be read any more; choose a line type file")
                     .arg(lineTypes);
    }
    return notes;
}

void MapFiles::DropTables() {
    for (const char* key : {kSymbolFile, kLineTypeFile}) Settings().remove(key);
    map_.Call("OrvGetSymbolData", {QString()});  // no file is an empty table
    map_.Call("OrvReadLineTypeData", {QString()});
    map_.Call("OrvReDraw");
    emit Added();
}

namespace {

/// What to do about a file that was not taken.
QString Advice(const QString& path, const QString& nothing) {
    if (!EncodeCp932(path.toStdString()))
        return MapFiles::tr("The name %1 has a character that maps cannot hold; rename the file.").arg(path);
    return nothing.arg(path);
}

}  // namespace

void MapFiles::AskSymbols() {
    const QString file = QFileDialog::getOpenFileName(&window_, tr("Read symbols"), LastFolder());
    if (file.isEmpty()) return;
    NoteFolderOf(file);
    if (!ReadSymbols(file)) {
        const QString nothing = tr("No symbol was found in %1; those that were there stay. Choose a symbol file.");
        return Tell(true, {Advice(file, nothing)});
    }
    map_.Call("OrvReDraw");
}

void MapFiles::AskLineTypes() {
    const QString file = QFileDialog::getOpenFileName(&window_, tr("Read line types"), LastFolder());
    if (file.isEmpty()) return;
    NoteFolderOf(file);
    if (!ReadLineTypes(file)) {
        const QString nothing = tr("No line type was found in %1; those that were there stay. Choose a line type file.");
        return Tell(true, {Advice(file, nothing)});
    }
    map_.Call("OrvReDraw");
    emit Added();
}

}  // namespace orvane
