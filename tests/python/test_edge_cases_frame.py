"""How a frame reaches the screen: composing, scrolling by strips, drawing on a host's own context, the searched area."""

import orvane4
import pytest
from map_rig import (BLACKNESS, CLIENT, DOTS_PER_M, HEIGHT, LINE, PIXEL_ZOOM, RGN_COPY, RGN_OR, SRCCOPY, WHITENESS, WIDTH,
                     Host, bit_blts, composed, drain, dump, item, named, one_to_one, painted, pat_blts, pix_to_world_f,
                     scrolled_to, to_int, verbs, view)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
SCREEN_COPY = (1, 1, WIDTH - 1, HEIGHT - 1)
# Black at the left and top, white at the right and bottom.
RIM = [(0, 0, 1, HEIGHT, BLACKNESS), (0, 0, WIDTH, 1, BLACKNESS), (WIDTH - 1, 0, WIDTH, HEIGHT, WHITENESS),
       (0, HEIGHT - 1, WIDTH, HEIGHT, WHITENESS)]


def with_lines(newer=False, **window):
    host = one_to_one(newer, **window)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 1, [(100, -100), (300, -200)])
    host.add_item("A", 1, 2, [(500, -400), (600, -450)])
    host.RDMReDraw()
    drain(host)
    return host


def lines_on(drawn, context):
    return [each.values[0] for each in named(drawn, "Polyline", context)]


def foreign(width=400, height=300, horzres=1920, horzsize=508, logpixels=96):
    return orvane4.Context(width, height, horzres, horzsize, logpixels)


def foreign_verbs(context):
    return verbs(context)


def foreign_lines(context):
    return [each.values[0] for each in verbs(context) if each.name == "Polyline"]


# --- Composing ---------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_repaint_composes_base_copies_it_to_top_and_from_there_to_the_screen(newer):
    host = with_lines(newer)
    assert host.RDMReDraw() is None
    drawn = verbs(host)
    assert composed(drawn)
    assert lines_on(drawn, "base") == [((100, 100), (300, 200)), ((500, 400), (600, 450))]
    (to_top,), (to_screen,) = bit_blts(drawn, "top"), bit_blts(drawn, "window")
    assert to_top[:4] == (0, 0, WIDTH, HEIGHT) and to_top[4:] == ("base", 0, 0, SRCCOPY)
    assert to_screen[:4] == SCREEN_COPY and to_screen[4:] == ("top", 1, 1, SRCCOPY)
    assert pat_blts(drawn, "window") == RIM
    order = [(each.context, each.name) for each in drawn]
    steps = [("base", "PatBlt"), ("base", "Polyline"), ("top", "BitBlt"), ("window", "BitBlt"), ("window", "PatBlt")]
    assert sorted(steps, key=order.index) == steps
    for context in ("base", "top"):
        assert [each.values for each in named(drawn, "SelectClipRgn", context)] == [(CLIENT, RGN_COPY)]


@BOTH
def test_before_the_first_paint_a_repaint_does_nothing(newer):
    host = Host(newer)
    host.RDMReDraw()
    host.init()
    drain(host)
    host.RDMReDraw()
    assert verbs(host) == []
    assert view(host, "DrawState") == 0


def test_a_paint_right_after_init_composes_because_nothing_was_composed_yet():
    host = Host(False)
    host.init()
    host.control.MapDraw = False
    host.control.paint()
    assert view(host, "DrawState") == 1
    host.control.MapDraw = True
    drain(host)
    host.control.paint()
    assert composed(verbs(host)), "a paint only re-lays the top buffer, unless the base buffer was never composed"
    assert view(host, "DrawState") == 2


def test_with_map_draw_off_repaints_leave_screen_and_view_unchanged():
    host = with_lines()
    host.control.MapDraw = False
    before = dump(host)
    host.RDMReDraw()
    host.control.paint()
    host.control.SetLayer("A", True)
    assert verbs(host) == []
    assert dump(host) == before


def test_with_map_draw_off_a_scroll_moves_the_view_and_draws_nothing():
    host = with_lines()
    host.control.MapDraw = False
    host.control.OrvScrl(10.25, 20.5)
    assert verbs(host) == []
    assert [view(host, field) for field in ("ViewX", "ViewY", "PendX", "PendY")] == [10.25, -20.5, 0, 0]


@BOTH
def test_with_map_draw_off_a_host_context_stays_untouched(newer):
    host = with_lines(newer)
    host.control.MapDraw = False
    before, context = dump(host), foreign()
    host.UserDcDraw(context.handle, 0, 0, 400, 300, 0)
    host.UserDcDrawEx(context.handle, 0, 0, 300, 400, 0.0, 0.0, PIXEL_ZOOM, 0)
    assert foreign_verbs(context) == []
    assert dump(host) == before


@pytest.mark.parametrize("mode", [1, 2, -1, 7])
def test_with_a_scale_bar_the_last_19_pixels_are_not_copied_to_the_screen(mode):
    host = with_lines()
    host.control.ScaleBarMode = mode
    host.RDMReDraw()
    first = bit_blts(verbs(host), "window")[0]
    assert first[:4] == (1, 1, WIDTH - 20, HEIGHT - 20)
    host.control.OrvScrl(10, 0)
    assert bit_blts(verbs(host), "window")[0][:4] == (1, 1, WIDTH - 20, HEIGHT - 20)


def test_without_a_scale_bar_a_frame_ends_with_the_four_sides_of_the_client_area():
    host = with_lines()
    host.RDMReDraw()
    drawn = verbs(host)
    assert [each.values for each in drawn if each.context == "window"][-4:] == RIM
    assert not named(drawn, "FillRect", "window") and not named(drawn, "TextOut", "window")


@pytest.mark.parametrize("mode, first_below, first_right", [
    (1, b"20m", b"-20m"), (2, b"E41\xdf22'30\"", b"N43\xdf05'00\""), (3, b"", b""), (-1, b"", b"")])
def test_a_scale_bar_has_a_tick_on_every_fiftieth_of_a_metre(mode, first_below, first_right):
    host = with_lines()
    host.control.Zoom = 1000  # a tick on every 20 map units
    host.control.ScaleBarMode = mode
    host.MapJumpToXY(pix_to_world_f(WIDTH / 2, 1000), -pix_to_world_f(HEIGHT / 2, 1000))
    assert (view(host, "ViewX"), view(host, "ViewY")) == pytest.approx((0, 0), abs=1e-9)
    drain(host)
    host.RDMReDraw()
    drawn = verbs(host)
    step = DOTS_PER_M / 50
    below = [to_int(i * step + step) for i in range(int(WIDTH / step + 0.5))]
    right = [to_int(i * step + step) for i in range(int(HEIGHT / step + 0.5))]
    starts = [each.values for each in named(drawn, "MoveToEx", "window")]
    assert starts == [(px, HEIGHT - 20) for px in below] + [(WIDTH - 20, py) for py in right]
    labels = [each.values[2] for each in named(drawn, "TextOut", "window")]
    assert len(labels) == len(starts)
    assert (labels[0], labels[len(below)]) == (first_below, first_right)


@BOTH
def test_the_raster_mode_is_stored_and_draws_nothing(newer):
    host = with_lines(newer)
    for mode in (False, True):
        assert host.RastDspMode(mode) is None
        assert view(host, "RastOnTop") == mode
    assert verbs(host) == []


# --- The searched area -------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("wide, margin", [(2999, 2999), (3000, 3000), (3001, 1500), (3003, 1501), (7999, 3999), (8000, 8000),
                                          (8001, 5000), (100000, 5000)])
def test_the_margin_of_the_search_follows_the_width_of_the_view(wide, margin):
    host = painted()
    zoom = next(each for each in range(1, 2000000) if to_int(WIDTH * (float(each) / 3779.0)) == wide)
    host.control.Zoom = zoom
    host.RDMReDraw()
    left, _, right, _ = view(host, "DrawArea")
    x0 = int(view(host, "ViewX"))
    assert (left, right) == (x0 - margin, x0 + wide + margin)


def test_the_search_marks_what_lies_in_the_area_and_drops_what_does_not():
    host = one_to_one()
    host.add_block("A", 1, LINE)
    for dat_id, x in ((1, 100), (2, 1590), (3, 1620)):
        host.add_item("A", 1, dat_id, [(x, -100), (x + 10, -110)])
    host.add_block("B", 1, LINE)
    host.add_item("B", 1, 1, [(5000, -100), (5010, -110)])
    host.RDMReDraw()
    assert view(host, "DrawArea") == (-800, -600, 1600, 1200)
    assert [item(host, "A", 1, dat_id)["clipFlg"] for dat_id in (1, 2, 3)] == [1, 1, 0]
    blocks = {each["code"]: each["inView"] for each in dump(host)["blocks"]}
    assert blocks == {b"A": 1, b"B": 0}


def test_the_search_takes_hidden_layers_out():
    host = with_lines()
    host.control.SetLayer("A", False)
    assert dump(host)["blocks"][0]["inView"] == 0
    assert lines_on(verbs(host), "base") == []


# --- Scrolling ---------------------------------------------------------------------------------------------------------------


def scrolled(host, x, y):
    host.control.OrvScrl(x, y)
    return verbs(host)


@pytest.mark.parametrize("dx, dy, x_strip, y_strip", [
    (50, 0, (750, 0, 800, 600), (0, 0, 800, 600)),
    (-50, 0, (0, 0, 50, 600), (0, 0, 800, 600)),
    (0, 30, (0, 0, 800, 600), (0, 570, 800, 600)),
    (0, -30, (0, 0, 800, 600), (0, 0, 800, 30)),
    (50, 30, (750, 0, 800, 600), (0, 570, 800, 600)),
    (-50, -30, (0, 0, 50, 600), (0, 0, 800, 30)),
])
def test_a_scroll_shifts_the_top_buffer_and_draws_the_strips_and_an_axis_at_rest_counts_as_all(dx, dy, x_strip, y_strip):
    host = with_lines()
    drawn = scrolled(host, dx, -dy)
    assert [each.values for each in named(drawn, "ScrollDC", "top")] == [(-to_int(dx), -to_int(dy), CLIENT, CLIENT)]
    strips = [x_strip, y_strip]
    assert pat_blts(drawn, "top") == [(left, top, right - left, bottom - top, WHITENESS) for left, top, right, bottom in strips]
    assert [each.values for each in named(drawn, "ExcludeClipRect", "top")] == [CLIENT]
    clips = [each.values for each in named(drawn, "SelectClipRgn", "top")]
    assert clips == [*((strip, RGN_OR) for strip in strips), (CLIENT, RGN_COPY)]
    assert not [each for each in drawn if each.context == "base"], "the base buffer keeps the old picture"
    assert [blt[:4] for blt in bit_blts(drawn, "window")] == [SCREEN_COPY]


def test_a_purely_horizontal_scroll_redraws_the_whole_of_the_top_buffer():
    host = with_lines()
    assert lines_on(scrolled(host, 50, 0), "top") == [((50, 100), (250, 200)), ((450, 400), (550, 450))]


def test_a_diagonal_scroll_draws_only_what_meets_the_strips():
    host = with_lines()
    host.add_item("A", 1, 3, [(820, -100), (840, -120)])
    host.RDMReDraw()
    drain(host)
    assert lines_on(scrolled(host, 50, -30), "top") == [((770, 70), (790, 90))]


def test_a_paint_after_a_scroll_shows_the_stale_base_buffer():
    host = with_lines()
    scrolled(host, 50, 0)
    host.control.paint()
    drawn = verbs(host)
    assert [blt[4] for blt in bit_blts(drawn, "top")] == ["base"] and not composed(drawn)


def test_a_scroll_within_the_searched_area_searches_no_more():
    host = with_lines()
    area = view(host, "DrawArea")
    scrolled(host, 300, 0)
    assert view(host, "DrawArea") == area
    scrolled(host, 600, 0)
    assert view(host, "DrawArea") == (900 - 800, -600, 900 + 1600, 1200), "900 to the right the area was left behind"


# --- A host's own context ------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind, whitened", [(0, [(0, 0, 400, 300, WHITENESS)]), (1, []), (-1, [])])
@BOTH
def test_only_type_0_whitens_the_background_of_a_host_context(newer, kind, whitened):
    host = with_lines(newer)
    context = foreign()
    answer = None if newer else 0
    assert host.UserDcDraw(context.handle, 0, 0, 400, 300, kind) == answer
    assert [each.values for each in foreign_verbs(context) if each.name == "PatBlt"] == whitened
    assert host.UserDcDrawEx(context.handle, 0, 0, 300, 400, 0.0, 0.0, PIXEL_ZOOM, kind) == answer
    assert [each.values for each in foreign_verbs(context) if each.name == "PatBlt"] == whitened


@BOTH
def test_the_plain_host_drawing_is_centred_on_the_corner_of_the_view(newer):
    host = with_lines(newer)
    context = foreign()
    host.UserDcDraw(context.handle, 0, 0, 400, 300, 1)
    assert foreign_lines(context) == [((300, 250), (500, 350))], "the view's corner is the middle of 400 by 300"


@BOTH
def test_the_full_host_drawing_is_centred_on_the_map_point_given(newer):
    host = with_lines(newer)
    context = foreign()
    host.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0, -150.0, PIXEL_ZOOM, 1)
    assert foreign_lines(context) == [((100, 100), (300, 200))]


@BOTH
def test_the_two_host_drawings_read_their_rectangles_differently(newer):
    host = with_lines(newer)
    for draw in (lambda handle: host.UserDcDraw(handle, 0, 0, 400, 300, 0),
                 lambda handle: host.UserDcDrawEx(handle, 0, 0, 300, 400, 0.0, 0.0, PIXEL_ZOOM, 0)):
        context = foreign()
        draw(context.handle)
        assert [each.values[:4] for each in foreign_verbs(context) if each.name == "PatBlt"] == [(0, 0, 400, 300)]


@BOTH
def test_a_host_drawing_is_true_to_scale_on_its_own_device_and_puts_the_view_back(newer):
    host = with_lines(newer)
    before = dump(host)["view"]
    context = foreign(horzres=4724, horzsize=400, logpixels=300)
    host.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0, -150.0, 2 * PIXEL_ZOOM, 1)
    dots = 4724 * 1000 // 400
    zoom = 2 * PIXEL_ZOOM
    r = float(dots) / float(zoom)
    half_w, half_h = (to_int(side * (float(zoom) / float(dots))) // 2 for side in (400, 300))
    (line,) = foreign_lines(context)
    left, top = 200.0 - half_w, 150.0 - half_h
    assert line == tuple((to_int((x - left) * r), to_int((y - top) * r)) for x, y in ((100, 100), (300, 200)))
    after = dump(host)["view"]
    for field in ("ViewX", "ViewY", "Zoom", "DotPerM", "DpiRatio", "ScreenDpi"):
        assert after[field] == before[field], field
    assert after["DeviceDpi"] == 300, "this one keeps the last host device's value"


def test_pens_grow_with_a_finer_host_device():
    host = with_lines()
    context = foreign(horzres=4724, horzsize=400, logpixels=300)
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0, -150.0, PIXEL_ZOOM, 1)
    widths = [value[2] for each in verbs(context) for value in each.values if isinstance(value, tuple) and value[:1] == ("Pen",)]
    assert 3 in widths, "300 dots an inch are 3.125 times the screen's 96, and 3 in whole numbers"


def test_a_host_drawing_touches_neither_buffer():
    host = with_lines()
    host.control.UserDcDraw(foreign().handle, 0, 0, 400, 300, 0)
    assert not [each for each in verbs(host) if each.context in ("base", "top")]


@pytest.mark.parametrize("handle", [0, 12345678, -1])
@BOTH
def test_an_unknown_context_draws_nothing(newer, handle):
    host = with_lines(newer)
    assert host.UserDcDraw(handle, 0, 0, 400, 300, 0) == (None if newer else 0)
    assert host.UserDcDrawEx(handle, 0, 0, 300, 400, 0.0, 0.0, 1000, 0) == (None if newer else 0)
    assert not [each for each in verbs(host) if each.context in ("base", "top")]


def test_the_base_buffer_is_a_context_that_a_host_may_draw_on():
    host = with_lines()
    host.control.UserDcDrawEx(host.control.GetDC, 0, 0, HEIGHT, WIDTH, 400.0, -300.0, PIXEL_ZOOM, 0)
    assert lines_on(verbs(host), "base") == [((100, 100), (300, 200)), ((500, 400), (600, 450))]


# --- A fraction of a pixel -----------------------------------------------------------------------------------------------------


def test_a_drawn_scroll_moves_the_view_by_whole_pixels():
    host = with_lines()
    host.control.OrvScrl(10.25, -20.5)
    drawn = verbs(host)
    assert [each.values[:2] for each in named(drawn, "ScrollDC", "top")] == [(-10, -21)]
    assert (view(host, "PendX"), view(host, "PendY")) == (0, 0)
    assert view(host, "ViewX") == pytest.approx(10, abs=1e-9) and view(host, "ViewY") == pytest.approx(21, abs=1e-9)
    assert (view(host, "ViewX"), view(host, "ViewY")) == (scrolled_to(0, 10.25), scrolled_to(0, 20.5))
