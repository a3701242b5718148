// An hour's work in one walk: open, import, edit fifty features of each type, undo all, redo all, save, reopen, compare.
#include <QComboBox>
#include <QFileInfo>
#include <cmath>

#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

constexpr int kFeatures = 50;

struct Block {
    BlockKey key;
    double GX = 0;
    double GY = 0;
    BlockBox bounds{};
    BlockBox rects{};  ///< what holds the rectangles of all features, in whole units
    std::string path;
};

/// What the map holds, as far as an archive keeps it: layers with their looks, blocks, and all features in the order of drawing.
struct Content {
    std::vector<std::pair<std::string, LayerState>> layers;  ///< sub layers behind their layer
    std::vector<std::pair<std::string, std::string>> names;
    std::vector<Block> blocks;
    std::vector<std::pair<ItemKey, ItemCopy>> features;
};

Content ContentOf(CDigMem& store) {
    Content content;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        const std::string code(layer.code.View());
        content.layers.emplace_back(code, StateOf(layer));
        content.names.emplace_back(code, std::string(layer.layerName.View()));
        for (const SubLayDef& sub : layer.subLays) {
            content.layers.emplace_back(code + '/' + std::to_string(sub.subLayNo), StateOf(sub));
            content.names.emplace_back(code + '/' + std::to_string(sub.subLayNo), std::string(sub.layerName.View()));
        }
    }
    for (const DigIndex& entry : store.Index()) {
        const DigBlock& block = store.Block(entry.block);
        const BlockKey key{std::string(block.code.View()), block.meshNo};
        content.blocks.push_back({key, block.GX, block.GY, {block.minX, block.minY, block.maxX, block.maxY}, {}, block.path});
        BlockBox& rects = content.blocks.back().rects;
        rects = {1e9, 1e9, -1e9, -1e9};
        for (const DigDat& dat : block.dats) {
            rects = {std::fmin(rects[0], dat.rect.left), std::fmin(rects[1], dat.rect.top), std::fmax(rects[2], dat.rect.right),
                     std::fmax(rects[3], dat.rect.bottom)};
            content.features.emplace_back(ItemKey{std::string(block.code.View()), block.meshNo, dat.datID}, CopyOf(dat));
        }
    }
    return content;
}

/// What an archive of the map brings: it keeps the rectangles of features, and a block that is read has the bounds of those.
Content AsRead(Content content) {
    for (Block& block : content.blocks) block.bounds = block.rects;
    return content;
}

void ExpectEqual(const Content& a, const Content& b, const char* when) {
    SCOPED_TRACE(when);
    EXPECT_TRUE(a.layers == b.layers);
    EXPECT_TRUE(a.names == b.names);
    ASSERT_EQ(a.blocks.size(), b.blocks.size());
    for (std::size_t i = 0; i < a.blocks.size(); ++i) {
        const Block& one = a.blocks[i];
        const Block& other = b.blocks[i];
        EXPECT_TRUE(one.key == other.key && one.GX == other.GX && one.GY == other.GY)
            << one.key.code << " beside " << other.key.code;
        EXPECT_EQ(one.bounds, other.bounds) << one.key.code;
        EXPECT_EQ(one.path, other.path) << one.key.code;
    }
    ASSERT_EQ(a.features.size(), b.features.size());
    int shown = 0;
    for (std::size_t i = 0; i < a.features.size() && shown < 5; ++i) {
        const bool same = a.features[i].first == b.features[i].first && a.features[i].second == b.features[i].second;
        EXPECT_TRUE(same) << a.features[i].first.code << ' ' << a.features[i].first.datID << " beside "
                          << b.features[i].first.code << ' ' << b.features[i].first.datID;
        shown += !same;
    }
}

/// The blocks from the one drawn first, and their features: what the map looks like, whatever keys its layers have.
void ExpectSameDrawing(const Content& a, const Content& b, const char* when) {
    SCOPED_TRACE(when);
    ASSERT_EQ(a.blocks.size(), b.blocks.size());
    for (std::size_t i = 0; i < a.blocks.size(); ++i) {
        EXPECT_TRUE(a.blocks[i].key == b.blocks[i].key) << a.blocks[i].key.code << " beside " << b.blocks[i].key.code;
    }
    EXPECT_TRUE(a.features == b.features);
}

class HourWalk : public Walk {
protected:
    struct Type {
        const char* code;
        int layType;
    };
    static constexpr Type kTypes[] = {{"TREE", kLayPoint},   {"ROAD", kLayLine}, {"AREA", kLayPolygon}, {"DISC", kLayCircle},
                                      {"OVAL", kLayEllipse}, {"NAME", kLayText}, {"GRID", kLayMesh}};

    /// Blocks lie at an origin of their own, which is no 0 and not the same for both axes.
    static constexpr QPointF kOrigin{-4200, 31500};

    /// The place of the n-th feature of a type: a field of squares of 100 m.
    static QPointF Cell(int type, int n) { return kOrigin + QPointF(n % 10 * 100.0, type * 600.0 + n / 10 * 100.0); }

    /// The map of the office, as an archive on the disk: layers with names and sub layers, blocks away from the origin.
    void MakeOffice() {
        int type = 0;
        for (const Type& t : kTypes) {
            const QString path = QStringLiteral("C:/map/%1.arc").arg(t.code);  // without one an archive keeps no origin
            ASSERT_TRUE(Map().Call("DigMemAlloc2", {t.code, 1, t.layType, path, 5, kOrigin.x(), kOrigin.y()}).toBool());
            Map().Call("OrvSetLayActMode", {t.code, true});
            Map().Call("OrvSetLayEditFlg", {t.code, true});
            Map().Call("OrvSetLayerName", {t.code, QString::fromUtf8("層%1").arg(type)});
            for (int sub = 1; sub <= 2; ++sub) {
                const QString name = QString::fromUtf8("枝%1-%2").arg(type).arg(sub);
                ASSERT_TRUE(
                    Map().Call("OrvSetSubLayerEx", {t.code, name, sub, true, 0, sub, 0, 0, 0x102030 * sub, 1, 1}).toBool());
            }
            for (int n = 0; n < kFeatures; ++n) AddOne(t, n + 1, Cell(type, n) - kOrigin);
            ++type;
        }
        Fit();
        ASSERT_TRUE(window->Files().Save(File("office.Ovb"), "").saved);
    }
    void AddOne(const Type& t, int id, QPointF at) {
        const double x = at.x();
        const double y = at.y();
        AddShape(t, id, x, y);
        EXPECT_TRUE(Map().Call("OrvSetDatSubLayer", {t.code, 1, id, id % 3}).toBool());
    }
    void AddShape(const Type& t, int id, double x, double y) {
        switch (t.layType) {
            case kLayPoint:
                AddFeature(t.code, id, {x + 50}, {y + 50}, {7.5});
                break;
            case kLayLine:
                AddFeature(t.code, id, {x + 10, x + 50, x + 90}, {y + 10, y + 60, y + 20}, {12.5, 13.0, id * 0.5});
                break;
            case kLayPolygon:
                AddSquare(t.code, id, x + 10, y + 10, 70);
                break;
            case kLayCircle:
                AddFeature(t.code, id, {x + 50}, {y + 50}, {30.0});
                break;
            case kLayEllipse:
                AddFeature(t.code, id, {x + 10, x + 80}, {y + 10, y + 60});
                break;
            case kLayText:
                AddFeature(t.code, id, {x + 50}, {y + 50});
                Map().Call("OrvSetDatString", {t.code, 1, id, x + 50, y + 50, QString("No. %1").arg(id)});
                break;
            default: {
                const QVariantList gx{x, x + 40, x, x + 40}, gy{y, y, y + 40, y + 40}, gz{1.0, 2.0, 3.0, 4.0};
                Map().Call("OrvAddMeshDat", {t.code, 1, id, 2, 2, gx, gy, gz});
            }
        }
    }
    /// Moves the n-th feature by the mouse, and every third way in another manner, so that all kinds of steps mix.
    void EditByMouse(int type, int n) {
        const QPointF at = Cell(type, n) + QPointF(50, 50);
        window->Map().Call("OrvMapJumpToXY", {at.x(), at.y()});
        const QPoint on = PointOf(at.x(), kTypes[type].layType == kLayLine ? at.y() + 10 : at.y());
        switch (n % 3) {
            case 0:
                Press(Qt::Key_M);
                Click(on);
                Click(on + QPoint(6, 4));
                break;
            case 1:
                Press(Qt::Key_C);
                Click(on);
                Click(on + QPoint(0, 12));
                break;
            default:
                Press(Qt::Key_K);
                Click(on);
        }
    }
    /// Texts and meshes are not met by clicks; they are edited in the form, or selected by their number and deleted.
    void EditByForm(int type, int n) {
        const ItemKey key{kTypes[type].code, 1, n + 1};
        if (n % 3 == 2) {
            Map().Call("OrvResetActiveAll");
            Map().Call("OrvSetActDat", {key.code.c_str(), 1, key.datID});
            Press(Qt::Key_Delete);
            return;
        }
        window->Feature().Show(key);
        window->Feature().TagField().setValue(n % 100 + 1);
        window->Feature().SubLayerField().setCurrentIndex(n % 3);
        if (kTypes[type].layType == kLayText) {
            window->Feature().TextField().setText(QString::fromUtf8("第%1号").arg(n));
            window->Feature().SizeField().setValue(8 + n % 12);
        }
        window->Feature().Apply();
    }
};

TEST_F(HourWalk, EndsWithEqualMaps) {
    MakeOffice();
    window->Files().New();
    WhenAskedForFile(File("office.Ovb"));
    Press(Qt::CTRL | Qt::Key_O);
    ASSERT_EQ(Store().LayerCnt(), 7);
    const Content opened = ContentOf(Store());
    WhenAskedForFile(Sample("tokyo.geojson"));
    WhenAsked([](QDialog& question) {  // the archive does not say its zone
        ASSERT_EQ(question.objectName(), "plane question");
        question.findChild<QComboBox*>("zone")->setCurrentIndex(9);
        question.accept();
    });
    Press(Qt::CTRL | Qt::Key_I);
    ASSERT_EQ(Store().LayerCnt(), 8);
    Map().SetZoom(2000);
    const Content imported = ContentOf(Store());

    for (int type = 0; type < 7; ++type) {
        const bool byMouse = kTypes[type].layType != kLayText && kTypes[type].layType != kLayMesh;
        for (int n = 0; n < kFeatures; ++n) {
            const int steps = window->History().Stack().index();
            byMouse ? EditByMouse(type, n) : EditByForm(type, n);
            EXPECT_EQ(window->History().Stack().index(), steps + 1) << kTypes[type].code << ' ' << n + 1;
        }
    }
    Settle();
    const Content edited = ContentOf(Store());
    ASSERT_EQ(window->History().Stack().count(), 1 + 7 * kFeatures) << "the import is a step too";

    for (int n = 0; n < 7 * kFeatures; ++n) Press(Qt::CTRL | Qt::Key_Z);
    ASSERT_EQ(window->History().Stack().index(), 1);
    ExpectEqual(ContentOf(Store()), imported, "all undone");
    Press(Qt::CTRL | Qt::Key_Z);
    ExpectSameDrawing(ContentOf(Store()), opened, "the import undone");
    for (int n = 0; n <= 7 * kFeatures; ++n) Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    ASSERT_FALSE(window->History().Stack().canRedo());
    ExpectEqual(ContentOf(Store()), edited, "all redone");
    Settle();

    EXPECT_EQ(window->Files().Losses(File("office.Ovb"), "").join('\n'), "");
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_FALSE(window->isWindowModified());
    Choose("New");
    EXPECT_EQ(Store().LayerCnt(), 0);
    WhenAskedForFile(File("office.Ovb"));
    Press(Qt::CTRL | Qt::Key_O);
    ExpectEqual(ContentOf(Store()), AsRead(edited), "opened again");
}

}  // namespace
}  // namespace orvane
