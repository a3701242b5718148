"""Items upon each other: which one a click selects, stepping down by Shift clicks, Ctrl, the 199 candidates, the gates."""

import pytest
from drawing_rig import BOTH
from input_rig import (CTRL, SHIFT, add_layer, click, listening, own, picked_at, put, ready, release, selected, shown, taken,
                       at_scale)
from map_rig import CIRCLE, LINE, POINT, POLYGON, drain, dump, item, items

SQUARE = [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)]
ELSEWHERE = [(500, 100), (600, 100), (600, 200), (500, 200), (500, 100)]
AT = (200, 200)


def two_layers(newer=False):
    """Layer "TOP" with item 9 over layer "A" with item 1, both under the cursor; and item 2 of "A" elsewhere."""
    host = shown(POLYGON, SQUARE, ELSEWHERE, newer=newer)
    add_layer(host, "TOP", POLYGON, 0, SQUARE, first=9)
    return ready(host)


def both(host):
    return selected(host, "TOP"), selected(host, "A")


# --- Plain clicks --------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_click_on_two_stacked_polygons_selects_the_top_one_only(newer):
    host = two_layers(newer)
    click(host, *AT)
    assert both(host) == ([9], [])


def test_a_layer_s_index_decides_which_one_is_on_top():
    host = two_layers()
    assert host.SetLayIndex("A", -5) == 1
    host.RDMSortIndex()
    host.RDMReDraw()
    click(host, *AT)
    assert both(host) == ([], [1])


def test_within_a_block_the_later_item_is_on_top_whatever_its_number():
    host = shown(POLYGON)
    for dat_id in (30, 7, 12):
        put(host, dat_id, *SQUARE)
    host.RDMReDraw()
    assert picked_at(host, *AT) == 12 and selected(host) == [12]


def test_a_click_replaces_the_active_set():
    host = two_layers()
    click(host, 550, 150)
    assert both(host) == ([], [2])
    click(host, *AT)
    assert both(host) == ([9], [])


def test_a_click_with_ctrl_and_shift_together_is_a_plain_one():
    host = two_layers()
    click(host, 550, 150)
    click(host, *AT, SHIFT)
    click(host, *AT, SHIFT | CTRL)
    assert both(host) == ([9], [])
    click(host, *AT, SHIFT)
    assert both(host) == ([], [1]), "it took the count back to 0, so this Shift click is the first again"


@pytest.mark.parametrize("flags", [1, 2, 3, 5, 9, 12])
def test_a_button_up_with_another_flag_word_than_shift_or_ctrl_alone_is_a_plain_click(flags):
    host = two_layers()
    click(host, 550, 150)
    host.control.mouse("ldown", 1, *AT)
    host.control.mouse("lup", flags, *AT)
    assert both(host) == ([9], [])


# --- Stepping down by Shift clicks ---------------------------------------------------------------------------------------------


def test_shift_clicks_alternate_through_both_of_two_stacked_polygons():
    host = two_layers()
    click(host, *AT)
    for expected in (([], [1]), ([9], []), ([], [1]), ([9], [])):
        click(host, *AT, SHIFT)
        assert both(host) == expected


def test_shift_clicks_walk_down_a_stack_and_begin_again_at_the_top():
    host = shown(POLYGON, SQUARE, SQUARE, SQUARE)
    add_layer(host, "TOP", POLYGON, 0, SQUARE, first=9)
    ready(host)
    click(host, *AT)
    seen = []
    for _ in range(8):
        click(host, *AT, SHIFT)
        seen.append(both(host))
    round_ = [([], [3]), ([], [2]), ([], [1]), ([9], [])]
    assert seen == round_ * 2


def test_a_click_without_shift_takes_the_count_back():
    host = two_layers()
    for plain in (0, CTRL):
        click(host, *AT)
        click(host, *AT, SHIFT)
        assert both(host) == ([], [1])
        click(host, 700, 500, plain)
        click(host, *AT, SHIFT)
        assert both(host) == ([], [1]), "the first Shift click once more"


def test_the_count_goes_up_with_shift_clicks_on_nothing_too():
    host = two_layers()
    click(host, *AT)
    click(host, 700, 500, SHIFT)
    assert both(host) == ([9], [])
    click(host, *AT, SHIFT)
    assert both(host) == ([9], []), "2 modulo 2"


def test_the_count_is_kept_by_shift_clicks_without_selection():
    host = two_layers()
    click(host, *AT)
    host.control.SetDataSelectMode(False)
    click(host, *AT, SHIFT)
    host.control.SetDataSelectMode(True)
    click(host, *AT, SHIFT)
    assert both(host) == ([9], [])


def test_the_count_is_left_alone_by_button_ups_in_other_modes_and_at_the_end_of_a_rectangle():
    host = two_layers()
    click(host, *AT)
    host.control.RunMode = 7
    click(host, *AT, SHIFT)
    click(host, *AT)
    host.control.RunMode = 0
    host.control.mouse("ldown", 1, 600, 400)
    host.control.mouse("move", 1, 700, 500)
    release(host, 700, 500, SHIFT)
    click(host, *AT, SHIFT)
    assert both(host) == ([], [1])


def test_the_count_is_one_for_all_controls_of_a_program():
    first, second = two_layers(), two_layers()
    click(first, *AT)
    click(first, *AT, SHIFT)
    assert both(first) == ([], [1])
    click(second, *AT, SHIFT)
    assert both(second) == ([9], []), "the second Shift click of the program"


def test_init_does_not_take_the_count_back():
    host, other = two_layers(), two_layers()
    click(host, *AT)
    click(host, *AT, SHIFT)
    host.init()
    click(other, *AT, SHIFT)
    assert both(other) == ([9], [])


def test_a_shift_click_leaves_items_that_are_not_under_the_cursor_as_they_are():
    host = two_layers()
    click(host, 550, 150)
    click(host, *AT, SHIFT)
    assert both(host) == ([], [1, 2])
    click(host, *AT, SHIFT)
    assert both(host) == ([9], [2])


def test_a_shift_click_on_a_single_item_selects_it_and_keeps_it():
    host = shown(POLYGON, SQUARE)
    for _ in range(3):
        click(host, *AT, SHIFT)
        assert selected(host) == [1]


def test_a_shift_click_tells_the_topmost_active_item():
    host = two_layers()
    click(host, *AT)
    heard = listening(host)
    click(host, *AT, SHIFT)
    assert own(taken(heard)) == [("OnDataClick", 1, "A", 1, *AT)]
    click(host, *AT, SHIFT)
    assert own(heard) == [("OnDataClick", 9, "TOP", 1, *AT)]


# --- Toggling by Ctrl ----------------------------------------------------------------------------------------------------------


def test_a_ctrl_click_inverts_all_under_the_cursor_at_once_and_nothing_else():
    host = two_layers()
    click(host, 550, 150)
    click(host, *AT, CTRL)
    assert both(host) == ([9], [1, 2])
    click(host, *AT, CTRL)
    assert both(host) == ([], [2])
    host.control.OrvSetActDat("TOP", 1, 9)
    click(host, *AT, CTRL)
    assert both(host) == ([], [1, 2])


def test_a_ctrl_click_reaches_all_items_of_a_block_and_a_plain_one_the_topmost():
    host = shown(POLYGON, SQUARE, SQUARE, ELSEWHERE, SQUARE)
    click(host, *AT, CTRL)
    assert selected(host) == [1, 2, 4]
    click(host, *AT)
    assert selected(host) == [4]


def test_the_count_of_shift_clicks_means_nothing_to_a_ctrl_click():
    host = two_layers()
    click(host, *AT)
    click(host, *AT, SHIFT)
    assert both(host) == ([], [1])
    click(host, *AT, CTRL)
    assert both(host) == ([9], [])


# --- More items than a search remembers ----------------------------------------------------------------------------------------


def crowd(count):
    host = shown(POINT)
    for dat_id in range(1, count + 1):
        put(host, dat_id, AT)
    return ready(host)


def all_active(host, count):
    for dat_id in range(1, count + 1):
        assert host.control.OrvSetActDat("A", 1, dat_id)


@pytest.mark.parametrize("count, met", [(198, 198), (199, 199), (200, 199), (250, 199)])
def test_a_ctrl_click_inverts_199_items_at_most(count, met):
    host = crowd(count)
    click(host, *AT, CTRL)
    assert selected(host) == list(range(count - met + 1, count + 1))
    click(host, *AT, CTRL)
    assert selected(host) == []


@pytest.mark.parametrize("count", [199, 200, 250])
def test_a_shift_click_clears_199_items_and_the_one_that_fell_last_on_the_slot_behind_them(count):
    host = crowd(count)
    all_active(host, count)
    click(host, *AT, SHIFT)
    remembered = set(range(count - 198, count + 1))
    last = {1}
    assert set(selected(host)) == (set(range(1, count + 1)) - remembered - last) | {count - 1}


def test_the_item_behind_the_199_is_never_selected_by_shift_clicks():
    host = crowd(201)
    seen = []
    for _ in range(200):
        click(host, *AT, SHIFT)
        seen += selected(host)
    assert seen == [*range(200, 2, -1), 201, 200], "once round through 199 items, from the second on"


def test_a_plain_click_on_a_crowd_selects_the_topmost():
    host = crowd(250)
    all_active(host, 250)
    click(host, *AT)
    assert selected(host) == [250]


def test_the_199_are_counted_over_all_blocks_from_the_top():
    host = crowd(150)
    add_layer(host, "TOP", POINT, 0)
    for dat_id in range(1, 101):
        put(host, dat_id, AT, code="TOP")
    host.RDMReDraw()
    click(host, *AT, CTRL)
    assert selected(host, "TOP") == list(range(1, 101)) and selected(host) == list(range(52, 151))


# --- The gates -----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("keys", [0, SHIFT, CTRL])
@pytest.mark.parametrize("hide", [lambda host: host.SetLayer("TOP", False), lambda host: host.SetLayActive("TOP", False)],
                         ids=["hidden", "not to be selected"])
def test_a_layer_that_is_hidden_or_not_to_be_selected_is_passed_over(hide, keys):
    host = two_layers()
    hide(host)
    click(host, *AT, keys)
    assert both(host) == ([], [1])


@pytest.mark.parametrize("flag", [False, True])
def test_the_edit_flag_means_nothing_to_a_selection(flag):
    host = two_layers()
    host.SetLayEditFlg("TOP", flag)
    click(host, *AT)
    assert both(host) == ([9], [])


def test_an_item_outside_the_last_paint_is_not_found():
    host = shown(POINT, [(200, 200)], [(3000, 200)])
    assert item(host, "A", 1, 2)["clipFlg"] == 0
    assert picked_at(host, 3000, 200) is None and picked_at(host, *AT) == 1


def test_a_block_outside_the_last_paint_is_not_found():
    host = shown(POINT, [(200, 200)])
    add_layer(host, "OFF", POINT, 0, [(5000, 200)])
    host.RDMReDraw()
    assert picked_at(host, 5000, 200) is None


def test_items_are_found_where_they_are_seen_after_a_scroll():
    host = shown(POINT, [(200, 200)], [(900, 200)])
    assert picked_at(host, 850, 200) is None
    host.control.OrvScrl(100.0, 0.0)
    assert picked_at(host, 800, 200) == 2 and picked_at(host, 100, 200) == 1


def test_all_blocks_of_a_layer_are_searched():
    host = shown(POLYGON, SQUARE)
    add_layer(host, "A", POLYGON, 0, SQUARE, mesh=2, first=5)
    ready(host)
    click(host, *AT, CTRL)
    assert (selected(host, "A", 1), selected(host, "A", 2)) == ([1], [5])
    click(host, *AT)
    assert sorted([selected(host, "A", 1), selected(host, "A", 2)]) == [[], [5]], "the later block of a layer is on top"


def test_types_mix_in_one_search():
    host = shown(POLYGON, SQUARE)
    add_layer(host, "P", POINT, 0, [AT], first=7)
    add_layer(host, "L", LINE, -1, [(100, 200), (300, 200)], first=8)
    add_layer(host, "C", CIRCLE, -2, [(200, 200, 30)], first=9)
    ready(host)
    click(host, *AT)
    seen = [selected(host, code) for code in "CLPA"]
    assert seen == [[9], [], [], []]
    seen = []
    for _ in range(4):
        click(host, *AT, SHIFT)
        seen.append("".join(code for code in "CLPA" if selected(host, code)))
    assert seen == ["L", "P", "A", "C"]


def test_a_plain_click_clears_no_item_of_a_layer_that_is_not_to_be_selected():
    host = two_layers()
    click(host, *AT)
    host.SetLayActive("TOP", False)
    click(host, 700, 500)
    assert both(host) == ([9], [])
    click(host, *AT)
    assert both(host) == ([9], [1])


def test_repeated_numbers_are_selected_apart():
    host = shown(POLYGON)
    for _ in range(3):
        put(host, 5, *SQUARE)
    ready(host)
    click(host, *AT)
    assert [each["active"] for each in items(host, "A", 1)] == [0, 0, 1]
    click(host, *AT, SHIFT)
    assert [each["active"] for each in items(host, "A", 1)] == [0, 1, 0]


def test_clicks_on_a_control_without_data_do_no_harm():
    host = ready(at_scale())
    heard = listening(host)
    for keys in (0, SHIFT, CTRL):
        click(host, *AT, keys)
    assert own(heard) == [] and dump(host)["blocks"] == []
    drain(host)
