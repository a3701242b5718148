// A click that activates, keys that a container offers, and the pointer's shapes over the control's window.
#include <algorithm>

#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

class ActivationTest : public ComTest {
protected:
    /// A container that takes a click at a pixel of its form in place of a control without a window.
    HRESULT ClickForm(UINT message, int x, int y) {
        MSG click{};
        click.hwnd = form.form;
        click.message = message;
        click.wParam = MK_LBUTTON;
        click.lParam = MAKELPARAM(x, y);
        return form.control.As<IOleObject>(IID_IOleObject)->DoVerb(OLEIVERB_UIACTIVATE, &click, &form, 0, form.form, &form.place);
    }
    /// What the operator sees and clicks.
    void ShowWithoutWindow() {
        const HDC dc = CreateCompatibleDC(nullptr);
        EXPECT_EQ(OleDraw(form.control.Get(), DVASPECT_CONTENT, dc, &form.place), S_OK);
        DeleteDC(dc);
    }
    void StartMap() {
        form.Connect();
        form.control.MakeTriangle();
    }
    Container form{400, 300};
};

TEST_F(ActivationTest, the_click_that_makes_the_window_is_the_maps) {
    form.place = {40, 30, 360, 270};
    StartMap();
    ShowWithoutWindow();
    ASSERT_EQ(ClickForm(WM_LBUTTONDOWN, 100, 80), S_OK);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 0) << "it waits until the container has done its own work";
    Pump(20);
    ASSERT_EQ(form.listener.CountOf("MouseDown"), 1);
    const HeardEvent down = form.listener.Last("MouseDown");
    EXPECT_EQ(down.args[0].Int(), 1);
    EXPECT_EQ(down.args[2].Int(), 60);
    EXPECT_EQ(down.args[3].Int(), 50);
}

TEST_F(ActivationTest, a_window_that_is_there_gets_its_clicks_from_the_system_alone) {
    StartMap();
    ASSERT_EQ(form.Activate(), S_OK);
    ASSERT_EQ(ClickForm(WM_LBUTTONDOWN, 100, 80), S_OK);
    Pump(20);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 0);
}

TEST_F(ActivationTest, a_button_that_goes_up_where_it_activates_is_the_containers) {
    StartMap();
    ShowWithoutWindow();
    for (const UINT up : {WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP}) ASSERT_EQ(ClickForm(up, 100, 80), S_OK);
    Pump(20);
    EXPECT_EQ(form.listener.CountOf("MouseUp"), 0);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 0);
}

TEST_F(ActivationTest, a_key_that_activates_is_the_containers) {
    StartMap();
    MSG key{};
    key.hwnd = form.form;
    key.message = WM_KEYDOWN;
    key.wParam = VK_TAB;
    const Com<IOleObject> object = form.control.As<IOleObject>(IID_IOleObject);
    form.filter.offered = true;
    ASSERT_EQ(object->DoVerb(OLEIVERB_UIACTIVATE, &key, &form, 0, form.form, &form.place), S_OK);
    Pump(20);
    EXPECT_TRUE(form.filter.Of(WM_KEYDOWN).empty());
}

TEST_F(ActivationTest, keys_that_a_frame_offers_go_to_the_site_with_the_keys_held) {
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    const Com<IOleInPlaceActiveObject> active = form.control.As<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    ASSERT_TRUE(active);
    MSG key{};
    key.hwnd = form.ControlWindow();
    key.message = WM_KEYDOWN;
    key.wParam = VK_F5;
    form.told.clear();
    EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE) << "the site has no use for it";
    EXPECT_EQ(form.told, std::vector<std::string>{"TranslateAccelerator"});
    EXPECT_EQ(form.acceleratorKeys, 0U);
    form.acceleratorAnswer = S_OK;
    const auto hold = [](BYTE which, bool down) {
        BYTE keys[256]{};
        GetKeyboardState(keys);
        keys[which] = down ? 0x80 : 0;
        SetKeyboardState(keys);
    };
    const std::pair<BYTE, DWORD> held[] = {{VK_SHIFT, 1}, {VK_CONTROL, 2}, {VK_MENU, 4}};
    for (const auto& [which, flag] : held) {
        hold(which, true);
        EXPECT_EQ(active->TranslateAccelerator(&key), S_OK) << "and what the site answers is the answer";
        hold(which, false);
        EXPECT_EQ(form.acceleratorKeys, flag);
    }
    EXPECT_EQ(active->TranslateAccelerator(nullptr), E_POINTER);
}

class CursorTest : public ActivationTest {
protected:
    void SetUp() override {
        StartMap();
        ASSERT_EQ(form.Activate(), S_OK);
        Pump(50);  // the first paint
    }
    /// What the pointer looks like when the system asks for its shape over the client area.
    HCURSOR Shown() {
        SetCursor(nullptr);
        const HWND window = form.ControlWindow();
        SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        return GetCursor();
    }
    static HCURSOR Standard(LPWSTR name) { return LoadCursorW(nullptr, name); }
    /// One of the control's own, which this program has under the same number.
    static HCURSOR Own(int number) { return LoadCursorW(GetModuleHandleW(L"orvane4.ocx"), MAKEINTRESOURCEW(number)); }
};

TEST_F(CursorTest, a_drag_of_the_map_shows_the_controls_own_hand) {
    ASSERT_NE(Own(202), nullptr);
    ASSERT_NE(Own(202), LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(202)));
    EXPECT_EQ(Shown(), Standard(IDC_ARROW));
    form.control.Put(L"RunMode", 10);
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 50, 50);
    EXPECT_EQ(GetCursor(), Own(202)) << "at once";
    EXPECT_EQ(Shown(), Own(202)) << "and when the system asks";
    form.Mouse(WM_LBUTTONUP, 0, 50, 50);
    EXPECT_EQ(Shown(), Standard(IDC_ARROW));
}

TEST_F(CursorTest, a_scroll_by_the_right_button_shows_the_controls_own_arrows) {
    ASSERT_NE(Own(203), nullptr);
    form.control.Put(L"ScrollMode", 10);
    form.Mouse(WM_RBUTTONDOWN, MK_RBUTTON, 50, 50);
    EXPECT_EQ(Shown(), Own(203));
    form.Mouse(WM_MOUSEMOVE, MK_RBUTTON, 60, 60);
    EXPECT_EQ(Shown(), Own(203)) << "a move while it scrolls changes nothing";
    form.Mouse(WM_RBUTTONUP, 0, 60, 60);
    EXPECT_EQ(Shown(), Standard(IDC_ARROW));
}

TEST_F(CursorTest, a_move_without_a_button_gives_the_plain_shape_back_and_a_vertex_the_cross) {
    const int figure = form.control.Call(L"OrvMakeOrgDatEx", {2, 1, 255, 0}).Int();
    const double x = form.control.Call(L"OrvGetScreenPosX", {100}).Double();
    const double y = form.control.Call(L"OrvGetScreenPosY", {100}).Double();
    form.control.Call(L"OrvAddOrgPnt", {figure, x, y});
    form.control.Call(L"OrvAddOrgPnt", {figure, x + 1e6, y});
    form.control.PutAt(L"OrvOrgDataActive", {figure}, true);
    form.control.Put(L"ActivePointType", 1);
    ASSERT_EQ(form.control.Call(L"OrvDatEditor", {L"A", 3, 7, 200}).Int(), 0);
    form.Mouse(WM_MOUSEMOVE, 0, 100, 100);
    EXPECT_EQ(Shown(), Standard(IDC_CROSS));
    form.Mouse(WM_MOUSEMOVE, 0, 30, 200);
    EXPECT_EQ(Shown(), Standard(IDC_ARROW));
}

TEST_F(CursorTest, outside_the_client_area_the_system_has_its_own) {
    form.control.Put(L"RunMode", 10);
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 50, 50);
    SetCursor(nullptr);
    const HWND window = form.ControlWindow();
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTBORDER, WM_MOUSEMOVE));
    EXPECT_NE(GetCursor(), Own(202));
    form.Mouse(WM_LBUTTONUP, 0, 50, 50);
}

TEST_F(CursorTest, long_work_gives_the_pointer_its_shape_back) {
    SetCursor(nullptr);
    Value a, b;
    VARIANT c;
    VariantInit(&c);
    form.control.Try(L"OrvPolygonBuffering", DISPATCH_METHOD, {0, L"A", 3, L"A", 3, L"A", 3, Ref(a.v), Ref(b.v), Ref(c)});
    VariantClear(&c);
    EXPECT_EQ(GetCursor(), Standard(IDC_ARROW));
}

}  // namespace
}  // namespace orvane::test
