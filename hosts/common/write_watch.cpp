#include "hosts/common/write_watch.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace orvane {

class WriteWatch::Output : public OutputFile {
public:
    Output(WriteWatch& watch, std::string name, std::unique_ptr<OutputFile> file)
        : watch_(watch), name_(std::move(name)), file_(std::move(file)) {}

    bool Write(const void* data, std::size_t size) override {
        if (watch_.listener_ && !watch_.listener_({static_cast<const char*>(data), size})) return false;
        errno = 0;
        const bool written = file_->Write(data, size);
        if (!written) watch_.Note(name_, errno);
        return written;
    }
    bool Close() override {
        errno = 0;
        const bool closed = file_->Close();
        if (!closed) watch_.Note(name_, errno);
        return closed;
    }

private:
    WriteWatch& watch_;
    std::string name_;
    std::unique_ptr<OutputFile> file_;
};

std::unique_ptr<OutputFile> WriteWatch::Create(std::string_view name) {
    errno = 0;
    std::unique_ptr<OutputFile> file = files_.Create(name);
    if (file == nullptr) {
        Note(std::string(name), errno);
        return nullptr;
    }
    return std::make_unique<Output>(*this, std::string(name), std::move(file));
}

void WriteWatch::Note(const std::string& name, int error) {
    if (!failure_.empty()) return;
    const std::string cause = error == 0 ? "the system did not take all of it" : std::generic_category().message(error);
    failure_ = "cannot write " + name + ": " + cause;
}

}  // namespace orvane
