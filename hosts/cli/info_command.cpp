#include "hosts/cli/info_command.h"

#include <iostream>
#include <string>

#include "hosts/cli/archive_step.h"
#include "hosts/common/map_facts.h"

namespace orvane {
namespace {

struct Args {
    std::string input;
    bool json = false;
};

Status Run(const Args& args) {
    if (RefusesName(args.input)) return kUsage;
    CDigMem store;
    store.Init();
    ArcReport report;
    const Status read = OpenAndTell(store, args.input, &report);
    if (read != kDone && read != kPartly) return read;
    const std::string form = report.text ? "text" : "binary";
    const MapFacts facts = FactsOf(store);
    if (args.json) {
        std::cout << "{\n  \"archive\": " << JsonText(args.input) << ", \"form\": " << JsonText(form)
                  << ", \"version\": " << JsonText(report.version) << ",\n"
                  << FactsJson(facts) << "\n}" << std::endl;
    } else {
        std::cout << args.input << ": " << form << ", version " << report.version << '\n' << FactsText(facts) << std::flush;
    }
    return read;
}

}  // namespace

void AddInfoCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command = AddCommand(app, "info", "Tell the layers, blocks, items and bounds of an archive", args, status, Run);
    command.add_option("IN", args->input, "The archive, named by its data file: .Ovb or .Ovt")->required();
    command.add_flag("--json", args->json, "As a JSON object, with every block; bounds are left, bottom, right, top");
}

}  // namespace orvane
