"""The frame around the client area and the two rulers along its bottom and right sides."""

import math

import pytest
from map_rig import (BLACKNESS, DOTS_PER_M, HEIGHT, PIXEL_ZOOM, WHITENESS, WIDTH, bit_blts, drain, named, one_to_one, painted,
                     pix_to_world_f, to_int, verbs, view, world_to_pix_f)

FACE = "標準明朝".encode("cp932")
EM = 9  # 7 points at 96 dots an inch are 9.33 pixels
DEGREE = "ﾟ".encode("cp932")


def frame_of(width, height):
    return [(0, 0, 1, height, BLACKNESS), (0, 0, width, 1, BLACKNESS), (width - 1, 0, width, height, WHITENESS),
            (0, height - 1, width, height, WHITENESS)]


def minutes_and_seconds(base, seconds):
    total = base * 60 + seconds
    return total // 60 % 60, total % 60


def cut_div(value, divisor):
    """Division of whole numbers toward zero."""
    return abs(value) // divisor * (1 if value >= 0 else -1)


def below_label(mode, value):
    if mode == 1:
        return b"%dm" % value
    if mode == 2:
        return b"E41%s%02d'%02d\"" % (DEGREE, *minutes_and_seconds(22, cut_div(value * 45, 1000) + 30))
    return b""


def right_label(mode, raw):
    """The label of a tick from its unrounded world value, which grows downward."""
    if mode == 1:
        return b"%dm" % -to_int(raw - 0.5)
    if mode == 2:
        return b"N43%s%02d'%02d\"" % (DEGREE, *minutes_and_seconds(5, cut_div(-to_int(raw) * 3, 100)))
    return b""


def text_width(text):
    """What the recording device measures: half an em for each byte."""
    return len(text) * EM // 2


def rulers(mode, view_x, view_y, zoom, pend_x=0.0, pend_y=0.0, width=WIDTH, height=HEIGHT):
    """The ticks of both rulers, each as its line's start, end, label and label position."""
    step = float(zoom) / 500.0 * 10.0
    step_px = world_to_pix_f(step, zoom)
    fx, fy = math.fmod(view_x, step), math.fmod(view_y, step)
    off_x = world_to_pix_f(step - fx, zoom) + pend_x
    off_y = world_to_pix_f(step - fy, zoom) + pend_y
    below, right = [], []
    for i in range(int(width / step_px + 0.5)):
        px = to_int(i * step_px + off_x)
        text = below_label(mode, to_int((i + 1) * step + (view_x - fx)))
        below.append(((px, height - 20), (px, height - 11), (px - text_width(text) // 2, height - 12, text)))
    for i in range(int(height / step_px + 0.5)):
        py = to_int(i * step_px + off_y)
        text = right_label(mode, (i + 1) * step + (view_y - fy))
        right.append(((width - 20, py), (width - 11, py), (width - 12, py + text_width(text) // 2, text)))
    return below, right


def drawn_ticks(drawn):
    starts, ends, texts = ([each.values for each in named(drawn, name, "window")] for name in ("MoveToEx", "LineTo", "TextOut"))
    assert len(starts) == len(ends) == len(texts)
    return list(zip(starts, ends, texts, strict=True))


def redrawn(host):
    drain(host)
    host.RDMReDraw()
    return verbs(host)


def at(zoom, x, y, mode, **window):
    """A host at a scale whose left top corner is near the world point (x, y), y downward, and its view as it came out."""
    host = painted(**window)
    host.control.Zoom = zoom
    host.control.ScaleBarMode = mode
    width, height = window.get("width", WIDTH), window.get("height", HEIGHT)
    host.MapJumpToXY(x + pix_to_world_f(width, zoom) / 2, -(y + pix_to_world_f(height, zoom) / 2))
    drain(host)
    assert (view(host, "ViewX"), view(host, "ViewY")) == pytest.approx((x, y), abs=1e-6)
    return host


# --- The frame ---------------------------------------------------------------------------------------------------------------


def test_without_rulers_only_the_four_sides_are_drawn_after_the_copy():
    host = one_to_one()
    drawn = [each for each in redrawn(host) if each.context == "window"]
    assert [each.name for each in drawn] == ["BitBlt"] + ["PatBlt"] * 4
    assert [each.values for each in drawn[1:]] == frame_of(WIDTH, HEIGHT)


@pytest.mark.parametrize("mode", [0, 1, 2, 3, -1])
def test_the_frame_comes_first_in_every_mode_and_follows_the_size_of_the_window(mode):
    host = painted(width=333, height=222)
    host.control.ScaleBarMode = mode
    drawn = [each for each in redrawn(host) if each.context == "window"]
    assert [each.values for each in drawn[1:5]] == frame_of(333, 222)
    host.control.resize(150, 90)
    drawn = [each for each in redrawn(host) if each.context == "window"]
    assert [each.values for each in drawn[1:5]] == frame_of(150, 90)


def test_the_frame_is_drawn_by_every_kind_of_repaint():
    host = one_to_one()
    for repaint in (host.RDMReDraw, host.control.paint, lambda: host.control.OrvScrl(10, 0)):
        drain(host)
        repaint()
        assert [each.values for each in named(verbs(host), "PatBlt", "window")] == frame_of(WIDTH, HEIGHT)


def test_nothing_of_the_frame_and_the_rulers_goes_into_the_buffers():
    host = one_to_one()
    host.control.ScaleBarMode = 1
    drawn = redrawn(host)
    for name in ("TextOut", "MoveToEx", "LineTo", "FillRect"):
        assert {each.context for each in named(drawn, name)} == {"window"}


# --- The property ------------------------------------------------------------------------------------------------------------


def test_the_mode_draws_nothing_by_itself_and_the_next_paint_shows_it():
    host = one_to_one()
    host.control.ScaleBarMode = 1
    assert verbs(host) == []
    assert host.control.ScaleBarMode == 1
    host.control.paint()
    assert named(verbs(host), "FillRect", "window")


@pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
def test_init_takes_the_rulers_away(newer):
    host = one_to_one(newer)
    host.control.ScaleBarMode = 2
    assert host.init()
    assert host.control.ScaleBarMode == 0
    host.control.paint()
    assert not named(redrawn(host), "FillRect", "window")


# --- The rulers --------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("mode", [1, 2, 3, -1, 32767, -32768])
def test_the_rulers_are_two_grey_bands_with_white_pens_and_texts(mode):
    host = one_to_one()
    host.control.ScaleBarMode = mode
    drawn = [each for each in redrawn(host) if each.context == "window"][5:]
    grey = ("Brush", 0, 0x808080, 0)
    assert [(each.name, each.values) for each in drawn[:2]] == [
        ("FillRect", ((WIDTH - 20, 0, WIDTH, HEIGHT), grey)), ("FillRect", ((0, HEIGHT - 20, WIDTH, HEIGHT), grey))]
    before_ticks = drawn[2:[each.name for each in drawn].index("MoveToEx")]
    chosen = [each.values[0] for each in before_ticks if each.name == "SelectObject"]
    assert [value[:4] for value in chosen if value[0] == "Pen"] == [("Pen", 0, 1, 0xFFFFFF)]
    assert [each.values for each in named(before_ticks, "SetBkMode")] == [(1,)]
    assert [each.values for each in named(before_ticks, "SetTextColor")] == [(0xFFFFFF,)]
    assert [value for value in chosen if value[0] == "Font"] == [("Font", -EM, 0, 0, 0, 400, False, False, False, 128, FACE)]


def test_the_font_of_the_right_ruler_is_turned_by_its_escapement_alone():
    host = one_to_one()
    host.control.ScaleBarMode = 1
    drawn = [each for each in redrawn(host) if each.context == "window"]
    first_right = next(i for i, each in enumerate(drawn) if each.name == "MoveToEx" and each.values[0] == WIDTH - 20)
    last_below = max(i for i, each in enumerate(drawn[:first_right]) if each.name == "TextOut")
    chosen = [each.values[0] for each in drawn[last_below:first_right] if each.name == "SelectObject"]
    fonts = [value for value in chosen if value[0] == "Font"]
    assert fonts[-1] == ("Font", -EM, 0, 900, 0, 400, False, False, False, 128, FACE)
    assert fonts[0][1:4] != (-EM, 0, 0), "the first font is taken out again before the second"


def test_pen_and_font_are_put_back():
    host = one_to_one()
    plain = [value for value in selected_at_end(redrawn(host))]
    assert plain == [None, None]
    host.control.ScaleBarMode = 1
    pen, font = selected_at_end(redrawn(host))
    assert pen != ("Pen", 0, 1, 0xFFFFFF, ()) and font[-1] != FACE
    assert selected_at_end(redrawn(host)) == [pen, font]


def selected_at_end(drawn):
    """The pen and the font that the window's context has been left with, None where none was chosen."""
    left = {"Pen": None, "Font": None}
    for each in named(drawn, "SelectObject", "window"):
        left[each.values[0][0]] = each.values[0]
    return [left["Pen"], left["Font"]]


@pytest.mark.parametrize("mode", [1, 2, 3, -1])
@pytest.mark.parametrize("zoom, x, y", [
    (1000, 0, 0), (1000, 137.25, 41.5), (2500, 1234.5, 987.25), (10000, -333.3, -777.7), (3779, -30, -30), (777, -5000.5, 5000.5),
    (100, 0.4, 0.4), (100, -0.4, -0.4), (1, 3, 3), (25000, 10000, -9999)])
def test_ticks_and_labels_follow_the_view(mode, zoom, x, y):
    host = at(zoom, x, y, mode)
    below, right = rulers(mode, view(host, "ViewX"), view(host, "ViewY"), zoom)
    assert below and right
    assert drawn_ticks(redrawn(host)) == below + right


def test_a_mode_without_a_meaning_has_ticks_with_empty_labels():
    host = at(1000, 0, 0, 3)
    ticks = drawn_ticks(redrawn(host))
    # 800 and 600 pixels at 75.58 pixels a tick
    assert len(ticks) == 11 + 8
    assert {text for _, _, (_, _, text) in ticks} == {b""}


def test_every_label_is_measured_in_the_font_it_is_written_in():
    host = at(1000, 137.25, 41.5, 1)
    drawn = [each for each in redrawn(host) if each.context == "window"]
    written = [each.values[2] for each in named(drawn, "TextOut")]
    assert [each.values[0] for each in named(drawn, "GetTextExtentPoint32")] == written


def test_a_tick_is_9_pixels_and_its_label_is_centred_on_it():
    host = at(1000, 0, 0, 1)
    below, right = rulers(1, view(host, "ViewX"), view(host, "ViewY"), 1000)
    ticks = drawn_ticks(redrawn(host))
    # 75.58 pixels; "20m" is 13 pixels wide, "-20m" 18
    assert ticks[0] == ((76, 580), (76, 589), (76 - 6, 588, b"20m"))
    assert ticks[len(below)] == ((780, 76), (789, 76), (788, 76 + 9, b"-20m"))


def test_with_twice_the_scale_the_ticks_stay_and_the_differences_of_the_labels_double():
    texts, places = [], []
    for zoom in (1000, 2000):
        ticks = drawn_ticks(redrawn(at(zoom, 0, 0, 1)))
        places.append([tick[:2] for tick in ticks])
        texts.append([int(tick[2][2][:-1]) for tick in ticks])
    assert places[0] == places[1]
    assert texts[0][:3] == [20, 40, 60] and texts[1][:3] == [40, 80, 120]


def test_left_of_the_origin_the_first_tick_lies_further_in_than_a_step():
    host = at(1000, -30, -30, 1)  # a tick on every 20 units
    ticks = drawn_ticks(redrawn(host))
    assert ticks[0][0] == (to_int(30 * 3.779), 580) and ticks[0][2][2] == b"0m"
    assert ticks[1][0] == (to_int(50 * 3.779), 580) and ticks[1][2][2] == b"20m"
    right = [tick for tick in ticks if tick[0][0] == 780]
    assert right[0][0] == (780, to_int(30 * 3.779)) and right[0][2][2] == b"0m"


def test_whole_values_below_0_come_out_one_too_high_below_the_map_and_true_beside_it():
    host = at(1000, -70, -70, 1)  # the first tick is 30 units in, at -40
    ticks = drawn_ticks(redrawn(host))
    below = [tick[2][2] for tick in ticks if tick[0][1] == 580]
    right = [tick[2][2] for tick in ticks if tick[0][0] == 780]
    assert below[:5] == [b"-39m", b"-19m", b"0m", b"20m", b"40m"], "-40 + 0.5 is cut toward 0"
    assert right[:5] == [b"40m", b"20m", b"0m", b"-20m", b"-40m"], "the half is taken off first, so these come out whole"


def test_the_number_of_ticks_is_rounded_so_a_last_one_may_lie_outside():
    step = DOTS_PER_M / 50  # 75.58
    for width, count in ((37, 0), (38, 1), (113, 1), (114, 2)):
        assert int(width / step + 0.5) == count
        host = painted(width=width, height=37)
        host.control.ScaleBarMode = 3
        assert len(drawn_ticks(redrawn(host))) == count
        host = painted(width=37, height=width)
        host.control.ScaleBarMode = 3
        assert len(drawn_ticks(redrawn(host))) == count


def test_the_labels_of_the_right_ruler_round_the_other_way_in_metres():
    host = at(25, 0.0, 0.0, 1)  # ticks at 0.5, 1, 1.5, 2
    ticks = drawn_ticks(redrawn(host))
    below = [tick[2][2] for tick in ticks if tick[0][1] == 580]
    right = [tick[2][2] for tick in ticks if tick[0][0] == 780]
    assert below[:4] == [b"1m", b"1m", b"2m", b"2m"], "a half goes up"
    assert right[:4] == [b"0m", b"-1m", b"-1m", b"-2m"], "less a half before it is rounded"


# West of 0 a whole value is one more by the time it is cut, and the seconds are cut toward 0 once more: -999 times 45
# thousandths is -44.
@pytest.mark.parametrize("x, label", [
    (0, b"E41\xdf22'30\""), (1000, b"E41\xdf23'15\""), (-1000, b"E41\xdf21'46\""), (-2000, b"E41\xdf21'01\""),
    (9000, b"E41\xdf29'15\""), (-9000, b"E41\xdf15'46\"")])
def test_the_eastern_graticule_has_45_seconds_a_kilometre(x, label):
    host = at(50000, x - 1000, 0, 2)  # a tick on every 1000 units
    first = next(tick for tick in drawn_ticks(redrawn(host)) if tick[2][2] == label)
    assert first[0][0] == pytest.approx(75.58, abs=1)


# Here the north has the values below 0.
@pytest.mark.parametrize("y, label", [
    (0, b"N43\xdf05'00\""), (1000, b"N43\xdf05'29\""), (-1000, b"N43\xdf04'30\""), (9000, b"N43\xdf09'29\""),
    (-9000, b"N43\xdf00'30\"")])
def test_the_northern_graticule_has_30_seconds_a_kilometre(y, label):
    host = at(50000, 0, -y - 1000, 2)
    first = next(tick for tick in drawn_ticks(redrawn(host)) if tick[2][2] == label)
    assert first[0][1] == pytest.approx(75.58, abs=1)


def test_minutes_below_0_borrow_from_the_hour():
    host = painted()
    for limit, value in (("AreaLeft", -1e6), ("AreaTop", -1e6), ("AreaRight", 1e6), ("AreaBottom", 1e6)):
        setattr(host.control, limit, value)
    host.control.Zoom = 50000
    host.control.ScaleBarMode = 2
    half_w, half_h = pix_to_world_f(WIDTH, 50000) / 2, pix_to_world_f(HEIGHT, 50000) / 2
    host.MapJumpToXY(-41000 + half_w, -(13000 + half_h))
    labels = [tick[2][2] for tick in drawn_ticks(redrawn(host))]
    # 22'30" less 1799" is -7'29", which is 52'31" of the hour before; 5' - 14 times 30" is -2'
    assert b"E41\xdf52'31\"" in labels and b"N43\xdf58'00\"" in labels


@pytest.mark.parametrize("zoom", [1, 50000000])
@pytest.mark.parametrize("mode", [1, 2, 3])
def test_the_rulers_stand_at_the_ends_of_the_scale(zoom, mode):
    host = painted()
    host.control.Zoom = zoom
    host.control.ScaleBarMode = mode
    below, right = rulers(mode, view(host, "ViewX"), view(host, "ViewY"), zoom)
    assert drawn_ticks(redrawn(host)) == below + right


@pytest.mark.parametrize("mode", [1, 2])
def test_a_view_beyond_all_whole_numbers_draws_its_rulers_and_goes_on(mode):
    host = painted()
    for limit, value in (("AreaLeft", -1e300), ("AreaTop", -1e300), ("AreaRight", 1e300), ("AreaBottom", 1e300)):
        setattr(host.control, limit, value)
    for far in (1e9, -1e9, 1e12, -1e12, 1e200):
        host.MapJumpToXY(far, far)
        host.control.ScaleBarMode = mode
        redrawn(host)
    host.MapJumpToXY(0.0, 0.0)
    below, right = rulers(mode, view(host, "ViewX"), view(host, "ViewY"), view(host, "Zoom"))
    assert drawn_ticks(redrawn(host)) == below + right


# --- Scrolling ---------------------------------------------------------------------------------------------------------------


def pending(old, new):
    """The fraction of a pixel that a drawn scroll cannot show, at a pixel a unit."""
    pixels = world_to_pix_f(new - old, PIXEL_ZOOM)
    return pixels - to_int(pixels)


@pytest.mark.parametrize("dx, dy", [(10.25, 20.5), (10.75, -5.25), (0.25, 0.0), (50.0, -30.0), (-12.4, 7.6)])
@pytest.mark.parametrize("mode", [1, 2, 3])
def test_a_scroll_by_a_fraction_of_a_pixel_shifts_the_ticks_by_it(mode, dx, dy):
    host = one_to_one()
    host.MapJumpToXY(1000.0, -1000.0)
    host.control.ScaleBarMode = mode
    old_x, old_y = view(host, "ViewX"), view(host, "ViewY")
    drain(host)
    host.control.OrvScrl(dx, -dy)
    drawn = verbs(host)
    new_x, new_y = old_x + dx, old_y + dy
    below, right = rulers(mode, new_x, new_y, PIXEL_ZOOM, pending(old_x, new_x), pending(old_y, new_y))
    assert drawn_ticks(drawn) == below + right
    assert [blt[:4] for blt in bit_blts(drawn, "window")] == [(1, 1, WIDTH - 20, HEIGHT - 20)]


def test_a_pending_fraction_moves_a_tick_to_another_pixel():
    step = DOTS_PER_M / 50  # 75.58; after a scroll by 0.75 + n the pending fraction is -0.25
    host = one_to_one()
    host.control.ScaleBarMode = 3
    host.MapJumpToXY(800.0, -800.0)  # the corner is (400, 500)
    host.control.OrvScrl(0.0, 0.0)
    drain(host)
    host.control.OrvScrl(10.75, 0.0)
    first = drawn_ticks(verbs(host))[0][0][0]
    to_tick = step - math.fmod(410.75, step)  # 42.73
    assert (to_int(to_tick), to_int(to_tick - 0.25)) == (43, 42)
    assert first == 42
