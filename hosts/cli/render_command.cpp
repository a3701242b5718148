#include "hosts/cli/render_command.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "hosts/cli/archive_step.h"
#include "hosts/cli/import_step.h"
#include "hosts/cli/raster_step.h"
#include "hosts/common/map_view.h"
#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

constexpr std::int16_t kMargin_percent = 3;

struct Args {
    std::vector<std::string> sources;
    ImportArgs import;
    RasterArgs raster;
    std::string output;
    int width_px = 1200;
    int height_px = 800;
};

Status Open(COrvane4Ctrl& ctrl, const Args& args) {
    if (std::none_of(args.sources.begin(), args.sources.end(), IsArchiveName))
        return ImportAndTell(ctrl, args.sources, args.import);
    if (args.sources.size() == 1) return OpenAndTell(ctrl.store, args.sources.front());
    std::cerr << "error: an archive is drawn alone\n";
    return kUsage;
}

Status Run(const Args& args) {
    OffscreenMap map(args.width_px, args.height_px);
    const Status status = Open(map.Control(), args);
    if (status != kDone && status != kPartly) return status;
    RasterFailures failures;
    const Status loaded = LoadRasters(map.Control(), args.raster, failures);
    if (loaded != kDone) return loaded;
    MapView view(map.Control());
    view.SetSquareArea();
    view.FitAll(kMargin_percent);
    const Status drawn = DrawWithRasters(map.Control(), args.raster, failures);
    if (drawn != kDone) return drawn;
    if (!map.SavePng(args.output)) {
        std::cerr << "error: cannot write " << args.output << '\n';
        return kNotWritten;
    }
    return status;
}

}  // namespace

void AddRenderCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command =
        AddCommand(app, "render", "Draw vector sources or an archive into a PNG, all data in view", args, status, Run);
    command.add_option("IN", args->sources, "Vector sources that GDAL reads, or an archive: .Ovb or .Ovt")->required();
    command.add_option("-o,--output", args->output, "The PNG to write")->required();
    AddImportOptions(command, args->import);
    AddRasterOptions(command, args->raster);
    command.add_option("--width", args->width_px, "Width in pixels")->check(CLI::Range(1, 16000))->capture_default_str();
    command.add_option("--height", args->height_px, "Height in pixels")->check(CLI::Range(1, 16000))->capture_default_str();
}

}  // namespace orvane
