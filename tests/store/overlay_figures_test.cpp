// Overlay figures: their numbers, their points one by one, their strings and how they go.
#include <limits>
#include <random>
#include <utility>

#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

using Places = std::vector<std::pair<double, double>>;

class OverlayFiguresTest : public StoreTest {
protected:
    std::int32_t Make(std::int32_t type, const Places& places = {}) {
        const std::int32_t id = store.MakeOrgDat(static_cast<std::int16_t>(type), 1, 0, 0);
        for (const auto& [x, y] : places) store.AddOrgPntAt(store.OrgDatCnt() - 1, x, y);
        return id;
    }
    const OrgDat& At(std::size_t pos) { return store.OrgDats()[pos]; }
    const OrgDat& Figure(std::int32_t id) { return *store.FindOrgDat(id); }
    Places PlacesOf(std::int32_t id) {
        Places places;
        for (const DigPnt& pnt : Figure(id).pnts) places.emplace_back(pnt.x, pnt.y);
        EXPECT_EQ(static_cast<std::int32_t>(places.size()), Figure(id).pntCnt);
        return places;
    }
    std::vector<std::int32_t> IDs() {
        std::vector<std::int32_t> ids;
        for (const OrgDat& dat : store.OrgDats()) ids.push_back(dat.ID);
        return ids;
    }
    using Numbers = std::vector<std::int32_t>;
    const Places kRing{{0, 0}, {10, 0}, {10, 10}, {0, 0}};
};

// --- Make, edit, read -------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, AFreshStoreHasNoFigureAtAll) {
    EXPECT_EQ(store.OrgDatCnt(), 0);
    EXPECT_TRUE(store.OrgDats().empty());
    for (const std::int32_t id : {-1, 0, 1, 2}) {
        EXPECT_EQ(store.AddOrgPnt(id, 1, 2), -1);
        EXPECT_EQ(store.InsOrgPnt(id, 0, 1, 2), -1);
        EXPECT_EQ(store.DelOrgPnt(id, 0), -1);
        EXPECT_EQ(store.EditOrgPnt(id, 0, 1, 2), -1);
        EXPECT_EQ(store.DelOrgData(id), -1);
        EXPECT_FALSE(store.EditOrgDat(id, 1, 1, 1, 1));
        EXPECT_EQ(store.SetOrgDatString(id, "mark", 1, 2, 3, 4, 5), -1);
        EXPECT_EQ(store.FindOrgDat(id), nullptr);
        EXPECT_FALSE(store.OrgDataActive(id));
        EXPECT_EQ(store.GetOrgID(id), -1);
        store.SetOrgDataActive(id, true);
    }
    store.DropLastOrgDat();
    EXPECT_EQ(store.OrgDatCnt(), 0);
}

TEST_F(OverlayFiguresTest, ANewFigureHasWhatWasGivenAndNothingElse) {
    EXPECT_EQ(store.MakeOrgDat(2, 7, 0x112233, 1), 1);
    const OrgDat& dat = Figure(1);
    EXPECT_EQ(dat.ID, 1);
    EXPECT_EQ(dat.type, 2);
    EXPECT_EQ(dat.line, 7);
    EXPECT_EQ(dat.color, 0x112233U);
    EXPECT_EQ(dat.fill, 1);
    EXPECT_EQ(dat.pntCnt, 0);
    EXPECT_TRUE(dat.pnts.empty());
    EXPECT_EQ(dat.active, 0);
    EXPECT_EQ(dat.strX, 0);
    EXPECT_EQ(dat.strY, 0);
    EXPECT_EQ(dat.strZ, 0);
    EXPECT_TRUE(dat.strText.empty());
    EXPECT_EQ(dat.strSize, 0);
    EXPECT_EQ(dat.strFill, 0);
    EXPECT_EQ(dat.strAngle, 0);
    EXPECT_EQ(dat.strColor, 0U);
}

TEST_F(OverlayFiguresTest, FillIsOnForExactlyOneAndOffForAnythingElse) {
    for (const std::int32_t fill : {0, 2, -1, 65537}) {
        const std::int32_t id = store.MakeOrgDat(3, 0, 0, fill);
        EXPECT_EQ(Figure(id).fill, 0) << fill;
        ASSERT_TRUE(store.EditOrgDat(id, 3, 0, 0, 1));
        EXPECT_EQ(Figure(id).fill, 1);
        ASSERT_TRUE(store.EditOrgDat(id, 3, 0, 0, fill));
        EXPECT_EQ(Figure(id).fill, 0) << fill;
    }
}

TEST_F(OverlayFiguresTest, TypeAndLineKeepTheirSign) {
    const std::int32_t id = store.MakeOrgDat(-5, -32768, 0, 0);
    EXPECT_EQ(Figure(id).type, -5);
    EXPECT_EQ(Figure(id).line, -32768);
}

TEST_F(OverlayFiguresTest, AnEditSetsFourFieldsAndLeavesPointsStringAndActiveState) {
    const std::int32_t id = Make(2, {{1, 2}, {3, 4}});
    store.SetOrgDataActive(id, true);
    ASSERT_EQ(store.SetOrgDatString(id, "mark", 5, 6, 7, 8, 9), 0);
    EXPECT_TRUE(store.EditOrgDat(id, 3, 4, 0x445566, 1));
    EXPECT_EQ(Figure(id).type, 3);
    EXPECT_EQ(Figure(id).line, 4);
    EXPECT_EQ(Figure(id).color, 0x445566U);
    EXPECT_EQ(Figure(id).fill, 1);
    EXPECT_EQ(Figure(id).active, 1);
    EXPECT_EQ(Figure(id).strText, "mark");
    EXPECT_EQ(PlacesOf(id), (Places{{1, 2}, {3, 4}}));
    EXPECT_FALSE(store.EditOrgDat(id + 1, 3, 4, 5, 1));
}

TEST_F(OverlayFiguresTest, TheIdAtAPositionIsMinusOneOutsideTheFigures) {
    for (int i = 0; i < 3; ++i) Make(2);
    ASSERT_EQ(store.DelOrgData(1), 0);
    EXPECT_EQ(store.GetOrgID(0), 2);
    EXPECT_EQ(store.GetOrgID(1), 3);
    for (const std::int32_t pos : {-1, 2, 3, 1000000000, (std::numeric_limits<std::int32_t>::min)()}) {
        EXPECT_EQ(store.GetOrgID(pos), -1) << pos;
    }
}

TEST_F(OverlayFiguresTest, ActiveIsOneFiguresOwnState) {
    Make(2);
    Make(2);
    store.SetOrgDataActive(2, true);
    EXPECT_FALSE(store.OrgDataActive(1));
    EXPECT_TRUE(store.OrgDataActive(2));
    store.SetOrgDataActive(3, true);
    EXPECT_FALSE(store.OrgDataActive(3));
    store.SetOrgDataActive(2, false);
    EXPECT_FALSE(store.OrgDataActive(2));
}

// --- Numbers ----------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, ANumberComesASecondTimeAfterADeletionAndSearchesMeetTheOlderFigure) {
    for (const std::int32_t type : {2, 3, 4}) Make(type);
    ASSERT_EQ(store.DelOrgData(2), 0);
    EXPECT_EQ(IDs(), (Numbers{1, 3}));
    EXPECT_EQ(store.MakeOrgDat(8, 1, 0, 0), 3);
    EXPECT_EQ(IDs(), (Numbers{1, 3, 3}));
    EXPECT_EQ(Figure(3).type, 4);

    EXPECT_EQ(store.AddOrgPnt(3, 5, 6), 1);
    EXPECT_EQ(At(1).pntCnt, 1);
    EXPECT_EQ(At(2).pntCnt, 0);
    ASSERT_TRUE(store.EditOrgDat(3, 2, 0, 0, 0));
    EXPECT_EQ(At(2).type, 8);
    store.SetOrgDataActive(3, true);
    EXPECT_EQ(At(2).active, 0);
    ASSERT_EQ(store.SetOrgDatString(3, "mark", 0, 0, 0, 0, 0), 0);
    EXPECT_TRUE(At(2).strText.empty());
    ASSERT_EQ(store.DelOrgData(3), 0);
    EXPECT_EQ(IDs(), (Numbers{1, 3}));
    EXPECT_EQ(Figure(3).type, 8) << "the older one went";
}

TEST_F(OverlayFiguresTest, TheFigureAtTheEndIsDroppedAndNotTheOlderOneOfItsNumber) {
    for (const std::int32_t type : {2, 3, 4}) Make(type, {{type, 0}});
    ASSERT_EQ(store.DelOrgData(1), 0);
    ASSERT_EQ(Make(1, {{7, 8}}), 3);
    EXPECT_EQ(At(2).pntCnt, 1) << "points by position reach the new figure";
    EXPECT_EQ(At(1).pntCnt, 1);
    store.DropLastOrgDat();
    EXPECT_EQ(IDs(), (Numbers{2, 3}));
    EXPECT_EQ(Figure(3).type, 4);
    EXPECT_EQ(store.MakeOrgDat(1, 0, 0, 0), 3) << "the number is free again";
}

TEST_F(OverlayFiguresTest, DeletedFiguresTakePointsAndStringsWithThemAndTheOthersMoveDown) {
    for (int i = 1; i <= 4; ++i) {
        const std::int32_t id = Make(2, {{i, i}, {i * 10, i}});
        ASSERT_EQ(store.SetOrgDatString(id, "mark " + std::to_string(i), i, 0, 0, 0, 0), 0);
    }
    ASSERT_EQ(store.DelOrgData(2), 0);
    EXPECT_EQ(store.DelOrgData(2), -1);
    EXPECT_EQ(IDs(), (Numbers{1, 3, 4}));
    EXPECT_EQ(PlacesOf(3), (Places{{3, 3}, {30, 3}}));
    EXPECT_EQ(Figure(4).strText, "mark 4");
    EXPECT_EQ(Figure(4).strX, 4);
    for (const std::int32_t id : {4, 1, 3}) EXPECT_EQ(store.DelOrgData(id), 0);
    EXPECT_EQ(store.OrgDatCnt(), 0);
    EXPECT_EQ(store.AddOrgPnt(1, 0, 0), -1);
    EXPECT_EQ(store.MakeOrgDat(2, 0, 0, 0), 1) << "numbers begin anew";
    EXPECT_EQ(Figure(1).pntCnt, 0);
    EXPECT_TRUE(Figure(1).strText.empty());
}

TEST_F(OverlayFiguresTest, AmongManyFiguresSearchesMeetWhatAWalkFromTheFirstMeets) {
    // Makes, deletions and drops in a fixed disorder, so that numbers repeat, past the size up to which figures are walked.
    std::mt19937 disorder(7);
    std::int16_t serial = 0;
    for (int round = 0; round < 400; ++round) {
        const auto draw = disorder() % 10;
        if (draw < 6 || store.OrgDatCnt() < 70) {
            const std::int32_t cnt = store.OrgDatCnt();
            ASSERT_EQ(store.MakeOrgDat(2, ++serial, 0, 0), cnt + 1);
        } else if (draw < 9) {
            const auto pos = static_cast<std::int32_t>(disorder() % static_cast<unsigned>(store.OrgDatCnt()));
            ASSERT_EQ(store.DelOrgData(store.GetOrgID(pos)), 0);
        } else {
            store.DropLastOrgDat();
        }
        for (std::int32_t id = -1; id <= 260; ++id) {
            const OrgDat* walked = nullptr;
            for (const OrgDat& dat : store.OrgDats()) {
                if (dat.ID == id && id > 0) {
                    walked = &dat;
                    break;
                }
            }
            ASSERT_EQ(store.FindOrgDat(id), walked) << "round " << round << " ID " << id;
        }
    }
    EXPECT_GT(store.OrgDatCnt(), 100);
}

// --- Points -----------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, APointIsAddedAtTheEndAndTheNewCountAnswered) {
    const std::int32_t id = Make(2);
    EXPECT_EQ(store.AddOrgPnt(id, 1, 2), 1);
    EXPECT_EQ(store.AddOrgPnt(id, 3, 4), 2);
    EXPECT_EQ(PlacesOf(id), (Places{{1, 2}, {3, 4}}));
    EXPECT_EQ(store.AddOrgPnt(id + 1, 3, 4), -1);
    EXPECT_EQ(store.AddOrgPnt(0, 3, 4), -1);
    EXPECT_EQ(store.AddOrgPnt(-id, 3, 4), -1);
}

TEST_F(OverlayFiguresTest, APointFigureTakesOnePointAndKeepsIt) {
    const std::int32_t id = Make(kLayPoint);
    EXPECT_EQ(store.AddOrgPnt(id, 1, 2), 1);
    EXPECT_EQ(store.AddOrgPnt(id, 3, 4), -1);
    EXPECT_EQ(store.AddOrgPntAt(0, 3, 4), -1);
    EXPECT_EQ(store.InsOrgPnt(id, 0, 3, 4), -1);
    EXPECT_EQ(store.InsOrgPnt(id, 1, 3, 4), -1);
    EXPECT_EQ(store.DelOrgPnt(id, 0), -1);
    EXPECT_EQ(store.DelOrgPnt(id, 1), -1);
    EXPECT_EQ(PlacesOf(id), (Places{{1, 2}}));
    EXPECT_EQ(store.EditOrgPnt(id, 0, 5, 6), 0);
    EXPECT_EQ(PlacesOf(id), (Places{{5, 6}}));
}

TEST_F(OverlayFiguresTest, TheOnePointOfAPointFigureMayBeInserted) {
    const std::int32_t id = Make(kLayPoint);
    EXPECT_EQ(store.InsOrgPnt(id, 0, 1, 2), 1);
    EXPECT_EQ(store.InsOrgPnt(id, 0, 3, 4), -1);
}

TEST_F(OverlayFiguresTest, ALineThatBecameAPointFigureKeepsAllItsPoints) {
    const std::int32_t id = Make(2, {{1, 2}, {3, 4}});
    ASSERT_TRUE(store.EditOrgDat(id, kLayPoint, 0, 0, 0));
    EXPECT_EQ(store.AddOrgPnt(id, 5, 6), -1);
    EXPECT_EQ(store.InsOrgPnt(id, 1, 5, 6), -1);
    EXPECT_EQ(store.DelOrgPnt(id, 0), -1);
    EXPECT_EQ(PlacesOf(id), (Places{{1, 2}, {3, 4}}));
}

TEST_F(OverlayFiguresTest, InsertionsGoBeforeTheirPositionFromTheFirstToBehindTheLast) {
    const std::int32_t id = Make(2);
    EXPECT_EQ(store.InsOrgPnt(id, 1, 9, 9), -1);
    EXPECT_EQ(store.InsOrgPnt(id, 0, 2, 0), 1);
    EXPECT_EQ(store.InsOrgPnt(id, 0, 0, 0), 2);
    EXPECT_EQ(store.InsOrgPnt(id, 1, 1, 0), 3);
    EXPECT_EQ(store.InsOrgPnt(id, 3, 3, 0), 4);
    EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(store.InsOrgPnt(id, 5, 9, 9), -1);
    EXPECT_EQ(store.InsOrgPnt(id, -1, 9, 9), -1);
    EXPECT_EQ(Figure(id).pntCnt, 4);
}

TEST_F(OverlayFiguresTest, AnEditOutsideThePointsIsMinusTwo) {
    const std::int32_t id = Make(2, {{1, 2}, {3, 4}});
    EXPECT_EQ(store.EditOrgPnt(id, 2, 9, 9), -2);
    EXPECT_EQ(store.EditOrgPnt(id, -1, 9, 9), -2);
    EXPECT_EQ(store.EditOrgPnt(id + 1, 0, 9, 9), -1);
    EXPECT_EQ(PlacesOf(id), (Places{{1, 2}, {3, 4}}));
    EXPECT_EQ(store.EditOrgPnt(id, 1, 5, 6), 0);
    EXPECT_EQ(PlacesOf(id), (Places{{1, 2}, {5, 6}}));
    EXPECT_EQ(store.EditOrgPnt(Make(2), 0, 9, 9), -2) << "a figure without points";
}

TEST_F(OverlayFiguresTest, MovingTheFirstPointOfAClosedPolygonMovesTheClosingPointToo) {
    const std::int32_t id = Make(kLayPolygon, kRing);
    EXPECT_EQ(store.EditOrgPnt(id, 0, -1, -2), 0);
    EXPECT_EQ(PlacesOf(id), (Places{{-1, -2}, {10, 0}, {10, 10}, {-1, -2}}));
}

TEST_F(OverlayFiguresTest, MovingTheClosingPointOpensTheRingForOnlyLaterPointsFollow) {
    const std::int32_t id = Make(kLayPolygon, kRing);
    EXPECT_EQ(store.EditOrgPnt(id, 3, 5, 5), 0);
    EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {10, 0}, {10, 10}, {5, 5}}));
}

TEST_F(OverlayFiguresTest, OfSeveralEqualPointsOnlyTheNextOneFollows) {
    const std::int32_t id = Make(kLayPolygon, {{0, 0}, {1, 0}, {0, 0}, {0, 1}, {0, 0}});
    EXPECT_EQ(store.EditOrgPnt(id, 0, 7, 7), 0);
    EXPECT_EQ(PlacesOf(id), (Places{{7, 7}, {1, 0}, {7, 7}, {0, 1}, {0, 0}}));
}

TEST_F(OverlayFiguresTest, AClosingPointMustBeEqualInBothCoordinates) {
    const std::int32_t id = Make(kLayPolygon, {{0, 0}, {0, 1}, {1, 0}, {1e-300, 0}});
    EXPECT_EQ(store.EditOrgPnt(id, 0, 7, 7), 0);
    EXPECT_EQ(PlacesOf(id), (Places{{7, 7}, {0, 1}, {1, 0}, {1e-300, 0}}));
}

TEST_F(OverlayFiguresTest, OnlyAPolygonKeepsItsRingClosed) {
    for (const std::int32_t type : {2, 4, 8}) {
        const std::int32_t id = Make(type, kRing);
        EXPECT_EQ(store.EditOrgPnt(id, 0, 7, 7), 0);
        EXPECT_EQ(PlacesOf(id), (Places{{7, 7}, {10, 0}, {10, 10}, {0, 0}})) << type;
        EXPECT_EQ(store.EditOrgPnt(id, 0, 0, 0), 0);
        EXPECT_EQ(store.DelOrgPnt(id, 0), 3);
        EXPECT_EQ(PlacesOf(id), (Places{{10, 0}, {10, 10}, {0, 0}})) << type;
    }
}

TEST_F(OverlayFiguresTest, DeletingTheFirstPointOfAClosedRingClosesItAtTheOldSecondPoint) {
    const std::int32_t id = Make(kLayPolygon, kRing);
    EXPECT_EQ(store.DelOrgPnt(id, 0), 3);
    EXPECT_EQ(PlacesOf(id), (Places{{10, 0}, {10, 10}, {10, 0}}));
}

TEST_F(OverlayFiguresTest, DeletingOtherPointsLeavesTheRestAsItIs) {
    const std::int32_t id = Make(kLayPolygon, kRing);
    EXPECT_EQ(store.DelOrgPnt(id, 1), 3);
    EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {10, 10}, {0, 0}}));
    EXPECT_EQ(store.DelOrgPnt(id, 2), 2) << "the closing point itself";
    EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {10, 10}}));
}

TEST_F(OverlayFiguresTest, ADeletionBeforeAnEqualNeighbourTakesOneOfTheTwo) {
    const std::int32_t id = Make(kLayPolygon, {{0, 0}, {0, 0}, {5, 5}});
    EXPECT_EQ(store.DelOrgPnt(id, 0), 2);
    EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {5, 5}}));
}

TEST_F(OverlayFiguresTest, TheCountAsPositionIsRefusedByAnEditButDropsTheLastPoint) {
    for (const std::int32_t type : {2, 3}) {
        const std::int32_t id = Make(type, {{0, 0}, {1, 1}, {2, 2}});
        EXPECT_EQ(store.EditOrgPnt(id, 3, 9, 9), -2);
        EXPECT_EQ(store.DelOrgPnt(id, 4), -1);
        EXPECT_EQ(store.DelOrgPnt(id, -1), -1);
        EXPECT_EQ(store.DelOrgPnt(id, 3), 2);
        EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {1, 1}})) << type;
    }
}

TEST_F(OverlayFiguresTest, DroppingTheLastPointByTheCountDoesNotLookForAClosingPoint) {
    // Behind the last point everything reads as zero; a first point at zero must not be taken for its like.
    const std::int32_t id = Make(kLayPolygon, kRing);
    EXPECT_EQ(store.DelOrgPnt(id, 4), 3);
    EXPECT_EQ(PlacesOf(id), (Places{{0, 0}, {10, 0}, {10, 10}}));
}

TEST_F(OverlayFiguresTest, TheLastPointDoesNotGoAndStaysReadable) {
    for (const std::int32_t type : {2, 3, 4, 8}) {
        const std::int32_t id = Make(type, {{1, 2}, {3, 4}});
        EXPECT_EQ(store.DelOrgPnt(id, 0), 1);
        EXPECT_EQ(store.DelOrgPnt(id, 0), -1);
        EXPECT_EQ(store.DelOrgPnt(id, 1), -1);
        EXPECT_EQ(PlacesOf(id), (Places{{3, 4}})) << type;
        EXPECT_EQ(store.AddOrgPnt(id, 5, 6), 2);
        EXPECT_EQ(PlacesOf(id), (Places{{3, 4}, {5, 6}})) << type;
    }
}

TEST_F(OverlayFiguresTest, AFigureWithoutPointsHasNoneToDelete) {
    EXPECT_EQ(store.DelOrgPnt(Make(2), 0), -1);
    EXPECT_EQ(store.DelOrgPnt(Make(kLayPoint), 0), -1);
    EXPECT_EQ(Figure(1).pntCnt, 0);
}

TEST_F(OverlayFiguresTest, CoordinatesAreTakenAsTheyComeAndOneThatIsNoNumberClosesNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::int32_t id = Make(kLayPolygon, {{nan, 1}, {1e300, -1e300}, {nan, 1}});
    EXPECT_EQ(store.EditOrgPnt(id, 0, 5, 5), 0);
    EXPECT_NE(Figure(id).pnts[2].x, Figure(id).pnts[2].x);
    EXPECT_EQ(Figure(id).pnts[1].x, 1e300);
}

TEST_F(OverlayFiguresTest, ManyPointsAreAddedInFewSteps) {
    const std::int32_t id = Make(2);
    ArrayFaults::Clear();
    for (std::int32_t i = 1; i <= 100000; ++i) ASSERT_EQ(store.AddOrgPnt(id, i, 0), i);
    EXPECT_LT(ArrayFaults::Count(), 40);
}

// --- Strings ----------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, AStringHasItsAnchorSizeColourAndBackground) {
    const std::int32_t id = Make(2);
    EXPECT_EQ(store.SetOrgDatString(id, "mark", 1.5, -2.5, 12, 0x112233, 7), 0);
    const OrgDat& dat = Figure(id);
    EXPECT_EQ(dat.strText, "mark");
    EXPECT_EQ(dat.strX, 1.5);
    EXPECT_EQ(dat.strY, -2.5);
    EXPECT_EQ(dat.strZ, 0);
    EXPECT_EQ(dat.strSize, 12);
    EXPECT_EQ(dat.strAngle, 0);
    EXPECT_EQ(dat.strColor, 0x112233U);
    EXPECT_EQ(dat.strFill, 7);
    EXPECT_EQ(store.SetOrgDatString(id, "a longer mark than before", 3, 4, 5, 6, 0), 0);
    EXPECT_EQ(dat.strText, "a longer mark than before");
    EXPECT_EQ(dat.strX, 3);
    EXPECT_EQ(dat.strFill, 0);
}

TEST_F(OverlayFiguresTest, AnEmptyStringIsNotTakenAndTheFormerOneStays) {
    const std::int32_t id = Make(2);
    EXPECT_EQ(store.SetOrgDatString(id, "", 1, 2, 3, 4, 5), -1);
    EXPECT_TRUE(Figure(id).strText.empty());
    EXPECT_EQ(Figure(id).strX, 0);
    ASSERT_EQ(store.SetOrgDatString(id, "mark", 1, 2, 3, 4, 5), 0);
    EXPECT_EQ(store.SetOrgDatString(id, "", 9, 9, 9, 9, 9), -1);
    EXPECT_EQ(Figure(id).strText, "mark");
    EXPECT_EQ(Figure(id).strX, 1);
    EXPECT_EQ(Figure(id).strSize, 3);
}

// --- Life -------------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, FiguresGoWithInitAndNumbersBeginAnew) {
    for (int i = 0; i < 100; ++i) Make(2, {{1, 2}});
    ASSERT_NE(store.FindOrgDat(100), nullptr);
    store.Init();
    EXPECT_EQ(store.OrgDatCnt(), 0);
    EXPECT_EQ(store.FindOrgDat(100), nullptr);
    EXPECT_EQ(store.GetOrgID(0), -1);
    EXPECT_EQ(Make(2), 1);
}

TEST_F(OverlayFiguresTest, BeforeInitAndAfterFreeAllNoFigureCanBeMade) {
    CDigMem fresh;
    EXPECT_EQ(fresh.MakeOrgDat(2, 0, 0, 0), -1);
    EXPECT_EQ(fresh.AddOrgPnt(1, 0, 0), -1);
    EXPECT_EQ(fresh.GetOrgID(0), -1);
    for (int i = 0; i < 100; ++i) Make(2, {{1, 2}});
    ASSERT_NE(store.FindOrgDat(100), nullptr);
    store.FreeAll();
    EXPECT_EQ(store.OrgDatCnt(), 0);
    EXPECT_EQ(store.FindOrgDat(100), nullptr);
    EXPECT_EQ(store.MakeOrgDat(2, 0, 0, 0), -1);
}

// --- No memory --------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, WithoutMemoryAFigureIsNotMade) {
    const auto makeFails = [&] {
        ArrayFaults::FailFrom(1);
        const std::int32_t id = store.MakeOrgDat(3, 0, 0, 0);
        const bool asked = ArrayFaults::Count() > 0;
        ArrayFaults::Clear();
        EXPECT_EQ(id == -1, asked);
        return asked;
    };
    EXPECT_TRUE(makeFails());
    EXPECT_EQ(store.OrgDatCnt(), 0);
    Make(2, {{1, 2}});
    while (!makeFails()) {
        ASSERT_LT(store.OrgDatCnt(), 100);
    }
    const std::int32_t cnt = store.OrgDatCnt();
    EXPECT_EQ(PlacesOf(1), (Places{{1, 2}})) << "the others are as they were";
    EXPECT_EQ(store.MakeOrgDat(3, 0, 0, 0), cnt + 1);
}

TEST_F(OverlayFiguresTest, WithoutMemoryAFigureKeepsItsPoints) {
    const std::int32_t id = Make(2, {{1, 2}, {3, 4}});
    std::int32_t cnt = 2;
    // The array has room more often than not: on until it has to grow.
    for (std::int32_t failed = 0; failed < 3;) {
        ASSERT_LT(cnt, 1000);
        ArrayFaults::FailFrom(1);
        const std::int32_t added = failed % 2 == 0 ? store.AddOrgPnt(id, 9, 9) : store.InsOrgPnt(id, 0, 1, 2);
        const bool asked = ArrayFaults::Count() > 0;
        ArrayFaults::Clear();
        ASSERT_EQ(added, asked ? -1 : ++cnt);
        if (asked) {
            ASSERT_EQ(Figure(id).pntCnt, cnt);
            ASSERT_EQ(PlacesOf(id)[0], (std::pair<double, double>{1, 2}));
            ASSERT_EQ(store.AddOrgPnt(id, 5, 6), ++cnt);
            ++failed;
        }
    }
}

TEST_F(OverlayFiguresTest, WithoutMemoryTheFormerStringStays) {
    const std::int32_t id = Make(2);
    ASSERT_EQ(store.SetOrgDatString(id, "mark", 1, 2, 3, 4, 5), 0);
    ArrayFaults::FailNth(1);
    EXPECT_EQ(store.SetOrgDatString(id, "another", 9, 9, 9, 9, 9), -1);
    ArrayFaults::Clear();
    EXPECT_EQ(Figure(id).strText, "mark");
    EXPECT_EQ(Figure(id).strX, 1);
    EXPECT_EQ(Figure(id).strColor, 4U);
}

TEST_F(OverlayFiguresTest, DeletionsEditsAndSearchesNeedNoMemoryAmongManyFiguresEither) {
    for (int i = 0; i < 100; ++i) Make(2, {{1, 2}, {3, 4}});
    ArrayFaults::FailFrom(1);
    EXPECT_NE(store.FindOrgDat(90), nullptr) << "without a lookup it is a walk";
    EXPECT_EQ(store.FindOrgDat(101), nullptr);
    EXPECT_EQ(store.EditOrgPnt(90, 0, 5, 5), 0);
    EXPECT_EQ(store.DelOrgPnt(90, 0), 1);
    EXPECT_EQ(store.DelOrgData(80), 0);
    EXPECT_EQ(store.DelOrgData(80), -1);
    store.DropLastOrgDat();
    EXPECT_EQ(store.OrgDatCnt(), 98);
}

TEST_F(OverlayFiguresTest, AFigureIsMadeAlsoWhenTheLookupCannotTakeIt) {
    for (int i = 0; i < 100; ++i) Make(2);
    ASSERT_NE(store.FindOrgDat(100), nullptr);  // from here on there is a lookup
    for (std::int64_t i = 0; i < 300; ++i) {
        const std::int32_t cnt = store.OrgDatCnt();
        ArrayFaults::FailFrom(1);
        const std::int32_t id = store.MakeOrgDat(2, 0, 0, 0);
        ArrayFaults::Clear();
        if (id == -1) {
            ASSERT_EQ(store.MakeOrgDat(2, 0, 0, 0), cnt + 1);
        }
        ASSERT_EQ(store.FindOrgDat(cnt + 1), &store.OrgDats().back());
    }
}

}  // namespace
}  // namespace orvane
