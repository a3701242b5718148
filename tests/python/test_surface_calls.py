"""How a call crosses the surface: names and dispids, outputs, texts, arrays, failure values, properties, events."""

import math

import numpy
import orvane4
import pytest
from map_rig import LINE, MESH, POINT, POLYGON, Host, block, drain, dump, item, layer, painted, verbs, view

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


def with_line(points=((0, 0), (10, 20)), newer=False):
    host = painted(newer)
    assert host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, points)
    return host


# --- Names, dispids, number of arguments -----------------------------------------------------------------------------------


def test_a_member_is_called_by_name_or_by_dispid():
    control = with_line().control
    by_name = control.invoke("OrvGetDatInfoEx", "A", 1, 7)
    assert by_name == control.OrvGetDatInfoEx("A", 1, 7) == control.invoke(196, "A", 1, 7)
    assert by_name == (True, LINE, 0, 2, 0)


def test_a_property_is_read_by_name_or_by_dispid():
    control = painted().control
    assert control.invoke("AreaLeft") == control.invoke(17) == -10000.0


@pytest.mark.parametrize("unknown", ["NoSuchMember", 9999, -1])
def test_an_unknown_member_raises(unknown):
    with pytest.raises((AttributeError, LookupError)):
        painted().control.invoke(unknown)


@pytest.mark.parametrize("args", [(), ("A",), ("A", 1, 7, 8)])
def test_a_wrong_number_of_arguments_raises_and_does_nothing(args):
    control = with_line().control
    before = control.dump()
    with pytest.raises((TypeError, ValueError)):
        control.OrvDelDat(*args)
    assert control.dump() == before


def test_a_value_that_is_no_number_raises_where_a_number_is_asked_for():
    control = with_line().control
    with pytest.raises((TypeError, ValueError)):
        control.OrvDelDat("A", object(), 7)


# --- Outputs ---------------------------------------------------------------------------------------------------------------


@BOTH
def test_outputs_are_left_out_of_the_call_and_come_back_behind_the_result(newer):
    host = with_line(newer=newer)
    assert host.GetDigDatInfoEx("A", 1, 7) == (True, LINE, 0, 2, 0)
    ok, xs, ys = host.GetDigDatPnt("A", 1, 7)
    assert (ok, list(xs), list(ys)) == (True, [0, 10], [0, 20])


@BOTH
def test_outputs_that_a_failed_call_did_not_touch_come_back_as_none(newer):
    host = with_line(newer=newer)
    assert host.GetDigDatInfoEx("A", 1, 8) == (False, None, None, None, None)
    assert host.GetDigDatPnt("A", 2, 7) == (False, None, None)


def test_a_member_without_result_gives_its_outputs_alone():
    assert painted().control.RastImageSize(0) == (None, None)


def test_a_member_without_result_and_outputs_gives_none():
    host = painted()
    assert host.control.OrvSortLayer() is None
    assert host.control.AboutBox() is None


def test_a_boolean_result_is_a_python_boolean():
    control = painted().control
    assert control.OrvMakeLayer("A", LINE) is True
    assert control.OrvMakeLayer("A", LINE) is False


# --- Texts -----------------------------------------------------------------------------------------------------------------


def test_a_text_goes_in_as_code_page_932_and_comes_out_as_text():
    control = painted().control
    assert control.DigMemAlloc("道路", 533945, LINE, "地図\\道路.arc", 1)
    assert block(control, "道路", 533945)["path"] == "地図\\道路.arc".encode("cp932")
    assert control.GetLayPath("道路", 533945) == "地図\\道路.arc"


def test_a_character_that_code_page_932_lacks_raises_and_does_nothing():
    control = painted().control
    before = control.dump()
    with pytest.raises(ValueError):
        control.OrvMakeLayer("5 \u20ac", LINE)
    assert control.dump() == before


def test_bytes_pass_as_they_are_and_come_back_as_bytes_when_they_do_not_decode():
    control = painted().control
    half = b"A\x82"
    assert control.OrvMakeLayer(half, LINE)
    assert layer(control, half)["layType"] == LINE
    assert control.DigMemAlloc("B", 533945, LINE, half, 1)
    assert control.GetLayPath("B", 533945) == half


# --- Arrays ----------------------------------------------------------------------------------------------------------------


def points_of(control, dat_id=7):
    found = item(control, "A", 1, dat_id)
    return found["pnts"]


def test_a_sequence_becomes_an_array_of_variants_whose_elements_are_converted():
    host = painted()
    host.add_block("A", 1, LINE)
    assert host.AddDigDatEx("A", 1, 7, 0, [1, 2.5, "3"], (10, 20, 30), [0, 0, 4])
    assert points_of(host) == [(1, 10, 0), (2.5, 20, 0), (3, 30, 4)]


def test_an_element_that_does_not_convert_gives_false_and_leaves_the_item_empty():
    host = painted()
    host.add_block("A", 1, LINE)
    assert host.AddDigDatEx("A", 1, 7, 0, [1, "no number"], [1, 2], [0, 0]) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


@pytest.mark.parametrize("make", [lambda v: numpy.array(v, dtype="float64"), lambda v: orvane4.Array(v, "R8"),
                                  lambda v: orvane4.Array(v, "VARIANT"), list],
                         ids=["numpy float64", "R8", "VARIANT", "list"])
@BOTH
def test_coordinates_are_taken_as_doubles_or_variants(newer, make):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    assert host.AddDigDatEx("A", 1, 7, 3, make([1, 2]), make([3, 4]), make([5, 6])) is True
    assert points_of(host) == [(1, 3, 5), (2, 4, 6)]
    assert item(host, "A", 1, 7)["lineTag"] == 3


@pytest.mark.parametrize("lower", [-5, 0, 1, 1000])
def test_the_lower_bound_of_an_array_may_be_any(lower):
    host = painted()
    host.add_block("A", 1, LINE)
    xs, ys, zs = (orvane4.Array(values, "R8", lower=lower) for values in ([1, 2], [3, 4], [5, 6]))
    assert host.AddDigDatEx("A", 1, 7, 0, xs, ys, zs)
    assert points_of(host) == [(1, 3, 5), (2, 4, 6)]


def test_the_count_comes_from_the_first_array_and_longer_ones_are_read_in_part():
    host = painted()
    host.add_block("A", 1, LINE)
    assert host.AddDigDatEx("A", 1, 7, 0, [1, 2], [3, 4, 99], [5, 6, 99, 99])
    assert points_of(host) == [(1, 3, 5), (2, 4, 6)]


@pytest.mark.parametrize("kind", ["R8", "VARIANT"])
@pytest.mark.parametrize("which", [1, 2])
def test_an_array_shorter_than_the_first_gives_false_and_leaves_the_added_item(kind, which):
    host = painted()
    host.add_block("A", 1, LINE)
    values = [[1, 2, 3], [4, 5, 6], [7, 8, 9]]
    values[which].pop()
    assert host.AddDigDatEx("A", 1, 7, 0, *(orvane4.Array(each, kind) for each in values)) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


def test_an_empty_array_gives_false_and_leaves_the_added_item():
    host = painted()
    host.add_block("A", 1, LINE)
    assert host.AddDigDatEx("A", 1, 7, 0, [], [], []) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


@pytest.mark.parametrize("value", [None, 5, 2.5, "text"])
def test_a_value_that_is_no_array_gives_false_and_leaves_the_added_item(value):
    host = painted()
    host.add_block("A", 1, LINE)
    assert host.AddDigDatEx("A", 1, 7, 0, value, [1], [1]) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


# Each array member takes variants and one plain type of its own.
PLAIN_TYPES = ["R8", "R4", "I4", "BOOL", "BSTR"]


def mesh_host():
    host = painted()
    host.add_block("M", 1, MESH)
    assert host.control.OrvAddMeshDat("M", 1, 7, 2, 2, [0, 1, 0, 1], [0, 0, 1, 1], [0, 0, 0, 0])
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 1, [(0, 0)])
    host.add_item("A", 1, 2, [(0, 0)])
    assert host.control.OrvSetSubLayer("A", "", 5, True, 0, 1, 0, 0)
    return host


@pytest.mark.parametrize("kind", PLAIN_TYPES)
@pytest.mark.parametrize(
    "own, call",
    [
        ("R8", lambda c, a: c.AddDigDatEx("A", 1, 9, 0, a, a, a)),
        ("R8", lambda c, a: c.OrvAddMeshDat("M", 1, 9, 2, 2, a, a, a)),
        ("BOOL", lambda c, a: c.OrvSetMeshUseFlag("M", 1, 7, a)),
        ("R4", lambda c, a: c.OrvSetMeshColor("M", 1, 7, a)),
        ("I4", lambda c, a: c.OrvSetDatSubLayerEx("A", 1, a, a)),
    ],
    ids=["AddDigDatEx", "OrvAddMeshDat", "OrvSetMeshUseFlag", "OrvSetMeshColor", "OrvSetDatSubLayerEx"],
)
def test_an_array_member_takes_no_plain_type_but_its_own(own, call, kind):
    values = ["1", "1", "1", "1"] if kind == "BSTR" else [1, 1, 1, 1]
    assert call(mesh_host().control, orvane4.Array(values, kind)) is (kind == own)


@pytest.mark.parametrize("dtype, own", [("float64", False), ("float32", True), ("int32", False), ("bool", False)])
def test_a_numpy_array_takes_its_own_element_type(dtype, own):
    host = mesh_host()
    assert host.control.OrvSetMeshColor("M", 1, 7, numpy.ones(4, dtype=dtype)) is own


def test_the_four_bytes_of_a_plain_mesh_colour_stand_as_they_are():
    host = mesh_host()
    assert host.control.OrvSetMeshColor("M", 1, 7, orvane4.Array([0.0, 1.0, -2.0, 0.5], "R4"))
    assert item(host, "M", 1, 7)["meshAttr"]["meshColor"] == [0, 0x3F800000, 0xC0000000, 0x3F000000]


def test_a_mesh_colour_among_variants_is_the_number_itself():
    host = mesh_host()
    assert host.control.OrvSetMeshColor("M", 1, 7, [0, 255, 0xFF00, 0x123456])
    assert item(host, "M", 1, 7)["meshAttr"]["meshColor"] == [0, 255, 0xFF00, 0x123456]


def test_a_use_flag_becomes_1_or_0():
    host = mesh_host()
    assert host.control.OrvSetMeshUseFlag("M", 1, 7, orvane4.Array([True, False, True, False], "BOOL"))
    assert item(host, "M", 1, 7)["meshAttr"]["useFlag"] == [1, 0, 1, 0]
    assert host.control.OrvSetMeshUseFlag("M", 1, 7, [0, 1, -1, 5])
    assert item(host, "M", 1, 7)["meshAttr"]["useFlag"] == [0, 1, 1, 1]


@pytest.mark.parametrize("which", range(3))
def test_a_second_dimension_in_any_of_the_arrays_gives_false(which):
    host = painted()
    host.add_block("A", 1, LINE)
    arrays = [orvane4.Array([1, 2], "R8") for _ in range(3)]
    arrays[which] = orvane4.Array([[1, 2], [3, 4]], "R8", dims=2)
    assert host.AddDigDatEx("A", 1, 7, 0, *arrays) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


# --- What a member answers when it can do nothing ----------------------------------------------------------------------------

NOTHING_TO_DO = [
    ("MapJumpToData", (1, "X", 1, False), 0),
    ("GetLayDatCnt", ("X", 1), 0),
    ("GetDigDatInfo", ("X", 1, 0), -1),
    ("GetDigDatInfoEx", ("X", 1, 1), (False, None, None, None, None)),
    ("GetDigDatPnt", ("X", 1, 1), (False, None, None)),
    ("OrvGetDatPntEx", ("X", 1, 1), (False, None, None, None)),
    ("SetDigDatInfoEx", ("X", 1, 1, 0, False), 0),
    ("GetLayPath", ("X", 1), ""),
    ("DigMemDelete", ("X", 1), False),
    ("DigMemDeleteLay", ("X",), 0),
    ("DigMemDeleteMeshNo", (1,), 0),
    ("SetLayIndex", ("X", 1), 0),
    ("SetLayColor", ("X", 0), False),
    ("OrvSetLayColor2", ("X", 0), False),
    ("SetLayLineSize", ("X", 1), False),
    ("SetLayLineType", ("X", 1), False),
    ("SetLayFillMode", ("X", 1), False),
    ("OrvSetLayOutLineMode", ("X", 1), False),
    ("SetLayPgnMode", ("X", 1), False),
    ("SetLayPgnLine", ("X", 1, 1), False),
    ("SetLayActive", ("X", True), False),
    ("SetLayEditFlg", ("X", True), False),
    ("OrvSetLayerName", ("X", "n"), False),
    ("SetSubLayer", ("X", 1, True, 0, 1, 0, 0), False),
    ("SetSubLayerEx", ("X", 1, True, 0, 1, 0, 0, 0, 0, 0), False),
    ("OrvSetSubLayColor", ("X", 1, 0), False),
    ("OrvSetSubLayColor2", ("X", 1, 0), False),
    ("SetLayImage", ("X", "", "", 1, 1, 0.0, 1.0), False),
    ("DspLayImage", ("X", True), False),
    ("OrvSetLayImagePos", ("X", 1), False),
    ("OrvSetSubLayImage", ("X", 1, "", "", 1, 1, 0.0, 1.0), False),
    ("OrvDspSubLayImage", ("X", 1, True), False),
    ("OrvSetSubLayImagePos", ("X", 1, 1), False),
    ("SetDigDatSubLayer", ("X", 1, 1, 0), False),
    ("OrvSetDatSubLayerEx", ("X", 1, [1], [1]), False),
    ("AddDigDat", ("X", 1, 1, 0), False),
    ("AddDigDatEx", ("X", 1, 1, 0, [1], [1], [1]), False),
    ("AddDigDatPnt", ("X", 1, 1, 0.0, 0.0, 0.0), False),
    ("DelDigDat", ("X", 1, 1), False),
    ("EditDigDatPnt", ("X", 1, 1, 0, 0.0, 0.0, 0.0), False),
    ("InsertDigDatPnt", ("X", 1, 1, 0, 0.0, 0.0, 0.0), False),
    ("DelDigDatPnt", ("X", 1, 1, 0), False),
    ("OrvCopyData", ("X", 1, 1, "X", 2), 0),
    ("OrvAddMeshDat", ("X", 1, 1, 1, 1, [1], [1], [1]), False),
    ("OrvSetMeshUseFlag", ("X", 1, 1, [1]), False),
    ("OrvSetMeshColor", ("X", 1, 1, [1]), False),
    ("SetDigDatString", ("X", 1, 1, 0.0, 0.0, "s"), False),
    ("SetDigDatStrStyle", ("X", 1, 1, "f", 1, 0, 0, 0.0, False, False, False, 0, 0), False),
    ("OrvSetFontStyleAll", ("X", 1, "f", 1, 0, 0, 0.0, False, False, False, 0, 0), False),
    ("OrvSetFontName", ("X", 1, "f"), False),
    ("OrvSetFontSize", ("X", 1, 1), False),
    ("OrvSetFontStyle", ("X", 1, 1, 0, 0.0, False, False, False), False),
    ("OrvSetFontColor", ("X", 1, 0, 0), False),
    ("AddOrgPnt", (1, 0.0, 0.0), -1),
    ("DelOrgDataEx", (1,), -1),
    ("EditOrgPnt", (1, 0, 0.0, 0.0), -1),
    ("EditOrgDatEx", (1, 2, 1, 0, 0), False),
    ("InsOrgPnt", (1, 0, 0.0, 0.0), -1),
    ("DelOrgPnt", (1, 0), -1),
    ("GetOrgDatEx", (1,), (-1, None, None, None, None)),
    ("GetOrgID", (0,), -1),
    ("GetOrgNearLine", (0, 0), (-1, None, None)),
    ("SetOrgDatString", (1, "s", 0.0, 0.0, 1, 0, 0), True),
    ("GetDigActDatCnt", (), 0),
    ("OrvSetActDat", ("X", 1, 1), False),
    ("DigDatEditor", ("X", 1, 1, 100), -1),
    ("OrvTestLine", ([0.0], [0.0], 1, 0), 0),
    ("OrvTestArea", ([0.0, 1.0], [0.0, 1.0], 2, 0), 0),
    ("OrvPolygonBuffering", (0, "X", 1, "X", 2, "X", 3), (0, None, None, None)),
    ("OrvActPolygonBuffering", (0, "X", 1), (0, None)),
    ("RastTerm", (), False),
    ("RastLoad", (0, "none.bmp"), False),
    ("RastClose", (0,), False),
    ("RastSetCP1", (0, 0, 0, 0.0, 0.0), False),
    ("RastSetCP2", (0, 0, 0, 0.0, 0.0), False),
    ("RastCalcCorrect2", (0,), False),
    ("RastImageSize", (0,), (None, None)),
    ("OrvReadLineTypeData", ("no such file",), 0),
    ("ReadSymbolData", ("no such file",), True),
    ("OrvPutOFileB", ("no such folder/map.Ovb", "no version"), False),
    ("OrvGetOFileB", ("no such file.Ovb",), False),
    ("OrvGetOFileBEx", ("no such file.Ovb", 0.0, 0.0, 0.0, 0.0, ["X"]), False),
    ("RDMDatFileRead", ("no such file.arc",), False),
    ("RDMDatFileReadEx", ("no such file.pgn", "X"), False),
    ("RDMDatDirRead", ("no such folder", 0), False),
]


@pytest.mark.parametrize("name, args, answer", NOTHING_TO_DO, ids=[row[0] for row in NOTHING_TO_DO])
@BOTH
def test_on_an_empty_map_a_member_answers_its_failure_value_and_changes_nothing(newer, name, args, answer):
    host = painted(newer)
    before = dump(host)
    if name == "MapJumpToData" and newer:
        answer = None
        host.control.OrvMapJumpToData("X", 1, 1, False)
    elif newer and name in ("SetSubLayer", "SetSubLayerEx"):
        assert getattr(host, name)(args[0], "", *args[1:]) == answer
    else:
        assert getattr(host, name)(*args) == answer
    assert dump(host) == before


@pytest.mark.parametrize("name, args", [("GetOrvaFile", ("f",)), ("PutOrvaFile", ("f", "1.00")),
                                        ("PutOrvaFileEx", ("f", "1.01", ["A"]))])
@BOTH
def test_the_exchange_members_always_answer_false_and_touch_no_file(newer, name, args, tmp_path):
    host = with_line(newer=newer)
    path = tmp_path / "map.txt"
    assert getattr(host, name)(str(path), *args[1:]) is False
    assert list(tmp_path.iterdir()) == []


def test_the_compatibility_members_answer_what_they_always_did():
    members = {member["name"]: member for member in orvane4.members()}
    fillers = {"BSTR": "X", "double": 0.0, "VARIANT": [1]}

    def answer(name):
        inputs = [fillers.get(arg["kind"].rstrip("*"), 0) for arg in members[name]["args"] if arg["direction"] != "out"]
        return getattr(with_line().control, name)(*inputs)

    assert answer("RDMDatReadEx") is False
    assert answer("RunToData") is True
    assert answer("MapJumpToParm") == -1
    for name in ("GetLayerInfo", "GetDataInfo"):
        told = answer(name)
        told = told if isinstance(told, tuple) else (told,)
        assert told[0] is False
        texts = [value for value, arg in zip(told[1:], [a for a in members[name]["args"] if a["direction"] != "in"])
                 if arg["kind"].startswith("BSTR")]
        assert all(text == "" for text in texts)


# --- Properties --------------------------------------------------------------------------------------------------------------

AT_INIT = {"ExecRun": True, "DebugMode": False, "ScaleX": 1.0, "ScaleY": 1.0, "Rotate": 0.0, "Zoom": 10000, "MapDraw": True,
           "ScaleBarMode": 0, "MemHandle": 0, "MemCnt": 0, "ActiveColor": 255, "AreaTop": -10000.0, "AreaBottom": 20000.0,
           "AreaLeft": -10000.0, "AreaRight": 20000.0, "ActivePointType": 0, "OrgStrVisible": False, "LineTagMode": True,
           "DigStrVisible": False, "StrVisible": False, "CutSameString": False}
OTHER = {"ExecRun": False, "DebugMode": True, "RunMode": 10, "ScrollMode": 10, "ScaleX": 2.5, "ScaleY": 0.5, "Rotate": 30.0,
         "Zoom": 500,
         "MapDraw": False, "ScaleBarMode": 2, "ActiveColor": 0xFF0000, "AreaTop": -1.5, "AreaBottom": 2.5, "AreaLeft": -3.5,
         "AreaRight": 4.5, "ActivePointType": 1, "OrgStrVisible": True, "LineTagMode": False, "DigStrVisible": True,
         "StrVisible": True,
         "CutSameString": True}


@BOTH
def test_init_gives_every_property_its_starting_value_but_the_two_modes(newer):
    host = painted(newer)
    assert {name: getattr(host.control, name) for name in AT_INIT} == AT_INIT
    for name, value in OTHER.items():
        setattr(host.control, name, value)
    assert {name: getattr(host.control, name) for name in OTHER} == OTHER
    assert host.init() is True
    assert {name: getattr(host.control, name) for name in AT_INIT} == AT_INIT
    assert (host.control.RunMode, host.control.ScrollMode) == (10, 10)


@pytest.mark.parametrize("name", sorted(OTHER))
def test_a_property_write_marks_the_control_modified_and_draws_nothing(name):
    host = painted()
    assert host.control.modified is False
    setattr(host.control, name, OTHER[name])
    assert host.control.modified is True
    assert verbs(host) == []


@pytest.mark.parametrize("name", ["MemHandle", "MemCnt"])
def test_the_two_memory_properties_ignore_a_write_and_leave_the_control_unmodified(name):
    control = painted().control
    setattr(control, name, 5)
    assert getattr(control, name) == 0
    assert control.modified is False


def test_get_dc_is_0_before_the_first_paint_and_the_base_buffer_after_it():
    host = Host(False)
    assert host.control.GetDC == 0
    host.init()
    assert host.control.GetDC == 0
    host.control.paint()
    assert host.control.GetDC != 0


def test_a_write_of_get_dc_is_refused():
    control = painted().control
    before = control.GetDC
    with pytest.raises((AttributeError, TypeError, RuntimeError)):
        control.GetDC = 5
    assert control.GetDC == before
    assert control.modified is False


def test_the_area_properties_hold_exact_doubles():
    control = painted().control
    for value in (0.1, -1e300, 5e-324, math.inf):
        control.AreaLeft = value
        assert control.AreaLeft == value


@BOTH
def test_the_data_select_mode_starts_on_and_its_switch_marks_the_control_modified(newer):
    host = painted(newer)
    assert host.GetDataSelectMode() is True
    assert host.control.modified is False
    host.SetDataSelectMode(False)
    assert host.GetDataSelectMode() is False
    assert host.control.modified is True
    host.SetDataSelectMode(True)
    assert host.GetDataSelectMode() is True
    assert view(host, "DataSelectMode") == 1


@BOTH
def test_the_active_set_is_cleared_in_active_layers_only(newer):
    host = painted(newer)
    for code in ("A", "B"):
        host.add_block(code, 1, LINE)
        host.add_item(code, 1, 7, [(0, 0), (1, 1)])
        assert host.control.SetDigDatInfoEx(code, 1, 7, 0, True) == 1
    assert host.SetLayActive("B", False)
    host.ResetDigActiveAll()
    assert item(host, "A", 1, 7)["active"] == 0
    assert item(host, "B", 1, 7)["active"] == 1


# --- Layer attributes, each under both names -----------------------------------------------------------------------------------


@pytest.mark.parametrize(
    "name, args, lay_type, fields",
    [
        ("SetLayColor", (0x112233,), LINE, {"color": 0x112233}),
        ("OrvSetLayColor2", (0x445566,), LINE, {"color2": 0x445566}),
        ("SetLayLineSize", (7,), LINE, {"lineSize": 7}),
        ("SetLayLineType", (3,), POINT, {"pntType": 3, "pgnType": 0, "lineType": 0}),
        ("SetLayLineType", (3,), LINE, {"pntType": 0, "pgnType": 0, "lineType": 3}),
        ("SetLayLineType", (3,), POLYGON, {"pntType": 0, "pgnType": 3, "lineType": 0}),
        ("SetLayFillMode", (0,), POLYGON, {"outLine": 0}),
        ("SetLayFillMode", (9,), POLYGON, {"outLine": 1}),
        ("OrvSetLayOutLineMode", (0,), POLYGON, {"outLine": 0}),
        ("SetLayPgnMode", (0,), POLYGON, {"fillMode": 0}),
        ("SetLayPgnMode", (9,), POLYGON, {"fillMode": 1}),
        ("SetLayPgnLine", (0, 4), POLYGON, {"outLine": 0, "lineType": 4, "pgnType": 0}),
        ("SetLayActive", (False,), LINE, {"actFlg": 0}),
        ("SetLayEditFlg", (True,), LINE, {"editFlg": 1}),
        ("SetLayIndex", (77,), LINE, {"layIndex": 77}),
    ],
)
@BOTH
def test_a_layer_attribute_is_stored_and_nothing_is_drawn(newer, name, args, lay_type, fields):
    host = painted(newer)
    assert host.MakeLayer("A", lay_type)
    drain(host)
    assert getattr(host, name)("A", *args) == 1
    assert {field: layer(host, "A")[field] for field in fields} == fields
    assert verbs(host) == []


# --- Events --------------------------------------------------------------------------------------------------------------------


def test_a_host_hears_an_event_with_its_arguments():
    host = painted()
    heard = []
    host.control.connect("OnZoomChange", lambda *args: heard.append(args))
    host.control.Zoom = 2500
    assert heard == [(2500,)]


def test_every_event_can_be_connected_and_an_unknown_one_raises():
    control = painted().control
    for member in orvane4.members():
        if member["kind"] == "event":
            control.connect(member["name"], lambda *args: None)
    with pytest.raises((AttributeError, LookupError, ValueError)):
        control.connect("OnNothing", lambda: None)


def test_a_handler_may_call_back_into_the_control():
    host = with_line()
    counts = []

    def handler(zoom):
        counts.append((host.control.Zoom, host.control.OrvGetLayDatCnt("A", 1)))
        host.control.OrvDelLayGrpDat("A", 1)
        host.control.OrvInit()

    host.control.connect("OnZoomChange", handler)
    host.control.Zoom = 300
    assert counts == [(300, 1)]
    assert dump(host)["blocks"] == []
