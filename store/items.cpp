// Adding, finding and deleting items.
#include <algorithm>
#include <limits>
#include <utility>

#include "store/cdigmem.h"
#include "store/dat_lookup.h"
#include "store/item_bounds.h"

namespace orvane {
namespace {

/// The told capacity grows by so many records.
constexpr std::int32_t kDatStep = 1000;

/// The first item with the ID on the way from `begin` to before `end`, or -1.
std::int32_t WalkUp(const DigBlock& block, std::int32_t datID, std::int32_t begin, std::int32_t end) {
    for (std::int32_t i = begin; i < end; ++i) {
        if (block.dats[static_cast<std::size_t>(i)].datID == datID) return i;
    }
    return -1;
}

/// The first item with the ID on the way down from before `begin` to `end`, or -1.
std::int32_t WalkDown(const DigBlock& block, std::int32_t datID, std::int32_t begin, std::int32_t end) {
    for (std::int32_t i = begin; i-- > end;) {
        if (block.dats[static_cast<std::size_t>(i)].datID == datID) return i;
    }
    return -1;
}

}  // namespace

// Both searches walk a little before they pay for a lookup: hosts mostly ask for the item that they have just added.

std::int32_t CDigMem::FindDatUp(const DigBlock& block, std::int32_t datID) {
    const std::int32_t nearEnd = (std::min)(block.datCnt, DatLookup::kWalkedItems);
    if (block.datLookup == nullptr) {
        const std::int32_t pos = WalkUp(block, datID, 0, nearEnd);
        if (pos >= 0 || nearEnd == block.datCnt) return pos;
        block.datLookup = DatLookup::Build(block.dats);
    }
    if (block.datLookup == nullptr) return WalkUp(block, datID, nearEnd, block.datCnt);
    return block.datLookup->First(datID);
}

std::int32_t CDigMem::FindDatDown(const DigBlock& block, std::int32_t datID) {
    const std::int32_t nearEnd = (std::max)(block.datCnt - DatLookup::kWalkedItems, 0);
    if (block.datLookup == nullptr) {
        const std::int32_t pos = WalkDown(block, datID, block.datCnt, nearEnd);
        if (pos >= 0 || nearEnd == 0) return pos;
        block.datLookup = DatLookup::Build(block.dats);
    }
    if (block.datLookup == nullptr) return WalkDown(block, datID, nearEnd, 0);
    return block.datLookup->Last(datID);
}

const DigDat* CDigMem::FindDat(const DigBlock& block, std::int32_t datID) {
    const std::int32_t pos = FindDatUp(block, datID);
    return pos < 0 ? nullptr : &block.dats[static_cast<std::size_t>(pos)];
}

DigDat* CDigMem::FindDatForChange(const Found& found, std::int32_t datID) {
    return found.block == nullptr ? nullptr : const_cast<DigDat*>(FindDat(*found.block, datID));
}

bool CDigMem::AppendDat(DigBlock& block, DigDat&& dat) {
    if (block.datCnt > (std::numeric_limits<std::int32_t>::max)() - kDatStep) return false;
    const std::int32_t datID = dat.datID;
    // Doubling a long array would hold three times what is in it for a moment.
    constexpr std::size_t kLongArray = 65536;
    const std::size_t cnt = block.dats.size();
    if (cnt >= kLongArray && cnt == block.dats.capacity() && !block.dats.Reserve(cnt + cnt / 4)) return false;
    CheckItemRect(dat);
    if (!block.dats.PushBack(std::move(dat))) return false;
    if (block.datMax < block.datCnt + 1) block.datMax += kDatStep;
    if (block.datLookup != nullptr && !block.datLookup->Append(datID, block.datCnt)) block.datLookup.reset();
    ++block.datCnt;
    return true;
}

bool CDigMem::AddDigDat(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t lineTag) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr) return false;
    DigDat dat;
    dat.datID = datID;
    dat.lineTag = lineTag;
    dat.clipFlg = 1;
    dat.rect = kEmptyItemRect;
    return AppendDat(*found.block, std::move(dat));
}

bool CDigMem::DelDigDat(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr) return false;
    DigBlock& block = *found.block;
    // Whoever deletes many begins at the end, where the lookup stays good. Elsewhere it would be dropped a moment later, so none
    // is made for the search.
    const bool mayBeLast =
        block.datCnt > DatLookup::kWalkedItems && block.dats[static_cast<std::size_t>(block.datCnt) - 1].datID == datID;
    if (mayBeLast && block.datLookup == nullptr) block.datLookup = DatLookup::Build(block.dats);
    const std::int32_t pos = block.datLookup != nullptr ? block.datLookup->First(datID) : WalkUp(block, datID, 0, block.datCnt);
    if (pos < 0) return false;
    if (block.datLookup != nullptr && pos == block.datCnt - 1) {
        block.datLookup->DropLast(datID);
    } else {
        block.datLookup.reset();
    }
    block.dats.EraseAt(static_cast<std::size_t>(pos));
    --block.datCnt;
    if (block.datCnt == 0) {
        block.dats.Clear();
        block.datMax = 0;
    }
    return true;
}

bool CDigMem::ReorderDats(std::int32_t block, std::span<std::int32_t> order) {
    if (block < 0 || block >= BlockCnt()) return false;
    DigBlock& changed = MutableBlock(block);
    const std::size_t count = order.size();
    if (count != changed.dats.size()) return false;
    // A place that was told is marked at its own entry, by a number below 0.
    const auto plain = [](std::int32_t entry) { return entry < 0 ? ~entry : entry; };
    for (const std::int32_t entry : order) {
        if (entry < 0 || static_cast<std::size_t>(entry) >= count) return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::int32_t& mark = order[static_cast<std::size_t>(plain(order[i]))];
        if (mark < 0) return false;
        mark = ~mark;
    }
    for (std::int32_t& entry : order) entry = plain(entry);
    changed.datLookup.reset();
    // Along each circle of places, the item that was taken from the first one ends at the last.
    for (std::size_t start = 0; start < count; ++start) {
        std::size_t at = start;
        while (static_cast<std::size_t>(order[at]) != start) {
            const auto from = static_cast<std::size_t>(order[at]);
            std::swap(changed.dats[at], changed.dats[from]);
            order[at] = static_cast<std::int32_t>(at);
            at = from;
        }
        order[at] = static_cast<std::int32_t>(at);
    }
    return true;
}

std::int32_t CDigMem::NextDatID(const DigBlock& block) {
    if (block.datLookup == nullptr && block.datCnt > DatLookup::kWalkedItems) block.datLookup = DatLookup::Build(block.dats);
    std::int32_t maxID = block.datLookup != nullptr ? block.datLookup->MaxID() : -1;
    if (maxID < 0) {
        maxID = 0;
        for (const DigDat& dat : block.dats) maxID = (std::max)(maxID, dat.datID);
        if (block.datLookup != nullptr) block.datLookup->NoteMaxID(maxID);
    }
    return maxID == (std::numeric_limits<std::int32_t>::max)() ? -1 : maxID + 1;
}

std::int32_t CDigMem::FreeDigDatID(std::string_view code, std::int32_t meshNo, bool& found) {
    const FoundConst at = FindForRead(code, meshNo);
    found = at.block != nullptr;
    return found ? NextDatID(*at.block) : 0;
}

bool CDigMem::SetDigDatSubLayer(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t subLayNo) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr) return false;
    if (subLayNo > 0 && FindSubLay(*found.layer, subLayNo) == nullptr) return false;
    if (DigDat* dat = FindDatForChange(found, datID)) dat->subLayNo = subLayNo;
    return true;
}

bool CDigMem::SetDatSubLayerEx(std::string_view code, std::int32_t meshNo, std::span<const std::int32_t> datID,
                               std::span<const std::int32_t> subLayNo) {
    const Found found = FindForChange(code, meshNo);
    bool any = false;
    for (std::size_t i = 0; i < datID.size() && i < subLayNo.size(); ++i) {
        DigDat* dat = FindDatForChange(found, datID[i]);
        if (dat == nullptr) continue;
        dat->subLayNo = subLayNo[i];
        any = true;
    }
    return any;
}

bool CDigMem::SetDigDatInfoEx(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t lineTag, bool active) {
    DigDat* dat = FindDatForChange(FindForChange(code, meshNo), datID);
    if (dat == nullptr) return false;
    dat->lineTag = lineTag;
    dat->active = active;
    return true;
}

}  // namespace orvane
