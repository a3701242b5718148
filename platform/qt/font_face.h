// One font of a file: its measures and the outlines of its glyphs, through FreeType.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/qt/font_match.h"

struct FT_LibraryRec_;
struct FT_FaceRec_;
struct FT_Outline_;

namespace orvane {

/// FreeType's own state; one a thread, and it outlives its faces.
class FontLibrary {
public:
    FontLibrary();
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;
    ~FontLibrary();
    /// Null when it could not be started; no face opens then.
    FT_LibraryRec_* Get() const { return library_; }

private:
    FT_LibraryRec_* library_ = nullptr;
};

/// Measures in parts of the em; heights are counted up from the baseline.
struct FaceMeasures {
    double ascent = 0;
    double descent = 0;  ///< below the baseline
    double averageWidth = 0;
    double underlineTop = 0;
    double underlineThickness = 0;
    double strikeTop = 0;
    double strikeThickness = 0;
};

/// What a glyph looks like besides its font.
struct GlyphShape {
    std::int32_t em_px = 0;
    std::int32_t widthScale = 0x10000;  ///< in parts of 65536
    std::int32_t angle_tenths = 0;      ///< counter-clockwise
    bool isBold = false;                ///< made bold here
    bool isItalic = false;              ///< made slanted here
    bool isHinted = false;
    std::int32_t quarterX = 0;  ///< moved right by this many quarters of a pixel, 0 to 3
    std::int32_t quarterY = 0;  ///< and down
};

class FontFace {
public:
    /// Advances are held to this many ems, so that a text has a longest possible width by its bytes alone.
    static constexpr std::int32_t kMaxAdvance_em = 2;

    /// Null when the file has no such font or no outlines. `id` is its own for as long as any glyph is kept.
    static std::unique_ptr<FontFace> Open(const FontLibrary& library, const FontFile& file, std::uint32_t id);
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;
    ~FontFace();

    std::uint32_t Id() const { return id_; }
    bool IsBold() const { return isBold_; }
    bool IsItalic() const { return isItalic_; }
    const FaceMeasures& Measures() const { return measures_; }
    /// The glyph's number; 0, which is the glyph for missing ones, when the font has none.
    std::uint32_t GlyphOf(char16_t c) const;
    /// In parts of 65536 of the em.
    std::int32_t Advance(std::uint32_t glyph) const;
    /// In 1/64 of a pixel from the glyph's origin, y up; good until the next call. Null when the glyph has no outline.
    FT_Outline_* Outline(std::uint32_t glyph, const GlyphShape& shape);

private:
    FontFace(FT_FaceRec_* face, const FontFile& file, std::uint32_t id);
    void TakeMeasures();

    FT_FaceRec_* face_;
    std::uint32_t id_;
    bool isBold_;
    bool isItalic_;
    FaceMeasures measures_;
    std::int32_t size_px_ = 0;  ///< that the outlines are loaded in
};

}  // namespace orvane
