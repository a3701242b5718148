#include "hosts/viewer/map_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "control/ctrl.h"
#include "files/exchange.h"
#include "files/exchange_format.h"
#include "files/legacy_file.h"
#include "hosts/common/import_map.h"
#include "hosts/common/map_view.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"
#include "platform/cp932.h"
#include "platform/files_std.h"

namespace orvane {

namespace {

constexpr std::int16_t kMargin_percent = 3;

bool IsLegacyName(const QString& path) {
    const QString ending = path.right(4).toLower();
    return ending == ".pnt" || ending == ".arc" || ending == ".pgn";
}

bool HasBlocks(const CDigMem& store) {
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        if (store.Block(i).blkState != kFreeBlock) return true;
    }
    return false;
}

std::string SystemBytes(const QString& path) { return QFile::encodeName(path).toStdString(); }

ImportResult Fault(ImportFault fault, const QString& error) { return {fault, error.toStdString(), {}}; }

/// Lines before areas, because areas are made of them; points last.
int LegacyRank(const QString& path) {
    const QString ending = path.right(4).toLower();
    return ending == ".arc" ? 0 : ending == ".pgn" ? 1 : 2;
}

}  // namespace

SourceKind KindOfSource(const QString& path) {
    if (IsArchiveName(path.toStdString())) return SourceKind::Archive;
    if (IsLegacyName(path)) return SourceKind::Legacy;
    const QFileInfo info(path);
    if (info.isDir()) {
        const QStringList legacy = QDir(path).entryList({"*.pnt", "*.arc", "*.pgn"}, QDir::Files);
        return legacy.isEmpty() ? SourceKind::Vector : SourceKind::Legacy;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return SourceKind::Vector;
    const QByteArray magic(kExchangeMagic.data(), static_cast<qsizetype>(kExchangeMagic.size()));
    return file.read(magic.size()) == magic ? SourceKind::Exchange : SourceKind::Vector;
}

MapFiles::MapFiles(OrvaneWidget& map, EditHistory& history, PlaceLabel& place, QWidget& window)
    : QObject(&window), map_(map), history_(history), place_(place), window_(window) {}

// An init leaves the frame and the run mode as they are, and a tool of the map before would go on.
void MapFiles::StartOver() {
    history_.CancelTool();
    map_.Call("OrvTermRast");
    if (map_.Control().frameMode != 0) map_.Call("OrvChgGeoFrame", {0, 0});
    map_.SetRunMode(kRunNormal);
    const std::int16_t bar = map_.Control().scaleBarMode;
    map_.Call("OrvInit");
    map_.SetLineTagMode(false);
    map_.SetScaleBarMode(bar);
}

void MapFiles::New() {
    StartOver();
    map_.PaintNow();
    path_.clear();
    name_.clear();
    version_.clear();
    toldLosses_.clear();
    sources_.clear();
    epsg_ = 0;
    place_.TakeMap(0);
    history_.Forget();
    emit Opened({});
}

void MapFiles::LetEdit(std::int32_t firstLayer) {
    const CDigMem& store = map_.Control().store;
    for (std::int32_t i = firstLayer; i < store.LayerCnt(); ++i) {
        const QByteArray code(store.Layer(i).code.CStr());
        map_.Call("OrvSetLayActMode", {code, true});
        map_.Call("OrvSetLayEditFlg", {code, true});
    }
}

ImportResult MapFiles::ReadArchive(const QStringList& sources, const std::function<bool(double)>& progress,
                                   const std::function<void()>& begin) {
    if (sources.size() > 1) return Fault(ImportFault::BadOption, tr("an archive is shown alone"));
    const OpenedArchive opened = OpenArchive(map_.Control().store, SystemBytes(sources.front()), progress, begin);
    if (opened.cancelled && opened.begun && begin) begin();
    ImportResult result;
    if (!opened.opened) {
        result.fault = opened.cancelled && !opened.begun ? ImportFault::Cancelled : ImportFault::Unreadable;
        result.error = opened.error;
    } else {
        result.summary.notes = opened.warnings;
    }
    return result;
}

ImportResult MapFiles::ReadExchange(const QString& path, const std::function<bool(double)>& progress,
                                    const std::function<void()>& begin) {
    bool cancelled = false;
    const auto pump = [&](double fraction) {
        cancelled = !progress(fraction);
        return !cancelled;
    };
    if (begin) begin();
    StdFiles files;
    const std::int32_t before = map_.Control().store.BlockCnt();
    const bool read = ExchRead(map_.Control().store, files, SystemBytes(path), pump);
    if (cancelled) return Fault(begin ? ImportFault::Unreadable : ImportFault::Cancelled, tr("cancelled"));
    if (read) return {};
    if (map_.Control().store.BlockCnt() == before) {
        return Fault(ImportFault::Unreadable, tr("%1 holds no map that can be read, or blocks that are there already").arg(path));
    }
    ImportResult result;
    result.summary.notes.push_back(tr("error: the text could be read in part only; look whether all is there").toStdString());
    return result;
}

ImportResult MapFiles::ReadLegacyFolder(const QString& folder, const std::function<bool(double)>& progress,
                                        const std::function<void()>& begin) {
    if (begin) begin();
    bool cancelled = false;
    const auto tell = [&](double done) {
        cancelled = !progress(done);
        return !cancelled;
    };
    COrvane4Ctrl& ctrl = map_.Control();
    const auto message = [&](std::string_view text, std::string_view title, MessageIcon icon) {
        ctrl.window().ShowMessage(text, title, icon);
    };
    constexpr std::int32_t kAllNames = 0;
    const std::string path = EncodeCp932(folder.toStdString()).value_or(SystemBytes(folder));
    const bool read = LegacyDirRead(ctrl.store, ctrl.files(), path, kAllNames, message, tell);
    if (cancelled) return Fault(begin ? ImportFault::Unreadable : ImportFault::Cancelled, tr("cancelled"));
    if (!read || !HasBlocks(ctrl.store)) return Fault(ImportFault::Unreadable, tr("no older map file could be read"));
    return {};
}

ImportResult MapFiles::ReadLegacy(const QStringList& sources, const std::function<bool(double)>& progress,
                                  const std::function<void()>& begin) {
    if (QFileInfo(sources.front()).isDir()) return ReadLegacyFolder(sources.front(), progress, begin);
    QStringList files = sources;
    std::stable_sort(files.begin(), files.end(),
                     [](const QString& a, const QString& b) { return LegacyRank(a) < LegacyRank(b); });
    for (const QString& file : files) {
        if (!QFileInfo(file).isReadable()) return Fault(ImportFault::Missing, tr("%1 cannot be read").arg(file));
        if (EncodeCp932(file.toStdString())) continue;
        return Fault(ImportFault::Unreadable, tr("the name %1 has a character that maps cannot hold; rename it").arg(file));
    }
    if (begin) begin();
    ImportResult result;
    int readCnt = 0;
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (!progress(static_cast<double>(i) / static_cast<double>(files.size()))) {
            return Fault(begin ? ImportFault::Unreadable : ImportFault::Cancelled, tr("cancelled"));
        }
        const bool read = map_.Call("RDMDatFileRead", {files[i]}).toBool();
        readCnt += read;
        if (!read) result.summary.notes.push_back(tr("error: %1 could not be read").arg(files[i]).toStdString());
    }
    // Areas go to the bottom, as when a whole folder is read.
    constexpr int kBottomKey = 9999;
    const CDigMem& store = map_.Control().store;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        if (store.Layer(i).layType == kLayPolygon) {
            map_.Call("OrvSetLayIndex", {QByteArray(store.Layer(i).code.CStr()), kBottomKey});
        }
    }
    map_.Call("OrvSortLayer");
    if (readCnt == 0) return Fault(ImportFault::Unreadable, tr("no older map file could be read"));
    return result;
}

ImportResult MapFiles::Read(const QStringList& sources, ImportOptions options, const std::function<void()>& begin) {
    if (WorkProgress::IsRunning()) return Fault(ImportFault::Cancelled, tr("other work is running"));
    if (sources.isEmpty()) return Fault(ImportFault::Missing, tr("no file was named"));
    WorkProgress progress(window_, tr("Reading…"));
    const bool anyArchive = std::any_of(sources.begin(), sources.end(),
                                        [](const QString& source) { return KindOfSource(source) == SourceKind::Archive; });
    switch (anyArchive ? SourceKind::Archive : KindOfSource(sources.front())) {
        case SourceKind::Archive:
            return ReadArchive(sources, progress.Teller(), begin);
        case SourceKind::Legacy:
            return ReadLegacy(sources, progress.Teller(), begin);
        case SourceKind::Exchange:
            if (sources.size() > 1) return Fault(ImportFault::BadOption, tr("an exchange text is read alone"));
            return ReadExchange(sources.front(), progress.Teller(), begin);
        case SourceKind::Vector:
            break;
    }
    std::vector<std::string> names;
    for (const QString& source : sources) names.push_back(SystemBytes(source));
    options.beforeStoring = begin;
    options.progress = progress.Teller();
    return ImportMap(map_.Control(), names, options);
}

ImportResult MapFiles::Load(const QStringList& sources, ImportOptions options) {
    bool begun = false;
    const auto begin = [&] {
        begun = true;
        StartOver();
    };
    ImportResult result = Read(sources, std::move(options), begin);
    // What was begun and broken off is neither the old map nor the new one.
    if (!result.Ok() && begun) New();
    if (!result.Ok()) return result;

    map_.PaintNow();
    LetEdit(0);
    map_.Call("OrvSortLayer");  // readers leave the blocks in the order of the file
    const bool isArchive = KindOfSource(sources.front()) == SourceKind::Archive;
    path_ = isArchive ? QFileInfo(sources.front()).absoluteFilePath() : QString();
    name_ = QFileInfo(sources.front()).fileName() + (sources.size() > 1 ? ", …" : "");
    version_.clear();
    toldLosses_.clear();
    sources_ = sources;
    epsg_ = result.summary.epsg;
    place_.TakeMap(result.summary.zone);
    MapView view(map_.Control());
    view.SetSquareArea();
    view.FitAll(kMargin_percent);
    history_.Forget();
    for (const QString& source : sources) {
        if (sources.size() == 1 && QFileInfo::exists(source)) NoteRecentFile(source);
    }
    emit Opened(result.summary);
    return result;
}

ImportResult MapFiles::Import(const QStringList& sources, ImportOptions options) {
    history_.CancelTool();
    const CDigMem& store = map_.Control().store;
    if (!HasBlocks(store)) return Load(sources, std::move(options));
    if (place_.IsMeshMap()) {
        options.frame = ImportFrame::Mesh;
    } else if (place_.HomeZone() != 0) {
        options.zone = place_.HomeZone();
    }
    const std::int32_t firstLayer = store.LayerCnt();
    const std::int32_t blocks = store.BlockCnt();
    ImportResult result = Read(sources, std::move(options), {});
    if (store.BlockCnt() == blocks && store.LayerCnt() == firstLayer) return result;
    LetEdit(firstLayer);
    map_.Call("OrvSortLayer");  // the order of drawing follows the keys of the layers that came with it
    MapView(map_.Control()).SetSquareArea();
    map_.Call("OrvReDraw");
    sources_ += sources;
    history_.NoteOtherChange();
    emit Added();
    return result;
}

}  // namespace orvane
