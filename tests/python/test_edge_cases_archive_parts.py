"""Reads of a part of an archive, by layer code and area, and the layer table that every read begins with."""

import struct

import orvane4
import pytest
from archive_rig import (VERSIONS, after_read, archive_bytes, blk, codes, dump, held, item, lay, layers_of, painted, read,
                         read_part,
                         tables, text, write_set)
from map_rig import picked

EACH_VERSION = pytest.mark.parametrize("version", VERSIONS)
A1 = blk(b"A", 1, item(1, (10, 20)), item(2, (30, 40)), path=b"a1", origin=(1000.0, 2000.0))
A2 = blk(b"A", -2, item(3, (5, 6)), path=b"a2")
B1 = blk(b"B", 1, item(4, (10, 20)), path=b"b1")
ALL = [(b"A", 1, [1, 2]), (b"A", -2, [3]), (b"B", 1, [4])]
ALL_A = ALL[:2]
# A block whose two far corners hold its bounds, and what stands between them is chosen or not.
CORNERS = (item(901, (-1000, -1000)), item(902, (1000, 1000)))


def part(name, wanted, area=(0, 0, 0, 0)):
    """What a read of a part gives to a fresh map: the answer and the blocks with their items."""
    host = painted()
    ok = read_part(host, name, wanted, area)
    return ok, held(host)


def chosen(folder, area, *items, version="1.10", wanted=("A",)):
    """The IDs that a read of an area takes out of a block of these items, without its two corners."""
    name = write_set(folder, blk(b"A", 1, *CORNERS, *items), version=version)
    _, blocks = part(name, list(wanted), area)
    return [dat_id for _, _, ids in blocks for dat_id in ids if dat_id < 900]


# --- By code -----------------------------------------------------------------------------------------------------------------


@EACH_VERSION
@pytest.mark.parametrize("area", [(0, 0, 0, 0), (7, -3, 7, -3)])
def test_a_code_without_an_area_reads_the_blocks_of_that_code_in_all_mesh_numbers(tmp_path, version, area):
    name = write_set(tmp_path, A1, B1, A2, version=version)
    assert part(name, ["A"], area) == (True, ALL_A)
    assert part(name, ["B"], area) == (True, ALL[2:])
    assert part(name, ["B", "A"], area) == (True, [ALL[0], ALL[2], ALL[1]]), "in the order of the file"
    assert part(name, ["A", "A"], area) == (True, ALL_A)


@EACH_VERSION
@pytest.mark.parametrize("area", [(0, 0, 0, 0), (7, -3, 7, -3)])
def test_neither_an_area_nor_codes_reads_everything(tmp_path, version, area):
    name = write_set(tmp_path, A1, A2, B1, version=version)
    assert part(name, [], area) == (True, ALL)


def test_a_part_brings_all_layers_and_the_paths_of_its_own_blocks(tmp_path):
    name = write_set(tmp_path, A1, B1)
    host = painted()
    assert read_part(host, name, ["B"]) is True
    assert codes(host) == [b"A", b"B"]
    assert [picked(each, ("path", "GX")) for each in dump(host)["blocks"]] == [{"path": b"b1", "GX": 0.0}]
    assert read_part(host, name, ["A"]) is True
    assert held(host) == [ALL[2], ALL[0]] and dump(host)["blocks"][1]["GX"] == 1000.0


@pytest.mark.parametrize("wanted", [["a"], ["A "], [""], ["C"], ["AA"]])
def test_a_code_is_compared_byte_by_byte_and_none_found_answers_false(tmp_path, wanted):
    assert part(write_set(tmp_path, A1, B1), wanted) == (False, [])


@pytest.mark.parametrize("wanted", [
    ("B",), orvane4.Array(["B"], "BSTR", lower=1), orvane4.Array(["B"], "BSTR", lower=-5), orvane4.Array(["x", "B"], "VARIANT",
                                                                                                         lower=3)])
def test_codes_come_in_an_array_of_any_lower_bound(tmp_path, wanted):
    assert part(write_set(tmp_path, A1, B1), wanted) == (True, ALL[2:])


@pytest.mark.parametrize("wanted", [None, 5, "A", 1.5])
def test_codes_that_are_no_array_answer_false_and_nothing_is_read(tmp_path, wanted):
    name = write_set(tmp_path, A1)
    host = painted()
    before = tables(host)
    try:
        assert read_part(host, name, wanted) is False
    except TypeError:
        pass  # the binding may refuse what is no sequence
    assert tables(host) == before


def test_a_code_of_japanese_characters_and_one_of_50_bytes_are_found(tmp_path):
    road, long_code = "表ソ道".encode("cp932"), b"k" * 50
    name = write_set(tmp_path, blk(road, 1, item(1, (0, 0))), blk(long_code, 1, item(2, (0, 0))))
    assert part(name, ["表ソ道"]) == (True, [(road, 1, [1])])
    assert part(name, ["k" * 50]) == (True, [(long_code, 1, [2])])


# --- By area -----------------------------------------------------------------------------------------------------------------


@EACH_VERSION
def test_an_area_without_codes_brings_the_layers_and_no_data_and_answers_false(tmp_path, version):
    name = write_set(tmp_path, A1, B1, version=version)
    host = painted()
    assert read_part(host, name, [], (-1e6, -1e6, 1e6, 1e6)) is False
    assert codes(host) == [b"A", b"B"] and held(host) == []


@EACH_VERSION
def test_a_point_0_4_outside_an_edge_is_taken_and_one_1_outside_is_not(tmp_path, version):
    near = [item(1, (20.4, 15.0), rect=(20, 15, 20, 15)), item(2, (15.0, 30.4), rect=(15, 30, 15, 30))]
    outside = [item(3, (21.0, 15.0), rect=(21, 15, 21, 15)), item(4, (15.0, 31.0), rect=(15, 31, 15, 31))]
    assert chosen(tmp_path, (10, 10, 20, 30), *near, *outside, version=version) == [1, 2]


def test_the_lower_edge_takes_a_point_exactly_1_below_a_whole_number(tmp_path):
    points = [item(1, (9, 15)), item(2, (8, 15)), item(3, (15, 9)), item(4, (15, 8))]
    assert chosen(tmp_path, (10, 10, 20, 30), *points) == [1, 3]
    assert chosen(tmp_path, (10.6, 10.5, 20, 30), *points, item(5, (10, 10))) == [5]


def test_the_edges_are_cut_toward_zero(tmp_path):
    points = [item(each, (each - 10, 0)) for each in range(1, 20)]
    # From trunc(-3.2) = -3 to trunc(2.9) = 2, and from trunc(-0.3) = 0 to trunc(0.9) = 0.
    assert chosen(tmp_path, (-2.7, -1, 2.4, 1), *points) == [each + 10 for each in range(-3, 3)]
    assert chosen(tmp_path, (0.2, -1, 0.4, 1), *points) == [10]
    # From trunc(-6.0) = -6 to trunc(-3.5) = -3.
    assert chosen(tmp_path, (-5.5, -1, -4.0, 1), *points) == [4, 5, 6, 7]


def test_an_item_with_an_extent_is_taken_with_its_block_however_far_it_lies(tmp_path):
    far_away = [item(1, (900, 900), (950, 950)), item(2, (900, 900), (900, 901)), item(3, (900, 900), (901, 900)), item(4, (900,
                                                                                                                            900))]
    assert chosen(tmp_path, (10, 10, 20, 20), *far_away) == [1, 2, 3]


def test_an_item_without_points_has_its_rectangle_inside_out_and_so_an_extent(tmp_path):
    assert chosen(tmp_path, (10, 10, 20, 20), item(1)) == [1]


@pytest.mark.parametrize("area, taken", [
    ((0, 0, 9.99, 100), False), ((0, 0, 10, 100), True), ((30, 0, 99, 100), True), ((30.01, 0, 99, 100), False),
    ((0, 0, 99, 19.99), False), ((0, 0, 99, 20), True), ((0, 40, 99, 99), True), ((0, 40.01, 99, 99), False),
    ((15, 25, 16, 26), True), ((-1e300, -1e300, 1e300, 1e300), True),
])
def test_a_block_passes_when_its_bounds_meet_the_area_edges_included(tmp_path, area, taken):
    line = blk(b"A", 1, item(1, (10, 20), (30, 40)))
    expected = (True, [(b"A", 1, [1])]) if taken else (False, [])
    assert part(write_set(tmp_path, line), ["A"], area) == expected


def test_the_area_meets_local_bounds_with_no_origin_added(tmp_path):
    line = blk(b"A", 1, item(1, (10, 20), (30, 40)), path=b"a", origin=(1000.0, 1000.0))
    name = write_set(tmp_path, line)
    assert part(name, ["A"], (0, 0, 50, 50))[0] is True
    assert part(name, ["A"], (1000, 1000, 1050, 1050)) == (False, [])


def test_corners_may_come_in_any_order(tmp_path):
    points = [item(1, (15, 15)), item(2, (25, 15)), item(3, (15, 35)), item(4, (5, 15))]
    for area in ((10, 10, 20, 30), (20, 10, 10, 30), (10, 30, 20, 10), (20, 30, 10, 10)):
        assert chosen(tmp_path, area, *points) == [1], area


def test_an_area_of_no_width_or_no_height_is_an_area(tmp_path):
    points = [item(1, (15, 15)), item(2, (15, 35)), item(3, (35, 15))]
    assert chosen(tmp_path, (15, 0, 15, 20), *points) == [1]
    assert chosen(tmp_path, (0, 15, 20, 15), *points) == [1]


def test_an_area_is_read_from_the_blocks_of_the_given_codes_only(tmp_path):
    name = write_set(tmp_path, A1, A2, B1)
    assert part(name, ["A"], (0, 0, 12, 22)) == (True, [(b"A", 1, [1]), ALL[1]])
    assert part(name, ["A", "B"], (8, 18, 12, 22)) == (True, [(b"A", 1, [1]), ALL[2]])
    assert part(name, ["B"], (100, 100, 200, 200)) == (False, [])


def test_the_whole_area_of_numbers_is_held_to_integers(tmp_path):
    assert chosen(tmp_path, (-1e300, -1e300, 1e300, 1e300), item(1, (15, 15)), item(2, (-15, 999))) == [1, 2]


def test_not_a_number_in_an_area_takes_nothing_of_a_block(tmp_path):
    name = write_set(tmp_path, A1)
    nan = float("nan")
    for area in ((nan, 0, 100, 100), (0, 0, nan, 100), (0, nan, 100, 100), (nan,) * 4):
        assert part(name, ["A"], area) == (False, []), area


# --- By the index ------------------------------------------------------------------------------------------------------------


def index(blocks, items, n_blocks=None, n_items=None, version="1.10"):
    counts = struct.pack("<ii", len(blocks) if n_blocks is None else n_blocks, len(items) if n_items is None else n_items)
    return archive_bytes.header("Ovi", version) + counts + b"".join(blocks) + b"".join(items)


def offsets(blocks, version="1.10"):
    at, told = archive_bytes.HEADER_SIZE, []
    for record in archive_bytes.data_records(version, blocks):
        told.append(at)
        at += len(record)
    return told


THREE = blk(b"A", 1, item(1, (1, 1)), item(2, (2, 2), text=text(b"two")), item(3, (3, 3)))


@EACH_VERSION
def test_chosen_items_are_read_at_the_places_and_in_the_order_of_the_index(tmp_path, version):
    one, two, three = offsets([THREE], version)
    content = index([archive_bytes.block_record(b"A", (0, 0, 9, 9), 4, 0)],
                    [archive_bytes.item_record((0, 0, 0, 0), at) for at in (three, one, one, two)], version=version)
    assert part(write_set(tmp_path, THREE, version=version, Ovi=content), ["A"]) == (True, [(b"A", 1, [3, 1, 1, 2])])


def test_the_index_chooses_by_its_own_code_bounds_and_rectangles_and_the_data_file_tells_the_rest(tmp_path):
    one, two, three = offsets([THREE])
    content = index([archive_bytes.block_record(b"other", (100, 100, 200, 200), 3, 0)],
                    [archive_bytes.item_record((150, 150, 150, 150), one), archive_bytes.item_record((190, 190, 190, 190), two),
                     archive_bytes.item_record((150, 150, 150, 150), three)])
    name = write_set(tmp_path, THREE, Ovi=content)
    host = painted()
    assert read_part(host, name, ["other"], (149, 149, 151, 151)) is True
    assert held(host) == [(b"A", 1, [1, 3])]
    assert [each["rect"] for each in dump(host)["blocks"][0]["dats"]] == [(1, 1, 1, 1), (3, 3, 3, 3)]
    assert part(name, ["A"]) == (False, [])


def test_an_index_without_items_reads_no_data_and_answers_true(tmp_path):
    content = index([archive_bytes.block_record(b"A", (0, 0, 9, 9), 3, 0)], [])
    host = painted()
    assert read_part(host, write_set(tmp_path, THREE, Ovi=content), ["A"]) is True
    assert held(host) == [] and codes(host) == [b"A"]


@EACH_VERSION
def test_an_index_with_a_wrong_title_makes_the_read_a_whole_one(tmp_path, version):
    content = b"x" + archive_bytes.index_file(version, [A1, A2, B1])[1:]
    name = write_set(tmp_path, A1, A2, B1, version=version, Ovi=content)
    assert part(name, ["B"]) == (True, ALL)
    assert part(name, [], (0, 0, 1, 1)) == (True, ALL)


@EACH_VERSION
def test_a_layer_file_with_a_wrong_title_fails_a_whole_read_and_not_that_of_a_part(tmp_path, version):
    content = b"x" + archive_bytes.layer_file(version, layers_of([A1, B1]))[1:]
    name = write_set(tmp_path, A1, B1, version=version, Ovl=content)
    host, ok = after_read(name)
    assert ok is False and held(host) == [] and codes(host) == []
    host = painted()
    assert read_part(host, name, ["B"]) is True
    assert sorted(dat_id for _, _, ids in held(host) for dat_id in ids) == [1, 2, 4], "the whole data file is read, B or not"
    assert codes(host) == []


def test_data_that_fail_leave_the_manage_file_unread(tmp_path):
    host = painted()
    host.add_block("A", 1, 1)
    name = write_set(tmp_path, A1, Ovb=archive_bytes.header("Ovb", "1.10"))
    assert read(host, name) is False and read_part(host, name, ["A"]) is False
    assert dump(host)["blocks"][0]["path"] == b""


def test_a_wrong_title_of_the_data_file_fails_a_part_too(tmp_path):
    content = b"x" + archive_bytes.data_file("1.10", [A1])[1:]
    host = painted()
    assert read_part(host, write_set(tmp_path, A1, Ovb=content), ["A"]) is False
    assert held(host) == [] and codes(host) == [b"A"]


@pytest.mark.parametrize("wanted, area", [(["B"], (0, 0, 0, 0)), (["no such"], (0, 0, 1, 1)), ([], (5, 5, 6, 6)),
                                          (["B"], (1e9, 1e9, 2e9, 2e9))])
def test_a_text_archive_is_read_whole_whatever_part_is_asked_for(tmp_path, wanted, area):
    name = write_set(tmp_path, A1, A2, B1, text_data=True)
    assert part(name, wanted, area) == (True, ALL)


def test_a_text_archive_with_a_bad_layer_file_is_not_read_though_a_part_is_asked_for(tmp_path):
    content = b"x" + archive_bytes.layer_file("1.10", layers_of([A1]))[1:]
    name = write_set(tmp_path, A1, text_data=True, Ovl=content)
    assert part(name, ["A"]) == (False, [])


# --- Layers ------------------------------------------------------------------------------------------------------------------

FLAGS = ("dspFlg", "outLine", "spareFlg", "fillMode", "imgMode")


@EACH_VERSION
@pytest.mark.parametrize("value", [0, 1, 2, 128, 255])
def test_a_flag_byte_is_1_when_it_is_not_0(tmp_path, version, value):
    record = bytearray(archive_bytes.layer_record(version, lay(b"A")))
    first = 339 if version == "1.10" else 335
    record[first:first + 5] = bytes([value]) * 5
    host, ok = after_read(write_set(tmp_path, A1, version=version, Ovl=archive_bytes.header("Ovl", version) + bytes(record)))
    assert ok is True and picked(dump(host)["layers"][0], FLAGS) == dict.fromkeys(FLAGS, int(value != 0))


@EACH_VERSION
def test_of_two_records_with_one_code_the_first_counts_and_codes_differ_by_case(tmp_path, version):
    layers = [lay(b"A", color=1), lay(b"a", color=2), lay(b"A", color=3), lay(b"B", color=4)]
    host, ok = after_read(write_set(tmp_path, A1, version=version, layers=layers))
    assert ok is True
    assert [(each["code"], each["color"]) for each in dump(host)["layers"]] == [(b"A", 1), (b"a", 2), (b"B", 4)]


@EACH_VERSION
def test_a_record_without_a_code_makes_no_layer(tmp_path, version):
    layers = [lay(b"", layerName=b"nameless", color=9), lay(b"A", color=1), lay(b"", color=9)]
    host, ok = after_read(write_set(tmp_path, A1, version=version, layers=layers))
    assert ok is True and [(each["code"], each["color"], each["layerName"]) for each in dump(host)["layers"]] == [(b"A", 1, b"")]
    assert host.control.OrvAddLayer("B", 1, 1, 3)
    assert picked(dump(host)["layers"][1], ("code", "layerName", "color")) == {"code": b"B", "layerName": b"", "color": 0xDCDCDC}


@EACH_VERSION
def test_a_read_layer_is_neither_active_nor_editable_and_has_no_sub_layers(tmp_path, version):
    host, _ = after_read(write_set(tmp_path, A1, version=version, layers=[lay(b"A", color2=5, imgPos=3)]))
    told = {"actFlg": 0, "editFlg": 0, "subLayCnt": 0, "subLayMax": 0, "subLays": []}
    told |= {"color2": 5, "imgPos": 3} if version == "1.10" else {"color2": 0, "imgPos": 0}
    assert picked(dump(host)["layers"][0], told) == told


@EACH_VERSION
@pytest.mark.parametrize("size", [1, 100, 1387])
def test_bytes_behind_the_last_whole_record_are_no_record(tmp_path, version, size):
    files = archive_bytes.files(version, [lay(b"A")], [A1])
    more = archive_bytes.layer_record(version, lay(b"B"))[:size]
    name = write_set(tmp_path, A1, version=version, Ovl=files["Ovl"] + more, Ovm=files["Ovm"] + b"A\0" * 291)
    host, ok = after_read(name)
    assert ok is True and codes(host) == [b"A"] and dump(host)["blocks"][0]["path"] == b"a1"


@EACH_VERSION
def test_layer_and_manage_files_of_their_headers_alone_are_in_order(tmp_path, version):
    name = write_set(tmp_path, A1, version=version, Ovl=archive_bytes.header("Ovl", version), Ovm=archive_bytes.header("Ovm",
                                                                                                                       version))
    host, ok = after_read(name)
    assert ok is True and codes(host) == []
    assert held(host) == [(b"A", 1, [1]), (b"A", 1, [2])], "without a layer no item finds the block before it"


@EACH_VERSION
def test_the_10001st_layer_ends_a_whole_read_without_data_and_makes_one_of_a_part_whole(tmp_path, version):
    layers = [lay(b"L%d" % number) for number in range(10001)]
    name = write_set(tmp_path, blk(b"L5", 1, item(1, (0, 0)), path=b"p"), blk(b"L6", 1, item(2, (0, 0))), version=version,
                     layers=layers)
    host, ok = after_read(name)
    assert ok is False and codes(host) == [b"L%d" % number for number in range(10000)] and held(host) == []
    assert read_part(host, name, ["L6"]) is True
    assert held(host) == [(b"L5", 1, [1]), (b"L6", 1, [2])] and dump(host)["blocks"][0]["path"] == b"p"


def test_10000_layers_in_all_are_room_enough_for_known_ones_to_come_again(tmp_path):
    layers = [lay(b"L%d" % number) for number in range(10000)]
    name = write_set(tmp_path, blk(b"L5", 1, item(1, (0, 0))), layers=layers)
    host, ok = after_read(name)
    assert ok is True and len(codes(host)) == 10000
    assert read(host, name) is True and len(codes(host)) == 10000
    assert held(host) == [(b"L5", 1, [1, 1])]
    other = write_set(tmp_path, blk(b"L5", 1, item(2, (0, 0))), base="other", layers=[lay(b"L5"), lay(b"new"), lay(b"L6")])
    assert read(host, other) is False and held(host) == [(b"L5", 1, [1, 1])]
