// An image that the reader has open.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "foreign/raster/raster_sources.h"
#include "foreign/raster/readable_image.h"
#include "foreign/raster/reader_process.h"

namespace orvane {

/// All images of the program, from whatever thread, are read by one process, those from any source by a second one; it is started
/// with the first image. Where it ended over an image, that image cannot be read any more; the others are opened again by a new
/// process when they are used next. A program that was forked off has a process of its own.
class RemoteImage final : public ReadableImage {
public:
    /// Null when it cannot be opened within RasterLimit_s; `reason` tells why. The name is the system's.
    static std::unique_ptr<RemoteImage> Open(std::string name, RasterSources sources, std::string& reason);
    ~RemoteImage() override;

    std::int32_t Width_px() const override { return facts_.width_px; }
    std::int32_t Height_px() const override { return facts_.height_px; }
    std::optional<Affine> OwnPlacement() const override;
    double Cost_bytes(const ImageWindow& window) override;
    bool Read(const ImageWindow& window, std::span<Rgba> out) override;

    /// From now on the reader may work RasterLimit_s for all that is asked until it is called again.
    void StartClock();
    /// Why what was asked last was not done.
    const std::string& Reason() const { return reason_; }

private:
    class Turn;

    RemoteImage(std::string name, RasterSources sources) : name_(std::move(name)), sources_(sources) {}
    /// With the process held, all three. What ended before it heard the question is asked once more.
    bool OpenThere(ReaderProcess& reader, ReaderAnswer& answer);
    bool Ask(ReaderProcess& reader, const ReaderQuestion& question, ReaderAnswer& answer);
    bool NotStarted();
    void CloseThere(ReaderProcess& reader);
    ReaderOutcome AskOnce(ReaderProcess& reader, ReaderQuestion question, std::string_view name, ReaderAnswer& answer);

    std::string name_;
    RasterSources sources_;
    std::chrono::steady_clock::duration left_{};
    ReaderDeadline deadline_;  ///< of the turn at hand
    ReaderAnswer facts_;
    std::uint32_t number_ = 0;
    std::uint64_t reader_ = 0;  ///< the process that has it open
    bool isLost_ = false;
    std::string reason_;
};

/// The process that reads images from such sources, 0 while there is none; for tests and measurements.
pid_t RasterReaderPid(RasterSources sources);
/// Ends the processes; the next use of an image starts new ones.
void EndRasterReaders();

}  // namespace orvane
