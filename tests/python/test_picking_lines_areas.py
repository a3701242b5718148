"""Lines, polygons, circles and ellipses under the cursor, and the types that are never met."""

import math

import pytest
from drawing_rig import add_sub_layer, at_scale
from input_rig import (HINT_TIMER, add_layer, assert_picks, click, grid, inside, move, once, picked_at, put, ready, selected,
                       shown, tick)
from map_rig import CIRCLE, ELLIPSE, LINE, MESH, PIXEL_ZOOM, POINT, POLYGON, TEXT, block, item


# --- Lines ---------------------------------------------------------------------------------------------------------------------


def band(a, b):
    """The four corners of the band around a segment."""
    (ax, ay), (bx, by) = a, b
    if ax == bx:
        ox, oy = 2, 0
    elif ay == by:
        ox, oy = 0, 2
    else:
        ox, oy = (-2 if (ax > bx) == (ay > by) else 2), 2
    return [(ax - ox, ay - oy), (bx - ox, by - oy), (bx + ox, by + oy), (ax + ox, ay + oy)]


def bands(points):
    corners = [band(a, b) for a, b in zip(points, points[1:])]
    return lambda x, y: any(inside(each, x, y) for each in corners)


@pytest.mark.parametrize("a, b", [((100, 100), (200, 200)), ((200, 200), (100, 100)), ((100, 200), (200, 100)),
                                  ((200, 100), (100, 200)), ((100, 100), (300, 120)), ((300, 120), (100, 100)),
                                  ((100, 120), (300, 100)), ((100, 100), (110, 300)), ((110, 100), (100, 300))])
def test_a_slanted_segment_has_a_band_of_2_pixels_across_its_slant(a, b):
    host = shown(LINE, [a, b])
    (ax, ay), (bx, by) = a, b
    mx, my = (ax + bx) // 2, (ay + by) // 2
    around = [pixel for x, y in (a, b, (mx, my)) for pixel in grid(x - 6, y - 6, x + 6, y + 6, 2)]
    assert_picks(host, bands([a, b]), around)


@pytest.mark.parametrize("a, b", [((100, 100), (200, 100)), ((200, 100), (100, 100))])
def test_a_level_segment_is_met_2_pixels_above_and_less_below_and_not_past_its_ends(a, b):
    host = shown(LINE, [a, b])
    for dy, hit in ((-3, False), (-2, True), (-1, True), (0, True), (1, True), (2, False)):
        assert picked_at(host, 150, 100 + dy) == (1 if hit else None), dy
    assert [picked_at(host, x, 100) for x in (98, 101, 198, 202)] == [None, 1, 1, None]


@pytest.mark.parametrize("a, b", [((100, 100), (100, 200)), ((100, 200), (100, 100))])
def test_an_upright_segment_is_met_2_pixels_to_the_left_and_less_to_the_right_and_not_past_its_ends(a, b):
    host = shown(LINE, [a, b])
    for dx, hit in ((-3, False), (-2, True), (-1, True), (0, True), (1, True), (2, False)):
        assert picked_at(host, 100 + dx, 150) == (1 if hit else None), dx
    assert [picked_at(host, 100, y) for y in (98, 101, 198, 202)] == [None, 1, 1, None]


def test_a_line_is_met_on_each_of_its_segments():
    points = [(100, 100), (200, 100), (200, 200), (300, 260), (180, 300)]
    host = shown(LINE, points)
    for (ax, ay), (bx, by) in zip(points, points[1:]):
        assert picked_at(host, (ax + bx) // 2, (ay + by) // 2) == 1
    assert picked_at(host, 150, 200) is None


@pytest.mark.parametrize("settings", [{"SetLayLineSize": 30}, {"SetLayLineSize": 0}, {"SetLayLineSize": 9999},
                                      {"SetLayLineType": 12}, {"SetLayLineType": 2}])
@pytest.mark.parametrize("zoom", [1, PIXEL_ZOOM, 1000000])
def test_the_band_does_not_grow_with_width_type_or_scale(settings, zoom):
    host = shown(LINE, [(100, 100), (200, 100)], zoom=zoom, **settings)
    assert [picked_at(host, 150, 100 + dy) for dy in (-3, -2, 1, 2)] == [None, 1, 1, None]


def test_a_segment_with_both_ends_above_the_window_is_skipped_though_its_band_reaches_in():
    points = [(100, 100), (150, -2), (600, -2), (650, 100)]
    host = shown(LINE, points)
    assert picked_at(host, 125, 49) == 1
    assert picked_at(host, 400, 0) is None, "its pixels lie at -1, and the band would reach to 0"
    host = shown(LINE, [(100, 100), (150, -1), (600, -1), (650, 100)])
    assert picked_at(host, 400, 0) == 1 and picked_at(host, 400, 1) == 1, "its pixels lie at 0"


def test_a_segment_with_both_ends_left_of_the_window_is_skipped_though_its_band_reaches_in():
    host = shown(LINE, [(100, 100), (-2, 150), (-2, 400), (100, 450)])
    assert picked_at(host, 0, 300) is None
    host = shown(LINE, [(100, 100), (-1, 150), (-1, 400), (100, 450)])
    assert picked_at(host, 0, 300) == 1


def test_a_segment_that_crosses_the_window_from_side_to_side_is_met():
    host = shown(LINE, [(-500, -400), (1300, 1000)])
    x = 400
    y = round(-400 + 900 * 1400 / 1800)
    assert picked_at(host, x, y) == 1


@pytest.mark.parametrize("points", [[], [(100, 100)], [(100, 100), (100, 100)]])
def test_a_line_of_fewer_than_two_points_is_not_met(points):
    host = shown(LINE, [(300, 300), (400, 300)])
    assert host.AddDigDat("A", 1, 2, 0)
    for x, y in points:
        assert host.AddDigDatPnt("A", 1, 2, float(x), -float(y), 0.0)
    host.RDMReDraw()
    assert picked_at(host, 100, 102) is None and picked_at(host, 98, 98) is None and picked_at(host, 350, 300) == 1


def test_a_line_in_a_hidden_sub_layer_is_not_met():
    host = shown(LINE)
    add_sub_layer(host, 3, disp=False)
    put(host, 1, (100, 100), (200, 100), sub=3)
    host.RDMReDraw()
    assert picked_at(host, 150, 100) is None
    add_sub_layer(host, 3, disp=True)
    host.RDMReDraw()
    assert picked_at(host, 150, 100) == 1


# --- Polygons ------------------------------------------------------------------------------------------------------------------

OUTER = [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)]
HOLE = [(150, 150), (250, 150), (250, 250), (150, 250), (150, 150)]
FAR = [(500, 100), (600, 100), (600, 200), (500, 100)]


def test_a_polygon_is_met_within_its_outline():
    slanted = [(100, 100), (350, 140), (280, 330), (90, 260), (100, 100)]
    host = shown(POLYGON, slanted)
    told = assert_picks(host, lambda x, y: inside(slanted[:-1], x, y), grid(80, 80, 370, 350, 15))
    assert told[True] > 80 and told[False] > 80


def test_a_hole_of_a_polygon_is_a_hole_and_an_island_belongs_to_it():
    host = shown(POLYGON, OUTER + HOLE + FAR)
    assert [picked_at(host, *at) for at in ((120, 120), (200, 200), (280, 200), (580, 130), (520, 180), (400, 200))] == \
        [1, None, 1, 1, None, None]


def test_a_hole_lets_the_item_below_be_met():
    host = shown(POLYGON, OUTER, OUTER + HOLE)
    assert picked_at(host, 200, 200) == 1 and picked_at(host, 120, 120) == 2


def test_a_polygon_that_crosses_itself_is_hollow_where_it_lies_twice():
    star = [(300, 100), (364, 300), (195, 176), (405, 176), (236, 300), (300, 100)]
    host = shown(POLYGON, star)
    assert picked_at(host, 300, 220) is None and picked_at(host, 300, 130) == 1


@pytest.mark.parametrize("rest", [[], [(120, 120)]])
def test_a_polygon_that_never_closes_is_not_met(rest):
    host = shown(POLYGON, OUTER[:-1] + rest)
    assert [picked_at(host, *at) for at in ((200, 200), (110, 200), (290, 290))] == [None] * 3


def test_points_behind_the_last_ring_belong_to_none():
    host = shown(POLYGON, OUTER + FAR[:-1])
    assert picked_at(host, 200, 200) == 1 and picked_at(host, 580, 130) is None


def test_points_whose_first_and_last_are_equal_are_one_ring_though_the_first_comes_in_between():
    a = (300, 200)
    lobes = [a, (200, 150), (200, 250), a, (400, 150), (400, 250), a]
    host = shown(POLYGON, lobes)
    assert picked_at(host, 220, 200) == 1 and picked_at(host, 380, 200) == 1


@pytest.mark.parametrize("points", [[(200, 200)], [(200, 200), (200, 200)], [(200, 200), (300, 300), (200, 200)]])
def test_polygons_of_few_points_do_no_harm(points):
    host = shown(POLYGON, points)
    assert picked_at(host, 500, 500) is None


def lying(width, gy, gx=0):
    """A block of origin (gx, gy) whose polygon covers the pixels 100 to 300 in y, and from -100 in x as wide as told."""
    host = ready(at_scale())
    assert host.control.DigMemAlloc2("A", 1, POLYGON, "", 1, float(gx), float(gy))
    left, right = -100 - gx, -100 - gx + width
    top, bottom = -100 - gy, -300 - gy
    host.add_item("A", 1, 1, [(left, top), (right, top), (right, bottom), (left, bottom), (left, top)])
    host.RDMReDraw()
    assert item(host, "A", 1, 1)["drawnFlg"] == 1
    return host


@pytest.mark.parametrize("width", [999, 1000, 1001, 1500, 20000])
@pytest.mark.parametrize("gx", [0, -50, 70])
def test_a_polygon_is_met_alike_whatever_its_size_in_a_block_without_an_origin_in_y(width, gx):
    host = lying(width, 0, gx)
    assert [picked_at(host, 400, y) for y in (50, 98, 102, 200, 297, 303, 400)] == [None, None, 1, 1, 1, None, None]


def test_from_1001_pixels_on_a_polygon_is_looked_for_with_the_origin_s_y_on_the_wrong_side():
    small, large = lying(1000, -100), lying(1001, -100)
    assert [picked_at(small, 400, y) for y in (50, 150, 250)] == [None, 1, 1]
    assert [picked_at(large, 400, y) for y in (50, 150, 250)] == [1, None, None], "200 pixels too high"


@pytest.mark.parametrize("tall, met", [(1000, True), (1001, False)])
def test_the_height_counts_as_the_width_does(tall, met):
    host = ready(at_scale())
    assert host.control.DigMemAlloc2("A", 1, POLYGON, "", 1, 0.0, -5000.0)
    top, bottom = 5050, 5050 - tall
    host.add_item("A", 1, 1, [(100, top), (300, top), (300, bottom), (100, bottom), (100, top)])
    host.RDMReDraw()
    assert bool(picked_at(host, 200, 300)) is met


def test_the_size_of_a_polygon_is_that_on_the_screen():
    for scale, met in ((1.0, True), (2.01, False)):
        host = ready(at_scale())
        assert host.control.DigMemAlloc2("A", 1, POLYGON, "", 1, 0.0, -5000.0)
        host.add_item("A", 1, 1, [(0, 4950), (500, 4950), (500, 4800), (0, 4800), (0, 4950)])
        host.control.ScaleX = scale
        host.RDMReDraw()
        assert bool(picked_at(host, 200, 100)) is met, scale


def test_a_large_polygon_with_a_hole_is_hollow_there_too():
    big = [(-500, 50), (1000, 50), (1000, 550), (-500, 550), (-500, 50)]
    host = shown(POLYGON, big + HOLE)
    assert [picked_at(host, *at) for at in ((120, 120), (200, 200), (700, 500), (700, 30))] == [1, None, 1, None]


def test_a_large_polygon_is_met_where_it_is_drawn_in_a_turned_and_stretched_view():
    host = shown(POLYGON, [(0, 0), (3000, 0), (3000, 2000), (0, 2000), (0, 0)])
    host.control.ScaleX, host.control.ScaleY = 0.5, 0.25
    host.control.Rotate = -10.0
    host.RDMReDraw()
    a = 10.0 * 0.01745328

    def area(x, y):
        x, y = x / 0.5, y / 0.25
        x, y = math.cos(a) * x + math.sin(a) * y, -math.sin(a) * x + math.cos(a) * y
        return 0 < x < 3000 and 0 < y < 2000

    told = assert_picks(host, area, grid(5, 5, 795, 595, 59))
    assert told[True] > 20 and told[False] > 10


def test_the_rings_of_a_large_polygon_are_walked_even_if_first_and_last_are_equal():
    a = (300, 200)
    wide = [a, (-800, 150), (-800, 250), a, (400, 150), (400, 250), a]
    host = shown(POLYGON, wide)
    assert picked_at(host, 100, 200) == 1
    assert picked_at(host, 380, 200) is None, "the first ring ended at its start, and what follows never closes"


DIAMOND = [(300, 300), (900, -400), (1500, 300), (900, 1000)]
NOTCHED = [(100, 500), (100, 100), (400, 300), (1300, 100), (1300, 500)]
STEPPED = [(100, 500), (100, 300), (400, 300), (400, 100), (1300, 100), (1300, 300), (700, 300), (700, 500)]


@pytest.mark.parametrize("ring, pixels", [
    (DIAMOND, {(100, 300): None, (299, 300): None, (301, 300): 1, (700, 300): 1}),
    (NOTCHED, {(50, 300): None, (200, 300): 1, (399, 300): 1, (401, 300): 1, (700, 300): 1, (50, 100): None, (300, 120): None}),
    (STEPPED, {(50, 300): None, (50, 310): None, (200, 310): 1, (200, 290): None, (600, 310): 1, (750, 290): 1,
               (750, 310): None}),
])
@pytest.mark.parametrize("begin", range(5))
@pytest.mark.parametrize("backward", [False, True])
def test_a_large_polygon_is_met_alike_level_with_its_vertices_wherever_its_ring_begins(ring, pixels, begin, backward):
    at = begin % len(ring)
    turned = ring[at:] + ring[:at]
    turned = turned[::-1] if backward else turned
    host = shown(POLYGON, [*turned, turned[0]])
    assert {pixel: picked_at(host, *pixel) for pixel in pixels} == pixels


# --- Circles and ellipses ------------------------------------------------------------------------------------------------------


def round_area(left, top, right, bottom):
    cx, cy, rx, ry = (left + right) / 2, (top + bottom) / 2, (right - left) / 2, (bottom - top) / 2
    return lambda x, y: ((x + 0.5 - cx) / rx) ** 2 + ((y + 0.5 - cy) / ry) ** 2 < 1


@pytest.mark.parametrize("x, y, r", [(400, 300, 30), (200, 100, 12), (400, 300, 100)])
def test_a_circle_is_met_within_its_radius(x, y, r):
    host = shown(CIRCLE, [(x, y, r)])
    z = r + 0.5
    area = round_area(int(x - z), int(y - z), int(x + z), int(y + z))
    assert_picks(host, area, grid(x - r - 4, y - r - 4, x + r + 4, y + r + 4, max(2, r // 8)))


def test_the_radius_of_a_circle_follows_the_stretch_in_x_alone():
    host = shown(CIRCLE, [(100, 300, 30)])
    host.control.ScaleX = 2.0
    host.RDMReDraw()
    assert [picked_at(host, *at) for at in ((255, 300), (200, 355), (200, 245), (265, 300), (200, 366))] == [1, 1, 1, None, None]


def test_a_circle_of_a_radius_of_0_4_pixels_is_met_on_its_centre_only():
    host = shown(CIRCLE, [(400, 300, 0.4)])
    met = [(x, y) for x, y in grid(396, 296, 404, 304) if picked_at(host, x, y)]
    assert len(met) == 1 and met[0] in ((399, 299), (400, 300)), "z is 0.9, and the box (399, 299) to (400, 300)"


@pytest.mark.parametrize("first, second", [((300, 200), (400, 260)), ((400, 260), (300, 200)), ((300, 260), (400, 200)),
                                           ((400, 200), (300, 260))])
def test_an_ellipse_is_met_within_the_box_of_its_two_points_in_any_order(first, second):
    host = shown(ELLIPSE, [first, second])
    assert_picks(host, round_area(300, 200, 400, 260), grid(296, 196, 404, 264, 6))


def test_an_ellipse_of_one_point_is_not_met():
    host = shown(ELLIPSE, [(300, 200)])
    assert picked_at(host, 300, 200) is None


def test_further_points_of_an_ellipse_mean_nothing():
    host = shown(ELLIPSE, [(300, 200), (400, 260), (700, 500)])
    assert picked_at(host, 350, 230) == 1 and picked_at(host, 550, 380) is None


@pytest.mark.parametrize("z", [0.0, -30.0, 1e300, -1e300, float("nan"), float("inf")])
def test_circles_of_any_radius_do_no_harm(z):
    host = shown(CIRCLE, [(400, 300, z)])
    for at in ((400, 300), (0, 0), (799, 599)):
        click(host, *at)


# --- Never met -----------------------------------------------------------------------------------------------------------------


def with_text():
    host = shown(TEXT, [(400, 300)])
    assert host.SetDigDatString("A", 1, 1, 400.0, -300.0, "text")
    host.RDMReDraw()
    return host


def test_a_click_on_a_text_item_never_selects_it():
    host = with_text()
    for at in grid(380, 280, 440, 320, 10):
        assert picked_at(host, *at) is None


def test_a_click_on_a_mesh_never_selects_it():
    host = shown(MESH)
    xs = [300.0, 400.0, 500.0] * 2
    ys = [-200.0] * 3 + [-400.0] * 3
    assert host.control.OrvAddMeshDat("A", 1, 1, 3, 2, xs, ys, [0.0] * 6)
    host.RDMReDraw()
    assert block(host, "A", 1)["inView"] == 1
    for at in ((300, 200), (400, 300), (450, 250), (500, 400)):
        assert picked_at(host, *at) is None


@pytest.mark.parametrize("kind", [6, 7])
def test_types_that_no_one_draws_are_never_met(kind):
    host = shown(kind, [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)])
    assert picked_at(host, 200, 200) is None and picked_at(host, 100, 100) is None


def test_a_line_with_the_label_of_another_place_is_met_on_the_line_only():
    host = shown(LINE, [(100, 100), (200, 100)])
    assert host.SetDigDatString("A", 1, 1, 400.0, -300.0, "label")
    host.control.DigStrVisible = True
    host.RDMReDraw()
    assert picked_at(host, 405, 305) is None and picked_at(host, 150, 100) == 1


# --- The rules of the hint -----------------------------------------------------------------------------------------------------


def hinted(host, x, y):
    """The key that a rest at a pixel tells, or None."""
    heard = once(host, "OnHintStart")
    host.control.clock, host.control.cursor_pos = 10.0, (x, y)
    move(host, x, y)
    host.control.clock = 20.0
    tick(host, HINT_TIMER)
    return heard[0][:3] if heard else None


def test_the_hint_takes_the_lowest_item_of_a_block_where_the_click_takes_the_topmost():
    host = shown(POLYGON, OUTER, OUTER)
    assert hinted(host, 200, 200) == (1, "A", 1) and picked_at(host, 200, 200) == 2


def test_the_hint_takes_the_topmost_layer_as_the_click_does():
    host = shown(POLYGON, OUTER)
    add_layer(host, "TOP", POLYGON, 0, OUTER, first=9)
    host.RDMReDraw()
    assert hinted(host, 200, 200) == (9, "TOP", 1)


@pytest.mark.parametrize("kind, points", [(CIRCLE, [(200, 200, 50)]), (ELLIPSE, [(150, 150), (250, 250)])])
def test_the_hint_does_not_know_circles_and_ellipses(kind, points):
    host = shown(kind, points)
    assert hinted(host, 200, 200) is None and picked_at(host, 200, 200) == 1


@pytest.mark.parametrize("kind, points, at", [(LINE, [(100, 100), (200, 100)], (150, 101)), (POLYGON, OUTER + HOLE, (120, 120)),
                                              (POINT, [(100, 100)], (105, 105))])
def test_the_hint_knows_lines_polygons_and_points_by_the_rules_of_the_click(kind, points, at):
    host = shown(kind, points)
    assert hinted(host, *at) == (1, "A", 1)
    assert hinted(host, 600, 500) is None
    if kind == POLYGON:
        assert hinted(host, 200, 200) is None, "a hole"


def test_the_hint_looks_for_large_polygons_in_the_world_too():
    host = lying(1001, -100)
    assert hinted(host, 400, 50) == (1, "A", 1) and hinted(host, 400, 250) is None


def test_the_hint_meets_layers_whose_data_cannot_be_selected():
    host = shown(POLYGON, OUTER)
    host.SetLayActive("A", False)
    host.RDMReDraw()
    assert hinted(host, 200, 200) == (1, "A", 1) and picked_at(host, 200, 200) is None


def test_the_hint_meets_no_hidden_layer_unless_the_picture_still_shows_it():
    host = shown(POLYGON, OUTER)
    host.control.MapDraw = False
    host.SetLayer("A", False)
    assert hinted(host, 200, 200) == (1, "A", 1), "hidden without a repaint"
    assert picked_at(host, 200, 200) is None
    host.control.MapDraw = True
    host.RDMReDraw()
    assert hinted(host, 200, 200) is None


def test_the_hint_leaves_the_active_set_alone():
    host = shown(POLYGON, OUTER, FAR)
    click(host, 580, 130)
    assert hinted(host, 200, 200) == (1, "A", 1) and selected(host) == [2]


def test_the_hint_goes_on_past_a_point_of_a_hidden_sub_layer():
    host = shown(POINT)
    add_sub_layer(host, 3)
    put(host, 1, (200, 200), sub=3)
    put(host, 2, (200, 200))
    host.RDMReDraw()
    assert hinted(host, 200, 200) == (1, "A", 1)
    add_sub_layer(host, 3, disp=False)
    assert hinted(host, 200, 200) == (2, "A", 1)
