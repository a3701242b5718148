#include "store/dat_lookup.h"

#include "store/guarded_alloc.h"

namespace orvane {
namespace {

std::uint64_t HashID(std::int32_t datID) { return MixKey(PairKey(0, datID)); }

}  // namespace

template <class Record>
std::unique_ptr<DatLookup> DatLookup::BuildFrom(const GrowArray<Record>& records, std::int32_t Record::*id) {
    std::unique_ptr<DatLookup> lookup = NewGuarded<DatLookup>();
    if (lookup == nullptr || !lookup->table_.Reserve(records.size())) return nullptr;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!lookup->Append(records[i].*id, static_cast<std::int32_t>(i))) return nullptr;
    }
    return lookup;
}

std::unique_ptr<DatLookup> DatLookup::Build(const GrowArray<DigDat>& dats) { return BuildFrom(dats, &DigDat::datID); }

std::unique_ptr<DatLookup> DatLookup::Build(const GrowArray<OrgDat>& orgDats) { return BuildFrom(orgDats, &OrgDat::ID); }

std::unique_ptr<DatLookup> DatLookup::Build(const GrowArray<SubLayDef>& subLays) {
    return BuildFrom(subLays, &SubLayDef::subLayNo);
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
    if (maxID_ >= 0 && datID > maxID_) maxID_ = datID;
    return true;
}

void DatLookup::DropLast(std::int32_t datID) {
    table_.Erase(HashID(datID));
    --idCnt_;
    if (datID == maxID_) maxID_ = -1;
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
