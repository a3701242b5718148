// Frames of workload files that other drawing programs measure themselves with, one line of a table each.
//
//     drawing_table FOLDER [name...]
//
// reads lines.bin, polys.bin, bigpoly.bin, points.bin, real10.bin and real10z.bin of the folder, those that are there or the
// named ones, and prints tab separated: group, workload, program, variant, median, least and most milliseconds, median
// milliseconds of the processor, runs, vertices, nanoseconds a vertex, unit, remark. The view is 1920 x 1080 pixels at 10 units a
// pixel, (0, 0) in its middle. A frame is the whole redraw of the control, from the search of the items in view to the pixels,
// the white ground included.
//
// A file, little endian: "PWL1", uint32 kind (1 points, 2 lines, 3 polygons), uint32 features, uint32 rings, uint64 vertices, the
// uint32 number of rings of each feature, the uint32 number of points of each ring, which repeat the first one at the end, and x,
// y as doubles.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "bench/frame_measure.h"
#include "foreign/rings.h"

namespace orvane::bench {
namespace {

constexpr const char* kCode = "SHAPES";
constexpr std::int32_t kMesh = 1;

/// One line of the table: a file and how it is drawn.
struct Drawing {
    const char* file;
    const char* name;
    std::int32_t lineSize = 1;  ///< pixels
    bool outline = false;
    const char* remark = "";
};

constexpr Drawing kDrawings[] = {
    {"lines", "line1"},
    {"lines", "line3", 3},
    {"polys", "fill"},
    {"polys", "fill+outline", 1, true},
    {"bigpoly", "fill"},
    {"bigpoly", "fill+outline", 1, true},
    {"points", "marker5", 1, false, "squares of 7 pixels with an edge"},
    {"real10", "fill+outline", 1, true},
    {"real10z", "fill+outline", 1, true},
};

struct Workload {
    std::int32_t layType = 0;
    std::vector<std::vector<DigPnt>> features;  ///< the rings of a polygon one behind the other, as items hold them
    std::size_t vertices = 0;
};

template <class Number>
bool Take(std::istream& in, Number& number) {
    return static_cast<bool>(in.read(reinterpret_cast<char*>(&number), sizeof number));
}

template <class Number>
bool TakeAll(std::istream& in, std::vector<Number>& numbers, std::uint64_t count) {
    constexpr std::uint64_t kMost = 1 << 28;
    if (count > kMost) return false;
    numbers.resize(count);
    const auto bytes = static_cast<std::streamsize>(count * sizeof(Number));
    return static_cast<bool>(in.read(reinterpret_cast<char*>(numbers.data()), bytes));
}

std::optional<Workload> Read(const std::string& fileName) {
    constexpr std::int32_t kTypes[] = {kLayPoint, kLayLine, kLayPolygon};
    std::ifstream in(fileName, std::ios::binary);
    char mark[4];
    std::uint32_t kind = 0, features = 0, rings = 0;
    std::uint64_t vertices = 0;
    std::vector<std::uint32_t> ringsOf, pointsOf;
    std::vector<double> xy;
    if (!in.read(mark, sizeof mark) || std::memcmp(mark, "PWL1", sizeof mark) != 0) return std::nullopt;
    if (!Take(in, kind) || kind < 1 || kind > 3 || !Take(in, features) || !Take(in, rings) || !Take(in, vertices))
        return std::nullopt;
    if (!TakeAll(in, ringsOf, features) || !TakeAll(in, pointsOf, rings) || !TakeAll(in, xy, 2 * vertices)) return std::nullopt;
    Workload work{kTypes[kind - 1], {}, vertices};
    std::size_t ring = 0, at = 0;
    for (const std::uint32_t count : ringsOf) {
        RingPacker packer;
        std::vector<DigPnt> points;
        for (std::uint32_t i = 0; i < count && ring < rings; ++i, ++ring) {
            std::vector<DigPnt> one;
            for (std::uint32_t p = 0; p < pointsOf[ring] && at + 1 < xy.size(); ++p, at += 2)
                one.push_back({xy[at], xy[at + 1], 0});
            if (work.layType == kLayPolygon) {
                packer.Add(std::move(one));
            } else {
                points = std::move(one);
            }
        }
        work.features.push_back(packer.Empty() ? std::move(points) : packer.Take());
    }
    return work;
}

Fill FillWith(const Workload& work, const Drawing& drawing) {
    return [&work, &drawing](COrvane4Ctrl& ctrl) {
        CDigMem& store = ctrl.store;
        store.DigMemAlloc2(kCode, kMesh, work.layType, "", 1, 0, 0);
        store.SetLayColor(kCode, work.layType == kLayLine ? 0xC04020 : work.layType == kLayPoint ? 0x2020C0 : 0x60C0F0);
        store.SetLayColor2(kCode, 0x303030);
        store.SetLayOutLine(kCode, !drawing.outline);
        store.SetLayLineSize(kCode, drawing.lineSize);
        if (work.layType == kLayPoint) store.SetLayLineType(kCode, 1);
        std::int32_t id = 0;
        for (const std::vector<DigPnt>& points : work.features) {
            store.AddDigDat(kCode, kMesh, ++id, 0);
            store.SetDigDatPnts(kCode, kMesh, id, points);
        }
    };
}

double ProcessorMs() {
    std::timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) * 1e-6;
}

void Measure(const Workload& work, const Drawing& drawing) {
    constexpr int kRuns = 9;
    FrameMeasure measure(FillWith(work, drawing));
    measure.Frame();
    std::vector<double> wall, processor;
    for (int i = 0; i < kRuns; ++i) {
        const double before = ProcessorMs();
        wall.push_back(Milliseconds([&] { measure.Frame(); }));
        processor.push_back(ProcessorMs() - before);
    }
    const QImage& image = static_cast<const QtContext*>(measure.Control().TopDC())->Image();
    std::size_t covered = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) covered += (image.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF;
    }
    std::printf("render\t%s %s\torvane4\tframe\t%.4f\t%.4f\t%.4f\t%.4f\t%d\t%zu\t%.3f\tvertex\tpx=%zu %s\n", drawing.file,
                drawing.name, Median(wall), *std::min_element(wall.begin(), wall.end()),
                *std::max_element(wall.begin(), wall.end()), Median(processor), kRuns, work.vertices,
                Median(wall) * 1e6 / static_cast<double>(work.vertices), covered, drawing.remark);
    std::fflush(stdout);
}

int Main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "Usage: drawing_table FOLDER [name...]\n");
        return 2;
    }
    std::string last;
    std::optional<Workload> work;
    bool any = false;
    for (const Drawing& drawing : kDrawings) {
        const auto isIt = [&](const char* name) { return std::strcmp(name, drawing.file) == 0; };
        if (argc > 2 && !std::any_of(argv + 2, argv + argc, isIt)) continue;
        if (last != drawing.file) work = Read(std::string(argv[1]) + '/' + drawing.file + ".bin");
        last = drawing.file;
        if (!work) continue;
        any = true;
        Measure(*work, drawing);
    }
    if (!any) std::fprintf(stderr, "drawing_table: no workload in %s\n", argv[1]);
    return any ? 0 : 1;
}

}  // namespace
}  // namespace orvane::bench

int main(int argc, char** argv) { return orvane::bench::Main(argc, argv); }
