"""Clicks, rests, rectangles and figure modes in views and on data that no one should set up: nothing comes to harm."""

import pytest
from drawing_rig import at_scale
from input_rig import (ADD_POINT, ALL_CLICKS, COPY, CTRL, DELETE_POINT, HINT_TIMER, LEFT, MOVE, MOVE_POINT, NORMAL, SHIFT,
                       SHIFT_CLICKS, click, drag, move, picked_at, put, ready, tick)
from map_rig import CIRCLE, ELLIPSE, LINE, PIXEL_ZOOM, POINT, POLYGON
from overlay_rig import set_active

NAN, INF = float("nan"), float("inf")
KINDS = [POINT, LINE, POLYGON, CIRCLE, ELLIPSE]
SHAPE = [(100, 100, 60), (1700, 100, 60), (1700, 900, 60), (100, 900, 60), (100, 100, 60)]


def full_map():
    """Every type as a layer that may be edited and as an active figure."""
    host = ready(at_scale())
    for kind in KINDS:
        code = f"T{kind}"
        assert host.add_block(code, 1, kind)
        assert host.SetLayEditFlg(code, True)
        for dat_id in (1, 2):
            put(host, dat_id, *SHAPE, code=code)
        number = host.MakeOrgDatEx(kind, 0, 0, 1)
        for x, y, _ in SHAPE:
            host.AddOrgPnt(number, float(x), float(-y))
        set_active(host, number, True)
    host.RDMReDraw()
    return host


def use_everything(host):
    control = host.control
    for x, y in ((100, 100), (400, 300), (0, 0), (799, 599)):
        control.RunMode = NORMAL
        for keys in (0, SHIFT, CTRL):
            click(host, x, y, keys)
        control.clock, control.cursor_pos = 10.0, (x, y)
        move(host, x, y)
        control.clock = 20.0
        tick(host, HINT_TIMER)
        drag(host, (x, y), (500, 400))
        for mode in (SHIFT_CLICKS, ALL_CLICKS):
            control.RunMode = mode
            for keys in (0, SHIFT, SHIFT | CTRL):
                click(host, x, y, keys)
        host.GetOrgNearLine(x, y)
    for tool in (MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY):
        control.RunMode = NORMAL
        if control.DigDatEditor("T2", 1, 1, tool) == 0:
            for x, y in ((100, 100), (300, 200)):
                move(host, x, y)
                click(host, x, y)
            control.mouse("ldbl", LEFT, 50, 50)
            control.OrvCancelOrgEdit()
    for mode in (10, 20):
        control.RunMode = NORMAL
        control.OrvRectZoom(mode)
        drag(host, (100, 100), (400, 300))
    for delta in (1, -1):
        control.wheel(0, delta, 400, 300)


VIEWS = {
    "no width": {"ScaleX": 0.0}, "no height": {"ScaleY": 0.0}, "mirrored": {"ScaleX": -1.0, "ScaleY": -2.0},
    "wide beyond numbers": {"ScaleX": 1e308, "ScaleY": 1e308}, "no number": {"ScaleX": NAN}, "endless": {"ScaleY": INF},
    "turned": {"Rotate": 123.4}, "turned beyond numbers": {"Rotate": 1e308}, "turned by no number": {"Rotate": NAN},
    "turned endlessly": {"Rotate": -INF}, "nearest": {"Zoom": 1}, "farthest": {"Zoom": 50000000}, "near": {"Zoom": 150},
    "no area": {"AreaLeft": 0.0, "AreaRight": 0.0, "AreaTop": 0.0, "AreaBottom": 0.0},
    "area of no number": {"AreaLeft": NAN, "AreaBottom": INF}}


@pytest.mark.parametrize("settings", VIEWS.values(), ids=VIEWS)
def test_any_view_may_be_worked_in(settings):
    host = full_map()
    for name, value in settings.items():
        setattr(host.control, name, value)
    host.RDMReDraw()
    use_everything(host)
    host.control.ScaleX = host.control.ScaleY = 1.0
    host.control.Rotate = 0.0
    assert_works(host)


@pytest.mark.parametrize("x, y", [(NAN, NAN), (INF, -INF), (1e308, -1e308), (2.0**31, -(2.0**31)), (2.0**63, 2.0**63),
                                  (5e-324, -0.0)])
def test_any_coordinates_may_be_worked_with(x, y):
    host = full_map()
    for kind in KINDS:
        code = f"T{kind}"
        host.add_item(code, 1, 9, [(x, y, x), (y, x, y), (x, x), (y, y), (x, y)])
        host.AddDigDat(code, 1, 10, 0)
        number = host.MakeOrgDatEx(kind, 0, 0, 1)
        for px, py in ((x, y), (y, x), (0.0, 0.0), (x, y)):
            host.AddOrgPnt(number, px, py)
        set_active(host, number, True)
    host.RDMReDraw()
    use_everything(host)
    assert_works(host)


@pytest.mark.parametrize("zoom", [1, 100, PIXEL_ZOOM, 50000000])
def test_long_items_may_be_worked_with(zoom):
    host = full_map()
    xs, ys = [float(i * 7 % 800) for i in range(6000)], [-float(i * 13 % 600) for i in range(6000)]
    for kind in KINDS:
        assert host.AddDigDatEx(f"T{kind}", 1, 9, 0, [*xs, xs[0]], [*ys, ys[0]], [1.0] * 6001)
    host.control.Zoom = zoom
    host.RDMReDraw()
    use_everything(host)
    assert_works(host)


def assert_works(host):
    """A new map on the same control picks as ever."""
    host.init()
    host.control.paint()
    host.control.RunMode = NORMAL
    host.control.Zoom = PIXEL_ZOOM
    host.MapJumpToXY(400.0, -300.0)
    host.add_block("NEW", 1, POINT)
    host.add_item("NEW", 1, 4, [(300, -200)])
    host.RDMReDraw()
    assert picked_at(host, 302, 198) == 4
