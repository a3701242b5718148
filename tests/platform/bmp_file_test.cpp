#include "platform/bmp_file.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/support/memory_files.h"

namespace orvane {
namespace {

using Colors = std::vector<Rgb>;

std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) bytes += static_cast<char>(value);
    return bytes;
}

std::string Word(std::uint32_t v) { return Bytes({static_cast<int>(v & 0xFF), static_cast<int>(v >> 8 & 0xFF)}); }
std::string Long(std::uint32_t v) { return Word(v & 0xFFFF) + Word(v >> 16); }

/// The parts of a BMP file, each of which a test can bend.
struct Bmp {
    std::uint32_t header_bytes = 40;
    std::int32_t width = 1;
    std::int32_t height = 1;
    std::uint32_t planes = 1;
    std::uint32_t bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t colorsUsed = 0;
    std::vector<std::uint32_t> masks;
    std::string table;
    std::string rows;
    std::int64_t offset = -1;  ///< told pixel offset; -1: the true one

    std::string File() const {
        std::string header = Long(header_bytes);
        if (header_bytes == 12) {
            header +=
                Word(static_cast<std::uint32_t>(width)) + Word(static_cast<std::uint32_t>(height)) + Word(planes) + Word(bits);
        } else {
            header += Long(static_cast<std::uint32_t>(width)) + Long(static_cast<std::uint32_t>(height)) + Word(planes) +
                      Word(bits) + Long(compression) + Long(static_cast<std::uint32_t>(rows.size())) + Long(2835) + Long(2835) +
                      Long(colorsUsed) + Long(0);
            for (const std::uint32_t mask : masks) header += Long(mask);
            if (header.size() < header_bytes) header.resize(header_bytes, '\0');
        }
        const std::size_t begin = 14 + header.size() + table.size();
        const auto told = offset < 0 ? static_cast<std::uint32_t>(begin) : static_cast<std::uint32_t>(offset);
        return "BM" + Long(static_cast<std::uint32_t>(begin + rows.size())) + Long(0) + Long(told) + header + table + rows;
    }
};

bool Decode(const std::string& content, FilePixels& out) {
    MemoryInputFile file(content);
    return ReadBmp(file, out);
}

/// The colours of a picture; nothing when it is refused.
Colors Pixels(const Bmp& bmp) {
    FilePixels out;
    if (!Decode(bmp.File(), out)) return {};
    EXPECT_EQ(out.width_px, bmp.width);
    EXPECT_EQ(out.height_px, bmp.height < 0 ? -bmp.height : bmp.height);
    return out.pixels;
}

/// Refused, and what the caller had is still there.
void ExpectRefused(const std::string& content) {
    FilePixels out{2, 1, {7, 8}};
    EXPECT_FALSE(Decode(content, out));
    EXPECT_EQ(out.width_px, 2);
    EXPECT_EQ(out.height_px, 1);
    EXPECT_EQ(out.pixels, (Colors{7, 8}));
}

const std::string kBlackWhite = Bytes({0, 0, 0, 0, 255, 255, 255, 0});
/// Entries of blue, green, red: red 1, 2, 3 and so on.
const std::string kThreeColors = Bytes({0x11, 0x12, 0x13, 0, 0x21, 0x22, 0x23, 0, 0x31, 0x32, 0x33, 0});
constexpr Rgb kColor0 = 0x111213;
constexpr Rgb kColor1 = 0x212223;
constexpr Rgb kColor2 = 0x313233;

// --- Depths -----------------------------------------------------------------------------------------------------------------

TEST(BmpFileTest, OneBitFromTheHighestDownAndRowsFromTheBottomUp) {
    Bmp bmp;
    bmp.bits = 1, bmp.width = 10, bmp.height = 2;
    bmp.table = kBlackWhite;
    bmp.rows = Bytes({0b10100000, 0b01000000, 0, 0, 0b00000001, 0b10000000, 0, 0});
    constexpr Rgb W = 0xFFFFFF;
    EXPECT_EQ(Pixels(bmp), (Colors{0, 0, 0, 0, 0, 0, 0, W, W, 0, W, 0, W, 0, 0, 0, 0, 0, 0, W}));
    bmp.height = -2;
    EXPECT_EQ(Pixels(bmp), (Colors{W, 0, W, 0, 0, 0, 0, 0, 0, W, 0, 0, 0, 0, 0, 0, 0, W, W, 0}));
}

TEST(BmpFileTest, FourBitsTheHighHalfFirst) {
    Bmp bmp;
    bmp.bits = 4, bmp.width = 3, bmp.height = 2, bmp.colorsUsed = 3;
    bmp.table = kThreeColors;
    bmp.rows = Bytes({0x01, 0x2F, 9, 9, 0x21, 0x00, 9, 9});
    EXPECT_EQ(Pixels(bmp), (Colors{kColor2, kColor1, kColor0, kColor0, kColor1, kColor2}));
    bmp.height = -2;
    EXPECT_EQ(Pixels(bmp), (Colors{kColor0, kColor1, kColor2, kColor2, kColor1, kColor0}));
}

TEST(BmpFileTest, EightBitsAndAnIndexBehindTheTableIsBlack) {
    Bmp bmp;
    bmp.bits = 8, bmp.width = 3, bmp.height = 2, bmp.colorsUsed = 3;
    bmp.table = kThreeColors;
    bmp.rows = Bytes({0, 1, 2, 9, 3, 255, 1, 9});
    EXPECT_EQ(Pixels(bmp), (Colors{0, 0, kColor1, kColor0, kColor1, kColor2}));
    bmp.height = -2;
    EXPECT_EQ(Pixels(bmp), (Colors{kColor0, kColor1, kColor2, 0, 0, kColor1}));
}

TEST(BmpFileTest, AColourCountOfZeroIsAWholeTable) {
    Bmp bmp;
    bmp.bits = 8, bmp.width = 2;
    for (int i = 0; i < 256; ++i) bmp.table += Bytes({i, 255 - i, 7, 0});
    bmp.rows = Bytes({0, 255, 0, 0});
    EXPECT_EQ(Pixels(bmp), (Colors{0x00FF07, 0xFF0007}));
    // More than the depth can tell apart is as good as a whole table.
    bmp.colorsUsed = 0xFFFFFFFF;
    EXPECT_EQ(Pixels(bmp), (Colors{0x00FF07, 0xFF0007}));
}

TEST(BmpFileTest, ATableThatThePixelsCutShortIsBlackFromThere) {
    Bmp bmp;
    bmp.bits = 8, bmp.width = 4, bmp.colorsUsed = 200;
    bmp.table = kThreeColors;
    bmp.rows = Bytes({2, 3, 199, 255});
    EXPECT_EQ(Pixels(bmp), (Colors{kColor2, 0, 0, 0}));
}

TEST(BmpFileTest, SixteenBitsAreFiveEach) {
    Bmp bmp;
    bmp.bits = 16, bmp.width = 5;
    bmp.rows = Word(0x7C00) + Word(0x03E0) + Word(0x001F) + Word(0xFFFF) + Word(3 << 10 | 16 << 5 | 1) + Word(0);
    // Five bits repeat their upper ones: 00011 is 00011 000, 10000 is 10000 100, 00001 is 00001 000.
    EXPECT_EQ(Pixels(bmp), (Colors{0x0000FF, 0x00FF00, 0xFF0000, 0xFFFFFF, 0x088418}));
}

TEST(BmpFileTest, TwentyFourBitsAreBlueGreenRedWithRowsOfWholeWords) {
    Bmp bmp;
    bmp.width = 3, bmp.height = 2;
    bmp.rows = Bytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0, 11, 12, 13, 14, 15, 16, 17, 18, 19, 0, 0, 0});
    EXPECT_EQ(Pixels(bmp), (Colors{0x0B0C0D, 0x0E0F10, 0x111213, 0x010203, 0x040506, 0x070809}));
    bmp.height = -2;
    EXPECT_EQ(Pixels(bmp), (Colors{0x010203, 0x040506, 0x070809, 0x0B0C0D, 0x0E0F10, 0x111213}));
}

TEST(BmpFileTest, ThirtyTwoBitsLeaveTheFourthByteOut) {
    Bmp bmp;
    bmp.bits = 32, bmp.width = 1, bmp.height = 2;
    bmp.rows = Bytes({1, 2, 3, 255, 4, 5, 6, 128});
    EXPECT_EQ(Pixels(bmp), (Colors{0x040506, 0x010203}));
    bmp.height = -2;
    EXPECT_EQ(Pixels(bmp), (Colors{0x010203, 0x040506}));
}

// --- Masks and headers ------------------------------------------------------------------------------------------------------

TEST(BmpFileTest, MasksBehindTheShortHeader) {
    Bmp bmp;
    bmp.bits = 16, bmp.width = 4, bmp.compression = 3;
    bmp.masks = {0xF800, 0x07E0, 0x001F};
    bmp.rows = Word(0xF800) + Word(0x07E0) + Word(0x001F) + Word(1 << 11 | 1 << 5 | 2);
    EXPECT_EQ(Pixels(bmp), (Colors{0x0000FF, 0x00FF00, 0xFF0000, 0x100408}));
}

TEST(BmpFileTest, MasksInsideTheLongerHeaders) {
    for (const std::uint32_t header_bytes : {52u, 56u, 108u, 124u}) {
        Bmp bmp;
        bmp.header_bytes = header_bytes;
        bmp.bits = 32, bmp.width = 2, bmp.compression = 3;
        bmp.masks = {0x000000FF, 0x0000FF00, 0x00FF0000};
        bmp.rows = Bytes({1, 2, 3, 4, 5, 6, 7, 8});
        EXPECT_EQ(Pixels(bmp), (Colors{0x030201, 0x070605})) << header_bytes;
    }
}

TEST(BmpFileTest, MasksOfOtherWidths) {
    Bmp bmp;
    bmp.bits = 32, bmp.width = 2, bmp.compression = 3;
    bmp.masks = {0xFFC00000, 0x00000001, 0x00000000};
    // Ten bits keep the upper eight, one bit is all or nothing, no bits are nothing.
    bmp.rows = Long(0x80C00001) + Long(0xFFFFFFFE);
    EXPECT_EQ(Pixels(bmp), (Colors{0x00FF80, 0x0000FF}));
    bmp.masks = {0xFFFFFFFF, 0, 0};
    EXPECT_EQ(Pixels(bmp), (Colors{0x000080, 0x0000FF}));
    bmp.masks = {0x7, 0, 0};
    bmp.rows = Long(5) + Long(2);
    // 101 repeated is 10110110, 010 is 01001001.
    EXPECT_EQ(Pixels(bmp), (Colors{0xB6, 0x49}));
}

TEST(BmpFileTest, MasksWithHolesAreRefused) {
    Bmp bmp;
    bmp.bits = 32, bmp.compression = 3;
    bmp.masks = {0xFF, 0xFF00, 0x00F0F000};
    bmp.rows = Long(0);
    ExpectRefused(bmp.File());
}

TEST(BmpFileTest, LongHeadersWithoutMasks) {
    for (const std::uint32_t header_bytes : {40u, 52u, 56u, 108u, 124u}) {
        Bmp bmp;
        bmp.header_bytes = header_bytes;
        bmp.bits = 8, bmp.colorsUsed = 3, bmp.table = kThreeColors;
        bmp.rows = Bytes({2, 0, 0, 0});
        EXPECT_EQ(Pixels(bmp), Colors{kColor2}) << header_bytes;
    }
}

TEST(BmpFileTest, TheOldestHeaderHasColoursOfThreeBytes) {
    Bmp bmp;
    bmp.header_bytes = 12;
    bmp.bits = 4, bmp.width = 2, bmp.height = 2;
    for (int i = 0; i < 16; ++i) bmp.table += Bytes({i, i + 16, i + 32});
    bmp.rows = Bytes({0x0F, 0, 0, 0, 0x12, 0, 0, 0});
    EXPECT_EQ(Pixels(bmp), (Colors{0x011121, 0x021222, 0x001020, 0x0F1F2F}));
    bmp.bits = 24, bmp.width = 1, bmp.height = 1, bmp.table.clear();
    bmp.rows = Bytes({1, 2, 3, 0});
    EXPECT_EQ(Pixels(bmp), Colors{0x010203});
}

TEST(BmpFileTest, ARoomBetweenTableAndPixelsIsSkipped) {
    Bmp bmp;
    bmp.bits = 8, bmp.colorsUsed = 1;
    bmp.table = kThreeColors + "anything";
    bmp.rows = Bytes({0, 0, 0, 0});
    EXPECT_EQ(Pixels(bmp), Colors{kColor0});
}

TEST(BmpFileTest, APictureOfSeveralBandsIsWhole) {
    // 2.6 megabytes in rows of 2100 bytes: three bands, none of which ends with the picture.
    Bmp bmp;
    bmp.width = 700, bmp.height = 1250;
    for (int y = 0; y < 1250; ++y) {
        for (int x = 0; x < 700; ++x) bmp.rows += Bytes({x & 0xFF, y & 0xFF, (x >> 8) * 16 + (y >> 8)});
    }
    const Colors pixels = Pixels(bmp);
    ASSERT_EQ(pixels.size(), 875000u);
    for (std::size_t y = 0; y < 1250; ++y) {
        const std::size_t inFile = 1249 - y;
        for (std::size_t x = 0; x < 700; ++x) {
            const std::size_t expected = (x & 0xFF) << 16 | (inFile & 0xFF) << 8 | ((x >> 8) * 16 + (inFile >> 8));
            ASSERT_EQ(pixels[y * 700 + x], expected) << x << ' ' << y;
        }
    }
}

// --- Refused ----------------------------------------------------------------------------------------------------------------

Bmp Good() {
    Bmp bmp;
    bmp.bits = 8, bmp.width = 3, bmp.height = 2, bmp.colorsUsed = 3, bmp.table = kThreeColors;
    bmp.rows = Bytes({0, 1, 2, 0, 0, 1, 2, 0});
    return bmp;
}

TEST(BmpFileTest, AFileCutOffAnywhereIsRefused) {
    const std::string whole = Good().File();
    FilePixels out;
    ASSERT_TRUE(Decode(whole, out));
    for (std::size_t size = 0; size < whole.size(); ++size) ExpectRefused(whole.substr(0, size));
}

TEST(BmpFileTest, AFileThatShrinksWhileItIsReadIsRefused) {
    const std::string whole = Good().File();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        MemoryInputFile file(std::string_view(whole).substr(0, size), whole.size());
        FilePixels out;
        EXPECT_FALSE(ReadBmp(file, out)) << size;
    }
}

TEST(BmpFileTest, AReadThatBreaksOffIsToldFromAFileThatIsNoPicture) {
    const std::string whole = Good().File();
    FilePixels out;
    bool passing = true;
    MemoryInputFile good(whole, whole.size());
    EXPECT_TRUE(ReadBmp(good, out, &passing));
    EXPECT_FALSE(passing);
    MemoryInputFile cut(std::string_view(whole).substr(0, whole.size() - 1), whole.size());
    EXPECT_FALSE(ReadBmp(cut, out, &passing));
    EXPECT_TRUE(passing);
    MemoryInputFile bad("no picture at all", 17);
    EXPECT_FALSE(ReadBmp(bad, out, &passing));
    EXPECT_FALSE(passing);
}

TEST(BmpFileTest, AWrongMarkHeaderSizeOrPlaneCountIsRefused) {
    std::string other = Good().File();
    other[1] = 'A';
    ExpectRefused(other);
    for (const std::uint32_t header_bytes : {0u, 11u, 16u, 39u, 41u, 64u, 125u, 0xFFFFFFFFu}) {
        std::string file = Good().File() + std::string(200, '\0');
        file.replace(14, 4, Long(header_bytes));
        ExpectRefused(file);
    }
    for (const std::uint32_t planes : {0u, 2u}) {
        Bmp bmp = Good();
        bmp.planes = planes;
        ExpectRefused(bmp.File());
    }
}

TEST(BmpFileTest, OtherDepthsAreRefused) {
    for (const std::uint32_t bits : {0u, 2u, 3u, 7u, 9u, 15u, 48u, 64u, 0xFFFFu}) {
        Bmp bmp = Good();
        bmp.bits = bits;
        bmp.rows = std::string(100000, '\0');
        ExpectRefused(bmp.File());
    }
    for (const std::uint32_t bits : {16u, 32u}) {
        Bmp bmp;
        bmp.header_bytes = 12, bmp.bits = bits;
        bmp.rows = std::string(100, '\0');
        ExpectRefused(bmp.File());
    }
}

TEST(BmpFileTest, CompressedFilesAreRefused) {
    for (const auto& [bits, compression] : std::vector<std::pair<std::uint32_t, std::uint32_t>>{
             {8, 1}, {4, 2}, {8, 3}, {24, 3}, {24, 4}, {24, 5}, {32, 6}, {32, 0xFFFFFFFF}}) {
        Bmp bmp = Good();
        bmp.bits = bits, bmp.compression = compression;
        bmp.rows = std::string(100, '\0');
        ExpectRefused(bmp.File());
    }
}

TEST(BmpFileTest, SizesOfZeroAndBelowAreRefused) {
    for (const auto& [width, height] : std::vector<std::pair<std::int32_t, std::int32_t>>{
             {0, 1}, {1, 0}, {-1, 1}, {INT32_MIN, 1}, {1, INT32_MIN}, {INT32_MIN, INT32_MIN}, {0, 0}}) {
        Bmp bmp = Good();
        bmp.width = width, bmp.height = height;
        ExpectRefused(bmp.File());
    }
}

TEST(BmpFileTest, MorePixelsThanTheFileHoldsAreRefused) {
    for (const auto& [width, height] : std::vector<std::pair<std::int32_t, std::int32_t>>{
             {5, 2}, {3, 3}, {3, -3}, {INT32_MAX, 1}, {1, INT32_MAX}, {INT32_MAX, INT32_MAX}, {8000, 8000}}) {
        Bmp bmp = Good();
        bmp.width = width, bmp.height = height;
        ExpectRefused(bmp.File());
    }
}

TEST(BmpFileTest, MoreThan16MillionPixelsAreRefusedWhateverTheFileHolds) {
    Bmp bmp;
    bmp.bits = 1, bmp.width = 16'000'001, bmp.height = 1, bmp.table = kBlackWhite;
    const std::string start = bmp.File();
    MemoryInputFile file(start, 1ULL << 40);
    FilePixels out;
    EXPECT_FALSE(ReadBmp(file, out));
    bmp.width = 4001, bmp.height = 4000;
    const std::string square = bmp.File();
    MemoryInputFile squareFile(square, 1ULL << 40);
    EXPECT_FALSE(ReadBmp(squareFile, out));
}

TEST(BmpFileTest, PixelsOutsideTheFileOrInsideTheHeaderAreRefused) {
    const auto begin = static_cast<std::int64_t>(Good().File().size()) - 8;
    for (const std::int64_t offset :
         {std::int64_t{0}, std::int64_t{53}, begin + 1, begin + 8, begin + 9, std::int64_t{0xFFFFFFFF}}) {
        Bmp bmp = Good();
        bmp.offset = offset;
        ExpectRefused(bmp.File());
    }
}

}  // namespace
}  // namespace orvane
