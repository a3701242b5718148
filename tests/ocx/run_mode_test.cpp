// Every run mode worked by the system's own input, as an operator's hand gives it, and what of it reaches the map and the host.
#include <algorithm>
#include <cmath>

#include "tests/ocx/canvas.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

using Words = std::vector<std::string>;
using Places = std::vector<std::pair<double, double>>;

/// Whatever the mouse's buttons and the keys do goes through the system's queue, so that the system itself finds window, flags,
/// capture and double clicks.
class Operator {
public:
    explicit Operator(Container& form) : form_(form) {}
    ~Operator() {
        for (const WORD key : {WORD{VK_SHIFT}, WORD{VK_CONTROL}}) Key(key, false);
    }
    Operator(const Operator&) = delete;
    Operator& operator=(const Operator&) = delete;

    /// The display tells moves a little later than it makes them, so the pointer is there when it has stayed.
    void MoveTo(int x, int y) {
        POINT wanted{x, y};
        ClientToScreen(form_.ControlWindow(), &wanted);
        SetCursorPos(wanted.x, wanted.y);
        constexpr int kStays = 4;
        constexpr int kTries = 200;
        int stays = 0;
        for (int i = 0; stays < kStays && i < kTries; ++i) {
            Sleep(3);
            Work();
            POINT now{};
            GetCursorPos(&now);
            const bool there = now.x == wanted.x && now.y == wanted.y;
            stays = there ? stays + 1 : 0;
            if (!there) SetCursorPos(wanted.x, wanted.y);
        }
        EXPECT_EQ(stays, kStays) << "the pointer does not come to rest";
    }
    void Button(DWORD what) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = what;
        ASSERT_EQ(SendInput(1, &input, sizeof input), 1U);
        Work();
    }
    void Press() { Button(MOUSEEVENTF_LEFTDOWN); }
    void Release() { Button(MOUSEEVENTF_LEFTUP); }
    /// A click that is no second half of a double click, however near the last one was. The keys go down when the pointer is
    /// there: what moves it may tell the system which keys are really held.
    void Click(int x, int y, std::initializer_list<WORD> keys = {}) {
        SetDoubleClickTime(1);
        MoveTo(x, y);
        for (const WORD key : keys) Key(key, true);
        Press();
        Release();
        for (const WORD key : keys) Key(key, false);
        SetDoubleClickTime(0);  // the system's own again
    }
    void DoubleClick(int x, int y) {
        Click(x, y);
        SetDoubleClickTime(5000);
        Press();
        Release();
        SetDoubleClickTime(0);
    }
    void Drag(int x1, int y1, int x2, int y2) {
        MoveTo(x1, y1);
        Press();
        MoveTo((x1 + x2) / 2, (y1 + y2) / 2);
        MoveTo(x2, y2);
    }
    void Key(WORD key, bool down) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
        SendInput(1, &input, sizeof input);
        Work();
    }
    void Type(WORD key) {
        Key(key, true);
        Key(key, false);
    }

private:
    static void Work() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    Container& form_;
};

/// Client pixel (x, y) is map point (x, -y): a line of four points, another item far from it, and the tools may edit both.
class RunModeTest : public ComTest {
protected:
    void SetUp() override {
        ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
        SetForegroundWindow(form.form);
        ::SetFocus(form.ControlWindow());
        form.Connect();
        map.Call(L"OrvInit");
        for (const wchar_t* layer : {L"A", L"B"}) {
            EXPECT_TRUE(map.Call(L"OrvAddLayer", {layer, 3, layer[0] == L'A' ? 2 : 3, 0}).Bool());
            EXPECT_TRUE(map.Call(L"OrvSetLayEditFlg", {layer, true}).Bool());
        }
        Add(L"A", 7, Doubles({50, 100, 150, 200}), Doubles({-50, -50, -100, -100}), 4);
        Add(L"A", 8, Doubles({50, 120}), Doubles({-250, -250}), 2);
        Pump(50);  // the first paint
        const HDC screen = ::GetDC(nullptr);
        map.Put(L"Zoom", GetDeviceCaps(screen, HORZRES) * 1000 / GetDeviceCaps(screen, HORZSIZE));
        ReleaseDC(nullptr, screen);
        map.Call(L"OrvMapJumpToXY", {200.0, -150.0});
        Pump(10);
        ASSERT_EQ(map.Call(L"OrvGetScreenPosX", {0}).Double(), 0.0);
        ASSERT_EQ(map.Call(L"OrvGetScreenPosY", {0}).Double(), 0.0);
        hand.MoveTo(390, 290);
        Forget();
    }
    void Add(const wchar_t* layer, int id, const Value& x, const Value& y, int count) {
        Value z = Doubles({0, 0, 0, 0});
        if (count == 2) z = Doubles({0, 0});
        EXPECT_TRUE(map.Call(L"OrvAddDatEx", {layer, 3, id, 0, x, y, z}).Bool());
    }
    void Forget() {
        Pump(5);
        form.listener.events.clear();
    }
    /// The points of an item as the store has them; none for a missing one.
    Places PointsOf(const wchar_t* layer, int id) {
        Value x, y;
        Places places;
        if (!map.Call(L"OrvGetDatPnt", {layer, 3, id, Ref(x.v), Ref(y.v)}).Bool()) return places;
        for (long i = 0; i < CountOf(x.v); ++i) places.emplace_back(Element(x.v, i).Double(), Element(y.v, i).Double());
        return places;
    }
    std::vector<int> ActiveIds() {
        Value code, group, id;
        std::vector<int> ids;
        if (!map.Call(L"OrvGetActDat", {Ref(code.v), Ref(group.v), Ref(id.v)}).Bool()) return ids;
        for (long i = 0; i < CountOf(id.v); ++i) ids.push_back(Element(id.v, i).Int());
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    /// The events without the moves, which the pointer makes on its own way.
    Words Heard() {
        Words words;
        for (const std::string& name : form.listener.Names()) {
            if (name != "MouseMove") words.push_back(name);
        }
        return words;
    }
    int Mode() { return map.Get(L"RunMode").Int(); }
    void Start(int mode, const wchar_t* layer = L"", int mesh = 3, int id = 0) {
        ASSERT_EQ(map.Call(L"OrvDatEditor", {layer, mesh, id, mode}).Int(), 0);
        Forget();
    }
    /// The last words of a tool: what it did to which item.
    void ExpectEnd(const wchar_t* layer, int id, int count, int type) {
        const HeardEvent end = form.listener.Last("OnEditorEnd");
        ASSERT_EQ(end.args.size(), 5U);
        EXPECT_EQ(end.args[0].Text(), layer);
        EXPECT_EQ(end.args[2].Int(), id);
        EXPECT_EQ(end.args[3].Int(), count);
        EXPECT_EQ(end.args[4].Int(), type);
    }

    /// A tool has given this item of layer A these points, told so, and ended.
    void ExpectCommit(int id, const Places& points, int type) {
        EXPECT_EQ(PointsOf(L"A", id), points);
        ExpectEnd(L"A", id, static_cast<int>(points.size()), type);
        EXPECT_EQ(Mode(), 0);
    }

    const Places line{{50, -50}, {100, -50}, {150, -100}, {200, -100}};
    const Places shifted{{80, -70}, {130, -70}, {180, -120}, {230, -120}};  // by what two clicks of the tests tell
    Container form{400, 300};
    Client& map = form.control;
    Operator hand{form};
};

TEST_F(RunModeTest, the_normal_mode_selects_what_is_clicked) {
    hand.Click(75, 50);
    EXPECT_EQ(ActiveIds(), std::vector<int>{7});
    EXPECT_EQ(Heard(), (Words{"MouseDown", "OnDataClick", "MouseUp"}));
    const HeardEvent click = form.listener.Last("OnDataClick");
    ASSERT_EQ(click.args.size(), 5U);
    EXPECT_EQ(click.args[0].Int(), 7);
    EXPECT_EQ(click.args[3].Int(), 75);
    EXPECT_EQ(click.args[4].Int(), 50);
    Forget();
    hand.Click(300, 200);
    EXPECT_EQ(ActiveIds(), std::vector<int>{}) << "a click on nothing clears";
    EXPECT_EQ(Heard(), (Words{"MouseDown", "MouseUp"}));
}

TEST_F(RunModeTest, the_normal_mode_adds_with_control_and_selects_by_a_rectangle) {
    hand.Drag(30, 30, 250, 270);
    Pump(120);  // a tick of the rubber rectangle
    hand.Release();
    EXPECT_EQ(ActiveIds(), (std::vector<int>{7, 8}));
    EXPECT_EQ(form.listener.CountOf("OnDataClick"), 0);
    hand.Drag(30, 230, 250, 270);
    hand.Release();
    EXPECT_EQ(ActiveIds(), std::vector<int>{8});
    hand.Click(75, 50, {VK_CONTROL});
    EXPECT_EQ(ActiveIds(), (std::vector<int>{7, 8}));
}

TEST_F(RunModeTest, a_double_click_tells_the_feature_and_then_selects_nothing_more) {
    hand.DoubleClick(75, 50);
    ASSERT_EQ(Heard(), (Words{"MouseDown", "OnDataClick", "MouseUp", "OnDataDblClick", "MouseUp"}));
    EXPECT_EQ(form.listener.Last("OnDataDblClick").args[0].Int(), 7);
}

TEST_F(RunModeTest, a_double_click_with_shift_or_control_tells_nothing) {
    hand.Click(75, 50);
    Forget();
    for (const WPARAM key : {MK_SHIFT, MK_CONTROL, MK_SHIFT | MK_CONTROL}) {
        form.Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON | key, 75, 50);
        EXPECT_EQ(Heard(), Words{}) << key;
    }
    form.Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON, 75, 50);
    EXPECT_EQ(Heard(), Words{"OnDataDblClick"});
}

TEST_F(RunModeTest, without_selection_a_click_tells_its_place_twice_and_selects_nothing) {
    map.Call(L"OrvSetDatSelMode", {false});
    hand.Click(75, 50);
    ASSERT_EQ(Heard(), (Words{"OnDataClick", "MouseDown", "OnDataClick", "MouseUp"}));
    for (const HeardEvent& event : form.listener.events) {
        if (event.name != "OnDataClick") continue;
        EXPECT_EQ(event.args[0].Int(), 0);
        EXPECT_EQ(event.args[1].Text(), L"");
        EXPECT_EQ(event.args[2].Int(), 0);
        EXPECT_EQ(event.args[3].Int(), 75);
        EXPECT_EQ(event.args[4].Int(), 50);
    }
    EXPECT_EQ(ActiveIds(), std::vector<int>{});
}

TEST_F(RunModeTest, clicks_with_shift_step_through_what_lies_in_one_place) {
    Add(L"A", 9, Doubles({50, 100, 150, 200}), Doubles({-50, -50, -100, -100}), 4);
    map.Call(L"OrvReDraw");
    std::vector<int> told;
    for (int i = 0; i < 2; ++i) {
        hand.Click(75, 50, {VK_SHIFT});
        ASSERT_EQ(form.listener.CountOf("OnDataClick"), 1);
        told.push_back(form.listener.Last("OnDataClick").args[0].Int());
        Forget();
    }
    std::sort(told.begin(), told.end());
    EXPECT_EQ(told, (std::vector<int>{7, 9}));
}

TEST_F(RunModeTest, a_rectangle_of_three_pixels_selects_and_tells_nothing) {
    hand.Drag(74, 49, 77, 52);
    hand.Release();
    EXPECT_EQ(Heard(), (Words{"MouseDown", "MouseUp"}));
    EXPECT_EQ(ActiveIds(), std::vector<int>{});
}

TEST_F(RunModeTest, a_rest_of_two_seconds_shows_the_hint_at_the_pointers_place_on_the_screen) {
    hand.MoveTo(75, 50);
    const Deadline deadline("a hint", 20);
    while (form.listener.CountOf("OnHintStart") == 0) Pump(50);
    const HeardEvent hint = form.listener.Last("OnHintStart");
    POINT at{75, 50};
    ClientToScreen(form.ControlWindow(), &at);
    EXPECT_EQ(hint.args[0].Int(), 7);
    EXPECT_EQ(hint.args[3].Int(), at.x);
    EXPECT_EQ(hint.args[4].Int(), at.y);
}

TEST_F(RunModeTest, the_pan_mode_takes_the_map_along_with_the_pointer) {
    map.Put(L"RunMode", 10);
    hand.Drag(200, 150, 260, 130);
    Pump(350);
    EXPECT_NEAR(map.Call(L"OrvGetScreenPosX", {260}).Double(), 200, 2) << "what was under the pointer is there still";
    EXPECT_NEAR(map.Call(L"OrvGetScreenPosY", {130}).Double(), -150, 2);
    hand.Release();
    EXPECT_EQ(Heard(), (Words{"MouseDown", "MouseUp"}));
    EXPECT_EQ(ActiveIds(), std::vector<int>{});
    EXPECT_EQ(PointsOf(L"A", 7), line) << "the data stays";
}

TEST_F(RunModeTest, the_right_button_scrolls_while_it_is_down) {
    map.Put(L"ScrollMode", 10);
    hand.MoveTo(390, 150);
    form.listener.events.clear();
    hand.Button(MOUSEEVENTF_RIGHTDOWN);
    Pump(400);
    hand.Button(MOUSEEVENTF_RIGHTUP);
    const double moved = map.Call(L"OrvGetScreenPosX", {0}).Double();
    EXPECT_GT(std::fabs(moved), 3) << "ticks of 30 milliseconds, away from the middle";
    Pump(100);
    EXPECT_EQ(map.Call(L"OrvGetScreenPosX", {0}).Double(), moved) << "and no longer";
    Words names = form.listener.Names();
    ASSERT_GE(names.size(), 2U);
    names.resize(2);
    EXPECT_EQ(names, (Words{"MouseDown", "MouseUp"})) << "no moves in between";
    EXPECT_EQ(form.listener.Last("MouseDown").args[0].Int(), 2);
}

TEST_F(RunModeTest, a_right_drag_out_of_the_window_ends_the_scroll_and_the_button_still_repaints) {
    map.Put(L"ScrollMode", 10);
    hand.MoveTo(390, 150);
    hand.Button(MOUSEEVENTF_RIGHTDOWN);
    hand.MoveTo(600, 150);
    Pump(120);
    const double moved = map.Call(L"OrvGetScreenPosX", {0}).Double();
    Pump(150);
    EXPECT_EQ(map.Call(L"OrvGetScreenPosX", {0}).Double(), moved);
    Forget();
    hand.Button(MOUSEEVENTF_RIGHTUP);
    EXPECT_EQ(Heard(), Words{"MouseUp"}) << "the mouse was captured";
    EXPECT_EQ(GetCapture(), nullptr);
}

class FigureModeTest : public RunModeTest {
protected:
    void SetUp() override {
        RunModeTest::SetUp();
        figure = map.Call(L"OrvMakeOrgDatEx", {2, 1, 255, 0}).Int();
        for (const double x : {250.0, 300.0, 350.0}) map.Call(L"OrvAddOrgPnt", {figure, x, -200.0});
        map.PutAt(L"OrvOrgDataActive", {figure}, true);
        map.Put(L"ActivePointType", 1);
        map.Call(L"OrvReDraw");
        Forget();
    }
    int figure = 0;
};

TEST_F(FigureModeTest, mode_51_tells_the_point_or_the_figure_that_is_clicked) {
    map.Put(L"RunMode", 51);
    hand.Click(300, 200);
    ASSERT_EQ(Heard(), (Words{"OnOrgPointClick", "MouseUp"})) << "a hit keeps MouseDown back";
    HeardEvent told = form.listener.Last("OnOrgPointClick");
    EXPECT_EQ(told.args[0].Int(), figure);
    EXPECT_EQ(told.args[1].Int(), 1);
    EXPECT_EQ(told.args[2].Int(), 300);
    Forget();
    hand.Click(325, 200);
    ASSERT_EQ(Heard(), (Words{"OnOrgDataClick", "MouseUp"}));
    told = form.listener.Last("OnOrgDataClick");
    EXPECT_EQ(told.args[0].Int(), figure);
    EXPECT_EQ(told.args[1].Int(), 325);
    EXPECT_EQ(told.args[2].Int(), 200);
}

TEST_F(FigureModeTest, modes_50_and_51_tell_the_near_points_with_shift_and_control) {
    for (const int mode : {50, 51}) {
        map.Put(L"RunMode", mode);
        hand.Click(301, 199, {VK_SHIFT});
        ASSERT_EQ(form.listener.CountOf("OnOrgNearPtClick"), 1) << mode;
        HeardEvent told = form.listener.Last("OnOrgNearPtClick");
        EXPECT_EQ(told.args[0].Int(), figure);
        EXPECT_EQ(told.args[1].Int(), 1);
        EXPECT_EQ(told.args[2].Double(), 300.0);
        EXPECT_EQ(told.args[3].Double(), -200.0);
        EXPECT_EQ(told.args[4].Int(), 301);
        Forget();
        hand.Click(149, 101, {VK_SHIFT, VK_CONTROL});
        ASSERT_EQ(form.listener.CountOf("OnNearPtClick"), 1) << mode;
        told = form.listener.Last("OnNearPtClick");
        EXPECT_EQ(told.args[0].Int(), 7);
        EXPECT_EQ(told.args[1].Int(), 2);
        EXPECT_EQ(told.args[2].Int(), 3);
        EXPECT_EQ(told.args[3].Double(), 150.0);
        EXPECT_EQ(told.args[4].Double(), -100.0);
        Forget();
    }
    map.Put(L"RunMode", 50);
    hand.Click(300, 200);
    EXPECT_EQ(Heard(), (Words{"MouseDown", "MouseUp"})) << "a plain click is none of mode 50's";
}

TEST_F(FigureModeTest, a_point_of_a_figure_follows_the_pointer_while_it_is_told_to) {
    map.Put(L"RunMode", 51);
    map.Call(L"OrvMoveOnOrgPnt", {figure, 1});
    hand.MoveTo(310, 120);
    map.Call(L"OrvMoveOffOrgPnt", {figure, 1});
    hand.MoveTo(20, 20);
    Forget();
    hand.Click(310, 120);
    ASSERT_EQ(Heard(), (Words{"OnOrgPointClick", "MouseUp"}));
    EXPECT_EQ(form.listener.Last("OnOrgPointClick").args[1].Int(), 1);
}

TEST_F(RunModeTest, the_add_tool_makes_a_polygon_of_three_clicks_and_a_double_click) {
    Start(100, L"B");
    EXPECT_EQ(Mode(), 101);
    hand.Click(220, 20);
    EXPECT_EQ(form.listener.CountOf("OnEditorStart"), 1);
    hand.Click(320, 20);
    hand.Click(320, 120);
    hand.DoubleClick(220, 120);
    const Places made{{220, -20}, {320, -20}, {320, -120}, {220, -120}, {220, -20}};
    ASSERT_EQ(form.listener.CountOf("OnEditorEnd"), 1);
    const int id = form.listener.Last("OnEditorEnd").args[2].Int();
    EXPECT_EQ(PointsOf(L"B", id), made) << "closed by the tool";
    ExpectEnd(L"B", id, 4, 100);
    EXPECT_EQ(ActiveIds(), std::vector<int>{id});
    EXPECT_EQ(Mode(), 0);
}

TEST_F(RunModeTest, escape_leaves_nothing_of_a_new_figure) {
    Start(100, L"B");
    hand.Click(220, 20);
    hand.Click(320, 20);
    hand.Type(VK_ESCAPE);
    ExpectEnd(L"B", 0, 0, 999);
    EXPECT_EQ(Mode(), 0);
    EXPECT_EQ(map.Call(L"OrvGetLayDatCnt", {L"B", 3}).Int(), 0);
}

TEST_F(RunModeTest, the_point_move_tool_moves_one_point_and_commits_off_the_figure) {
    Start(200);
    hand.Click(75, 50);
    ASSERT_EQ(form.listener.CountOf("OnEditorStart"), 1);
    EXPECT_EQ(form.listener.Last("OnEditorStart").args[2].Int(), 7);
    hand.Click(150, 100);
    hand.MoveTo(160, 70);
    hand.Click(170, 60);
    EXPECT_EQ(PointsOf(L"A", 7), line) << "not before the commit";
    hand.Click(350, 250);
    ExpectCommit(7, {{50, -50}, {100, -50}, {170, -60}, {200, -100}}, 200);
}

TEST_F(RunModeTest, delete_in_the_point_move_tool_takes_the_feature_away) {
    Start(200);
    hand.Click(75, 50);
    hand.Type(VK_DELETE);
    EXPECT_EQ(PointsOf(L"A", 7), Places{});
    ExpectEnd(L"A", 7, 0, 300);
    EXPECT_EQ(Mode(), 200) << "the tool waits for the next";
}

TEST_F(RunModeTest, the_point_add_tool_inserts_where_it_is_clicked) {
    Start(210);
    hand.Click(75, 50);
    hand.MoveTo(120, 60);
    hand.Click(125, 70);
    hand.DoubleClick(300, 250);
    const Places now = PointsOf(L"A", 7);
    ASSERT_GE(now.size(), 5U);
    EXPECT_EQ(now[0], line[0]);
    EXPECT_EQ(now[1], line[1]);
    EXPECT_EQ(now[2], (std::pair{125.0, -70.0}));
    EXPECT_EQ(now[3], line[2]);
    ExpectEnd(L"A", 7, static_cast<int>(now.size()), 210);
    EXPECT_EQ(Mode(), 0);
}

TEST_F(RunModeTest, the_point_delete_tool_removes_points_down_to_two) {
    Start(220);
    hand.Click(75, 50);
    hand.Click(100, 50);
    hand.Click(150, 100);
    hand.Click(200, 100);  // a line keeps two
    hand.Click(350, 250);
    ExpectCommit(7, {{50, -50}, {200, -100}}, 220);
}

TEST_F(RunModeTest, the_data_move_tool_shifts_by_two_clicks) {
    Start(250);
    hand.Click(75, 50);
    hand.MoveTo(90, 60);
    hand.Click(105, 70);
    ExpectCommit(7, shifted, 250);
}

TEST_F(RunModeTest, the_data_copy_tool_leaves_the_first_where_it_was) {
    Start(260);
    hand.Click(75, 50);
    hand.Click(105, 70);
    EXPECT_EQ(PointsOf(L"A", 7), line);
    ASSERT_EQ(form.listener.CountOf("OnEditorEnd"), 1);
    const int copy = form.listener.Last("OnEditorEnd").args[2].Int();
    EXPECT_EQ(copy, 9) << "one more than the greatest";
    ExpectCommit(copy, shifted, 260);
}

TEST_F(RunModeTest, escape_takes_the_copy_away_again) {
    Start(260);
    hand.Click(75, 50);
    EXPECT_EQ(map.Call(L"OrvGetLayDatCnt", {L"A", 3}).Int(), 3);
    hand.Type(VK_ESCAPE);
    EXPECT_EQ(map.Call(L"OrvGetLayDatCnt", {L"A", 3}).Int(), 2);
    ExpectEnd(L"A", 9, 0, 999);
}

TEST_F(RunModeTest, the_delete_tool_takes_what_is_clicked_and_nothing_else) {
    Start(300);
    hand.Click(300, 30);
    EXPECT_EQ(Heard(), (Words{"MouseDown", "MouseUp"}));
    EXPECT_EQ(map.Call(L"OrvGetLayDatCnt", {L"A", 3}).Int(), 2);
    Forget();
    hand.Click(75, 50);
    EXPECT_EQ(PointsOf(L"A", 7), Places{});
    EXPECT_EQ(map.Call(L"OrvGetLayDatCnt", {L"A", 3}).Int(), 1);
    EXPECT_EQ(Heard(), (Words{"OnEditorStart", "OnEditorEnd", "MouseDown", "MouseUp"}));
    EXPECT_EQ(Mode(), 0);
}

TEST_F(RunModeTest, a_mode_that_nobody_knows_neither_selects_nor_changes_anything) {
    for (const int mode : {77, -1, 100}) {
        map.Put(L"RunMode", mode);
        Forget();
        hand.Click(75, 50);
        hand.Type(VK_DELETE);
        EXPECT_EQ(Heard(), (Words{"MouseDown", "MouseUp"})) << mode;
        EXPECT_EQ(ActiveIds(), std::vector<int>{});
        EXPECT_EQ(PointsOf(L"A", 7), line);
        EXPECT_EQ(Mode(), mode);
    }
}

}  // namespace
}  // namespace orvane::test
