// Cutting: each edge of A, from the first on, meets each edge of B in list order, while both lists grow. A cut edge stands in its
// list as its pieces, in their order, and the second piece is met in its own turn.
//
// Only the edge of A at hand is ever cut, so what is behind it in A waits on a stack of ends. An edge of B may be cut at any
// time; its cuts are kept in order along it. Each cut lies in the box of its piece, so the pieces go one way in x and in y, and
// those that may meet a box are found by search.
#include <memory>
#include <set>

#include "analysis/geometry/plane.h"
#include "analysis/overlay_parts.h"

namespace orvane {

namespace {

struct CutEnd {
    double x = 0, y = 0;
    std::int32_t vertex = 0;
};

bool SamePlace(const CutEnd& a, const CutEnd& b) { return a.x == b.x && a.y == b.y; }

/// A corner of a box, as seen along an edge: the cut that is the first to have reached it in x and in y is searched for.
struct Corner {
    double x, y;
};

/// The order of cuts along an edge.
struct Along {
    using is_transparent = void;
    double signX = 1, signY = 1;

    bool operator()(const CutEnd& a, const CutEnd& b) const {
        return a.x != b.x ? signX * a.x < signX * b.x : signY * a.y < signY * b.y;
    }
    bool operator()(const CutEnd& cut, const Corner& corner) const {
        return !(signX * cut.x >= signX * corner.x && signY * cut.y >= signY * corner.y);
    }
    bool Passed(const CutEnd& cut, const Corner& corner) const {
        return signX * cut.x > signX * corner.x || signY * cut.y > signY * corner.y;
    }
    Corner Near(const FlatBox& box) const { return {signX > 0 ? box.minX : box.maxX, signY > 0 ? box.minY : box.maxY}; }
    Corner Far(const FlatBox& box) const { return {signX > 0 ? box.maxX : box.minX, signY > 0 ? box.maxY : box.minY}; }
};

using Cuts = std::set<CutEnd, Along>;

class Cutter {
public:
    Cutter(const EdgeList& a, const EdgeList& b, VertexTable& vertices, OverlayWatch& watch)
        : a_(a),
          b_(b),
          vertices_(vertices),
          watch_(watch),
          countA_(a.edges.size()),
          countB_(b.edges.size()),
          cuts_(countB_),
          tries_(countB_) {
        const std::size_t sum = countA_ + countB_;
        most_ = sum > 4096 ? kMostPieces : (std::min)(kMostPieces, sum * sum);
        tree_.Build(countB_, [&](std::size_t j) { return BoxOfEdge(b.edges[j]); });
        newA_.edges.reserve(countA_ + countA_ / 4);
    }

    bool Run(EdgeList& newA, EdgeList& newB) {
        newA_.ringStarts.push_back(0);
        for (std::size_t i = 0; i < a_.edges.size(); ++i) {
            if (i > 0 && a_.edges[i].ring != a_.edges[i - 1].ring) newA_.ringStarts.push_back(newA_.edges.size());
            watch_.SetDone(kCutDone * static_cast<double>(i) / static_cast<double>(a_.edges.size()));
            if (!CutAtB(a_.edges[i], i)) return false;
        }
        newA_.ringStarts.push_back(newA_.edges.size());
        newA = std::move(newA_);
        newB = ListB();
        return true;
    }

private:
    bool CutAtB(const PolyEdge& whole, std::size_t number) {
        CutEnd start{whole.x1, whole.y1, whole.from};
        ends_.assign(1, {whole.x2, whole.y2, whole.to});
        while (!ends_.empty()) {
            for (std::size_t j = 0;; ++j) {
                j = tree_.Next(j, BoxOf(start, ends_.back()));
                if (j >= tree_.size()) break;
                if (!watch_.GoesOn() || !MeetEdge(start, number, j)) return false;
            }
            if (!watch_.GoesOn()) return false;
            const CutEnd end = ends_.back();
            ends_.pop_back();
            newA_.edges.push_back({start.x, start.y, end.x, end.y, start.vertex, end.vertex, whole.ring});
            start = end;
        }
        return true;
    }

    /// The piece of A from `start` to the nearest end meets the pieces of edge `j` of B in their order.
    bool MeetEdge(const CutEnd& start, std::size_t number, std::size_t j) {
        const PolyEdge& edge = b_.edges[j];
        const CutEnd end{edge.x2, edge.y2, edge.to};
        const Along along{edge.x2 >= edge.x1 ? 1.0 : -1.0, edge.y2 >= edge.y1 ? 1.0 : -1.0};
        CutEnd from{edge.x1, edge.y1, edge.from};
        Cuts* cuts = cuts_[j].get();
        Cuts::iterator next;
        if (cuts != nullptr) {
            next = cuts->lower_bound(along.Near(BoxOf(start, ends_.back())));
            if (next != cuts->begin()) from = *std::prev(next);
        }
        for (;;) {
            const bool isLast = cuts == nullptr || next == cuts->end();
            const CutEnd to = isLast ? end : *next;
            DigPnt at;
            bool cut = false;
            if (SegCross(Pnt(start), Pnt(ends_.back()), Pnt(from), Pnt(to), at) == 1) {
                CutA(start, at);
                const CutEnd point = CutB(from, to, at, cut);
                if (countA_ > most_ || countB_ > most_) return false;
                if (cut && !MayCutAgain(number, j)) return false;
                if (cut) {
                    if (cuts == nullptr) {
                        cuts_[j] = std::make_unique<Cuts>(along);
                        cuts = cuts_[j].get();
                        next = cuts->end();
                    }
                    cuts->insert(next, point);
                    from = point;
                }
            }
            if (!cut) {
                if (isLast) return true;
                from = to;
                ++next;
            }
            if (along.Passed(from, along.Far(BoxOf(start, ends_.back())))) return true;
            if (!watch_.GoesOn()) return false;
        }
    }

    /// Counts the cuts that edge `number` of A makes in edge `j` of B.
    bool MayCutAgain(std::size_t number, std::size_t j) {
        Tries& tries = tries_[j];
        if (tries.number != number) tries = {number, 0};
        return ++tries.count <= kMostCutsOfPair;
    }

    void CutA(const CutEnd& start, const DigPnt& at) {
        if (SamePlace({at.x, at.y}, start) || SamePlace({at.x, at.y}, ends_.back())) return;
        const std::int32_t known = vertices_.Find(at.x, at.y);
        if (known >= 0 && (vertices_.Marks(known) & kSideA) != 0) return;
        ends_.push_back({at.x, at.y, vertices_.Put(at.x, at.y, kSideA)});
        ++countA_;
    }

    CutEnd CutB(const CutEnd& from, const CutEnd& to, const DigPnt& at, bool& cut) {
        CutEnd point{at.x, at.y};
        if (SamePlace(point, from) || SamePlace(point, to)) return point;
        const std::int32_t known = vertices_.Find(at.x, at.y);
        if (known >= 0 && (vertices_.Marks(known) & kSideB) != 0) return point;
        point.vertex = vertices_.Put(at.x, at.y, kSideB);
        ++countB_;
        cut = true;
        return point;
    }

    EdgeList ListB() const {
        EdgeList list;
        list.edges.reserve(countB_);
        list.ringStarts.push_back(0);
        for (std::size_t j = 0; j < b_.edges.size(); ++j) {
            PolyEdge piece = b_.edges[j];
            if (j > 0 && piece.ring != b_.edges[j - 1].ring) list.ringStarts.push_back(list.edges.size());
            const PolyEdge whole = piece;
            if (cuts_[j] != nullptr) {
                for (const CutEnd& cut : *cuts_[j]) {
                    piece.x2 = cut.x;
                    piece.y2 = cut.y;
                    piece.to = cut.vertex;
                    list.edges.push_back(piece);
                    piece.x1 = cut.x;
                    piece.y1 = cut.y;
                    piece.from = cut.vertex;
                }
            }
            piece.x2 = whole.x2;
            piece.y2 = whole.y2;
            piece.to = whole.to;
            list.edges.push_back(piece);
        }
        list.ringStarts.push_back(list.edges.size());
        return list;
    }

    static DigPnt Pnt(const CutEnd& end) { return {end.x, end.y, 0}; }

    struct Tries {
        std::size_t number = 0;  ///< edge of A
        std::size_t count = 0;
    };
    /// Two edges cross once. Rounding lets their pieces cross anew beside the cut, a few times as a rule, but some pairs would
    /// creep along from one number to the next for ever.
    static constexpr std::size_t kMostCutsOfPair = 1 << 16;

    const EdgeList& a_;
    const EdgeList& b_;
    VertexTable& vertices_;
    OverlayWatch& watch_;
    std::size_t countA_, countB_;
    std::size_t most_ = 0;
    BoxTree tree_;
    EdgeList newA_;
    std::vector<CutEnd> ends_;                 ///< of the pieces of A at hand that are still to come, the nearest last
    std::vector<std::unique_ptr<Cuts>> cuts_;  ///< of each edge of B; null for none
    std::vector<Tries> tries_;                 ///< of each edge of B, with the edge of A that cut it last
};

}  // namespace

EdgeList MakeEdgeList(std::span<const DigPnt> pts, OverlaySide side, VertexTable& vertices) {
    const std::vector<std::int32_t> lengths = RingLengths(pts);
    EdgeList list;
    list.edges.reserve(pts.size());
    list.ringStarts.reserve(lengths.size() + 1);
    list.ringStarts.push_back(0);
    std::size_t at = 0;
    for (std::size_t ring = 0; ring < lengths.size(); ++ring) {
        const std::span<const DigPnt> own = pts.subspan(at, static_cast<std::size_t>(lengths[ring]));
        std::int32_t from = vertices.Put(own[0].x, own[0].y, side);
        for (std::size_t i = 1; i < own.size(); ++i) {
            const std::int32_t to = vertices.Put(own[i].x, own[i].y, side);
            list.edges.push_back({own[i - 1].x, own[i - 1].y, own[i].x, own[i].y, from, to, static_cast<std::int32_t>(ring)});
            // What is not a number does not meet itself either.
            const bool isPlace = own[i].x == own[i].x && own[i].y == own[i].y;
            from = isPlace ? to : vertices.Put(own[i].x, own[i].y, side);
        }
        list.ringStarts.push_back(list.edges.size());
        at += own.size();
    }
    return list;
}

bool CutEdges(EdgeList& a, EdgeList& b, VertexTable& vertices, OverlayWatch& watch) {
    if (a.edges.size() > kMostPieces || b.edges.size() > kMostPieces) return false;
    EdgeList newA;
    EdgeList newB;
    if (!Cutter(a, b, vertices, watch).Run(newA, newB)) return false;
    a = std::move(newA);
    b = std::move(newB);
    return true;
}

}  // namespace orvane
