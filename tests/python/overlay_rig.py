"""What the tests of overlay figures share: figures made from client pixels, and what the top buffer shows of them."""

import orvane4
from map_rig import PIXEL_ZOOM, drain, named, one_to_one, pens, verbs, view

A, B, C, D = (100, 100), (300, 120), (280, 400), (90, 380)
TRIANGLE = [A, B, C, A]
HALF = 9  # half the side of a point's mark at a scale of a pixel a unit
RED, BLUE, GREEN, BLACK, WHITE = 0x0000FF, 0xFF0000, 0x00FF00, 0, 0xFFFFFF
SOLID, DOT = 0, 2
SHAPES = ("Polyline", "Polygon", "PolyPolygon", "Ellipse", "BeginPath", "EndPath", "FillPath", "StrokePath", "StrokeAndFillPath")


def add_points(host, number, pixels):
    for x, y in pixels:
        assert host.AddOrgPnt(number, float(x), -float(y)) > 0


def figure(host, kind, pixels, line=0, color=0, fill=1, active=False):
    """A figure through pixels of a view that shows map point (x, -y) at pixel (x, y); its number."""
    number = host.MakeOrgDatEx(kind, line, color, fill)
    assert number > 0
    add_points(host, number, pixels)
    if active:
        set_active(host, number, True)
    return number


def set_active(host, number, active):
    host.control.invoke("OrvOrgDataActive" if host.newer else "OrgDataActive", number, active)


def is_active(host, number):
    return host.control.invoke("OrvOrgDataActive" if host.newer else "OrgDataActive", number)


def redrawn(host):
    drain(host)
    host.RDMReDraw()
    return verbs(host)


def after_copy(drawn):
    """What was drawn on the top buffer over the map."""
    top = [each for each in drawn if each.context == "top"]
    return top[next(i for i, each in enumerate(top) if each.name == "BitBlt") + 1:]


def shapes(drawn):
    """The shapes on the top buffer with their values, in order."""
    return [(each.name, *each.values) for each in after_copy(drawn) if each.name in SHAPES]


def polylines(drawn):
    return [each.values[0] for each in named(after_copy(drawn), "Polyline")]


def points_of_lines(host):
    """The pixels of every figure that is drawn as a line, after a repaint."""
    return [list(points) for points in polylines(redrawn(host))]


def looks(drawn, *names, context="top"):
    """Each of the shapes named with its pen and brush: (name, pen, brush)."""
    told = pens(after_copy(drawn) if context == "top" else drawn, context)
    return [(each.verb.name, each.pen, each.brush) for each in told if each.verb.name in names]


def raster_modes(drawn):
    return [each.values[0] for each in named(after_copy(drawn), "SetROP2")]


def texts(drawn):
    return [each.values for each in named(after_copy(drawn), "TextOut")]


def fine_context():
    """A host's context of three times the resolution of the screen: 300 dots an inch against 96, 3.125 cut to 3."""
    return orvane4.Context(400, 300, 4724, 400, 300)


def box(x, y, half):
    return ((x - half, y - half), (x + half, y - half), (x + half, y + half), (x - half, y + half))


def mark(at, radius):
    (x, y) = at
    return ("Ellipse", x - radius, y - radius, x + radius, y + radius)


def path(*shape):
    return [("BeginPath",), shape, ("EndPath",)]


def solid(color):
    return ("solid", color)


def filled(drawn):
    """The pen and the brush at each filling of a path."""
    return [(pen, brush) for _, pen, brush in looks(drawn, "FillPath", "StrokeAndFillPath")]


def on_fine_context(host):
    """What is drawn on such a context centred on pixel (200, 150), under the context's name "own"."""
    context = fine_context()
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 200.0, -150.0, PIXEL_ZOOM, 1)
    return [each._replace(context="own") for each in verbs(context)]


def marks(drawn):
    """The circles on the top buffer that are no part of a path."""
    found, in_path = [], False
    for each in after_copy(drawn):
        in_path = each.name == "BeginPath" or (in_path and each.name != "EndPath")
        if each.name == "Ellipse" and not in_path:
            found.append(("Ellipse", *each.values))
    return found


def marked(*pixels):
    """The marks of a run of vertices from its first to its last."""
    rings = [mark(pixels[0], 5)]
    for at, pixel in enumerate(pixels[:-1]):
        rings += [mark(pixel, 2), mark(pixel, 4)] if at == 1 else []
        rings.append(mark(pixel, 3))
    return [*rings, mark(pixels[-1], 5)]


def map_figure(host, kind, points, **look):
    return figure(host, kind, [(x, -y) for x, y in points], **look)


def centred_on_0(newer=False):
    """A view in which map point (x, y) is pixel (x, 300 - y), so that a figure and its mirror image are both in sight."""
    host = one_to_one(newer)
    host.MapJumpToXY(400.0, 0.0)
    assert (view(host, "ViewX"), view(host, "ViewY")) == (0, -300)
    return host
