"""How a tool is started: what the editor refuses, what it sets up, and what becomes of a tool that runs already."""

import pytest
from edit_rig import (ADD, BOTH, EACH_KIND, EMPTY, END, KINDS, LOADING, PICKING, SQUARE, START, STROKE, another_layer, begin,
                      cancelled, clean, editable, figures, is_red_figure, marked, mode, numbers, one, pick, plain, rubber, shape,
                      tag_and_active, told)
from input_rig import (ADDING, ADD_POINT, COPY, DELETE, DELETE_POINT, MOVE, MOVE_POINT, NORMAL, PAN, drawn_after, listening,
                       move, press)
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, block, composed, dump, item
from overlay_rig import figure, is_active


# --- Refusals ----------------------------------------------------------------------------------------------------------------


@BOTH
@pytest.mark.parametrize("code, mesh, dat_id, why", [
    ("", 1, 0, "no code"), ("A", -1, 0, "a mesh number below 0"), ("A", 1, 1, "a number in use"), ("NOPE", 1, 0, "no such layer"),
    ("a", 1, 0, "codes are told apart by case")])
def test_adding_is_refused(newer, code, mesh, dat_id, why):
    host = editable(LINE, STROKE, newer=newer)
    host.control.RunMode = PAN
    assert host.DigDatEditor(code, mesh, dat_id, ADD) == -1, why
    assert mode(host) == PAN and figures(host) == []


@BOTH
@pytest.mark.parametrize("tool", PICKING)
@pytest.mark.parametrize("code, mesh, dat_id, why", [("NOPE", 1, 1, "no such layer"), ("NOPE", -1, 0, "no such layer for a pick"),
                                                     ("A", 1, 9, "no such item"), ("A", 2, 1, "no such block")])
def test_a_tool_on_something_missing_is_refused(newer, tool, code, mesh, dat_id, why):
    host = editable(LINE, STROKE, newer=newer)
    host.control.RunMode = PAN
    heard = listening(host)
    assert host.DigDatEditor(code, mesh, dat_id, tool) == -1, why
    assert mode(host) == PAN and figures(host) == [] and heard == []
    assert tag_and_active(host) == (0, False)


@pytest.mark.parametrize("mesh, dat_id", [(0, 0), (0, 77), (1, 2), (1, 0), (1, -5), (3, 1)])
def test_adding_takes_a_free_number_a_number_below_1_and_a_block_that_is_missing(mesh, dat_id):
    host = editable(LINE, STROKE)
    begin(host, ADD, dat_id, mesh=mesh)
    assert mode(host) == ADDING


def test_adding_does_not_ask_for_the_edit_flag_of_the_layer():
    host = editable(LINE)
    host.SetLayEditFlg("A", False)
    begin(host, ADD)
    assert mode(host) == ADDING


@pytest.mark.parametrize("tool", LOADING)
def test_a_tool_on_a_named_item_does_not_ask_for_the_edit_flag_of_the_layer(tool):
    host = editable(LINE, STROKE)
    host.SetLayEditFlg("A", False)
    begin(host, tool, 1)
    assert mode(host) == tool and rubber(host) == STROKE


@pytest.mark.parametrize("edit_type", [0, 1, 99, 101, 201, 301, 1000, -1, 70000])
def test_an_unknown_kind_of_edit_answers_0_and_does_nothing(edit_type):
    host = editable(LINE, STROKE)
    host.control.RunMode = PAN
    for code, dat_id in (("A", 1), ("", 0), ("NOPE", 3)):
        assert host.control.DigDatEditor(code, 1, dat_id, edit_type) == 0
    assert mode(host) == PAN and figures(host) == [] and tag_and_active(host) == (0, False)


def test_an_unknown_kind_of_edit_drops_the_tool_that_runs_and_leaves_its_mode():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    assert host.control.DigDatEditor("", 0, 0, 7) == 0
    assert mode(host) == MOVE_POINT and figures(host) == []
    assert tag_and_active(host)[0] == -1


# --- The add tool ------------------------------------------------------------------------------------------------------------


@BOTH
@EACH_KIND
def test_adding_begins_with_a_red_active_figure_of_the_kind_and_line_size_of_the_layer(newer, kind):
    host = editable(kind, newer=newer, SetLayLineSize=3)
    host.control.ActivePointType = 0
    begin(host, ADD)
    assert host.GetOrgID(0) == 1 and dump(host)["orgDatCnt"] == 1
    assert is_red_figure(host, 1, 0, kind, 1 if kind == POLYGON else 3)
    assert is_active(host, 1)
    assert host.control.ActivePointType == 1
    assert mode(host) == ADDING


def test_adding_tells_nothing_before_the_first_click():
    host = editable(LINE)
    heard = listening(host)
    begin(host, ADD)
    assert heard == []


# --- A pick to come ----------------------------------------------------------------------------------------------------------


@BOTH
@pytest.mark.parametrize("tool", PICKING)
@pytest.mark.parametrize("code, mesh, dat_id", [("", 1, 1), ("", -1, 0), ("A", 1, 0), ("A", 1, -3), ("A", -1, 1), ("A", -1, 9)])
def test_without_a_full_key_a_tool_waits_for_a_pick(newer, tool, code, mesh, dat_id):
    host = editable(LINE, STROKE, newer=newer)
    heard = listening(host)
    begin(host, tool, dat_id, code, mesh)
    assert mode(host) == tool and figures(host) == [] and heard == []
    assert tag_and_active(host) == (0, False)
    press(host, 200, 100)
    assert told(heard)[0][:4] == (START, "A", 1, 2 if tool == COPY else 1)


@pytest.mark.parametrize("tool", PICKING)
def test_a_pick_takes_an_item_of_any_layer_whatever_code_the_tool_was_started_with(tool):
    host = editable(LINE, STROKE)
    another_layer(host, "B", LINE, [(100, 500), (300, 500)])
    heard = listening(host)
    begin(host, tool, 0, "A")
    press(host, 200, 500)
    assert told(heard)[0][1] == "B"


@pytest.mark.parametrize("tool", PICKING)
@pytest.mark.parametrize("setter", ["SetLayEditFlg", "SetLayActive", "SetLayer"])
def test_a_pick_passes_by_layers_that_may_not_be_edited_selected_or_seen(tool, setter):
    host = editable(LINE, STROKE)
    assert getattr(host, setter)("A", False)
    heard = listening(host)
    pick(host, tool, (200, 100))
    assert told(heard) == [] and mode(host) == tool and figures(host) == []
    assert numbers(host) == [1] and tag_and_active(host) == (0, False)


@pytest.mark.parametrize("tool", PICKING)
def test_a_pick_of_nothing_clears_the_selection_and_keeps_the_tool_waiting(tool):
    host = marked(editable(LINE, STROKE), 0, True)
    heard = listening(host)
    pick(host, tool, EMPTY)
    assert [name for name, *_ in heard] == ["MouseDown"]
    assert mode(host) == tool and figures(host) == [] and tag_and_active(host) == (0, False)


@pytest.mark.parametrize("tool", LOADING)
def test_a_pick_takes_the_topmost_item_alone(tool):
    host = editable(POLYGON, SQUARE, SQUARE)
    marked(host, 0, True, 1)
    pick(host, tool, (200, 200))
    assert tag_and_active(host, 1) == (0, False), "the selection of before is gone"
    assert tag_and_active(host, 2) == ((0, True) if tool == COPY else (-1, True))


# --- A named item ------------------------------------------------------------------------------------------------------------


@BOTH
@EACH_KIND
@pytest.mark.parametrize("tool", LOADING)
def test_a_named_item_is_loaded_at_once_without_an_event(newer, kind, tool):
    host, _ = one(kind, newer)
    marked(host, 5)
    heard = listening(host)
    drawn = drawn_after(host, lambda: begin(host, tool, 1))
    assert mode(host) == tool and heard == []
    assert composed(drawn)
    assert tag_and_active(host) == (-1, False)
    assert rubber(host) == plain(KINDS[kind][0]), "a circle has its centre alone"
    assert is_red_figure(host, 1, len(KINDS[kind][0]), kind)
    assert is_active(host, 1)


@pytest.mark.parametrize("tool", LOADING)
@pytest.mark.parametrize("active", [True, False])
def test_a_named_item_stays_active_or_not_while_it_is_hidden(tool, active):
    host = marked(editable(LINE, STROKE), 0, active)
    begin(host, tool, 1)
    assert tag_and_active(host) == (-1, active)


def test_delete_on_a_named_item_does_not_load_it_and_a_click_picks_another():
    host = editable(LINE, STROKE, [(100, 500), (300, 500)])
    begin(host, DELETE, 1)
    assert figures(host) == [] and tag_and_active(host) == (0, False)
    press(host, *EMPTY)
    assert numbers(host) == [1, 2]
    press(host, 200, 500)
    assert numbers(host) == [1]


@pytest.mark.parametrize("mesh", [0, 1])
def test_a_named_item_may_lie_in_mesh_0(mesh):
    host = editable(LINE)
    host.add_block("A", mesh, LINE)
    host.add_item("A", mesh, 4, [(0, 0), (10, 10)])
    begin(host, MOVE_POINT, 4, mesh=mesh)
    assert item(host, "A", mesh, 4)["lineTag"] == -1


# --- A tool that runs already ------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("first", LOADING)
@pytest.mark.parametrize("second", PICKING)
def test_a_switch_of_tools_leaves_the_hidden_item_hidden_and_takes_its_figure_away(first, second):
    host = marked(editable(LINE, STROKE, [(100, 500), (300, 500)]), 5)
    begin(host, first, 1)
    heard = listening(host)
    begin(host, second, code="")
    assert mode(host) == second and figures(host) == [] and told(heard) == []
    assert tag_and_active(host, 1) == (-1, False)
    cancelled(host)
    assert tag_and_active(host, 1) == (-1, False), "a cancel of the next tool does not know the item"
    assert host.control.SetDigDatInfoEx("A", 1, 1, 5, False) == 1 and tag_and_active(host, 1) == (5, False)


def test_a_switch_to_a_tool_on_another_item_loads_that_one():
    host = editable(LINE, STROKE, [(100, 500), (300, 500)])
    begin(host, MOVE_POINT, 1)
    begin(host, ADD_POINT, 2)
    assert rubber(host) == [(100, 500), (300, 500)]
    assert (tag_and_active(host, 1), tag_and_active(host, 2)) == ((-1, False), (-1, False))
    host.control.mouse("ldbl", 1, 500, 500)
    assert (tag_and_active(host, 1), tag_and_active(host, 2)) == ((-1, False), (0, False))


@pytest.mark.parametrize("args", [("NOPE", 1, 0, MOVE_POINT), ("A", 1, 9, ADD_POINT), ("", 1, 0, ADD), ("A", 1, 1, ADD)])
def test_a_refusal_has_dropped_the_running_tool_already_and_keeps_its_mode(args):
    host = editable(LINE, STROKE)
    begin(host, DELETE_POINT, 1)
    assert host.control.DigDatEditor(*args) == -1
    assert mode(host) == DELETE_POINT and figures(host) == []
    assert tag_and_active(host) == (-1, False)


def test_after_a_refusal_the_dropped_tool_waits_for_a_pick():
    host = editable(LINE, STROKE, [(100, 500), (300, 500)])
    begin(host, MOVE_POINT, 1)
    assert host.control.DigDatEditor("NOPE", 1, 0, MOVE_POINT) == -1
    heard = listening(host)
    press(host, 200, 500)
    assert told(heard) == [(START, "A", 1, 2, 2, 200)]


def test_a_start_of_adding_drops_the_figure_of_the_tool_before():
    host = editable(LINE, STROKE)
    begin(host, ADD)
    press(host, 10, 10)
    press(host, 20, 20)
    begin(host, ADD)
    assert is_red_figure(host, 1, 0, LINE) and len(figures(host)) == 1
    press(host, 30, 30)
    assert rubber(host) == [(30, 30), (30, 30)], "the clicks of before are forgotten"


def test_starts_in_modes_below_100_leave_the_figures_of_the_host_alone():
    host = editable(LINE, STROKE)
    figure(host, LINE, [(1, 1), (2, 2)])
    for tool in PICKING:
        host.control.RunMode = NORMAL
        begin(host, tool, code="")
        assert len(figures(host)) == 1


def test_the_rubber_figure_takes_the_next_number_behind_the_figures_of_the_host():
    host = editable(LINE, STROKE)
    figure(host, POLYGON, [(1, 1), (2, 2)])
    figure(host, LINE, [(1, 1), (2, 2)])
    begin(host, MOVE_POINT, 1)
    assert host.GetOrgID(2) == 3 and is_red_figure(host, 3, 4, LINE)
    cancelled(host)
    assert [each["ID"] for each in figures(host)] == [1, 2]


def test_where_numbers_repeat_the_tool_works_on_the_older_figure_and_takes_it_away():
    host = editable(LINE, STROKE)
    for x in (10, 20, 30):
        figure(host, LINE, [(x, 500), (x, 550)])
    host.DelOrgDataEx(2)
    begin(host, MOVE_POINT, 1)
    assert [(each["ID"], each["pntCnt"]) for each in figures(host)] == [(1, 2), (3, 6), (3, 0)]
    cancelled(host)
    assert [(each["ID"], each["pntCnt"]) for each in figures(host)] == [(1, 2), (3, 0)]


def test_a_tool_of_one_control_does_not_touch_another():
    first, second = editable(LINE, STROKE), editable(LINE, STROKE)
    begin(first, MOVE_POINT, 1)
    begin(second, MOVE, 1)
    cancelled(second)
    assert mode(first) == MOVE_POINT and rubber(first) == STROKE and clean(second)
    move(first, *EMPTY)
    press(first, *EMPTY)
    assert clean(first) and shape(first) == STROKE


def test_init_keeps_the_mode_and_a_click_then_finds_nothing_to_edit():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    assert host.init()
    assert mode(host) == MOVE_POINT and figures(host) == [] and block(host, "A", 1) is None
    host.control.paint()
    press(host, *EMPTY)
    cancelled(host)
    assert mode(host) == NORMAL


@pytest.mark.parametrize("kind", [POINT, CIRCLE, ELLIPSE])
def test_the_count_of_the_start_is_that_of_the_item_even_for_a_circle(kind):
    host, at = one(kind)
    heard = listening(host)
    pick(host, MOVE, at)
    assert told(heard) == [(START, "A", 1, 1, len(KINDS[kind][0]), 250)]
    assert len(rubber(host)) == {POINT: 1, CIRCLE: 2, ELLIPSE: 2}[kind]


def test_both_names_of_the_editor_are_one_routine():
    host = editable(LINE, STROKE)
    assert host.control.OrvDatEditor("A", 1, 1, MOVE) == 0 and mode(host) == MOVE
    assert host.control.DigDatEditor("A", 1, 1, COPY) == 0 and mode(host) == COPY
    heard = listening(host)
    cancelled(host)
    assert told(heard) == [(END, "A", 1, 1, 0, 999)]
