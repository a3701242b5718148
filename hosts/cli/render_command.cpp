#include "hosts/cli/render_command.h"

#include <iostream>
#include <string>
#include <vector>

#include "hosts/cli/import_step.h"
#include "hosts/common/map_view.h"
#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

constexpr std::int16_t kMargin_percent = 3;

struct Args {
    std::vector<std::string> sources;
    ImportArgs import;
    std::string output;
    int width_px = 1200;
    int height_px = 800;
};

Status Run(const Args& args) {
    OffscreenMap map(args.width_px, args.height_px);
    const Status status = ImportAndTell(map.Control(), args.sources, args.import);
    if (status != kDone && status != kPartly) return status;
    MapView view(map.Control());
    view.SetSquareArea();
    view.FitAll(kMargin_percent);
    if (!map.SavePng(args.output)) {
        std::cerr << "error: cannot write " << args.output << '\n';
        return kNotWritten;
    }
    return status;
}

}  // namespace

void AddRenderCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command = AddCommand(app, "render", "Draw vector sources into a PNG, all data in view", args, status, Run);
    command.add_option("IN", args->sources, "Vector sources that GDAL reads")->required();
    command.add_option("-o,--output", args->output, "The PNG to write")->required();
    AddImportOptions(command, args->import);
    command.add_option("--width", args->width_px, "Width in pixels")->check(CLI::Range(1, 16000))->capture_default_str();
    command.add_option("--height", args->height_px, "Height in pixels")->check(CLI::Range(1, 16000))->capture_default_str();
}

}  // namespace orvane
