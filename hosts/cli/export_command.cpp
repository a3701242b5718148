#include "hosts/cli/export_command.h"

#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "hosts/cli/archive_step.h"
#include "hosts/common/export_map.h"
#include "hosts/common/progress_bar.h"

namespace orvane {
namespace {

struct Args {
    std::string input;
    std::string output;
    std::string format;
    std::string datum;
    std::optional<int> zone;
    std::vector<std::string> layers;
    bool overwrite = false;
};

volatile std::sig_atomic_t interrupted = 0;

// While it lives, an interrupt ends the export between two features, so that nothing half written stays behind.
class Interrupts {
public:
    Interrupts() : onInterrupt_(std::signal(SIGINT, Note)), onTerminate_(std::signal(SIGTERM, Note)) {}
    ~Interrupts() {
        std::signal(SIGINT, onInterrupt_);
        std::signal(SIGTERM, onTerminate_);
    }
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

private:
    static void Note(int) { interrupted = 1; }
    void (*onInterrupt_)(int);
    void (*onTerminate_)(int);
};

Status Refuse(const std::string& error) {
    std::cerr << "error: " << error << '\n';
    return kUsage;
}

Status Tell(const ExportResult& result) {
    for (const std::string& note : result.summary.notes) std::cerr << "note: " << note << '\n';
    if (!result.Ok()) {
        for (const std::string& line : LeftOutLines(result.summary.leftOut)) std::cerr << line << '\n';
        std::cerr << "error: " << result.error << '\n';
        return result.fault == ExportFault::BadOption ? kUsage : kNotWritten;
    }
    std::cout << SummaryText(result.summary) << std::flush;
    if (result.summary.leftOut.LostItems() == 0) return kDone;
    std::cerr << "warning: " << result.summary.leftOut.LostItems() << " items or mesh cells could not be written\n";
    return kPartly;
}

Status RunExport(const Args& args) {
    if (RefusesName(args.input)) return kUsage;
    ExportOptions options;
    options.path = args.output;
    options.inputs = ArchiveFiles(args.input);
    options.zone = args.zone;
    options.overwrite = args.overwrite;
    if (!args.format.empty()) {
        options.format = ExportFormatByName(args.format);
        if (!options.format) return Refuse("no such format: " + args.format + "; there are " + ExportFormatNames());
    }
    if (!args.datum.empty()) {
        options.datum = DatumByName(args.datum);
        if (!options.datum) return Refuse("no such datum: " + args.datum + "; there are JGD2011, JGD2000 and Tokyo");
    }
    CDigMem store;
    store.Init();
    const Status read = OpenAndTell(store, args.input);
    if (read != kDone && read != kPartly) return read;
    const Interrupts interrupts;
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "writing " + args.output);
    options.progress = [&bar](double fraction) {
        bar.Show(fraction);
        return interrupted == 0;
    };
    const ExportResult result = ExportMap(store, args.layers, options);
    bar.Clear();
    const Status written = Tell(result);
    return written == kDone ? read : written;
}

}  // namespace

void AddExportCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command =
        AddCommand(app, "export", "Write the layers of an archive to a vector format of other systems", args, status, RunExport);
    command.add_option("IN", args->input, "The archive: its .Ovb or .Ovt file")->required();
    command
        .add_option("OUT", args->output,
                    "The file to write; for a format of one layer a file, a name without its extension is a folder of such files")
        ->required();
    command.add_option("--format", args->format, ExportFormatNames() + "; without it the extension of OUT tells");
    command.add_option("--datum", args->datum, "JGD2011, JGD2000 or Tokyo: with --zone the coordinate system that OUT names");
    command.add_option("--zone", args->zone, "Plane rectangular zone of the coordinates, 1 to 19");
    command.add_option("--layer", args->layers, "Code of a layer to write, again for each; without it all that hold items")
        ->expected(1)
        ->take_all();
    command.add_flag("--overwrite", args->overwrite, "Replace what stands under OUT");
}

}  // namespace orvane
