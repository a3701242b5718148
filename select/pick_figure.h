// Picks of overlay figures. A figure with the number 0 is passed over; none of the searches runs host code.
#pragma once

#include <cstdint>
#include <optional>

#include "select/near_org_point.h"
#include "select/pick.h"

namespace orvane {

/// Number of the first figure of at least two points under a client pixel; -1 none, -2 no memory.
std::int32_t PickOrgFigure(const CDigMem& store, Point at, const PickPlace& place);
/// The first vertex of an active figure under a client pixel that lies in the client area.
std::optional<OrgVertex> PickOrgPoint(const CDigMem& store, Point at, const PickPlace& place);

struct NearDatVertex {
    std::int32_t datID = -1;
    std::int32_t index = 0;
    std::int32_t meshNo = 0;
    double x = 0;  ///< map units, y to the north
    double y = 0;
};

/// The vertex of a drawn item nearest to the map point (x, y), the first of equally near ones; none further than 10000 map units.
std::optional<NearDatVertex> NearDataPoint(CDigMem& store, double x, double y);

}  // namespace orvane
