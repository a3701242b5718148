"""The tables of layers, blocks and index, compared step by step with a plain model that walks them as they are described.

The model knows no short cuts: every lookup walks, every make sorts, and entries whose layer is not made yet stay where the
steps leave them. The control must show the same tables after each of many random calls.
"""

import random

import pytest
from map_rig import painted

FREE = -2
CODES = ["A", "B", "C", "D", "E", "bad1", "bad2"]


class Model:
    def __init__(self):
        self.layers = []  # [code, key, type]
        self.blocks = []  # [state, code, mesh]
        self.index = []  # (block, layer)

    def find(self, code, mesh):
        for pos, (block, layer) in enumerate(self.index):
            if self.blocks[block][2] == mesh and layer < len(self.layers) and self.layers[layer][0] == code:
                return pos
        return -1

    def layer_pos(self, code):
        return next((pos for pos, each in enumerate(self.layers) if each[0] == code), None)

    def make_layer(self, code, lay_type):
        if not 1 <= lay_type <= 10 or lay_type == 9 or self.layer_pos(code) is not None:
            return False
        self.layers.append([code, len(self.layers) + 1, lay_type])
        return True

    def make_block(self, code, mesh, lay_type, key):
        if self.find(code, mesh) >= 0:
            return False
        free = next((pos for pos, each in enumerate(self.blocks) if each[0] == FREE), None)
        reused = free is not None
        if not reused:
            free = len(self.blocks)
            self.blocks.append(None)
        self.blocks[free] = [1, code, mesh]
        layer = self.layer_pos(code)
        if layer is None:
            layer = len(self.layers)
            if self.make_layer(code, lay_type):
                self.layers[layer][1] = key
        elif reused:
            self.layers[layer][2] = lay_type
        self.index.append((free, layer))
        self.sort()
        return True

    def sort(self):
        pairs = [(each[1], pos) for pos, each in enumerate(self.layers)]
        for i in range(len(pairs)):
            for j in range(i + 1, len(pairs)):
                if pairs[i][0] < pairs[j][0]:
                    pairs[i], pairs[j] = pairs[j], pairs[i]
        collected = [entry for _, layer in pairs for entry in self.index if entry[1] == layer]
        self.index[:len(collected)] = collected

    def free(self, block):
        _, code, mesh = self.blocks[block]
        found = self.find(code, mesh)
        if found >= 0:
            del self.index[found]
        self.blocks[block] = [FREE, "", 0]

    def delete(self, code, mesh):
        found = self.find(code, mesh)
        if found >= 0:
            self.free(self.index[found][0])
        return found >= 0

    def delete_where(self, field, value):
        chosen = [pos for pos, each in enumerate(self.blocks) if each[0] >= 0 and each[field] == value]
        for pos in chosen:
            self.free(pos)
        return len(chosen)


def tables(control):
    whole = control.dump()
    layers = [[each["code"].decode(), each["layIndex"], each["layType"]] for each in whole["layers"]]
    blocks = [[each["blkState"], each["code"].decode(), each["meshNo"]] for each in whole["blocks"]]
    return layers, blocks, [tuple(each) for each in whole["digIndex"]]


def random_step(numbers, orphans):
    """A call on the model and the same call on the control."""
    code, mesh, key = numbers.choice(CODES[:None if orphans else 5]), numbers.randint(1, 4), numbers.randint(-2, 6)
    lay_type = 9 if code.startswith("bad") else numbers.choice([1, 2, 3])
    return numbers.choices(
        [
            (lambda m: m.make_block(code, mesh, lay_type, key), lambda c: c.OrvAddLayer(code, mesh, lay_type, key)),
            (lambda m: m.make_layer(code, lay_type), lambda c: c.OrvMakeLayer(code, lay_type)),
            (lambda m: m.delete(code, mesh), lambda c: c.OrvDelLayGrpDat(code, mesh)),
            (lambda m: m.delete_where(1, code), lambda c: c.OrvDelLayDat(code)),
            (lambda m: m.delete_where(2, mesh), lambda c: c.OrvDelGrpDat(mesh)),
            (lambda m: set_key(m, code, key), lambda c: c.OrvSetLayIndex(code, key)),
            (lambda m: m.sort(), lambda c: c.OrvSortLayer()),
        ],
        [10, 2, 4, 1, 1, 3, 2],
    )[0]


def set_key(model, code, key):
    pos = model.layer_pos(code)
    if pos is not None:
        model.layers[pos][1] = key
    return int(pos is not None)


@pytest.mark.parametrize("seed", range(40))
@pytest.mark.parametrize("orphans", [False, True], ids=["good types", "bad types too"])
def test_the_tables_follow_the_steps_through_random_calls(orphans, seed):
    numbers = random.Random(seed)
    model, control = Model(), painted().control
    for _ in range(80):
        on_model, on_control = random_step(numbers, orphans)
        assert on_control(control) == on_model(model)
        assert tables(control) == (model.layers, model.blocks, model.index)
        for code in CODES:
            for mesh in range(5):
                # True for every block that can be found, whatever items it has; nothing is changed.
                assert control.OrvSetDatSubLayer(code, mesh, 1, 0) is (model.find(code, mesh) >= 0), (code, mesh)
