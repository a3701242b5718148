"""Items and drawings at and beyond the 5000 points that a tool can hold."""

import pytest
from edit_rig import (ADD, EMPTY, END, LOADING, START, begin, cancelled, clean, editable, figures, finish, mode, numbers, pick,
                      shape, tag_and_active, told)
from input_rig import ADDING, ADD_POINT, COPY, DELETE_KEY, DELETE_POINT, MOVE, MOVE_POINT, PAN, listening, move, press
from map_rig import LINE, POLYGON, item

MOST = 5000
ON_IT = (400, 500)


def with_long(count, kind=LINE):
    """A host with one item of that many points, whose first segment runs along pixel row 500."""
    host = editable(kind)
    xs = [100.0, 700.0] + [float(100 + i % 500) for i in range(count - 2)]
    ys = [-500.0, -500.0] + [float(-20 - i // 500) for i in range(count - 2)]
    if kind == POLYGON:
        xs[-1], ys[-1] = xs[0], ys[0]
    assert host.control.AddDigDatEx("A", 1, 1, 5, xs, ys, [3.0] * count)
    assert item(host, "A", 1, 1)["pntCnt"] == count
    host.RDMReDraw()
    return host


def count(host, dat_id=1):
    return item(host, "A", 1, dat_id)["pntCnt"]


@pytest.mark.parametrize("tool", LOADING)
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_an_item_of_5001_points_is_refused_and_stays_as_it_is(tool, kind):
    host = with_long(MOST + 1, kind)
    host.control.RunMode = PAN
    heard = listening(host)
    assert host.control.DigDatEditor("A", 1, 1, tool) == -1
    assert mode(host) == PAN and heard == [] and figures(host) == []
    assert tag_and_active(host) == (5, False) and count(host) == MOST + 1


@pytest.mark.parametrize("tool", LOADING)
def test_an_item_of_5000_points_is_taken_and_written_back_whole(tool):
    host = with_long(MOST)
    begin(host, tool, 1)
    assert figures(host)[0]["pntCnt"] == MOST and tag_and_active(host)[0] == -1
    heard = listening(host)
    if tool == ADD_POINT:
        finish(host, *EMPTY)
    else:
        press(host, *EMPTY)
    ((name, *_, told_count, edit_type),) = told(heard)
    assert (name, told_count, edit_type) == (END, *((0, 999) if tool == DELETE_POINT else (MOST, tool)))
    assert clean(host) and count(host) == MOST and tag_and_active(host) == (5, False)
    assert item(host, "A", 1, 1)["pnts"][-1][2] == (3 if tool == DELETE_POINT else 0)


@pytest.mark.parametrize("tool", LOADING)
def test_a_pick_of_an_item_of_5001_points_ends_the_click_before_the_start_and_before_a_copy(tool):
    host = with_long(MOST + 1)
    heard = listening(host)
    pick(host, tool, ON_IT)
    assert [name for name, *_ in heard] == ["MouseDown"]
    assert numbers(host) == [1] and figures(host) == [] and mode(host) == tool
    assert tag_and_active(host) == (5, True), "it is picked, but not taken"
    cancelled(host)
    assert clean(host) and count(host) == MOST + 1


@pytest.mark.parametrize("tool", LOADING)
def test_a_pick_of_an_item_of_5000_points_is_taken(tool):
    host = with_long(MOST)
    heard = listening(host)
    pick(host, tool, ON_IT)
    ((name, *_, told_count, _edit_type),) = told(heard)
    assert (name, told_count) == (START, MOST) and figures(host)[0]["pntCnt"] == MOST


def test_after_a_refused_pick_another_item_can_be_picked():
    host = with_long(MOST + 1)
    host.add_item("A", 1, 2, [(100, -300), (300, -300)])
    host.RDMReDraw()
    pick(host, MOVE, ON_IT)
    heard = listening(host)
    press(host, 200, 300)
    assert told(heard) == [(START, "A", 1, 2, 2, 250)]


@pytest.mark.parametrize("before, taken", [(MOST - 2, 2), (MOST - 1, 1), (MOST, 0)])
def test_points_are_inserted_up_to_the_5000th(before, taken):
    host = with_long(before)
    begin(host, ADD_POINT, 1)
    for x in (660, 670, 680, 690):
        move(host, x, 498)
        press(host, x, 498)
    assert figures(host)[0]["pntCnt"] == MOST
    heard = listening(host)
    finish(host, 690, 498)
    assert told(heard) == [(END, "A", 1, 1, before + taken, 210)] and count(host) == MOST


@pytest.mark.parametrize("clicks", [MOST - 1, MOST, MOST + 1, MOST + 40])
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_a_drawing_takes_5000_clicks_and_no_more(kind, clicks):
    host = editable(kind)
    begin(host, ADD)
    for i in range(clicks):
        press(host, 100 + i % 500, 20 + i // 500)
    move(host, 5, 5)
    assert mode(host) == ADDING
    kept = min(clicks, MOST)
    heard = listening(host)
    finish(host, 5, 5)
    assert told(heard) == [(END, "A", 1, 1, kept, 100)] and clean(host)
    assert count(host) == kept + (kind == POLYGON), "the closing point comes on top"
    last = kept - 1
    assert shape(host)[last] == (100 + last % 500, 20 + last // 500)


def test_a_ring_of_5000_clicks_and_its_closing_point_can_be_drawn_but_not_edited():
    host = editable(POLYGON)
    begin(host, ADD)
    for i in range(MOST):
        press(host, 100 + i % 500, 20 + i // 500)
    finish(host, 5, 5)
    assert host.control.DigDatEditor("A", 1, 1, MOVE_POINT) == -1
    assert tag_and_active(host) == (0, True)


def test_an_item_of_5000_points_loses_points_as_any_other():
    host = with_long(MOST)
    begin(host, DELETE_POINT, 1)
    press(host, 700, 500)
    press(host, *EMPTY)
    assert count(host) == MOST - 1 and shape(host)[:2] == [(100, 500), (100, 20)]
    begin(host, MOVE_POINT, 1)
    press(host, 100, 500)
    host.control.key(DELETE_KEY)
    heard = listening(host)
    press(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 1, MOST - 2, 200)] and count(host) == MOST - 1


def test_a_copy_of_5000_points_moves_whole():
    host = with_long(MOST)
    pick(host, COPY, ON_IT)
    press(host, ON_IT[0] + 7, ON_IT[1] + 9)
    assert count(host, 2) == MOST
    assert shape(host, 2) == [(x + 7, y + 9) for x, y in shape(host, 1)]
