// Patterns of lines whose ends lie far off the screen: the same picture as a walk of every pixel gives, at the cost of what
// shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <sstream>

#include "tests/render/pattern_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

using Lines = std::vector<std::string>;

std::string Text(Point p) { return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")"; }

/// What verbs put on the picture: lines with both of their ends and arcs with all that shapes them. Moves and the arc direction
/// show only through these.
Lines Picture(const Lines& verbs) {
    Lines shown;
    std::string at = "nowhere", arcs = "no direction";
    for (const std::string& verb : verbs) {
        std::istringstream words(verb);
        std::string name;
        Point p;
        words >> name >> p.x >> p.y;
        if (name == "MoveToEx") {
            at = Text(p);
        } else if (name == "LineTo") {
            shown.push_back("line " + at + Text(p));
            at = Text(p);
        } else if (name == "SetArcDirection") {
            arcs = verb;
        } else if (name == "ArcTo") {
            shown.push_back(verb + " from " + at + " " + arcs);
            at = "the end of " + verb;
        } else {
            shown.push_back(name == "Chord" ? verb + " " + arcs : verb);
        }
    }
    return shown;
}

/// The pattern as it is described: every pixel of the line is visited and counted, one after the other.
class LiteralWalk {
public:
    LiteralWalk(const LineTypeDef& def, int w, const Rect& clip) : def_(def), w_(w), clip_(clip) {}

    Lines Draw(const std::vector<Point>& pts) {
        Move(pts[0]);
        P_ = def_.ltList[0] * w_;
        if (def_.ltKind == 4 || def_.ltKind == 5) {
            P_ = 0;
            for (int i = 0; i < def_.ltCnt; ++i) P_ += def_.ltList[static_cast<std::size_t>(i)] * w_;
        }
        for (std::size_t i = 1; i < pts.size(); ++i) Segment(pts[i - 1], pts[i]);
        return verbs_;
    }

private:
    void Segment(Point a, Point b) {
        const int dx = b.x - a.x, dy = b.y - a.y;
        const double len = std::sqrt(double(dx) * dx + double(dy) * dy);
        const int m = (std::max)(std::abs(dx), std::abs(dy));
        step_ = len == 0 ? 0 : int(double(std::int64_t(m) * P_) / len);
        if (step_ <= 0) return;
        angle_ = std::atan2(double(-dy), double(dx));
        counter_ = 0;
        last_ = a;
        const bool steep = std::abs(dy) > std::abs(dx);
        const int shorter = (std::min)(std::abs(dx), std::abs(dy));
        const int sx = dx < 0 ? -1 : 1, sy = dy < 0 ? -1 : 1;
        int error = 2 * shorter - m;
        Point at = a;
        for (int i = 0; i < m; ++i) {
            Visit(at);
            if (error > 0) {
                (steep ? at.x : at.y) += steep ? sx : sy;
                error -= 2 * m;
            }
            error += 2 * shorter;
            (steep ? at.y : at.x) += steep ? sy : sx;
        }
        if (def_.ltKind == 3 && def_.ltBase != 1) {
            Move(b);
        } else {
            Line(b);
        }
    }

    void Visit(Point p) {
        if (++counter_ % step_ != 0) return;
        if (Meets(p)) {
            if (def_.ltKind == 3) Ticks(p);
            if (def_.ltKind == 4 || def_.ltKind == 5) Dashes(p);
            if (def_.ltKind == 7) Wave(p);
            if (def_.ltKind == 8) Shape(p);
        } else if (def_.ltKind != 3) {
            Move(p);
        }
        last_ = p;
    }

    bool Meets(Point p) const {
        int left = (std::min)(p.x, last_.x), right = (std::max)(p.x, last_.x);
        int top = (std::min)(p.y, last_.y), bottom = (std::max)(p.y, last_.y);
        if (top < 0) top -= 1;
        if (left < 0) left -= 1;
        if (bottom > 0) bottom += 1;
        if (right > 0) right += 1;
        return left < right && top < bottom && (std::max)(left, clip_.left) < (std::min)(right, clip_.right) &&
               (std::max)(top, clip_.top) < (std::min)(bottom, clip_.bottom);
    }

    static int Round(double v) { return int(v > 0 ? v + 0.5 : v - 0.5); }
    static Point End(int length, double angle, Point a, Point b) {
        const double t = std::atan2(double(a.y - b.y), double(b.x - a.x)) + angle * 0.017453292;
        return {b.x + Round(length * std::cos(t)), b.y - Round(length * std::sin(t))};
    }

    void Ticks(Point p) {
        const int L = def_.ltLen * w_;
        const double A = def_.ltAngle;
        if (def_.ltDir == 1) {
            Joined(End(L, A, last_, p), p, End(L, -A, last_, p));
        } else {
            Poly("Polyline", {p, End(L, A * Sign(), last_, p)});
        }
    }
    int Sign() {
        if (def_.ltDir == 3) side_ = -side_;
        return def_.ltDir == 0 ? 1 : def_.ltDir == 2 ? -1 : side_;
    }
    void Joined(Point p, Point c, Point q) {
        if (std::fabs(def_.ltAngle) == 90.0) {
            Poly("Polyline", {p, q});
        } else {
            Poly("Polyline", {p, c, q});
        }
    }

    void Dashes(Point p) {
        const int L = def_.ltLen * w_;
        const double A = def_.ltAngle;
        const Point s = last_;
        Point c, m;
        for (int i = 0; i < def_.ltCnt; ++i) {
            const int d = def_.ltList[static_cast<std::size_t>(i)] * w_;
            if (i == 0) {
                c = {s.x + d * (p.x - s.x) / P_, s.y + d * (p.y - s.y) / P_};
                m = {s.x + (d / 2) * (p.x - s.x) / P_, s.y + (d / 2) * (p.y - s.y) / P_};
            } else {
                c.x += d * (p.x - s.x) / P_;
                c.y += d * (p.y - s.y) / P_;
            }
            if (i % 2 == 1) {
                Move(c);
                continue;
            }
            Line(c);
            const bool atStart = def_.ltPos == 1 || def_.ltPos == 3, atEnd = def_.ltPos == 2 || def_.ltPos == 3;
            if (def_.ltDir == 1) {
                if (atStart) Joined(End(L, A, c, s), s, End(L, -A, c, s));
                if (atEnd) Joined(End(L, A, s, c), {c.x, c.x}, End(L, -A, s, c));
                if (!atStart && !atEnd) Joined(End(L, A, s, m), {m.x, m.x}, End(L, -A, s, m));
            } else {
                const int sign = Sign();
                if (atStart) Poly("Polyline", {s, End(L, -A * sign, c, s)});
                if (atEnd) Poly("Polyline", {c, End(L, A * sign, s, c)});
                if (!atStart && !atEnd) Poly("Polyline", {m, End(L, A * sign, s, m)});
            }
        }
    }

    double WaveAngle() {
        if (def_.ltDir == 0) side_ = 1;
        if (def_.ltDir == 2) side_ = -1;
        verbs_.push_back(side_ == 1 ? "SetArcDirection 2" : "SetArcDirection 1");
        return side_ == 1 ? -90.0 : 90.0;
    }
    void Arc(const char* verb, Point p, double B) {
        const double R = P_ * 1.25 / 2.0, D = P_ * 3.0 / 8.0, a = B * 0.017453292 + angle_;
        const double x = last_.x + (p.x - last_.x) / 2.0 + std::cos(a) * D;
        const double y = last_.y + (p.y - last_.y) / 2.0 - std::sin(a) * D;
        std::ostringstream text;
        text << verb << ' ' << int(x - R) << ' ' << int(y - R) << ' ' << int(x + R + 0.5) << ' ' << int(y + R + 0.5) << ' '
             << last_.x << ' ' << last_.y << ' ' << p.x << ' ' << p.y;
        verbs_.push_back(text.str());
    }
    Point Tip(Point p) const {
        const Point mid{int(last_.x + (p.x - last_.x) / 2.0), int(last_.y + (p.y - last_.y) / 2.0)};
        return End(int(std::sqrt(3.0) * P_ / 2.0 / 2.0), side_ == 1 ? 90.0 : -90.0, last_, mid);
    }
    void Wave(Point p) {
        const double B = WaveAngle();
        const double out = side_ == 1 ? 90.0 : -90.0;
        const int shape = def_.ltList2[0];
        if (shape == 7) Arc("ArcTo", p, B);
        if (shape == 8) Line(last_), Line(Tip(p)), Line(p);
        if (shape == 9) Line(last_), Line(End(P_ / 2, -out, p, last_)), Line(End(P_ / 2, out, last_, p)), Line(p);
        if (def_.ltDir == 3) side_ = -side_;
    }
    void Shape(Point p) {
        if (skip_ == 1) {
            skip_ = 0;
            return;
        }
        const double B = WaveAngle();
        const double out = side_ == 1 ? 90.0 : -90.0;
        const int shape = def_.ltList2[1];
        if (shape == 2) Poly("Polygon", {last_, End(P_ / 2, -out, p, last_), End(P_ / 2, out, last_, p), p});
        if (shape == 3) Poly("Polygon", {last_, Tip(p), p});
        if (shape == 6) Arc("Chord", p, B);
        if (def_.ltDir == 3) side_ = -side_;
        skip_ = 1;
    }

    void Move(Point p) { verbs_.push_back("MoveToEx " + std::to_string(p.x) + " " + std::to_string(p.y)); }
    void Line(Point p) { verbs_.push_back("LineTo " + std::to_string(p.x) + " " + std::to_string(p.y)); }
    void Poly(const char* verb, const std::vector<Point>& pts) {
        std::string text = std::string(verb) + " [";
        for (std::size_t i = 0; i < pts.size(); ++i) text += (i == 0 ? "" : " ") + Text(pts[i]);
        verbs_.push_back(text + "]");
    }

    const LineTypeDef& def_;
    int w_;
    Rect clip_;
    Lines verbs_;
    int P_ = 0, step_ = 0, counter_ = 0, side_ = 1, skip_ = 0;
    double angle_ = 0;
    Point last_;
};

class FarLinesTest : public testing::Test {
protected:
    FarLinesTest() : rig(3, {10}) {
        rig.def.ltLen = 5;
        rig.def.ltAngle = 60.0;
    }
    /// Every kind in turn with each side and place.
    void Take(int n) {
        const std::int32_t kinds[] = {3, 4, 5, 7, 7, 7, 8, 8, 8};
        const std::int32_t figures[] = {0, 0, 0, 7, 8, 9, 2, 3, 6};
        const auto i = static_cast<std::size_t>(n % 9);
        rig.def.ltKind = kinds[i];
        rig.def.ltDir = n / 9 % 4;
        rig.def.ltPos = rig.def.ltKind == 5 ? n / 36 % 4 : 0;
        rig.def.ltBase = n / 9 % 2;
        rig.def.ltAngle = n % 5 == 0 ? 90.0 : 60.0;
        rig.SetList2({figures[i], figures[i]});
        rig.def.ltList.Truncate(0);
        const std::int32_t list[] = {7 + n % 13, 4, 5, 3};
        const std::size_t used = kinds[i] == 4 || kinds[i] == 5 ? 4 - static_cast<std::size_t>(n) % 2 : 1;
        for (std::size_t k = 0; k < used; ++k) ASSERT_TRUE(rig.def.ltList.PushBack(list[k]));
        rig.def.ltCnt = static_cast<std::int32_t>(used);
    }
    void ExpectThePictureOfTheWalk(const std::vector<Point>& pts) {
        DrawLinePattern(rig.store, rig.dc, rig.clip, pts.data(), static_cast<std::int32_t>(pts.size()), 0);
        const Lines verbs = rig.Verbs();
        const Lines walked = LiteralWalk(rig.def, rig.store.view.PenFactor(), rig.clip).Draw(pts);
        EXPECT_EQ(Picture(verbs), Picture(walked));
        EXPECT_LE(verbs.size(), walked.size()) << "moves in a row become one";
    }

    PatternRig rig;
    std::mt19937 random{11};
};

TEST_F(FarLinesTest, LinesWithinAndAroundTheClipAreDrawnAsTheWalkOfEveryPixelDrawsThem) {
    std::uniform_int_distribution<std::int32_t> x(-300, 500), y(-250, 350);
    for (int n = 0; n < 432; ++n) {
        Take(n);
        rig.store.view.DpiRatio = n % 7 == 0 ? 2 : 1;
        rig.clip = n % 3 == 0 ? Rect{-60, -40, 90, 70} : Rect{0, 0, 200, 100};
        std::vector<Point> pts;
        for (int i = 0; i < 2 + n % 4; ++i) pts.push_back({x(random), y(random)});
        if (n % 11 == 0) pts[1].y = pts[0].y = n % 2;  // level, along the axis or beside it
        ExpectThePictureOfTheWalk(pts);
        if (HasFailure()) FAIL() << "line " << n;
    }
}

TEST_F(FarLinesTest, LinesFromFarAwayAreDrawnAsTheWalkOfEveryPixelDrawsThem) {
    constexpr std::int32_t kFar = 1 << 13;
    std::uniform_int_distribution<std::int32_t> away(-kFar, kFar), x(0, 199), y(0, 99);
    for (int n = 0; n < 72; ++n) {
        Take(n);
        const Point from{away(random), away(random)};
        const Point through{x(random), y(random)};
        const Point beyond{2 * through.x - from.x, 2 * through.y - from.y};
        ExpectThePictureOfTheWalk({from, beyond, {through.x, -kFar}});
        if (HasFailure()) FAIL() << "line " << n;
    }
}

// --- Ends at 2^30, where the pattern points are told by hand ------------------------------------------------------------

constexpr std::int32_t kVeryFar = 1 << 30;

TEST_F(FarLinesTest, TicksOfALevelLineFromVeryFarStandWhereTheCountComesOut) {
    rig.def.ltLen = 0;
    // Call 100 k is x = -2^30 + 100 k - 1, and 2^30 = 24 mod 100: k = 10737418 leaves -25, then 75, 175, 275.
    rig.def.ltList[0] = 100;
    EXPECT_THAT(rig.Draw({{-kVeryFar, 50}, {kVeryFar, 50}}),
                ElementsAre("MoveToEx -1073741824 50", "Polyline [(75,50) (75,50)]", "Polyline [(175,50) (175,50)]",
                            "Polyline [(275,50) (275,50)]", "MoveToEx 1073741824 50"));
    EXPECT_THAT(rig.Draw({{kVeryFar, 50}, {-kVeryFar, 50}}, "Polyline"),
                ElementsAre("Polyline [(125,50) (125,50)]", "Polyline [(25,50) (25,50)]", "Polyline [(-75,50) (-75,50)]"));
}

TEST_F(FarLinesTest, DashesOfADiagonalFromVeryFarBeginBehindOneMove) {
    rig.def.ltKind = 4;
    rig.def.ltDir = 4;  // no ticks
    rig.def.ltList[0] = 60;
    ASSERT_TRUE(rig.def.ltList.PushBack(40));
    rig.def.ltCnt = 2;
    // A pitch of 100 is 70 rows of the diagonal, and 2^30 = 64 mod 70: pitches end at -65, 5, 75 and 145, and the last of all at
    // 70 * 30678337 - 1 - 2^30. A dash is 60 * 70 / 100 = 42 rows, a gap 28.
    EXPECT_THAT(rig.Draw({{-kVeryFar, -kVeryFar}, {kVeryFar, kVeryFar}}),
                ElementsAre("MoveToEx -1073741824 -1073741824", "MoveToEx -65 -65", "LineTo -23 -23", "MoveToEx 5 5",
                            "LineTo 47 47", "MoveToEx 75 75", "LineTo 117 117", "MoveToEx 145 145",
                            "MoveToEx 1073741765 1073741765", "LineTo 1073741824 1073741824"));
}

TEST_F(FarLinesTest, LineOverTheWholeDeviceSpaceCostsWhatShows) {
    constexpr std::int32_t kMost = 2147483647, kLeast = -2147483647 - 1;
    rig.def.ltList[0] = 1;
    for (const std::int32_t kind : {3, 4, 5, 7, 8}) {
        rig.def.ltKind = kind;
        rig.SetList2({8, 3});
        EXPECT_THAT(rig.Draw({{kLeast, 50}, {kMost, 50}}), SizeIs(testing::Le(5u * 202))) << kind;
        EXPECT_THAT(rig.Draw({{kLeast, 200}, {kMost, 200}}), SizeIs(testing::Le(3u))) << kind;
        rig.Draw({{kLeast, kLeast}, {kMost, kMost}, {kLeast, kMost}, {kMost, kLeast}});
    }
}

TEST_F(FarLinesTest, ClipAsLargeAsTheNumbersGoDrawsNoMoreThanAnyDeviceCouldShow) {
    constexpr std::int32_t kMost = 2147483647, kLeast = -2147483647 - 1;
    rig.clip = {kLeast, kLeast, kMost, kMost};
    rig.def.ltList[0] = 64;
    const Lines ticks = rig.Draw({{kLeast, 50}, {kMost, 50}}, "Polyline");
    EXPECT_THAT(ticks, SizeIs(testing::AllOf(testing::Ge(65536u / 64), testing::Le(10000u))));
}

}  // namespace
}  // namespace orvane
