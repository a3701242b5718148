#include "hosts/python/coordinates.h"

#include <pybind11/numpy.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "geo/mesh_number.h"
#include "hosts/common/coordinate_forms.h"

namespace py = pybind11;

namespace orvane::python {
namespace {

using Doubles = py::array_t<double, py::array::c_style | py::array::forcecast>;
using Ints = py::array_t<std::int32_t, py::array::c_style | py::array::forcecast>;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

template <class T>
std::vector<py::ssize_t> ShapeOf(const T& array) {
    return {array.shape(), array.shape() + array.ndim()};
}

/// Converts place by place with `way`, which takes two numbers and gives an optional pair; what has no answer becomes NaN.
template <class Way>
py::tuple EachPair(const Doubles& first, const Doubles& second, Way way) {
    const std::vector<py::ssize_t> shape = ShapeOf(first);
    if (shape != ShapeOf(second)) throw py::value_error("both arrays must have the same shape");
    Doubles outFirst(shape);
    Doubles outSecond(shape);
    const double* const a = first.data();
    const double* const b = second.data();
    double* const outA = outFirst.mutable_data();
    double* const outB = outSecond.mutable_data();
    const py::ssize_t count = first.size();
    {
        const py::gil_scoped_release released;
        for (py::ssize_t i = 0; i < count; ++i) {
            const std::pair<double, double> out = way(a[i], b[i]);
            outA[i] = out.first;
            outB[i] = out.second;
        }
    }
    return py::make_tuple(outFirst, outSecond);
}

constexpr std::pair<double, double> kNowhere{kNoNumber, kNoNumber};

std::pair<double, double> Pair(const std::optional<PlaneXY>& p) { return p ? std::pair{p->x, p->y} : kNowhere; }
std::pair<double, double> Pair(const std::optional<MeshPoint>& p) { return p ? std::pair{p->x, p->y} : kNowhere; }
std::pair<double, double> Pair(const std::optional<GeoDeg>& p) { return p ? std::pair{p->latitude, p->longitude} : kNowhere; }

void CheckZone(std::int32_t zone) {
    if (zone < kFirstZone || zone > kLastZone) throw py::value_error("plane rectangular zones are 1 to 19");
}

py::tuple GeoToPlane(const Doubles& latitude, const Doubles& longitude, std::int32_t zone) {
    CheckZone(zone);
    return EachPair(latitude, longitude, [zone](double lat, double lon) { return Pair(DegToPlane({lat, lon}, zone)); });
}

py::tuple PlaneToGeo(const Doubles& x, const Doubles& y, std::int32_t zone) {
    CheckZone(zone);
    return EachPair(x, y, [zone](double north, double east) { return Pair(PlaneToDeg({north, east}, zone)); });
}

py::tuple MeshToPlane(const Doubles& x, const Doubles& y, std::int32_t zone) {
    CheckZone(zone);
    return EachPair(x, y, [zone](double east, double north) { return Pair(MeshPointToPlane({east, north}, zone)); });
}

py::tuple PlaneToMesh(const Doubles& x, const Doubles& y, std::int32_t zone) {
    CheckZone(zone);
    return EachPair(x, y, [zone](double north, double east) { return Pair(PlaneToMeshPoint({north, east}, zone)); });
}

py::tuple GeoToMesh(const Doubles& latitude, const Doubles& longitude) {
    return EachPair(latitude, longitude, [](double lat, double lon) { return Pair(DegToMesh({lat, lon})); });
}

py::tuple MeshToGeo(const Doubles& x, const Doubles& y) {
    return EachPair(x, y, [](double east, double north) { return Pair(MeshToDeg({east, north})); });
}

py::array MeshNumber(const Doubles& x, const Doubles& y) {
    const std::vector<py::ssize_t> shape = ShapeOf(x);
    if (shape != ShapeOf(y)) throw py::value_error("both arrays must have the same shape");
    Ints out(shape);
    for (py::ssize_t i = 0; i < x.size(); ++i) {
        const std::optional<MeshPlace> place = SheetAt({x.data()[i], y.data()[i]});
        out.mutable_data()[i] = place ? place->mesh : -1;
    }
    return out;
}

/// Sheet numbers are taken as doubles, which hold all of them and show what is none: a cast to 32 bits would wrap it.
std::int32_t SheetNumber(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(value >= (Limits::min)() && value <= (Limits::max)()) || std::floor(value) != value) {
        throw py::value_error("sheet numbers are whole numbers of 32 bits");
    }
    return static_cast<std::int32_t>(value);
}

py::tuple SheetOrigin(const Doubles& mesh) {
    const std::vector<py::ssize_t> shape = ShapeOf(mesh);
    Doubles x(shape);
    Doubles y(shape);
    for (py::ssize_t i = 0; i < mesh.size(); ++i) {
        const MeshXY origin = MeshOrigin(0, SheetNumber(mesh.data()[i]));
        x.mutable_data()[i] = origin.x;
        y.mutable_data()[i] = origin.y;
    }
    return py::make_tuple(x, y);
}

}  // namespace

void BindCoordinates(py::module_& module) {
    using py::arg;
    module.def("geo_to_plane", &GeoToPlane, arg("latitude"), arg("longitude"), arg("zone"),
               "Degrees on the Bessel ellipsoid to metres of a zone: x north, y east. NaN where there is no place.\n\n"
               "Good to 0.2 millimetres as far as 700 kilometres north and south and 160 kilometres east and west of the zone's "
               "origin; worse without bound beyond.");
    module.def("plane_to_geo", &PlaneToGeo, arg("x"), arg("y"), arg("zone"),
               "The way back of geo_to_plane, good within the same limits: latitude and longitude in degrees. NaN where they "
               "are beyond 90 and 180.");
    module.def("mesh_to_plane", &MeshToPlane, arg("x"), arg("y"), arg("zone"),
               "Mesh-frame x east and y north to plane x north and y east, between the four corners of each sheet: inside, up "
               "to 2 metres beside the exact place. NaN for places without a sheet.\n\n"
               "The corners are good to 0.2 millimetres within the limits of geo_to_plane.");
    module.def("plane_to_mesh", &PlaneToMesh, arg("x"), arg("y"), arg("zone"),
               "Plane x north and y east to the mesh frame by the exact projection, angles rounded to a ten-thousandth of a "
               "second. NaN for places without a sheet. Good within the limits of geo_to_plane.");
    module.def("geo_to_mesh", &GeoToMesh, arg("latitude"), arg("longitude"),
               "Degrees to the mesh frame, angles rounded to a ten-thousandth of a second. NaN for places without a sheet: "
               "sheets lie between the equator and 66 40' N and between 110 and 180 E.");
    module.def("mesh_to_geo", &MeshToGeo, arg("x"), arg("y"),
               "Mesh-frame places to latitude and longitude in degrees, places without a sheet too. NaN beyond 90 and 180.");
    module.def("mesh_number", &MeshNumber, arg("x"), arg("y"), "Number of the sheet of a mesh-frame place; -1 where none is.");
    module.def("mesh_origin", &SheetOrigin, arg("mesh"),
               "South-west corner of a sheet in the mesh frame. The first six characters of a number are read, as the control "
               "does; what is no whole number of 32 bits raises ValueError.");
}

}  // namespace orvane::python
