#include "hosts/cli/check_command.h"

#include <iostream>
#include <string>

#include "hosts/cli/archive_step.h"
#include "hosts/common/progress_bar.h"

namespace orvane {
namespace {

struct Args {
    std::string input;
};

CheckedArchive CheckWithBar(const std::string& path) {
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "checking " + path);
    FolderMoves moves;
    return CheckArchive(
        path,
        [&bar](double fraction) {
            bar.Show(fraction);
            return true;
        },
        moves);
}

Status Run(const Args& args) {
    if (RefusesName(args.input)) return kUsage;
    const CheckedArchive checked = CheckWithBar(args.input);
    if (checked.moving) {
        std::cerr << "error: " << checked.words << '\n';
        return kNotRead;
    }
    if (!checked.words.empty()) std::cout << "warning: " << checked.words << '\n';
    const ArcReport& report = checked.report;
    for (const std::string& line : FindingLines(report)) std::cout << line << '\n';
    if (report.version.empty()) {
        std::cerr << "error: " << args.input << " cannot be read\n";
        return kNotRead;
    }
    const ArcCounts& counts = report.counts;
    std::cout << args.input << ": " << (report.text ? "text" : "binary") << ", version " << report.version << ", layers "
              << counts.layers << ", blocks " << counts.blocks << ", items " << counts.items << ", points " << counts.points
              << ", texts " << counts.texts << ", grids " << counts.meshes << ", paths " << counts.paths << '\n'
              << (report.HasErrors()                                 ? "faults found"
                  : report.findings.empty() && checked.words.empty() ? "no fault"
                                                                     : "no fault, but see the warnings")
              << std::endl;
    return report.HasErrors() ? kPartly : kDone;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command =
        AddCommand(app, "check", "Look through all files of an archive and tell what does not fit", args, status, Run);
    command.add_option("IN", args->input, "The archive, named by its data file: .Ovb or .Ovt")->required();
}

}  // namespace orvane
