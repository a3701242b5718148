#include "hosts/cli/raster_step.h"

#include <cstdint>
#include <iostream>

#include "hosts/common/raster_library.h"
#include "platform/cp932.h"

namespace orvane {
namespace {

/// A draw that fails is passed over in silence, as one bad image must not stop a map; so each file is tried on its own before.
std::string WhatIsWrong(const std::string& file, std::string_view name) {
    const std::unique_ptr<RasterServer> server = RasterLibraryMaker()();
    if (server == nullptr || !server->SrvInit()) return "raster images need the library " + RasterLibraryNames().back();
    if (!server->SrvLoad(name)) return "cannot read the raster image " + file;
    if (!server->SrvCalcCorrect2()) return file + " does not say where it lies";
    return {};
}

}  // namespace

void AddRasterOptions(CLI::App& command, RasterArgs& args) {
    command
        .add_option("--raster", args.files, "A raster image that says itself where it lies on the map; may stand several times")
        ->allow_extra_args(false);
    command.add_flag("--raster-over", args.over, "The raster images lie over the layers, not under them");
}

Status LoadRasters(COrvane4Ctrl& ctrl, const RasterArgs& args) {
    if (args.files.empty()) return kDone;
    if (!ctrl.rasters.RastInit(static_cast<std::int32_t>(args.files.size()), ctrl.window())) return kNotRead;
    ctrl.rastOnTop = args.over ? 1 : 0;
    std::int32_t index = 0;
    for (const std::string& file : args.files) {
        const std::string name = EncodeCp932(file).value_or(file);
        const std::string wrong = WhatIsWrong(file, name);
        if (!wrong.empty() || !ctrl.rasters.RastLoad(index++, name, ctrl.window())) {
            std::cerr << "error: " << (wrong.empty() ? "cannot read the raster image " + file : wrong) << '\n';
            return kNotRead;
        }
    }
    return kDone;
}

}  // namespace orvane
