"""Overlay figures as they are drawn: shapes, positions, what lies in sight, strings."""

import math

import pytest
from map_rig import (CIRCLE, DOTS_PER_M, ELLIPSE, LINE, PIXEL_ZOOM, POINT, POLYGON, R2_COPYPEN, R2_MASKPEN, composed, drain,
                     dump, named, one_to_one, pens, to_int, verbs, view)
from overlay_rig import (A, B, BLACK, BLUE, C, D, DOT, GREEN, HALF, RED, SOLID, TRIANGLE, WHITE, after_copy, box, centred_on_0,
                         figure, fine_context, looks, map_figure, mark, path, points_of_lines, polylines, raster_modes,
                         redrawn, set_active, shapes, solid, texts)

def pythag(a, b):
    """The length of a vector, by three rounds of an iteration that may end a little short."""
    p, q = abs(a), abs(b)
    if q == 0 or p == 0:
        return p + q
    p, q = max(p, q), min(p, q)
    for _ in range(3):
        r = (q / p) ** 2
        r = r / (4 + r)
        p, q = p + 2 * r * p, q * r
    return p


# --- When figures are drawn --------------------------------------------------------------------------------------------------


def test_figures_lie_on_the_top_buffer_and_not_on_the_map():
    host = one_to_one()
    figure(host, LINE, [A, B])
    drawn = redrawn(host)
    assert composed(drawn)
    assert [each.context for each in named(drawn, "Polyline")] == ["top"]
    assert polylines(drawn) == [(A, B)]


def test_a_paint_shows_the_figures_as_they_stand_without_composing_the_map():
    host = one_to_one()
    figure(host, LINE, [A, B])
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert not composed(drawn)
    assert polylines(drawn) == [(A, B)]
    host.EditOrgPnt(1, 1, float(C[0]), -float(C[1]))
    host.control.paint()
    assert polylines(verbs(host)) == [(A, C)]


def test_without_figures_nothing_follows_the_copy_of_the_map():
    host = one_to_one()
    host.control.OrgStrVisible = True
    host.control.ActivePointType = 1
    host.SetOrgTopDrawID(1)
    assert after_copy(redrawn(host)) == []
    figure(host, LINE, [A, B])
    host.DelOrgDataEx(1)
    assert after_copy(redrawn(host)) == []


def test_figures_are_drawn_in_the_order_they_were_made_in():
    host = one_to_one()
    for number in range(5):
        figure(host, LINE, [A, (number, 500)])
    host.DelOrgDataEx(5)
    host.DelOrgDataEx(2)
    host.EditOrgDatEx(1, LINE, 3, RED, 0)
    assert points_of_lines(host) == [[A, (0, 500)], [A, (2, 500)], [A, (3, 500)]]
    host.DelOrgDataEx(4)
    figure(host, LINE, [A, B])
    assert points_of_lines(host)[:2] == [[A, (0, 500)], [A, (2, 500), A, B]], "its number 3 was taken, so the points went there"


def test_a_figure_without_points_ends_the_drawing_of_figures():
    host = one_to_one()
    figure(host, LINE, [A, B])
    figure(host, LINE, [])
    figure(host, LINE, [B, C])
    assert points_of_lines(host) == [[A, B]]
    host.DelOrgDataEx(2)
    assert points_of_lines(host) == [[A, B], [B, C]]


@pytest.mark.parametrize("setting, value", [("OrgStrVisible", True), ("ActivePointType", 1), ("ActiveColor", 5)])
def test_no_setting_repaints_by_itself(setting, value):
    host = one_to_one()
    figure(host, LINE, [A, B])
    drain(host)
    setattr(host.control, setting, value)
    assert verbs(host) == []


def test_pen_and_brush_of_the_entry_are_put_back():
    host = one_to_one()
    figure(host, LINE, [A, B])
    redrawn(host)
    left = last_chosen(redrawn(host))
    host.DelOrgDataEx(1)
    figure(host, POLYGON, TRIANGLE, color=RED)
    figure(host, ELLIPSE, [A, C], color=BLUE, line=-4, active=True)
    assert last_chosen(redrawn(host)) == left
    assert left["Brush"][:3] == ("Brush", 0, WHITE) and left["Pen"][:4] == ("Pen", SOLID, 1, BLACK)


def last_chosen(drawn):
    chosen = {}
    for each in after_copy(drawn):
        if each.name == "SelectObject":
            chosen[each.values[0][0]] = each.values[0]
    return chosen


# --- Shapes ------------------------------------------------------------------------------------------------------------------


def test_a_point_is_a_square_filled_and_then_outlined():
    host = one_to_one()
    figure(host, POINT, [A])
    square = ("Polygon", box(*A, HALF))
    assert shapes(redrawn(host)) == [*path(*square), ("FillPath",), square]


@pytest.mark.parametrize("zoom, half", [
    (50000000, 1), (100001, 1), (100000, 2), (50001, 2), (50000, 3), (30001, 3), (30000, 4), (20001, 4), (20000, 5), (10001, 5),
    (10000, 6), (7001, 6), (7000, 7), (5001, 7), (5000, 9), (3001, 9), (3000, 10), (1, 10)])
def test_the_mark_of_a_point_shrinks_with_the_scale(zoom, half):
    host = one_to_one()
    figure(host, POINT, [(400, 300)])
    host.control.Zoom = zoom
    assert shapes(redrawn(host))[1] == ("Polygon", box(400, 300, half))
    context = fine_context()
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 400.0, -300.0, zoom, 1)
    (square,) = set(each.values[0] for each in verbs(context) if each.name == "Polygon")
    assert square[1][0] - square[0][0] == 2 * 3 * half, "three times as wide on a device of three times the resolution"


def test_a_line_is_a_polyline_of_all_its_points():
    host = one_to_one()
    figure(host, LINE, [A, B, B, C, A])
    assert shapes(redrawn(host)) == [("Polyline", (A, B, B, C, A))]


def test_an_open_polygon_is_filled_and_then_outlined():
    host = one_to_one()
    figure(host, POLYGON, [A, B, C])
    shape = ("Polygon", (A, B, C))
    assert shapes(redrawn(host)) == [*path(*shape), ("FillPath",), shape]


def test_a_polygon_whose_points_meet_on_a_pixel_only_is_open():
    host = one_to_one()
    number = figure(host, POLYGON, [A, B, C])
    host.AddOrgPnt(number, A[0] + 0.125, -A[1])
    shape = ("Polygon", (A, B, C, A))
    assert shapes(redrawn(host)) == [*path(*shape), ("FillPath",), shape]


def test_a_closed_polygon_is_one_path_with_its_outline():
    host = one_to_one()
    figure(host, POLYGON, TRIANGLE)
    assert shapes(redrawn(host)) == [*path("PolyPolygon", tuple(TRIANGLE), (4,)), ("StrokeAndFillPath",)]


def test_a_polygon_of_two_rings_and_one_that_passes_its_start():
    host = one_to_one()
    hole = [(150, 150), (200, 150), (180, 200), (150, 150)]
    figure(host, POLYGON, TRIANGLE + hole)
    figure(host, POLYGON, [*TRIANGLE, D, C, A])
    rings = [shape for shape in shapes(redrawn(host)) if shape[0] == "PolyPolygon"]
    assert rings == [("PolyPolygon", tuple(TRIANGLE + hole), (4, 4)), ("PolyPolygon", (*TRIANGLE, D, C, A), (7,))]


def test_points_behind_the_last_ring_belong_to_none():
    host = one_to_one()
    figure(host, POLYGON, [*TRIANGLE, (500, 500), (510, 510)])
    (rings,) = [shape for shape in shapes(redrawn(host)) if shape[0] == "PolyPolygon"]
    assert (rings[1][:4], rings[2]) == (tuple(TRIANGLE), (4,))


def test_a_polygon_of_one_point_is_a_ring_of_one():
    host = one_to_one()
    figure(host, POLYGON, [A])
    assert shapes(redrawn(host)) == [*path("PolyPolygon", (A,), (1,)), ("StrokeAndFillPath",)]


@pytest.mark.parametrize("rim", [(130, 140), (105, 112), (92, 85), (100, 163), (37, 100), (100, 100), (101, 101), (107, 124),
                                 (221, 222)])
def test_a_circle_goes_through_its_second_point_less_what_is_cut(rim):
    host = one_to_one()
    figure(host, CIRCLE, [A, rim, (700, 500)])
    r = int(pythag(float(rim[0] - 100), float(rim[1] - 100)))
    assert abs(r - math.hypot(rim[0] - 100, rim[1] - 100)) <= 1
    assert shapes(redrawn(host)) == [*path(*mark(A, r)), ("FillPath",)]


def test_a_circle_with_one_point_draws_nothing():
    host = one_to_one()
    figure(host, CIRCLE, [A])
    assert shapes(redrawn(host)) == []


def test_the_radius_of_a_circle_is_the_devices_even_in_a_stretched_view():
    host = one_to_one()
    figure(host, CIRCLE, [A, (100, 130)])
    host.control.ScaleX = 2.0
    assert shapes(redrawn(host)) == [*path(*mark((200, 100), 30)), ("FillPath",)]
    host.control.ScaleY = 3.0
    assert shapes(redrawn(host)) == [*path(*mark((200, 300), 90)), ("FillPath",)]


@pytest.mark.parametrize("fill", [0, 1])
def test_an_ellipse_has_a_thin_dotted_black_box_around_it(fill):
    host = one_to_one()
    host.control.ActiveColor = GREEN
    figure(host, LINE, [A, B], line=5, color=RED)
    figure(host, ELLIPSE, [C, B, A], line=7, color=BLUE, fill=fill)
    drawn = redrawn(host)
    around = (C, (C[0], B[1]), B, (B[0], C[1]), C)
    assert shapes(drawn) == [("Polyline", (A, B)), ("Polyline", around), *path("Ellipse", *C, *B), ("FillPath",)]
    assert looks(drawn, "Polyline", "Ellipse") == [
        ("Polyline", (SOLID, 5, RED), solid(BLACK)), ("Polyline", (DOT, 1, BLACK), solid(BLACK)),
        ("Ellipse", (SOLID, 5, RED), solid(BLACK))], "the pen before comes back behind the box"


def test_the_box_of_an_ellipse_is_thin_on_a_fine_device_too():
    host = one_to_one()
    figure(host, ELLIPSE, [(180, 140), (220, 160)])
    context = fine_context()
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0, -150.0, PIXEL_ZOOM, 1)
    (drawn,) = [each for each in pens([each._replace(context="own") for each in verbs(context)], "own")
                if each.verb.name == "Polyline"]
    assert drawn.pen == (DOT, 1, BLACK)


def test_an_ellipse_with_one_point_has_no_ellipse():
    host = one_to_one()
    figure(host, ELLIPSE, [A])
    figure(host, LINE, [A, B])
    drawn = redrawn(host)
    assert not named(after_copy(drawn), "Ellipse") and not named(after_copy(drawn), "FillPath")
    assert polylines(drawn)[-1] == (A, B)


@pytest.mark.parametrize("kind", [0, 5, 6, 9, 10, -1, 9999])
def test_other_types_draw_nothing_but_choose_their_raster_mode(kind):
    host = one_to_one()
    figure(host, kind, [A, B, C], fill=0)
    figure(host, LINE, [A, B])
    drawn = redrawn(host)
    assert shapes(drawn) == [("Polyline", (A, B))]
    assert raster_modes(drawn) == [R2_MASKPEN, R2_COPYPEN]


@pytest.mark.parametrize("kind, name", [(POINT, "FillPath"), (LINE, "Polyline"), (POLYGON, "FillPath"), (CIRCLE, "FillPath"),
                                        (ELLIPSE, "FillPath")])
@pytest.mark.parametrize("fill, mode", [(1, R2_COPYPEN), (0, R2_MASKPEN)])
def test_a_figure_that_is_not_filled_combines_with_what_lies_below(kind, name, fill, mode):
    host = one_to_one()
    figure(host, kind, [A] if kind == POINT else [A, B], fill=fill)
    told = [each.rop2 for each in pens(after_copy(redrawn(host)), "top") if each.verb.name == name]
    assert told == [mode]


# --- Positions ---------------------------------------------------------------------------------------------------------------


def test_a_pixel_is_found_by_adding_a_half_and_cutting():
    host = one_to_one()
    figure(host, LINE, [(100.5, 100.49), (-10.7, 200.5), (300, -0.5)])
    assert points_of_lines(host) == [[(101, 100), (-10, 201), (300, 0)]]


def test_a_figure_knows_no_origin_of_a_block():
    host = one_to_one()
    assert host.control.DigMemAlloc2("A", 1, LINE, "", 1, 100.0, 100.0)
    host.add_item("A", 1, 1, [(0, -200), (50, -250)])
    figure(host, LINE, [(0, 200), (50, 250)])
    drawn = redrawn(host)
    assert polylines(drawn) == [((0, 200), (50, 250))]
    assert [each.values[0] for each in named(drawn, "Polyline", "base")] == [((100, 100), (150, 150))]


@pytest.mark.parametrize("angle, scale_x, scale_y", [(0.0, 2.0, 0.5), (30.0, 1.0, 1.0), (-45.0, 0.5, 2.0)])
def test_figures_and_strings_turn_and_stretch_with_the_view(angle, scale_x, scale_y):
    host = one_to_one()
    host.control.OrgStrVisible = True
    figure(host, LINE, [A, C])
    host.SetOrgDatString(1, "text", float(B[0]), -float(B[1]), 10, 0, 1)
    host.control.Rotate, host.control.ScaleX, host.control.ScaleY = angle, scale_x, scale_y

    def device(x, y):
        a = -angle * 0.01745328
        turned = (x, y) if angle == 0 else (math.cos(a) * x - math.sin(a) * y, math.sin(a) * x + math.cos(a) * y)
        return to_int(turned[0] * scale_x), to_int(turned[1] * scale_y)

    drawn = redrawn(host)
    assert polylines(drawn) == [(device(*A), device(*C))]
    assert texts(drawn) == [(*device(*B), b"text")]


@pytest.mark.parametrize("x, y", [(math.nan, 0.0), (math.inf, -math.inf), (1e300, -1e300), (3e9, 3e9), (-3e9, 0.0)])
@pytest.mark.parametrize("kind", [POINT, LINE, POLYGON, CIRCLE, ELLIPSE])
def test_positions_beyond_all_pixels_harm_nothing(kind, x, y):
    host = one_to_one()
    host.control.OrgStrVisible = True
    host.control.ActivePointType = 1
    number = host.MakeOrgDatEx(kind, 32767, RED, 1)
    host.AddOrgPnt(number, x, y)
    if kind != POINT:
        host.AddOrgPnt(number, -x, -y)
        host.AddOrgPnt(number, x, y)
    set_active(host, number, True)
    host.SetOrgDatString(number, "text", x, y, 10, 0, 1)
    host.SetOrgTopDrawID(number)
    figure(host, LINE, [A, B])
    drawn = redrawn(host)
    assert (A, B) in polylines(drawn)
    host.control.OrvScrl(10.0, -10.0)
    context = fine_context()
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 0.0, 0.0, 1, 0)
    assert len(dump(host)["orgDats"]) == 2


# --- What lies in sight ------------------------------------------------------------------------------------------------------


def test_a_figure_out_of_sight_only_chooses_its_raster_mode():
    host = one_to_one()
    host.control.ActivePointType = 1
    for kind, fill in ((LINE, 0), (POLYGON, 1), (ELLIPSE, 0)):
        figure(host, kind, [(-100, 100), (-50, 200), (-80, 300)], fill=fill, active=True)
    drawn = redrawn(host)
    assert shapes(drawn) == []
    assert raster_modes(drawn) == [R2_MASKPEN, R2_COPYPEN, R2_MASKPEN]


@pytest.mark.parametrize("x, y, seen", [(0, 0, True), (799, 599, True), (800, 300, False), (400, 600, False), (-2, 300, False),
                                        (400, -2, False), (-1, -1, True)])
def test_a_single_point_must_lie_inside_whatever_the_size_of_its_mark(x, y, seen):
    """The pixels left of 0 begin at -2: -1 + 0.5 is cut to 0."""
    host = one_to_one()
    figure(host, POINT, [(x, y)])
    assert bool(shapes(redrawn(host))) is seen


@pytest.mark.parametrize("points, seen", [
    ([(-50, 300), (-50, 301)], False),
    ([(-50, 300), (5, 300)], True),
    ([(-50, 300), (900, 300)], True),  # straight across
    ([(400, -50), (400, 700)], True),
    ([(-50, 700), (900, 700)], False),  # below
    ([(-50, 100), (100, -50)], True),  # cuts the corner
    ([(-50, 50), (50, -50)], True),  # through the very corner
    ([(-50, 40), (40, -50)], False),  # passes the corner outside
    ([(-100, 300), (400, 700)], True),  # cuts the left side at 380 and the lower one at 275
    ([(-100, -100), (900, -100), (900, 700), (-100, 700), (-100, -100)], True),  # surrounds the window
    ([(-100, -100), (900, -100), (900, 700)], False),
])
def test_a_figure_is_seen_when_a_segment_meets_the_window_or_all_of_it_lies_inside(points, seen):
    host = one_to_one()
    figure(host, LINE, points)
    assert bool(polylines(redrawn(host))) is seen


def scrolled(host, dx, dy):
    """What a drawn scroll of the view, y downward, shows."""
    drain(host)
    host.control.OrvScrl(dx, -dy)
    return [each for each in verbs(host) if each.context == "top"]


def lines_in(drawn):
    return [each.values[0] for each in named(drawn, "Polyline", "top")]


def test_a_scroll_in_both_directions_draws_the_figures_that_meet_its_strips():
    host = one_to_one()
    figure(host, LINE, [(300, 300), (400, 400)])  # in the middle
    figure(host, LINE, [(820, 100), (840, 120)])  # comes in at the right
    figure(host, LINE, [(100, 610), (120, 620)], fill=0)  # comes in below
    figure(host, LINE, [(10, 300), (20, 310)])  # leaves at the left
    drawn = scrolled(host, 50.0, 30.0)
    assert lines_in(drawn) == [((770, 70), (790, 90)), ((50, 580), (70, 590))]
    assert [each.values[0] for each in named(drawn, "SetROP2")] == [R2_COPYPEN, R2_COPYPEN, R2_MASKPEN, R2_COPYPEN]


def test_a_scroll_along_one_axis_draws_all_figures():
    host = one_to_one()
    figure(host, LINE, [(300, 300), (400, 400)])
    figure(host, LINE, [(820, 100), (840, 120)])
    assert lines_in(scrolled(host, 50.0, 0.0)) == [((250, 300), (350, 400)), ((770, 100), (790, 120))]


def test_a_single_point_comes_in_by_the_side_strip_only():
    host = one_to_one()
    figure(host, POINT, [(820, 100)])
    figure(host, POINT, [(100, 610)])
    drawn = scrolled(host, 50.0, 30.0)
    squares = {each.values[0] for each in named(drawn, "Polygon", "top")}
    assert squares == {box(770, 70, HALF)}


@pytest.mark.parametrize("dx, dy", [(10.25, 0.0), (10.75, 0.0), (0.0, 20.5), (0.25, 0.0)])
def test_a_scroll_by_a_fraction_of_a_pixel_carries_it_into_the_figures_and_their_strings(dx, dy):
    host = one_to_one()
    host.control.OrgStrVisible = True
    figure(host, LINE, [(100.5, 100.5), (300.25, 300.75)])
    host.SetOrgDatString(1, "text", 200.5, -200.5, 10, 0, 1)

    def device(x, y):
        pend_x, pend_y = dx - to_int(dx), dy - to_int(dy)
        return to_int(x - dx + pend_x), to_int(y - dy + pend_y)

    drawn = scrolled(host, dx, dy)
    assert lines_in(drawn) == [(device(100.5, 100.5), device(300.25, 300.75))]
    assert [each.values for each in named(drawn, "TextOut")] == [(*device(200.5, 200.5), b"text")]


@pytest.mark.parametrize("kind", [0, 1])
def test_figures_and_strings_are_drawn_on_a_hosts_context(kind):
    host = one_to_one()
    host.control.OrgStrVisible = True
    figure(host, LINE, [(190, 140), (210, 160)], color=RED)
    host.SetOrgDatString(1, "text", 200.0, -150.0, 10, 0, 1)
    drain(host)
    context = fine_context()
    zoom = 2 * PIXEL_ZOOM
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0, -150.0, zoom, kind)
    drawn = verbs(context)
    dots = 4724 * 1000 // 400
    half_w, half_h = (to_int(side * (float(zoom) / float(dots))) // 2 for side in (400, 300))

    def device(x, y):
        r = float(dots) / float(zoom)
        return to_int((x - (200.0 - half_w)) * r), to_int((y - (150.0 - half_h)) * r)

    assert [each.values[0] for each in drawn if each.name == "Polyline"] == [(device(190, 140), device(210, 160))]
    assert [each.values for each in drawn if each.name == "TextOut"] == [(*device(200, 150), b"text")]
    assert not named(verbs(host), "Polyline", "top")


# --- Strings -----------------------------------------------------------------------------------------------------------------


def test_strings_are_shown_only_when_asked_for():
    host = one_to_one()
    figure(host, LINE, [A, B])
    host.SetOrgDatString(1, "text", 5.0, -6.0, 10, 0, 1)
    assert texts(redrawn(host)) == []
    host.control.OrgStrVisible = True
    assert texts(redrawn(host)) == [(5, 6, b"text")]
    host.control.OrgStrVisible = False
    assert texts(redrawn(host)) == []


def test_strings_come_behind_all_figures_in_their_order():
    host = one_to_one()
    host.control.OrgStrVisible = True
    for number in (1, 2, 3):
        figure(host, LINE, [A, B])
    host.SetOrgDatString(3, "three", 5.0, -6.0, 10, 0, 1)
    host.SetOrgDatString(1, "one", 7.0, -8.0, 10, 0, 1)
    drawn = redrawn(host)
    assert [each.name for each in after_copy(drawn) if each.name in ("Polyline", "TextOut")] == ["Polyline"] * 3 + ["TextOut"] * 2
    assert texts(drawn) == [(7, 8, b"one"), (5, 6, b"three")]


@pytest.mark.parametrize("fill, mode", [(0, R2_MASKPEN), (1, R2_COPYPEN), (2, R2_COPYPEN), (-1, R2_COPYPEN)])
def test_the_background_switch_of_a_string_is_its_raster_mode(fill, mode):
    host = one_to_one()
    host.control.OrgStrVisible = True
    figure(host, LINE, [A, B], fill=int(fill == 0))
    host.SetOrgDatString(1, "text", 5.0, -6.0, 10, 0, fill)
    assert raster_modes(redrawn(host))[-1] == mode


def test_size_and_colour_of_a_string_have_no_effect():
    told = []
    for size, color in ((10, 0), (99, RED)):
        host = one_to_one()
        host.control.OrgStrVisible = True
        figure(host, LINE, [A, B])
        host.SetOrgDatString(1, "text", 5.0, -6.0, size, color, 1)
        told.append(after_copy(redrawn(host)))
    assert told[0] == told[1]
    assert not {"SetTextColor", "SetBkColor", "SetBkMode", "SetTextAlign"} & {each.name for each in told[0]}
    assert not [each for each in told[0] if each.name == "SelectObject" and each.values[0][0] == "Font"]


def test_strings_are_written_without_points_behind_an_empty_figure_and_out_of_sight():
    host = one_to_one()
    host.control.OrgStrVisible = True
    figure(host, LINE, [])
    figure(host, 77, [A])
    figure(host, LINE, [(-100, 100), (-50, 200)])
    for number, x in ((1, 5.0), (2, -500.0), (3, 5000.0)):
        host.SetOrgDatString(number, f"text {number}", x, -6.0, 10, 0, 1)
    assert texts(redrawn(host)) == [(5, 6, b"text 1"), (-499, 6, b"text 2"), (5000, 6, b"text 3")], "-500 + 0.5 is cut to -499"


def test_the_image_of_the_top_figure_has_no_string():
    host = centred_on_0()
    host.control.OrgStrVisible = True
    map_figure(host, LINE, [(100, 50), (200, 70)])
    host.SetOrgDatString(1, "text", 5.0, 6.0, 10, 0, 1)
    host.SetOrgTopDrawID(1)
    assert texts(redrawn(host)) == [(5, 294, b"text")]


def test_figures_at_another_scale():
    host = one_to_one()
    figure(host, LINE, [A, C])
    host.control.Zoom = 10000
    x, y = view(host, "ViewX"), view(host, "ViewY")
    s = float(DOTS_PER_M) / float(10000)
    assert points_of_lines(host) == [[(to_int((px - x) * s), to_int((py - y) * s)) for px, py in (A, C)]]
