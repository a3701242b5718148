#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "files/exchange.h"
#include "fuzz/one_file.h"

namespace {

using namespace orvane;

/// Reads one text and keeps what is written.
class WrittenFile : public OneFile {
public:
    WrittenFile() : OneFile(nullptr, 0) {}

    class Output : public OutputFile {
    public:
        explicit Output(std::string& content) : content_(content) {}
        bool Write(const void* data, std::size_t size) override {
            content_.append(static_cast<const char*>(data), size);
            return true;
        }
        bool Close() override { return true; }

    private:
        std::string& content_;
    };

    std::unique_ptr<OutputFile> Create(std::string_view) override { return std::make_unique<Output>(content); }
    std::unique_ptr<InputFile> OpenRead(std::string_view, OpenError*) override {
        return std::make_unique<MemoryInputFile>(content);
    }

    std::string content;
};

/// What the others rely on, touched value by value.
void CheckStore(CDigMem& store, std::size_t size) {
    std::size_t records = 0;
    double sum = 0;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        Require(static_cast<std::size_t>(block.datCnt) == block.dats.size() && block.datCnt <= block.datMax);
        Require(block.GX - block.GX == 0 && block.GY - block.GY == 0);
        for (const DigDat& dat : block.dats) {
            Require(dat.pntCnt >= 0 && (dat.pntCnt == 0 || dat.pnts));
            Require(dat.subLayNo >= 0);
            for (std::int32_t p = 0; p < dat.pntCnt; ++p) {
                const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(p)];
                Require(pnt.x - pnt.x == 0 && pnt.y - pnt.y == 0 && pnt.z - pnt.z == 0);
                sum += pnt.x;
            }
            records += 1 + static_cast<std::size_t>(dat.pntCnt);
            if (dat.str != nullptr) Require(dat.str->text.size() <= size && dat.str->fntname.size() <= size);
        }
    }
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        Require(layer.subLayCnt >= 0 && layer.subLayCnt <= layer.subLayMax);
        Require(static_cast<std::size_t>(layer.subLayCnt) == layer.subLays.size());
        records += layer.subLays.size();
    }
    // The shortest record is a point's key and the end of its line.
    Require(records <= size / 2 + 1);
    volatile double used = sum;
    static_cast<void>(used);
}

std::vector<std::string_view> SortedLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t size = (std::min)(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// Decimals beyond the sixth do not come back, nor a block without a layer. From the second save on nothing is lost any more; but
/// the order of layers with equal keys may go on changing.
void CheckReturns(CDigMem& store, std::string_view version) {
    static CDigMem copy;
    WrittenFile first;
    WrittenFile second;
    WrittenFile third;
    const bool written = ExchWrite(store, first, "", version);
    Require(written == (store.GetDigIndexCnt() > 0));
    copy.Init();
    if (!written || !ExchRead(copy, first, "")) return;
    CheckStore(copy, first.content.size());
    Require(ExchWrite(copy, second, "", version));
    copy.Init();
    Require(ExchRead(copy, second, "") && ExchWrite(copy, third, "", version));
    Require(SortedLines(third.content) == SortedLines(second.content));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static CDigMem store;
    store.Init();
    OneFile files(data, size);
    std::size_t pumped = 0;
    const bool done = ExchRead(store, files, "", [&](double fraction) {
        Require(fraction >= 0 && fraction <= 1);
        ++pumped;
        return true;
    });
    Require(pumped <= size);
    if (done) Require(store.BlockCnt() > 0);
    CheckStore(store, size);

    // Saves cost many times what the read does, so only inputs of some sizes pay for one.
    if (size % 8 == 0) CheckReturns(store, "1.00");
    if (size % 8 == 4) CheckReturns(store, "1.01");
    return 0;
}
