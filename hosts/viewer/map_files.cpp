#include "hosts/viewer/map_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "files/exchange_format.h"
#include "hosts/common/map_view.h"
#include "hosts/viewer/layer_record.h"
#include "hosts/viewer/settings.h"

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

/// A block with the number of its features.
struct BlockCount {
    BlockKey key;
    std::int32_t datCnt = 0;
};

std::vector<BlockCount> BlockCounts(CDigMem& store) {
    std::vector<BlockCount> counts;
    for (const DigIndex& entry : store.Index()) {
        const DigBlock& block = store.Block(entry.block);
        counts.push_back({{std::string(block.code.View()), block.meshNo}, block.datCnt});
    }
    return counts;
}

struct ImportedBlocks {
    std::vector<BlockKey> made;
    std::vector<ItemPlace> added;  ///< behind those that blocks had
    bool canGo = true;             ///< false where two blocks share their key, so that calls meet one of them alone
};

ImportedBlocks WhatCame(CDigMem& store, const std::vector<BlockCount>& before) {
    std::map<BlockKey, std::int32_t> had;
    for (const BlockCount& count : before) had[count.key] = count.datCnt;
    ImportedBlocks came;
    std::vector<BlockKey> all;
    for (const auto& [key, datCnt] : BlockCounts(store)) {
        all.push_back(key);
        const auto old = had.find(key);
        if (old == had.end()) came.made.push_back(key);
        if (old == had.end() || datCnt <= old->second) continue;
        const DigBlock& block = store.Block(store.FindBlock(key.code, key.meshNo).block);
        for (std::int32_t i = old->second; i < block.datCnt; ++i) {
            came.added.push_back({{key.code, key.meshNo, block.dats[static_cast<std::size_t>(i)].datID}, i});
        }
    }
    came.canGo = !AnyKeyTwice(all);
    return came;
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
    // To open a pipe is to wait for who writes into it.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) return SourceKind::Vector;
    const QByteArray magic(kExchangeMagic.data(), static_cast<qsizetype>(kExchangeMagic.size()));
    return file.read(magic.size()) == magic ? SourceKind::Exchange : SourceKind::Vector;
}

MapFiles::MapFiles(OrvaneWidget& map, EditHistory& history, PlaceLabel& place, QWidget& window)
    : QObject(&window), map_(map), history_(history), place_(place), window_(window) {
    connect(&history_, &EditHistory::Moved, this, &MapFiles::DropSystemOfImport);
}

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
    tableNotes_ = ReadTables();
}

void MapFiles::New() {
    StartOver();
    map_.PaintNow();
    path_.clear();
    name_.clear();
    version_.clear();
    looks_.clear();
    partPlace_.clear();
    toldLosses_.clear();
    opened_.clear();
    sources_.clear();
    datum_.reset();
    beforeImport_.reset();
    openedBy_ = {};
    place_.TakeMap(0);
    history_.Forget();
    ImportSummary summary;
    for (const QString& note : tableNotes_) summary.notes.push_back(note.toStdString());
    emit Opened(summary);
}

void MapFiles::LetEdit(const std::vector<BlockKey>& blocks) {
    std::set<std::string> codes;
    for (const BlockKey& block : blocks) codes.insert(block.code);
    for (const std::string& code : codes) {
        map_.Call("OrvSetLayActMode", {QByteArray::fromStdString(code), true});
        map_.Call("OrvSetLayEditFlg", {QByteArray::fromStdString(code), true});
    }
}

ImportResult MapFiles::Load(const QStringList& sources, ImportOptions options) {
    if (ImportResult unfit = CheckSystem(sources, options); !unfit.Ok()) return unfit;
    bool begun = false;
    const auto begin = [&] {
        begun = true;
        StartOver();
    };
    ImportResult result = Read(sources, options, begin);
    if (!result.Ok() && begun) {
        // What was begun and failed is neither the old map nor the new one.
        New();
        result.error += tr("; the map is empty now").toStdString();
    }
    if (result.fault == ImportFault::Missing) {
        for (const QString& source : sources) {
            if (!QFileInfo::exists(source)) DropRecentFile(source);
        }
    }
    if (!result.Ok()) return result;
    for (const QString& note : tableNotes_) result.summary.notes.push_back(note.toStdString());

    map_.PaintNow();
    LetEdit(BlockKeys(map_.Control().store));
    map_.Call("OrvSortLayer");  // readers leave the blocks in the order of the file
    const bool isArchive = KindOfSource(sources.front()) == SourceKind::Archive;
    path_ = isArchive ? QFileInfo(sources.front()).absoluteFilePath() : QString();
    name_ =
        QFileInfo(QDir::cleanPath(QFileInfo(sources.front()).absoluteFilePath())).fileName() + (sources.size() > 1 ? ", …" : "");
    version_ = isArchive ? readVersion_ : std::string();
    looks_ = isArchive ? readLooks_ : SetLooks();
    partPlace_ = isArchive && readIsPart_ ? PlaceOfSet(path_) : std::string();
    toldLosses_.clear();
    opened_ = sources_ = sources;
    TakeSystemOf(sources, result.summary, options);
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
    if (!history_.MayEdit()) return {ImportFault::BadOption, tr("the map is in a plane zone").toStdString(), {}};
    CDigMem& store = map_.Control().store;
    // A map that was emptied is still that map, with its name and what can be taken back.
    if (!HasBlocks(store) && history_.Stack().count() == 0) return Load(sources, std::move(options));
    if (place_.IsMeshMap()) {
        options.frame = ImportFrame::Mesh;
        options.zone.reset();
    } else if (place_.HomeZone() != 0) {
        options.zone = place_.HomeZone();
        if (datum_) options.datum = datum_;
    }
    GiveOwnKeys(map_);  // the records that come, and stay when the import is taken back, must not move the layers that are there
    const std::vector<std::string> free = history_.EmptyLayers();
    options.freeCodes = free;
    const std::vector<LayerChange> allLooks = LooksOf(store);
    std::vector<LayerChange> looks = allLooks;
    std::erase_if(looks, [&](const LayerChange& look) {  // what comes in under its code is another layer
        return std::find(free.begin(), free.end(), look.code) != free.end();
    });
    std::set<std::string> hadLayers;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) hadLayers.emplace(store.Layer(i).code.View());
    std::set<std::string> hadData;
    for (const BlockKey& key : BlockKeys(store)) hadData.insert(key.code);
    const std::vector<LayerRecord> records = RecordsOf(store, free);
    const std::map<BlockKey, BlockBox> bounds = BoundsOf(store, BlockKeys(store));
    const std::map<BlockKey, BlockOrigin> origins = OriginsOf(store, BlockKeys(store));
    const std::vector<BlockCount> before = BlockCounts(store);
    const bool wasEmpty = !HasData();
    ImportResult result = Read(sources, std::move(options), {});
    const ImportedBlocks came = WhatCame(store, before);
    PutLooksBack(map_, std::move(looks));
    PutOrigins(store, origins);
    if (!result.Ok()) {
        DeleteBlocks(map_, came.made);
        PerformChanges(map_, Deletions(store, came.added), true);
        RemoveSubLayers(map_, NewSubLayers(store, allLooks));
        PutRecords(map_, records);
        PutBounds(store, bounds);
        return result;
    }
    std::vector<BlockKey> ofNewLayers = came.made;  // what the operator has locked stays so
    std::erase_if(ofNewLayers, [&](const BlockKey& key) { return hadData.count(key.code) != 0; });
    LetEdit(ofNewLayers);
    map_.Call("OrvSortLayer");  // the order of drawing follows the keys of the layers that came with it
    MapView(map_.Control()).SetSquareArea();
    map_.Call("OrvReDraw");
    sources_ += sources;
    std::vector<LayerChange> subLayers = NewSubLayers(store, allLooks);
    const bool anyCame = !came.made.empty() || !came.added.empty() || !subLayers.empty();
    if (anyCame) TakeSystemOfImport(result.summary, !wasEmpty, came.canGo);
    std::set<std::string> brought;
    for (std::string& code : history_.EmptyLayers()) {
        if (hadLayers.count(code) == 0) brought.insert(std::move(code));
    }
    history_.NoteEmptyLayers(brought);
    if (came.canGo) {
        history_.NoteImport(tr("importing"), came.made, came.added, std::move(subLayers), bounds, OwnKeys(store), records);
    } else {
        history_.ChangeLayers(tr("order of the layers"), OwnKeys(store));
        history_.NoteOtherChange();
    }
    emit Added();
    return result;
}

}  // namespace orvane
