#include "hosts/cli/convert_command.h"

#include <string>

#include "hosts/cli/archive_step.h"

namespace orvane {
namespace {

struct Args {
    std::string input;
    std::string output;
    std::string version;
};

Status Run(const Args& args) {
    if (RefusesName(args.input) || RefusesName(args.output)) return kUsage;
    CDigMem store;
    store.Init();
    const Status read = OpenAndTell(store, args.input);
    if (read != kDone && read != kPartly) return read;
    if (read == kPartly && RefusesPlace(args.output, "what can be read of " + args.input)) return kNotWritten;
    const Status written = SaveAndTell(store, args.output, args.version);
    return written == kDone ? read : written;
}

}  // namespace

void AddConvertCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command = AddCommand(app, "convert", "Write an archive in another form or version", args, status, Run);
    command.add_option("IN", args->input, "The archive, named by its data file: .Ovb or .Ovt")->required();
    command
        .add_option("OUT", args->output,
                    "The archive to write: .Ovb is binary, .Ovt text, which takes the room of both while it is written")
        ->required();
    command.add_option("--version", args->version, "1.00 or 1.10, which it is without this option")
        ->check(CLI::IsMember({"1.00", "1.10"}));
}

}  // namespace orvane
