"""Mouse moves, what each flag word of theirs does, the shape of the cursor, and the hint that a rest brings."""

import pytest
from input_rig import (ALL_CLICKS, ARROW, CROSS, CTRL, DELETE_POINT, HINT_TIMER, LEFT, MOVE_POINT, NORMAL, PAN, RECT_TIMER, RIGHT,
                       SHIFT, SHIFT_CLICKS, click, drag, drawn_after, listening, move, names, press, relaid, release, selected,
                       shown, tick, timers)
from map_rig import LINE, POINT, POLYGON, composed, drain, dump, named, verbs, view
from overlay_rig import figure

SPOT = (200, 150)
EMPTY = (600, 500)


def resting(host, x, y, at=100.0):
    """The cursor comes to rest at a client position at a moment of the clock."""
    host.control.clock = at
    host.control.cursor_pos = (x, y)
    move(host, x, y)


def hints(host):
    heard = []
    host.control.connect("OnHintStart", lambda *args: heard.append(args))
    return heard


# --- The timer of the hint -----------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("flags", [0, SHIFT, CTRL, SHIFT | CTRL, LEFT | SHIFT, LEFT | CTRL, LEFT | RIGHT, RIGHT | SHIFT,
                                   LEFT | RIGHT | SHIFT | CTRL])
def test_a_move_with_any_flag_word_but_a_single_button_starts_the_hint_timer(flags):
    host = shown(POINT, [SPOT])
    move(host, *SPOT, flags)
    assert timers(host) == {HINT_TIMER: 10}


@pytest.mark.parametrize("flags", [LEFT, RIGHT])
def test_a_move_with_one_button_alone_stops_the_hint_timer(flags):
    host = shown(POINT, [SPOT])
    move(host, *SPOT)
    move(host, *EMPTY, flags)
    assert timers(host) == {}


@pytest.mark.parametrize("mode", [PAN, 1, SHIFT_CLICKS, ALL_CLICKS, 100, 101, 200, 210, 220, 250, 260, 300])
def test_a_rest_in_any_other_mode_than_the_normal_one_starts_no_hint_timer(mode):
    host = shown(POINT, [SPOT])
    host.control.RunMode = mode
    move(host, *SPOT)
    assert timers(host) == {}


def test_a_move_in_another_mode_stops_the_hint_timer_when_the_position_changed():
    host = shown(POINT, [SPOT])
    move(host, *SPOT)
    host.control.RunMode = PAN
    move(host, *SPOT)
    assert timers(host) == {HINT_TIMER: 10}, "the position is the same"
    move(host, SPOT[0] + 1, SPOT[1])
    assert timers(host) == {}


def test_a_move_of_the_right_button_stops_the_hint_timer_even_where_the_cursor_is():
    host = shown(POINT, [SPOT])
    move(host, *SPOT)
    move(host, *SPOT, RIGHT)
    assert timers(host) == {}


def test_a_wheel_step_stops_the_hint_timer():
    host = shown(POINT, [SPOT])
    move(host, *SPOT)
    host.control.wheel(0, 120, *SPOT)
    assert timers(host) == {}


@pytest.mark.parametrize("off", ["map", "wheel"])
def test_a_wheel_step_that_does_nothing_leaves_the_hint_timer_alone(off):
    host = shown(POINT, [SPOT])
    if off == "map":
        host.control.MapDraw = False
    else:
        host.control.OrvWheelZoomMode(0, 0.2)
    move(host, *SPOT)
    host.control.wheel(0, 120, *SPOT)
    assert timers(host) == {HINT_TIMER: 10}


# --- The hint ------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("rested, at, shows", [
    (100.0, 100.5, False), (100.0, 101.0, False), (100.0, 101.99, False), (100.0, 102.0, True), (100.0, 150.0, True),
    (100.99, 101.99, False), (100.99, 102.0, True), (100.99, 101.0, False), (100.5, 102.4, True), (0.0, 1.9, False),
    (0.0, 2.0, True), (100.0, 99.0, False)])
def test_the_hint_shows_when_the_clock_is_more_than_one_whole_second_further(rested, at, shows):
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT, at=rested)
    host.control.clock = at
    tick(host, HINT_TIMER)
    assert heard == ([(1, "A", 1, *SPOT)] if shows else [])
    assert timers(host) == ({} if shows else {HINT_TIMER: 10}), "without its time come the timer ticks on"


def test_a_rest_gives_one_hint_at_most():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT)
    host.control.clock = 110.0
    tick(host, HINT_TIMER, 5)
    assert len(heard) == 1 and timers(host) == {}


def test_a_rest_on_nothing_gives_no_hint_and_ends_too():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *EMPTY)
    host.control.clock = 110.0
    tick(host, HINT_TIMER)
    assert heard == [] and timers(host) == {}


def test_a_cursor_that_left_without_a_move_gets_no_hint():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT)
    host.control.cursor_pos = (SPOT[0] + 1, SPOT[1])
    tick(host, HINT_TIMER)
    assert timers(host) == {}, "the first tick that sees it stops the timer, before the time has come"
    host.control.clock = 110.0
    tick(host, HINT_TIMER)
    assert heard == []


def test_a_move_within_the_rest_begins_it_anew():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT, at=100.0)
    resting(host, SPOT[0] + 2, SPOT[1], at=101.5)
    host.control.clock = 102.5
    tick(host, HINT_TIMER)
    assert heard == []
    host.control.clock = 103.0
    tick(host, HINT_TIMER)
    assert heard == [(1, "A", 1, SPOT[0] + 2, SPOT[1])]


def test_a_move_to_the_same_place_begins_the_rest_anew_as_well():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT, at=100.0)
    resting(host, *SPOT, at=105.0)
    tick(host, HINT_TIMER)
    assert heard == [] and timers(host) == {HINT_TIMER: 10}


def test_a_hint_changes_neither_the_active_set_nor_the_picture():
    host = shown(POINT, [SPOT], [(400, 300)])
    click(host, 400, 300)
    heard = hints(host)
    drain(host)
    resting(host, *SPOT)
    host.control.clock = 110.0
    tick(host, HINT_TIMER)
    assert len(heard) == 1 and selected(host) == [2] and verbs(host) == []


def test_the_hint_is_looked_for_where_the_last_move_was_and_a_right_button_move_is_none():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT)
    move(host, *EMPTY, RIGHT)
    move(host, *SPOT)
    host.control.clock = 110.0
    tick(host, HINT_TIMER)
    assert heard == [(1, "A", 1, *SPOT)]


def test_a_hint_is_given_without_selection_too():
    host = shown(POINT, [SPOT], select=False)
    heard = hints(host)
    resting(host, *SPOT)
    host.control.clock = 110.0
    tick(host, HINT_TIMER)
    assert heard == [(1, "A", 1, *SPOT)]


def test_a_hint_that_was_armed_in_the_normal_mode_comes_in_any_mode():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    resting(host, *SPOT)
    host.control.RunMode = PAN
    host.control.clock = 110.0
    tick(host, HINT_TIMER)
    assert heard == [(1, "A", 1, *SPOT)]


def test_the_clock_may_stand_anywhere():
    host = shown(POINT, [SPOT])
    heard = hints(host)
    for at in (-5.5, 1e18, 1e300, float("nan"), float("inf"), float("-inf")):
        resting(host, *SPOT, at=at)
        tick(host, HINT_TIMER)
    assert len(heard) <= 6


# --- Moves that are not told ---------------------------------------------------------------------------------------------------


def test_no_mouse_move_is_told_for_the_right_button_alone():
    host = shown(POINT, [SPOT])
    heard = listening(host)
    move(host, *SPOT, RIGHT)
    assert heard == []
    assert (view(host, "LastMouseX"), view(host, "LastMouseY")) == SPOT


def test_no_mouse_move_is_told_while_a_rectangle_of_selection_is_tracked():
    host = shown(POINT, [SPOT])
    press(host, 300, 300)
    heard = listening(host)
    for step in range(5):
        move(host, 310 + step, 320, LEFT)
    assert heard == []


def test_no_mouse_move_is_told_with_the_left_button_in_the_normal_mode_even_without_a_rectangle():
    host = shown(POINT, [SPOT])
    heard = listening(host)
    move(host, 310, 320, LEFT)
    assert heard == [] and timers(host) == {}, "nothing was pressed, so nothing is tracked either"


@pytest.mark.parametrize("mode", [NORMAL, 1, 100, 101, 200, 210, 220, 250, 260, 300])
def test_no_mouse_move_is_told_with_the_left_button_while_a_zoom_rectangle_waits(mode):
    host = shown(POINT, [SPOT], select=False)
    host.control.RunMode = mode
    host.control.OrvRectZoom(10)
    heard = listening(host)
    move(host, 310, 320, LEFT)
    assert heard == []


@pytest.mark.parametrize("mode", [SHIFT_CLICKS, ALL_CLICKS])
def test_a_waiting_zoom_rectangle_does_not_hold_moves_in_the_figure_modes(mode):
    host = shown(POINT, [SPOT], select=False)
    host.control.RunMode = mode
    host.control.OrvRectZoom(10)
    heard = listening(host)
    move(host, 310, 320, LEFT)
    assert heard == [("MouseMove", 1, 0, 310, 320)]


def test_no_mouse_move_is_told_while_a_scroll_runs():
    host = shown(POINT, [SPOT])
    host.control.RunMode = PAN
    press(host, 300, 300)
    heard = listening(host)
    for flags in (LEFT, 0, SHIFT):
        move(host, 310, 320, flags)
    assert heard == []
    release(host, 310, 320)
    move(host, 312, 320)
    assert names(heard) == ["MouseUp", "MouseMove"]


@pytest.mark.parametrize("mode", [1, 100, 777])
def test_an_unknown_mode_tells_moves_with_the_left_button(mode):
    host = shown(POINT, [SPOT])
    host.control.RunMode = mode
    press(host, 300, 300)
    heard = listening(host)
    move(host, 310, 320, LEFT)
    assert heard == [("MouseMove", 1, 0, 310, 320)] and timers(host) == {}


# --- The rectangle is given up by another flag word ----------------------------------------------------------------------------


@pytest.mark.parametrize("flags", [0, LEFT | SHIFT, LEFT | CTRL, LEFT | RIGHT, CTRL])
def test_a_drag_on_which_a_key_is_pressed_is_no_rectangle_any_more_but_its_timer_runs_on(flags):
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 250, 200, LEFT)
    assert timers(host) == {RECT_TIMER: 100}
    move(host, 251, 201, flags)
    assert timers(host) == {RECT_TIMER: 100, HINT_TIMER: 10}
    release(host, 251, 201)
    assert selected(host) == [], "the button up selects at its point"
    assert RECT_TIMER in timers(host), "until the next rectangle ends"
    drag(host, (150, 100), (250, 200))
    assert RECT_TIMER not in timers(host) and selected(host) == [1]


def test_the_timer_of_a_rectangle_that_was_given_up_runs_on_with_the_last_rectangle():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 250, 200, LEFT)
    move(host, 300, 300, LEFT | SHIFT)
    (line,) = named(drawn_after(host, lambda: tick(host, RECT_TIMER)), "Polyline", "window")
    assert line.values[0] == ((150, 100), (150, 200), (250, 200), (250, 100), (150, 100))


def test_left_moves_after_the_rectangle_was_given_up_track_nothing():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 250, 200, LEFT)
    move(host, 251, 201, LEFT | SHIFT)
    move(host, 252, 202, LEFT)
    release(host, 252, 202)
    assert selected(host) == []


def test_a_right_button_down_gives_the_rectangle_up():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 250, 200, LEFT)
    host.control.mouse("rdown", LEFT | RIGHT, 250, 200)
    release(host, 250, 200)
    assert selected(host) == []


def test_a_right_button_move_during_a_drag_keeps_the_rectangle():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 250, 200, LEFT)
    move(host, 300, 300, RIGHT)
    release(host, 250, 200)
    assert selected(host) == [1]


# --- Dragging a point of a figure ----------------------------------------------------------------------------------------------


def points_of(host, number):
    found = next(each for each in dump(host)["orgDats"] if each["ID"] == number)
    return [(each[0], each[1]) for each in found["pnts"]]


@pytest.mark.parametrize("mode", [SHIFT_CLICKS, ALL_CLICKS])
@pytest.mark.parametrize("flags", [0, LEFT, LEFT | SHIFT, SHIFT | CTRL])
def test_the_dragged_point_of_a_figure_follows_the_cursor_in_the_figure_modes(mode, flags):
    host = shown(POINT, [SPOT])
    figure(host, LINE, [(100, 100), (200, 100), (300, 100)])
    host.MoveOnOrgPnt(1, 1)
    host.control.RunMode = mode
    heard = listening(host)
    drawn = drawn_after(host, lambda: move(host, 240, 170, flags))
    assert points_of(host, 1) == [(100, -100), (240, -170), (300, -100)]
    assert relaid(drawn)
    assert heard == [("MouseMove", 1 if flags == LEFT else 0, 0, 240, 170)]


def test_the_dragged_point_is_written_after_the_move_was_told():
    host = shown(POINT, [SPOT])
    figure(host, LINE, [(100, 100), (200, 100)])
    host.MoveOnOrgPnt(1, 1)
    host.control.RunMode = SHIFT_CLICKS
    seen = []
    host.control.connect("MouseMove", lambda *args: seen.append(points_of(host, 1)[1]))
    move(host, 240, 170)
    assert seen == [(200, -100)]


@pytest.mark.parametrize("case", ["normal mode", "other mode", "switched off", "right button", "unknown figure", "unknown point"])
def test_without_mode_and_flag_no_point_is_dragged(case):
    host = shown(POINT, [SPOT])
    figure(host, LINE, [(100, 100), (200, 100)])
    host.MoveOnOrgPnt(7 if case == "unknown figure" else 1, 9 if case == "unknown point" else 1)
    host.control.RunMode = {"normal mode": NORMAL, "other mode": 49}.get(case, ALL_CLICKS)
    if case == "switched off":
        host.MoveOffOrgPnt(1, 1)
    move(host, 240, 170, RIGHT if case == "right button" else 0)
    assert points_of(host, 1) == [(100, -100), (200, -100)]


def test_the_dragged_point_takes_the_short_inverse_whatever_the_view_is_turned_and_stretched():
    host = shown(POINT, [SPOT])
    figure(host, LINE, [(100, 100), (200, 100)])
    host.control.Rotate, host.control.ScaleX = 30.0, 2.0
    host.MoveOnOrgPnt(1, 0)
    host.control.RunMode = SHIFT_CLICKS
    move(host, 240, 170)
    assert points_of(host, 1)[0] == (240, -170)


def test_a_drag_right_after_init_composes_the_map_for_once():
    host = shown(POINT, [SPOT])
    control = host.control
    host.init()
    control.MapDraw = False
    control.paint()
    control.MapDraw = True
    assert view(host, "DrawState") == 1
    figure(host, LINE, [(0, 0), (9, 9)])
    control.MoveOnOrgPnt(1, 0)
    control.RunMode = SHIFT_CLICKS
    assert composed(drawn_after(host, lambda: move(host, 240, 170)))
    assert relaid(drawn_after(host, lambda: move(host, 241, 170)))


# --- The shape of the cursor ---------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("tool", [MOVE_POINT, DELETE_POINT])
def test_the_cursor_is_a_cross_over_a_point_of_the_figure_in_hand_and_an_arrow_elsewhere(tool):
    host = shown(LINE, [(100, 100), (300, 100)])
    assert host.control.DigDatEditor("A", 1, 1, tool) == 0
    move(host, 200, 200)
    assert host.control.cursor == ARROW
    move(host, 301, 101)
    assert host.control.cursor == CROSS
    move(host, 200, 100)
    assert host.control.cursor == ARROW


@pytest.mark.parametrize("mode", [NORMAL, SHIFT_CLICKS, ALL_CLICKS, 210, 250])
def test_the_cursor_stays_an_arrow_over_a_point_in_other_modes(mode):
    host = shown(LINE, [(100, 100), (300, 100)])
    figure(host, LINE, [(100, 100), (300, 100)], active=True)
    host.control.RunMode = mode
    move(host, 300, 100)
    assert host.control.cursor == ARROW


def test_the_cursor_knows_the_points_of_active_figures_of_the_host_too():
    host = shown(LINE, [(100, 100), (300, 100)])
    figure(host, POLYGON, [(500, 100), (550, 100), (550, 150), (500, 100)], active=True)
    figure(host, LINE, [(500, 400), (550, 400)])
    assert host.control.DigDatEditor("A", 1, 1, MOVE_POINT) == 0
    for (x, y), shape in (((550, 150), CROSS), ((550, 400), ARROW), ((300, 100), CROSS)):
        move(host, x, y)
        assert host.control.cursor == shape, (x, y)


def test_moves_over_everything_with_everything_do_no_harm():
    host = shown(POINT, [SPOT])
    for mode in (NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 101, 200, 210, 220, 250, 260, 300):
        host.control.RunMode = mode
        for flags in range(16):
            for x, y in ((-1, -1), (2**31 - 1, -2**31), (0, 0), (-2**31, 2**31 - 1)):
                move(host, x, y, flags)
    host.control.RunMode = NORMAL
    click(host, *SPOT)
    assert selected(host) == [1]
