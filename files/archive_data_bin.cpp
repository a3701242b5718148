// Reading the binary data file.
#include <limits>
#include <utility>

#include "files/archive_parts.h"
#include "files/archive_store.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

static_assert(sizeof(DigPnt) == kPntSize, "points are read and written as they stand");

enum class Step {
    Stored,
    End,     ///< nothing more that could be stored
    Refused  ///< the whole read has failed
};

class BinReader {
public:
    BinReader(CDigMem& store, InputFile& file, ArcVersion version, ArcWatch& watch)
        : source_(file), version_(version), watch_(watch), storer_(store) {
        source_.Seek(kHeaderSize);
    }

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
            source_.Seek(static_cast<std::uint64_t>(std::int64_t{item.offset}));
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
        if (!ReadHead(head) || !ReadPoints(head, dat) || !ReadMesh(head, dat) || !ReadStr(head, dat)) return Step::End;
        const StoreOutcome outcome = storer_.Store(head, std::move(dat));
        if (outcome != StoreOutcome::Stored) return outcome == StoreOutcome::IndexFull ? Step::Refused : Step::End;
        bool asked = false;
        const bool goesOn = watch_.GoesOn([this] { return Done(); }, asked);
        if (asked) storer_.Forget();
        return goesOn ? Step::Stored : Step::Refused;
    }

    double Done() const { return static_cast<double>(source_.Position()) / static_cast<double>(source_.Size_bytes()); }

    bool ReadHead(DatRec& head) {
        const unsigned char* record = source_.Take(DatRecSize(version_));
        if (record == nullptr) return false;
        FieldReader fields(record);
        head.code.Set(fields.Text(kCodeField));
        fields.Get(head.meshNo);
        fields.Get(head.datID);
        fields.Get(head.rect.left);
        fields.Get(head.rect.top);
        fields.Get(head.rect.right);
        fields.Get(head.rect.bottom);
        fields.Get(head.pntCnt);
        fields.Get(head.lineTag);
        if (version_ == ArcVersion::V110) head.hasMesh = fields.Flag() != 0;
        head.hasStr = fields.Flag() != 0;
        return head.pntCnt >= 0;
    }

    /// Whether the file goes on for so many records of a size.
    bool Holds(std::int32_t count, std::size_t size) const {
        return count >= 0 && static_cast<std::uint64_t>(count) * size <= source_.Remaining();
    }

    bool ReadPoints(const DatRec& head, DigDat& dat) {
        if (head.pntCnt == 0) return true;
        const auto count = static_cast<std::size_t>(head.pntCnt);
        return Holds(head.pntCnt, kPntSize) && dat.pnts.Resize(0, count, false) && source_.ReadNumbers(&dat.pnts[0].x, 3 * count);
    }

    bool ReadMesh(const DatRec& head, DigDat& dat) {
        if (!head.hasMesh) return true;
        const unsigned char* record = source_.Take(kMeshRecSize);
        if (record == nullptr) return false;
        FieldReader fields(record);
        std::unique_ptr<DigMeshAttr> mesh = NewGuarded<DigMeshAttr>();
        if (mesh == nullptr) return false;
        fields.Get(mesh->hcnt);
        fields.Get(mesh->vcnt);
        mesh->arrayCnt = head.pntCnt;
        const auto count = static_cast<std::size_t>(head.pntCnt);
        if (!Holds(head.pntCnt, sizeof(std::uint8_t) + sizeof(std::uint32_t))) return false;
        if (!mesh->useFlag.Resize(0, count, false) || !source_.ReadNumbers(mesh->useFlag.Get(), count)) return false;
        if (!mesh->meshColor.Resize(0, count, false) || !source_.ReadNumbers(mesh->meshColor.Get(), count)) return false;
        dat.meshAttr = std::move(mesh);
        return true;
    }

    bool ReadStr(const DatRec& head, DigDat& dat) {
        if (!head.hasStr) return true;
        const unsigned char* record = source_.Take(kStrRecSize);
        std::unique_ptr<DigStr> str = NewGuarded<DigStr>();
        if (record == nullptr || str == nullptr) return false;
        FieldReader fields(record);
        fields.Get(str->x);
        fields.Get(str->y);
        fields.Get(str->z);
        if (!AssignText(str->fntname, fields.Text(kFontField))) return false;
        str->size = fields.Get<std::int8_t>();
        str->style = fields.Get<std::int8_t>();
        str->fill = fields.Flag();
        str->pos = fields.Get<std::int8_t>();
        str->uline = fields.Flag();
        str->strike = fields.Flag();
        fields.Get(str->angle);
        fields.Get(str->fcolor);
        fields.Get(str->bcolor);
        if (!ReadText(fields.Get<std::int32_t>(), str->text)) return false;
        dat.str = std::move(str);
        return true;
    }

    bool ReadText(std::int32_t textLen, std::string& text) {
        if (!Holds(textLen, 1)) return false;
        const auto size = static_cast<std::size_t>(textLen);
        if (size > text_.size() && !text_.Resize(size)) return false;
        if (!source_.Read(text_.data(), size)) return false;
        return AssignText(text, TillZero(std::string_view(text_.data(), size)));
    }

    PackedSource source_;
    ArcVersion version_;
    ArcWatch& watch_;
    ItemStorer storer_;
    GrowArray<char> text_;
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

bool ArcReadBinSel100(CDigMem& store, Files& files, std::string_view name, std::span<const IdxSelected> selected, ArcWatch& watch) {
    return ReadBinSel(store, files, name, ArcVersion::V100, selected, watch);
}

bool ArcReadBinSel110(CDigMem& store, Files& files, std::string_view name, std::span<const IdxSelected> selected, ArcWatch& watch) {
    return ReadBinSel(store, files, name, ArcVersion::V110, selected, watch);
}

}  // namespace orvane
