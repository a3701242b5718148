// What the tests of the exchange file share: files in memory that can be written, a store, and files by their lines.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "files/exchange.h"
#include "tests/support/memory_files.h"
#include "tests/support/store_dump.h"

namespace orvane {

/// Files that may be written too. A file ends up under its name when it is closed.
class ExchangeFiles : public MemoryFiles {
public:
    class Output : public OutputFile {
    public:
        Output(ExchangeFiles& files, std::string name) : files_(files), name_(std::move(name)) {}
        bool Write(const void* data, std::size_t size) override {
            ++files_.writeCnt;
            const std::size_t room = files_.room_bytes - (std::min)(files_.room_bytes, content_.size());
            content_.append(static_cast<const char*>(data), (std::min)(room, size));
            return size <= room;
        }
        bool Close() override {
            files_.Put(name_, content_);
            ++files_.closeCnt;
            return files_.closes;
        }

    private:
        ExchangeFiles& files_;
        std::string name_;
        std::string content_;
    };

    std::unique_ptr<OutputFile> Create(std::string_view name) override {
        ++createCnt;
        if (refuses) return nullptr;
        return std::make_unique<Output>(*this, std::string(name));
    }

    std::size_t room_bytes = (std::numeric_limits<std::size_t>::max)();  ///< what a file may take
    bool closes = true;
    bool refuses = false;
    std::int32_t createCnt = 0;
    std::int32_t writeCnt = 0;
    std::int32_t closeCnt = 0;
};

/// The lines of a file, each with its end.
inline std::string Lines(std::initializer_list<std::string_view> lines, std::string_view end = "\n") {
    std::string text;
    for (const std::string_view line : lines) text.append(line).append(end);
    return text;
}

class ExchangeTest : public ::testing::Test {
protected:
    ExchangeTest() { store.Init(); }
    ~ExchangeTest() override { ArrayFaults::Clear(); }

    bool Read(std::string content, const ExchangePump& pump = {}) {
        files.Put("map.txt", std::move(content));
        return ExchRead(store, files, "map.txt", pump);
    }
    /// The written file; a failed save gives "failed".
    std::string Written(std::string_view version = "1.01", const std::vector<std::string_view>& codes = {}) {
        return ExchWrite(store, files, "out.txt", version, codes) ? files.files["out.txt"].content : "failed";
    }
    const LayerDef& LayerOf(std::string_view code) { return store.Layer(store.FindLayDef(code)); }
    const DigBlock& BlockOf(std::string_view code, std::int32_t meshNo) {
        return store.Block(store.FindBlock(code, meshNo).block);
    }
    const SubLayDef& Sub(std::string_view code, std::int32_t subLayNo) { return *CDigMem::FindSubLay(LayerOf(code), subLayNo); }
    const DigDat& Item(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
        return *store.FindDat(code, meshNo, datID);
    }
    const DigStr& TextOf(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
        return *Item(code, meshNo, datID).str;
    }

    CDigMem store;
    ExchangeFiles files;
};

// Heads that most files of the tests begin with: a layer "A" of lines with its block 5, in each version.
inline constexpr std::string_view kNamedHead = "ORVFH1.01";
inline constexpr std::string_view kPlainHead = "ORVFH1.00";
inline constexpr std::string_view kNamedLayer = "LY,A,\"\",3,2,255,0,1,0,0,1,1,1,1,1,0,0,\"\",\"\",0,0,0,0.000000,0.000000";
inline constexpr std::string_view kPlainLayer = "LY,A,3,2,255,0,1,0,0,1,1,1,1,1,0,0,\"\",\"\",0,0,0,0.000000,0.000000";
inline constexpr std::string_view kBlock = "GH,A,1,5,0,0,0.000000,0.000000,0.000000,0.000000,0.000000,0.000000,0,\"\"";

}  // namespace orvane
