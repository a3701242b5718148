// Reading the binary data file.
#include <utility>

#include "files/archive_items.h"
#include "files/archive_parts.h"
#include "files/archive_store.h"

namespace orvane {
namespace {

enum class Step {
    Stored,
    End,     ///< nothing more that could be stored
    Refused  ///< the whole read has failed
};

class BinReader {
public:
    BinReader(CDigMem& store, InputFile& file, ArcVersion version, ArcWatch& watch)
        : items_(file, version), watch_(watch), storer_(store) {}

    /// The items from here to the end of the file.
    bool ReadAll() {
        Step step = Step::End;
        bool any = false;
        while ((step = ReadNext()) == Step::Stored) any = true;
        return any && step != Step::Refused;
    }

    bool ReadSelected(std::span<const IdxSelected> selected) {
        bool any = false;
        for (const IdxSelected& item : selected) {
            // No item begins before the first one; a negative offset would be one far behind the end.
            items_.Seek(static_cast<std::uint64_t>(std::int64_t{item.offset}));
            const Step step = ReadNext();
            if (step == Step::Refused) return false;
            if (step == Step::End) break;
            any = true;
        }
        return any;
    }

private:
    Step ReadNext() {
        DatRec head;
        DigDat dat;
        if (items_.Next(head, dat) != ItemStep::Item) return Step::End;
        const StoreOutcome outcome = storer_.Store(head, std::move(dat));
        if (outcome != StoreOutcome::Stored) return outcome == StoreOutcome::IndexFull ? Step::Refused : Step::End;
        bool asked = false;
        const bool goesOn = watch_.GoesOn([this] { return items_.Done(); }, asked);
        if (asked) storer_.Forget();
        return goesOn ? Step::Stored : Step::Refused;
    }

    BinItems items_;
    ArcWatch& watch_;
    ItemStorer storer_;
};

template <class Read>
bool ReadBin(CDigMem& store, Files& files, std::string_view name, ArcVersion version, ArcWatch& watch, Read read) {
    const std::unique_ptr<InputFile> file = files.OpenRead(name);
    if (file == nullptr || !HasTitle(*file, kBinTitle)) return false;
    BinReader reader(store, *file, version, watch);
    return read(reader);
}

bool ReadBinAll(CDigMem& store, Files& files, std::string_view name, ArcVersion version, ArcWatch& watch) {
    return ReadBin(store, files, name, version, watch, [](BinReader& reader) { return reader.ReadAll(); });
}

bool ReadBinSel(CDigMem& store, Files& files, std::string_view name, ArcVersion version, std::span<const IdxSelected> selected,
                ArcWatch& watch) {
    return ReadBin(store, files, name, version, watch, [=](BinReader& reader) { return reader.ReadSelected(selected); });
}

}  // namespace

bool ArcReadBin100(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch) {
    return ReadBinAll(store, files, name, ArcVersion::V100, watch);
}

bool ArcReadBin110(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch) {
    return ReadBinAll(store, files, name, ArcVersion::V110, watch);
}

bool ArcReadBinSel100(CDigMem& store, Files& files, std::string_view name, std::span<const IdxSelected> selected,
                      ArcWatch& watch) {
    return ReadBinSel(store, files, name, ArcVersion::V100, selected, watch);
}

bool ArcReadBinSel110(CDigMem& store, Files& files, std::string_view name, std::span<const IdxSelected> selected,
                      ArcWatch& watch) {
    return ReadBinSel(store, files, name, ArcVersion::V110, selected, watch);
}

}  // namespace orvane
