// The walk over the displayed items. A test may run host code through the progress callback, so nothing of the store is kept
// across one: the walk goes by positions and looks at each again.
#include "analysis/relation.h"

#include <new>

#include "analysis/relation_rules.h"
#include "analysis/relation_shape.h"
#include "store/item_bounds.h"

namespace orvane {

namespace {

/// What one item costs beside its points.
constexpr std::size_t kWorkOfItem = 8;

bool HasTests(std::int32_t layType) { return layType == kLayPoint || layType == kLayLine || layType == kLayPolygon; }

/// What drives one call of TestRelation.
class RelationWalk {
public:
    RelationWalk(CDigMem& store, const RelationView& view, const RelationQuery& query, std::int32_t op,
                 const RelationProgress& progress)
        : store_(store),
          view_(view),
          params_(store.view),
          source_(query),
          op_(op),
          resetCount_(store.ResetCount()),
          watch_([this, &progress] { return !progress || (progress(Done()) && store_.ResetCount() == resetCount_); }) {
        query_.watch = item_.watch = &watch_;
    }
    RelationWalk(const RelationWalk&) = delete;
    RelationWalk& operator=(const RelationWalk&) = delete;

    bool Run() {
        slotCnt_ = store_.Index().size();
        for (slotsLeft_ = slotCnt_; slotsLeft_ > 0; --slotsLeft_) {
            itemCnt_ = 0;
            TestSlot(slotsLeft_ - 1);
            if (watch_.Stopped()) return false;
        }
        return true;
    }

private:
    double Done() const {
        if (slotCnt_ == 0) return 1.0;
        const double inSlot = itemCnt_ == 0 ? 0.0 : 1.0 - static_cast<double>(itemsLeft_) / static_cast<double>(itemCnt_);
        return 1.0 - (static_cast<double>(slotsLeft_) - inSlot) / static_cast<double>(slotCnt_);
    }

    DeviceTransform ToDevice(double GX, double GY) const {
        return {params_, view_.viewX, view_.viewY, view_.pendX, view_.pendY, GX, GY};
    }

    /// Whether the slot takes part in the tests.
    bool Takes(const DigIndex& slot) const {
        if (slot.block < 0 || slot.block >= store_.BlockCnt()) return false;
        const LayerDef& layer = store_.Layer(slot.layer);
        return layer.dspFlg != 0 && layer.actFlg != 0 && store_.Block(slot.block).inView == 1 && HasTests(layer.layType);
    }

    /// The item at a position of the block; null when it is gone or takes no part.
    DigDat* ItemAt(const DigIndex& slot, std::size_t pos) const {
        if (slot.block >= store_.BlockCnt()) return nullptr;
        DigBlock& block = store_.MutableBlock(slot.block);
        if (pos >= block.dats.size()) return nullptr;
        DigDat& dat = block.dats[pos];
        return dat.drawnFlg == 0 || dat.clipFlg == 0 || dat.pntCnt < 1 ? nullptr : &dat;
    }

    void TestSlot(std::size_t pos) {
        const std::span<const DigIndex> index = store_.Index();
        if (pos >= index.size()) return;
        const DigIndex slot = index[pos];
        if (!Takes(slot) || !MakeQuery()) return;
        const DigBlock& block = store_.Block(slot.block);
        const DeviceTransform toDevice = ToDevice(block.GX, block.GY);
        const auto type = static_cast<ShapeType>(store_.Layer(slot.layer).layType);
        itemCnt_ = block.dats.size();
        for (itemsLeft_ = itemCnt_; itemsLeft_ > 0; --itemsLeft_) {
            const std::uint32_t asked = watch_.Asked();
            TestItem(slot, itemsLeft_ - 1, type, toDevice);
            if (watch_.Stopped()) return;
            if (watch_.Asked() != asked && !StillStands(slot, pos)) return;
        }
    }

    /// Whether the slot is as it was before host code ran.
    bool StillStands(const DigIndex& slot, std::size_t pos) {
        const std::span<const DigIndex> index = store_.Index();
        return pos < index.size() && index[pos] == slot && Takes(slot);
    }

    /// Without memory the query's points are tried again for the next block, and an item is passed over.
    bool MakeQuery() {
        if (hasQuery_) return true;
        if (!device_.Resize(source_.x.size())) return false;
        const DeviceTransform toDevice = ToDevice(0, 0);
        for (std::size_t i = 0; i < device_.size(); ++i) device_[i] = toDevice.ToDeviceF(source_.x[i], source_.y[i]);
        query_.Load(source_.type, {device_.data(), device_.size()});
        hasQuery_ = true;
        return true;
    }

    void TestItem(const DigIndex& slot, std::size_t pos, ShapeType type, const DeviceTransform& toDevice) {
        DigDat* const dat = ItemAt(slot, pos);
        if (dat == nullptr) return;
        if (!dat->pnts.InRect()) CheckItemRect(*dat);
        const auto pntCnt = static_cast<std::size_t>(dat->pntCnt);
        bool relates = false;
        try {
            item_.Load(type, {dat->pnts.Get(), pntCnt}, toDevice, dat->pnts.InRect() ? &dat->rect : nullptr);
            relates = Relates(op_, query_, item_);
        } catch (const std::bad_alloc&) {
            return;
        }
        if (watch_.Stopped()) return;
        if (relates) {
            if (DigDat* related = ItemAt(slot, pos); related != nullptr) related->active = 1;
        }
        watch_.Spend(kWorkOfItem + pntCnt);
    }

    CDigMem& store_;
    const RelationView view_;
    const ViewParams params_;
    const RelationQuery source_;
    const std::int32_t op_;
    const std::uint32_t resetCount_;
    RelationWatch watch_;
    GrowArray<DigPnt> device_;
    RelationShape query_{RelationShape::Role::Query};
    RelationShape item_{RelationShape::Role::Item};
    bool hasQuery_ = false;
    std::size_t slotCnt_ = 0;
    std::size_t slotsLeft_ = 0;
    std::size_t itemCnt_ = 0;  ///< of the block at hand; 0 between blocks
    std::size_t itemsLeft_ = 0;
};

}  // namespace

bool TestRelation(CDigMem& store, const RelationView& view, const RelationQuery& query, std::int32_t op,
                  const RelationProgress& progress) {
    if (!store.InitDone() || query.x.empty() || query.y.size() < query.x.size()) return false;
    store.ClearActive();
    const std::uint32_t resetCount = store.ResetCount();
    if (RelationWalk(store, view, query, op, progress).Run()) return true;
    if (store.ResetCount() == resetCount) store.ClearActive();
    return false;
}

}  // namespace orvane
