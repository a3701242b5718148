// Polygon files, which hold no coordinates: each ring is a list of lines by their IDs, negative where a line is walked backward.
#include <algorithm>
#include <cstdlib>
#include <span>

#include "files/leading_number.h"
#include "files/legacy_parts.h"
#include "store/dat_lookup.h"
#include "store/guarded_alloc.h"
#include "store/pos_table.h"

namespace orvane {
namespace {

/// The lines that polygons are made of: of each ID the first one, in the order of the blocks and of their items.
class Arcs {
public:
    /// False without memory.
    [[nodiscard]] bool Add(const DigBlock& block) {
        if (!table_.Reserve(arcs_.size() + block.dats.size())) return false;
        for (const DigDat& dat : block.dats) {
            pntCnt_ += (std::max)(dat.pntCnt, 0);
            const std::uint64_t hash = HashOf(dat.datID);
            if (table_.Find(hash) != nullptr) continue;
            const auto pos = static_cast<std::int32_t>(arcs_.size());
            if (!arcs_.PushBack(&dat)) return false;
            table_.Insert(hash, pos);
        }
        return true;
    }
    /// Null when there is none.
    const DigDat* Find(std::int64_t datID) const {
        const PosTable::Slot* slot = datID > INT32_MAX ? nullptr : table_.Find(HashOf(static_cast<std::int32_t>(datID)));
        return slot == nullptr ? nullptr : arcs_[static_cast<std::size_t>(slot->first)];
    }
    /// Points of all of them, IDs that stand twice included.
    std::int64_t PntCnt() const { return pntCnt_; }

private:
    static std::uint64_t HashOf(std::int32_t datID) { return MixKey(static_cast<std::uint32_t>(datID)); }

    PosTable table_;
    GrowArray<const DigDat*> arcs_;
    std::int64_t pntCnt_ = 0;
};

/// Tells which blocks have an index entry of a line layer.
class IndexedLines {
public:
    explicit IndexedLines(CDigMem& store) : store_(store) {}

    /// False without memory.
    [[nodiscard]] bool Ask(std::int32_t pos, bool& isLine) {
        const DigBlock& block = store_.Block(pos);
        const DigIndex entry = store_.FindBlock(block.code.View(), block.meshNo);
        std::int32_t layer = entry.layer;
        if (entry.block != pos) {
            // Of blocks with the same key a lookup meets one only; for the others the index itself is read, once.
            if (layerOf_.empty() && !ReadIndex()) return false;
            layer = layerOf_[static_cast<std::size_t>(pos)];
        }
        isLine = store_.Layer(layer).layType == kLayLine;
        return true;
    }

private:
    bool ReadIndex() {
        if (!layerOf_.Resize(static_cast<std::size_t>(store_.BlockCnt()))) return false;
        std::fill(layerOf_.begin(), layerOf_.end(), -1);
        for (const DigIndex& entry : store_.Index()) {
            std::int32_t& layer = layerOf_[static_cast<std::size_t>(entry.block)];
            if (layer < 0) layer = entry.layer;
        }
        return true;
    }

    CDigMem& store_;
    GrowArray<std::int32_t> layerOf_;  ///< by block, -1 for none
};

LegacyResult GatherArcs(CDigMem& store, std::int32_t meshNo, std::string_view arcCode, Arcs& arcs) {
    if (!arcCode.empty()) {
        const std::int32_t pos = store.FindBlock(arcCode, meshNo).block;
        if (pos < 0) return LegacyResult::Failed;
        return arcs.Add(store.Block(pos)) ? LegacyResult::Read : LegacyResult::NoMemory;
    }
    IndexedLines indexed(store);
    for (std::int32_t pos = 0; pos < store.BlockCnt(); ++pos) {
        const DigBlock& block = store.Block(pos);
        if (block.meshNo != meshNo || block.blkState < 0 || block.datCnt <= 0) continue;
        bool isLine = false;
        if (!indexed.Ask(pos, isLine) || (isLine && !arcs.Add(block))) return LegacyResult::NoMemory;
    }
    return LegacyResult::Read;
}

/// Puts the rings of one file together.
class RingMaker {
public:
    explicit RingMaker(const Arcs& arcs) : arcs_(arcs), left_(PntMax(arcs.PntCnt())) {}

    void Begin() { ring_.Truncate(0); }

    /// Adds a line but for the point where it ends, which is the next one's first. An ID of 0 is walked backward as well.
    LegacyResult Add(std::int32_t id) {
        const DigDat* arc = arcs_.Find(std::abs(std::int64_t{id}));
        if (arc == nullptr || arc->pntCnt < 1) return LegacyResult::Read;
        const auto n = static_cast<std::size_t>(arc->pntCnt);
        if (arc->pntCnt > left_) return LegacyResult::Failed;
        if (!EnsureRoom(ring_, ring_.size() + n)) return LegacyResult::NoMemory;
        left_ -= arc->pntCnt;
        for (std::size_t i = 0; i + 1 < n; ++i) {
            if (!ring_.PushBack(arc->pnts[id >= 1 ? i : n - 1 - i])) return LegacyResult::NoMemory;
        }
        end_ = arc->pnts[id >= 1 ? n - 1 : 0];
        return LegacyResult::Read;
    }

    /// Closes the ring by the end of its last line and gives it to the item. A ring without lines has no points.
    LegacyResult End(DigDat& dat) {
        if (!ring_.empty() && !ring_.PushBack(end_)) return LegacyResult::NoMemory;
        if (!CopyArray(dat.pnts, std::span<const DigPnt>(ring_.data(), ring_.size()))) return LegacyResult::NoMemory;
        for (const DigPnt& pnt : ring_) WidenTruncated(dat.rect, pnt);
        dat.pntCnt = static_cast<std::int32_t>(ring_.size());
        return LegacyResult::Read;
    }

private:
    static constexpr std::int64_t kMinPntMax = 1000000;
    static constexpr std::int64_t kPntMaxPerArcPnt = 16;

    static std::int64_t PntMax(std::int64_t arcPntCnt) {
        return std::clamp(arcPntCnt * kPntMaxPerArcPnt, kMinPntMax, std::int64_t{INT32_MAX});
    }

    const Arcs& arcs_;
    std::int64_t left_;  ///< points that the file may still ask for
    DigPnt end_;
    GrowArray<DigPnt> ring_;
};

/// `code`, `datID` and a count of lines, which is taken at its comma only: without one the count of the item before stands. False
/// when the data ends before.
bool ReadPolygonHead(LegacyData& data, DigBlock& block, DigDat& dat, std::int32_t& arcCnt) {
    std::string_view code;
    std::string_view datID;
    std::string_view count;
    if (!data.TakeField(code) || !data.TakeField(datID)) return false;
    const LegacyData::Sign sign = data.Take(count);
    if (sign == LegacyData::Sign::End) return false;
    block.code.Set(code);
    dat.datID = LeadingInt32(datID);
    if (sign != LegacyData::Sign::Comma) return true;
    arcCnt = LeadingInt32(count);
    return data.SkipLine();
}

LegacyResult ReadPolygon(LegacyData& data, std::int32_t arcCnt, RingMaker& ring, DigDat& dat) {
    ring.Begin();
    for (std::int32_t i = 0; i < arcCnt; ++i) {
        std::string_view id;
        const LegacyData::Sign sign = data.Take(id);
        if (sign == LegacyData::Sign::End || (sign == LegacyData::Sign::Comma && !data.SkipLine())) return LegacyResult::Failed;
        const LegacyResult result = ring.Add(LeadingInt32(id));
        if (result != LegacyResult::Read) return result;
    }
    return ring.End(dat);
}

}  // namespace

LegacyResult ReadLegacyPolygons(LegacyData& data, std::int32_t itemCnt, DigBlock& block, CDigMem& store,
                                std::string_view arcCode) {
    Arcs arcs;
    const LegacyResult gathered = GatherArcs(store, block.meshNo, arcCode, arcs);
    if (gathered != LegacyResult::Read) return gathered;
    RingMaker ring(arcs);
    std::int32_t arcCnt = 0;
    for (std::int32_t i = 0; i < itemCnt; ++i) {
        DigDat* dat = AddLegacyDat(block, itemCnt);
        if (dat == nullptr || !ReadPolygonHead(data, block, *dat, arcCnt) || arcCnt < 0) return LegacyResult::Failed;
        const LegacyResult result = ReadPolygon(data, arcCnt, ring, *dat);
        if (result != LegacyResult::Read) return result;
    }
    return LegacyResult::Read;
}

}  // namespace orvane
