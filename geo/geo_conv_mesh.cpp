// Sheets of the mesh frame: their numbers, and the way between the frame and a plane zone through a sheet's four corners.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string_view>

#include "geo/geo_conv.h"
#include "geo/mesh_number.h"
#include "platform/to_int.h"

namespace orvane {
namespace {

/// A sheet's row or column: the digits of the primary mesh, and the digit inside it.
struct MajorMinor {
    std::int64_t major = 0;
    std::int64_t minor = 0;
};

/// Some sheets on, with carry to the base of 8. Dividing by 9 on the way down is what sheets have been numbered by.
MajorMinor Step(MajorMinor from, std::int64_t n) {
    const std::int64_t v = from.minor + n;
    if (v >= 0) return {from.major + v / 8, v % 8};
    const std::int64_t k = -v / 9;
    return {from.major - k - 1, k * 8 + 8 + v};
}

/// The four numbers one after the other, without leading zeros, read as one: up to the first character that is no digit, held to
/// 32 bits. A negative number in the middle thus ends it.
std::int32_t NumberOf(MajorMinor row, MajorMinor column) {
    char text[96] = {};
    std::snprintf(text, sizeof text, "%lld%lld%lld%lld", static_cast<long long>(row.major), static_cast<long long>(column.major),
                  static_cast<long long>(row.minor), static_cast<long long>(column.minor));
    const std::string_view digits(text);
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc::result_out_of_range) return number;
    using Limits = std::numeric_limits<std::int32_t>;
    return digits.front() == '-' ? (Limits::min)() : (Limits::max)();
}

/// Whole seconds of an angle; fractions of a second do not count.
std::int64_t WholeSeconds(const Dms& angle, std::int32_t fromDegrees) {
    return (std::int64_t{angle.degrees} - fromDegrees) * 3600 + std::int64_t{angle.minutes} * 60 + angle.seconds +
           angle.tenThousandths / 10000;
}

double SecondsFrom(const Dms& origin, const Dms& angle) {
    return (static_cast<double>(angle.degrees) - origin.degrees) * 3600.0 +
           (static_cast<double>(angle.minutes) - origin.minutes) * 60.0 + (static_cast<double>(angle.seconds) - origin.seconds) +
           angle.tenThousandths / 10000.0;
}

/// How many sheets from 0: truncated toward zero.
std::int32_t SheetsOf(double coordinate) { return TruncToInt32(coordinate / kMeshSheet); }

/// The sheet converted last, by its number and by its steps from sheet 0: most points lie in the sheet of the point before, and
/// for those not even the number needs to be made.
struct CornerCache {
    std::int32_t mesh = -1;
    std::int32_t zone = -1;
    SheetCorners corners;
    bool hasSteps = false;  ///< the two below belong to `mesh`
    std::int32_t stepsX = 0;
    std::int32_t stepsY = 0;
};

CornerCache& Cache() {
    thread_local CornerCache cache;
    return cache;
}

/// Brings the sheet into the cache; false, with the cache as it was, for a bad zone.
bool FillCache(const GeoConv& conv, CornerCache& cache, std::int32_t mesh, std::int32_t zone) {
    if (zone < kFirstZone || zone > kLastZone) return false;
    if (cache.mesh == mesh && cache.zone == zone) return true;
    const GeoDms southWest = conv.MeshToDms(mesh);
    Dms north = southWest.latitude;
    north.minutes += 5;
    Dms east = southWest.longitude;
    east.minutes += 7;
    east.seconds += 30;
    const double lat0 = conv.DmsToRad(southWest.latitude);
    const double lat1 = conv.DmsToRad(north);
    const double lon0 = conv.DmsToRad(southWest.longitude);
    const double lon1 = conv.DmsToRad(east);
    cache.corners = {*conv.GeoToPlane({lat0, lon0}, zone), *conv.GeoToPlane({lat1, lon0}, zone),
                     *conv.GeoToPlane({lat1, lon1}, zone), *conv.GeoToPlane({lat0, lon1}, zone)};
    cache.mesh = mesh;
    cache.zone = zone;
    cache.hasSteps = false;
    return true;
}

}  // namespace

GeoDms GeoConv::MeshToDms(std::int32_t mesh) const {
    const SheetPlace place = ReadSheet(mesh);
    GeoDms geo;
    const std::int32_t latitude = TruncToInt32(place.row * 60 / 1.5 + 0.5);  // minutes
    geo.latitude.degrees = latitude / 60;
    geo.latitude.minutes = latitude % 60 + place.rowInside * 5;
    if (geo.latitude.minutes >= 60) {
        geo.latitude.degrees += geo.latitude.minutes / 60;
        geo.latitude.minutes %= 60;
    }
    geo.longitude.degrees = place.column + 100;
    const std::int32_t longitude = TruncToInt32(place.columnInside * 3600 * 7.5 + 0.5);  // sixtieths of a second
    geo.longitude.minutes = longitude / 3600;
    geo.longitude.seconds = longitude % 3600 / 60;
    return geo;
}

std::int32_t GeoConv::DmsToMesh(const GeoDms& geo) const {
    const std::int64_t row = WholeSeconds(geo.latitude, 0) / 300;
    const std::int64_t column = WholeSeconds(geo.longitude, 100) / 450;
    return NumberOf({row / 8, row % 8}, {column / 8, column % 8});
}

std::int32_t GeoConv::MeshStep(std::int32_t base, std::int32_t stepsX, std::int32_t stepsY) const {
    const SheetPlace place = ReadSheet(base);
    return NumberOf(Step({place.row, place.rowInside}, stepsY), Step({place.column, place.columnInside}, stepsX));
}

MeshPlace GeoConv::MeshSplit(const MeshPoint& point) const {
    const std::int32_t i = SheetsOf(point.x);
    const std::int32_t j = SheetsOf(point.y);
    return {MeshStep(0, i, j), point.x - i * kMeshSheet, point.y - j * kMeshSheet};
}

std::optional<SheetCorners> GeoConv::CornersOf(std::int32_t mesh, std::int32_t zone) const {
    CornerCache& cache = Cache();
    if (!FillCache(*this, cache, mesh, zone)) return std::nullopt;
    return cache.corners;
}

PlaneXY GeoConv::PlaneInSheet(const SheetCorners& corners, double localX, double localY) {
    const double a = localX / kMeshSheet;
    const double b = localY / kMeshSheet;
    const double w1 = (1 - a) * (1 - b);
    const double w4 = a * (1 - b);
    const double w3 = a * b;
    const double w2 = (1 - a) * b;
    return {w1 * corners.p1.x + w4 * corners.p4.x + w3 * corners.p3.x + w2 * corners.p2.x,
            w1 * corners.p1.y + w4 * corners.p4.y + w3 * corners.p3.y + w2 * corners.p2.y};
}

std::optional<PlaneXY> GeoConv::MeshToPlane(const MeshPoint& point, std::int32_t zone) const {
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) return std::nullopt;
    CornerCache& cache = Cache();
    const std::int32_t i = SheetsOf(point.x);
    const std::int32_t j = SheetsOf(point.y);
    if (!cache.hasSteps || cache.zone != zone || cache.stepsX != i || cache.stepsY != j) {
        if (!FillCache(*this, cache, MeshStep(0, i, j), zone)) return std::nullopt;
        cache.hasSteps = true;
        cache.stepsX = i;
        cache.stepsY = j;
    }
    const PlaneXY plane = PlaneInSheet(cache.corners, point.x - i * kMeshSheet, point.y - j * kMeshSheet);
    // Far enough outside, the products of the interpolation are no numbers any more.
    if (!std::isfinite(plane.x) || !std::isfinite(plane.y)) return std::nullopt;
    return plane;
}

MeshPoint GeoConv::DmsToMeshPoint(const GeoDms& geo) const {
    const std::int32_t mesh = DmsToMesh(geo);
    const GeoDms origin = MeshToDms(mesh);
    const MeshXY corner = MeshOrigin(0, mesh);
    return {corner.x + SecondsFrom(origin.longitude, geo.longitude) * 10000.0 / 450.0,
            corner.y + SecondsFrom(origin.latitude, geo.latitude) * 10000.0 / 300.0};
}

std::optional<MeshPoint> GeoConv::PlaneToMesh(const PlaneXY& plane, std::int32_t zone) const {
    const std::optional<GeoDms> geo = PlaneToGeo(plane, zone);
    if (!geo) return std::nullopt;
    return DmsToMeshPoint(*geo);
}

}  // namespace orvane
