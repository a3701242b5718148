// What the series of both forms need of a plane zone.
#pragma once

#include <cstdint>

namespace orvane {

/// A zone's origin in radians, and the metres of meridian from the equator up to it.
struct ZoneFacts {
    double latitude = 0;
    double longitude = 0;
    double arc = 0;
};

/// Null for a number that is none of a zone.
const ZoneFacts* FactsOf(std::int32_t zone);

}  // namespace orvane
