#include "platform/qt/font_face.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/to_int.h"

namespace orvane {

namespace {

// The tangent of 20 degrees, by which the platform slants a face that has no italic.
constexpr double kSlant = 0.364;
// Strokes that are made bold grow by a part of the em, yet by enough to be seen in small sizes.
constexpr std::int32_t kBoldPart = 24;
constexpr std::int32_t kBoldLeast_64ths = 44;
// A font with a narrower average is taken to have this one, so that no width asked for makes glyphs without bound.
constexpr double kLeastAverage_em = 0.25;

FT_Fixed ToFixed(double value) { return TruncToInt32(std::floor(value * 65536 + 0.5)); }

FT_Matrix MatrixOf(const GlyphShape& shape) {
    const double angle = shape.angle_tenths * std::numbers::pi / 1800;
    const bool isTurned = shape.angle_tenths != 0;
    const double c = isTurned ? std::cos(angle) : 1;
    const double s = isTurned ? std::sin(angle) : 0;
    const double width = shape.widthScale / 65536.0;
    const double slant = shape.isItalic ? kSlant * width : 0;
    return {ToFixed(c * width), ToFixed(c * slant - s), ToFixed(s * width), ToFixed(s * slant + c)};
}

}  // namespace

FontLibrary::FontLibrary() {
    if (FT_Init_FreeType(&library_) != 0) library_ = nullptr;
}

FontLibrary::~FontLibrary() {
    if (library_ != nullptr) FT_Done_FreeType(library_);
}

std::unique_ptr<FontFace> FontFace::Open(const FontLibrary& library, const FontFile& file, std::uint32_t id) {
    FT_Face face = nullptr;
    if (library.Get() == nullptr || FT_New_Face(library.Get(), file.path.c_str(), file.index, &face) != 0) return nullptr;
    struct FaceDeleter {
        void operator()(FT_FaceRec_* opened) const { FT_Done_Face(opened); }
    };
    std::unique_ptr<FT_FaceRec_, FaceDeleter> guard(face);
    std::unique_ptr<FontFace> made(new FontFace(face, file, id));
    guard.release();
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) return nullptr;
    made->TakeMeasures();
    return made;
}

FontFace::FontFace(FT_FaceRec_* face, const FontFile& file, std::uint32_t id)
    : face_(face), id_(id), isBold_(file.isBold), isItalic_(file.isItalic) {}

FontFace::~FontFace() { FT_Done_Face(face_); }

void FontFace::TakeMeasures() {
    const double em = face_->units_per_EM;
    FaceMeasures& m = measures_;
    m.ascent = face_->ascender / em;
    m.descent = -face_->descender / em;
    m.averageWidth = 0.5;
    m.underlineThickness = face_->underline_thickness / em;
    m.underlineTop = face_->underline_position / em + m.underlineThickness / 2;  // FreeType tells the middle of the bar
    m.strikeTop = m.ascent / 3;
    m.strikeThickness = m.underlineThickness;
    const auto* const os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face_, FT_SFNT_OS2));
    if (os2 != nullptr && os2->version != 0xFFFF) {
        if (os2->usWinAscent + os2->usWinDescent > 0) {
            m.ascent = os2->usWinAscent / em;
            m.descent = os2->usWinDescent / em;
        }
        if (os2->xAvgCharWidth > 0) m.averageWidth = os2->xAvgCharWidth / em;
        if (os2->yStrikeoutSize > 0) {
            m.strikeTop = os2->yStrikeoutPosition / em;
            m.strikeThickness = os2->yStrikeoutSize / em;
        }
    }
    m.ascent = std::clamp(m.ascent, 0.0, 4.0);
    m.descent = std::clamp(m.descent, 0.0, 4.0);
    if (m.ascent + m.descent < 0.25) m.ascent = 1;
    m.averageWidth = std::clamp(m.averageWidth, kLeastAverage_em, 2.0);
    m.underlineThickness = std::clamp(m.underlineThickness, 0.0, 0.25);
    m.strikeThickness = std::clamp(m.strikeThickness, 0.0, 0.25);
    m.underlineTop = std::clamp(m.underlineTop, -1.0, 0.0);
    m.strikeTop = std::clamp(m.strikeTop, 0.0, 1.0);
}

std::uint32_t FontFace::GlyphOf(char16_t c) const { return FT_Get_Char_Index(face_, c); }

std::int32_t FontFace::Advance(std::uint32_t glyph) const {
    FT_Fixed units = 0;
    if (FT_Get_Advance(face_, glyph, FT_LOAD_NO_SCALE, &units) != 0) return 0;
    const double em = static_cast<double>(units) / face_->units_per_EM;
    return TruncToInt32(std::clamp(em, 0.0, double{kMaxAdvance_em}) * 65536 + 0.5);
}

FT_Outline_* FontFace::Outline(std::uint32_t glyph, const GlyphShape& shape) {
    if (size_px_ != shape.em_px) {
        size_px_ = 0;
        if (FT_Set_Char_Size(face_, 0, FT_F26Dot6{shape.em_px} * 64, 72, 72) != 0) return nullptr;
        size_px_ = shape.em_px;
    }
    const FT_Int32 hinting = shape.isHinted ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING;
    if (FT_Load_Glyph(face_, glyph, FT_LOAD_NO_BITMAP | hinting) != 0) return nullptr;
    if (face_->glyph->format != FT_GLYPH_FORMAT_OUTLINE || face_->glyph->outline.n_contours <= 0) return nullptr;
    FT_Outline* const outline = &face_->glyph->outline;
    if (shape.isBold) FT_Outline_EmboldenXY(outline, (std::max)(shape.em_px * 64 / kBoldPart, kBoldLeast_64ths), 0);
    if (shape.angle_tenths != 0 || shape.isItalic || shape.widthScale != 0x10000) {
        const FT_Matrix matrix = MatrixOf(shape);
        FT_Outline_Transform(outline, &matrix);
    }
    FT_Outline_Translate(outline, shape.quarterX * 16, -shape.quarterY * 16);
    return outline;
}

}  // namespace orvane
