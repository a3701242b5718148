// Undo, redo and edits of much that the operator cancels leave map and history as they were.
#include <QPushButton>
#include <QStatusBar>

#include "hosts/viewer/block_copy.h"
#include "hosts/viewer/work_progress.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

constexpr int kLayers = 3;
constexpr int kFeatures = 3000;

class CancelledSteps : public Walk {
protected:
    CancelledSteps() {
        for (int layer = 0; layer < kLayers; ++layer) {
            MakeLayer(Code(layer), kLayPoint);
            Fill(layer, [](int id) { return id; });
        }
        Fit();
        window->History().NoteSaved();
        WorkProgress::SetPatience(0);
    }
    ~CancelledSteps() override { WorkProgress::SetPatience(700); }

    static QByteArray Code(int layer) { return "TREE" + QByteArray::number(layer); }
    template <class NumberOf>
    void Fill(int layer, NumberOf numberOf) {
        const std::string code = Code(layer).toStdString();
        for (int i = 1; i <= kFeatures; ++i) {
            ASSERT_TRUE(Store().AddDigDat(code, 1, 100 * kFeatures + i, 0));
            ASSERT_TRUE(Store().AddDigDatPnt(code, 1, 100 * kFeatures + i, {i * 1.0, i * 2.0, layer * 1.0}));
        }
        int i = 0;
        for (DigDat& dat : Store().MutableBlock(Store().FindBlock(code, 1).block).dats) dat.datID = numberOf(++i);
        Store().MutableBlock(Store().FindBlock(code, 1).block).datLookup.reset();
    }
    /// Cancels the work that tells these words until `work` is done.
    template <class Work>
    void WhileCancelling(const QString& words, Work work) {
        int cancelled = 0;
        QTimer cancel;
        QObject::connect(&cancel, &QTimer::timeout, [&] {
            for (QWidget* top : QApplication::topLevelWidgets()) {
                auto* dialog = qobject_cast<QProgressDialog*>(top);
                if (dialog == nullptr || !dialog->isVisible() || dialog->wasCanceled() || dialog->labelText() != words) continue;
                EXPECT_NE(dialog->findChild<QPushButton*>(), nullptr) << "there is a button to cancel it";
                dialog->cancel();
                ++cancelled;
            }
        });
        cancel.start(0);
        work();
        EXPECT_EQ(cancelled, 1) << "the work shows, and stops when it is told to";
    }
    static constexpr const char* kChanging = "Changing the map…";

    struct Row {
        std::string code;
        std::int32_t datID;
        double x, y, z;
        std::uint8_t active;
        friend bool operator==(const Row&, const Row&) = default;
    };
    struct Whole {
        std::vector<Row> rows;
        std::map<BlockKey, BlockBox> bounds;
        friend bool operator==(const Whole&, const Whole&) = default;
    };
    Whole Everything() {
        Whole whole;
        for (const DigIndex& entry : Store().Index()) {
            const DigBlock& block = Store().Block(entry.block);
            for (const DigDat& dat : block.dats) {
                const DigPnt pnt = dat.pnts[0];
                whole.rows.push_back({std::string(block.code.View()), dat.datID, pnt.x, pnt.y, pnt.z, dat.active});
            }
        }
        whole.bounds = BoundsOf(Store(), BlockKeys(Store()));
        return whole;
    }
    void Select(const std::function<bool(int layer, int place)>& which) {
        for (int layer = 0; layer < kLayers; ++layer) {
            const std::int32_t pos = Store().FindBlock(Code(layer).toStdString(), 1).block;
            if (pos < 0) continue;
            int place = 0;
            for (DigDat& dat : Store().MutableBlock(pos).dats) dat.active = which(layer, ++place) ? 1 : 0;
        }
    }
    void ExpectCancelled(const Whole& before, int index, int count) {
        EXPECT_TRUE(Everything() == before) << "features, selection and bounds are as they were";
        EXPECT_EQ(window->History().Stack().index(), index);
        EXPECT_EQ(window->History().Stack().count(), count);
        EXPECT_TRUE(window->statusBar()->currentMessage().startsWith("Cancelled")) << "says so";
    }
};

TEST_F(CancelledSteps, ADeletionIsTakenBackAndWhatCanBeRedoneStays) {
    Map().Call("OrvSetActDat", {Code(0), 1, 5});
    window->DeleteSelection();
    window->History().Undo();
    Select([](int, int place) { return place % 2 == 0; });
    const Whole before = Everything();
    WhileCancelling(kChanging, [this] { window->DeleteSelection(); });
    ExpectCancelled(before, 0, 1);
    EXPECT_FALSE(window->History().IsModified());
    window->History().Redo();
    EXPECT_EQ(Everything().rows.size(), before.rows.size() - 1);
}

TEST_F(CancelledSteps, AnUndoAndARedoOfADeletionAreTakenBack) {
    const Whole whole = Everything();
    Select([](int layer, int place) { return layer > 0 && place % 3 != 0; });
    window->DeleteSelection();
    ASSERT_EQ(window->History().Stack().count(), 1);
    Select([](int layer, int place) { return layer == 0 && place == 7; });
    Whole before = Everything();
    ASSERT_EQ(before.rows.size(), whole.rows.size() - 2 * (kLayers - 1) * kFeatures / 3);
    WhileCancelling(kChanging, [this] { window->History().Undo(); });
    ExpectCancelled(before, 1, 1);

    window->History().Undo();
    Select([](int, int) { return false; });
    EXPECT_TRUE(Everything() == whole) << "nobody cancels";
    WhileCancelling(kChanging, [this] { window->History().Redo(); });
    ExpectCancelled(whole, 0, 1);
    window->History().Redo();
    EXPECT_EQ(Everything().rows.size(), before.rows.size());
}

TEST_F(CancelledSteps, AnUndoAmongFeaturesThatShareTheirNumbersIsTakenBack) {
    Fill(0, [](int i) { return i; });  // each number twice
    const Whole whole = Everything();
    Select([](int layer, int place) { return layer == 0 && place % 2 == 0; });
    window->DeleteSelection();
    Select([](int, int) { return false; });
    const Whole before = Everything();
    WhileCancelling(kChanging, [this] { window->History().Undo(); });
    ExpectCancelled(before, 1, 1);
    window->History().Undo();
    Select([](int, int) { return false; });
    EXPECT_TRUE(Everything() == whole);
}

TEST_F(CancelledSteps, TheRemovalOfALayerIsTakenBackAndSoIsItsReturn) {
    const Whole whole = Everything();
    WhileCancelling(kChanging, [this] { window->History().RemoveLayer("removing", Code(1).toStdString()); });
    ExpectCancelled(whole, 0, 0);
    ASSERT_TRUE(window->History().RemoveLayer("removing", Code(1).toStdString()));
    const Whole before = Everything();
    ASSERT_EQ(before.rows.size(), whole.rows.size() - kFeatures);
    WhileCancelling(kChanging, [this] { window->History().Undo(); });
    ExpectCancelled(before, 1, 1);
    window->History().Undo();
    EXPECT_TRUE(Everything() == whole);
}

TEST_F(CancelledSteps, AnImportOfManyPartsGoesAndComesAsAWhole) {
    // A layer that the map has not, and features for one that it has.
    ASSERT_TRUE(window->Files().Save(File("all.Ovb"), "").saved);
    window->Files().New();
    WorkProgress::SetPatience(700);
    MakeLayer(Code(0), kLayPoint);
    AddFeature(Code(0), 1, {-50.0}, {-70.0});
    Fit();
    WorkProgress::SetPatience(0);
    const Whole without = Everything();
    ASSERT_TRUE(window->Files().Import({File("all.Ovb")}, {}).Ok());
    ASSERT_EQ(window->History().Stack().count(), 1);
    const Whole with = Everything();
    ASSERT_EQ(with.rows.size(), 1u + kLayers * kFeatures);
    WhileCancelling(kChanging, [this] { window->History().Undo(); });
    ExpectCancelled(with, 1, 1);
    window->History().Undo();
    Select([](int, int) { return false; });
    EXPECT_TRUE(Everything() == without);
    WhileCancelling(kChanging, [this] { window->History().Redo(); });
    ExpectCancelled(without, 0, 1);
    window->History().Redo();
    Select([](int, int) { return false; });
    EXPECT_TRUE(Everything() == with);
}

TEST_F(CancelledSteps, AChangeOfAFewFeaturesAsksNobody) {
    Select([](int layer, int place) { return layer == 1 && place < 20; });
    window->DeleteSelection();
    window->History().Undo();
    EXPECT_EQ(Everything().rows.size(), std::size_t{kLayers} * kFeatures);
}

}  // namespace
}  // namespace orvane
