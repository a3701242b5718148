// What the search found when the map is another one by then, or does not let it be selected.
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class FindAnew : public Walk {
protected:
    void MakeMap() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 5, 0, 0, 100);
        AddSquare("AREA", 6, 500, 0, 100);
        Fit();
    }
    FindDialog& Finder() { return window->Finder(); }
    int Selected() {
        int count = 0;
        for (const DigDat& dat : BlockOf("AREA").dats) count += dat.active == 1;
        return count;
    }
};

TEST_F(FindAnew, ANewMapHasNothingOfWhatWasFoundInTheOldOne) {
    MakeMap();
    Press(Qt::CTRL | Qt::Key_F);
    Finder().Find();
    ASSERT_EQ(Finder().List().topLevelItemCount(), 2);
    window->Files().New();
    Settle();
    EXPECT_EQ(Finder().List().topLevelItemCount(), 0);
    EXPECT_EQ(Finder().CodeField().count(), 1) << "all layers";
    EXPECT_TRUE(Finder().Count().text().isEmpty());
}

TEST_F(FindAnew, AMapThatIsOpenedHasItsOwnLayersInTheOpenDialog) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("other.Ovb"), "").saved);
    window->Files().New();
    MakeLayer("LINE", kLayLine);
    AddFeature("LINE", 1, {0.0, 1.0}, {0.0, 1.0});
    Fit();
    Press(Qt::CTRL | Qt::Key_F);
    Finder().Find();
    EXPECT_GE(Finder().CodeField().findText("LINE"), 0);
    ASSERT_TRUE(window->Files().Load({File("other.Ovb")}, {}).Ok());
    EXPECT_EQ(Finder().List().topLevelItemCount(), 0);
    EXPECT_LT(Finder().CodeField().findText("LINE"), 0);
    EXPECT_GE(Finder().CodeField().findText("AREA"), 0);
}

TEST_F(FindAnew, ALayerThatIsMadeMeanwhileIsInTheOpenDialogAndTheChoiceStays) {
    MakeMap();
    Press(Qt::CTRL | Qt::Key_F);
    Finder().CodeField().setCurrentIndex(Finder().CodeField().findText("AREA"));
    EXPECT_TRUE(window->Layers().MakeLayer("AAA", kLayPoint, 1));
    window->RefreshNow();
    EXPECT_GE(Finder().CodeField().findText("AAA"), 0);
    EXPECT_EQ(Finder().CodeField().currentText(), "AREA");
}

TEST_F(FindAnew, AFeatureThatHasGoneLeavesTheSelectionAsItIs) {
    MakeMap();
    Finder().ShowLayers();
    Finder().NumberField().setText("5");
    Finder().Find();
    Map().Call("OrvDelDat", {"AREA", 1, 5});
    Map().Call("OrvSetActDat", {"AREA", 1, 6});
    const double viewX = Map().Control().viewX;
    Finder().Go();
    EXPECT_EQ(Selected(), 1);
    EXPECT_EQ(Map().Control().viewX, viewX);
    EXPECT_TRUE(Finder().Count().text().contains("any more")) << Finder().Count().text().toStdString();
    Finder().SelectAll();
    EXPECT_EQ(Selected(), 1);
}

TEST_F(FindAnew, ALayerWhoseSelectBoxIsOffIsGoneToAndToldOf) {
    MakeMap();
    Finder().ShowLayers();
    Finder().Find();
    const QString found = Finder().Count().text();
    Map().Call("OrvSetLayActMode", {"AREA", false});
    Finder().Go();
    EXPECT_TRUE(Finder().Count().text().contains("Select")) << Finder().Count().text().toStdString();
    EXPECT_TRUE(Finder().Count().text().startsWith("1 "));
    EXPECT_NEAR(PointOf(50, 50).x(), Map().rect().center().x(), 20) << "the map goes there";
    Finder().SelectAll();
    EXPECT_TRUE(Finder().Count().text().startsWith("2 "));
    Map().Call("OrvSetLayActMode", {"AREA", true});
    Finder().SelectAll();
    EXPECT_EQ(Finder().Count().text(), found);
    EXPECT_EQ(Selected(), 2);
}

}  // namespace
}  // namespace orvane
