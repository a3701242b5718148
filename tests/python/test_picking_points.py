"""Points under the cursor: the square around a marker by scale, line size and style, sub layers, and the place of images."""

import math

import pytest
from drawing_rig import BOTH, add_sub_layer, bmp, file_of
from input_rig import (CTRL, DELETE, SHIFT, add_layer, assert_picks, click, grid, picked_at, press, put, selected, shown)
from map_rig import PIXEL_ZOOM, POINT, item, items, layer

AT = (400, 300)


def assert_square(host, half, at=AT, number=1):
    """The pixels of a square: its left and top sides belong to it, its right and bottom sides do not."""
    x, y = at
    for offset, hit in ((-half, True), (-half - 1, False), (half - 1, True), (half, False)):
        assert picked_at(host, x + offset, y) == (number if hit else None), ("x", offset)
        assert picked_at(host, x, y + offset) == (number if hit else None), ("y", offset)
    assert picked_at(host, x - half, y - half) == number, "the corner is no less near than the side"


# --- Markers -------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("zoom, half", [(50000000, 2), (50001, 2), (50000, 3), (30001, 3), (30000, 4), (20001, 4), (20000, 5),
                                        (10001, 5), (10000, 6), (7001, 6), (7000, 7), (5001, 7), (5000, 9), (3001, 9),
                                        (3000, 10), (1, 10)])
def test_the_square_of_a_point_grows_in_steps_as_the_map_is_zoomed_in(zoom, half):
    assert_square(shown(POINT, [AT], zoom=zoom), half)


@pytest.mark.parametrize("zoom", [60000, 50000, 30000, 20000, 10000, 7000, 5000, 3000, 1])
def test_the_line_size_9999_fixes_the_square_at_6_pixels(zoom):
    assert_square(shown(POINT, [AT], zoom=zoom, SetLayLineSize=9999), 6)


@pytest.mark.parametrize("size", [0, 1, 50, 9998, 10000, -1])
def test_no_other_line_size_has_a_meaning_for_the_square(size):
    assert_square(shown(POINT, [AT], SetLayLineSize=size), 9)


@pytest.mark.parametrize("zoom, half", [(PIXEL_ZOOM, 36), (60000, 8), (2000, 40)])
def test_a_layer_whose_line_type_is_12_has_a_square_four_times_as_large(zoom, half):
    assert_square(shown(POINT, [AT], zoom=zoom, SetLayPgnLine=(1, 12)), half)


def test_the_line_type_12_enlarges_the_fixed_square_too():
    assert_square(shown(POINT, [AT], zoom=60000, SetLayPgnLine=(1, 12), SetLayLineSize=9999), 24)


@pytest.mark.parametrize("line_type", [0, 1, 11, 13, -12])
def test_no_other_line_type_enlarges_the_square(line_type):
    assert_square(shown(POINT, [AT], SetLayPgnLine=(1, line_type)), 9)


@pytest.mark.parametrize("kind", [0, 3, 11, 12])
def test_the_symbol_that_is_drawn_has_no_part_in_the_square(kind):
    host = shown(POINT, [AT], SetLayLineType=kind)
    assert layer(host, "A")["pntType"] == kind and layer(host, "A")["lineType"] == 0
    assert_square(host, 9)


@pytest.mark.parametrize("points", [[AT, (100, 100)], [AT, AT, AT]])
def test_only_the_first_point_of_a_point_item_counts(points):
    host = shown(POINT, points)
    assert_square(host, 9)
    assert picked_at(host, 100, 100) is None


def test_an_item_without_points_is_never_hit():
    host = shown(POINT)
    assert host.AddDigDat("A", 1, 1, 0)
    host.RDMReDraw()
    assert picked_at(host, 0, 0) is None


def test_a_point_is_hit_where_it_is_drawn_in_a_block_with_an_origin():
    host = shown(POINT)
    assert host.control.DigMemAlloc2("B", 1, POINT, "", 5, 100.0, -200.0)
    host.add_item("B", 1, 7, [(50, -30)])
    host.RDMReDraw()
    assert_square(host, 9, (150, 230), 7)


def test_a_point_is_hit_where_it_is_drawn_in_a_stretched_view():
    host = shown(POINT, [(200, 100)])
    host.control.ScaleX, host.control.ScaleY = 2.0, 3.0
    host.RDMReDraw()
    assert_square(host, 9)


def test_a_point_is_hit_where_it_is_drawn_in_a_turned_view():
    host = shown(POINT, [AT])
    host.control.Rotate = -90.0
    host.control.OrvScrl(-700.0, 0.0)
    host.RDMReDraw()
    x, y = turned(400, 300, -90.0)
    left, top = (host.control.OrvGetScreenPosX(0), -host.control.OrvGetScreenPosY(0))
    assert_square(host, 9, (int(x - left + 0.5), int(y - top + 0.5)))


def turned(x, y, degrees):
    a = -degrees * 0.01745328
    return math.cos(a) * x - math.sin(a) * y, math.sin(a) * x + math.cos(a) * y


# --- Sub layers ----------------------------------------------------------------------------------------------------------------


def in_sub_layer(number=3, item_number=3, **look):
    host = shown(POINT)
    add_sub_layer(host, number, **look)
    put(host, 1, AT, sub=item_number)
    host.RDMReDraw()
    return host


def test_the_line_type_of_a_sub_layer_takes_the_place_of_the_layers():
    assert_square(in_sub_layer(line_type=12), 36)
    host = in_sub_layer(line_type=0)
    assert host.SetLayPgnLine("A", 1, 12)
    assert_square(host, 9)


def test_the_symbol_of_a_sub_layer_has_no_part_in_the_square():
    assert_square(in_sub_layer(pnt=12), 9)


@pytest.mark.parametrize("number", [99, -3, -2**31])
def test_an_unknown_sub_layer_number_has_the_line_type_of_the_layer(number):
    host = in_sub_layer(item_number=number, line_type=0)
    assert host.SetLayPgnLine("A", 1, 12)
    assert_square(host, 36)


def test_the_line_size_is_the_layers_whatever_the_sub_layer_has():
    assert_square(in_sub_layer(size=9999), 9)
    host = in_sub_layer(size=1)
    assert host.SetLayLineSize("A", 9999)
    assert_square(host, 6)


def test_an_item_in_a_hidden_sub_layer_is_not_hit_and_the_search_goes_on_to_the_next():
    host = shown(POINT, [AT])
    add_sub_layer(host, 3)
    put(host, 2, AT, sub=3)
    host.RDMReDraw()
    assert picked_at(host, *AT) == 2
    add_sub_layer(host, 3, disp=False)
    assert item(host, "A", 1, 2)["drawnFlg"] == 1, "the picture still shows it"
    assert picked_at(host, *AT) == 1
    assert item(host, "A", 1, 2)["drawnFlg"] == 0, "the repaint of the click took it away"
    add_sub_layer(host, 3, disp=True)
    assert picked_at(host, *AT) == 1, "not drawn, so not met"
    assert picked_at(host, *AT) == 2, "the repaint brought it back"


# --- Images --------------------------------------------------------------------------------------------------------------------


def with_image(tmp_path, at=AT, size=(40, 20), scales=(1.0, 1.0), pos=0, zoom=PIXEL_ZOOM, newer=False, **settings):
    host = shown(POINT, [at], zoom=zoom, newer=newer, **settings)
    path = file_of(tmp_path, "a.bmp", bmp(20, 10))
    assert host.SetLayImage("A", path, "", *size, *scales) and host.DspLayImage("A", True)
    assert host.control.OrvSetLayImagePos("A", pos)
    host.RDMReDraw()
    return host


def assert_box(host, cx, cy, hw, hh):
    for dx, dy, hit in ((-hw, 0, True), (-hw - 1, 0, False), (hw - 1, 0, True), (hw, 0, False), (0, -hh, True),
                        (0, -hh - 1, False), (0, hh - 1, True), (0, hh, False)):
        assert picked_at(host, cx + dx, cy + dy) == (1 if hit else None), (dx, dy)


@BOTH
def test_an_image_is_hit_in_its_whole_box(tmp_path, newer):
    assert_box(with_image(tmp_path, newer=newer), *AT, 20, 10)


@pytest.mark.parametrize("pos, dx, dy", [(0, 0, 0), (1, 20, 10), (2, 20, -10), (3, -20, 10), (4, -20, -10)])
def test_the_box_of_an_image_stands_at_the_point_as_the_image_does(tmp_path, pos, dx, dy):
    assert_box(with_image(tmp_path, pos=pos), AT[0] + dx, AT[1] + dy, 20, 10)


@pytest.mark.parametrize("size, hw, hh", [((41, 21), 20, 10), ((43, 23), 21, 11), ((100, 8), 50, 4)])
def test_half_the_size_of_an_image_is_cut_to_whole_pixels(tmp_path, size, hw, hh):
    assert_box(with_image(tmp_path, size=size), *AT, hw, hh)


@pytest.mark.parametrize("zoom, scales, factor", [
    (PIXEL_ZOOM, (0.5, 2.0), 1), (PIXEL_ZOOM, (2.0, 3.0), 2), (PIXEL_ZOOM, (0.1, 0.5), 0.5), (2 * PIXEL_ZOOM, (0.1, 10.0), 0.5),
    (100 * PIXEL_ZOOM, (0.25, 2.0), 0.25), (100, (1.0, 4.0), 4)])
def test_the_box_of_an_image_has_the_scale_between_its_bounds(tmp_path, zoom, scales, factor):
    assert_box(with_image(tmp_path, zoom=zoom, scales=scales), *AT, int(20 * factor), int(10 * factor))


def test_the_line_type_and_the_line_size_mean_nothing_to_an_image(tmp_path):
    assert_box(with_image(tmp_path, SetLayPgnLine=(1, 12), SetLayLineSize=9999), *AT, 20, 10)


def test_with_its_images_switched_off_a_layer_has_the_square_again(tmp_path):
    host = with_image(tmp_path)
    assert host.DspLayImage("A", False)
    host.RDMReDraw()
    assert_square(host, 9)


def test_an_image_of_a_sub_layer_is_hit_as_the_marker_or_image_of_the_layer(tmp_path):
    host = shown(POINT)
    path = file_of(tmp_path, "a.bmp", bmp(20, 10))
    add_sub_layer(host, 3)
    assert host.control.OrvSetSubLayImage("A", 3, path, "", 80, 60, 1.0, 1.0) and host.control.OrvDspSubLayImage("A", 3, True)
    put(host, 1, AT, sub=3)
    host.RDMReDraw()
    assert_square(host, 9)


def test_the_tools_pick_images_by_their_box_too(tmp_path):
    for x, hit in ((AT[0] + 18, True), (AT[0] + 25, False)):
        host = with_image(tmp_path, SetLayEditFlg=True)
        assert host.control.DigDatEditor("", 0, 0, DELETE) == 0
        press(host, x, AT[1])
        assert bool(items(host, "A", 1)) is not hit


@pytest.mark.parametrize("size", [(0, 0), (-40, -20), (2**31 - 1, 2**31 - 1), (-2**31, 2**31 - 1)])
@pytest.mark.parametrize("scales", [(0.0, 0.0), (1e300, 1e300), (float("nan"), float("nan")), (-1.0, 1.0)])
def test_images_of_any_size_do_no_harm_to_a_click(tmp_path, size, scales):
    for pos in (-1, 0, 1, 4, 5, 2**31 - 1):
        host = with_image(tmp_path, size=size, scales=scales, pos=pos)
        for keys in (0, CTRL, SHIFT):
            click(host, *AT, keys)


@pytest.mark.parametrize("x, y", [(float("nan"), 0), (float("inf"), 0), (1e300, -1e300), (-1e18, 1e18)])
def test_points_anywhere_do_no_harm_to_a_click(x, y):
    host = shown(POINT, [AT])
    put(host, 2, (x, y))
    host.RDMReDraw()
    assert picked_at(host, 100, 100) in (None, 2)
    assert picked_at(host, *AT) in (1, 2)


@pytest.mark.parametrize("x, y", [(-1, -1), (-2**31, -2**31), (2**31 - 1, 2**31 - 1)])
def test_clicks_anywhere_do_no_harm(x, y):
    host = shown(POINT, [AT])
    assert picked_at(host, x, y) is None


# --- What was drawn ------------------------------------------------------------------------------------------------------------


def test_a_new_item_is_met_only_after_it_was_drawn():
    host = shown(POINT)
    put(host, 1, AT)
    click(host, *AT)
    assert selected(host) == [], "it was not on the screen at the click"
    click(host, *AT)
    assert selected(host) == [1]


@pytest.mark.parametrize("tag, mode", [(0, True), (5, False), (5, True), (-1, True), (-1, False)])
def test_an_item_that_only_its_tag_keeps_out_of_the_picture_is_met_all_the_same(tag, mode):
    host = shown(POINT)
    put(host, 1, AT, tag=tag)
    host.control.LineTagMode = mode
    host.RDMReDraw()
    assert item(host, "A", 1, 1)["drawnFlg"] == 1, "drawing passes it over and leaves the mark of the search"
    assert picked_at(host, *AT) == 1


def test_two_points_within_one_square_give_the_later_item():
    host = shown(POINT, [AT], [(AT[0] + 5, AT[1])])
    assert picked_at(host, AT[0] + 2, AT[1]) == 2
    assert picked_at(host, AT[0] - 8, AT[1]) == 1


def test_a_point_of_a_layer_on_top_is_met_before_all_of_the_layers_below():
    host = shown(POINT, [AT], [AT])
    add_layer(host, "TOP", POINT, 0, [AT], first=9)
    host.RDMReDraw()
    click(host, *AT)
    assert (selected(host, "TOP"), selected(host)) == ([9], [])


def test_the_pixels_around_a_point_are_those_of_its_square():
    host = shown(POINT, [AT])
    told = assert_picks(host, lambda x, y: abs(x - AT[0]) <= 9 and abs(y - AT[1]) <= 9, grid(384, 286, 416, 314, 2))
    assert told[True] > 50 and told[False] > 50
