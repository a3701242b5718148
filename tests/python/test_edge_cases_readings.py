"""Cases that could be decided in more than one way, and how this control decides them."""

import math

import orvane4
import pytest
from map_rig import (LINE, MESH, POINT, Host, block, bounds, composed, drain, dump, item, layer, named, painted, verbs,
                     view)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
TRUE = [True, 1, -1, 2, 256, -32768]


# --- Booleans ----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("value", TRUE)
@pytest.mark.parametrize("name", ["OrgStrVisible", "DigStrVisible", "StrVisible", "LineTagMode", "CutSameString", "MapDraw",
                                  "DebugMode"])
def test_a_boolean_property_that_is_not_0_becomes_true(name, value):
    control = painted().control
    setattr(control, name, False)
    assert getattr(control, name) is False
    setattr(control, name, value)
    assert getattr(control, name) is True


@pytest.mark.parametrize("value", TRUE)
@BOTH
def test_a_boolean_argument_that_is_not_0_becomes_1(newer, value):
    host = painted(newer)
    host.add_block("A", 1, POINT)
    host.add_item("A", 1, 7, [(0, 0)])
    assert host.control.SetDigDatInfoEx("A", 1, 7, 0, value) == 1
    assert item(host, "A", 1, 7)["active"] == 1
    for name, field in (("SetLayActive", "actFlg"), ("SetLayEditFlg", "editFlg"), ("DspLayImage", "imgMode")):
        getattr(host, name)("A", False)
        assert layer(host, "A")[field] == 0
        assert getattr(host, name)("A", value) is True
        assert layer(host, "A")[field] == 1
    host.SetLayer("A", value)
    assert layer(host, "A")["dspFlg"] == 1
    host.SetDataSelectMode(value)
    assert view(host, "DataSelectMode") == 1
    host.RastDspMode(value)
    assert view(host, "RastOnTop") == 1
    assert host.control.OrvSetSubLayer("A", "", 3, value, 0, 1, 0, 0)
    assert layer(host, "A")["subLays"][0]["dspFlg"] == 1
    host.jump_to_data("A", 1, 7, value)
    assert item(host, "A", 1, 7)["active"] == 1


# --- Control -----------------------------------------------------------------------------------------------------------------


def test_refresh_asks_for_a_paint_and_returns():
    host = painted()
    host.add_block("A", 1, LINE)
    before = dump(host)
    assert host.control.Refresh() is None
    assert verbs(host) == []
    assert dump(host) == before


def test_fields_that_nothing_has_set_start_at_0():
    control = Host(False).control
    for name in ("RunMode", "ScrollMode", "ScaleBarMode", "ScaleX", "ScaleY", "Rotate", "AreaTop", "AreaBottom", "AreaLeft",
                 "AreaRight", "ActiveColor", "ActivePointType"):
        assert getattr(control, name) == 0, name
    for name in ("ExecRun", "DebugMode", "MapDraw", "OrgStrVisible", "LineTagMode", "DigStrVisible", "StrVisible",
                 "CutSameString"):
        assert getattr(control, name) is False, name
    assert [view(control, field) for field in ("ViewX", "ViewY", "DotPerM", "RectZoomMode", "ScrollActive")] == [0, 0, 0, 0, 0]


def test_a_host_context_without_a_width_in_millimetres_is_left_undrawn():
    host = painted()
    context = orvane4.Context(400, 300, 1920, 0, 96)
    for _ in range(2):
        host.control.UserDcDraw(context.handle, 0, 0, 400, 300, 0)
        host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, 0.0, 0.0, 1000, 0)
    assert context.verbs() == []


# --- Bounds ------------------------------------------------------------------------------------------------------------------


@BOTH
def test_editing_or_inserting_a_point_only_widens_bounds_for_the_first_item_too(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, [(10, 10)])
    assert host.EditDigDatPnt("A", 1, 7, 0, 5, 20, 0)
    assert bounds(host, "A", 1) == (5, 10, 10, 20)
    assert host.InsertDigDatPnt("A", 1, 7, 0, -1, 15, 0)
    assert bounds(host, "A", 1) == (-1, 10, 10, 20)


@BOTH
def test_the_first_point_of_an_emptied_item_is_an_insert_that_widens_only(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, [(10, 10)])
    host.DelDigDatPnt("A", 1, 7, 0)
    assert host.InsertDigDatPnt("A", 1, 7, 0, 50, 60, 0) is True
    assert bounds(host, "A", 1) == (10, 10, 50, 60)


# --- Meshes ------------------------------------------------------------------------------------------------------------------

SIX = ([0.0] * 6, [0.0] * 6, [0.0] * 6)


@pytest.mark.parametrize(
    "lay_type, hcnt, vcnt, arrays",
    [(MESH, 0, 6, SIX), (MESH, -1, 6, SIX), (LINE, 3, 2, SIX), (MESH, 3, 2, ([0.0] * 6, [0.0] * 6, [0.0] * 5)),
     (MESH, 3, 2, tuple(orvane4.Array([0] * 6, "I4") for _ in range(3))), (MESH, 3, 2, ([], [], [])), (MESH, 3, 3, SIX)],
    ids=["no columns", "negative", "no mesh layer", "short array", "wrong type", "empty", "more grid points than values"],
)
def test_a_refused_mesh_leaves_the_added_item_whatever_the_reason(lay_type, hcnt, vcnt, arrays):
    host = painted()
    host.add_block("A", 1, lay_type)
    assert host.control.OrvAddMeshDat("A", 1, 7, hcnt, vcnt, *arrays) is False
    made = item(host, "A", 1, 7)
    assert (made["pntCnt"], made["lineTag"]) == (0, 0)


# --- Jumps -------------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_jump_to_an_item_without_points_clamps_and_repaints_and_stores_no_nan(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    assert host.AddDigDat("A", 1, 7, 0)
    host.control.AreaLeft = 250.0
    drain(host)
    assert host.jump_to_data("A", 1, 7, True) == (None if newer else 0)
    assert composed(verbs(host))
    assert (view(host, "ViewX"), view(host, "ViewY")) == (250, 0)
    assert not math.isnan(host.control.OrvGetScreenPosX(0))
    assert item(host, "A", 1, 7)["active"] == 1


# --- A block of a new code and a bad type ------------------------------------------------------------------------------------


@pytest.mark.parametrize("bad", [0, 9, 11, -1])
@BOTH
def test_a_block_of_a_new_code_and_a_bad_type_is_made_and_never_found(newer, bad):
    host = painted(newer)
    assert host.add_block("A", 1, LINE)
    assert host.add_block("new", 5, bad) is True
    assert layer(host, "new") is None
    assert host.GetLayDatCnt("new", 5) == 0 and host.AddDigDat("new", 5, 1, 0) is False
    assert block(host, "new", 5)["blkState"] == 1
    assert dump(host)["digIndex"][0] == (0, 0)
    host.RDMReDraw()


@BOTH
def test_an_orphan_stays_behind_the_sorted_list_and_lives_under_the_layer_that_takes_its_record(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE, 1)
    host.add_block("orphan", 5, 9, 1)
    assert [tuple(each) for each in dump(host)["digIndex"]] == [(0, 0), (1, 1)]
    host.RDMSortIndex()
    assert [tuple(each) for each in dump(host)["digIndex"]] == [(0, 0), (1, 1)]
    assert host.MakeLayer("B", LINE)
    assert host.AddDigDat("B", 5, 77, 0) is True, "the entry names the second record, which is B's now, and the mesh is its own"
    assert host.GetLayDatCnt("B", 5) == 1
    host.RDMSortIndex()
    assert sorted(tuple(each) for each in dump(host)["digIndex"]) == [(0, 0), (1, 1)]


def test_the_next_new_layer_takes_the_record_that_an_orphan_names():
    host = painted()
    host.add_block("orphan", 5, 9)
    assert [tuple(each) for each in dump(host)["digIndex"]] == [(0, 0)]
    host.add_block("A", 1, LINE)
    assert [tuple(each) for each in dump(host)["digIndex"]] == [(0, 0), (1, 0)], "the record that the orphan names is A's now"
    host.add_block("other orphan", 6, 9)
    host.add_block("B", 1, LINE, 9)
    index = [tuple(each) for each in dump(host)["digIndex"]]
    assert sorted(index) == [(0, 0), (1, 0), (2, 1), (3, 1)]
    host.RDMReDraw()


def test_an_orphan_between_used_slots_gives_way_and_the_last_entry_stands_twice():
    host = painted()
    host.add_block("A", 1, LINE, 1)
    host.add_block("orphan", 5, 9, 1)
    host.add_block("A", 2, LINE, 1)
    index = [tuple(each) for each in dump(host)["digIndex"]]
    assert index == [(0, 0), (2, 0), (2, 0)], "the sorted list of two is written over the first two slots, the third stays"
    host.add_item("A", 2, 7, [(0, 0), (500, -500)])
    drain(host)
    host.RDMReDraw()
    assert len(named(verbs(host), "Polyline", "base")) == 2, "drawn once for each entry"


def test_two_orphans_stay_behind_the_list_in_their_order():
    host = painted()
    host.add_block("A", 1, LINE, 1)
    for mesh in (5, 6):
        host.add_block("orphan", mesh, 9, 1)
    host.add_block("A", 2, LINE, 1)
    assert [tuple(each) for each in dump(host)["digIndex"]] == [(0, 0), (3, 0), (2, 1), (3, 0)]
