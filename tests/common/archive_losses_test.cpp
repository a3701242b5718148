#include "hosts/common/archive_losses.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ArchiveLossesTest : public ::testing::Test {
protected:
    ArchiveLossesTest() {
        store.Init();
        store.DigMemAlloc2("A", 1, kLayMesh, "p", 0, 5, 0);
        store.AddDigDat("A", 1, 1, 0);
        // A new layer's items may become active, and it may be edited.
        store.SetLayActive("A", false);
        store.SetLayEditFlg("A", false);
        store.SetLayColor2("A", 0);
    }
    std::vector<std::string> Binary(const char* version = "1.10") const { return ArchiveLosses(store, false, version); }

    CDigMem store;
};

TEST_F(ArchiveLossesTest, APathOfACodeWithoutALayerIsLost) {
    const std::int32_t pos = store.MakeBareBlock(CDigMem::BlockPlace::LowestFreeSlot);
    ASSERT_GE(pos, 0);
    store.MutableBlock(pos).code.Set("U");
    store.MutableBlock(pos).path = "p";
    DigDat dat;
    ASSERT_TRUE(store.AppendReadDat(pos, std::move(dat)));
    EXPECT_THAT(Binary(), Contains(HasSubstr("1 paths and origins of blocks whose code has no layer")));
}

TEST_F(ArchiveLossesTest, AMapThatComesBackAsItIsLosesNothing) { EXPECT_THAT(Binary(), IsEmpty()); }

TEST_F(ArchiveLossesTest, SubLayersAndTheirNumbersAreLost) {
    store.SetSubLayer("A", 1, "", true, 0, 1, 0, false);
    store.SetDigDatSubLayer("A", 1, 1, 1);
    EXPECT_THAT(Binary(), ElementsAre(HasSubstr("1 sub layers"), HasSubstr("1 sub layer numbers")));
}

TEST_F(ArchiveLossesTest, ActiveAndEditSwitchesAreLost) {
    store.SetLayActive("A", true);
    store.SetLayEditFlg("A", true);
    EXPECT_THAT(Binary(), ElementsAre(HasSubstr("may become active"), HasSubstr("may be edited")));
}

TEST_F(ArchiveLossesTest, TagsBeyondAByteAreLost) {
    for (const std::int32_t kept : {-128, 127}) {
        store.SetDigDatInfoEx("A", 1, 1, kept, false);
        EXPECT_THAT(Binary(), IsEmpty());
    }
    for (const std::int32_t lost : {-129, 128, 200}) {
        store.SetDigDatInfoEx("A", 1, 1, lost, false);
        EXPECT_THAT(Binary(), ElementsAre(HasSubstr("1 item tags")));
    }
}

TEST_F(ArchiveLossesTest, TextSizesAbove127AreLost) {
    store.SetDigDatString("A", 1, 1, 0, 0, "t");
    store.SetFontSize("A", 1, 127);
    EXPECT_THAT(Binary(), IsEmpty());
    store.SetFontSize("A", 1, 128);
    EXPECT_THAT(Binary(), ElementsAre(HasSubstr("1 text sizes above 127")));
}

TEST_F(ArchiveLossesTest, OriginsWithoutAPathAreLost) {
    store.MutableBlock(0).path.clear();
    EXPECT_THAT(Binary(), ElementsAre(HasSubstr("1 origins")));
    store.MutableBlock(0).GX = 0;
    EXPECT_THAT(Binary(), IsEmpty());
}

TEST_F(ArchiveLossesTest, Version100LosesGridsSecondColoursAndImagePositions) {
    const DigPnt pnts[] = {{0, 0, 0}, {1, 0, 0}};
    store.SetMeshDat("A", 1, 1, 2, 1, pnts);
    store.SetLayColor2("A", 5);
    store.MutableLayer(0).imgPos = 1;
    EXPECT_THAT(Binary(), IsEmpty());
    EXPECT_THAT(Binary("1.00"), ElementsAre(HasSubstr("grids"), HasSubstr("second colours"), HasSubstr("image positions")));
}

TEST_F(ArchiveLossesTest, TextSaysWhatItNeedsToBeRead) {
    EXPECT_THAT(ArchiveLosses(store, true, "1.10"), Contains(HasSubstr(".Ovi file of its version beside it")));
    EXPECT_THAT(ArchiveLosses(store, true, "1.00"), Contains(HasSubstr("never read back")));
}

}  // namespace
}  // namespace orvane
