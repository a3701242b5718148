// The fonts of texts: from a font's description to its measures in pixels, and from characters to glyphs.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "platform/pen_brush_font.h"
#include "platform/qt/font_face.h"
#include "platform/qt/font_match.h"

namespace orvane {

struct CharGlyph {
    FontFace* face = nullptr;  ///< that of the text, or another one that has the character
    std::uint32_t glyph = 0;
    std::int32_t advance = 0;  ///< in parts of 65536 of the em
    bool isTwoCells = false;   ///< of a face whose characters are one cell wide or two
};

/// A face and the glyphs of its characters, as far as they were asked for.
struct TextFace {
    using Page = std::array<CharGlyph, 256>;

    std::unique_ptr<FontFace> face;
    std::int32_t cell = 0;  ///< the advance of a narrow character where wide ones have two of it; 0 for any other face
    std::array<std::unique_ptr<Page>, 256> pages;
};

/// A bar along the text, from `top_px` below the baseline down.
struct TextBar {
    std::int32_t top_px = 0;
    std::int32_t thickness_px = 1;
};

/// A font in pixels.
struct SizedFont {
    TextFace* face = nullptr;  ///< null when there is no font at all
    std::int32_t em_px = 0;
    std::int32_t widthScale = 0x10000;  ///< in parts of 65536
    bool isBold = false;
    bool isItalic = false;
    std::int32_t ascent_px = 0;
    std::int32_t descent_px = 0;
    TextBar underline;
    TextBar strikeOut;
    std::int32_t reach_px = 0;       ///< no ink stands further outside the text's cell
    std::int32_t maxAdvance_px = 0;  ///< of any character

    std::int32_t Height_px() const { return ascent_px + descent_px; }
    /// Whole pixels. A glyph that has a width keeps one, so that not too many of them stand inside any clip. A wide character
    /// stays in step with two narrow ones, also where their half pixels are rounded up; strokes that are made bold take one
    /// pixel more.
    std::int32_t Advance_px(const CharGlyph& glyph) const {
        if (glyph.advance <= 0) return 0;
        const int twice = glyph.isTwoCells ? 1 : 0;
        const std::int64_t width = (std::int64_t{glyph.advance >> twice} * em_px * widthScale + (std::int64_t{1} << 31)) >> 32;
        const std::int32_t drawn = width > 0 ? static_cast<std::int32_t>(width << twice) : 1;
        return drawn + (isBold && !glyph.face->IsBold() ? 1 : 0);
    }
};

class TextFonts {
public:
    /// Heights and widths beyond this are held to it: a page of such glyphs would take memory and time without bound.
    static constexpr std::int32_t kMaxSize_px = 2000;
    /// The em of a font whose height is told as 0.
    static constexpr std::int32_t kDefaultEm_px = 12;

    explicit TextFonts(FontMatcher matcher) : matcher_(std::move(matcher)) {}

    /// Escapement, underline and strike-out have no part in it. Good until the next call.
    const SizedFont& Find(const Font& font);
    /// REQUIRES: the font has a face.
    const CharGlyph& GlyphOf(const SizedFont& font, char16_t c) {
        const std::unique_ptr<TextFace::Page>& page = font.face->pages[c >> 8];
        if (page != nullptr) {
            const CharGlyph& known = (*page)[c & 0xFF];
            if (known.face != nullptr) return known;
        }
        return Learn(*font.face, c);
    }
    const FontLibrary& FaceLibrary() const { return library_; }
    /// Forgets everything, to give memory back.
    void Clear();

private:
    struct Key {
        std::array<char, 32> faceName{};
        std::int32_t height_px = 0;
        std::int32_t width_px = 0;
        std::int32_t weight = 0;
        std::int32_t italic = 0;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const noexcept;
    };
    // Maps bring fonts without end, so both lists start again when they are full.
    static constexpr std::size_t kMaxSized = 1024;
    static constexpr std::size_t kMaxFaces = 64;

    TextFace* Open(const FontFile& file);
    TextFace* Match(const Font& font);
    SizedFont Size(const Font& font);
    const CharGlyph& Learn(TextFace& face, char16_t c);

    FontLibrary library_;
    FontMatcher matcher_;
    std::map<std::pair<std::string, std::int32_t>, TextFace> faces_;
    std::unordered_map<Key, SizedFont, Hash> sized_;
    Key lastKey_;
    const SizedFont* last_ = nullptr;
    std::uint32_t nextFaceId_ = 1;
};

}  // namespace orvane
