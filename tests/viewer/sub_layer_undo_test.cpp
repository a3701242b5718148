// Sub layers come and go with the steps that made them.
#include <QComboBox>
#include <QSpinBox>
#include <QTreeWidget>

#include "hosts/viewer/feature_panel.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class SubLayerUndo : public Walk {
protected:
    SubLayerUndo() {
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 1, {0.0, 50.0}, {0.0, 50.0});
        Fit();
        window->Layers().Choose("ROAD");
    }
    ~SubLayerUndo() override { window->Files().New(); }

    void MakeByKey(int number, const QString& name) {
        window->Layers().Choose("ROAD");
        WhenAsked([=](QDialog& dialog) {
            dialog.findChild<QSpinBox*>()->setValue(number);
            dialog.findChild<QLineEdit*>("name")->setText(name);
            dialog.accept();
        });
        Press(Qt::CTRL | Qt::SHIFT | Qt::Key_L);
    }
    void Undo() { Press(Qt::CTRL | Qt::Key_Z); }
    void Redo() { Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z); }
    const LayerDef& Road() { return Store().Layer(Store().FindLayDef("ROAD")); }
    /// Numbers and names.
    QStringList InStore() {
        QStringList subs;
        for (const SubLayDef& sub : Road().subLays) {
            subs << QStringLiteral("%1  %2").arg(sub.subLayNo).arg(QString::fromStdString(std::string(sub.layerName.View())));
        }
        return subs;
    }
    QStringList InList() {
        QStringList subs;
        const QTreeWidgetItem* item = window->Layers().List().topLevelItem(0);
        for (int i = 0; i < item->childCount(); ++i) subs << item->child(i)->text(0);
        return subs;
    }
    QStringList InForm() {
        window->Feature().Show(ItemKey{"ROAD", 1, 1});
        QStringList subs;
        for (int i = 1; i < window->Feature().SubLayerField().count(); ++i) subs << window->Feature().SubLayerField().itemText(i);
        return subs;
    }
    bool InLosses() { return window->Files().Losses(File("map.Ovb"), "").join(' ').contains("sub layers"); }
    bool InText(const char* name) {
        EXPECT_EQ(window->Files().WriteExchange(File("map.txt"), "1.01"), "");
        QFile text(File("map.txt"));
        EXPECT_TRUE(text.open(QIODevice::ReadOnly));
        return text.readAll().contains(name);
    }
};

TEST_F(SubLayerUndo, OneThatIsTakenBackIsInNoListFormOrFile) {
    MakeByKey(3, "lanes");
    ASSERT_EQ(InStore(), QStringList{"3  lanes"});
    EXPECT_EQ(InList(), InStore());
    EXPECT_EQ(InForm(), InStore());
    EXPECT_TRUE(InLosses()) << "an archive keeps none";
    EXPECT_TRUE(InText("lanes"));
    Undo();
    EXPECT_EQ(InStore(), QStringList());
    EXPECT_EQ(InList(), QStringList());
    EXPECT_EQ(InForm(), QStringList());
    EXPECT_FALSE(InLosses());
    EXPECT_FALSE(InText("lanes"));
}

TEST_F(SubLayerUndo, RedoBringsItBackAsItWas) {
    MakeByKey(3, "lanes");
    const LayerState made = StateOf(Road().subLays[0]);
    Undo();
    Redo();
    ASSERT_EQ(InStore(), QStringList{"3  lanes"});
    EXPECT_TRUE(StateOf(Road().subLays[0]) == made);
    EXPECT_EQ(InList(), InStore());
}

TEST_F(SubLayerUndo, ALookThatItWasGivenComesBackAfterIt) {
    MakeByKey(3, "lanes");
    LayerChange look = Unchanged(Road(), 3);
    look.after.lineSize = 9;
    window->History().ChangeLayers("look", {look});
    Undo();
    Undo();
    ASSERT_EQ(InStore(), QStringList());
    Redo();
    EXPECT_EQ(Road().subLays[0].lineSize, look.before.lineSize);
    Redo();
    EXPECT_EQ(Road().subLays[0].lineSize, 9);
}

TEST_F(SubLayerUndo, ItsNumberIsFreeForTheNextOne) {
    MakeByKey(1, "first");
    MakeByKey(2, "second");
    Undo();
    MakeByKey(2, "another");
    EXPECT_EQ(InStore(), (QStringList{"1  first", "2  another"}));
    Undo();
    Undo();
    EXPECT_EQ(InStore(), QStringList());
    Redo();
    Redo();
    EXPECT_EQ(InStore(), (QStringList{"1  first", "2  another"}));
}

TEST_F(SubLayerUndo, TheMapIsAsItWasSavedAgain) {
    ASSERT_TRUE(window->Files().Save(File("map.Ovb"), "").saved);
    MakeByKey(1, "first");
    EXPECT_TRUE(window->isWindowModified());
    Undo();
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(SubLayerUndo, AChoiceOfItThatWaitsInTheFormGoesWithIt) {
    MakeByKey(3, "lanes");
    Map().Call("OrvSetActDat", {"ROAD", 1, 1});
    window->RefreshNow();
    QComboBox& choice = window->Feature().SubLayerField();
    choice.setCurrentIndex(choice.findData(3));
    ASSERT_EQ(choice.currentData().toInt(), 3);
    Undo();
    EXPECT_EQ(choice.findData(3), -1);
    window->Feature().Apply();
    EXPECT_EQ(BlockOf("ROAD").dats[0].subLayNo, 0);
}

TEST_F(SubLayerUndo, SomethingElseInItsPlaceStaysAndTheStepWaits) {
    MakeByKey(3, "lanes");
    Undo();
    Map().Call("OrvSetSubLayerEx", {"ROAD", "other", 3, true, 0, 1, 0, 0, 0, 1, 1});
    Redo();
    EXPECT_EQ(InStore(), QStringList{"3  other"});
    EXPECT_TRUE(window->History().CanRedo());
    ASSERT_TRUE(Store().RemoveSubLayer("ROAD", 3));
    Redo();
    EXPECT_EQ(InStore(), QStringList{"3  lanes"});
}

TEST_F(SubLayerUndo, AnImportThatIsTakenBackTakesThoseThatItBroughtToALayerOfTheMap) {
    MakeByKey(1, "mine");
    ASSERT_TRUE(Map().Call("OrvAddLayer", {"ROAD", 2, kLayLine, 5}).toBool());
    const QVariantList x{0.0, 9.0};
    ASSERT_TRUE(Map().Call("OrvAddDatEx", {"ROAD", 2, 1, 0, x, x, x}).toBool());
    MakeByKey(2, "theirs");
    Map().Call("OrvDelLayGrpDat", {"ROAD", 1});
    ASSERT_EQ(window->Files().WriteExchange(File("other.txt"), "1.01"), "");
    window->Files().New();
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {0.0, 50.0}, {0.0, 50.0});
    window->RefreshNow();
    MakeByKey(1, "mine");
    ASSERT_TRUE(window->Files().Import({File("other.txt")}, {}).Ok());
    ASSERT_EQ(InStore(), (QStringList{"1  mine", "2  theirs"}));
    const int steps = window->History().Stack().count();
    Undo();
    EXPECT_EQ(InStore(), QStringList{"1  mine"});
    Redo();
    EXPECT_EQ(InStore(), (QStringList{"1  mine", "2  theirs"}));
    EXPECT_EQ(window->History().Stack().count(), steps);
}

TEST_F(SubLayerUndo, ALayerThatIsRemovedTakesItsOwnWithIt) {
    MakeByKey(1, "first");
    MakeByKey(2, "second");
    Choose("Remove the layer");
    EXPECT_EQ(Road().subLayCnt, 0);
    ASSERT_TRUE(window->Layers().MakeLayer("ROAD", kLayPoint, 1));
    EXPECT_EQ(InStore(), QStringList());
    Undo();
    Undo();
    EXPECT_EQ(InStore(), (QStringList{"1  first", "2  second"})) << "though they look like the layer itself";
    EXPECT_EQ(InList(), InStore());
}

TEST_F(SubLayerUndo, OfARemovedLayerThoseThatShareTheirNumberStay) {
    MakeByKey(1, "first");
    MakeByKey(2, "second");
    MakeByKey(3, "third");
    Store().MutableLayer(Store().FindLayDef("ROAD")).subLays[2].subLayNo = 2;
    Choose("Remove the layer");
    EXPECT_EQ(InStore(), (QStringList{"2  second", "2  third"}));
    Undo();
    EXPECT_EQ(Road().subLayCnt, 3);
}

class SubLayerRemoval : public SubLayerUndo {
protected:
    void ChooseRow(int nth) {
        QTreeWidget& list = window->Layers().List();
        list.setCurrentItem(list.topLevelItem(0)->child(nth));
        Settle();
    }
};

TEST_F(SubLayerRemoval, TheRowOfASubLayerRemovesItAloneAndUndoBringsItBackToItsPlace) {
    for (int i = 1; i <= 3; ++i) MakeByKey(i, QStringLiteral("sub%1").arg(i));
    LayerChange look = Unchanged(Road(), 2);
    look.after.lineSize = 9;
    window->History().ChangeLayers("look", {look});
    Settle();
    const std::vector<LayerChange> before = LooksOf(Store(), {"ROAD"});
    const QStringList all = InStore();
    ChooseRow(1);
    Choose("Remove the layer");
    EXPECT_EQ(InStore(), (QStringList{"1  sub1", "3  sub3"}));
    EXPECT_EQ(InList(), InStore());
    EXPECT_EQ(window->Layers().ChosenCode(), "ROAD");
    EXPECT_EQ(BlockOf("ROAD").datCnt, 1) << "the layer and its data stay";
    Undo();
    EXPECT_EQ(InStore(), all);
    EXPECT_EQ(InList(), all);
    const std::vector<LayerChange> after = LooksOf(Store(), {"ROAD"});
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) EXPECT_TRUE(after[i].before == before[i].before) << i;
    Redo();
    EXPECT_EQ(InStore(), (QStringList{"1  sub1", "3  sub3"}));
}

TEST_F(SubLayerRemoval, OneThatAFeatureHasStaysAndThatIsSaid) {
    MakeByKey(3, "lanes");
    ASSERT_TRUE(Map().Call("OrvSetDatSubLayer", {"ROAD", 1, 1, 3}).toBool());
    const int steps = window->History().Stack().count();
    ChooseRow(0);
    WhenTold(QMessageBox::Ok);
    Choose("Remove the layer");
    EXPECT_TRUE(said.contains("1 feature") && said.contains("form")) << said.toStdString();
    EXPECT_EQ(InStore(), QStringList{"3  lanes"});
    EXPECT_EQ(BlockOf("ROAD").datCnt, 1);
    EXPECT_EQ(window->History().Stack().count(), steps);
}

TEST_F(SubLayerRemoval, SuchAsShareTheirNumberStay) {
    MakeByKey(1, "one");
    MakeByKey(2, "two");
    Store().MutableLayer(Store().FindLayDef("ROAD")).subLays[1].subLayNo = 1;  // as a file may have it
    window->RefreshNow();
    ChooseRow(0);
    WhenTold(QMessageBox::Ok);
    Choose("Remove the layer");
    EXPECT_TRUE(said.contains("share a number")) << said.toStdString();
    EXPECT_EQ(Road().subLayCnt, 2);
}

}  // namespace
}  // namespace orvane
