// Members of the map frames: where a sheet lies in the mesh frame, and the change of frame of all data.
#include "control/automation/call.h"
#include "geo/mesh_number.h"

namespace orvane {
namespace {

void SheetOrigin(Call& c) {
    const MeshXY origin = MeshOrigin(c.Store().MeshKind(), c.I4(0));
    c.SetR8(1, origin.x);
    c.SetR8(2, origin.y);
    c.ReturnBool(true);
}

constexpr MemberRow kRows[] = {
    {"GetMeshXY", 92, "VARIANT_BOOL (long meshNo, out double* x, out double* y)",
     "Origin of a sheet in the mesh frame, x east and y north, 10000 units a sheet.", SheetOrigin, "true"},
    {"ChgGeoFrame", 119, "void (long framemode, long coorltype)",
     "Changes all data between the mesh frame and a plane rectangular zone.",
     [](Call& c) { c.ctrl.ChgGeoFrame(c.I4(0), c.I4(1)); }, "", "OrvChgGeoFrame", 198},
};

}  // namespace

std::span<const MemberRow> CoordinateRows() { return kRows; }

}  // namespace orvane
