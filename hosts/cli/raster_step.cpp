#include "hosts/cli/raster_step.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "hosts/common/raster_library.h"
#include "hosts/common/watched_raster.h"
#include "platform/cp932.h"

namespace orvane {
namespace {

struct ControlPoint {
    std::int32_t bmpX = 0;
    std::int32_t bmpY = 0;
    double GeoX = 0;
    double GeoY = 0;
};

/// A number up to the next comma, which is passed over, or to the end.
template <class Number>
bool TakeNumber(std::string_view& text, Number& number, bool isLast) {
    const auto [next, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto taken = static_cast<std::size_t>(next - text.data());
    if (error != std::errc() || (isLast ? taken != text.size() : taken == text.size() || text[taken] != ',')) return false;
    text.remove_prefix(isLast ? taken : taken + 1);
    return true;
}

std::optional<ControlPoint> PointOf(std::string_view text) {
    ControlPoint p;
    if (!TakeNumber(text, p.bmpX, false) || !TakeNumber(text, p.bmpY, false) || !TakeNumber(text, p.GeoX, false) ||
        !TakeNumber(text, p.GeoY, true) || !std::isfinite(p.GeoX) || !std::isfinite(p.GeoY)) {
        return std::nullopt;
    }
    return p;
}

using PointPair = std::pair<ControlPoint, ControlPoint>;

/// The points of the images from the first on; nothing, with what is wrong told, when they are not as they should be.
std::optional<std::vector<PointPair>> PointsOf(const RasterArgs& args) {
    if (args.cp1.size() != args.cp2.size() || args.cp1.size() > args.files.size()) {
        std::cerr << "error: an image has either both control points or none\n";
        return std::nullopt;
    }
    std::vector<PointPair> points;
    for (std::size_t i = 0; i < args.cp1.size(); ++i) {
        const std::optional<ControlPoint> first = PointOf(args.cp1[i]);
        const std::optional<ControlPoint> second = PointOf(args.cp2[i]);
        if (!first || !second) {
            std::cerr << "error: no control point: " << (first ? args.cp2[i] : args.cp1[i]) << '\n';
            return std::nullopt;
        }
        points.push_back({*first, *second});
    }
    return points;
}

/// Makes servers that keep why a draw failed.
RasterServerMaker WatchedMaker(const std::shared_ptr<std::string>& failure) {
    return [failure, make = RasterLibraryMaker()]() -> std::unique_ptr<RasterServer> {
        std::unique_ptr<RasterServer> server = make();
        if (server == nullptr) return nullptr;
        const auto drawn = [failure](bool good) {
            if (!good) *failure = RasterLibraryFailure();
        };
        return WatchRaster(std::move(server), {drawn, {}});
    };
}

/// A placement that fails is passed over as well, so each file is tried on its own before.
std::string WhatIsWrong(const std::string& file, std::string_view name, const PointPair* points) {
    const std::unique_ptr<RasterServer> server = RasterLibraryMaker()();
    if (server == nullptr) return "no raster images can be read: " + RasterLibraryLack();
    if (!server->SrvInit()) return "the program that reads raster images is not there";
    if (!server->SrvLoad(name)) return "cannot read the raster image " + file + ": " + RasterLibraryFailure();
    if (points != nullptr) {
        const auto& [a, b] = *points;
        server->SrvSetCP1(a.bmpX, a.bmpY, a.GeoX, a.GeoY);
        server->SrvSetCP2(b.bmpX, b.bmpY, b.GeoX, b.GeoY);
        if (!server->SrvCalcCorrect2()) return "the control points of " + file + " are one point";
    } else if (!server->SrvCalcCorrect2()) {
        return file + " does not say where it lies";
    }
    return {};
}

void Place(RasterSlots& rasters, std::int32_t index, const PointPair& points) {
    const auto& [a, b] = points;
    rasters.RastSetCP1(index, a.bmpX, a.bmpY, a.GeoX, a.GeoY);
    rasters.RastSetCP2(index, b.bmpX, b.bmpY, b.GeoX, b.GeoY);
    rasters.RastCalcCorrect2(index);
}

}  // namespace

void AddRasterOptions(CLI::App& command, RasterArgs& args) {
    command
        .add_option("--raster", args.files,
                    "A raster image; may stand several times. It lies where it says itself, or by two points:")
        ->allow_extra_args(false);
    command
        .add_option(
            "--raster-cp1", args.cp1,
            "bmpX,bmpY,GeoX,GeoY: a pixel of the first --raster, y downward, and its place on the map; once more for the next")
        ->allow_extra_args(false);
    command.add_option("--raster-cp2", args.cp2, "The second point of each")->allow_extra_args(false);
    command.add_flag("--raster-over", args.over, "The raster images lie over the layers, not under them");
}

Status LoadRasters(COrvane4Ctrl& ctrl, const RasterArgs& args, RasterFailures& failures) {
    const std::optional<std::vector<PointPair>> points = PointsOf(args);
    if (!points) return kUsage;
    if (args.files.empty()) return kDone;
    if (!ctrl.rasters.RastInit(static_cast<std::int32_t>(args.files.size()), ctrl.window())) return kNotRead;
    ctrl.rastOnTop = args.over ? 1 : 0;
    for (std::size_t i = 0; i < args.files.size(); ++i) {
        const std::string& file = args.files[i];
        const std::string name = EncodeCp932(file).value_or(file);
        const PointPair* const pair = i < points->size() ? &(*points)[i] : nullptr;
        const std::string wrong = WhatIsWrong(file, name, pair);
        const auto index = static_cast<std::int32_t>(i);
        failures.push_back(std::make_shared<std::string>());
        ctrl.rasters.SetMaker(WatchedMaker(failures.back()));
        if (!wrong.empty() || !ctrl.rasters.RastLoad(index, name, ctrl.window())) {
            std::cerr << "error: "
                      << (wrong.empty() ? "cannot read the raster image " + file + ": " + RasterLibraryFailure() : wrong) << '\n';
            return kNotRead;
        }
        if (pair != nullptr) Place(ctrl.rasters, index, *pair);
    }
    return kDone;
}

Status DrawWithRasters(COrvane4Ctrl& ctrl, const RasterArgs& args, const RasterFailures& failures) {
    if (failures.empty()) return kDone;
    // What failed on the way to this view does not count.
    for (const auto& failure : failures) failure->clear();
    ctrl.RDMReDraw();
    Status status = kDone;
    for (std::size_t i = 0; i < failures.size(); ++i) {
        if (failures[i]->empty()) continue;
        std::cerr << "error: cannot draw the raster image " << args.files[i] << ": " << *failures[i] << '\n';
        status = kNotRead;
    }
    return status;
}

}  // namespace orvane
