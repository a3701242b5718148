"""The point move tool: taking a vertex, carrying it, dropping it, deleting it by key, and the commit off the figure."""

import pytest
from edit_rig import (BOTH, DISC, EACH_KIND, EMPTY, END, KINDS, OVAL, SPOT, SQUARE, START, STROKE, another_layer, begin,
                      cancelled, clean, editable, figures, heights, is_red_figure, marked, mode, numbers, one, pick, picked,
                      plain, rubber, shape, tag_and_active, told)
from input_rig import (ADD_POINT, ARROW, COPY, CROSS, DELETE, DELETE_KEY, DELETE_POINT, LEFT, MOVE, MOVE_POINT, NORMAL, PAN,
                       drawn_after, listening, move, press, relaid, release)
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, block, composed, item
from overlay_rig import figure, is_active, marks, polylines

PLACE = (150, 450)


def holding(points, at, kind=LINE):
    """A host whose tool holds a vertex."""
    host = editable(kind, points)
    begin(host, MOVE_POINT, 1)
    press(host, *at)
    return host


def dropped(points, at, place, kind=LINE):
    """A host whose tool took a vertex and dropped it elsewhere."""
    host = holding(points, at, kind)
    move(host, *place)
    press(host, *place)
    return host


# --- The pick ----------------------------------------------------------------------------------------------------------------


@BOTH
@EACH_KIND
def test_a_pick_tells_the_start_hides_the_item_and_lays_a_red_figure_in_its_place(newer, kind):
    host, at = one(kind, newer)
    marked(host, 5)
    heard = listening(host)
    drawn = drawn_after(host, lambda: pick(host, MOVE_POINT, at))
    assert told(heard) == [(START, "A", 1, 1, len(KINDS[kind][0]), 200)]
    assert composed(drawn) and tag_and_active(host) == (-1, True)
    expected = plain(KINDS[kind][0])
    assert rubber(host) == ([(400, 300), (450, 300)] if kind == CIRCLE else expected)
    assert is_red_figure(host, 1, len(rubber(host)), kind) and is_active(host, 1)
    assert host.control.ActivePointType == 1 and mode(host) == MOVE_POINT


def test_a_picked_line_is_drawn_as_the_figure_with_marks_and_no_more_as_an_item():
    host, at = one(LINE)
    drawn = drawn_after(host, lambda: pick(host, MOVE_POINT, at))
    assert [each for each in drawn if each.context == "base" and each.name in ("Polyline", "LineTo")] == []
    assert polylines(drawn) == [tuple(STROKE)]
    assert len(marks(drawn)) == 7, "rings at both ends, at each vertex but the last, and two more at the second"


def test_a_pick_ends_with_mouse_down_after_the_start():
    host, at = one(LINE)
    heard = listening(host)
    pick(host, MOVE_POINT, at)
    assert [name for name, *_ in heard] == [START, "MouseDown"]


# --- Taking, carrying and dropping -------------------------------------------------------------------------------------------


@pytest.mark.parametrize("at, taken", [((100, 100), True), ((103, 100), True), ((100, 104), True), ((106, 106), False),
                                       ((300, 100), True), ((302, 100), True), ((304, 100), False), ((300, 96), False)])
def test_a_vertex_is_taken_within_5_pixels_of_the_first_and_3_of_the_others(at, taken):
    host = holding(STROKE, at)
    assert mode(host) == (MOVE_POINT if taken else NORMAL)


def test_a_held_vertex_follows_the_cursor_in_the_figure_alone():
    host = holding(STROKE, (300, 100))
    drawn = drawn_after(host, lambda: move(host, *PLACE))
    assert relaid(drawn) and polylines(drawn) == [((100, 100), PLACE, (300, 300), (100, 300))]
    assert rubber(host) == [(100, 100), PLACE, (300, 300), (100, 300)]
    assert shape(host) == STROKE


def test_a_vertex_that_was_taken_does_not_stay_with_the_cursor_once_dropped():
    host = dropped(STROKE, (300, 100), PLACE)
    move(host, 500, 500)
    assert rubber(host)[1] == PLACE and mode(host) == MOVE_POINT


def test_taking_and_dropping_tell_no_event_of_the_tool():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    heard = listening(host)
    for at in ((300, 100), PLACE, PLACE, (600, 100)):
        move(host, *at)
        press(host, *at)
        release(host, *at)
    assert told(heard) == [] and mode(host) == MOVE_POINT


def test_a_drop_without_a_move_before_it_counts_as_any_drop():
    host = holding(STROKE, (300, 100))
    press(host, *PLACE)
    press(host, *EMPTY)
    assert shape(host) == [(100, 100), PLACE, (300, 300), (100, 300)]


@BOTH
def test_a_click_off_the_figure_writes_all_points_and_ends(newer):
    host = editable(LINE, [(x, y, 7) for x, y in STROKE], newer=newer)
    marked(host, 5)
    pick(host, MOVE_POINT, (200, 100))
    heard = listening(host)
    for at in ((300, 300), PLACE):
        press(host, *at)
    drawn = drawn_after(host, lambda: press(host, *EMPTY))
    assert told(heard) == [(END, "A", 1, 1, 4, 200)]
    assert shape(host) == [(100, 100), (300, 100), PLACE, (100, 300)]
    assert heights(host) == [0, 0, 0, 0], "the commit sets every z to 0"
    assert tag_and_active(host) == (5, False) and clean(host) and composed(drawn)


def test_several_vertices_may_be_moved_before_the_end():
    host = dropped(STROKE, (300, 100), PLACE)
    for at in ((100, 100), (50, 60), PLACE, (200, 500)):
        press(host, *at)
    press(host, *EMPTY)
    assert shape(host) == [(50, 60), (200, 500), (300, 300), (100, 300)]


def test_an_untouched_item_is_written_too_and_loses_its_heights():
    host = editable(LINE, [(10, 10, 5), (90, 10, 6)])
    begin(host, MOVE_POINT, 1)
    press(host, *EMPTY)
    assert shape(host) == [(10, 10), (90, 10)] and heights(host) == [0, 0]


def test_a_commit_takes_the_item_out_of_the_selection_that_the_pick_put_it_in():
    host = picked(LINE, MOVE_POINT)
    assert tag_and_active(host)[1]
    press(host, *EMPTY)
    assert not tag_and_active(host)[1]


def test_a_commit_widens_the_bounds_and_never_narrows_them():
    host = dropped(STROKE, (300, 100), (500, 50))
    press(host, *EMPTY)
    assert (block(host, "A", 1)["minX"], block(host, "A", 1)["maxX"], block(host, "A", 1)["maxY"]) == (100, 500, -50)
    begin(host, MOVE_POINT, 1)
    for at in ((500, 50), (200, 200), EMPTY):
        press(host, *at)
    assert block(host, "A", 1)["maxX"] == 500


def test_points_are_read_and_written_against_the_origin_of_the_block():
    host = editable(LINE)
    assert host.control.DigMemAlloc2("A", 7, LINE, "", 1, 100, -50)
    host.add_item("A", 7, 1, [(0, 0), (200, 0)])
    begin(host, MOVE_POINT, 1, mesh=7)
    assert rubber(host) == [(100, 50), (300, 50)]
    for at in ((300, 50), (350, 250), EMPTY):
        press(host, *at)
    assert item(host, "A", 7, 1)["pnts"] == [(0, 0, 0), (250, -200, 0)]


def test_another_active_figure_under_the_click_is_off_the_figure():
    host = editable(LINE, STROKE)
    figure(host, LINE, [(600, 100), (650, 150)], active=True)
    begin(host, MOVE_POINT, 1)
    press(host, 600, 100)
    assert mode(host) == NORMAL and [each["ID"] for each in figures(host)] == [1]


def test_an_inactive_figure_on_a_vertex_does_not_stand_in_the_way_and_an_active_older_one_does():
    for active in (False, True):
        host = editable(LINE, STROKE)
        figure(host, LINE, [(300, 100), (650, 150)], active=active)
        begin(host, MOVE_POINT, 1)
        press(host, 300, 100)
        assert mode(host) == (NORMAL if active else MOVE_POINT)


# --- Polygons ----------------------------------------------------------------------------------------------------------------


def test_vertex_0_of_a_ring_takes_the_closing_point_along():
    host = dropped(SQUARE, (100, 100), (50, 60), POLYGON)
    assert rubber(host) == [(50, 60), (300, 100), (300, 300), (100, 300), (50, 60)]
    press(host, *EMPTY)
    assert shape(host) == [(50, 60), (300, 100), (300, 300), (100, 300), (50, 60)]


def test_another_vertex_of_a_ring_moves_alone():
    host = dropped(SQUARE, (300, 300), (350, 360), POLYGON)
    press(host, *EMPTY)
    assert shape(host) == [(100, 100), (300, 100), (350, 360), (100, 300), (100, 100)]


def test_every_later_point_at_the_old_place_moves_along_at_the_drop_and_the_next_one_alone_while_carried():
    points = [(100, 100), (300, 100), (300, 300), (100, 100), (60, 300), (20, 300), (100, 100)]
    host = holding(points, (100, 100), POLYGON)
    move(host, 50, 60)
    assert [rubber(host)[i] for i in (0, 3, 6)] == [(50, 60), (50, 60), (100, 100)]
    press(host, 50, 60)
    press(host, *EMPTY)
    assert shape(host) == [(50, 60), (300, 100), (300, 300), (50, 60), (60, 300), (20, 300), (50, 60)]


def test_an_earlier_point_at_the_old_place_stays():
    host = editable(POLYGON, SQUARE)
    begin(host, MOVE_POINT, 1)
    assert host.EditOrgPnt(1, 0, 50.0, -50.0) == 0 and host.EditOrgPnt(1, 4, 100.0, -100.0) == 0
    for at in ((100, 100), (120, 130), EMPTY):
        press(host, *at)
    assert shape(host) == [(100, 100), (300, 100), (300, 300), (100, 300), (120, 130)]


def test_in_a_line_points_at_the_old_place_stay():
    host = dropped(SQUARE, (100, 100), (50, 60), LINE)
    press(host, *EMPTY)
    assert shape(host) == [(50, 60), (300, 100), (300, 300), (100, 300), (100, 100)]


# --- Points, circles, ellipses -----------------------------------------------------------------------------------------------


def test_a_picked_point_is_carried_at_once_and_dropped_for_good_by_the_next_click():
    host = editable(POINT, [(200, 150, 8)])
    marked(host, 5)
    heard = listening(host)
    pick(host, MOVE_POINT, (200, 150))
    drawn = drawn_after(host, lambda: move(host, 260, 170))
    assert relaid(drawn) and rubber(host) == [(260, 170)] and shape(host) == [(200, 150)]
    drawn = drawn_after(host, lambda: press(host, 270, 180))
    assert told(heard) == [(START, "A", 1, 1, 1, 200), (END, "A", 1, 1, 1, 200)]
    assert shape(host) == [(270, 180)] and heights(host) == [0] and tag_and_active(host) == (5, False)
    assert clean(host) and composed(drawn)


def test_a_named_point_is_never_taken_and_clicks_do_nothing():
    host = editable(POINT, SPOT)
    begin(host, MOVE_POINT, 1)
    heard = listening(host)
    for at in ((200, 150), EMPTY):
        press(host, *at)
    assert told(heard) == [] and mode(host) == MOVE_POINT and tag_and_active(host)[0] == -1 and rubber(host) == SPOT
    cancelled(host)
    assert clean(host) and shape(host) == SPOT


@pytest.mark.parametrize("at, place, centre, radius", [
    ((450, 300), (400, 420), (400, 300), 120), ((400, 300), (420, 300), (420, 300), 30),
    ((450, 300), (430, 340), (400, 300), 50)])
def test_of_a_picked_circle_the_centre_and_a_point_on_the_rim_can_be_moved(at, place, centre, radius):
    host, spot = one(CIRCLE)
    heard = listening(host)
    pick(host, MOVE_POINT, spot)
    for click_at in (at, place, EMPTY):
        press(host, *click_at)
    assert told(heard) == [(START, "A", 1, 1, 1, 200), (END, "A", 1, 1, 2, 200)]
    assert shape(host) == [centre] and heights(host) == [pytest.approx(radius, rel=1e-12)]
    assert clean(host)


def test_a_picked_circle_left_alone_keeps_its_radius():
    host, spot = one(CIRCLE)
    pick(host, MOVE_POINT, spot)
    press(host, *EMPTY)
    assert shape(host) == plain(DISC) and heights(host) == [50]


def test_a_named_circle_takes_its_radius_from_the_second_point_of_the_tool_before():
    """It is loaded as its centre alone, and the record keeps the points of the last tool behind that."""
    host = editable(LINE, STROKE)
    another_layer(host, "C", CIRCLE, DISC)
    begin(host, MOVE_POINT, 1)
    press(host, *EMPTY)
    begin(host, MOVE_POINT, 1, "C")
    heard = listening(host)
    press(host, *EMPTY)
    assert told(heard) == [(END, "C", 1, 1, 1, 200)] and shape(host, 1, "C") == [(400, 300)]
    assert heights(host, 1, "C") == [pytest.approx(50000 ** 0.5)], "from (400, 300) to (300, 100)"


def test_of_an_ellipse_both_corners_of_its_box_can_be_moved():
    host, spot = one(ELLIPSE)
    pick(host, MOVE_POINT, spot)
    for at in ((300, 200), (360, 260), EMPTY):
        press(host, *at)
    assert shape(host) == [OVAL[0], (360, 260)] and heights(host) == [0, 0]


# --- The Delete key ----------------------------------------------------------------------------------------------------------


@EACH_KIND
def test_delete_with_an_item_loaded_removes_the_item_and_waits_for_the_next(kind):
    points, _ = KINDS[kind]
    host = editable(kind, points, [(x + 30, y + 30, *rest) for x, y, *rest in points])
    begin(host, MOVE_POINT, 1)
    heard = listening(host)
    drawn = drawn_after(host, lambda: host.control.key(DELETE_KEY))
    assert told(heard) == [(END, "A", 1, 1, 0, 300)]
    assert numbers(host) == [2] and figures(host) == [] and mode(host) == MOVE_POINT and relaid(drawn)
    host.RDMReDraw()
    press(host, *[value + 30 for value in KINDS[kind][1]])
    assert told(heard) == [(START, "A", 1, 2, len(points), 200)], "the next click picks anew"


def test_delete_with_a_point_held_removes_that_point_from_the_figure():
    host = holding(STROKE, (300, 100))
    heard = listening(host)
    drawn = drawn_after(host, lambda: host.control.key(DELETE_KEY))
    assert relaid(drawn) and told(heard) == [] and mode(host) == MOVE_POINT
    assert rubber(host) == [(100, 100), (300, 300), (100, 300)] and shape(host) == STROKE
    move(host, 500, 500)
    assert rubber(host) == [(100, 100), (300, 300), (100, 300)], "nothing is held any more"


def test_the_commit_writes_the_points_left_and_keeps_the_old_ones_past_their_count():
    host = holding([(x, y, 4) for x, y in STROKE], (300, 100))
    host.control.key(DELETE_KEY)
    heard = listening(host)
    press(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 1, 3, 200)]
    assert shape(host) == [(100, 100), (300, 300), (100, 300), (100, 300)] and heights(host) == [0, 0, 0, 4]


def test_the_first_vertex_of_a_ring_deleted_by_key_closes_the_figure_anew_but_not_the_item():
    host = holding(SQUARE, (100, 100), POLYGON)
    host.control.key(DELETE_KEY)
    assert rubber(host) == [(300, 100), (300, 300), (100, 300), (300, 100)]
    press(host, *EMPTY)
    assert shape(host) == [(300, 100), (300, 300), (100, 300), (100, 100), (100, 100)]


def test_points_may_be_deleted_down_to_the_last_which_stays_held():
    host = holding([(100, 100), (300, 100)], (300, 100))
    host.control.key(DELETE_KEY)
    assert rubber(host) == [(100, 100)]
    press(host, 100, 100)
    host.control.key(DELETE_KEY)
    assert rubber(host) == [(100, 100)] and mode(host) == MOVE_POINT
    move(host, 150, 160)
    assert rubber(host) == [(150, 160)], "a delete that fails leaves the point in the hand"
    heard = listening(host)
    for at in ((150, 160), EMPTY):
        press(host, *at)
    assert told(heard) == [(END, "A", 1, 1, 1, 200)] and shape(host) == [(150, 160), (300, 100)]


def test_a_point_item_in_the_hand_is_not_deleted_by_key():
    host = picked(POINT, MOVE_POINT)
    host.control.key(DELETE_KEY)
    assert rubber(host) == SPOT and numbers(host) == [1]
    press(host, 260, 170)
    assert shape(host) == [(260, 170)] and clean(host)


def test_delete_before_a_pick_does_nothing_but_lay_the_figures_anew():
    host = marked(editable(LINE, STROKE), 5, True)
    begin(host, MOVE_POINT, code="")
    heard = listening(host)
    drawn = drawn_after(host, lambda: host.control.key(DELETE_KEY))
    assert relaid(drawn) and heard == [] and mode(host) == MOVE_POINT
    assert numbers(host) == [1] and tag_and_active(host) == (5, True)


@pytest.mark.parametrize("tool", [ADD_POINT, DELETE_POINT, MOVE, COPY, DELETE, NORMAL, PAN, 50, 51, 100, 101, 77])
def test_delete_in_any_other_mode_lays_the_figures_anew_and_changes_nothing(tool):
    host = marked(editable(LINE, STROKE), 0, True)
    if tool in (ADD_POINT, DELETE_POINT, MOVE, COPY):
        begin(host, tool, 1)
    host.control.RunMode = tool
    before = tag_and_active(host), figures(host)
    heard = listening(host)
    drawn = drawn_after(host, lambda: host.control.key(DELETE_KEY))
    assert relaid(drawn) and heard == [] and mode(host) == tool
    assert (tag_and_active(host), figures(host)) == before and shape(host) == STROKE


# --- The cursor and the keys -------------------------------------------------------------------------------------------------


def test_the_cursor_is_a_cross_over_a_vertex_and_an_arrow_beside_it():
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, 1)
    seen = []
    for at in ((300, 100), (200, 100), (100, 104), EMPTY):
        move(host, *at)
        seen.append(host.control.cursor)
    assert seen == [CROSS, ARROW, CROSS, ARROW]


def test_before_a_pick_and_with_a_point_held_the_cursor_is_not_looked_after():
    host = editable(LINE, STROKE)
    figure(host, LINE, [(600, 100), (650, 150)], active=True)
    begin(host, MOVE_POINT, code="")
    move(host, 600, 100)
    assert host.control.cursor == ARROW
    begin(host, MOVE_POINT, 1)
    move(host, 300, 100)
    assert host.control.cursor == CROSS
    press(host, 300, 100)
    move(host, *EMPTY)
    assert host.control.cursor == CROSS and rubber_of_last(host)[1] == EMPTY


def rubber_of_last(host):
    return [(x, -y) for x, y, *_ in figures(host)[-1]["pnts"]]


@pytest.mark.parametrize("keys", [4, 8, 12])
def test_keys_held_change_nothing_in_the_clicks_of_the_tool(keys):
    host = editable(LINE, STROKE)
    begin(host, MOVE_POINT, code="")
    for at in ((200, 100), (300, 100), PLACE, EMPTY):
        press(host, *at, keys)
    assert shape(host) == [(100, 100), PLACE, (300, 300), (100, 300)] and clean(host)


def test_a_double_click_in_the_tool_tells_data_but_ends_nothing():
    host = marked(editable(LINE, STROKE), 0, True)
    begin(host, MOVE_POINT, 1)
    heard = listening(host)
    host.control.mouse("ldbl", LEFT, *EMPTY)
    assert [name for name, *_ in heard] == ["OnDataDblClick"] and mode(host) == MOVE_POINT


def test_the_item_may_lie_in_any_layer_and_the_others_stay():
    host = editable(LINE, STROKE)
    another_layer(host, "B", LINE, [(100, 500), (300, 500)])
    pick(host, MOVE_POINT, (200, 500))
    for at in ((300, 500), (300, 400), EMPTY):
        press(host, *at)
    assert shape(host, 1, "B") == [(100, 500), (300, 400)] and shape(host) == STROKE
