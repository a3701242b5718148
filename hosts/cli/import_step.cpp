#include "hosts/cli/import_step.h"

#include <iostream>

#include "hosts/common/import_map.h"
#include "hosts/common/progress_bar.h"

namespace orvane {
namespace {

Status Tell(const ImportResult& result) {
    for (const std::string& note : result.summary.notes) std::cerr << "note: " << note << '\n';
    if (!result.Ok()) {
        for (const std::string& line : LeftOutLines(result.summary.leftOut)) std::cerr << line << '\n';
        std::cerr << "error: " << result.error << '\n';
        return result.fault == ImportFault::BadOption ? kUsage : kNotRead;
    }
    std::cout << SummaryText(result.summary) << std::flush;
    if (result.summary.leftOut.LostShapes() == 0) return kDone;
    std::cerr << "warning: " << result.summary.leftOut.LostShapes() << " geometries could not be stored\n";
    return kPartly;
}

}  // namespace

void AddImportOptions(CLI::App& command, ImportArgs& args) {
    command.add_option("--zone", args.zone,
                       "Plane rectangular zone, 1 to 19; without it the zone whose origin is nearest to the data");
    command.add_option("--assume", args.assumeEpsg, "EPSG code of the coordinate system of sources that name none");
    command.add_option("--by", args.byField, "One layer for each value of this attribute instead of one for each source layer");
    command
        .add_option(
            "--frame", args.frame,
            "plane: metres of a zone; mesh: the mesh frame, one block for each sheet, from which a map can be changed to any "
            "zone")
        ->check(CLI::IsMember({"plane", "mesh"}));
    command.add_flag("--keep-datum", args.keepDatum,
                     "With --frame mesh: take latitudes and longitudes as they are and not onto the datum Tokyo");
}

Status ImportAndTell(COrvane4Ctrl& ctrl, std::span<const std::string> sources, const ImportArgs& args) {
    if (args.keepDatum && args.frame != "mesh") {
        std::cerr << "error: --keep-datum goes with --frame mesh: in the plane each datum has a system of its own\n";
        return kUsage;
    }
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "importing " + (sources.size() == 1 ? sources[0] : "the sources"));
    ImportOptions options;
    options.zone = args.zone;
    options.assumeEpsg = args.assumeEpsg;
    options.byField = args.byField;
    options.frame = args.frame == "mesh" ? ImportFrame::Mesh : ImportFrame::Plane;
    options.shiftToTokyo = !args.keepDatum;
    options.progress = [&bar](double fraction) {
        bar.Show(fraction);
        return true;
    };
    const ImportResult result = ImportMap(ctrl, sources, options);
    bar.Clear();
    return Tell(result);
}

}  // namespace orvane
