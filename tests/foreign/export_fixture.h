// A store to fill, a folder to export into, and what GDAL reads back from it.
#pragma once

#include <gtest/gtest.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

#include <filesystem>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "foreign/export.h"
#include "foreign/source.h"

namespace orvane {

/// A feature as it was read.
struct ReadFeature {
    OGRFeatureUniquePtr feature;

    std::string Text(const char* name) const {
        const int at = feature->GetFieldIndex(name);
        return at < 0 ? "(no such attribute)" : feature->IsFieldSetAndNotNull(at) ? feature->GetFieldAsString(at) : "(null)";
    }
    double Number(const char* name) const {
        const int at = feature->GetFieldIndex(name);
        return at < 0 || !feature->IsFieldSetAndNotNull(at) ? -9.9e99 : feature->GetFieldAsDouble(at);
    }
    bool Has(const char* name) const { return feature->GetFieldIndex(name) >= 0; }
    const OGRGeometry* Geometry() const { return feature->GetGeometryRef(); }
    std::string Wkt() const {
        if (Geometry() == nullptr) return "none";
        OGRWktOptions iso;
        iso.variant = wkbVariantIso;
        return Geometry()->exportToWkt(iso);
    }
    /// The parts of a polygon or of several.
    std::vector<const OGRPolygon*> Parts() const {
        std::vector<const OGRPolygon*> parts;
        if (wkbFlatten(Geometry()->getGeometryType()) == wkbPolygon) parts.push_back(Geometry()->toPolygon());
        if (wkbFlatten(Geometry()->getGeometryType()) == wkbMultiPolygon) {
            for (const OGRPolygon* part : *Geometry()->toMultiPolygon()) parts.push_back(part);
        }
        return parts;
    }
};

class ExportTest : public ::testing::Test {
protected:
    ExportTest() {
        store.Init();
        folder = std::filesystem::path(::testing::TempDir()) / ("orvane-export-test-" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(folder);
    }
    ~ExportTest() override { std::filesystem::remove_all(folder); }

    std::string Path(const std::string& name) const { return (folder / name).string(); }
    /// Names in a folder, temporary ones included.
    static std::set<std::string> Names(const std::filesystem::path& in) {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(in)) names.insert(entry.path().filename().string());
        return names;
    }
    std::set<std::string> Names() const { return Names(folder); }

    void Layer(const std::string& code, std::int32_t layType, std::int32_t meshNo = 1, double GX = 0, double GY = 0) {
        ASSERT_TRUE(store.DigMemAlloc2(code, meshNo, layType, "", 1, GX, GY));
    }
    void Item(const std::string& code, std::int32_t datID, const std::vector<DigPnt>& pnts, std::int32_t lineTag = 0,
              std::int32_t meshNo = 1) {
        ASSERT_TRUE(store.AddDigDat(code, meshNo, datID, lineTag));
        if (!pnts.empty()) {
            ASSERT_TRUE(store.SetDigDatPnts(code, meshNo, datID, pnts));
        }
    }

    ExportResult Run(const std::string& name) {
        options.path = Path(name);
        return ExportVector(store, options);
    }
    static std::unique_ptr<GDALDataset, CloseDataset> Open(const std::string& path) {
        RegisterDrivers();
        return std::unique_ptr<GDALDataset, CloseDataset>(
            GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR));
    }
    /// All features of the named layer, or of the only one.
    static std::vector<ReadFeature> Read(const std::string& path, const std::string& layerName = "") {
        static std::vector<std::unique_ptr<GDALDataset, CloseDataset>> kept;  // features refer to their layer
        kept.push_back(Open(path));
        std::vector<ReadFeature> features;
        if (kept.back() == nullptr) return features;
        OGRLayer* layer = layerName.empty() ? kept.back()->GetLayer(0) : kept.back()->GetLayerByName(layerName.c_str());
        if (layer == nullptr) return features;
        for (OGRFeatureUniquePtr feature(layer->GetNextFeature()); feature; feature.reset(layer->GetNextFeature())) {
            features.push_back({std::move(feature)});
        }
        return features;
    }
    /// Exports and reads back the only layer.
    std::vector<ReadFeature> Through(const std::string& name) {
        const ExportResult result = Run(name);
        EXPECT_TRUE(result.Ok()) << result.error;
        return Read(options.path);
    }

    CDigMem store;
    ExportOptions options;
    std::filesystem::path folder;
};

inline bool HasNote(const ExportResult& result, const std::string& words) {
    for (const std::string& note : result.summary.notes) {
        if (note.find(words) != std::string::npos) return true;
    }
    return false;
}

}  // namespace orvane
