"""The active set as a host counts, lists, writes and clears it, and what else changes it."""

import pytest
from drawing_rig import BOTH
from input_rig import LEFT, add_layer, click, drawn_after, listening, own, put, ready, selected, shown
from map_rig import LINE, POINT, POLYGON, TEXT, Host, drain, dump, item, items, verbs

A1, A2, A3 = [(100, 100)], [(200, 100)], [(300, 100)]


def mapped(newer=False):
    """Layer "A" of two blocks at the bottom and "B" above it: mesh 1 and 2 of "A" have items 1, 2, 3 each, "B" has 5 and 6."""
    host = shown(POINT, A1, A2, A3, newer=newer)
    add_layer(host, "A", POINT, 0, A1, A2, A3, mesh=2)
    add_layer(host, "B", POINT, 0, [(400, 100)], [(500, 100)], first=5)
    return ready(host)


def activate(host, *keys):
    for code, mesh, dat_id in keys:
        assert host.control.OrvSetActDat(code, mesh, dat_id) is True


def listed(host):
    done, codes, meshes, ids = host.GetDigActDat()
    assert done is True
    told = list(zip(codes or [], meshes or [], ids or []))
    assert len(told) == host.GetDigActDatCnt()
    return told


# --- Count and list ------------------------------------------------------------------------------------------------------------


@BOTH
def test_without_active_items_the_count_is_0_and_the_list_is_empty_and_true(newer):
    host = mapped(newer)
    assert host.GetDigActDatCnt() == 0 and listed(host) == []


@BOTH
def test_the_active_items_are_listed_from_the_bottom_of_the_map_and_in_the_order_of_their_blocks(newer):
    host = mapped(newer)
    activate(host, ("B", 1, 6), ("A", 2, 3), ("A", 1, 2), ("A", 2, 1), ("B", 1, 5))
    assert listed(host) == [("A", 1, 2), ("A", 2, 1), ("A", 2, 3), ("B", 1, 5), ("B", 1, 6)]
    host.SetLayIndex("A", -1)
    host.RDMSortIndex()
    assert listed(host) == [("B", 1, 5), ("B", 1, 6), ("A", 1, 2), ("A", 2, 1), ("A", 2, 3)]


@BOTH
@pytest.mark.parametrize("hide", [lambda host: host.SetLayer("A", False), lambda host: host.SetLayActive("A", False)],
                         ids=["hidden", "not to be selected"])
def test_items_of_layers_that_are_hidden_or_not_to_be_selected_are_not_counted(newer, hide):
    host = mapped(newer)
    activate(host, ("A", 1, 2), ("B", 1, 5))
    hide(host)
    assert listed(host) == [("B", 1, 5)]
    assert item(host, "A", 1, 2)["active"] == 1, "but they stay active"


@BOTH
def test_items_of_blocks_outside_the_picture_are_not_counted(newer):
    host = mapped(newer)
    add_layer(host, "FAR", POINT, 0, [(9000, 9000)])
    host.RDMReDraw()
    activate(host, ("FAR", 1, 1), ("B", 1, 5))
    assert listed(host) == [("B", 1, 5)]
    host.MapJumpToXY(9000.0, -9000.0)
    assert listed(host) == [("FAR", 1, 1)]


def test_items_outside_the_picture_of_a_block_inside_are_counted():
    host = shown(POINT, A1, [(9000, 9000)])
    activate(host, ("A", 1, 2))
    assert listed(host) == [("A", 1, 2)]


def test_texts_that_no_click_selects_are_counted_when_the_host_selects_them():
    host = shown(TEXT, A1)
    activate(host, ("A", 1, 1))
    assert listed(host) == [("A", 1, 1)]


# --- Writing it ----------------------------------------------------------------------------------------------------------------


def test_an_item_is_made_active_without_a_repaint_and_nothing_else_is_deselected():
    host = mapped()
    click(host, 400, 100)
    host.control.modified = False
    heard = listening(host)
    assert drawn_after(host, lambda: activate(host, ("A", 2, 3))) == [] and heard == []
    assert (selected(host, "B"), selected(host, "A", 2)) == ([5], [3])
    activate(host, ("A", 2, 3))
    assert selected(host, "A", 2) == [3], "twice is once"


@pytest.mark.parametrize("code, mesh, dat_id", [("X", 1, 1), ("a", 1, 1), ("", 1, 1), ("A", 3, 1), ("A", -1, 1), ("A", 1, 4),
                                                ("A", 1, 0), ("A", 1, -1), ("B", 2, 5)])
def test_a_missing_layer_block_or_item_cannot_be_made_active(code, mesh, dat_id):
    host = mapped()
    before = dump(host)
    assert host.control.OrvSetActDat(code, mesh, dat_id) is False
    assert dump(host) == before


def test_an_item_of_a_layer_that_is_not_to_be_selected_cannot_be_made_active():
    host = mapped()
    host.SetLayActive("A", False)
    assert host.control.OrvSetActDat("A", 1, 1) is False
    assert selected(host) == []
    host.SetLayActive("A", True)
    activate(host, ("A", 1, 1))


def test_an_item_of_a_hidden_layer_may_be_made_active():
    host = mapped()
    host.SetLayer("A", False)
    activate(host, ("A", 1, 1))
    assert selected(host) == [1]


def test_of_a_repeated_number_the_first_item_is_made_active():
    host = shown(POINT)
    for _ in range(3):
        put(host, 5, (100, 100))
    activate(host, ("A", 1, 5))
    assert [each["active"] for each in items(host, "A", 1)] == [1, 0, 0]


def test_the_code_is_cut_at_50_bytes():
    host = shown(POINT)
    code = "C" * 50
    add_layer(host, code, POINT, 0, A1)
    activate(host, (code + "and more", 1, 1))
    assert selected(host, code) == [1]


def test_an_item_may_be_made_active_before_it_was_drawn():
    host = shown(POINT)
    put(host, 1, (100, 100))
    activate(host, ("A", 1, 1))
    assert selected(host) == [1]


# --- Clearing it ---------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_reset_clears_all_items_of_all_blocks_and_draws_nothing(newer):
    host = mapped(newer)
    activate(host, ("A", 1, 2), ("A", 2, 3), ("B", 1, 5))
    assert drawn_after(host, host.ResetDigActiveAll) == []
    assert (selected(host), selected(host, "A", 2), selected(host, "B")) == ([], [], [])


@BOTH
def test_a_reset_reaches_hidden_layers_and_blocks_outside_the_picture(newer):
    host = mapped(newer)
    add_layer(host, "FAR", POINT, 0, [(9000, 9000)])
    host.RDMReDraw()
    activate(host, ("FAR", 1, 1), ("A", 1, 1))
    host.SetLayer("A", False)
    host.ResetDigActiveAll()
    assert (selected(host), selected(host, "FAR")) == ([], [])


@BOTH
def test_a_reset_keeps_the_items_of_layers_that_are_not_to_be_selected(newer):
    host = mapped(newer)
    activate(host, ("A", 1, 2), ("B", 1, 5))
    host.SetLayActive("A", False)
    host.ResetDigActiveAll()
    assert (selected(host), selected(host, "B")) == ([2], [])


def test_a_jump_to_data_with_selection_clears_by_the_same_rule():
    host = mapped()
    activate(host, ("A", 1, 2), ("B", 1, 5))
    host.SetLayActive("A", False)
    host.jump_to_data("B", 1, 6, True)
    assert (selected(host), selected(host, "B")) == ([2], [6])


def test_a_repaint_and_a_scroll_keep_the_active_set():
    host = mapped()
    click(host, 100, 100)
    host.RDMReDraw()
    host.control.OrvScrl(50.0, 50.0)
    host.control.Zoom = 1000
    host.RDMReDraw()
    assert sorted([selected(host), selected(host, "A", 2)]) == [[], [1]]


def test_init_empties_the_active_set_with_the_data():
    host = mapped()
    click(host, 100, 100)
    host.init()
    host.control.paint()
    assert host.control.GetDigActDatCnt() == 0 and listed(host) == []


def test_before_init_all_members_answer_without_data():
    for newer in (False, True):
        host = Host(newer)
        assert host.GetDigActDatCnt() == 0 and host.control.OrvSetActDat("A", 1, 1) is False
        host.ResetDigActiveAll()


# --- The first active item -----------------------------------------------------------------------------------------------------


def first_active(host):
    heard = listening(host)
    host.control.mouse("ldbl", LEFT, 700, 500)
    (told,) = own(heard) or [None]
    return told and told[1:4]


def test_the_first_active_item_is_looked_for_from_the_top_layer_down_and_from_the_first_item_up():
    host = mapped()
    activate(host, ("A", 1, 2), ("A", 1, 3))
    assert first_active(host) == (2, "A", 1)
    activate(host, ("A", 2, 3))
    assert first_active(host) == (3, "A", 2), "the later block of the layer is on top"
    activate(host, ("B", 1, 6))
    assert first_active(host) == (6, "B", 1)
    activate(host, ("B", 1, 5))
    assert first_active(host) == (5, "B", 1)


def test_the_first_active_item_is_found_in_hidden_layers_and_outside_the_picture():
    host = mapped()
    add_layer(host, "FAR", POINT, -1, [(9000, 9000)])
    host.RDMReDraw()
    activate(host, ("A", 1, 2))
    host.SetLayer("A", False)
    assert first_active(host) == (2, "A", 1)
    activate(host, ("FAR", 1, 1))
    assert first_active(host) == (1, "FAR", 1)


def test_the_first_active_item_is_not_looked_for_in_layers_that_are_not_to_be_selected():
    host = mapped()
    activate(host, ("B", 1, 5), ("A", 1, 2))
    host.SetLayActive("B", False)
    assert first_active(host) == (2, "A", 1)
    host.SetLayActive("A", False)
    assert first_active(host) is None


@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_an_item_made_active_by_the_host_is_drawn_active_at_the_next_repaint(kind):
    host = shown(kind, [(100, 100), (300, 100), (300, 300), (100, 100)])
    activate(host, ("A", 1, 1))
    drain(host)
    host.RDMReDraw()
    assert any(each.values and isinstance(each.values[0], tuple) and 255 in each.values[0] for each in verbs(host)
               if each.name.startswith("Select"))
