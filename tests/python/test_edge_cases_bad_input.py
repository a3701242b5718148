"""Input that makes no sense: the answers told, no crash, and nothing else changed."""

import math

import numpy
import orvane4
import pytest
from map_rig import (CIRCLE, LINE, MESH, POINT, POLYGON, Host, block, dump, item, items, layer, one_to_one, painted, verbs, view)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
INT_MIN, INT_MAX = -2147483648, 2147483647
MEMBERS = [member for member in orvane4.members() if member["kind"] == "method"]


def some_value(arg, number=1, text="A"):
    """A value of the argument's kind that is neither right nor harmful in itself."""
    kind = arg["kind"]
    if kind.startswith("VARIANT*"):
        return [number]
    if kind.endswith("*"):
        return [float(number)] * 4
    return {"BSTR": text, "double": float(number), "VARIANT_BOOL": bool(number)}.get(kind, number)


def call_with(control, member, number=1, text="A"):
    """Calls a member with such values and hands back nothing: only that the call ends in order counts."""
    try:
        getattr(control, member["name"])(*[some_value(arg, number, text) for arg in member["args"] if arg["direction"] != "out"])
    except (TypeError, ValueError, OverflowError):
        pass  # the binding may refuse a value that does not fit its type


# --- Before init -------------------------------------------------------------------------------------------------------------

BEFORE_INIT = [
    ("GetLayDatCnt", ("A", 1), 0), ("GetDigDatInfo", ("A", 1, 0), -1),
    ("GetDigDatInfoEx", ("A", 1, 1), (False, None, None, None, None)),
    ("GetDigDatPnt", ("A", 1, 1), (False, None, None)), ("GetLayPath", ("A", 1), ""), ("MakeLayer", ("A", LINE), False),
    ("DigMemAlloc", ("A", 533945, LINE, "", 1), False), ("DigMemAlloc2", ("A", 1, LINE, "", 1, 0.0, 0.0), False),
    ("DigMemDelete", ("A", 1), False), ("DigMemDeleteLay", ("A",), 0), ("DigMemDeleteMeshNo", (1,), 0),
    ("SetLayIndex", ("A", 1), 0),
    ("SetLayColor", ("A", 0), False), ("AddDigDat", ("A", 1, 1, 0), False), ("AddDigDatEx", ("A", 1, 1, 0, [1], [1], [1]), False),
    ("AddDigDatPnt", ("A", 1, 1, 0.0, 0.0, 0.0), False), ("DelDigDat", ("A", 1, 1), False),
    ("OrvCopyData", ("A", 1, 1, "A", 2), 0),
    ("OrvAddMeshDat", ("A", 1, 1, 1, 1, [1], [1], [1]), False), ("GetFreeDigDatID", ("A", 1, 0), -1),
]


@pytest.mark.parametrize("name, args, answer", BEFORE_INIT, ids=[row[0] for row in BEFORE_INIT])
def test_before_the_first_init_a_member_answers_its_failure_value_and_changes_nothing(name, args, answer):
    control = Host(False).control
    before = control.dump()
    assert getattr(control, name)(*args) == answer
    assert control.dump() == before


@pytest.mark.parametrize("state", ["constructed", "painted before init", "initialised", "painted", "terminated"])
def test_every_member_can_be_called_in_every_state_with_any_value(state, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    host = Host(False)
    control = host.control
    for step in {"constructed": [], "painted before init": [control.paint], "initialised": [host.init],
                 "painted": [host.init, control.paint],
                 "terminated": [host.init, control.paint, control.OrvTerm]}[state]:
        step()
    for member in MEMBERS:
        for number, text in ((1, "A"), (0, ""), (-1, "X" * 300), (INT_MAX, "A"), (INT_MIN, b"\x82")):
            # A table of 2^31 - 1 slots is asked for where it is told what becomes of it.
            if member["name"] not in ("RastInit", "OrvInitRast"):
                call_with(control, member, number, text)
    control.OrvInit()
    control.paint()
    assert control.dump()["layers"] == []


def test_properties_can_be_written_in_every_state():
    control = Host(False).control
    for name, value in {"Zoom": 0, "ScaleX": math.nan, "ScaleY": math.inf, "Rotate": -math.inf, "AreaTop": math.nan,
                        "AreaLeft": -math.inf, "RunMode": -1, "ScaleBarMode": -32768, "ActiveColor": 0, "MapDraw": True,
                        "ActivePointType": -1}.items():
        setattr(control, name, value)
    control.paint()
    control.OrvInit()
    control.paint()
    control.OrvDspFit()


# --- Unknown codes and IDs ---------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("code", ["", "a", "AA", "A ", "\\", "あ", b"\x82", b"\xff\xff", "X" * 50, "X" * 51, "X" * 5000])
@BOTH
def test_an_unknown_code_meets_nothing_and_changes_nothing(newer, code):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, [(0, 0), (1, 1)])
    before = dump(host)
    assert host.GetLayDatCnt(code, 1) == 0
    assert host.GetDigDatInfo(code, 1, 0) == -1
    assert host.AddDigDat(code, 1, 8, 0) is False
    assert host.DelDigDat(code, 1, 7) is False
    assert host.DigMemDelete(code, 1) is False
    assert host.SetLayColor(code, 1) is False
    assert host.SetDigDatSubLayer(code, 1, 7, 0) is False
    assert dump(host) == before


@BOTH
def test_an_empty_code_makes_no_layer_that_could_be_found(newer):
    host = painted(newer)
    host.MakeLayer("", LINE)
    host.add_block("", 1, LINE)
    assert host.GetLayDatCnt("", 1) == 0
    assert host.AddDigDat("", 1, 1, 0) is False
    assert dump(host)["layers"] == []
    assert host.MakeLayer("A", LINE) is True
    assert host.add_block("A", 2, LINE) and host.AddDigDat("A", 2, 1, 0)


@pytest.mark.parametrize("dat_id", [0, -1, 8, INT_MIN, INT_MAX])
@BOTH
def test_an_unknown_item_meets_nothing_and_changes_nothing(newer, dat_id):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, [(0, 0), (1, 1)])
    before = dump(host)
    assert host.DelDigDat("A", 1, dat_id) is False
    assert host.AddDigDatPnt("A", 1, dat_id, 0, 0, 0) is False
    assert host.EditDigDatPnt("A", 1, dat_id, 0, 0, 0, 0) is False
    assert host.InsertDigDatPnt("A", 1, dat_id, 0, 0, 0, 0) is False
    assert host.DelDigDatPnt("A", 1, dat_id, 0) is False
    assert host.GetDigDatPnt("A", 1, dat_id) == (False, None, None)
    assert dump(host) == before


# --- Arrays ------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("values", [[], [[1, 2], [3]], None, "text", 7, numpy.zeros((2, 2)), numpy.zeros(0),
                                    numpy.array(["a", "b"])],
                         ids=["empty", "nested", "none", "text", "number", "matrix", "empty NumPy", "texts"])
def test_an_array_argument_that_is_no_list_of_numbers_never_makes_points(values):
    host = painted()
    host.add_block("A", 1, LINE)
    try:
        assert host.AddDigDatEx("A", 1, 7, 0, values, values, values) is False
    except (TypeError, ValueError):
        assert items(host, "A", 1) in (None, []), "a value that Python cannot pass makes no call at all"
    else:
        assert item(host, "A", 1, 7)["pntCnt"] == 0


@pytest.mark.parametrize("hcnt, vcnt", [(0, 5), (5, 0), (-2, 3), (INT_MAX, INT_MAX), (65536, 65536), (INT_MIN, -1), (2, 3)])
def test_a_mesh_of_a_size_that_its_arrays_do_not_have_is_refused(hcnt, vcnt):
    host = painted()
    host.add_block("A", 1, MESH)
    assert host.control.OrvAddMeshDat("A", 1, 7, hcnt, vcnt, [1.0, 2.0], [1.0, 2.0], [1.0, 2.0]) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


def test_two_negative_sides_of_a_mesh_pass_because_only_their_product_is_looked_at():
    host = painted()
    host.add_block("A", 1, MESH)
    assert host.control.OrvAddMeshDat("A", 1, 7, -1, -1, [1.0], [2.0], [3.0]) is True
    assert item(host, "A", 1, 7)["pnts"] == [(1, 2, 3)]
    host.RDMReDraw()


# --- Numbers -----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("lay_type", [POINT, LINE, POLYGON, CIRCLE, MESH])
@pytest.mark.parametrize("value", [math.nan, math.inf, -math.inf, 1e300, -1e300, 1e10, 5e-324])
def test_extreme_coordinates_are_kept_and_read_back_and_every_way_of_drawing_survives_them(lay_type, value):
    host = one_to_one()
    host.add_block("A", 1, lay_type)
    host.add_item("A", 1, 1, [(100, -100, 5), (200, -200, 5), (100, -200, 5), (100, -100, 5)])
    host.add_item("A", 1, 2, [(value, 0, value), (0, value, value), (value, value, value), (value, 0, value)])
    host.RDMReDraw()
    host.control.DspFit()
    host.control.OrvDspFit2(20)
    for x, y in ((10, 10), (-10, 10), (value, value)):
        host.control.OrvScrl(x, y)
    host.control.OrvMapJumpToXY(value, value)
    host.control.OrvMapJumpToData("A", 1, 2, True)
    host.control.Rotate = 30.0
    host.RDMReDraw()
    host.control.Rotate = value
    host.RDMReDraw()
    context = orvane4.Context(400, 300, 1920, 508, 96)
    host.control.UserDcDrawEx(context.handle, 0, 0, 300, 400, value, value, 1000, 0)
    ok, xs, ys = host.control.OrvGetDatPnt("A", 1, 2)
    assert ok and numpy.array_equal(xs, [value, 0, value, value], equal_nan=True)
    assert numpy.array_equal(ys, [0, value, value, 0], equal_nan=True)
    assert host.EditDigDatPnt("A", 1, 2, 0, value, value, value) and host.DelDigDatPnt("A", 1, 2, 3)


@pytest.mark.parametrize("x, side", [(math.inf, INT_MAX), (-math.inf, INT_MIN), (1e12, INT_MAX), (-1e12, INT_MIN), (math.nan, 0)])
def test_the_rectangle_of_a_point_beyond_32_bits_saturates(x, side):
    host = painted()
    host.add_block("A", 1, POINT)
    host.add_item("A", 1, 1, [(x, 5)])
    left, top, right, bottom = item(host, "A", 1, 1)["rect"]
    assert (left, right) == (side, side)
    assert (top, bottom) == (5, 5)


@pytest.mark.parametrize("x", [math.nan, math.inf, -math.inf])
def test_a_view_position_is_never_moved_by_a_jump_to_no_number(x):
    host = painted()
    before = (view(host, "ViewX"), view(host, "ViewY"))
    host.control.OrvMapJumpToXY(x, x)
    assert (view(host, "ViewX"), view(host, "ViewY")) == before


@pytest.mark.parametrize("zoom", [0, -1, -10000, INT_MIN, INT_MAX])
@BOTH
def test_a_zoom_of_0_or_less_for_a_host_context_answers_0_and_leaves_the_view_alone(newer, zoom):
    host = one_to_one(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 1, [(100, -100), (200, -200)])
    before = {key: value for key, value in dump(host)["view"].items() if key != "DrawArea"}
    context = orvane4.Context(400, 300, 1920, 508, 96)
    assert host.UserDcDrawEx(context.handle, 0, 0, 300, 400, 0.0, 0.0, zoom, 0) == (None if newer else 0)
    assert {key: value for key, value in dump(host)["view"].items() if key != "DrawArea"} == before


@pytest.mark.parametrize("numbers", [(1920, 0, 96), (0, 0, 96), (0, 508, 96), (1920, 508, 0)])
@BOTH
def test_a_host_device_without_size_leaves_the_view_alone(newer, numbers):
    host = one_to_one(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 1, [(100, -100), (200, -200)])
    before = {key: value for key, value in dump(host)["view"].items() if key not in ("DrawArea", "DeviceDpi")}
    context = orvane4.Context(400, 300, *numbers)
    assert host.UserDcDraw(context.handle, 0, 0, 400, 300, 0) == (None if newer else 0)
    assert host.UserDcDrawEx(context.handle, 0, 0, 300, 400, 0.0, 0.0, 1000, 0) == (None if newer else 0)
    assert {key: value for key, value in dump(host)["view"].items() if key not in ("DrawArea", "DeviceDpi")} == before


@pytest.mark.parametrize("rect", [(0, 0, 0, 0), (300, 400, 0, 0), (INT_MIN, INT_MIN, INT_MAX, INT_MAX), (0, 0, INT_MAX, INT_MAX),
                                  (0, 0, -5, -5)])
@BOTH
def test_any_rectangle_for_a_host_context_ends_in_order(newer, rect):
    host = one_to_one(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 1, [(100, -100), (200, -200)])
    context = orvane4.Context(400, 300, 1920, 508, 96)
    answer = None if newer else 0
    assert host.UserDcDraw(context.handle, *rect, 1) == answer
    assert host.UserDcDrawEx(context.handle, *rect, 0.0, 0.0, 50000000, 1) == answer


# --- Full tables ---------------------------------------------------------------------------------------------------------------


@BOTH
def test_the_10001st_layer_is_refused_and_all_others_stay(newer):
    host = painted(newer)
    for number in range(10000):
        assert host.MakeLayer(str(number), LINE) is True
    assert host.MakeLayer("one too many", LINE) is False
    assert host.add_block("one too many", 1, LINE) is False
    assert host.control.DigMemAlloc("one too many", 533945, LINE, "", 1) is False
    assert host.MakeLayer("9999", LINE) is False
    whole = dump(host)
    assert len(whole["layers"]) == 10000 and whole["blocks"] == [] and whole["digIndex"] == []
    assert host.add_block("9999", 1, LINE) is True
    assert host.SetLayColor("9999", 5) and layer(host, "9999")["color"] == 5


def test_the_100001st_block_takes_the_first_place_of_the_index_and_the_block_there_is_lost():
    control = painted().control
    for mesh in range(100000):
        assert control.OrvAddLayer("A", mesh, LINE, 1)
    assert control.OrvAddDat("A", 0, 1, 0)
    assert control.OrvAddLayer("A", 100000, LINE, 1) is True
    assert control.OrvAddDat("A", 0, 2, 0) is False, "the block that stood first can no longer be found"
    assert control.OrvAddDat("A", 100000, 1, 0) is True
    assert control.OrvAddDat("A", 1, 1, 0) is True and control.OrvAddDat("A", 99999, 1, 0) is True
    lost = block(control, "A", 0)
    assert [each["datID"] for each in lost["dats"]] == [1], "it stays among the blocks with its data"
    assert control.OrvDelLayDat("A") == 100001
    assert verbs(control) == []
