// Overlay of the polygons of blocks, and of the active set. The store is read item by item into plain copies, for the progress
// function may change it between any two of them; results are added when all of them are there.
#include "analysis/overlay.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "analysis/geometry/plane.h"
#include "analysis/overlay_parts.h"

namespace orvane {

namespace {

constexpr std::int32_t kLeastPnts = 3;

/// The position of a block of polygons, or -1.
std::int32_t PolygonBlock(const CDigMem& store, const OverlayBlock& key) {
    const DigIndex found = store.FindBlock(key.code, key.meshNo);
    if (found.block < 0 || found.layer < 0) return -1;
    return store.Layer(found.layer).layType == kLayPolygon ? found.block : -1;
}

std::vector<DigPnt> PointsOf(const DigDat& dat) {
    return dat.pntCnt <= 0 ? std::vector<DigPnt>() : std::vector<DigPnt>(dat.pnts.Get(), dat.pnts.Get() + dat.pntCnt);
}

bool RectsTouch(const Rect& a, const Rect& b) {
    return a.left <= b.right && a.right >= b.left && a.top <= b.bottom && a.bottom >= b.top;
}

FlatBox BoxOfRect(const Rect& r) {
    return {static_cast<double>(r.left), static_cast<double>(r.top), static_cast<double>(r.right), static_cast<double>(r.bottom)};
}

/// Adds a polygon as a new item and gives its ID. What cannot be added is passed over.
std::int32_t AddPolygon(CDigMem& store, const OverlayBlock& c, std::span<const DigPnt> pts) {
    bool found = false;
    const std::int32_t datID = store.FreeDigDatID(c.code, c.meshNo, found);
    store.AddDigDat(c.code, c.meshNo, datID, 0);
    for (const DigPnt& p : pts) store.AddDigDatPnt(c.code, c.meshNo, datID, p);
    return datID;
}

/// The walk over the items of A, and for each over those of B that it may meet.
class PairWalk {
public:
    PairWalk(CDigMem& store, const OverlayBlock& a, const OverlayBlock& b, const OverlayBlock& c, OverlayIds& ids,
             const OverlayProgress& progress)
        : store_(store), a_(a), b_(b), c_(c), ids_(ids), watch_(progress), resetCount_(store.ResetCount()) {}

    /// False with nothing stored when a block is missing, or the work was ended.
    bool Run() {
        if (!FindBlocks() || !OverlayAll()) return false;
        ids_.datIDC.reserve(results_.size());
        for (const std::vector<DigPnt>& result : results_) ids_.datIDC.push_back(AddPolygon(store_, c_, result));
        return true;
    }

private:
    bool OverlayAll() {
        const std::int32_t countA = store_.Block(blockA_).datCnt;
        IndexB();
        watch_.SetRange(0, 1);
        for (std::int32_t i = 0; i < countA; ++i) {
            if (!watch_.GoesOn() || !StillThere()) return false;
            if (i >= store_.Block(blockA_).datCnt) return true;
            watch_.SetRange(static_cast<double>(i) / countA, (i + 1.0) / countA);
            for (std::size_t j = 0;; ++j) {
                j = boxesB_.Next(j, BoxOfRect(store_.Block(blockA_).dats[static_cast<std::size_t>(i)].rect));
                if (j >= boxesB_.size()) break;
                const double part = static_cast<double>(j) / static_cast<double>(boxesB_.size());
                watch_.SetRange((i + part) / countA, (i + 1.0) / countA);
                if (!Overlay(static_cast<std::size_t>(i), j)) return false;
                if (i >= store_.Block(blockA_).datCnt) return true;
            }
        }
        return true;
    }
    bool FindBlocks() {
        blockA_ = PolygonBlock(store_, a_);
        blockB_ = PolygonBlock(store_, b_);
        questions_ = watch_.Questions();
        return blockA_ >= 0 && blockB_ >= 0 && PolygonBlock(store_, c_) >= 0;
    }
    /// Host code may have taken the blocks away.
    bool StillThere() { return watch_.Questions() == questions_ || (store_.ResetCount() == resetCount_ && FindBlocks()); }
    void IndexB() {
        const DigBlock& block = store_.Block(blockB_);
        boxesB_.Build(static_cast<std::size_t>(block.datCnt), [&](std::size_t j) { return BoxOfRect(block.dats[j].rect); });
    }

    /// One pair. False when there is nothing to go on with.
    bool Overlay(std::size_t i, std::size_t j) {
        const DigBlock& blockB = store_.Block(blockB_);
        if (j >= static_cast<std::size_t>(blockB.datCnt)) return true;
        const DigDat& a = store_.Block(blockA_).dats[i];
        const DigDat& b = blockB.dats[j];
        if (!RectsTouch(a.rect, b.rect) || a.pntCnt < kLeastPnts || b.pntCnt < kLeastPnts) return true;
        const std::int32_t idA = a.datID;
        const std::int32_t idB = b.datID;
        std::vector<DigPnt>& result = results_.emplace_back();
        try {
            const std::vector<DigPnt> ptsA = PointsOf(a);
            const std::vector<DigPnt> ptsB = PointsOf(b);
            OverlayPair(ptsA, ptsB, OverlayMode::Intersection, result, watch_);
        } catch (const std::bad_alloc&) {
            result.clear();
        }
        if (watch_.Stopped() || !StillThere()) return false;
        if (result.size() < kLeastPnts) {
            results_.pop_back();
            return true;
        }
        result.shrink_to_fit();
        ids_.datIDA.push_back(idA);
        ids_.datIDB.push_back(idB);
        return true;
    }

    CDigMem& store_;
    const OverlayBlock& a_;
    const OverlayBlock& b_;
    const OverlayBlock& c_;
    OverlayIds& ids_;
    OverlayWatch watch_;
    std::uint32_t resetCount_;
    std::uint32_t questions_ = 0;
    std::int32_t blockA_ = -1;
    std::int32_t blockB_ = -1;
    BoxTree boxesB_;
    std::vector<std::vector<DigPnt>> results_;
};

/// The overlay of the active items, one with the result of those before it.
class ActiveWalk {
public:
    ActiveWalk(CDigMem& store, OverlayMode mode, const OverlayProgress& progress)
        : store_(store), mode_(mode), watch_(progress), resetCount_(store.ResetCount()) {}

    /// False when the operation ends with nothing, whatever there was so far.
    bool Run() {
        CountActive();
        for (std::size_t pos = 0; pos < store_.Index().size(); ++pos) {
            const DigIndex entry = store_.Index()[pos];
            if (Takes(entry) && !TakeBlock(entry.block)) return false;
        }
        return taken_ >= 2 && result.size() >= kLeastPnts;
    }

    std::vector<DigPnt> result;

private:
    bool Takes(const DigIndex& entry) const {
        const LayerDef& layer = store_.Layer(entry.layer);
        return layer.layType == kLayPolygon && layer.dspFlg != 0 && layer.actFlg != 0 && store_.Block(entry.block).inView == 1;
    }

    /// For the progress alone: the host may select while the walk is on its way.
    void CountActive() {
        for (const DigIndex& entry : store_.Index()) {
            if (!Takes(entry)) continue;
            const DigBlock& block = store_.Block(entry.block);
            for (const DigDat& dat : block.dats) activeCnt_ += dat.active == 1 ? 1 : 0;
        }
    }

    bool TakeBlock(std::int32_t block) {
        for (std::int32_t i = 0; block < store_.BlockCnt() && i < store_.Block(block).datCnt; ++i) {
            const DigDat& dat = store_.Block(block).dats[static_cast<std::size_t>(i)];
            if (dat.active != 1) continue;
            if (taken_ >= 2 && result.empty()) return true;
            if (!TakeItem(PointsOf(dat))) return false;
        }
        return true;
    }

    bool TakeItem(std::vector<DigPnt> right) {
        ++taken_;
        if (taken_ == 1) {
            result = std::move(right);
            return result.size() >= kLeastPnts;
        }
        const std::vector<DigPnt> left = std::move(result);
        result.clear();
        if (left.size() < kLeastPnts || right.size() < kLeastPnts) return false;
        const double steps = (std::max)(activeCnt_, taken_) - 1.0;
        watch_.SetRange((taken_ - 2) / steps, (taken_ - 1) / steps);
        OverlaySnap(left, right, watch_);
        if (watch_.Stopped()) return false;
        OverlayPair(left, right, mode_, result, watch_);
        return !watch_.Stopped() && store_.ResetCount() == resetCount_;
    }

    CDigMem& store_;
    OverlayMode mode_;
    OverlayWatch watch_;
    std::uint32_t resetCount_;
    std::int32_t activeCnt_ = 0;
    std::int32_t taken_ = 0;
};

}  // namespace

void OverlaySnap(std::span<const DigPnt> left, std::span<DigPnt> right, OverlayWatch& watch) {
    constexpr double kTolerance = 0.0001;
    constexpr double kReach = 0.000101;  // above the tolerance, so that no rounding of the box can matter
    BoxTree tree;
    tree.Build(left.size(), [&](std::size_t i) { return BoxOf(left[i], left[i]); });
    for (DigPnt& p : right) {
        const FlatBox box{p.x - kReach, p.y - kReach, p.x + kReach, p.y + kReach};
        for (std::size_t i = tree.Next(0, box); i < left.size(); i = tree.Next(i + 1, box)) {
            if (!watch.GoesOn()) return;
            if (!(Pythag(p.x - left[i].x, p.y - left[i].y) <= kTolerance)) continue;
            p.x = left[i].x;
            p.y = left[i].y;
            break;
        }
    }
}

std::int32_t PolygonBuffering(CDigMem& store, const OverlayBlock& a, const OverlayBlock& b, const OverlayBlock& c,
                              OverlayIds& ids, const OverlayProgress& progress) {
    ids = {};
    try {
        if (PairWalk(store, a, b, c, ids, progress).Run()) return static_cast<std::int32_t>(ids.datIDC.size());
    } catch (const std::bad_alloc&) {
    }
    ids = {};
    return 0;
}

std::int32_t ActPolygonBuffering(CDigMem& store, OverlayMode mode, const OverlayBlock& c, std::int32_t& datIDC,
                                 const OverlayProgress& progress) {
    if (mode != OverlayMode::Intersection && mode != OverlayMode::Union) return 0;
    if (PolygonBlock(store, c) < 0) return 0;
    try {
        ActiveWalk walk(store, mode, progress);
        if (!walk.Run() || PolygonBlock(store, c) < 0) return 0;
        datIDC = AddPolygon(store, c, walk.result);
        return 1;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

}  // namespace orvane
