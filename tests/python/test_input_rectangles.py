"""The rubber rectangle: how it follows the cursor, what its verbs are, and what its end does: a selection or a zoom."""

import pytest
from input_rig import (ALL_CLICKS, CTRL, LEFT, NORMAL, PAN, RECT_TIMER, SHIFT, SHIFT_CLICKS, at_scale, click, drag, drawn_after,
                       listening, move, names, own, press, ready, release, restored, selected, shown, tick, timers, where)
from map_rig import (HEIGHT, PIXEL_ZOOM, POINT, SRCCOPY, WIDTH, bit_blts, composed, drain, drawn_by, named, pix_to_world_f,
                     to_int, verbs, view)

SPOT = (200, 150)
AROUND = ((150, 100), (250, 200))


# --- The rectangle on the screen -----------------------------------------------------------------------------------------------


def test_the_first_move_of_a_left_drag_starts_the_timer_of_the_rectangle_and_draws_nothing_yet():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    assert timers(host) == {}
    assert drawn_after(host, lambda: move(host, 250, 200, LEFT)) == []
    assert timers(host) == {RECT_TIMER: 100}


@pytest.mark.parametrize("start, end", [((150, 100), (250, 200)), ((250, 200), (150, 100)), ((250, 100), (150, 200)),
                                        ((150, 100), (150, 200)), ((150, 100), (-20, 900))])
def test_a_tick_wipes_the_last_rectangle_and_draws_the_new_one_dotted_and_black(start, end):
    host = shown(POINT, [SPOT])
    press(host, *start)
    move(host, *end, LEFT)
    drawn = drawn_after(host, lambda: tick(host, RECT_TIMER))
    assert {each.context for each in drawn} <= {"window", None}, "nothing is drawn into the buffers"
    assert bit_blts(drawn, "window") == [(1, 1, WIDTH - 1, HEIGHT - 1, "top", 1, 1, SRCCOPY)]
    (line,) = drawn_by(drawn, "Polyline", "window")
    (x0, y0), (x1, y1) = start, end
    assert line.verb.values[0] == ((x0, y0), (x0, y1), (x1, y1), (x1, y0), (x0, y0))
    assert line.pen == (2, 1, 0)
    assert line.rop2 is None, "the rectangle is drawn as any line is"
    order = [each.name for each in drawn]
    assert order.index("BitBlt") < order.index("Polyline")
    assert timers(host) == {RECT_TIMER: 100}


def test_the_pen_of_the_window_context_is_put_back_after_the_rectangle():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 250, 200, LEFT)
    drawn = drawn_after(host, lambda: tick(host, RECT_TIMER))
    at = next(i for i, each in enumerate(drawn) if each.name == "Polyline")
    chosen = [each for each in drawn if each.context == "window" and each.name.startswith("Select")]
    assert len(chosen) >= 2 and any(drawn.index(each) > at for each in chosen)


def test_the_rectangle_shows_where_the_cursor_was_at_the_last_move():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    for x in (200, 210, 220):
        move(host, x, 200, LEFT)
    (line,) = named(drawn_after(host, lambda: tick(host, RECT_TIMER)), "Polyline", "window")
    assert line.values[0][2] == (220, 200)
    move(host, 300, 250, LEFT)
    (line,) = named(drawn_after(host, lambda: tick(host, RECT_TIMER)), "Polyline", "window")
    assert line.values[0][2] == (300, 250)


def test_the_rectangle_starts_where_the_button_went_down_and_not_at_the_first_move():
    host = shown(POINT, [SPOT])
    press(host, 150, 100)
    move(host, 400, 400, LEFT)
    release(host, 250, 200)
    assert selected(host) == [1], "from the button down to the button up"


@pytest.mark.parametrize("mode", [1, 7, 100, SHIFT_CLICKS, ALL_CLICKS, PAN])
def test_no_rectangle_of_selection_is_tracked_in_another_mode_than_the_normal_one(mode):
    host = shown(POINT, [SPOT])
    host.control.RunMode = mode
    press(host, *AROUND[0])
    move(host, *AROUND[1], LEFT)
    assert RECT_TIMER not in timers(host)
    release(host, *AROUND[1])
    assert selected(host) == []


def test_without_selection_no_rectangle_is_tracked():
    host = shown(POINT, [SPOT], select=False)
    heard = listening(host)
    drag(host, *AROUND)
    assert timers(host) == {} and names(heard) == ["OnDataClick", "MouseDown", "MouseMove", "OnDataClick", "MouseUp"]


def colour_at(host, x, y):
    start = (y * WIDTH + x) * 4
    return tuple(host.control.pixels()[start:start + 3])


def test_the_rectangle_is_seen_moves_with_the_cursor_and_leaves_no_trace():
    host = at_scale(device="qt")
    host.RDMReDraw()
    clean = host.control.pixels()
    press(host, 150, 100)
    for x, y in ((300, 250), (250, 200)):
        move(host, x, y, LEFT)
        tick(host, RECT_TIMER)
        for side in ([(x, each) for each in range(100, y + 1)], [(each, y) for each in range(150, x + 1)]):
            assert any(colour_at(host, *pixel) == (0, 0, 0) for pixel in side)
    assert all(colour_at(host, 300, each) == (255, 255, 255) for each in range(100, 251)), "the one before is wiped"
    move(host, 153, 103, LEFT)
    release(host, 153, 103)
    inner = [slice((y * WIDTH + 1) * 4, (y * WIDTH + WIDTH - 1) * 4) for y in range(1, HEIGHT - 1)]
    restored_picture = host.control.pixels()
    assert [restored_picture[row] for row in inner] == [clean[row] for row in inner]


# --- The selection at its end --------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("start, end", [((150, 100), (250, 200)), ((250, 200), (150, 100)), ((250, 100), (150, 200)),
                                        ((150, 200), (250, 100))])
def test_a_rectangle_may_be_dragged_from_any_corner(start, end):
    host = shown(POINT, [SPOT], [(400, 300)])
    heard = listening(host)
    drain(host)
    drag(host, start, end)
    assert selected(host) == [1] and composed(verbs(host))
    assert names(heard) == ["MouseDown", "MouseUp"], "no event tells of a selection by rectangle"
    assert timers(host) == {} and host.control.RunMode == NORMAL and not host.control.captured


def test_a_rectangle_replaces_the_active_set_and_with_ctrl_adds_to_it():
    host = shown(POINT, [SPOT], [(400, 300)], [(600, 400)])
    click(host, 600, 400)
    drag(host, *AROUND)
    assert selected(host) == [1]
    drag(host, (350, 250), (450, 350), CTRL)
    assert selected(host) == [1, 2]
    drag(host, *AROUND, CTRL)
    assert selected(host) == [1, 2], "adding is no toggling"


@pytest.mark.parametrize("keys", [SHIFT, SHIFT | CTRL])
def test_a_rectangle_adds_only_with_ctrl_alone(keys):
    host = shown(POINT, [SPOT], [(400, 300)])
    click(host, 400, 300)
    drag(host, *AROUND, keys)
    assert selected(host) == [1]


def test_a_rectangle_around_nothing_clears_the_active_set():
    host = shown(POINT, [SPOT])
    click(host, *SPOT)
    drag(host, (400, 400), (500, 500))
    assert selected(host) == []


@pytest.mark.parametrize("dx, dy", [(3, 3), (4, 4), (-4, 4), (0, 1), (4, 0), (-1, -4)])
def test_a_rectangle_of_less_than_5_pixels_selects_nothing_restores_the_picture_and_fires_no_data_click(dx, dy):
    host = shown(POINT, [SPOT], [(400, 300)])
    click(host, 400, 300)
    heard = listening(host)
    drawn = drawn_after(host, lambda: drag(host, SPOT, (SPOT[0] + dx, SPOT[1] + dy)))
    assert restored(drawn)
    assert selected(host) == [2], "the active set stays"
    assert names(heard) == ["MouseDown", "MouseUp"] and timers(host) == {} and not host.control.captured


def test_a_rectangle_that_ends_where_it_began_does_not_even_restore_the_picture():
    host = shown(POINT, [SPOT], [(400, 300)])
    click(host, 400, 300)
    heard = listening(host)
    drain(host)
    press(host, *SPOT)
    move(host, 250, 250, LEFT)
    release(host, *SPOT)
    assert verbs(host) == [] and selected(host) == [2] and timers(host) == {}
    assert own(heard) == []


@pytest.mark.parametrize("dx, dy", [(5, 0), (0, 5), (5, 4), (-5, 1), (1, -5)])
def test_5_pixels_in_either_direction_are_a_rectangle(dx, dy):
    host = shown(POINT, [SPOT], [(400, 300)])
    click(host, 400, 300)
    drag(host, (600, 500), (600 + dx, 500 + dy))
    assert selected(host) == []


def test_after_a_small_rectangle_the_next_click_selects_as_ever():
    host = shown(POINT, [SPOT])
    drag(host, (300, 300), (303, 303))
    click(host, *SPOT)
    assert selected(host) == [1]


def test_a_rectangle_begun_in_the_normal_mode_and_ended_in_another_selects_nothing():
    host = shown(POINT, [SPOT])
    press(host, *AROUND[0])
    move(host, *AROUND[1], LEFT)
    host.control.RunMode = 7
    drain(host)
    release(host, *AROUND[1])
    assert selected(host) == [] and timers(host) == {} and host.control.RunMode == 7 and not composed(verbs(host))


def test_a_rectangle_whose_selection_was_switched_off_on_the_way_only_repaints():
    host = shown(POINT, [SPOT])
    press(host, *AROUND[0])
    move(host, *AROUND[1], LEFT)
    host.control.SetDataSelectMode(False)
    heard = listening(host)
    drain(host)
    release(host, *AROUND[1])
    assert selected(host) == [] and composed(verbs(host)) and names(heard) == ["MouseUp"]


# --- The zoom at its end -------------------------------------------------------------------------------------------------------


def zooming(mode, run_mode=NORMAL, select=True, zoom=PIXEL_ZOOM):
    host = ready(at_scale(zoom), select)
    host.control.RunMode = run_mode
    host.control.OrvRectZoom(mode)
    drain(host)
    return host


@pytest.mark.parametrize("start, end, z", [
    ((100, 100), (500, 250), 400 / 800 * 3779), ((500, 250), (100, 100), 400 / 800 * 3779),
    ((100, 100), (300, 400), 300 / 600 * 3779), ((100, 100), (500, 100), 400 / 800 * 3779),
    ((100, 100), (100, 250), 150 / 600 * 3779)])
def test_a_zoom_in_rectangle_fills_the_window_and_its_corner_becomes_the_window_s(start, end, z):
    host = zooming(10)
    x, y = where(host)
    heard = listening(host)
    drag(host, start, end)
    assert host.control.Zoom == to_int(z)
    assert where(host) == (x + 100, y + 100)
    assert names(heard) == ["MouseDown", "OnZoomChange", "MouseUp"] and heard[1] == ("OnZoomChange", to_int(z))
    assert view(host, "RectZoomMode") == 0 and composed(verbs(host)) and timers(host) == {}


def test_a_zoom_in_rectangle_pays_no_heed_to_rotation_and_area_limits():
    host = zooming(10)
    host.control.Rotate = 45.0
    host.control.AreaLeft, host.control.AreaRight = 5000, 6000
    x, y = where(host)
    drag(host, (100, 100), (500, 250))
    assert where(host) == (x + 100, y + 100)


def test_a_zoom_out_rectangle_shrinks_the_window_into_it_and_tells_the_zoom_twice():
    host = zooming(20)
    heard = listening(host)
    host.control.modified = False
    drag(host, (100, 100), (500, 250))
    z = to_int(600 / 150 * PIXEL_ZOOM)
    assert host.control.Zoom == z
    assert names(heard) == ["MouseDown", "OnZoomChange", "OnZoomChange", "MouseUp"] and own(heard) == [("OnZoomChange", z)] * 2
    left, top = 300 - 400, 175 - 300
    assert where(host) == pytest.approx((left - (z * 800.0 / 2 / PIXEL_ZOOM - 400.0), top - (z * 600.0 / 2 / PIXEL_ZOOM - 300.0)))
    assert view(host, "RectZoomMode") == 0 and composed(verbs(host)) and host.control.modified is True


def test_the_middle_of_a_zoom_out_rectangle_is_taken_in_whole_pixels():
    host = zooming(20)
    drag(host, (100, 100), (505, 255))
    z = to_int(600 / 155 * PIXEL_ZOOM)
    assert where(host) == pytest.approx((302 - 400 - (z * 800.0 / 2 / PIXEL_ZOOM - 400.0),
                                         177 - 300 - (z * 600.0 / 2 / PIXEL_ZOOM - 300.0)))


def test_a_zoom_out_rectangle_switches_the_drawing_of_the_map_on():
    host = zooming(20)
    host.control.MapDraw = False
    drag(host, (100, 100), (500, 250))
    assert host.control.MapDraw is True and composed(verbs(host))


def test_a_zoom_in_rectangle_leaves_the_drawing_of_the_map_switched_off():
    host = zooming(10)
    host.control.MapDraw = False
    drag(host, (100, 100), (500, 250))
    assert host.control.MapDraw is False and host.control.Zoom == to_int(400 / 800 * PIXEL_ZOOM)


def test_a_zoom_out_rectangle_paints_once():
    host = zooming(20)
    drawn = drawn_after(host, lambda: drag(host, (100, 100), (500, 250)))
    whites = [each for each in named(drawn, "PatBlt", "base")]
    assert len(whites) == 1


@pytest.mark.parametrize("mode, zoom, end", [(10, 10, (105, 100)), (10, 1, (500, 300)), (20, 50000000, (500, 250)),
                                             (20, 10000000, (105, 100))])
def test_a_zoom_out_of_range_does_nothing_but_end_the_mode_and_repaint(mode, zoom, end):
    host = zooming(mode, zoom=zoom)
    before = where(host)
    heard = listening(host)
    drag(host, (100, 100), end)
    assert host.control.Zoom == zoom and where(host) == before and own(heard) == []
    assert view(host, "RectZoomMode") == 0 and composed(verbs(host))


@pytest.mark.parametrize("mode", [10, 20])
def test_a_zoom_rectangle_of_less_than_5_pixels_restores_the_picture_and_leaves_its_mode_set(mode):
    host = zooming(mode)
    heard = listening(host)
    drawn = drawn_after(host, lambda: drag(host, (100, 100), (104, 96)))
    assert restored(drawn) and own(heard) == []
    assert view(host, "RectZoomMode") == mode and host.control.Zoom == PIXEL_ZOOM
    drag(host, (100, 100), (500, 250))
    assert view(host, "RectZoomMode") == 0 and host.control.Zoom != PIXEL_ZOOM


@pytest.mark.parametrize("mode", [-1, 1, 15, 77])
def test_an_unknown_zoom_mode_does_nothing_but_end_and_repaint(mode):
    host = zooming(mode)
    heard = listening(host)
    drag(host, (100, 100), (500, 250))
    assert host.control.Zoom == PIXEL_ZOOM and own(heard) == []
    assert view(host, "RectZoomMode") == 0 and composed(verbs(host))


def test_a_zoom_mode_below_0_is_tracked_only_where_a_selection_would_be():
    host = zooming(-1, run_mode=7)
    drag(host, (100, 100), (500, 250))
    assert view(host, "RectZoomMode") == -1 and timers(host) == {}


@pytest.mark.parametrize("run_mode", [NORMAL, 1, 7, 100])
@pytest.mark.parametrize("select", [False, True])
def test_a_zoom_rectangle_works_with_and_without_selection_and_in_unknown_modes_and_keeps_the_mode(run_mode, select):
    host = zooming(10, run_mode, select)
    heard = listening(host)
    drag(host, (100, 100), (500, 250))
    assert host.control.Zoom == to_int(400 / 800 * 3779) and names(heard) == ["MouseDown", "OnZoomChange", "MouseUp"]
    assert host.control.RunMode == run_mode


@pytest.mark.parametrize("run_mode", [PAN, SHIFT_CLICKS, ALL_CLICKS])
def test_a_zoom_rectangle_does_not_begin_in_the_pan_and_figure_modes(run_mode):
    host = zooming(10, run_mode)
    drag(host, (100, 100), (500, 250))
    assert host.control.Zoom == PIXEL_ZOOM and view(host, "RectZoomMode") == 10


@pytest.mark.parametrize("tool", [200, 210, 220, 250, 260, 300])
def test_a_zoom_rectangle_does_not_begin_in_a_tool(tool):
    host = zooming(10)
    assert host.control.DigDatEditor("", 0, 0, tool) == 0
    drag(host, (100, 100), (500, 250))
    assert host.control.Zoom == PIXEL_ZOOM and view(host, "RectZoomMode") == 10 and timers(host) == {}


def test_a_zoom_rectangle_selects_nothing():
    host = shown(POINT, [SPOT], [(400, 300)])
    click(host, 400, 300)
    host.control.OrvRectZoom(10)
    drag(host, *AROUND)
    assert selected(host) == [2]


def test_a_click_while_a_zoom_rectangle_waits_selects_and_leaves_it_waiting():
    host = shown(POINT, [SPOT])
    host.control.OrvRectZoom(10)
    click(host, *SPOT)
    assert selected(host) == [1] and view(host, "RectZoomMode") == 10


def test_keys_held_at_the_end_make_no_difference_to_a_zoom_rectangle():
    host = zooming(10)
    drag(host, (100, 100), (500, 250), CTRL)
    assert host.control.Zoom == to_int(400 / 800 * 3779)


@pytest.mark.parametrize("mode", [10, 20])
def test_rectangles_far_out_of_the_window_do_no_harm(mode):
    host = zooming(mode)
    for start, end in (((-2**31, -2**31), (2**31 - 1, 2**31 - 1)), ((-5, -5), (5000, 5000)), ((2**31 - 1, 0), (-2**31, 0))):
        host.control.OrvRectZoom(mode)
        drag(host, start, end)
        assert 1 <= host.control.Zoom <= 50000000 and view(host, "RectZoomMode") == 0


def test_the_zoom_of_a_rectangle_follows_the_size_of_the_window():
    host = zooming(10)
    host.control.resize(400, 300)
    drag(host, (100, 100), (200, 150))
    assert host.control.Zoom == to_int(pix_to_world_f(100, PIXEL_ZOOM) / pix_to_world_f(400, PIXEL_ZOOM) * PIXEL_ZOOM)
