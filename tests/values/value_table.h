// A table of results, one a line, that two systems write and tools/compare_values holds against each other.
//
//     exact NAME VALUE...     equal to the last bit, byte or letter
//     ulp NAME VALUE...       numbers behind a sine, cosine, arc tangent or power, whose last bits the systems' libraries decide
//
// Names stand once. A double is the 16 digits of its bits, so that nothing is rounded on the way.
#pragma once

#include <bit>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace orvane {

class ValueTable {
public:
    void Exact(const std::string& name, std::initializer_list<double> values) { Numbers("exact", name, values); }
    void Ulp(const std::string& name, std::initializer_list<double> values) { Numbers("ulp", name, values); }
    void Exact(const std::string& name, std::string_view text) {
        std::printf("exact %s %.*s\n", name.c_str(), static_cast<int>(text.size()), text.data());
    }

private:
    static void Numbers(const char* kind, const std::string& name, std::initializer_list<double> values) {
        std::printf("%s %s", kind, name.c_str());
        for (const double value : values) {
            std::printf(" %016llx", static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(value)));
        }
        std::printf("\n");
    }
};

/// Angles, zones, sheets, and the frame change of a map.
void TellGeo(ValueTable& table);
/// Distances, crossings, areas, overlays and relations.
void TellGeometry(ValueTable& table);
/// Turned points, and the verbs of maps with every kind of layer, symbol and line.
void TellMaps(ValueTable& table);
/// The bytes of what each writer makes, written by `files` into the folder at hand and read back.
void TellFiles(ValueTable& table, Files& files);

/// All four.
void TellAll(Files& files);

}  // namespace orvane
