// Angles between radians, degrees and their four numbers.
#include <cmath>

#include "geo/ellipsoid.h"
#include "geo/geo_conv.h"
#include "platform/to_int.h"

namespace orvane {

double GeoConv::DmsToRad(const Dms& angle) const {
    return (angle.degrees + angle.minutes / 60.0 + angle.seconds / 3600.0 + angle.tenThousandths / 3.6e7) / 180.0 * kPi;
}

Dms GeoConv::RadToDms(double angle) const {
    double whole = 0;
    const double fraction = std::modf(angle / kPi * 180.0 * 60.0 * 60.0, &whole);
    Dms dms;
    dms.tenThousandths = TruncToInt32(fraction * 10000.0 + 0.5);
    if (dms.tenThousandths == 10000) {
        dms.tenThousandths = 0;
        whole += 1.0;
    }
    std::int32_t n = TruncToInt32(whole + 0.5);
    dms.seconds = n % 60;
    n = (n - dms.seconds) / 60;
    dms.minutes = n % 60;
    dms.degrees = (n - dms.minutes) / 60;
    return dms;
}

double GeoConv::DmsToDeg(const Dms& angle) const {
    return angle.degrees + angle.minutes / 60.0 + angle.seconds / 3600.0 + angle.tenThousandths / 10000.0 / 3600.0;
}

Dms GeoConv::DegToDms(double angle_deg) const {
    if (!std::isfinite(angle_deg)) return {};
    Dms dms;
    dms.degrees = TruncToInt32(angle_deg);
    const double minutes = (angle_deg - dms.degrees) * 60.0;
    dms.minutes = TruncToInt32(minutes);
    const double seconds = (minutes - dms.minutes) * 60.0;
    dms.seconds = TruncToInt32(seconds);
    dms.tenThousandths = ToInt((seconds - dms.seconds) * 10000.0);
    return dms;
}

}  // namespace orvane
