// Long work that the operator cancels leaves map and disk as they were.
#include <QStatusBar>

#include "hosts/viewer/work_progress.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

constexpr int kLayers = 5;
constexpr int kRows = 20;
constexpr int kColumns = 50;

class CancelledWork : public Walk {
protected:
    CancelledWork() { WorkProgress::SetPatience(0); }
    ~CancelledWork() override { WorkProgress::SetPatience(700); }

    static QByteArray Code(int layer) { return "AREA" + QByteArray::number(layer); }
    /// Squares in rows that touch one another.
    void MakeMap() {
        for (int layer = 0; layer < kLayers; ++layer) {
            MakeLayer(Code(layer), kLayPolygon);
            for (int i = 0; i < kRows * kColumns; ++i) AddSquare(Code(layer), i + 1, i % kColumns * 10, i / kColumns * 10, 10);
        }
        Fit();
        window->History().NoteSaved();
    }
    /// Cancels whatever work shows until `work` is done.
    template <class Work>
    void WhileCancelling(Work work) {
        cancelled_ = 0;
        QTimer cancel;
        QObject::connect(&cancel, &QTimer::timeout, [this] {
            for (QWidget* top : QApplication::topLevelWidgets()) {
                auto* dialog = qobject_cast<QProgressDialog*>(top);
                if (dialog == nullptr || !dialog->isVisible() || dialog->wasCanceled()) continue;
                dialog->cancel();
                ++cancelled_;
            }
        });
        cancel.start(0);
        work();
        EXPECT_EQ(cancelled_, 1) << "the work shows, and stops when it is told to";
    }
    QStringList FilesThere() {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    int Features() {
        int count = 0;
        for (const DigIndex& entry : Store().Index()) count += Store().Block(entry.block).datCnt;
        return count;
    }
    void ExpectMapAsItWas() {
        EXPECT_EQ(Features(), kLayers * kRows * kColumns);
        EXPECT_EQ(Store().Index().size(), static_cast<std::size_t>(kLayers));
        EXPECT_EQ(window->History().Stack().count(), 0);
        EXPECT_FALSE(window->History().IsModified());
    }

private:
    int cancelled_ = 0;
};

TEST_F(CancelledWork, ASaveWritesNothingAndLeavesTheArchiveThatIsThere) {
    MakeMap();
    const QStringList before = FilesThere();
    WhileCancelling([this] {
        const SavedArchive saved = window->Files().Save(File("kept.Ovb"), "");
        EXPECT_FALSE(saved.saved);
        EXPECT_EQ(saved.error, "cancelled");
    });
    EXPECT_EQ(FilesThere(), before);

    ASSERT_TRUE(window->Files().Save(File("kept.Ovb"), "").saved);
    const QStringList archive = FilesThere();
    QFile file(File("kept.Ovb"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    file.close();
    AddSquare(Code(0), 9999, 0, 0, 10);
    WhileCancelling([this] { EXPECT_FALSE(window->Files().Save(File("kept.Ovb"), "").saved); });
    EXPECT_EQ(FilesThere(), archive);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
}

TEST_F(CancelledWork, AnExportWritesNothing) {
    MakeMap();
    const QStringList before = FilesThere();
    ExportOptions options;
    options.path = File("map.gpkg").toStdString();
    options.format = ExportFormat::GeoPackage;
    WhileCancelling([&] { EXPECT_EQ(window->Files().Export(options).fault, ExportFault::Cancelled); });
    EXPECT_EQ(FilesThere(), before);
    ExpectMapAsItWas();
}

TEST_F(CancelledWork, AnExchangeTextIsNotWritten) {
    MakeMap();
    const QStringList before = FilesThere();
    WhileCancelling([this] { EXPECT_FALSE(window->Files().WriteExchange(File("map.txt"), "1.01").isEmpty()); });
    EXPECT_EQ(FilesThere(), before);
    ExpectMapAsItWas();
}

TEST_F(CancelledWork, AnExchangeTextOfOneLargeBlockIsNotWrittenEither) {
    MakeLayer("TREE", kLayPoint);
    for (int id = 1; id <= 5000; ++id) {
        ASSERT_TRUE(Store().AddDigDat("TREE", 1, id, 0));
        ASSERT_TRUE(Store().AddDigDatPnt("TREE", 1, id, {id * 1.0, id * 2.0, 0}));
    }
    const QStringList before = FilesThere();
    WhileCancelling([this] { EXPECT_EQ(window->Files().WriteExchange(File("map.txt"), "1.01"), "cancelled"); });
    EXPECT_EQ(FilesThere(), before);
    EXPECT_EQ(window->Files().WriteExchange(File("map.txt"), "1.01"), "") << "nobody cancels";
}

TEST_F(CancelledWork, AnImportBringsNothing) {
    QFile file(File("points.geojson"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"type":"FeatureCollection","features":[)");
    for (int i = 0; i < 5000; ++i) {
        const QByteArray place =
            QByteArray::number(139.7 + i % 100 * 1e-4, 'f', 6) + ',' + QByteArray::number(35.6 + i / 100 * 1e-4, 'f', 6);
        if (i > 0) file.write(",");
        file.write(R"({"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[)" + place + "]}}");
    }
    file.write("]}");
    file.close();
    MakeMap();
    WhileCancelling([this] { EXPECT_EQ(window->Files().Import({File("points.geojson")}, {}).fault, ImportFault::Cancelled); });
    ExpectMapAsItWas();
    ASSERT_TRUE(window->Files().Import({File("points.geojson")}, {}).Ok()) << "it comes when nobody cancels";
    EXPECT_EQ(Features(), kLayers * kRows * kColumns + 5000);
}

TEST_F(CancelledWork, AnOverlayMakesNothing) {
    MakeMap();
    for (int id = 1; id <= 400; ++id) Map().Call("OrvSetActDat", {Code(0), 1, id});
    WhileCancelling([this] {
        const QString words = RunOverlay(Map(), window->History(), Overlay::Merge, Code(0).toStdString(), 1);
        EXPECT_TRUE(words.startsWith("Cancelled")) << words.toStdString();
    });
    ExpectMapAsItWas();
    EXPECT_EQ(SelectedCount(Store()), 400u) << "the selection stays, to try again";
}

/// Slanting bands beside one another: every stroke of one has to be compared with every stroke of the other.
std::vector<QPointF> Band(double left) {
    std::vector<QPointF> points;
    for (int i = 0; i < 1500; ++i) points.emplace_back(left + i * 0.2 + (i % 2 == 0 ? 0 : 2000), i % 2 == 0 ? 0 : 1000);
    return points;
}

class CancelledSelection : public CancelledWork {
protected:
    void AddBand(const char* code, int datID) {
        QVariantList x, y;
        for (const QPointF& point : Band(400)) {
            x << point.x();
            y << point.y();
        }
        AddFeature(code, datID, x, y);
    }
    void ExpectSelectionCancelled(std::size_t bands) {
        Fit();
        window->Relations().Relation().setCurrentIndex(1);  // is apart from
        window->Relations().Select(2, {{0, 0}, {100, 0}});
        ASSERT_EQ(SelectedCount(Store()), bands) << "a short line does not take long";
        WhileCancelling([&] { window->Relations().Select(2, Band(0)); });
        EXPECT_TRUE(window->statusBar()->currentMessage().startsWith("Cancelled")) << "says so";
        EXPECT_EQ(SelectedCount(Store()), 0u);
    }
};

TEST_F(CancelledSelection, ItSelectsNothingAndSaysSo) {
    for (int layer = 0; layer < 2 * kLayers; ++layer) {
        MakeLayer(Code(layer), kLayLine);
        AddBand(Code(layer), 1);
    }
    ExpectSelectionCancelled(2 * kLayers);
}

TEST_F(CancelledSelection, ItCanBeCancelledInsideOneBlock) {
    MakeLayer("ROAD", kLayLine);
    for (int id = 1; id <= 2 * kLayers; ++id) AddBand("ROAD", id);
    ExpectSelectionCancelled(2 * kLayers);
}

}  // namespace
}  // namespace orvane
