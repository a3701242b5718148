#include "fuzz/archive_input.h"

namespace {

using namespace orvane;

/// The input is the index; beside it stand a layer file and a data file that are sound.
class SetOfFiles : public MemoryFiles {
public:
    explicit SetOfFiles(std::string_view index) {
        static const MemoryFiles* const sound = MakeSound();
        files = sound->files;
        Put("m.Ovi", std::string(index));
    }

private:
    static std::string Header(std::string_view title) {
        std::string header = std::string(title) + "1.10";
        header.resize(kHeaderSize);
        return header;
    }
    static MemoryFiles* MakeSound() {
        auto* made = new MemoryFiles;
        std::string item(86, '\0');
        item[0] = 'A';
        std::string layer(1412, '\0');
        layer[0] = 'A';
        made->Put("m.Ovb", Header(kBinTitle) + item + item + item);
        made->Put("m.Ovl", Header(kLayerTitle) + layer);
        return made;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ArchiveInput input(data, size);
    SetOfFiles files(std::string_view(reinterpret_cast<const char*>(data) + (size > 0 ? 1 : 0), input.size_bytes));
    static const std::string kCodes[] = {"A", "B"};
    ArcFilter filter{0, 0, 0, 0, kCodes};
    if ((input.choice & 2) != 0) filter = {-10, -10, 10, 10, kCodes};

    IdxFile index;
    if (ArcReadIndex(files, "m.Ovi", index)) {
        GrowArray<IdxSelected> selected;
        Require(SelectIdxItems(index, filter, selected));
        for (std::size_t i = 0; i < selected.size(); ++i) {
            Require(selected[i].number >= 0 && selected[i].number < index.nItems);
            Require(i == 0 || selected[i - 1].number < selected[i].number);
        }
    }
    static CDigMem store;
    StartStore(store);
    ArcRead(store, files, "m.Ovb", filter);
    CheckStore(store, 1000 + input.size_bytes);
    return 0;
}
