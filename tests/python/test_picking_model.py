"""The active set, compared click by click with a plain model that walks all records as the rules are told.

Points and level lines lie on pixels that end in 0, corners of polygons and ends of lines on pixels that end in 3. Clicks
lie on pixels that end in 0 or 5 and rectangles on pixels that end in 7, so that none of them meets the edge of an area.
"""

import random

import pytest
from drawing_rig import at_scale
from input_rig import CTRL, SHIFT, click, drag, once, ready
from map_rig import LINE, POINT, POLYGON, dump


class Item:
    def __init__(self, number, kind, left, top, right, bottom):
        self.number, self.kind, self.active = number, kind, 0
        self.left, self.top, self.right, self.bottom = left, top, right, bottom

    def met(self, x, y):
        if self.kind == POINT:
            return abs(x - self.left) < 9 and abs(y - self.top) < 9
        if self.kind == LINE:
            return self.left <= x < self.right and self.top - 2 <= y < self.top + 2
        return self.left < x < self.right and self.top < y < self.bottom

    def within(self, left, top, right, bottom):
        return left < self.left and top < self.top and self.right < right and self.bottom < bottom

    def corners(self):
        left, top, right, bottom = self.left, self.top, self.right, self.bottom
        if self.kind == POINT:
            return [(left, top)]
        if self.kind == LINE:
            return [(left, top), (right, top)]
        return [(left, top), (right, top), (right, bottom), (left, bottom), (left, top)]


class Layer:
    def __init__(self, code, kind, index):
        self.code, self.kind, self.index = code, kind, index
        self.disp = self.act = True
        self.items = []


class Model:
    def __init__(self):
        self.layers = []
        self.cycle = 0

    def from_top(self):
        return sorted(self.layers, key=lambda each: each.index)

    def clear(self):
        for layer in self.layers:
            if layer.act:
                for each in layer.items:
                    each.active = 0

    def first_active(self):
        for layer in self.from_top():
            for each in layer.items if layer.act else []:
                if each.active:
                    return each.number, layer.code
        return None

    def click(self, x, y, keys):
        self.cycle = self.cycle + 1 if keys == SHIFT else 0
        toggle, cycle = keys == CTRL, self.cycle
        if not toggle and not cycle:
            self.clear()
        met = []
        for layer in self.from_top():
            if layer.disp and layer.act:
                met += [each for each in reversed(layer.items) if each.met(x, y)]
                if met and not toggle and not cycle:
                    break
        if toggle:
            for each in met[:199]:
                each.active = 1 - each.active
        elif met:
            for each in [*met[:199], *met[199:][-1:]] if cycle else []:
                each.active = 0
            met[cycle % min(len(met), 199)].active = 1
        return self.first_active()

    def rectangle(self, corners, keys):
        if keys != CTRL:
            self.clear()
        for layer in self.layers:
            if layer.disp and layer.act:
                for each in layer.items:
                    each.active |= each.within(*corners)

    def listed(self):
        return [(layer.code, each.number) for layer in reversed(self.from_top()) if layer.disp and layer.act
                for each in layer.items if each.active]


def random_item(rng, number, kind):
    column, row = rng.randrange(10, 70), rng.randrange(10, 50)
    wide, tall = rng.choice([1, 3, 8, 20, 50]), rng.choice([1, 3, 8, 20, 40])
    if kind == POINT:
        return Item(number, kind, column * 10, row * 10, column * 10, row * 10)
    left, top = max(5, column - wide // 2) * 10 + 3, max(5, row - tall // 2) * 10
    if kind == LINE:
        return Item(number, kind, left, top, left + wide * 10, top)
    return Item(number, kind, left, top + 3, min(left + wide * 10, 793), min(top + 3 + tall * 10, 593))


def build(rng, crowd):
    host, model = ready(at_scale()), Model()
    for index, code in enumerate(rng.sample("ABCDEF", 4)):
        layer = Layer(code, rng.choice([POINT, LINE, POLYGON]), index)
        model.layers.append(layer)
    for layer in rng.sample(model.layers, 4):
        assert host.add_block(layer.code, 1, layer.kind, layer.index)
        for number in rng.sample(range(1, 1000), rng.randrange(1, 30)):
            layer.items.append(random_item(rng, number, layer.kind))
        if crowd:
            spot = Item(0, layer.kind, *((400, 300, 400, 300) if layer.kind == POINT else (303, 300, 503, 300)
                                         if layer.kind == LINE else (303, 203, 503, 403)))
            layer.items += [Item(number, layer.kind, spot.left, spot.top, spot.right, spot.bottom)
                            for number in range(2000, 2070)]
        for each in layer.items:
            host.add_item(layer.code, 1, each.number, [(x, -y) for x, y in each.corners()])
    host.RDMReDraw()
    return host, model


def shown_set(host):
    return {each["code"].decode(): [item["active"] for item in each["dats"]] for each in dump(host)["blocks"]}


def step(rng, host, model, crowd):
    deed = rng.random()
    if deed < 0.7:
        x, y = (400, 300) if crowd and rng.random() < 0.8 else (rng.randrange(10, 158) * 5, rng.randrange(10, 118) * 5)
        keys = rng.choice([0, SHIFT, SHIFT, SHIFT, CTRL, SHIFT | CTRL])
        heard = once(host, "OnDataClick")
        told = model.click(x, y, keys)
        click(host, x, y, keys)
        assert [each[:2] for each in heard] == ([told] if told else [])
        return ("click", x, y, keys)
    if deed < 0.85:
        left, right = sorted(rng.sample(range(0, 79), 2))
        top, bottom = sorted(rng.sample(range(0, 59), 2))
        corners = tuple(each * 10 + 7 for each in (left, top, right, bottom))
        keys = rng.choice([0, CTRL, SHIFT])
        model.rectangle(corners, keys)
        drag(host, corners[:2], corners[2:], keys)
        return ("rectangle", corners, keys)
    layer = rng.choice(model.layers)
    if deed < 0.9:
        layer.disp = rng.random() < 0.8
        host.SetLayer(layer.code, layer.disp)
        return ("show", layer.code, layer.disp)
    if deed < 0.95:
        layer.act = rng.random() < 0.8
        host.SetLayActive(layer.code, layer.act)
        return ("may be selected", layer.code, layer.act)
    if deed < 0.98:
        each = rng.choice(layer.items)
        assert host.control.OrvSetActDat(layer.code, 1, each.number) is layer.act
        each.active |= layer.act
        return ("select", layer.code, each.number)
    model.clear()
    host.ResetDigActiveAll()
    return ("clear",)


@pytest.mark.parametrize("crowd", [False, True], ids=["scattered", "crowded"])
@pytest.mark.parametrize("seed", range(12))
def test_the_active_set_is_that_of_the_model_after_each_of_many_deeds(seed, crowd):
    rng = random.Random(seed * 2 + crowd)
    host, model = build(rng, crowd)
    done = []
    for _ in range(80):
        done.append(step(rng, host, model, crowd))
        expected = {layer.code: [int(each.active) for each in layer.items] for layer in model.layers}
        assert shown_set(host) == expected, done[-4:]
        _, codes, _, numbers = host.GetDigActDat()
        assert list(zip(codes or [], numbers or [])) == model.listed(), done[-4:]
