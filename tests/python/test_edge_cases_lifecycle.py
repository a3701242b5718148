"""Init, first paint, term: the states a control goes through, and what each of them keeps."""

import pytest
from map_rig import (CLIENT, HEIGHT, LINE, SRCCOPY, WHITENESS, WIDTH, Host, bit_blts, composed, drain, dump, index_keys, named,
                     one_to_one, painted, pat_blts, picked, verbs, view)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
WHITE_BRUSH = ("Brush", 0, 0xFFFFFF)
DESKTOP_WHITENED = (0, 0, 1920, 1080, WHITENESS)


def with_visible_line(newer=False):
    host = one_to_one(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, [(100, -100), (300, -200)])
    return host


def lines_shown(drawn):
    return [each.values[0] for each in named(drawn, "Polyline")]


def white_fills(drawn):
    return [each.values[0] for each in named(drawn, "FillRect", "window") if each.values[1][:3] == WHITE_BRUSH]


def test_a_paint_before_any_init_fills_the_control_white_and_leaves_all_state_as_it_was():
    host = Host(False)
    before = dump(host)
    assert view(host, "DrawState") == -1
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert white_fills(drawn) == [CLIENT]
    assert len(drawn) == 1
    assert dump(host) == before


def test_the_first_paint_after_init_makes_both_buffers_as_large_as_the_desktop_and_composes():
    host = Host(False)
    host.init()
    assert (view(host, "DrawState"), view(host, "BufferState")) == (0, -1)
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert white_fills(drawn) == [CLIENT]
    assert DESKTOP_WHITENED in pat_blts(drawn, "base") and DESKTOP_WHITENED in pat_blts(drawn, "top")
    assert composed(drawn)
    assert (view(host, "DrawState"), view(host, "BufferState")) == (2, 0)


def test_the_first_paint_reads_how_fine_the_desktop_is():
    host = painted()
    assert view(host, "DotPerM") == 3779
    assert (view(host, "ScreenDpi"), view(host, "DeviceDpi"), view(host, "DpiRatio")) == (96, 96, 1.0)


def test_a_later_paint_only_copies_the_top_buffer():
    host = with_visible_line()
    host.RDMReDraw()
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert not pat_blts(drawn, "base") and not lines_shown(drawn) and not white_fills(drawn)
    assert [blt[:4] + blt[-1:] for blt in bit_blts(drawn, "window")] == [(1, 1, WIDTH - 1, HEIGHT - 1, SRCCOPY)]


@BOTH
def test_a_second_init_discards_layers_and_blocks_and_the_next_paint_composes_an_empty_map(newer):
    host = with_visible_line(newer)
    host.RDMReDraw()
    assert lines_shown(verbs(host))
    assert host.init() is True
    assert (dump(host)["layers"], dump(host)["blocks"], dump(host)["digIndex"]) == ([], [], [])
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert composed(drawn) and not lines_shown(drawn)


@BOTH
def test_a_second_init_leaves_the_buffers_in_place(newer):
    host = with_visible_line(newer)
    base = host.control.GetDC
    host.init()
    assert view(host, "BufferState") == 0
    assert host.control.GetDC == base
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert not named(drawn, "CreateCompatibleBitmap") and not named(drawn, "CreateCompatibleDC")
    assert DESKTOP_WHITENED not in pat_blts(drawn, "base")
    assert host.control.GetDC == base


def test_an_init_of_a_composed_map_leads_back_to_state_0_until_the_paint_comes():
    host = with_visible_line()
    assert view(host, "DrawState") == 2
    drain(host)
    host.init()
    assert view(host, "DrawState") == 0
    assert verbs(host) == [], "the repaint that init asks for comes later"
    host.control.paint()
    assert view(host, "DrawState") == 2


def test_an_init_in_state_1_composes_at_once():
    host = Host(False)
    host.init()
    host.control.MapDraw = False
    host.control.paint()
    assert view(host, "DrawState") == 1, "drawing is off, so nothing was composed"
    drain(host)
    host.control.ScaleBarMode = 2
    host.init()
    assert composed(verbs(host))
    assert view(host, "DrawState") == 2
    assert host.control.ScaleBarMode == 0


@BOTH
def test_after_term_the_map_is_still_drawn(newer):
    host = with_visible_line(newer)
    before = dump(host)
    assert host.RDMTerm() is None
    assert dump(host) == before
    assert verbs(host) == []
    host.RDMReDraw()
    assert lines_shown(verbs(host)) == [((100, 100), (300, 200))]


@BOTH
def test_term_in_a_freshly_constructed_control_does_nothing(newer):
    host = Host(newer)
    before = dump(host)
    drain(host)
    assert host.RDMTerm() is None
    assert dump(host) == before
    assert verbs(host) == []


@BOTH
def test_term_before_the_first_paint_leaves_the_store_alone(newer):
    host = Host(newer)
    host.init()
    host.add_block("A", 1, LINE)
    before = dump(host)
    host.RDMTerm()
    assert dump(host) == before
    assert index_keys(host) == [("A", 1)]


@BOTH
def test_init_resets_zoom_to_10000_whatever_it_was(newer):
    host = painted(newer)
    host.control.Zoom = 500
    assert host.control.Zoom == 500
    host.init()
    assert host.control.Zoom == 10000


@pytest.mark.parametrize("code", ["", "123", "no number", "-1"])
def test_the_code_of_the_older_init_has_no_effect(code):
    told = Host(False)
    assert told.control.RDMInit(code) is True
    plain = Host(True)
    assert plain.control.OrvInit() is True
    assert dump(told) == dump(plain)


def test_init_puts_the_view_at_its_start():
    host = with_visible_line()
    host.control.OrvScrl(50.0, 50.0)
    host.control.Rotate = 30.0
    host.init()
    start = {"ViewX": 0, "ViewY": 0, "Rotate": 0, "ScaleX": 1, "ScaleY": 1, "PendX": 0, "PendY": 0, "OffX": 0, "OffY": 0}
    assert picked(dump(host)["view"], start) == start


def test_init_leaves_the_wheel_settings_as_they_were():
    host = painted()
    host.control.OrvWheelZoomMode(2, 0.25)
    host.init()
    assert (view(host, "WheelZoomMode"), view(host, "WheelRateUp"), view(host, "WheelRateDown")) == (2, 1.25, 0.75)


def test_init_gives_up_a_zoom_rectangle_that_was_asked_for():
    host = painted()
    host.control.OrvRectZoom(10)
    assert view(host, "RectZoomMode") == 10
    host.init()
    assert view(host, "RectZoomMode") == 0


def test_a_resize_does_not_touch_the_buffers():
    host = with_visible_line()
    base = host.control.GetDC
    host.control.resize(400, 300)
    drain(host)
    host.control.paint()
    drawn = verbs(host)
    assert host.control.GetDC == base and not named(drawn, "CreateCompatibleBitmap")
    assert [blt[:4] for blt in bit_blts(drawn, "window")] == [(1, 1, 399, 299)]


def test_a_control_can_be_let_go_in_every_state():
    for steps in range(4):
        host = Host(False)
        for step in (host.init, host.control.paint, host.init)[:steps]:
            step()
        del host
