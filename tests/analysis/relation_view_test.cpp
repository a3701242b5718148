// Relation tests through random views, turned, stretched, scaled and shifted, against plain walks on points that a plain formula
// carries to the device: with items whose rectangles are true, wrong, or were never looked at.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "analysis/relation.h"
#include "store/dat_lookup.h"
#include "tests/analysis/literal_relation.h"

namespace orvane {
namespace {

struct Place {
    double GX = 0, GY = 0;
};

class ViewCase {
public:
    explicit ViewCase(unsigned seed) : random_(seed) {
        store_.Init();
        constexpr std::array kTurns{0.0, 0.0, 0.0, 30.0, 90.0, -17.3, 360.0};
        constexpr std::array kStretches{1.0, 1.0, 0.5, -1.0, 1.7, 3.25};
        ViewParams& view = store_.view;
        view.Rotate = kTurns[Below(kTurns.size())];
        view.ScaleX = kStretches[Below(kStretches.size())];
        view.ScaleY = kStretches[Below(kStretches.size())];
        view.DotPerM = OneIn(2) ? 3779 : 1000;
        view.Zoom = OneIn(2) ? 1000 : 2500 + static_cast<std::int32_t>(Below(9000));
        view.OffX = OneIn(2) ? 0 : Between(-50, 50);
        view.OffY = OneIn(2) ? 0 : Between(-50, 50);
        where_ = {OneIn(3) ? 0 : Between(-500, 50), OneIn(3) ? 0 : Between(-500, 50), OneIn(2) ? 0 : Between(-9, 9),
                  OneIn(2) ? 0 : Between(-9, 9)};
        AddBlock("P", kLayPoint);
        AddBlock("L", kLayLine);
        AddBlock("G", kLayPolygon);
    }

    /// All operators with one query of the type; counts the items that were related.
    void Compare(ShapeType type, int& related) {
        literal::Shape map{type, ShapePnts(type)};
        std::vector<double> x, y;
        literal::Shape query{type, {}};
        for (const DigPnt& p : map.pts) {
            x.push_back(p.x);
            y.push_back(p.y);
            query.pts.push_back(OnDevice(p, {}));
        }
        for (std::int32_t op = 0; op < 8; ++op) {
            ASSERT_TRUE(TestRelation(store_, where_, {type, x, y}, op));
            for (std::int32_t b = 0; b < store_.BlockCnt(); ++b) {
                const DigBlock& block = store_.Block(b);
                for (const DigDat& dat : block.dats) {
                    literal::Shape item{static_cast<ShapeType>(store_.Layer(store_.FindLayDef(block.code.View())).layType), {}};
                    for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
                        item.pts.push_back(OnDevice(dat.pnts[static_cast<std::size_t>(i)], {block.GX, block.GY}));
                    }
                    const bool expected = literal::Relates(op, query, item);
                    ASSERT_EQ(dat.active == 1, expected) << "operator " << op << " block " << b << " item " << dat.datID;
                    related += expected ? 1 : 0;
                }
            }
        }
    }

private:
    std::size_t Below(std::size_t n) { return random_() % n; }
    bool OneIn(std::size_t n) { return Below(n) == 0; }
    double Between(double low, double high) { return low + (high - low) * static_cast<double>(random_()) / 4294967296.0; }

    std::vector<DigPnt> ShapePnts(ShapeType type) {
        std::vector<DigPnt> pnts;
        const bool whole = OneIn(2);
        const double x = Between(-100, 100), y = Between(-100, 100);
        const std::size_t count = type == ShapeType::Point ? 1 : 3 + Below(5);
        for (std::size_t i = 0; i < count; ++i) {
            DigPnt p{x + Between(-60, 60), y + Between(-60, 60), 0};
            if (whole)
                p = {static_cast<double>(10 * static_cast<int>(p.x / 10)), static_cast<double>(10 * static_cast<int>(p.y / 10)),
                     0};
            pnts.push_back(p);
        }
        if (type == ShapeType::Polygon) pnts.push_back(pnts.front());
        return pnts;
    }

    void AddBlock(const char* code, std::int32_t type) {
        const double GX = OneIn(2) ? 0 : Between(-30, 30), GY = OneIn(2) ? 0 : Between(-30, 30);
        ASSERT_TRUE(store_.DigMemAlloc2(code, 1, type, "", 1, GX, GY));
        for (std::int32_t id = 1; id <= 12; ++id) {
            ASSERT_TRUE(store_.AddDigDat(code, 1, id, 0));
            ASSERT_TRUE(store_.SetDigDatPnts(code, 1, id, ShapePnts(static_cast<ShapeType>(type))));
        }
        store_.SetLayDspFlg(code, true);
        store_.SetLayActive(code, true);
        DigBlock& block = store_.MutableBlock(store_.FindBlock(code, 1).block);
        block.inView = 1;
        for (DigDat& dat : block.dats) {
            dat.drawnFlg = dat.clipFlg = 1;
            if (OneIn(4)) {  // as a file may bring it
                dat.rect = {0, 0, 1, 1};
                dat.pnts.Change();
            } else if (OneIn(2)) {
                dat.pnts.Change();
            }
        }
    }

    /// The device pixel of a map point, with its fractions: y turned downward, then the turn, the stretch, the view's place.
    DigPnt OnDevice(const DigPnt& p, const Place& origin) const {
        const ViewParams& v = store_.view;
        double x = p.x + origin.GX;
        double y = -(p.y + origin.GY);
        if (v.Rotate != 0) RotateView(x, y, v.Rotate);
        const double r = static_cast<double>(v.DotPerM) / static_cast<double>(v.Zoom);
        return {(x * v.ScaleX - where_.viewX - v.OffX) * r + where_.pendX,
                (y * v.ScaleY - where_.viewY - v.OffY) * r + where_.pendY, 0};
    }

    std::mt19937 random_;
    CDigMem store_;
    RelationView where_;
};

TEST(RelationViewTest, RandomViewsAnswerAsThePlainWalksOnTheDevicesPoints) {
    int related = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        ViewCase one(seed);
        for (const ShapeType type : {ShapeType::Point, ShapeType::Line, ShapeType::Polygon}) {
            for (int i = 0; i < 3; ++i) one.Compare(type, related);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
    EXPECT_GT(related, 1000);
}

TEST(RelationViewTest, AQueryBesideAnItemWhoseRectangleIsTooSmallStillFindsIt) {
    CDigMem store;
    store.Init();
    store.view.ScaleX = store.view.ScaleY = 1;
    store.view.Zoom = store.view.DotPerM = 1000;
    ASSERT_TRUE(store.DigMemAlloc2("G", 1, kLayPolygon, "", 1, 0, 0));
    ASSERT_TRUE(store.AddDigDat("G", 1, 1, 0));
    ASSERT_TRUE(store.SetDigDatPnts("G", 1, 1, std::vector<DigPnt>{{10, 10, 0}, {90, 10, 0}, {90, 90, 0}, {10, 10, 0}}));
    store.SetLayDspFlg("G", true);
    store.SetLayActive("G", true);
    DigBlock& block = store.MutableBlock(0);
    block.inView = 1;
    DigDat& dat = block.dats[0];
    dat.drawnFlg = dat.clipFlg = 1;
    dat.rect = {10, 10, 20, 20};
    dat.pnts.Change();  // who replaces a rectangle says so
    const double x = 80, y = 50;
    ASSERT_TRUE(TestRelation(store, {}, {ShapeType::Point, {&x, 1}, {&y, 1}}, static_cast<std::int32_t>(RelationOp::Within)));
    EXPECT_EQ(dat.active, 1);
}

}  // namespace
}  // namespace orvane
