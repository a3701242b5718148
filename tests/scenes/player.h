// Draws a list of verbs by some back end, and tells which verb each pixel is of.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/device_context.h"

namespace orvane {

/// What the player needs of a back end.
struct SceneDevice {
    std::unique_ptr<DeviceContext> device;
    /// The pixels of a bitmap of colours, 0x??RRGGBB, the top row first without padding; good until the next verb.
    std::function<const std::uint32_t*(Bitmap&)> pixelsOf;
};

/// The program: SCRIPT WIDTH HEIGHT OUT. Writes for base, top and window, one behind the other, 32-bit numbers: the pixels,
/// and for each pixel the number of the verb that changed it last, from 1. Prints a line "ink VERB LEFT TOP RIGHT BOTTOM" for the
/// pixels that each text changed, and "extent VERB WIDTH HEIGHT" for each text measured. Returns the exit code.
int PlayScene(SceneDevice& device, int argc, char** argv);

}  // namespace orvane
