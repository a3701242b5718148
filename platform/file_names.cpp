#include "platform/file_names.h"

namespace orvane {

namespace {

unsigned char Byte(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

// 0 when no character of UTF-8 starts with this byte.
std::size_t Utf8Length(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

bool LeadsPair(unsigned char first) { return (first >= 0x81 && first <= 0x9F) || (first >= 0xE0 && first <= 0xFC); }

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// A text that gives its characters one after the other. Copies are cheap, so that a match can come back to a place.
class Characters {
public:
    explicit Characters(std::string_view text) : rest_(text), utf8_(IsUtf8(text)) {}
    bool AtEnd() const { return rest_.empty(); }
    std::string_view Current() const { return rest_.substr(0, CharacterLength(rest_, utf8_)); }
    void Step() { rest_.remove_prefix(CharacterLength(rest_, utf8_)); }

private:
    std::string_view rest_;
    bool utf8_;
};

bool SameCharacter(std::string_view a, std::string_view b) {
    if (a.size() == 1 && b.size() == 1) return LowerAscii(a[0]) == LowerAscii(b[0]);
    return a == b;
}

}  // namespace

bool IsUtf8(std::string_view name) {
    for (std::size_t i = 0; i < name.size();) {
        const std::size_t length = Utf8Length(Byte(name, i));
        if (length == 0 || length > name.size() - i) return false;
        for (std::size_t k = 1; k < length; ++k) {
            if ((Byte(name, i + k) & 0xC0) != 0x80) return false;
        }
        i += length;
    }
    return true;
}

std::size_t CharacterLength(std::string_view name, bool utf8) {
    if (name.empty()) return 0;
    const std::size_t length = utf8 ? Utf8Length(Byte(name, 0)) : (LeadsPair(Byte(name, 0)) ? 2 : 1);
    return length == 0 || length > name.size() ? 1 : length;
}

bool EqualAnyCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    Characters left(a);
    Characters right(b);
    for (; !left.AtEnd() && !right.AtEnd(); left.Step(), right.Step()) {
        if (!SameCharacter(left.Current(), right.Current())) return false;
    }
    return left.AtEnd() && right.AtEnd();
}

bool MatchAnyCase(std::string_view pattern, std::string_view name) {
    Characters want(pattern);
    Characters have(name);
    // Only the last star can be asked to take more: what the earlier ones took is the least that they can.
    bool starSeen = false;
    Characters wantAfterStar = want;
    Characters haveAtStar = have;
    for (;;) {
        if (!want.AtEnd() && want.Current() == "*") {
            want.Step();
            starSeen = true;
            wantAfterStar = want;
            haveAtStar = have;
        } else if (have.AtEnd()) {
            return want.AtEnd();
        } else if (!want.AtEnd() && (want.Current() == "?" || SameCharacter(want.Current(), have.Current()))) {
            want.Step();
            have.Step();
        } else if (starSeen) {
            haveAtStar.Step();
            have = haveAtStar;
            want = wantAfterStar;
        } else {
            return false;
        }
    }
}

bool EndsInSeparator(std::string_view path) {
    std::string_view last;
    for (Characters rest(path); !rest.AtEnd(); rest.Step()) last = rest.Current();
    return last == std::string_view(&kPathSeparator, 1);
}

}  // namespace orvane
