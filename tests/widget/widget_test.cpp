#include <gtest/gtest.h>

#include <QApplication>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QPointer>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "control/automation/table.h"
#include "control/ctrl.h"
#include "hosts/qt/orvane_widget.h"

namespace orvane {
namespace {

constexpr int kLayPolygonType = 3;

/// The type that a value of the surface has in Qt.
const char* QtTypeOf(const ValueType& type) {
    if (type.name == "OLE_COLOR") return "uint";
    switch (type.kind) {
        case ValueKind::Bool:
            return "bool";
        case ValueKind::I2:
            return "short";
        case ValueKind::I4:
            return "int";
        case ValueKind::R8:
            return "double";
        case ValueKind::Bstr:
            return "QString";
        default:
            return "";
    }
}

class WidgetTest : public ::testing::Test {
protected:
    WidgetTest() { MakeMap(); }
    /// A map on the screen, painted: a window system shows a window some time after it was told to.
    void MakeMap() {
        map = std::make_unique<OrvaneWidget>();
        map->resize(400, 300);
        map->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(map.get(), 30000));
        QApplication::processEvents();
        map->Call("OrvInit");
        map->PaintNow();
    }

    /// A polygon over the middle of the window, one pixel a map unit or so.
    void ShowSquare() {
        ASSERT_TRUE(map->Call("OrvAddLayer", {"AREA", 1, kLayPolygonType, 0}).toBool());
        const QVariantList x{0.0, 1000.0, 1000.0, 0.0, 0.0};
        const QVariantList y{0.0, 0.0, 1000.0, 1000.0, 0.0};
        const QVariantList z{0.0, 0.0, 0.0, 0.0, 0.0};
        ASSERT_TRUE(map->Call("OrvAddDatEx", {"AREA", 1, 7, 0, x, y, z}).toBool());
        map->Call("OrvDspFit2", {20});
        map->Call("OrvReDraw");
    }
    QPoint Middle() const { return {map->width() / 2, map->height() / 2}; }
    void Click(Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(map.get(), button, modifiers, Middle());
    }
    /// A move that comes at once: on a real screen the mouse itself moves later, and no test can say when.
    void MoveTo(QPoint at) {
        QMouseEvent event(QEvent::MouseMove, QPointF(at), map->mapToGlobal(QPointF(at)), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(map.get(), &event);
    }
    void Wheel(int eighths) {
        const QPointF at = Middle();
        QWheelEvent event(at, map->mapToGlobal(at), {}, {0, eighths}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(map.get(), &event);
    }

    std::unique_ptr<OrvaneWidget> map;
};

TEST_F(WidgetTest, EveryPropertyOfTheSurfaceIsAPropertyOfTheWidget) {
    const QMetaObject& meta = OrvaneWidget::staticMetaObject;
    EXPECT_EQ(meta.propertyCount() - meta.propertyOffset(), static_cast<int>(Surface().Properties().size()));
    for (const Member& member : Surface().Properties()) {
        const int at = meta.indexOfProperty(member.name.c_str());
        ASSERT_GE(at, meta.propertyOffset()) << member.name;
        const QMetaProperty property = meta.property(at);
        EXPECT_EQ(property.isWritable(), !member.readOnly) << member.name;
        const std::string expected = member.result.kind == ValueKind::I2 ? "int" : QtTypeOf(member.result);
        EXPECT_EQ(property.typeName(), expected) << member.name;
        EXPECT_EQ(property.read(map.get()), map->Call(QString::fromStdString(member.name))) << member.name;
    }
}

TEST_F(WidgetTest, EveryEventOfTheSurfaceIsASignalWithItsArguments) {
    const QMetaObject& meta = OrvaneWidget::staticMetaObject;
    int signalCnt = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        signalCnt += meta.method(i).methodType() == QMetaMethod::Signal;
    }
    EXPECT_EQ(signalCnt, static_cast<int>(Surface().Events().size()));
    for (const Member& member : Surface().Events()) {
        QByteArrayList types;
        QByteArrayList names;
        for (const Arg& arg : member.args) {
            types << QtTypeOf(arg.type);
            names << QByteArray::fromStdString(arg.name);
        }
        const QByteArray signature = QByteArray::fromStdString(member.name) + '(' + types.join(',') + ')';
        const int at = meta.indexOfSignal(signature);
        ASSERT_GE(at, 0) << signature.constData();
        EXPECT_EQ(meta.method(at).parameterNames(), names) << signature.constData();
    }
}

TEST_F(WidgetTest, PropertiesAreWrittenAndReadBack) {
    EXPECT_TRUE(map->setProperty("ActiveColor", 0x80C0FFu));
    EXPECT_EQ(map->ActiveColor(), 0x80C0FFu);
    map->SetRotate(12.5);
    EXPECT_EQ(map->property("Rotate").toDouble(), 12.5);
    map->SetLineTagMode(false);
    EXPECT_FALSE(map->LineTagMode());
    map->SetRunMode(10);
    EXPECT_EQ(map->Control().runMode, 10);
}

TEST_F(WidgetTest, AWriteOfTheZoomTellsTheHost) {
    const QSignalSpy spy(map.get(), &OrvaneWidget::OnZoomChange);
    map->SetZoom(2500);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][0].toInt(), 2500);
}

TEST_F(WidgetTest, AMethodAnswersItsResultAndBehindItItsOutputs) {
    ShowSquare();
    EXPECT_EQ(map->Call("OrvGetLayDatCnt", {"AREA", 1}).toInt(), 1);
    QString error;
    const QVariantList points = map->Call("OrvGetDatPnt", {"AREA", 1, 7}, &error).toList();
    ASSERT_EQ(points.size(), 3) << error.toStdString();
    EXPECT_TRUE(points[0].toBool());
    EXPECT_EQ(points[1].toList(), (QVariantList{0.0, 1000.0, 1000.0, 0.0, 0.0}));
    EXPECT_EQ(points[2].toList(), (QVariantList{0.0, 0.0, 1000.0, 1000.0, 0.0}));
}

TEST_F(WidgetTest, ACallThatIsNotAsDeclaredDoesNothingAndSaysWhy) {
    QString error;
    EXPECT_FALSE(map->Call("NoSuchMember", {}, &error).isValid());
    EXPECT_TRUE(error.contains("NoSuchMember"));
    EXPECT_FALSE(map->Call("OrvAddLayer", {"A"}, &error).isValid());
    EXPECT_TRUE(error.contains("takes 4 values, 1 were given")) << error.toStdString();
    EXPECT_FALSE(map->Call("OrvAddLayer", {QString(QChar(0x0E01)), 1, 1, 0}, &error).isValid());
    EXPECT_TRUE(error.contains("code")) << "a Thai letter is not in the code page: " << error.toStdString();
    EXPECT_FALSE(map->Call("OrvAddLayer", {"A", "no number", 1, 0}, &error).isValid());
    EXPECT_TRUE(error.contains("grpNo")) << error.toStdString();
    EXPECT_FALSE(map->Call("GetDC", {5}, &error).isValid());
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(map->Control().store.LayerCnt(), 0);
}

TEST_F(WidgetTest, JapaneseTextComesBackAsItWentIn) {
    const QString code = QString::fromUtf8("東京都");
    ASSERT_TRUE(map->Call("OrvAddLayer", {code, 1, 1, 0}).toBool());
    ASSERT_TRUE(map->Call("OrvAddDatEx", {code, 1, 7, 0, QVariantList{0.0}, QVariantList{0.0}, QVariantList{0.0}}).toBool());
    ASSERT_TRUE(map->Call("OrvSetActDat", {code, 1, 7}).toBool());
    map->Call("OrvReDraw");
    const QVariantList active = map->Call("OrvGetActDat").toList();
    ASSERT_EQ(active.size(), 4);
    EXPECT_EQ(active[1].toList(), QVariantList{code});
}

TEST_F(WidgetTest, AClickOnAnAreaSelectsItAndTellsInOrder) {
    ShowSquare();
    QStringList order;
    QObject::connect(map.get(), &OrvaneWidget::MouseDown, [&] { order << "MouseDown"; });
    QObject::connect(map.get(), &OrvaneWidget::MouseUp, [&] { order << "MouseUp"; });
    QObject::connect(map.get(), &OrvaneWidget::OnDataClick, [&](int datNo, const QString& code, int meshNo, int x, int y) {
        order << QString("OnDataClick %1 %2 %3 %4 %5").arg(datNo).arg(code).arg(meshNo).arg(x).arg(y);
    });
    Click(Qt::LeftButton);
    EXPECT_EQ(order, (QStringList{"MouseDown", "OnDataClick 7 AREA 1 200 150", "MouseUp"}));
    EXPECT_EQ(map->Call("OrvGetActDatCnt").toInt(), 1);
    Click(Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(map->Call("OrvGetActDatCnt").toInt(), 0) << "Ctrl takes it out again";
}

TEST_F(WidgetTest, ADragSelectsWhatLiesInTheRectangle) {
    ShowSquare();
    QTest::mousePress(map.get(), Qt::LeftButton, {}, {2, 2});
    QTest::mouseMove(map.get(), {200, 150});
    QTest::mouseMove(map.get(), {397, 297});
    QTest::mouseRelease(map.get(), Qt::LeftButton, {}, {397, 297});
    EXPECT_EQ(map->Call("OrvGetActDatCnt").toInt(), 1);
}

TEST_F(WidgetTest, AMoveWithoutAButtonTellsWhereTheMouseIs) {
    const QSignalSpy spy(map.get(), &OrvaneWidget::MouseMove);
    QTest::mouseMove(map.get(), {31, 41});
    ASSERT_FALSE(spy.isEmpty());
    EXPECT_EQ(spy.last(), (QVariantList{QVariant::fromValue<short>(0), QVariant::fromValue<short>(0), 31, 41}));
}

TEST_F(WidgetTest, ADoubleClickTellsAfterTheClick) {
    ShowSquare();
    QStringList order;
    QObject::connect(map.get(), &OrvaneWidget::OnDataClick, [&] { order << "click"; });
    QObject::connect(map.get(), &OrvaneWidget::OnDataDblClick, [&](int datNo) { order << QString("double %1").arg(datNo); });
    Click(Qt::LeftButton);
    QTest::mouseDClick(map.get(), Qt::LeftButton, {}, Middle());
    QTest::mouseRelease(map.get(), Qt::LeftButton, {}, Middle());
    EXPECT_EQ(order, (QStringList{"click", "double 7"}));
}

TEST_F(WidgetTest, TheWheelZoomsByOneStepForANotchHoweverItIsCutUp) {
    ShowSquare();
    map->SetZoom(10000);
    Wheel(-120);
    const int oneStep = map->Zoom();
    EXPECT_NE(oneStep, 10000);
    map->SetZoom(10000);
    for (int i = 0; i < 4; ++i) Wheel(-30);
    EXPECT_EQ(map->Zoom(), oneStep);
    Wheel(60);
    EXPECT_EQ(map->Zoom(), oneStep) << "half a notch the other way is no step";
    map->SetZoom(10000);
    for (int i = 0; i < 2; ++i) {
        Wheel(-60);
        Wheel(0);
    }
    EXPECT_EQ(map->Zoom(), oneStep) << "steps to the side take nothing away";
}

TEST_F(WidgetTest, EscapeCancelsAToolAndIsLeftToTheFormOtherwise) {
    ShowSquare();
    map->Call("OrvSetLayEditFlg", {"AREA", true});
    ASSERT_EQ(map->Call("OrvDatEditor", {"AREA", 1, 7, 200}).toInt(), 0);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(map.get(), &escape);
    EXPECT_EQ(map->RunMode(), 0);
    EXPECT_TRUE(escape.isAccepted());
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(map.get(), &again);
    EXPECT_FALSE(again.isAccepted());
}

TEST_F(WidgetTest, TheCrossOverAVertexGoesWithTheTool) {
    ShowSquare();
    ASSERT_EQ(map->Call("OrvDatEditor", {"AREA", 1, 7, 200}).toInt(), 0);
    // The vertex at (0, 0), where the map shows it now.
    const double left = map->Call("OrvGetScreenPosX", {0}).toDouble();
    const double perPixel = map->Call("OrvGetScreenPosX", {1}).toDouble() - left;
    const double top = map->Call("OrvGetScreenPosY", {0}).toDouble();
    const QPoint vertex(qRound(-left / perPixel), qRound(top / perPixel));
    MoveTo(vertex);
    ASSERT_EQ(map->cursor().shape(), Qt::CrossCursor);
    QTest::keyClick(map.get(), Qt::Key_Escape);
    MoveTo(vertex + QPoint(30, 30));
    EXPECT_EQ(map->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(WidgetTest, TheDeleteKeyDeletesTheFeatureInThePointMoveTool) {
    ShowSquare();
    ASSERT_EQ(map->Call("OrvDatEditor", {"AREA", 1, 7, 200}).toInt(), 0);
    const QSignalSpy ends(map.get(), &OrvaneWidget::OnEditorEnd);
    QTest::keyClick(map.get(), Qt::Key_Delete);
    ASSERT_EQ(ends.count(), 1);
    EXPECT_EQ(ends[0], (QVariantList{"AREA", 1, 7, 0, 300}));
    EXPECT_EQ(map->Call("OrvGetLayDatCnt", {"AREA", 1}).toInt(), 0);
}

TEST_F(WidgetTest, APanMovesTheMapByTheTimerOfTheWindow) {
    ShowSquare();
    map->SetRunMode(10);
    const double before = map->Call("OrvGetScreenPosX", {0}).toDouble();
    QTest::mousePress(map.get(), Qt::LeftButton, {}, Middle());
    EXPECT_EQ(map->cursor().shape(), Qt::ClosedHandCursor);
    QCursor::setPos(map->mapToGlobal(Middle() + QPoint(40, 0)));
    const auto moved = [&] { return map->Call("OrvGetScreenPosX", {0}).toDouble() != before; };
    EXPECT_TRUE(QTest::qWaitFor(moved, 30000));
    QTest::mouseRelease(map.get(), Qt::LeftButton, {}, Middle() + QPoint(40, 0));
    EXPECT_EQ(map->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(WidgetTest, ARestOverAFeatureGivesTheHint) {
    ShowSquare();
    QSignalSpy hints(map.get(), &OrvaneWidget::OnHintStart);
    QCursor::setPos(map->mapToGlobal(Middle()));
    QTest::mouseMove(map.get(), Middle());
    ASSERT_TRUE(hints.wait(30000));
    EXPECT_EQ(hints[0][0].toInt(), 7);
    EXPECT_EQ(hints[0][3].toInt(), map->mapToGlobal(Middle()).x());
    EXPECT_EQ(hints[0][4].toInt(), map->mapToGlobal(Middle()).y());
}

TEST_F(WidgetTest, ASlotMayDeleteTheWidgetInAnyEvent) {
    const auto deleteAt = [this](auto signal, auto work) {
        ShowSquare();
        const QPointer<OrvaneWidget> watched(map.get());
        QObject::connect(map.get(), signal, [this] { map.reset(); });
        work();
        EXPECT_TRUE(watched.isNull());
        MakeMap();
    };
    deleteAt(&OrvaneWidget::OnZoomChange, [this] { map->SetZoom(77); });
    deleteAt(&OrvaneWidget::OnZoomChange, [this] { Wheel(-240); });
    deleteAt(&OrvaneWidget::MouseDown, [this] { QTest::mousePress(map.get(), Qt::LeftButton, {}, Middle()); });
    deleteAt(&OrvaneWidget::OnDataClick, [this] {
        QTest::mousePress(map.get(), Qt::LeftButton, {}, Middle());
        QTest::mouseRelease(map.get(), Qt::LeftButton, {}, Middle());
    });
    deleteAt(&OrvaneWidget::MouseMove, [this] { QTest::mouseMove(map.get(), {5, 6}); });
    deleteAt(&OrvaneWidget::OnEditorEnd, [this] {
        map->Call("OrvDatEditor", {"AREA", 1, 7, 200});
        QTest::keyClick(map.get(), Qt::Key_Escape);
    });
}

TEST_F(WidgetTest, AMessageBoxMayLoseItsWidgetWhileItWaits) {
    ShowSquare();
    map->SetDebugMode(true);
    QTest::mouseClick(map.get(), Qt::LeftButton, {}, Middle());
    QTimer::singleShot(0, [this] { map.reset(); });
    OrvaneWidget* const raw = map.get();
    QMouseEvent press(QEvent::MouseButtonDblClick, QPointF(Middle()), raw->mapToGlobal(QPointF(Middle())), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(raw, &press);
    EXPECT_EQ(map, nullptr);
}

TEST_F(WidgetTest, TheMapGrowsWithTheWidget) {
    ShowSquare();
    map->resize(500, 360);
    QApplication::processEvents();
    EXPECT_EQ(map->Picture().size(), QSize(500, 360));
    EXPECT_EQ(map->grab().toImage().convertToFormat(map->Picture().format()), map->Picture());
}

// Run by the next test in a process of its own, on a screen of two pixels a unit.
TEST_F(WidgetTest, DISABLED_OnAScreenOfTwoPixelsAUnit) {
    ASSERT_EQ(map->devicePixelRatioF(), 2.0);
    EXPECT_EQ(map->Picture().size(), QSize(800, 600));
    ShowSquare();
    const QSignalSpy clicks(map.get(), &OrvaneWidget::OnDataClick);
    Click(Qt::LeftButton);
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0][3].toInt(), 400);
    EXPECT_EQ(clicks[0][4].toInt(), 300);
    const QImage shown = map->grab().toImage().convertToFormat(map->Picture().format());
    ASSERT_EQ(shown.size(), map->Picture().size());
    int different = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) different += shown.pixel(x, y) != map->Picture().pixel(x, y);
    }
    EXPECT_EQ(different, 0) << "one pixel of the map is one of the screen";
}

TEST(ScaledScreenTest, OnePixelOfTheMapIsOneOfTheScreen) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ORVANE_TEST_SCALE", "2");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_also_run_disabled_tests", "--gtest_filter=WidgetTest.DISABLED_OnAScreenOfTwoPixelsAUnit"});
    ASSERT_TRUE(process.waitForFinished(60000));
    const QByteArray output = process.readAll();
    EXPECT_EQ(process.exitCode(), 0) << output.constData();
    EXPECT_TRUE(output.contains("[  PASSED  ] 1 test")) << output.constData();
}

}  // namespace
}  // namespace orvane
