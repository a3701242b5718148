#include "hosts/cli/import_command.h"

#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "hosts/cli/archive_step.h"
#include "hosts/cli/import_step.h"
#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

struct Args {
    std::vector<std::string> names;
    ImportArgs import;
    std::string version;
    bool check = false;
};

Status Run(const Args& args) {
    // The last of several names is the output, whether or not such a file exists already.
    const bool hasOutput = !args.check && args.names.size() > 1;
    if (hasOutput && !IsArchiveName(args.names.back())) {
        std::cerr << "error: the last of several names is the archive to write, and " << args.names.back()
                  << " does not end in .Ovb or .Ovt; --check reads all names as sources\n";
        return kUsage;
    }
    OffscreenMap map(1, 1);
    const auto sources = std::span(args.names).first(args.names.size() - (hasOutput ? 1 : 0));
    const Status imported = ImportAndTell(map.Control(), sources, args.import);
    if (!hasOutput || (imported != kDone && imported != kPartly)) return imported;
    if (imported == kPartly && RefusesPlace(args.names.back(), "what could be taken of the sources")) return kNotWritten;
    const Status written = SaveAndTell(map.Control().store, args.names.back(), args.version);
    return written == kDone ? imported : written;
}

}  // namespace

void AddImportCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command =
        AddCommand(app, "import", "Take vector sources into layers, in metres of one plane rectangular zone", args, status, Run);
    command
        .add_option("IN", args->names,
                    "Vector sources that GDAL reads; of several names the last is the archive to write, .Ovb or .Ovt")
        ->required();
    AddImportOptions(command, args->import);
    command.add_option("--version", args->version, "Version of the archive: 1.00 or 1.10, which it is without this option")
        ->check(CLI::IsMember({"1.00", "1.10"}));
    command.add_flag("--check", args->check, "Only tell what would be stored; all names are sources");
}

}  // namespace orvane
