// Questions for what files do not say: the plane system of a map, the coordinate system of a source.
#pragma once

#include <QWidget>
#include <optional>

#include "foreign/import.h"
#include "foreign/plane_system.h"

namespace orvane {

struct PlaneAnswer {
    bool goesOn = false;                ///< false: the operator went back
    std::optional<PlaneSystem> system;  ///< nothing: the operator does not know it either
};
/// Asks for zone and datum of a map in plane metres. `what` is said above, `unknown` stands in the list for not knowing; what is
/// known, a zone of 0 for none, is offered first.
PlaneAnswer AskPlaneSystem(QWidget& parent, const QString& what, const QString& unknown, int zone, std::optional<Datum> datum);

/// Asks for the coordinate system of sources that name none, and with `asksZone` for the zone to take them into. `what` is said
/// above. False, with `options` as they were, when the operator went back.
bool AskSourceSystem(QWidget& parent, const QString& what, bool asksZone, ImportOptions& options);

}  // namespace orvane
