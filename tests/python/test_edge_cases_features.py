"""Items and their points: adds, edits, inserts, deletes, copies, meshes, and the bounds that follow them."""

import random

import pytest
from map_rig import CIRCLE, EMPTY_RECT, LINE, MESH, POINT, POLYGON, block, bounds, dump, item, items, painted, picked, verbs

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
THREE = [(0, 0), (10, 20), (30, 40)]


def with_item(newer=False, points=THREE, lay_type=LINE):
    host = painted(newer)
    host.add_block("A", 1, lay_type)
    host.add_item("A", 1, 7, points)
    return host


def places(host, dat_id=7):
    return [point[:2] for point in item(host, "A", 1, dat_id)["pnts"]]


# --- Items -------------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_new_item_starts_without_points_and_with_its_rectangle_inside_out(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    assert host.AddDigDat("A", 1, 7, 3) is True
    new = {"datID": 7, "lineTag": 3, "subLayNo": 0, "pntCnt": 0, "clipFlg": 1, "drawnFlg": 0, "active": 0, "rect": EMPTY_RECT,
           "orgPnts": None, "meshAttr": None, "str": None}
    assert picked(item(host, "A", 1, 7), new) == new


@BOTH
def test_ids_may_repeat(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    assert host.AddDigDat("A", 1, 7, 1) and host.AddDigDat("A", 1, 7, 2)
    assert host.GetLayDatCnt("A", 1) == 2


@BOTH
def test_with_repeated_ids_points_go_to_the_last_item_and_edits_and_deletes_to_the_first(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    for tag in (1, 2):
        host.AddDigDat("A", 1, 7, tag)
        host.AddDigDatPnt("A", 1, 7, tag, tag, 0)
    host.AddDigDatPnt("A", 1, 7, 3, 3, 0)
    assert [each["pntCnt"] for each in items(host, "A", 1)] == [1, 2]
    host.EditDigDatPnt("A", 1, 7, 0, 9, 9, 0)
    assert [each["pnts"][0][0] for each in items(host, "A", 1)] == [9, 2]
    assert host.SetDigDatSubLayer("A", 1, 7, 0)
    assert host.DelDigDat("A", 1, 7)
    assert [each["lineTag"] for each in items(host, "A", 1)] == [2]


@BOTH
def test_the_1001st_item_raises_the_capacity_to_2000(newer):
    host = painted(newer)
    host.add_block("A", 1, POINT)
    for dat_id in range(1, 1001):
        host.AddDigDat("A", 1, dat_id, 0)
    assert block(host, "A", 1)["datMax"] == 1000
    host.AddDigDat("A", 1, 1001, 0)
    assert (block(host, "A", 1)["datMax"], block(host, "A", 1)["datCnt"]) == (2000, 1001)


@BOTH
def test_a_delete_of_the_only_item_frees_the_array_and_the_next_add_makes_1000_records_afresh(newer):
    host = with_item(newer)
    assert host.DelDigDat("A", 1, 7) is True
    found = block(host, "A", 1)
    assert (found["dats"], found["datMax"], found["datCnt"]) == (None, 0, 0)
    assert host.DelDigDat("A", 1, 7) is False
    host.AddDigDat("A", 1, 8, 0)
    assert (block(host, "A", 1)["datMax"], block(host, "A", 1)["datCnt"]) == (1000, 1)


@BOTH
def test_a_delete_keeps_the_order_of_the_others(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    for dat_id in (5, 6, 7, 8):
        host.AddDigDat("A", 1, dat_id, 0)
    assert host.DelDigDat("A", 1, 6)
    assert [each["datID"] for each in items(host, "A", 1)] == [5, 7, 8]


def test_a_delete_does_not_shrink_the_bounds_of_the_block():
    host = with_item()
    host.add_item("A", 1, 8, [(500, 600)])
    host.DelDigDat("A", 1, 8)
    assert bounds(host, "A", 1) == (0, 0, 500, 600)


# --- Points ------------------------------------------------------------------------------------------------------------------


@BOTH
def test_the_rectangle_truncates_and_its_far_sides_round_up(newer):
    host = with_item(newer, [(10.4, 20.5)])
    assert item(host, "A", 1, 7)["rect"] == (10, 20, 10, 21)
    host.AddDigDatPnt("A", 1, 7, -3.9, 33.6, 0)
    assert item(host, "A", 1, 7)["rect"] == (-3, 20, 10, 34)
    assert bounds(host, "A", 1) == (-3.9, 20.5, 10.4, 33.6)


def test_bounds_are_set_afresh_by_the_first_point_of_whatever_item_stands_first():
    host = with_item()
    host.add_item("A", 1, 8, [(500, 600)])
    assert bounds(host, "A", 1) == (0, 0, 500, 600)
    host.DelDigDat("A", 1, 7)
    host.DelDigDat("A", 1, 8)
    host.AddDigDat("A", 1, 9, 0)
    host.AddDigDat("A", 1, 10, 0)
    host.AddDigDatPnt("A", 1, 10, -5, -6, 0)
    assert bounds(host, "A", 1) == (-5, -6, 500, 600), "the second item only widens what was there"
    host.AddDigDatPnt("A", 1, 9, 1, 2, 0)
    assert bounds(host, "A", 1) == (1, 2, 1, 2), "the first point of the item at position 0 forgets all others"


@BOTH
def test_the_first_point_of_a_circle_widens_by_its_radius_and_later_ones_do_not(newer):
    host = with_item(newer, [(10, 20, 5)], CIRCLE)
    assert item(host, "A", 1, 7)["rect"] == (5, 15, 15, 25)
    assert bounds(host, "A", 1) == (5, 15, 15, 25)
    host.AddDigDatPnt("A", 1, 7, 100, 200, 50)
    assert item(host, "A", 1, 7)["rect"] == (5, 15, 100, 200)
    assert bounds(host, "A", 1) == (5, 15, 100, 200)


@BOTH
def test_points_from_arrays_give_the_same_item_as_points_one_by_one(newer):
    numbers = random.Random(3)
    for lay_type in (LINE, CIRCLE):
        points = [(numbers.uniform(-100, 100), numbers.uniform(-100, 100), numbers.uniform(0, 50)) for _ in range(20)]
        host = with_item(newer, points, lay_type)
        other = painted(newer)
        other.add_block("A", 1, lay_type)
        assert other.AddDigDatEx("A", 1, 7, 0, *map(list, zip(*points)))
        assert items(other, "A", 1) == items(host, "A", 1)
        assert bounds(other, "A", 1) == bounds(host, "A", 1)


@BOTH
def test_an_edited_point_stands_where_it_was_put_and_its_rectangle_only_grows_without_rounding(newer):
    host = with_item(newer, [(10, 10), (20, 20)])
    assert host.EditDigDatPnt("A", 1, 7, 1, 15.9, 30.9, 5) is True
    assert item(host, "A", 1, 7)["pnts"] == [(10, 10, 0), (15.9, 30.9, 5)]
    assert item(host, "A", 1, 7)["rect"] == (10, 10, 20, 30)
    assert bounds(host, "A", 1) == (10, 10, 20, 30.9)


@BOTH
def test_an_index_behind_the_last_point_is_refused_by_edit_and_delete(newer):
    host = with_item(newer)
    before = dump(host)
    for idx in (3, 4, 2147483647):
        assert host.EditDigDatPnt("A", 1, 7, idx, 1, 1, 0) is False
        assert host.DelDigDatPnt("A", 1, 7, idx) is False
    assert dump(host) == before


@pytest.mark.parametrize("idx", [-1, -2147483648])
@BOTH
def test_a_negative_index_touches_nothing(newer, idx):
    host = with_item(newer)
    before = dump(host)
    assert host.EditDigDatPnt("A", 1, 7, idx, 1, 1, 0) is False
    assert host.DelDigDatPnt("A", 1, 7, idx) is False
    assert host.InsertDigDatPnt("A", 1, 7, idx, 1, 1, 0) is False
    assert dump(host) == before


@BOTH
def test_an_insert_overwrites_its_point_and_makes_the_item_one_longer(newer):
    host = with_item(newer)
    assert host.InsertDigDatPnt("A", 1, 7, 1, 5, 6, 7) is True
    assert item(host, "A", 1, 7)["pntCnt"] == 4
    assert item(host, "A", 1, 7)["pnts"][:3] == [(0, 0, 0), (5, 6, 7), (30, 40, 0)]


@BOTH
def test_an_insert_at_the_old_count_appends(newer):
    host = with_item(newer)
    assert host.InsertDigDatPnt("A", 1, 7, 3, 5, 6, 7) is True
    assert places(host) == [*THREE, (5, 6)]


@BOTH
def test_an_insert_behind_the_raised_count_is_refused_and_the_count_stays_raised(newer):
    host = with_item(newer)
    assert host.InsertDigDatPnt("A", 1, 7, 5, 5, 6, 7) is False
    assert host.GetDigDatInfoEx("A", 1, 7)[3] == 4
    assert places(host)[:3] == THREE
    ok, xs, ys = host.GetDigDatPnt("A", 1, 7)
    assert ok and len(xs) == len(ys) == 4, "the read stays within memory"


@BOTH
def test_a_delete_of_a_point_moves_the_others_down_and_keeps_rectangle_and_bounds(newer):
    host = with_item(newer)
    rect = item(host, "A", 1, 7)["rect"]
    assert host.DelDigDatPnt("A", 1, 7, 2) is True
    assert host.DelDigDatPnt("A", 1, 7, 0) is True
    assert places(host) == [(10, 20)]
    assert item(host, "A", 1, 7)["rect"] == rect and bounds(host, "A", 1) == (0, 0, 30, 40)


@BOTH
def test_a_delete_of_the_last_point_answers_false_although_it_was_done(newer):
    host = with_item(newer, [(1, 2)], POINT)
    assert host.DelDigDatPnt("A", 1, 7, 0) is False
    assert host.GetDigDatInfoEx("A", 1, 7)[3] == 0
    assert host.AddDigDatPnt("A", 1, 7, 3, 4, 0) and places(host) == [(3, 4)]


@BOTH
def test_edits_draw_nothing(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 7, THREE)
    host.EditDigDatPnt("A", 1, 7, 0, 1, 1, 0)
    host.DelDigDat("A", 1, 7)
    assert verbs(host) == []


# --- Free IDs ----------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_free_id_is_one_more_than_the_greatest_in_its_block_whatever_the_kind_asked_for(newer):
    host = painted(newer)
    host.add_block("A", 1, LINE)
    host.add_block("B", 1, LINE)
    host.AddDigDat("B", 1, 100, 0)
    for s_type in (0, 1, 2, -1):
        assert host.GetFreeDigDatID("A", 1, s_type) == 1
    host.AddDigDat("A", 1, -5, 0)
    assert host.GetFreeDigDatID("A", 1, 0) == host.GetFreeDigDatID("A", 1, 1) == 1
    host.AddDigDat("A", 1, 41, 0)
    host.AddDigDat("A", 1, 7, 0)
    assert host.GetFreeDigDatID("A", 1, 0) == host.GetFreeDigDatID("A", 1, 1) == 42
    assert host.control.message_boxes == []


@BOTH
def test_a_free_id_in_a_missing_block_tells_the_operator_and_gives_minus_1(newer):
    host = painted(newer)
    assert host.GetFreeDigDatID("A", 1, 0) == -1
    (message,) = host.control.message_boxes
    assert message[0] == "ERROR 1094 : DigDat Index Not Found !"


# --- Sub layers of items -----------------------------------------------------------------------------------------------------


@BOTH
def test_an_item_takes_a_sub_layer_that_its_layer_has_and_true_comes_without_an_item_too(newer):
    host = with_item(newer)
    assert host.SetDigDatSubLayer("A", 1, 7, 3) is False
    assert host.control.OrvSetSubLayer("A", "", 3, True, 0, 1, 0, 0)
    assert host.SetDigDatSubLayer("A", 1, 7, 3) is True
    assert item(host, "A", 1, 7)["subLayNo"] == 3
    assert host.SetDigDatSubLayer("A", 1, 99, 3) is True
    assert host.SetDigDatSubLayer("A", 1, 7, 0) is True
    assert item(host, "A", 1, 7)["subLayNo"] == 0


def test_the_sub_layers_of_many_items_are_set_unchecked_and_one_hit_is_enough():
    host = painted()
    host.add_block("A", 1, LINE)
    for dat_id in (30, 10, 20):
        host.AddDigDat("A", 1, dat_id, 0)
    assert host.control.OrvSetDatSubLayerEx("A", 1, [10, 99, 30], [5, 6, 7]) is True
    assert [(each["datID"], each["subLayNo"]) for each in items(host, "A", 1)] == [(30, 7), (10, 5), (20, 0)]
    assert host.control.OrvSetDatSubLayerEx("A", 1, [98, 99], [1, 1]) is False


# --- Copies ------------------------------------------------------------------------------------------------------------------


def test_a_copy_between_layers_of_different_type_gives_0_and_changes_nothing():
    host = with_item()
    host.add_block("B", 1, POLYGON)
    before = dump(host)
    assert host.control.OrvCopyData("A", 1, 7, "B", 1) == 0
    assert dump(host) == before


def test_a_copy_of_a_missing_item_or_between_missing_blocks_gives_0():
    host = with_item()
    host.add_block("B", 1, LINE)
    before = dump(host)
    assert host.control.OrvCopyData("A", 1, 8, "B", 1) == 0
    assert host.control.OrvCopyData("A", 2, 7, "B", 1) == 0
    assert host.control.OrvCopyData("A", 1, 7, "B", 2) == 0
    assert dump(host) == before


def test_a_copy_takes_the_whole_record_under_a_free_id_and_recounts_the_bounds():
    host = with_item()
    host.control.SetDigDatInfoEx("A", 1, 7, 5, True)
    host.control.DigMemAlloc2("B", 1, LINE, "", 1, 1000.0, 1000.0)
    host.add_item("B", 1, 41, [(700, 800), (900, 900)])
    host.DelDigDatPnt("B", 1, 41, 1)
    assert host.control.OrvCopyData("A", 1, 7, "B", 1) == 42
    copy, source = item(host, "B", 1, 42), item(host, "A", 1, 7)
    assert copy == {**source, "datID": 42}
    assert (copy["active"], copy["lineTag"]) == (1, 5)
    assert bounds(host, "B", 1) == (0, 0, 700, 800), "the recount forgets the point that was deleted"


def test_a_copied_circle_counts_its_radius_only_as_the_first_point_of_all():
    host = with_item(False, [(10, 10, 4)], CIRCLE)
    host.add_block("B", 1, CIRCLE)
    assert host.control.OrvCopyData("A", 1, 7, "B", 1) == 1
    assert bounds(host, "B", 1) == (6, 6, 14, 14)
    host.control.EditDigDatPnt("A", 1, 7, 0, 100, 100, 50)
    assert host.control.OrvCopyData("A", 1, 7, "B", 1) == 2
    assert bounds(host, "B", 1) == (6, 6, 100, 100)


# --- Meshes ------------------------------------------------------------------------------------------------------------------


def with_mesh(hcnt=3, vcnt=2):
    host = painted()
    host.add_block("A", 1, MESH)
    xs = [float(i % hcnt) for i in range(hcnt * vcnt)]
    ys = [float(i // hcnt) for i in range(hcnt * vcnt)]
    assert host.control.OrvAddMeshDat("A", 1, 7, hcnt, vcnt, xs, ys, [9.0] * (hcnt * vcnt)) is True
    return host


def test_a_mesh_holds_its_grid_row_after_row_with_all_points_in_use():
    host = with_mesh()
    made = item(host, "A", 1, 7)
    assert made["pnts"] == [(0, 0, 9), (1, 0, 9), (2, 0, 9), (0, 1, 9), (1, 1, 9), (2, 1, 9)]
    assert made["meshAttr"] == {"hcnt": 3, "vcnt": 2, "useFlag": [0xFF] * 6, "meshColor": [0] * 6}
    assert (made["lineTag"], made["pntCnt"], made["rect"]) == (0, 6, (0, 0, 2, 1))
    assert bounds(host, "A", 1) == (0, 0, 2, 1)


@pytest.mark.parametrize("count", [1, 5, 7])
def test_a_wrong_number_of_mesh_colours_or_flags_is_refused_and_the_mesh_keeps_its_own(count):
    host = with_mesh()
    host.control.OrvSetMeshColor("A", 1, 7, [1, 2, 3, 4, 5, 6])
    before = dump(host)
    assert host.control.OrvSetMeshColor("A", 1, 7, [9] * count) is False
    assert host.control.OrvSetMeshUseFlag("A", 1, 7, [0] * count) is False
    assert dump(host) == before


def test_only_a_mesh_layer_takes_mesh_colours_and_flags():
    host = with_item()
    before = dump(host)
    assert host.control.OrvSetMeshColor("A", 1, 7, [1, 2, 3]) is False
    assert host.control.OrvSetMeshUseFlag("A", 1, 7, [1, 0, 1]) is False
    assert dump(host) == before
