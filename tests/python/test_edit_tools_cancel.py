"""Cancelling by the method and by Escape: in every phase of every tool, before a pick, and in modes that are no tools."""

import pytest
from edit_rig import (ADD, BY, CANCELLED, EACH_KIND, EMPTY, END, KINDS, LOADING, PICKING, SPOT, SQUARE, STROKE, another_layer,
                      begin, cancelled, clean, editable, figures, heights, is_red_figure, marked, mode, numbers, one, pick,
                      plain, rubber, shape, tag_and_active, told)
from input_rig import (ADDING, ADD_POINT, COPY, DELETE, DELETE_KEY, DELETE_POINT, MOVE, MOVE_POINT, NORMAL, PAN, drawn_after,
                       listening, move, press)
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, block, composed, drain, painted, verbs
from overlay_rig import figure


def take_vertex(host, points):
    press(host, *points[0][:2])
    move(host, 500, 500)


# --- With an item loaded -----------------------------------------------------------------------------------------------------


@BY
@EACH_KIND
@pytest.mark.parametrize("tool", LOADING)
def test_a_cancel_with_a_named_item_shows_it_again_unchanged_and_inactive(tool, kind, cancel):
    points, _ = KINDS[kind]
    host = editable(kind, points)
    marked(host, 5, True)
    begin(host, tool, 1)
    move(host, 333, 444)
    heard = listening(host)
    drawn = drawn_after(host, lambda: cancelled(host, cancel))
    assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)]
    assert composed(drawn) and clean(host)
    if tool == COPY:
        assert numbers(host) == []
    else:
        assert shape(host) == plain(points) and tag_and_active(host) == (5, False)
        assert heights(host) == [rest[0] if rest else 0 for _, _, *rest in points]


@BY
@EACH_KIND
@pytest.mark.parametrize("tool", [MOVE_POINT, MOVE])
def test_a_cancel_behind_a_pick_shows_the_item_again_and_takes_it_out_of_the_selection(tool, kind, cancel):
    host, at = one(kind)
    marked(host, 5)
    pick(host, tool, at)
    move(host, 333, 444)
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)]
    assert clean(host) and shape(host) == plain(KINDS[kind][0]) and tag_and_active(host) == (5, False)


@BY
@pytest.mark.parametrize("tool", [ADD_POINT, DELETE_POINT])
@pytest.mark.parametrize("kind", [LINE, POLYGON])
def test_a_cancel_drops_points_inserted_or_removed(tool, kind, cancel):
    host, at = one(kind)
    pick(host, tool, at)
    move(host, 104, 130)
    press(host, *((104, 130) if tool == ADD_POINT else (300, 300)))
    assert len(rubber(host)) == len(KINDS[kind][0]) + (1 if tool == ADD_POINT else -1)
    cancelled(host, cancel)
    assert clean(host) and shape(host) == KINDS[kind][0]


@BY
@pytest.mark.parametrize("kind, points", [(LINE, STROKE), (POLYGON, SQUARE), (ELLIPSE, [(100, 100), (300, 200)])])
def test_a_cancel_with_a_vertex_in_the_hand_lets_it_go(kind, points, cancel):
    host = editable(kind, points)
    begin(host, MOVE_POINT, 1)
    take_vertex(host, points)
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)]
    assert clean(host) and shape(host) == points


@BY
def test_a_cancel_with_a_vertex_dropped_or_deleted_forgets_that(cancel):
    for by_key in (False, True):
        host = editable(LINE, STROKE)
        begin(host, MOVE_POINT, 1)
        take_vertex(host, STROKE)
        if by_key:
            host.control.key(DELETE_KEY)
        else:
            press(host, 500, 500)
        cancelled(host, cancel)
        assert clean(host) and shape(host) == STROKE


@BY
def test_a_cancel_with_a_point_in_the_hand_leaves_it_where_it_was(cancel):
    host, at = one(POINT)
    pick(host, MOVE_POINT, at)
    move(host, 300, 300)
    cancelled(host, cancel)
    assert clean(host) and shape(host) == SPOT


# --- The add tool ------------------------------------------------------------------------------------------------------------


@BY
@EACH_KIND
def test_a_cancel_of_adding_before_a_click_tells_the_number_asked_for(kind, cancel):
    host = editable(kind, KINDS[kind][0])
    begin(host, ADD, 77)
    heard = listening(host)
    drawn = drawn_after(host, lambda: cancelled(host, cancel))
    assert told(heard) == [(END, "A", 1, 77, 0, CANCELLED)] and composed(drawn)
    assert clean(host) and numbers(host) == [1]


@BY
@pytest.mark.parametrize("kind, clicks", [(LINE, 1), (LINE, 3), (POLYGON, 1), (POLYGON, 4), (CIRCLE, 1), (ELLIPSE, 1)])
def test_a_cancel_of_adding_after_clicks_leaves_nothing_behind(kind, clicks, cancel):
    host = editable(kind)
    assert host.DigMemDelete("A", 1)
    begin(host, ADD)
    for at in [*STROKE, *STROKE][:clicks]:
        press(host, *at)
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "A", 1, 0, 0, CANCELLED)]
    assert clean(host) and block(host, "A", 1) is None
    press(host, 10, 10)
    assert figures(host) == []


def test_a_cancel_of_adding_resets_tag_and_flag_of_an_item_with_the_number_asked_for():
    host = editable(LINE)
    host.add_item("A", 1, 0, [(0, 0), (10, 10)])
    marked(host, 5, True, dat_id=0)
    begin(host, ADD, 0)
    cancelled(host)
    assert tag_and_active(host, 0) == (0, False)


# --- Before a pick -----------------------------------------------------------------------------------------------------------


@BY
@pytest.mark.parametrize("tool", PICKING)
def test_a_cancel_before_a_pick_ends_the_tool_and_tells_the_number_it_was_given(tool, cancel):
    host = editable(LINE, STROKE)
    begin(host, tool, -4)
    heard = listening(host)
    drawn = drawn_after(host, lambda: cancelled(host, cancel))
    ((name, *_, dat_id, count, edit_type),) = told(heard)
    assert (name, dat_id, count, edit_type) == (END, -4, 0, CANCELLED)
    assert clean(host) and composed(drawn) and numbers(host) == [1] and shape(host) == STROKE


@BY
@pytest.mark.parametrize("tool", PICKING)
def test_a_cancel_before_a_pick_leaves_the_figures_of_the_host(tool, cancel):
    host = editable(LINE, STROKE)
    figure(host, LINE, [(1, 1), (2, 2)])
    begin(host, tool, code="")
    cancelled(host, cancel)
    assert len(figures(host)) == 1 and mode(host) == NORMAL


def with_key_left():
    """A host whose last tool worked on item 1 of layer B, which then got a tag and was selected."""
    host = editable(LINE, STROKE)
    another_layer(host, "B", LINE, [(100, 500), (300, 500)], [(100, 550), (300, 550)])
    begin(host, MOVE_POINT, 1, "B")
    press(host, *EMPTY)
    marked(host, 5, True, 1, "B")
    marked(host, 6, True, 2, "B")
    return marked(host, 7, True)


@BY
@pytest.mark.parametrize("tool", [ADD_POINT, DELETE_POINT, MOVE, DELETE])
def test_a_cancel_before_a_pick_writes_to_the_item_of_the_key_left_behind(tool, cancel):
    host = with_key_left()
    begin(host, tool, 2, "")
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "B", 1, 2, 0, CANCELLED)], "code and mesh of the last tool, the number of this start"
    assert tag_and_active(host, 2, "B") == (0, False)
    assert (tag_and_active(host, 1, "B"), tag_and_active(host, 1)) == ((5, True), (7, True))


@BY
def test_a_cancel_of_a_copy_before_a_pick_deletes_the_item_of_the_key_left_behind(cancel):
    host = with_key_left()
    begin(host, COPY, 2, "")
    cancelled(host, cancel)
    assert numbers(host, "B") == [1] and numbers(host) == [1]


@BY
def test_a_cancel_of_the_point_move_tool_before_a_pick_writes_nothing(cancel):
    host = with_key_left()
    begin(host, MOVE_POINT, 2, "")
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "B", 1, 2, 0, CANCELLED)] and mode(host) == NORMAL
    assert tag_and_active(host, 2, "B") == (6, True)


@BY
def test_a_cancel_behind_the_delete_key_writes_nothing_for_the_tool_waits_again(cancel):
    host = editable(LINE, STROKE, [(100, 500), (300, 500)])
    begin(host, MOVE_POINT, 1)
    host.control.key(DELETE_KEY)
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)] and clean(host) and numbers(host) == [2]


# --- Other modes -------------------------------------------------------------------------------------------------------------


@BY
@pytest.mark.parametrize("other", [NORMAL, PAN, 50, 51, 77, 100, 102, 199, 301, 999, -1])
def test_in_a_mode_that_is_no_tool_a_cancel_composes_the_map_and_no_more(other, cancel):
    host = marked(editable(LINE, STROKE), 5, True)
    figure(host, LINE, [(1, 1), (2, 2)])
    host.control.RunMode = other
    heard = listening(host)
    drawn = drawn_after(host, lambda: cancelled(host, cancel))
    assert composed(drawn) and heard == [] and mode(host) == other
    assert tag_and_active(host) == (5, True) and len(figures(host)) == 1


@BY
def test_a_tool_whose_mode_the_host_wrote_away_is_not_cancelled(cancel):
    host = editable(LINE, STROKE)
    begin(host, MOVE, 1)
    host.control.RunMode = NORMAL
    heard = listening(host)
    cancelled(host, cancel)
    assert told(heard) == [] and is_red_figure(host, 1, 4, LINE) and tag_and_active(host)[0] == -1
    host.control.RunMode = MOVE
    cancelled(host, cancel)
    assert clean(host) and tag_and_active(host) == (0, False)


@BY
def test_a_second_cancel_finds_no_tool(cancel):
    host = editable(LINE, STROKE)
    begin(host, MOVE, 1)
    cancelled(host, cancel)
    heard = listening(host)
    marked(host, 5, True)
    cancelled(host, cancel)
    assert heard == [] and tag_and_active(host) == (5, True)


@BY
def test_a_cancel_after_a_commit_changes_nothing(cancel):
    host = editable(LINE, STROKE)
    pick(host, MOVE, (200, 100))
    press(host, 230, 170)
    heard = listening(host)
    cancelled(host, cancel)
    assert heard == [] and shape(host)[0] == (130, 170)


def test_a_cancel_before_the_first_paint_draws_nothing_and_does_not_fail():
    host = painted()
    assert host.init()
    drain(host)
    host.control.RunMode = ADDING
    host.control.OrvCancelOrgEdit()
    assert mode(host) == NORMAL
    verbs(host)


@BY
def test_where_item_and_block_are_gone_a_cancel_still_ends_the_tool(cancel):
    for tool in LOADING:
        for how in ("item", "block"):
            host = editable(LINE, STROKE)
            begin(host, tool, 1)
            assert host.DelDigDat("A", 1, 1) if how == "item" else host.DigMemDelete("A", 1)
            heard = listening(host)
            cancelled(host, cancel)
            assert told(heard) == [(END, "A", 1, 1, 0, CANCELLED)] and clean(host)
