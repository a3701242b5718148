"""Lines and polygons as they are drawn: pens, brushes, thinning, rings, hollow fills, active items, sub layers."""

import pytest
from map_rig import (LINE, PIXEL_ZOOM, POLYGON, R2_COPYPEN, R2_MASKPEN, Host, drain, drawn_by, item, named, one_to_one, verbs)

SQUARE = [(100, -100), (300, -100), (300, -300), (100, -300), (100, -100)]
SQUARE_PX = [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)]
HOLE = [(150, -150), (250, -150), (250, -250), (150, -250), (150, -150)]
SLOPE = [(100, -100), (300, -200)]
ACTIVE_RED = 255
GREY = 0xDCDCDC


def with_layer(lay_type, *point_lists, **settings):
    host = one_to_one()
    host.add_block("A", 1, lay_type)
    for dat_id, points in enumerate(point_lists, 1):
        host.add_item("A", 1, dat_id, points)
    for name, args in settings.items():
        assert getattr(host.control, name)("A", *args)
    return host


def redrawn(host):
    drain(host)
    host.RDMReDraw()
    return verbs(host)


def activate(host, dat_id=1):
    assert host.control.SetDigDatInfoEx("A", 1, dat_id, 0, True) == 1


def lines_of(drawn):
    return [each.verb.values[0] for each in drawn_by(drawn, "Polyline")]


def rings_of(drawn):
    return [(each.verb.values[0], each.verb.values[1]) for each in drawn_by(drawn, "PolyPolygon")]


def fills_of(drawn):
    return [each.name for each in drawn if each.name in ("FillPath", "StrokePath", "StrokeAndFillPath")]


def add_sub_layer(host, number, disp=True, line_type=0, size=1, pgn=0, color=0, outline=1, pgn_mode=1):
    assert host.control.OrvSetSubLayerEx("A", "", number, disp, line_type, size, pgn, 0, color, outline, pgn_mode)


# --- Lines -------------------------------------------------------------------------------------------------------------------


def test_a_line_is_drawn_in_the_layers_pen():
    host = with_layer(LINE, SLOPE, SetLayColor=(0x123456,), SetLayLineSize=(4,))
    (drawn,) = drawn_by(redrawn(host), "Polyline")
    assert drawn.verb.values[0] == ((100, 100), (300, 200))
    assert (drawn.pen, drawn.brush, drawn.rop2) == ((0, 4, 0x123456), ("solid", 0x123456), R2_COPYPEN)


def test_a_line_that_lands_on_one_pixel_is_not_drawn_and_its_drawn_mark_stays():
    host = with_layer(LINE, [(100, -100), (100.25, -100.25)])
    assert lines_of(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1, "the search of the area marked it, and nothing took the mark away"


def test_points_of_a_line_that_land_on_the_pixel_before_are_dropped():
    host = with_layer(LINE, [(100, -100), (100.2, -100.2), (150, -100), (149.9, -100.1), (100, -100), (200, -200)])
    assert lines_of(redrawn(host)) == [((100, 100), (150, 100), (100, 100), (200, 200))]


def test_a_pixel_is_found_by_adding_a_half_and_cutting():
    host = with_layer(LINE, [(100.5, -100.49), (200.49, -200.5)])
    assert lines_of(redrawn(host)) == [((101, 100), (200, 201))]


def test_left_of_the_window_the_cutting_goes_the_other_way():
    host = with_layer(LINE, [(-10.7, -100), (50, -100)])
    assert lines_of(redrawn(host)) == [((-10, 100), (50, 100))], "-10.7 + 0.5 is cut toward zero"


@pytest.mark.parametrize("tag, mode, drawn", [(0, True, 1), (1, True, 0), (1, False, 1), (-1, True, 0), (-1, False, 0),
                                              (-2, True, 1)])
def test_the_tag_of_an_item_keeps_it_out_of_drawing(tag, mode, drawn):
    host = with_layer(LINE)
    host.add_item("A", 1, 1, SLOPE, tag)
    host.control.LineTagMode = mode
    assert len(lines_of(redrawn(host))) == drawn


def test_an_active_line_has_the_active_pen_and_brush_and_the_next_one_the_layers_again():
    host = with_layer(LINE, SLOPE, [(100, -300), (300, -300)])
    activate(host)
    host.control.ActiveColor = 0x00FF00
    first, second = drawn_by(redrawn(host), "Polyline")
    assert (first.pen, first.brush) == ((0, 3, 0x00FF00), ("solid", 0x00FF00))
    assert (second.pen, second.brush) == ((0, 1, GREY), ("solid", GREY))


def test_an_active_item_with_a_sub_layer_draws_with_the_active_pen_and_brush():
    host = with_layer(LINE, SLOPE)
    add_sub_layer(host, 3, size=5, color=0x445566)
    host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    activate(host)
    (drawn,) = drawn_by(redrawn(host), "Polyline")
    assert (drawn.pen, drawn.brush) == ((0, 3, ACTIVE_RED), ("solid", ACTIVE_RED))


def test_a_sub_layer_gives_a_line_its_own_pen():
    host = with_layer(LINE, SLOPE, [(100, -300), (300, -300)])
    add_sub_layer(host, 3, size=5, color=0x445566)
    host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    first, second = drawn_by(redrawn(host), "Polyline")
    assert (first.pen, second.pen) == ((0, 5, 0x445566), (0, 1, GREY))


@pytest.mark.parametrize("lay_type, points, verb", [(LINE, SLOPE, "Polyline"), (POLYGON, SQUARE, "PolyPolygon")])
def test_a_hidden_sub_layer_hides_its_items_and_takes_their_drawn_mark_away(lay_type, points, verb):
    host = with_layer(lay_type, points)
    add_sub_layer(host, 3, disp=False)
    host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert drawn_by(redrawn(host), verb) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 0


@pytest.mark.parametrize("lay_type, points, verb", [(LINE, SLOPE, "Polyline"), (POLYGON, SQUARE, "PolyPolygon")])
def test_an_unknown_sub_layer_number_draws_with_the_layers_attributes(lay_type, points, verb):
    host = with_layer(lay_type, points, SetLayColor=(0x123456,))
    assert host.control.OrvSetDatSubLayerEx("A", 1, [1], [99])
    (drawn,) = drawn_by(redrawn(host), verb)
    assert drawn.brush == ("solid", 0x123456)
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


@pytest.mark.parametrize("line_type, style", [(0, 0), (1, 1), (2, 2), (3, 3), (4, 4), (5, 0), (-1, 0), (99, 0)])
def test_without_a_line_type_file_the_numbers_0_to_4_are_the_standard_pens(line_type, style):
    host = with_layer(LINE, SLOPE, SetLayLineType=(line_type,))
    (drawn,) = drawn_by(redrawn(host), "Polyline")
    assert drawn.pen[0] == style


def test_a_line_of_one_point_is_not_drawn():
    host = with_layer(LINE, [(100, -100)], [])
    assert lines_of(redrawn(host)) == []


# --- Polygons ----------------------------------------------------------------------------------------------------------------


def test_a_polygon_is_filled_in_the_first_colour_and_by_itself_has_no_outline():
    host = with_layer(POLYGON, SQUARE, SetLayColor=(0x123456,), OrvSetLayColor2=(0x654321,))
    drawn = redrawn(host)
    assert rings_of(drawn) == [(tuple(SQUARE_PX), (5,))]
    (shape,) = drawn_by(drawn, "PolyPolygon")
    assert (shape.brush, shape.rop2) == (("solid", 0x123456), R2_COPYPEN)
    assert fills_of(drawn) == ["FillPath"]


def test_an_outlined_polygon_has_the_second_colour_around_it():
    host = with_layer(POLYGON, SQUARE, OrvSetLayColor2=(0x654321,), SetLayLineSize=(2,), OrvSetLayOutLineMode=(0,))
    drawn = redrawn(host)
    (stroke,) = drawn_by(drawn, "StrokeAndFillPath")
    assert (stroke.pen, stroke.brush) == ((0, 2, 0x654321), ("solid", GREY))
    assert fills_of(drawn) == ["StrokeAndFillPath"]


def test_a_masking_polygon_combines_with_what_lies_below():
    host = with_layer(POLYGON, SQUARE, SetLayPgnMode=(0,))
    (shape,) = drawn_by(redrawn(host), "PolyPolygon")
    assert shape.rop2 == R2_MASKPEN


@pytest.mark.parametrize("pgn_type, brush", [(0, ("solid", GREY)), (1, ("hatch", 3, GREY)), (2, ("hatch", 4, GREY)),
                                             (3, ("hatch", 5, GREY)), (4, ("hatch", 2, GREY)), (5, ("hatch", 0, GREY)),
                                             (6, ("hatch", 1, GREY)), (8, ("solid", GREY)), (-1, ("solid", GREY))])
def test_the_fill_pattern_of_a_polygon(pgn_type, brush):
    host = with_layer(POLYGON, SQUARE, SetLayLineType=(pgn_type,))
    (shape,) = drawn_by(redrawn(host), "PolyPolygon")
    assert shape.brush == brush


def test_a_hollow_polygon_without_outline_shows_nothing_unless_it_is_active():
    host = with_layer(POLYGON, SQUARE, SetLayLineType=(7,), SetLayFillMode=(1,))
    assert fills_of(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1
    activate(host)
    drawn = redrawn(host)
    (fill,) = drawn_by(drawn, "FillPath")
    assert fills_of(drawn) == ["FillPath"]
    assert fill.brush == ("solid", ACTIVE_RED)


def test_a_hollow_polygon_with_outline_is_stroked():
    host = with_layer(POLYGON, SQUARE, SetLayLineType=(7,), SetLayFillMode=(0,), OrvSetLayColor2=(0x654321,))
    (stroke,) = drawn_by(redrawn(host), "StrokePath")
    assert stroke.pen == (0, 1, 0x654321)


def test_an_active_polygon_is_filled_solid_over_what_lies_below_and_keeps_its_outline():
    host = with_layer(POLYGON, SQUARE, SetLayLineType=(3,), SetLayFillMode=(0,), SetLayPgnMode=(0,), OrvSetLayColor2=(0x654321,))
    activate(host)
    (stroke,) = drawn_by(redrawn(host), "StrokeAndFillPath")
    assert (stroke.pen, stroke.brush, stroke.rop2) == ((0, 1, 0x654321), ("solid", ACTIVE_RED), R2_COPYPEN)


def test_an_active_polygon_with_a_sub_layer_is_filled_with_the_active_brush():
    host = with_layer(POLYGON, SQUARE)
    add_sub_layer(host, 3, color=0x445566)
    host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    activate(host)
    (fill,) = drawn_by(redrawn(host), "FillPath")
    assert fill.brush == ("solid", ACTIVE_RED)


def test_a_polygon_that_ends_where_it_starts_is_one_ring_even_if_it_passes_there_in_between():
    eight = [(200, -200), (100, -100), (300, -100), (200, -200), (300, -300), (100, -300), (200, -200)]
    host = with_layer(POLYGON, eight)
    (rings,) = rings_of(redrawn(host))
    assert rings[1] == (7,)


def test_a_polygon_of_two_rings_is_drawn_as_two():
    host = with_layer(POLYGON, SQUARE + HOLE)
    (rings,) = rings_of(redrawn(host))
    assert rings[1] == (5, 5) and len(rings[0]) == 10


def test_the_second_ring_inside_the_first_shows_a_hole():
    host = Host(False, device="qt")
    host.init()
    host.control.paint()
    host.control.Zoom = PIXEL_ZOOM
    host.control.OrvMapJumpToXY(400, -300)
    host.add_block("A", 1, POLYGON)
    host.add_item("A", 1, 1, SQUARE + HOLE)
    host.control.SetLayColor("A", 0x0000FF)
    host.RDMReDraw()
    pixels = host.control.pixels()

    def at(x, y):
        return tuple(pixels[(y * 800 + x) * 4:(y * 800 + x) * 4 + 3])

    red, white = (0, 0, 255), (255, 255, 255)
    assert [at(x, y) for x, y in ((120, 120), (200, 200), (280, 280), (50, 50))] == [red, white, red, white]


def test_points_behind_the_last_closed_ring_are_not_drawn_and_an_open_array_has_no_rings():
    host = with_layer(POLYGON, [*SQUARE, (400, -400), (500, -400)], SQUARE[:4])
    drawn = redrawn(host)
    assert [counts for _, counts in rings_of(drawn)] in ([(5,), ()], [(5,)])


def test_a_polygon_keeps_points_that_land_on_one_pixel():
    host = with_layer(POLYGON, [SQUARE[0], (100.1, -100.1), *SQUARE[1:]])
    (rings,) = rings_of(redrawn(host))
    assert rings[0][:2] == ((100, 100), (100, 100)) and rings[1] == (6,)


def test_after_an_item_of_a_hollow_sub_layer_the_next_one_is_hollow_too():
    host = with_layer(POLYGON, SQUARE, [(x + 300, y) for x, y in SQUARE])
    add_sub_layer(host, 3, pgn=7, outline=1)
    host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    drawn = redrawn(host)
    assert fills_of(drawn) == []
    assert item(host, "A", 1, 2)["drawnFlg"] == 1


def test_after_an_item_of_a_sub_layer_outline_and_fill_mode_are_the_layers_again():
    host = with_layer(POLYGON, SQUARE, [(x + 300, y) for x, y in SQUARE])
    add_sub_layer(host, 3, pgn=2, outline=0, pgn_mode=0, color=0x445566)
    host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    drawn = redrawn(host)
    first, second = drawn_by(drawn, "PolyPolygon")
    assert (first.brush, first.rop2) == (("hatch", 4, 0x445566), R2_MASKPEN)
    assert (second.brush, second.rop2) == (("solid", GREY), R2_COPYPEN)
    assert fills_of(drawn) == ["StrokeAndFillPath", "FillPath"]


def test_a_polygon_of_one_point_is_not_drawn():
    host = with_layer(POLYGON, [(100, -100)])
    assert named(redrawn(host), "PolyPolygon") == []
