// GDAL's sight of the disk while it reads images that nobody vouches for: plain files and folders, and no writing.
#pragma once

namespace orvane {

/// From now on this holds for every name of the disk in this program: what is a pipe, a socket, a device, or lies in /proc or
/// /sys, is as if it were not there, so that nothing is waited for, and no file is written, made or removed. Libraries of formats
/// that open files by themselves are not held by it. Again does nothing.
void InstallPlainFiles();

}  // namespace orvane
