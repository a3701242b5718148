#include "hosts/cli/archive_input.h"

#include <iostream>

#include "files/archive.h"
#include "hosts/common/host_files.h"
#include "hosts/common/progress_bar.h"

namespace orvane {
namespace {

// Why a read failed, as far as it can be found out afterwards.
std::string Reason(Files& files, const std::string& dataFile) {
    FileFacts facts;
    if (!files.Facts(dataFile, facts)) return "no such file";
    if (facts.directory) return "it is a folder";
    const ArcName name = ResolveArcName(dataFile);
    if (!name.hasExtension) return "the name of an archive ends in .Ovb or .Ovt";
    if (ArcGetVersion(files, name.base, name.text).empty()) {
        return "it is no archive, or a file beside it is missing or of another version";
    }
    return "it is cut off or damaged";
}

}  // namespace

Status ReadArchiveAndTell(CDigMem& store, const std::string& name) {
    HostFiles files;
    // A name without bytes in the code page goes through as the system's own.
    std::string dataFile = EncodeCp932(name).value_or(name);
    FileFacts facts;
    if (!ResolveArcName(dataFile).hasExtension && !files.Facts(dataFile, facts)) {
        dataFile += files.Facts(dataFile + ".Ovb", facts) || !files.Facts(dataFile + ".Ovt", facts) ? ".Ovb" : ".Ovt";
    }
    ProgressBar bar(std::cerr, ErrorStreamIsTerminal(), "reading " + name);
    const bool read = ArcRead(store, files, dataFile, {}, [&bar](double done) {
        bar.Show(done);
        return true;
    });
    bar.Clear();
    if (read) return kDone;
    std::cerr << "error: cannot read " << name << ": " << Reason(files, dataFile) << '\n';
    return kNotRead;
}

}  // namespace orvane
