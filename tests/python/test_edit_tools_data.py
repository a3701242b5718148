"""The tools on whole items: move, copy and delete."""

import math

import pytest
from edit_rig import (ADD, BOTH, EACH_KIND, EMPTY, END, KINDS, SPOT, SQUARE, START, STROKE, another_layer, begin, cancelled,
                      clean, editable, figures, heights, marked, mode, numbers, one, pick, picked, plain, rubber, shape,
                      tag_and_active, told)
from input_rig import COPY, DELETE, LEFT, MOVE, MOVE_POINT, drawn_after, listening, move, press, relaid, release
from map_rig import CIRCLE, LINE, POINT, POLYGON, block, composed, item
from overlay_rig import is_active, marks, polylines

PIXELS = (30, 70)


def shifted(points, by=PIXELS):
    return [(x + by[0], y + by[1]) for x, y, *_ in points]


def beside(at, by=PIXELS):
    return at[0] + by[0], at[1] + by[1]


def loaded_points(kind):
    points = KINDS[kind][0]
    return [(400, 300), (450, 300)] if kind == CIRCLE else plain(points)


# --- Move --------------------------------------------------------------------------------------------------------------------


@BOTH
@EACH_KIND
def test_click_move_click_shifts_an_item_by_the_way_between_the_clicks(newer, kind):
    host, at = one(kind, newer)
    marked(host, 5)
    heard = listening(host)
    drawn = drawn_after(host, lambda: pick(host, MOVE, at))
    points = KINDS[kind][0]
    assert told(heard) == [(START, "A", 1, 1, len(points), 250)] and composed(drawn)
    assert tag_and_active(host) == (-1, True) and mode(host) == MOVE
    drawn = drawn_after(host, lambda: press(host, *beside(at)))
    assert told(heard) == [(END, "A", 1, 1, len(loaded_points(kind)), 250)]
    assert shape(host) == shifted(points) and tag_and_active(host) == (5, False)
    assert heights(host) == [pytest.approx(50) if kind == CIRCLE else 0] * len(points)
    assert clean(host) and composed(drawn)


@EACH_KIND
def test_the_figure_follows_the_cursor_without_a_button_and_the_item_waits(kind):
    host, at = one(kind)
    pick(host, MOVE, at)
    release(host, *at)
    for by in ((5, 3), (50, -20), PIXELS):
        drawn = drawn_after(host, lambda by=by: move(host, *beside(at, by)))
        assert relaid(drawn) and rubber(host) == shifted(loaded_points(kind), by)
    assert shape(host) == plain(KINDS[kind][0])


@pytest.mark.parametrize("tool", [MOVE, COPY])
def test_the_figure_of_a_whole_item_is_active_and_shows_no_vertex_marks(tool):
    host, at = one(LINE)
    host.control.ActivePointType = 1
    drawn = drawn_after(host, lambda: pick(host, tool, at))
    assert host.control.ActivePointType == 0 and is_active(host, 1)
    assert polylines(drawn) == [tuple(STROKE)] and marks(drawn) == []


@pytest.mark.parametrize("end", [(0, 0), (799, 599), (-50, 700)])
def test_the_second_click_may_fall_anywhere(end):
    host, at = one(LINE)
    pick(host, MOVE, at)
    press(host, *end)
    assert shape(host) == shifted(STROKE, (end[0] - at[0], end[1] - at[1])) and clean(host)


def test_a_second_click_at_the_place_of_the_first_writes_the_item_where_it_was():
    host = editable(LINE, [(x, y, 6) for x, y in STROKE])
    pick(host, MOVE, (200, 100))
    heard = listening(host)
    press(host, 200, 100)
    assert told(heard) == [(END, "A", 1, 1, 4, 250)]
    assert shape(host) == STROKE and heights(host) == [0] * 4, "the heights are gone all the same"


def test_moves_on_the_way_do_not_count_only_the_two_clicks_do():
    host, at = one(LINE)
    pick(host, MOVE, at)
    for place in ((500, 500), (20, 30), (600, 80)):
        move(host, *place, LEFT)
    press(host, *beside(at))
    assert shape(host) == shifted(STROKE)


def test_points_are_moved_against_the_origin_of_the_block():
    host = editable(LINE)
    assert host.control.DigMemAlloc2("A", 7, LINE, "", 1, 100, -50)
    host.add_item("A", 7, 1, [(0, 0), (200, 0)])
    host.RDMReDraw()
    pick(host, MOVE, (200, 50))
    assert rubber(host) == [(100, 50), (300, 50)]
    press(host, 230, 120)
    assert item(host, "A", 7, 1)["pnts"] == [(30, -70, 0), (230, -70, 0)]


def test_a_circle_moves_by_its_centre_and_takes_its_radius_from_the_loaded_rim():
    host, at = one(CIRCLE)
    pick(host, MOVE, at)
    for place in ((410, 320), (500, 100)):
        move(host, *place)
    press(host, 420, 350)
    assert shape(host) == [(420, 350)] and heights(host) == [50]


def test_the_view_may_be_scrolled_between_the_clicks():
    host, at = one(LINE)
    pick(host, MOVE, at)
    host.MapJumpToXY(500.0, -300.0)
    press(host, *at)
    assert shape(host) == shifted(STROKE, (100, 0))


def test_a_named_item_is_moved_by_the_way_from_the_click_that_began_the_move_before():
    host = editable(LINE, STROKE, [(100, 500), (300, 500)])
    pick(host, MOVE, (200, 100))
    press(host, 210, 100)
    begin(host, MOVE, 2)
    move(host, 240, 130)
    assert rubber(host) == [(130, 530), (330, 530)], "from the last place of that move"
    press(host, 250, 140)
    assert shape(host, 2) == shifted([(100, 500), (300, 500)], (50, 40)), "from the first click of that move"


def visible(host, x, y):
    """Where a view turned about the origin shows map point (x, y)."""
    angle = -host.control.Rotate * 0.01745328
    x, y = x, -y
    return round(math.cos(angle) * x - math.sin(angle) * y), round(math.sin(angle) * x + math.cos(angle) * y)


@pytest.mark.parametrize("tool, moved", [(MOVE, 1), (COPY, 2), (MOVE_POINT, 1)])
def test_in_a_turned_view_an_item_moves_as_if_the_view_were_not_turned(tool, moved):
    host = editable(POINT)
    host.add_item("A", 1, 1, [(-200, -300)])
    host.control.Rotate = 90.0
    host.RDMReDraw()
    at = visible(host, -200, -300)
    assert at == (300, 200)
    pick(host, tool, at)
    move(host, *beside(at))
    if tool != MOVE_POINT:
        assert rubber(host) == [(-200 + 30, 300 + 70)]
    press(host, *beside(at))
    assert shape(host, moved) == [(-170, 370) if tool != MOVE_POINT else (330, 270)]


def test_in_a_stretched_view_an_item_moves_as_if_the_view_were_not_stretched():
    host = editable(POINT, SPOT)
    host.control.ScaleX, host.control.ScaleY = 2.0, 3.0
    host.RDMReDraw()
    pick(host, MOVE, (400, 450))
    press(host, 430, 520)
    assert shape(host) == [(230, 220)]


# --- Copy --------------------------------------------------------------------------------------------------------------------


@BOTH
@EACH_KIND
def test_a_copy_takes_the_next_free_number_and_moves_while_the_item_stays(newer, kind):
    points, at = KINDS[kind]
    host = editable(kind, points, newer=newer)
    host.add_item("A", 1, 40, [(x, y - 9000) for x, y in shifted(points)])
    marked(host, 5)
    heard = listening(host)
    drawn = drawn_after(host, lambda: pick(host, COPY, at))
    assert told(heard) == [(START, "A", 1, 41, len(points), 260)] and composed(drawn)
    assert tag_and_active(host, 1) == (5, True) and tag_and_active(host, 41) == (-1, False)
    assert rubber(host) == loaded_points(kind) and numbers(host) == [1, 40, 41]
    move(host, *beside(at))
    assert rubber(host) == shifted(loaded_points(kind))
    drawn = drawn_after(host, lambda: press(host, *beside(at)))
    assert told(heard) == [(END, "A", 1, 41, len(loaded_points(kind)), 260)]
    assert shape(host, 1) == plain(points) and tag_and_active(host, 1) == (5, True), "the item stays, and stays active"
    assert shape(host, 41) == shifted(points) and tag_and_active(host, 41) == (5, False)
    assert clean(host) and composed(drawn)


def test_the_item_keeps_its_heights_and_the_copy_loses_them():
    host = editable(LINE, [(x, y, 6) for x, y in STROKE])
    pick(host, COPY, (200, 100))
    press(host, 210, 110)
    assert heights(host, 1) == [6] * 4 and heights(host, 2) == [0] * 4


def test_a_copy_takes_the_sub_layer_along():
    host = editable(LINE, STROKE)
    assert host.control.OrvSetSubLayerEx("A", "", 3, True, 0, 1, 0, 0, 0, 1, 1)
    assert host.SetDigDatSubLayer("A", 1, 1, 3)
    host.RDMReDraw()
    pick(host, COPY, (200, 100))
    press(host, 210, 110)
    assert item(host, "A", 1, 2)["subLayNo"] == 3


def test_a_copy_lies_in_the_block_of_its_item():
    host = editable(LINE)
    assert host.control.DigMemAlloc2("A", 7, LINE, "", 1, 100, -50)
    host.add_item("A", 7, 9, [(0, 0), (200, 0)])
    host.RDMReDraw()
    heard = listening(host)
    pick(host, COPY, (200, 50))
    press(host, 230, 120)
    assert told(heard) == [(START, "A", 7, 10, 2, 260), (END, "A", 7, 10, 2, 260)]
    assert [each["pnts"] for each in block(host, "A", 7)["dats"]] == [[(0, 0, 0), (200, 0, 0)], [(30, -70, 0), (230, -70, 0)]]


@pytest.mark.parametrize("cancel", ["method", "key"])
@EACH_KIND
def test_a_cancel_deletes_the_copy_and_leaves_the_item_as_it_is_and_active(kind, cancel):
    host, at = one(kind)
    marked(host, 5)
    pick(host, COPY, at)
    move(host, *beside(at))
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "A", 1, 2, 0, 999)]
    assert numbers(host) == [1] and tag_and_active(host) == (5, True) and clean(host)


def test_a_copy_started_on_a_named_item_makes_no_copy_and_moves_that_item():
    host = editable(LINE, STROKE)
    begin(host, COPY, 1)
    assert numbers(host) == [1] and tag_and_active(host) == (-1, False)
    heard = listening(host)
    press(host, 300, 300)
    assert told(heard) == [(END, "A", 1, 1, 4, 260)] and numbers(host) == [1]


def test_a_cancel_of_a_copy_started_on_a_named_item_deletes_that_item():
    host = editable(LINE, STROKE)
    begin(host, COPY, 1)
    cancelled(host)
    assert numbers(host) == [] and clean(host)


# --- Delete ------------------------------------------------------------------------------------------------------------------


@BOTH
@EACH_KIND
def test_a_click_deletes_the_item_under_it_and_ends(newer, kind):
    points, at = KINDS[kind]
    host = editable(kind, shifted_all(points), points, newer=newer)
    begin(host, DELETE, code="")
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, *at))
    (start, end) = told(heard)
    assert start == (START, "A", 1, 2, len(points), 300) and (end[0], *end[2:]) == (END, 1, 2, 0, 300)
    assert numbers(host) == [1] and clean(host) and composed(drawn)


def shifted_all(points):
    return [(x + 9000, y, *rest) for x, y, *rest in points]


def test_only_the_topmost_of_items_that_lie_on_each_other_goes():
    host = editable(POLYGON, SQUARE, SQUARE, SQUARE)
    pick(host, DELETE, (200, 200))
    assert numbers(host) == [1, 2]


def test_a_click_on_nothing_deletes_nothing_and_keeps_the_tool():
    host = editable(LINE, STROKE)
    heard = listening(host)
    pick(host, DELETE, EMPTY)
    assert [name for name, *_ in heard] == ["MouseDown"] and mode(host) == DELETE and numbers(host) == [1]


@pytest.mark.parametrize("before", [MOVE_POINT, MOVE, COPY])
def test_the_end_tells_the_code_that_the_last_tool_left_and_the_key_of_the_item(before):
    host = editable(LINE, STROKE)
    another_layer(host, "B", LINE, [(100, 500), (300, 500)])
    begin(host, before, 1, "B")
    press(host, *EMPTY)
    heard = listening(host)
    pick(host, DELETE, (200, 100))
    assert told(heard) == [(START, "A", 1, 1, 4, 300), (END, "B", 1, 1, 0, 300)]
    assert numbers(host) == []


def test_the_end_tells_the_code_of_an_add_tool_before_it():
    host = editable(LINE, STROKE)
    another_layer(host, "B", POINT)
    begin(host, ADD, code="B")
    press(host, 500, 500)
    heard = listening(host)
    pick(host, DELETE, (200, 100))
    assert told(heard)[-1] == (END, "B", 1, 1, 0, 300)


def test_a_code_given_to_the_delete_tool_is_not_the_one_told_at_its_end():
    host = editable(LINE, STROKE)
    another_layer(host, "B", LINE, [(100, 500), (300, 500)])
    begin(host, MOVE, 1, "B")
    press(host, *EMPTY)
    heard = listening(host)
    begin(host, DELETE, 1, "A")
    press(host, 200, 100)
    assert told(heard)[-1] == (END, "B", 1, 1, 0, 300)


def test_the_delete_tool_leaves_the_figures_of_the_host():
    host = editable(LINE, STROKE)
    host.MakeOrgDatEx(LINE, 1, 0, 0)
    pick(host, DELETE, (200, 100))
    assert len(figures(host)) == 1 and numbers(host) == []


@pytest.mark.parametrize("tool", [MOVE, COPY, DELETE])
def test_the_click_that_ends_a_tool_is_the_last_one_of_it(tool):
    host = picked(LINE, tool)
    if tool != DELETE:
        press(host, 230, 170)
    heard = listening(host)
    press(host, 200, 100)
    assert told(heard) == [] and figures(host) == []
