"""Circles, ellipses and mesh grids as they are drawn: places and sizes, pens, brushes and fills, sub layers, cells."""

import math

import pytest
from drawing_rig import (ACTIVE_RED, BLACK, BOTH, GREY, WHITE, activate, add_sub_layer, at_scale, drawn_on, figures, file_of,
                         fine_device, of,
                         put, redrawn, scrolled, with_layer)
from map_rig import CIRCLE, ELLIPSE, MESH, POLYGON, R2_COPYPEN, R2_MASKPEN, drawn_by, item, pens, verbs

FILLED, OUTLINED, STROKED = "FillPath", "StrokeAndFillPath", "StrokePath"
HOLLOW = 7
HATCHES = {1: 3, 2: 4, 3: 5, 4: 2, 5: 0, 6: 1}
# The shapes of the next tests: a layer type, and an item of it that lies in the box 370, 270 to 430, 330.
ROUND = {"circle": (CIRCLE, [(400, 300, 30)]), "ellipse": (ELLIPSE, [(370, 270), (430, 330)])}
BOX = (370, 270, 430, 330)
EACH_ROUND = pytest.mark.parametrize("kind, pixels", ROUND.values(), ids=ROUND)


def path(how, *box):
    return [("BeginPath",), ("Ellipse", *box), ("EndPath",), (how,)]


def moved(pixels, dx, dy=0):
    return [(x + dx, y + dy, *rest) for x, y, *rest in pixels]


def hatched(lay_type, pgn_type, *items, **settings):
    """A host with a layer of that type and hatch. The hatch can be set in a polygon layer only, whose type then changes."""
    host = at_scale()
    assert host.add_block("A", 1, POLYGON)
    assert host.SetLayLineType("A", pgn_type)
    assert host.DigMemDelete("A", 1)
    assert host.add_block("A", 1, lay_type)
    for dat_id, pixels in enumerate(items, 1):
        put(host, dat_id, *pixels)
    for name, value in settings.items():
        assert getattr(host, name)("A", value)
    return host


def in_sub_layer(host, dat_id=1, number=3, **look):
    add_sub_layer(host, number, **look)
    assert host.control.OrvSetDatSubLayer("A", 1, dat_id, number)


# --- Circles and ellipses ------------------------------------------------------------------------------------------------------


@EACH_ROUND
@BOTH
def test_a_round_shape_is_filled_in_the_first_colour_and_by_itself_has_no_outline(kind, pixels, newer):
    host = with_layer(kind, pixels, newer=newer, SetLayColor=0x123456, OrvSetLayColor2=0x654321)
    drawn = redrawn(host)
    assert figures(drawn) == path(FILLED, *BOX)
    (fill,) = drawn_by(drawn, FILLED)
    assert (fill.brush, fill.rop2) == (("solid", 0x123456), R2_COPYPEN)
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


@EACH_ROUND
def test_an_outlined_round_shape_has_the_second_colour_around_it(kind, pixels):
    host = with_layer(kind, pixels, OrvSetLayColor2=0x654321, SetLayLineSize=4, OrvSetLayOutLineMode=0)
    drawn = redrawn(host)
    assert figures(drawn) == path(OUTLINED, *BOX)
    (stroke,) = drawn_by(drawn, OUTLINED)
    assert (stroke.pen, stroke.brush) == ((0, 4, 0x654321), ("solid", GREY))


@EACH_ROUND
@pytest.mark.parametrize("line_type, style", [(0, 0), (1, 1), (2, 2), (3, 3), (4, 4), (8, 0), (-1, 0), (99, 0), (-2**31, 0)])
@pytest.mark.parametrize("loaded", [False, True], ids=["no line types", "line types loaded"])
def test_round_shapes_have_the_standard_pens_even_with_a_line_type_file(tmp_path, kind, pixels, line_type, style, loaded):
    host = with_layer(kind, pixels, OrvSetLayOutLineMode=0, SetLayLineType=line_type)
    if loaded:
        content = b"USERB,99,rail,20,6,90.0,1,1\r\nUSERA,2,dash,2,4,4\r\nSYS,0,solid\r\n"
        assert host.control.OrvReadLineTypeData(file_of(tmp_path, "types.txt", content)) == 3
    (stroke,) = drawn_by(redrawn(host), OUTLINED)
    assert stroke.pen == (style, 1, BLACK)


@EACH_ROUND
@pytest.mark.parametrize("line_type", [5, 6, 7])
def test_the_line_types_5_to_7_still_give_a_round_shape_an_outline(kind, pixels, line_type):
    host = with_layer(kind, pixels, OrvSetLayOutLineMode=0, SetLayLineType=line_type)
    assert figures(redrawn(host)) == path(OUTLINED, *BOX)


@EACH_ROUND
def test_the_outline_of_a_round_shape_grows_by_whole_times_on_a_finer_device(kind, pixels):
    host = with_layer(kind, moved(pixels, -300, -200), OrvSetLayOutLineMode=0, SetLayLineSize=2)
    (stroke,) = drawn_by(drawn_on(host, fine_device(383)), OUTLINED, "device")
    assert stroke.pen == (0, 6, BLACK)
    assert stroke.verb.name == OUTLINED


@EACH_ROUND
def test_a_masking_round_shape_combines_with_what_lies_below_unless_it_is_active(kind, pixels):
    host = with_layer(kind, pixels, moved(pixels, 100), SetLayPgnMode=0)
    activate(host, 2)
    assert [each.rop2 for each in drawn_by(redrawn(host), FILLED)] == [R2_MASKPEN, R2_COPYPEN]


@EACH_ROUND
@pytest.mark.parametrize("pgn_type, brush", [(0, ("solid", GREY)),
                                             *((each, ("hatch", hatch, GREY)) for each, hatch in HATCHES.items()),
                                             (8, ("solid", GREY)), (-1, ("solid", GREY)), (99, ("solid", GREY))])
def test_the_fill_pattern_of_a_round_shape(kind, pixels, pgn_type, brush):
    host = hatched(kind, pgn_type, pixels)
    (fill,) = drawn_by(redrawn(host), FILLED)
    assert fill.brush == brush


@EACH_ROUND
@pytest.mark.parametrize("pgn_type, brush", [(0, ("solid", 0x445566)), (8, ("solid", 0x445566)), (-1, ("solid", 0x445566)),
                                             *((each, ("hatch", hatch, 0x445566)) for each, hatch in HATCHES.items())])
def test_the_fill_pattern_that_a_sub_layer_gives_a_round_shape(kind, pixels, pgn_type, brush):
    host = with_layer(kind, pixels)
    in_sub_layer(host, pgn=pgn_type, color=0x445566)
    (fill,) = drawn_by(redrawn(host), FILLED)
    assert fill.brush == brush


@EACH_ROUND
def test_a_hollow_round_shape_without_outline_shows_nothing_unless_it_is_active(kind, pixels):
    host = hatched(kind, HOLLOW, pixels)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1
    activate(host)
    drawn = redrawn(host)
    assert figures(drawn) == path(FILLED, *BOX)
    assert drawn_by(drawn, FILLED)[0].brush == ("solid", ACTIVE_RED)


@EACH_ROUND
def test_a_hollow_round_shape_with_outline_is_stroked(kind, pixels):
    host = hatched(kind, HOLLOW, pixels, OrvSetLayOutLineMode=0, OrvSetLayColor2=0x654321)
    drawn = redrawn(host)
    assert figures(drawn) == path(STROKED, *BOX)
    assert drawn_by(drawn, STROKED)[0].pen == (0, 1, 0x654321)


@EACH_ROUND
def test_an_active_round_shape_is_filled_solid_keeps_its_outline_and_the_next_one_is_normal(kind, pixels):
    host = hatched(kind, 3, pixels, moved(pixels, 100), OrvSetLayOutLineMode=0, OrvSetLayColor2=0x654321)
    activate(host)
    host.control.ActiveColor = 0x00FF00
    first, second = drawn_by(redrawn(host), OUTLINED)
    assert (first.pen, first.brush) == ((0, 1, 0x654321), ("solid", 0x00FF00))
    assert (second.pen, second.brush) == ((0, 1, 0x654321), ("hatch", 5, GREY))


@EACH_ROUND
def test_an_active_round_shape_of_a_sub_layer_has_the_active_brush(kind, pixels):
    host = with_layer(kind, pixels)
    in_sub_layer(host, color=0x445566, pgn=HOLLOW, pgn_mode=0)
    activate(host)
    (fill,) = drawn_by(redrawn(host), FILLED)
    assert (fill.brush, fill.rop2) == (("solid", ACTIVE_RED), R2_COPYPEN)


@EACH_ROUND
def test_the_outline_that_a_sub_layer_gives_is_solid_whatever_its_line_type(kind, pixels):
    host = with_layer(kind, pixels)
    in_sub_layer(host, line_type=2, size=3, outline=0)
    assert host.control.OrvSetSubLayColor2("A", 3, 0x778899)
    (stroke,) = drawn_by(redrawn(host), OUTLINED)
    assert stroke.pen == (0, 3, 0x778899)


@EACH_ROUND
def test_after_an_item_of_a_sub_layer_a_round_shape_has_the_layers_pen_brush_outline_and_fill_mode(kind, pixels):
    host = with_layer(kind, pixels, moved(pixels, 100), SetLayColor=0x123456, OrvSetLayColor2=0x654321, SetLayLineSize=2)
    in_sub_layer(host, size=5, color=0x445566, outline=0, pgn_mode=0)
    first, second = [each for each in pens(redrawn(host)) if each.verb.name in (FILLED, OUTLINED)]
    assert (first.verb.name, first.brush, first.rop2) == (OUTLINED, ("solid", 0x445566), R2_MASKPEN)
    assert (second.verb.name, second.brush, second.rop2) == (FILLED, ("solid", 0x123456), R2_COPYPEN)
    host.control.OrvSetLayOutLineMode("A", 0)
    first, second = drawn_by(redrawn(host), OUTLINED)
    assert (first.pen, second.pen) == ((0, 5, BLACK), (0, 2, 0x654321))


@EACH_ROUND
def test_after_an_item_of_a_hollow_sub_layer_the_next_round_shape_is_hollow_too(kind, pixels):
    host = with_layer(kind, pixels, moved(pixels, 100))
    in_sub_layer(host, pgn=HOLLOW)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 2)["drawnFlg"] == 1


@EACH_ROUND
def test_after_an_item_of_a_filled_sub_layer_the_next_shape_of_a_hollow_layer_is_filled(kind, pixels):
    host = hatched(kind, HOLLOW, pixels, moved(pixels, 100), SetLayColor=0x123456)
    in_sub_layer(host, pgn=0, color=0x445566)
    assert [each.brush for each in drawn_by(redrawn(host), FILLED)] == [("solid", 0x445566), ("solid", 0x123456)]


@pytest.mark.parametrize("kind, pixels, seen", [(CIRCLE, [(-100, 300, 30)], 0), (ELLIPSE, [(-130, 270), (-70, 330)], 1)],
                         ids=["circle", "ellipse"])
def test_the_sub_layer_of_a_shape_off_the_window_is_looked_at_for_circles_and_not_for_ellipses(kind, pixels, seen):
    host = with_layer(kind, pixels, moved(pixels, 500))
    in_sub_layer(host, pgn=HOLLOW)
    assert len(of(redrawn(host), FILLED)) == seen
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2)] == [0, 1]


def test_a_circle_off_the_window_leaves_the_whole_look_of_its_sub_layer_to_the_next_one():
    host = with_layer(CIRCLE, [(-100, 300, 30)], [(400, 300, 30)])
    in_sub_layer(host, pgn=2, color=0x445566, outline=0, pgn_mode=0, size=3)
    assert host.control.OrvSetSubLayColor2("A", 3, 0x778899)
    (stroke,) = drawn_by(redrawn(host), OUTLINED)
    assert (stroke.pen, stroke.brush, stroke.rop2) == ((0, 3, 0x778899), ("hatch", 4, 0x445566), R2_MASKPEN)


@EACH_ROUND
def test_a_hidden_sub_layer_hides_a_round_shape_takes_its_drawn_mark_away_and_leaves_the_next_one_alone(kind, pixels):
    host = with_layer(kind, pixels, moved(pixels, 100))
    in_sub_layer(host, disp=False, pgn=HOLLOW, outline=0)
    assert figures(redrawn(host)) == path(FILLED, 470, 270, 530, 330)
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2)] == [0, 1]


@EACH_ROUND
@pytest.mark.parametrize("number", [99, -3])
def test_an_unknown_sub_layer_number_draws_a_round_shape_with_the_layers_attributes(kind, pixels, number):
    host = with_layer(kind, pixels, SetLayColor=0x123456)
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayerEx("A", 1, [1], [number])
    (fill,) = drawn_by(redrawn(host), FILLED)
    assert fill.brush == ("solid", 0x123456)


@EACH_ROUND
@pytest.mark.parametrize("tag, mode, drawn", [(0, True, 1), (1, True, 0), (1, False, 1), (-1, True, 0), (-1, False, 0),
                                              (-2, True, 1)])
def test_the_tag_of_a_round_shape_keeps_it_out_of_drawing(kind, pixels, tag, mode, drawn):
    host = with_layer(kind)
    put(host, 1, *pixels, tag=tag)
    host.control.LineTagMode = mode
    assert len(of(redrawn(host), "Ellipse")) == drawn
    assert item(host, "A", 1, 1)["drawnFlg"] == 1, "a tag leaves the mark of the search alone"


@EACH_ROUND
@pytest.mark.parametrize("dx, dy, seen", [(-429, 0, True), (-440, 0, False), (429, 0, True), (440, 0, False), (0, -329, True),
                                          (0, -340, False), (0, 329, True), (0, 340, False)])
def test_a_round_shape_is_drawn_when_its_box_reaches_into_the_window(kind, pixels, dx, dy, seen):
    host = with_layer(kind, moved(pixels, dx, dy))
    assert len(of(redrawn(host), "Ellipse")) == int(seen)
    assert item(host, "A", 1, 1)["drawnFlg"] == int(seen)


@EACH_ROUND
def test_a_scroll_draws_the_round_shapes_that_reach_into_the_strips(kind, pixels):
    host = with_layer(kind, pixels, moved(pixels, 390), moved(pixels, -300, 280))
    redrawn(host)
    drawn = scrolled(host, 50, 30)
    assert figures(drawn, "top") == path(FILLED, 710, 240, 770, 300) + path(FILLED, 20, 520, 80, 580)
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2, 3)] == [0, 1, 1]


@EACH_ROUND
def test_the_origin_of_the_block_is_added_to_a_round_shape(kind, pixels):
    host = at_scale()
    assert host.control.DigMemAlloc2("A", 1, kind, "", 1, 100, -50)
    put(host, 1, *moved(pixels, -100, -50))
    assert figures(redrawn(host)) == path(FILLED, *BOX)


@EACH_ROUND
@pytest.mark.parametrize("count", [0, 1])
def test_a_round_shape_with_too_few_points_draws_nothing_and_the_next_one_is_drawn(kind, pixels, count):
    if kind == CIRCLE and count == 1:
        count = 0
    host = with_layer(kind, pixels[:count], moved(pixels, 100))
    assert figures(redrawn(host)) == path(FILLED, 470, 270, 530, 330)


def test_an_ellipse_of_one_point_draws_nothing_and_leaves_its_drawn_mark_as_it_was():
    host = with_layer(ELLIPSE, [(400, 300)])
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


def test_an_ellipse_of_one_point_off_the_window_loses_its_drawn_mark():
    host = with_layer(ELLIPSE, [(-100, 300)])
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 0


def test_a_circle_without_points_leaves_its_drawn_mark_as_it_was():
    host = with_layer(CIRCLE, [], [(400, 300, 30)])
    redrawn(host)
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


@pytest.mark.parametrize("scale_x, scale_y, box", [(2.0, 1.0, (240, 50, 360, 170)), (1.0, 2.0, (120, 190, 180, 250)),
                                                   (0.5, 3.0, (60, 315, 90, 345))])
def test_a_stretch_along_x_makes_a_circle_larger_and_one_along_y_only_moves_it(scale_x, scale_y, box):
    host = with_layer(CIRCLE, [(150, 110, 30)])
    host.control.ScaleX, host.control.ScaleY = scale_x, scale_y
    assert figures(redrawn(host)) == path(FILLED, *box)


@pytest.mark.parametrize("radius, r", [(10.49, 10), (10.5, 11), (0.49, 0), (0.0, 0), (0.5, 1)])
def test_the_radius_of_a_circle_in_pixels(radius, r):
    host = with_layer(CIRCLE, [(400.5, 300.49, radius)])
    assert of(redrawn(host), "Ellipse") == [(401 - r, 300 - r, 401 + r, 300 + r)]


@pytest.mark.parametrize("zoom, r", [(7558, 15), (1890, 60)])
def test_the_radius_of_a_circle_is_in_map_units(zoom, r):
    host = with_layer(CIRCLE, [(400, 300, 30)], zoom=zoom)
    assert of(redrawn(host), "Ellipse") == [(400 - r, 300 - r, 400 + r, 300 + r)]


def test_further_points_of_a_circle_do_not_count():
    host = with_layer(CIRCLE, [(400, 300, 30), (600, 400, 5)])
    assert figures(redrawn(host)) == path(FILLED, *BOX)


def test_an_ellipse_keeps_the_order_of_its_corners_and_ignores_further_points():
    host = with_layer(ELLIPSE, [(430, 330), (370, 270), (700, 500), (1, 1)])
    assert figures(redrawn(host)) == path(FILLED, 430, 330, 370, 270)


def test_a_turned_map_moves_the_corners_of_an_ellipse_and_not_its_axes():
    host = with_layer(ELLIPSE, [(300, 250), (400, 300)])
    host.control.Rotate = 10.0
    a = -10.0 * 0.01745328

    def at(x, y):
        return int(math.cos(a) * x - math.sin(a) * y + 0.5), int(math.sin(a) * x + math.cos(a) * y + 0.5)

    assert of(redrawn(host), "Ellipse") == [(*at(300, 250), *at(400, 300))]


def test_a_turned_map_moves_the_centre_of_a_circle():
    host = with_layer(CIRCLE, [(300, 250, 30)])
    host.control.Rotate = 10.0
    a = -10.0 * 0.01745328
    x, y = int(math.cos(a) * 300 - math.sin(a) * 250 + 0.5), int(math.sin(a) * 300 + math.cos(a) * 250 + 0.5)
    assert of(redrawn(host), "Ellipse") == [(x - 30, y - 30, x + 30, y + 30)]


@EACH_ROUND
@pytest.mark.parametrize("values", [(float("nan"),) * 3, (float("inf"),) * 3, (1e300, -1e300, 1e300), (0, 0, -30),
                                    (0, 0, 2.0**40)],
                         ids=["nan", "inf", "far", "negative", "large"])
def test_round_shapes_of_any_size_do_no_harm(kind, pixels, values):
    host = with_layer(kind, pixels)
    put(host, 2, values, (values[2], values[1], values[0]))
    assert path(FILLED, *BOX)[1] in figures(redrawn(host))


@EACH_ROUND
@pytest.mark.parametrize("size", [-1, 0, 2**31 - 1, -2**31])
def test_outlines_of_any_width_do_no_harm(kind, pixels, size):
    host = with_layer(kind, pixels, OrvSetLayOutLineMode=0, SetLayLineSize=size)
    assert figures(redrawn(host)) == path(OUTLINED, *BOX)
    assert len(of(drawn_on(host, fine_device(300)), OUTLINED, "device")) <= 1


@EACH_ROUND
def test_a_round_shape_gives_the_context_its_pen_and_brush_back(kind, pixels):
    host = with_layer(kind, pixels)
    last = pens(redrawn(host))[-1]
    assert (last.pen, last.brush) == ((0, 1, BLACK), ("solid", WHITE))


# --- Meshes --------------------------------------------------------------------------------------------------------------------

# A grid of 3 by 2 points, 20 pixels apart: a cell of 20 by 20 around each.
GRID = [(x, y) for y in (100, 120) for x in (100, 120, 140)]
COLORS = [0x111111 * (each + 1) for each in range(6)]


def add_mesh(host, pixels, columns, rows, dat_id=1, colors=None, flags=None, code="A"):
    xs, ys = [float(x) for x, _ in pixels], [float(-y) for _, y in pixels]
    assert host.control.OrvAddMeshDat(code, 1, dat_id, columns, rows, xs, ys, [0.0] * len(pixels))
    if colors is not None:
        assert host.control.OrvSetMeshColor(code, 1, dat_id, colors)
    if flags is not None:
        assert host.control.OrvSetMeshUseFlag(code, 1, dat_id, flags)


def with_mesh(pixels=None, columns=3, rows=2, colors=COLORS, flags=None, pgn_type=0, **settings):
    host = hatched(MESH, pgn_type, **settings)
    add_mesh(host, pixels or GRID, columns, rows, colors=colors, flags=flags)
    return host


def cell(x, y, half=10):
    return (x - half, y - half), (x + half, y - half), (x + half, y + half), (x - half, y + half)


def cells_of(drawn, context="base"):
    return [points for (points,) in of(drawn, "Polygon", context)]


def test_a_mesh_has_a_cell_around_each_of_its_points_row_after_row():
    host = with_mesh()
    drawn = redrawn(host)
    assert cells_of(drawn) == [cell(x, y) for x, y in GRID]
    assert [each.brush for each in drawn_by(drawn, FILLED)] == [("solid", color) for color in COLORS]
    assert [name for name, *_ in figures(drawn)] == ["BeginPath", "Polygon", "EndPath", FILLED] * 6
    assert {each.rop2 for each in drawn_by(drawn, FILLED)} == {R2_COPYPEN}
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


def test_the_cell_of_a_mesh_point_is_shifted_from_the_crossing_of_the_diagonals():
    points = [(100, 100), (140, 100), (100, 140), (180, 180)]
    host = with_mesh(points, 2, 2, colors=None)
    # The diagonals cross at (120, 120); the corners stand in the order around the cell.
    around = [(100, 100), (140, 100), (180, 180), (100, 140)]
    assert cells_of(redrawn(host)) == [tuple((cx + x - 120, cy + y - 120) for cx, cy in around) for x, y in points]


def test_where_diagonals_are_parallel_the_crossing_of_the_cell_before_stands_even_if_it_lies_outside():
    points = [(100, 100), (140, 100), (180, 100), (100, 180), (140, 60), (180, 140)]
    host = with_mesh(points, 3, 2, colors=None)
    # Left: y = 200 - x meets y = 380 - 2x at (180, 20). Right: both diagonals fall at 45 degrees.
    left, right = [points[each] for each in (0, 1, 4, 3)], [points[each] for each in (1, 2, 5, 4)]
    expected = []
    for corners, own in zip((left, right, right) * 2, points):
        expected.append(tuple((x + own[0] - 180, y + own[1] - 20) for x, y in corners))
    assert cells_of(redrawn(host)) == expected


def test_the_cells_of_the_last_row_and_column_take_the_shape_of_the_cell_before():
    points = [(100, 100), (120, 100), (160, 100), (100, 130), (120, 130), (160, 130), (100, 180), (120, 180), (160, 180)]
    host = with_mesh(points, 3, 3, colors=None)
    widths, heights = (20, 40, 40), (30, 50, 50)
    assert cells_of(redrawn(host)) == [
        tuple((x + sx * widths[i % 3] // 2, y + sy * heights[i // 3] // 2) for sx, sy in ((-1, -1), (1, -1), (1, 1), (-1, 1)))
        for i, (x, y) in enumerate(points)]


def test_cells_whose_use_flag_is_0_stay_see_through():
    host = with_mesh(flags=[True, False, True, False, False, True])
    drawn = redrawn(host)
    assert cells_of(drawn) == [cell(*GRID[each]) for each in (0, 2, 5)]
    assert [each.brush for each in drawn_by(drawn, FILLED)] == [("solid", COLORS[each]) for each in (0, 2, 5)]


def test_until_colours_and_flags_are_set_every_cell_is_black():
    host = with_mesh(colors=None)
    assert [each.brush for each in drawn_by(redrawn(host), FILLED)] == [("solid", BLACK)] * 6


def test_a_mesh_without_any_use_flag_draws_nothing_and_its_drawn_mark_stays():
    host = with_mesh(flags=[False] * 6)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


def test_an_outlined_mesh_has_the_second_colour_around_every_cell():
    host = with_mesh(OrvSetLayOutLineMode=0, OrvSetLayColor2=0x654321, SetLayLineSize=3)
    drawn = drawn_by(redrawn(host), OUTLINED)
    assert [(each.pen, each.brush) for each in drawn] == [((0, 3, 0x654321), ("solid", color)) for color in COLORS]


@pytest.mark.parametrize("line_type, style", [(0, 0), (1, 1), (4, 4), (5, 0), (-1, 0)])
def test_the_outline_of_mesh_cells_follows_the_line_type(line_type, style):
    host = with_mesh(OrvSetLayOutLineMode=0, SetLayLineType=line_type)
    assert {each.pen[0] for each in drawn_by(redrawn(host), OUTLINED)} == {style}


def test_the_outline_of_mesh_cells_is_a_pen_of_the_line_type_file_unlike_that_of_circles(tmp_path):
    host = with_mesh(OrvSetLayOutLineMode=0, SetLayLineType=3)
    assert host.control.OrvReadLineTypeData(file_of(tmp_path, "types.txt", b"SYS,0,solid\r\n")) == 1
    assert {each.pen[0] for each in drawn_by(redrawn(host), OUTLINED)} == {0}, "number 3 is not in the file"
    assert host.control.OrvReadLineTypeData(file_of(tmp_path, "types.txt", b"USERA,3,dash,2,4,6\r\n")) == 1
    assert {each.pen[0] for each in drawn_by(redrawn(host), OUTLINED)} == {7}


@pytest.mark.parametrize("pgn_type, hatch", HATCHES.items())
def test_hatched_cells_have_their_own_colours(pgn_type, hatch):
    host = with_mesh(pgn_type=pgn_type)
    assert [each.brush for each in drawn_by(redrawn(host), FILLED)] == [("hatch", hatch, color) for color in COLORS]


@pytest.mark.parametrize("pgn_type", [8, -1, 99])
def test_an_unknown_fill_pattern_of_a_mesh_is_solid(pgn_type):
    host = with_mesh(pgn_type=pgn_type)
    assert [each.brush for each in drawn_by(redrawn(host), FILLED)] == [("solid", color) for color in COLORS]


def test_hollow_cells_are_stroked_with_an_outline_and_show_nothing_without():
    host = with_mesh(pgn_type=HOLLOW)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1
    host.control.OrvSetLayOutLineMode("A", 0)
    drawn = redrawn(host)
    assert [name for name, *_ in figures(drawn)] == ["BeginPath", "Polygon", "EndPath", STROKED] * 6


def test_a_masking_mesh_combines_with_what_lies_below():
    host = with_mesh(SetLayPgnMode=0)
    assert {each.rop2 for each in drawn_by(redrawn(host), FILLED)} == {R2_MASKPEN}


@pytest.mark.parametrize("tag", [-1, 1, 5])
def test_a_mesh_has_no_regard_to_tags_activity_and_sub_layers(tag):
    host = with_mesh()
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert host.control.SetDigDatInfoEx("A", 1, 1, tag, True) == 1
    drawn = redrawn(host)
    assert [each.brush for each in drawn_by(drawn, FILLED)] == [("solid", color) for color in COLORS]
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


@pytest.mark.parametrize("dx, seen", [(-145, True), (-160, False), (705, True), (720, False)])
def test_a_mesh_is_drawn_when_half_a_cell_around_it_reaches_into_the_window(dx, seen):
    host = with_mesh([(x + dx, y) for x, y in GRID])
    assert len(cells_of(redrawn(host))) == (6 if seen else 0)
    assert item(host, "A", 1, 1)["drawnFlg"] == int(seen)


def test_a_scroll_draws_the_meshes_that_reach_into_the_strips():
    host = with_mesh()
    add_mesh(host, [(x + 650, y) for x, y in GRID], 3, 2, dat_id=2)
    redrawn(host)
    assert cells_of(scrolled(host, 50, 30), "top") == [cell(x + 600, y - 30) for x, y in GRID]
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2)] == [0, 1]


def test_an_item_of_a_mesh_layer_that_is_no_mesh_is_skipped():
    host = with_mesh()
    put(host, 2, (200, 200), (300, 200), (300, 300))
    put(host, 3)
    assert len(cells_of(redrawn(host))) == 6


def test_a_mesh_on_a_finer_device_has_a_wider_outline():
    host = with_mesh(OrvSetLayOutLineMode=0, SetLayLineSize=2)
    drawn = drawn_on(host, fine_device(300))
    assert {each.pen for each in drawn_by(drawn, OUTLINED, "device")} == {(0, 6, BLACK)}
    assert cells_of(drawn, "device") == [cell(x, y) for x, y in GRID]


@pytest.mark.parametrize("columns, rows", [(1, 1), (1, 5), (5, 1), (1, 2), (2, 1)])
@pytest.mark.parametrize("device", ["record", "qt"])
def test_a_mesh_of_one_row_or_column_does_no_harm(columns, rows, device):
    host = at_scale(device=device)
    assert host.add_block("A", 1, MESH)
    pixels = [(100 + 20 * q, 100 + 20 * r) for r in range(rows) for q in range(columns)]
    host.control.OrvAddMeshDat("A", 1, 1, columns, rows, [float(x) for x, _ in pixels], [float(-y) for _, y in pixels],
                               [0.0] * len(pixels))
    add_mesh(host, GRID, 3, 2, dat_id=2)
    host.RDMReDraw()
    if device == "record":
        assert set(cells_of(verbs(host))) >= {cell(x, y) for x, y in GRID}


@pytest.mark.parametrize("value", [float("nan"), float("inf"), 1e300, -1e300])
def test_a_mesh_anywhere_does_no_harm(value):
    host = with_mesh()
    add_mesh(host, [(value, y) for _, y in GRID], 3, 2, dat_id=2)
    add_mesh(host, [(100, 100)] * 6, 3, 2, dat_id=3)
    assert set(cells_of(redrawn(host))) >= {cell(x, y) for x, y in GRID}


def test_a_mesh_gives_the_context_its_pen_and_brush_back():
    last = pens(redrawn(with_mesh()))[-1]
    assert (last.pen, last.brush) == ((0, 1, BLACK), ("solid", WHITE))
