#include "platform/bmp_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <span>

namespace orvane {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kFileHeader_bytes = 14;
constexpr std::size_t kCoreHeader_bytes = 12;
constexpr std::size_t kInfoHeader_bytes = 40;
constexpr std::size_t kLongestHeader_bytes = 124;
constexpr std::size_t kMasks_bytes = 12;
constexpr std::uint32_t kUncompressed = 0;
constexpr std::uint32_t kBitFields = 3;
constexpr std::uint64_t kBand_bytes = 1 << 20;

std::uint32_t U16(const std::uint8_t* p) { return p[0] | static_cast<std::uint32_t>(p[1]) << 8; }
std::uint32_t U32(const std::uint8_t* p) { return U16(p) | U16(p + 2) << 16; }

/// One colour's bits in a pixel of 16 or 32 bits.
struct Channel {
    std::uint32_t mask = 0;

    bool Solid() const {
        const std::uint32_t low = mask == 0 ? 0 : mask >> std::countr_zero(mask);
        return (low & (low + 1)) == 0;
    }

    /// The value brought to 8 bits: of wider ones the upper eight, narrower ones repeat themselves downward, so that full stays
    /// full.
    std::uint32_t Of(std::uint32_t pixel) const {
        if (mask == 0) return 0;
        const int width = std::popcount(mask);
        const std::uint32_t value = (pixel & mask) >> std::countr_zero(mask);
        if (width >= 8) return value >> (width - 8);
        std::uint32_t bits = value << (8 - width);
        for (int done = width; done < 8; done += width) bits |= bits >> width;
        return bits;
    }
};

struct BmpLayout {
    std::int64_t width_px = 0;
    std::int64_t height_px = 0;
    bool topDown = false;
    std::uint32_t bits = 0;           ///< of a pixel
    std::array<Channel, 3> channels;  ///< red, green, blue, for 16 and 32 bits
    std::size_t tableOffset = 0;
    std::size_t tableEntry_bytes = 0;
    std::uint32_t tableCnt = 0;  ///< 0 from 16 bits on
    std::uint64_t pixelOffset = 0;
    std::uint64_t row_bytes = 0;
};

Rgb MakeRgb(std::uint32_t red, std::uint32_t green, std::uint32_t blue) { return red | green << 8 | blue << 16; }

bool ReadExactly(InputFile& file, std::uint64_t offset, std::span<std::uint8_t> to) {
    return file.ReadAt(offset, to.data(), to.size()) == to.size();
}

bool IsKnownHeader(std::size_t size) {
    constexpr std::size_t kKnown[] = {kCoreHeader_bytes, kInfoHeader_bytes, 52, 56, 108, kLongestHeader_bytes};
    return std::find(std::begin(kKnown), std::end(kKnown), size) != std::end(kKnown);
}

/// Colour masks and what they ask of the file. `masks` are the three words behind the fields of the info header.
bool ReadChannels(std::uint32_t compression, const std::uint8_t* masks, BmpLayout& layout) {
    if (layout.bits != 16 && layout.bits != 32) return compression == kUncompressed;
    if (compression == kUncompressed) {
        if (layout.bits == 16) {
            layout.channels = {Channel{0x7C00}, Channel{0x03E0}, Channel{0x001F}};
        } else {
            layout.channels = {Channel{0xFF0000}, Channel{0x00FF00}, Channel{0x0000FF}};
        }
        return true;
    }
    if (compression != kBitFields) return false;
    for (std::size_t i = 0; i < layout.channels.size(); ++i) {
        layout.channels[i].mask = U32(masks + i * 4);
        if (!layout.channels[i].Solid()) return false;
    }
    return true;
}

/// The header of the first systems: 16-bit sizes, colour table entries of three bytes, always bottom-up.
bool ReadCoreHeader(const std::uint8_t* header, BmpLayout& layout) {
    layout.width_px = U16(header + 4);
    layout.height_px = U16(header + 6);
    layout.bits = U16(header + 10);
    layout.tableOffset = kFileHeader_bytes + kCoreHeader_bytes;
    layout.tableEntry_bytes = 3;
    layout.tableCnt = layout.bits <= 8 ? 1U << layout.bits : 0;
    return U16(header + 8) == 1 && layout.bits != 16 && layout.bits != 32;
}

bool ReadInfoHeader(const std::uint8_t* header, std::size_t header_bytes, BmpLayout& layout) {
    const auto height = static_cast<std::int32_t>(U32(header + 8));
    layout.width_px = static_cast<std::int32_t>(U32(header + 4));
    layout.topDown = height < 0;
    layout.height_px = height < 0 ? -static_cast<std::int64_t>(height) : height;
    layout.bits = U16(header + 14);
    const std::uint32_t compression = U32(header + 16);
    const std::uint32_t colorsUsed = U32(header + 32);
    // The short header has the masks between itself and the colours, the longer ones have them inside; either way they stand
    // here.
    if (U16(header + 12) != 1 || !ReadChannels(compression, header + kInfoHeader_bytes, layout)) return false;
    const bool masksFollow = compression == kBitFields && header_bytes == kInfoHeader_bytes;
    layout.tableOffset = kFileHeader_bytes + header_bytes + (masksFollow ? kMasks_bytes : 0);
    layout.tableEntry_bytes = 4;
    if (layout.bits <= 8) {
        const std::uint32_t all = 1U << layout.bits;
        layout.tableCnt = colorsUsed == 0 ? all : (std::min)(colorsUsed, all);
    }
    return true;
}

/// Whether size, offsets and depth are ones that this reader knows and the file is long enough for them.
bool FitsFile(const BmpLayout& layout, std::uint64_t file_bytes) {
    constexpr std::uint32_t kDepths[] = {1, 4, 8, 16, 24, 32};
    if (std::find(std::begin(kDepths), std::end(kDepths), layout.bits) == std::end(kDepths)) return false;
    if (layout.width_px <= 0 || layout.height_px <= 0 || layout.width_px > kMaxBmpPixels / layout.height_px) return false;
    if (layout.pixelOffset < layout.tableOffset || layout.pixelOffset > file_bytes) return false;
    return layout.row_bytes * static_cast<std::uint64_t>(layout.height_px) <= file_bytes - layout.pixelOffset;
}

bool ReadLayout(InputFile& file, BmpLayout& layout) {
    // What a short file does not have reads as zeros, and no header of zeros is taken.
    std::array<std::uint8_t, kFileHeader_bytes + kLongestHeader_bytes> start{};
    const std::size_t got = file.ReadAt(0, start.data(), start.size());
    if (got < kFileHeader_bytes + kCoreHeader_bytes || start[0] != 'B' || start[1] != 'M') return false;
    const std::uint8_t* header = start.data() + kFileHeader_bytes;
    const std::size_t header_bytes = U32(header);
    if (!IsKnownHeader(header_bytes) || got < kFileHeader_bytes + header_bytes) return false;
    layout.pixelOffset = U32(start.data() + 10);
    const bool read =
        header_bytes == kCoreHeader_bytes ? ReadCoreHeader(header, layout) : ReadInfoHeader(header, header_bytes, layout);
    if (!read) return false;
    // Rows are whole words of four bytes.
    layout.row_bytes = (static_cast<std::uint64_t>(layout.width_px) * layout.bits + 31) / 32 * 4;
    return FitsFile(layout, file.Size_bytes());
}

/// The colours that indices stand for, black where the file gives none: the table ends at the pixels at the latest.
bool ReadTable(InputFile& file, const BmpLayout& layout, std::array<Rgb, 256>& colors) {
    std::array<std::uint8_t, 256 * 4> table{};
    const std::uint64_t room = (layout.pixelOffset - layout.tableOffset) / layout.tableEntry_bytes;
    const auto count = static_cast<std::size_t>((std::min)(std::uint64_t{layout.tableCnt}, room));
    if (!ReadExactly(file, layout.tableOffset, std::span(table).first(count * layout.tableEntry_bytes))) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* entry = table.data() + i * layout.tableEntry_bytes;
        colors[i] = MakeRgb(entry[2], entry[1], entry[0]);
    }
    return true;
}

void DecodeIndexed(Bytes row, const BmpLayout& layout, const std::array<Rgb, 256>& colors, std::span<Rgb> to) {
    const std::uint32_t perByte = 8 / layout.bits;
    const std::uint32_t mask = (1U << layout.bits) - 1;
    for (std::size_t x = 0; x < to.size(); ++x) {
        const auto inByte = static_cast<std::uint32_t>(x % perByte);
        to[x] = colors[(row[x / perByte] >> (8 - layout.bits * (inByte + 1))) & mask];
    }
}

void DecodeRow(Bytes row, const BmpLayout& layout, const std::array<Rgb, 256>& colors, std::span<Rgb> to) {
    if (layout.bits <= 8) return DecodeIndexed(row, layout, colors, to);
    const std::size_t step = layout.bits / 8;
    const std::uint8_t* p = row.data();
    for (Rgb& pixel : to) {
        if (step == 3) {
            pixel = MakeRgb(p[2], p[1], p[0]);
        } else {
            const std::uint32_t raw = step == 2 ? U16(p) : U32(p);
            pixel = MakeRgb(layout.channels[0].Of(raw), layout.channels[1].Of(raw), layout.channels[2].Of(raw));
        }
        p += step;
    }
}

/// Reads the rows in bands of about a megabyte.
bool ReadRows(InputFile& file, const BmpLayout& layout, const std::array<Rgb, 256>& colors, std::vector<Rgb>& pixels) {
    const auto width = static_cast<std::size_t>(layout.width_px);
    const auto height = static_cast<std::uint64_t>(layout.height_px);
    const std::uint64_t band = (std::min)((std::max)(kBand_bytes / layout.row_bytes, std::uint64_t{1}), height);
    const auto row_bytes = static_cast<std::size_t>(layout.row_bytes);
    std::vector<std::uint8_t> rows(static_cast<std::size_t>(band) * row_bytes);
    for (std::uint64_t first = 0; first < height; first += band) {
        const auto count = static_cast<std::size_t>((std::min)(band, height - first));
        const std::span<std::uint8_t> read = std::span(rows).first(count * row_bytes);
        if (!ReadExactly(file, layout.pixelOffset + first * layout.row_bytes, read)) return false;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t inFile = first + i;
            const auto y = static_cast<std::size_t>(layout.topDown ? inFile : height - 1 - inFile);
            DecodeRow(read.subspan(i * row_bytes, row_bytes), layout, colors, std::span(pixels).subspan(y * width, width));
        }
    }
    return true;
}

}  // namespace

bool ReadBmp(InputFile& file, FilePixels& out, bool* passing) {
    if (passing != nullptr) *passing = false;
    BmpLayout layout;
    if (!ReadLayout(file, layout)) return false;
    // From here on all bytes are there, so what fails now may succeed another time.
    if (passing != nullptr) *passing = true;
    try {
        std::array<Rgb, 256> colors{};
        std::vector<Rgb> pixels(static_cast<std::size_t>(layout.width_px * layout.height_px));
        if (!ReadTable(file, layout, colors) || !ReadRows(file, layout, colors, pixels)) return false;
        out.width_px = static_cast<std::int32_t>(layout.width_px);
        out.height_px = static_cast<std::int32_t>(layout.height_px);
        out.pixels = std::move(pixels);
        if (passing != nullptr) *passing = false;
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace orvane
