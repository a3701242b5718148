#include "fuzz/one_file.h"
#include "platform/bmp_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    MemoryInputFile file({reinterpret_cast<const char*>(data), size});
    FilePixels picture;
    if (ReadBmp(file, picture)) {
        Require(picture.width_px > 0 && picture.height_px > 0);
        Require(picture.pixels.size() ==
                static_cast<std::size_t>(picture.width_px) * static_cast<std::size_t>(picture.height_px));
        // A byte holds eight pixels at most.
        Require(picture.pixels.size() <= size * 8);
        for (const Rgb pixel : picture.pixels) Require(pixel <= 0xFFFFFF);
    } else {
        Require(picture.pixels.empty() && picture.width_px == 0 && picture.height_px == 0);
    }

    // A file that ends before the size that it was opened with must be refused, or read alike, and nothing worse.
    MemoryInputFile shrunk({reinterpret_cast<const char*>(data), size / 2}, size);
    FilePixels half;
    ReadBmp(shrunk, half);
    return 0;
}
