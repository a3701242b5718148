// One opened data source: what GDAL gives, with its faults told as import faults.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foreign/import.h"

class GDALDataset;
class OGRLayer;
class OGRSpatialReference;

namespace orvane {

/// A fault with its sentence.
struct Fault {
    ImportFault kind = ImportFault::None;
    std::string text;
    explicit operator bool() const { return kind != ImportFault::None; }
};

/// Makes GDAL's drivers known, once.
void RegisterDrivers();

struct CloseDataset {
    void operator()(GDALDataset* dataset) const;
};

/// A layer that has geometry, and the coordinate system to read it in.
struct SourceLayer {
    OGRLayer* layer = nullptr;
    std::string name;
    std::shared_ptr<OGRSpatialReference> system;
    int field = -1;  ///< position of the attribute that makes the layers, or -1
};

/// Lives longer than the layers that it gave.
class Source {
public:
    /// Opens to read. Layers without geometry are left out, and told in `notes`.
    Fault Open(const std::string& name, const ImportOptions& options, std::vector<std::string>& notes);
    const std::string& Name() const { return name_; }
    const std::vector<SourceLayer>& Layers() const { return layers_; }
    /// What the layers say of themselves, each text once.
    std::vector<std::string> Descriptions() const;

private:
    Fault OpenDataset();
    Fault TakeLayer(OGRLayer& layer, const ImportOptions& options, std::vector<std::string>& notes);

    std::string name_;
    std::unique_ptr<GDALDataset, CloseDataset> dataset_;
    std::vector<SourceLayer> layers_;
};

}  // namespace orvane
