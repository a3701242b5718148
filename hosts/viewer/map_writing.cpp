// Saving and writing in other forms.
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "control/ctrl.h"
#include "files/archive.h"
#include "files/exchange.h"
#include "foreign/export_target.h"
#include "foreign/plane_system.h"
#include "hosts/common/archive_losses.h"
#include "hosts/common/archive_swap.h"
#include "hosts/common/exchange_losses.h"
#include "hosts/common/export_map.h"
#include "hosts/common/folder_moves.h"
#include "hosts/common/follow_links.h"
#include "hosts/common/write_watch.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/map_files.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"
#include "platform/files_std.h"

namespace orvane {

/// A tool hides its feature, and a plane zone is a way of looking at a map of sheets: neither may get into a file.
class MapFiles::HomeFrame {
public:
    explicit HomeFrame(MapFiles& files) : place_(files.place_), zone_(files.place_.ZoneNow()) {
        files.history_.CancelTool();
        if (place_.IsMeshMap()) place_.ChangeFrame(0);
    }
    ~HomeFrame() {
        if (place_.IsMeshMap() && zone_ != 0) place_.ChangeFrame(zone_);
    }
    HomeFrame(const HomeFrame&) = delete;
    HomeFrame& operator=(const HomeFrame&) = delete;

private:
    PlaceLabel& place_;
    int zone_;
};

namespace {

int LockedLayers(CDigMem& store) {
    int off = 0;
    for (const std::int32_t i : LayersWithData(store)) off += store.Layer(i).actFlg == 0 || store.Layer(i).editFlg == 0;
    return off;
}

/// What the files of an archive are called without their endings, behind links.
std::string BaseOfSet(const QString& path) {
    const std::string name = QFile::encodeName(QFileInfo(path).absoluteFilePath()).toStdString();
    const std::string base(ResolveArcName(name).base);
    return ArchiveBehindLinks(base).value_or(base);
}

/// The same set under another name that leads to it.
SetLooks UnderName(SetLooks looks, const std::string& base) {
    constexpr std::size_t kEnding = 4;
    for (auto& [name, facts] : looks) name = base + name.substr((std::max)(name.size(), kEnding) - kEnding);
    return looks;
}

}  // namespace

// One set is a binary and a text archive at once, and may be reached by more than one name.
std::string MapFiles::PlaceOfSet(const QString& path) {
    const std::string base = BaseOfSet(path);
    return FollowLinks(base).value_or(base);
}

bool MapFiles::IsOwnSet(const QString& path) const { return !path_.isEmpty() && PlaceOfSet(path) == PlaceOfSet(path_); }

QStringList MapFiles::Losses(const QString& path, const std::string& version) const {
    CDigMem& store = map_.Control().store;
    QStringList lines;
    const bool text = path.endsWith(".ovt", Qt::CaseInsensitive);
    for (const std::string& line : ArchiveLosses(store, text, version, history_.RemovedLayers())) {
        if (line.find("switches of layers") == std::string::npos) lines << QString::fromStdString(line);
    }
    if (const int off = LockedLayers(store); off > 0)
        lines << tr("not kept by an archive: that %n layer(s) may not be selected or edited", nullptr, off);
    if (map_.Control().rasters.Count() > 0) lines << tr("not kept by an archive: images");
    return lines;
}

QStringList MapFiles::ExchangeLosses(const std::string& version) {
    const HomeFrame home(*this);
    CDigMem& store = map_.Control().store;
    QStringList lines;
    for (const std::string& line : orvane::ExchangeLosses(store, version)) lines << QString::fromStdString(line);
    if (const int off = LockedLayers(store); off > 0)
        lines << tr("not kept by an exchange text: that %n layer(s) may not be selected or edited", nullptr, off);
    if (map_.Control().rasters.Count() > 0) lines << tr("not kept by an exchange text: images");
    return lines;
}

SavedArchive MapFiles::Save(const QString& path, const std::string& version, Over over) {
    SavedArchive result;
    if (WorkProgress::IsRunning()) {
        result.error = tr("other work is running").toStdString();
        return result;
    }
    const HomeFrame home(*this);
    WorkProgress progress(window_, tr("Saving…"));
    const SetLooks own = UnderName(looks_, BaseOfSet(path));
    const QString place = QFileInfo(path).absoluteFilePath();
    result = SaveArchive(map_.Control().store, QFile::encodeName(place).toStdString(), version, progress.Teller(),
                         history_.RemovedLayers(), over == Over::Own && IsOwnSet(path) ? &own : nullptr);
    if (!result.saved) return result;
    looks_ = result.looks;
    if (PlaceOfSet(path) == partPlace_) partPlace_.clear();
    path_ = place;
    name_ = QFileInfo(path).fileName();
    version_ = version;
    history_.NoteSaved();
    NoteRecentFile(path_);
    emit Renamed();
    return result;
}

namespace {

/// Makes an empty file beside `place` under a name that nothing had. Empty when that cannot be done.
QString MakeWaitingFile(const QString& place) {
    constexpr int kMostTries = 1000;
    for (int i = 1; i <= kMostTries; ++i) {
        QFile waiting(QStringLiteral("%1.part%2").arg(place).arg(i));
        if (waiting.open(QIODevice::WriteOnly | QIODevice::NewOnly)) return waiting.fileName();
        if (!QFileInfo::exists(waiting.fileName()) && !QFileInfo(waiting.fileName()).isSymLink()) break;
    }
    return {};
}

/// About how many lines the store has as a text.
double ExchangeLines(const CDigMem& store) {
    double lines = 1 + 2.0 * store.BlockCnt();
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        for (const DigDat& dat : store.Block(i).dats) lines += 1 + dat.pntCnt + (dat.str == nullptr ? 0 : 1);
    }
    return lines;
}

}  // namespace

QString MapFiles::WhyNoExchange(const QString& path, const std::string& version) {
    const std::optional<std::string> target = FollowLinks(QFile::encodeName(path).toStdString());
    if (!target) return tr("%1 is a link that leads nowhere. Choose another name.").arg(path);
    if (HasArchiveExtension(path.toStdString()) || HasArchiveExtension(*target)) {
        return tr("%1 is the name of an archive's file, and no exchange text takes its place.").arg(path);
    }
    const QFileInfo there(QFile::decodeName(QByteArray::fromStdString(*target)));
    if (there.exists() && !there.isFile()) return tr("%1 is a folder, a device or a pipe. Choose another name.").arg(path);
    const HomeFrame home(*this);
    return Words(WhatExchangeCannotHold(map_.Control().store, version));
}

QString MapFiles::WriteExchange(const QString& path, const std::string& version) {
    if (WorkProgress::IsRunning()) return tr("other work is running");
    const HomeFrame home(*this);
    if (QString why = WhyNoExchange(path, version); !why.isEmpty()) return why;
    const std::string name = QFile::encodeName(path).toStdString();
    const std::string target = FollowLinks(name).value_or(name);
    const QString place = QFile::decodeName(QByteArray::fromStdString(target));
    WorkProgress progress(window_, tr("Writing…"));
    bool cancelled = false;
    // A map may be one large block, so that lines are counted and not blocks.
    const double lines = ExchangeLines(map_.Control().store);
    double written_lines = 0;
    const auto tell = [&](std::string_view bytes) {
        written_lines += static_cast<double>(std::count(bytes.begin(), bytes.end(), '\n'));
        cancelled = cancelled || !progress.Tell((std::min)(1.0, written_lines / lines));
        return !cancelled;
    };
    StdFiles disk;
    WriteWatch files(disk, tell);
    FolderMoves moves;
    const QString waitingName = MakeWaitingFile(place);
    const std::string waiting = QFile::encodeName(waitingName).toStdString();
    const bool written = !waiting.empty() && ExchWrite(map_.Control().store, files, waiting, version) && moves.Sync(waiting);
    if (written && QFileInfo::exists(place)) moves.CopyRights(target, waiting);
    if (written && moves.Rename(waiting, target)) {
        moves.Sync(QFile::encodeName(QFileInfo(place).absolutePath()).toStdString());
        return {};
    }
    const QString why = files.Failure().empty() ? QString::fromLocal8Bit(moves.Cause().c_str()) : Words(files.Failure());
    if (!waiting.empty()) moves.RemoveFile(waiting);
    if (cancelled) return tr("cancelled");
    if (!why.isEmpty()) return why;
    return tr("%1 could not be written: the map is empty, or the folder is full or may not be written to").arg(path);
}

ExportResult MapFiles::Export(ExportOptions options) {
    if (WorkProgress::IsRunning()) return {ExportFault::Cancelled, tr("other work is running").toStdString(), {}};
    const HomeFrame home(*this);
    WorkProgress progress(window_, tr("Exporting…"));
    options.progress = progress.Teller();
    options.leaveOut = history_.RemovedLayers();
    for (const QString& source : sources_) options.inputs.push_back(QFile::encodeName(source).toStdString());
    if (const auto system = System(); system && !options.zone) {
        options.datum = system->datum;
        options.zone = system->zone;
    }
    return ExportMap(map_.Control().store, {}, std::move(options));
}

}  // namespace orvane
