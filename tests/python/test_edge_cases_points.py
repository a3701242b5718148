"""Points as they are drawn: the symbols and their sizes, values beside them, sub layers, and images in their place.

It is long because figures, sizes, values, sub layers and images share their small helpers.
"""

import math

import orvane4
import pytest
from drawing_rig import (ACTIVE_RED, BLACK, BOTH, WHITE, activate, add_sub_layer, at_scale, bmp, drawn_on, figures, file_of,
                         fine_device,
                         of, put, redrawn, scrolled, with_layer)
from map_rig import PIXEL_ZOOM, POINT, POLYGON, SRCCOPY, drain, drawn_by, item, named, pens, verbs

NOTSRCCOPY, SRCAND, SRCPAINT = 0x00330008, 0x008800C6, 0x00EE0086
SPOT = [(400, 300)]


# --- What a symbol is made of, by its half side --------------------------------------------------------------------------------


def polygon(*points):
    return [("BeginPath",), ("Polygon", points), ("EndPath",), ("FillPath",), ("Polygon", points)]


def ellipse(*corners):
    return [("BeginPath",), ("Ellipse", *corners), ("EndPath",), ("FillPath",), ("Ellipse", *corners)]


def line(start, end):
    return [("MoveToEx", *start), ("LineTo", *end)]


def square(px, py, h):
    return polygon((px - h, py - h), (px - h, py + h), (px + h, py + h), (px + h, py - h))


def star(px, py, h):
    q, t, u = h // 4, h // 3, 2 * h // 3
    return polygon((px, py - h), (px - q, py - q), (px - h, py - q), (px - t, py + q), (px - u, py + h), (px, py + u),
                   (px + u, py + h),
                   (px + t, py + q), (px + h, py - q), (px + q, py - q))


def symbol(kind, px, py, h):
    if kind == 0:
        return polygon((px, py - h), (px - h, py + h), (px + h, py + h))
    if kind == 2:
        return ellipse(px - h, py - h, px + h, py + h)
    if kind == 3:
        return polygon((px - h, py), (px, py + h), (px + h, py), (px, py - h))
    if kind == 4:
        return star(px, py, h)
    if kind == 5:
        return polygon((px, py + h), (px - h, py - h), (px + h, py - h))
    if kind == 10:
        return square(px, py, h) + line((px + h, py), (px - h, py)) + line((px, py + h), (px, py - h))
    if kind == 11:
        q = h // 4
        return ellipse(px + q, py + q, px - q, py - q)
    if kind == 12:
        return ellipse(px + 4 * h, py + 4 * h, px - 4 * h, py - 4 * h)
    return square(px, py, h)


def half_side_of(drawn, context="base"):
    """The half side of the one square that was drawn."""
    (points,), *_ = of(drawn, "Polygon", context)
    (left, top), _, (right, bottom), _ = points
    assert right - left == bottom - top
    return (right - left) / 2


def squares_of(drawn, context="base"):
    """The middles of the squares drawn, each of which is filled and then outlined."""
    twice = [(points[0][0] + points[2][0], points[0][1] + points[2][1]) for (points,) in of(drawn, "Polygon", context)]
    assert twice[::2] == twice[1::2]
    return [(x / 2, y / 2) for x, y in twice[::2]]


# --- Symbols -------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind", [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 9998, 10000, -1, -2**31, 2**31 - 1])
def test_every_symbol_is_filled_and_outlined_and_an_unknown_one_is_the_square(kind):
    host = with_layer(POINT, SPOT, SetLayLineType=kind)
    assert figures(redrawn(host)) == symbol(kind, 400, 300, 9)
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


def test_the_symbol_is_the_layers_line_type_under_both_names():
    for newer in (False, True):
        host = with_layer(POINT, SPOT, newer=newer, SetLayLineType=5)
        assert figures(redrawn(host)) == symbol(5, 400, 300, 9)


@pytest.mark.parametrize("zoom, h", [(50001, 2), (40000, 3), (25000, 4), (15000, 5), (8000, 6), (6000, 7), (4000, 9), (2000, 10)])
@pytest.mark.parametrize("kind", [4, 11, 12])
def test_fractions_of_a_symbols_half_side_are_cut_to_whole_pixels(kind, zoom, h):
    host = with_layer(POINT, SPOT, zoom=zoom, SetLayLineType=kind)
    assert figures(redrawn(host)) == symbol(kind, 400, 300, h)


@pytest.mark.parametrize("zoom, h", [(50000000, 2), (50001, 2), (50000, 3), (30001, 3), (30000, 4), (20001, 4), (20000, 5),
                                     (10001, 5),
                                     (10000, 6), (7001, 6), (7000, 7), (5001, 7), (5000, 9), (3001, 9), (3000, 10), (1, 10)])
def test_symbols_grow_in_steps_as_the_map_is_zoomed_in(zoom, h):
    host = with_layer(POINT, SPOT, zoom=zoom, SetLayLineType=1)
    assert half_side_of(redrawn(host)) == h


@pytest.mark.parametrize("zoom", [60000, 50000, 30000, 20000, 10000, 7000, 5000, 3000, 1])
def test_the_line_size_9999_fixes_the_size_of_a_symbol_at_all_scales(zoom):
    host = with_layer(POINT, SPOT, zoom=zoom, SetLayLineType=1, SetLayLineSize=9999)
    assert half_side_of(redrawn(host)) == 6


def test_the_fixed_size_follows_the_line_size_that_is_in_force_for_the_item():
    host = with_layer(POINT, [(100, 100)], [(200, 100)], zoom=60000, SetLayLineType=1, SetLayLineSize=9999)
    add_sub_layer(host, 3, pnt=1, size=1)
    assert host.control.OrvSetDatSubLayer("A", 1, 2, 3)
    sizes = [points[2][0] - points[0][0] for (points,) in of(redrawn(host), "Polygon")]
    assert sizes == [12, 12, 4, 4]


@pytest.mark.parametrize("dpi, w", [(300, 3), (191, 1), (192, 2), (95, 0)])
def test_symbols_and_the_active_pen_grow_by_whole_times_on_a_finer_device(dpi, w):
    host = with_layer(POINT, [(100, 100)], [(200, 100)], SetLayLineType=1)
    activate(host, 2)
    drawn = drawn_on(host, fine_device(dpi))
    h = 5 * w
    assert figures(drawn, "device") == square(100, 100, h) + square(200, 100, h)
    first, second = [each.pen for each in drawn_by(drawn, "FillPath", "device")]
    assert first == (0, 1, BLACK), "the normal pen is one pixel at every resolution"
    assert second[1:] == (2 * w, ACTIVE_RED)


def test_a_fixed_symbol_grows_with_the_device_too():
    host = with_layer(POINT, [(100, 100)], SetLayLineType=1, SetLayLineSize=9999)
    assert figures(drawn_on(host, fine_device(300)), "device") == square(100, 100, 18)


def test_symbols_have_a_thin_black_outline_and_the_layers_colour():
    host = with_layer(POINT, SPOT, SetLayLineType=1, SetLayColor=0x123456, OrvSetLayColor2=0x654321, SetLayLineSize=7)
    for each in drawn_by(redrawn(host), "Polygon"):
        assert (each.pen, each.brush) == ((0, 1, BLACK), ("solid", 0x123456))


def test_an_active_symbol_has_the_active_pen_and_brush_and_the_next_one_the_layers():
    host = with_layer(POINT, [(100, 100)], [(200, 100)], SetLayLineType=1, SetLayColor=0x123456)
    activate(host)
    host.control.ActiveColor = 0x00FF00
    looks = [(each.pen, each.brush) for each in drawn_by(redrawn(host), "FillPath")]
    assert looks == [((0, 2, 0x00FF00), ("solid", 0x00FF00)), ((0, 1, BLACK), ("solid", 0x123456))]


def test_a_sub_layer_gives_a_symbol_its_own_shape_and_brush_and_the_next_one_has_the_layers():
    host = with_layer(POINT, [(100, 100)], [(200, 100)], SetLayLineType=1, SetLayColor=0x123456)
    add_sub_layer(host, 3, pnt=3, color=0x445566)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    drawn = redrawn(host)
    assert figures(drawn) == symbol(3, 100, 100, 9) + square(200, 100, 9)
    looks = [(each.pen, each.brush) for each in drawn_by(drawn, "FillPath")]
    assert looks == [((0, 1, BLACK), ("solid", 0x445566)), ((0, 1, BLACK), ("solid", 0x123456))]


def test_an_active_symbol_of_a_sub_layer_has_the_active_look():
    host = with_layer(POINT, SPOT)
    add_sub_layer(host, 3, pnt=3, color=0x445566)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    activate(host)
    (fill,) = drawn_by(redrawn(host), "FillPath")
    assert (fill.pen, fill.brush) == ((0, 2, ACTIVE_RED), ("solid", ACTIVE_RED))


def test_a_hidden_sub_layer_hides_its_points_and_takes_their_drawn_mark_away():
    host = with_layer(POINT, SPOT)
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 0


@pytest.mark.parametrize("number", [99, -3])
def test_an_unknown_sub_layer_number_draws_the_layers_symbol(number):
    host = with_layer(POINT, SPOT, SetLayLineType=3, SetLayColor=0x123456)
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayerEx("A", 1, [1], [number])
    drawn = redrawn(host)
    assert figures(drawn) == symbol(3, 400, 300, 9)
    assert drawn_by(drawn, "FillPath")[0].brush == ("solid", 0x123456)


@pytest.mark.parametrize("tag, mode, drawn", [(0, True, 1), (1, True, 0), (1, False, 1), (-1, True, 0), (-1, False, 0),
                                              (-2, True, 1)])
def test_the_tag_of_a_point_keeps_its_symbol_out_of_drawing(tag, mode, drawn):
    host = with_layer(POINT)
    put(host, 1, *SPOT, tag=tag)
    host.control.LineTagMode = mode
    assert len(of(redrawn(host), "FillPath")) == drawn
    assert item(host, "A", 1, 1)["drawnFlg"] == 1, "a tag leaves the mark of the search alone"


# --- Where a symbol stands -----------------------------------------------------------------------------------------------------


def test_only_the_first_point_of_an_item_counts():
    host = with_layer(POINT, [(100, 100), (200, 200), (300, 100)], SetLayLineType=1)
    assert squares_of(redrawn(host)) == [(100, 100)]


def test_an_item_without_points_draws_nothing_and_the_next_one_is_drawn():
    host = with_layer(POINT, [], [(200, 100)], SetLayLineType=1)
    assert squares_of(redrawn(host)) == [(200, 100)]


@pytest.mark.parametrize("x, y, px, py", [(100.5, 100.49, 101, 100), (-2.7, 100, -2, 100)])
def test_a_point_stands_on_the_pixel_found_by_adding_a_half_and_cutting(x, y, px, py):
    host = with_layer(POINT, [(x, y)], SetLayLineType=1)
    assert squares_of(redrawn(host)) == [(px, py)]


def test_the_origin_of_the_block_is_added():
    host = at_scale()
    assert host.control.DigMemAlloc2("A", 1, POINT, "", 1, 100, -50)
    host.control.SetLayLineType("A", 1)
    put(host, 1, (20, 30))
    assert squares_of(redrawn(host)) == [(120, 80)]


def test_a_turned_and_stretched_map_moves_symbols_and_leaves_them_upright():
    host = with_layer(POINT, [(200, 250)], SetLayLineType=0)
    host.control.Rotate = 20.0
    host.control.ScaleX, host.control.ScaleY = 1.5, 2.0
    a = -20.0 * 0.01745328
    x = (math.cos(a) * 200 - math.sin(a) * 250) * 1.5
    y = (math.sin(a) * 200 + math.cos(a) * 250) * 2.0
    assert figures(redrawn(host)) == symbol(0, int(x + 0.5), int(y + 0.5), 9)


@pytest.mark.parametrize("x, y, seen", [((-9.6, -9), 300, True), ((-10.6, -10), 300, False), ((808, 808), 300, True),
                                        ((810, 810), 300, False)])
@pytest.mark.parametrize("upright", [False, True])
def test_a_symbol_that_does_not_reach_into_the_window_is_not_drawn_and_loses_its_drawn_mark(x, y, seen, upright):
    (across, pixel), along = x, y
    if upright and across > 0:
        across, pixel = across - 200, pixel - 200
    host = with_layer(POINT, [(along, across) if upright else (across, along)], SetLayLineType=1)
    assert squares_of(redrawn(host)) == ([(along, pixel) if upright else (pixel, along)] if seen else [])
    assert item(host, "A", 1, 1)["drawnFlg"] == int(seen)


def test_a_symbol_is_tested_by_its_square_even_where_the_search_left_its_point_out():
    host = with_layer(POINT, [(-5, 100)], [(100, 100)], SetLayLineType=1)
    device = orvane4.Context(400, 300, 1920, 508, 96)
    host.control.UserDcDrawEx(device.handle, 0, 0, 300, 400, 200.0, -150.0, PIXEL_ZOOM, 1)
    drawn = [each._replace(context="device") for each in verbs(device)]
    assert item(host, "A", 1, 1)["clipFlg"] == 0
    assert squares_of(drawn, "device") == [(-4, 100), (100, 100)]


def test_a_dot_of_four_half_sides_is_tested_by_the_small_square():
    host = with_layer(POINT, [(-20, 300)], SetLayLineType=12)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 0


def test_a_scroll_draws_the_symbols_that_reach_into_the_strips_and_marks_only_those():
    host = with_layer(POINT, [(400, 300)], [(795, 100)], [(100, 595)], [(865, 320)], SetLayLineType=1)
    redrawn(host)
    drawn = scrolled(host, 50, 30)
    # The strips are 50 pixels at the right and 30 at the bottom; the pictures have moved left and up.
    assert squares_of(drawn, "top") == [(745, 70), (50, 565)]
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2, 3, 4)] == [0, 1, 1, 0]


# --- Values --------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind", [11, 12])
@pytest.mark.parametrize("z, text", [(12.346, b"12.35"), (7.5, b" 7.50"), (0.001, b" 0.00"), (0.00011, b" 0.00"),
                                     (123456.789, b"123456.79")])
def test_the_value_of_a_dot_stands_at_the_upper_right(kind, z, text):
    host = with_layer(POINT, [(400, 300, z)], SetLayLineType=kind)
    assert figures(redrawn(host)) == symbol(kind, 400, 300, 9) + [("TextOut", 409, 291, text)]


@pytest.mark.parametrize("kind", [11, 12])
@pytest.mark.parametrize("z", [0.0, 0.0001, -5.0])
def test_a_value_of_a_ten_thousandth_or_less_is_not_written(kind, z):
    host = with_layer(POINT, [(400, 300, z)], SetLayLineType=kind)
    assert figures(redrawn(host)) == symbol(kind, 400, 300, 9)


@pytest.mark.parametrize("zoom, written", [(5000, True), (5001, False), (60000, False), (1, True)])
@pytest.mark.parametrize("kind", [11, 12])
def test_values_are_written_from_the_scale_of_5000_inward(kind, zoom, written):
    host = with_layer(POINT, [(400, 300, 3.25)], zoom=zoom, SetLayLineType=kind)
    assert [values[2] for values in of(redrawn(host), "TextOut")] == ([b" 3.25"] if written else [])


@pytest.mark.parametrize("kind", [0, 1, 2, 3, 4, 5, 6, 10, 13, 9999])
def test_other_symbols_show_no_value(kind):
    host = with_layer(POINT, [(400, 300, 3.25)], SetLayLineType=kind)
    assert of(redrawn(host), "TextOut") == []


def test_a_value_is_written_in_whatever_font_and_colour_the_context_has():
    host = with_layer(POINT, [(400, 300, 3.25)], SetLayLineType=11)
    names = {each.name for each in redrawn(host) if each.context == "base"}
    assert not names & {"SetTextColor", "SetBkColor", "SetBkMode", "SetTextAlign"}


@pytest.mark.parametrize("z", [1e300, float("inf"), float("nan"), -1e300])
def test_a_value_of_any_size_does_no_harm(z):
    host = with_layer(POINT, [(400, 300, z)], [(100, 100)], SetLayLineType=11)
    drawn = redrawn(host)
    assert len(of(drawn, "FillPath")) == 2
    if z == 1e300:
        assert [values[2] for values in of(drawn, "TextOut")] in ([b"%5.2f" % z], [])


# --- Symbols from the file -----------------------------------------------------------------------------------------------------

SYMBOL_FILE = b"0,-200,0,200,0\r\n7,0,-200,0,200\r\n7,-150,33,100,1\r\n9999,-200,-200,200,200\r\n5,1,1,1,1\r\n"


def file_line(px, py, h, sx, sy, ex, ey):
    def offset(c):
        return int(c * h / 200.0 + 0.5)

    return line((px + offset(sx), py - offset(sy)), (px + offset(ex), py - offset(ey)))


def with_symbols(tmp_path, *items, content=SYMBOL_FILE, zoom=PIXEL_ZOOM):
    host = with_layer(POINT, *items, zoom=zoom, SetLayLineType=9999)
    assert host.ReadSymbolData(file_of(tmp_path, "symbols.txt", content))
    return host


def test_a_layer_of_file_symbols_draws_the_number_0(tmp_path):
    host = with_symbols(tmp_path, SPOT)
    host.control.SetLayLineSize("A", 7)
    assert figures(redrawn(host)) == file_line(400, 300, 9, -200, 0, 200, 0), "the layer's own line size names no symbol"


def test_a_sub_layer_of_file_symbols_names_the_symbol_by_its_line_size(tmp_path):
    host = with_symbols(tmp_path, SPOT)
    add_sub_layer(host, 3, pnt=9999, size=7)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert figures(redrawn(host)) == file_line(400, 300, 9, 0, -200, 0, 200) + file_line(400, 300, 9, -150, 33, 100, 1)


def test_the_file_symbol_9999_has_the_fixed_size(tmp_path):
    host = with_symbols(tmp_path, SPOT, zoom=60000)
    add_sub_layer(host, 3, pnt=9999, size=9999)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert figures(redrawn(host)) == file_line(400, 300, 6, -200, -200, 200, 200)


@pytest.mark.parametrize("content, size", [(b"", 0), (SYMBOL_FILE, 8)])
def test_a_symbol_number_that_the_file_does_not_have_is_the_square(tmp_path, content, size):
    host = with_symbols(tmp_path, SPOT, content=content)
    if size:
        add_sub_layer(host, 3, pnt=9999, size=size)
        assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert figures(redrawn(host)) == square(400, 300, 9)


def test_offsets_of_a_file_symbol_to_the_left_and_below_are_cut_shorter(tmp_path):
    host = with_symbols(tmp_path, SPOT, content=b"0,-200,-200,200,200\r\n1,0,0,0,0\r\n")
    # 9 + 0.5 is cut to 9, and -9 + 0.5 to -8; y grows upward in the file.
    assert figures(redrawn(host)) == [("MoveToEx", 392, 308), ("LineTo", 409, 291)]


def test_an_active_file_symbol_has_the_active_pen(tmp_path):
    host = with_symbols(tmp_path, SPOT)
    activate(host)
    (drawn,) = drawn_by(redrawn(host), "LineTo")
    assert drawn.pen == (0, 2, ACTIVE_RED)


def test_file_symbols_of_any_size_do_no_harm(tmp_path):
    host = with_symbols(tmp_path, SPOT, content=b"0,2147483647,-2147483648,99999999999,-99999999999\r\n1,0,0,0,0\r\n")
    assert [name for name, *_ in figures(redrawn(host))] == ["MoveToEx", "LineTo"]


# --- Images --------------------------------------------------------------------------------------------------------------------


def with_images(tmp_path, *items, name="a.bmp", active="b.bmp", size=(15, 16), scales=(1.0, 1.0), pos=0, zoom=PIXEL_ZOOM,
                newer=False):
    host = with_layer(POINT, *items, zoom=zoom, newer=newer)
    file_of(tmp_path, "a.bmp", bmp(20, 10))
    file_of(tmp_path, "b.bmp", bmp(6, 4))
    name, active = (str(tmp_path / each) if each else "" for each in (name, active))
    assert host.SetLayImage("A", name, active, *size, *scales)
    assert host.DspLayImage("A", True)
    assert host.control.OrvSetLayImagePos("A", pos)
    return host


def blits(drawn, context="base"):
    """The places of the images drawn, each as (x, y, width, height), and the sizes of their sources."""
    both = of(drawn, "StretchBlt", context)
    first, second = both[::2], both[1::2]
    assert [(*values[:4], *values[5:9]) for values in first] == [(*values[:4], *values[5:9]) for values in second]
    assert {values[9] for values in first} <= {SRCAND} and {values[9] for values in second} <= {SRCPAINT}
    return [values[:4] for values in first], [values[7:9] for values in first]


def places(drawn, context="base"):
    return blits(drawn, context)[0]


def loads(drawn):
    return [each.values[0] for each in drawn if each.name == "LoadImage"]


def path_bytes(tmp_path, name):
    return str(tmp_path / name).encode()


@BOTH
def test_an_image_stands_centred_on_its_point(tmp_path, newer):
    host = with_images(tmp_path, SPOT, newer=newer)
    drawn = redrawn(host)
    assert blits(drawn) == ([(393, 292, 15, 16)], [(20, 10)])
    assert item(host, "A", 1, 1)["drawnFlg"] == 1
    assert of(drawn, "Polygon") == []


@pytest.mark.parametrize("pos, x, y", [(0, 393, 292), (1, 400, 300), (2, 400, 284), (3, 386, 300), (4, 386, 284)])
def test_the_corner_of_an_image_that_stands_on_the_point(tmp_path, pos, x, y):
    host = with_images(tmp_path, SPOT, pos=pos)
    assert places(redrawn(host)) == [(x, y, 15, 16)]


@pytest.mark.parametrize("zoom, scales, size", [
    (PIXEL_ZOOM, (0.5, 0.5), (7, 8)), (100, (0.5, 0.5), (7, 8)), (50000, (0.5, 0.5), (7, 8)),
    (PIXEL_ZOOM, (0.1, 10.0), (15, 16)), (2 * PIXEL_ZOOM, (0.1, 10.0), (7, 8)), (PIXEL_ZOOM // 3, (0.1, 2.0), (30, 32)),
    (100 * PIXEL_ZOOM, (0.25, 2.0), (3, 4)), (PIXEL_ZOOM, (3.0, 2.0), (45, 48))])
def test_an_image_is_stretched_with_the_scale_between_its_bounds(tmp_path, zoom, scales, size):
    host = with_images(tmp_path, SPOT, zoom=zoom, scales=scales)
    ((x, y, w, h),) = places(redrawn(host))
    assert (w, h) == size
    assert (x, y) == (400 - w // 2, 300 - h // 2)


def test_an_image_grows_by_whole_times_on_a_finer_device_and_its_contexts_are_made_from_the_window(tmp_path):
    host = with_images(tmp_path, [(100, 100)], active="")
    activate(host)
    drain(host)
    device = fine_device(383)
    drawn = drawn_on(host, device)
    assert places(drawn, "device") == [(100 - 22, 100 - 24, 45, 48)]
    (outline,) = drawn_by(drawn, "Polyline", "device")
    assert outline.pen == (0, 9, ACTIVE_RED)
    assert of(verbs(host), "CreateCompatibleDC", "window")


@pytest.mark.parametrize("name, accepted", [("a.BMP", True), ("a.bmp", True), ("a.bMp", True), ("a.png", False), ("a", False),
                                            ("bmp", False), ("a.bmp ", False), ("", False), ("a.bmp.x", False)])
def test_an_image_file_is_known_by_the_end_of_its_name(tmp_path, name, accepted):
    file_of(tmp_path, name or "unused", bmp(20, 10))
    host = with_images(tmp_path, SPOT, name=name)
    drawn = redrawn(host)
    assert len(places(drawn)) == int(accepted)
    assert figures(drawn)[2:] == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1, "a refused name leaves the mark of the search alone"


def test_the_name_of_the_active_image_may_end_in_anything(tmp_path):
    file_of(tmp_path, "active.dat", bmp(6, 4))
    host = with_images(tmp_path, SPOT, active="active.dat")
    activate(host)
    assert blits(redrawn(host)) == ([(393, 292, 15, 16)], [(6, 4)])


def test_an_active_image_takes_the_place_of_the_normal_one(tmp_path):
    host = with_images(tmp_path, [(100, 100)], [(200, 100)])
    activate(host, 2)
    drawn = redrawn(host)
    assert blits(drawn) == ([(93, 92, 15, 16), (193, 92, 15, 16)], [(20, 10), (6, 4)])
    assert of(drawn, "Polyline") == []


@pytest.mark.parametrize("active", ["", "missing.bmp"])
@pytest.mark.parametrize("pos, left, top", [(0, 393, 292), (1, 400, 300), (4, 386, 284)])
def test_an_active_image_without_an_active_file_has_a_frame_in_the_active_colour(tmp_path, active, pos, left, top):
    host = with_images(tmp_path, SPOT, active=active, pos=pos)
    activate(host)
    host.control.ActiveColor = 0x00FF00
    drawn = redrawn(host)
    assert blits(drawn) == ([(left, top, 15, 16)], [(20, 10)])
    (frame,) = drawn_by(drawn, "Polyline")
    right, bottom = left + 14, top + 16
    assert frame.verb.values[0] == ((left, top), (left, bottom), (right, bottom), (right, top), (left, top))
    assert frame.pen == (0, 3, 0x00FF00)
    assert [name for name, *_ in figures(drawn)] == ["StretchBlt", "StretchBlt", "Polyline"]


@pytest.mark.parametrize("active", ["", "b.bmp"])
def test_without_a_normal_image_nothing_is_drawn_the_mark_stands_and_each_item_tries_again(tmp_path, active):
    host = with_images(tmp_path, [(100, 100)], [(200, 100)], name="missing.bmp", active=active)
    activate(host, 2)
    drawn = redrawn(host)
    assert figures(drawn) == []
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2)] == [1, 1]
    if not active:
        assert loads(drawn).count(path_bytes(tmp_path, "missing.bmp")) == 2


def test_an_image_is_loaded_once_for_a_block_and_anew_for_the_next_block_and_frame(tmp_path):
    host = with_images(tmp_path, [(100, 100)], [(200, 100)], [(300, 100)])
    host.add_block("A", 2, POINT)
    host.add_item("A", 2, 1, [(400, -100)])
    for _ in range(2):
        drawn = redrawn(host)
        assert loads(drawn) == [path_bytes(tmp_path, "a.bmp"), path_bytes(tmp_path, "b.bmp")] * 2
        assert len(places(drawn)) == 4


def test_a_mask_and_a_colour_picture_are_made_from_an_image_with_white_as_see_through(tmp_path):
    host = with_images(tmp_path, SPOT, active="")
    drawn = redrawn(host)
    (load,) = [each for each in drawn if each.name == "LoadImage" and each.values[1][1]]
    loader, picture = load.context, load.values[1]
    assert ("base", (loader,)) in [(each.context, each.values) for each in named(drawn, "CreateCompatibleDC")]
    start = drawn.index(load)
    end = next(i for i in range(start, len(drawn)) if drawn[i].name == "StretchBlt")
    made = [each for each in drawn[start:end] if each.name in ("SelectObject", "SetBkColor", "BitBlt", "CreateBitmap",
                                                               "CreateCompatibleBitmap")]
    mono = next(each.values[2] for each in made if each.name == "CreateBitmap")
    assert [each.values[:2] for each in made if each.name in ("CreateBitmap", "CreateCompatibleBitmap")] == [(20, 10)] * 3
    colours, masks = (each.values[2] for each in made if each.name == "CreateCompatibleBitmap")
    holder = {each.values[0]: each.context for each in made if each.name == "SelectObject"}
    assert holder[picture] == loader
    whole = (0, 0, 20, 10)
    assert [(each.context, *each.values) for each in made if each.name == "BitBlt"] == [
        (holder[mono], *whole, loader, 0, 0, SRCCOPY), (holder[colours], *whole, holder[mono], 0, 0, NOTSRCCOPY),
        (holder[colours], *whole, loader, 0, 0, SRCAND), (holder[masks], *whole, holder[mono], 0, 0, SRCCOPY)]
    assert [each.values[0] for each in made if each.name == "SetBkColor" and each.context == loader][0] == WHITE
    mask, colour = of(drawn, "StretchBlt")
    assert mask == (393, 292, 15, 16, holder[masks], 0, 0, 20, 10, SRCAND)
    assert colour == (393, 292, 15, 16, holder[colours], 0, 0, 20, 10, SRCPAINT)


def test_the_white_pixels_of_an_image_let_the_map_through(tmp_path):
    host = with_layer(POINT, SPOT, device="qt")
    path = file_of(tmp_path, "a.bmp", bmp(20, 20, color=(255, 0, 0), paint=lambda x, y: x < 10))
    assert host.control.OrvSetLayImage("A", path, "", 20, 20, 1.0, 1.0) and host.control.OrvDspLayImage("A", True)
    assert host.control.OrvAddLayer("FLOOR", 1, POLYGON, 9)
    host.control.SetLayColor("FLOOR", 0x0000FF)
    put(host, 1, (300, 200), (500, 200), (500, 400), (300, 400), (300, 200), code="FLOOR")
    host.RDMReDraw()
    pixels = host.control.pixels()

    def at(x, y):
        start = (y * 800 + x) * 4
        return tuple(pixels[start:start + 3])

    blue, red = (255, 0, 0), (0, 0, 255)
    assert [at(395, 300), at(405, 300), at(380, 300), at(395, 320)] == [blue, red, red, red]


@pytest.mark.parametrize("tag, mode, drawn", [(1, True, 1), (1, False, 1), (-1, True, 0), (-1, False, 0)])
def test_a_tag_above_0_does_not_hide_an_image_as_it_hides_a_symbol(tmp_path, tag, mode, drawn):
    host = with_images(tmp_path)
    put(host, 1, *SPOT, tag=tag)
    host.control.LineTagMode = mode
    assert len(places(redrawn(host))) == drawn
    host.control.DspLayImage("A", False)
    assert len(of(redrawn(host), "FillPath")) == (1 if tag == 1 and not mode else 0)


@pytest.mark.parametrize("x, seen", [(-6.9, True), (-9, False), (806, True), (809, False)])
def test_an_image_off_the_window_is_not_drawn_and_loses_its_drawn_mark(tmp_path, x, seen):
    host = with_images(tmp_path, [(x, 300)])
    assert len(places(redrawn(host))) == int(seen)
    assert item(host, "A", 1, 1)["drawnFlg"] == int(seen)


def test_a_scroll_draws_the_images_that_reach_into_the_strips(tmp_path):
    host = with_images(tmp_path, [(400, 300)], [(795, 100)], [(100, 595)])
    redrawn(host)
    drawn = scrolled(host, 50, 30)
    assert [place[:2] for place in places(drawn, "top")] == [(745 - 7, 70 - 8), (50 - 7, 565 - 8)]
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2, 3)] == [0, 1, 1]


def test_a_new_image_does_not_show_until_it_is_switched_on(tmp_path):
    host = with_images(tmp_path, SPOT)
    assert host.SetLayImage("A", str(tmp_path / "a.bmp"), "", 15, 16, 1.0, 1.0)
    drawn = redrawn(host)
    assert places(drawn) == [] and figures(drawn) == symbol(0, 400, 300, 9)


# --- Images of sub layers ------------------------------------------------------------------------------------------------------


def add_image_sub_layer(host, tmp_path, number, name="a.bmp", active="b.bmp", size=(30, 40), scales=(1.0, 1.0), pos=None,
                        disp=True):
    add_sub_layer(host, number, disp=disp)
    files = [str(tmp_path / each) if each else "" for each in (name, active)]
    assert host.control.OrvSetSubLayImage("A", number, *files, *size, *scales)
    assert host.control.OrvDspSubLayImage("A", number, True)
    if pos is not None:
        assert host.control.OrvSetSubLayImagePos("A", number, pos)


def test_a_sub_layer_with_images_shows_them_in_a_layer_of_symbols(tmp_path):
    file_of(tmp_path, "a.bmp", bmp(20, 10))
    host = with_layer(POINT, [(100, 100)], [(200, 100)], SetLayLineType=1)
    add_image_sub_layer(host, tmp_path, 3, pos=1)
    assert host.control.OrvSetDatSubLayer("A", 1, 2, 3)
    drawn = redrawn(host)
    assert places(drawn) == [(200, 100, 30, 40)]
    assert squares_of(drawn) == [(100, 100)]


def test_symbols_after_the_image_of_a_sub_layer_have_the_normal_pen_and_brush(tmp_path):
    file_of(tmp_path, "a.bmp", bmp(20, 10))
    host = with_layer(POINT, [(100, 100)], [(200, 100)], SetLayLineType=1, SetLayColor=0x123456)
    add_image_sub_layer(host, tmp_path, 3)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    activate(host)
    (fill,) = drawn_by(redrawn(host), "FillPath")
    assert (fill.pen, fill.brush) == ((0, 1, BLACK), ("solid", 0x123456))


def test_a_sub_layer_without_images_shows_symbols_in_a_layer_of_images(tmp_path):
    host = with_images(tmp_path, [(100, 100)], [(200, 100)], [(300, 100)])
    add_sub_layer(host, 3, pnt=3, color=0x445566)
    assert host.control.OrvSetDatSubLayer("A", 1, 2, 3)
    drawn = redrawn(host)
    assert [place[:2] for place in places(drawn)] == [(93, 92), (293, 92)]
    assert [each for each in figures(drawn) if each[0] != "StretchBlt"] == symbol(3, 200, 100, 9)
    assert drawn_by(drawn, "FillPath")[0].brush == ("solid", 0x445566)


def test_a_symbol_in_a_layer_of_images_is_hidden_by_a_tag_above_0(tmp_path):
    host = with_images(tmp_path)
    add_sub_layer(host, 3, pnt=3)
    put(host, 1, *SPOT, tag=1, sub=3)
    assert figures(redrawn(host)) == []
    host.control.LineTagMode = False
    assert figures(redrawn(host)) == symbol(3, 400, 300, 9)


def test_a_sub_layer_with_images_has_its_own_files_size_and_place_in_a_layer_of_images(tmp_path):
    host = with_images(tmp_path, [(100, 100)], [(200, 100)], pos=1)
    add_image_sub_layer(host, tmp_path, 3, name="b.bmp", active="", scales=(2.0, 2.0), pos=4)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert blits(redrawn(host)) == ([(100 - 60, 100 - 80, 60, 80), (200, 100, 15, 16)], [(6, 4), (20, 10)])


def test_the_images_of_a_sub_layer_stand_centred_unless_told_otherwise(tmp_path):
    host = with_images(tmp_path, SPOT, pos=1)
    add_image_sub_layer(host, tmp_path, 3)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert places(redrawn(host)) == [(385, 280, 30, 40)]


def test_an_active_image_of_a_sub_layer_without_an_active_file_has_a_frame(tmp_path):
    host = with_images(tmp_path, SPOT)
    add_image_sub_layer(host, tmp_path, 3, active="")
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    activate(host)
    (frame,) = drawn_by(redrawn(host), "Polyline")
    assert frame.verb.values[0] == ((385, 280), (385, 320), (415, 320), (415, 280), (385, 280))
    assert frame.pen == (0, 3, ACTIVE_RED)


@pytest.mark.parametrize("images", [False, True], ids=["layer of symbols", "layer of images"])
def test_a_hidden_sub_layer_with_images_hides_its_items_and_takes_their_drawn_mark_away(tmp_path, images):
    host = with_images(tmp_path, SPOT)
    host.control.DspLayImage("A", images)
    add_image_sub_layer(host, tmp_path, 3, disp=False)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 0


@pytest.mark.parametrize("images", [False, True], ids=["layer of symbols", "layer of images"])
def test_a_sub_layer_whose_file_is_no_bitmap_shows_nothing_in_its_place(tmp_path, images):
    host = with_images(tmp_path, SPOT)
    host.control.DspLayImage("A", images)
    add_image_sub_layer(host, tmp_path, 3, name="a.png")
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert figures(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


@pytest.mark.parametrize("number", [99, -3])
def test_an_unknown_sub_layer_number_shows_the_layers_image(tmp_path, number):
    host = with_images(tmp_path)
    put(host, 1, *SPOT, sub=number)
    assert places(redrawn(host)) == [(393, 292, 15, 16)]


# --- Files and sizes that no one should give ------------------------------------------------------------------------------------

GOOD = bmp(20, 10)


DAMAGED = {
    "empty": b"", "one byte": b"B", "two bytes": b"BM", "half a head": GOOD[:20], "no pixels": GOOD[:54], "few pixels": GOOD[:60],
    "zeros": bytes(1000), "ones": b"\xff" * 1000, "huge": GOOD[:18] + b"\xff\xff\xff\x7f" * 2 + GOOD[26:],
    "no size": GOOD[:18] + bytes(8) + GOOD[26:], "far pixels": GOOD[:10] + b"\xff\xff\xff\xff" + GOOD[14:],
    "huge head": GOOD[:14] + b"\xff\xff\xff\xff" + GOOD[18:], "odd depth": GOOD[:28] + b"\x63\x00" + GOOD[30:],
    "upside down": GOOD[:22] + b"\0\0\0\x80" + GOOD[26:]}


@pytest.mark.parametrize("content", DAMAGED.values(), ids=DAMAGED)
@pytest.mark.parametrize("device", ["record", "qt"])
def test_a_damaged_image_does_no_harm(tmp_path, device, content):
    host = with_layer(POINT, SPOT, device=device)
    path = file_of(tmp_path, "bad.bmp", content)
    assert host.control.OrvSetLayImage("A", path, path, 15, 16, 1.0, 1.0) and host.control.OrvDspLayImage("A", True)
    activate(host)
    host.RDMReDraw()
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


def test_a_folder_is_no_image(tmp_path):
    (tmp_path / "folder.bmp").mkdir()
    host = with_images(tmp_path, SPOT, name="folder.bmp")
    assert figures(redrawn(host)) == []


@pytest.mark.parametrize("size", [(0, 0), (-15, -16), (2**31 - 1, 2**31 - 1), (-2**31, 5), (1, 2**31 - 1)])
@pytest.mark.parametrize("scales", [(1.0, 1.0), (0.0, 0.0), (-1.0, -1.0), (1e300, 1e300), (float("nan"), float("nan")),
                                    (float("-inf"), float("inf"))])
@pytest.mark.parametrize("device", ["record", "qt"])
def test_images_of_any_size_do_no_harm(tmp_path, device, size, scales):
    host = with_layer(POINT, SPOT, [(100, 100)], device=device)
    path = file_of(tmp_path, "a.bmp", GOOD)
    assert host.control.OrvSetLayImage("A", path, "", *size, *scales) and host.control.OrvDspLayImage("A", True)
    activate(host)
    host.RDMReDraw()


@pytest.mark.parametrize("pos", [-1, 5, 2**31 - 1])
def test_an_unknown_place_of_an_image_does_no_harm(tmp_path, pos):
    host = with_images(tmp_path, SPOT, pos=pos)
    assert [place[2:] for place in places(redrawn(host))] == [(15, 16)]


@pytest.mark.parametrize("x, y", [(float("nan"), 0), (float("inf"), 0), (1e300, -1e300)])
def test_points_anywhere_do_no_harm(x, y):
    host = with_layer(POINT, [(100, 100)])
    put(host, 2, (x, y))
    host.control.RDMReDraw()
    assert named(verbs(host), "FillPath")


def test_the_pen_and_brush_of_the_context_are_put_back():
    host = with_layer(POINT, SPOT)
    told = pens(redrawn(host))
    assert (told[-1].pen, told[-1].brush) == ((0, 1, BLACK), ("solid", WHITE))
