"""Every kind of layer appears on every way that a picture takes: composed, scrolled, and drawn for a context of the host's own."""

import orvane4
import pytest
from map_rig import HEIGHT, PIXEL_ZOOM, POINT, WIDTH, Host

KINDS = ("symbols", "images", "lines", "polygons", "circles", "texts", "ellipses", "meshes", "labels", "figures")


def write_bmp(path):
    """A red square of 4 x 4 pixels, 24 bits."""
    head = b"BM" + (54 + 48).to_bytes(4, "little") + bytes(4) + (54).to_bytes(4, "little")
    info = b"".join(n.to_bytes(4, "little") for n in (40, 4, 4)) + (1).to_bytes(2, "little") + (24).to_bytes(2, "little")
    path.write_bytes(head + info + bytes(24) + bytes((0, 0, 255)) * 16)


def everything(tmp_path, device, kinds=KINDS, scale=1):
    """A map with items of these kinds all over the window and beyond it; a pixel is a map unit at scale 1."""
    host = Host(True, device=device)
    c = host.control
    c.OrvInit()
    c.paint()
    c.Zoom = PIXEL_ZOOM
    c.MapJumpToXY(WIDTH / 2, -HEIGHT / 2)
    write_bmp(tmp_path / "square.bmp")
    places = [(x * scale, -y * scale) for y in range(-60, HEIGHT + 60, 90) for x in range(-60, WIDTH + 60, 90)]

    def layer(code, kind, *, line_type=0, color=0x208040):
        assert c.OrvAddLayer(code, 1, kind, 1)
        assert c.OrvSetLayColor(code, color) and c.OrvSetLayLineType(code, line_type)

    def fill(code, shape, z=0.0, text=None, at=places):
        for number, (x, y) in enumerate(at, 1):
            points = [(x + dx * scale, y - dy * scale) for dx, dy in shape]
            assert c.OrvAddDatEx(code, 1, number, 0, [p[0] for p in points], [p[1] for p in points], [z] * len(points))
            if text:
                assert c.OrvSetDatString(code, 1, number, *points[0], text)

    if "symbols" in kinds:
        layer("SYM", POINT, line_type=4)
        fill("SYM", [(10, 10)])
    if "images" in kinds:
        layer("IMG", POINT)
        fill("IMG", [(30, 10)])
        assert c.OrvSetLayImage("IMG", str(tmp_path / "square.bmp"), "", 8, 8, 1.0, 1.0) and c.OrvDspLayImage("IMG", True)
    if "lines" in kinds:
        layer("LIN", orvane4.OrvLTLine)
        fill("LIN", [(5, 30), (60, 40), (20, 45)])
    if "polygons" in kinds:
        layer("PGN", orvane4.OrvLTPolygon, color=0xA0C0E0)
        fill("PGN", [(40, 5), (60, 5), (50, 25), (40, 5)])
    if "circles" in kinds:
        layer("CIR", orvane4.OrvLTCircle, color=0xE0A080)
        fill("CIR", [(75, 15)], z=9.0 * scale)
    if "texts" in kinds:
        layer("TXT", orvane4.OrvLTText)
        # None of them crosses the left or the top edge, before or after a scroll: there a pixel is rounded the other way, and what
        # the scroll moved would lie a pixel beside what a frame draws.
        fill("TXT", [(10, 55)], text="地図 A", at=[(x, y) for x, y in places if x > 150 * scale and y < 0])
    if "ellipses" in kinds:
        layer("ELL", orvane4.OrvLTEllipse, color=0x60E0A0)
        fill("ELL", [(50, 50), (80, 62)])
    if "meshes" in kinds:
        layer("MSH", orvane4.OrvLTMesh)
        for number, (x, y) in enumerate(places, 1):
            grid = [(x + (20 + 5 * q) * scale, y - (68 + 5 * r) * scale) for r in range(3) for q in range(4)]
            assert c.OrvAddMeshDat("MSH", 1, number, 4, 3, [p[0] for p in grid], [p[1] for p in grid], [0.0] * 12)
            assert c.OrvSetMeshColor("MSH", 1, number, [0x2040C0 + 0x001510 * i for i in range(12)])
    if "labels" in kinds:
        c.StrVisible = True
        layer("LBL", orvane4.OrvLTLine)
        fill("LBL", [(60, 75), (80, 75)], text="L")
    if "figures" in kinds:
        for x, y in places:
            number = c.OrvMakeOrgDatEx(2, 1, 0x0000FF, 1)
            c.OrvAddOrgPnt(number, x + 5 * scale, y - 66 * scale)
            c.OrvAddOrgPnt(number, x + 30 * scale, y - 60 * scale)
    return host


def inked(pixels):
    """How many pixels of the middle of the window are not white."""
    return sum(pixels[i : i + 3] != b"\xff\xff\xff" for i in range(4 * WIDTH * 100, 4 * WIDTH * 300, 4))


@pytest.mark.parametrize("kind", KINDS)
def test_each_kind_appears_in_a_composed_frame(tmp_path, kind):
    c = everything(tmp_path, "qt", (kind,)).control
    c.OrvReDraw()
    assert inked(c.pixels()) > 100


@pytest.mark.parametrize("kind", KINDS)
@pytest.mark.parametrize("dx, dy", [(40, 0), (0, -35), (-50, 30), (120, 80)])
def test_a_scroll_by_whole_pixels_shows_what_a_frame_at_the_new_place_shows(tmp_path, kind, dx, dy):
    c = everything(tmp_path, "qt", (kind,)).control
    c.OrvReDraw()
    c.OrvScrl(dx, dy)
    scrolled = c.pixels()
    c.OrvReDraw()
    assert scrolled == c.pixels()


@pytest.mark.parametrize("kind", KINDS)
def test_each_kind_appears_on_a_context_of_the_host_at_twice_the_resolution(tmp_path, kind):
    c = everything(tmp_path, "qt", (kind,)).control
    paper = orvane4.Context(WIDTH, HEIGHT, horzres=3840, horzsize=508, logpixels=192)
    c.OrvUserDcDrawEx(paper.handle, 0, 0, HEIGHT, WIDTH, WIDTH / 2, -HEIGHT / 2, PIXEL_ZOOM, 0)
    assert inked(paper.pixels()) > 100


@pytest.mark.parametrize("kind", KINDS)
def test_pens_and_symbols_double_on_a_context_of_twice_the_resolution(tmp_path, kind):
    """The picture that a host context of 192 dots per inch gets holds every pen and symbol at twice its size."""
    c = everything(tmp_path, "record", (kind,)).control
    paper = orvane4.Context(WIDTH, HEIGHT, horzres=3840, horzsize=508, logpixels=192)
    c.OrvUserDcDrawEx(paper.handle, 0, 0, HEIGHT, WIDTH, WIDTH / 2, -HEIGHT / 2, PIXEL_ZOOM, 0)
    names = [name for _, name, _ in paper.verbs()]
    wanted = {"symbols": "Polygon", "images": "StretchBlt", "lines": "Polyline", "polygons": "PolyPolygon", "circles": "Ellipse",
              "texts": "TextOut", "ellipses": "Ellipse", "meshes": "Polygon", "labels": "TextOut", "figures": "Polyline"}[kind]
    assert wanted in names
