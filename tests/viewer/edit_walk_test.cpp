// Undo and redo of every edit: what the tools did goes back and comes again, feature by feature.
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

using Copies = std::vector<ItemCopy>;

class EditWalk : public Walk {
protected:
    EditWalk() {
        MakeLayer("AREA", kLayPolygon);
        MakeLayer("ROAD", kLayLine);
        MakeLayer("TREE", kLayPoint);
        MakeLayer("DISC", kLayCircle);
        MakeLayer("OVAL", kLayEllipse);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 400, 0, 300);
        AddSquare("AREA", 3, 800, 0, 300);
        AddFeature("ROAD", 1, {0.0, 300.0, 600.0}, {500.0, 520.0, 500.0}, {1.0, 2.0, 3.0});
        AddFeature("TREE", 1, {100.0}, {700.0}, {12.0});
        AddFeature("DISC", 1, {500.0}, {800.0}, {80.0});
        AddFeature("OVAL", 1, {800.0, 1000.0}, {700.0, 800.0});
        Fit();
    }

    Copies All(const char* code) {
        Copies copies;
        for (const DigDat& dat : BlockOf(code).dats) copies.push_back(CopyOf(dat));
        return copies;
    }
    /// Does `work`, which is to be one step that changes the layer; undoes and redoes it, and looks at every state.
    template <class Work>
    void Edit(const char* code, Work work) {
        const Copies before = All(code);
        const int steps = Stack().index();
        work();
        Settle();
        const Copies after = All(code);
        EXPECT_FALSE(before == after) << "nothing was changed";
        EXPECT_EQ(Stack().index(), steps + 1);
        EXPECT_TRUE(window->isWindowModified());
        Press(Qt::CTRL | Qt::Key_Z);
        EXPECT_TRUE(All(code) == before) << "the edit was not taken back";
        Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
        EXPECT_TRUE(All(code) == after) << "the edit did not come again";
        Press(Qt::CTRL | Qt::Key_Z);
        EXPECT_TRUE(All(code) == before);
        Press(Qt::CTRL | Qt::Key_Y);
        EXPECT_TRUE(All(code) == after);
    }
    void Draw(const char* code) {
        window->findChild<ModeBar*>()->ChooseLayer(code, 1);
        Press(Qt::Key_D);
        ASSERT_EQ(Map().RunMode(), kRunAddCollect);
    }
    QUndoStack& Stack() { return window->History().Stack(); }
};

TEST_F(EditWalk, ADrawnAreaGoesAndComes) {
    Edit("AREA", [this] {
        Draw("AREA");
        Click(PointOf(100, 850));
        Click(PointOf(200, 850));
        DoubleClick(PointOf(200, 950));
    });
    EXPECT_EQ(BlockOf("AREA").datCnt, 4);
}

TEST_F(EditWalk, ADrawnLineGoesAndComes) {
    Edit("ROAD", [this] {
        Draw("ROAD");
        Click(PointOf(100, 850));
        DoubleClick(PointOf(200, 900));
    });
}

TEST_F(EditWalk, ADrawnPointGoesAndComes) {
    Edit("TREE", [this] {
        Draw("TREE");
        Click(PointOf(250, 850));
    });
}

TEST_F(EditWalk, ADrawnCircleGoesAndComesWithItsRadius) {
    Edit("DISC", [this] {
        Draw("DISC");
        Click(PointOf(250, 850));
        Click(PointOf(300, 850));
    });
    EXPECT_NEAR(BlockOf("DISC").dats[1].pnts[0].z, 50, 5);
}

TEST_F(EditWalk, ADrawnEllipseGoesAndComes) {
    Edit("OVAL", [this] {
        Draw("OVAL");
        Click(PointOf(250, 850));
        Click(PointOf(300, 900));
    });
}

TEST_F(EditWalk, AMovedPointOfALineGoesBackWithTheHeightsThatTheToolDropped) {
    Edit("ROAD", [this] {
        Press(Qt::Key_V);
        Click(PointOf(150, 510));
        Click(PointOf(300, 520));
        Click(PointOf(300, 600));
        Click(PointOf(1000, 600));
    });
    EXPECT_EQ(Map().RunMode(), 0);
    EXPECT_EQ(BlockOf("ROAD").dats[0].pnts[1].z, 0) << "the tool writes heights of 0";
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("ROAD").dats[0].pnts[1].z, 2);
}

TEST_F(EditWalk, AddedPointsGoAndCome) {
    Edit("ROAD", [this] {
        Press(Qt::Key_A);
        Click(PointOf(150, 510));
        QTest::mouseMove(&Map(), PointOf(450, 560));  // which finds the segment
        Settle();
        Click(PointOf(450, 560));
        DoubleClick(PointOf(450, 560));
    });
    EXPECT_GT(BlockOf("ROAD").dats[0].pntCnt, 3);
}

TEST_F(EditWalk, DeletedPointsGoAndCome) {
    Edit("ROAD", [this] {
        Press(Qt::Key_X);
        Click(PointOf(150, 510));
        Click(PointOf(300, 520));
        Click(PointOf(1000, 600));
    });
    EXPECT_EQ(BlockOf("ROAD").dats[0].pntCnt, 2);
}

TEST_F(EditWalk, AMovedAreaGoesBack) {
    Edit("AREA", [this] {
        Press(Qt::Key_M);
        Click(PointOf(500, 100));
        Click(PointOf(520, 160));
    });
}

TEST_F(EditWalk, AMovedCircleGoesBackWithItsRadius) {
    Edit("DISC", [this] {
        Press(Qt::Key_M);
        Click(PointOf(500, 800));
        Click(PointOf(520, 860));
    });
    EXPECT_EQ(BlockOf("DISC").dats[0].pnts[0].z, 80);
}

TEST_F(EditWalk, ACopyGoesAndComes) {
    Edit("AREA", [this] {
        Press(Qt::Key_C);
        Click(PointOf(500, 100));
        Click(PointOf(520, 460));
    });
    EXPECT_EQ(BlockOf("AREA").datCnt, 4);
}

TEST_F(EditWalk, ADeletedAreaComesBackToItsPlaceAmongTheOthers) {
    // An edit of another layer before leaves its code where the end of a deletion finds it.
    Press(Qt::Key_M);
    Click(PointOf(500, 800));
    Click(PointOf(520, 860));
    Edit("AREA", [this] {
        Press(Qt::Key_K);
        Click(PointOf(500, 100));
    });
    EXPECT_EQ(BlockOf("AREA").datCnt, 2);
    EXPECT_TRUE(window->Events().contains("OnEditorEnd(\"DISC\", 1, 2, 0, 300)")) << "the code of the edit before";
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("AREA").dats[1].datID, 2) << "not behind the others";
}

TEST_F(EditWalk, TheDeleteKeyInTheMoveToolGoesBack) {
    Edit("AREA", [this] {
        Press(Qt::Key_V);
        Click(PointOf(500, 100));
        Press(Qt::Key_Delete);
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(BlockOf("AREA").datCnt, 2);
}

TEST_F(EditWalk, TheDeleteKeyAtOnceInAToolThatWasGivenItsFeatureGoesBack) {
    Edit("AREA", [this] {
        ASSERT_TRUE(window->History().StartTool(kRunEditPntMove, ItemKey{"AREA", 1, 2}));
        Press(Qt::Key_Delete);
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(BlockOf("AREA").datCnt, 2);
}

TEST_F(EditWalk, ACancelledToolLeavesNothingToUndo) {
    Press(Qt::Key_M);
    Click(PointOf(500, 100));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Stack().count(), 0);
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(EditWalk, ACancelledToolLeavesTheTagOfAFeatureNumberedZeroAlone) {
    AddSquare("AREA", 0, 1200, 0, 50);
    Map().Call("SetDigDatInfoEx", {"AREA", 1, 0, 5, false});
    Press(Qt::Key_M);
    Click(PointOf(500, 100));
    Click(PointOf(520, 160));
    for (const Qt::Key tool : {Qt::Key_K, Qt::Key_A, Qt::Key_X, Qt::Key_D}) {
        window->findChild<ModeBar*>()->ChooseLayer("AREA", 1);
        Press(tool);
        Press(Qt::Key_Escape);
        EXPECT_EQ(Map().RunMode(), 0);
        EXPECT_EQ(BlockOf("AREA").dats[3].lineTag, 5);
    }
}

TEST_F(EditWalk, UndoInTheMiddleOfAToolEndsTheToolAlone) {
    Press(Qt::Key_M);
    Click(PointOf(500, 100));
    Click(PointOf(520, 160));
    const Copies moved = All("AREA");
    Press(Qt::Key_M);
    Click(PointOf(100, 100));
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(Map().RunMode(), 0);
    EXPECT_TRUE(All("AREA") == moved);
    for (const DigDat& dat : BlockOf("AREA").dats) EXPECT_EQ(dat.lineTag, 0) << "a hidden feature was left";
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_FALSE(All("AREA") == moved);
}

TEST_F(EditWalk, UndoEndsAFigureThatIsHalfDrawnAlsoWhereThereIsNothingElseToUndo) {
    window->findChild<ModeBar*>()->ChooseLayer("AREA", 1);
    Press(Qt::Key_D);
    Click(PointOf(100, 400));
    Click(PointOf(200, 400));
    ASSERT_EQ(Stack().count(), 0);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(Map().RunMode(), 0);
    EXPECT_EQ(BlockOf("AREA").datCnt, 3);
    EXPECT_FALSE(window->FindAction("Undo")->isEnabled());
}

TEST_F(EditWalk, UndoWhileAToolWaitsForItsFirstClickUndoes) {
    Press(Qt::Key_M);
    Click(PointOf(500, 100));
    Click(PointOf(520, 160));
    const Copies moved = All("AREA");
    Press(Qt::Key_M);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_FALSE(All("AREA") == moved);
}

TEST_F(EditWalk, TheDeleteKeyTakesTheWholeSelectionAndUndoBringsAllToTheirPlaces) {
    Edit("AREA", [this] {
        Click(PointOf(100, 100));
        Click(PointOf(900, 100), Qt::ControlModifier);
        Press(Qt::Key_Delete);
    });
    EXPECT_EQ(BlockOf("AREA").datCnt, 1);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("AREA").dats[0].datID, 1);
    EXPECT_EQ(BlockOf("AREA").dats[2].datID, 3);
}

TEST_F(EditWalk, FeaturesOfALayerThatIsNotForEditingAreNotDeleted) {
    Map().Call("OrvSetLayEditFlg", {"AREA", false});
    Click(PointOf(100, 100));
    Press(Qt::Key_Delete);
    EXPECT_EQ(BlockOf("AREA").datCnt, 3);
    EXPECT_EQ(Stack().count(), 0);
}

TEST_F(EditWalk, ATextIsGivenChangedAndTakenAwayAgain) {
    Click(PointOf(100, 100));
    Edit("AREA", [this] {
        Press(Qt::Key_T);
        QTest::keyClicks(&window->Feature().TextField(), "Town");
        QTest::keyClick(&window->Feature().TextField(), Qt::Key_Return);
        Settle();
    });
    ASSERT_NE(BlockOf("AREA").dats[0].str, nullptr);
    EXPECT_EQ(BlockOf("AREA").dats[0].str->text, "Town");
    Edit("AREA", [this] {
        window->Feature().Show(ItemKey{"AREA", 1, 1});
        window->Feature().TextField().setText(QString::fromUtf8("東京"));
        window->Feature().SizeField().setValue(24);
        window->Feature().Apply();
        Settle();
    });
    EXPECT_EQ(BlockOf("AREA").dats[0].str->text, "\x93\x8C\x8B\x9E");
    EXPECT_EQ(BlockOf("AREA").dats[0].str->size, 24);
}

TEST_F(EditWalk, ATextThatMapsCannotHoldIsRefusedInWords) {
    Click(PointOf(100, 100));
    window->Feature().EditText();
    window->Feature().findChild<QCheckBox*>("has text")->setChecked(true);
    window->Feature().TextField().setText(QString::fromUtf8("\U0001F5FA"));
    WhenTold(QMessageBox::Ok);
    QTest::keyClick(&window->Feature().TextField(), Qt::Key_Return);
    Settle();
    EXPECT_TRUE(said.contains("code page 932"));
}

TEST_F(EditWalk, TagAndCoordinatesOfAFeatureAreChangedInTheForm) {
    Click(PointOf(100, 100));
    Edit("AREA", [this] {
        window->Feature().TagField().setValue(7);
        window->Feature().Points().item(1, 0)->setText("310.5");
        window->Feature().Apply();
        Settle();
    });
    EXPECT_EQ(BlockOf("AREA").dats[0].lineTag, 7);
    EXPECT_EQ(BlockOf("AREA").dats[0].pnts[1].x, 310.5);
}

TEST_F(EditWalk, ATagOfAFeatureWithANumberBeyond16BitsIsChangedToo) {
    AddSquare("AREA", 70000, 1200, 0, 100);
    AddSquare("AREA", 70001, 1400, 0, 100);
    Edit("AREA", [this] {
        window->Feature().Show(ItemKey{"AREA", 1, 70000});
        window->Feature().TagField().setValue(5);
        window->Feature().Apply();
        Settle();
    });
    EXPECT_EQ(BlockOf("AREA").dats[3].datID, 70000) << "it keeps its place";
    EXPECT_EQ(BlockOf("AREA").dats[3].lineTag, 5);
}

TEST_F(EditWalk, AMeshComesBackWithItsGrid) {
    MakeLayer("GRID", kLayMesh);
    const QVariantList x{0.0, 50.0, 0.0, 50.0}, y{900.0, 900.0, 950.0, 950.0}, z{1.0, 2.0, 3.0, 4.0};
    Map().Call("OrvAddMeshDat", {"GRID", 1, 1, 2, 2, x, y, z});
    const QVariant use = QVariantList{true, false, true, true};
    const QVariant colors = QVariantList{0x112233u, 0x445566u, 0xFFFFFFFFu, 8u};
    ASSERT_TRUE(Map().Call("OrvSetMeshUseFlag", {"GRID", 1, 1, use}).toBool());
    ASSERT_TRUE(Map().Call("OrvSetMeshColor", {"GRID", 1, 1, colors}).toBool());
    Edit("GRID", [this] { window->History().Change("deleting", Deletion(Store(), {"GRID", 1, 1})); });
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("GRID").dats[0].meshAttr->meshColor[1], 0x445566u);
    EXPECT_EQ(BlockOf("GRID").dats[0].meshAttr->meshColor[2], 0xFFFFFFFFu);
    EXPECT_EQ(BlockOf("GRID").dats[0].meshAttr->useFlag[1], 0);
}

TEST_F(EditWalk, FeaturesThatShareANumberComeBackToo) {
    AddSquare("AREA", 2, 1200, 0, 50);
    const Copies before = All("AREA");
    window->History().Change("deleting", Deletion(Store(), {"AREA", 1, 1}));
    Settle();
    EXPECT_EQ(BlockOf("AREA").datCnt, 3);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_TRUE(All("AREA") == before);
}

TEST_F(EditWalk, TheMenuSaysWhatWouldBeTakenBack) {
    Press(Qt::Key_M);
    Click(PointOf(500, 100));
    Click(PointOf(520, 160));
    EXPECT_EQ(window->FindAction("Undo")->text(), "&Undo: moving");
}

}  // namespace
}  // namespace orvane
