// The change between the mesh frame and a plane rectangular zone: the view and what the window shows.
//
// A sheet is a square in the mesh frame whatever its shape on the ground, which is quick and not to scale; in a plane zone the
// map is to scale.
#include <optional>

#include "control/ctrl.h"
#include "control/frame_data.h"
#include "geo/geo_conv.h"

namespace orvane {
namespace {

enum FrameModes : std::int32_t { kMeshFrame = 0, kPlaneFrame = 1 };

struct MapPoint {
    double x = 0;
    double y = 0;
};

/// Map place in the middle of the client area, its halves whole pixels.
MapPoint Middle(COrvane4Ctrl& ctrl) {
    const Rect client = ctrl.window().ClientRect();
    return {ctrl.ScreenToWorldX((client.right - client.left) / 2), ctrl.ScreenToWorldY((client.bottom - client.top) / 2)};
}

bool IsZone(std::int32_t zone) { return zone >= kFirstZone && zone <= kLastZone; }

/// What the host sees in the middle before, it sees in the middle after.
MapPoint ViewToPlane(COrvane4Ctrl& ctrl) {
    const GeoConv conv;
    MapPoint middle = Middle(ctrl);
    if (const std::optional<PlaneXY> plane = conv.MeshToPlane({middle.x, middle.y}, ctrl.frameZone)) {
        middle = {plane->y, plane->x};
    }
    if (const std::optional<PlaneXY> plane = conv.MeshToPlane({ctrl.viewX, -ctrl.viewY}, ctrl.frameZone)) {
        // The north is not turned over here: it stands until the jump, which replaces it when the middle lies within the limits.
        ctrl.viewY = plane->x;
        ctrl.viewX = plane->y;
    }
    return middle;
}

MapPoint ViewToMesh(COrvane4Ctrl& ctrl) {
    const GeoConv conv;
    if (const std::optional<MeshPoint> corner = conv.PlaneToMesh({-ctrl.viewY, ctrl.viewX}, ctrl.frameZone)) {
        ctrl.viewX = corner->x;
        ctrl.viewY = corner->y * -1.0;
    }
    return Middle(ctrl);
}

}  // namespace

void COrvane4Ctrl::ChgGeoFrame(std::int32_t mode, std::int32_t zone) {
    const Scope scope(*this);
    if (mode == frameMode || (mode == kPlaneFrame && !IsZone(zone))) return;
    frameMode = mode;
    // The mesh frame may be asked for from a mode of the host's own, with no plane frame to come back from.
    const bool fromPlane = mode == kMeshFrame && IsZone(frameZone);
    if (mode != kPlaneFrame && !fromPlane) {
        RedrawWindow(0);
        return;
    }
    MapPoint middle;
    if (fromPlane) {
        middle = ViewToMesh(*this);
        DataToMesh(store);
        frameZone = 0;
    } else {
        frameZone = static_cast<std::int16_t>(zone);
        middle = ViewToPlane(*this);
        DataToPlane(store, zone);
    }
    JumpTo(middle.x, middle.y);
}

}  // namespace orvane
