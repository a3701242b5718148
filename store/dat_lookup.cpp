#include "store/dat_lookup.h"

#include "store/guarded_alloc.h"

namespace orvane {
namespace {

std::uint64_t HashID(std::int32_t datID) { return MixKey(PairKey(0, datID)); }

}  // namespace

std::unique_ptr<DatLookup> DatLookup::Build(const GrowArray<DigDat>& dats) {
    std::unique_ptr<DatLookup> lookup = NewGuarded<DatLookup>();
    if (lookup == nullptr || !lookup->table_.Reserve(dats.size())) return nullptr;
    for (std::size_t i = 0; i < dats.size(); ++i) {
        if (!lookup->Append(dats[i].datID, static_cast<std::int32_t>(i))) return nullptr;
    }
    return lookup;
}

bool DatLookup::Append(std::int32_t datID, std::int32_t pos) {
    const std::uint64_t hash = HashID(datID);
    if (PosTable::Slot* slot = table_.Find(hash)) {
        slot->last = pos;
        return true;
    }
    if (!table_.Reserve(idCnt_ + 1)) return false;
    table_.Insert(hash, pos);
    ++idCnt_;
    if (datID > maxID_) maxID_ = datID;
    return true;
}

std::int32_t DatLookup::First(std::int32_t datID) const {
    const PosTable::Slot* slot = table_.Find(HashID(datID));
    return slot == nullptr ? -1 : slot->first;
}

std::int32_t DatLookup::Last(std::int32_t datID) const {
    const PosTable::Slot* slot = table_.Find(HashID(datID));
    return slot == nullptr ? -1 : slot->last;
}

}  // namespace orvane
