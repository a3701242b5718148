#include "foreign/export.h"

#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "foreign/export_features.h"
#include "foreign/export_names.h"
#include "foreign/export_target.h"
#include "foreign/gdal_errors.h"
#include "foreign/json_check.h"
#include "foreign/source.h"
#include "store/mesh_size.h"

namespace orvane {

namespace {

constexpr std::int64_t kStepsPerProgress = 1000;

// One layer of the output. Blocks are kept by position and asked for their key again: host code runs while they are written.
struct PlannedBlock {
    std::int32_t pos = 0;
    std::int32_t meshNo = 0;
    std::int32_t datCnt = 0;
};

struct PlannedLayer {
    std::int32_t pos = 0;
    std::string code;
    std::string name;
    std::int32_t layType = 0;
    bool heights = false;
    std::vector<PlannedBlock> blocks;
};

bool IsExported(std::int32_t layType) {
    switch (layType) {
        case kLayPoint:
        case kLayLine:
        case kLayPolygon:
        case kLayCircle:
        case kLayText:
        case kLayEllipse:
        case kLayMesh:
            return true;
        default:
            return false;
    }
}

// Cells that a mesh item shows: none without a grid of two rows and columns, nor behind the points and flags that it has.
std::size_t CellCnt(const DigDat& dat) {
    const DigMeshAttr* attr = dat.meshAttr.get();
    if (attr == nullptr || attr->hcnt < 2 || attr->vcnt < 2 || dat.pntCnt < 2 || !attr->useFlag || !attr->meshColor) return 0;
    return (std::min)(MeshSize(*attr), static_cast<std::size_t>(dat.pntCnt));
}

class Export {
public:
    Export(CDigMem& store, const ExportOptions& options) : store_(store), options_(options) {}

    ExportResult Run() {
        ExportFailure failure;
        try {
            failure = CheckOptions();
            if (!failure) failure = PlanLayers();
            if (!failure) failure = target_.Prepare(options_, summary_.format);
            if (!failure) failure = CheckLayerCount();
            if (!failure) failure = WriteAll();
            if (!failure) failure = target_.Publish();
        } catch (const std::bad_alloc&) {
            failure = {ExportFault::NoRoom, "no memory"};
        }
        if (failure) summary_.layers.clear();
        return {failure.kind, failure.text, std::move(summary_)};
    }

private:
    ExportFailure CheckOptions();
    ExportFailure CheckFormat();
    ExportFailure PlanLayers();
    ExportFailure CheckLayerCount() const;
    ExportFailure WriteAll();
    ExportFailure WriteFile(std::span<const PlannedLayer> layers, const std::string& path);
    ExportFailure WriteLayer(GDALDataset& dataset, const PlannedLayer& layer, const GdalErrors& errors);
    ExportFailure WriteItems(FeatureWriter& writer, const PlannedLayer& layer, const GdalErrors& errors);
    ExportFailure WriteMesh(FeatureWriter& writer, const PlannedLayer& layer, const PlannedBlock& block, std::int32_t dat,
                            const GdalErrors& errors);
    const DigBlock* Find(const PlannedLayer& layer, const PlannedBlock& block) const;
    char** LayerSettings(const PlannedLayer& layer) const;
    bool Step();
    std::string Decoded(std::string_view bytes) const { return options_.decode ? options_.decode(bytes) : AsciiText(bytes); }
    ExportFailure NotWritten(const std::string& what, const GdalErrors& errors) const {
        return {ExportFault::NotWritten,
                "cannot write " + what + ": " + (errors.LastFailure().empty() ? "GDAL gives no reason" : errors.LastFailure())};
    }
    void Note(std::string text) {
        if (std::find(summary_.notes.begin(), summary_.notes.end(), text) == summary_.notes.end()) {
            summary_.notes.push_back(std::move(text));
        }
    }

    CDigMem& store_;
    const ExportOptions& options_;
    ExportSummary summary_;
    ExportTarget target_;
    std::vector<PlannedLayer> layers_;
    std::unique_ptr<OGRSpatialReference> system_;
    std::uint32_t resetCount_ = 0;
    std::int64_t stepCnt_ = 0;  // items, and cells of meshes, of all layers
    std::int64_t stepsDone_ = 0;
    std::int64_t cutTexts_ = 0;
};

const ExportFailure kCancelled{ExportFault::Cancelled, "cancelled; nothing was written"};
const ExportFailure kChanged{ExportFault::Changed, "the map changed while it was written; nothing was kept"};

ExportFailure Export::CheckOptions() {
    if (options_.datum.has_value() != options_.zone.has_value()) {
        return {ExportFault::BadOption, "a coordinate system takes both, a datum and a zone"};
    }
    if (options_.zone && (*options_.zone < 1 || *options_.zone > kZoneCnt)) {
        return {ExportFault::BadOption,
                "no such zone: " + std::to_string(*options_.zone) + "; plane rectangular zones are 1 to 19"};
    }
    if (ExportFailure failure = CheckFormat()) return failure;
    if (!store_.InitDone()) return {ExportFault::Nothing, "the map is not initialised"};
    resetCount_ = store_.ResetCount();
    RegisterDrivers();
    if (!options_.zone) {
        if (summary_.format == ExportFormat::GeoPackage) {
            // The format has a number for metres of an unnamed plane, which the driver knows by this name. With no system at all
            // the coordinates would count as degrees of an unnamed globe.
            system_ = std::make_unique<OGRSpatialReference>();
            system_->SetLocalCS("Undefined Cartesian SRS");
            system_->SetLinearUnits("metre", 1);
        }
        if (summary_.format == ExportFormat::GeoJson) {
            Note("No coordinate system is named: readers of GeoJSON will take the metres for longitude and latitude.");
        }
        return {};
    }
    const GdalErrors errors;
    summary_.epsg = PlaneSystem{*options_.datum, *options_.zone}.Epsg();
    system_ = std::make_unique<OGRSpatialReference>();
    if (system_->importFromEPSG(summary_.epsg) != OGRERR_NONE) {
        return NotWritten("coordinate system EPSG:" + std::to_string(summary_.epsg), errors);
    }
    system_->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    if (*options_.zone == kOddZone) {
        Note("Zone 19 has its origin at latitude 28 in this system and at 26 in EPSG:" + std::to_string(summary_.epsg) +
             "; coordinates that a change of the map's frame has made are 2 degrees off.");
    }
    return {};
}

ExportFailure Export::CheckFormat() {
    const std::optional<ExportFormat> format = options_.format ? options_.format : ExportFormatByExtension(options_.path);
    if (!format) {
        std::string names;
        for (const ExportFormatFacts& facts : ExportFormats()) {
            names += std::string(names.empty() ? "" : ", ") + facts.name + " (" + std::string(facts.extensions.front()) + ")";
        }
        return {ExportFault::BadOption, "cannot tell a format from " + options_.path + "; name one of " + names};
    }
    summary_.format = *format;
    return {};
}

ExportFailure Export::PlanLayers() {
    std::vector<std::int32_t> chosen;
    for (const std::string& code : options_.layers) {
        const std::int32_t pos = store_.FindLayDef(code);
        if (pos < 0) return {ExportFault::BadOption, "no such layer: " + Decoded(code)};
        if (std::find(chosen.begin(), chosen.end(), pos) == chosen.end()) chosen.push_back(pos);
    }
    if (options_.layers.empty()) {
        const auto& leaveOut = options_.leaveOut;
        for (std::int32_t pos = 0; pos < store_.LayerCnt(); ++pos) {
            const bool out = std::find(leaveOut.begin(), leaveOut.end(), store_.Layer(pos).code.View()) != leaveOut.end();
            if (!out) chosen.push_back(pos);
        }
    }
    std::vector<PlannedLayer> all(static_cast<std::size_t>(store_.LayerCnt()));
    for (const DigIndex& slot : store_.Index()) {
        const DigBlock& block = store_.Block(slot.block);
        const bool known = slot.layer < store_.LayerCnt() && IsExported(store_.Layer(slot.layer).layType);
        if (!known) {
            if (options_.layers.empty()) summary_.leftOut.unknownType += block.datCnt;
        } else if (block.datCnt > 0) {
            all[static_cast<std::size_t>(slot.layer)].blocks.push_back({slot.block, block.meshNo, block.datCnt});
        }
    }
    ExportNames names;
    for (const std::int32_t pos : chosen) {
        const LayerDef& def = store_.Layer(pos);
        PlannedLayer& layer = all[static_cast<std::size_t>(pos)];
        if (layer.blocks.empty()) {
            ++summary_.leftOut.emptyLayers;
            continue;
        }
        layer.pos = pos;
        layer.code = def.code.View();
        layer.layType = def.layType;
        layer.name = names.Make(Decoded(layer.code));
        for (const PlannedBlock& block : layer.blocks) {
            for (const DigDat& dat : store_.Block(block.pos).dats) {
                layer.heights = layer.heights || HasHeight(dat, layer.layType);
                stepCnt_ += 1 + static_cast<std::int64_t>(layer.layType == kLayMesh ? CellCnt(dat) : 0);
            }
        }
        layers_.push_back(std::move(layer));
    }
    if (layers_.empty()) return {ExportFault::Nothing, "no layer with items to write"};
    return {};
}

ExportFailure Export::CheckLayerCount() const {
    if (!target_.OneLayerOnly() || layers_.size() == 1) return {};
    const std::string name = FactsOf(summary_.format).name;
    return {ExportFault::BadOption, options_.path + " holds one layer, and there are " + std::to_string(layers_.size()) +
                                        "; choose one with --layer, or name a folder and --format " + name};
}

ExportFailure Export::WriteAll() {
    if (FactsOf(summary_.format).manyLayers) {
        if (ExportFailure failure = WriteFile(layers_, "")) return failure;
    } else {
        for (const PlannedLayer& layer : layers_) {
            if (ExportFailure failure = WriteFile({&layer, 1}, layer.name)) return failure;
        }
    }
    if (cutTexts_ > 0) {
        Note(std::to_string(cutTexts_) + " texts were cut to 254 bytes, which is all that a Shapefile holds.");
    }
    if (options_.progress && !options_.progress(1)) return kCancelled;
    return {};
}

ExportFailure Export::WriteFile(std::span<const PlannedLayer> layers, const std::string& name) {
    const GdalErrors errors;
    const ExportFormatFacts& format = FactsOf(summary_.format);
    const std::string shown = target_.FinalPath(name);
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(format.driver);
    if (driver == nullptr) return {ExportFault::NotWritten, std::string("this GDAL cannot write ") + format.name};
    std::unique_ptr<GDALDataset, CloseDataset> dataset(
        driver->Create(target_.WritePath(name).c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    if (dataset == nullptr) return NotWritten(shown, errors);
    // Without one of its own, every feature would be a transaction for the database.
    const bool transaction = dataset->TestCapability(ODsCTransactions);
    if (transaction && dataset->StartTransaction() != OGRERR_NONE) return NotWritten(shown, errors);
    for (const PlannedLayer& layer : layers) {
        summary_.layers.push_back({layer.code, layer.name, shown, layer.layType, 0});
        if (ExportFailure failure = WriteLayer(*dataset, layer, errors)) return failure;
    }
    if (transaction && dataset->CommitTransaction() != OGRERR_NONE) return NotWritten(shown, errors);
    dataset.reset();
    // What goes wrong at the very end, as when the disk is full, is only told as an error.
    if (!errors.LastFailure().empty()) return NotWritten(shown, errors);
    // One driver does not look at what its writes answer.
    if (summary_.format == ExportFormat::GeoJson &&
        CountListedObjects(PathOfUtf8(target_.WritePath(name))) != summary_.layers.back().featureCnt) {
        return {ExportFault::NotWritten, "cannot write " + shown + ": not all of it came onto the disk"};
    }
    for (const std::string& warning : errors.Warnings()) Note("GDAL: " + warning);
    if (errors.MoreWarnings()) Note("GDAL had more to say than is told here.");
    return {};
}

struct FreeSettings {
    void operator()(char** list) const { CSLDestroy(list); }
};

char** Export::LayerSettings(const PlannedLayer& layer) const {
    char** list = nullptr;
    const std::string about = Decoded(store_.Layer(layer.pos).layerName.View());
    switch (summary_.format) {
        case ExportFormat::GeoPackage:
        case ExportFormat::GeoJson:
            if (!about.empty()) list = CSLSetNameValue(list, "DESCRIPTION", about.c_str());
            break;
        case ExportFormat::Shapefile:
            list = CSLSetNameValue(list, "ENCODING", "UTF-8");
            break;
        case ExportFormat::FlatGeobuf:
            break;
    }
    return list;
}

ExportFailure Export::WriteLayer(GDALDataset& dataset, const PlannedLayer& layer, const GdalErrors& errors) {
    const ExportFormatFacts& format = FactsOf(summary_.format);
    const std::string what = "layer " + layer.name + " to " + options_.path;
    const std::unique_ptr<char*, FreeSettings> settings(LayerSettings(layer));
    OGRLayer* out = dataset.CreateLayer(layer.name.c_str(), system_.get(), GeometryTypeOf(layer.layType, format, layer.heights),
                                        settings.get());
    if (out == nullptr) return NotWritten(what, errors);
    FeatureWriter writer(*out, format, store_.Layer(layer.pos), layer.heights, options_.decode, summary_.leftOut);
    if (!writer.MakeFields()) return NotWritten(what, errors);
    if (ExportFailure failure = WriteItems(writer, layer, errors)) return failure;
    summary_.layers.back().featureCnt = writer.FeatureCnt();
    cutTexts_ += writer.CutTexts();
    return {};
}

// Null when host code has changed the block since it was planned.
const DigBlock* Export::Find(const PlannedLayer& layer, const PlannedBlock& block) const {
    if (store_.ResetCount() != resetCount_ || block.pos >= store_.BlockCnt() || !(store_.Layer(layer.pos).code == layer.code)) {
        return nullptr;
    }
    const DigBlock& found = store_.Block(block.pos);
    const bool same = found.blkState != kFreeBlock && found.meshNo == block.meshNo && found.datCnt == block.datCnt &&
                      found.code == layer.code && store_.Layer(layer.pos).layType == layer.layType;
    return same ? &found : nullptr;
}

ExportFailure Export::WriteItems(FeatureWriter& writer, const PlannedLayer& layer, const GdalErrors& errors) {
    for (const PlannedBlock& planned : layer.blocks) {
        for (std::int32_t i = 0; i < planned.datCnt; ++i) {
            const DigBlock* block = Find(layer, planned);
            if (block == nullptr) return kChanged;
            if (layer.layType == kLayMesh) {
                if (ExportFailure failure = WriteMesh(writer, layer, planned, i, errors)) return failure;
            } else if (!writer.Write(store_.Layer(layer.pos), *block, block->dats[static_cast<std::size_t>(i)])) {
                return NotWritten("layer " + layer.name + " to " + options_.path, errors);
            }
            if (!Step()) return kCancelled;
        }
    }
    return {};
}

ExportFailure Export::WriteMesh(FeatureWriter& writer, const PlannedLayer& layer, const PlannedBlock& planned, std::int32_t pos,
                                const GdalErrors& errors) {
    const auto item = static_cast<std::size_t>(pos);
    const DigDat& first = store_.Block(planned.pos).dats[item];
    const std::size_t cellCnt = CellCnt(first);
    if (cellCnt == 0) {
        ++summary_.leftOut.noGrid;
        return {};
    }
    const std::int32_t inRow = first.meshAttr->hcnt;
    MeshCellWalk walk(*first.meshAttr);
    for (std::size_t i = 0; i < cellCnt; ++i) {
        const DigBlock* block = Find(layer, planned);
        if (block == nullptr || CellCnt(block->dats[item]) != cellCnt) return kChanged;
        const DigDat& dat = block->dats[item];
        if (dat.meshAttr->hcnt != inRow) return kChanged;
        const MeshCell cell = walk.Next({dat.pnts.Get(), static_cast<std::size_t>(dat.pntCnt)});
        if (dat.meshAttr->useFlag[i] != 0 && !writer.WriteCell(store_.Layer(layer.pos), *block, dat, i, cell)) {
            return NotWritten("layer " + layer.name + " to " + options_.path, errors);
        }
        if (!Step()) return kCancelled;
    }
    return {};
}

bool Export::Step() {
    ++stepsDone_;
    if (stepsDone_ % kStepsPerProgress != 0 || !options_.progress) return true;
    return options_.progress((std::min)(1.0, static_cast<double>(stepsDone_) / static_cast<double>(stepCnt_)));
}

}  // namespace

ExportResult ExportVector(CDigMem& store, const ExportOptions& options) { return Export(store, options).Run(); }

}  // namespace orvane
