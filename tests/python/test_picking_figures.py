"""Clicks on overlay figures in modes 50 and 51: their points, their shapes, and the nearest point of figures and of data."""

import pytest
from drawing_rig import add_sub_layer
from input_rig import (ALL_CLICKS, CTRL, LEFT, SHIFT, SHIFT_CLICKS, add_layer, at_scale, click, drawn_after, listening, names,
                       own, press, put, ready, relaid, selected, shown, taken)
from map_rig import CIRCLE, ELLIPSE, LINE, PIXEL_ZOOM, POINT, POLYGON, TEXT, view
from overlay_rig import figure, set_active

BOX = [(200, 200), (400, 200), (400, 400), (200, 400), (200, 200)]


def figures_on(zoom=PIXEL_ZOOM, mode=ALL_CLICKS, newer=False):
    host = ready(at_scale(zoom, newer))
    host.control.RunMode = mode
    return host


def scaled(host, kind, pixels, **look):
    return figure(host, kind, [(x * host.unit, y * host.unit) for x, y in pixels], **look)


def heard_at(host, x, y, keys=0):
    """The event of the map that a button down fires, or None; a hit takes the place of mouse down."""
    heard = host.__dict__.get("ear") or listening(host)
    host.ear = heard
    heard.clear()
    press(host, x, y, keys)
    (told,) = heard
    host.control.mouse("lup", 0, x, y)
    return None if told[0] == "MouseDown" else told


def figure_at(host, x, y):
    told = heard_at(host, x, y)
    assert told is None or (told[0] == "OnOrgDataClick" and told[2:] == (x, y))
    return told and told[1]


def figures_at(host, *pixels):
    return [figure_at(host, x, y) for x, y in pixels]


# --- The buttons in modes 50 and 51 --------------------------------------------------------------------------------------------


@pytest.mark.parametrize("mode, keys", [(ALL_CLICKS, 0), (ALL_CLICKS, SHIFT), (ALL_CLICKS, SHIFT | CTRL), (SHIFT_CLICKS, SHIFT),
                                        (SHIFT_CLICKS, SHIFT | CTRL)])
def test_a_hit_takes_the_place_of_mouse_down_takes_no_capture_and_lays_the_figures_anew(mode, keys):
    host = shown(POINT, [(300, 300)])
    figure(host, POLYGON, BOX)
    host.control.RunMode = mode
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, 300, 300, keys))
    assert relaid(drawn) and len(heard) == 1 and heard[0][0] not in ("MouseDown", "OnDataClick")
    assert not host.control.captured
    host.control.mouse("lup", 0, 300, 300)
    assert names(heard)[1:] == ["MouseUp"] and selected(host) == []


@pytest.mark.parametrize("mode", [SHIFT_CLICKS, ALL_CLICKS])
@pytest.mark.parametrize("keys", [0, SHIFT, CTRL, SHIFT | CTRL])
@pytest.mark.parametrize("select", [False, True])
def test_a_click_that_finds_nothing_is_told_as_mouse_down_alone_and_lays_the_figures_anew(mode, keys, select):
    host = figures_on(mode=mode)
    host.control.SetDataSelectMode(select)
    heard = listening(host)
    drawn = drawn_after(host, lambda: press(host, 300, 300, keys))
    assert names(heard) == ["MouseDown"] and relaid(drawn) and host.control.captured
    host.control.mouse("lup", 0, 300, 300)
    assert names(heard) == ["MouseDown", "MouseUp"]


def test_mode_50_does_not_answer_a_plain_click():
    host = figures_on(mode=SHIFT_CLICKS)
    figure(host, POLYGON, BOX, active=True)
    assert heard_at(host, 300, 300) is None and heard_at(host, 200, 200) is None


@pytest.mark.parametrize("mode", [SHIFT_CLICKS, ALL_CLICKS])
@pytest.mark.parametrize("flags", [LEFT | CTRL, 2, 3, 7, 0, 15])
def test_other_flag_words_find_nothing_in_the_figure_modes(mode, flags):
    host = shown(POINT, [(300, 300)])
    figure(host, POLYGON, BOX, active=True)
    host.control.RunMode = mode
    heard = listening(host)
    host.control.mouse("ldown", flags, 300, 300)
    assert names(heard) == ["MouseDown"]


@pytest.mark.parametrize("mode", [49, 52, 0])
def test_other_modes_find_no_figures(mode):
    host = shown(LINE)
    figure(host, POLYGON, BOX, active=True)
    host.control.RunMode = mode
    heard = listening(host)
    click(host, 300, 300)
    click(host, 300, 300, SHIFT)
    assert own(heard) == []


def test_a_right_button_and_a_move_find_no_figures():
    host = figures_on()
    figure(host, POLYGON, BOX, active=True)
    heard = listening(host)
    host.control.mouse("rdown", 2, 300, 300)
    host.control.mouse("rup", 0, 300, 300)
    host.control.mouse("move", 0, 300, 300)
    assert names(heard) == ["MouseDown", "MouseUp", "MouseMove"]


# --- Points of active figures --------------------------------------------------------------------------------------------------


def test_only_the_points_of_active_figures_are_told_as_points():
    host = figures_on()
    number = figure(host, POLYGON, BOX)
    assert heard_at(host, 399, 201) == ("OnOrgDataClick", number, 399, 201)
    set_active(host, number, True)
    assert heard_at(host, 399, 201) == ("OnOrgPointClick", number, 1, 399, 201)
    set_active(host, number, False)
    assert heard_at(host, 399, 201) == ("OnOrgDataClick", number, 399, 201)


def test_a_point_is_told_before_a_shape_even_of_a_figure_made_earlier():
    host = figures_on()
    figure(host, POLYGON, BOX)
    figure(host, LINE, [(300, 300), (350, 300)], active=True)
    assert heard_at(host, 300, 300) == ("OnOrgPointClick", 2, 0, 300, 300)
    assert heard_at(host, 320, 320) == ("OnOrgDataClick", 1, 320, 320)


def test_the_first_point_has_a_wider_ring_than_all_others():
    host = figures_on()
    figure(host, LINE, [(200, 200), (300, 240), (400, 200)], active=True)
    for x, y, met, index in ((204, 200, True, 0), (196, 200, True, 0), (200, 204, True, 0), (207, 200, False, 0),
                             (302, 240, True, 1), (300, 238, True, 1), (305, 240, False, 1), (304, 243, False, 1),
                             (402, 200, True, 2), (405, 200, False, 2)):
        told = heard_at(host, x, y)
        assert (told is not None and told[0] == "OnOrgPointClick" and told[2] == index) is met, (x, y)


def test_of_figures_whose_points_lie_upon_each_other_the_earlier_one_is_told_and_of_its_points_the_first():
    host = figures_on()
    figure(host, LINE, [(100, 100), (300, 300)])
    figure(host, LINE, [(100, 200), (300, 300), (300, 300)], active=True)
    figure(host, LINE, [(300, 300), (100, 300)], active=True)
    assert heard_at(host, 300, 300) == ("OnOrgPointClick", 2, 1, 300, 300)


def test_the_closing_point_of_a_ring_is_behind_its_first():
    host = figures_on()
    figure(host, POLYGON, BOX, active=True)
    assert heard_at(host, 201, 201) == ("OnOrgPointClick", 1, 0, 201, 201)


def test_points_outside_the_window_are_passed_over_and_those_on_its_edge_are_not():
    host = figures_on()
    figure(host, LINE, [(-3, 300), (100, 300)], active=True)
    figure(host, LINE, [(800, 100), (700, 100)], active=True)
    figure(host, LINE, [(803, 200), (700, 200)], active=True)
    assert heard_at(host, 0, 300) == ("OnOrgDataClick", 1, 0, 300), "the line is met, and not its point"
    assert heard_at(host, 798, 100) == ("OnOrgPointClick", 2, 0, 798, 100)
    assert heard_at(host, 799, 200) == ("OnOrgDataClick", 3, 799, 200)


def test_a_one_point_figure_is_met_by_its_point_when_active():
    host = figures_on()
    number = figure(host, POINT, [(300, 300)])
    assert heard_at(host, 300, 300) is None
    set_active(host, number, True)
    assert heard_at(host, 302, 300) == ("OnOrgPointClick", 1, 0, 302, 300)


def test_figures_without_points_do_not_stop_the_search():
    host = figures_on()
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 1
    set_active(host, 1, True)
    figure(host, LINE, [(200, 200), (300, 240)], active=True)
    assert heard_at(host, 300, 240) == ("OnOrgPointClick", 2, 1, 300, 240)


# --- Shapes --------------------------------------------------------------------------------------------------------------------


def test_the_first_of_two_figures_upon_each_other_is_told():
    host = figures_on()
    figure(host, POLYGON, [(500, 500), (520, 500), (520, 520), (500, 500)])
    figure(host, POLYGON, BOX)
    figure(host, POLYGON, BOX)
    assert figure_at(host, 300, 300) == 2 and figure_at(host, 450, 300) is None


def test_a_figure_is_met_whether_active_or_not():
    host = figures_on()
    figure(host, POLYGON, BOX, active=True)
    assert figure_at(host, 300, 300) == 1


def test_a_point_figure_of_one_point_is_never_met_as_a_shape():
    host = figures_on()
    figure(host, POINT, [(300, 300)])
    assert figure_at(host, 300, 300) is None


@pytest.mark.parametrize("zoom, half", [(50000000, 1), (100001, 1), (100000, 2), (50001, 2), (50000, 3), (30001, 3), (30000, 4),
                                        (20001, 4), (20000, 5), (10001, 5), (10000, 6), (7001, 6), (7000, 7), (5001, 7),
                                        (5000, 9), (3001, 9), (3000, 10), (1, 10)])
def test_a_point_figure_of_two_points_is_met_in_a_square_around_the_first(zoom, half):
    host = figures_on(zoom)
    scaled(host, LINE, [(300, 300), (600, 500)])
    assert host.EditOrgDatEx(1, POINT, 0, 0, 1)
    for offset, hit in ((-half, True), (-half - 1, False), (half - 1, True), (half, False)):
        assert figure_at(host, 300 + offset, 300) == (1 if hit else None), offset
        assert figure_at(host, 300, 300 + offset) == (1 if hit else None), offset
    assert figure_at(host, 600, 500) is None


def test_a_line_figure_is_met_in_a_band_of_2_pixels():
    host = figures_on()
    figure(host, LINE, [(100, 100), (300, 100), (300, 300), (400, 400)])
    assert [figure_at(host, 200, 100 + dy) for dy in (-3, -2, -1, 0, 1, 2)] == [None, 1, 1, 1, 1, None]
    assert [figure_at(host, 300 + dx, 200) for dx in (-3, -2, -1, 0, 1, 2)] == [None, 1, 1, 1, 1, None]
    assert [figure_at(host, 350 + dx, 350) for dx in (-6, -2, 0, 2, 6)] == [None, 1, 1, 1, None]


def test_a_segment_of_a_figure_outside_the_window_is_not_skipped():
    host = figures_on()
    figure(host, LINE, [(100, -2), (600, -2)])
    assert figure_at(host, 400, 0) == 1


@pytest.mark.parametrize("line", [0, 30, -30])
def test_the_width_of_a_line_figure_means_nothing(line):
    host = figures_on()
    figure(host, LINE, [(100, 100), (300, 100)], line=line)
    assert figure_at(host, 200, 103) is None and figure_at(host, 200, 101) == 1


def test_a_polygon_figure_is_met_within_its_rings():
    host = figures_on()
    hole = [(250, 250), (350, 250), (350, 350), (250, 350), (250, 250)]
    figure(host, POLYGON, BOX + hole)
    assert figures_at(host, (220, 300), (300, 300), (380, 300), (190, 300), (410, 300)) == [1, None, 1, None, None]


def test_a_polygon_figure_that_never_closes_is_not_met():
    host = figures_on()
    figure(host, POLYGON, BOX[:-1])
    assert figure_at(host, 300, 300) is None


def test_a_small_polygon_figure_is_looked_for_in_the_world_by_its_rings_too():
    host = figures_on()
    a = (300, 300)
    figure(host, POLYGON, [a, (200, 250), (200, 350), a, (400, 250), (400, 350), a])
    assert figure_at(host, 220, 300) == 1
    assert figure_at(host, 380, 300) is None, "the first ring ended at its start, and what follows never closes"


def test_a_polygon_figure_is_met_where_it_is_drawn_in_a_turned_and_stretched_view():
    host = figures_on()
    host.control.Rotate, host.control.ScaleX, host.control.ScaleY = -90.0, 0.5, 2.0
    figure(host, POLYGON, [(0, -800), (200, -800), (200, -200), (0, -200), (0, -800)])
    host.control.OrvReDraw()
    # A quarter turn takes the world point (x, y), y downward, to (-y, x), which is then stretched.
    assert [figure_at(host, *at) for at in ((250, 200), (110, 20), (390, 380), (90, 200), (420, 200), (250, 410))] == \
        [1, 1, 1, None, None, None]


def test_a_circle_figure_is_met_around_the_x_of_its_first_and_the_y_of_its_second_point():
    host = figures_on()
    figure(host, CIRCLE, [(300, 200), (300, 300)])
    drawn_only, both, met_only = (300, 120), (300, 250), (300, 380)
    assert [figure_at(host, *at) for at in (drawn_only, both, met_only)] == [None, 1, 1]
    assert [figure_at(host, *at) for at in ((205, 300), (395, 300), (195, 300), (406, 300))] == [1, 1, None, None]


def test_a_circle_figure_whose_points_lie_level_is_met_where_it_is_drawn():
    host = figures_on()
    figure(host, CIRCLE, [(300, 300), (400, 300)])
    assert figures_at(host, (300, 300), (300, 205), (300, 395), (205, 300), (395, 300)) == [1] * 5
    assert figures_at(host, (300, 194), (406, 300)) == [None] * 2


def test_the_radius_of_a_circle_figure_is_cut_to_whole_pixels():
    host = figures_on()
    figure(host, CIRCLE, [(300, 300), (330, 340)])
    assert figures_at(host, (300, 340), (300, 293), (300, 387), (300, 288), (300, 392)) == [1, 1, 1, None, None], \
        "a radius of 50 around (300, 340)"


@pytest.mark.parametrize("points", [[(200, 200), (400, 300)], [(400, 300), (200, 200)], [(200, 300), (400, 200)]])
def test_an_ellipse_figure_is_met_within_the_box_of_its_points_in_any_order(points):
    host = figures_on()
    figure(host, ELLIPSE, points)
    assert figures_at(host, (300, 250), (210, 250), (390, 250), (300, 206)) == [1] * 4
    assert figures_at(host, (205, 205), (395, 295), (300, 306)) == [None] * 3


@pytest.mark.parametrize("kind", [TEXT, 0, 6, 7, 10, 99])
def test_figures_of_other_types_are_never_met_as_shapes(kind):
    host = figures_on()
    figure(host, kind, BOX)
    assert figure_at(host, 300, 300) is None and figure_at(host, 300, 200) is None


@pytest.mark.parametrize("kind", [LINE, POLYGON, CIRCLE, ELLIPSE])
def test_figures_of_one_point_are_never_met_as_shapes(kind):
    host = figures_on()
    figure(host, kind, [(300, 300)])
    assert figure_at(host, 300, 300) is None


@pytest.mark.parametrize("kind", [POINT, LINE, POLYGON, CIRCLE, ELLIPSE])
def test_figures_with_points_anywhere_do_no_harm(kind):
    host = figures_on()
    for x, y in ((float("nan"), 0.0), (float("inf"), 5.0), (1e300, -1e300), (-1e18, 1e18)):
        number = host.MakeOrgDatEx(kind, 0, 0, 1)
        for _ in range(3):
            host.AddOrgPnt(number, x, y)
            host.AddOrgPnt(number, -x, 7.0)
        set_active(host, number, True)
    for mode in (SHIFT_CLICKS, ALL_CLICKS):
        host.control.RunMode = mode
        for keys in (0, SHIFT, CTRL, SHIFT | CTRL):
            for x, y in ((300, 300), (-2**31, 2**31 - 1)):
                click(host, x, y, keys)


# --- The nearest point of the figures ------------------------------------------------------------------------------------------


def test_the_nearest_point_is_looked_for_in_all_figures_active_or_not():
    host = figures_on(mode=SHIFT_CLICKS)
    figure(host, LINE, [(100, 100), (200, 100)])
    figure(host, LINE, [(300, 300), (400, 300)], active=True)
    assert heard_at(host, 210, 130, SHIFT) == ("OnOrgNearPtClick", 1, 1, 200.0, -100.0, 210, 130)
    assert heard_at(host, 310, 310, SHIFT) == ("OnOrgNearPtClick", 2, 0, 300.0, -300.0, 310, 310)


def test_of_points_equally_near_the_first_is_told():
    host = figures_on(mode=SHIFT_CLICKS)
    figure(host, LINE, [(300, 100), (100, 100), (100, 100)])
    figure(host, LINE, [(100, 100), (300, 100)])
    assert heard_at(host, 100, 120, SHIFT)[:3] == ("OnOrgNearPtClick", 1, 1)
    assert heard_at(host, 200, 100, SHIFT)[:3] == ("OnOrgNearPtClick", 1, 0)


def test_the_nearest_point_may_be_that_of_a_point_figure_and_lie_outside_the_window():
    host = figures_on(mode=SHIFT_CLICKS)
    figure(host, POINT, [(-500, 300)])
    assert heard_at(host, 100, 300, SHIFT) == ("OnOrgNearPtClick", 1, 0, -500.0, -300.0, 100, 300)


@pytest.mark.parametrize("pixels, met", [(99, True), (101, False)])
def test_a_point_of_a_figure_farther_than_10000_map_units_is_not_near(pixels, met):
    host = figures_on(100 * PIXEL_ZOOM, SHIFT_CLICKS)
    scaled(host, LINE, [(300, 300), (700, 500)])
    assert bool(heard_at(host, 300 - pixels, 300, SHIFT)) is met


def test_a_point_that_is_being_dragged_is_not_near():
    host = figures_on(mode=SHIFT_CLICKS)
    figure(host, LINE, [(100, 100), (200, 100)])
    host.MoveOnOrgPnt(1, 0)
    assert heard_at(host, 100, 100, SHIFT)[2] == 1
    host.MoveOffOrgPnt(1, 0)
    assert heard_at(host, 100, 100, SHIFT)[2] == 0


def test_the_nearest_point_is_looked_for_by_the_short_inverse():
    host = figures_on(mode=SHIFT_CLICKS)
    figure(host, LINE, [(100, 100), (200, 100)])
    host.control.Rotate, host.control.ScaleX = 180.0, 5.0
    assert heard_at(host, 190, 100, SHIFT) == ("OnOrgNearPtClick", 1, 1, 200.0, -100.0, 190, 100)


@pytest.mark.parametrize("points, click_at, index, neighbour", [
    ([(100, 100), (700, 100)], (100, 100), 0, 2), ([(100, 100), (120, 100)], (100, 100), 0, 1),
    ([(700, 500), (100, 100)], (90, 90), 1, 2), ([(120, 100), (100, 100)], (90, 90), 1, 0),
    ([(500, 300), (600, 300), (700, 300)], (500, 310), 0, 1), ([(500, 300), (600, 300), (700, 300)], (700, 310), 2, 1),
    ([(300, 400)], (300, 400), 0, 1)])
def test_the_neighbour_past_the_ends_of_a_figure_counts_as_one_at_the_map_s_origin(points, click_at, index, neighbour):
    host = figures_on()
    number = figure(host, LINE, points, active=True)
    assert host.GetOrgNearLine(*click_at) == (number, index, neighbour)


# --- The nearest point of the data ---------------------------------------------------------------------------------------------


def near_data(host, x, y):
    told = heard_at(host, x, y, SHIFT | CTRL)
    assert told is None or (told[0] == "OnNearPtClick" and told[-2:] == (x, y))
    return told and told[1:-2]


def data(lay_type, *items, zoom=PIXEL_ZOOM):
    host = shown(lay_type, *items, zoom=zoom)
    host.control.RunMode = SHIFT_CLICKS
    return host


def test_the_nearest_point_of_the_data_is_told_with_item_point_block_and_place():
    host = data(LINE, [(100, 100), (200, 100)], [(300, 300), (400, 300), (450, 350)])
    assert near_data(host, 440, 390) == (2, 2, 1, 450.0, -350.0)
    assert near_data(host, 90, 90) == (1, 0, 1, 100.0, -100.0)


def test_the_origin_of_a_block_is_added_to_its_points():
    host = data(LINE)
    assert host.control.DigMemAlloc2("B", 7, LINE, "", 1, 100.0, -200.0)
    host.add_item("B", 7, 3, [(10, -10), (50, -10)])
    host.RDMReDraw()
    assert near_data(host, 150, 220) == (3, 1, 7, 150.0, -210.0)


@pytest.mark.parametrize("kind, points", [(POINT, [(300, 300)]), (LINE, [(300, 300), (500, 300)]), (TEXT, [(300, 300)]),
                                          (POLYGON, [(300, 300), (500, 300), (500, 500), (300, 300)]),
                                          (CIRCLE, [(300, 300, 50)]), (ELLIPSE, [(300, 300), (500, 500)])])
def test_points_of_every_type_are_near(kind, points):
    host = data(kind, points)
    if kind == TEXT:
        assert host.SetDigDatString("A", 1, 1, 300.0, -300.0, "text")
        host.RDMReDraw()
    assert near_data(host, 290, 310) == (1, 0, 1, 300.0, -300.0)


def test_of_two_coincident_vertices_the_lower_index_in_the_walk_wins():
    host = data(LINE, [(100, 100), (300, 300), (300, 300)], [(300, 300), (500, 300)])
    assert near_data(host, 310, 310) == (1, 1, 1, 300.0, -300.0)


def test_of_two_coincident_points_the_one_of_the_upper_layer_wins():
    host = data(LINE, [(300, 300), (500, 300)])
    add_layer(host, "TOP", LINE, 0, [(500, 500), (300, 300)], mesh=4, first=9)
    host.RDMReDraw()
    assert near_data(host, 310, 310) == (9, 1, 4, 300.0, -300.0)


@pytest.mark.parametrize("pixels, met", [(99, True), (101, False)])
def test_data_farther_than_10000_map_units_is_not_near_and_no_event_is_fired(pixels, met):
    host = data(POINT, [(300, 300)], zoom=100 * PIXEL_ZOOM)
    assert bool(near_data(host, 300 + pixels, 300)) is met


def test_data_of_a_hidden_layer_is_not_near_and_of_one_not_to_be_selected_it_is():
    host = data(POINT, [(300, 300)])
    host.SetLayActive("A", False)
    assert near_data(host, 310, 310)[:3] == (1, 0, 1)
    host.SetLayer("A", False)
    assert near_data(host, 310, 310) is None


def test_data_that_was_not_drawn_is_not_near():
    host = data(POINT, [(300, 300)])
    put(host, 2, (310, 310))
    assert near_data(host, 310, 310)[0] == 1
    host.RDMReDraw()
    assert near_data(host, 310, 310)[0] == 2
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayer("A", 1, 2, 3)
    host.RDMReDraw()
    assert near_data(host, 310, 310)[0] == 1


def test_an_item_of_number_0_is_told_and_one_below_minus_1_suppresses_mouse_down_in_silence():
    host = data(POINT)
    put(host, 0, (100, 100))
    put(host, -5, (400, 400))
    put(host, -1, (700, 100))
    host.RDMReDraw()
    heard = listening(host)
    press(host, 110, 110, SHIFT | CTRL)
    assert names(taken(heard)) == ["OnNearPtClick"]
    press(host, 410, 410, SHIFT | CTRL)
    assert taken(heard) == []
    press(host, 710, 110, SHIFT | CTRL)
    assert names(heard) == ["MouseDown"], "-1 is the sign of nothing found"


def test_the_nearest_search_selects_nothing_and_moves_nothing():
    host = data(POINT, [(300, 300)])
    click(host, 300, 300, SHIFT | CTRL)
    click(host, 300, 300, SHIFT)
    assert selected(host) == [] and view(host, "OrgMoving") == 0
