// The vertex of an overlay figure that is nearest to a click.
#pragma once

#include <cstdint>
#include <optional>

#include "store/cdigmem.h"

namespace orvane {

/// A vertex of an overlay figure by the figure's ID and the vertex's position.
struct OrgVertex {
    std::int32_t ID = 0;
    std::int32_t index = 0;
};

struct NearOrgVertex {
    OrgVertex vertex;
    std::int32_t neighbour = 0;  ///< the nearer of the vertices beside it; the count of vertices where one end has none
    double x = 0;                ///< map units, y to the north, as below
    double y = 0;
};

/// The vertex nearest to the map point (x, y), the first of equally near ones; none further than 10000 map units. `activeOnly`
/// looks at active figures alone, and `dragged` is passed over. A neighbour that is not there counts as one at (0, 0).
std::optional<NearOrgVertex> NearOrgPoint(const CDigMem& store, double x, double y, bool activeOnly,
                                          const std::optional<OrgVertex>& dragged);

}  // namespace orvane
