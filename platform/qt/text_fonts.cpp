#include "platform/qt/text_fonts.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <type_traits>

#include "platform/to_int.h"

namespace orvane {

namespace {

// From this weight on a font is bold; where its face is not, it is made so.
constexpr std::int32_t kBoldFrom = 600;
constexpr std::int32_t kNormalWeight = 400;

/// In 64 bits, because the least number of 32 has no absolute value there.
std::int32_t HeldSize(std::int32_t value) {
    const std::int64_t size = std::int64_t{value} < 0 ? -std::int64_t{value} : std::int64_t{value};
    return static_cast<std::int32_t>(std::min<std::int64_t>(size, TextFonts::kMaxSize_px));
}

std::int32_t Rounded(double value) { return TruncToInt32(std::floor(value + 0.5)); }

std::int32_t EmOf(const Font& font, double cellHeight_em) {
    if (font.height_px == 0) return TextFonts::kDefaultEm_px;
    const std::int32_t size = HeldSize(font.height_px);
    if (font.height_px < 0) return size;
    const std::int32_t nearest = std::clamp(Rounded(size / cellHeight_em), 1, TextFonts::kMaxSize_px);
    // The height of a cell is the most that is wanted.
    return nearest > 1 && Rounded(nearest * cellHeight_em) > size ? nearest - 1 : nearest;
}

TextBar BarOf(double top_em, double thickness_em, std::int32_t em_px) {
    return {-Rounded(top_em * em_px), std::max(Rounded(thickness_em * em_px), 1)};
}

/// How wide narrow characters are where all are and wide ones have twice as much, as in faces for tables; otherwise 0.
std::int32_t CellOf(const FontFace& face) {
    const auto advance = [&](char16_t c) {
        const std::uint32_t glyph = face.GlyphOf(c);
        return glyph == 0 ? 0 : face.Advance(glyph);
    };
    const std::int32_t cell = advance(u'i');
    return cell > 0 && advance(u'W') == cell && advance(u'あ') == 2 * cell ? cell : 0;
}

bool IsControl(char16_t c) { return c < 0x20 || c == 0x7F; }

}  // namespace

std::size_t TextFonts::Hash::operator()(const Key& key) const noexcept {
    static_assert(std::has_unique_object_representations_v<Key>);
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(&key), sizeof key});
}

void TextFonts::Clear() {
    last_ = nullptr;
    sized_.clear();
    faces_.clear();
}

const SizedFont& TextFonts::Find(const Font& font) {
    const Key key{font.faceName, font.height_px, font.width_px, font.weight, font.italic ? 1 : 0};
    if (last_ != nullptr && key == lastKey_) return *last_;
    if (faces_.size() > kMaxFaces || sized_.size() >= kMaxSized) Clear();
    auto at = sized_.find(key);
    if (at == sized_.end()) at = sized_.emplace(key, Size(font)).first;
    lastKey_ = key;
    last_ = &at->second;
    return *last_;
}

TextFace* TextFonts::Open(const FontFile& file) {
    const std::pair key(file.path, file.index);
    const auto known = faces_.find(key);
    if (known != faces_.end()) return &known->second;
    std::unique_ptr<FontFace> face = FontFace::Open(library_, file, nextFaceId_);
    if (face == nullptr) return nullptr;
    ++nextFaceId_;
    TextFace& made = faces_[key];
    made.cell = CellOf(*face);
    made.face = std::move(face);
    return &made;
}

TextFace* TextFonts::Match(const Font& font) {
    const std::string_view name(font.faceName.data(), font.faceName.size());
    const std::int32_t weight = font.weight <= 0 ? kNormalWeight : std::min(font.weight, 900);
    const std::optional<FontFile> file = matcher_.Match(name, weight, font.italic);
    if (!file) return nullptr;
    if (TextFace* const face = Open(*file)) return face;
    // What bears the name is no font to draw with, as when it consists of bitmaps only.
    const std::optional<FontFile> other = matcher_.Match("", weight, font.italic);
    return other ? Open(*other) : nullptr;
}

SizedFont TextFonts::Size(const Font& font) {
    SizedFont sized;
    sized.face = Match(font);
    sized.isBold = font.weight >= kBoldFrom;
    sized.isItalic = font.italic;
    if (sized.face == nullptr) {
        sized.em_px = EmOf(font, 1);
        sized.ascent_px = sized.em_px;
        return sized;
    }
    const FaceMeasures& m = sized.face->face->Measures();
    sized.em_px = EmOf(font, m.ascent + m.descent);
    if (font.width_px != 0) {
        sized.widthScale = std::max(Rounded(65536.0 * HeldSize(font.width_px) / (m.averageWidth * sized.em_px)), 1);
    }
    sized.ascent_px = Rounded(m.ascent * sized.em_px);
    sized.descent_px = Rounded(m.descent * sized.em_px);
    sized.underline = BarOf(m.underlineTop, m.underlineThickness, sized.em_px);
    sized.strikeOut = BarOf(m.strikeTop, m.strikeThickness, sized.em_px);
    // An underline that the face tells right on the baseline would run through the letters' feet; one too low would leave the
    // cell.
    sized.underline.top_px = std::max(std::min(sized.underline.top_px, sized.descent_px - sized.underline.thickness_px), 1);
    const double width_px = double{FontFace::kMaxAdvance_em} * sized.em_px * sized.widthScale / 65536;
    constexpr std::int32_t kRoundedUpAndBold_px = 3;
    sized.maxAdvance_px = Rounded(width_px) + kRoundedUpAndBold_px;
    sized.reach_px = std::max(sized.maxAdvance_px, 2 * sized.em_px) + 2;
    return sized;
}

const CharGlyph& TextFonts::Learn(TextFace& face, char16_t c) {
    std::unique_ptr<TextFace::Page>& page = face.pages[c >> 8];
    if (page == nullptr) page = std::make_unique<TextFace::Page>();
    // Control characters show nothing, yet they keep their place.
    const char16_t shown = IsControl(c) ? u' ' : c;
    CharGlyph found{face.face.get(), face.face->GlyphOf(shown)};
    std::int32_t cell = face.cell;
    if (found.glyph == 0) {
        const std::optional<FontFile> file = matcher_.FileWith(shown);
        TextFace* const other = file ? Open(*file) : nullptr;
        const std::uint32_t glyph = other == nullptr ? 0 : other->face->GlyphOf(shown);
        if (glyph != 0) {
            found = {other->face.get(), glyph};
            cell = other->cell;
        }
    }
    found.advance = found.face->Advance(found.glyph);
    found.isTwoCells = cell > 0 && found.advance == 2 * cell;
    return (*page)[c & 0xFF] = found;
}

}  // namespace orvane
