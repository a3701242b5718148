"""Scrolling by hand: the pan with the left button, the drift toward the cursor with the right one, wheel and keys."""

import pytest
from input_rig import (ALL_CLICKS, ARROW, CTRL, DELETE_KEY, ESCAPE, HINT_TIMER, LEFT, NORMAL, PAN, PAN_HAND, PAN_TIMER, RIGHT,
                       SCROLL_HAND, SCROLL_TIMER, SHIFT, SHIFT_CLICKS, at_scale, click, drawn_after, listening, move, names, own,
                       press, relaid, release, selected, shown, taken, tick, timers, where)
from map_rig import (HEIGHT, PIXEL_ZOOM, POINT, WIDTH, composed, drain, dump, named, one_to_one, pix_to_world_f, scrolled_to,
                     verbs, view)

MIDDLE = (WIDTH // 2, HEIGHT // 2)


def right_press(host, x, y, flags=RIGHT):
    host.control.mouse("rdown", flags, x, y)


def right_release(host, x, y):
    host.control.mouse("rup", 0, x, y)


def drifting(x=500, y=400):
    """A host whose right button went down at a position, where the cursor is."""
    host = one_to_one()
    host.control.ScrollMode = 10
    host.control.cursor_pos = (x, y)
    right_press(host, x, y)
    drain(host)
    return host


def panning(x=300, y=300):
    """A host whose left button went down at a position, where the cursor is."""
    host = one_to_one()
    host.control.RunMode = PAN
    host.control.cursor_pos = (x, y)
    press(host, x, y)
    drain(host)
    return host


# --- The drift with the right button -------------------------------------------------------------------------------------------


def test_with_scroll_mode_10_the_right_button_starts_a_scroll_and_its_timer():
    host = one_to_one()
    host.control.ScrollMode = 10
    heard = listening(host)
    right_press(host, 500, 400)
    assert timers(host) == {SCROLL_TIMER: 30} and view(host, "ScrollActive") == 1
    assert (view(host, "LastMouseX"), view(host, "LastMouseY")) == (500, 400)
    assert host.control.cursor == SCROLL_HAND
    assert heard == [("MouseDown", 2, 0, 500, 400)]


@pytest.mark.parametrize("mode", [0, 1, 9, 11, -10, 20])
def test_with_any_other_scroll_mode_the_right_button_is_only_told(mode):
    host = one_to_one()
    host.control.ScrollMode = mode
    heard = listening(host)
    drain(host)
    right_press(host, 500, 400)
    assert timers(host) == {} and view(host, "ScrollActive") == 0 and host.control.cursor == ARROW
    right_release(host, 500, 400)
    assert names(heard) == ["MouseDown", "MouseUp"] and verbs(host) == []


def test_the_right_button_up_ends_the_scroll_with_a_repaint_of_the_map_and_an_arrow():
    host = drifting()
    tick(host, SCROLL_TIMER)
    heard = listening(host)
    drawn = drawn_after(host, lambda: right_release(host, 500, 400))
    assert timers(host) == {} and view(host, "ScrollActive") == 0 and host.control.cursor == ARROW
    assert composed(drawn) and heard == [("MouseUp", 2, 0, 500, 400)]


def test_the_right_button_up_repaints_before_it_is_told():
    host = drifting()
    seen = []
    host.control.connect("MouseUp", lambda *args: seen.append(composed(verbs(host))))
    right_release(host, 500, 400)
    assert seen == [True]


def test_the_right_button_up_repaints_with_scroll_mode_10_even_if_nothing_was_scrolled():
    host = one_to_one()
    host.control.ScrollMode = 10
    assert composed(drawn_after(host, lambda: right_release(host, 5, 5)))


def test_a_scroll_mode_changed_on_the_way_leaves_the_scroll_running():
    host = drifting()
    host.control.ScrollMode = 0
    right_release(host, 500, 400)
    assert timers(host) == {SCROLL_TIMER: 30} and view(host, "ScrollActive") == 1


@pytest.mark.parametrize("x, y, dx, dy", [(500, 400, 10, 10), (600, 300, 20, 0), (400, 500, 0, 20), (700, 340, 30, 4)])
def test_a_tick_moves_the_view_by_a_tenth_of_the_way_from_the_middle_to_the_cursor(x, y, dx, dy):
    host = drifting(x, y)
    tick(host, SCROLL_TIMER)
    assert where(host) == (dx, dy)
    tick(host, SCROLL_TIMER, 3)
    assert where(host) == (4 * dx, 4 * dy)


def test_a_tick_to_the_left_and_upward_moves_by_the_pixels_that_the_picture_shows():
    host = drifting(300, 100)
    tick(host, SCROLL_TIMER)
    assert where(host) == (scrolled_to(0, -10), scrolled_to(0, -20))


def test_a_tick_at_the_middle_stands_still_and_repaints_the_map():
    host = drifting(*MIDDLE)
    assert composed(drawn_after(host, lambda: tick(host, SCROLL_TIMER)))
    assert where(host) == (0, 0)


def test_a_tick_of_a_moving_scroll_shifts_the_picture():
    host = drifting()
    drawn = drawn_after(host, lambda: tick(host, SCROLL_TIMER))
    assert [each.values[:2] for each in named(drawn, "ScrollDC", "top")] == [(-10, -10)] and not composed(drawn)


def test_moves_of_the_right_button_steer_the_scroll():
    host = drifting()
    heard = listening(host)
    move(host, 600, 300, RIGHT)
    tick(host, SCROLL_TIMER)
    assert where(host) == (20, 0) and heard == []


@pytest.mark.parametrize("flags", [0, LEFT, RIGHT | SHIFT, LEFT | RIGHT, RIGHT | CTRL])
def test_moves_with_another_flag_word_do_not_steer_the_scroll(flags):
    host = drifting()
    host.control.RunMode = 7
    move(host, 600, 300, flags)
    tick(host, SCROLL_TIMER)
    assert where(host) == (10, 10)


@pytest.mark.parametrize("x, y", [(WIDTH, 300), (400, HEIGHT), (-1, 300), (400, -1), (5000, 5000)])
def test_a_cursor_out_of_the_window_stops_the_scroll_at_the_next_tick_and_the_later_button_up_still_repaints(x, y):
    host = drifting()
    host.control.cursor_pos = (x, y)
    drawn = drawn_after(host, lambda: tick(host, SCROLL_TIMER))
    assert drawn == [] and where(host) == (0, 0)
    assert timers(host) == {} and view(host, "ScrollActive") == 0 and host.control.cursor == ARROW
    assert composed(drawn_after(host, lambda: right_release(host, 500, 400)))


@pytest.mark.parametrize("x, y", [(WIDTH - 1, 300), (400, HEIGHT - 1), (0, 300), (400, 0)])
def test_the_last_pixels_of_the_window_are_within(x, y):
    host = drifting()
    host.control.cursor_pos = (x, y)
    tick(host, SCROLL_TIMER)
    assert where(host) == (10, 10) and timers(host) == {SCROLL_TIMER: 30}


def test_a_second_right_button_down_during_a_scroll_changes_nothing_of_it():
    host = drifting()
    right_press(host, 600, 300)
    assert (view(host, "LastMouseX"), view(host, "LastMouseY")) == (500, 400)


# --- The pan with the left button ----------------------------------------------------------------------------------------------


def test_in_the_pan_mode_the_left_button_starts_a_pan_and_its_timer():
    host = one_to_one()
    host.control.RunMode = PAN
    heard = listening(host)
    press(host, 300, 200)
    assert timers(host) == {PAN_TIMER: 100} and view(host, "ScrollActive") == 1
    assert (view(host, "LastMouseX"), view(host, "LastMouseY")) == (300, 200)
    assert host.control.cursor == PAN_HAND
    assert heard == [("MouseDown", 1, 0, 300, 200)]


def test_the_left_button_up_ends_the_pan_with_a_repaint_of_the_map_and_an_arrow_and_selects_nothing():
    host = shown(POINT, [(300, 300)])
    host.control.RunMode = PAN
    press(host, 300, 300)
    heard = listening(host)
    drawn = drawn_after(host, lambda: release(host, 300, 300))
    assert timers(host) == {} and view(host, "ScrollActive") == 0 and host.control.cursor == ARROW
    assert composed(drawn) and heard == [("MouseUp", 1, 0, 300, 300)] and selected(host) == []
    assert host.control.RunMode == PAN


def test_a_tick_of_the_pan_moves_the_map_with_the_cursor():
    host = panning()
    host.control.cursor_pos = (280, 260)
    tick(host, PAN_TIMER)
    assert where(host) == (20, 40)
    assert (view(host, "LastMouseX"), view(host, "LastMouseY")) == (280, 260)
    host.control.cursor_pos = (250, 250)
    tick(host, PAN_TIMER)
    assert where(host) == (50, 50)


def test_a_pan_to_the_right_and_downward_moves_by_the_pixels_that_the_picture_shows():
    host = panning()
    host.control.cursor_pos = (320, 330)
    tick(host, PAN_TIMER)
    assert where(host) == (scrolled_to(0, -20), scrolled_to(0, -30))


def test_a_tick_of_the_pan_with_the_cursor_at_rest_draws_nothing():
    host = panning()
    assert drawn_after(host, lambda: tick(host, PAN_TIMER, 3)) == [] and where(host) == (0, 0)


def test_moves_during_a_pan_leave_the_anchor_alone():
    host = panning()
    move(host, 280, 260, LEFT)
    host.control.cursor_pos = (280, 260)
    tick(host, PAN_TIMER)
    assert where(host) == (20, 40)


def test_a_pan_dragged_out_of_the_window_goes_on_after_its_return_with_moves_told_meanwhile():
    host = panning()
    host.control.cursor_pos = (WIDTH, 300)
    assert drawn_after(host, lambda: tick(host, PAN_TIMER)) == []
    assert timers(host) == {PAN_TIMER: 100} and view(host, "ScrollActive") == 0 and host.control.cursor == ARROW
    heard = listening(host)
    move(host, 790, 300, LEFT)
    assert heard == [("MouseMove", 1, 0, 790, 300)]
    host.control.cursor_pos = (290, 300)
    tick(host, PAN_TIMER)
    assert where(host) == (10, 0) and view(host, "ScrollActive") == 0
    release(host, 290, 300)
    assert timers(host) == {}


def test_a_pan_that_leaves_the_window_kills_the_other_scroll_s_timer_and_not_its_own():
    host = drifting()
    host.control.RunMode = PAN
    press(host, 300, 300)
    assert timers(host) == {SCROLL_TIMER: 30, PAN_TIMER: 100}
    host.control.cursor_pos = (-1, -1)
    tick(host, PAN_TIMER)
    assert timers(host) == {PAN_TIMER: 100}


def test_a_right_button_down_during_a_pan_starts_no_second_scroll():
    host = panning()
    host.control.ScrollMode = 10
    right_press(host, 500, 400)
    assert timers(host) == {PAN_TIMER: 100}
    assert (view(host, "LastMouseX"), view(host, "LastMouseY")) == (300, 300) and host.control.cursor == PAN_HAND


def test_a_run_mode_changed_during_a_pan_leaves_the_timer_running():
    host = panning()
    host.control.RunMode = NORMAL
    release(host, 300, 300)
    assert timers(host) == {PAN_TIMER: 100} and view(host, "ScrollActive") == 1


def test_the_button_up_that_ends_a_double_click_does_not_end_a_pan():
    host = one_to_one()
    host.control.RunMode = PAN
    host.control.mouse("ldbl", LEFT, 10, 10)
    press(host, 10, 10)
    heard = listening(host)
    assert drawn_after(host, lambda: release(host, 10, 10)) == []
    assert timers(host) == {PAN_TIMER: 100} and heard == [("MouseUp", 1, 0, 10, 10)]


@pytest.mark.parametrize("mode", [NORMAL, 7, 9, 11, SHIFT_CLICKS])
def test_only_mode_10_pans(mode):
    host = one_to_one()
    host.control.RunMode = mode
    press(host, 300, 300)
    assert timers(host) == {} and view(host, "ScrollActive") == 0


def test_init_during_a_scroll_ends_it_for_the_moves():
    host = panning()
    host.init()
    host.control.paint()
    assert view(host, "ScrollActive") == 0
    host.control.cursor_pos = (280, 260)
    tick(host, PAN_TIMER)
    release(host, 280, 260)
    assert timers(host) == {}


# --- The wheel -----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("delta, zoom", [(120, 3023), (1, 3023), (240, 3023), (-120, 4534), (-1, 4534), (0, 4534)])
def test_a_wheel_step_away_zooms_in_by_a_fifth_and_toward_zooms_out_whatever_its_size(delta, zoom):
    host = one_to_one()
    heard = listening(host)
    host.control.modified = False
    drawn = drawn_after(host, lambda: host.control.wheel(0, delta, 10, 20))
    assert host.control.Zoom == zoom and heard == [("OnZoomChange", zoom)]
    assert composed(drawn) and host.control.modified is True


def test_the_zoom_is_told_before_the_repaint():
    host = one_to_one()
    seen = []
    host.control.connect("OnZoomChange", lambda zoom: seen.append(composed(verbs(host))))
    drain(host)
    host.control.wheel(0, 120, 10, 20)
    assert seen == [False] and composed(verbs(host))


def test_the_wheel_keeps_the_middle_of_the_window_at_its_place():
    host = one_to_one()
    host.control.wheel(0, 120, 10, 20)
    w, h = pix_to_world_f(WIDTH, PIXEL_ZOOM), pix_to_world_f(HEIGHT, PIXEL_ZOOM)
    assert where(host) == (0 - (3023 * w / 2.0 / PIXEL_ZOOM - w / 2.0), 0 - (3023 * h / 2.0 / PIXEL_ZOOM - h / 2.0))


@pytest.mark.parametrize("delta, zoom", [(120, 3023), (-120, 4534)])
def test_in_the_cursor_mode_the_wheel_keeps_the_point_under_the_cursor_at_its_place(delta, zoom):
    host = one_to_one()
    host.control.OrvWheelZoomMode(2, 0.2)
    host.control.wheel(0, delta, 100, 250)
    assert host.control.Zoom == zoom
    assert where(host) == (0 - (pix_to_world_f(100, zoom) - 100.0), 0 - (pix_to_world_f(250, zoom) - 250.0))
    assert host.control.OrvGetScreenPosX(100) == pytest.approx(100) and host.control.OrvGetScreenPosY(250) == pytest.approx(-250)


def test_a_wheel_step_at_zoom_1_gives_2_and_back_stays_1():
    host = one_to_one()
    host.control.Zoom = 1
    heard = listening(host)
    host.control.wheel(0, -120, 10, 20)
    assert host.control.Zoom == 2
    host.control.wheel(0, 120, 10, 20)
    assert host.control.Zoom == 1
    host.control.wheel(0, 120, 10, 20)
    assert host.control.Zoom == 1
    assert heard == [("OnZoomChange", 2), ("OnZoomChange", 1), ("OnZoomChange", 1)]


@pytest.mark.parametrize("rate, zoom, delta, after", [(0.01, 50, -1, 51), (0.01, 99, -1, 100), (0.01, 100, -1, 101),
                                                      (0.2, 4, -1, 5), (0.5, 3, -1, 4), (0.5, 3, 1, 1), (0.01, 50, 1, 49)])
def test_a_small_zoom_still_moves(rate, zoom, delta, after):
    host = one_to_one()
    host.control.OrvWheelZoomMode(1, rate)
    host.control.Zoom = zoom
    host.control.wheel(0, delta, 10, 20)
    assert host.control.Zoom == after


@pytest.mark.parametrize("mode", [1, 2])
def test_the_wheel_stops_at_the_greatest_zoom(mode):
    host = one_to_one()
    host.control.OrvWheelZoomMode(mode, 0.2)
    host.control.Zoom = 49999999
    heard = listening(host)
    host.control.wheel(0, -120, 10, 20)
    assert host.control.Zoom == 50000000 and heard == [("OnZoomChange", 50000000)]


def test_the_wheel_does_not_look_at_the_area_limits():
    host = one_to_one()
    for _ in range(20):
        host.control.wheel(0, -120, 10, 20)
    assert where(host)[0] < -10000


@pytest.mark.parametrize("off", ["map drawing", "wheel"])
def test_the_wheel_does_nothing_while_drawing_or_the_wheel_is_switched_off(off):
    host = one_to_one()
    if off == "wheel":
        host.control.OrvWheelZoomMode(0, 0.2)
    else:
        host.control.MapDraw = False
    heard = listening(host)
    before = dump(host)
    host.control.wheel(0, 120, 10, 20)
    assert heard == [] and dump(host) == before and verbs(host) == []


@pytest.mark.parametrize("mode", [NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 7, 101, 200, 300])
def test_the_wheel_turns_in_every_mode(mode):
    host = one_to_one()
    host.control.RunMode = mode
    host.control.wheel(0, 120, 10, 20)
    assert host.control.Zoom == 3023


def test_the_wheel_may_turn_anywhere_with_any_keys():
    host = one_to_one()
    for mode in (1, 2):
        host.control.OrvWheelZoomMode(mode, 0.2)
        for x, y in ((-2**31, 2**31 - 1), (2**31 - 1, -2**31)):
            for flags, delta in ((15, 2**31 - 1), (0, -2**31), (3, 0)):
                host.control.wheel(flags, delta, x, y)
    assert 1 <= host.control.Zoom <= 50000000


# --- Keys ----------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("mode", [NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 7, 101, 210, 220, 250, 260, 300])
def test_the_delete_key_lays_the_figures_anew_in_any_mode_and_changes_nothing(mode):
    host = shown(POINT, [(100, 100)])
    click(host, 100, 100)
    host.control.RunMode = mode
    heard = listening(host)
    before = dump(host)
    assert relaid(drawn_after(host, lambda: host.control.key(DELETE_KEY)))
    assert heard == [] and dump(host) == before


@pytest.mark.parametrize("mode", [NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 7, 100, 299])
def test_the_escape_key_repaints_the_map_in_a_mode_that_is_no_tool_and_changes_nothing_else(mode):
    host = shown(POINT, [(100, 100)])
    click(host, 100, 100)
    host.control.RunMode = mode
    heard = listening(host)
    assert composed(drawn_after(host, lambda: host.control.key(ESCAPE)))
    assert heard == [] and host.control.RunMode == mode and selected(host) == [1]


@pytest.mark.parametrize("key", [0, 8, 13, 32, 26, 28, 45, 47, 65, 112, 255, 2**31 - 1])
def test_other_keys_do_nothing(key):
    host = shown(POINT, [(100, 100)])
    heard = listening(host)
    before = dump(host)
    assert drawn_after(host, lambda: host.control.key(key)) == []
    assert heard == [] and dump(host) == before


def test_a_tick_of_a_timer_that_does_not_run_does_nothing():
    host = at_scale()
    heard = listening(host)
    before = dump(host)
    for number in (SCROLL_TIMER, HINT_TIMER, 3, PAN_TIMER, 0, 4, 99, -1):
        tick(host, number)
    assert taken(heard) == [] and own(heard) == [] and dump(host) == before and verbs(host) == []
