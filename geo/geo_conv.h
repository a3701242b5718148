// Geodesy on the Bessel ellipsoid: geographic coordinates, the 19 plane rectangular zones, and the sheets of the mesh frame.
//
// There is no shift between datums here: every latitude and longitude is taken to be on this one ellipsoid. Plane x is the
// northing and plane y the easting, in metres from the zone's origin; mesh x grows to the east and mesh y to the north. Angles
// are radians, or degrees, minutes, seconds and ten-thousandths of a second.
#pragma once

#include <cstdint>
#include <optional>

namespace orvane {

/// An angle as its four numbers, which need not be normalised: 65 minutes are 65 minutes.
struct Dms {
    std::int32_t degrees = 0;
    std::int32_t minutes = 0;
    std::int32_t seconds = 0;
    std::int32_t tenThousandths = 0;  ///< of a second
    friend bool operator==(const Dms&, const Dms&) = default;
};

struct GeoDms {
    Dms latitude;
    Dms longitude;
    friend bool operator==(const GeoDms&, const GeoDms&) = default;
};

struct GeoRad {
    double latitude = 0;
    double longitude = 0;
};

struct PlaneXY {
    double x = 0;  ///< metres, north
    double y = 0;  ///< metres, east
    friend bool operator==(const PlaneXY&, const PlaneXY&) = default;
};

/// A place in the mesh frame, in mesh units.
struct MeshPoint {
    double x = 0;  ///< east
    double y = 0;  ///< north
    friend bool operator==(const MeshPoint&, const MeshPoint&) = default;
};

/// A mesh-frame place by its sheet: the sheet's number and the place inside, 0 to 10000 across.
struct MeshPlace {
    std::int32_t mesh = 0;
    double localX = 0;
    double localY = 0;
};

/// A sheet's corners in a plane zone, from the south-west one clockwise: south-west, north-west, north-east, south-east.
struct SheetCorners {
    PlaneXY p1, p2, p3, p4;
    friend bool operator==(const SheetCorners&, const SheetCorners&) = default;
};

/// Radius of curvature in the prime vertical, in metres, and the squared second eccentricity seen at that latitude.
struct Curvature {
    double N = 0;
    double eta2 = 0;
};

inline constexpr std::int32_t kFirstZone = 1;
inline constexpr std::int32_t kLastZone = 19;
inline constexpr double kMeshSheet = 10000.0;  ///< mesh units across a sheet
inline constexpr double kPlaneScale = 0.9999;  ///< on the central meridian of every zone

/// The conversions. Without data and without state that shows: any number of them may be used at once.
class GeoConv {
public:
    GeoConv() = default;
    GeoConv(const GeoConv&) = default;
    GeoConv& operator=(const GeoConv&) = default;
    virtual ~GeoConv() = default;

    // --- Angles (geo_conv_angles.cpp) -----------------------------------------------------------------------------------
    /// Radians of an angle, taken as its numbers stand.
    double DmsToRad(const Dms& angle) const;
    /// The angle to the nearest ten-thousandth of a second. Meant for angles from 0 up; below 0 each number has the sign of the
    /// division's remainder. Not a number gives 0, and what 32 bits of seconds do not hold saturates.
    Dms RadToDms(double angle) const;
    /// Decimal degrees of an angle, taken as its numbers stand.
    double DmsToDeg(const Dms& angle) const;
    /// The angle of decimal degrees, each number truncated but the last, which is rounded and may come out as 10000. Numbers
    /// that are not finite give 0, greater ones saturate.
    Dms DegToDms(double angle_deg) const;

    // --- Zones and series (geo_conv_plane.cpp) --------------------------------------------------------------------------
    /// Origin of a zone; nothing outside 1 to 19. Zone 19 has its origin at latitude 28.
    std::optional<GeoDms> ZoneOrigin(std::int32_t zone) const;
    /// Metres along the meridian from the equator to a latitude.
    double MeridianArc(double latitude) const;
    Curvature PrimeRadius(double latitude) const;
    /// Latitude at which the meridian's arc from `originLatitude` is planeX / scale metres, searched from `start` in at most four
    /// steps.
    double FootLatitude(double start, double originLatitude, double planeX, double scale) const;
    /// Nothing for a zone outside 1 to 19 and for numbers that are not finite. The series are good to a fraction of a millimetre
    /// as far as a zone reaches and grow worse without bound beyond.
    std::optional<PlaneXY> GeoToPlane(const GeoRad& geo, std::int32_t zone) const;
    /// The same way back, before it is rounded to the ten-thousandth of a second.
    std::optional<GeoRad> PlaneToGeoRad(const PlaneXY& plane, std::int32_t zone) const;
    std::optional<GeoDms> PlaneToGeo(const PlaneXY& plane, std::int32_t zone) const;

    // --- Mesh frame (geo_conv_mesh.cpp) ---------------------------------------------------------------------------------
    /// South-west corner of a sheet. Any number has an answer: its first six characters are read.
    GeoDms MeshToDms(std::int32_t mesh) const;
    /// Number of the sheet that a place lies in. A column of the primary mesh below 10 has no leading zero, so the number comes
    /// out a digit short and stands for another sheet then; columns of Japan are 22 and up.
    std::int32_t DmsToMesh(const GeoDms& geo) const;
    /// Number of the sheet some sheets east and north of another. To the west and south that holds as far as 16 sheets past the
    /// edge of the primary mesh; from there on the digits go wrong. Numbers of more than 32 bits saturate.
    std::int32_t MeshStep(std::int32_t base, std::int32_t stepsX, std::int32_t stepsY) const;
    /// Sheet of a mesh-frame place. The sheet's steps are truncated toward zero, so below 0 the local coordinates are negative.
    MeshPlace MeshSplit(const MeshPoint& point) const;
    /// The four corners; nothing for a zone outside 1 to 19. The last sheet asked for is remembered, for each thread.
    std::optional<SheetCorners> CornersOf(std::int32_t mesh, std::int32_t zone) const;
    /// The place inside a sheet between its four corners, exactly on them at 0 and 10000.
    static PlaneXY PlaneInSheet(const SheetCorners& corners, double localX, double localY);
    /// Nothing for a zone outside 1 to 19, for numbers that are not finite, and for places so far away that the answer is not.
    /// Points should come sheet by sheet: a new sheet costs four conversions of corners.
    std::optional<PlaneXY> MeshToPlane(const MeshPoint& point, std::int32_t zone) const;
    /// By way of latitude and longitude, and so not the exact inverse of MeshToPlane, which goes straight between the corners.
    std::optional<MeshPoint> PlaneToMesh(const PlaneXY& plane, std::int32_t zone) const;
    /// Mesh-frame place of a latitude and longitude.
    MeshPoint DmsToMeshPoint(const GeoDms& geo) const;
};

}  // namespace orvane
