// The numbers of the Bessel ellipsoid of 1841. They are taken as they stand and not worked out from each other, so that every
// machine has the same bits.
#pragma once

namespace orvane {

inline constexpr double kPi = 3.14159265358979;
inline constexpr double kSemiMajorAxis = 6377397.155;                ///< metres
inline constexpr double kEccentricity2 = 0.00667437222734743;        ///< first eccentricity, squared
inline constexpr double kSecondEccentricity2 = 0.00671921879465998;  ///< second eccentricity, squared
inline constexpr double kPolarRadius = 6398786.84805985;             ///< radius of curvature at the pole, metres

/// Length of the meridian by latitude: the first is that of a radian, the k-th behind it belongs to the sine of 2k times the
/// latitude; metres. The next one, for the sixteenth multiple, is 0.
inline constexpr double kMeridian[8] = {6366742.52024116, -15988.6385238569, 16.7299538817284, -0.0217848007897,
                                        3.07730631e-05,   -4.53374e-08,      6.85e-11,         -1e-13};

}  // namespace orvane
