// Which font file stands for a face name, by what is installed.
//
// Texts are drawn from font files with fontconfig and FreeType and not by QFont and QPainter, because those need an application
// object, and the contexts of this back end work without one.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

struct _FcConfig;
struct _FcFontSet;

namespace orvane {

struct FontFile {
    std::string path;
    std::int32_t index = 0;  ///< which font of the file, as FreeType counts them
    bool isBold = false;
    bool isItalic = false;
};

class FontMatcher {
public:
    /// Matches the fonts that are installed.
    FontMatcher();
    /// As on a system with no font at all.
    static FontMatcher OfNoFonts();
    FontMatcher(FontMatcher&&) noexcept;
    FontMatcher& operator=(FontMatcher&&) noexcept;
    ~FontMatcher();

    /// The file for a face name in code page 932 bytes, which end at the first zero. A name that is not installed gives a
    /// Japanese font, one with serifs where the name tells of Mincho. Nothing when there are no fonts.
    std::optional<FontFile> Match(std::string_view faceName, std::int32_t weight, bool italic);
    /// The file of some font that has the character, Japanese ones first.
    std::optional<FontFile> FileWith(char16_t c);

private:
    struct ConfigDeleter {
        void operator()(_FcConfig* config) const;
    };
    struct FontSetDeleter {
        void operator()(_FcFontSet* set) const;
    };

    bool IsInstalled(const std::string& family);

    std::unique_ptr<_FcConfig, ConfigDeleter> config_;  ///< null: the system's
    std::optional<std::unordered_set<std::string>> families_;
    std::map<std::string, std::optional<FontFile>> matched_;
    std::unique_ptr<_FcFontSet, FontSetDeleter> fallbacks_;
    bool fallbacksAreKnown_ = false;
};

}  // namespace orvane
