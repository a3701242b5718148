"""The scenes of the gallery: everything that the map can draw, each on a window of its own.

A scene is a function that fills a control; SCENES names them with the sizes of their windows. Positions are pixels from the left
top of the window: a Sheet turns them into map units, whatever the scale.
"""

import math
import pathlib

import orvane4 as ov

HERE = pathlib.Path(__file__).resolve().parent
DOTS_PER_M = 1920 * 1000 // 508

BLACK, GREY, RED, BLUE, GREEN = 0x000000, 0x909090, 0x2430D6, 0xC07020, 0x409020
SAND, LEAF, WATER, ROSE = 0xB0DCF0, 0xA0D8B0, 0xF0D0A0, 0xC8B8F0

HATCHES = ("solid", "backward", "cross", "diagonal cross", "forward", "horizontal", "vertical", "hollow")


class Sheet:
    """A control whose window shows the map at a scale of its own, with positions given in pixels."""

    def __init__(self, control, width, height, zoom=DOTS_PER_M):
        self.c = control
        self.unit = zoom / DOTS_PER_M
        self.ids = {}
        control.OrvInit()
        control.paint()
        control.Zoom = zoom
        control.MapJumpToXY(width / 2 * self.unit, -height / 2 * self.unit)

    def layer(self, code, kind, index=1, **look):
        """A layer with one block; the greater index is drawn first."""
        assert self.c.OrvAddLayer(code, 1, kind, index)
        setters = {"color": "OrvSetLayColor", "color2": "OrvSetLayColor2", "size": "OrvSetLayLineSize",
                   "type": "OrvSetLayLineType", "outline": "OrvSetLayOutLineMode", "fill": "OrvSetLayPgnMode"}
        for name, value in look.items():
            assert getattr(self.c, setters[name])(code, value), name

    def item(self, code, *pixels, z=0.0, sub=0, active=False, text=None):
        """An item through pixels; its number."""
        number = self.ids[code] = self.ids.get(code, 0) + 1
        xs = [x * self.unit for x, _ in pixels]
        ys = [-y * self.unit for _, y in pixels]
        assert self.c.OrvAddDatEx(code, 1, number, 0, xs, ys, [float(z)] * len(xs))
        if sub:
            assert self.c.OrvSetDatSubLayer(code, 1, number, sub)
        if active:
            assert self.c.SetDigDatInfoEx(code, 1, number, 0, True)
        if text is not None:
            assert self.c.OrvSetDatString(code, 1, number, xs[0], ys[0], text)
        return number

    def caption(self, x, y, text, size=8, color=GREY):
        """A small text above all other layers."""
        if "~CAPTIONS" not in self.ids:
            self.ids["~CAPTIONS"] = 0
            self.layer("~CAPTIONS", ov.OrvLTText, index=0)
        number = self.item("~CAPTIONS", (x, y), text=text)
        assert self.c.OrvSetStrStyle("~CAPTIONS", 1, number, "", size, 0, ov.OrvStrPosLT, 0, False, False, False, color, 0xFFFFFF)


def box(x, y, w, h):
    return (x, y), (x + w, y), (x + w, y + h), (x, y + h), (x, y)


def symbols(c, width, height, zoom=DOTS_PER_M):
    """All symbols of a scale: plain, active, by sub layer, from the symbol file, with values."""
    s = Sheet(c, width, height, zoom)
    c.OrvGetSymbolData("samples/gallery/symbols.txt")
    for i, kind in enumerate((0, 1, 2, 3, 4, 5, 10, 11, 12)):
        code = f"P{kind}"
        s.layer(code, ov.OrvLTPoint, type=kind, color=LEAF)
        x = (45, 120, 195, 270, 345, 420, 495, 560, 650)[i]
        s.item(code, (x, 60), z=12.345)
        s.item(code, (x, 135), z=7.5, active=True)
        s.caption(x - 25, 5, f"symbol {kind}")
    s.layer("FILE", ov.OrvLTPoint, type=9999, color=SAND)
    for number in range(1, 6):
        c.OrvSetSubLayerEx("FILE", f"symbol {number}", number, True, 0, number, 0, 9999, SAND, ov.OrvMOn, ov.OrvFMCopy)
        x = 45 + 75 * (number - 1)
        s.item("FILE", (x, 215), sub=number)
        s.item("FILE", (x, 255), sub=number, active=True)
        s.caption(x - 25, 180, f"file {number}")
    s.layer("FIXED", ov.OrvLTPoint, type=3, size=9999, color=WATER)
    s.item("FIXED", (45 + 75 * 6, 215))
    s.caption(20 + 75 * 6, 180, "fixed size")
    s.layer("UNKNOWN", ov.OrvLTPoint, type=7, color=ROSE)
    s.item("UNKNOWN", (45 + 75 * 7, 215))
    s.caption(20 + 75 * 7, 180, "unknown")


def small_symbols(c, width, height):
    symbols(c, width, height, 20000)


def images(c, width, height):
    """Images on their points: five anchors, active ones, stretched, over a fill that shows through."""
    s = Sheet(c, width, height)
    s.layer("FLOOR", ov.OrvLTPolygon, index=9, type=0, color=SAND)
    s.item("FLOOR", *box(10, 25, 680, 60))
    s.layer("CROSS", ov.OrvLTLine, index=2, color=GREY)
    for i, name in enumerate(("centre", "left top", "left bottom", "right top", "right bottom")):
        code = f"I{i}"
        s.layer(code, ov.OrvLTPoint)
        x, y = 50 + 90 * i, 55
        s.item(code, (x, y))
        s.item(code, (x, y + 80), active=True)
        assert c.OrvSetLayImage(code, "samples/gallery/pin.bmp", "samples/gallery/pin_active.bmp", 15, 16, 1.0, 1.0)
        assert c.OrvDspLayImage(code, True)
        assert c.OrvSetLayImagePos(code, i)
        for yy in (y, y + 80):
            s.item("CROSS", (x - 20, yy), (x + 21, yy))
            s.item("CROSS", (x, yy - 20), (x, yy + 21))
        s.caption(x - 25, 5, name)
    s.layer("BIG", ov.OrvLTPoint)
    s.item("BIG", (520, 55))
    s.item("BIG", (520, 145), active=True)
    assert c.OrvSetLayImage("BIG", "samples/gallery/pin.bmp", "", 15, 16, 3.0, 3.0) and c.OrvDspLayImage("BIG", True)
    s.caption(490, 5, "three times")
    s.layer("TINY", ov.OrvLTPoint)
    s.item("TINY", (600, 55))
    assert c.OrvSetLayImage("TINY", "samples/gallery/pin.bmp", "", 15, 16, 0.6, 0.6) and c.OrvDspLayImage("TINY", True)
    s.caption(580, 5, "smaller")
    s.layer("LOST", ov.OrvLTPoint)
    s.item("LOST", (665, 55))
    assert c.OrvSetLayImage("LOST", "samples/gallery/none.bmp", "", 15, 16, 1.0, 1.0) and c.OrvDspLayImage("LOST", True)
    s.caption(640, 5, "no file")


def line_types(c, width, height):
    """All line types of the sample file, level, at an angle, round a corner and active."""
    s = Sheet(c, width, height)
    count = c.OrvReadLineTypeData("samples/gallery/line_types.txt")
    for i, number in enumerate(c.OrvGetLineType()[0][:count]):
        code = f"L{number}"
        s.layer(code, ov.OrvLTLine, type=number, size=1, color=BLACK)
        x, y = 10 + 350 * (i % 2), 30 + 52 * (i // 2)
        s.caption(x, y - 20, f"{number}", color=BLUE)
        s.item(code, (x + 25, y), (x + 125, y))
        s.item(code, (x + 135, y + 18), (x + 195, y - 16))
        s.item(code, (x + 205, y - 16), (x + 245, y + 18), (x + 255, y - 16))
        s.item(code, (x + 270, y), (x + 335, y), active=True)


def angles(c, width, height):
    """Pattern lines at every angle."""
    s = Sheet(c, width, height)
    c.OrvReadLineTypeData("samples/gallery/line_types.txt")
    for i, number in enumerate((20, 22, 43, 61, 62, 72)):
        code = f"L{number}"
        s.layer(code, ov.OrvLTLine, type=number, size=1, color=BLUE)
        cx, cy = 115 + 230 * (i % 3), 115 + 230 * (i // 3)
        for k in range(16):
            a = k * math.pi / 8
            near, far = 22, 105
            s.item(code, (round(cx + near * math.cos(a)), round(cy + near * math.sin(a))),
                   (round(cx + far * math.cos(a)), round(cy + far * math.sin(a))))
        s.caption(cx - 8, cy - 6, f"{number}", color=RED)


def pens(c, width, height):
    """The standard pens without a line type file, thin and wide."""
    s = Sheet(c, width, height)
    for i in range(5):
        for k, size in enumerate((1, 2, 5)):
            code = f"L{i}{size}"
            s.layer(code, ov.OrvLTLine, type=i, size=size, color=BLACK)
            x, y = 20 + 230 * k, 30 + 30 * i
            s.item(code, (x, y), (x + 150, y), (x + 200, y - 16))
    for k, size in enumerate((1, 2, 5)):
        s.caption(20 + 230 * k, 4, f"width {size}")


def fills(c, width, height):
    """Polygons with holes in all patterns: with an outline, without, over another area, combined with it, active."""
    s = Sheet(c, width, height)
    s.layer("UNDER", ov.OrvLTPolygon, index=9, type=0, color=SAND)
    s.item("UNDER", *box(5, 190, 690, 40))
    for i, name in enumerate(HATCHES):
        x = 15 + 85 * i
        s.caption(x, 4, name)
        for row, (outline, fill, active) in enumerate(((ov.OrvMOn, ov.OrvFMCopy, False), (ov.OrvMOff, ov.OrvFMCopy, False),
                                                       (ov.OrvMOn, ov.OrvFMMask, False), (ov.OrvMOn, ov.OrvFMCopy, True))):
            code = f"F{i}{row}"
            s.layer(code, ov.OrvLTPolygon, type=i, color=WATER if fill == ov.OrvFMMask else LEAF, color2=BLUE, outline=outline,
                    fill=fill)
            y = 30 + 75 * row
            outer = box(x, y, 70, 55)
            hole = box(x + 20, y + 15, 25, 20)
            s.item(code, *outer, *hole, (x + 1, y + 1), active=active)


def rounds(c, width, height):
    """Circles and ellipses, the smallest to the largest, in all patterns."""
    s = Sheet(c, width, height)
    s.layer("C", ov.OrvLTCircle)
    s.layer("E", ov.OrvLTEllipse)
    for i in range(8):
        s.caption(15 + 85 * i, 4, HATCHES[i])
        for row, outline in enumerate((ov.OrvMOn, ov.OrvMOff)):
            number = 10 * row + i + 1
            for code, color, color2 in (("C", ROSE, RED), ("E", LEAF, GREEN)):
                assert c.OrvSetSubLayerEx(code, "", number, True, 0, 1, i, 0, color, outline, ov.OrvFMCopy)
                assert c.OrvSetSubLayColor2(code, number, color2)
            x, y = 15 + 85 * i, 30 + 130 * row
            s.item("C", (x + 35, y + 25), z=24, sub=number, active=i == 5)
            s.item("E", (x, y + 60), (x + 70, y + 95), sub=number)
    for k, radius in enumerate((1, 2, 3, 4, 5, 7, 10, 14, 19)):
        code = f"R{radius}"
        s.layer(code, ov.OrvLTCircle, type=0, color=WATER, color2=BLACK, size=1, outline=ov.OrvMOn)
        s.item(code, (25 + 45 * k, 315), z=radius)
    for k, size in enumerate((2, 4, 8)):
        code = f"W{size}"
        s.layer(code, ov.OrvLTEllipse, type=0, color=SAND, color2=BLUE, size=size, outline=ov.OrvMOn)
        s.item(code, (460 + 80 * k, 295), (520 + 80 * k, 335))


def texts(c, width, height):
    """Nine anchors, turns, styles and sizes of texts."""
    s = Sheet(c, width, height)
    s.layer("CROSS", ov.OrvLTLine, index=9, color=0xC0A0FF)
    s.layer("T", ov.OrvLTText)

    def text(x, y, words, face="", size=11, style=0, pos=0, angle=0.0, fill=False, uline=False, strike=False, color=BLACK,
             back=0xFFFFFF, cross=True):
        number = s.item("T", (x, y), text=words)
        assert c.OrvSetStrStyle("T", 1, number, face, size, style, pos, angle, fill, uline, strike, color, back)
        if cross:
            s.item("CROSS", (x - 8, y), (x + 9, y))
            s.item("CROSS", (x, y - 8), (x, y + 9))

    names = ("LT", "LC", "LB", "CT", "CC", "CB", "RT", "RC", "RB")
    for i, name in enumerate(names):
        text(120 + 110 * (i // 3), 30 + 35 * (i % 3), f"{name} 地図", pos=i)
    for k in range(12):
        text(580, 100, "　　方位の字", angle=30.0 * k, size=9, cross=k == 0)
    rows = (("普通の字 plain", {}), ("太い字 bold", {"style": 1}), ("斜めの字 italic", {"style": 2}), ("太く斜め both", {"style": 3}),
            ("下線 underline", {"uline": True}), ("取消線 strike", {"strike": True}), ("背景 background", {"fill": True, "back": SAND}),
            ("縁取り halo", {"style": 4, "back": ROSE, "color": RED}))
    for i, (words, look) in enumerate(rows):
        text(15 + 170 * (i % 4), 215 + 35 * (i // 4), words, cross=False, **look)
    for i, (face, words) in enumerate((("ＭＳ 明朝", "明朝体の地名"), ("ＭＳ ゴシック", "ゴシック体の地名"), ("Arial", "Latin face"),
                                       ("no such face", "unknown face"))):
        text(15 + 170 * i, 290, words, face=face, cross=False)
    x = 15
    for size in (6, 7, 8, 9, 10, 12, 14, 18, 24):
        text(x, 330, "東京", size=size, cross=False)
        x += 30 + size * 3
    for k, angle in enumerate((45.0, 90.0, -30.0)):
        text(60 + 110 * k, (425, 425, 385)[k], "下線と背景", angle=angle, fill=True, uline=True, strike=True, back=LEAF, size=9)


def labels(c, width, height):
    """Labels of lines and areas, which take the look that the text layer before them leaves; equal texts of a block once."""
    s = Sheet(c, width, height)
    c.StrVisible = True
    c.CutSameString = True
    s.layer("T", ov.OrvLTText, index=9)
    s.item("T", (40, 30), text="同じ字")
    s.item("T", (140, 30), text="同じ字")
    number = s.item("T", (240, 30), text="別の字")
    assert c.OrvSetStrStyle("T", 1, number, "", 12, 0, ov.OrvStrPosCB, 0, False, False, False, RED, 0xFFFFFF)
    s.layer("A", ov.OrvLTPolygon, index=5, type=2, color=LEAF, color2=GREEN)
    s.item("A", *box(40, 60, 120, 50), text="area label")
    s.layer("L", ov.OrvLTLine, index=4, color=BLUE, size=2)
    s.item("L", (220, 100), (340, 60), text="line label")
    s.layer("P", ov.OrvLTPoint, index=3, type=4, color=RED)
    s.item("P", (400, 90), text="point label")


def meshes(c, width, height):
    """Mesh grids: cells left out, hatched and hollow ones, a bent grid."""
    s = Sheet(c, width, height)

    def grid(code, left, top, cols, rows, step, bend=0.0, look=None, holes=True):
        s.layer(code, ov.OrvLTMesh, **(look or {}))
        xs, ys, colors, flags = [], [], [], []
        for r in range(rows):
            for q in range(cols):
                xs.append((left + q * step + bend * math.sin(r / 2)) * s.unit)
                ys.append(-(top + r * step + bend * math.cos(q / 2)) * s.unit)
                level = math.sin(q / 2.5) * math.cos(r / 3)
                colors.append(int(120 + 100 * level) << 16 | int(200 - 60 * abs(level)) << 8 | int(130 - 100 * level))
                flags.append(not holes or (q + r) % 7 != 3)
        assert c.OrvAddMeshDat(code, 1, 1, cols, rows, xs, ys, [0.0] * len(xs))
        assert c.OrvSetMeshUseFlag(code, 1, 1, flags)
        assert c.OrvSetMeshColor(code, 1, 1, colors)

    grid("FLAT", 25, 30, 14, 14, 12, look={"outline": ov.OrvMOff})
    grid("LINED", 235, 30, 14, 14, 12, look={"outline": ov.OrvMOn, "color2": BLACK})
    grid("BENT", 460, 40, 14, 14, 12, bend=8, holes=False, look={"outline": ov.OrvMOn, "color2": GREY})


def overlay(c, width, height):
    """Overlay figures: all types, filled and combined, active with vertex marks, strings, the top figure."""
    s = Sheet(c, width, height)
    c.OrgStrVisible = True
    c.ActivePointType = ov.OrvAPMCircle

    def figure(kind, pixels, line=0, color=BLUE, fill=ov.OrvFMCopy, active=False, text=None):
        number = c.OrvMakeOrgDatEx(kind, line, color, fill)
        for x, y in pixels:
            c.OrvAddOrgPnt(number, x * s.unit, -y * s.unit)
        if active:
            c.invoke("OrvOrgDataActive", number, True)
        if text is not None:
            c.OrvSetOrgDatString(number, text, pixels[0][0] * s.unit, -pixels[0][1] * s.unit, 10, BLACK, 1)
        return number

    s.layer("UNDER", ov.OrvLTPolygon, type=0, color=SAND)
    s.item("UNDER", *box(5, 70, 690, 30))
    for row, (fill, active) in enumerate(((ov.OrvFMCopy, False), (ov.OrvFMMask, False), (ov.OrvFMCopy, True))):
        y = 30 + 80 * row
        figure(1, [(30, y + 25)], fill=fill, active=active, color=GREEN)
        figure(2, [(70, y), (120, y + 45), (150, y + 5)], fill=fill, active=active, color=RED)
        figure(2, [(170, y), (220, y + 45), (250, y + 5)], line=3, fill=fill, active=active, color=RED)
        figure(2, [(270, y), (320, y + 45), (350, y + 5)], line=-1, fill=fill, active=active, color=BLUE)
        figure(3, box(370, y, 60, 45), fill=fill, active=active, color=LEAF)
        figure(3, [(450, y), (500, y), (475, y + 45)], fill=fill, active=active, color=ROSE)
        figure(4, [(545, y + 25), (565, y + 35)], fill=fill, active=active, color=WATER)
        figure(8, [(590, y), (660, y + 45)], fill=fill, active=active, color=GREEN)
    figure(2, [(70, 268), (160, 275), (230, 262)], text="overlay text 字")
    for i, name in enumerate(("point", "line", "wide line", "dotted", "polygon", "open polygon", "circle", "ellipse")):
        s.caption((20, 80, 180, 280, 375, 445, 530, 600)[i], 6, name)


def scale_bar_metres(c, width, height):
    """The rulers in metres."""
    s = Sheet(c, width, height, 2500)
    c.OrvMapJumpToXY(1200, 800)
    s.layer("A", ov.OrvLTPolygon, type=3, color=LEAF, color2=GREEN)
    c.OrvAddDatEx("A", 1, 1, 0, [1100.0, 1300.0, 1200.0, 1100.0], [760.0, 760.0, 860.0, 760.0], [0.0] * 4)
    c.ScaleBarMode = 1


def scale_bar_degrees(c, width, height):
    """The rulers in minutes and seconds."""
    scale_bar_metres(c, width, height)
    c.ScaleBarMode = 2


SURVEY = "samples/gallery/survey.png"


def raster_sheet(c, width, height, on_top, zoom=DOTS_PER_M):
    """The sample image twice, where its world file says and turned by two control points, with layers."""
    s = Sheet(c, width, height, zoom)
    c.RastDspMode(on_top)
    assert c.RastInit(2)
    assert c.RastLoad(0, SURVEY)
    assert c.RastLoad(1, SURVEY)
    turn, size = math.radians(15), 0.8
    east, south = 200 * math.cos(turn) + 150 * math.sin(turn), 150 * math.cos(turn) - 200 * math.sin(turn)
    assert c.RastSetCP1(1, 0, 0, 260.0, -70.0)
    assert c.RastSetCP2(1, 200, 150, 260.0 + size * east, -70.0 - size * south)
    assert c.RastCalcCorrect2(1)
    s.unit = 1  # what follows lies with the image at every scale
    s.layer("AREA", ov.OrvLTPolygon, index=2, type=0, color=ROSE, color2=RED, outline=ov.OrvMOn, fill=ov.OrvFMMask)
    s.item("AREA", (150, 110), (330, 90), (350, 150), (180, 160), (150, 110))
    s.layer("ROAD", ov.OrvLTLine, index=1, color=BLUE, size=3)
    s.item("ROAD", (10, 185), (120, 100), (290, 130), (470, 20))
    return s


def raster_below(c, width, height):
    """Raster images under the layers: one by its own georeference, with its transparent corner, one turned by two control points."""
    raster_sheet(c, width, height, False)


def raster_above(c, width, height):
    """The same images above the layers: only through the transparent corner and beside the images are the layers seen."""
    raster_sheet(c, width, height, True)


def raster_turned(c, width, height):
    """Images and layers in a view turned by 25 degrees."""
    raster_sheet(c, width, height, False)
    c.Rotate = 25
    c.MapJumpToXY(240.0, -100.0)


def raster_small(c, width, height):
    """The same at less than half the scale: each pixel is the mean of those that it covers."""
    raster_sheet(c, width, height, False, DOTS_PER_M * 23 // 10)


def raster_large(c, width, height):
    """The same three times as large: the pixels of the images are seen."""
    raster_sheet(c, width, height, False, DOTS_PER_M // 3)
    c.MapJumpToXY(200.0, -75.0)


SCENES = {
    "symbols": (symbols, 700, 280),
    "small_symbols": (small_symbols, 700, 280),
    "images": (images, 700, 190),
    "line_types": (line_types, 720, 800),
    "angles": (angles, 700, 470),
    "pens": (pens, 700, 170),
    "fills": (fills, 700, 330),
    "rounds": (rounds, 700, 345),
    "texts": (texts, 700, 440),
    "labels": (labels, 500, 130),
    "meshes": (meshes, 700, 230),
    "overlay": (overlay, 700, 295),
    "raster_below": (raster_below, 480, 200),
    "raster_above": (raster_above, 480, 200),
    "raster_turned": (raster_turned, 480, 280),
    "raster_small": (raster_small, 240, 100),
    "raster_large": (raster_large, 480, 240),
    "scale_bar_metres": (scale_bar_metres, 500, 300),
    "scale_bar_degrees": (scale_bar_degrees, 500, 300),
}


def draw(name, device):
    """The control of a scene after its frame; on "record" its verbs are those of that frame alone."""
    scene, width, height = SCENES[name]
    control = ov.Orvane4Ctrl(width=width, height=height, device=device)
    scene(control, width, height)
    if device == "record":
        control.verbs()
    control.OrvReDraw()
    return control


def lines(control):
    """The verbs that a recording control has drawn since the last call, one a line."""

    def told(value):
        if isinstance(value, bytes) and len(value) > 1000:
            return f"{len(value)} bytes"  # the pixels of a picture
        if isinstance(value, bytes):
            return "".join(chr(b) if 0x20 <= b < 0x7F else f"\\x{b:02X}" for b in value).join('""')
        if isinstance(value, (tuple, list)):
            return "(" + " ".join(told(v) for v in value) + ")"
        return str(value)

    return [" ".join([str(context), name, *(told(v) for v in values)]) for context, name, values in control.verbs()]
