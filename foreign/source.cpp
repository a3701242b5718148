#include "foreign/source.h"

#include <cpl_vsi.h>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <algorithm>

#include "foreign/gdal_errors.h"

namespace orvane {

namespace {

std::string FieldNames(const OGRFeatureDefn& definition) {
    std::string names;
    for (int i = 0; i < definition.GetFieldCount(); ++i) {
        if (i > 0) names += ", ";
        names += definition.GetFieldDefn(i)->GetNameRef();
    }
    return names.empty() ? "it has none" : "it has " + names;
}

bool OnTheEarth(const OGRSpatialReference& system) { return system.IsGeographic() || system.IsProjected(); }

// The system that the layer's coordinates are in; null when neither it nor the caller names one that is tied to the earth.
std::shared_ptr<OGRSpatialReference> SystemOf(OGRLayer& layer, const std::optional<int>& assumeEpsg) {
    const OGRSpatialReference* named = layer.GetSpatialRef();
    auto system = std::make_shared<OGRSpatialReference>();
    if (named != nullptr && OnTheEarth(*named)) {
        *system = *named;
    } else if (!assumeEpsg || system->importFromEPSG(*assumeEpsg) != OGRERR_NONE || !OnTheEarth(*system)) {
        return nullptr;
    }
    system->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return system;
}

}  // namespace

void RegisterDrivers() {
    static const bool done = (GDALAllRegister(), true);
    (void)done;
}

void CloseDataset::operator()(GDALDataset* dataset) const { GDALClose(GDALDataset::ToHandle(dataset)); }

Fault Source::Open(const std::string& name, const ImportOptions& options, std::vector<std::string>& notes) {
    name_ = name;
    if (Fault fault = OpenDataset()) return fault;
    for (int i = 0; i < dataset_->GetLayerCount(); ++i) {
        OGRLayer* layer = dataset_->GetLayer(i);
        if (layer == nullptr) return {ImportFault::Unreadable, "cannot read layer " + std::to_string(i + 1) + " of " + name_};
        if (Fault fault = TakeLayer(*layer, options, notes)) return fault;
    }
    return {};
}

Fault Source::OpenDataset() {
    RegisterDrivers();
    const GdalErrors errors;
    dataset_.reset(GDALDataset::Open(name_.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR));
    if (dataset_ != nullptr) return {};
    // Asked only now: sources need not be files.
    VSIStatBufL facts;
    if (VSIStatExL(name_.c_str(), &facts, VSI_STAT_EXISTS_FLAG) != 0) return {ImportFault::Missing, "no such file: " + name_};
    const std::string reason = errors.LastFailure().empty() ? "no known vector format" : errors.LastFailure();
    return {ImportFault::Unreadable, "cannot read " + name_ + ": " + reason};
}

Fault Source::TakeLayer(OGRLayer& layer, const ImportOptions& options, std::vector<std::string>& notes) {
    const GdalErrors errors;
    const OGRFeatureDefn& definition = *layer.GetLayerDefn();
    const std::string name = layer.GetName() == nullptr ? "" : layer.GetName();
    const std::string where = "layer " + name + " of " + name_;
    if (definition.GetGeomFieldCount() == 0) {
        notes.push_back(where + " has no geometry and is left out.");
        return {};
    }
    if (definition.GetGeomFieldCount() > 1) notes.push_back("Of " + where + " only the first geometry column is read.");
    SourceLayer taken{&layer, name, SystemOf(layer, options.assumeEpsg), -1};
    if (taken.system == nullptr) {
        return {ImportFault::NoCoordinateSystem,
                where + " has no coordinate system on the earth; say which one its coordinates are in (--assume EPSG)"};
    }
    if (!options.byField.empty()) {
        taken.field = definition.GetFieldIndex(options.byField.c_str());
        if (taken.field < 0) {
            return {ImportFault::NoSuchField, where + " has no attribute " + options.byField + "; " + FieldNames(definition)};
        }
    }
    layers_.push_back(std::move(taken));
    return {};
}

std::vector<std::string> Source::Descriptions() const {
    std::vector<std::string> texts;
    for (const SourceLayer& layer : layers_) {
        const char* text = layer.layer->GetMetadataItem("DESCRIPTION");
        if (text == nullptr || *text == '\0' || std::find(texts.begin(), texts.end(), text) != texts.end()) continue;
        texts.emplace_back(text);
    }
    return texts;
}

}  // namespace orvane
