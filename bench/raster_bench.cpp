// Panning over a raster image of 20,000 x 20,000 pixels: a tiled file of three bands with overviews, made in the folder for
// temporary files.
//
// Each round moves the view and paints the window of 1920 x 1080 pixels by the raster server; beside it stands GDAL's own read of
// the same window into three bytes a pixel, on a second data set of the file that stays open over all moves as the server's does.
// It is opened after the server has closed its own: both go through the same moves with caches that begin empty, and the medians
// over all moves are compared. The peak of GDAL's cache and of the program's memory are told as well.
#include <benchmark/benchmark.h>
#include <cpl_string.h>
#include <gdal_priv.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "bench/frame_measure.h"
#include "foreign/raster/gdal_raster_server.h"

namespace orvane::bench {
namespace {

constexpr int kSide_px = 20000;

/// The file, removed at the end of the program.
class LargeImage {
public:
    LargeImage() : name_(std::filesystem::temp_directory_path() / ("orvane_raster_bench_" + std::to_string(getpid()) + ".tif")) {
        GDALAllRegister();
        const char* const options[] = {"TILED=YES", "PHOTOMETRIC=RGB", "BLOCKXSIZE=256", "BLOCKYSIZE=256", nullptr};
        GDALDataset* const image = GetGDALDriverManager()->GetDriverByName("GTiff")->Create(
            name_.c_str(), kSide_px, kSide_px, 3, GDT_Byte, const_cast<char**>(options));
        if (image == nullptr) std::abort();
        double place[] = {0, 1, 0, 0, 0, -1};
        image->SetGeoTransform(place);
        std::vector<std::uint8_t> rows(std::size_t{kSide_px} * 256 * 3);
        for (int top = 0; top < kSide_px; top += 256) {
            const int height = (std::min)(256, kSide_px - top);
            for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<std::uint8_t>((i * 2654435761u >> 11) + i / 977);
            if (image->RasterIO(GF_Write, 0, top, kSide_px, height, rows.data(), kSide_px, height, GDT_Byte, 3, nullptr, 3,
                                3 * kSide_px, 1, nullptr) != CE_None) {
                std::abort();
            }
        }
        int levels[] = {2, 4, 8, 16, 32};
        if (image->BuildOverviews("AVERAGE", 5, levels, 0, nullptr, nullptr, nullptr) != CE_None) std::abort();
        GDALClose(image);
    }
    ~LargeImage() { std::filesystem::remove(name_); }
    LargeImage(const LargeImage&) = delete;
    LargeImage& operator=(const LargeImage&) = delete;
    std::string Name() const { return name_.string(); }

private:
    std::filesystem::path name_;
};

std::string ImageName() {
    static const LargeImage image;
    return image.Name();
}

/// The most memory that the program ever held.
double PeakMemory_MiB() {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kib = 0;
    while (status >> word) {
        if (word == "VmHWM:") status >> kib;
    }
    return kib / 1024;
}

/// Sets the mark of the above to what is held now.
void ResetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

struct Move {
    double x, y;
};

/// A walk over the image to and fro, `step` windows on at a time and as much down at the end of a line, of at most `count` moves.
std::vector<Move> Walk(double unitsPerPixel, double step, std::size_t count) {
    std::vector<Move> moves;
    const double right = kSide_px - kWidth_px * unitsPerPixel;
    const double bottom = kSide_px - kHeight_px * unitsPerPixel;
    bool back = false;
    for (double down = 0; down <= bottom && moves.size() < count; down += step * kHeight_px * unitsPerPixel, back = !back) {
        for (double along = 0; along <= right && moves.size() < count; along += step * kWidth_px * unitsPerPixel) {
            moves.push_back({back ? right - along : along, down});
        }
    }
    return moves;
}

void ReadPlainly(GDALDataset& image, const Move& move, double unitsPerPixel, std::vector<std::uint8_t>& out) {
    GDALRasterIOExtraArg extra;
    INIT_RASTERIO_EXTRA_ARG(extra);
    extra.eResampleAlg = unitsPerPixel > 1 ? GRIORA_Average : GRIORA_NearestNeighbour;
    extra.bFloatingPointWindowValidity = TRUE;
    extra.dfXOff = move.x;
    extra.dfYOff = move.y;
    extra.dfXSize = kWidth_px * unitsPerPixel;
    extra.dfYSize = kHeight_px * unitsPerPixel;
    const int x = static_cast<int>(extra.dfXOff);
    const int y = static_cast<int>(extra.dfYOff);
    const int width = (std::min)(static_cast<int>(extra.dfXOff + extra.dfXSize + 0.999), kSide_px) - x;
    const int height = (std::min)(static_cast<int>(extra.dfYOff + extra.dfYSize + 0.999), kSide_px) - y;
    if (image.RasterIO(GF_Read, x, y, width, height, out.data(), kWidth_px, kHeight_px, GDT_Byte, 3, nullptr, 3, 3 * kWidth_px, 1,
                       &extra) != CE_None) {
        std::abort();
    }
    benchmark::DoNotOptimize(out.data());
}

void Pan(benchmark::State& state, double unitsPerPixel, double angle_deg, double step = 1.0 / 3) {
    const std::string name = ImageName();
    const std::vector<Move> walk = Walk(unitsPerPixel, step, step < 1 ? 60 : SIZE_MAX);
    std::vector<double> paints, reads;
    double cache_MiB = 0;
    malloc_trim(0);  // what the making of the image left behind
    ResetPeak();
    double peak_MiB = 0;
    for (auto _ : state) {
        GdalRasterServer server;
        if (!server.SrvInit() || !server.SrvLoad(name) || !server.SrvRotate(angle_deg)) std::abort();
        QtContext device;
        const auto bitmap = device.CreateCompatibleBitmap(kWidth_px, kHeight_px);
        device.SelectBitmap(bitmap.get());
        double total = 0;
        for (const Move& move : walk) {
            double x = move.x + kWidth_px * unitsPerPixel / 2;
            double y = move.y + kHeight_px * unitsPerPixel / 2;
            RotateView(x, y, angle_deg);  // the same middle, turned
            const double left = x - kWidth_px * unitsPerPixel / 2;
            const double top = y - kHeight_px * unitsPerPixel / 2;
            const RasterPart part{
                left, -top, left + kWidth_px * unitsPerPixel, -top - kHeight_px * unitsPerPixel, {0, 0, kWidth_px, kHeight_px},
                0,    0};
            paints.push_back(Milliseconds([&] {
                if (!server.SrvDraw(device, part, 1)) std::abort();
            }));
            total += paints.back();
            cache_MiB = (std::max)(cache_MiB, static_cast<double>(GDALGetCacheUsed64()) / (1 << 20));
        }
        server.SrvClose();
        peak_MiB = (std::max)(peak_MiB, PeakMemory_MiB());
        std::unique_ptr<GDALDataset> image(GDALDataset::Open(name.c_str(), GDAL_OF_RASTER));
        std::vector<std::uint8_t> out(std::size_t{kWidth_px} * kHeight_px * 3);
        for (const Move& move : walk) {
            reads.push_back(Milliseconds([&] { ReadPlainly(*image, move, unitsPerPixel, out); }));
        }
        state.SetIterationTime(total / 1000.0 / static_cast<double>(walk.size()));
    }
    state.counters["paint_ms"] = Median(paints);
    state.counters["read_ms"] = Median(reads);
    state.counters["paint_to_read"] = Median(paints) / Median(reads);
    state.counters["cache_MiB"] = cache_MiB;
    state.counters["peak_MiB"] = peak_MiB;
}

void PanPixelForPixel(benchmark::State& state) { Pan(state, 1, 0); }
BENCHMARK(PanPixelForPixel)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

void PanMadeSmaller(benchmark::State& state) { Pan(state, 6.5, 0); }
BENCHMARK(PanMadeSmaller)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

void PanMadeLarger(benchmark::State& state) { Pan(state, 0.4, 0); }
BENCHMARK(PanMadeLarger)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

void PanTurned(benchmark::State& state) { Pan(state, 1, 30); }
BENCHMARK(PanTurned)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Every part of the image once: far more than the cache holds.
void PanOverAllOfIt(benchmark::State& state) { Pan(state, 1, 0, 1); }
BENCHMARK(PanOverAllOfIt)->Iterations(2)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
