"""Hosts that work on the map while a tool runs, above all from the handlers of its two events."""

import pytest
from edit_rig import (ADD, CANCELLED, EACH_KIND, EMPTY, END, KINDS, LOADING, PICKING, SPOT, SQUARE, START, STROKE, begin,
                      cancelled, clean, editable, finish, is_red_figure, mode, numbers, one, pick, rubber, shape, tag_and_active,
                      told)
from input_rig import (ADDING, ADD_POINT, COPY, DELETE, DELETE_KEY, DELETE_POINT, MOVE, MOVE_POINT, NORMAL, PAN, click,
                       listening, move, press)
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, block, dump, item

OTHER = [(100, 500), (300, 500)]


def answering(host, event, answer, times=1):
    """Lets a host answer the first so many of an event until it is silenced, and tells the arguments of all."""
    calls = []
    host.silent = False

    def handler(*args):
        calls.append(args)
        if len(calls) <= times and not host.silent:
            answer(host)

    host.control.connect(event, handler)
    return calls


def commit(host, tool):
    """The second click of a tool, or its double click."""
    if tool == ADD_POINT:
        finish(host, *EMPTY)
    elif tool != DELETE:
        press(host, *EMPTY)


# --- A start in the handler of an end ----------------------------------------------------------------------------------------


@pytest.mark.parametrize("tool", [MOVE_POINT, DELETE_POINT, MOVE, COPY])
@pytest.mark.parametrize("next_tool", LOADING)
def test_a_tool_started_at_the_end_of_a_commit_is_reset_by_the_rest_of_it(tool, next_tool):
    host = editable(LINE, STROKE, OTHER)
    begin(host, tool, 1)
    answering(host, END, lambda host: begin(host, next_tool, 2))
    commit(host, tool)
    assert mode(host) == NORMAL
    assert tag_and_active(host, 2) == (-1, False) and rubber(host) == OTHER, "its item stays hidden and its figure shown"
    heard = listening(host)
    press(host, *EMPTY)
    assert told(heard) == [] and mode(host) == NORMAL


@pytest.mark.parametrize("tool", [MOVE_POINT, DELETE_POINT, MOVE, COPY])
def test_a_pick_started_at_the_end_of_a_commit_is_reset_too(tool):
    host = editable(LINE, STROKE, OTHER)
    begin(host, tool, 1)
    answering(host, END, lambda host: begin(host, MOVE, code=""))
    commit(host, tool)
    assert clean(host) and tag_and_active(host, 2) == (0, False)


def end_of_adding(host):
    begin(host, ADD)
    for at in ((10, 10), (90, 90)):
        press(host, *at)
    finish(host, 90, 90)


def end_of_point_add(host):
    begin(host, ADD_POINT, 1)
    finish(host, *EMPTY)


def end_of_delete(host):
    pick(host, DELETE, (200, 100))


def end_by_cancel(host):
    begin(host, MOVE, 1)
    cancelled(host)


def end_by_escape(host):
    begin(host, DELETE_POINT, 1)
    cancelled(host, "key")


def end_by_delete_key(host):
    begin(host, MOVE_POINT, 1)
    host.control.key(DELETE_KEY)


@pytest.mark.parametrize("act", [end_of_adding, end_of_point_add, end_of_delete, end_by_cancel, end_by_escape, end_by_delete_key])
@pytest.mark.parametrize("next_tool", LOADING)
def test_a_tool_started_at_an_end_that_had_reset_itself_goes_on(act, next_tool):
    host = editable(LINE, STROKE, OTHER)
    calls = answering(host, END, lambda host: begin(host, next_tool, 2))
    act(host)
    assert mode(host) == next_tool and rubber(host) == OTHER and tag_and_active(host, 2) == (-1, False)
    cancelled(host)
    assert calls[-1] == ("A", 1, 2, 0, CANCELLED) and clean(host)


def test_a_host_may_have_point_after_point_added_from_the_handler_of_the_end():
    host = editable(POINT)
    answering(host, END, lambda host: begin(host, ADD), times=3)
    begin(host, ADD)
    for at in ((10, 10), (20, 20), (30, 30)):
        press(host, *at)
    assert [shape(host, number) for number in numbers(host)] == [[(10, 10)], [(20, 20)], [(30, 30)]]
    assert mode(host) == ADDING


def test_a_host_may_have_line_after_line_drawn_from_the_handler_of_the_end():
    host = editable(LINE)
    answering(host, END, lambda host: begin(host, ADD), times=2)
    begin(host, ADD)
    for row in (10, 20):
        for x in (10, 50):
            press(host, x, row)
        finish(host, 50, row)
    assert [shape(host, number) for number in numbers(host)] == [[(10, 10), (50, 10)], [(10, 20), (50, 20)]]
    assert mode(host) == ADDING and is_red_figure(host, 1, 0, LINE)


# --- The store changed in the handler of a start -----------------------------------------------------------------------------


def test_a_point_makes_the_block_that_the_handler_of_the_start_deleted():
    host = editable(POINT, SPOT)
    begin(host, ADD)
    heard = listening(host)
    answering(host, START, lambda host: host.DigMemDelete("A", 1))
    press(host, 10, 10)
    assert told(heard) == [(START, "A", 1, -1, 0, 100), (END, "A", 1, 1, 0, 100)]
    assert shape(host) == [(10, 10)] and clean(host)


def test_a_line_makes_the_block_that_the_handler_of_the_start_deleted():
    host = editable(LINE, STROKE)
    begin(host, ADD)
    answering(host, START, lambda host: host.DigMemDelete("A", 1))
    for at in ((10, 10), (90, 90)):
        press(host, *at)
    finish(host, 90, 90)
    assert shape(host) == [(10, 10), (90, 90)] and clean(host)


def test_a_delete_tells_its_end_also_when_the_handler_of_the_start_deleted_the_item():
    host = editable(LINE, STROKE, OTHER)
    heard = listening(host)
    answering(host, START, lambda host: host.DelDigDat("A", 1, 1))
    pick(host, DELETE, (200, 100))
    start, (name, _, *rest) = told(heard)
    assert start == (START, "A", 1, 1, 4, 300) and (name, rest) == (END, [1, 1, 0, 300])
    assert numbers(host) == [2] and clean(host)


GONE = {"the item": lambda host: [host.DelDigDat("A", 1, number) for number in (1, 2)],
        "the block": lambda host: host.DigMemDelete("A", 1), "the layer": lambda host: host.DigMemDeleteLay("A"),
        "everything": lambda host: host.init(), "everything, and paints": lambda host: (host.init(), host.control.paint()),
        "the points of the item": lambda host: [host.DelDigDatPnt("A", 1, number, 0) for number in (1, 2) * 9]}


@pytest.mark.parametrize("gone", GONE.values(), ids=GONE)
@pytest.mark.parametrize("tool", PICKING)
@EACH_KIND
def test_what_is_edited_may_go_in_the_handler_of_the_start(gone, tool, kind):
    host, at = one(kind)
    calls = answering(host, START, gone)
    pick(host, tool, at)
    assert len(calls) <= 1
    for place in (at, EMPTY, at):
        move(host, *place)
        press(host, *place)
    host.control.key(DELETE_KEY)
    finish(host, *EMPTY)
    cancelled(host)
    cancelled(host)
    assert mode(host) == NORMAL
    works_as_before(host)


@pytest.mark.parametrize("gone", GONE.values(), ids=GONE)
@pytest.mark.parametrize("tool", LOADING)
@EACH_KIND
def test_what_is_edited_may_go_in_the_handler_of_the_end(gone, tool, kind):
    host, at = one(kind)
    begin(host, tool, 1)
    calls = answering(host, END, gone)
    if kind == POINT and tool == MOVE_POINT or kind in (POINT, CIRCLE, ELLIPSE) and tool == DELETE_POINT:
        cancelled(host)
    else:
        commit(host, tool)
    assert len(calls) == 1 and mode(host) == NORMAL
    works_as_before(host)


@pytest.mark.parametrize("gone", list(GONE.values())[:3], ids=list(GONE)[:3])
@pytest.mark.parametrize("tool", LOADING)
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_a_commit_into_what_is_gone_writes_nothing_and_still_tells_its_end(gone, tool, kind):
    host, _ = one(kind)
    begin(host, tool, 1)
    if tool == DELETE_POINT:
        press(host, 300, 100)
    elif tool == ADD_POINT:
        move(host, 280, 104)
        press(host, 280, 104)
    heard = listening(host)
    gone(host)
    commit(host, tool)
    count = len(KINDS[kind][0]) + {DELETE_POINT: -1, ADD_POINT: 1}.get(tool, 0)
    assert told(heard) == [(END, "A", 1, 1, count, tool)]
    assert clean(host) and (block(host, "A", 1) is None or numbers(host) == [])


def works_as_before(host):
    """Starts over and edits once more."""
    host.silent = True
    assert host.init()
    host.control.paint()
    host.control.Zoom = 3779
    host.MapJumpToXY(400.0, -300.0)
    assert host.add_block("Z", 1, LINE) and host.SetLayEditFlg("Z", True)
    host.add_item("Z", 1, 3, [(100, -100), (300, -100)])
    host.RDMReDraw()
    heard = listening(host)
    pick(host, MOVE, (200, 100))
    move(host, 250, 250)
    press(host, 210, 120)
    assert told(heard) == [(START, "Z", 1, 3, 2, 250), (END, "Z", 1, 3, 2, 250)]
    assert shape(host, 3, "Z") == [(110, 120), (310, 120)] and clean(host)


# --- Calls of tools in the handler of a start --------------------------------------------------------------------------------


@pytest.mark.parametrize("tool", [ADD, *PICKING])
@pytest.mark.parametrize("answer", [
    lambda host: host.control.OrvCancelOrgEdit(), lambda host: host.control.key(27), lambda host: host.control.key(DELETE_KEY),
    lambda host: host.DigDatEditor("A", 1, 1, MOVE_POINT), lambda host: begin(host, ADD),
    lambda host: begin(host, DELETE, code=""),
    lambda host: click(host, 200, 100), lambda host: finish(host, 200, 100),
    lambda host: setattr(host.control, "RunMode", NORMAL), lambda host: setattr(host.control, "RunMode", PAN),
    lambda host: move(host, 400, 400), lambda host: host.RDMReDraw(),
    lambda host: [host.DelOrgDataEx(number) for number in (3, 2, 1)], lambda host: host.control.resize(1, 1)],
    ids=["cancel", "escape", "delete key", "start", "start adding", "start deleting", "click", "double click", "normal mode",
         "pan", "move", "repaint", "delete figures", "resize"])
def test_the_handler_of_a_start_may_run_the_tools_themselves(tool, answer):
    host = editable(LINE, STROKE, OTHER)
    calls = answering(host, START, answer, times=2)
    answering(host, END, answer, times=2)
    if tool == ADD:
        begin(host, ADD)
        press(host, 10, 10)
    else:
        pick(host, tool, (200, 100))
    assert calls
    for place in ((300, 100), EMPTY):
        move(host, *place)
        press(host, *place)
    finish(host, *EMPTY)
    for _ in range(4):
        cancelled(host)
    host.control.resize(800, 600)
    host.control.RunMode = NORMAL
    works_as_before(host)


@pytest.mark.parametrize("tool", LOADING)
def test_a_mode_written_in_the_handler_of_the_start_stays_and_the_item_is_loaded_all_the_same(tool):
    host, at = one(LINE)
    answering(host, START, lambda host: setattr(host.control, "RunMode", PAN))
    pick(host, tool, at)
    number = 2 if tool == COPY else 1
    assert mode(host) == PAN and tag_and_active(host, number)[0] == -1 and rubber(host) == STROKE
    host.control.RunMode = tool
    cancelled(host)
    assert clean(host) and tag_and_active(host, 1)[0] == 0


def test_an_error_of_a_handler_comes_out_of_the_click_and_the_tool_can_be_cancelled():
    for event in (START, END):
        host, at = one(LINE)

        def fail(host):
            raise KeyError("the host's own")

        answering(host, event, fail)
        with pytest.raises(KeyError):
            pick(host, MOVE, at)
            press(host, *EMPTY)
        cancelled(host)
        works_as_before(host)


# --- The host at work between the clicks -------------------------------------------------------------------------------------


def test_a_host_may_delete_the_figure_of_a_line_being_drawn_and_the_points_are_kept():
    host = editable(LINE)
    begin(host, ADD)
    for at in ((10, 10), (90, 90)):
        press(host, *at)
    assert host.DelOrgDataEx(1) == 0
    press(host, 50, 60)
    move(host, 70, 80)
    finish(host, 70, 80)
    assert shape(host) == [(10, 10), (90, 90), (50, 60)] and clean(host)


@pytest.mark.parametrize("tool", LOADING)
def test_a_host_may_delete_the_figure_of_a_tool_and_a_commit_writes_what_was_loaded(tool):
    host = editable(LINE, STROKE)
    begin(host, tool, 1)
    assert host.DelOrgDataEx(1) == 0
    heard = listening(host)
    move(host, 300, 100)
    if tool in (MOVE, COPY):
        cancelled(host)
        assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)]
    else:
        commit(host, tool)
        assert [each[0] for each in told(heard)] == [END] and shape(host) == STROKE
    assert clean(host)


def test_what_the_host_writes_into_the_figure_does_not_reach_the_item():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    assert host.EditOrgPnt(1, 0, 5.0, -5.0) == 0
    press(host, *EMPTY)
    assert shape(host) == STROKE


def test_an_item_that_the_host_shortened_is_written_as_far_as_it_goes():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    assert host.DelDigDatPnt("A", 1, 1, 0)
    heard = listening(host)
    press(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 1, 4, 200)] and shape(host) == STROKE[:3]


def test_with_numbers_that_repeat_the_first_item_is_the_one_edited():
    host = editable(LINE, STROKE)
    host.add_item("A", 1, 1, [(100, -500), (300, -500)])
    begin(host, MOVE_POINT, 1)
    assert rubber(host) == STROKE
    for at in ((300, 100), (350, 50), EMPTY):
        press(host, *at)
    first, second = block(host, "A", 1)["dats"]
    assert first["pnts"][1] == (350, -50, 0) and [each[:2] for each in second["pnts"]] == [(100, -500), (300, -500)]


def test_a_layer_made_invisible_after_the_pick_is_still_committed_to():
    host = editable(POLYGON, SQUARE)
    pick(host, MOVE, (200, 200))
    assert host.SetLayer("A", False) and host.SetLayEditFlg("A", False)
    press(host, 210, 220)
    assert shape(host)[0] == (110, 120) and clean(host)


def test_the_zoom_may_change_while_an_item_is_carried():
    host = editable(POINT, SPOT)
    pick(host, MOVE, (200, 150))
    host.control.Zoom = 2 * host.control.Zoom
    host.MapJumpToXY(800.0, -600.0)
    press(host, 200, 150)
    assert shape(host) == [(400, 300)]


def test_a_tool_may_be_ended_by_destroying_its_host_in_the_handler():
    holder = [editable(LINE, STROKE)]
    heard = []

    def handler(*args):
        heard.append(args)
        holder.clear()

    holder[0].control.connect(START, handler)
    begin(holder[0], MOVE, code="")
    press(holder[0], 200, 100)
    assert heard == [("A", 1, 1, 4, 250)] and holder == []


def test_an_item_left_hidden_by_a_switch_of_tools_can_still_be_picked_and_stays_hidden():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    begin(host, MOVE, code="")
    host.RDMReDraw()
    heard = listening(host)
    press(host, 200, 100)
    press(host, 210, 120)
    assert [name for name, *_ in told(heard)] == [START, END]
    assert shape(host)[0] == (110, 120) and item(host, "A", 1, 1)["lineTag"] == -1
    assert dump(host)["orgDatCnt"] == 0
