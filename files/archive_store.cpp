#include "files/archive_store.h"

#include <algorithm>
#include <utility>

namespace orvane {

std::int32_t ArcMakeBlock(CDigMem& store, const DatRec& head, std::int32_t& pos) {
    const std::int32_t cnt = store.BlockCnt();
    pos = store.MakeBareBlock(CDigMem::BlockPlace::LowestFreeSlot);
    if (pos < 0) return -1;
    DigBlock& block = store.MutableBlock(pos);
    block.code = head.code;
    block.meshNo = head.meshNo;
    block.minX = block.orgMinX = head.rect.left;
    block.minY = block.orgMinY = head.rect.top;
    block.maxX = block.orgMaxX = head.rect.right;
    block.maxY = block.orgMaxY = head.rect.bottom;
    return pos < cnt ? 0 : 1;
}

bool ArcAddDat(CDigMem& store, std::int32_t pos, const DatRec& head, DigDat&& dat) {
    dat.datID = head.datID;
    dat.lineTag = head.lineTag;
    dat.pntCnt = head.pntCnt;
    dat.clipFlg = 1;
    dat.rect = dat.orgRect = head.rect;
    return store.AppendReadDat(pos, std::move(dat));
}

std::int32_t ItemStorer::FindBlock(const DatRec& head) {
    if (lastPos_ >= 0) {
        const DigBlock& last = store_.Block(lastPos_);
        if (last.meshNo == head.meshNo && last.code == head.code.View()) return lastPos_;
    }
    lastPos_ = store_.FindBlock(head.code.View(), head.meshNo).block;
    return lastPos_;
}

StoreOutcome ItemStorer::Store(const DatRec& head, DigDat&& dat) {
    const std::int32_t pos = FindBlock(head);
    if (pos < 0) return StoreInNewBlock(head, std::move(dat));
    if (!ArcAddDat(store_, pos, head, std::move(dat))) return StoreOutcome::NoMemory;
    DigBlock& block = store_.MutableBlock(pos);
    block.minX = (std::min)(block.minX, static_cast<double>(head.rect.left));
    block.minY = (std::min)(block.minY, static_cast<double>(head.rect.top));
    block.maxX = (std::max)(block.maxX, static_cast<double>(head.rect.right));
    block.maxY = (std::max)(block.maxY, static_cast<double>(head.rect.bottom));
    return StoreOutcome::Stored;
}

StoreOutcome ItemStorer::StoreInNewBlock(const DatRec& head, DigDat&& dat) {
    // Asked before the block is made: one without an entry could never be found again.
    if (!store_.IndexHasRoom()) return StoreOutcome::IndexFull;
    std::int32_t pos = -1;
    const std::int32_t made = ArcMakeBlock(store_, head, pos);
    if (made < 0) return StoreOutcome::NoMemory;
    if (ArcAddDat(store_, pos, head, std::move(dat)) && store_.IndexBareBlock(pos)) return StoreOutcome::Stored;
    if (made == 0) {
        store_.FreeBareBlock(pos);
    } else {
        store_.DropBareBlock(pos);
    }
    return StoreOutcome::NoMemory;
}

}  // namespace orvane
