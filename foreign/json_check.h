// Whether a GeoJSON file came onto the disk as a whole.
#pragma once

#include <cstdint>
#include <filesystem>

namespace orvane {

/// Number of objects in the lists of a JSON file's outermost object, and -1 when the file does not end where that object does.
/// Reads it once from its beginning to its end, in little memory; numbers and words are not looked at.
std::int64_t CountListedObjects(const std::filesystem::path& file);

}  // namespace orvane
