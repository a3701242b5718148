"""The corner cases of the edit tools as an operator meets them: with every button up, every move, and both families of names."""

import pytest
from edit_rig import (ADD, BOTH, EMPTY, END, SPOT, SQUARE, START, STROKE, begin, cancelled, clean, editable, figures, mode,
                      numbers, rubber, shape, tag_and_active, told)
from input_rig import COPY, DELETE_POINT, HINT_TIMER, MOVE, MOVE_POINT, NORMAL, PAN, click, double_click, listening, move, timers
from map_rig import LINE, POINT, POLYGON, drain, verbs


def go(host, x, y):
    """Moves the cursor to a place and clicks."""
    move(host, x, y)
    click(host, x, y)


@BOTH
def test_adding_on_a_point_layer_takes_one_click_and_tells_minus_1_and_0_and_then_the_new_id_with_count_0(newer):
    host = editable(POINT, SPOT, newer=newer)
    begin(host, ADD)
    heard = listening(host)
    go(host, 500, 400)
    assert told(heard) == [(START, "A", 1, -1, 0, 100), (END, "A", 1, 2, 0, 100)]
    assert mode(host) == NORMAL and shape(host, 2) == [(500, 400)]


@BOTH
def test_adding_a_polygon_by_three_clicks_and_a_double_click_gives_four_points_and_tells_3(newer):
    host = editable(POLYGON, newer=newer)
    begin(host, ADD)
    heard = listening(host)
    go(host, 100, 100)
    go(host, 300, 100)
    move(host, 300, 300)
    double_click(host, 300, 300)
    assert told(heard) == [(START, "A", 1, -1, 0, 100), (END, "A", 1, 1, 3, 100)]
    stored = shape(host)
    assert stored == [(100, 100), (300, 100), (300, 300), (100, 100)] and stored[3] == stored[0]
    assert tag_and_active(host) == (0, True)


@BOTH
@pytest.mark.parametrize("before", [NORMAL, PAN, 50])
def test_adding_under_a_number_in_use_is_refused_and_the_mode_stays(newer, before):
    host = editable(LINE, STROKE, newer=newer)
    host.control.RunMode = before
    assert host.DigDatEditor("A", 1, 1, ADD) == -1
    assert mode(host) == before and figures(host) == []


@BOTH
@pytest.mark.parametrize("kind, points", [(LINE, [(100, 100), (300, 100)]),
                                          (POLYGON, [(100, 100), (300, 100), (300, 300), (100, 100)])])
def test_point_delete_on_a_line_of_two_points_or_a_closed_triangle_selects_the_vertex_and_removes_nothing(newer, kind, points):
    host = editable(kind, points, newer=newer)
    begin(host, DELETE_POINT, code="")
    go(host, *((200, 100) if kind == LINE else (250, 150)))
    heard = listening(host)
    for at in points:
        go(host, *at)
    assert told(heard) == [] and rubber(host) == points and mode(host) == DELETE_POINT


@BOTH
def test_point_delete_ended_with_nothing_removed_tells_count_0_and_999(newer):
    host = editable(POLYGON, SQUARE, newer=newer)
    begin(host, DELETE_POINT, code="")
    go(host, 200, 200)
    heard = listening(host)
    go(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 1, 0, 999)] and clean(host) and shape(host) == SQUARE


@BOTH
def test_point_move_of_vertex_0_of_a_polygon_moves_the_closing_point_too(newer):
    host = editable(POLYGON, SQUARE, newer=newer)
    begin(host, MOVE_POINT, code="")
    go(host, 200, 200)
    go(host, 100, 100)
    go(host, 60, 50)
    go(host, *EMPTY)
    assert shape(host) == [(60, 50), *SQUARE[1:4], (60, 50)] and clean(host)


@BOTH
@pytest.mark.parametrize("turn", [30.0, 90.0, -45.0, 180.0])
def test_a_move_in_a_turned_view_goes_by_pixels_of_the_unturned_view_and_not_along_the_screen(newer, turn):
    host = editable(LINE, STROKE, newer=newer)
    host.control.Rotate = turn
    host.MapJumpToXY(200.0, -200.0)
    view_x, view_y = host.GetScreenPosX(0), host.GetScreenPosY(0)
    assert host.GetScreenPosX(30) - view_x == pytest.approx(30) and host.GetScreenPosY(70) - view_y == pytest.approx(-70)
    x, y = pixel_of(host, 200, 100)
    begin(host, MOVE, code="")
    heard = listening(host)
    go(host, x, y)
    assert [name for name, *_ in told(heard)] == [START]
    go(host, x + 30, y + 70)
    for (ax, ay), (bx, by) in zip(STROKE, shape(host)):
        assert (bx, by) == (pytest.approx(ax + 30), pytest.approx(ay + 70))


def pixel_of(host, x, y):
    """The pixel that a turned view shows map point (x, -y) at, found by a figure drawn there."""
    host.MakeOrgDatEx(POINT, 1, 0, 0)
    host.AddOrgPnt(1, float(x), -float(y))
    drain(host)
    host.RDMReDraw()
    corners = verbs(host, "top", "Polygon")[0].values[0]
    host.DelOrgDataEx(1)
    return (corners[0][0] + corners[2][0]) // 2, (corners[0][1] + corners[2][1]) // 2


@BOTH
def test_escape_in_mode_260_removes_the_copy_and_tells_999(newer):
    host = editable(LINE, STROKE, newer=newer)
    begin(host, COPY, code="")
    go(host, 200, 100)
    move(host, 400, 400)
    assert numbers(host) == [1, 2]
    heard = listening(host)
    host.control.key(27)
    assert told(heard) == [(END, "A", 1, 2, 0, 999)] and numbers(host) == [1] and clean(host)


@BOTH
def test_a_tool_started_over_another_leaves_that_item_invisible_until_the_host_resets_it(newer):
    host = editable(LINE, STROKE, [(100, 500), (300, 500)], newer=newer)
    begin(host, MOVE_POINT, code="")
    go(host, 200, 100)
    begin(host, MOVE, code="")
    go(host, 200, 500)
    go(host, 200, 520)
    assert clean(host) and tag_and_active(host, 1)[0] == -1
    host.RDMReDraw()
    assert lines_drawn(host) == [((100, 520), (300, 520))]
    assert host.control.SetDigDatInfoEx("A", 1, 1, 0, False) == 1
    assert lines_drawn(host) == [tuple(STROKE), ((100, 520), (300, 520))]


def lines_drawn(host):
    drain(host)
    host.RDMReDraw()
    return [each.values[0] for each in verbs(host, "base", "Polyline")]


@pytest.mark.parametrize("tool", [MOVE_POINT, 210, DELETE_POINT, MOVE, COPY, 300, ADD])
def test_a_rest_in_a_tool_shows_no_hint_and_one_behind_it_does(tool):
    host = editable(LINE, STROKE)
    begin(host, tool)
    heard = listening(host)
    host.control.clock, host.control.cursor_pos = 10.0, (200, 100)
    move(host, 200, 100)
    host.control.clock = 15.0
    host.control.tick(HINT_TIMER)
    assert HINT_TIMER not in timers(host) and "OnHintStart" not in [name for name, *_ in heard]
    cancelled(host)
    move(host, 201, 100)
    move(host, 200, 100)
    host.control.clock = 20.0
    host.control.tick(HINT_TIMER)
    assert "OnHintStart" in [name for name, *_ in heard]
