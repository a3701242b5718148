"""Where a new point would go in a figure: the segment near the cursor, shown by a rubber band, and the place of the insertion."""

import math
import random

import pytest
from input_rig import ADD_POINT, CTRL, LEFT, SHIFT, SHIFT_CLICKS, click, drawn_after, move, once, shown
from map_rig import CIRCLE, ELLIPSE, HEIGHT, LINE, POINT, POLYGON, SRCCOPY, WIDTH, bit_blts, drawn_by, item, named

STROKE = [(100, 100), (300, 100), (300, 300)]
SQUARE = [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)]
HOLE = [(150, 150), (250, 150), (250, 250), (150, 250), (150, 150)]


def adding(kind, points):
    """A host on which the tool that adds points holds item 1."""
    host = shown(kind, points, SetLayEditFlg=True)
    assert host.control.DigDatEditor("A", 1, 1, ADD_POINT) == 0
    return host


def band_at(host, x, y, flags=0):
    """The rubber band that a move draws."""
    (line,) = named(drawn_after(host, lambda: move(host, x, y, flags)), "Polyline", "window")
    return line.values[0]


def points_after(host):
    """The pixels of the item once the tool has ended."""
    host.control.mouse("ldbl", LEFT, 0, 0)
    return [(x, -y) for x, y, *_ in item(host, "A", 1, 1)["pnts"]]


def inserted(points, at, pixel):
    return [*points[:at], pixel, *points[at:]]


# --- The band ------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind, points, cursor, first, second", [
    (LINE, STROKE, (280, 90), 1, 0), (LINE, STROKE, (310, 120), 1, 2), (LINE, STROKE, (120, 110), 0, 0),
    (LINE, STROKE, (310, 280), 2, 2), (LINE, STROKE, (200, 110), 0, 0), (LINE, STROKE[:2], (190, 90), 0, 0),
    (LINE, STROKE[:2], (210, 90), 1, 1), (POLYGON, SQUARE, (180, 110), 0, 1), (POLYGON, SQUARE, (110, 180), 0, 3),
    (POLYGON, SQUARE, (290, 200), 1, 2), (POLYGON, SQUARE, (110, 280), 3, 0), (POLYGON, SQUARE, (120, 290), 3, 2),
    (POLYGON, SQUARE + HOLE, (155, 200), 5, 8), (POLYGON, SQUARE + HOLE, (160, 245), 8, 7),
    (POLYGON, SQUARE + HOLE, (102, 120), 0, 3)])
def test_the_band_runs_from_the_nearest_vertex_over_the_cursor_to_the_neighbour_on_the_nearer_side(kind, points, cursor, first,
                                                                                                 second):
    host = adding(kind, points)
    assert band_at(host, *cursor) == (points[first], cursor, points[second])


def test_the_band_is_dotted_and_black_and_the_last_one_is_wiped():
    host = adding(LINE, STROKE)
    drawn = drawn_after(host, lambda: move(host, 280, 90))
    assert bit_blts(drawn, "window") == [(1, 1, WIDTH - 1, HEIGHT - 1, "top", 1, 1, SRCCOPY)]
    (line,) = drawn_by(drawn, "Polyline", "window")
    assert line.pen == (2, 1, 0)
    order = [each.name for each in drawn]
    assert order.index("BitBlt") < order.index("Polyline")


def test_a_point_equally_near_to_both_neighbours_takes_the_next_one():
    host = adding(LINE, STROKE)
    assert band_at(host, 290, 110) == (STROKE[1], (290, 110), STROKE[2])


@pytest.mark.parametrize("flags", [CTRL, CTRL | SHIFT, CTRL | LEFT])
def test_with_ctrl_the_segment_stays_while_the_cursor_moves(flags):
    host = adding(LINE, STROKE)
    band_at(host, 280, 90)
    for cursor in ((310, 280), (120, 110), (700, 500)):
        assert band_at(host, *cursor, flags) == (STROKE[1], cursor, STROKE[0])
    assert band_at(host, 310, 280, SHIFT) == (STROKE[2], (310, 280), STROKE[2])


def test_a_wheel_step_draws_the_band_anew_at_the_cursor():
    host = adding(LINE, STROKE)
    move(host, 280, 90)
    host.control.cursor_pos = (280, 90)
    drawn = drawn_after(host, lambda: host.control.wheel(0, -120, 280, 90))
    bands = [each.values[0] for each in named(drawn, "Polyline", "window")]
    assert len(bands) == 1 and bands[0][1] == (280, 90)


@pytest.mark.parametrize("flags", [0, CTRL])
def test_the_band_does_no_harm_without_a_move_before_or_with_a_cursor_far_away(flags):
    for kind, points in ((LINE, STROKE), (LINE, STROKE[:1]), (POLYGON, SQUARE), (POLYGON, SQUARE[:3])):
        host = adding(kind, points)
        for x, y in ((-2**31, 2**31 - 1), (10, 10), (2**31 - 1, -2**31)):
            move(host, x, y, flags)
            click(host, x, y)


@pytest.mark.parametrize("kind, points", [(POINT, [(100, 100)]), (CIRCLE, [(100, 100, 50)]), (ELLIPSE, [(100, 100), (200, 200)])])
def test_points_circles_and_ellipses_take_no_further_point(kind, points):
    host = adding(kind, points)
    move(host, 120, 120)
    click(host, 120, 120)
    assert len(points_after(host)) == len(points)


def to_segment(p, a, b):
    """The distance of a point from a segment."""
    (px, py), (ax, ay), (bx, by) = p, a, b
    along = (bx - ax) ** 2 + (by - ay) ** 2
    t = 0 if along == 0 else min(1, max(0, ((px - ax) * (bx - ax) + (py - ay) * (by - ay)) / along))
    return math.dist(p, (ax + t * (bx - ax), ay + t * (by - ay)))


def nearest_segment(points, rings, cursor):
    """The nearest vertex, the other end of its nearer side, and the place of an insertion. None where two are equally near."""
    far = sorted((math.dist(cursor, point), at) for at, point in enumerate(points))
    at = far[0][1]
    if any(each - far[0][0] < 0.01 and points[other] != points[at] for each, other in far[1:]):
        return None
    before, behind = at - 1, at + 1
    for first, last in rings:
        if at == first:
            before = last - 1
        if at == last:
            behind = first + 1
    if not rings and at == 0:
        return points[0], points[0], 0
    if not rings and behind == len(points):
        return points[at], points[at], behind
    to_before, to_behind = to_segment(cursor, points[at], points[before]), to_segment(cursor, points[at], points[behind])
    if 0 < abs(to_before - to_behind) < 0.01:
        return None
    other = behind if to_before >= to_behind else before
    low, high = sorted((at, other))
    return points[at], points[other], high if high - low <= 1 else high + 1


@pytest.mark.parametrize("kind", [LINE, POLYGON])
@pytest.mark.parametrize("seed", range(6))
def test_bands_and_insertions_are_those_of_a_plain_search_at_many_cursors(kind, seed):
    rng = random.Random(seed)
    shapes = [[(rng.randrange(20, 780), rng.randrange(20, 580)) for _ in range(rng.randrange(3, 9))]
              for _ in range(1 if kind == LINE else rng.randrange(1, 4))]
    points, rings = [], []
    for shape in shapes:
        if kind == POLYGON:
            rings.append((len(points), len(points) + len(shape)))
        points += shape if kind == LINE else [*shape, shape[0]]
    host = adding(kind, points)
    cursors = [(rng.randrange(800), rng.randrange(600)) for _ in range(100)]
    expected = {cursor: nearest_segment(points, rings, cursor) for cursor in cursors}
    tried = [cursor for cursor in cursors if expected[cursor]]
    assert len(tried) > 50
    for cursor in tried:
        first, second, _ = expected[cursor]
        assert band_at(host, *cursor) == (first, cursor, second), (points, cursor)
    click(host, *tried[-1])
    assert points_after(host) == inserted(points, expected[tried[-1]][2], tried[-1])


# --- The insertion -------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind, points, cursor, at", [
    (LINE, STROKE, (280, 90), 1), (LINE, STROKE, (310, 120), 2), (LINE, STROKE, (120, 110), 0), (LINE, STROKE, (310, 280), 3),
    (LINE, STROKE[:2], (210, 90), 2), (POLYGON, SQUARE, (180, 110), 1), (POLYGON, SQUARE, (110, 180), 4),
    (POLYGON, SQUARE, (290, 200), 2), (POLYGON, SQUARE, (110, 280), 4), (POLYGON, SQUARE, (120, 290), 3),
    (POLYGON, SQUARE + HOLE, (155, 200), 9), (POLYGON, SQUARE + HOLE, (160, 245), 8)])
def test_a_click_puts_the_point_between_the_ends_of_the_segment(kind, points, cursor, at):
    host = adding(kind, points)
    move(host, *cursor)
    click(host, *cursor)
    assert points_after(host) == inserted(points, at, cursor)


def test_a_click_goes_where_the_last_move_was_near_to_and_not_where_it_is():
    host = adding(LINE, STROKE)
    move(host, 280, 90)
    click(host, 310, 280)
    assert points_after(host) == inserted(STROKE, 1, (310, 280))


def test_a_second_click_without_a_move_goes_right_behind_the_first():
    host = adding(LINE, STROKE)
    move(host, 290, 150)
    click(host, 290, 150)
    click(host, 280, 200)
    assert points_after(host) == [(100, 100), (300, 100), (290, 150), (280, 200), (300, 300)]


def test_the_figure_and_not_the_data_is_searched():
    host = shown(LINE, STROKE, [(290, 80), (290, 95)], SetLayEditFlg=True)
    assert host.control.DigDatEditor("A", 1, 1, ADD_POINT) == 0
    assert band_at(host, 280, 90) == (STROKE[1], (280, 90), STROKE[0])


def test_the_segment_of_a_tool_means_nothing_to_the_clicks_of_the_figure_modes():
    host = adding(LINE, STROKE)
    move(host, 280, 90)
    host.control.RunMode = SHIFT_CLICKS
    heard = once(host, "OnOrgNearPtClick")
    host.control.mouse("ldown", LEFT | SHIFT, 310, 280)
    assert [each[1] for each in heard] == [2], "the rubber figure is a figure like any other"
