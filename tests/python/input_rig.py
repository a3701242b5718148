"""What the tests of input and picking share: a host that hears every event, hands on the mouse, and the state seen afterwards."""

import orvane4
from drawing_rig import at_scale, put
from map_rig import HEIGHT, PIXEL_ZOOM, SRCCOPY, WIDTH, bit_blts, composed, drain, dump, verbs, view

EVENTS = [each["name"] for each in orvane4.members() if each["kind"] == "event"]
STOCK = {"MouseDown", "MouseUp", "MouseMove"}
LEFT, RIGHT, SHIFT, CTRL = 1, 2, 4, 8
NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS = 0, 10, 50, 51
ADDING, MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY, DELETE = 101, 200, 210, 220, 250, 260, 300
ESCAPE, DELETE_KEY = 27, 46
ARROW, CROSS, PAN_HAND, SCROLL_HAND = "arrow", "cross", "pan", "scroll"
SCROLL_TIMER, HINT_TIMER, RECT_TIMER, PAN_TIMER = 1, 2, 3, 11


def listening(host):
    """A list that every event of the control goes to as (name, argument, ...)."""
    heard = []
    for name in EVENTS:
        host.control.connect(name, lambda *args, name=name: heard.append((name, *args)))
    return heard


def once(host, event):
    """An emptied list that one event of the control goes to. Handlers add up, so the list of a host is always the same."""
    lists = host.__dict__.setdefault("heard_by_event", {})
    if event not in lists:
        lists[event] = []
        host.control.connect(event, lambda *args, heard=lists[event]: heard.append(args))
    lists[event].clear()
    return lists[event]


def taken(heard):
    """What was heard since the last call."""
    told = list(heard)
    heard.clear()
    return told


def names(heard):
    return [name for name, *_ in heard]


def own(heard):
    """The events of the map, without those of the mouse."""
    return [each for each in heard if each[0] not in STOCK]


# --- The hand ------------------------------------------------------------------------------------------------------------------


def press(host, x, y, keys=0):
    host.control.mouse("ldown", LEFT | keys, x, y)


def release(host, x, y, keys=0):
    host.control.mouse("lup", keys, x, y)


def click(host, x, y, keys=0):
    press(host, x, y, keys)
    release(host, x, y, keys)


def move(host, x, y, flags=0):
    host.control.mouse("move", flags, x, y)


def double_click(host, x, y, keys=0):
    click(host, x, y, keys)
    host.control.mouse("ldbl", LEFT | keys, x, y)
    release(host, x, y, keys)


def drag(host, start, end, keys=0):
    """A drag of the left button. The keys are held when the button goes up, since a move with a key is no drag."""
    press(host, *start)
    move(host, *end, LEFT)
    release(host, *end, keys)


def tick(host, timer, times=1):
    for _ in range(times):
        host.control.tick(timer)


def timers(host):
    """The periods of the timers that run, by their numbers."""
    running = host.control.timers
    return dict(running() if callable(running) else running)


# --- What is seen afterwards ---------------------------------------------------------------------------------------------------


def where(host):
    return view(host, "ViewX"), view(host, "ViewY")


def selected(host, code="A", mesh=1):
    """The numbers of the active items of a block, in the order of the block."""
    found = next(each for each in dump(host)["blocks"]
                 if each["code"] == code.encode() and each["meshNo"] == mesh and each["blkState"] >= 0)
    return [each["datID"] for each in found["dats"] or [] if each["active"]]


def relaid(drawn):
    """Whether the overlay figures alone were laid anew over the base buffer, and shown."""
    return not composed(drawn) and any(blt[4] == "base" for blt in bit_blts(drawn, "top")) and bool(bit_blts(drawn, "window"))


def restored(drawn):
    """Whether the whole client area was copied from the top buffer and nothing else was drawn."""
    blits = bit_blts(drawn, "window")
    return blits == [(0, 0, WIDTH, HEIGHT, "top", 0, 0, SRCCOPY)] and not composed(drawn)


def drawn_after(host, action):
    drain(host)
    action()
    return verbs(host)


def shown(lay_type, *items, zoom=PIXEL_ZOOM, newer=False, select=True, **settings):
    """A host with layer "A" of the items 1, 2, ..., painted, its Shift clicks counted from 0."""
    host = at_scale(zoom, newer)
    host.control.RunMode = NORMAL
    assert host.add_block("A", 1, lay_type)
    for dat_id, pixels in enumerate(items, 1):
        put(host, dat_id, *pixels)
    for name, args in settings.items():
        assert getattr(host, name)("A", *(args if isinstance(args, tuple) else (args,)))
    return ready(host, select)


def ready(host, select=True):
    """Paints, and leaves the count of Shift clicks, which all controls share, at 0."""
    host.control.SetDataSelectMode(False)
    click(host, 0, 0)
    host.control.SetDataSelectMode(select)
    host.RDMReDraw()
    drain(host)
    return host


def add_layer(host, code, lay_type, index, *items, mesh=1, first=1):
    """A further layer; of two layers the one with the smaller index lies on top."""
    assert host.add_block(code, mesh, lay_type, index)
    for dat_id, pixels in enumerate(items, first):
        host.add_item(code, mesh, dat_id, [(x * host.unit, -y * host.unit, *rest) for x, y, *rest in pixels])


def picked_at(host, x, y, keys=0):
    """The number of the item that a click selects alone, or None."""
    heard = once(host, "OnDataClick")
    click(host, x, y, keys)
    drain(host)
    return heard[0][0] if heard else None


# --- Areas of pixels -----------------------------------------------------------------------------------------------------------


def inside(corners, x, y):
    """Whether a point lies in a polygon, by the count of crossings of a ray to the right."""
    hit = False
    for (ax, ay), (bx, by) in zip(corners, corners[1:] + corners[:1]):
        if (ay > y) != (by > y) and x < ax + (y - ay) * (bx - ax) / (by - ay):
            hit = not hit
    return hit


def sure(area, x, y):
    """True well within an area, False well outside, None within a pixel of its edge. The area is a function of a point."""
    around = {area(x + dx, y + dy) for dx in (-1, 0, 1) for dy in (-1, 0, 1)}
    return around.pop() if len(around) == 1 else None


def assert_picks(host, area, pixels, number=1):
    """Clicks each pixel of which the area is sure, and compares. Tells how many were inside and outside."""
    told = {True: 0, False: 0}
    for x, y in pixels:
        expected = sure(area, x, y)
        if expected is not None:
            assert picked_at(host, x, y) == (number if expected else None), (x, y)
            told[expected] += 1
    assert min(told.values()) > 0, "the pixels tried lie on both sides"
    return told


def grid(left, top, right, bottom, step=1):
    return [(x, y) for y in range(top, bottom + 1, step) for x in range(left, right + 1, step)]
