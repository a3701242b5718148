#include "tests/analysis/plain_overlay.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace orvane::plain {

namespace {

struct Place {
    double x;
    double y;
    bool operator==(const Place& o) const { return x == o.x && y == o.y; }
};

Place StartOf(const PolyEdge& e) { return {e.x1, e.y1}; }
Place EndOf(const PolyEdge& e) { return {e.x2, e.y2}; }
DigPnt Pnt(const Place& p) { return {p.x, p.y, 0}; }

std::vector<std::size_t> RingLengths(const Points& pts) {
    std::vector<std::int32_t> counts(pts.size());
    counts.resize(static_cast<std::size_t>(SplitRings(pts, counts.data(), true)));
    return {counts.begin(), counts.end()};
}

bool SameSegment(const PolyEdge& a, const PolyEdge& b) {
    return (StartOf(a) == StartOf(b) && EndOf(a) == EndOf(b)) || (StartOf(a) == EndOf(b) && EndOf(a) == StartOf(b));
}

/// Whether `edge` comes to `place` and does not go from there to `other`.
bool Meets(const PolyEdge& edge, const Place& place, const Place& other) {
    return (StartOf(edge) == place && !(EndOf(edge) == other)) || (EndOf(edge) == place && !(StartOf(edge) == other));
}

std::size_t NextThat(const EdgeList& edges, const Place& place, const Place& other, std::size_t not1, std::size_t not2) {
    for (std::size_t j = 0; j < edges.size(); ++j) {
        if (j != not1 && j != not2 && !edges[j].used && Meets(edges[j], place, other)) return j;
    }
    return edges.size();
}

struct FarEnds {
    std::vector<Place> places;
    std::vector<int> counters;

    void Add(const Place& far) {
        for (std::size_t n = 0; n < places.size(); ++n) {
            if (places[n] == far) {
                ++counters[n];
                return;
            }
        }
        places.push_back(far);
        counters.push_back(1);
    }
    void Look(const PolyEdge& edge, const Place& place) {
        if (StartOf(edge) == place)
            Add(EndOf(edge));
        else if (EndOf(edge) == place)
            Add(StartOf(edge));
    }
    bool IsOneOnce() const { return places.size() == 1 && counters[0] == 1; }
};

}  // namespace

EdgeList ListOf(const Points& pts) {
    EdgeList list;
    for (const Edge& edge : Edges(pts)) {
        PolyEdge own;
        own.x1 = edge.x1;
        own.y1 = edge.y1;
        own.x2 = edge.x2;
        own.y2 = edge.y2;
        list.push_back(own);
    }
    return list;
}

void Cut(EdgeList& list, std::size_t i, const DigPnt& at) {
    const Place point{at.x, at.y};
    if (point == StartOf(list[i]) || point == EndOf(list[i])) return;
    for (const PolyEdge& edge : list) {
        if (point == EndOf(edge)) return;
    }
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(i), list[i]);
    list[i].x2 = list[i + 1].x1 = at.x;
    list[i].y2 = list[i + 1].y1 = at.y;
}

bool CutAll(EdgeList& a, EdgeList& b) {
    const std::size_t most = (a.size() + b.size()) * (a.size() + b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < b.size(); ++j) {
            DigPnt at;
            if (SegCross({a[i].x1, a[i].y1, 0}, {a[i].x2, a[i].y2, 0}, {b[j].x1, b[j].y1, 0}, {b[j].x2, b[j].y2, 0}, at) != 1)
                continue;
            Cut(a, i, at);
            Cut(b, j, at);
            if (a.size() > most || b.size() > most) return false;
        }
    }
    return true;
}

bool Inside(double x, double y, const EdgeList& edges) {
    if (edges.empty()) return false;
    double q = edges[0].x1 + 1.0;
    for (const PolyEdge& edge : edges) {
        if (edge.x1 > q) q = edge.x1 + 1.0;
        if (edge.x2 > q) q = edge.x2 + 1.0;
    }
    int count = 0;
    std::size_t first = 0;
    while (first < edges.size()) {
        std::size_t last = first + 1;
        while (last < edges.size() && !(EndOf(edges[last]) == StartOf(edges[first]))) ++last;
        if (last >= edges.size()) break;
        for (std::size_t k = first; k <= last; ++k) {
            const PolyEdge& e = edges[k];
            if (e.y1 == e.y2) continue;
            if (!(y >= (std::min)(e.y1, e.y2) && y <= (std::max)(e.y1, e.y2))) continue;
            DigPnt cross;
            if (SegCross({x, y, 0}, {q, y, 0}, {e.x1, e.y1, 0}, {e.x2, e.y2, 0}, cross) != 1) continue;
            int turnA = 1;
            int turnB = 1;
            bool ringEnds = false;
            if (Place{cross.x, cross.y} == EndOf(e)) {
                std::size_t m = k + 1;
                while (m <= last && edges[m].y1 == edges[m].y2) ++m;
                if (m > last) {
                    ringEnds = true;
                    m = first;
                    while (m < k && edges[m].y1 == edges[m].y2) ++m;
                }
                turnA = e.y1 - cross.y <= 0 ? -1 : 1;
                turnB = cross.y - edges[m].y2 <= 0 ? -1 : 1;
                if (!ringEnds) k = m;
            }
            if (!ringEnds) ++count;
            if (turnA != turnB) ++count;
            if (ringEnds) break;
        }
        first = last + 1;
    }
    return count % 2 == 1;
}

Points Clean(const Points& pts) {
    const auto rounded = [](double v) {
        if (!std::isfinite(v) || (v == std::floor(v) && std::fabs(v) < 1e9)) return v;  // prints as it is
        char text[400];
        std::snprintf(text, sizeof text, "%.6f", v);
        return std::strtod(text, nullptr);
    };
    Points kept;
    std::size_t opener = 0;
    bool opens = true;
    for (const DigPnt& pt : pts) {
        const DigPnt p{rounded(pt.x), rounded(pt.y), pt.z};
        if (opens) {
            opener = kept.size();
            opens = false;
        } else if (Place{p.x, p.y} == Place{kept.back().x, kept.back().y}) {
            continue;
        } else {
            opens = Place{p.x, p.y} == Place{kept[opener].x, kept[opener].y};
        }
        kept.push_back(p);
    }
    return kept;
}

bool InPolygon(const DigPnt& p, const Points& pts) {
    const Points clean = Clean(pts);
    EdgeList edges;
    std::size_t opener = 0;
    for (std::size_t i = 0; i < clean.size(); ++i) {
        if (i - opener < 2 || !(Place{clean[i].x, clean[i].y} == Place{clean[opener].x, clean[opener].y})) continue;
        for (std::size_t k = opener + 1; k <= i; ++k) {
            edges.push_back({clean[k - 1].x, clean[k - 1].y, clean[k].x, clean[k].y, 0, 0, false});
        }
        opener = i + 1;
    }
    return Inside(p.x, p.y, edges);
}

void Prune(EdgeList& edges) {
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (edges[i].used) continue;
        const std::size_t j = NextThat(edges, StartOf(edges[i]), EndOf(edges[i]), i, i);
        const std::size_t k = NextThat(edges, EndOf(edges[i]), StartOf(edges[i]), i, j);
        if (j < edges.size() && k < edges.size()) continue;
        edges[i].used = true;
        i = static_cast<std::size_t>(-1);  // the walk starts again
    }
}

void Share(EdgeList& edges) {
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (edges[i].used) continue;
        for (std::size_t j = 0; j < edges.size(); ++j) {
            if (j == i || edges[j].used || !SameSegment(edges[i], edges[j])) continue;
            FarEnds atStart;
            FarEnds atEnd;
            for (std::size_t k = 0; k < edges.size(); ++k) {
                if (k == i || k == j || edges[k].used) continue;
                atStart.Look(edges[k], StartOf(edges[i]));
                atEnd.Look(edges[k], EndOf(edges[i]));
                if (atStart.places.size() == 2 || atEnd.places.size() == 2) break;
            }
            if (atStart.places.size() > 1 || atEnd.places.size() >= 2) {
                edges[i].used = edges[j].used = true;
                break;
            }
            if (atStart.IsOneOnce() || atEnd.IsOneOnce()) edges[i].used = true;
        }
    }
}

Points Link(EdgeList edges, bool isUnion) {
    Prune(edges);
    if (isUnion) {
        Share(edges);
        Prune(edges);
    }
    Points pts;
    for (PolyEdge& e : edges) {
        if (e.used) continue;
        const std::size_t mark = pts.size();
        pts.push_back(Pnt(StartOf(e)));
        e.used = true;
        Place prev = StartOf(e);
        Place cur = EndOf(e);
        bool added = false;
        for (std::size_t i = 0; i < edges.size(); ++i) {
            PolyEdge& edge = edges[i];
            if (!edge.used && StartOf(edge) == cur && !(EndOf(edge) == prev)) {
                pts.push_back(Pnt(StartOf(edge)));
                prev = StartOf(edge);
                cur = EndOf(edge);
                edge.used = added = true;
                i = 0;
            } else if (!edge.used && EndOf(edge) == cur && !(StartOf(edge) == prev)) {
                pts.push_back(Pnt(EndOf(edge)));
                prev = EndOf(edge);
                cur = StartOf(edge);
                edge.used = added = true;
                i = 0;
            }
            if (cur == StartOf(e)) break;
        }
        if (!added) continue;
        pts.push_back(Pnt(cur));
        if (!(cur == StartOf(e))) pts.resize(mark);
    }
    return pts;
}

void Normal(Points& pts) {
    struct Ring {
        std::size_t at, length, lowest;
        double x;
    };
    std::vector<Ring> rings;
    std::size_t at = 0;
    for (std::size_t length : RingLengths(pts)) {
        std::size_t low = 0;
        for (std::size_t n = 1; n < length; ++n) {
            const DigPnt& p = pts[at + n];
            const DigPnt& l = pts[at + low];
            if (p.x < l.x || (p.x == l.x && p.y < l.y)) low = n;
        }
        rings.push_back({at, length, low, pts[at + low].x});
        at += length;
    }
    if (rings.size() == 1) return;
    for (std::size_t i = 0; i < rings.size(); ++i) {
        for (std::size_t j = i + 1; j < rings.size(); ++j) {
            if (rings[i].x > rings[j].x) std::swap(rings[i], rings[j]);
        }
    }
    Points sorted;
    for (const Ring& ring : rings) {
        for (std::size_t n = ring.lowest; n < ring.length; ++n) sorted.push_back(pts[ring.at + n]);
        for (std::size_t n = 1; ring.lowest > 0 && n <= ring.lowest; ++n) sorted.push_back(pts[ring.at + n]);
    }
    std::copy(sorted.begin(), sorted.end(), pts.begin());
}

void Twins(Points& pts) {
    const std::vector<std::size_t> lengths = RingLengths(pts);
    std::vector<std::size_t> starts;
    std::vector<int> marks;
    std::size_t at = 0;
    for (std::size_t length : lengths) {
        starts.push_back(at);
        at += length;
        marks.push_back(std::count(lengths.begin(), lengths.end(), length) == 1 ? 1 : 0);
    }
    const auto isTwin = [&](std::size_t i, std::size_t j) {
        std::vector<bool> taken(lengths[j], false);
        for (std::size_t n = 0; n + 1 < lengths[i]; ++n) {
            std::size_t partner = 0;
            for (; partner + 1 < lengths[j]; ++partner) {
                const DigPnt& p = pts[starts[i] + n];
                const DigPnt& q = pts[starts[j] + partner];
                if (!taken[partner] && p.x == q.x && p.y == q.y) break;
            }
            if (partner + 1 >= lengths[j]) return false;
            taken[partner] = true;
        }
        return true;
    };
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        for (std::size_t j = i + 1; j < lengths.size(); ++j) {
            if (marks[i] != 0 || marks[j] != 0 || !isTwin(i, j)) continue;
            marks[i] = InPolygon(pts[starts[i]], pts) ? -1 : -2;
            marks[j] = -1;
        }
    }
    for (std::size_t i = lengths.size(); i-- > 0;) {
        if (marks[i] != -1) continue;
        const auto from = pts.begin() + static_cast<std::ptrdiff_t>(starts[i]);
        pts.erase(from, from + static_cast<std::ptrdiff_t>(lengths[i]));
    }
}

void Orient(Points& pts) {
    std::size_t at = 0;
    for (std::size_t n : RingLengths(pts)) {
        double area = 0;
        for (std::size_t i = 0; i < n; ++i) {
            area += (pts[at + (i + n - 1) % n].x - pts[at + (i + 1) % n].x) * pts[at + i].y;
        }
        area = area / 2;
        const bool inside = InPolygon(pts[at], pts);
        if ((!inside && area < 0) || (inside && area > 0)) {
            for (std::size_t low = 1, high = n - 2; low < high; ++low, --high) std::swap(pts[at + low], pts[at + high]);
        }
        at += n;
    }
}

Points Overlay(const Points& rawA, const Points& rawB, bool isUnion) {
    const Points a = Clean(rawA);
    const Points b = Clean(rawB);
    if (a.size() < 3 || b.size() < 3) return {};
    EdgeList ea = ListOf(a);
    EdgeList eb = ListOf(b);
    if (!CutAll(ea, eb)) return {};
    for (EdgeList* list : {&ea, &eb}) {
        for (PolyEdge& edge : *list) {
            edge.midX = (edge.x1 + edge.x2) / 2;
            edge.midY = (edge.y1 + edge.y2) / 2;
        }
    }
    EdgeList r;
    for (PolyEdge& i : ea) {
        for (PolyEdge& j : eb) {
            if (j.used || !SameSegment(i, j)) continue;
            r.push_back(i);
            if (isUnion) r.push_back(j);
            i.used = j.used = true;
            break;
        }
    }
    for (PolyEdge& i : ea) {
        if (i.used || Inside(i.midX, i.midY, eb) == isUnion) continue;
        r.push_back(i);
        i.used = true;
    }
    for (PolyEdge& j : eb) {
        if (j.used || Inside(j.midX, j.midY, ea) == isUnion) continue;
        r.push_back(j);
        j.used = true;
    }
    Points result;
    if (r.empty()) {
        if (!SameArea(a, b)) return {};
        result = a;
    } else {
        for (PolyEdge& edge : r) edge.used = false;
        result = Link(r, isUnion);
        Normal(result);
        Twins(result);
    }
    Orient(result);
    for (DigPnt& p : result) p.z = 0;
    return result;
}

Points Snap(const Points& left, Points right) {
    for (DigPnt& r : right) {
        for (const DigPnt& l : left) {
            if (!(Pythag(r.x - l.x, r.y - l.y) <= 0.0001)) continue;
            r.x = l.x;
            r.y = l.y;
            break;
        }
    }
    return right;
}

namespace {

struct Side {
    double x1, y1, x2, y2;
    int owner;
    double At(double y) const { return x1 + (x2 - x1) * (y - y1) / (y2 - y1); }
};

void AddSides(const Points& pts, int owner, std::vector<Side>& sides) {
    std::size_t at = 0;
    for (std::size_t n : RingLengths(pts)) {
        for (std::size_t i = 1; i < n; ++i) {
            const auto whole = [](double v) {
                return std::isnan(v) ? 0.0 : std::clamp(std::trunc(v + 0.5), -2147483648.0, 2147483647.0);
            };
            const DigPnt& p = pts[at + i - 1];
            const DigPnt& q = pts[at + i];
            const Side side{whole(p.x), whole(p.y), whole(q.x), whole(q.y), owner};
            if (side.y1 != side.y2) sides.push_back(side);
        }
        at += n;
    }
}

/// The width of what is inside exactly one of the two areas, or of the first alone, along a horizontal line.
double WidthAt(const std::vector<Side>& sides, double y, bool firstAlone) {
    std::vector<std::pair<double, int>> hits;
    for (const Side& side : sides) {
        if (y > (std::min)(side.y1, side.y2) && y < (std::max)(side.y1, side.y2)) hits.push_back({side.At(y), side.owner});
    }
    std::sort(hits.begin(), hits.end());
    bool in[2] = {false, false};
    double width = 0;
    for (std::size_t i = 0; i + 1 < hits.size(); ++i) {
        in[hits[i].second] = !in[hits[i].second];
        if (firstAlone ? in[0] : in[0] != in[1]) width += hits[i + 1].first - hits[i].first;
    }
    return width;
}

}  // namespace

bool SameArea(const Points& a, const Points& b) {
    std::vector<Side> sides;
    AddSides(a, 0, sides);
    AddSides(b, 1, sides);
    std::vector<double> heights;
    for (const Side& s : sides) {
        heights.push_back(s.y1);
        heights.push_back(s.y2);
        for (const Side& t : sides) {
            DigPnt at;
            if (SegCross({s.x1, s.y1, 0}, {s.x2, s.y2, 0}, {t.x1, t.y1, 0}, {t.x2, t.y2, 0}, at) == 1) heights.push_back(at.y);
        }
    }
    std::sort(heights.begin(), heights.end());
    bool anyArea = false;
    for (std::size_t i = 1; i < heights.size(); ++i) {
        if (heights[i] - heights[i - 1] < 1e-7) continue;
        const double middle = (heights[i] + heights[i - 1]) / 2;
        if (WidthAt(sides, middle, false) > 1e-7) return false;
        if (WidthAt(sides, middle, true) > 1e-7) anyArea = true;
    }
    return anyArea;
}

}  // namespace orvane::plain
