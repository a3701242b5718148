#include "hosts/viewer/map_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "files/exchange_format.h"
#include "hosts/common/map_view.h"
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

/// What layers and sub layers look like now, with that as the state before and after.
std::vector<LayerChange> LooksOf(const CDigMem& store) {
    std::vector<LayerChange> looks;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        looks.push_back(Unchanged(layer));
        for (const SubLayDef& sub : layer.subLays) looks.push_back(Unchanged(layer, sub.subLayNo));
    }
    return looks;
}

/// Gives the layers the looks back that a reader changed.
void PutBack(OrvaneWidget& map, std::vector<LayerChange> looks) {
    const CDigMem& store = map.Control().store;
    std::erase_if(looks, [&](LayerChange& look) {
        const std::int32_t pos = store.FindLayDef(look.code);
        if (pos < 0) return true;
        look.after = Unchanged(store.Layer(pos), look.subLayNo).before;
        return look.after == look.before;
    });
    if (!looks.empty()) WriteLayerStates(map, looks, false);
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
    opened_.clear();
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

ImportResult MapFiles::Load(const QStringList& sources, ImportOptions options) {
    bool begun = false;
    const auto begin = [&] {
        begun = true;
        StartOver();
    };
    ImportResult result = Read(sources, std::move(options), begin);
    if (!result.Ok() && begun) {
        // What was begun and failed is neither the old map nor the new one.
        New();
        result.error += tr("; the map is empty now").toStdString();
    }
    if (!result.Ok()) return result;

    map_.PaintNow();
    LetEdit(0);
    map_.Call("OrvSortLayer");  // readers leave the blocks in the order of the file
    const bool isArchive = KindOfSource(sources.front()) == SourceKind::Archive;
    path_ = isArchive ? QFileInfo(sources.front()).absoluteFilePath() : QString();
    name_ = QFileInfo(sources.front()).fileName() + (sources.size() > 1 ? ", …" : "");
    version_ = isArchive ? readVersion_ : std::string();
    toldLosses_.clear();
    opened_ = sources_ = sources;
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
    CDigMem& store = map_.Control().store;
    // A map that was emptied is still that map, with its name and what can be taken back.
    if (!HasBlocks(store) && history_.Stack().count() == 0) return Load(sources, std::move(options));
    if (place_.IsMeshMap()) {
        options.frame = ImportFrame::Mesh;
    } else if (place_.HomeZone() != 0) {
        options.zone = place_.HomeZone();
    }
    const std::int32_t firstLayer = store.LayerCnt();
    const std::vector<BlockKey> before = BlockKeys(store);
    const std::vector<LayerChange> looks = LooksOf(store);
    bool anyShared = false;  // blocks that cannot be told apart, or were there and got more features
    ImportResult result = Read(sources, std::move(options), {}, &anyShared);
    std::vector<BlockKey> made = BlockKeys(store);
    const std::set<BlockKey> old(before.begin(), before.end());
    std::erase_if(made, [&](const BlockKey& key) { return old.count(key) > 0; });
    anyShared = anyShared || AnyKeyTwice(made);
    PutBack(map_, looks);
    if (!result.Ok()) {
        DeleteBlocks(map_, made);
        return result;
    }
    LetEdit(firstLayer);
    map_.Call("OrvSortLayer");  // the order of drawing follows the keys of the layers that came with it
    MapView(map_.Control()).SetSquareArea();
    map_.Call("OrvReDraw");
    sources_ += sources;
    anyShared ? history_.NoteOtherChange() : history_.NoteBlocks(tr("importing"), std::move(made));
    emit Added();
    return result;
}

}  // namespace orvane
