// Pictures in BMP files, uncompressed.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/files.h"
#include "platform/values.h"

namespace orvane {

/// A decoded picture: width_px * height_px colours, the top row first, each row from the left.
struct FilePixels {
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
    std::vector<Rgb> pixels;
};

/// More than any symbol has; a file of one bit a pixel declares a hundred times its own size.
inline constexpr std::int64_t kMaxBmpPixels = 16'000'000;

/// Reads a BMP file of 1, 4, 8, 16, 24 or 32 bits a pixel, bottom-up or top-down, with colour masks or without. An index behind
/// the colour table is black; the fourth byte of 32 bits says nothing.
///
/// False, with `out` as it was, for any other file: compressed, more than kMaxBmpPixels pixels, damaged or cut off. Memory is
/// asked for only once the file was found long enough for the size that it declares; without it the answer is false too.
/// `passing`, where given, tells a failure that says nothing of the file: no memory, or a read that broke off.
bool ReadBmp(InputFile& file, FilePixels& out, bool* passing = nullptr);

}  // namespace orvane
