// The one point record of the system: what the store keeps and what plane geometry works on.
#pragma once

namespace orvane {

/// A point local to its block, in map units; y grows to the north. `z` is the radius in a circle layer, else a height.
struct DigPnt {
    double x = 0;
    double y = 0;
    double z = 0;
};

}  // namespace orvane
