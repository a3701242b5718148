// Files in memory that can be written, on a disk that may be full or break.
#pragma once

#include <limits>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "tests/support/memory_files.h"

namespace orvane {

class WritableFiles : public MemoryFiles {
public:
    std::unique_ptr<OutputFile> Create(std::string_view name) override {
        ++createCnt;
        if (refused.contains(std::string(name))) return nullptr;
        files[std::string(name)] = {};
        return std::make_unique<Output>(*this, std::string(name));
    }
    const std::string& Content(const std::string& name) { return files[name].content; }
    bool Has(const std::string& name) const { return files.contains(name); }

    std::set<std::string> refused;                                         ///< cannot be created
    std::size_t room_bytes = (std::numeric_limits<std::size_t>::max)();    ///< that all writes together may take
    std::int32_t writesLeft = (std::numeric_limits<std::int32_t>::max)();  ///< before one fails
    std::int32_t closesLeft = (std::numeric_limits<std::int32_t>::max)();  ///< before one fails
    std::int32_t createCnt = 0;
    std::int32_t writeCnt = 0;
    std::int32_t closeCnt = 0;

private:
    class Output : public OutputFile {
    public:
        Output(WritableFiles& owner, std::string name) : owner_(owner), name_(std::move(name)) {}
        bool Write(const void* data, std::size_t size) override {
            ++owner_.writeCnt;
            if (owner_.writesLeft-- <= 0) return false;
            const std::size_t taken = (std::min)(size, owner_.room_bytes);
            owner_.room_bytes -= taken;
            owner_.files[name_].content.append(static_cast<const char*>(data), taken);
            return taken == size;
        }
        bool Close() override {
            ++owner_.closeCnt;
            return owner_.closesLeft-- > 0;
        }

    private:
        WritableFiles& owner_;
        std::string name_;
    };
};

}  // namespace orvane
