// Reading the text data file.
#include <utility>

#include "files/archive_items.h"
#include "files/archive_parts.h"
#include "files/archive_store.h"
#include "platform/file_names.h"

namespace orvane {
namespace {

class TextReader {
public:
    TextReader(CDigMem& store, InputFile& file, ArcVersion version, ArcWatch& watch)
        : items_(file, version), version_(version), watch_(watch), storer_(store) {}

    bool ReadAll() {
        std::string_view line;
        if (!items_.NextLine(line) || !IsTitle(line)) return false;
        bool any = false;
        for (;;) {
            DatRec head;
            DigDat dat;
            if (items_.Next(head, dat) != ItemStep::Item) return any;
            const StoreOutcome outcome = storer_.Store(head, std::move(dat));
            if (outcome == StoreOutcome::IndexFull) return false;
            if (outcome != StoreOutcome::Stored) return any;
            any = true;
            bool asked = false;
            if (!watch_.GoesOn([this] { return items_.Done(); }, asked)) return false;
            if (asked) storer_.Forget();
        }
    }

private:
    /// The first line of version 1.00 is held against the title as a whole, so that what is written in that version, with the
    /// version behind the title, is never read.
    bool IsTitle(std::string_view line) const {
        return EqualAnyCase(version_ == ArcVersion::V100 ? line : line.substr(0, kTextTitle.size()), kTextTitle);
    }

    TextItems items_;
    ArcVersion version_;
    ArcWatch& watch_;
    ItemStorer storer_;
};

bool ReadText(CDigMem& store, Files& files, std::string_view name, ArcVersion version, ArcWatch& watch) {
    const std::unique_ptr<InputFile> file = files.OpenRead(name);
    return file != nullptr && TextReader(store, *file, version, watch).ReadAll();
}

}  // namespace

bool ArcReadText100(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch) {
    return ReadText(store, files, name, ArcVersion::V100, watch);
}

bool ArcReadText110(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch) {
    return ReadText(store, files, name, ArcVersion::V110, watch);
}

}  // namespace orvane
