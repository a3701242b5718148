// What the host of a raster server and the reader of its images say to each other, over a socket that keeps messages whole, one
// question and one answer at a time. Pixels stand in memory that both see. Both are built together, so records cross as they are.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "foreign/raster/readable_image.h"

namespace orvane {

/// Told on the reader's command line, and refused where it is another one: raised with each change here.
inline constexpr char kReaderVersion[] = "2";
/// Its second argument.
inline constexpr char kReaderOfLocalFiles[] = "local";
inline constexpr char kReaderOfAny[] = "any";

// The descriptors that the reader is started with.
inline constexpr int kReaderSocket = 3;
inline constexpr int kReaderPixels = 4;

/// The memory that both see.
struct ReaderMemory {
    Rgba pixels[ReadableImage::kMaxRead_px];
    std::atomic<std::uint32_t> begun;  ///< the number of the question that the reader took up last
};
static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

/// The longest name of an image; also of what is no file.
inline constexpr std::size_t kMaxImageName = 64 * 1024;
inline constexpr std::size_t kMaxReason = 240;

enum class ReaderAsk : std::uint32_t {
    Open,  ///< the name follows the question; what is told of the image is answered
    Cost,  ///< of `window`
    Read,  ///< `window` into the pixels that both see
    Close,
};

struct ReaderQuestion {
    ReaderAsk ask = ReaderAsk::Open;
    std::uint32_t image = 0;   ///< a number that the host gives
    std::uint32_t number = 0;  ///< of the question, never 0
    ImageWindow window;
    std::uint64_t nameLength = 0;
};

struct ReaderAnswer {
    std::uint32_t done = 0;  ///< 1 when it was done
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
    std::uint32_t hasPlacement = 0;
    std::uint32_t reasonLength = 0;
    Affine placement;
    double cost_bytes = 0;
    char reason[kMaxReason] = {};  ///< why it was not done, where that is known
};

static_assert(std::is_trivially_copyable_v<ReaderQuestion> && std::is_trivially_copyable_v<ReaderAnswer>);

}  // namespace orvane
