"""How the tools live with the rest of the input: scrolls, zoom rectangles, the wheel, the stock events, what is drawn when."""

import pytest
from edit_rig import (ADD, EACH_KIND, EMPTY, END, LOADING, PICKING, SPOT, START, STROKE, begin, cancelled, clean, editable,
                      figures, finish, marked, mode, one, pick, rubber, shape, tag_and_active, told)
from input_rig import (ADDING, ADD_POINT, COPY, CTRL, DELETE, DELETE_POINT, LEFT, MOVE, MOVE_POINT, NORMAL, RECT_TIMER, RIGHT,
                       SCROLL_TIMER, SHIFT, drawn_after, listening, move, names, press, release, restored, tick, timers)
from map_rig import CIRCLE, LINE, POINT, bit_blts, composed, drawn_by, named, painted
from overlay_rig import GREEN, figure, looks


def carrying(tool, kind=POINT):
    """A host whose cursor carries something, and the pixel where the cursor is."""
    host, at = one(kind)
    if tool == ADDING:
        begin(host, ADD)
        press(host, *at)
    else:
        pick(host, tool, at)
    return host, at


CARRYING = pytest.mark.parametrize("tool, kind", [(ADDING, LINE), (MOVE_POINT, POINT), (MOVE, LINE), (COPY, LINE)])


# --- Moves -------------------------------------------------------------------------------------------------------------------


@CARRYING
@pytest.mark.parametrize("flags", [0, LEFT, SHIFT, CTRL, LEFT | SHIFT, LEFT | RIGHT, SHIFT | CTRL])
def test_what_is_carried_follows_any_move_but_one_of_the_right_button_alone(tool, kind, flags):
    host, (x, y) = carrying(tool, kind)
    before = rubber(host)
    move(host, x + 40, y + 30, RIGHT)
    assert rubber(host) == before
    move(host, x + 40, y + 30, flags)
    carried = before[:-1] + [(before[-1][0] + 40, before[-1][1] + 30)]
    assert rubber(host) == ([(px + 40, py + 30) for px, py in before] if tool in (MOVE, COPY) else carried)


@CARRYING
def test_a_move_tells_mouse_move_before_the_figure_follows(tool, kind):
    host, (x, y) = carrying(tool, kind)
    before = rubber(host)
    seen = []
    host.control.connect("MouseMove", lambda *args: seen.append((args, rubber(host))))
    move(host, x + 40, y + 30, LEFT)
    assert seen == [((1, 0, x + 40, y + 30), before)] and rubber(host) != before


@CARRYING
def test_while_the_right_button_scrolls_nothing_is_carried_and_no_move_is_told(tool, kind):
    host, (x, y) = carrying(tool, kind)
    host.control.ScrollMode = 10
    before = rubber(host)
    host.control.mouse("rdown", RIGHT, x, y)
    assert timers(host) == {SCROLL_TIMER: 30}
    heard = listening(host)
    move(host, x + 40, y + 30)
    assert rubber(host) == before and heard == []
    host.control.mouse("rup", 0, x, y)
    move(host, x + 50, y + 60)
    assert rubber(host)[-1] == (before[-1][0] + 50, before[-1][1] + 60), "the next move makes it up"


def test_while_the_right_button_scrolls_no_rubber_band_is_drawn():
    host = editable(LINE, STROKE)
    begin(host, ADD_POINT, 1)
    host.control.ScrollMode = 10
    host.control.mouse("rdown", RIGHT, 280, 104)
    assert drawn_after(host, lambda: move(host, 280, 104)) == []
    drawn = drawn_after(host, lambda: host.control.wheel(0, -120, 280, 104))
    assert named(drawn, "Polyline", "window") == [] and composed(drawn)


@CARRYING
def test_with_a_zoom_rectangle_asked_for_left_moves_carry_nothing_and_tell_nothing(tool, kind):
    host, (x, y) = carrying(tool, kind)
    host.control.OrvRectZoom(10)
    before = rubber(host)
    heard = listening(host)
    move(host, x + 40, y + 30, LEFT)
    assert rubber(host) == before and heard == [] and timers(host) == {}
    move(host, x + 40, y + 30)
    assert rubber(host) != before and names(heard) == ["MouseMove"]


def test_a_point_carried_over_a_scrolled_view_is_where_the_cursor_is():
    host, _ = carrying(MOVE_POINT)
    host.MapJumpToXY(500.0, -350.0)
    move(host, 200, 150)
    assert rubber(host) == [(300, 200)]
    press(host, 200, 150)
    assert shape(host) == [(300, 200)]


def test_a_move_at_one_place_in_a_view_that_went_on_shifts_by_the_way_of_the_view():
    host, at = carrying(MOVE, LINE)
    move(host, *at)
    host.MapJumpToXY(410.0, -300.0)
    move(host, *at)
    assert rubber(host) == [(x + 10, y) for x, y in STROKE]


# --- Buttons -----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("tool", PICKING)
def test_the_tools_pick_also_with_selection_switched_off(tool):
    host, at = one(LINE)
    host.control.SetDataSelectMode(False)
    heard = listening(host)
    pick(host, tool, at)
    assert [name for name, *_ in heard][0] == START


def test_with_selection_off_the_button_up_behind_a_tool_tells_zeros():
    host, at = carrying(MOVE, LINE)
    host.control.SetDataSelectMode(False)
    press(host, *EMPTY)
    heard = listening(host)
    release(host, *EMPTY)
    assert heard == [("OnDataClick", 0, "", 0, *EMPTY), ("MouseUp", 1, 0, *EMPTY)]


@pytest.mark.parametrize("tool", LOADING)
def test_the_buttons_up_of_a_running_tool_tell_mouse_up_alone(tool):
    host, at = one(LINE)
    pick(host, tool, at)
    heard = listening(host)
    assert drawn_after(host, lambda: release(host, *at)) == []
    assert names(heard) == ["MouseUp"] and mode(host) == tool


def test_the_click_that_ends_a_tool_cannot_become_a_rectangle():
    host, at = carrying(MOVE, LINE)
    press(host, *EMPTY)
    assert mode(host) == NORMAL
    move(host, 10, 10, LEFT)
    assert RECT_TIMER not in timers(host)
    release(host, 10, 10)
    assert not tag_and_active(host)[1]


def test_a_rectangle_begun_before_a_tool_ends_at_the_button_up_without_a_selection():
    host = editable(LINE, STROKE)
    press(host, 50, 50)
    move(host, 400, 400, LEFT)
    begin(host, MOVE, code="")
    heard = listening(host)
    drawn = drawn_after(host, lambda: release(host, 400, 400))
    assert names(heard) == ["MouseUp"] and not tag_and_active(host)[1] and not restored(drawn)
    assert timers(host) == {} and mode(host) == MOVE


@pytest.mark.parametrize("tool", [ADD, *PICKING])
def test_before_the_first_paint_clicks_keys_and_moves_reach_no_tool(tool):
    host = painted()
    assert host.init()
    assert host.add_block("A", 1, LINE) and host.SetLayEditFlg("A", True)
    host.add_item("A", 1, 1, [(100, -100), (300, -100)])
    begin(host, tool)
    heard = listening(host)
    for _ in range(2):
        move(host, 200, 100)
        press(host, 200, 100)
        release(host, 200, 100)
    finish(host, 200, 100)
    assert heard == [] and mode(host) == (ADDING if tool == ADD else tool)


@pytest.mark.parametrize("tool", PICKING)
def test_right_clicks_are_no_clicks_of_a_tool(tool):
    host, at = one(LINE)
    begin(host, tool, code="")
    heard = listening(host)
    host.control.mouse("rdown", RIGHT, *at)
    host.control.mouse("rup", 0, *at)
    assert names(heard) == ["MouseDown", "MouseUp"] and mode(host) == tool and figures(host) == []


def test_a_tool_of_the_host_s_own_choice_of_mode_picks_too():
    for tool in PICKING:
        host = editable(LINE, STROKE)
        begin(host, tool, code="")
        host.control.RunMode = NORMAL
        host.control.RunMode = tool
        heard = listening(host)
        press(host, 200, 100)
        assert told(heard)[0][0] == START


def test_mode_100_written_by_the_host_is_no_tool():
    host = editable(LINE, STROKE)
    host.control.RunMode = 100
    heard = listening(host)
    for at in ((200, 100), EMPTY):
        press(host, *at)
        release(host, *at)
    finish(host, *EMPTY)
    assert set(names(heard)) == {"MouseDown", "MouseUp"} and mode(host) == 100 and figures(host) == []


# --- Drawing -----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("tool", [ADD, *PICKING])
def test_a_start_that_waits_for_a_click_draws_nothing(tool):
    host = editable(LINE, STROKE)
    assert drawn_after(host, lambda: begin(host, tool, code="A")) == []


@pytest.mark.parametrize("tool", PICKING)
def test_a_pick_of_nothing_draws_nothing(tool):
    host = editable(LINE, STROKE)
    begin(host, tool, code="")
    assert drawn_after(host, lambda: press(host, *EMPTY)) == []


def test_a_refused_start_draws_nothing():
    host = editable(LINE, STROKE)
    for args in (("NOPE", 1, 1, MOVE), ("A", 1, 9, MOVE), ("A", 1, 1, ADD)):
        assert drawn_after(host, lambda args=args: host.DigDatEditor(*args)) == []


@EACH_KIND
def test_the_rubber_figure_shows_in_the_colour_of_active_data_three_pixels_wide(kind):
    host, at = one(kind)
    host.control.ActiveColor = GREEN
    drawn = drawn_after(host, lambda: pick(host, MOVE, at))
    box_of_an_ellipse = (2, 1, 0)
    pens = {pen for _, pen, _ in looks(drawn, "Polyline", "Polygon", "FillPath", "StrokeAndFillPath")}
    assert pens - {box_of_an_ellipse} == {(0, 3, GREEN)}


def test_the_active_flag_of_the_figure_may_be_taken_away_and_vertices_are_then_not_found():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    host.control.set_OrgDataActive(1, False)
    press(host, 300, 100)
    assert clean(host)


@pytest.mark.parametrize("act", ["carry a vertex", "carry an item", "draw on"])
def test_a_move_costs_two_copies_and_the_figure_and_looks_at_no_item(act):
    host = editable(LINE, *([[(x, 500), (x + 5, 550)] for x in range(10, 700, 10)]))
    if act == "draw on":
        begin(host, ADD)
        press(host, 100, 100)
    elif act == "carry a vertex":
        begin(host, MOVE_POINT, 1)
        press(host, 15, 550)
    else:
        pick(host, MOVE, (12, 525))
    drawn = drawn_after(host, lambda: move(host, 300, 300))
    assert {each.name for each in drawn if each.context == "base"} <= {"SelectClipRgn"}
    assert len(bit_blts(drawn, "top")) == 1 and len(bit_blts(drawn, "window")) == 1
    assert len(drawn_by(drawn, "Polyline", "top")) == 1


def test_a_circle_is_carried_as_a_circle():
    host, at = one(CIRCLE)
    pick(host, MOVE, at)
    drawn = drawn_after(host, lambda: move(host, at[0] + 30, at[1] + 40))
    assert ("Ellipse", 380, 290, 480, 390) in [(each.name, *each.values) for each in drawn if each.context == "top"]


@pytest.mark.parametrize("tool", LOADING)
def test_with_drawing_switched_off_the_tools_work_unseen(tool):
    host, at = one(LINE)
    host.control.MapDraw = False

    def edit():
        pick(host, tool, at)
        if tool == ADD_POINT:
            finish(host, *EMPTY)
        else:
            press(host, *EMPTY)

    heard = listening(host)
    assert [each for each in drawn_after(host, edit) if each.context in ("base", "top")] == []
    assert [name for name, *_ in told(heard)] == [START, END] and clean(host)


def test_a_repaint_or_a_hint_tick_in_a_tool_changes_nothing_of_it():
    host, at = carrying(MOVE, LINE)
    for timer in (1, 2, 3, 11):
        tick(host, timer)
    host.RDMReDraw()
    host.control.paint()
    assert rubber(host) == STROKE and mode(host) == MOVE
    cancelled(host)
    assert clean(host)


def test_figures_of_the_host_behind_the_rubber_figure_keep_their_place_and_numbers():
    host = editable(LINE, STROKE)
    begin(host, DELETE_POINT, 1)
    assert figure(host, LINE, [(1, 1), (2, 2)]) == 2
    press(host, *EMPTY)
    assert [each["ID"] for each in figures(host)] == [2]


def test_the_active_marks_stay_as_the_tool_set_them():
    host = editable(POINT, SPOT)
    host.control.ActivePointType = 0
    begin(host, MOVE_POINT, 1)
    cancelled(host)
    assert host.control.ActivePointType == 1
    begin(host, MOVE, 1)
    cancelled(host)
    assert host.control.ActivePointType == 0


@pytest.mark.parametrize("tool", [DELETE, MOVE])
def test_a_pick_takes_the_item_out_of_a_selection_of_many(tool):
    host = editable(POINT, SPOT, [(300, 300)], [(500, 500)])
    for number in (1, 2, 3):
        marked(host, 0, True, number)
    pick(host, tool, (300, 300))
    assert [tag_and_active(host, number)[1] for number in (1, 3)] == [False, False]
