#include "platform/offscreen_window.h"

#include <gmock/gmock.h>

#include "platform/record/record_window.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The device writes down what the window itself does with it.
class OffscreenWindowTest : public testing::Test {
protected:
    std::vector<std::string> TakeLines() {
        auto lines = list_->Lines();
        list_->Clear();
        return lines;
    }

    std::shared_ptr<VerbList> list_ = std::make_shared<VerbList>();
    RecordContext device_{list_, "device"};
    OffscreenWindow window_{device_, 800, 600};
};

TEST_F(OffscreenWindowTest, StandsOnTheDesktopOfTheDesign) {
    EXPECT_EQ(window_.DesktopRect(), (Rect{0, 0, 1920, 1080}));
    const DeviceContext& desktop = window_.Desktop();
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::HorzRes) * 1000 / desktop.GetDeviceCaps(DeviceCap::HorzSize), 3779);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::VertSize), 286);
    EXPECT_EQ(desktop.GetDeviceCaps(DeviceCap::LogPixelsX), 96);
}

TEST_F(OffscreenWindowTest, StartsWhite) {
    EXPECT_THAT(TakeLines(), ElementsAre("device CreateCompatibleBitmap 800 600 bitmap#1", "device CreateCompatibleDC 2",
                                         "2 SelectObject bitmap#1", "2 PatBlt 0 0 800 600 0xFF0062"));
}

TEST_F(OffscreenWindowTest, EachAcquiredContextStartsAfreshOnTheSameBitmap) {
    TakeLines();
    auto first = window_.AcquireDC();
    first->SetROP2(Rop2::Not);
    first.reset();
    auto second = window_.AcquireDC();
    EXPECT_EQ(second->SetROP2(Rop2::CopyPen), Rop2::CopyPen);
    EXPECT_THAT(TakeLines(), ElementsAre("device CreateCompatibleDC 3", "3 SelectObject bitmap#1", "3 SetROP2 6",
                                         "device CreateCompatibleDC 4", "4 SelectObject bitmap#1", "4 SetROP2 13"));
    EXPECT_EQ(window_.acquireCnt, 2);
}

TEST_F(OffscreenWindowTest, AResizeKeepsThePixelsAtTheLeftTopAndWhitensTheRest) {
    TakeLines();
    window_.Resize(1000, 300);
    EXPECT_EQ(window_.ClientRect(), (Rect{0, 0, 1000, 300}));
    EXPECT_THAT(TakeLines(),
                ElementsAre("device CreateCompatibleBitmap 1000 300 bitmap#2", "device CreateCompatibleDC 3",
                            "3 SelectObject bitmap#2", "3 PatBlt 0 0 1000 300 0xFF0062", "device CreateCompatibleDC 4",
                            "4 SelectObject bitmap#1", "3 BitBlt 0 0 800 300 4 0 0 0xCC0020"));
    window_.Resize(1000, 300);
    EXPECT_THAT(TakeLines(), IsEmpty());
}

TEST_F(OffscreenWindowTest, AContextAcquiredBeforeAResizeGoesOnDrawing) {
    auto before = window_.AcquireDC();
    const Bitmap* old = window_.ClientBitmap();
    window_.Resize(10, 10);
    EXPECT_NE(window_.ClientBitmap(), old);
    before->PatBlt(0, 0, 800, 600, Rop3::Blackness);
    before.reset();
    // Back at the former size its surface serves again.
    window_.Resize(800, 600);
    EXPECT_EQ(window_.ClientBitmap(), old);
    window_.DropFormerSurfaces();
    EXPECT_EQ(window_.ClientBitmap(), old);
    window_.AcquireDC()->PatBlt(0, 0, 1, 1, Rop3::Blackness);
}

TEST_F(OffscreenWindowTest, AWindowWithoutPixelsStillAnswers) {
    window_.Resize(0, -5);
    EXPECT_EQ(window_.ClientRect(), Rect{});
    EXPECT_EQ(window_.ClientBitmap(), nullptr);
    window_.AcquireDC()->PatBlt(0, 0, 1, 1, Rop3::Blackness);
    TakeLines();
    window_.Resize(5, 5);
    EXPECT_THAT(TakeLines(), testing::Not(testing::Contains(testing::HasSubstr("BitBlt"))));
}

TEST_F(OffscreenWindowTest, ScreenAndClientDifferByThePosition) {
    window_.position = {100, 50};
    EXPECT_EQ(window_.WindowRect(), (Rect{100, 50, 900, 650}));
    EXPECT_EQ(window_.ClientToScreen({1, 2}), (Point{101, 52}));
    EXPECT_EQ(window_.ScreenToClient({101, 52}), (Point{1, 2}));
    window_.position = {INT32_MAX, INT32_MIN};
    EXPECT_EQ(window_.ScreenToClient(window_.ClientToScreen({7, -9})), (Point{7, -9}));
    EXPECT_EQ(window_.CursorPos(), (Point{0, 0}));
    window_.cursorPos = {3, 4};
    EXPECT_EQ(window_.CursorPos(), (Point{3, 4}));
}

TEST_F(OffscreenWindowTest, MessagesAreKeptAndShownToTheHost) {
    std::vector<ShownMessage> seen;
    window_.onMessage = [&](const ShownMessage& shown) {
        seen.push_back(shown);
        window_.onMessage = nullptr;  // the hook may replace itself
        window_.ShowMessage("inner", "", MessageIcon::None);
    };
    window_.ShowMessage("\x82\xA0", "title", MessageIcon::Exclamation);
    EXPECT_THAT(seen, ElementsAre(ShownMessage{"\x82\xA0", "title", MessageIcon::Exclamation}));
    EXPECT_THAT(window_.messages, ElementsAre(ShownMessage{"\x82\xA0", "title", MessageIcon::Exclamation},
                                              ShownMessage{"inner", "", MessageIcon::None}));
}

TEST_F(OffscreenWindowTest, PaintRequestsAreCountedAndTakenOnce) {
    int called = 0;
    window_.onInvalidate = [&] { ++called; };
    EXPECT_FALSE(window_.TakePaintRequest());
    window_.Invalidate();
    window_.Invalidate();
    EXPECT_EQ(window_.invalidateCnt, 2);
    EXPECT_EQ(called, 2);
    EXPECT_TRUE(window_.TakePaintRequest());
    EXPECT_FALSE(window_.TakePaintRequest());
}

TEST_F(OffscreenWindowTest, CursorCaptureWaitCursorAndPumpAreKept) {
    int pumped = 0;
    window_.onPumpMessages = [&] { ++pumped; };
    window_.SetCursorShape(CursorShape::Scroll);
    window_.CaptureMouse(true);
    window_.ShowWaitCursor(true);
    window_.ShowWaitCursor(true);
    window_.ShowWaitCursor(false);
    window_.PumpMessages();
    EXPECT_EQ(window_.cursorShape, CursorShape::Scroll);
    EXPECT_TRUE(window_.captured);
    EXPECT_EQ(window_.waitCursorDepth, 1);
    EXPECT_EQ(window_.waitCursorCnt, 2);
    EXPECT_EQ(window_.pumpCnt, 1);
    EXPECT_EQ(pumped, 1);
}

TEST_F(OffscreenWindowTest, TimersTickOnlyWhileTheClockIsMovedOn) {
    std::vector<std::pair<std::int32_t, double>> ticks;
    window_.onTimer = [&](std::int32_t id) { ticks.emplace_back(id, window_.Clock_s()); };
    window_.clock_s = 100;
    window_.StartTimer(1, 250);
    window_.StartTimer(2, 1000);
    EXPECT_EQ(window_.Timers().at(1).period_ms, 250);
    EXPECT_THAT(ticks, IsEmpty());
    window_.Advance(0.5);
    EXPECT_THAT(ticks, ElementsAre(std::pair(1, 100.25), std::pair(1, 100.5)));
    ticks.clear();
    window_.StopTimer(1);
    window_.Advance(0.5);
    EXPECT_THAT(ticks, ElementsAre(std::pair(2, 101.0)));
    EXPECT_EQ(window_.Clock_s(), 101.0);
}

TEST_F(OffscreenWindowTest, ATimerMayStopItselfAndStartAnother) {
    std::vector<std::int32_t> ticks;
    window_.onTimer = [&](std::int32_t id) {
        ticks.push_back(id);
        window_.StopTimer(id);
        if (id == 1) window_.StartTimer(2, 125);
    };
    window_.StartTimer(1, 125);
    window_.Advance(10);
    EXPECT_THAT(ticks, ElementsAre(1, 2));
    EXPECT_TRUE(window_.Timers().empty());
}

TEST_F(OffscreenWindowTest, ATimerFasterThanThePlatformAllowsTicksAtItsShortestPeriod) {
    int ticks = 0;
    window_.onTimer = [&](std::int32_t) { ++ticks; };
    window_.StartTimer(1, 0);
    window_.StartTimer(2, -5);
    window_.Advance(0.0625);
    EXPECT_EQ(ticks, 12);
}

TEST(RecordWindowTest, OnlyWhatTheControlDrawsIsWritten) {
    RecordContext device{std::shared_ptr<VerbList>()};
    OffscreenWindow window(device, 80, 60);
    const auto list = std::make_shared<VerbList>();
    RecordContext desktop(list, device, "desktop");
    RecordWindow(window, desktop);

    auto memory = window.Desktop().CreateCompatibleDC();
    static_cast<RecordContext&>(*memory).SetLabel("base");
    auto dc = window.AcquireDC();
    auto bitmap = dc->CreateCompatibleBitmap(80, 60);
    memory->SelectBitmap(bitmap.get());
    dc->BitBlt(0, 0, 80, 60, *memory, 0, 0, Rop3::SrcCopy);
    window.Resize(10, 10);
    window.AcquireDC()->SetROP2(Rop2::Not);
    EXPECT_THAT(list->Lines(),
                ElementsAre("desktop CreateCompatibleDC base", "window CreateCompatibleBitmap 80 60 bitmap#1",
                            "base SelectObject bitmap#1", "window BitBlt 0 0 80 60 base 0 0 0xCC0020", "window SetROP2 6"));
    EXPECT_EQ(list->ContextsLabelled("window").size(), 2u);
}

}  // namespace
}  // namespace orvane
