"""Overlay figures as they are drawn: pens and brushes that pass from one to the next, vertex marks, the top figure."""

import math
import random

import pytest
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, R2_COPYPEN, R2_MASKPEN, dump, one_to_one, to_int
from overlay_rig import (A, B, BLACK, BLUE, C, D, DOT, GREEN, HALF, RED, SOLID, TRIANGLE, WHITE, box, centred_on_0, figure,
                         filled, looks, map_figure, mark, marked, marks, on_fine_context, path, polylines, raster_modes,
                         redrawn, set_active, shapes, solid)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


# --- Pens --------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("line, pen", [(0, (SOLID, 1)), (1, (SOLID, 1)), (2, (SOLID, 2)), (9, (SOLID, 9)), (-1, (DOT, 1)),
                                       (-3, (DOT, 3)), (32767, (SOLID, 32767)), (-32768, (DOT, 32768))])
def test_the_line_number_chooses_style_and_width_of_the_pen(line, pen):
    host = one_to_one()
    figure(host, LINE, [A, B], line=line, color=RED)
    assert looks(redrawn(host), "Polyline") == [("Polyline", (*pen, RED), solid(BLACK))]


@pytest.mark.parametrize("line, color, pen", [(0, RED, (SOLID, 3, RED)), (1, RED, (SOLID, 3, RED)), (2, RED, (SOLID, 6, RED)),
                                              (-1, RED, (DOT, 3, RED)), (-3, RED, (DOT, 9, RED)), (0, BLACK, (SOLID, 3, BLACK)),
                                              (2, BLACK, (SOLID, 6, BLACK))])
def test_pens_grow_with_a_finer_device(line, color, pen):
    host = one_to_one()
    figure(host, LINE, [(190, 140), (210, 160)], line=line, color=color)
    assert looks(on_fine_context(host), "Polyline", context="own") == [("Polyline", pen, solid(BLACK))]


def test_a_first_black_line_whose_number_is_the_devices_factor_keeps_the_pen_it_finds():
    host = one_to_one()
    figure(host, LINE, [(190, 140), (210, 160)], line=3, color=BLACK)
    figure(host, LINE, [(190, 140), (210, 170)], line=3, color=RED)
    assert [pen for _, pen, _ in looks(on_fine_context(host), "Polyline", context="own")] == [(SOLID, 3, BLACK), (SOLID, 9, RED)]


def test_the_active_pen_is_three_times_as_wide_whatever_the_line():
    host = one_to_one()
    host.control.ActiveColor = GREEN
    figure(host, LINE, [(190, 140), (210, 160)], line=-7, color=RED, active=True)
    assert looks(redrawn(host), "Polyline") == [("Polyline", (SOLID, 3, GREEN), solid(GREEN))]
    assert looks(on_fine_context(host), "Polyline", context="own") == [("Polyline", (SOLID, 9, GREEN), solid(GREEN))]


def test_a_line_has_a_pen_of_its_own_each_time_that_line_or_colour_changes():
    host = one_to_one()
    for line, color in ((0, RED), (0, RED), (0, BLUE), (2, BLUE), (-2, BLUE), (0, BLACK), (1, BLACK)):
        figure(host, LINE, [A, B], line=line, color=color)
    assert [pen for _, pen, _ in looks(redrawn(host), "Polyline")] == [
        (SOLID, 1, RED), (SOLID, 1, RED), (SOLID, 1, BLUE), (SOLID, 2, BLUE), (DOT, 2, BLUE), (SOLID, 1, BLACK),
        (SOLID, 1, BLACK)]


def test_a_polygon_is_filled_in_its_colour_and_outlined_in_it_only_with_line_0():
    host = one_to_one()
    figure(host, POLYGON, TRIANGLE, line=0, color=RED)
    figure(host, POLYGON, TRIANGLE, line=5, color=BLUE)
    figure(host, POLYGON, TRIANGLE, line=-5, color=GREEN)
    assert filled(redrawn(host)) == [((SOLID, 1, RED), solid(RED)), ((SOLID, 1, BLACK), solid(BLUE)),
                                     ((SOLID, 1, BLACK), solid(GREEN))]


def test_a_circle_takes_its_colour_as_a_polygon_does():
    host = one_to_one()
    figure(host, CIRCLE, [A, B], line=0, color=RED)
    figure(host, CIRCLE, [A, B], line=5, color=BLUE)
    assert filled(redrawn(host)) == [((SOLID, 1, RED), solid(RED)), ((SOLID, 1, BLACK), solid(BLUE))]


@pytest.mark.parametrize("kind, points", [(POINT, [A]), (ELLIPSE, [A, C])])
def test_a_point_and_an_ellipse_are_filled_with_the_brush_of_those_before(kind, points):
    host = one_to_one()
    figure(host, kind, points, line=0, color=RED)
    figure(host, POLYGON, TRIANGLE, line=1, color=BLUE)
    figure(host, kind, points, line=0, color=GREEN)
    assert filled(redrawn(host)) == [((SOLID, 1, RED), solid(BLACK)), ((SOLID, 1, BLACK), solid(BLUE)),
                                     ((SOLID, 1, GREEN), solid(BLUE))]


@pytest.mark.parametrize("kind, points", [(POINT, [A]), (ELLIPSE, [A, C])])
def test_a_point_and_an_ellipse_with_a_line_number_keep_the_pen_of_those_before(kind, points):
    host = one_to_one()
    figure(host, kind, points, line=4, color=RED)
    figure(host, LINE, [A, B], line=6, color=BLUE)
    figure(host, kind, points, line=4, color=RED)
    figure(host, POLYGON, TRIANGLE, line=2, color=GREEN)
    figure(host, kind, points, line=-4, color=RED)
    assert filled(redrawn(host)) == [((SOLID, 1, BLACK), solid(BLACK)), ((SOLID, 6, BLUE), solid(BLACK)),
                                     ((SOLID, 1, BLACK), solid(GREEN)), ((SOLID, 1, BLACK), solid(GREEN))]


def test_a_polygon_behind_a_line_of_its_colour_keeps_the_brush_before():
    host = one_to_one()
    figure(host, POLYGON, TRIANGLE, line=1, color=BLUE)
    figure(host, LINE, [A, B], line=1, color=RED)
    figure(host, POLYGON, TRIANGLE, line=1, color=RED)
    assert filled(redrawn(host)) == [((SOLID, 1, BLACK), solid(BLUE))] * 2


def test_a_line_behind_a_polygon_of_its_line_and_colour_keeps_the_pen_before():
    host = one_to_one()
    figure(host, LINE, [A, B], line=2, color=BLUE)
    figure(host, POLYGON, TRIANGLE, line=3, color=RED)
    figure(host, LINE, [A, B], line=3, color=RED)
    assert [pen for _, pen, _ in looks(redrawn(host), "Polyline")] == [(SOLID, 2, BLUE)] * 2


def test_a_figure_out_of_sight_is_not_remembered():
    host = one_to_one()
    figure(host, LINE, [A, B], line=2, color=RED)
    figure(host, LINE, [(-100, 100), (-50, 200)], line=3, color=BLUE)
    figure(host, LINE, [A, B], line=3, color=BLUE)
    assert [pen for _, pen, _ in looks(redrawn(host), "Polyline")] == [(SOLID, 2, RED), (SOLID, 3, BLUE)]


def test_an_active_figure_is_remembered_by_its_own_line_and_colour():
    host = one_to_one()
    host.control.ActiveColor = GREEN
    figure(host, LINE, [A, B], line=2, color=RED, active=True)
    figure(host, LINE, [A, B], line=2, color=RED)
    assert [pen for _, pen, _ in looks(redrawn(host), "Polyline")] == [(SOLID, 3, GREEN), (SOLID, 2, RED)]


@pytest.mark.parametrize("kind, points", [(POLYGON, TRIANGLE), (POLYGON, [A, B, C]), (CIRCLE, [A, B])])
def test_an_active_area_is_filled_in_the_active_colour_and_the_next_one_in_its_own(kind, points):
    host = one_to_one()
    host.control.ActiveColor = GREEN
    figure(host, kind, points, line=1, color=RED, active=True)
    figure(host, kind, points, line=1, color=RED)
    figure(host, kind, points, line=1, color=BLUE)
    assert filled(redrawn(host)) == [((SOLID, 3, GREEN), solid(GREEN)), ((SOLID, 1, BLACK), solid(RED)),
                                     ((SOLID, 1, BLACK), solid(BLUE))]


def test_the_active_pen_and_brush_stay_for_a_point_that_chooses_none():
    host = one_to_one()
    host.control.ActiveColor = GREEN
    figure(host, LINE, [A, B], color=RED, active=True)
    figure(host, POINT, [A], line=4, color=BLUE)
    figure(host, POINT, [A], line=0, color=BLUE)
    figure(host, POLYGON, TRIANGLE, line=4, color=RED)
    assert filled(redrawn(host)) == [((SOLID, 3, GREEN), solid(GREEN)), ((SOLID, 1, BLUE), solid(GREEN)),
                                     ((SOLID, 1, BLACK), solid(RED))]


@pytest.mark.parametrize("kind, points", [(POINT, [A]), (LINE, [A, B]), (POLYGON, TRIANGLE), (CIRCLE, [A, B]), (ELLIPSE, [A, C])])
@BOTH
def test_every_active_figure_has_the_active_look(newer, kind, points):
    host = one_to_one(newer)
    host.control.ActiveColor = GREEN
    number = figure(host, kind, points, line=2, color=RED, active=True)
    told = looks(redrawn(host), "Polyline", "FillPath", "StrokeAndFillPath")
    assert told[-1][1:] == ((SOLID, 3, GREEN), solid(GREEN))
    set_active(host, number, False)
    assert GREEN not in [pen[2] for _, pen, _ in looks(redrawn(host), "Polyline", "FillPath", "StrokeAndFillPath")]


def test_by_itself_the_active_colour_is_red():
    host = one_to_one()
    figure(host, LINE, [A, B], active=True)
    assert looks(redrawn(host), "Polyline") == [("Polyline", (SOLID, 3, RED), solid(RED))]


# --- A whole list of figures at once -----------------------------------------------------------------------------------------


def told_by_hand(figures, active_color):
    """What pen and brush each figure is drawn with, kept as the list is walked: (pen, brush) of the last shape of each."""
    pen = current_pen = (SOLID, 1, BLACK)
    brush = current_brush = BLACK
    line_before, color_before = 1, BLACK
    told = []
    for kind, line, color, active in figures:
        if kind in (POLYGON, CIRCLE):
            pen = (SOLID, 1, BLACK)
            if color != color_before:
                current_brush = color
            brush = current_brush
        if kind == LINE or line == 0:
            if (line, color) != (line_before, color_before):
                current_pen = (DOT if line < 0 else SOLID, max(abs(line), 1), color)
            pen = current_pen
        line_before, color_before = line, color
        if active:
            pen, brush = (SOLID, 3, active_color), active_color
        told.append((pen, solid(brush)))
    return told


@pytest.mark.parametrize("seed", range(20))
def test_pens_and_brushes_pass_from_figure_to_figure(seed):
    chance = random.Random(seed)
    shape = {POINT: [A], LINE: [A, B], POLYGON: TRIANGLE, CIRCLE: [A, B]}
    host = one_to_one()
    host.control.ActiveColor = GREEN
    kinds, lines, colors = list(shape), (0, 1, 1, 2, -2), (BLACK, RED, BLUE)
    figures = [(chance.choice(kinds), chance.choice(lines), chance.choice(colors), chance.random() < 0.2) for _ in range(60)]
    for kind, line, color, active in figures:
        figure(host, kind, shape[kind], line, color, active=active)
    drawn = looks(redrawn(host), "Polyline", "FillPath", "StrokeAndFillPath")
    assert [(pen, brush) for _, pen, brush in drawn] == told_by_hand(figures, GREEN)


# --- Vertex marks ------------------------------------------------------------------------------------------------------------


def test_an_active_line_of_two_points_has_two_rings_at_its_start_and_one_at_its_end():
    host = one_to_one()
    host.control.ActivePointType = 1
    figure(host, LINE, [A, B], active=True)
    drawn = redrawn(host)
    assert marks(drawn) == [mark(A, 5), mark(A, 3), mark(B, 5)]
    names = [name for name, *_ in shapes(drawn)]
    assert names == ["Ellipse"] * 3 + ["Polyline"], "the line lies over its marks"


def test_the_second_vertex_has_three_rings():
    host = one_to_one()
    host.control.ActivePointType = 1
    figure(host, LINE, [A, B, C, D], active=True)
    assert marks(redrawn(host)) == [mark(A, 5), mark(A, 3), mark(B, 2), mark(B, 4), mark(B, 3), mark(C, 3), mark(D, 5)]


@pytest.mark.parametrize("kind, points", [(POINT, [A]), (LINE, [A, B, C]), (POLYGON, [A, B, C, D]), (POLYGON, TRIANGLE),
                                          (CIRCLE, [A, B]), (CIRCLE, [A]), (ELLIPSE, [A, C]), (9, [A, B, C]), (POLYGON, [A])])
def test_the_marks_of_every_type(kind, points):
    host = one_to_one()
    host.control.ActivePointType = 1
    figure(host, kind, points, active=True)
    assert marks(redrawn(host)) == marked(*points)


def test_every_ring_of_a_polygon_has_marks_of_its_own_and_loose_points_have_none():
    host = one_to_one()
    host.control.ActivePointType = 1
    hole = [(150, 150), (200, 150), (180, 200), (190, 210), (150, 150)]
    figure(host, POLYGON, [*TRIANGLE, *hole, (500, 500)], active=True)
    assert marks(redrawn(host)) == marked(*TRIANGLE) + marked(*hole)


@pytest.mark.parametrize("mode, active", [(0, True), (1, False), (2, True), (-1, True)])
def test_marks_need_both_an_active_figure_and_the_mode_of_circles(mode, active):
    host = one_to_one()
    host.control.ActivePointType = mode
    figure(host, LINE, [A, B], active=active)
    drawn = redrawn(host)
    assert marks(drawn) == []
    assert polylines(drawn) == [(A, B)]


def test_marks_are_drawn_with_the_pen_and_brush_of_the_context():
    host = one_to_one()
    host.control.ActivePointType = 1
    redrawn(host)
    figure(host, POLYGON, TRIANGLE, color=BLUE)
    figure(host, LINE, [A, B], color=BLUE, line=8, active=True)
    drawn = redrawn(host)
    assert {(pen, brush) for _, pen, brush in looks(drawn, "Ellipse")} == {((SOLID, 1, BLACK), solid(WHITE))}
    assert looks(drawn, "Polyline") == [("Polyline", (SOLID, 3, RED), solid(RED))]


def test_the_box_of_an_ellipse_comes_before_its_marks():
    host = one_to_one()
    host.control.ActivePointType = 1
    figure(host, ELLIPSE, [A, C], active=True)
    names = [name for name, *_ in shapes(redrawn(host))]
    assert names == ["Polyline", *["Ellipse"] * 3, "BeginPath", "Ellipse", "EndPath", "FillPath"]


def test_marks_keep_their_size_on_a_finer_device():
    host = one_to_one()
    host.control.ActivePointType = 1
    figure(host, LINE, [(190, 140), (210, 160)], active=True)
    sizes = [each.values[2] - each.values[0] for each in on_fine_context(host) if each.name == "Ellipse"]
    assert sizes == [10, 6, 10]


# --- The top figure ----------------------------------------------------------------------------------------------------------


@BOTH
def test_the_top_figure_is_drawn_once_more_above_all_others_and_mirrored(newer):
    host = centred_on_0(newer)
    map_figure(host, LINE, [(100, 50), (200, 70)], line=4, color=RED)
    map_figure(host, LINE, [(100, 80), (200, 90)], line=-6, color=BLUE)
    host.SetOrgTopDrawID(1)
    drawn = redrawn(host)
    assert polylines(drawn) == [((100, 250), (200, 230)), ((100, 220), (200, 210)), ((100, 350), (200, 370))]
    assert [pen for _, pen, _ in looks(drawn, "Polyline")] == [(SOLID, 4, RED), (DOT, 6, BLUE), (SOLID, 4, RED)]
    host.SetOrgTopDrawID(2)
    assert polylines(redrawn(host))[2:] == [((100, 380), (200, 390))]
    host.SetOrgTopDrawID(0)
    assert len(polylines(redrawn(host))) == 2


@BOTH
def test_the_image_of_the_top_figure_is_gone_after_the_frame(newer):
    host = centred_on_0(newer)
    map_figure(host, LINE, [(100, 50), (200, 70)], color=RED)
    map_figure(host, POLYGON, [(100, 50), (200, 70), (150, 90), (100, 50)], color=RED)
    host.SetOrgTopDrawID(2)
    before = dump(host)["orgDats"]
    for _ in range(3):
        redrawn(host)
        host.control.paint()
        host.control.OrvScrl(5.0, 0.0)
    assert dump(host)["orgDats"] == before
    assert host.GetOrgDatEx(3)[0] == -1
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 3


@pytest.mark.parametrize("kind, points, expected", [
    (POINT, [(100, 50)], path("Polygon", box(100, 350, HALF)) + [("FillPath",), ("Polygon", box(100, 350, HALF))]),
    (POLYGON, [(100, 50), (200, 70), (150, 90), (100, 50)],
     path("PolyPolygon", ((100, 350), (200, 370), (150, 390), (100, 350)), (4,)) + [("StrokeAndFillPath",)]),
    (CIRCLE, [(100, 50), (100, 80)], path(*mark((100, 350), 30)) + [("FillPath",)]),
    (ELLIPSE, [(100, 50), (200, 70)],
     [("Polyline", ((100, 350), (100, 370), (200, 370), (200, 350), (100, 350)))] + path("Ellipse", 100, 350, 200, 370)
     + [("FillPath",)]),
])
@pytest.mark.parametrize("fill, mode", [(1, R2_COPYPEN), (0, R2_MASKPEN)])
def test_the_image_has_type_and_fill_of_the_top_figure(kind, points, expected, fill, mode):
    host = centred_on_0()
    map_figure(host, kind, points, color=RED, fill=fill)
    map_figure(host, LINE, [(0, 0), (10, 0)], fill=1 - fill)
    host.SetOrgTopDrawID(1)
    drawn = redrawn(host)
    last_line = max(i for i, shape in enumerate(shapes(drawn)) if shape == ("Polyline", ((0, 300), (10, 300))))
    assert shapes(drawn)[last_line + 1:] == expected
    assert raster_modes(drawn)[-1] == mode


def test_the_image_of_an_active_figure_is_not_active_and_has_no_marks():
    host = centred_on_0()
    host.control.ActivePointType = 1
    map_figure(host, LINE, [(100, 50), (200, 70)], line=4, color=BLUE, active=True)
    host.SetOrgTopDrawID(1)
    drawn = redrawn(host)
    assert [pen for _, pen, _ in looks(drawn, "Polyline")] == [(SOLID, 3, RED), (SOLID, 4, BLUE)]
    assert marks(drawn) == marked((100, 250), (200, 230))


def test_the_image_of_a_figure_out_of_sight_may_be_in_sight():
    host = one_to_one()
    map_figure(host, LINE, [(100, 50), (200, 70)])
    host.SetOrgTopDrawID(1)
    assert polylines(redrawn(host)) == [((100, 50), (200, 70))], "map y 50 is above the window, its mirror image in it"


def test_the_image_turns_from_its_mirrored_place():
    host = centred_on_0()
    map_figure(host, LINE, [(100, 50), (200, 70)])
    host.SetOrgTopDrawID(1)
    host.control.Rotate = 30.0
    a = -30.0 * 0.01745328

    def device(x, y):
        return to_int(math.cos(a) * x - math.sin(a) * y), to_int(math.sin(a) * x + math.cos(a) * y + 300)

    assert polylines(redrawn(host)) == [(device(100, -50), device(200, -70)), (device(100, 50), device(200, 70))]


@pytest.mark.parametrize("number", [2, 3, 99, -1, -99, 2**31 - 1])
@BOTH
def test_an_unknown_top_figure_draws_no_image_and_leaves_none(newer, number):
    host = centred_on_0(newer)
    map_figure(host, LINE, [(100, 50), (200, 70)])
    host.SetOrgTopDrawID(number)
    for _ in range(3):
        assert polylines(redrawn(host)) == [((100, 250), (200, 230))]
    assert len(dump(host)["orgDats"]) == 1
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 2


@pytest.mark.parametrize("empty", [1, 2])
def test_a_figure_without_points_ends_the_frame_before_the_image_too(empty):
    host = centred_on_0()
    for number in (1, 2, 3):
        map_figure(host, LINE, [] if number == empty else [(100, 50), (200, 70)])
    host.SetOrgTopDrawID(1 if empty == 2 else 3)
    assert len(polylines(redrawn(host))) == empty - 1
    assert [each["ID"] for each in dump(host)["orgDats"]] == [1, 2, 3]


@pytest.mark.parametrize("top, image_y", [(1, 350), (3, 370)])
def test_an_image_whose_number_is_taken_comes_and_goes_and_the_frame_ends(top, image_y):
    host = centred_on_0()
    for y in (50, 60, 70):
        map_figure(host, LINE, [(100, y), (200, y)])
    host.DelOrgDataEx(2)
    host.SetOrgTopDrawID(top)
    before = dump(host)["orgDats"]
    assert polylines(redrawn(host)) == [((100, 250), (200, 250)), ((100, 230), (200, 230)), ((100, image_y), (200, image_y))]
    assert dump(host)["orgDats"] == before, "the image had number 3 as well"
