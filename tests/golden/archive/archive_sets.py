"""The maps whose archives are kept in this folder, and the program that writes the files: `python3 archive_sets.py`.

`v110` and `v100` hold a map that the members of the control can make; every number is written out here, rectangles and bounds
too. `full110` and `full100` hold what members cannot make: fields filled to the last byte, the ends of their ranges, and noise
wherever a reader looks away.
"""

import pathlib

import archive_bytes

FOLDER = pathlib.Path(__file__).resolve().parent
DEFAULTS = {"layerName": b"", "color": 0xDCDCDC, "color2": 0, "lineType": 0, "lineSize": 1, "pgnType": 0, "pntType": 0,
            "dspFlg": 1,
            "outLine": 1, "spareFlg": 1, "fillMode": 1, "imgMode": 0, "imgPos": 0, "imgfname": b"", "imgactfname": b"",
            "bmWidth": 0,
            "bmHeight": 0, "imgMinScl": 0.0, "imgMaxScl": 0.0}
PLAIN_TEXT = {"z": 0.0, "fntname": b"", "size": 10, "style": 0, "fill": 0, "pos": 0, "uline": 0, "strike": 0, "angle": 0.0,
              "fcolor": 0, "bcolor": 0xFFFFFF}
INSIDE_OUT = (99999999, 99999999, -99999999, -99999999)


def lay(code, lay_type=1, index=1, **fields):
    return {**DEFAULTS, "code": code, "layType": lay_type, "layIndex": index, **fields}


def item(dat_id, *points, rect=None, tag=0, mesh=None, text=None, **claims):
    """Without a rectangle given, the points are whole numbers and their box is the rectangle."""
    points = [(*point, 0.0)[:3] for point in points]
    if rect is None:
        xs, ys = [int(x) for x, _, _ in points], [int(y) for _, y, _ in points]
        assert all(x == int(x) and y == int(y) for x, y, _ in points)
        rect = (min(xs), min(ys), max(xs), max(ys)) if points else INSIDE_OUT
    return {"datID": dat_id, "lineTag": tag, "rect": rect, "pnts": points or None, "meshAttr": mesh, "str": text,
            "claims": claims}


def grid(hcnt, vcnt, flags, colors):
    return {"hcnt": hcnt, "vcnt": vcnt, "useFlag": list(flags), "meshColor": list(colors)}


def text(content, x=0.0, y=0.0, **fields):
    return {**PLAIN_TEXT, "text": content, "x": x, "y": y, **fields}


def box(items):
    """The bounds that a read gives a block: the union of its items' rectangles."""
    rects = [each["rect"] for each in items]
    return tuple(float(side(rect[at] for rect in rects)) for at, side in enumerate((min, min, max, max))) if rects else (0.0,) * 4


def blk(code, mesh_no, *items, path=b"", origin=(0.0, 0.0), bounds=None):
    return {"code": code, "meshNo": mesh_no, "items": list(items), "path": path, "GX": origin[0], "GY": origin[1],
            "bounds": bounds or box(items)}


# --- What members can make ---------------------------------------------------------------------------------------------------

ROAD = "道路".encode("cp932")
LONG_CODE = b"polygons-" + b"x" * 41
GOTHIC = "ＭＳ ゴシック".encode("cp932")
assert len(LONG_CODE) == 50

MADE_LAYERS = [
    lay(b"P1", 1, 5, layerName=b"Poin", color=0x112233, color2=0x445566, pntType=3, imgMode=1, imgPos=4,
        imgfname="画像\\表.bmp".encode("cp932"), imgactfname=b"img\\active.bmp", bmWidth=32, bmHeight=24, imgMinScl=100.5,
        imgMaxScl=50000.25),
    lay(ROAD, 2, 3, color=0x00FF80, lineType=7, lineSize=3, dspFlg=0),
    lay(LONG_CODE, 3, 9, lineType=2, pgnType=9, outLine=0, fillMode=0),
    lay(b"C", 4, 1),
    lay(b"T", 5, -2147483648),
    lay(b"E", 8, 2147483647),
    lay(b"M", 10, 4),
    lay(b"NO DATA", 2, 8),
]
MADE_BLOCKS = [
    blk(b"P1", 533945,
        item(1, (10.25, 20.75), rect=(10, 20, 10, 21)),
        item(2, (-3.9, -7.5, 12.5), rect=(-3, -7, -3, -7), tag=-1, text=text(b"two, and a comma", -3.9, -7.5)),
        path=b"D:\\map\\P533945.pnt", origin=(-30000.0, 40000.0), bounds=(-3.9, -7.5, 10.25, 20.75)),
    blk(ROAD, 1,
        item(7, (0.1, 0.2), (1000.123456789, -2000.5, 3.25), (5.5, 6.5, 1e-9), rect=(0, -2000, 1000, 7), tag=127),
        item(8, tag=5),
        bounds=(0.1, -2000.5, 1000.123456789, 6.5)),
    blk(LONG_CODE, -5,
        item(-1, (0.0, 0.0), (100.0, 0.0), (100.0, 50.5), (0.0, 0.0), rect=(0, 0, 100, 51), tag=200),
        path="C:\\表\\面.pgn".encode("cp932"), origin=(7.0, -8.0), bounds=(0.0, 0.0, 100.0, 50.5)),
    blk(b"C", 1, item(1, (10.5, 20.5, 5.25), rect=(5, 15, 16, 26)), bounds=(5.25, 15.25, 15.75, 25.75)),
    blk(b"T", 1,
        item(1, (1.0, 2.0), text=text("道路 A".encode("cp932"), 1.5, -2.5, fntname=GOTHIC, size=300, style=7, fill=1, pos=8,
                                      uline=1,
                                      strike=1, angle=12.5, fcolor=0x112233, bcolor=0xFF445566)),
        item(2, (3.0, 4.0), text=text(b"", 3.0, 4.0))),
    blk(b"E", 1, item(1, (1.0, 2.0), (30.0, 40.0)), path=b"e", origin=(0.0, 0.0)),
    blk(b"M", 1,
        item(1, (0.0, 0.0, 9.0), (1.0, 0.0, 9.0), (2.0, 0.0, 9.0), (0.0, 1.0, 9.5), (1.0, 1.0, 9.5), (2.0, 1.0, -9.5),
             mesh=grid(3, 2, [255] * 6, [0, 1, 0xFFFFFFFF, 0x80000000, 0x123456, 5]), text=text(b"grid", 7.0, 8.0)),
        item(2, (3.0, 0.0), (4.0, 0.0), mesh=grid(2, 1, [1, 0], [0, 0]))),
]

# --- What members cannot make ------------------------------------------------------------------------------------------------

FULL_LAYERS = [
    lay(b"k" * 50, 1, -7, layerName=b"n" * 255, color=0xFFFFFFFF, color2=0x80000000, lineType=-1, lineSize=2147483647,
        pgnType=-2147483648, pntType=9999, dspFlg=0, spareFlg=0, imgPos=-4, imgfname=b"f" * 511, imgactfname=b"a" * 511,
        bmWidth=-1,
        bmHeight=2147483647, imgMinScl=-1e300, imgMaxScl=5e-324),
    lay(b"\x95\x5c,\x83\x5c", 10, 0, layerName=b"\r\n\"'%s", imgMode=1, outLine=0),
    lay(b"lower", 77, 1),
    lay(b"LOWER", 6, 1),
]
FULL_BLOCKS = [
    blk(b"k" * 50, 2147483647,
        item(2147483647, (0.5, -0.25, 1e-300), rect=(-2147483648, -1, 2147483647, 1), tag=-128),
        item(-2147483648, (1e308, -1e308, 0.1), rect=(5, 6, 7, 8), tag=127,
             text=text(b"t" * 3000, -1e9, 1e9, z=-0.125, fntname=b"g" * 64, size=127, style=-128, pos=-1, fill=1, strike=1,
                       angle=-359.875, fcolor=0xFFFFFFFF, bcolor=0x80000000)),
        path=b"p" * 511, origin=(1234.5, -0.0625)),
    blk(b"\x95\x5c,\x83\x5c", -2147483648,
        item(1, (1.0, 2.0, 3.0), (4.0, 5.0, 6.0), rect=(9, 8, 7, 6), mesh=grid(-3, 2147483647, [5, 128], [1, 0xFFFFFFFF]),
             text=text(b"line\r\nbreak,\x95\x5c", uline=1)),
        item(1, (1.0, 2.0, 3.0), rect=(0, 0, 0, 0), mesh=grid(0, 0, [0], [0])),
        item(0, mesh=grid(1, 1, [], [])),
        path=b"second", origin=(1e15, -1e-15)),
    blk(b"lower", 0, item(3, (1.0, 1.0)), path=b"x"),
    blk(b"LOWER", 0, item(4, (2.0, 2.0)), path=b"X", origin=(0.0, 5.0)),
]


def kept_files():
    """Every kept file's content by its name."""
    told = {}
    for version, digits in (("1.10", "110"), ("1.00", "100")):
        for base, layers, blocks, noise in (("v", MADE_LAYERS, MADE_BLOCKS, False), ("full", FULL_LAYERS, FULL_BLOCKS, True)):
            for extension, content in archive_bytes.files(version, layers, blocks, noise).items():
                told[f"{base}{digits}.{extension}"] = content
        told[f"v{digits}.Ovt"] = archive_bytes.text_file(version, MADE_BLOCKS)
    return told


if __name__ == "__main__":
    for name, content in kept_files().items():
        (FOLDER / name).write_bytes(content)
