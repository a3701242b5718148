#include <initializer_list>
#include <string>

#include "geo/fast_plane.h"
#include "geo/geo_conv.h"
#include "geo/mesh_number.h"
#include "tests/values/value_table.h"

namespace orvane {

namespace {

constexpr double kTokyoLatitude = 0.622;
constexpr double kTokyoLongitude = 2.4393;

std::string Name(const char* what, std::initializer_list<std::int32_t> numbers) {
    std::string name = what;
    for (const std::int32_t number : numbers) name += "_" + std::to_string(number);
    return name;
}

double Whole(std::int32_t number) { return static_cast<double>(number); }

void TellDms(ValueTable& table, const std::string& name, const Dms& angle) {
    table.Exact(name, {Whole(angle.degrees), Whole(angle.minutes), Whole(angle.seconds), Whole(angle.tenThousandths)});
}

void TellAngles(ValueTable& table, const GeoConv& conv) {
    for (std::int32_t i = 0; i < 40; ++i) {
        const Dms angle{i * 3, i * 7 % 60, i * 11 % 60, i * 257 % 10000};
        table.Exact(Name("dms_to_rad", {i}), {conv.DmsToRad(angle), conv.DmsToDeg(angle)});
        TellDms(table, Name("rad_to_dms", {i}), conv.RadToDms(i * 0.0777));
        TellDms(table, Name("deg_to_dms", {i}), conv.DegToDms(i * 3.1777));
    }
}

void TellZones(ValueTable& table, const GeoConv& conv) {
    for (std::int32_t i = 0; i <= 30; ++i) {
        const double latitude = i * 0.04;
        const Curvature curvature = conv.PrimeRadius(latitude);
        table.Ulp(Name("meridian", {i}), {conv.MeridianArc(latitude), curvature.N, curvature.eta2});
    }
    for (std::int32_t zone = kFirstZone; zone <= kLastZone; ++zone) {
        const auto origin = conv.ZoneOrigin(zone);
        if (!origin) continue;
        const double originLatitude = conv.DmsToRad(origin->latitude);
        const double originLongitude = conv.DmsToRad(origin->longitude);
        for (std::int32_t i = 0; i < 9; ++i) {
            const GeoRad geo{originLatitude + (i % 3) * 0.011 + 0.003, originLongitude + (i / 3) * 0.012 + 0.004};
            if (const auto plane = conv.GeoToPlane(geo, zone)) table.Ulp(Name("geo_to_plane", {zone, i}), {plane->x, plane->y});
            if (const auto plane = FastGeoToPlane(geo, zone)) table.Ulp(Name("fast_plane", {zone, i}), {plane->x, plane->y});
            const PlaneXY xy{20000.5 + i * 7000.25, -31000.75 + i * 9000.125};
            table.Ulp(Name("foot", {zone, i}), {conv.FootLatitude(originLatitude, originLatitude, xy.x, kPlaneScale)});
            if (const auto rad = conv.PlaneToGeoRad(xy, zone))
                table.Ulp(Name("plane_to_geo", {zone, i}), {rad->latitude, rad->longitude});
            if (const auto rad = FastPlaneToGeo(xy, zone))
                table.Ulp(Name("fast_geo", {zone, i}), {rad->latitude, rad->longitude});
            if (const auto dms = conv.PlaneToGeo(xy, zone)) {
                TellDms(table, Name("plane_to_dms_latitude", {zone, i}), dms->latitude);
                TellDms(table, Name("plane_to_dms_longitude", {zone, i}), dms->longitude);
            }
        }
    }
}

void TellSheets(ValueTable& table, const GeoConv& conv) {
    for (std::int32_t i = 0; i < 64; ++i) {
        const std::int32_t mesh = 533900 + i % 8 * 10 + i / 8;
        const GeoDms corner = conv.MeshToDms(mesh);
        TellDms(table, Name("sheet_latitude", {mesh}), corner.latitude);
        TellDms(table, Name("sheet_longitude", {mesh}), corner.longitude);
        const MeshXY origin = MeshOrigin(533945, mesh);
        table.Exact(Name("sheet_numbers", {mesh}), {Whole(conv.DmsToMesh(corner)), Whole(conv.MeshStep(mesh, i - 9, 5 - i % 11)),
                                                    Whole(origin.x), Whole(origin.y)});
        const auto corners = conv.CornersOf(mesh, 9);
        if (!corners) continue;
        table.Ulp(Name("sheet_corners", {mesh}), {corners->p1.x, corners->p1.y, corners->p2.x, corners->p2.y, corners->p3.x,
                                                  corners->p3.y, corners->p4.x, corners->p4.y});
        const PlaneXY inside = GeoConv::PlaneInSheet(*corners, i * 151.5, 10000 - i * 97.25);
        table.Ulp(Name("in_sheet", {mesh}), {inside.x, inside.y});
    }
    for (std::int32_t i = 0; i < 40; ++i) {
        const MeshPoint point{i * 7531.25, i * 4177.5};
        const MeshPlace place = conv.MeshSplit(point);
        table.Exact(Name("mesh_split", {i}), {Whole(place.mesh), place.localX, place.localY});
        if (const auto plane = conv.MeshToPlane(point, 9)) {
            table.Ulp(Name("mesh_to_plane", {i}), {plane->x, plane->y});
            // By way of angles of whole ten-thousandths of a second, so that the libraries' last bits are gone again.
            if (const auto back = conv.PlaneToMesh({-30000.5 + i * 1500.0, -20000.25 + i * 2500.0}, 9)) {
                table.Exact(Name("plane_to_mesh", {i}), {back->x, back->y});
            }
        }
    }
    TellDms(table, "tokyo", conv.RadToDms(kTokyoLatitude));
    const MeshPoint tokyo = conv.DmsToMeshPoint({conv.RadToDms(kTokyoLatitude), conv.RadToDms(kTokyoLongitude)});
    table.Exact("tokyo_in_the_mesh", {tokyo.x, tokyo.y});
}

}  // namespace

void TellGeo(ValueTable& table) {
    const GeoConv conv;
    TellAngles(table, conv);
    TellZones(table, conv);
    TellSheets(table, conv);
}

}  // namespace orvane
