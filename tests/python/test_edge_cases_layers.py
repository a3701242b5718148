"""Layers, blocks and sub layers: what a make keeps, what it changes, and what a delete leaves."""

import pytest
from map_rig import (CIRCLE, ELLIPSE, LINE, MESH, POINT, POLYGON, TEXT, Host, block, composed, drain, dump, index_keys, layer,
                     painted, picked, sub_layers, verbs)

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])

AT_MAKE = {"layerName": b"", "color": 0xDCDCDC, "color2": 0, "lineType": 0, "lineSize": 1, "pgnType": 0, "pntType": 0,
           "dspFlg": 1, "outLine": 1, "actFlg": 1, "spareFlg": 1, "editFlg": 0, "fillMode": 1, "subLayCnt": 0, "subLayMax": 0,
           "imgMode": 0, "imgPos": 0, "imgfname": b"", "imgactfname": b"", "bmWidth": 0, "bmHeight": 0, "imgMinScl": 0,
           "imgMaxScl": 0}


def sub(host, code, number):
    return next(each for each in sub_layers(host, code) if each["subLayNo"] == number)


def set_sub_layer(host, code, number, line_type=0, **other):
    """The family's own plain form; `last` is its last argument."""
    name = (other.get("name", ""),) if host.newer else ()
    return host.SetSubLayer(code, *name, number, other.get("disp", True), line_type, other.get("size", 1), other.get("color", 0),
                            other.get("last", 0))


# --- Makes -------------------------------------------------------------------------------------------------------------------


@BOTH
def test_no_layer_is_made_before_the_first_paint_while_a_block_brings_its_layer_along(newer):
    host = Host(newer)
    host.init()
    assert host.MakeLayer("A", LINE) is False
    assert host.control.DigMemAlloc("A", 533945, LINE, "", 3) is True
    assert layer(host, "A")["layIndex"] == 3
    host.control.paint()
    assert host.MakeLayer("B", LINE) is True


@BOTH
def test_a_code_is_made_once(newer):
    host = painted(newer)
    assert host.MakeLayer("A", LINE) is True
    assert host.MakeLayer("A", LINE) is False
    assert host.MakeLayer("A", POLYGON) is False
    assert layer(host, "A")["layType"] == LINE


@pytest.mark.parametrize("lay_type, made", [(0, False), (-1, False), (9, False), (11, False), (6, True), (7, True)]
                         + [(each, True) for each in (POINT, LINE, POLYGON, CIRCLE, TEXT, ELLIPSE, MESH)])
@BOTH
def test_a_layer_takes_the_types_1_to_10_but_9(newer, lay_type, made):
    host = painted(newer)
    assert host.MakeLayer("A", lay_type) is made
    assert (layer(host, "A") is not None) is made


@BOTH
def test_a_made_layer_has_its_defaults_and_its_place_as_key(newer):
    host = painted(newer)
    for pos, code in enumerate("ABC"):
        host.MakeLayer(code, POLYGON)
        told = {**AT_MAKE, "layType": POLYGON, "layIndex": pos + 1}
        assert picked(layer(host, code), told) == told


def test_the_key_of_a_layer_comes_from_the_block_that_made_it():
    control = painted().control
    assert control.DigMemAlloc("A", 533945, LINE, "", 7)
    assert control.DigMemAlloc("A", 533946, LINE, "", 9)
    assert layer(control, "A")["layIndex"] == 7


@BOTH
def test_a_first_block_does_not_change_the_key_of_a_made_layer(newer):
    host = painted(newer)
    host.MakeLayer("A", LINE)
    assert host.add_block("A", 1, LINE, 50)
    assert layer(host, "A")["layIndex"] == 1


@BOTH
def test_one_pair_of_code_and_mesh_has_one_block(newer):
    host = painted(newer)
    assert host.add_block("A", 1, LINE)
    before = dump(host)
    assert host.add_block("A", 1, LINE) is False
    assert host.control.DigMemAlloc("A", 1, LINE, "other", 5) is False
    assert dump(host) == before


def test_a_new_block_starts_empty():
    host = painted()
    host.add_block("A", 1, LINE)
    told = {"blkState": 1, "datCnt": 0, "dats": None, "minX": 0, "minY": 0, "maxX": 0, "maxY": 0}
    assert picked(block(host, "A", 1), told) == told


def test_a_known_layer_keeps_its_type_when_the_block_array_grows():
    host = painted()
    host.add_block("A", 1, LINE)
    host.add_block("A", 2, POLYGON)
    assert layer(host, "A")["layType"] == LINE


@BOTH
def test_a_known_layer_takes_the_type_of_a_block_made_on_a_reused_slot(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_block("A", 2, LINE)
    host.DigMemDelete("A", 1)
    assert host.add_block("A", 3, POLYGON, 99)
    whole = dump(host)
    assert (whole["blockCnt"], whole["blocks"][0]["meshNo"]) == (2, 3)
    assert (layer(host, "A")["layType"], layer(host, "A")["layIndex"]) == (POLYGON, 1)


@BOTH
def test_the_other_blocks_of_a_layer_that_changed_its_type_are_drawn_by_the_new_type(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_block("A", 2, LINE)
    host.OrvAddDatEx("A", 2, 1, 0, [10.0, 500.0, 300.0, 10.0], [-10.0, -20.0, -400.0, -10.0], [0.0] * 4)
    host.verbs()
    host.OrvReDraw()
    before = [name for _, name, _ in host.verbs()]
    host.DigMemDelete("A", 1)
    host.add_block("A", 3, POLYGON, 99)
    host.OrvReDraw()
    after = [name for _, name, _ in host.verbs()]
    assert ("Polyline" in before, "PolyPolygon" in before) == (True, False)
    assert ("Polyline" in after, "PolyPolygon" in after) == (False, True)


@BOTH
def test_the_lowest_free_slot_is_taken_first(newer):
    host = painted(newer)
    for mesh in range(4):
        host.add_block("A", mesh, LINE)
    for mesh in (2, 1):
        host.DigMemDelete("A", mesh)
    for mesh in (8, 9, 10):
        host.add_block("A", mesh, LINE)
    assert [each["meshNo"] for each in dump(host)["blocks"]] == [0, 8, 9, 3, 10]


# --- Deletes -----------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_delete_of_all_blocks_of_a_layer_counts_them_and_keeps_the_layer(newer):
    host = painted(newer)
    for mesh in (1, 2, 3):
        host.add_block("A", mesh, LINE)
        host.add_item("A", mesh, 1, [(0, 0)])
    host.add_block("B", 1, LINE)
    assert host.DigMemDeleteLay("A") == 3
    assert [host.GetLayDatCnt("A", mesh) for mesh in (1, 2, 3)] == [0, 0, 0]
    assert host.SetLayColor("A", 5) is True
    assert index_keys(host) == [("B", 1)]
    assert host.DigMemDeleteLay("A") == 0


@BOTH
def test_a_delete_by_mesh_takes_the_blocks_of_all_layers(newer):
    host = painted(newer)
    for code in "ABC":
        for mesh in (1, 2):
            host.add_block(code, mesh, LINE)
    assert host.DigMemDeleteMeshNo(1) == 3
    assert sorted(index_keys(host)) == [("A", 2), ("B", 2), ("C", 2)]


@BOTH
def test_a_deleted_slot_is_cleared_and_waits(newer):
    host = painted(newer)
    host.control.DigMemAlloc("A", 533945, LINE, "path", 1)
    assert host.DigMemDelete("A", 533945) is True
    assert host.DigMemDelete("A", 533945) is False
    told = {"blkState": -2, "path": b"", "code": b"", "meshNo": 0, "datCnt": 0}
    assert dump(host)["blockCnt"] == 1
    assert picked(dump(host)["blocks"][0], told) == told


# --- Attributes --------------------------------------------------------------------------------------------------------------


@BOTH
def test_showing_an_unknown_layer_redraws_and_the_older_name_answers_true(newer):
    host = painted(newer)
    assert host.SetLayer("unknown", True) is (None if newer else True)
    assert composed(verbs(host))


@BOTH
def test_showing_and_hiding_a_layer_redraws(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    for shown in (False, True):
        drain(host)
        host.SetLayer("A", shown)
        assert layer(host, "A")["dspFlg"] == shown
        assert composed(verbs(host))


@BOTH
def test_one_number_is_the_hatch_of_a_polygon_layer_and_another_method_its_line_type(newer):
    host = painted(newer)
    host.MakeLayer("A", POLYGON)
    assert host.SetLayPgnLine("A", 0, 3)
    assert host.SetLayLineType("A", 5)
    told = {"pgnType": 5, "lineType": 3, "outLine": 0}
    assert picked(layer(host, "A"), told) == told
    assert host.SetLayPgnLine("A", 1, 2)
    told = {"pgnType": 5, "lineType": 2, "outLine": 1}
    assert picked(layer(host, "A"), told) == told


# --- Images ------------------------------------------------------------------------------------------------------------------

IMAGE = ("road.bmp", "road2.bmp", 16, 24, 0.5, 2.0)
IMAGE_FIELDS = {"imgfname": b"road.bmp", "imgactfname": b"road2.bmp", "bmWidth": 16, "bmHeight": 24, "imgMinScl": 0.5,
                "imgMaxScl": 2.0}


@BOTH
def test_a_point_layer_without_a_block_takes_no_image(newer):
    host = painted(newer)
    host.MakeLayer("A", POINT)
    assert host.SetLayImage("A", *IMAGE) is False
    assert host.DspLayImage("A", True) is False
    assert host.control.OrvSetLayImagePos("A", 3) is False
    assert (layer(host, "A")["imgfname"], layer(host, "A")["imgMode"], layer(host, "A")["imgPos"]) == (b"", 0, 0)
    host.add_block("A", 1, POINT)
    assert host.DspLayImage("A", True) is True and host.control.OrvSetLayImagePos("A", 3) is True
    assert host.SetLayImage("A", *IMAGE) is True
    told = {**IMAGE_FIELDS, "imgMode": 0, "imgPos": 3}
    assert picked(layer(host, "A"), told) == told, "new images are not shown until they are asked for"


@BOTH
def test_only_point_layers_take_images(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    set_sub_layer(host, "A", 1)
    assert host.SetLayImage("A", *IMAGE) is False and host.DspLayImage("A", True) is False
    assert host.control.OrvSetLayImagePos("A", 1) is False
    assert host.control.OrvSetSubLayImage("A", 1, *IMAGE) is False and host.control.OrvDspSubLayImage("A", 1, True) is False
    assert host.control.OrvSetSubLayImagePos("A", 1, 1) is False


def test_the_image_of_a_sub_layer_resets_its_mode_and_place():
    host = painted(True)
    host.add_block("A", 1, POINT)
    set_sub_layer(host, "A", 4)
    assert host.control.OrvDspSubLayImage("A", 4, True) and host.control.OrvSetSubLayImagePos("A", 4, 2)
    assert (sub(host, "A", 4)["imgMode"], sub(host, "A", 4)["imgPos"]) == (1, 2)
    assert host.control.OrvSetSubLayImage("A", 4, *IMAGE)
    told = {**IMAGE_FIELDS, "imgMode": 0, "imgPos": 0}
    assert picked(sub(host, "A", 4), told) == told
    for call in (lambda: host.control.OrvSetSubLayImage("A", 5, *IMAGE), lambda: host.control.OrvDspSubLayImage("A", 5, True),
                 lambda: host.control.OrvSetSubLayImagePos("A", 5, 1)):
        assert call() is False


# --- Sub layers --------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_sub_layer_set_twice_stays_one_record_and_keeps_its_image(newer):
    host = painted(newer)
    host.add_block("A", 1, POINT)
    assert set_sub_layer(host, "A", 3, 1, color=5, last=1)
    assert host.control.OrvSetSubLayColor2("A", 3, 77)
    assert host.control.OrvSetSubLayImage("A", 3, *IMAGE)
    assert host.control.OrvDspSubLayImage("A", 3, True)
    assert set_sub_layer(host, "A", 3, 2, color=6, disp=False, size=4)
    assert layer(host, "A")["subLayCnt"] == 1 and len(sub_layers(host, "A")) == 1
    told = {**IMAGE_FIELDS, "imgMode": 1, "pntType": 2, "color": 6, "color2": 0, "dspFlg": 0, "lineSize": 4, "outLine": 0,
            "fillMode": 1}
    assert picked(sub(host, "A", 3), told) == told


@pytest.mark.parametrize("lay_type, field", [(POINT, "pntType"), (POLYGON, "pgnType"), (LINE, "lineType"), (CIRCLE, "lineType"),
                                             (MESH, "lineType")])
@BOTH
def test_a_plain_sub_layer_gives_its_one_type_to_what_the_layer_holds(newer, lay_type, field):
    host = painted(newer)
    host.add_block("A", 1, lay_type)
    assert set_sub_layer(host, "A", 3, 6)
    told = {"layType": lay_type, "pntType": 0, "pgnType": 0, "lineType": 0, field: 6}
    assert picked(sub(host, "A", 3), told) == told


@BOTH
def test_a_full_sub_layer_takes_each_type_as_given_whatever_the_layer_holds(newer):
    host = painted(newer)
    host.add_block("A", 1, POINT)
    name = ("name",) if newer else ()
    assert host.SetSubLayerEx("A", *name, 3, True, 1, 2, 3, 4, 0x50, 6, 0)
    told = {"lineType": 1, "lineSize": 2, "pgnType": 3, "pntType": 4, "color": 0x50, "color2": 0, "outLine": 1, "fillMode": 0,
            "layerName": b"name" if newer else b""}
    assert picked(sub(host, "A", 3), told) == told


def test_sub_layers_grow_by_50_records():
    host = painted(True)
    host.add_block("A", 1, LINE)
    assert layer(host, "A")["subLayMax"] == 0
    for number in range(1, 52):
        assert set_sub_layer(host, "A", number)
        assert layer(host, "A")["subLayMax"] == (50 if number <= 50 else 100)
    assert [each["subLayNo"] for each in sub_layers(host, "A")] == list(range(1, 52))


def test_the_colours_of_a_sub_layer_are_set_one_by_one():
    host = painted(True)
    host.add_block("A", 1, LINE)
    set_sub_layer(host, "A", 3, color=1)
    assert host.control.OrvSetSubLayColor("A", 3, 0x10) and host.control.OrvSetSubLayColor2("A", 3, 0x20)
    assert (sub(host, "A", 3)["color"], sub(host, "A", 3)["color2"]) == (0x10, 0x20)
    assert host.control.OrvSetSubLayColor("A", 4, 0) is False and host.control.OrvSetSubLayColor2("A", 4, 0) is False


# --- Sheets ------------------------------------------------------------------------------------------------------------------


def test_the_origin_of_sheet_533945():
    assert painted().control.GetMeshXY(533945) == (True, 3170000, 4280000)


@pytest.mark.parametrize("mesh, x, y", [(0, 0, 0), (1, 10000, 0), (10, 0, 10000), (100, 80000, 0), (10000, 0, 80000),
                                        (999999, 8010000, 8010000), (5339457, 3170000, 4280000)])
def test_the_digits_of_a_sheet_number_are_taken_by_position(mesh, x, y):
    assert painted().control.GetMeshXY(mesh) == (True, x, y)


def test_a_block_made_by_sheet_number_stands_at_the_origin_of_its_sheet():
    control = painted().control
    assert control.DigMemAlloc("A", 533945, LINE, "", 1)
    found = block(control, "A", 533945)
    assert (found["GX"], found["GY"]) == (3170000, 4280000)
