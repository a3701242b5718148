"""What the tests of the automation surface share: a control ready to use, both families of names, and readable verbs.

Nothing here knows how the control works; it only turns what the module gives back into what a test wants to say.
"""

import collections
import pathlib

import orvane4

WIDTH, HEIGHT = 800, 600
# The off-screen desktop is 1920 pixels on 508 mm.
DOTS_PER_M = 1920 * 1000 // 508
# At this scale a map unit is a pixel.
PIXEL_ZOOM = DOTS_PER_M

POINT, LINE, POLYGON, CIRCLE, TEXT, ELLIPSE, MESH = 1, 2, 3, 4, 5, 8, 10

WHITENESS, BLACKNESS, SRCCOPY = 0x00FF0062, 0x00000042, 0x00CC0020
RGN_OR, RGN_COPY = 2, 5
R2_MASKPEN, R2_COPYPEN = 9, 13
CLIENT = (0, 0, WIDTH, HEIGHT)
EMPTY_RECT = (99999999, 99999999, -99999999, -99999999)


def surface_lines():
    """The hand-written surface: its members as (dispid, result, name, arguments) and its pairs of names."""
    members, pairs = [], []
    for line in (pathlib.Path(__file__).parent / "surface_members.txt").read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        if " = " in line:
            pairs.append(tuple(line.split(" = ")))
        else:
            head, args = line[:-1].split("(")
            dispid, result, name = head.split(" ")
            members.append((int(dispid), result, name, args))
    return members, pairs


NEWER_NAME = dict(surface_lines()[1])


class Host:
    """A control as a host of one family of names calls it: attributes are older names, sent under the newer ones if asked to.

    Members that have one name only are called by it in both families.
    """

    def __init__(self, newer, control=None, **window):
        self.newer = newer
        self.control = control or orvane4.Orvane4Ctrl(**{"width": WIDTH, "height": HEIGHT, "device": "record", **window})

    def __getattr__(self, name):
        return getattr(self.control, NEWER_NAME.get(name, name) if self.newer else name)

    def init(self):
        return self.control.OrvInit() if self.newer else self.control.RDMInit("0")

    def add_block(self, code, mesh, lay_type, index=1):
        """A block with its origin at (0, 0), made as the family makes it."""
        if self.newer:
            return self.control.OrvAddLayer(code, mesh, lay_type, index)
        return self.control.DigMemAlloc2(code, mesh, lay_type, "", index, 0, 0)

    def jump_to_data(self, code, mesh, dat_id, active):
        if self.newer:
            return self.control.OrvMapJumpToData(code, mesh, dat_id, active)
        return self.control.MapJumpToData(dat_id, code, mesh, active)

    def add_item(self, code, mesh, dat_id, points, tag=0):
        """An item with its points, one by one. A point is (x, y) or (x, y, z)."""
        assert self.AddDigDat(code, mesh, dat_id, tag)
        for point in points:
            x, y, z = (*point, 0)[:3]
            assert self.AddDigDatPnt(code, mesh, dat_id, x, y, z)


def painted(newer=False, **window):
    """A host whose control has been initialised and painted, with nothing left in its verb list."""
    host = Host(newer, **window)
    assert host.init()
    host.control.paint()
    drain(host)
    return host


def one_to_one(newer=False, **window):
    """A painted host on which map point (x, -y) is client pixel (x, y)."""
    host = painted(newer, **window)
    host.control.Zoom = PIXEL_ZOOM
    host.MapJumpToXY(WIDTH / 2, -HEIGHT / 2)
    drain(host)
    assert (view(host, "ViewX"), view(host, "ViewY")) == (0, 0)
    return host


# --- The store -------------------------------------------------------------------------------------------------------------


def dump(host):
    return (host.control if isinstance(host, Host) else host).dump()


def view(host, field):
    return dump(host)["view"][field]


def as_bytes(text):
    return text if isinstance(text, bytes) else text.encode("cp932")


def picked(record, like):
    """The fields of a record that a test tells of."""
    return {field: record[field] for field in like}


def layer(host, code):
    return next((each for each in dump(host)["layers"] if each["code"] == as_bytes(code)), None)


def sub_layers(host, code):
    return layer(host, code)["subLays"]


def block(host, code, mesh):
    """The block in use with that key, whether or not the index knows it."""
    return next((each for each in dump(host)["blocks"]
                 if each["blkState"] >= 0 and each["code"] == as_bytes(code) and each["meshNo"] == mesh), None)


def items(host, code, mesh):
    return block(host, code, mesh)["dats"]


def item(host, code, mesh, dat_id):
    return next((each for each in items(host, code, mesh) or [] if each["datID"] == dat_id), None)


def bounds(host, code, mesh):
    found = block(host, code, mesh)
    return tuple(found[side] for side in ("minX", "minY", "maxX", "maxY"))


def index_keys(host):
    """The display index from the bottom of the drawing to its top, as (code, meshNo)."""
    whole = dump(host)
    return [(whole["layers"][lay]["code"].decode("cp932"), whole["blocks"][blk]["meshNo"]) for blk, lay in whole["digIndex"]]


# --- The verbs -------------------------------------------------------------------------------------------------------------

Verb = collections.namedtuple("Verb", "context name values")


def drain(host):
    (host.control if isinstance(host, Host) else host).verbs()


def verbs(source, context=None, name=None):
    """What was drawn since the last call, on one context and by one verb where asked."""
    taken = (source.control if isinstance(source, Host) else source).verbs()
    every = [Verb(ctx, verb, tuple(frozen(value) for value in values)) for ctx, verb, values in taken]
    return [each for each in every if context in (None, each.context) and name in (None, each.name)]


def frozen(value):
    return tuple(frozen(each) for each in value) if isinstance(value, (list, tuple)) else value


def named(drawn, name, context=None):
    return [each for each in drawn if each.name == name and context in (None, each.context)]


def pat_blts(drawn, context):
    return [each.values for each in named(drawn, "PatBlt", context)]


def bit_blts(drawn, context):
    return [each.values for each in named(drawn, "BitBlt", context)]


Drawn = collections.namedtuple("Drawn", "verb pen brush rop2")


def pens(drawn, context="base"):
    """The verbs of a context with the pen, brush and raster operation that were in force at each.

    A pen is (style, width, colour), a brush ("solid", colour) or ("hatch", number, colour). None: as the context had it before.
    """
    pen = brush = rop2 = None
    told = []
    for each in drawn:
        if each.context != context:
            continue
        chosen = each.values[0] if each.values and isinstance(each.values[0], tuple) and each.values[0] else None
        if each.name.startswith("Select") and chosen and chosen[0] == "Pen":
            pen = chosen[1:4]
        elif each.name.startswith("Select") and chosen and chosen[0] == "Brush":
            _, style, colour, hatch = chosen
            brush = ("hatch", hatch, colour) if style == 2 else ("solid", colour)
        elif each.name == "SetROP2":
            rop2 = each.values[0]
        told.append(Drawn(each, pen, brush, rop2))
    return told


def drawn_by(drawn, name, context="base"):
    return [each for each in pens(drawn, context) if each.verb.name == name]


def composed(drawn):
    """Whether a frame was composed anew, which begins with whitening the base buffer's client area."""
    return (0, 0, WIDTH, HEIGHT, WHITENESS) in pat_blts(drawn, "base")


# --- Numbers ---------------------------------------------------------------------------------------------------------------


def to_int(v):
    return int(v + 0.5)


def pix_to_world_f(v, zoom, dots=DOTS_PER_M):
    return float(zoom) * v / float(dots)


def world_to_pix_f(v, zoom, dots=DOTS_PER_M):
    return float(dots) * v / float(zoom)


def scrolled_to(old, new, zoom=PIXEL_ZOOM):
    """Where a drawn scroll from one position to another leaves the view: the picture moves by whole pixels only.

    Whole pixels are found by adding a half and cutting toward zero, so a move to the left or upward by n pixels shows n - 1.
    """
    pixels = world_to_pix_f(new - old, zoom)
    return new - pix_to_world_f(pixels - to_int(pixels), zoom)
