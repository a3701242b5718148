#include <functional>
#include <limits>

#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

using Codes = std::vector<std::string>;

class ArchiveFilterTest : public ArchiveTest {
protected:
    /// One block of the index with its items.
    struct Block {
        IdxBlockFields index;
        std::vector<Rect> items;
        int meshNo = 0;
    };
    /// A set of such blocks. IDs count through all items from 1.
    void PutBlocks(const std::vector<Block>& blocks, std::string_view version = "1.10") {
        std::string data = BinHeader(version), blockRecs, itemRecs, layers = LayerHeader(version);
        int number = 0;
        for (const Block& block : blocks) {
            IdxBlockFields index = block.index;
            index.first = number;
            index.count = static_cast<int>(block.items.size());
            blockRecs += IdxBlock(index);
            LayerFields layer;
            layer.code = index.code;
            layers += LayerRec(version, layer);
            for (const Rect& rect : block.items) {
                itemRecs += IdxItem(rect, static_cast<std::int64_t>(data.size()));
                ItemFields item;
                item.code = index.code;
                item.meshNo = block.meshNo;
                item.datID = ++number;
                item.rect = rect;
                item.pnts = {{1, 2, 3}};
                data += ItemRec(version, item);
            }
        }
        files.Put("m.Ovb", data);
        files.Put("m.Ovl", layers);
        files.Put("m.Ovi",
                  IndexHeader(version) + Packed().I4(static_cast<int>(blocks.size())).I4(number).bytes + blockRecs + itemRecs);
    }
    static Rect At(int x, int y) { return {x, y, x, y}; }
    IDs ReadIDs(const ArcFilter& filter, bool expected = true) {
        store.Init();
        EXPECT_EQ(Read(filter), expected);
        return AllIDs();
    }
};

TEST_F(ArchiveFilterTest, CodesWithoutAnAreaReadExactlyTheirBlocksInEveryMesh) {
    PutBlocks({{{"A"}, {At(1, 1), {0, 0, 9, 9}}, 1}, {{"B"}, {At(1, 1)}, 1}, {{"A"}, {At(500, 500)}, 2}, {{"C"}, {At(1, 1)}, 1}});
    const Codes a = {"A"}, both = {"C", "B", "none"}, lower = {"a"};
    for (const double same : {0.0, 123.5}) {
        EXPECT_EQ(ReadIDs({same, 0, same, 0, a}), (IDs{1, 2, 4})) << "equal corners are no area";
    }
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, both}), (IDs{3, 5}));
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, lower}, false), IDs{});
    EXPECT_EQ(store.LayerCnt(), 3) << "all layers come, whatever is selected";
}

TEST_F(ArchiveFilterTest, Version100IsFilteredAlike) {
    PutBlocks({{{"A"}, {At(1, 1)}, 1}, {{"B"}, {At(1, 1)}, 1}}, "1.00");
    const Codes b = {"B"};
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, b}), IDs{2});
}

TEST_F(ArchiveFilterTest, AreaWithoutCodesLoadsTheLayersAndNoDataAndAnswersFalse) {
    PutBlocks({{{"A"}, {At(1, 1)}}});
    EXPECT_EQ(ReadIDs({-1e9, -1e9, 1e9, 1e9, {}}, false), IDs{});
    EXPECT_EQ(store.LayerCnt(), 1);
}

TEST_F(ArchiveFilterTest, NeitherAreaNorCodesReadEverything) {
    PutBlocks({{{"A"}, {At(1, 1)}}, {{"B"}, {At(1, 1)}}});
    EXPECT_EQ(ReadIDs({5, 5, 5, 5, {}}), (IDs{1, 2}));
}

TEST_F(ArchiveFilterTest, PointsOfABlockThatMeetsTheAreaGoByTheirOwnPlace) {
    const Codes a = {"A"};
    // In whole numbers: below 10 the bound is trunc(9.5) = 9, above 20 it is trunc(20.5) = 20.
    PutBlocks({{{"A", 0, 0, 100, 100},
                {At(9, 15), At(8, 15), At(20, 15), At(21, 15), At(15, 9), At(15, 8), At(15, 20), At(15, 21), At(15, 15)}}});
    EXPECT_EQ(ReadIDs({10, 10, 20, 20, a}), (IDs{1, 3, 5, 7, 9}));
    // A point 0.4 outside an edge at 10.4 or 19.6 is selected, one 1.0 outside is not.
    PutBlocks({{{"A", 0, 0, 100, 100}, {At(10, 15), At(9, 15), At(20, 15), At(21, 15)}}});
    EXPECT_EQ(ReadIDs({10.4, 10, 19.6, 20, a}), (IDs{1, 2, 3})) << "10.4 - 0.5 is cut to 9";
    EXPECT_EQ(ReadIDs({10.5, 10, 19.4, 20, a}), (IDs{1})) << "19.4 + 0.5 is cut to 19";
}

TEST_F(ArchiveFilterTest, NegativeBoundsAreCutTowardZeroToo) {
    const Codes a = {"A"};
    PutBlocks({{{"A", -100, -100, 100, 100}, {At(-11, 0), At(-10, 0), At(-20, 0), At(-21, 0), At(-9, 0)}}});
    EXPECT_EQ(ReadIDs({-20, -5, -10, 5, a}), (IDs{1, 2, 3, 5})) << "-20.5 is cut to -20, and -9.5 to -9";
}

TEST_F(ArchiveFilterTest, ItemsWithAnExtentGoByTheirBlock) {
    const Codes a = {"A"};
    PutBlocks({{{"A", 0, 0, 10, 10}, {{900, 900, 901, 901}, {900, 900, 900, 901}, At(900, 900)}, 1},
               {{"A", 50, 50, 60, 60}, {{1, 1, 5, 5}}, 2}});
    EXPECT_EQ(ReadIDs({10, 10, 20, 20, a}), (IDs{1, 2})) << "a block that touches the area brings far lines along";
    EXPECT_EQ(ReadIDs({10.5, 10, 20, 20, a}, false), IDs{}) << "blocks are held against the area itself";
}

TEST_F(ArchiveFilterTest, CornersComeInAnyOrder) {
    const Codes a = {"A"};
    PutBlocks({{{"A", 0, 0, 100, 100}, {At(15, 15), At(30, 15), At(15, 30)}}});
    for (const ArcFilter& filter : {ArcFilter{20, 10, 10, 20, a}, ArcFilter{10, 20, 20, 10, a}, ArcFilter{20, 20, 10, 10, a}}) {
        EXPECT_EQ(ReadIDs(filter), IDs{1});
    }
}

TEST_F(ArchiveFilterTest, ACornerThatIsNoNumberSelectsNothingAndIsNotSwapped) {
    const Codes a = {"A"};
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    PutBlocks({{{"A", 0, 0, 10, 10}, {At(5, 5), {0, 0, 10, 10}}}});
    for (const ArcFilter& filter : {ArcFilter{5, 5, kNaN, 10, a}, ArcFilter{5, 5, 10, kNaN, a}, ArcFilter{kNaN, 5, 10, 10, a},
                                    ArcFilter{5, kNaN, 10, 10, a}, ArcFilter{kNaN, kNaN, kNaN, kNaN, a}}) {
        EXPECT_EQ(ReadIDs(filter, false), IDs{});
    }
}

TEST_F(ArchiveFilterTest, AreaOfNoWidthIsAnArea) {
    const Codes a = {"A"};
    PutBlocks({{{"A", 0, 0, 100, 100}, {At(15, 15), At(17, 15), At(15, 99)}}});
    EXPECT_EQ(ReadIDs({15, 0, 15, 50, a}), IDs{1});
    EXPECT_EQ(ReadIDs({0, 15, 50, 15, a}), (IDs{1, 2}));
}

TEST_F(ArchiveFilterTest, AreaIsHeldAgainstLocalCoordinatesWhateverTheOrigin) {
    const Codes a = {"A"};
    PutBlocks({{{"A", 0, 0, 10, 10}, {At(5, 5)}}});
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 100000, 100000));
    EXPECT_EQ(ReadIDs({0, 0, 10, 10, a}), IDs{1});
    EXPECT_EQ(BlockOf("A", 0).GX, 100000);
    EXPECT_EQ(ReadIDs({100000, 100000, 100010, 100010, a}, false), IDs{});
}

TEST_F(ArchiveFilterTest, AreasThatAreNoNumbersSelectNothingAndHugeOnesAll) {
    const Codes a = {"A"};
    PutBlocks({{{"A", 0, 0, 10, 10}, {At(5, 5)}}});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ReadIDs({nan, 0, 10, 10, a}, false), IDs{});
    EXPECT_EQ(ReadIDs({-1e300, -1e300, 1e300, 1e300, a}), IDs{1});
}

TEST_F(ArchiveFilterTest, TextIsReadWholeWhateverTheFilter) {
    PutBlocks({{{"A"}, {At(1, 1)}}});
    files.Put("m.Ovt", "Orva Data Text Version 1.10\nDH,A,1,1,0,0,0,0,0,0,0,0,0\nDH,B,1,2,0,0,0,0,0,0,0,0,0\n");
    const Codes codes = {"B"};
    EXPECT_TRUE(Read({0, 0, 1, 1, codes}, "m.Ovt"));
    EXPECT_EQ(AllIDs(), (IDs{1, 2}));
}

TEST_F(ArchiveFilterTest, FailedLayerFileStopsAWholeReadAndNotAFilteredOne) {
    const Codes a = {"A"};
    PutBlocks({{{"A"}, {At(1, 1)}}, {{"B"}, {At(1, 1)}}});
    std::string& layers = files.files["m.Ovl"].content;
    layers.replace(0, 4, "XXXX");
    EXPECT_EQ(ReadIDs({}, false), IDs{});
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, a}), (IDs{1, 2})) << "all of it, and without the filter";
}

TEST_F(ArchiveFilterTest, FailedIndexMeansAWholeRead) {
    const Codes b = {"B"};
    std::vector<Block> blocks(2);
    for (Block& block : blocks) block.items = {At(1, 1)};
    blocks[0].index.code = "A";
    blocks[1].index.code = "B";
    const auto withIndex = [&](const std::function<void(std::string&)>& change) {
        PutBlocks(blocks);
        change(files.files["m.Ovi"].content);
        return ReadIDs({0, 0, 0, 0, b});
    };
    const auto field = [](std::size_t at, int value) {
        return [=](std::string& index) { index.replace(at, 4, Packed().I4(value).bytes); };
    };
    const std::size_t first = 48 + 87, count = 48 + 83;
    EXPECT_EQ(withIndex([](std::string&) {}), IDs{2});
    EXPECT_EQ(withIndex([](std::string& index) { index.replace(0, 4, "XXXX"); }), (IDs{1, 2}));
    EXPECT_EQ(withIndex([](std::string& index) { index.resize(47); }), (IDs{1, 2})) << "no counts";
    EXPECT_EQ(withIndex([](std::string& index) { index.pop_back(); }), (IDs{1, 2})) << "fewer records than told";
    EXPECT_EQ(withIndex(field(40, -1)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(44, -1)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(40, 2147483647)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(44, 2147483647)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(first, 2)), (IDs{1, 2})) << "an item that the table does not have";
    EXPECT_EQ(withIndex(field(first, -1)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(count, -1)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(count, 2147483647)), (IDs{1, 2}));
    EXPECT_EQ(withIndex(field(count, 2)), (IDs{1, 2})) << "more items in all than there are";
}

TEST_F(ArchiveFilterTest, IndexWithoutItemsReadsNothingAndIsTrue) {
    const Codes a = {"A"};
    PutBlocks({{{"A"}, {}}});
    files.Put("m.Ovb", BinHeader("1.10") + ItemRec("1.10", {}));
    files.Put("m.Ovm", ManageHeader("1.10"));
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, a}), IDs{});
}

// Found by fuzzing: a block that claims items of an index without any.
TEST_F(ArchiveFilterTest, BlocksOfAnIndexWithoutItemsSelectNothingWhateverTheyClaim) {
    const Codes a = {"A"};
    PutBlocks({{{"A"}, {}}});
    std::string& index = files.files["m.Ovi"].content;
    index.replace(48 + 83, 8, Packed().I4(9).I4(40).bytes);
    IdxFile read;
    ASSERT_TRUE(ArcReadIndex(files, "m.Ovi", read));
    GrowArray<IdxSelected> selected;
    EXPECT_TRUE(SelectIdxItems(read, {0, 0, 0, 0, a}, selected));
    EXPECT_EQ(selected.size(), 0u);
}

TEST_F(ArchiveFilterTest, BlocksThatShareItemsReadEachOnce) {
    const Codes codes = {"A", "B"};
    PutBlocks({{{"A"}, {At(1, 1)}}, {{"B"}, {At(1, 1)}}, {{"C"}, {At(1, 1)}}});
    files.files["m.Ovi"].content.replace(48 + 87, 4, Packed().I4(1).bytes);
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, codes}), IDs{2});
}

TEST_F(ArchiveFilterTest, ItemsAreReadByAscendingNumberWhereverTheirRecordsStand) {
    const Codes a = {"A"};
    PutBlocks({{{"A"}, {At(1, 1), At(2, 2)}}});
    std::string& index = files.files["m.Ovi"].content;
    const std::string one = index.substr(48 + 91 + 16, 4), two = index.substr(48 + 91 + 36, 4);
    index.replace(48 + 91 + 16, 4, two);
    index.replace(48 + 91 + 36, 4, one);
    EXPECT_EQ(ReadIDs({0, 0, 0, 0, a}), (IDs{2, 1}));
}

TEST_F(ArchiveFilterTest, OffsetOutsideTheFileEndsTheReading) {
    const Codes a = {"A"};
    for (const std::int64_t offset : {std::int64_t{-1}, std::int64_t{2147483647}, std::int64_t{40 + 2 * 110 - 85}}) {
        PutBlocks({{{"A"}, {At(1, 1), At(2, 2), At(3, 3)}}});
        files.files["m.Ovi"].content.replace(48 + 91 + 36, 4, Packed().I4(offset).bytes);
        const IDs ids = ReadIDs({0, 0, 0, 0, a});
        EXPECT_EQ(ids.front(), 1) << offset;
    }
}

TEST_F(ArchiveFilterTest, SavedMapIsReadBackInParts) {
    for (std::int32_t mesh = 0; mesh < 50; ++mesh) {
        for (const char* code : {"A", "B"}) {
            MakeBlock(code, mesh);
            for (std::int32_t i = 0; i < 40; ++i) AddItem(code, mesh, mesh * 1000 + i, {{mesh * 100.0 + i, i * 1.0, 0}});
        }
    }
    ASSERT_TRUE(Write());
    const Codes b = {"B"};
    store.Init();
    ASSERT_TRUE(Read({710.2, 5.2, 712.8, 100, b}));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(AllIDs(), (IDs{7009, 7010, 7011, 7012, 7013})) << "both bounds are cut toward zero: 709 to 713";
    store.Init();
    ASSERT_TRUE(Read({0, 0, 0, 0, b}));
    EXPECT_EQ(AllIDs().size(), 50u * 40u);
}

}  // namespace
}  // namespace orvane
