"""Lookups and reads, and the order of the display index."""

import random

import orvane4
import pytest
from map_rig import LINE, POINT, POLYGON, block, drain, dump, index_keys, layer, named, one_to_one, painted, verbs

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])


@BOTH
def test_an_empty_store_has_an_empty_index_and_finds_nothing(newer):
    host = painted(newer)
    assert dump(host)["digIndex"] == []
    assert host.GetLayDatCnt("", 0) == 0 and host.GetLayDatCnt("A", 1) == 0
    assert host.GetDigDatInfo("A", 1, 0) == -1
    assert host.GetDigDatInfoEx("A", 1, 1) == (False, None, None, None, None)
    assert host.control.GetLayPath("A", 1) == ""


@BOTH
def test_a_layer_without_a_block_counts_no_data_and_enters_no_index(newer):
    host = painted(newer)
    assert host.MakeLayer("A", POINT)
    assert dump(host)["digIndex"] == []
    for mesh in (0, 1, -1, 533945):
        assert host.GetLayDatCnt("A", mesh) == 0
        assert host.AddDigDat("A", mesh, 1, 0) is False


@BOTH
def test_one_mesh_in_two_layers_and_one_layer_in_two_meshes_are_found_apart(newer):
    host = painted(newer)
    for code, mesh, dat_id in (("A", 1, 11), ("A", 2, 12), ("B", 1, 21)):
        assert host.add_block(code, mesh, LINE)
        assert host.AddDigDat(code, mesh, dat_id, 0)
    assert [host.GetDigDatInfo(*key, 0) for key in (("A", 1), ("A", 2), ("B", 1))] == [11, 12, 21]
    assert host.GetLayDatCnt("B", 2) == 0


@BOTH
def test_the_position_behind_the_last_item_reads_0_and_only_a_greater_one_minus_1(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    for dat_id in (5, 6):
        host.AddDigDat("A", 1, dat_id, 0)
    assert [host.GetDigDatInfo("A", 1, idx) for idx in (0, 1, 2, 3, 1000)] == [5, 6, 0, -1, -1]
    host.DelDigDat("A", 1, 6)
    assert [host.GetDigDatInfo("A", 1, idx) for idx in (0, 1, 2)] == [5, 0, -1]


def test_the_position_behind_a_full_thousand_reads_0_too():
    host = painted()
    host.add_block("A", 1, LINE)
    for dat_id in range(1, 1001):
        host.AddDigDat("A", 1, dat_id, 0)
    assert [host.GetDigDatInfo("A", 1, idx) for idx in (999, 1000, 1001)] == [1000, 0, -1]


@BOTH
def test_codes_that_differ_in_case_are_two_layers(newer):
    host = painted(newer)
    assert host.MakeLayer("ABC", LINE) and host.MakeLayer("abc", LINE)
    host.SetLayColor("abc", 5)
    assert (layer(host, "ABC")["color"], layer(host, "abc")["color"]) == (0xDCDCDC, 5)
    host.add_block("ABC", 1, LINE)
    assert host.AddDigDat("abc", 1, 1, 0) is False


def test_the_index_keeps_its_order_while_blocks_come_and_go():
    host = one_to_one()
    for code, key in (("A", 1), ("B", 2)):
        host.add_block(code, 1, LINE, key)
    assert index_keys(host) == [("B", 1), ("A", 1)]
    host.control.DigMemDelete("B", 1)
    host.add_block("A", 2, LINE)
    assert index_keys(host) == [("A", 1), ("A", 2)]
    host.control.DigMemDelete("A", 1)
    host.add_block("A", 3, LINE)
    whole = dump(host)
    assert index_keys(host) == [("A", 2), ("A", 3)]
    assert [blk for blk, _ in whole["digIndex"]] == [1, 0], "the block made last stands in the earlier slot"
    host.add_item("A", 3, 1, [(30, -30), (40, -40)])
    host.add_item("A", 2, 1, [(10, -10), (20, -20)])
    drain(host)
    host.RDMReDraw()
    drawn = [each.values[0][0] for each in named(verbs(host), "Polyline", "base")]
    assert drawn == [(10, 10), (30, 30)], "drawing follows the index"


@BOTH
def test_the_sort_puts_the_greatest_key_first_and_keeps_the_blocks_of_a_layer_together(newer):
    host = painted(newer)
    for code, key in (("A", 3), ("B", 2), ("C", 1)):
        for mesh in (1, 2):
            host.add_block(code, mesh, LINE, key)
    assert [code for code, _ in index_keys(host)] == list("AABBCC")
    for code, key in (("A", 1), ("B", 2), ("C", 3)):
        assert host.SetLayIndex(code, key) == 1
    assert [code for code, _ in index_keys(host)] == list("AABBCC"), "a new key alone moves nothing"
    assert host.RDMSortIndex() is None
    assert index_keys(host) == [("C", 1), ("C", 2), ("B", 1), ("B", 2), ("A", 1), ("A", 2)]


def test_a_make_of_a_block_sorts_too():
    host = painted()
    for code, key in (("A", 3), ("B", 2)):
        host.add_block(code, 1, LINE, key)
    host.control.SetLayIndex("B", 9)
    host.add_block("A", 2, LINE)
    assert index_keys(host) == [("B", 1), ("A", 1), ("A", 2)]


def exchange_sorted(keys):
    """Positions of the layers as a plain exchange sort leaves them, greatest key first. It is not stable."""
    pairs = [(key, pos) for pos, key in enumerate(keys)]
    for i in range(len(pairs)):
        for j in range(i + 1, len(pairs)):
            if pairs[i][0] < pairs[j][0]:
                pairs[i], pairs[j] = pairs[j], pairs[i]
    return [pos for _, pos in pairs]


@pytest.mark.parametrize("seed", range(20))
def test_layers_of_equal_keys_come_out_as_the_exchange_sort_leaves_them(seed):
    numbers = random.Random(seed)
    keys = [numbers.randint(0, 5) for _ in range(numbers.randint(2, 40))]
    host = painted()
    for pos, key in enumerate(keys):
        host.add_block(f"L{pos}", 1, LINE, key)
    host.control.OrvSortLayer()
    assert [code for code, _ in index_keys(host)] == [f"L{pos}" for pos in exchange_sorted(keys)]


def test_a_made_layer_without_a_block_takes_part_in_the_sort():
    host = painted()
    for pos, key in enumerate([1, 2, 1, 2]):
        host.control.OrvMakeLayer(f"L{pos}", LINE)
        host.control.OrvSetLayIndex(f"L{pos}", key)
    for pos in (0, 2, 3):
        host.add_block(f"L{pos}", 1, LINE)
    assert [code for code, _ in index_keys(host)] == [f"L{pos}" for pos in exchange_sorted([1, 2, 1, 2]) if pos != 1]


@BOTH
def test_reads_add_the_origin_of_the_block_and_writes_do_not(newer):
    host = painted(newer)
    assert host.control.DigMemAlloc2("A", 1, LINE, "", 1, 1000.75, -2000.75)
    host.add_item("A", 1, 7, [(1.5, 2.5, 9.25)])
    assert block(host, "A", 1)["dats"][0]["pnts"] == [(1.5, 2.5, 9.25)]
    ok, xs, ys = host.GetDigDatPnt("A", 1, 7)
    assert (ok, list(xs), list(ys)) == (True, [1001.5], [-1997.5])
    ok, xs, ys, zs = host.control.OrvGetDatPntEx("A", 1, 7)
    assert (list(xs), list(ys), list(zs)) == ([1001.5], [-1997.5], [9.25])


def test_the_read_of_an_item_tells_type_tag_points_and_activity():
    host = painted()
    host.add_block("A", 1, POLYGON)
    host.add_item("A", 1, 7, [(0, 0), (1, 0), (0, 0)], tag=-3)
    assert host.control.OrvGetDatInfoEx("A", 1, 7) == (True, POLYGON, -3, 3, 0)
    assert host.control.SetDigDatInfoEx("A", 1, 7, 12, True) == 1
    assert host.control.OrvGetDatInfoEx("A", 1, 7) == (True, POLYGON, 12, 3, 1)


def test_the_older_info_write_reaches_ids_up_to_32767_only():
    host = painted()
    host.add_block("A", 1, LINE)
    for dat_id in (32767, 40000):
        host.AddDigDat("A", 1, dat_id, 0)
    assert host.control.SetDigDatInfoEx("A", 1, 32767, 5, False) == 1
    assert block(host, "A", 1)["dats"][0]["lineTag"] == 5
    argument = next(m for m in orvane4.members() if m["name"] == "SetDigDatInfoEx")["args"][2]
    assert (argument["name"], argument["kind"]) == ("datID", "short")
