// A tree of boxes over a list, in the list's own order.
//
// Each node holds the box of eight neighbours, so a question finds its answers by ascending position, one at a time, and may grow
// narrower from one to the next. It is quick where neighbours in the list lie near each other, as the edges of a ring do.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace orvane {

/// Closed on all sides. One with a side that is not a number meets nothing.
struct FlatBox {
    double minX = (std::numeric_limits<double>::infinity)();
    double minY = (std::numeric_limits<double>::infinity)();
    double maxX = -(std::numeric_limits<double>::infinity)();
    double maxY = -(std::numeric_limits<double>::infinity)();

    bool Meets(const FlatBox& o) const {
        return static_cast<int>(minX <= o.maxX) & static_cast<int>(maxX >= o.minX) & static_cast<int>(minY <= o.maxY) &
               static_cast<int>(maxY >= o.minY);
    }
    void Add(const FlatBox& o) {
        if (o.minX < minX) minX = o.minX;
        if (o.minY < minY) minY = o.minY;
        if (o.maxX > maxX) maxX = o.maxX;
        if (o.maxY > maxY) maxY = o.maxY;
    }
};

/// The box of a segment, told as the segment tests tell their ranges, so that only what they pass over is left out.
template <class P, class Q>
FlatBox BoxOf(const P& a, const Q& b) {
    return {(std::min)(a.x, b.x), (std::min)(a.y, b.y), (std::max)(a.x, b.x), (std::max)(a.y, b.y)};
}
template <class E>
FlatBox BoxOfEdge(const E& e) {
    return {(std::min)(e.x1, e.x2), (std::min)(e.y1, e.y2), (std::max)(e.x1, e.x2), (std::max)(e.y1, e.y2)};
}

class BoxTree {
public:
    std::size_t size() const { return counts_.empty() ? 0 : counts_.front(); }

    /// `boxAt(i)` is the box of element i. May throw std::bad_alloc.
    template <class BoxAt>
    void Build(std::size_t count, BoxAt boxAt) {
        counts_.clear();
        starts_.clear();
        std::size_t total = 0;
        for (std::size_t n = count;; n = (n + kFan - 1) / kFan) {
            starts_.push_back(total);
            counts_.push_back(n);
            total += n;
            if (n <= kFan) break;
        }
        boxes_.resize(total);
        for (std::size_t i = 0; i < count; ++i) boxes_[i] = boxAt(i);
        if (count > 0) Raise(0, count - 1);
    }

    /// Takes the boxes of the elements `first` to `last` anew. REQUIRES: first <= last < size().
    template <class BoxAt>
    void Update(std::size_t first, std::size_t last, BoxAt boxAt) {
        for (std::size_t i = first; i <= last; ++i) boxes_[i] = boxAt(i);
        Raise(first, last);
    }

    /// The first element at or behind `from` whose box meets `box`; size() when there is none.
    std::size_t Next(std::size_t from, const FlatBox& box) const {
        std::size_t level = 0;
        std::size_t k = from;
        while (k < counts_[level]) {
            while (k % kFan == 0 && level + 1 < counts_.size()) {
                ++level;
                k /= kFan;
            }
            while (boxes_[starts_[level] + k].Meets(box)) {
                if (level == 0) return k;
                --level;
                k *= kFan;
            }
            ++k;
        }
        return counts_.front();
    }

private:
    static constexpr std::size_t kFan = 8;

    void Raise(std::size_t first, std::size_t last) {
        for (std::size_t level = 1; level < counts_.size(); ++level) {
            first /= kFan;
            last /= kFan;
            const std::size_t below = counts_[level - 1];
            for (std::size_t k = first; k <= last; ++k) {
                FlatBox whole;
                const std::size_t end = (std::min)((k + 1) * kFan, below);
                for (std::size_t i = k * kFan; i < end; ++i) whole.Add(boxes_[starts_[level - 1] + i]);
                boxes_[starts_[level] + k] = whole;
            }
        }
    }

    std::vector<std::size_t> counts_;  ///< boxes of each level, the elements first
    std::vector<std::size_t> starts_;
    std::vector<FlatBox> boxes_;
};

}  // namespace orvane
