// Saving and loading an archive of 1,000,000 lines of 10 points, beside copying the same bytes, and beside GDAL with the same
// lines in FlatGeobuf and GeoPackage.
//
// Each round runs all of them one after the other on files in the folder for temporary files, which the system has in memory by
// then; what is reported are the medians over the rounds and their ratios. The memory of a load is the peak of resident memory
// above what was resident before it, beside what is resident more when the load is done.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <ogrsf_frmts.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/frame_measure.h"
#include "files/archive.h"
#include "platform/files_std.h"

namespace orvane::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kBlocksAcross = 10;
constexpr int kItemsOfBlock = 10000;
constexpr int kPoints = 10;
constexpr double kBlockSide = 2000;
constexpr int kFileRounds = 5;
constexpr const char* kCode = "LINES";

/// A folder that goes with everything in it.
struct TempFolder {
    TempFolder() : path(fs::temp_directory_path() / ("orvane_bench_" + std::to_string(::getpid()))) {
        fs::create_directory(path);
    }
    ~TempFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    std::string Name(const char* name) const { return (path / name).string(); }
    fs::path path;
};

std::vector<DigPnt> LineIn(Random& random, int block) {
    const double left = block % kBlocksAcross * kBlockSide;
    const double bottom = block / kBlocksAcross * kBlockSide;
    std::vector<DigPnt> line;
    double x = left + random.Between(100, kBlockSide - 100);
    double y = bottom + random.Between(100, kBlockSide - 100);
    for (int i = 0; i < kPoints; ++i) {
        line.push_back({x, y, 0});
        x += random.Between(-8, 8);
        y += random.Between(-8, 8);
    }
    return line;
}

/// 100 blocks side by side, all with their origin at 0, so that their bounds are places on the map.
void FillStore(CDigMem& store) {
    store.Init();
    Random random(6);
    for (int block = 0; block < kBlocksAcross * kBlocksAcross; ++block) {
        store.DigMemAlloc2(kCode, block + 1, kLayLine, "block", 1, 0, 0);
        for (int id = 1; id <= kItemsOfBlock; ++id) {
            store.AddDigDat(kCode, block + 1, id, 0);
            store.SetDigDatPnts(kCode, block + 1, id, LineIn(random, block));
        }
    }
}

void Must(bool done, const char* what) {
    if (!done) throw std::runtime_error(what);
}

void CopyFile(const std::string& from, const std::string& to) {
    std::vector<char> buffer(1 << 20);
    const int in = ::open(from.c_str(), O_RDONLY);
    const int out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    Must(in >= 0 && out >= 0, "cannot open the copy");
    for (ssize_t got = 0; (got = ::read(in, buffer.data(), buffer.size())) > 0;) {
        Must(::write(out, buffer.data(), static_cast<std::size_t>(got)) == got, "cannot write the copy");
    }
    ::close(in);
    ::close(out);
}

/// One allocation of an item's size for each item, kept until the end, as a store must.
void AllocateItems() {
    std::vector<std::unique_ptr<DigPnt[]>> items;
    items.reserve(kItemsOfBlock * kBlocksAcross * kBlocksAcross);
    for (int i = 0; i < kItemsOfBlock * kBlocksAcross * kBlocksAcross; ++i) {
        items.push_back(std::make_unique_for_overwrite<DigPnt[]>(kPoints));
        items.back()[0] = {};
    }
    benchmark::DoNotOptimize(items.data());
}

struct DatasetCloser {
    void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<GDALDataset, DatasetCloser>;

void WriteWithGdal(const char* driverName, const std::string& name) {
    std::error_code ignored;
    fs::remove(name, ignored);
    GDALDriver* const driver = GetGDALDriverManager()->GetDriverByName(driverName);
    Must(driver != nullptr, "GDAL lacks a driver");
    const Dataset dataset(driver->Create(name.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRLayer* const layer = dataset->CreateLayer("lines", nullptr, wkbLineString, nullptr);
    OGRFieldDefn idField("datID", OFTInteger);
    layer->CreateField(&idField);
    if (dataset->TestCapability(ODsCTransactions) != 0) dataset->StartTransaction();
    Random random(6);
    for (int block = 0; block < kBlocksAcross * kBlocksAcross; ++block) {
        for (int id = 1; id <= kItemsOfBlock; ++id) {
            const std::vector<DigPnt> points = LineIn(random, block);
            OGRLineString line;
            line.setNumPoints(kPoints, FALSE);
            for (int i = 0; i < kPoints; ++i)
                line.setPoint(i, points[static_cast<std::size_t>(i)].x, points[static_cast<std::size_t>(i)].y);
            OGRFeature feature(layer->GetLayerDefn());
            feature.SetField(0, id);
            feature.SetGeometry(&line);
            Must(layer->CreateFeature(&feature) == OGRERR_NONE, "GDAL cannot write");
        }
    }
    if (dataset->TestCapability(ODsCTransactions) != 0) dataset->CommitTransaction();
}

/// All features, or those of the box of one block; their points kept as an importer would.
std::size_t ReadWithGdal(const std::string& name, bool oneBlock) {
    const Dataset dataset(GDALDataset::Open(name.c_str(), GDAL_OF_VECTOR));
    Must(dataset != nullptr, "GDAL cannot read");
    OGRLayer* const layer = dataset->GetLayer(0);
    if (oneBlock) layer->SetSpatialFilterRect(4 * kBlockSide, 4 * kBlockSide, 5 * kBlockSide, 5 * kBlockSide);
    std::vector<std::unique_ptr<DigPnt[]>> kept;
    while (const std::unique_ptr<OGRFeature> feature{layer->GetNextFeature()}) {
        const OGRLineString* const line = feature->GetGeometryRef()->toLineString();
        auto points = std::make_unique_for_overwrite<DigPnt[]>(static_cast<std::size_t>(line->getNumPoints()));
        for (int i = 0; i < line->getNumPoints(); ++i) points[static_cast<std::size_t>(i)] = {line->getX(i), line->getY(i), 0};
        kept.push_back(std::move(points));
    }
    return kept.size();
}

double StatusMegabytes(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) return std::stod(line.substr(key.size() + 1)) / 1024;
    }
    return 0;
}

/// Peak over what is kept, both above what was resident before.
double PeakToKept(const std::string& name) {
    StdFiles files;
    CDigMem store;
    store.Init();
    const double before = StatusMegabytes("VmRSS:");
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts anew
    Must(ArcRead(store, files, name), "the archive cannot be read");
    const double kept = StatusMegabytes("VmRSS:") - before;
    return (StatusMegabytes("VmHWM:") - before) / kept;
}

struct Medians {
    std::vector<double> values;
    void Add(double ms) { values.push_back(ms); }
    double Get() const { return Median(values); }
};

void ArchiveOfMillionLines(benchmark::State& state) {
    GDALAllRegister();
    const TempFolder folder;
    const std::string archive = folder.Name("map.Ovb");
    StdFiles files;
    Medians write, read, part, copy, allocate, fgbWrite, fgbRead, fgbPart, gpkgWrite, gpkgRead;
    double peakToKept = 0;
    {
        CDigMem store;
        FillStore(store);
        Must(ArcWrite(store, files, archive, ""), "the archive cannot be written");
    }
    peakToKept = PeakToKept(archive);
    CDigMem store;
    FillStore(store);
    for (auto _ : state) {
        write.Add(Milliseconds([&] { Must(ArcWrite(store, files, archive, ""), "the archive cannot be written"); }));
        copy.Add(Milliseconds([&] { CopyFile(archive, folder.Name("copy")); }));
        allocate.Add(Milliseconds([] { AllocateItems(); }));
        auto loaded = std::make_unique<CDigMem>();
        loaded->Init();
        read.Add(Milliseconds([&] { Must(ArcRead(*loaded, files, archive), "the archive cannot be read"); }));
        loaded = std::make_unique<CDigMem>();
        loaded->Init();
        const std::vector<std::string> codes{kCode};
        const ArcFilter oneBlock{4 * kBlockSide + 200, 4 * kBlockSide + 200, 5 * kBlockSide - 200, 5 * kBlockSide - 200, codes};
        part.Add(Milliseconds([&] { Must(ArcRead(*loaded, files, archive, oneBlock), "no part can be read"); }));
        loaded.reset();
        fgbWrite.Add(Milliseconds([&] { WriteWithGdal("FlatGeobuf", folder.Name("map.fgb")); }));
        fgbRead.Add(Milliseconds([&] { benchmark::DoNotOptimize(ReadWithGdal(folder.Name("map.fgb"), false)); }));
        fgbPart.Add(Milliseconds([&] { benchmark::DoNotOptimize(ReadWithGdal(folder.Name("map.fgb"), true)); }));
        gpkgWrite.Add(Milliseconds([&] { WriteWithGdal("GPKG", folder.Name("map.gpkg")); }));
        gpkgRead.Add(Milliseconds([&] { benchmark::DoNotOptimize(ReadWithGdal(folder.Name("map.gpkg"), false)); }));
        state.SetIterationTime(read.values.back() / 1000.0);
    }
    state.counters["write_ms"] = write.Get();
    state.counters["read_ms"] = read.Get();
    state.counters["part_ms"] = part.Get();
    state.counters["copy_ms"] = copy.Get();
    state.counters["allocate_ms"] = allocate.Get();
    state.counters["write_to_copy"] = write.Get() / (copy.Get() + allocate.Get());
    state.counters["read_to_copy"] = read.Get() / (copy.Get() + allocate.Get());
    state.counters["write_to_fgb"] = write.Get() / fgbWrite.Get();
    state.counters["read_to_fgb"] = read.Get() / fgbRead.Get();
    state.counters["part_to_fgb"] = part.Get() / fgbPart.Get();
    state.counters["write_to_gpkg"] = write.Get() / gpkgWrite.Get();
    state.counters["read_to_gpkg"] = read.Get() / gpkgRead.Get();
    state.counters["peak_to_kept"] = peakToKept;
    state.counters["file_MB"] = static_cast<double>(fs::file_size(archive)) / 1e6;
}
BENCHMARK(ArchiveOfMillionLines)->Iterations(kFileRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
