#include "hosts/common/coordinate_forms.h"

#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <variant>

#include "geo/ellipsoid.h"
#include "geo/fast_plane.h"
#include "geo/mesh_number.h"
#include "platform/to_int.h"

namespace orvane {
namespace {

constexpr double kUnitsPerDegreeEast = 80000;    // eight sheets of 10000 units
constexpr double kUnitsPerDegreeNorth = 120000;  // twelve
constexpr double kFirstDegreeEast = 100;
constexpr double kLeastLongitude = 110;  // a sheet's number needs two digits of its column

const GeoConv conv;

bool OnTheGlobe(const GeoDeg& geo) { return std::fabs(geo.latitude) <= 90 && std::fabs(geo.longitude) <= 180; }

/// Whether the numbering may reach the place; how far to the north it does is for its sheet to say.
bool HasSheet(const GeoDeg& geo) { return OnTheGlobe(geo) && geo.latitude >= 0 && geo.longitude >= kLeastLongitude; }

GeoRad RadOf(const GeoDeg& geo) { return {geo.latitude / 180.0 * kPi, geo.longitude / 180.0 * kPi}; }
GeoDeg DegOf(const GeoRad& geo) { return {geo.latitude / kPi * 180.0, geo.longitude / kPi * 180.0}; }

constexpr int kDegreeDecimals = 10;  // a hundredth of a millimetre
constexpr int kLengthDecimals = 4;   // a tenth of a millimetre

/// Whether a number of units is so far from the middle between two of them that one `doubt` aside is rounded alike.
bool RoundsAlike(double units, double doubt) {
    const double fraction = units - static_cast<double>(TruncToInt64(units));
    return std::fabs(std::fabs(fraction) - 0.5) > doubt;
}

// Of the faster form's results those are taken that are printed as the exact form's: which last bits they have does not show.
bool PrintsAlike(const PlaneXY& plane) {
    constexpr double kUnits = 1e4;  // of the last decimal printed
    constexpr double kDoubt = 2 * kFastPlane_m * kUnits;
    return RoundsAlike(plane.x * kUnits, kDoubt) && RoundsAlike(plane.y * kUnits, kDoubt);
}

bool PrintsAlike(double degrees) {
    constexpr double kDoubt_deg = 2 * kFastAngle_rad / kPi * 180;
    constexpr double kUnits = 1e10;     // of the last decimal printed
    constexpr double kDmsUnits = 36e6;  // ten-thousandths of a second
    constexpr double kDmsDoubt = 1e-4;  // what the way there by seconds rounds is more than the doubt itself
    static_assert(kDmsDoubt > kDoubt_deg * kDmsUnits);
    return RoundsAlike(degrees * kUnits, kDoubt_deg * kUnits) && RoundsAlike(degrees * kDmsUnits, kDmsDoubt);
}

bool PrintsAlike(const GeoDeg& geo) { return PrintsAlike(geo.latitude) && PrintsAlike(geo.longitude); }

// --- Reading -----------------------------------------------------------------------------------------------------------------

using Place = std::variant<GeoDeg, PlaneXY, MeshPoint>;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == ',' || c == '\r'; }

constexpr std::size_t kMostNumbers = 6;
struct Numbers {
    std::array<double, kMostNumbers> value{};
    std::size_t count = 0;
    std::string_view first;  ///< the first number as it is written
};

/// False for text that is no number, for more numbers than any form has, and for numbers that are not finite.
bool ReadNumbers(std::string_view line, Numbers& numbers) {
    const char* at = line.data();
    const char* const end = at + line.size();
    for (;;) {
        while (at != end && IsBlank(*at)) ++at;
        if (at == end) return true;
        if (numbers.count == kMostNumbers) return false;
        const char* const begin = at;
        if (*at == '+' && at + 1 != end && at[1] != '-') ++at;
        double value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc() || !std::isfinite(value) || (next != end && !IsBlank(*next))) return false;
        if (numbers.count == 0) numbers.first = std::string_view(begin, static_cast<std::size_t>(next - begin));
        numbers.value[numbers.count++] = value;
        at = next;
    }
}

bool IsWholeBelow(double v, double limit) { return v >= 0 && v < limit && std::floor(v) == v; }

bool ReadAngle(std::span<const double, 3> v, double mostDegrees, double& degrees) {
    if (!IsWholeBelow(v[0], mostDegrees + 1) || !IsWholeBelow(v[1], 60) || !(v[2] >= 0 && v[2] < 60)) return false;
    degrees = v[0] + v[1] / 60.0 + v[2] / 3600.0;
    return degrees <= mostDegrees;
}

const char* Expected(CoordinateForm form) {
    switch (form) {
        case CoordinateForm::Deg:
            return "two numbers expected: latitude -90 to 90 and longitude -180 to 180, degrees";
        case CoordinateForm::Dms:
            return "six numbers expected: degrees, minutes and seconds of latitude and of longitude";
        case CoordinateForm::Plane:
            return "two numbers expected: x to the north and y to the east, metres";
        case CoordinateForm::Mesh:
            return "a sheet number of six digits expected, alone or with x and y inside the sheet";
        default:
            return "two numbers expected: x and y in the mesh frame";
    }
}

/// A sheet's number is read by its digits: one that lacks a digit would stand for quite another sheet.
bool IsSheetNumber(std::string_view text) {
    return text.size() == 6 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsInSheet(double local) { return local >= 0 && local <= kMeshSheet; }

std::optional<Place> ReadSheetPlace(const Numbers& numbers, std::string& why) {
    const auto& v = numbers.value;
    why = Expected(CoordinateForm::Mesh);
    if ((numbers.count != 1 && numbers.count != 3) || !IsSheetNumber(numbers.first)) return std::nullopt;
    const auto mesh = static_cast<std::int32_t>(v[0]);
    const SheetPlace sheet = ReadSheet(mesh);
    why = "no such sheet: its row and column, the last two digits, are 0 to 7";
    if (sheet.rowInside > 7 || sheet.columnInside > 7) return std::nullopt;
    const MeshXY origin = MeshOrigin(0, mesh);
    why = "no such sheet: sheets lie between longitudes 110 and 180";
    if (!SheetAt({static_cast<double>(origin.x), static_cast<double>(origin.y)})) return std::nullopt;
    why = "no place in the sheet: x and y inside are 0 to 10000";
    if (!IsInSheet(v[1]) || !IsInSheet(v[2])) return std::nullopt;
    return MeshPoint{origin.x + v[1], origin.y + v[2]};
}

std::optional<Place> ReadPlace(CoordinateForm form, std::string_view line, std::string& why) {
    Numbers numbers;
    why = Expected(form);
    if (!ReadNumbers(line, numbers)) return std::nullopt;
    const auto& v = numbers.value;
    if (form == CoordinateForm::Mesh) return ReadSheetPlace(numbers, why);
    if (form == CoordinateForm::Dms) {
        GeoDeg geo;
        const std::span<const double, 6> all(v);
        if (numbers.count != 6 || !ReadAngle(all.first<3>(), 90, geo.latitude) || !ReadAngle(all.last<3>(), 180, geo.longitude)) {
            return std::nullopt;
        }
        return geo;
    }
    if (numbers.count != 2) return std::nullopt;
    if (form == CoordinateForm::Plane) return PlaneXY{v[0], v[1]};
    if (form == CoordinateForm::Frame) return MeshPoint{v[0], v[1]};
    const GeoDeg geo{v[0], v[1]};
    if (!OnTheGlobe(geo)) return std::nullopt;
    return geo;
}

// --- The ways ----------------------------------------------------------------------------------------------------------------

std::optional<GeoDeg> ToDeg(const Place& place, std::int32_t zone) {
    if (const auto* plane = std::get_if<PlaneXY>(&place)) return PlaneToDeg(*plane, zone);
    if (const auto* point = std::get_if<MeshPoint>(&place)) return MeshToDeg(*point);
    return std::get<GeoDeg>(place);
}

std::optional<PlaneXY> ToPlane(const Place& place, std::int32_t zone) {
    if (const auto* geo = std::get_if<GeoDeg>(&place)) return DegToPlane(*geo, zone);
    if (const auto* point = std::get_if<MeshPoint>(&place)) return MeshPointToPlane(*point, zone);
    return std::get<PlaneXY>(place);
}

std::optional<MeshPoint> ToMesh(const Place& place, std::int32_t zone) {
    if (const auto* geo = std::get_if<GeoDeg>(&place)) return DegToMesh(*geo);
    if (const auto* plane = std::get_if<PlaneXY>(&place)) return PlaneToMeshPoint(*plane, zone);
    return std::get<MeshPoint>(place);
}

// --- Writing -----------------------------------------------------------------------------------------------------------------

bool Write(double value, int decimals, std::string& out) {
    char text[400];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    if (error != std::errc() || !std::isfinite(value)) return false;
    // A value that rounds to zero is zero, without a sign.
    const std::string_view digits(text, static_cast<std::size_t>(end - text));
    const bool isZero = digits.find_first_not_of("-0.") == std::string_view::npos;
    out += digits.substr(isZero && digits.front() == '-' ? 1 : 0);
    return true;
}

bool WritePair(double first, double second, int decimals, std::string& out) {
    if (!Write(first, decimals, out)) return false;
    out += ' ';
    return Write(second, decimals, out);
}

/// Appends a number with zeros in front.
void WritePadded(std::int32_t value, std::size_t digits, std::string& out) {
    const std::string text = std::to_string(value);
    out.append(text.size() < digits ? digits - text.size() : 0, '0');
    out += text;
}

bool WriteAngle(double degrees, std::string& out) {
    if (degrees < 0) return false;
    const Dms dms = conv.RadToDms(degrees / 180.0 * kPi);
    out += std::to_string(dms.degrees);
    out += ' ';
    WritePadded(dms.minutes, 2, out);
    out += ' ';
    WritePadded(dms.seconds, 2, out);
    out += '.';
    WritePadded(dms.tenThousandths, 4, out);
    return true;
}

bool WriteDeg(const std::optional<GeoDeg>& geo, bool asDms, std::string& out) {
    if (!geo || !OnTheGlobe(*geo)) return false;
    if (!asDms) return WritePair(geo->latitude, geo->longitude, kDegreeDecimals, out);
    if (!WriteAngle(geo->latitude, out)) return false;
    out += ' ';
    return WriteAngle(geo->longitude, out);
}

bool WriteSheet(const std::optional<MeshPoint>& point, std::string& out) {
    const std::optional<MeshPlace> place = point ? SheetAt(*point) : std::nullopt;
    if (!place) return false;
    WritePadded(place->mesh, 6, out);
    out += ' ';
    return WritePair(place->localX, place->localY, kLengthDecimals, out);
}

bool WritePlace(CoordinateForm form, const Place& place, std::int32_t zone, std::string& out) {
    switch (form) {
        case CoordinateForm::Deg:
        case CoordinateForm::Dms:
            return WriteDeg(ToDeg(place, zone), form == CoordinateForm::Dms, out);
        case CoordinateForm::Plane: {
            const std::optional<PlaneXY> plane = ToPlane(place, zone);
            return plane && WritePair(plane->x, plane->y, kLengthDecimals, out);
        }
        case CoordinateForm::Mesh:
            return WriteSheet(ToMesh(place, zone), out);
        default: {
            const std::optional<MeshPoint> point = ToMesh(place, zone);
            return point && WritePair(point->x, point->y, kLengthDecimals, out);
        }
    }
}

}  // namespace

std::optional<PlaneXY> DegToPlane(const GeoDeg& geo, std::int32_t zone) {
    if (!OnTheGlobe(geo)) return std::nullopt;
    const GeoRad rad = RadOf(geo);
    const std::optional<PlaneXY> fast = FastGeoToPlane(rad, zone);
    if (fast && PrintsAlike(*fast)) return fast;
    return conv.GeoToPlane(rad, zone);
}

std::optional<GeoDeg> PlaneToDeg(const PlaneXY& plane, std::int32_t zone) {
    if (const std::optional<GeoRad> fast = FastPlaneToGeo(plane, zone)) {
        const GeoDeg deg = DegOf(*fast);
        if (PrintsAlike(deg)) return deg;
    }
    const std::optional<GeoRad> geo = conv.PlaneToGeoRad(plane, zone);
    if (!geo) return std::nullopt;
    const GeoDeg deg = DegOf(*geo);
    if (!OnTheGlobe(deg)) return std::nullopt;
    return deg;
}

std::optional<GeoDeg> MeshToDeg(const MeshPoint& point) {
    const GeoDeg geo{point.y / kUnitsPerDegreeNorth, kFirstDegreeEast + point.x / kUnitsPerDegreeEast};
    if (!OnTheGlobe(geo)) return std::nullopt;
    return geo;
}

std::optional<MeshPoint> DegToMesh(const GeoDeg& geo) {
    if (!HasSheet(geo)) return std::nullopt;
    const GeoRad rad = RadOf(geo);
    const MeshPoint point = conv.DmsToMeshPoint({conv.RadToDms(rad.latitude), conv.RadToDms(rad.longitude)});
    if (!SheetAt(point)) return std::nullopt;
    return point;
}

std::optional<PlaneXY> MeshPointToPlane(const MeshPoint& point, std::int32_t zone) {
    if (!SheetAt(point)) return std::nullopt;
    return conv.MeshToPlane(point, zone);
}

std::optional<MeshPoint> PlaneToMeshPoint(const PlaneXY& plane, std::int32_t zone) {
    // Where there is no sheet, the numbers of the angles would be read as those of another one.
    const std::optional<GeoDeg> geo = PlaneToDeg(plane, zone);
    if (!geo || !HasSheet(*geo)) return std::nullopt;
    const std::optional<MeshPoint> point = conv.PlaneToMesh(plane, zone);
    if (!point || !SheetAt(*point)) return std::nullopt;
    return point;
}

std::optional<MeshPlace> SheetAt(const MeshPoint& point) {
    constexpr double kWest = (kLeastLongitude - kFirstDegreeEast) * kUnitsPerDegreeEast;
    constexpr double kEast = (180 - kFirstDegreeEast) * kUnitsPerDegreeEast;
    constexpr double kNorth = 100 * 80000.0;  // of the row's two digits
    // Written so that what is not a number fails as well.
    if (!(point.x >= kWest && point.x < kEast && point.y >= 0 && point.y < kNorth)) return std::nullopt;
    return conv.MeshSplit(point);
}

bool LineConverter::Convert(std::string_view line, std::string& out, std::string& why) const {
    const std::optional<Place> place = ReadPlace(from_, line, why);
    if (!place) return false;
    const std::size_t before = out.size();
    if (WritePlace(to_, *place, zone_, out)) return true;
    out.resize(before);
    why = "the place has no coordinates in the other form";
    return false;
}

}  // namespace orvane
