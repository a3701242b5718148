#include "foreign/export_features.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "store/cdigmem.h"

namespace orvane {

namespace {

constexpr unsigned Bit(std::int32_t layType) { return 1U << static_cast<unsigned>(layType); }
constexpr unsigned kRound = Bit(kLayCircle) | Bit(kLayEllipse);
constexpr unsigned kAll = ~0U;

struct FieldFacts {
    const char* name;  // at most ten letters: one of the formats has room for no more
    OGRFieldType type;
    int width;          // in bytes or digits, for the format that stores columns of fixed width
    unsigned layTypes;  // that have it
};

// In the order of ExportField.
constexpr std::array<FieldFacts, kExportFieldCnt> kFields = {{
    {"code", OFTString, 150, kAll},  // every one of its 50 bytes may become three
    {"meshNo", OFTInteger, 11, kAll},
    {"datID", OFTInteger, 11, kAll},
    {"lineTag", OFTInteger, 11, kAll},
    {"subLayNo", OFTInteger, 11, kAll},
    {"color", OFTString, 7, kAll},
    {"color2", OFTString, 7, kRound | Bit(kLayPolygon) | Bit(kLayMesh)},
    {"radius", OFTReal, 0, Bit(kLayCircle)},
    {"radiusX", OFTReal, 0, Bit(kLayEllipse)},
    {"radiusY", OFTReal, 0, Bit(kLayEllipse)},
    {"row", OFTInteger, 11, Bit(kLayMesh)},
    {"column", OFTInteger, 11, Bit(kLayMesh)},
    {"height", OFTReal, 0, Bit(kLayMesh)},
    {"text", OFTString, 254, kAll},
    {"fcolor", OFTString, 7, kAll},
    {"bcolor", OFTString, 7, kAll},
    {"fntname", OFTString, 150, Bit(kLayText)},
    {"size", OFTInteger, 11, Bit(kLayText)},
    {"style", OFTInteger, 11, Bit(kLayText)},
    {"pos", OFTInteger, 11, Bit(kLayText)},
    {"angle", OFTReal, 0, Bit(kLayText)},
    {"fill", OFTInteger, 11, Bit(kLayText)},
    {"uline", OFTInteger, 11, Bit(kLayText)},
    {"strike", OFTInteger, 11, Bit(kLayText)},
}};

// Cut before the first character that does not fit as a whole.
void CutUtf8(std::string& text, std::size_t limit_bytes) {
    if (text.size() <= limit_bytes) return;
    std::size_t end = limit_bytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    text.resize(end);
}

}  // namespace

std::string AsciiText(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) text += static_cast<unsigned char>(c) < 0x80U ? std::string(1, c) : "\xEF\xBF\xBD";
    return text;
}

std::string ColorText(Rgb color) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text = "#";
    for (int shift = 0; shift <= 16; shift += 8) {  // red stands lowest
        text += kDigits[color >> (shift + 4) & 15U];
        text += kDigits[color >> shift & 15U];
    }
    return text;
}

OGRwkbGeometryType GeometryTypeOf(std::int32_t layType, const ExportFormatFacts& format, bool heights) {
    OGRwkbGeometryType type = wkbPolygon;
    if (layType == kLayPoint || layType == kLayText) type = wkbPoint;
    if (layType == kLayLine) type = wkbLineString;
    // Where polygons of one part and of several may mix, either name would do, but one of the formats knows this one only.
    if (layType == kLayPolygon && !format.mixesParts) type = wkbMultiPolygon;
    return heights ? wkbSetZ(type) : type;
}

FeatureWriter::FeatureWriter(OGRLayer& out, const ExportFormatFacts& format, const LayerDef& layer, bool heights, Decode decode,
                             ExportLeftOut& leftOut)
    : out_(out),
      format_(format),
      layType_(layer.layType),
      heights_(heights),
      decode_(decode ? std::move(decode) : Decode(AsciiText)),
      leftOut_(leftOut),
      code_(decode_(layer.code.View())) {
    at_.fill(-1);
}

bool FeatureWriter::MakeFields() {
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if ((kFields[i].layTypes & Bit(layType_)) == 0) continue;
        OGRFieldDefn field(kFields[i].name, kFields[i].type);
        if (format_.maxText_bytes > 0) field.SetWidth(kFields[i].width);
        if (out_.CreateField(&field) != OGRERR_NONE) return false;
        at_[i] = out_.GetLayerDefn()->GetFieldCount() - 1;
    }
    feature_ = std::make_unique<OGRFeature>(out_.GetLayerDefn());
    return true;
}

bool FeatureWriter::Write(const LayerDef& layer, const DigBlock& block, const DigDat& dat) {
    std::unique_ptr<OGRGeometry> geometry = GeometryOf(dat, layType_, FrameOf(block), leftOut_);
    if (geometry == nullptr) return true;
    Begin(block, dat);
    SetColors(layer, dat);
    SetShape(dat);
    return Finish(std::move(geometry));
}

bool FeatureWriter::WriteCell(const LayerDef& layer, const DigBlock& block, const DigDat& dat, std::size_t pos,
                              const MeshCell& cell) {
    std::unique_ptr<OGRGeometry> geometry = CellGeometry(cell.corners, FrameOf(block));
    const double height = dat.pnts[pos].z;
    if (geometry == nullptr) {
        ++leftOut_.cells;
        return true;
    }
    Begin(block, dat);
    const auto inRow = static_cast<std::size_t>(dat.meshAttr->hcnt);
    Set(ExportField::Row, static_cast<int>(pos / inRow));
    Set(ExportField::Column, static_cast<int>(pos % inRow));
    if (std::isfinite(height)) Set(ExportField::Height, height);
    Set(ExportField::Color, ColorText(dat.meshAttr->meshColor[pos]));
    Set(ExportField::Color2, ColorText(layer.color2));
    return Finish(std::move(geometry));
}

void FeatureWriter::Begin(const DigBlock& block, const DigDat& dat) {
    for (int i = 0; i < feature_->GetFieldCount(); ++i) feature_->SetFieldNull(i);
    feature_->SetFID(OGRNullFID);
    Set(ExportField::Code, code_);
    Set(ExportField::MeshNo, block.meshNo);
    Set(ExportField::DatID, dat.datID);
    Set(ExportField::LineTag, dat.lineTag);
    Set(ExportField::SubLayNo, dat.subLayNo);
    if (dat.str != nullptr) SetText(*dat.str);
}

// The colours that the map shows: a sub layer's take the place of the layer's, but neither texts nor meshes look at it.
void FeatureWriter::SetColors(const LayerDef& layer, const DigDat& dat) {
    const SubLayDef* sub = dat.subLayNo > 0 && layType_ != kLayText ? CDigMem::FindSubLay(layer, dat.subLayNo) : nullptr;
    if (sub != nullptr && sub->dspFlg != 1) sub = nullptr;
    Set(ExportField::Color, ColorText(sub != nullptr ? sub->color : layer.color));
    Set(ExportField::Color2, ColorText(sub != nullptr ? sub->color2 : layer.color2));
}

void FeatureWriter::SetText(const DigStr& str) {
    Set(ExportField::Text, decode_(str.text));
    Set(ExportField::Fcolor, ColorText(str.fcolor));
    Set(ExportField::Bcolor, ColorText(str.bcolor));
    Set(ExportField::Fntname, decode_(str.fntname));
    Set(ExportField::Size, str.size);
    Set(ExportField::Style, str.style);
    Set(ExportField::Pos, str.pos);
    if (std::isfinite(str.angle)) Set(ExportField::Angle, str.angle);
    Set(ExportField::Fill, static_cast<int>(str.fill));
    Set(ExportField::Uline, static_cast<int>(str.uline));
    Set(ExportField::Strike, static_cast<int>(str.strike));
}

// What a polygon of some points does not tell of the round figure that it stands for.
void FeatureWriter::SetShape(const DigDat& dat) {
    if (layType_ == kLayCircle) Set(ExportField::Radius, dat.pnts[0].z);
    if (layType_ != kLayEllipse) return;
    Set(ExportField::RadiusX, std::fabs(dat.pnts[1].x / 2 - dat.pnts[0].x / 2));
    Set(ExportField::RadiusY, std::fabs(dat.pnts[1].y / 2 - dat.pnts[0].y / 2));
}

void FeatureWriter::Set(ExportField field, std::string text) {
    const int at = at_[static_cast<std::size_t>(field)];
    if (at < 0) return;
    std::replace(text.begin(), text.end(), '\0', ' ');  // GDAL's texts end there
    if (format_.maxText_bytes > 0 && text.size() > format_.maxText_bytes) {
        CutUtf8(text, format_.maxText_bytes);
        ++cutTexts_;
    }
    feature_->SetField(at, text.c_str());
}

bool FeatureWriter::Finish(std::unique_ptr<OGRGeometry> geometry) {
    feature_->SetGeometryDirectly(geometry.release());
    if (out_.CreateFeature(feature_.get()) != OGRERR_NONE) return false;
    ++featureCnt_;
    return true;
}

}  // namespace orvane
