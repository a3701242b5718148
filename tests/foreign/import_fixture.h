// A store, sources made out of texts, and the projection worked out a second time.
#pragma once

#include <cpl_vsi.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "foreign/import.h"

namespace orvane {

/// Gauss-Krueger by the series in the third flattening n, as the survey authority publishes it: an error below a millimetre.
inline DigPnt PlaneByKrueger(double lon_deg, double lat_deg, double lon0_deg, double lat0_deg, double a_m,
                             double inverseFlattening) {
    const double rad = std::acos(-1.0) / 180;
    const double n = 1 / (2 * inverseFlattening - 1);
    const auto power = [n](int k) { return std::pow(n, k); };
    const double alpha[6] = {0,
                             n / 2 - 2.0 / 3 * power(2) + 5.0 / 16 * power(3) + 41.0 / 180 * power(4) - 127.0 / 288 * power(5),
                             13.0 / 48 * power(2) - 3.0 / 5 * power(3) + 557.0 / 1440 * power(4) + 281.0 / 630 * power(5),
                             61.0 / 240 * power(3) - 103.0 / 140 * power(4) + 15061.0 / 26880 * power(5),
                             49561.0 / 161280 * power(4) - 179.0 / 168 * power(5),
                             34729.0 / 80640 * power(5)};
    const double arc[6] = {1 + power(2) / 4 + power(4) / 64,
                           -3.0 / 2 * (n - power(3) / 8 - power(5) / 64),
                           15.0 / 16 * (power(2) - power(4) / 4),
                           -35.0 / 48 * (power(3) - 5.0 / 16 * power(5)),
                           315.0 / 512 * power(4),
                           -693.0 / 1280 * power(5)};
    constexpr double kScale = 0.9999;
    const double lat = lat_deg * rad;
    const double lat0 = lat0_deg * rad;
    double meridian = arc[0] * lat0;
    for (int j = 1; j <= 5; ++j) meridian += arc[j] * std::sin(2 * j * lat0);
    meridian *= kScale * a_m / (1 + n);
    const double radius = kScale * a_m / (1 + n) * arc[0];
    const double k = 2 * std::sqrt(n) / (1 + n);
    const double t = std::sinh(std::atanh(std::sin(lat)) - k * std::atanh(k * std::sin(lat)));
    const double tBar = std::sqrt(1 + t * t);
    const double lambda = (lon_deg - lon0_deg) * rad;
    const double xi = std::atan2(t, std::cos(lambda));
    const double eta = std::atanh(std::sin(lambda) / tBar);
    double north = xi;
    double east = eta;
    for (int j = 1; j <= 5; ++j) {
        north += alpha[j] * std::sin(2 * j * xi) * std::cosh(2 * j * eta);
        east += alpha[j] * std::cos(2 * j * xi) * std::sinh(2 * j * eta);
    }
    return {radius * east, radius * north - meridian, 0};
}

inline DigPnt Zone9Jgd(double lon_deg, double lat_deg) {
    return PlaneByKrueger(lon_deg, lat_deg, 139 + 50.0 / 60, 36, 6378137, 298.257222101);
}

class ImportTest : public ::testing::Test {
protected:
    ImportTest() { store.Init(); }
    ~ImportTest() override {
        for (const std::string& name : files_) VSIUnlink(name.c_str());
    }

    /// A file in memory that GDAL reads under the returned name.
    std::string File(const std::string& name, const std::string& text) {
        const std::string path = "/vsimem/" + name;
        VSILFILE* file = VSIFOpenL(path.c_str(), "wb");
        EXPECT_NE(file, nullptr);
        EXPECT_EQ(VSIFWriteL(text.data(), 1, text.size(), file), text.size());
        VSIFCloseL(file);
        files_.push_back(path);
        return path;
    }
    /// Features of a GeoJSON file: geometry and properties as they stand there. An EPSG code of 0 leaves the datum out.
    std::string GeoJson(const std::string& name, const std::vector<std::array<std::string, 2>>& features, int epsg = 6668) {
        std::string text = R"({"type":"FeatureCollection",)";
        if (epsg != 0) {
            text += R"("crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::)" + std::to_string(epsg) + "\"}},";
        }
        text += R"("features":[)";
        for (std::size_t i = 0; i < features.size(); ++i) {
            text += std::string(i == 0 ? "" : ",") + R"({"type":"Feature","geometry":)" + features[i][0] + R"(,"properties":)" +
                    features[i][1] + "}";
        }
        return File(name + ".geojson", text + "]}");
    }
    std::string GeoJson(const std::string& name, const std::string& geometry, int epsg = 6668) {
        return GeoJson(name, {{geometry, "{}"}}, epsg);
    }
    /// A table with one column of well-known text and no coordinate system.
    std::string Wkt(const std::string& name, const std::vector<std::string>& geometries) {
        std::string text = "WKT,NR\n";
        for (std::size_t i = 0; i < geometries.size(); ++i) text += "\"" + geometries[i] + "\"," + std::to_string(i) + "\n";
        return File(name + ".csv", text);
    }

    ImportResult Run(const std::vector<std::string>& sources) { return ImportVector(store, sources, options); }

    std::vector<DigPnt> Points(std::string_view code, std::int32_t datID) {
        const DigDat* dat = store.FindDat(code, options.grpNo, datID);
        if (dat == nullptr) return {};
        return {dat->pnts.Get(), dat->pnts.Get() + dat->pntCnt};
    }

    CDigMem store;
    ImportOptions options;

private:
    std::vector<std::string> files_;
};

inline void ExpectNear(const DigPnt& actual, const DigPnt& expected, double tolerance_m) {
    EXPECT_NEAR(actual.x, expected.x, tolerance_m);
    EXPECT_NEAR(actual.y, expected.y, tolerance_m);
}

inline bool HasNote(const ImportResult& result, const std::string& words) {
    for (const std::string& note : result.summary.notes) {
        if (note.find(words) != std::string::npos) return true;
    }
    return false;
}

}  // namespace orvane
