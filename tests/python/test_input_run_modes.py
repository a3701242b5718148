"""The run mode: every change of it that the mouse and the keys bring, and every write of the host that brings none."""

import pytest
from input_rig import (ADDING, ALL_CLICKS, COPY, CTRL, DELETE, DELETE_KEY, DELETE_POINT, ESCAPE, LEFT, MOVE, MOVE_POINT, NORMAL,
                       PAN, ADD_POINT, SHIFT, SHIFT_CLICKS, add_layer, click, double_click, drag, listening, move, names, press,
                       put, selected, shown, taken)
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, dump, items, verbs, drain, composed

SQUARE = [(100, 100), (200, 100), (200, 200), (100, 200), (100, 100)]
STROKE = [(100, 100), (300, 100), (300, 300)]
ALL_TOOLS = [MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY, DELETE]


def editable(lay_type, *items_of_it):
    return shown(lay_type, *items_of_it, SetLayEditFlg=True)


def mode(host):
    return host.control.RunMode


def start(host, tool, dat_id=0, code="A"):
    assert host.control.DigDatEditor(code, 1, dat_id, tool) == 0


def picking(tool, lay_type=LINE, item=None):
    """A host with one item of which a tool waits for the pick."""
    host = editable(lay_type, item or STROKE)
    start(host, tool, code="")
    assert mode(host) == tool
    return host


# --- Writes of the host --------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("before", [NORMAL, PAN, SHIFT_CLICKS, 77])
@pytest.mark.parametrize("after", [NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 100, 101, 200, 300, -32768, 32767])
def test_the_host_may_write_any_mode_at_any_time_and_nothing_is_drawn_or_told(before, after):
    host = shown(LINE, STROKE)
    host.control.RunMode = before
    heard = listening(host)
    drain(host)
    host.control.RunMode = after
    assert mode(host) == after and heard == [] and verbs(host) == []


def test_a_write_of_the_host_does_not_clean_a_running_tool_up():
    host = editable(LINE, STROKE)
    start(host, MOVE_POINT, 1)
    host.control.RunMode = NORMAL
    (hidden,) = items(host, "A", 1)
    assert hidden["lineTag"] == -1 and dump(host)["orgDatCnt"] == 1


@pytest.mark.parametrize("tool", ALL_TOOLS)
def test_the_editor_brings_each_tool_from_any_mode(tool):
    for before in (NORMAL, PAN, SHIFT_CLICKS, 77):
        host = editable(LINE, STROKE)
        host.control.RunMode = before
        start(host, tool, code="")
        assert mode(host) == tool


def test_the_editor_turns_100_into_101():
    host = editable(LINE, STROKE)
    host.control.RunMode = PAN
    start(host, 100)
    assert mode(host) == ADDING


# --- Mode 101, adding ----------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind", [CIRCLE, ELLIPSE])
def test_adding_a_circle_or_an_ellipse_ends_with_the_second_click(kind):
    host = editable(kind)
    start(host, 100)
    click(host, 100, 100)
    assert mode(host) == ADDING
    click(host, 150, 100)
    assert mode(host) == NORMAL


def test_adding_a_point_ends_with_its_click():
    host = editable(POINT)
    start(host, 100)
    press(host, 100, 100)
    assert mode(host) == NORMAL and len(items(host, "A", 1)) == 1


@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_adding_a_line_or_a_polygon_ends_with_a_double_click(kind):
    host = editable(kind)
    start(host, 100)
    for x, y in ((100, 100), (200, 100)):
        click(host, x, y)
        assert mode(host) == ADDING
    double_click(host, 200, 200)
    assert mode(host) == NORMAL and len(items(host, "A", 1)) == 1


def test_a_double_click_does_not_end_the_adding_of_a_point_but_its_first_click_does():
    host = editable(POINT)
    start(host, 100)
    host.control.mouse("ldbl", LEFT, 100, 100)
    assert mode(host) == ADDING and not items(host, "A", 1)


@pytest.mark.parametrize("kind", [POINT, LINE, POLYGON, CIRCLE, ELLIPSE])
def test_escape_ends_adding(kind):
    host = editable(kind)
    start(host, 100)
    if kind != POINT:
        click(host, 100, 100)
    host.control.key(ESCAPE)
    assert mode(host) == NORMAL and not items(host, "A", 1)


def test_a_double_click_with_ctrl_or_shift_does_not_end_adding():
    host = editable(LINE)
    start(host, 100)
    click(host, 100, 100)
    for keys in (CTRL, SHIFT, CTRL | SHIFT):
        host.control.mouse("ldbl", LEFT | keys, 200, 200)
        assert mode(host) == ADDING


# --- Mode 200, moving a point --------------------------------------------------------------------------------------------------


def test_moving_a_point_item_ends_with_the_click_that_drops_it():
    host = picking(MOVE_POINT, POINT, [(100, 100)])
    click(host, 100, 100)
    assert mode(host) == MOVE_POINT
    move(host, 300, 300)
    click(host, 300, 300)
    assert mode(host) == NORMAL
    (moved,) = items(host, "A", 1)
    assert [tuple(point)[:2] for point in moved["pnts"]] == [(300, -300)]


def test_moving_points_of_a_line_ends_with_a_click_off_the_figure():
    host = picking(MOVE_POINT)
    click(host, 200, 100)
    click(host, 300, 100)
    move(host, 350, 120)
    click(host, 350, 120)
    assert mode(host) == MOVE_POINT, "a dropped point keeps the tool"
    click(host, 600, 500)
    assert mode(host) == NORMAL


def test_a_click_beside_every_item_keeps_the_tool_waiting():
    for tool in ALL_TOOLS:
        host = picking(tool)
        heard = listening(host)
        before = dump(host)
        press(host, 600, 500)
        assert mode(host) == tool and dump(host)["blocks"] == before["blocks"]
        assert heard == [("MouseDown", 1, 0, 600, 500)]


def test_deleting_the_item_in_hand_by_the_delete_key_keeps_mode_200():
    host = picking(MOVE_POINT)
    click(host, 200, 100)
    host.control.key(DELETE_KEY)
    assert mode(host) == MOVE_POINT and not items(host, "A", 1)


@pytest.mark.parametrize("clicks", [[], [(200, 100)], [(200, 100), (300, 100)]], ids=["waiting", "in hand", "point held"])
def test_escape_ends_the_moving_of_points_in_each_phase(clicks):
    host = picking(MOVE_POINT)
    for x, y in clicks:
        click(host, x, y)
    assert mode(host) == MOVE_POINT
    host.control.key(ESCAPE)
    assert mode(host) == NORMAL


# --- Modes 210 and 220, adding and deleting points -----------------------------------------------------------------------------


@pytest.mark.parametrize("keys", [0, CTRL])
def test_adding_points_ends_with_a_double_click_even_with_ctrl(keys):
    host = picking(ADD_POINT)
    click(host, 200, 100)
    move(host, 200, 110)
    click(host, 200, 120)
    assert mode(host) == ADD_POINT
    host.control.mouse("ldbl", LEFT | keys, 200, 120)
    assert mode(host) == NORMAL
    assert items(host, "A", 1)[0]["pntCnt"] == 4


def test_a_double_click_with_shift_does_not_end_the_adding_of_points():
    host = picking(ADD_POINT)
    click(host, 200, 100)
    for keys in (SHIFT, SHIFT | CTRL):
        host.control.mouse("ldbl", LEFT | keys, 200, 120)
        assert mode(host) == ADD_POINT


def test_deleting_points_ends_with_a_click_off_the_figure():
    host = picking(DELETE_POINT)
    click(host, 200, 100)
    click(host, 300, 100)
    assert mode(host) == DELETE_POINT
    click(host, 600, 500)
    assert mode(host) == NORMAL and items(host, "A", 1)[0]["pntCnt"] == 2


@pytest.mark.parametrize("tool", [ADD_POINT, DELETE_POINT])
@pytest.mark.parametrize("in_hand", [False, True], ids=["waiting", "in hand"])
def test_escape_ends_the_adding_and_deleting_of_points(tool, in_hand):
    host = picking(tool)
    if in_hand:
        click(host, 200, 100)
    host.control.key(ESCAPE)
    assert mode(host) == NORMAL


# --- Modes 250, 260 and 300, whole items ---------------------------------------------------------------------------------------


@pytest.mark.parametrize("tool, count", [(MOVE, 1), (COPY, 2)])
def test_moving_and_copying_end_with_the_second_click_wherever_it_is(tool, count):
    host = picking(tool)
    click(host, 200, 100)
    assert mode(host) == tool
    click(host, 600, 500)
    assert mode(host) == NORMAL and len(items(host, "A", 1)) == count


@pytest.mark.parametrize("tool", [MOVE, COPY])
@pytest.mark.parametrize("in_hand", [False, True], ids=["waiting", "in hand"])
def test_escape_ends_moving_and_copying_and_leaves_one_item(tool, in_hand):
    host = picking(tool)
    if in_hand:
        click(host, 200, 100)
    host.control.key(ESCAPE)
    assert mode(host) == NORMAL and len(items(host, "A", 1)) == 1


def test_deleting_ends_with_the_click_that_deletes():
    host = picking(DELETE)
    press(host, 200, 100)
    assert mode(host) == NORMAL and not items(host, "A", 1)


def test_in_mode_300_a_click_on_nothing_changes_nothing_and_fires_only_mouse_down():
    host = picking(DELETE)
    heard = listening(host)
    press(host, 600, 500)
    assert mode(host) == DELETE and len(items(host, "A", 1)) == 1 and heard == [("MouseDown", 1, 0, 600, 500)]


def test_escape_ends_deleting():
    host = picking(DELETE)
    host.control.key(ESCAPE)
    assert mode(host) == NORMAL and len(items(host, "A", 1)) == 1


@pytest.mark.parametrize("tool", ALL_TOOLS)
def test_a_click_of_a_tool_is_told_as_mouse_down_after_what_the_tool_did(tool):
    host = picking(tool)
    heard = listening(host)
    press(host, 200, 100)
    told = names(heard)
    assert told[0] == "OnEditorStart" and told[-1] == "MouseDown" and told.count("MouseDown") == 1


@pytest.mark.parametrize("tool", [*ALL_TOOLS, ADDING])
def test_the_button_up_of_a_tool_selects_nothing_and_is_told(tool):
    host = editable(LINE, STROKE)
    start(host, 100 if tool == ADDING else tool, code="A" if tool == ADDING else "")
    heard = listening(host)
    drain(host)
    host.control.mouse("lup", 0, 600, 500)
    assert heard == [("MouseUp", 1, 0, 600, 500)] and selected(host) == [] and verbs(host) == []


def test_a_tool_of_deletion_that_ended_with_the_button_down_lets_the_button_up_select():
    host = editable(LINE, STROKE, [(250, 300), (400, 300)])
    start(host, DELETE, code="")
    click(host, 300, 299)
    assert [each["datID"] for each in items(host, "A", 1)] == [1], "the topmost item went"
    assert selected(host) == [1], "and the button up met the one below it in the normal mode"


# --- What a tool may pick ------------------------------------------------------------------------------------------------------


def test_a_tool_picks_only_in_layers_that_may_be_edited():
    host = shown(LINE, STROKE)
    add_layer(host, "B", LINE, 5, STROKE)
    assert host.SetLayEditFlg("B", True)
    host.RDMReDraw()
    start(host, DELETE, code="")
    press(host, 200, 100)
    assert len(items(host, "A", 1)) == 1 and not items(host, "B", 1)


@pytest.mark.parametrize("hide", [lambda host: host.SetLayer("A", False), lambda host: host.SetLayActive("A", False),
                                  lambda host: host.SetLayEditFlg("A", False)])
def test_a_tool_picks_nothing_in_a_layer_that_is_hidden_or_not_to_be_selected_or_edited(hide):
    host = editable(LINE, STROKE)
    hide(host)
    host.RDMReDraw()
    start(host, DELETE, code="")
    press(host, 200, 100)
    assert mode(host) == DELETE and len(items(host, "A", 1)) == 1


def test_a_tool_picks_the_topmost_item_and_clears_the_active_set_first():
    host = editable(LINE, STROKE, STROKE, [(500, 400), (600, 400)])
    click(host, 550, 400)
    start(host, MOVE_POINT, code="")
    press(host, 200, 100)
    found = {each["datID"]: each["lineTag"] for each in items(host, "A", 1)}
    assert found == {1: 0, 2: -1, 3: 0} and selected(host) == [2]


def test_a_click_of_a_tool_beside_every_item_clears_the_active_set():
    host = editable(LINE, STROKE)
    click(host, 200, 100)
    assert selected(host) == [1]
    start(host, MOVE_POINT, code="")
    press(host, 600, 500)
    assert selected(host) == []


def test_a_tool_pays_no_heed_to_the_count_of_shift_clicks():
    host = editable(LINE, STROKE, STROKE)
    click(host, 200, 100)
    click(host, 200, 100, SHIFT)
    assert selected(host) == [1]
    start(host, DELETE, code="")
    press(host, 200, 100)
    assert [each["datID"] for each in items(host, "A", 1)] == [1]


def test_mode_100_written_by_the_host_has_no_handler():
    host = editable(LINE, STROKE)
    host.control.RunMode = 100
    heard = listening(host)
    double_click(host, 200, 100)
    drag(host, (50, 50), (400, 400))
    assert mode(host) == 100 and selected(host) == []
    assert set(names(taken(heard))) <= {"MouseDown", "MouseUp", "MouseMove"}
    drain(host)
    host.control.key(ESCAPE)
    assert mode(host) == 100 and composed(verbs(host)) and heard == []


def test_writing_tool_modes_without_the_editor_does_no_harm():
    for tool in (ADDING, *ALL_TOOLS):
        host = editable(LINE, STROKE)
        put(host, 9, (10, 10), (20, 20))
        host.control.RunMode = tool
        for keys in (0, SHIFT, CTRL):
            click(host, 200, 100, keys)
            move(host, 210, 110)
            host.control.key(DELETE_KEY)
            host.control.mouse("ldbl", LEFT | keys, 200, 100)
        host.control.key(ESCAPE)
        assert mode(host) == NORMAL
