// The feature that was chosen is the one that is met, whatever shares its number; and nothing that is out of sight or locked is.
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableWidget>
#include <QTreeWidget>

#include "hosts/viewer/feature_panel.h"
#include "hosts/viewer/selecting.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class ChosenItem : public Walk {
protected:
    EditHistory& History() { return window->History(); }
    DigDat& Dat(const char* code, std::size_t position) {
        return Store().MutableBlock(Store().FindBlock(code, 1).block).dats[position];
    }
    std::vector<int> Active(const char* code) {
        std::vector<int> active;
        for (const DigDat& dat : BlockOf(code).dats) active.push_back(dat.active);
        return active;
    }
    void Twins() {
        MakeLayer("ROAD", kLayPoint);
        AddFeature("ROAD", 5, {10.0}, {10.0});
        AddFeature("ROAD", 5, {90.0}, {90.0});
        AddFeature("ROAD", 6, {50.0}, {50.0});
        Fit();
        Dat("ROAD", 1).active = 1;
        window->RefreshNow();
    }
    /// A hidden layer and a shown one, in each of which the first feature is selected.
    void HiddenAndShown() {
        if (Store().FindLayDef("HID") < 0) {
            MakeLayer("HID", kLayPolygon);
            AddSquare("HID", 1, 10, 10, 20);
            AddSquare("HID", 2, 15, 15, 20);
            MakeLayer("AREA", kLayPolygon);
            AddSquare("AREA", 1, 0, 0, 50);
            AddSquare("AREA", 2, 25, 25, 50);
            Fit();
        }
        Map().Call("OrvResetActiveAll");
        Map().Call("OrvSetActDat", {"HID", 1, 1});
        Map().Call("OrvSetLayDspMode", {"HID", false});
        Map().Call("OrvSetActDat", {"AREA", 1, 1});
        Map().Call("OrvReDraw");
        window->RefreshNow();
    }
    const std::vector<int> firstAlone{1, 0};
};

TEST_F(ChosenItem, ApplyWritesIntoTheSecondOfTwoFeaturesWithOneNumber) {
    Twins();
    window->Feature().TagField().setValue(77);
    window->Feature().Apply();
    EXPECT_EQ(BlockOf("ROAD").dats[0].lineTag, 0);
    EXPECT_EQ(BlockOf("ROAD").dats[1].lineTag, 77);
    EXPECT_EQ(BlockOf("ROAD").dats[1].pnts[0].x, 90);
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{0, 1, 0}));
    History().Undo();
    EXPECT_EQ(BlockOf("ROAD").dats[1].lineTag, 0);
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{0, 1, 0}));
    EXPECT_EQ(window->Feature().Points().item(0, 0)->text(), "90");
}

TEST_F(ChosenItem, GoThereGoesToTheSecondOfTwoFeaturesWithOneNumber) {
    Twins();
    MapView(Map().Control()).ZoomBy(0.5);
    const auto middle = [&] {
        const QPoint at = PointOf(90, 90);
        return (at - Map().rect().center()).manhattanLength();
    };
    ASSERT_GT(middle(), 20);
    window->Selection().JumpToCurrent();
    EXPECT_LT(middle(), 5);
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{0, 1, 0}));
}

TEST_F(ChosenItem, TheListTellsFeaturesWithOneNumberApart) {
    Twins();
    Dat("ROAD", 0).active = 1;
    window->RefreshNow();
    QTreeWidget& list = window->Selection().List();
    ASSERT_EQ(list.topLevelItemCount(), 2);
    list.setCurrentItem(list.topLevelItem(1));
    EXPECT_EQ(window->Feature().Points().item(0, 0)->text(), "90");
    window->RefreshNow();
    EXPECT_EQ(list.indexOfTopLevelItem(list.currentItem()), 1);
    window->Selection().DropMarked();
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{1, 0, 0}));
    Dat("ROAD", 1).active = 1;
    window->RefreshNow();
    list.clearSelection();
    list.setCurrentItem(list.topLevelItem(1));
    window->Selection().KeepMarked();
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{0, 1, 0}));
}

TEST_F(ChosenItem, TheSearchFindsFeaturesWithOneNumberEach) {
    Twins();
    FindDialog& finder = window->Finder();
    finder.ShowLayers();
    finder.NumberField().setText("5");
    finder.Find();
    ASSERT_EQ(finder.List().topLevelItemCount(), 2);
    finder.SelectAll();
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{1, 1, 0}));
    finder.List().setCurrentItem(finder.List().topLevelItem(1));
    finder.Go();
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{0, 1, 0}));
    EXPECT_LT((PointOf(90, 90) - Map().rect().center()).manhattanLength(), 5);
}

TEST_F(ChosenItem, AnUndoneDeletionSelectsTheOneThatCameBack) {
    Twins();
    window->DeleteSelection();
    ASSERT_EQ(BlockOf("ROAD").datCnt, 2);
    EXPECT_EQ(BlockOf("ROAD").dats[0].pnts[0].x, 10);
    History().Undo();
    EXPECT_EQ(Active("ROAD"), (std::vector<int>{0, 1, 0}));
    window->DeleteSelection();
    EXPECT_EQ(BlockOf("ROAD").dats[0].pnts[0].x, 10) << "the other twin stays again";
}

TEST_F(ChosenItem, WhatIsEnteredStaysWhenAnotherFeatureGoesBeforeIt) {
    MakeLayer("ROAD", kLayPoint);
    for (const int n : {1, 2}) AddFeature("ROAD", n, {10.0 * n}, {10.0});
    Fit();
    Map().Call("OrvSetActDat", {"ROAD", 1, 2});
    window->RefreshNow();
    window->Feature().TagField().setValue(77);
    Map().Call("OrvDelDat", {"ROAD", 1, 1});
    window->RefreshNow();
    EXPECT_EQ(window->Feature().TagField().value(), 77);
    window->Feature().Apply();
    EXPECT_EQ(BlockOf("ROAD").dats[0].lineTag, 77);
}

TEST_F(ChosenItem, ALayerThatIsNotForEditingIsReadInTheFormOnly) {
    MakeLayer("ROAD", kLayPoint);
    AddFeature("ROAD", 5, {10.0}, {10.0});
    Fit();
    Map().Call("OrvSetActDat", {"ROAD", 1, 5});
    window->RefreshNow();
    FeaturePanel& form = window->Feature();
    form.show();
    form.raise();
    Settle();
    EXPECT_FALSE(form.Locked().isVisible());
    EXPECT_TRUE(form.ApplyButton().isEnabled());
    form.TagField().setValue(77);
    Map().Call("OrvSetLayEditFlg", {"ROAD", false});
    window->RefreshNow();
    EXPECT_TRUE(form.Locked().isVisible());
    EXPECT_TRUE(form.Locked().text().contains("not for editing"));
    EXPECT_FALSE(form.ApplyButton().isEnabled());
    EXPECT_TRUE(form.TagField().isReadOnly());
    EXPECT_TRUE(form.TextField().isReadOnly());
    EXPECT_EQ(form.Points().editTriggers(), QAbstractItemView::NoEditTriggers);
    form.Apply();  // as Enter in the text field does
    EXPECT_EQ(BlockOf("ROAD").dats[0].lineTag, 0);
    EXPECT_FALSE(History().CanUndo());
    Map().Call("OrvSetLayEditFlg", {"ROAD", true});
    window->RefreshNow();
    EXPECT_FALSE(form.Locked().isVisible());
    EXPECT_FALSE(form.TagField().isReadOnly());
    form.Apply();
    EXPECT_EQ(BlockOf("ROAD").dats[0].lineTag, 77);
}

TEST_F(ChosenItem, AnOverlayGoesIntoNoLayerThatIsNotForEditing) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 50);
    AddSquare("AREA", 2, 25, 25, 50);
    MakeLayer("OUT", kLayPolygon);
    AddSquare("OUT", 1, 200, 200, 5);
    Fit();
    for (const int n : {1, 2}) Map().Call("OrvSetActDat", {"AREA", 1, n});
    Map().Call("OrvSetLayEditFlg", {"OUT", false});
    Map().Call("OrvReDraw");
    {
        OverlayDialog dialog(Map(), History(), Overlay::Merge, window.get());
        ASSERT_EQ(dialog.Target().count(), 1);
        EXPECT_EQ(dialog.Target().itemText(0), "AREA / 1");
    }
    EXPECT_TRUE(RunOverlay(Map(), History(), Overlay::Intersect, "OUT", 1).contains("\"Edit\""));
    EXPECT_EQ(BlockOf("OUT").datCnt, 1);
    Map().Call("OrvSetLayEditFlg", {"AREA", false});
    OverlayDialog none(Map(), History(), Overlay::Merge, window.get());
    EXPECT_EQ(none.Target().count(), 0);
    none.show();
    WhenTold(QMessageBox::Ok);
    none.accept();
    EXPECT_TRUE(said.contains("\"Edit\"")) << said.toStdString();
}

TEST_F(ChosenItem, ApplyUndoAndRedoKeepWhatAHiddenLayerHasSelected) {
    HiddenAndShown();
    window->Feature().TagField().setValue(9);
    window->Feature().Apply();
    ASSERT_EQ(BlockOf("AREA").dats[0].lineTag, 9);
    EXPECT_EQ(Active("HID"), firstAlone);
    History().Undo();
    EXPECT_EQ(Active("HID"), firstAlone);
    History().Redo();
    EXPECT_EQ(Active("HID"), firstAlone);
    EXPECT_EQ(Active("AREA"), firstAlone);
}

TEST_F(ChosenItem, TheSearchKeepsWhatAHiddenLayerHasSelected) {
    HiddenAndShown();
    FindDialog& finder = window->Finder();
    finder.ShowLayers();
    finder.NumberField().setText("2");
    finder.Find();
    for (int i = 0; i < finder.List().topLevelItemCount(); ++i) {
        if (finder.List().topLevelItem(i)->text(0) == "AREA") finder.List().setCurrentItem(finder.List().topLevelItem(i));
    }
    finder.Go();
    EXPECT_EQ(Active("AREA"), (std::vector<int>{0, 1}));
    EXPECT_EQ(Active("HID"), firstAlone);
    finder.SelectAll();
    EXPECT_EQ(Active("AREA"), (std::vector<int>{0, 1}));
    EXPECT_EQ(Active("HID")[0], 1);
}

TEST_F(ChosenItem, AnOverlayKeepsWhatAHiddenLayerHasSelected) {
    HiddenAndShown();
    Map().Call("OrvSetActDat", {"AREA", 1, 2});
    Map().Call("OrvReDraw");
    ASSERT_EQ(RunOverlay(Map(), History(), Overlay::Intersect, "AREA", 1), "");
    EXPECT_EQ(Active("AREA"), (std::vector<int>{0, 0, 1}));
    EXPECT_EQ(Active("HID"), firstAlone);
}

TEST_F(ChosenItem, ASelectionByAShapeKeepsWhatAHiddenLayerHasSelected) {
    HiddenAndShown();
    constexpr int kArea = 3;
    constexpr int kContains = 6;
    window->Relations().Relation().setCurrentIndex(kContains);
    window->Relations().Select(kArea, {{20, 20}, {90, 20}, {90, 90}, {20, 90}});
    EXPECT_EQ(Active("AREA"), (std::vector<int>{0, 1}));
    EXPECT_EQ(Active("HID"), firstAlone);
}

class NewSubLayer : public ChosenItem {
protected:
    void Ask(int number, const QString& name, bool isRefused = true) {
        WhenAsked([=](QDialog& dialog) {
            dialog.findChild<QSpinBox*>()->setValue(number);
            dialog.findChild<QLineEdit*>("name")->setText(name);
            dialog.accept();
        });
        if (isRefused) WhenTold(QMessageBox::Ok);
        window->Layers().AskNewSubLayer();
        Settle();
    }
    std::size_t Count() { return Store().Layer(Store().FindLayDef("ROAD")).subLays.size(); }
};

TEST_F(NewSubLayer, SaysWhyItIsNotMade) {
    MakeLayer("ROAD", kLayPoint);
    AddFeature("ROAD", 5, {10.0}, {10.0});
    window->RefreshNow();
    window->Layers().Choose("ROAD");
    Ask(3, QString(254, 'a'), false);
    ASSERT_EQ(Count(), 1u);
    EXPECT_EQ(CDigMem::FindSubLay(Store().Layer(Store().FindLayDef("ROAD")), 3)->layerName.View(), std::string(254, 'a'));
    Ask(3, "again");
    EXPECT_TRUE(said.contains("of that number")) << said.toStdString();
    Ask(4, QString::fromUtf8("\u9127\U0001F5FA"));
    EXPECT_TRUE(said.contains("code page 932")) << said.toStdString();
    Ask(4, QString(128, QChar(0x3042)));
    EXPECT_TRUE(said.contains("254 bytes")) << said.toStdString();
    EXPECT_EQ(Count(), 1u);
}

TEST_F(NewSubLayer, ALayerThatHasNoRoomSaysSo) {
    for (int i = Store().LayerCnt(); i < kMaxLayers; ++i) {
        LayerDef layer;
        layer.code.Set("L" + std::to_string(i));
        layer.layType = kLayPoint;
        ASSERT_TRUE(Store().AppendReadLayer(std::move(layer)));
    }
    WhenAsked([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("code")->setText("MORE");
        dialog.accept();
    });
    WhenTold(QMessageBox::Ok);
    window->Layers().AskNewLayer();
    EXPECT_TRUE(said.contains("no room")) << said.toStdString();
    EXPECT_LT(Store().FindLayDef("MORE"), 0);
    EXPECT_FALSE(History().CanUndo());
}

}  // namespace
}  // namespace orvane
