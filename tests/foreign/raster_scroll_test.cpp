// A picture that is put together of strips, or was moved, is the one that is drawn as a whole.
#include <gmock/gmock.h>

#include <cmath>

#include "store/view_params.h"
#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 150;

/// Grey values without order.
std::vector<std::uint8_t> Noise(std::size_t count, unsigned seed = 0) {
    std::vector<std::uint8_t> values(count);
    for (std::size_t i = 0; i < count; ++i) values[i] = static_cast<std::uint8_t>((i + seed) * 2654435761u >> 13);
    return values;
}

int CountDifferent(Picture& a, Picture& b, int right, int down) {
    int different = 0;
    for (int y = 0; y + down < kHeight; ++y) {
        for (int x = 0; x + right < kWidth; ++x) different += a.At(x + right, y + down) != b.At(x, y) ? 1 : 0;
    }
    return different;
}

struct View {
    double left;  ///< map units, y downward as in the view
    double top;
    double zoom;  ///< map units a pixel
    double angle_deg;
};

/// The image's pixel (x, y), in the middle of the window; the image's left top corner is at (mapX, mapY).
View Around(double x, double y, double zoom, double angle_deg, double mapX = 0, double mapY = 0) {
    x += mapX;
    y -= mapY;
    RotateView(x, y, angle_deg);
    return {x - kWidth / 2.0 * zoom, y - kHeight / 2.0 * zoom, zoom, angle_deg};
}

class RasterScrollTest : public RasterImageTest {
protected:
    /// Noise of some bands, with overviews by their means.
    std::string MakeNoise(int width, int height, int bands, const std::vector<int>& overviews, const Look& look = nullptr,
                          const std::vector<std::string>& options = {}) {
        return Make(
            width, height, bands, GDT_Byte,
            [&](GDALDataset& image) {
                for (int band = 1; band <= bands; ++band)
                    WriteBytes(image, band, Noise(static_cast<std::size_t>(width * height), static_cast<unsigned>(band * 7919)));
                if (look) look(image);
                if (overviews.empty()) return;
                std::vector<int> levels = overviews;
                ASSERT_EQ(
                    image.BuildOverviews("AVERAGE", static_cast<int>(levels.size()), levels.data(), 0, nullptr, nullptr, nullptr),
                    CE_None);
            },
            options);
    }
    bool DrawStrip(Picture& picture, const View& v, const Rect& strip) {
        const RasterPart part{v.left + strip.left * v.zoom,
                              -(v.top + strip.top * v.zoom),
                              v.left + strip.right * v.zoom,
                              -(v.top + strip.bottom * v.zoom),
                              strip,
                              0,
                              0};
        return server.SrvDraw(picture.dc, part, 1);
    }
    /// Draws the view as a whole, in strips, and moved by whole pixels, and looks for pixels that are not the same.
    void ExpectTheSameHoweverDrawn(const View& v) {
        ASSERT_TRUE(server.SrvRotate(v.angle_deg));
        Picture whole(kWidth, kHeight);
        ASSERT_TRUE(DrawStrip(whole, v, {0, 0, kWidth, kHeight}));
        EXPECT_GT(whole.CountOther(kWhite), 2000) << v.angle_deg << ' ' << v.zoom;
        Picture parts(kWidth, kHeight);
        for (const Rect& strip : {Rect{0, 0, 1, 150}, Rect{1, 0, 4, 150}, Rect{4, 0, 11, 150}, Rect{11, 0, 61, 149},
                                  Rect{11, 149, 61, 150}, Rect{61, 0, 200, 33}, Rect{61, 33, 200, 36}, Rect{61, 36, 200, 150}}) {
            ASSERT_TRUE(DrawStrip(parts, v, strip));
        }
        EXPECT_EQ(CountDifferent(whole, parts, 0, 0), 0) << "strips " << v.angle_deg << ' ' << v.zoom;
        Picture moved(kWidth, kHeight);
        ASSERT_TRUE(DrawStrip(moved, {v.left + 13 * v.zoom, v.top + 7 * v.zoom, v.zoom, v.angle_deg}, {0, 0, kWidth, kHeight}));
        EXPECT_EQ(CountDifferent(whole, moved, 13, 7), 0) << "moved " << v.angle_deg << ' ' << v.zoom;
    }
};

TEST_F(RasterScrollTest, OfAStraightImage) {
    ASSERT_TRUE(server.SrvLoad(MakeNoise(700, 500, 1, {})));
    // At the greatest zoom the picture reaches over the image's edge.
    for (const double zoom : {0.4, 1.0, 1.3, 2.3, 3.3}) ExpectTheSameHoweverDrawn({10.3, 10.7, zoom, 0});
}

TEST_F(RasterScrollTest, OfAStraightImageOutOfItsOverviews) {
    ASSERT_TRUE(server.SrvLoad(MakeNoise(1024, 768, 3, {2, 4, 8})));
    for (const double zoom : {1.3, 2.3, 3.3, 5.7, 9.1}) ExpectTheSameHoweverDrawn({-50.3, -40.9, zoom, 0});
}

TEST_F(RasterScrollTest, OfAnImageWhoseSizeIsNoMultipleOfItsOverviews) {
    const auto place = [](GDALDataset& image) {
        double far[] = {-31000.3, 1, 0, 120000.7, 0, -1};
        image.SetGeoTransform(far);
    };
    ASSERT_TRUE(server.SrvLoad(MakeNoise(1003, 751, 3, {2, 4, 8}, place)));
    for (const double angle : {0.0, 17.0}) {
        for (const double zoom : {1.3, 2.3, 3.3, 5.7, 9.1})
            ExpectTheSameHoweverDrawn(Around(501.2, 375.4, zoom, angle, -31000.3, 120000.7));
    }
}

TEST_F(RasterScrollTest, OfATurnedImageOutOfItsOverviews) {
    ASSERT_TRUE(server.SrvLoad(MakeNoise(700, 500, 1, {2, 4})));
    for (const double angle : {17.0, 30.0, 123.0, 270.0}) {
        for (const double zoom : {0.7, 1.3, 2.3, 3.3, 4.7, 9.1}) ExpectTheSameHoweverDrawn(Around(350, 250, zoom, angle));
    }
}

TEST_F(RasterScrollTest, OfAnImageWithOpacityOutOfItsOverviews) {
    ASSERT_TRUE(server.SrvLoad(MakeNoise(701, 499, 4, {2, 4}, nullptr, {"PHOTOMETRIC=RGB", "ALPHA=YES"})));
    for (const double zoom : {1.7, 2.3, 5.3}) ExpectTheSameHoweverDrawn(Around(350, 250, zoom, 0));
}

TEST_F(RasterScrollTest, OfAnImageWhoseMaskHasNoOverviewsWhereTheImageHas) {
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "YES");
    const std::string name = MakeNoise(702, 499, 3, {}, [](GDALDataset& image) {
        ASSERT_EQ(image.CreateMaskBand(GMF_PER_DATASET), CE_None);
        std::vector<std::uint8_t> mask = Noise(702 * 499, 77);
        for (std::uint8_t& value : mask) value = value < 128 ? 0 : 255;
        ASSERT_EQ(image.GetRasterBand(1)->GetMaskBand()->RasterIO(GF_Write, 0, 0, 702, 499, mask.data(), 702, 499, GDT_Byte, 0, 0,
                                                                  nullptr),
                  CE_None);
    });
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
    AddOverviewsBeside(name, {2, 4});
    ASSERT_TRUE(server.SrvLoad(name));
    for (const double zoom : {1.7, 2.3, 4.0, 5.3}) ExpectTheSameHoweverDrawn(Around(350, 250, zoom, 0));
}

TEST_F(RasterScrollTest, OfATableOfColours) {
    const auto table = [](GDALDataset& image) {
        GDALColorTable colors;
        for (short i = 0; i < 256; ++i) {
            const GDALColorEntry entry{i, static_cast<short>(255 - i), static_cast<short>(i * 7 % 256), 255};
            colors.SetColorEntry(i, &entry);
        }
        image.GetRasterBand(1)->SetColorTable(&colors);
    };
    ASSERT_TRUE(server.SrvLoad(MakeNoise(1500, 1201, 1, {}, table)));
    for (const double zoom : {1.7, 5.3, 9.1, 17.3}) ExpectTheSameHoweverDrawn(Around(750, 600, zoom, 0));
    for (const double zoom : {1.7, 9.1}) ExpectTheSameHoweverDrawn(Around(750, 600, zoom, 30));
}

TEST_F(RasterScrollTest, OfNumbersWithoutDataHereAndThere) {
    const std::string name = Make(701, 499, 1, GDT_UInt16, [](GDALDataset& image) {
        std::vector<std::uint16_t> values;
        for (const std::uint8_t value : Noise(701 * 499)) values.push_back(static_cast<std::uint16_t>(value * 200));
        image.GetRasterBand(1)->SetNoDataValue(0);
        Write(image, 1, values, GDT_UInt16);
        int levels[] = {2, 4};
        ASSERT_EQ(image.BuildOverviews("AVERAGE", 2, levels, 0, nullptr, nullptr, nullptr), CE_None);
    });
    ASSERT_TRUE(server.SrvLoad(name));
    for (const double zoom : {1.7, 2.3, 5.3}) ExpectTheSameHoweverDrawn(Around(350, 250, zoom, 0));
}

TEST_F(RasterScrollTest, AnImagePlacedByControlPointsWithoutATurnIsPaintedAsOneThatLiesThereByItself) {
    // Widths of a pixel for which the turn between the points is nought to rounding only.
    for (const double size : {0.3, 0.7, 1.1, 1.3, 2.1}) {
        const double mapX = -5200.5;
        const double mapY = -31000.25;
        const std::string name = MakeNoise(1400, 1000, 1, {2}, [&](GDALDataset& image) {
            double place[] = {mapX, size, 0, mapY, 0, -size};
            image.SetGeoTransform(place);
        });
        for (const double zoom : {1.5, 3.0}) {
            ASSERT_TRUE(server.SrvLoad(name));
            const View view{mapX + 10 * size, -mapY + 10 * size, zoom * size, 0};
            Picture own(kWidth, kHeight);
            ASSERT_TRUE(DrawStrip(own, view, {0, 0, kWidth, kHeight}));
            const ControlPoint first{13, 10, mapX + 13 * size, mapY - 10 * size};
            const ControlPoint second{1387, 981, mapX + 1387 * size, mapY - 981 * size};
            ASSERT_NE(SimilarityOf(first, second)->xy, 0) << "it would be no test";
            ASSERT_TRUE(server.SrvSetCP1(13, 10, first.GeoX, first.GeoY) &&
                        server.SrvSetCP2(1387, 981, second.GeoX, second.GeoY));
            ASSERT_TRUE(server.SrvCalcCorrect2());
            Picture placed(kWidth, kHeight);
            ASSERT_TRUE(DrawStrip(placed, view, {0, 0, kWidth, kHeight}));
            EXPECT_EQ(own.CountOther(kWhite), kWidth * kHeight);
            EXPECT_EQ(CountDifferent(own, placed, 0, 0), 0) << size << ' ' << zoom;
        }
    }
}

TEST_F(RasterScrollTest, ATurnThatShiftsAPixelOfTheImageIsStillSeen) {
    // Over its width the image falls by two of its pixels; nearest the middle by none.
    ASSERT_TRUE(server.SrvLoad(MakeNoise(1000, 40, 1, {}, [](GDALDataset& image) {
        double place[] = {0, 1, 0, 0, -0.002, -1};
        image.SetGeoTransform(place);
    })));
    Picture left(kWidth, kHeight);
    Picture right(kWidth, kHeight);
    ASSERT_TRUE(DrawStrip(left, {0, -10, 1, 0}, {0, 0, kWidth, kHeight}));
    ASSERT_TRUE(DrawStrip(right, {800, -10, 1, 0}, {0, 0, kWidth, kHeight}));
    EXPECT_NE(left.At(10, 10), kWhite);
    EXPECT_EQ(right.At(190, 11), kWhite);
    EXPECT_NE(right.At(190, 12), kWhite);
}

TEST_F(RasterScrollTest, AtScalesThatLieOnABoundTheStripsAreOneImageAsWell) {
    const double mapX = -31000.3;
    const double mapY = 120000.7;
    ASSERT_TRUE(server.SrvLoad(MakeNoise(1400, 1000, 1, {2, 4}, [&](GDALDataset& image) {
        double place[] = {mapX, 1, 0, mapY, 0, -1};
        image.SetGeoTransform(place);
    })));
    for (const double zoom : {1.0001, 2 / 1.01, 4 / 1.01}) {
        for (int shift = 0; shift < 10; ++shift) ExpectTheSameHoweverDrawn(Around(700 + shift * 0.37, 500, zoom, 0, mapX, mapY));
    }
}

TEST_F(RasterScrollTest, APixelIsTheMeanOfTheAreaThatItCoversToWithinAValue) {
    constexpr int kSide = 600;
    const std::vector<std::uint8_t> values = Noise(kSide * kSide);
    ASSERT_TRUE(server.SrvLoad(Make(kSide, kSide, 1, GDT_Byte, [&](GDALDataset& image) { WriteBytes(image, 1, values); })));
    for (const double zoom : {1.37, 2.5, 3.9}) {
        Picture picture(kWidth, kHeight);
        ASSERT_TRUE(DrawStrip(picture, {3.25, 5.5, zoom, 0}, {0, 0, kWidth, kHeight}));
        const auto cover = [&](int pixel, double from) {
            return (std::max)((std::min)(pixel + 1.0, from + zoom) - (std::max)(static_cast<double>(pixel), from), 0.0);
        };
        for (int row = 0; row < kHeight; row += 7) {
            for (int column = 0; column < kWidth; column += 11) {
                const double left = 3.25 + column * zoom;
                const double top = 5.5 + row * zoom;
                if (left + zoom > kSide || top + zoom > kSide) continue;
                double sum = 0;
                for (int y = static_cast<int>(top); y < top + zoom; ++y) {
                    for (int x = static_cast<int>(left); x < left + zoom; ++x)
                        sum += values[static_cast<std::size_t>(y * kSide + x)] * cover(x, left) * cover(y, top);
                }
                ASSERT_NEAR(picture.At(column, row) & 0xFF, sum / zoom / zoom, 1.6) << zoom << ' ' << column << ' ' << row;
            }
        }
    }
}

TEST_F(RasterScrollTest, TheScaleAloneChoosesTheOverview) {
    // Each size in a colour of its own tells which was read.
    const std::string name = Make(1003, 751, 3, GDT_Byte, [](GDALDataset& image) {
        image.GetRasterBand(1)->Fill(255);
        int levels[] = {2, 4};
        ASSERT_EQ(image.BuildOverviews("NEAREST", 2, levels, 0, nullptr, nullptr, nullptr), CE_None);
        for (int level = 0; level < 2; ++level) {
            for (int band = 1; band <= 3; ++band)
                image.GetRasterBand(band)->GetOverview(level)->Fill(band == (level == 0 ? 2 : 3) ? 255 : 0);
        }
    });
    ASSERT_TRUE(server.SrvLoad(name));
    const struct {
        double zoom;
        Rgb color;
    } cases[] = {{1, kRed}, {1.9, kRed}, {2, kGreen}, {3.9, kGreen}, {4, kBlue}, {4.9, kBlue}};
    for (const auto& c : cases) {
        for (const Rect& strip :
             {Rect{0, 0, kWidth, kHeight}, Rect{17, 0, 18, kHeight}, Rect{0, 31, kWidth, 32}, Rect{5, 5, 6, 6}}) {
            Picture picture(kWidth, kHeight);
            picture.Fill(kYellow);
            ASSERT_TRUE(DrawStrip(picture, {0, 0, c.zoom, 0}, strip));
            EXPECT_EQ(picture.At(strip.left, strip.top), c.color) << c.zoom << ' ' << strip.right - strip.left;
        }
    }
}

}  // namespace
}  // namespace orvane
