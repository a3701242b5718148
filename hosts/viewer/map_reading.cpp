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
#include "foreign/export_target.h"
#include "hosts/common/import_map.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/host_words.h"
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

/// A file of an older map, and why it cannot be read, as far as that is known.
struct LegacySource {
    QString file;
    std::string name;  ///< as maps keep it
    QString why;
    bool failed = false;
};

/// The files of a folder, or those that were named, each kind by itself in the order of names or as they came.
std::vector<LegacySource> LegacySources(const QStringList& sources) {
    std::vector<LegacySource> all;
    const auto add = [&](const QString& file) {
        const std::optional<std::string> name = EncodeCp932(file.toStdString());
        all.push_back({file, name.value_or(std::string()), {}, false});
        if (!name) all.back().why = MapFiles::tr("the name has a character that maps cannot hold; rename it");
        if (!QFileInfo(file).isReadable()) all.back().why = MapFiles::tr("it is not there, or may not be read");
    };
    const QDir folder(sources.front());
    if (QFileInfo(sources.front()).isDir()) {
        const QStringList names = folder.entryList({"*.pnt", "*.arc", "*.pgn"}, QDir::Files | QDir::Hidden);
        for (const QString& name : names) add(folder.filePath(name));
        std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    } else {
        for (const QString& source : sources) add(source);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const auto& a, const auto& b) { return LegacyRank(a.file) < LegacyRank(b.file); });
    return all;
}

/// Reads one, keeping the reason that the control would show in a box of its own.
void ReadLegacyFile(CDigMem& store, Files& files, LegacySource& source) {
    if (source.name.empty() || !QFileInfo(source.file).isReadable()) {
        source.failed = true;
        return;
    }
    const auto keep = [&](std::string_view, std::string_view title, MessageIcon) {
        source.why = title == kLegacyContradiction ? MapFiles::tr("its data contradict each other")
                                                   : MapFiles::tr("there is no memory for it");
    };
    source.failed = !LegacyFileRead(store, files, source.name, {}, keep);
}

QString FailureText(const LegacySource& source) {
    return source.why.isEmpty() ? MapFiles::tr("%1 cannot be read").arg(source.file)
                                : MapFiles::tr("%1 cannot be read: %2").arg(source.file, source.why);
}

/// A line for each that failed, but no more than a message can show.
std::vector<std::string> FailureLines(const std::vector<LegacySource>& sources) {
    constexpr int kMostLines = 20;
    std::vector<std::string> lines;
    int more = 0;
    for (const LegacySource& source : sources) {
        if (!source.failed) continue;
        if (lines.size() == kMostLines) {
            ++more;
        } else {
            lines.push_back("error: " + FailureText(source).toStdString());
        }
    }
    if (more > 0) lines.push_back("error: " + MapFiles::tr("%n more file(s) cannot be read", nullptr, more).toStdString());
    return lines;
}

/// A block of `from` that `to` has too, but at another origin, or nothing: a map keeps one origin for both.
const DigBlock* MovedBlock(const CDigMem& from, const CDigMem& to) {
    for (std::int32_t i = 0; i < from.BlockCnt(); ++i) {
        const DigBlock& block = from.Block(i);
        if (block.blkState == kFreeBlock) continue;
        const std::int32_t pos = to.FindBlock(block.code.View(), block.meshNo).block;
        if (pos >= 0 && (to.Block(pos).GX != block.GX || to.Block(pos).GY != block.GY)) return &block;
    }
    return nullptr;
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

/// What is wrong with an archive that could not be opened. One that a save has just moved aside is not gone.
ImportFault FaultOf(const QString& path, const OpenedArchive& opened) {
    const bool isGone = opened.place == PlaceState::Whole && opened.report.Has(ArcFault::Missing) && !QFileInfo::exists(path);
    return isGone ? ImportFault::Missing : ImportFault::Unreadable;
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
        const bool whole = reader(*look, [&](double done) {
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
    const bool whole = reader(map, [&](double done) {
        progress.Tell(0.5 + done / 2);
        return true;
    });
    if (whole) return result;
    if (!begin || map.BlockCnt() == before) return Fault(ImportFault::NoRoom, tr("there is no room for the data"));
    result.summary.notes.push_back(tr("error: the text could be read in part only; look whether all is there").toStdString());
    return result;
}

ImportResult MapFiles::LookAtArchive(const QString& path, const std::function<bool(double)>& told, SetLooks& looks) {
    const std::unique_ptr<CDigMem> look = EmptyStore();
    const OpenedArchive opened = OpenArchive(*look, SystemBytes(path), told);
    if (opened.cancelled) return Fault(ImportFault::Cancelled, tr("cancelled"));
    if (!opened.opened) return {FaultOf(path, opened), opened.error, {}};
    if (opened.report.LosesData()) {
        ImportResult part = Fault(ImportFault::Unreadable, tr("it could be read in part only, so nothing of it was imported"));
        part.summary.notes = opened.warnings;
        return part;
    }
    if (ImportResult mixed = MayNotMix(*look); !mixed.Ok()) return mixed;
    if (const DigBlock* moved = MovedBlock(*look, map_.Control().store)) {
        return Fault(ImportFault::Shared,
                     tr("layer %1, group %2 has another origin there").arg(ToQString(moved->code.View())).arg(moved->meshNo));
    }
    TakeEmptyRecords(map_, *look);
    looks = opened.looks;
    return {};
}

ImportResult MapFiles::ReadArchive(const QStringList& sources, WorkProgress& progress, const std::function<void()>& begin) {
    if (sources.size() > 1) return Fault(ImportFault::BadOption, tr("an archive is shown alone"));
    const QString path = sources.front();
    bool held = false;
    // What is imported is looked through twice, as nothing of it may come before it is known that all of it can.
    double share = 1;
    SetLooks looks;
    const auto told = [&](double done) { return progress.Tell(1 - share + done * share) || held; };
    if (!begin) {
        ImportResult unfit = LookAtArchive(
            path, [&](double done) { return progress.Tell(done / 2); }, looks);
        if (!unfit.Ok()) return unfit;
        share = 0.5;
    }
    const OpenedArchive opened = OpenArchive(map_.Control().store, SystemBytes(path), told, [&] {
        held = true;
        progress.HoldCancel();
        if (begin) begin();
    });
    if (opened.cancelled) return Fault(ImportFault::Cancelled, tr("cancelled"));
    if (!opened.opened) return {FaultOf(path, opened), opened.error, {}};
    // What nobody looked at may not fit the map.
    if (!begin && opened.looks != looks)
        return {
            ImportFault::Unreadable, SystemBytes(path) + " was saved by another program while it was read; open it again", {}};
    ImportResult result;
    result.summary.notes = opened.warnings;
    readVersion_ = opened.report.version;
    readLooks_ = opened.looks;
    readIsPart_ = opened.report.LosesData();
    return result;
}

ImportResult MapFiles::ReadExchange(const QString& path, WorkProgress& progress, const std::function<void()>& begin) {
    const auto read = [&](CDigMem& store, const std::function<bool(double)>& told) {
        StdFiles files;
        return ExchRead(store, files, SystemBytes(path), told);
    };
    return ReadTwice(read, progress, begin, tr("%1 holds no map that can be read").arg(path));
}

ImportResult MapFiles::ReadLegacy(const QStringList& sources, WorkProgress& progress, const std::function<void()>& begin) {
    const auto isFolder = [](const QString& source) { return QFileInfo(source).isDir(); };
    if (sources.size() > 1 && std::any_of(sources.begin(), sources.end(), isFolder))
        return Fault(ImportFault::BadOption, tr("a folder of older map files is read alone"));
    std::vector<LegacySource> files = LegacySources(sources);
    if (files.size() == 1 && !files.front().why.isEmpty()) {
        const ImportFault fault = files.front().name.empty() ? ImportFault::Unreadable : ImportFault::Missing;
        return Fault(fault, FailureText(files.front()));
    }
    const auto read = [&](CDigMem& store, const std::function<bool(double)>& told) {
        std::size_t failures = 0;
        for (std::size_t i = 0; i < files.size(); ++i) {
            if (!told(static_cast<double>(i) / static_cast<double>(files.size()))) return false;
            ReadLegacyFile(store, map_.Control().files(), files[i]);
            failures += files[i].failed;
        }
        LegacyPolygonsBelow(store);
        return begin ? failures < files.size() : failures == 0;
    };
    ImportResult result = ReadTwice(read, progress, begin, tr("no older map file could be read"));
    if (result.fault != ImportFault::Cancelled) result.summary.notes = FailureLines(files);
    return result;
}

ImportResult MapFiles::Read(const QStringList& sources, ImportOptions options, const std::function<void()>& begin) {
    if (WorkProgress::IsRunning()) return Fault(ImportFault::Cancelled, tr("other work is running"));
    if (sources.isEmpty()) return Fault(ImportFault::Missing, tr("no file was named"));
    for (const QString& source : sources) {
        const QFileInfo there(source);
        if (there.exists() && !there.isFile() && !there.isDir())
            return Fault(ImportFault::Unreadable, source + " is a device or a pipe");
    }
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
    for (const QString& source : sources) {
        const std::string name = SystemBytes(source);
        if (QFileInfo::exists(source) && HasArchiveExtension(name)) {
            return Fault(ImportFault::BadOption,
                         tr("%1 is a part of an archive. Open the file of its name that ends in .Ovb or .Ovt.").arg(source));
        }
        names.push_back(name);
    }
    bool held = false;
    if (begin) {
        options.beforeStoring = [&] {
            held = true;
            progress.HoldCancel();
            begin();
        };
    }
    options.progress = [&](double done) { return progress.Tell(done) || held; };
    ImportResult result = ImportMap(map_.Control(), names, options);
    const bool isNothing = result.fault == ImportFault::Unreadable || result.fault == ImportFault::Nothing;
    if (isNothing && sources.size() == 1 && QFileInfo(sources.front()).isDir()) {
        // Why there is none is worth a line where something is there.
        const bool tellsWhy = result.fault == ImportFault::Unreadable && !QDir(sources.front()).isEmpty();
        const QString reason = tellsWhy ? Words(result.error) : QString();
        result.fault = ImportFault::Nothing;
        const QString words =
            tr("%1 is a folder without older map files (.pnt, .arc, .pgn) and without vector data that can be read. Look for "
               "another one.")
                .arg(sources.front());
        result.error = words.toStdString() + (reason.isEmpty() ? "" : "\n" + reason.toStdString());
    }
    return result;
}

}  // namespace orvane
