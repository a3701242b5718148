// Events and notices of changes, and what handlers may do to the control that fires them.
#include "hosts/ocx/guids.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

class EventsTest : public ComTest {
protected:
    void Start() {
        ASSERT_EQ(form->Activate(), S_OK);
        form->Connect();
        form->control.MakeTriangle();
        // A ring that closes can be picked by its area.
        EXPECT_TRUE(
            form->control
                .Call(L"OrvAddDatEx", {L"A", 3, 8, 0, Doubles({0, 100, 50, 0}), Doubles({0, 0, 100, 0}), Doubles({0, 0, 0, 0})})
                .Bool());
        Pump(50);  // the first paint
        form->control.Call(L"OrvDspFit");
        Pump(20);
        form->listener.events.clear();
        form->listener.changes.clear();
    }
    void Click(int x, int y) {
        form->Mouse(WM_LBUTTONDOWN, MK_LBUTTON, x, y);
        form->Mouse(WM_LBUTTONUP, 0, x, y);
    }
    /// The client pixel of a map point.
    POINT PixelOf(double x, double y) {
        const double left = form->control.Call(L"OrvGetScreenPosX", {0}).Double();
        const double top = form->control.Call(L"OrvGetScreenPosY", {0}).Double();
        const double unit = form->control.Call(L"OrvGetScreenPosX", {1000}).Double() - left;
        return {static_cast<LONG>((x - left) * 1000 / unit), static_cast<LONG>((top - y) * 1000 / unit)};
    }
    std::unique_ptr<Container> form = std::make_unique<Container>(400, 300);
};

using Words = std::vector<std::string>;

TEST_F(EventsTest, a_click_on_a_feature_tells_it_and_then_the_stock_events) {
    Start();
    const POINT at = PixelOf(50, 30);
    Click(at.x, at.y);
    EXPECT_EQ(form->listener.Names(), (Words{"MouseDown", "OnDataClick", "MouseUp"}));
    const HeardEvent click = form->listener.Last("OnDataClick");
    ASSERT_EQ(click.args.size(), 5U);
    EXPECT_EQ(click.args[0].v.vt, VT_I4);
    EXPECT_EQ(click.args[0].Int(), 8);
    EXPECT_EQ(click.args[1].v.vt, VT_BSTR);
    EXPECT_EQ(click.args[1].Text(), L"A");
    EXPECT_EQ(click.args[2].Int(), 3);
    EXPECT_EQ(click.args[3].Int(), at.x);
    EXPECT_EQ(click.args[4].Int(), at.y);
    const HeardEvent down = form->listener.Last("MouseDown");
    EXPECT_EQ(down.args[0].v.vt, VT_I2);
    EXPECT_EQ(down.args[0].Int(), 1);
    EXPECT_EQ(down.args[2].v.vt, VT_I4);
}

TEST_F(EventsTest, a_move_tells_its_place_and_a_right_click_its_button) {
    Start();
    form->Mouse(WM_MOUSEMOVE, 0, 12, 34);
    EXPECT_EQ(form->listener.Last("MouseMove").args[3].Int(), 34);
    form->Mouse(WM_RBUTTONDOWN, MK_RBUTTON, 12, 34);
    form->Mouse(WM_RBUTTONUP, 0, 12, 34);
    EXPECT_EQ(form->listener.Last("MouseDown").args[0].Int(), 2);
    EXPECT_EQ(form->listener.CountOf("MouseUp"), 1);
}

TEST_F(EventsTest, a_position_left_of_the_window_is_negative) {
    Start();
    form->Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 5, 5);
    form->Mouse(WM_LBUTTONUP, 0, -7, -9);
    EXPECT_EQ(form->listener.Last("MouseUp").args[2].Int(), -7);
    EXPECT_EQ(form->listener.Last("MouseUp").args[3].Int(), -9);
}

TEST_F(EventsTest, every_run_mode_takes_mouse_wheel_and_keys) {
    Start();
    const BoxCloser closer;  // a tool without its layer says so
    for (const int mode : {0, 10, 50, 51, 101, 200, 210, 220, 250, 260, 300, 77, -1}) {
        form->control.Put(L"RunMode", mode);
        for (const int x : {-5, 50, 200, 390}) {
            form->Mouse(WM_LBUTTONDOWN, MK_LBUTTON, x, 100);
            form->Mouse(WM_MOUSEMOVE, MK_LBUTTON, x + 20, 120);
            form->Mouse(WM_LBUTTONUP, 0, x + 20, 120);
            form->Mouse(WM_MOUSEMOVE, 0, x, 90);
            form->Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON, x, 100);
            form->Mouse(WM_LBUTTONUP, 0, x, 100);
            form->Mouse(WM_RBUTTONDOWN, MK_RBUTTON, x, 100);
            form->Mouse(WM_RBUTTONUP, 0, x, 100);
            form->Mouse(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, x, 100);
            form->Mouse(WM_LBUTTONUP, MK_SHIFT, x, 100);
            form->Mouse(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT | MK_CONTROL, x, 100);
            form->Mouse(WM_LBUTTONUP, MK_SHIFT | MK_CONTROL, x, 100);
        }
        form->Mouse(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 100, 100);
        form->Key(VK_DELETE);
        form->Key(VK_ESCAPE);
        form->Key(L'A');
        Pump(1);
    }
    EXPECT_GT(form->listener.CountOf("MouseDown"), 10);
    EXPECT_TRUE(IsWindow(form->ControlWindow()));
}

TEST_F(EventsTest, each_run_mode_tells_what_is_its_own) {
    Start();
    const POINT hit = PixelOf(50, 30);
    const POINT miss{2, 2};
    const Words plain{"MouseDown", "MouseUp"};
    const BoxCloser closer;  // a tool without its layer says so
    for (const int mode : {0, 10, 50, 51, 77, -1, 200, 210, 220, 250, 260, 300}) {
        form->control.Put(L"RunMode", mode);
        form->listener.events.clear();
        Click(miss.x, miss.y);
        EXPECT_EQ(form->listener.Names(), plain) << "nothing at hand, mode " << mode;
        form->listener.events.clear();
        form->Mouse(WM_MOUSEMOVE, 0, miss.x + 1, miss.y);
        EXPECT_EQ(form->listener.Names(), Words{"MouseMove"}) << mode;
    }
    for (const int mode : {10, 50, 51, 77, -1}) {
        form->control.Put(L"RunMode", mode);
        form->listener.events.clear();
        Click(hit.x, hit.y);
        EXPECT_EQ(form->listener.Names(), plain) << "only mode 0 picks features, mode " << mode;
    }
    form->control.Put(L"RunMode", 0);
    form->listener.events.clear();
    Click(hit.x, hit.y);
    form->Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON, hit.x, hit.y);
    form->Mouse(WM_LBUTTONUP, 0, hit.x, hit.y);
    EXPECT_EQ(form->listener.Names(), (Words{"MouseDown", "OnDataClick", "MouseUp", "OnDataDblClick", "MouseUp"}));
}

TEST_F(EventsTest, the_wheel_changes_the_scale_and_tells_the_property_too) {
    Start();
    const int before = form->control.Get(L"Zoom").Int();
    POINT screen{100, 100};
    ClientToScreen(form->ControlWindow(), &screen);
    form->Mouse(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), screen.x, screen.y);
    EXPECT_NE(form->control.Get(L"Zoom").Int(), before);
    EXPECT_EQ(form->listener.CountOf("OnZoomChange"), 1);
    EXPECT_EQ(form->listener.changes, std::vector<DISPID>{8});
}

TEST_F(EventsTest, a_written_property_is_told_once) {
    Start();
    form->control.Put(L"ScaleX", 2.0);
    form->control.Put(L"Zoom", 4000);
    EXPECT_EQ(form->listener.changes, (std::vector<DISPID>{5, 8}));
    EXPECT_EQ(form->listener.Last("OnZoomChange").args[0].Int(), 4000);
}

TEST_F(EventsTest, frozen_events_are_not_told_until_every_freeze_has_ended) {
    Start();
    const Com<IOleControl> control = form->control.As<IOleControl>(IID_IOleControl);
    control->FreezeEvents(TRUE);
    control->FreezeEvents(TRUE);
    form->control.Put(L"Zoom", 4000);
    control->FreezeEvents(FALSE);
    form->control.Put(L"Zoom", 5000);
    EXPECT_EQ(form->listener.CountOf("OnZoomChange"), 0);
    control->FreezeEvents(FALSE);
    control->FreezeEvents(FALSE);  // one too many
    form->control.Put(L"Zoom", 6000);
    EXPECT_EQ(form->listener.CountOf("OnZoomChange"), 1);
}

TEST_F(EventsTest, a_handler_that_answers_an_error_changes_nothing) {
    Start();
    form->listener.answer = E_FAIL;
    form->control.Put(L"Zoom", 4000);
    EXPECT_EQ(form->control.Get(L"Zoom").Int(), 4000);
    Click(10, 10);
    EXPECT_EQ(form->listener.CountOf("MouseUp"), 1);
}

TEST_F(EventsTest, a_handler_may_call_anything_back) {
    Start();
    form->listener.onEvent = [&](const HeardEvent& event) {
        if (event.name != "OnDataClick") return;
        form->control.MakeTriangle();
        form->control.Call(L"OrvReDraw");
    };
    const POINT at = PixelOf(50, 30);
    Click(at.x, at.y);
    EXPECT_EQ(form->listener.Names(), (Words{"MouseDown", "OnDataClick", "MouseUp"}));
}

TEST_F(EventsTest, a_handler_may_take_the_control_down_and_release_it) {
    for (const char* name : {"MouseDown", "OnDataClick", "MouseUp", "MouseMove", "OnZoomChange"}) {
        form = std::make_unique<Container>(400, 300);
        Start();
        const POINT at = PixelOf(50, 30);
        form->listener.onEvent = [&](const HeardEvent& event) {
            if (event.name == name) form->Close();
        };
        const HWND window = form->ControlWindow();
        SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y));
        SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        if (form->control.Get() != nullptr) form->control.Put(L"Zoom", 3000);
        EXPECT_EQ(form->control.Get(), nullptr) << name;
        EXPECT_EQ(form->References(), 1U) << name;
    }
}

TEST_F(EventsTest, a_listener_that_is_gone_hears_nothing_more) {
    Start();
    form->listener.onEvent = [&](const HeardEvent&) { form->Disconnect(); };
    form->control.Put(L"Zoom", 3000);
    form->control.Put(L"Zoom", 4000);
    EXPECT_EQ(form->listener.CountOf("OnZoomChange"), 1);
    EXPECT_EQ(form->listener.refs, 1U);
}

TEST_F(EventsTest, connection_points_are_found_and_told) {
    Client control = Client::New();
    const Com<IConnectionPointContainer> points = control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    Com<IConnectionPoint> point;
    EXPECT_EQ(points->FindConnectionPoint(IID_IDispatch, point.Out()), CONNECT_E_NOCONNECTION);
    ASSERT_EQ(points->FindConnectionPoint(ToGuid(kEventsGuid), point.Out()), S_OK);
    IID iid{};
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_TRUE(iid == ToGuid(kEventsGuid));
    Com<IConnectionPointContainer> back;
    EXPECT_EQ(point->GetConnectionPointContainer(back.Out()), S_OK);
    EXPECT_EQ(point->Advise(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(point->Unadvise(5), CONNECT_E_NOCONNECTION);
    Listener listener;
    DWORD cookie = 0;
    EXPECT_EQ(point->Advise(static_cast<IDispatch*>(&listener), &cookie), S_OK);
    Com<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(connections.Out()), S_OK);
    CONNECTDATA data{};
    ULONG count = 0;
    EXPECT_EQ(connections->Next(1, &data, &count), S_OK);
    EXPECT_EQ(data.dwCookie, cookie);
    data.pUnk->Release();
    connections.Reset();
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(listener.refs, 1U);
    Com<IEnumConnectionPoints> all;
    ASSERT_EQ(points->EnumConnectionPoints(all.Out()), S_OK);
    IConnectionPoint* each[3] = {};
    EXPECT_EQ(all->Next(3, each, &count), S_FALSE);
    EXPECT_EQ(count, 2U);
    for (ULONG i = 0; i < count; ++i) each[i]->Release();
    EXPECT_EQ(all->Next(3, each, nullptr), E_POINTER);
}

}  // namespace
}  // namespace orvane::test
