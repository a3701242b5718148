#include "platform/cp932.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <string>

namespace orvane {
namespace {

// The C library's own converter, as an independent reading of the same published table.
class SystemConverter {
public:
    SystemConverter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    SystemConverter(const SystemConverter&) = delete;
    SystemConverter& operator=(const SystemConverter&) = delete;
    ~SystemConverter() {
        if (Good()) iconv_close(handle_);
    }
    bool Good() const { return handle_ != iconv_t(-1); }
    std::optional<std::string> Convert(std::string in) {
        std::string out(16, '\0');
        char* from = in.data();
        char* to = out.data();
        std::size_t fromLeft = in.size();
        std::size_t toLeft = out.size();
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle_, &from, &fromLeft, &to, &toLeft) == std::size_t(-1)) return std::nullopt;
        out.resize(out.size() - toLeft);
        return out;
    }

private:
    iconv_t handle_;
};

std::string Utf8(char32_t c) {
    std::string out;
    if (c < 0x80) return {static_cast<char>(c)};
    if (c < 0x800) {
        out += static_cast<char>(0xC0 | c >> 6);
    } else {
        out += static_cast<char>(0xE0 | c >> 12);
        out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    }
    return out + static_cast<char>(0x80 | (c & 0x3F));
}

TEST(Cp932, EveryTwoByteCharacterDecodesAsTheSystemDecodesIt) {
    SystemConverter decoder("UTF-8", "CP932");
    ASSERT_TRUE(decoder.Good());
    int characters = 0;
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead >= 0xA0 && lead <= 0xDF) continue;
        for (int trail = 0; trail <= 0xFF; ++trail) {
            const std::string bytes{static_cast<char>(lead), static_cast<char>(trail)};
            EXPECT_EQ(DecodeCp932(bytes), decoder.Convert(bytes)) << std::hex << lead << ' ' << trail;
            if (DecodeCp932(bytes)) ++characters;
        }
    }
    EXPECT_EQ(characters, 9604);  // 7724 published ones, doubles counted, and 1880 for the user
}

TEST(Cp932, EveryCharacterEncodesAsTheSystemEncodesIt) {
    SystemConverter encoder("CP932", "UTF-8");
    ASSERT_TRUE(encoder.Good());
    for (char32_t c = 1; c < 0x10000; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        if (c == 0x80 || c == 0xA5 || c == 0x203E || c == 0x2014) continue;  // where the two differ: see the next test
        if (c >= 0xF8F0 && c <= 0xF8F3) continue;                            // and here
        EXPECT_EQ(EncodeCp932(Utf8(c)), encoder.Convert(Utf8(c))) << std::hex << static_cast<unsigned>(c);
    }
}

TEST(Cp932, TheFourUnassignedBytesAndTheByte80SurviveTheWayThereAndBack) {
    for (const int byte : {0x80, 0xA0, 0xFD, 0xFE, 0xFF}) {
        const std::string bytes{static_cast<char>(byte)};
        const auto text = DecodeCp932(bytes);
        ASSERT_TRUE(text);
        EXPECT_EQ(EncodeCp932(*text), bytes);
    }
    for (const char* noBytes : {"\u00A5", "\u203E", "\u2014"}) EXPECT_EQ(EncodeCp932(noBytes), std::nullopt) << noBytes;
}

TEST(Cp932, TheNecSelectionIsReadButItsCharactersAreWrittenAsIbmExtensions) {
    EXPECT_EQ(DecodeCp932("\xED\x40"), "纊");
    EXPECT_EQ(DecodeCp932("\xFA\x5C"), "纊");
    EXPECT_EQ(EncodeCp932("纊"), "\xFA\x5C");
    EXPECT_EQ(EncodeCp932("髙"), "\xFB\xFC");
    EXPECT_EQ(EncodeCp932("Ⅰ"), "\x87\x54");
    EXPECT_EQ(EncodeCp932("∵"), "\x81\xE6");
}

TEST(Cp932, ACharacterWithoutBytesIsReportedAndNeverReplacedInSilence) {
    EXPECT_EQ(EncodeCp932("東京é"), std::nullopt);
    EXPECT_EQ(EncodeCp932("𠮷野家"), std::nullopt);
    EXPECT_EQ(EncodeCp932("\uFFFD"), std::nullopt);
    EXPECT_EQ(EncodeCp932Shown("東京é"), "\x93\x8C\x8B\x9E\x81\xAC");
}

TEST(Cp932, TextThatIsNotUtf8IsReported) {
    for (const char* bad :
         {"\x80", "\xC0\xAF", "\xE3\x81", "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "\xF4\x90\x80\x80", "a\xFF"}) {
        EXPECT_EQ(EncodeCp932(bad), std::nullopt) << bad;
    }
    EXPECT_EQ(EncodeCp932Shown("a\xFF"), "a\x81\xAC");
}

TEST(Cp932, ACharacterCutInHalfDoesNotDecodeAndIsShownAsTheReplacementCharacter) {
    EXPECT_EQ(DecodeCp932("\x93\x8C\x8B"), std::nullopt);
    EXPECT_EQ(DecodeCp932Shown("\x93\x8C\x8B"), "東\uFFFD");
    EXPECT_EQ(DecodeCp932Shown("\x8B\x01"), "\uFFFD\x01");
}

TEST(Cp932, ATextIsCutBetweenCharacters) {
    const std::string text =
        "\x93\x8C"
        "A"
        "\x8B\x9E";
    EXPECT_EQ(CutCp932(text, 0), "");
    EXPECT_EQ(CutCp932(text, 1), "");
    EXPECT_EQ(CutCp932(text, 2), "\x93\x8C");
    EXPECT_EQ(CutCp932(text, 4),
              "\x93\x8C"
              "A");
    EXPECT_EQ(CutCp932(text, 5), text);
    EXPECT_EQ(CutCp932(text, 50), text);
}

TEST(Cp932, CharactersAreTakenOneByOneAndWhatDoesNotDecodeTakesOneByte) {
    std::string_view rest = "A\x88\x9F\xB1\x81 \x88";
    std::u16string taken;
    while (!rest.empty()) taken += TakeCp932(rest);
    EXPECT_EQ(taken, u"A\u4E9C\uFF71\uFFFD \uFFFD");
}

}  // namespace
}  // namespace orvane
