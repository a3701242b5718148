// The quick relation tests against the plain walks, on small random cases where everything happens at once: shared vertices,
// sides along each other, repeats, several rings, closed lines, and coordinates at which arithmetic gives up.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>

#include "analysis/relation_rules.h"
#include "tests/analysis/literal_relation.h"

namespace orvane {
namespace {

constexpr std::array kTypes{ShapeType::Point, ShapeType::Line, ShapeType::Polygon};

/// How many cases; a long run asks for more.
int CaseCnt() {
    const char* asked = std::getenv("ORVANE_PROPERTY_CASES");
    const int count = asked == nullptr ? 0 : std::atoi(asked);
    return count > 0 ? count : 4000;
}

class Cases {
public:
    explicit Cases(unsigned seed) : random_(seed) {}

    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    bool OneIn(int n) { return Below(n) == 0; }

    /// Points of a small grid; the smaller, the more of them coincide.
    literal::Shape Make(ShapeType type, int grid, int most) {
        literal::Shape shape{type, {}};
        const int count = 1 + Below(type == ShapeType::Point ? 2 : most);
        while (static_cast<int>(shape.pts.size()) < count) {
            const bool repeats = !shape.pts.empty() && OneIn(12);
            shape.pts.push_back(repeats ? shape.pts[static_cast<std::size_t>(Below(static_cast<int>(shape.pts.size())))]
                                        : DigPnt{double(Below(grid)), double(Below(grid)), 0});
        }
        if (type == ShapeType::Polygon ? !OneIn(8) : OneIn(5)) shape.pts.push_back(shape.pts.front());
        if (type == ShapeType::Polygon && OneIn(4)) {
            const std::size_t opener = shape.pts.size();
            for (int i = 0; i < 3 + Below(3); ++i) shape.pts.push_back({double(Below(grid)), double(Below(grid)), 0});
            shape.pts.push_back(shape.pts[opener]);
        }
        return shape;
    }

    /// The corners of a rectangle, with points between them now and then: shapes that contain each other, share sides, equal.
    literal::Shape Block(ShapeType type, int grid) {
        const double x1 = Below(grid), y1 = Below(grid), x2 = x1 + 1 + Below(grid), y2 = y1 + 1 + Below(grid);
        literal::Shape shape{type, {{x1, y1, 0}, {x2, y1, 0}, {x2, y2, 0}, {x1, y2, 0}, {x1, y1, 0}}};
        if (OneIn(2)) shape.pts.insert(shape.pts.begin() + 1, {(x1 + x2) / 2, y1, 0});
        if (type == ShapeType::Line) shape.pts.resize(static_cast<std::size_t>(2 + Below(3)));
        if (OneIn(3)) shape.pts = {shape.pts.rbegin(), shape.pts.rend()};
        return shape;
    }

    /// Puts numbers in that leave the usual range.
    void Spoil(literal::Shape& shape) {
        constexpr double kInf = std::numeric_limits<double>::infinity();
        const std::array values{std::nan(""), kInf, -kInf, 1e308, -1e308, 1e200, 5e-324, -5e-324, 1e-170, 1e-300, -0.0, 1e16};
        for (int i = 0; i < 1 + Below(3); ++i) {
            DigPnt& p = shape.pts[static_cast<std::size_t>(Below(static_cast<int>(shape.pts.size())))];
            (OneIn(2) ? p.x : p.y) = values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
        }
    }

    std::mt19937& Random() { return random_; }

private:
    std::mt19937 random_;
};

std::string Told(const literal::Shape& shape) {
    std::ostringstream out;
    out.precision(17);
    out << (shape.type == ShapeType::Point ? "point" : shape.type == ShapeType::Line ? "line" : "polygon");
    for (const DigPnt& p : shape.pts) out << " (" << p.x << " " << p.y << ")";
    return out.str();
}

/// All operators on one pair; counts how often each held.
void Compare(const literal::Shape& query, const literal::Shape& item, std::array<int, 8>& held) {
    RelationShape a(RelationShape::Role::Query);
    RelationShape b(RelationShape::Role::Item);
    a.Load(query.type, query.pts);
    b.Load(item.type, item.pts);
    // The same once more through a view that only turns y round.
    ViewParams view;
    view.ScaleX = view.ScaleY = 1;
    view.Zoom = view.DotPerM = 1;
    const DeviceTransform toDevice(view, 0, 0, 0, 0, 0, 0);
    std::vector<DigPnt> map = item.pts;
    for (DigPnt& p : map) p.y = -p.y;
    RelationShape fromMap(RelationShape::Role::Item);
    for (std::int32_t op = 0; op < 8; ++op) {
        const bool expected = literal::Relates(op, query, item);
        ASSERT_EQ(Relates(op, a, b), expected) << "operator " << op << "\n" << Told(query) << "\n" << Told(item);
        // A fresh one each time: what an earlier operator had converted would hide what this one asks of the box alone.
        fromMap.Load(item.type, map, toDevice);
        ASSERT_EQ(Relates(op, a, fromMap), expected) << "from the map, operator " << op << "\n"
                                                     << Told(query) << "\n"
                                                     << Told(item);
        if (expected) ++held[static_cast<std::size_t>(op)];
    }
}

using Held = std::array<std::array<int, 8>, 9>;

template <class MakePair>
Held CompareMany(unsigned seed, int count, MakePair makePair) {
    Cases cases(seed);
    Held held{};
    for (int i = 0; i < count && !testing::Test::HasFatalFailure(); ++i) {
        for (std::size_t pair = 0; pair < 9 && !testing::Test::HasFatalFailure(); ++pair) {
            literal::Shape a, b;
            makePair(cases, kTypes[pair / 3], kTypes[pair % 3], a, b);
            Compare(a, b, held[pair]);
        }
    }
    return held;
}

TEST(RelationPropertyTest, SmallIntegerShapesOfAllTypesAnswerAsThePlainWalks) {
    const Held held = CompareMany(71, CaseCnt(), [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const int grid = 2 + cases.Below(6);
        a = cases.Make(ta, grid, 8);
        b = cases.Make(tb, grid, 8);
    });
    if (HasFatalFailure()) return;
    // The cases are worth something only where the relations hold now and then.
    for (std::size_t pair = 0; pair < 9; ++pair) {
        EXPECT_GT(held[pair][1], 0);
        EXPECT_GT(held[pair][2], 0);
    }
    for (const std::size_t op : {0u, 3u, 4u, 5u, 6u, 7u}) EXPECT_GT(held[4][op], 0) << "lines, operator " << op;
    for (const std::size_t op : {3u, 4u, 5u, 6u, 7u}) EXPECT_GT(held[8][op], 0) << "polygons, operator " << op;
}

TEST(RelationPropertyTest, RectanglesThatContainEqualAndShareSidesAnswerAsThePlainWalks) {
    const Held held = CompareMany(72, CaseCnt() / 2, [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const int grid = 2 + cases.Below(3);
        a = ta == ShapeType::Point ? cases.Make(ta, grid, 1) : cases.Block(ta, grid);
        b = tb == ShapeType::Point ? cases.Make(tb, grid, 1) : cases.Block(tb, grid);
    });
    if (HasFatalFailure()) return;
    for (std::size_t op = 0; op < 8; ++op) EXPECT_GT(held[8][op], 0) << "polygons, operator " << op;
}

TEST(RelationPropertyTest, TurnedAndShiftedShapesWithFractionsAnswerAsThePlainWalks) {
    CompareMany(73, CaseCnt() / 2, [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const int grid = 2 + cases.Below(5);
        a = cases.OneIn(2) ? cases.Make(ta, grid, 8) : cases.Block(ta, grid);
        b = cases.OneIn(2) ? cases.Make(tb, grid, 8) : cases.Block(tb, grid);
        std::uniform_real_distribution<double> unit(-1, 1);
        const double angle = 3.2 * unit(cases.Random()), scale = std::exp2(6 * unit(cases.Random()));
        const double dx = 100 * unit(cases.Random()), dy = 100 * unit(cases.Random());
        for (literal::Shape* shape : {&a, &b}) {
            for (DigPnt& p : shape->pts) {
                p = {scale * (std::cos(angle) * p.x - std::sin(angle) * p.y) + dx,
                     scale * (std::sin(angle) * p.x + std::cos(angle) * p.y) + dy, 0};
            }
        }
    });
}

TEST(RelationPropertyTest, LongShapesWithTheirIndexesAnswerAsThePlainWalks) {
    CompareMany(74, CaseCnt() / 40, [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const int grid = 4 + cases.Below(40);
        a = cases.Make(ta, grid, cases.OneIn(2) ? 120 : 8);
        b = cases.Make(tb, grid, cases.OneIn(2) ? 120 : 8);
    });
}

TEST(RelationPropertyTest, SingleSidesWithManyPointsAlongThemAnswerAsThePlainWalks) {
    // Two long shapes without crossings but at ends: the walks go to their end.
    CompareMany(75, CaseCnt() / 40, [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const auto make = [&](ShapeType type) {
            if (type == ShapeType::Point) return cases.Make(type, 30, 1);
            literal::Shape shape{type, {}};
            const double x1 = cases.Below(8), y1 = cases.Below(4);
            const double x2 = x1 + 20 + cases.Below(4), y2 = y1 + 10 + cases.Below(3);
            for (double x = x1; x < x2; ++x) shape.pts.push_back({x, y1, 0});
            for (double y = y1; y < y2; ++y) shape.pts.push_back({x2, y, 0});
            for (double x = x2; x > x1; --x) shape.pts.push_back({x, y2, 0});
            for (double y = y2; y > y1; --y) shape.pts.push_back({x1, y, 0});
            shape.pts.push_back(shape.pts.front());
            if (type == ShapeType::Line) shape.pts.resize(shape.pts.size() - static_cast<std::size_t>(cases.Below(50)));
            return shape;
        };
        a = make(ta);
        b = cases.OneIn(4) ? a : make(tb);
        b.type = tb;
    });
}

TEST(RelationPropertyTest, NumbersBeyondArithmeticAnswerAsThePlainWalks) {
    CompareMany(76, CaseCnt(), [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const int grid = 2 + cases.Below(3);
        a = cases.Make(ta, grid, cases.OneIn(10) ? 60 : 6);
        b = cases.Make(tb, grid, cases.OneIn(10) ? 60 : 6);
        if (!cases.OneIn(3)) cases.Spoil(a);
        if (!cases.OneIn(3)) cases.Spoil(b);
    });
}

TEST(RelationPropertyTest, TinyShapesAroundTheOriginAnswerAsThePlainWalks) {
    CompareMany(77, CaseCnt() / 2, [](Cases& cases, ShapeType ta, ShapeType tb, auto& a, auto& b) {
        const double units[] = {5e-324, 1e-320, 1e-308, 1e-170, 1e-162, 1e-60, 1e160, 1e120};
        const double unit = units[cases.Below(8)];
        const double other = cases.OneIn(2) ? unit : units[cases.Below(8)];
        a = cases.Make(ta, 4, 6);
        b = cases.Make(tb, 4, 6);
        for (DigPnt& p : a.pts) p = {(p.x - 2) * unit, (p.y - 2) * unit, 0};
        for (DigPnt& p : b.pts) p = {(p.x - 2) * other, (p.y - 2) * unit, 0};
    });
}

}  // namespace
}  // namespace orvane
