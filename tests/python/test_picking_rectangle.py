"""What a dragged rectangle selects: which box stands for an item, how its corners are rounded, and which must lie within."""

import pytest
from drawing_rig import add_sub_layer, bmp, file_of
from input_rig import CTRL, add_layer, drag, put, selected, shown
from map_rig import CIRCLE, ELLIPSE, LINE, MESH, PIXEL_ZOOM, POINT, POLYGON, TEXT, item

AT = (400, 300)


def within(host, left, top, right, bottom, keys=0):
    """The numbers that a rectangle selects in layer "A"."""
    drag(host, (left, top), (right, bottom), keys)
    return selected(host)


def assert_limits(host, left, top, right, bottom):
    """The smallest rectangle that selects item 1, checked to be so on each of its sides."""
    assert within(host, left, top, right, bottom) == [1]
    for shrunk in ((left + 1, top, right, bottom), (left, top + 1, right, bottom), (left, top, right - 1, bottom),
                   (left, top, right, bottom - 1)):
        assert within(host, *shrunk) == [], shrunk


# --- The rules of the types ----------------------------------------------------------------------------------------------------

# In the next tests the greatest y of an item, which lies below 0, is kept one too large by the bounds: -100 + 0.5 is cut to -99.
# So a box reaches a pixel higher on the screen than the item does, and the lower corner of an image lies a pixel too high.


@pytest.mark.parametrize("zoom", [PIXEL_ZOOM, 100])
def test_a_point_is_selected_by_its_pixel_which_may_lie_on_the_left_and_top_and_not_on_the_right_and_bottom(zoom):
    at = AT if zoom == PIXEL_ZOOM else (400.25, 300.25)
    host = shown(POINT, [at], zoom=zoom)
    x, y = AT
    assert within(host, x, y, x + 50, y + 50) == [1] and within(host, x - 50, y - 50, x + 1, y + 1) == [1]
    assert within(host, x + 1, y, x + 50, y + 50) == [] and within(host, x, y + 1, x + 50, y + 50) == []
    assert within(host, x - 50, y - 50, x, y + 1) == [] and within(host, x - 50, y - 50, x + 1, y) == []


def test_a_line_is_selected_when_the_whole_of_it_lies_within():
    host = shown(LINE, [(100, 100), (300, 200)])
    assert_limits(host, 100, 99, 301, 201)


def test_a_rectangle_around_half_of_a_line_selects_nothing():
    host = shown(LINE, [(100, 100), (300, 200)])
    for half in ((50, 50, 200, 250), (200, 50, 350, 250), (50, 50, 350, 150), (50, 150, 350, 250), (150, 120, 250, 180)):
        assert within(host, *half) == []


@pytest.mark.parametrize("kind, points, box", [
    (POLYGON, [(100, 100), (300, 150), (200, 400), (100, 100)], (100, 99, 301, 401)),
    (CIRCLE, [(400, 300, 30)], (370, 269, 431, 331)), (ELLIPSE, [(100, 100), (300, 200)], (100, 99, 301, 201)),
    (ELLIPSE, [(300, 200), (100, 100)], (100, 99, 301, 201)),
    (LINE, [(300, 200), (150, 100), (100, 180)], (100, 99, 301, 201))])
def test_the_box_of_a_line_or_an_area_is_that_of_all_of_it(kind, points, box):
    assert_limits(shown(kind, points), *box)


@pytest.mark.parametrize("kind", [TEXT, MESH])
def test_a_rectangle_selects_no_text_and_no_mesh(kind):
    if kind == TEXT:
        host = shown(TEXT, [AT])
        assert host.SetDigDatString("A", 1, 1, 400.0, -300.0, "text")
    else:
        host = shown(MESH)
        assert host.control.OrvAddMeshDat("A", 1, 1, 2, 2, [300.0, 400.0] * 2, [-200.0, -200.0, -300.0, -300.0], [0.0] * 4)
        assert host.control.OrvSetMeshUseFlag("A", 1, 1, [1] * 4) and host.control.OrvSetMeshColor("A", 1, 1, [5] * 4)
    host.RDMReDraw()
    assert item(host, "A", 1, 1)["drawnFlg"] == 1
    assert within(host, 10, 10, 790, 590) == []


def test_several_items_and_layers_are_selected_at_once():
    host = shown(POINT, [(100, 100)], [(200, 100)], [(600, 100)])
    add_layer(host, "L", LINE, 0, [(120, 120), (180, 180)], [(150, 150), (500, 500)])
    host.RDMReDraw()
    assert within(host, 50, 50, 250, 250) == [1, 2] and selected(host, "L") == [1]


@pytest.mark.parametrize("hide", [lambda host: host.SetLayer("A", False), lambda host: host.SetLayActive("A", False)])
def test_a_layer_that_is_hidden_or_not_to_be_selected_is_passed_over(hide):
    host = shown(POINT, [AT])
    hide(host)
    assert within(host, 300, 200, 500, 400) == []


def test_a_rectangle_clears_no_item_of_a_layer_that_is_not_to_be_selected():
    host = shown(POINT, [AT])
    assert within(host, 300, 200, 500, 400) == [1]
    host.SetLayActive("A", False)
    assert within(host, 10, 10, 50, 50) == [1]


def test_more_than_199_items_are_all_selected_by_a_rectangle():
    host = shown(POINT)
    for dat_id in range(1, 301):
        put(host, dat_id, AT)
    host.RDMReDraw()
    assert len(within(host, 300, 200, 500, 400)) == 300


# --- What was drawn ------------------------------------------------------------------------------------------------------------


def test_an_item_that_was_not_drawn_is_not_selected():
    host = shown(POINT)
    put(host, 1, AT)
    assert within(host, 300, 200, 500, 400) == []
    assert within(host, 300, 200, 500, 400) == [1]


def test_a_hidden_sub_layer_plays_no_part_as_long_as_the_item_is_on_the_screen():
    host = shown(POINT)
    add_sub_layer(host, 3)
    put(host, 1, AT, sub=3)
    host.RDMReDraw()
    add_sub_layer(host, 3, disp=False)
    assert within(host, 300, 200, 500, 400) == [1]
    assert within(host, 300, 200, 500, 400) == [], "the repaint took it off the screen"


# --- Rounding ------------------------------------------------------------------------------------------------------------------


def test_the_box_is_made_of_the_whole_numbers_that_an_item_keeps_of_its_bounds():
    host = shown(LINE, [(100.7, 150), (300.4, 150.0)])
    assert within(host, 100, 100, 301, 200) == [1], "100.7 is kept as 100, and 300.4 as 300"
    assert within(host, 101, 100, 302, 200) == []
    host = shown(LINE, [(100.2, 150), (300.6, 150.0)])
    assert within(host, 100, 100, 301, 200) == [], "300.6 is kept as 301"
    assert within(host, 100, 100, 302, 200) == [1]


@pytest.mark.parametrize("scale, left, right", [(1.003, 100, 202), (1.006, 100, 202), (1.0, 100, 201), (1.002, 100, 201)])
def test_the_left_side_is_cut_and_the_right_side_rounded(scale, left, right):
    host = shown(LINE, [(100, 150), (200, 150)])
    host.control.ScaleX = scale
    host.RDMReDraw()
    assert within(host, left, 100, right, 200) == [1]
    assert within(host, left + 1, 100, right, 200) == [] and within(host, left, 100, right - 1, 200) == []


def test_a_point_is_cut_and_not_rounded():
    host = shown(POINT, [(100, 100)])
    host.control.ScaleX = 1.007
    host.RDMReDraw()
    assert within(host, 100, 50, 101, 150) == [1], "drawn at 101, but its box begins at 100"
    assert within(host, 101, 50, 150, 150) == []


# --- Zoom 150 and below --------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("zoom", [1, 100, 150])
@pytest.mark.parametrize("first, last, right", [((100.3, 100.3), (200.6, 150.3), 201), ((200.6, 150.3), (100.3, 100.3), 202)])
def test_up_to_zoom_150_only_the_first_point_is_rounded_on_the_right(zoom, first, last, right):
    host = shown(LINE, [first, last], zoom=zoom)
    assert within(host, 100, 50, right, 200) == [1]
    assert within(host, 100, 50, right - 1, 200) == [] and within(host, 101, 50, right, 200) == []


@pytest.mark.parametrize("zoom", [1, 100, 150])
@pytest.mark.parametrize("first, last, bottom", [((100.3, 100.3), (150.3, 200.6), 201), ((150.3, 200.6), (100.3, 100.3), 202)])
def test_up_to_zoom_150_only_the_first_point_is_rounded_at_the_bottom(zoom, first, last, bottom):
    host = shown(LINE, [first, last], zoom=zoom)
    assert within(host, 50, 100, 200, bottom) == [1]
    assert within(host, 50, 100, 200, bottom - 1) == [] and within(host, 50, 101, 200, bottom) == []


@pytest.mark.parametrize("zoom, precise", [(150, True), (151, False)])
def test_from_zoom_151_on_the_whole_numbers_of_the_bounds_are_many_pixels(zoom, precise):
    host = shown(LINE, [(110, 100), (120, 100)], zoom=zoom)
    assert within(host, 105, 50, 125, 150) == ([1] if precise else []), "a map unit is 25 pixels here"


@pytest.mark.parametrize("zoom, by_centre", [(150, True), (151, False)])
def test_up_to_zoom_150_a_circle_is_selected_by_its_centre(zoom, by_centre):
    unit = zoom / 3779
    host = shown(CIRCLE, [(400, 300, 100 * unit)], zoom=zoom)
    assert within(host, 390, 290, 410, 310) == ([1] if by_centre else [])


# --- Images --------------------------------------------------------------------------------------------------------------------


def with_image(tmp_path, pos=0, size=(40, 20), zoom=PIXEL_ZOOM, scales=(1.0, 1.0)):
    host = shown(POINT, [AT], zoom=zoom)
    path = file_of(tmp_path, "a.bmp", bmp(20, 10))
    assert host.SetLayImage("A", path, "", *size, *scales) and host.DspLayImage("A", True)
    assert host.control.OrvSetLayImagePos("A", pos)
    host.RDMReDraw()
    return host


def test_an_image_is_selected_when_its_whole_box_lies_within(tmp_path):
    assert_limits(with_image(tmp_path), 380, 290, 421, 310)


@pytest.mark.parametrize("pos, left, top", [(0, 380, 290), (1, 400, 300), (2, 400, 280), (3, 360, 300), (4, 360, 280)])
def test_the_place_of_an_image_moves_the_left_top_corner_of_its_box_and_not_the_right_bottom_one(tmp_path, pos, left, top):
    assert_limits(with_image(tmp_path, pos), left, top, 421, 310)


def test_the_box_of_an_image_has_the_scale_between_its_bounds(tmp_path):
    assert_limits(with_image(tmp_path, scales=(2.0, 3.0)), 360, 280, 441, 320)
    assert_limits(with_image(tmp_path, size=(41, 21)), 380, 290, 421, 310)


def test_with_its_images_switched_off_a_point_is_selected_by_its_pixel(tmp_path):
    host = with_image(tmp_path)
    host.DspLayImage("A", False)
    host.RDMReDraw()
    assert within(host, 395, 295, 405, 305) == [1]


# --- Adding --------------------------------------------------------------------------------------------------------------------


def test_with_ctrl_items_outside_the_rectangle_stay_active():
    host = shown(LINE, [(100, 100), (200, 200)], [(300, 300), (400, 400)], [(500, 100), (600, 200)])
    assert within(host, 90, 90, 210, 210) == [1]
    assert within(host, 290, 290, 410, 410, CTRL) == [1, 2]
    assert within(host, 490, 90, 610, 210) == [3]


def test_rectangles_far_out_of_the_window_do_no_harm():
    host = shown(POINT, [AT])
    assert within(host, -2**31, -2**31, 2**31 - 1, 2**31 - 1) == [1]
    assert within(host, 2**31 - 10, 0, 2**31 - 1, 500) == []


@pytest.mark.parametrize("kind", [POINT, LINE, POLYGON, CIRCLE, ELLIPSE])
@pytest.mark.parametrize("zoom", [PIXEL_ZOOM, 100])
def test_items_with_points_anywhere_and_items_without_points_do_no_harm(kind, zoom):
    host = shown(kind, [(float("nan"), 0), (1e300, -1e300)], [(float("inf"), 5)], [(-1e18, 1e18, 1e300)], zoom=zoom)
    assert host.AddDigDat("A", 1, 9, 0)
    host.RDMReDraw()
    within(host, 0, 0, 800, 600)
    within(host, 0, 0, 800, 600, CTRL)
