#include "tests/analysis/literal_relation.h"

#include "tests/analysis/plain_overlay.h"

namespace orvane::literal {

namespace {

using enum ShapeType;

bool Same(const DigPnt& p, const DigPnt& q) { return p.x == q.x && p.y == q.y; }
bool IsClosed(const Shape& s) { return Same(s.pts.front(), s.pts.back()); }
bool IsEnd(const DigPnt& p, const Shape& s) { return Same(p, s.pts.front()) || Same(p, s.pts.back()); }
bool OnLine(const DigPnt& p, const Shape& s) { return PntOnLine(p, s.pts) == 1; }
bool Inside(const DigPnt& p, const Shape& s) { return plain::InPolygon(p, s.pts); }

/// A pair of segments, and where they cross within both.
struct Pair {
    DigPnt a1, a2, b1, b2, c;
    std::size_t i = 0;
    bool crosses = false;

    bool AtEndOfA() const { return Same(c, a1) || Same(c, a2); }
    bool AtAnyEnd() const { return AtEndOfA() || Same(c, b1) || Same(c, b2); }
    bool Touches() const { return SegTouch(a1, a2, b1, b2) > 0; }
    DigPnt MiddleOfA() const { return {(a1.x + a2.x) / 2, (a1.y + a2.y) / 2, 0}; }
    DigPnt MiddleOfB() const { return {(b1.x + b2.x) / 2, (b1.y + b2.y) / 2, 0}; }
};

std::vector<Pair> PairsOf(const Shape& a, const Shape& b) {
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i + 1 < a.pts.size(); ++i) {
        for (std::size_t j = 0; j + 1 < b.pts.size(); ++j) {
            Pair pair{a.pts[i], a.pts[i + 1], b.pts[j], b.pts[j + 1], {}, i, false};
            pair.crosses = SegCross(pair.a1, pair.a2, pair.b1, pair.b2, pair.c) == 1;
            pairs.push_back(pair);
        }
    }
    return pairs;
}

bool AnyCrosses(const Shape& a, const Shape& b) {
    for (const Pair& pair : PairsOf(a, b)) {
        if (pair.crosses) return true;
    }
    return false;
}

bool AnyTouches(const Shape& a, const Shape& b) {
    for (const Pair& pair : PairsOf(a, b)) {
        if (pair.Touches()) return true;
    }
    return false;
}

bool AllOn(const Shape& points, const Shape& line) {
    for (const DigPnt& p : points.pts) {
        if (!OnLine(p, line)) return false;
    }
    return true;
}

bool TouchOnly(const Shape& a, const Shape& b) {
    for (const Pair& pair : PairsOf(a, b)) {
        if (pair.crosses && !pair.AtAnyEnd()) return false;
    }
    return AnyTouches(a, b);
}

int EndOn(const Shape& a, const Shape& b, int end) {
    const std::size_t last = a.pts.size() - 1;
    const DigPnt p = end == 0 ? a.pts.front() : a.pts.back();
    if (last == 0 || !OnLine(p, b)) return 0;
    const DigPnt q = a.pts[end == 0 ? 1 : last - 1];
    for (std::size_t j = 0; j + 1 < b.pts.size(); ++j) {
        if (SegInside(p, q, b.pts[j], b.pts[j + 1]) == 1) return -1;
    }
    return 1;
}

bool EndTouch(const Shape& a, const Shape& b, bool swapped) {
    if (IsClosed(a)) return swapped ? false : EndTouch(b, a, true);
    const int start = EndOn(a, b, 0);
    if (start == -1) return false;
    const int end = EndOn(a, b, 1);
    if (end == -1) return false;
    if (start != 1 && end != 1) return swapped ? false : EndTouch(b, a, true);
    for (const Pair& pair : PairsOf(a, b)) {
        if (pair.i >= 1 && pair.i + 3 <= a.pts.size() && pair.crosses) return false;
    }
    return true;
}

bool LineThrough(const Shape& line, const Shape& polygon) {
    bool inside = false;
    bool boundary = false;
    for (const Pair& pair : PairsOf(line, polygon)) {
        if (!pair.crosses) continue;
        if (!pair.AtEndOfA()) return true;
        if (Inside(pair.MiddleOfA(), polygon)) {
            inside = true;
        } else if (OnLine(pair.MiddleOfA(), polygon)) {
            boundary = true;
        }
        if (inside && boundary) return true;
    }
    return false;
}

bool PolygonContains(const Shape& a, const Shape& b) {
    for (const DigPnt& p : b.pts) {
        if (!Inside(p, a) && !OnLine(p, a)) return false;
    }
    if (b.type == Line && AllOn(b, a)) return false;
    for (std::size_t i = 0; i + 1 < a.pts.size(); ++i) {
        const Shape segment{Line, {a.pts[i], a.pts[i + 1]}};
        for (const Pair& pair : PairsOf(segment, b)) {
            if (!pair.crosses) continue;
            if (!pair.AtAnyEnd()) return false;
            if (Inside(pair.MiddleOfB(), a)) continue;
            if (!OnLine(pair.MiddleOfB(), b)) return false;
            break;
        }
    }
    return true;
}

bool LineContains(const Shape& a, const Shape& b) {
    if (!AllOn(b, a)) return false;
    for (std::size_t j = 0; j + 1 < b.pts.size(); ++j) {
        const DigPnt middle{(b.pts[j].x + b.pts[j + 1].x) / 2, (b.pts[j].y + b.pts[j + 1].y) / 2, 0};
        if (!OnLine(middle, a)) return false;
    }
    return true;
}

}  // namespace

bool Equals(const Shape& a, const Shape& b) {
    if (a.type != b.type) return false;
    if (a.type == Point) return Same(a.pts[0], b.pts[0]);
    if (a.type == Line && !IsClosed(a)) {
        const bool along = Same(a.pts.front(), b.pts.front()) && Same(a.pts.back(), b.pts.back());
        const bool reversed = Same(a.pts.front(), b.pts.back()) && Same(a.pts.back(), b.pts.front());
        if (!along && !reversed) return false;
    }
    return AllOn(b, a) && AllOn(a, b);
}

bool Disjoint(const Shape& a, const Shape& b) {
    const DigPnt& p = a.pts[0];
    const DigPnt& q = b.pts[0];
    if (a.type == Point) {
        if (b.type == Point) return !Same(p, q);
        if (b.type == Line) return !OnLine(p, b);
        return !(Inside(p, b) || OnLine(p, b));
    }
    if (b.type == Point) return a.type == Line ? !OnLine(q, a) : !Inside(q, a);
    if (AnyCrosses(a, b)) return false;
    if (b.type == Line && AnyTouches(a, b)) return false;
    if (a.type == Line) return b.type == Line || !Inside(p, b);
    if (b.type == Line) return !Inside(p, b);
    return !(Inside(p, b) || Inside(q, a));
}

bool Touches(const Shape& a, const Shape& b) {
    if (a.type == Point) {
        if (b.type == Point) return false;
        if (b.type == Line) return !IsClosed(b) && IsEnd(a.pts[0], b);
        return OnLine(a.pts[0], b);
    }
    if (b.type == Point) {
        if (a.type == Line) return !IsClosed(a) && IsEnd(b.pts[0], a);
        return OnLine(b.pts[0], a);
    }
    if (a.type == Line && b.type == Line) return EndTouch(a, b, false);
    if (!TouchOnly(a, b)) return false;
    if (a.type == Line) return !Contains(b, a);
    if (Contains(a, b)) return false;
    return b.type == Line || !Contains(b, a);
}

bool Crosses(const Shape& a, const Shape& b) {
    if (a.type == Point) return false;
    if (a.type == Line) {
        if (b.type == Point) return !IsEnd(b.pts[0], a) && OnLine(b.pts[0], a);
        if (b.type == Polygon) return LineThrough(a, b);
        for (const Pair& pair : PairsOf(a, b)) {
            if (!pair.crosses) continue;
            if ((!IsClosed(a) && IsEnd(pair.c, a)) || (!IsClosed(b) && IsEnd(pair.c, b))) continue;
            return !Touches(a, b);
        }
        return false;
    }
    if (b.type == Point) return OnLine(b.pts[0], a);
    if (b.type == Polygon && Equals(a, b)) return false;
    return Overlaps(a, b) || Contains(a, b);
}

bool Contains(const Shape& a, const Shape& b) {
    if (a.type == Point) return b.type == Point && Same(a.pts[0], b.pts[0]);
    if (a.type == Line) {
        if (b.type == Point) return OnLine(b.pts[0], a);
        return b.type == Line && LineContains(a, b);
    }
    return b.type == Point ? Inside(b.pts[0], a) : PolygonContains(a, b);
}

bool Overlaps(const Shape& a, const Shape& b) {
    if (a.type == Point || b.type == Point) return false;
    if (b.type == Polygon) return LineThrough(a, b);
    if (a.type == Polygon) return LineThrough(b, a);
    for (const Pair& pair : PairsOf(a, b)) {
        if (SegInside(pair.a1, pair.a2, pair.b1, pair.b2) == 1) return !Contains(a, b) && !Contains(b, a);
    }
    return false;
}

bool Relates(std::int32_t op, const Shape& query, const Shape& item) {
    switch (op) {
        case 0:
            return Equals(query, item);
        case 1:
            return Disjoint(query, item);
        case 2:
            return !Disjoint(query, item);
        case 3:
            return Touches(query, item);
        case 4:
            return Crosses(query, item);
        case 5:
            return Contains(item, query);
        case 6:
            return Contains(query, item);
        case 7:
            return Overlaps(query, item);
        default:
            return false;
    }
}

}  // namespace orvane::literal
