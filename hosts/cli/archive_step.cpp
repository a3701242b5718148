#include "hosts/cli/archive_step.h"

#include <iostream>
#include <utility>

#include "hosts/common/progress_bar.h"

namespace orvane {

bool RefusesName(const std::string& path) {
    if (IsArchiveName(path)) return false;
    std::cerr << "error: " << path << " is not the name of an archive, which ends in .Ovb or .Ovt\n";
    return true;
}

Status OpenAndTell(CDigMem& store, const std::string& path, ArcReport* report) {
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "reading " + path);
    OpenedArchive result = OpenArchive(store, path, [&bar](double fraction) {
        bar.Show(fraction);
        return true;
    });
    bar.Clear();
    if (!result.opened) {
        std::cerr << "error: " << result.error << '\n';
        return kNotRead;
    }
    for (const std::string& line : result.warnings) {
        // The map is there; that not all of it may be is no error of this command.
        std::cerr << "warning: " << line.substr(line.find(": ") + 2) << '\n';
    }
    const Status status = result.report.HasErrors() ? kPartly : kDone;
    if (report != nullptr) *report = std::move(result.report);
    return status;
}

bool RefusesPlace(const std::string& output, const std::string& what) {
    if (!ArchiveStands(output)) return false;
    std::cerr << "error: " << output << " was not written: " << what
              << " is not all of it, and takes the place of no other archive\n";
    return true;
}

Status SaveAndTell(CDigMem& store, const std::string& path, const std::string& version) {
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "writing " + path);
    const SavedArchive result = SaveArchive(store, path, version, [&bar](double fraction) {
        bar.Show(fraction);
        return true;
    });
    bar.Clear();
    if (!result.saved) {
        std::cerr << "error: " << path << " was not written: " << result.error << '\n';
        return kNotWritten;
    }
    for (const std::string& note : result.notes) std::cerr << "note: " << note << '\n';
    return kDone;
}

}  // namespace orvane
