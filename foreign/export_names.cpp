#include "foreign/export_names.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "platform/file_names.h"

namespace orvane {

namespace {

// The letters A to Z only; others never meet in one file system's folding and another's table.
std::string Folded(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text;
}

bool IsBad(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20U || byte == 0x7FU || std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
}

// Names that mean devices on one system, and beginnings that a database keeps for itself.
bool IsReserved(std::string_view name) {
    const std::string_view stem = name.substr(0, name.find('.'));
    constexpr std::array<std::string_view, 4> kDevices = {"con", "prn", "aux", "nul"};
    if (std::any_of(kDevices.begin(), kDevices.end(), [stem](std::string_view device) { return EqualAnyCase(stem, device); }))
        return true;
    if (stem.size() == 4 && (EqualAnyCase(stem.substr(0, 3), "com") || EqualAnyCase(stem.substr(0, 3), "lpt"))) return true;
    constexpr std::array<std::string_view, 3> kPrefixes = {"gpkg_", "sqlite_", "rtree_"};
    return std::any_of(kPrefixes.begin(), kPrefixes.end(),
                       [name](std::string_view prefix) { return EqualAnyCase(name.substr(0, prefix.size()), prefix); });
}

}  // namespace

std::string ExportNames::Make(std::string_view utf8) {
    std::string whole(utf8);
    std::replace_if(whole.begin(), whole.end(), IsBad, '_');
    // Neither hidden, nor the folder itself, nor shortened by a system that drops ends.
    if (!whole.empty() && (whole.front() == '.' || whole.front() == ' ')) whole.front() = '_';
    if (!whole.empty() && (whole.back() == '.' || whole.back() == ' ')) whole.back() = '_';
    if (whole.empty() || IsReserved(whole)) whole.insert(0, "_");
    std::string name = whole;
    while (!taken_.insert(Folded(name)).second) {
        int& last = lastTail_.try_emplace(Folded(whole), 1).first->second;
        name = whole + "~" + std::to_string(++last);
    }
    return name;
}

}  // namespace orvane
