// The reader's side of what it is asked.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "foreign/raster/reader_protocol.h"
#include "foreign/raster_reader/raster_image.h"

namespace orvane {

class ReaderService {
public:
    /// What is read goes to `pixels`, of which there are ReadableImage::kMaxRead_px.
    explicit ReaderService(std::span<Rgba> pixels) : pixels_(pixels) {}

    /// What is thrown, which is want of memory, is answered as not done.
    ReaderAnswer Answer(const ReaderQuestion& question, const std::string& name);

private:
    bool Do(const ReaderQuestion& question, const std::string& name, ReaderAnswer& answer);
    bool Open(std::uint32_t number, const std::string& name, ReaderAnswer& answer);

    std::span<Rgba> pixels_;
    std::map<std::uint32_t, std::unique_ptr<RasterImage>> images_;
};

/// Answers what comes in by the socket until the other side is gone.
void ServeReader(int socket, ReaderMemory& memory);

}  // namespace orvane
