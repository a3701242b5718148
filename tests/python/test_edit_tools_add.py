"""The add tool: points, lines, polygons, circles and ellipses drawn click by click, and what stands in the store afterwards."""

import pytest
from edit_rig import (ADD, BOTH, END, SPOT, SQUARE, START, STROKE, begin, clean, editable, figures, finish, heights,
                      is_red_figure, mode, numbers, rubber, shape, tag_and_active, told)
from input_rig import ADDING, CTRL, LEFT, SHIFT, drawn_after, listening, move, press, relaid, release
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, TEXT, block, composed, item
from overlay_rig import figure, polylines, texts

A, B, C, D = (100, 100), (300, 120), (280, 400), (90, 380)


def drawing(kind, *clicks, newer=False, dat_id=0, mesh=1, block_there=True):
    """A host on which that much of a figure was drawn."""
    host = editable(kind, newer=newer)
    if not block_there:
        assert host.DigMemDelete("A", 1) and block(host, "A", 1) is None
    begin(host, ADD, dat_id, mesh=mesh)
    for at in clicks:
        press(host, *at)
    return host


# --- Points ------------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_click_makes_a_point_at_once_with_z_0_neither_active_nor_tagged(newer):
    host = editable(POINT, SPOT, newer=newer)
    begin(host, ADD)
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, *A))
    assert [event for event in heard if event[0] != "MouseMove"] == [
        (START, "A", 1, -1, 0, 100), (END, "A", 1, 2, 0, 100), ("MouseDown", 1, 0, *A)]
    assert shape(host, 2) == [A] and heights(host, 2) == [0] and tag_and_active(host, 2) == (0, False)
    assert clean(host) and composed(drawn)


def test_a_point_takes_the_number_asked_for():
    host = drawing(POINT, dat_id=44)
    heard = listening(host)
    press(host, *A)
    assert told(heard) == [(START, "A", 1, -1, 0, 100), (END, "A", 1, 44, 0, 100)]
    assert numbers(host) == [44]


@pytest.mark.parametrize("asked", [0, -1, -100])
def test_a_number_below_1_takes_the_free_one_behind_the_greatest(asked):
    host = editable(POINT, SPOT)
    host.add_item("A", 1, 9, [(5, -5)])
    begin(host, ADD, asked)
    press(host, *A)
    assert numbers(host) == [1, 9, 10]


def test_a_point_makes_its_block_where_there_is_none_on_the_bottom_with_no_origin():
    host = drawing(POINT, A, block_there=False)
    made = block(host, "A", 1)
    assert (made["GX"], made["GY"], made["path"]) == (0, 0, b"")
    assert shape(host) == [A] and numbers(host) == [1]


def test_a_point_in_a_mesh_of_its_own_makes_that_block():
    host = drawing(POINT, A, mesh=0)
    assert block(host, "A", 0)["datCnt"] == 1 and block(host, "A", 1)["datCnt"] == 0


def test_a_point_is_stored_against_the_origin_of_its_block():
    host = editable(POINT)
    assert host.control.DigMemAlloc2("A", 7, POINT, "", 1, 1000, -2000)
    begin(host, ADD, mesh=7)
    press(host, *A)
    assert item(host, "A", 7, 1)["pnts"][0] == (-900, 1900, 0)


def test_the_button_up_behind_the_click_is_one_of_the_normal_mode_and_selects_the_new_point():
    host = drawing(POINT, A)
    host.RDMReDraw()
    heard = listening(host)
    release(host, *A)
    assert heard == [("OnDataClick", 1, "A", 1, *A), ("MouseUp", 1, 0, *A)]


@pytest.mark.parametrize("keys", [SHIFT, CTRL, SHIFT | CTRL])
def test_keys_held_do_not_change_what_a_click_adds(keys):
    host = drawing(LINE)
    press(host, *A, keys)
    press(host, *B, keys)
    assert rubber(host) == [A, A, B]


# --- Lines and polygons while they are drawn ---------------------------------------------------------------------------------


@pytest.mark.parametrize("kind", [LINE, POLYGON, CIRCLE, ELLIPSE])
def test_the_first_click_tells_the_start_once_with_id_minus_1_and_no_points(kind):
    host = drawing(kind)
    heard = listening(host)
    press(host, *A)
    assert told(heard) == [(START, "A", 1, -1, 0, 100)]
    assert rubber(host) == [A, A] and mode(host) == ADDING
    if kind in (LINE, POLYGON):
        press(host, *B)
        press(host, *C)
        assert told(heard) == []


def test_each_further_click_adds_one_point_and_the_one_behind_trails_the_cursor():
    host = drawing(LINE, A)
    for at in (B, C, D):
        drawn = drawn_after(host, lambda at=at: move(host, *at))
        assert relaid(drawn) and polylines(drawn) == [tuple(rubber(host))]
        press(host, *at)
    assert rubber(host) == [A, B, C, D, D]
    move(host, 5, 6)
    assert rubber(host) == [A, B, C, D, (5, 6)]


def test_a_move_before_the_first_click_has_no_point_to_carry():
    host = drawing(LINE)
    drawn = drawn_after(host, lambda: move(host, *A))
    assert rubber(host) == [] and relaid(drawn)


def test_the_trailing_point_is_seen_by_the_overlay_members():
    host = drawing(LINE, A, B)
    assert is_red_figure(host, 1, 3, LINE)
    move(host, *C)
    assert is_red_figure(host, 1, 3, LINE)
    assert host.AddOrgPnt(1, 5.0, 5.0) == 4, "and the host may work on the figure"


@pytest.mark.parametrize("flags", [0, LEFT, SHIFT, CTRL, LEFT | SHIFT])
def test_moves_with_any_button_or_key_but_the_right_one_carry_the_trailing_point(flags):
    host = drawing(LINE, A)
    move(host, *B, flags)
    assert rubber(host) == [A, B]


def test_right_button_moves_carry_nothing():
    host = drawing(LINE, A)
    move(host, *B, 2)
    assert rubber(host) == [A, A]


def test_nothing_is_in_the_store_before_the_end():
    host = drawing(POLYGON, A, B, C)
    assert numbers(host) == []


# --- The double click --------------------------------------------------------------------------------------------------------


@BOTH
def test_a_double_click_ends_a_line_which_is_then_active_with_tag_0(newer):
    host = drawing(LINE, A, B, C, newer=newer)
    heard = listening(host)
    drawn = drawn_after(host, lambda: finish(host, *C))
    assert told(heard) == [(END, "A", 1, 1, 3, 100)]
    assert shape(host) == [A, B, C] and heights(host) == [0, 0, 0] and tag_and_active(host) == (0, True)
    assert clean(host) and composed(drawn)


def test_the_place_of_the_double_click_adds_no_point():
    host = drawing(LINE, A, B)
    finish(host, *D)
    assert shape(host) == [A, B]


def test_a_double_click_at_the_end_of_adding_tells_no_double_click_on_data():
    host = drawing(LINE, A, B)
    heard = listening(host)
    finish(host, *B)
    release(host, *B)
    assert [name for name, *_ in heard] == [END, "MouseUp"]


@pytest.mark.parametrize("keys", [SHIFT, CTRL, SHIFT | CTRL])
def test_a_double_click_with_a_key_does_not_end_a_line(keys):
    host = drawing(LINE, A, B)
    finish(host, *B, keys)
    assert mode(host) == ADDING and numbers(host) == []


@pytest.mark.parametrize("drawn, stored, why", [
    ([A, B, C], [A, B, C, A], "a ring left open is closed"),
    ([A, B, C, D], [A, B, C, D, A], "a ring left open is closed"),
    ([A, B, C, A], [A, B, C, A], "closed by hand it is left as it is"),
    ([A, B], [A, B, A], "two points are closed as well"),
    ([A, A], [A, A], "two points at one place begin and end alike"),
    ([A], [A], "a single point begins and ends alike"),
    ([A, B, C, A, D], [A, B, C, A, D], "one ring found is enough, whatever follows it"),
    ([A, B, A, C], [A, B, A, C], "three points that come back are a ring"),
    ([A, A, B], [A, A, B, A], "two points that come back are not yet a ring")])
def test_a_polygon_is_closed_by_its_first_point_where_it_holds_no_ring(drawn, stored, why):
    host = drawing(POLYGON, *drawn)
    heard = listening(host)
    finish(host, *drawn[-1])
    assert shape(host) == stored, why
    assert told(heard) == [(END, "A", 1, 1, len(drawn), 100)], "the closing point is not counted"
    assert tag_and_active(host) == (0, True) and clean(host)


def test_a_ring_that_closes_on_the_screen_alone_is_closed_in_the_data():
    """Points a fraction of a map unit apart share a pixel, and are still two points."""
    host = editable(POLYGON)
    begin(host, ADD)
    for at in (A, B, C):
        press(host, *at)
    host.MapJumpToXY(400.25, -300.0)
    press(host, *A)
    finish(host, *A)
    assert shape(host) == [A, B, C, (100.25, 100), A]


def test_a_line_that_comes_back_to_its_start_is_not_closed_again_nor_one_left_open():
    for points in ([A, B, C, A], [A, B, C]):
        host = drawing(LINE, *points)
        finish(host, *points[-1])
        assert shape(host) == points


@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_a_line_and_a_polygon_make_their_block_where_there_is_none(kind):
    host = drawing(kind, A, B, C, block_there=False)
    assert block(host, "A", 1) is None, "not before the end"
    heard = listening(host)
    finish(host, *C)
    assert told(heard) == [(END, "A", 1, 1, 3, 100)]
    assert shape(host)[:3] == [A, B, C] and (block(host, "A", 1)["GX"], block(host, "A", 1)["GY"]) == (0, 0)


def test_a_line_takes_the_number_asked_for_and_is_stored_against_the_origin():
    host = editable(LINE)
    assert host.control.DigMemAlloc2("A", 7, LINE, "", 1, 100, -50)
    begin(host, ADD, 31, mesh=7)
    for at in (A, B):
        press(host, *at)
    finish(host, *B)
    assert [point[:2] for point in item(host, "A", 7, 31)["pnts"]] == [(0, -50), (200, -70)]


def test_a_line_of_one_click_is_a_line_of_one_point():
    host = drawing(LINE, A)
    heard = listening(host)
    finish(host, *A)
    assert told(heard) == [(END, "A", 1, 1, 1, 100)] and shape(host) == [A]


@pytest.mark.parametrize("kind", [LINE, POLYGON, CIRCLE, ELLIPSE])
def test_a_double_click_before_any_click_ends_with_an_item_of_no_points(kind):
    host = drawing(kind)
    heard = listening(host)
    finish(host, *A)
    assert told(heard) == [(END, "A", 1, 1, 0, 100)]
    assert clean(host) and shape(host) == []


def test_a_text_layer_is_drawn_as_a_line_is():
    host = drawing(TEXT, A)
    finish(host, *A)
    assert shape(host) == [A] and tag_and_active(host) == (0, True)


def test_a_second_line_needs_a_second_start():
    host = drawing(LINE, A, B)
    finish(host, *B)
    press(host, *C)
    assert numbers(host) == [1] and figures(host) == []


# --- Circles and ellipses ----------------------------------------------------------------------------------------------------


@BOTH
def test_a_circle_is_its_centre_and_the_distance_of_the_second_click(newer):
    host = drawing(CIRCLE, (400, 300), newer=newer)
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, 430, 340))
    assert told(heard) == [(END, "A", 1, 1, 2, 100)]
    assert shape(host) == [(400, 300)] and heights(host) == [pytest.approx(50, rel=1e-12)]
    assert tag_and_active(host) == (0, False), "a circle does not end up selected"
    assert clean(host) and composed(drawn)


def test_an_ellipse_is_both_clicks():
    host = drawing(ELLIPSE, A)
    heard = listening(host)
    press(host, *C)
    assert told(heard) == [(END, "A", 1, 1, 2, 100)]
    assert shape(host) == [A, C] and heights(host) == [0, 0] and tag_and_active(host) == (0, False)
    assert clean(host)


@pytest.mark.parametrize("kind", [CIRCLE, ELLIPSE])
def test_a_circle_and_an_ellipse_are_stored_against_the_origin(kind):
    host = editable(kind)
    assert host.control.DigMemAlloc2("A", 7, kind, "", 1, 100, -50)
    begin(host, ADD, mesh=7)
    press(host, 400, 300)
    press(host, 430, 340)
    stored = item(host, "A", 7, 1)["pnts"]
    assert stored[0][:2] == (300, -250)
    if kind == CIRCLE:
        assert stored[0][2] == pytest.approx(50)
    else:
        assert stored[1] == (330, -290, 0)


@pytest.mark.parametrize("kind", [CIRCLE, ELLIPSE])
@pytest.mark.parametrize("asked, number", [(5, 5), (0, -1)])
def test_a_circle_and_an_ellipse_do_not_make_their_block_and_still_tell_the_end(kind, asked, number):
    host = drawing(kind, A, block_there=False, dat_id=asked)
    heard = listening(host)
    press(host, *B)
    assert told(heard) == [(END, "A", 1, number, 2, 100)], "no free number without a block"
    assert block(host, "A", 1) is None and clean(host)


def test_a_circle_ended_by_a_double_click_after_one_click_has_no_points():
    host = drawing(CIRCLE, A)
    heard = listening(host)
    finish(host, *A)
    assert told(heard) == [(END, "A", 1, 1, 1, 100)]
    assert numbers(host) == [1] and shape(host) == [] and clean(host)


def test_two_clicks_at_one_place_make_a_circle_of_radius_0():
    host = drawing(CIRCLE, A, A)
    assert shape(host) == [A] and heights(host) == [0] and clean(host)


# --- The figure in the picture -----------------------------------------------------------------------------------------------


def test_figures_behind_the_one_without_points_are_not_drawn_until_the_first_click():
    host = editable(LINE)
    begin(host, ADD)
    figure(host, LINE, [C, D])
    assert polylines(drawn_after(host, host.RDMReDraw)) == []
    press(host, *A)
    drawn = drawn_after(host, lambda: move(host, *B))
    assert polylines(drawn) == [(A, B), (C, D)]
    assert texts(drawn) == []


def test_the_line_size_of_the_layer_does_not_change_the_one_of_a_polygon():
    host = editable(POLYGON, SQUARE, SetLayLineSize=7)
    begin(host, ADD)
    assert is_red_figure(host, 1, 0, POLYGON, 1)


def test_the_view_may_be_moved_and_scaled_while_a_line_is_drawn():
    host = drawing(LINE, A)
    host.MapJumpToXY(500.0, -300.0)
    press(host, *A)
    host.control.Zoom = host.control.Zoom * 2
    host.MapJumpToXY(800.0, -600.0)
    press(host, 10, 10)
    finish(host, 10, 10)
    assert shape(host) == [A, (200, 100), (20, 20)]


def test_clicks_count_in_map_units_whatever_the_stretch_and_turn_of_the_view():
    host = editable(LINE)
    host.control.Rotate, host.control.ScaleX, host.control.ScaleY = 30.0, 2.0, 3.0
    begin(host, ADD)
    for at in (A, B):
        press(host, *at)
    finish(host, *B)
    assert shape(host) == [A, B]
    assert STROKE[0] == A
