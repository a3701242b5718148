// Chaining: the edges that bound the result become rings. Edges are numbered as they come, and wherever one of several could go
// on, the lowest number does.
#include "analysis/overlay_parts.h"

namespace orvane {

namespace {

/// The edges at each vertex, by ascending number, and what of them is still unused.
class Linker {
public:
    Linker(std::span<const PolyEdge> edges, std::size_t vertexCnt, OverlayWatch& watch)
        : edges_(edges), watch_(watch), used_(edges.size()), segment_(edges.size()), vertices_(vertexCnt) {
        GatherIncidence();
        GatherSegments();
    }

    void Prune();
    void Share();
    std::vector<DigPnt> Chains();

private:
    struct Vertex {
        std::size_t first = 0, end = 0;  ///< its entries in `incident_`
        std::size_t head = 0;            ///< all entries before are used
        std::size_t skip = 0;            ///< between head and here, what is unused is of head's segment
        std::int32_t unused = 0;         ///< edges
        std::int32_t ways = 0;           ///< segments with an unused edge: how many neighbours it has
    };
    /// All edges between the same two vertices.
    struct Segment {
        std::int32_t unused = 0;
        std::int32_t next = -1;       ///< in its hash chain
        std::int32_t firstEdge = -1;  ///< copies are chained by ascending number
        std::int32_t lastEdge = -1;
    };

    Vertex& At(std::int32_t vertex) { return vertices_[static_cast<std::size_t>(vertex)]; }
    const PolyEdge& EdgeAt(std::int32_t e) const { return edges_[static_cast<std::size_t>(e)]; }
    std::int32_t SegmentOf(std::int32_t e) const { return segment_[static_cast<std::size_t>(e)]; }
    bool IsUsed(std::int32_t e) const { return used_[static_cast<std::size_t>(e)] != 0; }

    void GatherIncidence();
    void GatherSegments();
    void Use(std::int32_t e);
    bool ShareOne(std::int32_t i, std::int32_t j);
    std::int32_t NextEdge(std::int32_t vertex, std::int32_t cameBy);
    bool Trace(std::int32_t e, std::vector<DigPnt>& pts);

    std::span<const PolyEdge> edges_;
    OverlayWatch& watch_;
    std::vector<std::uint8_t> used_;
    std::vector<std::int32_t> segment_;
    std::vector<std::int32_t> nextCopy_;
    std::vector<Segment> segments_;
    std::vector<Vertex> vertices_;
    std::vector<std::int32_t> incident_;
};

void Linker::GatherIncidence() {
    for (const PolyEdge& edge : edges_) {
        ++At(edge.from).unused;
        ++At(edge.to).unused;
    }
    std::size_t at = 0;
    for (Vertex& vertex : vertices_) {
        vertex.first = vertex.end = vertex.head = vertex.skip = at;
        at += static_cast<std::size_t>(vertex.unused);
    }
    incident_.resize(at);
    for (std::size_t e = 0; e < edges_.size(); ++e) {
        for (const std::int32_t end : {edges_[e].from, edges_[e].to}) incident_[At(end).end++] = static_cast<std::int32_t>(e);
    }
}

void Linker::GatherSegments() {
    std::vector<std::int32_t> heads(std::bit_ceil(2 * edges_.size() + 1), -1);
    nextCopy_.assign(edges_.size(), -1);
    segments_.reserve(edges_.size());
    for (std::size_t e = 0; e < edges_.size(); ++e) {
        const std::int32_t low = (std::min)(edges_[e].from, edges_[e].to);
        const std::int32_t high = (std::max)(edges_[e].from, edges_[e].to);
        std::uint64_t h = (static_cast<std::uint64_t>(low) << 32 | static_cast<std::uint64_t>(high)) * 0x9E3779B97F4A7C15u;
        h ^= h >> 32;
        std::int32_t& head = heads[static_cast<std::size_t>(h) & (heads.size() - 1)];
        std::int32_t s = head;
        for (; s >= 0; s = segments_[static_cast<std::size_t>(s)].next) {
            const PolyEdge& other = EdgeAt(segments_[static_cast<std::size_t>(s)].firstEdge);
            if ((std::min)(other.from, other.to) == low && (std::max)(other.from, other.to) == high) break;
        }
        const auto number = static_cast<std::int32_t>(e);
        if (s < 0) {
            s = static_cast<std::int32_t>(segments_.size());
            segments_.push_back({0, head, number, number});
            head = s;
            ++At(low).ways;
            ++At(high).ways;
        } else {
            Segment& segment = segments_[static_cast<std::size_t>(s)];
            nextCopy_[static_cast<std::size_t>(segment.lastEdge)] = number;
            segment.lastEdge = number;
        }
        segment_[e] = s;
        ++segments_[static_cast<std::size_t>(s)].unused;
    }
}

void Linker::Use(std::int32_t e) {
    used_[static_cast<std::size_t>(e)] = 1;
    const PolyEdge& edge = EdgeAt(e);
    const bool wasLast = --segments_[static_cast<std::size_t>(SegmentOf(e))].unused == 0;
    for (const std::int32_t end : {edge.from, edge.to}) {
        --At(end).unused;
        if (wasLast) --At(end).ways;
    }
}

/// An edge can be part of a ring only while each of its ends has another neighbour than its other end. Which edges last does not
/// depend on the order in which the others go, so it is enough to follow the vertices that run out of neighbours.
void Linker::Prune() {
    std::vector<std::int32_t> poor;
    for (std::size_t v = 0; v < vertices_.size(); ++v) {
        if (vertices_[v].unused > 0 && vertices_[v].ways < 2) poor.push_back(static_cast<std::int32_t>(v));
    }
    while (!poor.empty()) {
        const Vertex& vertex = At(poor.back());
        poor.pop_back();
        for (std::size_t n = vertex.first; n < vertex.end && vertex.unused > 0; ++n) {
            const std::int32_t e = incident_[n];
            if (IsUsed(e)) continue;
            Use(e);
            for (const std::int32_t end : {EdgeAt(e).from, EdgeAt(e).to}) {
                if (At(end).unused > 0 && At(end).ways == 1 && &At(end) != &vertex) poor.push_back(end);
            }
        }
        if (!watch_.GoesOn()) return;
    }
}

/// The shared edge `i` with its copy `j`, both unused but for `i`, which may have been taken with an earlier copy. What counts is
/// what else is unused at its ends. True when `i` is done with.
bool Linker::ShareOne(std::int32_t i, std::int32_t j) {
    const bool fresh = !IsUsed(i);
    const std::int32_t copies = segments_[static_cast<std::size_t>(SegmentOf(i))].unused - (fresh ? 2 : 1);
    bool crowded = false;
    bool single = false;
    for (const std::int32_t end : {EdgeAt(i).from, EdgeAt(i).to}) {
        const std::int32_t others = At(end).unused - (fresh ? 2 : 1);
        const std::int32_t ways = At(end).ways - (copies == 0 ? 1 : 0);
        crowded = crowded || ways >= 2;
        single = single || others == 1;
    }
    if (crowded) {
        if (fresh) Use(i);
        Use(j);
        return true;
    }
    if (single && fresh) {
        Use(i);
        return false;
    }
    return true;  // the next copies would find the same
}

/// Drops the shared edges that lie inside of the merged shape. Each unused edge in turn is held against its unused copies by
/// ascending number.
void Linker::Share() {
    for (std::size_t n = 0; n < edges_.size(); ++n) {
        const auto i = static_cast<std::int32_t>(n);
        Segment& segment = segments_[static_cast<std::size_t>(SegmentOf(i))];
        if (IsUsed(i) || segment.unused < 2) continue;
        const auto unusedFrom = [&](std::int32_t j) {
            while (j >= 0 && (j == i || IsUsed(j))) j = nextCopy_[static_cast<std::size_t>(j)];
            return j;
        };
        while (segment.firstEdge != i && IsUsed(segment.firstEdge))
            segment.firstEdge = nextCopy_[static_cast<std::size_t>(segment.firstEdge)];
        for (std::int32_t j = unusedFrom(segment.firstEdge); j >= 0; j = unusedFrom(nextCopy_[static_cast<std::size_t>(j)])) {
            if (ShareOne(i, j)) break;
        }
        if (!watch_.GoesOn()) return;
    }
}

/// The lowest unused edge at `vertex` that does not lead back along the segment `cameBy`, or -1.
std::int32_t Linker::NextEdge(std::int32_t vertex, std::int32_t cameBy) {
    Vertex& v = At(vertex);
    while (v.head < v.end && IsUsed(incident_[v.head])) ++v.head;
    if (v.head == v.end) return -1;
    const std::int32_t lowest = incident_[v.head];
    if (SegmentOf(lowest) != cameBy) return lowest;
    v.skip = (std::max)(v.skip, v.head + 1);
    while (v.skip < v.end && (IsUsed(incident_[v.skip]) || SegmentOf(incident_[v.skip]) == cameBy)) ++v.skip;
    return v.skip < v.end ? incident_[v.skip] : -1;
}

/// Follows the edges from `e`, whose start stands in `pts` already. False when the chain did not come back.
bool Linker::Trace(std::int32_t e, std::vector<DigPnt>& pts) {
    const std::int32_t home = EdgeAt(e).from;
    std::int32_t cur = EdgeAt(e).to;
    std::int32_t cameBy = SegmentOf(e);
    DigPnt place{EdgeAt(e).x2, EdgeAt(e).y2, 0};
    bool added = false;
    while (cur != home) {
        const std::int32_t next = NextEdge(cur, cameBy);
        if (next < 0) break;
        const PolyEdge& edge = EdgeAt(next);
        const bool forward = edge.from == cur;
        pts.push_back(forward ? DigPnt{edge.x1, edge.y1, 0} : DigPnt{edge.x2, edge.y2, 0});
        place = forward ? DigPnt{edge.x2, edge.y2, 0} : DigPnt{edge.x1, edge.y1, 0};
        Use(next);
        cur = forward ? edge.to : edge.from;
        cameBy = SegmentOf(next);
        added = true;
    }
    if (!added) return true;  // the one point stays
    pts.push_back(place);
    return cur == home;
}

std::vector<DigPnt> Linker::Chains() {
    std::vector<DigPnt> pts;
    pts.reserve(edges_.size() + edges_.size() / 8 + 1);
    for (std::size_t n = 0; n < edges_.size(); ++n) {
        const auto e = static_cast<std::int32_t>(n);
        if (IsUsed(e)) continue;
        const std::size_t mark = pts.size();
        pts.push_back({EdgeAt(e).x1, EdgeAt(e).y1, 0});
        Use(e);
        if (!Trace(e, pts)) pts.resize(mark);
        if (!watch_.GoesOn()) return {};
    }
    return pts;
}

}  // namespace

std::vector<DigPnt> Link(std::span<const PolyEdge> edges, std::size_t vertexCnt, OverlayMode mode, OverlayWatch& watch) {
    Linker linker(edges, vertexCnt, watch);
    linker.Prune();
    if (mode == OverlayMode::Union) {
        linker.Share();
        linker.Prune();
    }
    return watch.Stopped() ? std::vector<DigPnt>() : linker.Chains();
}

}  // namespace orvane
