// What the reader of images takes from itself before it looks at the first of them.
#pragma once

namespace orvane {

/// Beyond what the program takes at its start it may have this much address space.
inline constexpr unsigned long long kReaderMemory_bytes = 2ull * 1024 * 1024 * 1024;

inline constexpr long long kReaderCache_bytes = 256 * 1024 * 1024;

/// What is left for decoders and pixels when the cache is full is as much again.
inline constexpr long long kMostReaderCache_bytes = static_cast<long long>(kReaderMemory_bytes / 2);

/// Holds GDAL's cache of blocks to kReaderCache_bytes, or to what the setting GDAL_CACHEMAX tells, kMostReaderCache_bytes at the
/// most.
void HoldCache();

/// Ends the program when the other side of the socket is gone, whatever it is doing then.
bool EndWithHost(int socket);

/// No sockets from now on, no file made longer or written, and of GDAL's drivers none that is a client of a network or a
/// database. Called after the drivers are there.
void KeepToLocalFiles();

/// As many descriptors as the system lets it have.
void RaiseDescriptors();

/// Whether as many more can be had, so that masks, overviews and parts of an image are not missing for want of them.
bool HasDescriptors(int count);

/// Out of the host's folder, so that a name that is not whole means the same whenever the reader was started.
void LeaveHostsFolder();

/// Holds the address space, where no sanitizer needs all of it, and leaves no image of the memory behind at a crash.
void LimitMemory();

}  // namespace orvane
