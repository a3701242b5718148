"""Texts and arrays at the border of the surface, and properties that share or ignore what is written."""

import orvane4
import pytest
from map_rig import CIRCLE, LINE, MESH, POINT, POLYGON, Host, block, dump, item, layer, painted, sub_layers

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


@pytest.mark.parametrize("written, other", [("StrVisible", "DigStrVisible"), ("DigStrVisible", "StrVisible")])
def test_str_visible_and_dig_str_visible_are_one_value(written, other):
    control = painted().control
    setattr(control, written, True)
    assert getattr(control, other) is True
    setattr(control, written, False)
    assert getattr(control, other) is False


def test_mem_handle_reads_0_after_a_write_of_5():
    control = painted().control
    control.MemHandle = 5
    assert control.MemHandle == 0


def test_a_layer_name_keeps_its_first_four_bytes():
    host = painted()
    host.control.OrvMakeLayer("A", LINE)
    assert host.control.OrvSetLayerName("A", "ABCDEFG") is True
    assert layer(host, "A")["layerName"] == b"ABCD"


def test_a_layer_name_is_cut_by_bytes_even_through_a_character():
    host = painted()
    host.control.OrvMakeLayer("A", LINE)
    assert host.control.OrvSetLayerName("A", "aあい")
    assert layer(host, "A")["layerName"] == "aあい".encode("cp932")[:4]
    assert host.control.OrvSetLayerName("A", "x")
    assert layer(host, "A")["layerName"] == b"x"


@BOTH
def test_a_two_dimensional_array_gives_false_and_leaves_the_item_there_empty(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    square = orvane4.Array([[1, 2], [3, 4]], "R8", dims=2)
    assert host.AddDigDatEx("A", 1, 7, 0, square, square, square) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


@BOTH
def test_arrays_of_longs_are_refused_as_coordinates(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    longs = orvane4.Array([1, 2], "I4")
    assert host.AddDigDatEx("A", 1, 7, 0, longs, longs, longs) is False
    assert item(host, "A", 1, 7)["pntCnt"] == 0


LONG_CODE = "C" * 50
POINTS = ([0.0, 1.0], [0.0, 1.0], [0.0, 0.0])


@BOTH
def test_a_code_of_exactly_50_characters_is_a_valid_key_in_all_methods(newer):
    host = painted(newer)
    code = LONG_CODE
    assert host.MakeLayer(code, LINE)
    assert host.add_block(code, 1, LINE) and host.add_block(code, 2, LINE)
    assert host.control.DigMemAlloc(code, 533945, LINE, "path", 1)
    assert host.control.GetLayPath(code, 533945) == "path"
    assert host.AddDigDat(code, 1, 1, 0)
    assert host.AddDigDatEx(code, 1, 2, 0, *POINTS)
    assert host.AddDigDatPnt(code, 1, 1, 5.0, 6.0, 0.0)
    assert host.EditDigDatPnt(code, 1, 1, 0, 5.5, 6.5, 0.0)
    assert host.InsertDigDatPnt(code, 1, 1, 1, 7.0, 8.0, 0.0)
    assert host.DelDigDatPnt(code, 1, 1, 0)
    assert host.GetFreeDigDatID(code, 1, 0) == 3
    assert host.control.OrvCopyData(code, 1, 2, code, 2) == 1
    assert host.GetLayDatCnt(code, 1) == 2
    assert host.GetDigDatInfo(code, 1, 1) == 2
    assert host.GetDigDatInfoEx(code, 1, 1)[0] and host.GetDigDatPnt(code, 1, 1)[0] and host.control.OrvGetDatPntEx(code, 1, 1)[0]
    assert host.control.SetDigDatInfoEx(code, 1, 1, 3, True) == 1
    assert host.SetDigDatSubLayer(code, 1, 1, 0)
    assert host.control.OrvSetDatSubLayerEx(code, 1, [1], [4])
    host.jump_to_data(code, 1, 2, True)
    assert item(host, code, 1, 2)["active"] == 1
    assert host.DelDigDat(code, 1, 1) and host.DigMemDelete(code, 2)
    assert host.DigMemDeleteLay(code) == 2


@BOTH
def test_a_code_of_exactly_50_characters_names_its_layer_in_all_settings(newer):
    host = painted(newer)
    code = LONG_CODE
    host.add_block(code, 1, POINT)
    name = ("",) if newer else ()
    for done in (
        host.SetLayer(code, True) in (True, None), host.SetLayColor(code, 1), host.control.OrvSetLayColor2(code, 2),
        host.SetLayLineSize(code, 3), host.SetLayLineType(code, 4), host.SetLayFillMode(code, 0),
        host.control.OrvSetLayOutLineMode(code, 1), host.SetLayPgnMode(code, 0), host.SetLayPgnLine(code, 1, 2),
        host.SetLayActive(code, True), host.SetLayEditFlg(code, True),
        host.control.OrvSetLayerName(code, "n"), host.SetLayIndex(code, 5), host.SetSubLayer(code, *name, 1, True, 0, 1, 0, 0),
        host.SetSubLayerEx(code, *name, 2, True, 0, 1, 0, 0, 0, 0, 0), host.control.OrvSetSubLayColor(code, 1, 6),
        host.control.OrvSetSubLayColor2(code, 2, 7), host.SetLayImage(code, "i", "j", 1, 2, 0.5, 1.5),
        host.DspLayImage(code, True),
        host.control.OrvSetLayImagePos(code, 1), host.control.OrvSetSubLayImage(code, 1, "i", "j", 1, 2, 0.5, 1.5),
        host.control.OrvDspSubLayImage(code, 1, True), host.control.OrvSetSubLayImagePos(code, 1, 2),
    ):
        assert done
    found = layer(host, code)
    assert (found["color"], found["color2"], found["layerName"]) == (1, 2, b"n")


@BOTH
def test_a_code_of_exactly_50_characters_names_its_mesh_items(newer):
    host = painted(newer)
    host.add_block(LONG_CODE, 1, MESH)
    assert host.control.OrvAddMeshDat(LONG_CODE, 1, 7, 1, 2, *POINTS)
    assert host.control.OrvSetMeshUseFlag(LONG_CODE, 1, 7, [1, 0])
    assert host.control.OrvSetMeshColor(LONG_CODE, 1, 7, [5, 6])
    assert item(host, LONG_CODE, 1, 7)["meshAttr"]["meshColor"] == [5, 6]


TOO_LONG = LONG_CODE + "and more"


@pytest.mark.parametrize(
    "call",
    [
        lambda c: c.OrvGetDatPnt(TOO_LONG, 1, 1)[0],
        lambda c: c.OrvGetDatPntEx(TOO_LONG, 1, 1)[0],
        lambda c: c.SetLayColor(TOO_LONG, 5),
        lambda c: c.OrvSetLayColor2(TOO_LONG, 5),
        lambda c: c.OrvSetSubLayColor(TOO_LONG, 3, 5),
        lambda c: c.OrvSetSubLayColor2(TOO_LONG, 3, 5),
        lambda c: c.OrvSetLayerName(TOO_LONG, "n"),
        lambda c: c.OrvSetSubLayer(TOO_LONG, "", 4, True, 0, 1, 0, 0),
        lambda c: c.OrvSetSubLayerEx(TOO_LONG, "", 4, True, 0, 1, 0, 0, 0, 0, 0),
        lambda c: c.DigMemAlloc2(TOO_LONG, 9, LINE, "", 1, 0.0, 0.0) and c.OrvAddDat(LONG_CODE, 9, 1, 0),
        lambda c: c.AddDigDatEx(TOO_LONG, 1, 5, 0, *POINTS),
        lambda c: c.OrvSetDatSubLayerEx(TOO_LONG, 1, [1], [3]),
        lambda c: c.OrvCopyData(TOO_LONG, 1, 1, TOO_LONG, 1) == 2,
    ],
    ids=["OrvGetDatPnt", "OrvGetDatPntEx", "SetLayColor", "OrvSetLayColor2", "OrvSetSubLayColor", "OrvSetSubLayColor2",
         "OrvSetLayerName", "OrvSetSubLayer", "OrvSetSubLayerEx", "DigMemAlloc2", "AddDigDatEx", "OrvSetDatSubLayerEx",
         "OrvCopyData"],
)
def test_some_methods_cut_a_longer_code_at_50_bytes(call):
    host = painted()
    host.add_block(LONG_CODE, 1, LINE)
    host.add_item(LONG_CODE, 1, 1, [(0, 0)])
    assert host.control.OrvSetSubLayer(LONG_CODE, "", 3, True, 0, 1, 0, 0)
    assert call(host.control)
    assert len(dump(host)["layers"]) == 1


@pytest.mark.parametrize(
    "call",
    [
        lambda c: c.OrvAddMeshDat(TOO_LONG, 1, 8, 1, 2, *POINTS),
        lambda c: c.OrvSetMeshUseFlag(TOO_LONG, 1, 7, [1, 0]),
        lambda c: c.OrvSetMeshColor(TOO_LONG, 1, 7, [1, 2]),
    ],
    ids=["OrvAddMeshDat", "OrvSetMeshUseFlag", "OrvSetMeshColor"],
)
def test_the_mesh_methods_cut_a_longer_code_at_50_bytes(call):
    host = painted()
    host.add_block(LONG_CODE, 1, MESH)
    assert host.control.OrvAddMeshDat(LONG_CODE, 1, 7, 1, 2, *POINTS)
    assert call(host.control)


def test_codes_that_differ_behind_byte_50_are_one_key_where_they_are_cut():
    host = painted()
    assert host.control.DigMemAlloc2(LONG_CODE + "1", 1, LINE, "", 1, 0.0, 0.0)
    assert host.control.DigMemAlloc2(LONG_CODE + "2", 1, LINE, "", 1, 0.0, 0.0) is False


def test_the_name_of_a_sub_layer_is_cut_at_255_bytes_even_through_a_character():
    host = painted()
    host.add_block("A", 1, LINE)
    assert host.control.OrvSetSubLayer("A", "あ" * 200, 1, True, 0, 1, 0, 0)
    assert host.control.OrvSetSubLayerEx("A", "b" * 300, 2, True, 0, 1, 0, 0, 0, 0, 0)
    assert [each["layerName"] for each in sub_layers(host, "A")] == [("あ" * 200).encode("cp932")[:255], b"b" * 255]


def test_the_path_of_a_block_is_cut_at_511_bytes():
    host = painted()
    assert host.control.DigMemAlloc("A", 533945, LINE, "p" * 600, 1)
    assert host.control.DigMemAlloc2("A", 2, LINE, "q" * 511, 1, 0.0, 0.0)
    assert host.control.GetLayPath("A", 533945) == "p" * 511
    assert host.control.GetLayPath("A", 2) == "q" * 511


def test_a_text_ends_at_its_first_zero_byte():
    host = painted()
    assert host.control.OrvMakeLayer(b"A\0B", LINE)
    assert layer(host, "A") is not None


def test_the_newer_make_passes_an_empty_path_and_the_origin_0_0():
    host = painted()
    assert host.control.OrvAddLayer("A", 533945, CIRCLE, 4)
    made = block(host, "A", 533945)
    assert (made["path"], made["GX"], made["GY"]) == (b"", 0, 0)
    assert (layer(host, "A")["layType"], layer(host, "A")["layIndex"]) == (CIRCLE, 4)


def test_the_older_sub_layer_methods_pass_an_empty_name():
    host = painted()
    host.add_block("A", 1, POLYGON)
    assert host.control.OrvSetSubLayer("A", "name", 1, True, 0, 1, 0, 0)
    assert host.control.SetSubLayer("A", 1, True, 0, 1, 0, 0)
    assert host.control.OrvSetSubLayerEx("A", "name", 2, True, 0, 1, 0, 0, 0, 0, 0)
    assert host.control.SetSubLayerEx("A", 2, True, 0, 1, 0, 0, 0, 0, 0)
    assert [each["layerName"] for each in sub_layers(host, "A")] == [b"", b""]


@pytest.mark.parametrize("older, newer, args", [("RDMReDraw", "OrvReDraw", ()), 
                                                ("UserDcDraw", "OrvUserDcDraw", (0, 0, 0, 10, 10, 0)),
                                                ("UserDcDrawEx", "OrvUserDcDrawEx", (0, 0, 0, 10, 10, 0.0, 0.0, 1000, 0)),
                                                ("MapJumpToXY", "OrvMapJumpToXY", (0.0, 0.0)), ("RDMScrl", "OrvScrl", (0.0, 0.0)),
                                                ("SetLayer", "OrvSetLayDspMode", ("A", True))])
def test_a_newer_name_returns_nothing_where_the_older_value_told_nothing(older, newer, args):
    control = Host(False).control
    assert getattr(control, newer)(*args) is None
    answer = {"UserDcDraw": 0, "UserDcDrawEx": 0, "MapJumpToXY": 0, "RDMScrl": 1, "SetLayer": True}
    if older in answer:
        assert getattr(control, older)(*args) == answer[older]
