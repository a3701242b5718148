// Small pictures at the size they were stretched to last.
//
// The symbols of a block are one picture at one size, thousands of times: only the first of them pays for the stretch.
#pragma once

#include <QImage>
#include <array>
#include <cstdint>

#include "platform/qt/stretch.h"

namespace orvane {

class StretchedPictures {
public:
    /// The stretched picture, or null where it is too large to be kept, or has part of its source outside `image`. `pixels` are
    /// those of `image`. Good until the next call.
    const QImage* Get(const QImage& image, const PixelSurface& pixels, const StretchRuns& runs, Stretcher& stretcher);

private:
    struct Kept {
        qint64 source = 0;  ///< changes with each change of the source's pixels
        std::array<std::int64_t, 6> sizes{};
        QImage picture;
    };
    // The mask and the colours of two pictures.
    std::array<Kept, 4> kept_;
    std::size_t oldest_ = 0;
};

}  // namespace orvane
