// What a filtered read selects.
#include <algorithm>
#include <utility>

#include "files/archive_parts.h"
#include "platform/to_int.h"

namespace orvane {
namespace {

/// The area in order, in the forms in which blocks and items are held against it.
class Area {
public:
    explicit Area(const ArcFilter& filter) : x1_(filter.X1), y1_(filter.Y1), x2_(filter.X2), y2_(filter.Y2) {
        // A NaN stays on its side, where it selects nothing.
        if (x1_ > x2_) std::swap(x1_, x2_);
        if (y1_ > y2_) std::swap(y1_, y2_);
        points_ = {TruncToInt32(x1_ - 0.5), TruncToInt32(y1_ - 0.5), TruncToInt32(x2_ + 0.5), TruncToInt32(y2_ + 0.5)};
    }

    bool Meets(const IdxBlockRec& block) const {
        return block.minX <= x2_ && block.maxX >= x1_ && block.minY <= y2_ && block.maxY >= y1_;
    }
    /// Only points are looked at one by one; whatever has an extent goes with its block.
    bool Selects(const Rect& rect) const {
        if (rect.left != rect.right || rect.top != rect.bottom) return true;
        return points_.left <= rect.left && rect.left <= points_.right && points_.top <= rect.top && rect.top <= points_.bottom;
    }

private:
    double x1_, y1_, x2_, y2_;
    Rect points_;  ///< all four sides lie inside
};

/// The given codes in order, so that each block costs a search and not a walk.
class CodeSet {
public:
    [[nodiscard]] bool Assign(std::span<const std::string> codes) {
        if (!codes_.Reserve(codes.size())) return false;
        for (const std::string& code : codes) {
            if (!codes_.PushBack(std::string_view(code))) return false;
        }
        std::sort(codes_.begin(), codes_.end());
        return true;
    }
    bool Has(std::string_view code) const { return std::binary_search(codes_.begin(), codes_.end(), code); }

private:
    GrowArray<std::string_view> codes_;
};

/// By number and each once. Blocks of a sound index bring them so.
void PutInOrder(GrowArray<IdxSelected>& selected) {
    const auto before = [](const IdxSelected& a, const IdxSelected& b) { return a.number < b.number; };
    const auto same = [](const IdxSelected& a, const IdxSelected& b) { return a.number == b.number; };
    const auto outOfOrder = [](const IdxSelected& a, const IdxSelected& b) { return a.number >= b.number; };
    if (std::adjacent_find(selected.begin(), selected.end(), outOfOrder) == selected.end()) return;
    std::sort(selected.begin(), selected.end(), before);
    selected.Truncate(static_cast<std::size_t>(std::unique(selected.begin(), selected.end(), same) - selected.begin()));
}

}  // namespace

bool SelectIdxItems(const IdxFile& index, const ArcFilter& filter, GrowArray<IdxSelected>& selected) {
    CodeSet codes;
    if (!codes.Assign(filter.codes)) return false;
    const Area area(filter);
    const bool hasArea = filter.HasArea();
    PackedSource source(*index.file);
    for (const IdxBlockRec& block : index.blocks) {
        if (!codes.Has(block.code.View()) || (hasArea && !area.Meets(block))) continue;
        for (std::int32_t i = 0; i < block.count; ++i) {
            const std::int32_t number = block.first + i;
            IdxItemRec item;
            if (!ReadIdxItem(source, index, number, item)) return false;
            if (hasArea && !area.Selects(item.rect)) continue;
            if (!selected.PushBack(IdxSelected{number, item.offset})) return false;
        }
    }
    PutInOrder(selected);
    return true;
}

}  // namespace orvane
