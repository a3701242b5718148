"""What the tests of the edit tools share: hosts with items to edit, tools started on them, and what the tools leave behind."""

import pytest
from input_rig import ADD_POINT, COPY, DELETE, DELETE_POINT, ESCAPE, LEFT, MOVE, MOVE_POINT, press, shown, taken
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, block, dump, item
from overlay_rig import RED

ADD = 100
CANCELLED = 999
START, END = "OnEditorStart", "OnEditorEnd"
PICKING = [MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY, DELETE]
LOADING = [MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY]

SPOT = [(200, 150)]
STROKE = [(100, 100), (300, 100), (300, 300), (100, 300)]
SQUARE = [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)]
DISC = [(400, 300, 50)]
OVAL = [(100, 100), (300, 200)]
EMPTY = (700, 550)

# Of each kind of data an item, and a pixel at which it is picked.
KINDS = {POINT: (SPOT, (200, 150)), LINE: (STROKE, (200, 100)), POLYGON: (SQUARE, (200, 200)), CIRCLE: (DISC, (400, 300)),
         ELLIPSE: (OVAL, (200, 150))}
EACH_KIND = pytest.mark.parametrize("kind", KINDS, ids=["point", "line", "polygon", "circle", "ellipse"])
BY = pytest.mark.parametrize("cancel", ["method", "key"])
BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


def cancelled(host, cancel="method"):
    if cancel == "method":
        host.control.OrvCancelOrgEdit()
    else:
        host.control.key(ESCAPE)


def editable(lay_type, *items, newer=False, **settings):
    """A painted host with the layer "A" of items 1, 2, ... that the tools may pick."""
    return shown(lay_type, *items, newer=newer, SetLayEditFlg=True, **settings)


def one(kind, newer=False):
    """A host with the one item of its kind, and the pixel that picks it."""
    points, at = KINDS[kind]
    return editable(kind, points, newer=newer), at


def another_layer(host, code, lay_type, *items, index=5):
    assert host.add_block(code, 1, lay_type, index)
    assert host.SetLayEditFlg(code, True)
    for number, pixels in enumerate(items, 1):
        host.add_item(code, 1, number, [(x, -y, *rest) for x, y, *rest in pixels])
    host.RDMReDraw()


def begin(host, tool, dat_id=0, code="A", mesh=1):
    """Starts a tool on the item of that number, or for a pick where there is none."""
    assert host.DigDatEditor(code, mesh, dat_id, tool) == 0


def pick(host, tool, at):
    """Starts a tool that picks, and picks."""
    begin(host, tool, code="")
    press(host, *at)


def picked(kind, tool, newer=False):
    host, at = one(kind, newer)
    pick(host, tool, at)
    return host


def finish(host, x, y, keys=0):
    """The second press of a double click."""
    host.control.mouse("ldbl", LEFT | keys, x, y)


def told(heard):
    """The events of the tools since the last call."""
    return [each for each in taken(heard) if each[0] in (START, END)]


def mode(host):
    return host.control.RunMode


# --- What the store holds ----------------------------------------------------------------------------------------------------


def shape(host, dat_id=1, code="A"):
    """The points of an item as pixels of a view that shows map point (x, -y) at pixel (x, y)."""
    origin = block(host, code, 1)
    return [(x + origin["GX"], -(y + origin["GY"])) for x, y, _ in item(host, code, 1, dat_id)["pnts"] or []]


def heights(host, dat_id=1, code="A"):
    return [z for _, _, z in item(host, code, 1, dat_id)["pnts"]]


def tag_and_active(host, dat_id=1, code="A"):
    found = item(host, code, 1, dat_id)
    return found["lineTag"], bool(found["active"])


def plain(pixels):
    return [(x, y) for x, y, *_ in pixels]


def numbers(host, code="A"):
    return [each["datID"] for each in block(host, code, 1)["dats"] or []]


def marked(host, tag, active=False, dat_id=1, code="A"):
    assert host.control.SetDigDatInfoEx(code, 1, dat_id, tag, active) == 1
    host.RDMReDraw()
    return host


# --- The rubber figure -------------------------------------------------------------------------------------------------------


def figures(host):
    return list(dump(host)["orgDats"] or [])


def rubber(host):
    """The points of the one figure there is, as pixels."""
    (found,) = figures(host)
    return [(x, -y) for x, y, *_ in found["pnts"] or []]


def is_red_figure(host, number, count, kind, line=1):
    """Whether the overlay members tell of a red, unfilled figure of that many points."""
    return host.GetOrgDatEx(number) == (count, kind, line, RED, 0)


def clean(host):
    """Whether no tool has left anything on the map."""
    return mode(host) == 0 and figures(host) == []
