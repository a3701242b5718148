"""What the tests of single layers' drawing share: a window at any scale with one layer, host devices, figures told by verbs."""

import struct

import orvane4
import pytest
from map_rig import DOTS_PER_M, HEIGHT, PIXEL_ZOOM, WIDTH, Host, drain, named, painted, verbs, view

ACTIVE_RED = 255
GREY = 0xDCDCDC
BLACK, WHITE = 0, 0xFFFFFF

FIGURES = {"Polyline", "PolyPolygon", "Polygon", "Ellipse", "MoveToEx", "LineTo", "ArcTo", "Chord", "BeginPath", "EndPath",
           "FillPath",
           "StrokePath", "StrokeAndFillPath", "TextOut", "StretchBlt", "SetArcDirection"}

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


def at_scale(zoom=PIXEL_ZOOM, newer=False, **window):
    """A painted host whose client pixel (x, y) is the map point (x * unit, -y * unit)."""
    recording = window.get("device", "record") == "record"
    host = painted(newer, **window) if recording else Host(newer, **window)
    if not recording:
        assert host.init()
        host.control.paint()
    for side, limit in (("AreaLeft", -1e9), ("AreaTop", -1e9), ("AreaRight", 1e9), ("AreaBottom", 1e9)):
        setattr(host.control, side, limit)
    host.control.Zoom = zoom
    host.unit = zoom / DOTS_PER_M
    host.MapJumpToXY(WIDTH / 2 * host.unit, -HEIGHT / 2 * host.unit)
    if recording:
        drain(host)
    assert abs(view(host, "ViewX")) < host.unit / 1000 and abs(view(host, "ViewY")) < host.unit / 1000
    return host


def put(host, dat_id, *pixels, code="A", tag=0, sub=0):
    """An item through client pixels. A pixel is (x, y) or (x, y, z), z being in map units."""
    points = [(x * host.unit, -y * host.unit, *rest) for x, y, *rest in pixels]
    host.add_item(code, 1, dat_id, points, tag)
    if sub:
        assert host.control.OrvSetDatSubLayerEx(code, 1, [dat_id], [sub])


def with_layer(lay_type, *items, newer=False, zoom=PIXEL_ZOOM, device="record", **settings):
    """A host with the layer "A" and its items 1, 2, ..., each a list of client pixels. Settings are setters."""
    host = at_scale(zoom, newer, device=device)
    assert host.add_block("A", 1, lay_type)
    for dat_id, pixels in enumerate(items, 1):
        put(host, dat_id, *pixels)
    for name, args in settings.items():
        assert getattr(host, name)("A", *(args if isinstance(args, tuple) else (args,)))
    return host


def add_sub_layer(host, number, code="A", disp=True, line_type=0, size=1, pgn=0, pnt=0, color=0, outline=1, pgn_mode=1):
    assert host.control.OrvSetSubLayerEx(code, "", number, disp, line_type, size, pgn, pnt, color, outline, pgn_mode)


def activate(host, dat_id=1, code="A"):
    assert host.control.SetDigDatInfoEx(code, 1, dat_id, 0, True) == 1


def redrawn(host):
    drain(host)
    host.RDMReDraw()
    return verbs(host)


def figures(drawn, context="base"):
    """The figures of a context in their order, each as (verb, value, ...)."""
    return [(each.name, *each.values) for each in drawn if each.context == context and each.name in FIGURES]


def of(drawn, name, context="base"):
    return [each.values for each in named(drawn, name, context)]


def scrolled(host, dx, dy):
    """What is drawn when the picture moves by pixels, in a view at one pixel a map unit."""
    drain(host)
    host.control.OrvScrl(dx, -dy)
    return verbs(host)


# --- Host devices --------------------------------------------------------------------------------------------------------------

# At this scale a map unit is a pixel of the fine device.
FINE_ZOOM = 4724 * 1000 // 400


def fine_device(dpi=300):
    return orvane4.Context(400, 300, 4724, 400, dpi)


def drawn_on(host, context, zoom=FINE_ZOOM):
    """The verbs of a host drawing of 400 by 300 pixels whose corner is the map origin."""
    context.verbs()
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0 * zoom / FINE_ZOOM, -150.0 * zoom / FINE_ZOOM, zoom, 1)
    own = verbs(context)
    return [each._replace(context="device") for each in own]


# --- Files ---------------------------------------------------------------------------------------------------------------------


def bmp(width, height, color=(0, 0, 255), background=(255, 255, 255), paint=None):
    """An uncompressed image of 24 bits. Colours are (blue, green, red); paint tells which pixels have the first."""
    paint = paint or (lambda x, y: True)
    rows = b""
    for y in reversed(range(height)):
        row = b"".join(bytes(color if paint(x, y) else background) for x in range(width))
        rows += row + bytes(-len(row) % 4)
    head = struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54)
    return head + struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 3780, 3780, 0, 0) + rows


def file_of(folder, name, content):
    path = folder / name
    path.write_bytes(content)
    return str(path)

