#include "hosts/viewer/item_changes.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <utility>

#include "control/ctrl.h"
#include "store/item_bounds.h"

namespace orvane {

namespace {

/// Work on one block by automation calls. What they cannot reach of a feature that shares its number is written into its record.
class BlockWriter {
public:
    using Told = std::function<void(double)>;

    /// `told` hears the part of the work that is done, once in a while.
    BlockWriter(OrvaneWidget& map, const std::string& code, std::int32_t meshNo, Told told)
        : map_(map), code_(QByteArray::fromStdString(code)), bytes_(code), meshNo_(meshNo), told_(std::move(told)) {}

    const DigBlock* Block() const { return BlockOf(map_.Control().store, {bytes_, meshNo_}); }

    void Delete(std::int32_t datID) {
        map_.Call("OrvDelDat", {code_, meshNo_, datID});
        TellOne();
    }
    /// How many features are to be deleted, added and written.
    void Expect(std::size_t steps) { expected_ = steps; }

    void Add(const ItemCopy& item) {
        QVariantList x, y, z;
        for (const DigPnt& pnt : item.pnts) {
            x << pnt.x;
            y << pnt.y;
            z << pnt.z;
        }
        if (item.grid && !item.pnts.empty()) {
            AddGrid(item, x, y, z);
        } else if (item.pnts.empty()) {
            map_.Call("OrvAddDat", {code_, meshNo_, item.datID, item.lineTag});
        } else {
            map_.Call("OrvAddDatEx", {code_, meshNo_, item.datID, item.lineTag, x, y, z});
        }
        const std::int32_t at = LastOf(item.datID);
        if (at >= 0) {
            if (item.grid && item.lineTag != 0) SetTag(item, at);
            if (item.subLayNo != 0) SetSubLayer(item, at);
            if (item.text) SetText(item, at);
            SetRect(item, at);
        }
        TellOne();
    }

    /// Whether one state can be written over the other without taking the feature out, where no other has its number.
    static bool FitsInPlace(const ItemCopy& from, const ItemCopy& to) {
        const bool tagFits = from.lineTag == to.lineTag || FitsShort(to.datID);
        const bool pointsFit = !from.pnts.empty() && !to.pnts.empty();
        return from.datID == to.datID && tagFits && from.grid == to.grid && (to.text || !from.text) &&
               (pointsFit || SamePoints(from.pnts, to.pnts)) && !(from.grid && !SamePoints(from.pnts, to.pnts));
    }
    void Write(const ItemCopy& from, const ItemCopy& to) {
        TellOne();
        const std::int32_t at = PositionOf(map_.Control().store, {bytes_, meshNo_, to.datID});
        if (at < 0) return;
        if (!SamePoints(from.pnts, to.pnts)) WritePoints(from, to);
        if (from.subLayNo != to.subLayNo) SetSubLayer(to, at);
        if (to.text && from.text != to.text) SetText(to, at);
        SetRect(to, at);
        if (from.lineTag == to.lineTag) return;
        const DigDat* dat = map_.Control().store.FindDat(bytes_, meshNo_, to.datID);
        map_.Call("SetDigDatInfoEx", {code_, meshNo_, to.datID, to.lineTag, dat != nullptr && dat->active != 0});
    }
    /// Moves features within the block, which no call does: each place gets the one from the place that is told for it.
    bool Reorder(std::vector<std::int32_t> order) {
        CDigMem& store = map_.Control().store;
        return store.ReorderDats(store.FindBlock(bytes_, meshNo_).block, order);
    }
    void Select(std::int32_t datID, std::int32_t at) {
        DigDat* other = OfAnother(datID, at);
        if (other != nullptr) {
            other->active = 1;
        } else {
            map_.Call("OrvSetActDat", {code_, meshNo_, datID});
        }
    }
    /// Makes the block anew and empty, where features cannot be told apart by their IDs.
    void MakeAnew() {
        const DigBlock* block = Block();
        const std::int32_t layer = map_.Control().store.FindLayDef(bytes_);
        if (block == nullptr || layer < 0) return;
        const LayerDef& def = map_.Control().store.Layer(layer);
        const QVariantList made{code_,        meshNo_,   def.layType, QByteArray::fromStdString(block->path),
                                def.layIndex, block->GX, block->GY};
        const BlockFacts facts = FactsOf(*block);
        map_.Call("OrvDelLayGrpDat", {code_, meshNo_});
        map_.Call("DigMemAlloc2", made);
        PutFacts(map_.Control().store, bytes_, meshNo_, facts);
    }
    /// A feature can come back to a block that was deleted since.
    void MakeMissing() {
        const std::int32_t layer = map_.Control().store.FindLayDef(bytes_);
        if (Block() != nullptr || layer < 0) return;
        const LayerDef& def = map_.Control().store.Layer(layer);
        map_.Call("DigMemAlloc2", {code_, meshNo_, def.layType, QByteArray(), def.layIndex, 0.0, 0.0});
    }

private:
    void TellOne() {
        constexpr std::size_t kTellEvery = 500;
        if (++done_ % kTellEvery == 0) told_(static_cast<double>(done_) / static_cast<double>((std::max)(expected_, done_)));
    }
    static bool FitsShort(std::int32_t v) {
        return v >= std::numeric_limits<std::int16_t>::min() && v <= std::numeric_limits<std::int16_t>::max();
    }
    void AddGrid(const ItemCopy& item, const QVariantList& x, const QVariantList& y, const QVariantList& z) {
        const GridCopy& grid = *item.grid;
        map_.Call("OrvAddMeshDat", {code_, meshNo_, item.datID, grid.hcnt, grid.vcnt, x, y, z});
        // Neither call takes an array of plain whole numbers: truths and numbers without a sign go as variants.
        QVariantList use, colors;
        for (const bool flag : grid.useFlag) use << flag;
        for (const std::uint32_t color : grid.meshColor) colors << color;
        const bool allUsed = std::find(grid.useFlag.begin(), grid.useFlag.end(), false) == grid.useFlag.end();
        if (!allUsed) map_.Call("OrvSetMeshUseFlag", {code_, meshNo_, item.datID, QVariant(use)});
        map_.Call("OrvSetMeshColor", {code_, meshNo_, item.datID, QVariant(colors)});
    }
    void WritePoints(const ItemCopy& from, const ItemCopy& to) {
        const auto fromCnt = static_cast<std::int32_t>(from.pnts.size());
        const auto toCnt = static_cast<std::int32_t>(to.pnts.size());
        for (std::int32_t i = toCnt; i < fromCnt; ++i) map_.Call("OrvDelDatPnt", {code_, meshNo_, to.datID, toCnt});
        for (std::int32_t i = 0; i < toCnt; ++i) {
            const DigPnt& pnt = to.pnts[static_cast<std::size_t>(i)];
            if (i < fromCnt) {
                map_.Call("OrvEditDatPnt", {code_, meshNo_, to.datID, i, pnt.x, pnt.y, pnt.z});
            } else {
                map_.Call("OrvAddDatPnt", {code_, meshNo_, to.datID, pnt.x, pnt.y, pnt.z});
            }
        }
    }
    DigDat* MutableAt(std::int32_t at) {
        CDigMem& store = map_.Control().store;
        const std::int32_t pos = store.FindBlock(bytes_, meshNo_).block;
        if (pos < 0 || at < 0 || at >= store.Block(pos).datCnt) return nullptr;
        return &store.MutableBlock(pos).dats[static_cast<std::size_t>(at)];
    }
    /// The feature at a position that has the number but is not the first with it, so that calls would meet another; else null.
    DigDat* OfAnother(std::int32_t datID, std::int32_t at) {
        return PositionOf(map_.Control().store, {bytes_, meshNo_, datID}) == at ? nullptr : MutableAt(at);
    }
    /// Where the feature that was just added stands, or -1 when there was no room for it.
    std::int32_t LastOf(std::int32_t datID) const {
        const DigBlock* block = Block();
        if (block == nullptr || block->datCnt == 0) return -1;
        return block->dats[static_cast<std::size_t>(block->datCnt) - 1].datID == datID ? block->datCnt - 1 : -1;
    }
    void SetTag(const ItemCopy& item, std::int32_t at) {
        DigDat* other = FitsShort(item.datID) ? OfAnother(item.datID, at) : MutableAt(at);
        if (other != nullptr) {
            other->lineTag = item.lineTag;
        } else {
            map_.Call("SetDigDatInfoEx", {code_, meshNo_, item.datID, item.lineTag, false});
        }
    }
    void SetSubLayer(const ItemCopy& item, std::int32_t at) {
        DigDat* other = OfAnother(item.datID, at);
        if (other != nullptr) {
            other->subLayNo = item.subLayNo;
            return;
        }
        // The call for many asks no layer record: a number without one came from a file and goes back as it was. It meets
        // whichever it likes of those that share a number.
        map_.Call("OrvSetDatSubLayerEx", {code_, meshNo_, QVariantList{item.datID}, QVariantList{item.subLayNo}});
    }
    void SetRect(const ItemCopy& item, std::int32_t at) {
        DigDat* dat = MutableAt(at);
        if (dat == nullptr || !item.rect) return;
        dat->rect = *item.rect;
        CheckItemRect(*dat);
    }
    /// REQUIRES: no feature of the number stands behind the position, which these calls would meet.
    void SetText(const ItemCopy& item, std::int32_t at) {
        const TextCopy& text = *item.text;
        map_.Call("OrvSetDatString", {code_, meshNo_, item.datID, text.x, text.y, QByteArray::fromStdString(text.text)});
        map_.Call("OrvSetStrStyle", {code_, meshNo_, item.datID, QByteArray::fromStdString(text.fntname), text.size, text.style,
                                     text.pos, text.angle, text.fill, text.uline, text.strike, text.fcolor, text.bcolor});
        // The height of a text comes from files alone: no call reads or writes it.
        const DigDat* dat = MutableAt(at);
        if (dat != nullptr && dat->str != nullptr && dat->str->z != text.z) dat->str->z = text.z;
    }

    OrvaneWidget& map_;
    QByteArray code_;
    std::string bytes_;
    std::int32_t meshNo_;
    Told told_;
    std::size_t done_ = 0;
    std::size_t expected_ = 0;
};

/// One step in one direction.
struct Step {
    std::int32_t position;
    const ItemCopy* from;
    const ItemCopy* to;
};

/// A feature of a tail: as it stands there, or as a step has it.
struct TailItem {
    const ItemCopy* item;  ///< null for one that only moves
    std::int32_t place;    ///< before the steps
    bool active;
};

/// Whether each step brings a feature, each behind the one before: then positions are those at the end.
bool AllComeUpwards(std::span<const Step> steps) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].from != nullptr || (i > 0 && steps[i].position <= steps[i - 1].position)) return false;
    }
    return true;
}

/// Whether each step takes a feature, each before the one before: then positions are those at the beginning.
bool AllGoDownwards(std::span<const Step> steps) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].to != nullptr || steps[i].position < 0) return false;
        if (i > 0 && steps[i].position >= steps[i - 1].position) return false;
    }
    return true;
}

/// The tail, which begins at position `first`, behind the steps. Many features come or go in one pass.
std::vector<TailItem> Behind(const std::vector<TailItem>& old, std::span<const Step> steps, std::int32_t first) {
    std::vector<TailItem> tail;
    if (AllComeUpwards(steps)) {
        auto next = old.begin();
        for (const Step& step : steps) {
            const auto at = static_cast<std::size_t>((std::max)(step.position - first, 0));
            while (tail.size() < at && next != old.end()) tail.push_back(*next++);
            tail.push_back({step.to, -1, false});
        }
        tail.insert(tail.end(), next, old.end());
        return tail;
    }
    if (AllGoDownwards(steps)) {
        auto step = steps.rbegin();
        for (std::size_t i = 0; i < old.size(); ++i) {
            const bool goes = step != steps.rend() && (std::max)(step->position - first, 0) == static_cast<std::int32_t>(i);
            goes ? static_cast<void>(++step) : tail.push_back(old[i]);
        }
        return tail;
    }
    tail = old;
    for (const Step& step : steps) {
        const auto size = static_cast<std::int32_t>(tail.size());
        const std::int32_t at = std::clamp(step.position - first, 0, size);
        if (step.from == nullptr) {
            tail.insert(tail.begin() + at, {step.to, -1, false});
        } else if (at < size && step.to == nullptr) {
            tail.erase(tail.begin() + at);
        } else if (at < size) {
            tail[static_cast<std::size_t>(at)].item = step.to;
        }
    }
    return tail;
}

/// Takes all features out of a block and puts them back as they are to be, since calls cannot tell them apart.
void RewriteBlock(BlockWriter& writer, std::span<const Step> steps) {
    const DigBlock& block = *writer.Block();
    std::vector<ItemCopy> copies;
    std::vector<TailItem> old;
    copies.reserve(block.dats.size());
    for (const DigDat& dat : block.dats) {
        copies.push_back(CopyOf(dat));
        old.push_back({&copies.back(), static_cast<std::int32_t>(old.size()), dat.active != 0});
    }
    const std::vector<TailItem> all = Behind(old, steps, 0);
    writer.Expect(all.size());
    writer.MakeAnew();
    for (const TailItem& item : all) writer.Add(*item.item);
    std::int32_t at = 0;
    for (const TailItem& item : all) {
        if (item.active) writer.Select(item.item->datID, at);
        ++at;
    }
}

/// Features that stay move as they are; those that go are deleted at the end of the block, and those that come are added there,
/// so that many of them take one pass. Nothing is done where that cannot be.
void MoveTail(BlockWriter& writer, std::span<const Step> steps, std::int32_t first) {
    const std::int32_t count = writer.Block()->datCnt;
    std::vector<TailItem> old;
    for (std::int32_t i = first; i < count; ++i)
        old.push_back({nullptr, i, writer.Block()->dats[static_cast<std::size_t>(i)].active != 0});
    const std::vector<TailItem> tail = Behind(old, steps, first);

    std::vector<std::int32_t> head(static_cast<std::size_t>(first));
    std::iota(head.begin(), head.end(), 0);
    std::vector<std::int32_t> order = head;
    std::vector<bool> stays(static_cast<std::size_t>(count));
    for (const TailItem& item : tail) {
        if (item.item != nullptr) continue;
        order.push_back(item.place);
        stays[static_cast<std::size_t>(item.place)] = true;
    }
    const std::size_t stayCnt = order.size();
    for (std::int32_t i = first; i < count; ++i) {
        if (!stays[static_cast<std::size_t>(i)]) order.push_back(i);
    }
    const std::size_t goCnt = order.size() - stayCnt;
    const std::size_t comeCnt = head.size() + tail.size() - stayCnt;
    writer.Expect(goCnt + comeCnt);
    if (!writer.Reorder(order)) return;
    for (std::size_t at = order.size(); at-- > stayCnt;) writer.Delete(writer.Block()->dats[at].datID);

    order = head;
    std::int32_t next = first;
    std::vector<std::pair<std::int32_t, std::int32_t>> selected;  // number and position
    for (const TailItem& item : tail) {
        if (item.item == nullptr) {
            order.push_back(next++);
            continue;
        }
        const std::int32_t end = writer.Block()->datCnt;
        writer.Add(*item.item);
        if (writer.Block()->datCnt == end) continue;  // there was no room for it
        if (item.active) selected.emplace_back(item.item->datID, static_cast<std::int32_t>(order.size()));
        order.push_back(end);
    }
    writer.Reorder(order);
    for (const auto& [datID, at] : selected) writer.Select(datID, at);
}

enum class Reach : std::uint8_t { Steps, Block };  ///< how far work goes: to what it is given, or over all of the block

/// Performs steps that move features behind them.
Reach RewriteTail(BlockWriter& writer, std::span<const Step> steps) {
    const DigBlock& block = *writer.Block();
    std::vector<std::int32_t> ids;
    ids.reserve(block.dats.size());
    for (const DigDat& dat : block.dats) ids.push_back(dat.datID);
    std::sort(ids.begin(), ids.end());
    if (std::adjacent_find(ids.begin(), ids.end()) != ids.end()) {
        RewriteBlock(writer, steps);
        return Reach::Block;
    }
    std::int32_t first = block.datCnt;
    for (const Step& step : steps) first = (std::min)(first, (std::max)(step.position, 0));
    MoveTail(writer, steps, first);
    return Reach::Steps;
}

/// Whether the deletion of the features one by one would move those behind them time and again.
bool MovesMany(const DigBlock& block, std::span<const Step> steps) {
    constexpr std::size_t kFew = 256;
    if (steps.size() <= kFew) return false;
    std::int32_t end = block.datCnt;
    return !std::all_of(steps.begin(), steps.end(), [&](const Step& step) { return step.position == --end; });
}

/// Whether calls would meet another feature of the number than a step means: some look from the first up, some from the last
/// down, so that only the deletion of a first one is safe.
bool CallsWouldMiss(const DigBlock& block, std::span<const Step> steps) {
    struct Standing {
        std::int32_t first;
        std::int32_t count;
    };
    std::map<std::int32_t, Standing> byNumber;
    for (const Step& step : steps) {
        if (step.from != nullptr) byNumber.emplace(step.from->datID, Standing{step.position, 0});
    }
    std::int32_t position = 0;
    for (const DigDat& dat : block.dats) {
        const auto found = byNumber.find(dat.datID);
        if (found != byNumber.end() && found->second.count++ == 0) found->second.first = position;
        ++position;
    }
    return std::any_of(steps.begin(), steps.end(), [&](const Step& step) {
        if (step.from == nullptr) return false;
        const Standing& standing = byNumber.at(step.from->datID);
        return standing.first != step.position || (step.to != nullptr && standing.count > 1);
    });
}

Reach PerformSteps(BlockWriter& writer, std::span<const Step> steps) {
    writer.MakeMissing();
    const DigBlock* block = writer.Block();
    if (block == nullptr) return Reach::Steps;
    // What can be done without moving other features is; a single one at the end of its block most of all.
    writer.Expect(steps.size());
    const bool missed = CallsWouldMiss(*block, steps);
    const bool allInPlace = std::all_of(steps.begin(), steps.end(), [](const Step& step) {
        return step.from != nullptr && step.to != nullptr && BlockWriter::FitsInPlace(*step.from, *step.to);
    });
    const bool allGo = std::all_of(steps.begin(), steps.end(), [](const Step& step) { return step.to == nullptr; });
    std::int32_t end = block->datCnt;
    const bool allAtEnd =
        std::all_of(steps.begin(), steps.end(), [&](const Step& step) { return step.from == nullptr && step.position >= end++; });
    if (missed) return RewriteTail(writer, steps);
    if (allInPlace) {
        for (const Step& step : steps) writer.Write(*step.from, *step.to);
    } else if (allGo && !MovesMany(*block, steps)) {
        for (const Step& step : steps) writer.Delete(step.from->datID);
    } else if (allAtEnd) {
        for (const Step& step : steps) writer.Add(*step.to);
    } else {
        return RewriteTail(writer, steps);
    }
    return Reach::Steps;
}

/// Performs changes block by block. `told` hears the part that is done.
Reach PerformPiece(OrvaneWidget& map, std::span<const ItemChange> changes, bool forward, const BlockWriter::Told& told) {
    std::vector<const ItemChange*> ordered;
    for (const ItemChange& change : changes) ordered.push_back(&change);
    if (!forward) std::reverse(ordered.begin(), ordered.end());
    std::map<std::pair<std::string, std::int32_t>, std::vector<Step>> byBlock;
    for (const ItemChange* change : ordered) {
        const auto side = [](const std::optional<ItemCopy>& copy) { return copy ? &*copy : nullptr; };
        const ItemCopy* from = side(forward ? change->before : change->after);
        const ItemCopy* to = side(forward ? change->after : change->before);
        if (from != nullptr || to != nullptr) byBlock[{change->code, change->meshNo}].push_back({change->position, from, to});
    }
    Reach reach = Reach::Steps;
    std::size_t done = 0;
    for (const auto& [key, steps] : byBlock) {
        const auto count = static_cast<double>(changes.size());
        const auto tellBlock = [&, share = static_cast<double>(steps.size())](double part) {
            told((static_cast<double>(done) + part * share) / count);
        };
        BlockWriter writer(map, key.first, key.second, tellBlock);
        if (PerformSteps(writer, steps) == Reach::Block) reach = Reach::Block;
        done += steps.size();
    }
    return reach;
}

}  // namespace

std::vector<ItemChange> Deletions(const CDigMem& store, const std::vector<ItemPlace>& places,
                                  const std::function<bool(double)>& progress) {
    constexpr std::size_t kTellEvery = 1000;
    std::vector<ItemChange> changes;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto& [key, position] = places[i];
        if (progress && i % kTellEvery == 0 && !progress(static_cast<double>(i) / static_cast<double>(places.size()))) return {};
        const DigBlock* block = BlockOf(store, key);
        if (block == nullptr || position < 0 || position >= block->datCnt) continue;
        const DigDat& dat = block->dats[static_cast<std::size_t>(position)];
        changes.push_back({key.code, key.meshNo, position, CopyOf(dat), std::nullopt});
    }
    // From the last one down, so that no position moves before it is used.
    std::stable_sort(changes.begin(), changes.end(),
                     [](const ItemChange& a, const ItemChange& b) { return a.position > b.position; });
    return changes;
}

std::vector<ItemChange> Deletion(const CDigMem& store, const ItemKey& key) {
    return Deletions(store, {{key, PositionOf(store, key)}});
}

// It goes in pieces, since there is a way back between two of them only. They are few: each may move all of its block.
bool PerformChanges(OrvaneWidget& map, std::span<const ItemChange> changes, bool forward,
                    const std::function<bool(double)>& progress) {
    constexpr std::size_t kMostPieces = 8;
    constexpr std::size_t kLeastPiece = 2000;
    const std::size_t all = changes.size();
    std::size_t piece = (std::max)((all + kMostPieces - 1) / kMostPieces, kLeastPiece);
    std::size_t done = 0;
    bool goesOn = true;
    while (goesOn && done < all) {
        const std::size_t count = (std::min)(piece, all - done);
        const auto told = [&](double part) {
            const double now = static_cast<double>(done) + part * static_cast<double>(count);
            if (progress && goesOn) goesOn = progress(now / static_cast<double>(all));
        };
        const std::size_t begin = forward ? done : all - done - count;
        // What is worked through as a whole is so only once.
        if (PerformPiece(map, changes.subspan(begin, count), forward, told) == Reach::Block) piece = all;
        done += count;
        if (done < all) told(0);
    }
    if (goesOn) return true;
    const auto told = [&](double part) { progress(static_cast<double>(done) * (1 - part) / static_cast<double>(all)); };
    PerformPiece(map, forward ? changes.first(done) : changes.last(done), !forward, told);
    return false;
}

}  // namespace orvane
