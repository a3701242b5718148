// The members of the active set, called as a host calls them, under both names.
#include <gtest/gtest.h>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

/// The names of one family.
struct SelectionNames {
    const char *reset, *count, *read;
};

class SelectionMembersTest : public ::testing::TestWithParam<SelectionNames> {
protected:
    void SetUp() override {
        rig.Start();
        CDigMem& store = rig.ctrl->store;
        // The layer with the greater key is drawn first.
        store.DigMemAlloc2("LATE", 7, 2, "", 1, 0, 0);
        store.DigMemAlloc2("EARLY", 5, 2, "", 2, 0, 0);
        for (std::int32_t id = 1; id <= 3; ++id) {
            store.AddDigDat("LATE", 7, 10 + id, 0);
            store.AddDigDat("EARLY", 5, 20 + id, 0);
        }
        for (const char* code : {"LATE", "EARLY"}) {
            store.SetLayActive(code, true);
            store.SetLayDspFlg(code, true);
        }
        for (const DigIndex& slot : store.Index()) store.MutableBlock(slot.block).inView = 1;
    }
    DigBlock& BlockOf(const char* code, std::int32_t meshNo) {
        return rig.ctrl->store.MutableBlock(rig.ctrl->store.FindBlock(code, meshNo).block);
    }
    static std::vector<std::string> Codes(const Ran& ran) { return std::get<std::vector<std::string>>(ran.args[0].buffer); }
    static std::vector<std::int32_t> Longs(const Ran& ran, std::size_t i) {
        return std::get<std::vector<std::int32_t>>(ran.args[i].buffer);
    }
    AutomationRig rig;
    const SelectionNames f = GetParam();
};

INSTANTIATE_TEST_SUITE_P(BothFamilies, SelectionMembersTest,
                         ::testing::Values(SelectionNames{"ResetDigActiveAll", "GetDigActDatCnt", "GetDigActDat"},
                                           SelectionNames{"OrvResetActiveAll", "OrvGetActDatCnt", "OrvGetActDat"}),
                         [](const auto& family) { return std::string(family.index == 0 ? "OlderNames" : "NewerNames"); });

TEST_P(SelectionMembersTest, ActiveItemsAreCountedAndReadThoseDrawnFirstFirst) {
    EXPECT_EQ(rig.Run(f.count).Long(), 0);
    for (const std::int32_t id : {13, 11}) EXPECT_TRUE(rig.Run("OrvSetActDat", "LATE", 7, id).True());
    EXPECT_TRUE(rig.Run("OrvSetActDat", "EARLY", 5, 22).True());
    EXPECT_EQ(rig.Run(f.count).Long(), 3);
    const Ran read = rig.Run(f.read);
    EXPECT_TRUE(read.True());
    EXPECT_EQ(Codes(read), (std::vector<std::string>{"EARLY", "LATE", "LATE"}));
    EXPECT_EQ(Longs(read, 1), (std::vector<std::int32_t>{5, 7, 7}));
    EXPECT_EQ(Longs(read, 2), (std::vector<std::int32_t>{22, 11, 13}))
        << "items of a block in their order, not in that of the calls";
    EXPECT_TRUE(rig.Run(f.reset).Ok());
    EXPECT_EQ(rig.Run(f.count).Long(), 0);
}

TEST_P(SelectionMembersTest, TheReadOfNoItemsIsTrueAsWell) {
    const Ran read = rig.Run(f.read);
    EXPECT_TRUE(read.True());
    EXPECT_TRUE(Codes(read).empty());
}

TEST_P(SelectionMembersTest, ArraysThatAreTooShortAreRefusedWithNothingWritten) {
    for (const std::int32_t id : {11, 12}) rig.Run("OrvSetActDat", "LATE", 7, id);
    for (std::size_t tooShort = 0; tooShort < 3; ++tooShort) {
        std::vector<Argument> args(3);
        args[0].buffer = std::vector<std::string>(tooShort == 0 ? 1u : 2u, "old");
        args[1].buffer = std::vector<std::int32_t>(tooShort == 1 ? 1u : 2u, -1);
        args[2].buffer = std::vector<std::int32_t>(tooShort == 2 ? 1u : 2u, -1);
        const InvokeResult refused = Invoke(*rig.ctrl, f.read, InvokeKind::Method, args);
        EXPECT_EQ(refused.status, InvokeStatus::BufferTooShort);
        EXPECT_EQ(refused.argIndex, tooShort);
        EXPECT_EQ(std::get<std::vector<std::string>>(args[0].buffer)[0], "old");
        for (const std::size_t i : {1u, 2u}) EXPECT_EQ(std::get<std::vector<std::int32_t>>(args[i].buffer)[0], -1);
    }
}

TEST_P(SelectionMembersTest, OnlyShownActiveLayersAndBlocksInViewAreCounted) {
    rig.Run("OrvSetActDat", "LATE", 7, 11);
    rig.Run("OrvSetActDat", "EARLY", 5, 21);
    CDigMem& store = rig.ctrl->store;
    store.SetLayDspFlg("LATE", false);
    EXPECT_EQ(rig.Run(f.count).Long(), 1);
    store.SetLayDspFlg("LATE", true);
    store.SetLayActive("LATE", false);
    EXPECT_EQ(rig.Run(f.count).Long(), 1);
    store.SetLayActive("LATE", true);
    BlockOf("LATE", 7).inView = 0;
    EXPECT_EQ(rig.Run(f.count).Long(), 1);
    EXPECT_EQ(Codes(rig.Run(f.read)), (std::vector<std::string>{"EARLY"}));
}

TEST_P(SelectionMembersTest, OrvSetActDatOnALayerThatIsNotActiveReturnsFalseAndSetsNothing) {
    rig.ctrl->store.SetLayActive("LATE", false);
    EXPECT_TRUE(rig.Run("OrvSetActDat", "LATE", 7, 11).False());
    EXPECT_EQ(BlockOf("LATE", 7).dats[0].active, 0);
}

TEST_P(SelectionMembersTest, OrvSetActDatIsFalseForAMissingLayerBlockOrItem) {
    EXPECT_TRUE(rig.Run("OrvSetActDat", "NONE", 7, 11).False());
    EXPECT_TRUE(rig.Run("OrvSetActDat", "LATE", 8, 11).False());
    EXPECT_TRUE(rig.Run("OrvSetActDat", "LATE", 7, 14).False());
    EXPECT_EQ(rig.Run(f.count).Long(), 0);
}

TEST_P(SelectionMembersTest, OrvSetActDatCutsTheCodeToFiftyCharactersAndMeetsTheFirstItem) {
    const std::string fifty(50, 'K');
    CDigMem& store = rig.ctrl->store;
    ASSERT_TRUE(store.DigMemAlloc2(fifty, 1, 2, "", 3, 0, 0));
    store.SetLayActive(fifty, true);
    store.AddDigDat(fifty, 1, 4, 9);
    store.AddDigDat(fifty, 1, 4, 0);
    EXPECT_TRUE(rig.Run("OrvSetActDat", fifty + "MORE", 1, 4).True());
    const DigBlock& block = BlockOf(fifty.c_str(), 1);
    EXPECT_EQ(block.dats[0].active, 1);
    EXPECT_EQ(block.dats[0].lineTag, 9) << "nothing else of the item changes";
    EXPECT_EQ(block.dats[1].active, 0);
}

TEST_P(SelectionMembersTest, OrvSetActDatNeitherDeselectsNorRepaints) {
    rig.Run("OrvSetActDat", "LATE", 7, 11);
    rig.verbs->Clear();
    EXPECT_TRUE(rig.Run("OrvSetActDat", "LATE", 7, 12).True());
    EXPECT_EQ(rig.Run(f.count).Long(), 2);
    EXPECT_EQ(rig.verbs->Size(), 0u);
}

}  // namespace
}  // namespace orvane
