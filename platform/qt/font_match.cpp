#include "platform/qt/font_match.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <utility>

#include "platform/cp932.h"

namespace orvane {

namespace {

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

const FcChar8* Chars(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

/// Face names are the same whatever their case.
std::string Folded(const std::string& name) {
    FcChar8* const folded = FcStrDowncase(Chars(name.c_str()));
    if (folded == nullptr) return name;
    std::string out(reinterpret_cast<const char*>(folded));
    FcStrFree(folded);
    return out;
}

/// The name in UTF-8. A face name with "@" is the face for vertical lines, which is not told apart here.
std::string FamilyOf(std::string_view faceName) {
    faceName = faceName.substr(0, faceName.find('\0'));
    if (!faceName.empty() && faceName.front() == '@') faceName.remove_prefix(1);
    return Folded(DecodeCp932Shown(faceName));
}

bool Contains(const std::string& name, const char* part) { return name.find(part) != std::string::npos; }

bool HasSerifs(const std::string& folded) { return Contains(folded, "明朝") || Contains(folded, "mincho"); }

void AddGenericName(FcPattern* pattern, const std::string& folded) {
    const char* const generic = HasSerifs(folded) ? "serif" : "sans-serif";
    // Weak, so that the language goes before it: the system's favourite for this name may know no Japanese.
    const FcValue value{FcTypeString, {Chars(generic)}};
    FcPatternAddWeak(pattern, FC_FAMILY, value, FcTrue);
}

Pattern MakePattern() {
    Pattern pattern(FcPatternCreate());
    if (pattern == nullptr) return nullptr;
    FcPatternAddString(pattern.get(), FC_LANG, Chars("ja"));
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_COLOR, FcFalse);
    FcPatternAddBool(pattern.get(), FC_VARIABLE, FcFalse);
    return pattern;
}

std::optional<FontFile> FileOf(const FcPattern* pattern) {
    FcChar8* path = nullptr;
    if (pattern == nullptr || FcPatternGetString(pattern, FC_FILE, 0, &path) != FcResultMatch) return std::nullopt;
    FontFile file;
    file.path = reinterpret_cast<const char*>(path);
    int value = 0;
    if (FcPatternGetInteger(pattern, FC_INDEX, 0, &value) == FcResultMatch) file.index = value;
    FcBool isVariable = FcFalse;
    FcPatternGetBool(pattern, FC_VARIABLE, 0, &isVariable);
    if (isVariable) {
        // Opened without a choice of its shape, it has the regular one. The upper half of the index tells that it is variable.
        file.index &= 0xFFFF;
        return file;
    }
    if (FcPatternGetInteger(pattern, FC_WEIGHT, 0, &value) == FcResultMatch) file.isBold = value >= FC_WEIGHT_DEMIBOLD;
    if (FcPatternGetInteger(pattern, FC_SLANT, 0, &value) == FcResultMatch) file.isItalic = value > FC_SLANT_ROMAN;
    return file;
}

}  // namespace

void FontMatcher::ConfigDeleter::operator()(_FcConfig* config) const { FcConfigDestroy(config); }
void FontMatcher::FontSetDeleter::operator()(_FcFontSet* set) const { FcFontSetDestroy(set); }

FontMatcher::FontMatcher() = default;
FontMatcher::FontMatcher(FontMatcher&&) noexcept = default;
FontMatcher& FontMatcher::operator=(FontMatcher&&) noexcept = default;
FontMatcher::~FontMatcher() = default;

FontMatcher FontMatcher::OfNoFonts() {
    FontMatcher matcher;
    matcher.config_.reset(FcConfigCreate());
    return matcher;
}

bool FontMatcher::IsInstalled(const std::string& family) {
    if (!families_) {
        families_.emplace();
        const Pattern all(FcPatternCreate());
        FcObjectSet* const wanted = FcObjectSetBuild(FC_FAMILY, nullptr);
        FcFontSet* const fonts = FcFontList(config_.get(), all.get(), wanted);
        for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
            FcChar8* name = nullptr;
            for (int n = 0; FcPatternGetString(fonts->fonts[i], FC_FAMILY, n, &name) == FcResultMatch; ++n) {
                families_->insert(Folded(reinterpret_cast<const char*>(name)));
            }
        }
        if (fonts != nullptr) FcFontSetDestroy(fonts);
        if (wanted != nullptr) FcObjectSetDestroy(wanted);
    }
    return families_->contains(family);
}

std::optional<FontFile> FontMatcher::Match(std::string_view faceName, std::int32_t weight, bool italic) {
    const std::string family = FamilyOf(faceName);
    const bool isInstalled = !family.empty() && IsInstalled(family);
    // A match takes long, and a map may bring any number of names. So the name itself is asked for only where it is installed,
    // and all others share the few answers that their kinds have.
    const std::int32_t weightClass = std::clamp((weight + 50) / 100, 1, 9);
    std::string key{static_cast<char>('0' + weightClass), italic ? 'i' : 'r', isInstalled ? 'n' : HasSerifs(family) ? 's' : 'g'};
    if (isInstalled) key += family;
    const auto known = matched_.find(key);
    if (known != matched_.end()) return known->second;

    const Pattern pattern = MakePattern();
    if (pattern == nullptr) return std::nullopt;
    if (isInstalled) {
        FcPatternAddString(pattern.get(), FC_FAMILY, Chars(family.c_str()));
    } else {
        AddGenericName(pattern.get(), family);
    }
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, FcWeightFromOpenType(weightClass * 100));
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(config_.get(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const Pattern match(FcFontMatch(config_.get(), pattern.get(), &result));
    return matched_[key] = FileOf(match.get());
}

std::optional<FontFile> FontMatcher::FileWith(char16_t c) {
    if (!fallbacksAreKnown_) {
        fallbacksAreKnown_ = true;
        const Pattern pattern = MakePattern();
        if (pattern == nullptr) return std::nullopt;
        AddGenericName(pattern.get(), "");
        FcConfigSubstitute(config_.get(), pattern.get(), FcMatchPattern);
        FcDefaultSubstitute(pattern.get());
        FcResult result = FcResultNoMatch;
        fallbacks_.reset(FcFontSort(config_.get(), pattern.get(), FcTrue, nullptr, &result));
    }
    for (int i = 0; fallbacks_ != nullptr && i < fallbacks_->nfont; ++i) {
        FcCharSet* chars = nullptr;
        FcBool isScalable = FcFalse;
        const FcPattern* const font = fallbacks_->fonts[i];
        FcPatternGetBool(font, FC_SCALABLE, 0, &isScalable);
        if (isScalable && FcPatternGetCharSet(font, FC_CHARSET, 0, &chars) == FcResultMatch && FcCharSetHasChar(chars, c)) {
            return FileOf(font);
        }
    }
    return std::nullopt;
}

}  // namespace orvane
