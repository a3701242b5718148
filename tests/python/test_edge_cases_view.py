"""Zoom, jumps, fits, scrolls: where the view goes, and what a host hears and sees of it."""

import math

import pytest
from map_rig import (DOTS_PER_M, HEIGHT, LINE, PIXEL_ZOOM, POINT, WIDTH, composed, drain, dump, item, one_to_one, painted,
                     pix_to_world_f, scrolled_to, to_int, verbs, view)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


def where(host):
    return view(host, "ViewX"), view(host, "ViewY")


def heard_zooms(host):
    heard = []
    host.control.connect("OnZoomChange", heard.append)
    return heard


def size_of_view(zoom):
    return pix_to_world_f(WIDTH, zoom), pix_to_world_f(HEIGHT, zoom)


def centred_on(x, y, zoom):
    """The view's corner when map point (x, y) is in the middle of the window, within the limits."""
    w, h = size_of_view(zoom)
    return x - w / 2.0, -y - h / 2.0


# --- Zoom ------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("written, kept", [(0, 1), (-1, 1), (-2147483648, 1), (1, 1), (60000000, 50000000), (50000000, 50000000),
                                           (50000001, 50000000), (49999999, 49999999)])
def test_a_zoom_out_of_range_is_clamped_and_the_event_tells_the_clamped_value(written, kept):
    host = painted()
    heard = heard_zooms(host)
    host.control.Zoom = written
    assert host.control.Zoom == kept
    assert heard == [kept]
    assert host.control.modified is True


def test_the_zoom_has_its_new_value_already_when_the_event_fires():
    host = painted()
    seen = []
    host.control.connect("OnZoomChange", lambda zoom: seen.append((zoom, host.control.Zoom, where(host))))
    host.control.Zoom = 500
    assert seen == [(500, 500, where(host))]


def test_a_zoom_write_does_not_repaint():
    host = painted()
    host.control.Zoom = 5000
    assert verbs(host) == []
    host.control.OrvReDraw()
    assert composed(verbs(host))


def test_a_zoom_write_keeps_the_middle_of_the_window_where_it_is():
    host = painted()
    w, h = pix_to_world_f(WIDTH, 10000), pix_to_world_f(HEIGHT, 10000)
    host.control.Zoom = 2500
    assert where(host) == (0 - (2500 * w / 2.0 / 10000 - w / 2.0), 0 - (2500 * h / 2.0 / 10000 - h / 2.0))


def test_a_zoom_write_does_not_look_at_the_area_limits():
    host = painted()
    host.control.Zoom = 50000000
    w, h = size_of_view(10000)
    assert where(host) == (-(50000000 * w / 2.0 / 10000 - w / 2.0), -(50000000 * h / 2.0 / 10000 - h / 2.0))
    assert where(host)[0] < -10000


# --- Jumps -----------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_jump_inside_the_limits_centres_the_view_and_repaints(newer):
    host = painted(newer)
    assert host.MapJumpToXY(5000, 5000) == (None if newer else 0)
    assert where(host) == centred_on(5000, 5000, 10000)
    assert composed(verbs(host))


@BOTH
def test_a_jump_outside_the_limits_leaves_the_view_where_it_was_and_repaints(newer):
    host = painted(newer)
    host.MapJumpToXY(30000, 0)
    assert where(host) == (0, 0)
    assert composed(verbs(host))
    host.MapJumpToXY(0, 15000)
    assert where(host) == (0, 0)


def test_a_jump_compares_x_with_top_and_bottom_and_y_with_left_and_right():
    host = painted()
    control = host.control
    control.AreaLeft, control.AreaRight, control.AreaTop, control.AreaBottom = -90000, 90000, -10000, 20000
    control.OrvMapJumpToXY(15000, 50000)
    assert where(host) == (centred_on(15000, 0, 10000)[0], -10000), "y 50000 passes left and right; the top limit holds the view"
    before = where(host)
    control.OrvMapJumpToXY(50000, 0)
    assert where(host) == before, "x 50000 lies within left and right, but not within top and bottom"


@pytest.mark.parametrize("x, y", [(-10000, 0), (20000, 0), (0, 10000), (0, -20000)])
def test_a_jump_onto_a_limit_itself_is_outside(x, y):
    host = painted()
    host.control.OrvMapJumpToXY(x, y)
    assert where(host) == (0, 0)


def test_a_jump_is_held_by_right_and_bottom_and_more_so_by_left_and_top():
    host = painted()
    w, h = size_of_view(10000)
    host.control.OrvMapJumpToXY(19999, -19999)
    assert where(host) == (20000 - w, 20000 - h)
    host.control.OrvMapJumpToXY(-9999, 9999)
    assert where(host) == (-10000, -10000)
    host.control.Zoom = 1000000
    host.control.OrvMapJumpToXY(0, 0)
    assert where(host) == (-10000, -10000), "a view larger than the area stands at its left and top limits"


@BOTH
def test_a_jump_to_data_goes_to_the_mean_of_its_points(newer):
    host = painted(newer)
    host.control.DigMemAlloc2("A", 1, LINE, "", 1, 1000.0, 2000.0)
    host.add_item("A", 1, 7, [(0, 0), (100, 0), (200, 300)])
    assert host.jump_to_data("A", 1, 7, False) == (None if newer else 0)
    assert where(host) == centred_on(1100, 2100, 10000)
    assert composed(verbs(host))
    assert item(host, "A", 1, 7)["active"] == 0


@BOTH
def test_a_jump_with_activation_makes_its_item_the_only_active_one(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    for dat_id in (7, 8):
        host.add_item("A", 1, dat_id, [(0, 0), (10, 10)])
    assert host.control.SetDigDatInfoEx("A", 1, 8, 0, True) == 1
    host.jump_to_data("A", 1, 7, True)
    assert [each["active"] for each in (item(host, "A", 1, 7), item(host, "A", 1, 8))] == [1, 0]


@BOTH
def test_a_jump_to_missing_data_clears_the_active_set_and_does_no_more(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 8, [(0, 0), (10, 10)])
    host.control.SetDigDatInfoEx("A", 1, 8, 0, True)
    drain(host)
    assert host.jump_to_data("A", 1, 7, True) == (None if newer else 0)
    assert item(host, "A", 1, 8)["active"] == 0
    assert where(host) == (0, 0) and verbs(host) == []


def test_a_jump_to_a_repeated_id_meets_the_first_item():
    host = painted()
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, [(0, 0), (2000, 0)])
    assert host.control.OrvAddDat("A", 1, 7, 0)
    host.control.OrvMapJumpToData("A", 1, 7, True)
    assert [each["active"] for each in dump(host)["blocks"][0]["dats"]] == [1, 0]
    assert where(host) == centred_on(1000, 0, 10000)


# --- Fit -------------------------------------------------------------------------------------------------------------------


def with_extent(*corners, lay_type=LINE):
    host = painted()
    host.add_block("A", 1, lay_type)
    host.add_item("A", 1, 1, corners)
    drain(host)
    return host


def fitted(left, low, right, high):
    """Zoom and centre that a fit of this extent gives."""
    w, h = abs(right - left), abs(high - low)
    zoom = max(to_int(w / WIDTH * DOTS_PER_M), to_int(h / HEIGHT * DOTS_PER_M))
    return zoom, (w / 2.0 + left, h / 2.0 + low)


FITS = [lambda c: c.DspFit(), lambda c: c.OrvDspFit(), lambda c: c.OrvDspFit2(0), lambda c: c.OrvDspFit2(-5),
        lambda c: c.OrvDspFit2(10)]


@pytest.mark.parametrize("fit", FITS)
def test_a_fit_of_an_empty_map_changes_nothing_and_fires_nothing(fit):
    host = painted()
    heard = heard_zooms(host)
    before = dump(host)
    fit(host.control)
    assert dump(host) == before
    assert heard == [] and verbs(host) == []


@pytest.mark.parametrize("fit", FITS)
def test_a_fit_of_a_single_point_changes_nothing(fit):
    host = with_extent((300, 400), lay_type=POINT)
    heard = heard_zooms(host)
    fit(host.control)
    assert host.control.Zoom == 10000 and where(host) == (0, 0)
    assert heard == [] and verbs(host) == []


@pytest.mark.parametrize("fit", FITS[:4])
def test_a_fit_without_margin_takes_the_extent_of_all_data(fit):
    host = with_extent((0, 0), (1000, 500))
    heard = heard_zooms(host)
    fit(host.control)
    zoom, centre = fitted(0, 0, 1000, 500)
    assert zoom == 4724
    assert host.control.Zoom == zoom and heard == [zoom]
    assert where(host) == centred_on(*centre, zoom)
    assert composed(verbs(host))
    assert host.control.modified is False, "a fit is no change of the map's properties"


@pytest.mark.parametrize("rate, counts_as", [(80, 50), (50, 50), (51, 50), (32767, 50), (10, 10), (1, 1)])
def test_a_fit_with_a_margin_limits_the_rate_to_50(rate, counts_as):
    host = with_extent((0, 0), (1000, 500))
    host.control.OrvDspFit2(rate)
    mx, my = 1000 * counts_as / 100.0, 500 * counts_as / 100.0
    zoom, centre = fitted(0 - mx, 0 - my, 1000 + mx, 500 + my)
    assert host.control.Zoom == zoom
    assert where(host) == centred_on(*centre, zoom)


def test_a_fit_takes_hidden_layers_in_and_empty_blocks_not():
    host = with_extent((0, 0), (1000, 500))
    host.control.SetLayer("A", False)
    host.control.DigMemAlloc2("B", 1, LINE, "", 1, 9000.0, 9000.0)
    host.control.DspFit()
    assert host.control.Zoom == 4724


def test_a_fit_may_leave_the_range_of_the_zoom_property():
    host = with_extent((0, 0), (100000000, 1000))
    host.control.DspFit()
    assert host.control.Zoom == to_int(100000000 / WIDTH * DOTS_PER_M) == 472375000


# --- Wheel settings --------------------------------------------------------------------------------------------------------


def wheel(host):
    return tuple(view(host, field) for field in ("WheelZoomMode", "WheelRateUp", "WheelRateDown"))


def test_the_wheel_starts_about_the_centre_with_rates_of_a_fifth():
    assert wheel(painted()) == (1, 1.2, 0.8)


@pytest.mark.parametrize("mode, rate, kept", [(2, 0.6, (2, 1.2, 0.8)), (3, 0.1, (1, 1.2, 0.8)), (-1, 0.1, (1, 1.2, 0.8)),
                                              (0, 0.5, (0, 1.5, 0.5)), (2, 0.01, (2, 1.01, 0.99)), (2, 0.0099, (2, 1.2, 0.8)),
                                              (2, -0.1, (2, 1.2, 0.8)), (2, math.nan, (2, 1.2, 0.8))])
def test_a_wheel_rate_out_of_range_keeps_the_rates_and_a_mode_out_of_range_ignores_the_call(mode, rate, kept):
    host = painted()
    host.control.OrvWheelZoomMode(mode, rate)
    assert wheel(host) == kept


@pytest.mark.parametrize("mode", [0, 10, 20, 77, -1])
@BOTH
def test_the_mode_of_the_zoom_rectangle_is_stored_unchecked(newer, mode):
    host = painted(newer)
    host.RectZoom(mode)
    assert view(host, "RectZoomMode") == mode


# --- Scrolling -------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_scroll_by_nothing_repaints_the_whole_map(newer):
    host = painted(newer)
    assert host.RDMScrl(0, 0) == (None if newer else 1)
    assert composed(verbs(host))
    assert where(host) == (0, 0)


@BOTH
def test_a_scroll_takes_map_distances_y_upward(newer):
    host = one_to_one(newer)
    host.RDMScrl(30, 40)
    assert where(host) == (30, scrolled_to(0, -40)) == (30, -39)


@BOTH
def test_a_view_that_is_larger_than_both_limits_cannot_scroll_and_the_older_name_answers_1_all_the_same(newer):
    host = painted(newer)
    host.control.Zoom = 50000000
    before = where(host)
    drain(host)
    assert host.RDMScrl(100, 100) == (None if newer else 1)
    assert where(host) == before and verbs(host) == []


def test_a_scroll_past_right_and_bottom_stops_there():
    host = one_to_one()
    host.control.AreaRight, host.control.AreaBottom = 1000, 900
    host.control.OrvScrl(5000, -5000)
    assert where(host) == (1000 - WIDTH, 900 - HEIGHT)


def test_a_scroll_to_the_left_or_top_limit_may_add_the_old_position():
    host = one_to_one()
    host.control.OrvScrl(200, -200)
    assert where(host) == (200, 200)
    host.control.AreaLeft = host.control.AreaTop = 100
    host.control.OrvScrl(-150, 150)
    assert where(host) == (250, 250), "|50| is below the old 200, so 50 + 200"
    host.control.OrvScrl(-500, 500)
    assert where(host) == (scrolled_to(250, 100),) * 2, "|-250| is not below the old 250, so the limit"


def test_a_view_as_large_as_a_limit_stands_at_the_lesser_one_of_its_axis():
    host = one_to_one()
    host.control.AreaBottom = HEIGHT
    host.control.OrvScrl(10, -10)
    assert where(host) == (10, scrolled_to(0, -10000))


def test_area_writes_do_not_move_the_view_at_once():
    host = one_to_one()
    host.control.AreaLeft = 500
    assert where(host) == (0, 0)


# --- Positions of pixels -----------------------------------------------------------------------------------------------------


@BOTH
def test_the_position_of_a_pixel_counts_from_the_view_with_y_upward(newer):
    host = painted(newer)
    host.MapJumpToXY(5000, 6000)
    x, y = where(host)
    assert host.GetScreenPosX(0) == x
    assert host.GetScreenPosY(0) == -y
    assert host.GetScreenPosX(100) == pix_to_world_f(100, 10000) + x
    assert host.GetScreenPosY(-100) == -(pix_to_world_f(-100, 10000) + y)


@BOTH
def test_the_position_of_a_pixel_from_a_given_edge_negates_nothing(newer):
    host = painted(newer)
    host.MapJumpToXY(5000, 6000)
    assert host.GetScreenPosYEx(0, 123.5) == 123.5
    assert host.GetScreenPosXEx(0, 123.5) == 123.5
    assert host.GetScreenPosYEx(100, 7.0) == pix_to_world_f(100, 10000) + 7.0
    assert host.GetScreenPosXEx(-100, 7.0) == pix_to_world_f(-100, 10000) + 7.0


def test_the_position_of_a_pixel_ignores_rotation_and_stretch():
    host = one_to_one()
    host.control.Rotate, host.control.ScaleX, host.control.ScaleY = 45.0, 2.0, 3.0
    assert (host.control.OrvGetScreenPosX(10), host.control.OrvGetScreenPosY(20)) == (10, -20)
    assert host.control.Zoom == PIXEL_ZOOM
