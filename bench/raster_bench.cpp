// Panning over a raster image of 20,000 x 20,000 pixels: a tiled file of three bands with overviews, made in the folder for
// temporary files.
//
// Each round moves the view over the image twice. On the first way the raster server paints the window of 1920 x 1080 pixels, by
// the process that reads images, as a host does: when the window comes into view, and once more when all of it is in the cache.
// On the second the painter has the image in this program, and beside it stands GDAL's own read of the same window, into three
// bytes a pixel, on the same open data set: after both were done once they take turns, each being the first at every second move.
// The medians over all moves are compared. The most memory of both processes is told as well, that of this one over the first
// way.
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
#include <optional>
#include <string>
#include <vector>

#include "bench/frame_measure.h"
#include "foreign/raster/gdal_raster_server.h"
#include "foreign/raster/image_painter.h"
#include "foreign/raster_reader/raster_image.h"
#include "foreign/raster_reader/reader_fences.h"

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

/// The most memory that a process ever held; "self" is this program.
double PeakMemory_MiB(const std::string& process) {
    std::ifstream status("/proc/" + process + "/status");
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

/// What one window shows: its middle stays where it is when the view is turned.
RasterPart PartOf(const Move& move, double unitsPerPixel, double angle_deg) {
    double x = move.x + kWidth_px * unitsPerPixel / 2;
    double y = move.y + kHeight_px * unitsPerPixel / 2;
    RotateView(x, y, angle_deg);
    const double left = x - kWidth_px * unitsPerPixel / 2;
    const double top = y - kHeight_px * unitsPerPixel / 2;
    return {left, -top, left + kWidth_px * unitsPerPixel, -top - kHeight_px * unitsPerPixel, {0, 0, kWidth_px, kHeight_px}, 0, 0};
}

struct Times {
    std::vector<double> pans, serves;   // by the server: the window new in view, and once more
    std::vector<double> paints, reads;  // in this program
};

void PanByServer(const std::string& name, const std::vector<Move>& walk, double unitsPerPixel, double angle_deg,
                 DeviceContext& device, Times& times) {
    GdalRasterServer server;
    if (!server.SrvInit() || !server.SrvLoad(name) || !server.SrvRotate(angle_deg)) std::abort();
    for (const Move& move : walk) {
        const RasterPart part = PartOf(move, unitsPerPixel, angle_deg);
        for (std::vector<double>* const kind : {&times.pans, &times.serves}) {
            kind->push_back(Milliseconds([&] {
                if (!server.SrvDraw(device, part, 1)) std::abort();
            }));
        }
    }
}

void PanInThisProgram(const std::string& name, const std::vector<Move>& walk, double unitsPerPixel, double angle_deg,
                      DeviceContext& device, Times& times) {
    const std::unique_ptr<RasterImage> image = RasterImage::Open(name);
    if (image == nullptr || !image->OwnPlacement()) std::abort();
    std::vector<std::uint8_t> out(std::size_t{kWidth_px} * kHeight_px * 3);
    bool paintsFirst = true;
    for (const Move& move : walk) {
        const RasterPart part = PartOf(move, unitsPerPixel, angle_deg);
        const std::optional<Affine> imageOfPixels = ImageOfPixels(*image->OwnPlacement(), angle_deg, part);
        const auto paint = [&] {
            if (!PaintImage(device, *image, *imageOfPixels, part.pixels)) std::abort();
        };
        const auto read = [&] { ReadPlainly(image->Dataset(), move, unitsPerPixel, out); };
        paint();
        read();
        if (paintsFirst) times.paints.push_back(Milliseconds(paint));
        times.reads.push_back(Milliseconds(read));
        if (!paintsFirst) times.paints.push_back(Milliseconds(paint));
        paintsFirst = !paintsFirst;
    }
}

void Pan(benchmark::State& state, double unitsPerPixel, double angle_deg, double step = 1.0 / 3) {
    setenv("ORVANE_RASTER_READER", ORVANE_RASTER_READER_FILE, 0);
    const std::string name = ImageName();
    const std::vector<Move> walk = Walk(unitsPerPixel, step, step < 1 ? 60 : SIZE_MAX);
    HoldCache();
    QtContext device;
    const auto bitmap = device.CreateCompatibleBitmap(kWidth_px, kHeight_px);
    device.SelectBitmap(bitmap.get());
    Times times;
    double host_MiB = 0;
    double reader_MiB = 0;
    for (auto _ : state) {
        EndRasterReaders();
        malloc_trim(0);  // what was done before left behind
        ResetPeak();
        const std::size_t before = times.pans.size();
        PanByServer(name, walk, unitsPerPixel, angle_deg, device, times);
        host_MiB = (std::max)(host_MiB, PeakMemory_MiB("self"));
        reader_MiB = (std::max)(reader_MiB, PeakMemory_MiB(std::to_string(RasterReaderPid(RasterSources::LocalFiles))));
        PanInThisProgram(name, walk, unitsPerPixel, angle_deg, device, times);
        double total = 0;
        for (std::size_t i = before; i < times.pans.size(); ++i) total += times.pans[i];
        state.SetIterationTime(total / 1000.0 / static_cast<double>(walk.size()));
    }
    state.counters["pan_ms"] = Median(times.pans);
    state.counters["serve_ms"] = Median(times.serves);
    state.counters["paint_ms"] = Median(times.paints);
    state.counters["read_ms"] = Median(times.reads);
    state.counters["paint_to_read"] = Median(times.paints) / Median(times.reads);
    state.counters["serve_to_read"] = Median(times.serves) / Median(times.reads);
    state.counters["host_MiB"] = host_MiB;
    state.counters["reader_MiB"] = reader_MiB;
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
