#include "hosts/cli/import_command.h"

#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "hosts/cli/import_step.h"
#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

struct Args {
    std::vector<std::string> names;
    ImportArgs import;
    bool check = false;
};

Status Run(const Args& args) {
    OffscreenMap map(1, 1);
    // The last of several names is the output, whether or not such a file exists already.
    const bool hasOutput = !args.check && args.names.size() > 1;
    const Status status =
        ImportAndTell(map.Control(), std::span(args.names).first(args.names.size() - (hasOutput ? 1 : 0)), args.import);
    if (!hasOutput || (status != kDone && status != kPartly)) return status;
    std::cerr << "error: " << args.names.back() << " was not written: this version has no archive yet. "
              << "What it would hold stands above; 'orvane4 render' draws it, and --check reads all names as sources\n";
    return kNotWritten;
}

}  // namespace

void AddImportCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command =
        AddCommand(app, "import", "Take vector sources into layers, in metres of one plane rectangular zone", args, status, Run);
    command.add_option("IN", args->names, "Vector sources that GDAL reads; of several names the last is the archive to write")
        ->required();
    AddImportOptions(command, args->import);
    command.add_flag("--check", args->check, "Only tell what would be stored; all names are sources");
}

}  // namespace orvane
