// Attributes and features of one layer of the output.
#pragma once

#include <ogrsf_frmts.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foreign/export.h"
#include "foreign/export_geometry.h"
#include "store/mesh_cells.h"
#include "store/records.h"

namespace orvane {

/// The attributes, in the order in which a layer has them.
enum class ExportField {
    Code,
    MeshNo,
    DatID,
    LineTag,
    SubLayNo,
    Color,
    Color2,
    Radius,
    RadiusX,
    RadiusY,
    Row,
    Column,
    Height,
    Text,
    Fcolor,
    Bcolor,
    Fntname,
    Size,
    Style,
    Pos,
    Angle,
    Fill,
    Uline,
    Strike,
};
inline constexpr std::size_t kExportFieldCnt = static_cast<std::size_t>(ExportField::Strike) + 1;

/// ASCII as it is, U+FFFD for every other byte.
std::string AsciiText(std::string_view bytes);

/// "#RRGGBB".
std::string ColorText(Rgb color);

/// The type of geometry that a layer of the type has in the format.
OGRwkbGeometryType GeometryTypeOf(std::int32_t layType, const ExportFormatFacts& format, bool heights);

/// Writes features into one layer, one at a time.
class FeatureWriter {
public:
    using Decode = std::function<std::string(std::string_view bytes)>;

    FeatureWriter(OGRLayer& out, const ExportFormatFacts& format, const LayerDef& layer, bool heights, Decode decode,
                  ExportLeftOut& leftOut);

    /// Gives the output layer its attributes. False, with GDAL's reason in the current GdalErrors, when it refuses one.
    bool MakeFields();
    /// One item; what has no geometry is counted. False, with GDAL's reason, when it could not be written.
    bool Write(const LayerDef& layer, const DigBlock& block, const DigDat& dat);
    /// The cell of one grid point.
    bool WriteCell(const LayerDef& layer, const DigBlock& block, const DigDat& dat, std::size_t pos, const MeshCell& cell);

    std::int64_t FeatureCnt() const { return featureCnt_; }
    /// Texts that the format has no room for as a whole.
    std::int64_t CutTexts() const { return cutTexts_; }

private:
    void Begin(const DigBlock& block, const DigDat& dat);
    void SetColors(const LayerDef& layer, const DigDat& dat);
    void SetText(const DigStr& str);
    void SetShape(const DigDat& dat);
    template <class T>
    void Set(ExportField field, T value) {
        if (const int at = at_[static_cast<std::size_t>(field)]; at >= 0) feature_->SetField(at, value);
    }
    void Set(ExportField field, std::string text);
    bool Finish(std::unique_ptr<OGRGeometry> geometry);
    GeometryFrame FrameOf(const DigBlock& block) const { return {block.GX, block.GY, heights_, !format_.mixesParts}; }

    OGRLayer& out_;
    const ExportFormatFacts& format_;
    std::int32_t layType_;
    bool heights_;
    Decode decode_;
    ExportLeftOut& leftOut_;
    std::string code_;
    std::array<int, kExportFieldCnt> at_{};  // position of each attribute in the layer, -1 where it has none
    std::unique_ptr<OGRFeature> feature_;
    std::int64_t featureCnt_ = 0;
    std::int64_t cutTexts_ = 0;
};

}  // namespace orvane
