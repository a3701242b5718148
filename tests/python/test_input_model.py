"""Mouse, timers, keys and wheel in random order, compared step by step with a plain model of the handlers.

The map is empty, so that no pick finds anything: what is compared is which events come in which order, which timers run, the
shape of the cursor, and whether a frame was composed, laid anew or restored.
"""

import math
import random

import pytest
from drawing_rig import at_scale
from input_rig import (ALL_CLICKS, ARROW, CTRL, DELETE_KEY, ESCAPE, LEFT, NORMAL, PAN, PAN_HAND, RIGHT, SCROLL_HAND, SHIFT,
                       SHIFT_CLICKS, listening, ready, relaid, taken, timers)
from map_rig import HEIGHT, WIDTH, bit_blts, composed, drain, named, verbs, view

UNKNOWN = 7
NOTHING, COMPOSED, RELAID, RESTORED, BAND, ANY = "nothing", "composed", "relaid", "restored", "band", "any"


def keys_of(flags):
    return (1 if flags & SHIFT else 0) | (2 if flags & CTRL else 0)


class Model:
    """The handlers without a map. Each returns what it draws and leaves its events in `told`."""

    def __init__(self):
        self.run, self.select, self.scroll, self.zoom_mode = NORMAL, True, 0, 0
        self.rect, self.start, self.end = 0, (0, 0), (0, 0)
        self.last, self.anchor, self.time, self.clock, self.cursor_at = (0, 0), (0, 0), 0.0, 0.0, (0, 0)
        self.after_double, self.scrolling, self.timers, self.shape, self.told = False, 0, {}, ARROW, []

    def ldown(self, flags, at):
        drawn = NOTHING
        if self.run == PAN:
            self.anchor, self.scrolling, self.shape, self.timers[11] = at, 1, PAN_HAND, 100
        elif self.run in (SHIFT_CLICKS, ALL_CLICKS):
            drawn = RELAID
        else:
            if self.rect == 0:
                self.rect, self.start = 1, at
            if self.zoom_mode == 0 and not self.select:
                self.told.append(("OnDataClick", 0, "", 0, *at))
        self.told.append(("MouseDown", 1, keys_of(flags), *at))
        return drawn

    def lup(self, flags, at):
        drawn = NOTHING
        if self.after_double:
            self.after_double = False
        elif self.run == PAN:
            self.scrolling, self.shape, drawn = 0, ARROW, COMPOSED
            self.timers.pop(11, None)
        elif self.rect == 2:
            drawn = self.end_of_rectangle(at)
        elif self.run == NORMAL:
            self.rect = 0
            if self.select:
                drawn = COMPOSED
            else:
                self.told.append(("OnDataClick", 0, "", 0, *at))
        self.told.append(("MouseUp", 1, keys_of(flags), *at))
        return drawn

    def end_of_rectangle(self, at):
        self.rect = 0
        self.timers.pop(3, None)
        wide, tall = abs(at[0] - self.start[0]), abs(at[1] - self.start[1])
        if wide == tall == 0:
            return NOTHING
        if wide < 5 and tall < 5:
            return RESTORED
        if self.zoom_mode:
            self.zoom_mode = 0
            return COMPOSED
        return COMPOSED if self.run == NORMAL else NOTHING

    def ldbl(self, flags, at):
        if not flags & (SHIFT | CTRL):
            self.after_double = True
        return NOTHING

    def rdown(self, flags, at):
        self.rect = 0
        if self.scroll == 10 and not self.scrolling:
            self.anchor, self.scrolling, self.shape, self.timers[1] = at, 1, SCROLL_HAND, 30
        self.told.append(("MouseDown", 2, keys_of(flags), *at))
        return NOTHING

    def rup(self, flags, at):
        self.told.append(("MouseUp", 2, keys_of(flags), *at))
        if self.scroll != 10:
            return NOTHING
        self.scrolling, self.shape = 0, ARROW
        self.timers.pop(1, None)
        return COMPOSED

    def move(self, flags, at):
        if at != self.last or flags == RIGHT:
            self.timers.pop(2, None)
        if flags == RIGHT:
            self.anchor = at
            return NOTHING
        if flags == LEFT:
            tracks = self.run == NORMAL and self.select
            if tracks or (self.run not in (PAN, SHIFT_CLICKS, ALL_CLICKS) and self.zoom_mode > 0):
                if self.rect == 1:
                    self.rect, self.timers[3] = 2, 100
                self.end = at
                return NOTHING
        elif self.run == NORMAL:
            self.rect, self.timers[2], self.time = 0, 10, self.clock
        self.last = at
        if not self.scrolling:
            self.told.append(("MouseMove", 1 if flags == LEFT else 0, 0, *at))
        return NOTHING

    def tick(self, number):
        if number not in self.timers:
            return NOTHING
        inside = 0 <= self.cursor_at[0] < WIDTH and 0 <= self.cursor_at[1] < HEIGHT
        if number == 2:
            if self.cursor_at != self.last or math.floor(self.clock) > math.floor(self.time) + 1:
                del self.timers[2]
        elif number == 3:
            return BAND if self.rect == 2 else ANY  # a rectangle that was given up is left to a test of its own
        elif not inside:
            self.scrolling, self.shape = 0, ARROW
            self.timers.pop(1, None)
        elif number == 1:
            return ANY
        elif self.anchor != self.cursor_at:
            self.anchor = self.cursor_at
            return ANY
        return NOTHING


def drawn_kind(drawn):
    if composed(drawn):
        return COMPOSED
    if relaid(drawn):
        return RELAID
    if named(drawn, "Polyline", "window"):
        return BAND
    if bit_blts(drawn, "window"):
        return RESTORED
    return ANY if drawn else NOTHING


def send(rng, host, model):
    """One random message to both; what the model draws."""
    near, wild = (rng.randrange(200, 206), rng.randrange(300, 305)), (rng.randrange(-50, 900), rng.randrange(-50, 700))
    at = near if rng.random() < 0.6 else wild
    kind = rng.choice(["ldown", "lup", "lup", "move", "move", "move", "move", "move", "rdown", "rup", "ldbl"])
    held = {"ldown": LEFT, "rdown": RIGHT, "ldbl": LEFT}.get(kind, 0)
    flags = held | (rng.choice([0, 0, 0, SHIFT, CTRL, SHIFT | CTRL]))
    if kind == "move":
        flags = rng.choice([LEFT, LEFT, LEFT, LEFT, 0, 0, RIGHT, rng.randrange(16)])
    host.control.mouse(kind, flags, *at)
    return (kind, flags, at), getattr(model, kind)(flags, at)


def pass_time(rng, host, model):
    model.clock = round(model.clock + rng.choice([0.2, 0.9, 1.5]), 1)
    if rng.random() < 0.5:
        model.cursor_at = rng.choice([model.last, model.last, model.anchor, (400, 300), (WIDTH, 5), (-1, 0), (0, 0)])
    host.control.clock, host.control.cursor_pos = model.clock, model.cursor_at
    number = rng.choice([1, 2, 2, 3, 11, 5])
    host.control.tick(number)
    return ("tick", number, model.cursor_at), model.tick(number)


def host_writes(rng, host, model):
    name, value = rng.choice([("run", NORMAL), ("run", NORMAL), ("run", PAN), ("run", SHIFT_CLICKS), ("run", ALL_CLICKS),
                              ("run", UNKNOWN), ("select", False), ("select", True), ("scroll", 10), ("scroll", 0),
                              ("zoom_mode", 77), ("zoom_mode", 0), ("zoom_mode", -3)])
    setattr(model, name, value)
    if name == "select":
        host.control.SetDataSelectMode(value)
    elif name == "zoom_mode":
        host.control.OrvRectZoom(value)
    else:
        setattr(host.control, {"run": "RunMode", "scroll": "ScrollMode"}[name], value)
    return (name, value), NOTHING


def press_key(rng, host, model):
    key = rng.choice([DELETE_KEY, ESCAPE, 65])
    host.control.key(key)
    return ("key", key), {DELETE_KEY: RELAID, ESCAPE: COMPOSED}.get(key, NOTHING)


@pytest.mark.parametrize("seed", range(30))
def test_events_timers_cursor_and_frames_are_those_of_the_model_after_each_of_many_messages(seed):
    rng = random.Random(seed)
    host, model = ready(at_scale()), Model()
    heard = listening(host)
    done = []
    for _ in range(400):
        act = rng.choices([send, pass_time, host_writes, press_key], [80, 25, 8, 2])[0]
        drain(host)
        what, expected = act(rng, host, model)
        done.append(what)
        told = taken(heard)
        if what[0] == "ldbl":
            told = [each for each in told if each[0] != "MouseDown"]
        assert told == model.told, done[-6:]
        model.told.clear()
        seen = drawn_kind(verbs(host))
        assert expected in (ANY, seen), done[-6:]
        state = (timers(host), host.control.cursor, view(host, "ScrollActive"), view(host, "RectZoomMode"), host.control.RunMode)
        assert state == (model.timers, model.shape, model.scrolling, model.zoom_mode, model.run), done[-6:]
