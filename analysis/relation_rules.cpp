#include "analysis/relation_rules.h"

#include "analysis/relation_pairs.h"

namespace orvane {

namespace {

bool SamePlace(const DigPnt& p, const DigPnt& q) { return p.x == q.x && p.y == q.y; }

/// Whether `p` is the first or the last point of the shape.
bool IsEnd(const DigPnt& p, RelationShape& shape) { return SamePlace(p, shape.First()) || SamePlace(p, shape.Last()); }

/// Whether every point of `shape` lies on a segment of `line`.
bool AllOnLine(RelationShape& shape, RelationShape& line) {
    if (line.SurelyLeavesOut(shape)) return false;
    if (!line.OnLine(shape.First())) return false;  // asked for alone, because most items need no more of their points
    for (const DigPnt& p : shape.Points()) {
        if (!line.OnLine(p) || !shape.Spend()) return false;
    }
    return true;
}

bool AnyCrosses(RelationShape& a, RelationShape& b) {
    bool found = false;
    ForSegPairs(a, b, [&](const SegPair& pair) {
        DigPnt c;
        found = pair.Crosses(c);
        return !found;
    });
    return found;
}

bool AnyCrossesOrTouches(RelationShape& a, RelationShape& b) {
    bool found = false;
    ForSegPairs(a, b, [&](const SegPair& pair) {
        DigPnt c;
        found = pair.Crosses(c) || pair.Touches();
        return !found;
    });
    return found;
}

/// Whether the boundaries touch and cross nowhere but at ends of segments.
bool TouchOnly(RelationShape& a, RelationShape& b) {
    bool crosses = false;
    bool touches = false;
    ForSegPairs(a, b, [&](const SegPair& pair) {
        DigPnt c;
        crosses = pair.Crosses(c) && !pair.EndsFirst(c) && !pair.EndsSecond(c);
        touches = touches || pair.Touches();
        return !crosses;
    });
    return touches && !crosses;
}

/// Where the end `p` of a line, with its neighbour `q`, stands.
enum class EndPlace : std::uint8_t { Off, On, Along };

/// Along any segment of `b` that the end's own is parallel to and beside, wherever that one lies.
EndPlace PlaceOfEnd(const DigPnt& p, const DigPnt& q, RelationShape& b) {
    if (!b.OnLine(p)) return EndPlace::Off;
    const std::span<const DigPnt> pts = b.Points();
    for (std::size_t j = 0; j + 1 < pts.size(); ++j) {
        if (SegInside(p, q, pts[j], pts[j + 1]) == 1 || !b.Spend()) return EndPlace::Along;
    }
    return EndPlace::On;
}

bool EndTouchOf(RelationShape& a, RelationShape& b, bool& decided) {
    decided = false;
    if (a.IsClosed() || a.SegCnt() == 0) return false;
    const std::size_t last = a.SegCnt();
    // What is asked first must not need all points: most lines are nowhere near.
    if (!b.OnLine(a.First()) && !b.OnLine(a.Last())) return false;
    const std::span<const DigPnt> pts = a.Points();
    const EndPlace start = PlaceOfEnd(pts[0], pts[1], b);
    const EndPlace end = PlaceOfEnd(pts[last], pts[last - 1], b);
    decided = true;
    if (start == EndPlace::Along || end == EndPlace::Along) return false;
    bool crosses = false;
    ForSegPairs(a, b, [&](const SegPair& pair) {
        DigPnt c;
        crosses = pair.i > 0 && pair.i + 1 < last && pair.Crosses(c);
        return !crosses;
    });
    return !crosses;
}

/// Whether an end of one line stands on the other and no end runs along it, and the segments between that line's first and last
/// cross nothing. The line that an end is found of first decides.
bool EndTouch(RelationShape& a, RelationShape& b) {
    bool decided = false;
    const bool touches = EndTouchOf(a, b, decided);
    return decided ? touches : EndTouchOf(b, a, decided);
}

/// Whether `line` crosses the boundary of `polygon` between two of its own points, or comes with its points both to segments that
/// run inside and to segments that run along the boundary.
bool LineThrough(RelationShape& line, RelationShape& polygon) {
    bool through = false;
    bool inside = false;
    bool along = false;
    bool begun = false;
    ForSegPairs(line, polygon, [&](const SegPair& pair) {
        DigPnt c;
        if (!pair.Crosses(c)) return true;
        through = !pair.EndsFirst(c);
        if (through) return false;
        if (!begun) line.marks.Begin(line.SegCnt());
        begun = true;
        if (line.marks.Has(pair.i)) return true;  // its middle has been looked at
        line.marks.Add(pair.i);
        const DigPnt middle = MiddleOf(pair.a1, pair.a2);
        if (polygon.Inside(middle)) {
            inside = true;
        } else if (polygon.OnLine(middle)) {
            along = true;
        }
        return !(inside && along);
    });
    return through || (inside && along);
}

bool LineContains(RelationShape& a, RelationShape& b) {
    if (!AllOnLine(b, a)) return false;
    const std::span<const DigPnt> pts = b.Points();
    for (std::size_t j = 0; j + 1 < pts.size(); ++j) {
        if (!a.OnLine(MiddleOf(pts[j], pts[j + 1])) || !b.Spend()) return false;
    }
    return true;
}

bool AllInPolygon(RelationShape& shape, RelationShape& polygon) {
    if (polygon.SurelyLeavesOut(shape)) return false;
    const auto within = [&](const DigPnt& p) { return polygon.Inside(p) || polygon.OnLine(p); };
    if (!within(shape.First())) return false;
    for (const DigPnt& p : shape.Points()) {
        if (!within(p) || !shape.Spend()) return false;
    }
    return true;
}

bool PolygonContains(RelationShape& a, RelationShape& b) {
    if (!AllInPolygon(b, a)) return false;
    if (b.IsLine() && AllOnLine(b, a)) return false;
    // Where a segment of `a` has met one of `b` that leaves at its end, and that really has its middle on `b`, it is done with.
    bool leaves = false;
    bool begun = false;
    ForSegPairs(a, b, [&](const SegPair& pair) {
        DigPnt c;
        if ((begun && a.marks.Has(pair.i)) || !pair.Crosses(c)) return true;
        leaves = !pair.EndsFirst(c) && !pair.EndsSecond(c);
        if (leaves) return false;
        const DigPnt middle = MiddleOf(pair.b1, pair.b2);
        if (a.Inside(middle)) return true;
        leaves = !b.OnLine(middle);
        if (!begun) a.marks.Begin(a.SegCnt());
        begun = true;
        a.marks.Add(pair.i);
        return !leaves;
    });
    return !leaves;
}

bool LinesCross(RelationShape& a, RelationShape& b) {
    bool found = false;
    ForSegPairs(a, b, [&](const SegPair& pair) {
        DigPnt c;
        if (!pair.Crosses(c)) return true;
        found = (a.IsClosed() || !IsEnd(c, a)) && (b.IsClosed() || !IsEnd(c, b));
        return !found;
    });
    return found && !Touches(a, b);
}

/// Whether a segment of `a` is parallel to one of `b` and beside it.
bool AnySegInside(RelationShape& a, RelationShape& b) {
    const std::span<const DigPnt> pts = b.Points();
    for (std::size_t j = 0; j + 1 < pts.size(); ++j) {
        if (a.AnySegInside(pts[j], pts[j + 1])) return true;
        if (!b.Spend()) return false;
    }
    return false;
}

}  // namespace

bool Equals(RelationShape& a, RelationShape& b) {
    if (a.Type() != b.Type()) return false;
    if (a.IsPoint()) return SamePlace(a.First(), b.First());
    if (a.IsLine() && !a.IsClosed()) {
        const bool along = SamePlace(a.First(), b.First()) && SamePlace(a.Last(), b.Last());
        const bool reversed = SamePlace(a.First(), b.Last()) && SamePlace(a.Last(), b.First());
        if (!along && !reversed) return false;
    }
    return AllOnLine(b, a) && AllOnLine(a, b);
}

bool Disjoint(RelationShape& a, RelationShape& b) {
    if (a.IsPoint()) {
        if (b.IsPoint()) return !SamePlace(a.First(), b.First());
        return !(b.IsPolygon() && b.Inside(a.First())) && !b.OnLine(a.First());
    }
    // A point on the boundary of a polygon that stands first is not looked for there.
    if (b.IsPoint()) return a.IsLine() ? !a.OnLine(b.First()) : !a.Inside(b.First());
    if (b.IsLine()) {
        if (AnyCrossesOrTouches(a, b)) return false;
        return a.IsLine() || !b.Inside(a.First());  // a closed line has an inside
    }
    if (AnyCrosses(a, b) || b.Inside(a.First())) return false;
    return a.IsLine() || !a.Inside(b.First());
}

bool Touches(RelationShape& a, RelationShape& b) {
    if (a.IsPoint()) {
        if (b.IsLine()) return !b.IsClosed() && IsEnd(a.First(), b);
        return b.IsPolygon() && b.OnLine(a.First());
    }
    if (b.IsPoint()) return a.IsLine() ? !a.IsClosed() && IsEnd(b.First(), a) : a.OnLine(b.First());
    if (a.IsLine() && b.IsLine()) return EndTouch(a, b);
    if (!TouchOnly(a, b)) return false;
    if (a.IsLine()) return !Contains(b, a);
    return !Contains(a, b) && (b.IsLine() || !Contains(b, a));
}

bool Crosses(RelationShape& a, RelationShape& b) {
    if (a.IsPoint()) return false;
    if (b.IsPoint()) return !(a.IsLine() && IsEnd(b.First(), a)) && a.OnLine(b.First());
    if (a.IsLine()) return b.IsLine() ? LinesCross(a, b) : LineThrough(a, b);
    if (b.IsPolygon() && Equals(a, b)) return false;
    return Overlaps(a, b) || Contains(a, b);
}

bool Contains(RelationShape& a, RelationShape& b) {
    if (a.IsPoint()) return b.IsPoint() && SamePlace(a.First(), b.First());
    if (b.IsPoint()) return a.IsLine() ? a.OnLine(b.First()) : a.Inside(b.First());
    if (a.IsLine()) return b.IsLine() && LineContains(a, b);
    return PolygonContains(a, b);
}

bool Overlaps(RelationShape& a, RelationShape& b) {
    if (a.IsPoint() || b.IsPoint()) return false;
    if (b.IsPolygon()) return LineThrough(a, b);
    if (a.IsPolygon()) return LineThrough(b, a);
    return AnySegInside(a, b) && !Contains(a, b) && !Contains(b, a);
}

bool Relates(std::int32_t op, RelationShape& query, RelationShape& item) {
    switch (static_cast<RelationOp>(op)) {
        case RelationOp::Equals:
            return Equals(query, item);
        case RelationOp::Disjoint:
            return Disjoint(query, item);
        case RelationOp::Intersects:
            return !Disjoint(query, item);
        case RelationOp::Touches:
            return Touches(query, item);
        case RelationOp::Crosses:
            return Crosses(query, item);
        case RelationOp::Within:
            return Contains(item, query);
        case RelationOp::Contains:
            return Contains(query, item);
        case RelationOp::Overlaps:
            return Overlaps(query, item);
    }
    return false;
}

}  // namespace orvane
