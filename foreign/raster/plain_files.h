// GDAL's sight of the disk while it reads an image that nobody vouches for: plain files and folders, and no writing.
#pragma once

#include <string>

namespace orvane {

/// The name by which GDAL opens a file or folder of the system, and all that it finds by that name beside it or in it: other
/// parts of the image, world files, overviews. What is a pipe, a socket or a device is as if it were not there, so that nothing
/// is waited for; so is an overview or a mask that is no TIFF, which might name any source, the description of either, and
/// a description beyond kMaxDescription_bytes. No name of the system can be taken for a connection string.
std::string PlainName(const std::string& systemName);

inline constexpr long long kMaxDescription_bytes = 64 * 1024 * 1024;

/// Makes these names known to GDAL; again does nothing.
void InstallPlainFiles();

}  // namespace orvane
