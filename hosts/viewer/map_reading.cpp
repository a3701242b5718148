// The readers behind opening and importing. Whatever can fail or be cancelled comes before the map is touched.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "files/exchange.h"
#include "files/legacy_file.h"
#include "hosts/common/import_map.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/map_files.h"
#include "hosts/viewer/work_progress.h"
#include "platform/cp932.h"
#include "platform/files_std.h"

namespace orvane {

namespace {

std::string SystemBytes(const QString& path) { return QFile::encodeName(path).toStdString(); }

ImportResult Fault(ImportFault fault, const QString& error) { return {fault, error.toStdString(), {}}; }

/// Lines before areas, because areas are made of them; points last.
int LegacyRank(const QString& path) {
    const QString ending = path.right(4).toLower();
    return ending == ".arc" ? 0 : ending == ".pgn" ? 1 : 2;
}

/// Areas go to the bottom, as when a whole folder is read.
void PutAreasBelow(CDigMem& store, std::int32_t firstLayer) {
    constexpr std::int32_t kBottomKey = 9999;
    for (std::int32_t i = firstLayer; i < store.LayerCnt(); ++i) {
        if (store.Layer(i).layType == kLayPolygon) store.SetLayIndex(store.Layer(i).code.View(), kBottomKey);
    }
    store.SortDigIndex();
}

/// A block of `from` whose code and number one of `to` has, or nothing.
const DigBlock* SharedBlock(const CDigMem& from, const CDigMem& to) {
    for (std::int32_t i = 0; i < from.BlockCnt(); ++i) {
        const DigBlock& block = from.Block(i);
        if (block.blkState != kFreeBlock && to.FindBlock(block.code.View(), block.meshNo).block >= 0) return &block;
    }
    return nullptr;
}

/// A layer of `from` that `to` has with data and as another type, or nothing.
const LayerDef* OfOtherType(const CDigMem& from, CDigMem& to) {
    const std::set<std::int32_t> withData = LayersWithData(to);
    for (std::int32_t i = 0; i < from.LayerCnt(); ++i) {
        const std::int32_t pos = to.FindLayDef(from.Layer(i).code.View());
        if (withData.count(pos) != 0 && to.Layer(pos).layType != from.Layer(i).layType) return &from.Layer(i);
    }
    return nullptr;
}

/// What comes in under the code of a layer without data is another layer: the record becomes its own. Readers leave one that is
/// there as it is.
void TakeEmptyRecords(OrvaneWidget& map, const CDigMem& from) {
    CDigMem& to = map.Control().store;
    const std::set<std::int32_t> withData = LayersWithData(to);
    std::vector<LayerChange> looks = LooksOf(from);
    std::erase_if(looks, [&](const LayerChange& look) {
        const std::int32_t pos = to.FindLayDef(look.code);
        if (pos < 0 || withData.count(pos) != 0) return true;
        to.MutableLayer(pos).layType = from.Layer(from.FindLayDef(look.code)).layType;
        return false;
    });
    PutLooksBack(map, std::move(looks));
}

/// A store beside the map, for a look at what a file holds.
std::unique_ptr<CDigMem> EmptyStore() {
    auto store = std::make_unique<CDigMem>();
    store->Init();
    return store;
}

}  // namespace

ImportResult MapFiles::MayNotMix(const CDigMem& look) {
    const LayerDef* other = OfOtherType(look, map_.Control().store);
    if (other == nullptr) return {};
    return Fault(ImportFault::Shared, tr("layer %1 is of another type there").arg(ToQString(other->code.View())));
}

ImportResult MapFiles::ReadTwice(const Reader& reader, WorkProgress& progress, const std::function<void()>& begin,
                                 const QString& nothing) {
    CDigMem& map = map_.Control().store;
    {
        const std::unique_ptr<CDigMem> look = EmptyStore();
        bool cancelled = false;
        const bool whole = reader(*look, false, [&](double done) {
            cancelled = cancelled || !progress.Tell(done / 2);
            return !cancelled;
        });
        if (cancelled) return Fault(ImportFault::Cancelled, tr("cancelled"));
        if (look->BlockCnt() == 0) return Fault(ImportFault::Unreadable, nothing);
        // What is opened may be worth having in part; a map that is there is not to be mixed with a part.
        if (!begin && !whole)
            return Fault(ImportFault::Unreadable, tr("it could be read in part only, so nothing of it was imported"));
        const DigBlock* shared = begin ? nullptr : SharedBlock(*look, map);
        if (shared != nullptr) {
            return Fault(ImportFault::Shared, tr("layer %1, group %2").arg(ToQString(shared->code.View())).arg(shared->meshNo));
        }
        if (ImportResult mixed = begin ? ImportResult() : MayNotMix(*look); !mixed.Ok()) return mixed;
        if (!begin) TakeEmptyRecords(map_, *look);
    }
    progress.HoldCancel();
    if (begin) begin();
    const std::int32_t before = map.BlockCnt();
    ImportResult result;
    const bool whole = reader(map, true, [&](double done) {
        progress.Tell(0.5 + done / 2);
        return true;
    });
    if (whole) return result;
    if (!begin || map.BlockCnt() == before) return Fault(ImportFault::NoRoom, tr("there is no room for the data"));
    result.summary.notes.push_back(tr("error: the text could be read in part only; look whether all is there").toStdString());
    return result;
}

ImportResult MapFiles::ReadArchive(const QStringList& sources, WorkProgress& progress, const std::function<void()>& begin) {
    if (sources.size() > 1) return Fault(ImportFault::BadOption, tr("an archive is shown alone"));
    const std::unique_ptr<CDigMem> layers = EmptyStore();
    if (!begin) {
        ReadArchiveLayers(*layers, SystemBytes(sources.front()));
        if (ImportResult mixed = MayNotMix(*layers); !mixed.Ok()) return mixed;
    }
    bool held = false;
    const auto told = [&](double done) { return progress.Tell(done) || held; };
    const OpenedArchive opened = OpenArchive(map_.Control().store, SystemBytes(sources.front()), told, [&] {
        held = true;
        progress.HoldCancel();
        if (begin) begin();
        TakeEmptyRecords(map_, *layers);
    });
    if (opened.cancelled) return Fault(ImportFault::Cancelled, tr("cancelled"));
    if (!opened.opened) return {ImportFault::Unreadable, opened.error, {}};
    ImportResult result;
    result.summary.notes = opened.warnings;
    readVersion_ = opened.report.version;
    readLooks_ = opened.looks;
    readIsPart_ = opened.report.LosesData();
    return result;
}

ImportResult MapFiles::ReadExchange(const QString& path, WorkProgress& progress, const std::function<void()>& begin) {
    const auto read = [&](CDigMem& store, bool, const std::function<bool(double)>& told) {
        StdFiles files;
        return ExchRead(store, files, SystemBytes(path), told);
    };
    return ReadTwice(read, progress, begin, tr("%1 holds no map that can be read").arg(path));
}

ImportResult MapFiles::ReadLegacy(const QStringList& sources, WorkProgress& progress, const std::function<void()>& begin) {
    const auto isFolder = [](const QString& source) { return QFileInfo(source).isDir(); };
    if (sources.size() > 1 && std::any_of(sources.begin(), sources.end(), isFolder))
        return Fault(ImportFault::BadOption, tr("a folder of older map files is read alone"));
    QStringList files = sources;
    std::stable_sort(files.begin(), files.end(),
                     [](const QString& a, const QString& b) { return LegacyRank(a) < LegacyRank(b); });
    std::vector<std::string> names;
    for (const QString& file : files) {
        if (!QFileInfo(file).isReadable()) return Fault(ImportFault::Missing, tr("%1 cannot be read").arg(file));
        const std::optional<std::string> name = EncodeCp932(file.toStdString());
        if (!name) {
            return Fault(ImportFault::Unreadable, tr("the name %1 has a character that maps cannot hold; rename it").arg(file));
        }
        names.push_back(*name);
    }
    COrvane4Ctrl& ctrl = map_.Control();
    const LegacyMessage message = [&](std::string_view text, std::string_view title, MessageIcon icon) {
        ctrl.window().ShowMessage(text, title, icon);
    };
    QStringList failed;
    const auto read = [&](CDigMem& store, bool mayTell, const std::function<bool(double)>& told) {
        const LegacyMessage say = mayTell ? message : LegacyMessage();
        constexpr std::int32_t kAllNames = 0;
        const std::int32_t firstLayer = store.LayerCnt();
        if (QFileInfo(files.front()).isDir()) return LegacyDirRead(store, ctrl.files(), names.front(), kAllNames, say, told);
        failed.clear();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!told(static_cast<double>(i) / static_cast<double>(names.size()))) return false;
            if (!LegacyFileRead(store, ctrl.files(), names[i], {}, say)) failed << files[static_cast<qsizetype>(i)];
        }
        PutAreasBelow(store, firstLayer);
        return failed.size() < files.size();
    };
    ImportResult result = ReadTwice(read, progress, begin, tr("no older map file could be read"));
    for (const QString& file : failed) {
        if (result.Ok()) result.summary.notes.push_back(tr("error: %1 could not be read").arg(file).toStdString());
    }
    return result;
}

ImportResult MapFiles::Read(const QStringList& sources, ImportOptions options, const std::function<void()>& begin) {
    if (WorkProgress::IsRunning()) return Fault(ImportFault::Cancelled, tr("other work is running"));
    if (sources.isEmpty()) return Fault(ImportFault::Missing, tr("no file was named"));
    WorkProgress progress(window_, tr("Reading…"));
    switch (KindOfSources(sources)) {
        case SourceKind::Archive:
            return ReadArchive(sources, progress, begin);
        case SourceKind::Legacy:
            return ReadLegacy(sources, progress, begin);
        case SourceKind::Exchange:
            if (sources.size() > 1) return Fault(ImportFault::BadOption, tr("an exchange text is read alone"));
            return ReadExchange(sources.front(), progress, begin);
        case SourceKind::Vector:
            break;
    }
    std::vector<std::string> names;
    for (const QString& source : sources) names.push_back(SystemBytes(source));
    bool held = false;
    if (begin) {
        options.beforeStoring = [&] {
            held = true;
            progress.HoldCancel();
            begin();
        };
    }
    options.progress = [&](double done) { return progress.Tell(done) || held; };
    return ImportMap(map_.Control(), names, options);
}

}  // namespace orvane
