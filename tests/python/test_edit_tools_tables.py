"""The tools row by row: each change of state that a click brings, and each event with its arguments and what its handler sees."""

import pytest
from edit_rig import (ADD, BOTH, EMPTY, END, KINDS, START, STROKE, begin, cancelled, editable, figures, finish, mode, numbers,
                      one, pick, rubber, shape, tag_and_active, told)
from input_rig import (ADDING, ADD_POINT, ARROW, COPY, CROSS, DELETE, DELETE_KEY, DELETE_POINT, HINT_TIMER, MOVE, MOVE_POINT,
                       NORMAL, listening, move, press, release, timers)
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, composed, drain, item, verbs

VERTEX = (300, 100)


# --- States ------------------------------------------------------------------------------------------------------------------


def waiting(tool, kind=LINE):
    host, at = one(kind)
    begin(host, tool, code="")
    return host, at


def loaded(tool, kind=LINE):
    host, at = one(kind)
    pick(host, tool, at)
    assert mode(host) == tool and len(figures(host)) == 1
    return host


def is_holding(host):
    """Whether a point is in the hand, which is then carried by any move."""
    before = rubber(host)
    move(host, 555, 444)
    return rubber(host) != before


@pytest.mark.parametrize("kind, clicks, after", [(POINT, 1, NORMAL), (LINE, 1, ADDING), (LINE, 5, ADDING), (POLYGON, 5, ADDING),
                                                 (CIRCLE, 1, ADDING), (CIRCLE, 2, NORMAL), (ELLIPSE, 2, NORMAL)])
def test_state_101_a_click_adds_a_point_and_stays_or_commits(kind, clicks, after):
    host = editable(kind)
    begin(host, ADD)
    for i in range(clicks):
        assert mode(host) == ADDING
        press(host, 100 + 20 * i, 100 + 30 * i * i)
    assert mode(host) == after


@pytest.mark.parametrize("kind, holding", [(POINT, True), (LINE, False), (POLYGON, False), (CIRCLE, False), (ELLIPSE, False)])
def test_state_200_waiting_a_pick_loads_and_takes_a_point_item_in_the_hand(kind, holding):
    host = loaded(MOVE_POINT, kind)
    assert is_holding(host) == holding and mode(host) == MOVE_POINT


def test_state_200_loaded_a_click_on_a_vertex_takes_it():
    host = loaded(MOVE_POINT)
    press(host, *VERTEX)
    assert mode(host) == MOVE_POINT and is_holding(host)


def test_state_200_loaded_a_click_off_the_figure_ends():
    host = loaded(MOVE_POINT)
    press(host, *EMPTY)
    assert mode(host) == NORMAL and figures(host) == []


@pytest.mark.parametrize("kind, after", [(LINE, MOVE_POINT), (POLYGON, MOVE_POINT), (POINT, NORMAL)])
def test_state_200_holding_a_click_drops_and_a_point_item_ends(kind, after):
    host = loaded(MOVE_POINT, kind)
    if kind != POINT:
        press(host, *VERTEX)
    press(host, 350, 250)
    assert mode(host) == after
    if after == MOVE_POINT:
        assert not is_holding(host)


@pytest.mark.parametrize("tool", [ADD_POINT, DELETE_POINT, MOVE, COPY])
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_state_waiting_a_pick_loads_in_the_same_mode(tool, kind):
    assert mode(loaded(tool, kind)) == tool


def test_state_210_loaded_a_click_inserts_and_stays_and_a_double_click_ends():
    host = loaded(ADD_POINT)
    for at in ((280, 104), (270, 102)):
        move(host, *at)
        press(host, *at)
        release(host, *at)
        assert mode(host) == ADD_POINT
    assert len(rubber(host)) == 6
    finish(host, 270, 102)
    assert mode(host) == NORMAL and figures(host) == []


def test_state_220_loaded_a_click_on_a_vertex_removes_it_if_allowed_and_stays():
    host = loaded(DELETE_POINT)
    for at, left in ((VERTEX, 3), ((300, 300), 2), ((100, 100), 2)):
        press(host, *at)
        assert mode(host) == DELETE_POINT and len(rubber(host)) == left


def test_state_220_loaded_a_click_off_the_figure_ends():
    host = loaded(DELETE_POINT)
    press(host, *EMPTY)
    assert mode(host) == NORMAL and figures(host) == []


@pytest.mark.parametrize("tool", [MOVE, COPY])
@pytest.mark.parametrize("at", [EMPTY, VERTEX, (200, 100)])
def test_state_250_and_260_loaded_any_click_ends(tool, at):
    host = loaded(tool)
    press(host, *at)
    assert mode(host) == NORMAL and figures(host) == []


def test_state_300_a_pick_deletes_and_ends():
    host, at = waiting(DELETE)
    press(host, *at)
    assert mode(host) == NORMAL and numbers(host) == []


@pytest.mark.parametrize("tool", [MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY, DELETE])
def test_state_waiting_a_click_on_nothing_keeps_waiting(tool):
    host, at = waiting(tool)
    for _ in range(3):
        press(host, *EMPTY)
        release(host, *EMPTY)
    assert mode(host) == tool and figures(host) == []
    press(host, *at)
    assert mode(host) == (NORMAL if tool == DELETE else tool) and numbers(host) == ([] if tool == DELETE else
                                                                                   [1, 2] if tool == COPY else [1])


def test_after_the_end_of_a_tool_clicks_are_those_of_the_normal_mode():
    for tool in (MOVE_POINT, DELETE_POINT, MOVE):
        host = loaded(tool)
        press(host, *EMPTY)
        release(host, *EMPTY)
        heard = listening(host)
        target = tuple(int(value) for value in shape(host)[0])
        press(host, *target)
        release(host, *target)
        assert [name for name, *_ in heard] == ["MouseDown", "OnDataClick", "MouseUp"]


@pytest.mark.parametrize("tool", [ADDING, MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE, COPY, DELETE])
def test_a_rest_of_the_cursor_in_a_tool_arms_no_hint(tool):
    host = editable(LINE, STROKE)
    begin(host, ADD if tool == ADDING else tool, code="A")
    host.control.clock = 10.0
    heard = listening(host)
    for at in ((200, 100), (201, 100), (200, 100)):
        move(host, *at)
        assert HINT_TIMER not in timers(host)
    host.control.clock, host.control.cursor_pos = 20.0, (200, 100)
    host.control.tick(HINT_TIMER)
    assert {name for name, *_ in heard} == {"MouseMove"}


@pytest.mark.parametrize("tool", [MOVE_POINT, DELETE_POINT])
def test_the_cross_over_a_vertex_is_that_of_the_two_tools_that_take_vertices(tool):
    host = loaded(tool)
    seen = []
    for at in (VERTEX, EMPTY):
        move(host, *at)
        seen.append(host.control.cursor)
    assert seen == [CROSS, ARROW]


@pytest.mark.parametrize("tool", [ADD_POINT, MOVE, COPY])
def test_other_tools_show_no_cross(tool):
    host = loaded(tool)
    move(host, *VERTEX)
    assert host.control.cursor == ARROW


# --- Events ------------------------------------------------------------------------------------------------------------------


def off(host):
    press(host, *EMPTY)


def twice(host):
    for at in ((100, 100), (300, 100)):
        press(host, *at)


def and_finish(host):
    finish(host, *EMPTY)


def with_a_click_more(host):
    move(host, 280, 104)
    press(host, 280, 104)
    and_finish(host)


def without_a_vertex(host):
    press(host, *VERTEX)
    off(host)


def drawn_and_finished(host):
    twice(host)
    press(host, 300, 300)
    and_finish(host)


def key_46(host):
    host.control.key(DELETE_KEY)


# The tool, the kind of the item, what the hand does after the start or the pick, the arguments of both events behind the mesh.
EVENT_ROWS = {
    "add a point": (ADD, POINT, lambda host: press(host, 500, 500), (-1, 0, 100), (2, 0, 100)),
    "add a line": (ADD, LINE, drawn_and_finished, (-1, 0, 100), (2, 3, 100)),
    "add a polygon": (ADD, POLYGON, drawn_and_finished, (-1, 0, 100), (2, 3, 100)),
    "add a circle": (ADD, CIRCLE, twice, (-1, 0, 100), (2, 2, 100)),
    "add an ellipse": (ADD, ELLIPSE, twice, (-1, 0, 100), (2, 2, 100)),
    "point move": (MOVE_POINT, LINE, off, (1, 4, 200), (1, 4, 200)),
    "point move of a point": (MOVE_POINT, POINT, off, (1, 1, 200), (1, 1, 200)),
    "point move of a circle": (MOVE_POINT, CIRCLE, off, (1, 1, 200), (1, 2, 200)),
    "point add, told as point move at its start": (ADD_POINT, LINE, with_a_click_more, (1, 4, 200), (1, 5, 210)),
    "point add of nothing": (ADD_POINT, POLYGON, and_finish, (1, 5, 200), (1, 5, 210)),
    "point delete, told as point move at its start": (DELETE_POINT, LINE, without_a_vertex, (1, 4, 200), (1, 3, 220)),
    "point delete of nothing": (DELETE_POINT, LINE, off, (1, 4, 200), (1, 0, 999)),
    "move": (MOVE, POLYGON, off, (1, 5, 250), (1, 5, 250)),
    "move of a circle": (MOVE, CIRCLE, off, (1, 1, 250), (1, 2, 250)),
    "copy": (COPY, LINE, off, (2, 4, 260), (2, 4, 260)),
    "delete": (DELETE, LINE, lambda host: None, (1, 4, 300), (1, 0, 300)),
    "delete key": (MOVE_POINT, LINE, key_46, (1, 4, 200), (1, 0, 300)),
    "cancel": (MOVE, LINE, cancelled, (1, 4, 250), (1, 0, 999)),
    "cancel of a copy": (COPY, LINE, cancelled, (2, 4, 260), (2, 0, 999)),
}


def run(host, tool, kind, act, code=""):
    if tool == ADD:
        begin(host, ADD)
    else:
        pick(host, tool, KINDS[kind][1])
    act(host)


@BOTH
@pytest.mark.parametrize("tool, kind, act, start, end", EVENT_ROWS.values(), ids=EVENT_ROWS)
def test_each_event_comes_once_with_its_arguments(newer, tool, kind, act, start, end):
    host, _ = one(kind, newer)
    if tool == DELETE:
        begin(host, MOVE, 1)
        cancelled(host)
    heard = listening(host)
    run(host, tool, kind, act)
    assert told(heard) == [(START, "A", 1, *start), (END, "A", 1, *end)]


MODE_AT_END = {ADD: NORMAL, MOVE_POINT: MOVE_POINT, ADD_POINT: NORMAL, DELETE_POINT: DELETE_POINT, MOVE: MOVE, COPY: COPY,
               DELETE: NORMAL}


def seen_in(host, event, look):
    seen = []
    host.control.connect(event, lambda *args: seen.append(look(host)))
    return seen


@pytest.mark.parametrize("tool, kind, act, start, end", EVENT_ROWS.values(), ids=EVENT_ROWS)
def test_each_end_comes_in_the_mode_told_and_the_mode_is_0_behind_it(tool, kind, act, start, end):
    host, _ = one(kind)
    begins, ends = seen_in(host, START, mode), seen_in(host, END, mode)
    run(host, tool, kind, act)
    assert begins == [ADDING if tool == ADD else tool]
    assert ends == [NORMAL if act is cancelled else MODE_AT_END[tool]]
    assert mode(host) == (MOVE_POINT if act is key_46 else NORMAL)


@pytest.mark.parametrize("tool, kind, act, start, end", EVENT_ROWS.values(), ids=EVENT_ROWS)
def test_each_end_comes_when_the_figure_is_gone_and_before_the_last_repaint(tool, kind, act, start, end):
    host, _ = one(kind)
    ends = seen_in(host, END, lambda host: (figures(host), drain(host)))
    run(host, tool, kind, act)
    assert ends == [([], None)]
    drawn = verbs(host)
    assert composed(drawn) == (act is not key_46) and drawn, "the repaint follows the event"


@pytest.mark.parametrize("tool", [MOVE_POINT, ADD_POINT, DELETE_POINT, MOVE])
def test_a_start_comes_with_the_item_picked_but_neither_hidden_nor_loaded(tool):
    host, at = one(LINE)
    seen = seen_in(host, START, lambda host: (tag_and_active(host), figures(host)))
    pick(host, tool, at)
    assert seen == [((0, True), [])]


def test_the_start_of_a_copy_comes_when_the_copy_is_there_and_not_yet_hidden():
    host, at = one(LINE)
    seen = seen_in(host, START, lambda host: (numbers(host), shape(host, 2), tag_and_active(host, 2), figures(host)))
    pick(host, COPY, at)
    assert seen == [([1, 2], STROKE, (0, False), [])]


def test_the_start_of_a_delete_comes_before_and_its_end_behind_it():
    host, at = one(LINE)
    begins, ends = seen_in(host, START, numbers), seen_in(host, END, numbers)
    pick(host, DELETE, at)
    assert (begins, ends) == ([[1]], [[]])


@pytest.mark.parametrize("kind, points", [(LINE, 2), (POLYGON, 2), (CIRCLE, 2), (ELLIPSE, 2), (POINT, 0)])
def test_the_start_of_adding_comes_when_the_figure_has_its_first_and_its_trailing_point(kind, points):
    host = editable(kind)
    seen = seen_in(host, START, lambda host: (len(rubber(host)), numbers(host)))
    begin(host, ADD)
    press(host, 100, 100)
    assert seen == [(points, [])]


@pytest.mark.parametrize("tool, kind, act, expected", [
    (MOVE_POINT, POINT, off, [EMPTY]),
    (MOVE, POINT, off, [EMPTY]),
    (ADD_POINT, LINE, with_a_click_more, [(100, 100), (280, 104), (300, 100), (300, 300), (100, 300)]),
    (DELETE_POINT, LINE, without_a_vertex, [(100, 100), (300, 300), (100, 300)])])
def test_an_end_finds_the_item_written_shown_and_inactive(tool, kind, act, expected):
    host, _ = one(kind)
    seen = seen_in(host, END, lambda host: (shape(host), tag_and_active(host)))
    run(host, tool, kind, act)
    assert seen == [(expected, (0, False))]


@pytest.mark.parametrize("kind", [POINT, LINE, POLYGON, CIRCLE, ELLIPSE])
def test_the_end_of_adding_finds_the_new_item(kind):
    host = editable(kind)
    begin(host, ADD)
    seen = seen_in(host, END, lambda host: (numbers(host), tag_and_active(host), item(host, "A", 1, 1)["pntCnt"]))
    if kind == POINT:
        press(host, 10, 10)
    else:
        twice(host)
        if kind in (LINE, POLYGON):
            and_finish(host)
    assert seen == [([1], (0, kind in (LINE, POLYGON)), {POINT: 1, LINE: 2, POLYGON: 3, CIRCLE: 1, ELLIPSE: 2}[kind])]


def test_the_end_of_a_cancelled_copy_finds_the_copy_gone():
    host, at = one(LINE)
    pick(host, COPY, at)
    seen = seen_in(host, END, numbers)
    cancelled(host)
    assert seen == [[1]]


@pytest.mark.parametrize("tool, kind, act, start, end", EVENT_ROWS.values(), ids=EVENT_ROWS)
def test_mouse_down_comes_behind_the_events_of_the_click(tool, kind, act, start, end):
    host, _ = one(kind)
    heard = listening(host)
    run(host, tool, kind, act)
    order = [name for name, *_ in heard if name in (START, "MouseDown")]
    assert order[0] == START and order[1:] == ["MouseDown"] * (len(order) - 1)
