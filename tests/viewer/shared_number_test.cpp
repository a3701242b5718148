// Tools on features that share their number, as an archive that is imported twice brings them.
#include <QStatusBar>

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

}  // namespace
}  // namespace orvane
