"""The point delete tool: which points a click removes, how a ring stays closed, and the click off the figure that ends it."""

import pytest
from edit_rig import (BOTH, CANCELLED, DISC, EMPTY, END, KINDS, OVAL, SPOT, SQUARE, START, STROKE, begin, cancelled, clean,
                      editable, figures, heights, marked, mode, one, pick, rubber, shape, tag_and_active, told)
from input_rig import ARROW, CROSS, DELETE_POINT, LEFT, NORMAL, drawn_after, listening, move, press
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, bounds, composed, item
from overlay_rig import figure

TRIANGLE = [(100, 100), (300, 100), (300, 300), (100, 100)]


def loaded(points=STROKE, kind=LINE):
    host = editable(kind, points)
    begin(host, DELETE_POINT, 1)
    return host


@BOTH
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_a_pick_tells_the_start_as_the_point_move_tool_does_and_loads(newer, kind):
    host, at = one(kind, newer)
    heard = listening(host)
    drawn = drawn_after(host, lambda: pick(host, DELETE_POINT, at))
    assert told(heard) == [(START, "A", 1, 1, len(KINDS[kind][0]), 200)]
    assert composed(drawn) and mode(host) == DELETE_POINT and rubber(host) == KINDS[kind][0]
    assert tag_and_active(host) == (-1, True) and host.control.ActivePointType == 1


@pytest.mark.parametrize("kind", [POINT, CIRCLE, ELLIPSE])
def test_a_pick_of_a_point_a_circle_or_an_ellipse_changes_the_active_flag_alone(kind):
    host, at = one(kind)
    heard = listening(host)
    pick(host, DELETE_POINT, at)
    assert told(heard) == [] and figures(host) == [] and mode(host) == DELETE_POINT
    assert tag_and_active(host) == (0, True)


@pytest.mark.parametrize("kind, points", [(POINT, SPOT), (CIRCLE, DISC), (ELLIPSE, OVAL)])
def test_a_named_point_circle_or_ellipse_answers_no_click_on_it_or_off_it(kind, points):
    host = loaded(points, kind)
    heard = listening(host)
    count = len(rubber(host))
    for at in (points[0][:2], EMPTY):
        press(host, *at)
    assert told(heard) == [] and mode(host) == DELETE_POINT and len(rubber(host)) == count
    cancelled(host)
    assert clean(host) and len(shape(host)) == len(points)


# --- Removing ----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("position", range(4))
def test_a_click_on_a_vertex_of_a_line_removes_it_and_composes_the_map(position):
    host = loaded()
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, *STROKE[position]))
    assert composed(drawn) and told(heard) == [] and mode(host) == DELETE_POINT
    assert rubber(host) == STROKE[:position] + STROKE[position + 1:] and shape(host) == STROKE


def test_a_line_keeps_two_points():
    host = loaded()
    for at in STROKE:
        press(host, *at)
    assert rubber(host) == STROKE[2:] and mode(host) == DELETE_POINT


@pytest.mark.parametrize("points, kind", [([(100, 100), (300, 100)], LINE), (TRIANGLE, POLYGON), (TRIANGLE[:3], POLYGON)])
def test_a_figure_at_its_least_keeps_the_vertex_that_is_clicked(points, kind):
    host = loaded(points, kind)
    heard = listening(host)
    press(host, *points[1])
    assert rubber(host) == points and told(heard) == [] and mode(host) == DELETE_POINT
    press(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)] and shape(host) == points


def test_after_a_vertex_that_stays_the_cursor_is_no_longer_looked_after():
    host = loaded([(100, 100), (300, 100)])
    move(host, 300, 100)
    assert host.control.cursor == CROSS
    press(host, 300, 100)
    move(host, *EMPTY)
    assert host.control.cursor == CROSS, "the vertex is still the chosen one"


def test_after_a_vertex_that_went_the_cursor_is_looked_after():
    host = loaded()
    seen = []
    for at in ((300, 100), EMPTY):
        move(host, *at)
        seen.append(host.control.cursor)
    press(host, 300, 100)
    for at in ((300, 300), (300, 100)):
        move(host, *at)
        seen.append(host.control.cursor)
    assert seen == [CROSS, ARROW, CROSS, ARROW]


def test_the_first_vertex_of_a_ring_goes_and_the_second_closes_it():
    host = loaded(SQUARE, POLYGON)
    press(host, 100, 100)
    expected = [(300, 100), (300, 300), (100, 300), (300, 100)]
    assert rubber(host) == expected
    press(host, *EMPTY)
    assert shape(host) == expected


@pytest.mark.parametrize("position", [1, 2, 3])
def test_another_vertex_of_a_ring_goes_alone(position):
    host = loaded(SQUARE, POLYGON)
    press(host, *SQUARE[position])
    press(host, *EMPTY)
    assert shape(host) == SQUARE[:position] + SQUARE[position + 1:]


def test_the_first_vertex_of_a_line_that_comes_back_goes_alone():
    host = loaded(SQUARE, LINE)
    press(host, 100, 100)
    press(host, *EMPTY)
    assert shape(host) == SQUARE[1:]


def test_a_polygon_of_two_rings_may_lose_points_of_either():
    rings = [(100, 100), (500, 100), (500, 500), (100, 100), (300, 150), (400, 150), (400, 250), (300, 150)]
    host = loaded(rings, POLYGON)
    press(host, 300, 150)
    press(host, *EMPTY)
    assert shape(host) == [*rings[:4], (400, 150), (400, 250), (400, 150)]


# --- The end -----------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_click_off_the_figure_writes_the_points_that_are_left(newer):
    host = editable(LINE, [(x, y, 6) for x, y in STROKE], newer=newer)
    marked(host, 5)
    pick(host, DELETE_POINT, (200, 100))
    press(host, 300, 100)
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, *EMPTY))
    assert told(heard) == [(END, "A", 1, 1, 3, 220)]
    assert shape(host) == [(100, 100), (300, 300), (100, 300)] and heights(host) == [0, 0, 0]
    assert tag_and_active(host) == (5, False) and clean(host) and composed(drawn)


def test_an_end_with_nothing_removed_writes_nothing_and_tells_999():
    host = editable(LINE, [(x, y, 6) for x, y in STROKE])
    marked(host, 5)
    pick(host, DELETE_POINT, (200, 100))
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, *EMPTY))
    assert told(heard) == [(END, "A", 1, 1, 0, 999)]
    assert shape(host) == STROKE and heights(host) == [6] * 4, "the heights stay"
    assert tag_and_active(host) == (5, False) and clean(host) and composed(drawn)


def test_the_bounds_stay_as_wide_as_they_were():
    host = loaded()
    press(host, 100, 300)
    press(host, 300, 300)
    press(host, *EMPTY)
    assert shape(host) == STROKE[:2] and bounds(host, "A", 1) == (100, -300, 300, -100)


def test_points_are_written_against_the_origin_of_the_block():
    host = editable(LINE)
    assert host.control.DigMemAlloc2("A", 7, LINE, "", 1, 100, -50)
    host.add_item("A", 7, 1, [(0, 0), (200, 0), (200, -200)])
    begin(host, DELETE_POINT, 1, mesh=7)
    press(host, 100, 50)
    press(host, *EMPTY)
    assert item(host, "A", 7, 1)["pnts"] == [(200, 0, 0), (200, -200, 0)]


def test_another_active_figure_under_the_click_ends_the_tool():
    host = editable(LINE, STROKE)
    figure(host, LINE, [(600, 100), (650, 150)], active=True)
    begin(host, DELETE_POINT, 1)
    press(host, 600, 100)
    assert mode(host) == NORMAL and [each["ID"] for each in figures(host)] == [1]


def test_a_figure_that_the_host_deleted_is_off_every_click():
    host = loaded()
    assert host.DelOrgDataEx(1) == 0
    heard = listening(host)
    press(host, 300, 100)
    assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)] and clean(host) and shape(host) == STROKE


def test_a_double_click_does_not_end_the_tool():
    host = loaded()
    host.control.mouse("ldbl", LEFT, *EMPTY)
    assert mode(host) == DELETE_POINT and len(figures(host)) == 1


@pytest.mark.parametrize("keys", [4, 8, 12])
def test_keys_held_change_nothing(keys):
    host = loaded()
    press(host, 300, 100, keys)
    press(host, *EMPTY, keys)
    assert shape(host) == [(100, 100), (300, 300), (100, 300)] and clean(host)
