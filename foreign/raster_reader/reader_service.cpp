#include "foreign/raster_reader/reader_service.h"

#include <cpl_error.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include "foreign/gdal_errors.h"
#include "foreign/raster_reader/reader_fences.h"

namespace orvane {

namespace {

/// The file itself, and those with its masks, overviews and descriptions.
constexpr int kDescriptorsOfImage = 16;

void Tell(std::string_view reason, ReaderAnswer& answer) {
    const std::size_t length = (std::min)(reason.size(), sizeof answer.reason);
    std::copy_n(reason.data(), length, answer.reason);
    answer.reasonLength = static_cast<std::uint32_t>(length);
}

}  // namespace

ReaderAnswer ReaderService::Answer(const ReaderQuestion& question, const std::string& name) {
    ReaderAnswer answer;
    try {
        const GdalErrors errors;
        answer.done = Do(question, name, answer) ? 1 : 0;
        if (answer.done == 0) Tell(errors.LastFailure(), answer);
    } catch (...) {
        answer = {};
        Tell("there is not enough memory for it", answer);
    }
    return answer;
}

bool ReaderService::Do(const ReaderQuestion& question, const std::string& name, ReaderAnswer& answer) {
    if (question.ask == ReaderAsk::Open) return Open(question.image, name, answer);
    const auto found = images_.find(question.image);
    if (found == images_.end()) return false;
    RasterImage& image = *found->second;
    const std::size_t count = PixelsOf(question.window);
    switch (question.ask) {
        case ReaderAsk::Cost:
            answer.cost_bytes = image.Cost_bytes(question.window);
            return true;
        case ReaderAsk::Read:
            return count <= pixels_.size() && image.Read(question.window, pixels_.first(count));
        case ReaderAsk::Close:
            images_.erase(found);
            return true;
        case ReaderAsk::Open:
            break;
    }
    return false;
}

bool ReaderService::Open(std::uint32_t number, const std::string& name, ReaderAnswer& answer) {
    if (!HasDescriptors(kDescriptorsOfImage)) {
        CPLError(CE_Failure, CPLE_AppDefined, "too many images are open");
        return false;
    }
    std::unique_ptr<RasterImage> image = RasterImage::Open(name);
    if (image == nullptr) return false;
    answer.width_px = image->Width_px();
    answer.height_px = image->Height_px();
    if (const std::optional<Affine> placement = image->OwnPlacement()) {
        answer.hasPlacement = 1;
        answer.placement = *placement;
    }
    images_.insert_or_assign(number, std::move(image));
    return true;
}

void ServeReader(int socket, ReaderMemory& memory) {
    ReaderService service(memory.pixels);
    std::vector<char> message(sizeof(ReaderQuestion) + kMaxImageName);
    for (;;) {
        const ssize_t length = recv(socket, message.data(), message.size(), 0);
        if (length < 0 && errno == EINTR) continue;
        if (length < static_cast<ssize_t>(sizeof(ReaderQuestion))) return;
        ReaderQuestion question;
        std::memcpy(&question, message.data(), sizeof question);
        memory.begun.store(question.number);
        const std::string name(message.data() + sizeof question, static_cast<std::size_t>(length) - sizeof question);
        if (name.size() != question.nameLength) return;
        const ReaderAnswer answer = service.Answer(question, name);
        if (send(socket, &answer, sizeof answer, MSG_NOSIGNAL) != static_cast<ssize_t>(sizeof answer)) return;
    }
}

}  // namespace orvane
