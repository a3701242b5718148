// orvane4: the command line.
//
// Exit status: 0 done; 1 the sources cannot be imported; 2 wrong usage; 3 done, but some geometry could not be stored; 4 the
// output cannot be written.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "hosts/common/import_map.h"
#include "hosts/common/map_view.h"
#include "hosts/common/offscreen_map.h"
#include "hosts/common/progress_bar.h"

namespace orvane {
namespace {

constexpr const char* kVersion = "0.1.0";
constexpr const char* kFooter = R"(Exit status:
  0  done
  1  the sources cannot be imported
  2  wrong usage
  3  done, but some geometry could not be stored
  4  the output cannot be written)";
constexpr std::int16_t kMargin_percent = 3;

enum Status { kDone = 0, kNotImported = 1, kUsage = 2, kPartly = 3, kNotWritten = 4 };

struct ImportArgs {
    std::vector<std::string> names;
    std::optional<int> zone;
    std::optional<int> assumeEpsg;
    std::string byField;
    bool check = false;
};

struct RenderArgs {
    ImportArgs import;
    std::string output;
    int width_px = 1200;
    int height_px = 800;
};

void AddImportOptions(CLI::App& command, ImportArgs& args) {
    command.add_option("--zone", args.zone,
                       "Plane rectangular zone, 1 to 19; without it the zone whose origin is nearest to the data");
    command.add_option("--assume", args.assumeEpsg, "EPSG code of the coordinate system of sources that name none");
    command.add_option("--by", args.byField, "One layer for each value of this attribute instead of one for each source layer");
}

int Tell(const ImportResult& result) {
    for (const std::string& note : result.summary.notes) std::cerr << "note: " << note << '\n';
    if (!result.Ok()) {
        for (const std::string& line : LeftOutLines(result.summary.leftOut)) std::cerr << line << '\n';
        std::cerr << "error: " << result.error << '\n';
        return result.fault == ImportFault::BadOption ? kUsage : kNotImported;
    }
    std::cout << SummaryText(result.summary) << std::flush;
    if (result.summary.leftOut.LostShapes() == 0) return kDone;
    std::cerr << "warning: " << result.summary.leftOut.LostShapes() << " geometries could not be stored\n";
    return kPartly;
}

int Import(COrvane4Ctrl& ctrl, const std::vector<std::string>& sources, const ImportArgs& args) {
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "importing " + (sources.size() == 1 ? sources[0] : "the sources"));
    ImportOptions options;
    options.zone = args.zone;
    options.assumeEpsg = args.assumeEpsg;
    options.byField = args.byField;
    options.progress = [&bar](double fraction) {
        bar.Show(fraction);
        return true;
    };
    const ImportResult result = ImportMap(ctrl, sources, options);
    bar.Clear();
    return Tell(result);
}

int RunImport(const ImportArgs& args) {
    OffscreenMap map(1, 1);
    // The last of several names is the output, whether or not such a file exists already.
    const bool hasOutput = !args.check && args.names.size() > 1;
    const std::vector<std::string> sources(args.names.begin(), args.names.end() - (hasOutput ? 1 : 0));
    const int status = Import(map.Control(), sources, args);
    if (!hasOutput || (status != kDone && status != kPartly)) return status;
    std::cerr << "error: " << args.names.back() << " was not written: this version has no archive yet. "
              << "What it would hold stands above; 'orvane4 render' draws it, and --check reads all names as sources\n";
    return kNotWritten;
}

int RunRender(const RenderArgs& args) {
    OffscreenMap map(args.width_px, args.height_px);
    const int status = Import(map.Control(), args.import.names, args.import);
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

int Main(int argc, char** argv) {
    CLI::App app{"ORVANE4: vector data into maps of plane rectangular zones", "orvane4"};
    app.set_version_flag("--version", std::string("orvane4 ") + kVersion);
    app.footer(kFooter);
    app.require_subcommand(1);

    ImportArgs importArgs;
    CLI::App& import = *app.add_subcommand("import", "Take vector sources into layers, in metres of one plane rectangular zone");
    import
        .add_option("IN", importArgs.names, "Vector sources that GDAL reads; of several names the last is the archive to write")
        ->required();
    AddImportOptions(import, importArgs);
    import.add_flag("--check", importArgs.check, "Only tell what would be stored; all names are sources");
    import.footer(kFooter);

    RenderArgs renderArgs;
    CLI::App& render = *app.add_subcommand("render", "Draw vector sources into a PNG, all data in view");
    render.add_option("IN", renderArgs.import.names, "Vector sources that GDAL reads")->required();
    render.add_option("-o,--output", renderArgs.output, "The PNG to write")->required();
    AddImportOptions(render, renderArgs.import);
    render.add_option("--width", renderArgs.width_px, "Width in pixels")->check(CLI::Range(1, 16000))->capture_default_str();
    render.add_option("--height", renderArgs.height_px, "Height in pixels")->check(CLI::Range(1, 16000))->capture_default_str();
    render.footer(kFooter);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kUsage;
    }
    return import.parsed() ? RunImport(importArgs) : RunRender(renderArgs);
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) { return orvane::Main(argc, argv); }
