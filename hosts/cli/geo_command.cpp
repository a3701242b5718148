#include "hosts/cli/geo_command.h"

#include <cstdint>
#include <iostream>
#include <map>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>

#include "hosts/common/coordinate_forms.h"

namespace orvane {
namespace {

struct Args {
    std::string from;
    std::string to;
    std::optional<int> zone;
};

const std::map<std::string, CoordinateForm> kForms = {{"deg", CoordinateForm::Deg},
                                                      {"dms", CoordinateForm::Dms},
                                                      {"plane", CoordinateForm::Plane},
                                                      {"mesh", CoordinateForm::Mesh},
                                                      {"frame", CoordinateForm::Frame}};

constexpr const char* kFormsHelp = R"(Forms, numbers parted by blanks, tabs or commas:
  deg    latitude and longitude in decimal degrees
  dms    the same, each as degrees, minutes and seconds; of the north and the east only
  plane  x to the north and y to the east, in metres of the zone
  mesh   the sheet's number of six digits and x and y inside it, 0 to 10000; the number alone is its south-west corner
  frame  x to the east and y to the north in the mesh frame, 10000 a sheet

Sheets lie between the equator and 66 40' N and between 110 and 180 E. A zone is good to 0.2 millimetres as far as 700
kilometres north and south and 160 kilometres east and west of its origin; beyond, its figures grow worse without bound. Between
mesh and plane the way is that of the map's frame change: there between the sheet's four corners, up to 2 metres beside the
exact place, and back exactly.

Latitude and longitude are on the Bessel ellipsoid (the datum Tokyo) throughout. One line comes out for each that goes in: an
empty one for an empty one, a * for one that cannot be converted, which makes the exit status 3.

)";

constexpr std::size_t kLongestLine = 1000;
constexpr std::size_t kFullOutput = 1 << 16;
constexpr std::int64_t kToldFaults = 20;

/// Takes one line without its end. What is longer than any line of numbers is passed over, and told by `tooLong`. False at the
/// end of the input.
bool ReadLine(std::streambuf& in, std::string& line, bool& tooLong) {
    constexpr auto kEnd = std::streambuf::traits_type::eof();
    line.clear();
    tooLong = false;
    int c = in.sbumpc();
    if (c == kEnd) return false;
    for (; c != kEnd && c != '\n'; c = in.sbumpc()) {
        if (line.size() == kLongestLine) {
            tooLong = true;
        } else {
            line += static_cast<char>(c);
        }
    }
    return true;
}

/// A mark of UTF-8, as editors put it before the first line, is no part of it.
void DropByteOrderMark(std::string& line) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (line.starts_with(kMark)) line.erase(0, kMark.size());
}

bool Flush(std::string& out) {
    std::cout.write(out.data(), static_cast<std::streamsize>(out.size()));
    out.clear();
    return static_cast<bool>(std::cout.flush());
}

Status ConvertLines(const LineConverter& converter) {
    std::streambuf& in = *std::cin.rdbuf();
    std::string line, out, why;
    std::int64_t lineNo = 0;
    std::int64_t faults = 0;
    for (bool tooLong = false;;) {
        // Whoever types lines, or waits at a pipe, gets each answer before the next line.
        if ((out.size() >= kFullOutput || in.in_avail() <= 0) && !out.empty() && !Flush(out)) break;
        if (!ReadLine(in, line, tooLong)) break;
        if (++lineNo == 1) DropByteOrderMark(line);
        if (tooLong) why = "the line is too long";
        const bool empty = line.find_first_not_of(" \t\r") == std::string::npos;
        if (tooLong || (!empty && !converter.Convert(line, out, why))) {
            out += '*';
            if (++faults <= kToldFaults) std::cerr << "error: line " << lineNo << ": " << why << '\n';
        }
        out += '\n';
    }
    if (!Flush(out)) {
        std::cerr << "error: the output cannot be written\n";
        return kNotWritten;
    }
    if (faults == 0) return kDone;
    std::cerr << "error: " << faults << " of " << lineNo << " lines could not be converted\n";
    return kPartly;
}

Status Run(const Args& args) {
    const CoordinateForm from = kForms.at(args.from);
    const CoordinateForm to = kForms.at(args.to);
    const bool needsZone = from == CoordinateForm::Plane || to == CoordinateForm::Plane;
    if (needsZone && !args.zone) {
        std::cerr << "error: plane coordinates need their zone: --zone 1 to 19\n";
        return kUsage;
    }
    if (args.zone && (*args.zone < kFirstZone || *args.zone > kLastZone)) {
        std::cerr << "error: no such zone: " << *args.zone << "; plane rectangular zones are 1 to 19\n";
        return kUsage;
    }
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    try {
        return ConvertLines(LineConverter(from, to, args.zone.value_or(0)));
    } catch (const std::ios_base::failure&) {  // thrown by the stream's buffer for a folder, or for no input at all
        std::cerr << "error: the input cannot be read\n";
        return kNotRead;
    }
}

}  // namespace

void AddGeoCommand(CLI::App& app, Status& status) {
    const auto args = std::make_shared<Args>();
    CLI::App& command =
        AddCommand(app, "geo", "Convert lines of coordinates from standard input to standard output", args, status, Run);
    command.footer(std::string(kFormsHelp) + kStatusFooter);
    const CLI::IsMember isForm({"deg", "dms", "plane", "mesh", "frame"});
    command.add_option("--from", args->from, "Form of the lines read")->required()->check(isForm);
    command.add_option("--to", args->to, "Form of the lines written")->required()->check(isForm);
    command.add_option("--zone", args->zone, "Plane rectangular zone, 1 to 19");
}

}  // namespace orvane
