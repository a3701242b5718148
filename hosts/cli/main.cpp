// orvane4: the command line.
#include <iostream>
#include <string>

#include "hosts/cli/check_command.h"
#include "hosts/cli/convert_command.h"
#include "hosts/cli/export_command.h"
#include "hosts/cli/geo_command.h"
#include "hosts/cli/import_command.h"
#include "hosts/cli/info_command.h"
#include "hosts/cli/render_command.h"

namespace orvane {
namespace {

constexpr const char* kVersion = "0.1.0";

int Main(int argc, char** argv) {
    CLI::App app{"ORVANE4: vector data into maps of plane rectangular zones, and archives of such maps", "orvane4"};
    app.set_version_flag("--version", std::string("orvane4 ") + kVersion);
    app.footer(kStatusFooter);
    app.require_subcommand(1);
    Status status = kDone;
    AddImportCommand(app, status);
    AddExportCommand(app, status);
    AddRenderCommand(app, status);
    AddConvertCommand(app, status);
    AddInfoCommand(app, status);
    AddCheckCommand(app, status);
    AddGeoCommand(app, status);
    try {
        app.parse(argc, argv);  // which runs the command
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? kDone : kUsage;
    }
    // A report that nobody gets is not done, as when it goes to a file on a full disk.
    if (!std::cout.flush()) {
        std::cerr << "error: the standard output cannot be written\n";
        return status == kDone || status == kPartly ? kNotWritten : status;
    }
    return status;
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) { return orvane::Main(argc, argv); }
