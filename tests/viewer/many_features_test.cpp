// Many features of one block that go and come back at once.
#include <functional>

#include "hosts/viewer/item_changes.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class ManyFeatures : public Walk {
protected:
    ~ManyFeatures() override { window->Files().New(); }

    /// Features with the IDs 1 to `count`, each with its number in its place.
    void MakeMany(int count) {
        MakeLayer("TREE", kLayPoint);
        for (int id = 1; id <= count; ++id) {
            ASSERT_TRUE(Store().AddDigDat("TREE", 1, id, 0));
            ASSERT_TRUE(Store().AddDigDatPnt("TREE", 1, id, {id * 1.0, id * 2.0, 0}));
        }
    }
    std::vector<int> Numbers() {
        std::vector<int> ids;
        for (const DigDat& dat : BlockOf("TREE").dats) {
            EXPECT_EQ(dat.pnts[0].x, dat.datID) << "each is itself";
            ids.push_back(dat.datID);
        }
        return ids;
    }
    template <class Which>
    void Select(Which which) {
        for (DigDat& dat : Store().MutableBlock(Store().FindBlock("TREE", 1).block).dats) dat.active = which(dat.datID) ? 1 : 0;
    }
    static std::vector<int> Range(int count, const std::function<bool(int)>& which) {
        std::vector<int> ids;
        for (int id = 1; id <= count; ++id) {
            if (which(id)) ids.push_back(id);
        }
        return ids;
    }
    /// Deletes, takes back and does again; the block must be as the numbers say each time.
    void ExpectGoAndCome(int count, const std::function<bool(int)>& which) {
        Select(which);
        window->DeleteSelection();
        const auto stays = [&](int id) { return !which(id); };
        EXPECT_EQ(Numbers(), Range(count, stays));
        window->History().Undo();
        EXPECT_EQ(Numbers(), Range(count, [](int) { return true; }));
        window->History().Redo();
        EXPECT_EQ(Numbers(), Range(count, stays));
        window->History().Undo();
        EXPECT_EQ(Numbers(), Range(count, [](int) { return true; }));
    }
};

constexpr int kCount = 3000;

TEST_F(ManyFeatures, AllGoAndComeBack) {
    MakeMany(kCount);
    ExpectGoAndCome(kCount, [](int) { return true; });
}

TEST_F(ManyFeatures, EverySecondGoesAndComesBackToItsPlace) {
    MakeMany(kCount);
    ExpectGoAndCome(kCount, [](int id) { return id % 2 == 0; });
}

TEST_F(ManyFeatures, TheFirstHalfGoesAndComesBackBeforeTheOther) {
    MakeMany(kCount);
    ExpectGoAndCome(kCount, [](int id) { return id <= kCount / 2; });
}

TEST_F(ManyFeatures, AFewGoOneByOne) {
    MakeMany(kCount);
    ExpectGoAndCome(kCount, [](int id) { return id % 100 == 7; });
}

TEST_F(ManyFeatures, WhatStaysKeepsItsSelection) {
    MakeMany(kCount);
    std::vector<ItemChange> changes;
    for (int id = kCount; id >= 1; id -= 2) changes.push_back(Deletion(Store(), {"TREE", 1, id}).front());
    PerformChanges(Map(), changes, true);
    Select([](int id) { return id % 3 == 0; });
    PerformChanges(Map(), changes, false);
    for (const DigDat& dat : BlockOf("TREE").dats) {
        EXPECT_EQ(dat.active, dat.datID % 2 == 1 && dat.datID % 3 == 0 ? 1 : 0) << dat.datID;
    }
}

TEST_F(ManyFeatures, ComingGoingAndChangedOnesMix) {
    MakeMany(600);
    std::vector<ItemChange> changes;
    const auto copy = [&](int id) { return *CopyOf(Store(), {"TREE", 1, id}); };
    ItemCopy added = copy(1);
    added.datID = 9001;
    added.pnts[0].x = 9001;
    ItemCopy tagged = copy(5);
    tagged.lineTag = 77;
    changes.push_back({"TREE", 1, 2, std::nullopt, added});  // between 2 and 3
    changes.push_back({"TREE", 1, 5, copy(5), tagged});      // one place further now
    changes.push_back({"TREE", 1, 0, copy(1), std::nullopt});
    PerformChanges(Map(), changes, true);
    std::vector<int> wanted = Range(600, [](int id) { return id > 1; });
    wanted.insert(wanted.begin() + 1, 9001);
    EXPECT_EQ(Numbers(), wanted);
    EXPECT_EQ(CopyOf(Store(), {"TREE", 1, 5})->lineTag, 77);
    PerformChanges(Map(), changes, false);
    EXPECT_EQ(Numbers(), Range(600, [](int) { return true; }));
    EXPECT_EQ(CopyOf(Store(), {"TREE", 1, 5})->lineTag, 0);
}

// Files may hold a grid of fewer points than its places, which no call makes.
TEST_F(ManyFeatures, WhatNoCallMakesStaysAsItIsWhereOthersGoAndComeBack) {
    for (const int step : {2, 100}) {
        window->Files().New();
        MakeMany(kCount);
        DigDat& last = Store().MutableBlock(Store().FindBlock("TREE", 1).block).dats[kCount - 1];
        last.meshAttr = std::make_unique<DigMeshAttr>();
        last.meshAttr->hcnt = last.meshAttr->vcnt = 4;
        const auto which = [step](int id) { return id % step == 1; };
        Select(which);
        const auto kept = [this] {
            const DigDat& dat = *Store().FindDat("TREE", 1, kCount);
            return dat.pntCnt == 1 && dat.pnts[0].x == kCount && dat.meshAttr != nullptr && dat.meshAttr->hcnt == 4;
        };
        window->DeleteSelection();
        EXPECT_TRUE(kept()) << step;
        window->History().Undo();
        EXPECT_TRUE(kept()) << step;
        EXPECT_EQ(Numbers(), Range(kCount, [](int) { return true; })) << step;
        window->History().Redo();
        EXPECT_TRUE(kept()) << step;
    }
}

}  // namespace
}  // namespace orvane
