// The searches beside their plain version on random stores and views. They turn most items down by a glance at their rectangle,
// and no answer may tell.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/select/pick_rig.h"
#include "tests/select/plain_pick.h"

namespace orvane {
namespace {

class RandomPick : public PickRig {
public:
    explicit RandomPick(unsigned seed) : random_(seed) {
        MakeView();
        for (std::int32_t i = 0; i < 8; ++i) MakeLayer(i);
    }

    std::int32_t Whole(std::int32_t low, std::int32_t high) { return std::uniform_int_distribution(low, high)(random_); }
    double Real(double low, double high) { return std::uniform_real_distribution(low, high)(random_); }
    bool Chance(std::int32_t oneIn) { return Whole(1, oneIn) == 1; }

    /// A pixel at, or near, a point of some item.
    Point SomePixel() {
        const DigBlock& block = store.Block(Whole(0, store.BlockCnt() - 1));
        if (block.dats.empty() || Chance(10)) return {Whole(-50, 1100), Whole(-50, 900)};
        const DigDat& dat = block.dats[static_cast<std::size_t>(Whole(0, block.datCnt - 1))];
        if (dat.pntCnt < 1) return {0, 0};
        const DigPnt& a = dat.pnts[static_cast<std::size_t>(Whole(0, dat.pntCnt - 1))];
        const DigPnt& b = dat.pnts[static_cast<std::size_t>(Whole(0, dat.pntCnt - 1))];
        const double t = Chance(2) ? 0 : Real(0, 1);
        const DeviceTransform transform(store.view, place.viewX, place.viewY, place.devOffX, place.devOffY, block.GX, block.GY);
        const Point p = transform.ToDevice(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y));
        return {SaturatedAdd(p.x, Whole(-7, 7)), SaturatedAdd(p.y, Whole(-7, 7))};
    }

    std::vector<int> ActiveBytes() {
        std::vector<int> bytes;
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
            for (const DigDat& dat : store.Block(i).dats) bytes.push_back(dat.active);
        }
        return bytes;
    }
    void SetActiveBytes(const std::vector<int>& bytes) {
        std::size_t at = 0;
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
            for (DigDat& dat : store.MutableBlock(i).dats) dat.active = static_cast<std::uint8_t>(bytes[at++]);
        }
    }
    void ChangeSomePoints() {
        DigBlock& block = store.MutableBlock(Whole(0, store.BlockCnt() - 1));
        for (DigDat& dat : block.dats) {
            if (dat.pntCnt < 1 || !Chance(3)) continue;
            if (Chance(2)) {
                dat.pnts.Change()[Whole(0, dat.pntCnt - 1)] = SomePoint();
            } else {
                store.EditDigDatPnt(block.code.View(), kMesh, dat.datID, Whole(0, dat.pntCnt - 1), SomePoint());
            }
        }
    }
    void MakeView() {
        constexpr std::int32_t kZooms[] = {100, 1000, 2999, 5000, 10000, 40000, 100000};
        constexpr double kScales[] = {1, 1, 1, 2.5, 0.3, -1, 0, 1e-9, 3000};
        store.view.Zoom = kZooms[Whole(0, 6)];
        store.view.DotPerM = Chance(4) ? 3779 : 10000;
        const bool even = Chance(2);
        store.view.ScaleX = even ? 1 : kScales[Whole(0, 8)];
        store.view.ScaleY = even ? 1 : kScales[Whole(0, 8)];
        store.view.Rotate = Chance(2) ? 0 : Chance(4) ? 90 : Real(-400, 400);
        store.view.DpiRatio = Chance(4) ? 2.5 : 1;
        store.view.OffX = Chance(5) ? Real(-100, 100) : 0;
        store.view.OffY = Chance(5) ? Real(-100, 100) : 0;
        place.viewX = Chance(20) ? Odd() : Real(-600, 200);
        place.viewY = Chance(20) ? Odd() : Real(-600, 200);
        place.devOffX = Chance(5) ? Real(-20, 20) : 0;
        place.devOffY = Chance(5) ? Real(-20, 20) : 0;
    }

private:
    double Odd() {
        constexpr double kOdd[] = {0.0,
                                   std::numeric_limits<double>::quiet_NaN(),
                                   std::numeric_limits<double>::infinity(),
                                   1e15,
                                   -1e15,
                                   3e9,
                                   -3e9,
                                   1e300,
                                   2147483647.0,
                                   -2147483648.0};
        return kOdd[Whole(0, 9)];
    }
    double Coordinate() {
        if (Chance(150)) return Odd();
        return Chance(30) ? Real(-1e9, 1e9) : Real(-500, 500);
    }
    DigPnt SomePoint() { return {Coordinate(), Coordinate(), Chance(100) ? Odd() : Real(-3, 60)}; }

    void MakeLayer(std::int32_t i) {
        constexpr std::int32_t kTypes[] = {1, 2, 3, 4, 8, 1, 2, 3};
        const std::string code = std::to_string(i);
        const double GX = Chance(3) ? Whole(-300, 300) : 0;
        const double GY = Chance(3) ? Whole(-300, 300) : 0;
        LayerDef& layer = AddLayer(code, Chance(12) ? kLayText : kTypes[i], Whole(0, 5), GX, GY);
        if (Chance(20)) Block(code).GX = Odd();
        if (Chance(8)) layer.dspFlg = 0;
        if (Chance(8)) layer.actFlg = 0;
        if (Chance(8)) Block(code).inView = 0;
        layer.lineSize = Chance(3) ? 9999 : 1;
        layer.lineType = Chance(4) ? 12 : 1;
        layer.imgMode = Chance(2) ? 1 : 0;
        layer.imgPos = Whole(-1, 5);
        layer.bmWidth = Whole(1, 60);
        layer.bmHeight = Whole(1, 60);
        layer.imgMinScl = 0.5;
        layer.imgMaxScl = 2;
        SubLayerSettings settings;
        for (std::int32_t subLayNo = 1; subLayNo <= 3; ++subLayNo) {
            settings.disp = !Chance(3);
            settings.lineType = Chance(2) ? 12 : 0;
            store.SetSubLayerEx(code, subLayNo, settings);
        }
        for (std::int32_t items = Whole(0, 12); items-- > 0;) MakeItem(code);
    }
    void MakeItem(const std::string& code) {
        std::vector<DigPnt> pnts;
        const DigPnt centre{Real(-500, 500), Real(-500, 500), 0};
        const bool anywhere = Chance(4);
        const double reach = Chance(3) ? 400 : 60;
        for (std::int32_t n = Whole(0, 9); n-- > 0;) {
            DigPnt pnt = SomePoint();
            if (!anywhere) pnt = {centre.x + Real(-reach, reach), centre.y + Real(-reach, reach), pnt.z};
            pnts.push_back(pnt);
            if (n == 4 && Chance(2)) pnts.push_back(pnts.front());  // closes a ring half way
        }
        if (!pnts.empty() && !Chance(4)) pnts.push_back(pnts.front());
        DigDat& dat = AddItem(code, pnts);
        dat.subLayNo = Whole(-1, 4);
        dat.active = Chance(4) ? 1 : 0;
        if (Chance(15)) dat.drawnFlg = 0;
        if (Chance(15)) dat.clipFlg = 0;
        if (Chance(5)) {  // a rectangle that a file made up
            dat.pnts.Change();
            dat.rect = {Whole(-500, 500), Whole(-500, 500), Whole(-500, 500), Whole(-500, 500)};
        }
    }

    std::mt19937 random_;
};

TEST(PickProperty, TheSearchesAnswerAsTheirPlainVersionOnRandomStores) {
    std::int64_t met = 0;
    std::int64_t glanced = 0;
    for (unsigned seed = 1; seed <= 250; ++seed) {
        RandomPick rig(seed);
        for (int click = 0; click < 60; ++click) {
            if (click % 15 == 14) rig.ChangeSomePoints();
            if (click % 20 == 19) rig.MakeView();
            const Point at = rig.SomePixel();
            const std::int32_t cycle = rig.Chance(2) ? 0 : rig.Whole(1, 6);
            const bool toggle = rig.Chance(4);
            const std::vector<int> before = rig.ActiveBytes();
            const std::int32_t plainCount = PlainSelectAtPoint(rig.store, at, rig.place, cycle, toggle);
            const std::vector<int> plain = rig.ActiveBytes();
            rig.SetActiveBytes(before);
            ASSERT_EQ(SelectAtPoint(rig.store, at, rig.place, cycle, toggle), plainCount) << seed << ", click " << click;
            ASSERT_EQ(rig.ActiveBytes(), plain) << seed << ", click " << click;
            const FoundItem hint = PickForHint(rig.store, at, rig.place);
            const FoundItem plainHint = PlainPickForHint(rig.store, at, rig.place);
            ASSERT_EQ(hint.datID, plainHint.datID) << seed << ", click " << click;
            ASSERT_EQ(hint.code.View(), plainHint.code.View()) << seed << ", click " << click;
            met += plainCount;
        }
        for (std::int32_t i = 0; i < rig.store.BlockCnt(); ++i) {
            for (const DigDat& dat : rig.store.Block(i).dats) glanced += dat.pnts.InRect() ? 1 : 0;
        }
    }
    EXPECT_GT(met, 5000) << "the clicks must meet something to prove anything";
    EXPECT_GT(glanced, 5000) << "and most items must have a rectangle that is relied on";
}

}  // namespace
}  // namespace orvane
