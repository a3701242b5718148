// Tools on features that share their number, as an archive that is imported twice brings them.
#include <QStatusBar>
#include <map>
#include <set>

#include "hosts/viewer/shared_number.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class SharedNumbers : public Walk {
protected:
    SharedNumbers() {
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 5, {0.0, 100.0, 200.0}, {0.0, 0.0, 0.0});
        AddFeature("ROAD", 7, {0.0, 100.0, 200.0}, {150.0, 150.0, 150.0});
        AddFeature("ROAD", 5, {0.0, 100.0, 200.0}, {300.0, 300.0, 300.0});
        Fit();
        window->History().NoteSaved();
        before_ = AllOf();
    }
    struct Row {
        std::int32_t datID;
        std::int32_t lineTag;
        std::vector<double> coordinates;
        friend bool operator==(const Row&, const Row&) = default;
    };
    std::vector<Row> AllOf() {
        std::vector<Row> rows;
        for (const DigDat& dat : BlockOf("ROAD").dats) {
            Row row{dat.datID, dat.lineTag, {}};
            for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
                const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
                row.coordinates.insert(row.coordinates.end(), {pnt.x, pnt.y, pnt.z});
            }
            rows.push_back(row);
        }
        return rows;
    }
    void ExpectRefused(std::size_t picked) {
        Settle();
        EXPECT_EQ(AllOf(), before_);
        EXPECT_EQ(window->History().Stack().count(), 0);
        EXPECT_FALSE(window->History().IsModified());
        EXPECT_EQ(Map().RunMode(), kRunNormal);
        EXPECT_TRUE(window->statusBar()->currentMessage().contains("number 5")) << "says why";
        for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(BlockOf("ROAD").dats[i].active, i == picked ? 1 : 0) << i;
    }
    void Pick(Qt::Key tool, double y) {
        window->statusBar()->clearMessage();
        Press(tool);
        Click(PointOf(50, y));
    }

    std::vector<Row> before_;
};

TEST_F(SharedNumbers, NoToolTakesOneUpWhicheverIsClicked) {
    for (const Qt::Key tool : {Qt::Key_A, Qt::Key_X, Qt::Key_V, Qt::Key_M, Qt::Key_C, Qt::Key_K}) {
        SCOPED_TRACE(QKeySequence(tool).toString().toStdString());
        Pick(tool, 0);
        ExpectRefused(0);
        Pick(tool, 300);
        ExpectRefused(2);
    }
}

TEST_F(SharedNumbers, ToolsTakeUpAFeatureBesideThemThatHasANumberOfItsOwn) {
    Pick(Qt::Key_M, 150);
    EXPECT_EQ(Map().RunMode(), kRunMoveDat);
    Click(PointOf(50, 200));
    Settle();
    ASSERT_EQ(window->History().Stack().count(), 1);
    EXPECT_NEAR(BlockOf("ROAD").dats[1].pnts[0].y, 200, 5);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(AllOf(), before_);
}

TEST_F(SharedNumbers, TheDeleteKeyTakesTheOneThatWasPickedAsTheWordsAdvise) {
    Pick(Qt::Key_K, 300);
    ExpectRefused(2);
    Press(Qt::Key_Delete);
    ASSERT_EQ(BlockOf("ROAD").datCnt, 2);
    EXPECT_EQ(BlockOf("ROAD").dats[0].pnts[0].y, 0);
    EXPECT_EQ(BlockOf("ROAD").dats[1].datID, 7);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(AllOf(), before_);
}

TEST_F(SharedNumbers, AnEditThatEndsBeforeTheToolIsGivenUpIsTakenBackOnBoth) {
    // The clicks of a program come without the event loop between them.
    Press(Qt::Key_A);
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, PointOf(50, 300));
    QTest::mouseMove(&Map(), PointOf(50, 280));
    Map().Control().FinishPointAddTool();
    ExpectRefused(2);
    Press(Qt::Key_M);
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, PointOf(50, 300));
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, PointOf(50, 200));
    ExpectRefused(2);
}

TEST_F(SharedNumbers, PointsThatTheControlWroteToTheTwinAreTakenBackWithTheBounds) {
    const std::optional<SharedNumber> kept = SharedBy(Store(), {{"ROAD", 1, 5}, 2});
    ASSERT_TRUE(kept);
    ASSERT_EQ(kept->features.size(), 2u);
    const double minY = BlockOf("ROAD").minY;
    Map().Call("OrvAddDatPnt", {"ROAD", 1, 5, 0.0, -900.0, 0.0});
    Map().Call("OrvEditDatPnt", {"ROAD", 1, 5, 0, 10.0, 10.0, 0.0});
    ASSERT_NE(AllOf(), before_);
    PutBack(Map(), *kept);
    EXPECT_EQ(AllOf(), before_);
    EXPECT_EQ(BlockOf("ROAD").minY, minY);
}

TEST_F(SharedNumbers, AToolThatIsGivenSuchAFeatureIsRefused) {
    EXPECT_FALSE(window->History().StartTool(kRunMoveDat, ItemKey{"ROAD", 1, 5}));
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    EXPECT_EQ(AllOf(), before_);
    EXPECT_TRUE(window->History().StartTool(kRunMoveDat, ItemKey{"ROAD", 1, 7}));
    Press(Qt::Key_Escape);
    EXPECT_EQ(AllOf(), before_);
}

// What gives features numbers of their own.
class OwnNumber : public SharedNumbers {
protected:
    std::vector<std::int32_t> NumbersOf(const char* code) {
        std::vector<std::int32_t> numbers;
        for (const DigDat& dat : BlockOf(code).dats) numbers.push_back(dat.datID);
        return numbers;
    }
    void SelectPlaces(const char* code, const std::set<std::size_t>& places) {
        std::size_t at = 0;
        for (DigDat& dat : Store().MutableBlock(Store().FindBlock(code, 1).block).dats)
            dat.active = places.count(at++) != 0 ? 1 : 0;
    }
    QString Status() { return window->statusBar()->currentMessage(); }
    using Numbers = std::vector<std::int32_t>;
};

TEST_F(OwnNumber, TheOneThatAToolRefusedGetsOneByTheKeyAndTheToolTakesItUp) {
    Pick(Qt::Key_M, 300);
    EXPECT_TRUE(Status().contains("N gives it a number of its own")) << Status().toStdString();
    Press(Qt::Key_N);
    EXPECT_EQ(NumbersOf("ROAD"), (Numbers{5, 7, 8}));
    EXPECT_EQ(BlockOf("ROAD").dats[2].active, 1) << "it stays selected";
    EXPECT_EQ(BlockOf("ROAD").dats[2].pnts[1].y, 300);
    Pick(Qt::Key_M, 300);
    EXPECT_EQ(Map().RunMode(), kRunMoveDat);
    Click(PointOf(50, 200));
    Settle();
    EXPECT_NEAR(BlockOf("ROAD").dats[2].pnts[0].y, 200, 5);
    Press(Qt::CTRL | Qt::Key_Z);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(AllOf(), before_);
    EXPECT_FALSE(window->History().IsModified());
    Press(Qt::CTRL | Qt::Key_Y);
    EXPECT_EQ(NumbersOf("ROAD"), (Numbers{5, 7, 8}));
    EXPECT_EQ(BlockOf("ROAD").dats[2].pnts[1].y, 300);
}

TEST_F(OwnNumber, WhereAllOfANumberAreSelectedTheFirstKeepsIt) {
    AddFeature("ROAD", 5, {0.0, 100.0}, {400.0, 400.0});
    AddFeature("ROAD", 7, {0.0, 100.0}, {500.0, 500.0});
    SelectPlaces("ROAD", {0, 1, 2, 3});
    window->GiveOwnNumbers();
    EXPECT_EQ(NumbersOf("ROAD"), (Numbers{5, 8, 9, 10, 7})) << "of the sevens one alone was selected";
    EXPECT_EQ(window->History().Stack().count(), 1);
    window->History().Undo();
    EXPECT_EQ(NumbersOf("ROAD"), (Numbers{5, 7, 5, 5, 7}));
}

TEST_F(OwnNumber, BehindTheGreatestNumberTheLowestFreeOnesAreTaken) {
    AddFeature("ROAD", 2147483647, {0.0, 100.0}, {400.0, 400.0});
    AddFeature("ROAD", 2, {0.0, 100.0}, {450.0, 450.0});
    AddFeature("ROAD", 2, {0.0, 100.0}, {500.0, 500.0});
    SelectPlaces("ROAD", {0, 4});
    window->GiveOwnNumbers();
    EXPECT_EQ(NumbersOf("ROAD"), (Numbers{1, 7, 5, 2147483647, 3, 2}));
}

TEST_F(OwnNumber, TextsGridsTagsAndSubLayersGoWithIt) {
    MakeLayer("NAME", kLayText);
    MakeLayer("GRID", kLayMesh);
    for (const double x : {0.0, 50.0}) {
        Map().Call("OrvAddDat", {"NAME", 1, 3, 0});
        Map().Call("OrvSetDatString", {"NAME", 1, 3, x, 0.0, x == 0.0 ? "first" : "second"});
    }
    Map().Call("OrvAddMeshDat", {"GRID", 1, 3, 2, 2, QVariantList{0.0, 10.0, 0.0, 10.0}, QVariantList{0.0, 0.0, 10.0, 10.0},
                                 QVariantList{1.0, 2.0, 3.0, 4.0}});
    ASSERT_EQ(BlockOf("GRID").datCnt, 1);
    DigBlock& grids = Store().MutableBlock(Store().FindBlock("GRID", 1).block);
    ItemCopy twin = CopyOf(grids.dats[0]);
    twin.lineTag = 40000;
    for (DigPnt& pnt : twin.pnts) pnt.x += 100;
    const ItemChange add{"GRID", 1, 1, std::nullopt, twin};
    PerformChanges(Map(), {&add, 1}, true);
    DigBlock& roads = Store().MutableBlock(Store().FindBlock("ROAD", 1).block);
    roads.dats[2].lineTag = 70000;
    roads.dats[2].subLayNo = 4;
    ASSERT_EQ(NumbersOf("GRID"), (Numbers{3, 3}));
    ASSERT_EQ(NumbersOf("NAME"), (Numbers{3, 3}));
    std::map<std::string, std::vector<ItemCopy>> before;
    const auto all = [this](const char* code) {
        std::vector<ItemCopy> copies;
        for (const DigDat& dat : BlockOf(code).dats) copies.push_back(CopyOf(dat));
        return copies;
    };
    for (const char* code : {"ROAD", "NAME", "GRID"}) before[code] = all(code);
    SelectPlaces("ROAD", {2});
    SelectPlaces("NAME", {1});
    SelectPlaces("GRID", {1});
    window->GiveOwnNumbers();
    ASSERT_EQ(NumbersOf("ROAD"), (Numbers{5, 7, 8}));
    ASSERT_EQ(NumbersOf("NAME"), (Numbers{3, 4}));
    ASSERT_EQ(NumbersOf("GRID"), (Numbers{3, 4}));
    for (const char* code : {"ROAD", "NAME", "GRID"}) {
        std::vector<ItemCopy> wanted = before[code];
        wanted.back().datID = BlockOf(code).dats[wanted.size() - 1].datID;
        EXPECT_EQ(all(code), wanted) << code;
    }
    window->History().Undo();
    for (const char* code : {"ROAD", "NAME", "GRID"}) EXPECT_EQ(all(code), before[code]) << code;
    window->History().Redo();
    EXPECT_EQ(NumbersOf("GRID"), (Numbers{3, 4}));
}

TEST_F(OwnNumber, WhatDoesNotShareItsNumberOrIsNotForEditingStaysAndItIsSaid) {
    window->GiveOwnNumbers();
    EXPECT_TRUE(Status().startsWith("Select the features first")) << Status().toStdString();
    SelectPlaces("ROAD", {1});
    window->GiveOwnNumbers();
    EXPECT_TRUE(Status().startsWith("No selected feature shares")) << Status().toStdString();
    SelectPlaces("ROAD", {0});
    Map().Call("OrvSetLayEditFlg", {"ROAD", false});
    window->GiveOwnNumbers();
    EXPECT_TRUE(Status().contains("not for editing")) << Status().toStdString();
    EXPECT_EQ(AllOf(), before_);
    EXPECT_EQ(window->History().Stack().count(), 0);
}

}  // namespace
}  // namespace orvane
