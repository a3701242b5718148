"""The point add tool: the rubber band to the nearest segment, the points that clicks insert, the double click that ends it."""

import pytest
from edit_rig import (BOTH, DISC, EACH_KIND, EMPTY, END, KINDS, OVAL, SPOT, SQUARE, START, STROKE, begin, cancelled, clean,
                      editable, figures, finish, heights, marked, mode, one, pick, picked, rubber, shape, tag_and_active, told)
from input_rig import ADD_POINT, CTRL, LEFT, NORMAL, SHIFT, drawn_after, listening, move, press, relaid, release
from map_rig import (CIRCLE, ELLIPSE, HEIGHT, LINE, POINT, POLYGON, SRCCOPY, WIDTH, bit_blts, block, bounds, composed, drawn_by,
                     item, named)

WIPE = (1, 1, WIDTH - 1, HEIGHT - 1, "top", 1, 1, SRCCOPY)
RINGS = [(100, 100), (500, 100), (500, 500), (100, 500), (100, 100), (200, 200), (400, 200), (400, 400), (200, 400), (200, 200)]


def loaded(points=STROKE, kind=LINE, **settings):
    host = editable(kind, points, **settings)
    begin(host, ADD_POINT, 1)
    return host


def band(host, x, y, flags=0):
    """The rubber band that a move brings."""
    (line,) = named(drawn_after(host, lambda: move(host, x, y, flags)), "Polyline", "window")
    return line.values[0]


def inserted(points, at, kind=LINE):
    """Where in an item a click behind a move puts its point."""
    host = loaded(points, kind)
    move(host, *at)
    press(host, *at)
    assert [each for i, each in enumerate(rubber(host)) if i != rubber(host).index(at)] == points
    return rubber(host).index(at)


# --- The pick ----------------------------------------------------------------------------------------------------------------


@BOTH
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_a_pick_tells_the_start_as_the_point_move_tool_does_and_loads(newer, kind):
    host, at = one(kind, newer)
    heard = listening(host)
    drawn = drawn_after(host, lambda: pick(host, ADD_POINT, at))
    assert told(heard) == [(START, "A", 1, 1, len(KINDS[kind][0]), 200)]
    assert composed(drawn) and mode(host) == ADD_POINT and rubber(host) == KINDS[kind][0]
    assert tag_and_active(host) == (-1, True) and host.control.ActivePointType == 1


@pytest.mark.parametrize("kind", [POINT, CIRCLE, ELLIPSE])
def test_a_pick_of_a_point_a_circle_or_an_ellipse_changes_the_active_flag_alone(kind):
    host, at = one(kind)
    heard = listening(host)
    pick(host, ADD_POINT, at)
    assert told(heard) == [] and figures(host) == [] and mode(host) == ADD_POINT
    assert tag_and_active(host) == (0, True)


@pytest.mark.parametrize("kind, points, count", [(POINT, SPOT, 1), (CIRCLE, DISC, 1), (ELLIPSE, OVAL, 2)])
def test_a_named_point_circle_or_ellipse_is_loaded_and_takes_no_points(kind, points, count):
    host = loaded(points, kind)
    for at in (EMPTY, points[0][:2], (250, 150)):
        move(host, *at)
        press(host, *at)
    assert len(rubber(host)) == count and mode(host) == ADD_POINT
    heard = listening(host)
    finish(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 1, count, 210)] and clean(host)
    assert len(shape(host)) == len(points)


# --- The rubber band ---------------------------------------------------------------------------------------------------------


def test_a_move_wipes_the_last_band_and_draws_a_dotted_black_line_over_the_cursor_on_the_window_alone():
    host = loaded()
    drawn = drawn_after(host, lambda: move(host, 280, 104))
    assert {each.context for each in drawn} <= {"window", None}
    assert bit_blts(drawn, "window") == [WIPE]
    (line,) = drawn_by(drawn, "Polyline", "window")
    assert line.verb.values[0] == ((300, 100), (280, 104), (100, 100)) and line.pen == (2, 1, 0)
    order = [each.name for each in drawn]
    assert order.index("BitBlt") < order.index("Polyline")


@pytest.mark.parametrize("at, ends", [
    ((280, 104), ((300, 100), (100, 100))), ((304, 130), ((300, 100), (300, 300))), ((304, 270), ((300, 300), (300, 100))),
    ((280, 296), ((300, 300), (100, 300))), ((110, 104), ((100, 100), (100, 100))), ((110, 296), ((100, 300), (100, 300)))])
def test_the_band_runs_from_the_nearest_vertex_to_the_neighbour_whose_segment_is_nearer(at, ends):
    first, second = ends
    assert band(loaded(), *at) == (first, at, second), "an end of a line is its own neighbour"


@pytest.mark.parametrize("at, ends", [
    ((104, 130), ((100, 100), (100, 300))), ((130, 104), ((100, 100), (300, 100))), ((104, 270), ((100, 300), (100, 100)))])
def test_in_a_ring_the_band_goes_round_the_closing_point(at, ends):
    first, second = ends
    assert band(loaded(SQUARE, POLYGON), *at) == (first, at, second)


def test_a_band_in_a_second_ring_stays_in_that_ring():
    assert band(loaded(RINGS, POLYGON), 204, 230) == ((200, 200), (204, 230), (200, 400))


def test_ctrl_keeps_the_band_on_its_segment_while_the_cursor_goes_away():
    host = loaded()
    assert band(host, 280, 104) == ((300, 100), (280, 104), (100, 100))
    assert band(host, 280, 296, CTRL) == ((300, 100), (280, 296), (100, 100))
    assert band(host, 280, 296, CTRL | SHIFT) == ((300, 100), (280, 296), (100, 100)), "the bit is what counts"
    assert band(host, 280, 296, SHIFT) == ((300, 300), (280, 296), (100, 300))


def test_the_band_is_placed_without_turn_or_stretch_of_the_view():
    for name, value in (("Rotate", 30.0), ("ScaleX", 2.0), ("ScaleY", 0.5)):
        host = loaded()
        setattr(host.control, name, value)
        assert band(host, 280, 104) == ((300, 100), (280, 104), (100, 100)), name


def test_the_ends_of_the_band_are_cut_to_whole_pixels_without_rounding():
    host = loaded()
    host.MapJumpToXY(400.5, -300.5)
    assert band(host, 280, 104) == ((299, 99), (280, 104), (99, 99))


def test_no_band_before_the_pick_nor_in_other_tools():
    host = editable(LINE, STROKE)
    begin(host, ADD_POINT, code="")
    assert drawn_after(host, lambda: move(host, 280, 104)) == []
    begin(host, 220, 1)
    assert named(drawn_after(host, lambda: move(host, 280, 104)), "Polyline") == []


def test_an_item_of_one_point_has_no_band():
    host = loaded([(100, 100)])
    assert named(drawn_after(host, lambda: move(host, 280, 104)), "Polyline") == []
    press(host, 280, 104)
    assert rubber(host) == [(100, 100)], "and takes no point"


def test_a_wheel_step_draws_the_band_anew_at_the_cursor():
    host = loaded()
    move(host, 280, 104)
    drawn = drawn_after(host, lambda: host.control.wheel(0, -120, 280, 104))
    lines = named(drawn, "Polyline", "window")
    assert composed(drawn) and len(lines) == 1 and lines[0].values[0][1] == (280, 104)


# --- Inserting ---------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("at, position", [((110, 104), 0), ((280, 104), 1), ((304, 130), 2), ((304, 270), 2), ((280, 296), 3),
                                          ((110, 296), 4)])
def test_a_click_on_a_line_inserts_beside_the_nearest_vertex_and_extends_the_line_at_its_ends(at, position):
    assert inserted(STROKE, at) == position


@pytest.mark.parametrize("at, position", [((110, 104), 0), ((190, 104), 0), ((210, 104), 2), ((290, 104), 2)])
def test_a_line_of_two_points_can_only_be_extended(at, position):
    assert inserted([(100, 100), (300, 100)], at) == position


@pytest.mark.parametrize("at, position", [((130, 104), 1), ((104, 130), 4), ((280, 104), 1), ((304, 130), 2), ((104, 270), 4)])
def test_a_click_on_a_ring_inserts_on_the_nearest_side_and_keeps_it_closed(at, position):
    assert inserted(SQUARE, at, POLYGON) == position


@pytest.mark.parametrize("at, position", [((230, 204), 6), ((204, 230), 9), ((104, 130), 4), ((130, 104), 1)])
def test_each_ring_of_a_polygon_takes_its_own_points(at, position):
    assert inserted(RINGS, at, POLYGON) == position


def test_a_click_lays_the_figures_anew_and_tells_nothing():
    host = loaded()
    move(host, 280, 104)
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, 280, 104))
    assert relaid(drawn) and told(heard) == [] and mode(host) == ADD_POINT
    assert shape(host) == STROKE, "the item waits for the end"


def test_a_click_inserts_where_the_last_move_found_the_segment_and_not_where_it_is():
    host = loaded()
    move(host, 280, 104)
    move(host, 280, 290, CTRL)
    press(host, 280, 290, CTRL)
    assert rubber(host) == [(100, 100), (280, 290), (300, 100), (300, 300), (100, 300)]


def test_after_a_click_the_segment_is_looked_up_anew_in_the_longer_figure():
    host = loaded()
    move(host, 280, 104)
    press(host, 280, 104)
    press(host, 285, 103)
    assert rubber(host) == [(100, 100), (280, 104), (285, 103), (300, 100), (300, 300), (100, 300)]


# --- The end -----------------------------------------------------------------------------------------------------------------


@BOTH
@pytest.mark.parametrize("keys", [0, CTRL])
def test_a_double_click_ends_the_tool_also_with_ctrl(newer, keys):
    host = editable(LINE, [(x, y, 6) for x, y in STROKE], newer=newer)
    marked(host, 5)
    pick(host, ADD_POINT, (200, 100))
    for at in ((280, 104), (304, 270)):
        move(host, *at)
        press(host, *at)
    heard = listening(host)
    drawn = drawn_after(host, lambda: finish(host, 304, 270, keys))
    release(host, 304, 270)
    assert told(heard) == [(END, "A", 1, 1, 6, 210)]
    assert shape(host) == [(100, 100), (280, 104), (300, 100), (304, 270), (300, 300), (100, 300)]
    assert heights(host) == [0] * 6 and tag_and_active(host) == (5, False)
    assert clean(host) and composed(drawn)


@pytest.mark.parametrize("keys", [SHIFT, SHIFT | CTRL])
def test_a_double_click_with_shift_does_not_end_the_tool(keys):
    host = loaded()
    finish(host, *EMPTY, keys)
    assert mode(host) == ADD_POINT and len(figures(host)) == 1


def test_the_double_click_itself_adds_no_point_and_tells_none_on_data():
    host = picked(LINE, ADD_POINT)
    heard = listening(host)
    finish(host, 280, 104)
    release(host, 280, 104)
    assert [name for name, *_ in heard] == [END, "MouseUp"] and shape(host) == STROKE


def test_a_ring_stays_closed():
    host = loaded(SQUARE, POLYGON)
    move(host, 104, 200)
    move(host, 104, 130)
    press(host, 104, 130)
    finish(host, 104, 130)
    assert shape(host) == [(100, 100), (300, 100), (300, 300), (100, 300), (104, 130), (100, 100)]


def test_points_are_written_against_the_origin_of_the_block():
    host = editable(LINE)
    assert host.control.DigMemAlloc2("A", 7, LINE, "", 1, 100, -50)
    host.add_item("A", 7, 1, [(0, 0), (200, 0), (200, -200)])
    begin(host, ADD_POINT, 1, mesh=7)
    move(host, 280, 54)
    press(host, 280, 54)
    finish(host, 280, 54)
    assert [each[:2] for each in item(host, "A", 7, 1)["pnts"]] == [(0, 0), (180, -4), (200, 0), (200, -200)]


def test_new_points_pass_through_the_origin_and_leave_it_in_the_bounds():
    host = loaded()
    assert bounds(host, "A", 1) == (100, -300, 300, -100)
    move(host, 280, 104)
    press(host, 280, 104)
    finish(host, 280, 104)
    assert bounds(host, "A", 1) == (0, -300, 300, 0)
    assert item(host, "A", 1, 1)["rect"] == (0, -300, 300, 0)


def test_an_end_without_new_points_leaves_the_bounds():
    host = loaded()
    finish(host, *EMPTY)
    assert bounds(host, "A", 1) == (100, -300, 300, -100) and shape(host) == STROKE


def test_a_double_click_before_a_pick_ends_the_tool_too():
    host = editable(LINE, STROKE)
    begin(host, ADD_POINT, code="")
    heard = listening(host)
    finish(host, *EMPTY)
    ((name, *_, count, edit_type),) = told(heard)
    assert (name, count, edit_type) == (END, 0, 210) and clean(host)
    assert shape(host) == STROKE


def test_a_cancel_drops_the_points_added():
    host = loaded([(x, y, 6) for x, y in STROKE])
    move(host, 280, 104)
    press(host, 280, 104)
    cancelled(host)
    assert shape(host) == STROKE and heights(host) == [6] * 4 and clean(host) and mode(host) == NORMAL


@EACH_KIND
def test_a_click_in_the_tool_never_ends_it(kind):
    host = loaded(KINDS[kind][0], kind)
    for at in (EMPTY, KINDS[kind][1], (0, 0)):
        move(host, *at, LEFT)
        press(host, *at)
        release(host, *at)
    assert mode(host) == ADD_POINT and block(host, "A", 1)["datCnt"] == 1
