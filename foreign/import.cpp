#include "foreign/import.h"

#include <ogrsf_frmts.h>

#include <algorithm>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <tuple>
#include <utility>

#include "foreign/default_look.h"
#include "foreign/gdal_errors.h"
#include "foreign/layer_codes.h"
#include "foreign/plane_system.h"
#include "foreign/shapes.h"
#include "foreign/source.h"
#include "geo/geo_conv.h"

namespace orvane {

namespace {

constexpr double kReadShare = 0.8;  // of the whole work, by progress

// What becomes one layer: items of one type, from one source layer or of one attribute value.
struct Group {
    std::string name;
    std::int32_t layType = 0;
    std::vector<std::vector<DigPnt>> items;
    std::map<std::int32_t, std::vector<std::vector<DigPnt>>> blocks;  // the items by the block that they go to
};

// The sheet that the middle of the bounds of mesh-frame points lies in.
std::int32_t SheetOf(const std::vector<DigPnt>& points) {
    const auto [left, right] = std::minmax_element(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
    const auto [low, high] = std::minmax_element(points.begin(), points.end(), [](auto& a, auto& b) { return a.y < b.y; });
    return GeoConv().MeshSplit({(left->x + right->x) / 2, (low->y + high->y) / 2}).mesh;
}

const char* TypeName(std::int32_t layType) { return layType == kLayPoint ? "point" : layType == kLayLine ? "line" : "polygon"; }

bool Contains(const std::vector<std::string>& texts, std::string_view text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

class Import {
public:
    Import(CDigMem& store, const ImportOptions& options) : store_(store), options_(options) {}

    ImportResult Run(std::span<const std::string> names) {
        Fault fault;
        try {
            fault = CheckOptions();
            if (!fault) fault = OpenAll(names);
            if (!fault) fault = ChooseSystem();
            if (!fault) fault = ReadAll();
            if (!fault) fault = StoreAll();
        } catch (const std::bad_alloc&) {
            fault = {ImportFault::NoRoom, "no memory"};
        }
        if (fault) {
            for (const ImportedLayer& layer : summary_.layers) store_.DigMemDeleteLay(layer.code);
            summary_.layers.clear();
        }
        return {fault.kind, fault.text, std::move(summary_)};
    }

private:
    Fault CheckOptions() const;
    Fault OpenAll(std::span<const std::string> names);
    Fault ChooseSystem();
    Fault ChooseZone(Datum datum);
    bool Middle(DigPnt& lonLat) const;
    Fault ReadAll();
    Fault ReadLayer(const Source& source, const SourceLayer& layer, double start, double share);
    Group& GroupOf(const SourceLayer& layer, const std::string& value, std::int32_t layType);
    std::string ValueOf(const SourceLayer& layer, const OGRFeature& feature);
    Fault StoreAll();
    void SplitIntoBlocks(Group& group) const;
    Fault StoreGroup(Group& group, const std::string& code, std::size_t nth, std::int64_t& storedCnt, std::int64_t itemCnt);
    /// Makes the record of a layer without data, where there is one of the code, ready for new data.
    void TakeOver(const std::string& code, std::int32_t layType, std::int32_t index);
    Fault StoreBlock(std::int32_t grpNo, std::vector<std::vector<DigPnt>>& items, const std::string& code,
                     std::int64_t& storedCnt, std::int64_t itemCnt);
    bool ToMesh() const { return options_.frame == ImportFrame::Mesh; }
    std::vector<std::string> LayerNames() const;
    void NoteWarnings(const GdalErrors& errors);
    bool GoOn(double fraction) const { return !options_.progress || options_.progress((std::min)(fraction, 1.0)); }
    void Note(std::string text) {
        if (!Contains(summary_.notes, text)) summary_.notes.push_back(std::move(text));
    }

    CDigMem& store_;
    const ImportOptions& options_;
    ImportSummary summary_;
    std::vector<Source> sources_;
    PlaneSystem target_;
    std::vector<Group> groups_;
    std::map<std::tuple<const OGRLayer*, std::string, std::int32_t>, std::size_t> groupAt_;
    std::int64_t withoutValueCnt_ = 0;
};

const Fault kCancelled{ImportFault::Cancelled, "cancelled; nothing was stored"};

Fault Import::CheckOptions() const {
    if (options_.zone && (*options_.zone < 1 || *options_.zone > kZoneCnt)) {
        return {ImportFault::BadOption,
                "no such zone: " + std::to_string(*options_.zone) + "; plane rectangular zones are 1 to 19"};
    }
    if (options_.zone && ToMesh()) return {ImportFault::BadOption, "the mesh frame belongs to no zone"};
    if (options_.assumeEpsg) {
        const GdalErrors quiet;
        OGRSpatialReference system;
        if (system.importFromEPSG(*options_.assumeEpsg) != OGRERR_NONE) {
            return {ImportFault::BadOption, "no such coordinate system: EPSG:" + std::to_string(*options_.assumeEpsg)};
        }
    }
    if (!store_.InitDone()) return {ImportFault::NoRoom, "the map is not initialised"};
    return {};
}

Fault Import::OpenAll(std::span<const std::string> names) {
    sources_.reserve(names.size());
    bool any = false;
    for (const std::string& name : names) {
        if (Fault fault = sources_.emplace_back().Open(name, options_, summary_.notes)) return fault;
        any = any || !sources_.back().Layers().empty();
        for (std::string& text : sources_.back().Descriptions()) {
            if (!Contains(summary_.descriptions, text)) summary_.descriptions.push_back(std::move(text));
        }
    }
    if (!any) return {ImportFault::Nothing, names.empty() ? "no source named" : "no layer with geometry in " + names.front()};
    return {};
}

Fault Import::ChooseSystem() {
    if (ToMesh()) {
        summary_.system = options_.shiftToTokyo ? "datum Tokyo" : "latitude and longitude as they came";
        return {};
    }
    std::optional<Datum> datum = options_.datum;
    const std::string whose = datum ? "that was named" : "of the first source";
    for (const Source& source : sources_) {
        for (const SourceLayer& layer : source.Layers()) {
            const std::optional<Datum> own = DatumOf(*layer.system);
            if (!datum) datum = own.value_or(Datum::Jgd2011);
            target_.datum = *datum;
            if (!own) {
                Note(layer.name + " is in " + layer.system->GetName() +
                     ", which has no plane system of its own; it goes into that of " + DatumName(*datum) + ".");
            } else if (own != datum) {
                Note(layer.name + " is on the datum " + DatumName(*own) + "; it goes into the plane system " + whose + ", on " +
                     DatumName(*datum) + ".");
            }
        }
    }
    if (Fault fault = ChooseZone(*datum)) return fault;
    OGRSpatialReference plane;
    plane.importFromEPSG(target_.Epsg());
    summary_.zone = target_.zone;
    summary_.epsg = target_.Epsg();
    summary_.system = plane.GetName() == nullptr ? "" : plane.GetName();
    if (target_.zone == kOddZone) {
        Note("Zone 19 has its origin at latitude 28 in this system and at 26 in EPSG:" + std::to_string(target_.Epsg()) +
             ", in which the data now lies.");
    }
    return {};
}

Fault Import::ChooseZone(Datum datum) {
    if (options_.zone) {
        target_ = {datum, *options_.zone};
        return {};
    }
    for (const Source& source : sources_) {
        for (const SourceLayer& layer : source.Layers()) {
            if (const int zone = ZoneOf(*layer.system)) {
                target_ = {datum, zone};
                Note("Zone " + std::to_string(zone) + " was taken because " + layer.name + " is in it.");
                return {};
            }
        }
    }
    DigPnt middle;
    const int zone = Middle(middle) ? NearestZone(middle.x, middle.y) : 0;
    if (zone == 0) {
        return {ImportFault::NoCoordinateSystem,
                "the data's middle does not lie in Japan; say which zone to take (--zone 1 to 19)"};
    }
    target_ = {datum, zone};
    Note("Zone " + std::to_string(zone) + " was taken: its origin is nearest to the middle of the data.");
    return {};
}

// The middle of all data by longitude and latitude; false when there is none.
bool Import::Middle(DigPnt& lonLat) const {
    const GdalErrors quiet;
    OGREnvelope all;
    for (const Source& source : sources_) {
        for (const SourceLayer& layer : source.Layers()) {
            OGREnvelope own;
            Projector projector;
            if (layer.layer->GetExtent(&own, TRUE) != OGRERR_NONE || !projector.ToGeographic(*layer.system)) continue;
            for (DigPnt corner : {DigPnt{own.MinX, own.MinY}, DigPnt{own.MinX, own.MaxY}, DigPnt{own.MaxX, own.MinY},
                                  DigPnt{own.MaxX, own.MaxY}}) {
                if (projector.Carry({&corner, 1})) all.Merge(corner.x, corner.y);
            }
        }
    }
    if (!all.IsInit()) return false;
    lonLat = {(all.MinX + all.MaxX) / 2, (all.MinY + all.MaxY) / 2};
    return true;
}

Fault Import::ReadAll() {
    std::size_t layerCnt = 0;
    for (const Source& source : sources_) layerCnt += source.Layers().size();
    const double share = kReadShare / static_cast<double>(layerCnt);
    double start = 0;
    for (const Source& source : sources_) {
        for (const SourceLayer& layer : source.Layers()) {
            if (Fault fault = ReadLayer(source, layer, start, share)) return fault;
            start += share;
        }
    }
    if (withoutValueCnt_ > 0) {
        Note(std::to_string(withoutValueCnt_) + " features have no value of " + options_.byField +
             "; they are in a layer of their own.");
    }
    if (groups_.empty()) return {ImportFault::Nothing, "no geometry in " + sources_.front().Name() + " could be stored"};
    return {};
}

Fault Import::ReadLayer(const Source& source, const SourceLayer& layer, double start, double share) {
    GdalErrors errors;
    const std::string where = "layer " + layer.name + " of " + source.Name();
    Projector projector;
    if (!(ToMesh() ? projector.ToMeshFrame(*layer.system, options_.shiftToTokyo) : projector.ToPlane(*layer.system, target_))) {
        return {ImportFault::NoCoordinateSystem, where + " cannot be projected: " + errors.LastFailure()};
    }
    const auto expected = static_cast<double>((std::max)(GIntBig{1}, layer.layer->GetFeatureCount(FALSE)));
    std::string value;
    ShapeReader reader(projector, summary_.leftOut,
                       [&](Shape&& shape) { GroupOf(layer, value, shape.layType).items.push_back(std::move(shape.pnts)); });
    layer.layer->ResetReading();
    for (std::int64_t n = 1;; ++n) {
        const OGRFeatureUniquePtr feature(layer.layer->GetNextFeature());
        if (feature == nullptr) break;
        ++summary_.featureCnt;
        value = ValueOf(layer, *feature);
        if (feature->GetGeometryRef() == nullptr && !errors.LastFailure().empty()) {
            ++summary_.leftOut.unknownType;  // there is one, but GDAL could not make it out
        } else {
            reader.Read(feature->GetGeometryRef());
        }
        errors.DemoteFailure();
        if (!GoOn(start + share * (std::min)(1.0, static_cast<double>(n) / expected))) return kCancelled;
    }
    if (!errors.LastFailure().empty()) return {ImportFault::Unreadable, "cannot read " + where + ": " + errors.LastFailure()};
    NoteWarnings(errors);
    return {};
}

void Import::NoteWarnings(const GdalErrors& errors) {
    for (const std::string& warning : errors.Warnings()) Note("GDAL: " + warning);
    if (errors.MoreWarnings()) Note("GDAL had more to say than is told here.");
}

std::string Import::ValueOf(const SourceLayer& layer, const OGRFeature& feature) {
    if (layer.field < 0) return {};
    const char* text = feature.IsFieldSetAndNotNull(layer.field) ? feature.GetFieldAsString(layer.field) : "";
    if (text != nullptr && *text != '\0') return text;
    ++withoutValueCnt_;
    return "(" + options_.byField + ")";
}

Group& Import::GroupOf(const SourceLayer& layer, const std::string& value, std::int32_t layType) {
    // By an attribute the same value means the same layer, in whichever source it stands.
    const bool byValue = layer.field >= 0;
    const auto [at, isNew] = groupAt_.try_emplace({byValue ? nullptr : layer.layer, value, layType}, groups_.size());
    if (isNew) groups_.push_back({byValue ? value : layer.name, layType, {}, {}});
    return groups_[at->second];
}

// The type belongs to the name where the same source or value has several.
std::vector<std::string> Import::LayerNames() const {
    std::map<std::string, std::set<std::int32_t>> typesOf;
    for (const Group& group : groups_) typesOf[group.name].insert(group.layType);
    std::vector<std::string> names;
    for (const Group& group : groups_) {
        names.push_back(typesOf[group.name].size() > 1 ? group.name + "_" + TypeName(group.layType) : group.name);
    }
    return names;
}

Fault Import::StoreAll() {
    if (options_.beforeStoring) options_.beforeStoring();
    std::int64_t itemCnt = 0;
    std::size_t blockCnt = 0;
    std::set<std::int32_t> sheets;
    for (Group& group : groups_) {
        itemCnt += static_cast<std::int64_t>(group.items.size());
        SplitIntoBlocks(group);
        blockCnt += group.blocks.size();
        for (const auto& block : group.blocks) sheets.insert(block.first);
    }
    if (ToMesh()) summary_.sheetCnt = static_cast<std::int64_t>(sheets.size());
    if (groups_.size() > static_cast<std::size_t>(kMaxLayers - store_.LayerCnt())) {
        return {ImportFault::NoRoom, std::to_string(groups_.size()) + " layers are more than the map has room for"};
    }
    const auto blockRoom = static_cast<std::size_t>(kMaxDigIndex - store_.GetDigIndexCnt());
    if (blockCnt > blockRoom) {
        return {ImportFault::NoRoom, std::to_string(blockCnt) + " blocks are more than the map has room for: " +
                                         std::to_string(blockRoom) + " of " + std::to_string(kMaxDigIndex) + " are free"};
    }
    const auto before = static_cast<std::size_t>(store_.LayerCnt());  // what comes beside other layers has other colours
    LayerCodes codes(options_.encode);
    for (std::int32_t i = 0; i < store_.LayerCnt(); ++i) {
        const std::string_view code = store_.Layer(i).code.View();
        if (!Contains(options_.freeCodes, code)) codes.Take(code);
    }
    const std::vector<std::string> names = LayerNames();

    std::int64_t storedCnt = 0;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        const std::string code = codes.Make(names[i]);
        summary_.layers.push_back({code, names[i], groups_[i].layType, 0, 0});
        if (Fault fault = StoreGroup(groups_[i], code, before + i, storedCnt, itemCnt)) return fault;
        store_.SetLayerName(code, codes.Bytes(names[i], 256));
    }
    if (codes.LostCharacters()) Note("Some layer names hold characters that code page 932 lacks; they stand as 〓 or '_'.");
    return {};
}

void Import::SplitIntoBlocks(Group& group) const {
    if (!ToMesh()) {
        group.blocks[options_.grpNo] = std::move(group.items);
        return;
    }
    for (std::vector<DigPnt>& points : group.items) group.blocks[SheetOf(points)].push_back(std::move(points));
    group.items.clear();
}

Fault Import::StoreGroup(Group& group, const std::string& code, std::size_t nth, std::int64_t& storedCnt, std::int64_t itemCnt) {
    const std::int32_t index = DefaultLayIndex(group.layType, store_.LayerCnt());
    bool isFirst = true;
    if (!group.blocks.empty()) TakeOver(code, group.layType, index);
    for (auto& [grpNo, items] : group.blocks) {
        if (!store_.DigMemAlloc2(code, grpNo, group.layType, "", index, 0, 0)) {
            return {ImportFault::NoRoom, "no memory for layer " + group.name};
        }
        if (std::exchange(isFirst, false)) SetDefaultLook(store_, code, group.layType, nth);
        if (Fault fault = StoreBlock(grpNo, items, code, storedCnt, itemCnt)) return fault;
    }
    return {};
}

void Import::TakeOver(const std::string& code, std::int32_t layType, std::int32_t index) {
    const std::int32_t pos = store_.FindLayDef(code);
    if (pos < 0) return;
    LayerDisplay plain;  // as a layer is made
    plain.disp = plain.outLine = plain.active = plain.fillMode = true;
    plain.lineSize = 1;
    store_.SetLayDisplay(code, plain);
    store_.SetLayIndex(code, index);
    store_.MutableLayer(pos).layType = layType;
    store_.MutableLayer(pos).imgMode = 0;
}

Fault Import::StoreBlock(std::int32_t grpNo, std::vector<std::vector<DigPnt>>& items, const std::string& code,
                         std::int64_t& storedCnt, std::int64_t itemCnt) {
    ImportedLayer& told = summary_.layers.back();
    std::int32_t datID = 0;
    for (std::vector<DigPnt>& points : items) {
        ++datID;
        // Host code runs between two items and may have emptied the map, so every call goes by key and may fail.
        if (!store_.AddDigDat(code, grpNo, datID, 0) || !store_.SetDigDatPnts(code, grpNo, datID, points)) {
            return {ImportFault::NoRoom, "no memory for layer " + told.name};
        }
        ++told.itemCnt;
        told.pntCnt += static_cast<std::int64_t>(points.size());
        std::vector<DigPnt>().swap(points);  // it now stands in the store
        ++storedCnt;
        const double done = static_cast<double>(storedCnt) / static_cast<double>(itemCnt);
        if (!GoOn(kReadShare + (1 - kReadShare) * done)) return kCancelled;
    }
    return {};
}

}  // namespace

ImportResult ImportVector(CDigMem& store, std::span<const std::string> sources, const ImportOptions& options) {
    return Import(store, options).Run(sources);
}

}  // namespace orvane
