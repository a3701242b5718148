#include "platform/cp932.h"

#include <array>
#include <cstdint>
#include <memory>

#include "platform/cp932_table.h"

namespace orvane {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::uint16_t kNoBytes = 0xFFFF;
constexpr std::uint16_t kStandIn = 0x81AC;  // 〓

constexpr unsigned kUserFirstLead = 0xF0;
constexpr unsigned kUserLastLead = 0xF9;
constexpr char16_t kUserFirstChar = 0xE000;

bool IsLead(unsigned byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }

// Position of a trail byte in a row, or -1.
int TrailPos(unsigned byte) {
    if (byte >= 0x40 && byte <= 0x7E) return static_cast<int>(byte - 0x40);
    if (byte >= 0x80 && byte <= 0xFC) return static_cast<int>(byte - 0x41);
    return -1;
}

unsigned TrailAt(std::size_t pos) { return static_cast<unsigned>(pos) + (pos < 0x3F ? 0x40U : 0x41U); }

// Single bytes; the four that no character was given to stand for private ones, so that they survive the way there and back.
char16_t SingleChar(unsigned byte) {
    if (byte <= 0x80) return static_cast<char16_t>(byte);
    if (byte >= 0xA1 && byte <= 0xDF) return static_cast<char16_t>(0xFF61 + (byte - 0xA1));
    if (byte == 0xA0) return 0xF8F0;
    if (byte >= 0xFD) return static_cast<char16_t>(0xF8F1 + (byte - 0xFD));
    return kCp932Missing;
}

// The selection of IBM extensions in rows ED and EE gives way to the extensions themselves, FA to FC.
bool OnlyRead(unsigned lead) { return lead == 0xED || lead == 0xEE; }

struct Maps {
    std::array<const char16_t*, 256> rows{};
    std::array<std::uint16_t, 0x10000> bytes{};

    Maps() {
        bytes.fill(kNoBytes);
        for (unsigned byte = 0; byte < 256; ++byte) {
            if (!IsLead(byte)) bytes[SingleChar(byte)] = static_cast<std::uint16_t>(byte);
        }
        for (std::size_t i = 0; i < kCp932RowCnt; ++i) AddRow(kCp932Rows[i]);
        for (unsigned lead = kUserFirstLead; lead <= kUserLastLead; ++lead) {
            for (std::size_t pos = 0; pos < kCp932RowLength; ++pos) Add(UserChar(lead, pos), lead, pos);
        }
        // Narrow forms that stand in other codes where this one has the wide form.
        constexpr std::array<std::array<std::uint16_t, 2>, 6> kWidened = {
            {{0x00A2, 0x8191}, {0x00A3, 0x8192}, {0x00AC, 0x81CA}, {0x2016, 0x8161}, {0x2212, 0x817C}, {0x301C, 0x8160}}};
        for (const auto& [narrow, wide] : kWidened) bytes[narrow] = wide;
        bytes[kReplacement] = kNoBytes;
    }

    static char16_t UserChar(unsigned lead, std::size_t pos) {
        return static_cast<char16_t>(kUserFirstChar + (lead - kUserFirstLead) * kCp932RowLength + pos);
    }

    void AddRow(const Cp932Row& row) {
        rows[row.lead] = row.chars;
        if (OnlyRead(row.lead)) return;
        for (std::size_t pos = 0; pos < kCp932RowLength; ++pos) {
            if (row.chars[pos] != kCp932Missing) Add(row.chars[pos], row.lead, pos);
        }
    }

    // The first form of a character stays: rows come in order, plain JIS before the extensions.
    void Add(char16_t c, unsigned lead, std::size_t pos) {
        if (bytes[c] == kNoBytes) bytes[c] = static_cast<std::uint16_t>(lead << 8 | TrailAt(pos));
    }

    char16_t Char(unsigned lead, unsigned trail) const {
        const int pos = TrailPos(trail);
        if (pos < 0) return kCp932Missing;
        if (lead >= kUserFirstLead && lead <= kUserLastLead) return UserChar(lead, static_cast<std::size_t>(pos));
        return rows[lead] == nullptr ? kCp932Missing : rows[lead][pos];
    }
};

const Maps& TheMaps() {
    static const auto maps = std::make_unique<const Maps>();
    return *maps;
}

unsigned ByteAt(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

// Takes one character off the front of a UTF-8 text. What is not UTF-8 (overlong and surrogate forms too) gives the replacement
// character with `valid` false, and takes one byte.
char32_t TakeUtf8(std::string_view& text, bool& valid) {
    const unsigned first = ByteAt(text, 0);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    char32_t c = length == 1 ? first : first & (0x7FU >> length);
    valid = length != 0 && length <= text.size();
    for (std::size_t i = 1; valid && i < length; ++i) {
        valid = (ByteAt(text, i) & 0xC0U) == 0x80U;
        c = c << 6 | (ByteAt(text, i) & 0x3FU);
    }
    if (valid) {
        constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
        valid = c >= kLeast[length] && c <= 0x10FFFF && !(c >= 0xD800 && c <= 0xDFFF);
    }
    text.remove_prefix(valid ? length : 1);
    return valid ? c : kReplacement;
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
        return;
    }
    if (c < 0x800) {
        out += static_cast<char>(0xC0 | c >> 6);
    } else {
        out += static_cast<char>(0xE0 | c >> 12);
        out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    }
    out += static_cast<char>(0x80 | (c & 0x3F));
}

void AppendBytes(std::string& out, std::uint16_t bytes) {
    if (bytes > 0xFF) out += static_cast<char>(bytes >> 8);
    out += static_cast<char>(bytes & 0xFF);
}

std::uint16_t BytesOf(char32_t c) { return c < 0x10000 ? TheMaps().bytes[c] : kNoBytes; }

}  // namespace

char16_t TakeCp932(std::string_view& bytes) {
    const unsigned first = ByteAt(bytes, 0);
    if (!IsLead(first)) {
        bytes.remove_prefix(1);
        return SingleChar(first);
    }
    const char16_t c = bytes.size() < 2 ? kCp932Missing : TheMaps().Char(first, ByteAt(bytes, 1));
    bytes.remove_prefix(c == kCp932Missing ? 1 : 2);
    return c;
}

std::optional<std::string> EncodeCp932(std::string_view utf8) {
    std::string out;
    while (!utf8.empty()) {
        bool valid = false;
        const std::uint16_t bytes = BytesOf(TakeUtf8(utf8, valid));
        if (!valid || bytes == kNoBytes) return std::nullopt;
        AppendBytes(out, bytes);
    }
    return out;
}

std::string EncodeCp932Shown(std::string_view utf8) {
    std::string out;
    while (!utf8.empty()) {
        bool valid = false;
        const std::uint16_t bytes = BytesOf(TakeUtf8(utf8, valid));
        AppendBytes(out, valid && bytes != kNoBytes ? bytes : kStandIn);
    }
    return out;
}

std::optional<std::string> DecodeCp932(std::string_view bytes) {
    std::string out;
    while (!bytes.empty()) {
        const char16_t c = TakeCp932(bytes);
        if (c == kCp932Missing) return std::nullopt;
        AppendUtf8(out, c);
    }
    return out;
}

std::string DecodeCp932Shown(std::string_view bytes) {
    std::string out;
    while (!bytes.empty()) AppendUtf8(out, TakeCp932(bytes));
    return out;
}

std::string_view CutCp932(std::string_view bytes, std::size_t limit_bytes) {
    if (bytes.size() <= limit_bytes) return bytes;
    std::size_t end = 0;
    while (end < limit_bytes) {
        const std::size_t next = end + (IsLead(ByteAt(bytes, end)) ? 2 : 1);
        if (next > limit_bytes) break;
        end = next;
    }
    return bytes.substr(0, end);
}

}  // namespace orvane
