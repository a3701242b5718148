"""Overlay figures in the store: numbers, attributes, points, strings, and what each operation refuses.

It is long because every operation is asked under both families of names, and each of them has its own refusals.
"""

import pytest
from map_rig import CIRCLE, ELLIPSE, LINE, POINT, POLYGON, Host, drain, dump, one_to_one, painted, picked, verbs, view
from overlay_rig import A, B, C, D, add_points, figure, is_active, points_of_lines, redrawn, set_active, shapes, texts

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
SHORT_MIN, SHORT_MAX = -32768, 32767
NOBODY = (-1, None, None, None, None)
# Each operation that names a figure, with what it answers when there is no such figure.
REFUSALS = [
    ("EditOrgDatEx", (LINE, 1, 0xFF, 0), False), ("DelOrgDataEx", (), -1), ("AddOrgPnt", (1.0, 2.0), -1),
    ("InsOrgPnt", (0, 1.0, 2.0), -1), ("DelOrgPnt", (0,), -1), ("EditOrgPnt", (0, 1.0, 2.0), -1), ("GetOrgDatEx", (), NOBODY)]


def corners(host):
    """The points of the polygon figures: of those with rings and of those without, after a repaint."""
    found = []
    for name, *values in shapes(redrawn(host)):
        if name in ("PolyPolygon", "Polygon"):
            found.append(list(values[0]))
    return found


def records(host):
    assert dump(host)["orgDatCnt"] == len(dump(host)["orgDats"])
    return dump(host)["orgDats"]


def points_of(host, at=0):
    """The points that a figure holds, as pixels."""
    return [(x, -y) for x, y in records(host)[at]["pnts"]]


def count_of(host, number):
    return host.GetOrgDatEx(number)[0]


def numbers(host, count):
    return [host.GetOrgID(at) for at in range(count)]


# --- Making figures ----------------------------------------------------------------------------------------------------------


@BOTH
def test_figures_are_numbered_from_1(newer):
    host = painted(newer)
    assert [host.MakeOrgDatEx(LINE, 0, 0, 1) for _ in range(4)] == [1, 2, 3, 4]
    assert numbers(host, 4) == [1, 2, 3, 4]


@BOTH
def test_a_figure_without_points_reads_0_points_and_its_attributes(newer):
    host = painted(newer)
    host.MakeOrgDatEx(ELLIPSE, 7, 0x123456, 1)
    assert host.GetOrgDatEx(1) == (0, ELLIPSE, 7, 0x123456, 1)
    assert is_active(host, 1) is False


@BOTH
def test_all_other_fields_of_a_new_figure_are_0_and_nothing(newer):
    host = painted(newer)
    assert records(host) == []
    host.MakeOrgDatEx(POLYGON, -2, 0x123456, 1)
    assert records(host) == [{"ID": 1, "type": POLYGON, "fill": 1, "color": 0x123456, "line": -2, "pntCnt": 0, "active": 0,
                              "pnts": [], "strX": 0, "strY": 0, "strZ": 0, "strText": None, "strSize": 0, "strFill": 0,
                              "strAngle": 0, "strColor": 0}]


@pytest.mark.parametrize("given, kept", [(1, 1), (0, 0), (2, 0), (-1, 0), (SHORT_MAX, 0), (256, 0), (257, 0)])
@BOTH
def test_a_figure_is_filled_only_when_made_with_exactly_1(newer, given, kept):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, given)
    assert host.GetOrgDatEx(1) == (0, LINE, 0, 0, kept)


@pytest.mark.parametrize("kind", [0, 5, 9, 10, -1, SHORT_MIN, SHORT_MAX, 9999])
@pytest.mark.parametrize("line", [0, 1, -1, SHORT_MIN, SHORT_MAX])
@BOTH
def test_type_and_line_are_kept_with_their_sign_and_unchecked(newer, kind, line):
    host = painted(newer)
    assert host.MakeOrgDatEx(kind, line, 0, 0) == 1
    assert host.GetOrgDatEx(1) == (0, kind, line, 0, 0)


@pytest.mark.parametrize("line, kept", [(40000, -25536), (65535, -1), (65536, 0), (-32769, 32767)])
def test_the_newer_names_take_wider_numbers_and_keep_16_bits(line, kept):
    control = painted(True).control
    assert control.OrvMakeOrgDatEx(LINE, line, 0, 1) == 1
    assert control.OrvGetOrgDatEx(1) == control.GetOrgDatEx(1) == (0, LINE, kept, 0, 1)
    assert control.OrvMakeOrgDatEx(line, 3, 0, 1) == 2
    assert control.OrvGetOrgDatEx(2)[1] == kept
    assert control.OrvEditOrgDatEx(2, LINE, line, 0, 0) is True
    assert control.OrvGetOrgDatEx(2) == (0, LINE, kept, 0, 0)


def test_a_colour_is_kept_with_all_its_bits():
    control = painted().control
    control.MakeOrgDatEx(LINE, 0, 0xFFFFFFFF, 1)
    control.OrvMakeOrgDatEx(LINE, 0, -2, 1)
    assert [control.GetOrgDatEx(1)[3], control.OrvGetOrgDatEx(2)[3]] == [0xFFFFFFFF, 0xFFFFFFFE]


def test_both_names_work_on_the_same_figures():
    older, newer = painted(False), None
    newer = Host(True, older.control)
    assert (older.MakeOrgDatEx(LINE, 1, 2, 1), newer.MakeOrgDatEx(POLYGON, 3, 4, 0)) == (1, 2)
    assert (older.AddOrgPnt(2, 0.0, 0.0), newer.AddOrgPnt(2, 0.0, 0.0)) == (1, 2)
    assert older.GetOrgDatEx(2) == newer.GetOrgDatEx(2) == (2, POLYGON, 3, 4, 0)
    set_active(older, 1, True)
    assert is_active(newer, 1) is True
    set_active(newer, 1, False)
    assert is_active(older, 1) is False


def test_figures_may_be_made_before_the_first_paint():
    host = Host(False)
    host.init()
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 1
    assert host.AddOrgPnt(1, 1.0, 2.0) == 1


@BOTH
def test_attributes_change_and_the_points_stay(newer):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C], line=1, color=0x10, fill=1, active=True)
    assert host.EditOrgDatEx(1, POLYGON, -5, 0xABCDEF, 0) is True
    assert host.GetOrgDatEx(1) == (3, POLYGON, -5, 0xABCDEF, 0)
    assert host.EditOrgDatEx(1, LINE, 2, 0x20, 1) is True
    assert host.GetOrgDatEx(1) == (3, LINE, 2, 0x20, 1)
    assert is_active(host, 1) is True
    assert points_of_lines(host) == [[A, B, C]]


# --- Missing figures ---------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("number", [1, 2, 0, -1, 2**31 - 1, -2**31])
@pytest.mark.parametrize("name, args, answer", REFUSALS, ids=[name for name, _, _ in REFUSALS])
@BOTH
def test_without_figures_every_operation_refuses(newer, name, args, answer, number):
    host = painted(newer)
    assert getattr(host, name)(number, *args) == answer
    assert host.GetOrgID(0) == -1
    assert host.control.message_boxes == []


@pytest.mark.parametrize("number", [3, 0, -1, 2**31 - 1, -2**31])
@pytest.mark.parametrize("name, args, answer", REFUSALS, ids=[name for name, _, _ in REFUSALS])
@BOTH
def test_an_unknown_figure_is_refused_and_the_others_stay(newer, name, args, answer, number):
    host = one_to_one(newer)
    figure(host, LINE, [A, B], color=1)
    figure(host, LINE, [B, C], color=2)
    assert getattr(host, name)(number, *args) == answer
    assert [host.GetOrgDatEx(each) for each in (1, 2)] == [(2, LINE, 0, 1, 1), (2, LINE, 0, 2, 1)]
    assert points_of_lines(host) == [[A, B], [B, C]]


@BOTH
def test_after_the_last_figure_has_gone_every_operation_refuses_again(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert host.DelOrgDataEx(1) == 0
    for name, args, answer in REFUSALS:
        assert getattr(host, name)(1, *args) == answer, name
    assert host.GetOrgID(0) == -1
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 1


@BOTH
def test_a_negative_position_has_no_figure(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert [host.GetOrgID(at) for at in (0, -1, -2**31)] == [1, -1, -1]


# --- Deleting figures --------------------------------------------------------------------------------------------------------


@BOTH
def test_the_others_keep_their_numbers_and_close_up(newer):
    host = one_to_one(newer)
    for color in (1, 2, 3):
        figure(host, LINE, [A, (color * 10, 200)], color=color)
    assert host.DelOrgDataEx(2) == 0
    assert numbers(host, 2) == [1, 3]
    assert [host.GetOrgDatEx(number)[3] for number in (1, 3)] == [1, 3]
    assert host.GetOrgDatEx(2) == NOBODY
    assert points_of_lines(host) == [[A, (10, 200)], [A, (30, 200)]]


@BOTH
def test_a_new_figure_may_repeat_a_number_and_searches_meet_the_older(newer):
    host = one_to_one(newer)
    for color in (1, 2, 3):
        figure(host, LINE, [A, B], color=color)
    assert host.DelOrgDataEx(2) == 0
    assert host.MakeOrgDatEx(POLYGON, 9, 4, 0) == 3
    assert numbers(host, 3) == [1, 3, 3]
    assert host.GetOrgDatEx(3) == (2, LINE, 0, 3, 1)
    assert host.AddOrgPnt(3, 200.0, -300.0) == 3
    assert points_of_lines(host) == [[A, B], [A, B, (200, 300)]]
    set_active(host, 3, True)
    assert host.DelOrgDataEx(3) == 0
    assert host.GetOrgDatEx(3) == (0, POLYGON, 9, 4, 0), "the older went, now the newer is met"
    assert is_active(host, 3) is False
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 3


@BOTH
def test_init_drops_all_figures(newer):
    host = one_to_one(newer)
    figure(host, LINE, [A, B])
    host.SetOrgDatString(1, "text", 5.0, -5.0, 10, 0, 1)
    host.SetOrgTopDrawID(1)
    host.control.OrgStrVisible = True
    host.init()
    assert host.GetOrgDatEx(1) == NOBODY
    assert (view(host, "OrgTopDrawID"), host.control.OrgStrVisible) == (0, False)
    host.control.OrgStrVisible = True
    host.control.paint()
    drawn = redrawn(host)
    assert shapes(drawn) == texts(drawn) == []
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 1


@BOTH
def test_term_leaves_the_figures(newer):
    host = one_to_one(newer)
    figure(host, LINE, [A, B])
    host.RDMTerm()
    assert points_of_lines(host) == [[A, B]]


def test_many_figures_come_and_go():
    host = one_to_one()
    for number in range(1, 501):
        assert host.MakeOrgDatEx(LINE, 0, number, 1) == number
        add_points(host, number, [A, (number, 300)])
        host.SetOrgDatString(number, f"text {number}", 5.0, -5.0, 10, 0, 1)
    for number in range(2, 501, 2):
        assert host.DelOrgDataEx(number) == 0
    assert numbers(host, 250) == list(range(1, 501, 2))
    assert points_of_lines(host) == [[A, (number, 300)] for number in range(1, 501, 2)]
    for number in range(1, 501, 2):
        assert host.DelOrgDataEx(number) == 0
    assert host.GetOrgID(0) == -1


# --- Adding and inserting points ---------------------------------------------------------------------------------------------


@BOTH
def test_points_are_added_behind_the_last(newer):
    host = one_to_one(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert [host.AddOrgPnt(1, float(x), -float(y)) for x, y in (A, B, A, A)] == [1, 2, 3, 4]
    assert count_of(host, 1) == 4
    assert points_of_lines(host) == [[A, B, A, A]]


@BOTH
def test_a_point_figure_takes_one_point(newer):
    host = painted(newer)
    host.MakeOrgDatEx(POINT, 0, 0, 1)
    assert [host.AddOrgPnt(1, 1.0, 2.0) for _ in range(3)] == [1, -1, -1]
    assert [host.InsOrgPnt(1, at, 1.0, 2.0) for at in (0, 1, 2, -1)] == [-1] * 4
    assert [host.DelOrgPnt(1, at) for at in (0, 1)] == [-1, -1], "and keeps it"
    assert count_of(host, 1) == 1


@BOTH
def test_a_point_figure_may_have_its_point_inserted_and_moved(newer):
    host = one_to_one(newer)
    host.MakeOrgDatEx(POINT, 0, 0, 1)
    assert host.InsOrgPnt(1, 1, 0.0, 0.0) == -1
    assert host.InsOrgPnt(1, 0, 0.0, 0.0) == 1
    assert host.EditOrgPnt(1, 0, 100.0, -200.0) == 0
    (outline,) = {tuple(points) for points in corners(host)}
    # At this scale a mark is 9 pixels to each side.
    assert outline == ((91, 191), (109, 191), (109, 209), (91, 209))


@BOTH
def test_the_rule_of_one_point_goes_by_the_type_of_the_moment(newer):
    host = painted(newer)
    figure(host, LINE, [A, B, C])
    host.EditOrgDatEx(1, POINT, 0, 0, 1)
    assert (host.AddOrgPnt(1, 0.0, 0.0), host.InsOrgPnt(1, 0, 0.0, 0.0), host.DelOrgPnt(1, 0)) == (-1, -1, -1)
    assert count_of(host, 1) == 3
    host.EditOrgDatEx(1, CIRCLE, 0, 0, 1)
    assert (host.AddOrgPnt(1, 0.0, 0.0), host.InsOrgPnt(1, 0, 0.0, 0.0), host.DelOrgPnt(1, 0)) == (4, 5, 4)


@pytest.mark.parametrize("at, expected", [(0, [D, A, B, C]), (1, [A, D, B, C]), (2, [A, B, D, C]), (3, [A, B, C, D])])
@BOTH
def test_a_point_is_inserted_before_a_position(newer, at, expected):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C])
    assert host.InsOrgPnt(1, at, float(D[0]), -float(D[1])) == 4
    assert count_of(host, 1) == 4
    assert points_of_lines(host) == [expected]


@pytest.mark.parametrize("at", [-1, 4, 2**31 - 1, -2**31])
@BOTH
def test_a_position_outside_takes_no_point(newer, at):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C])
    assert host.InsOrgPnt(1, at, 0.0, 0.0) == -1
    assert count_of(host, 1) == 3
    assert points_of_lines(host) == [[A, B, C]]


@BOTH
def test_the_first_point_may_be_inserted(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert [host.InsOrgPnt(1, at, 0.0, 0.0) for at in (1, -1, 0, 1)] == [-1, -1, 1, 2]


@BOTH
def test_an_inserted_point_of_a_polygon_moves_no_other(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, A])
    assert host.InsOrgPnt(1, 0, float(D[0]), -float(D[1])) == 5
    assert corners(host) == [[D, A, B, C, A]] * 2, "its ring is open now"


# --- Moving points -----------------------------------------------------------------------------------------------------------


@BOTH
def test_a_point_moves(newer):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C])
    assert host.EditOrgPnt(1, 1, float(D[0]), -float(D[1])) == 0
    assert points_of_lines(host) == [[A, D, C]]


@pytest.mark.parametrize("index", [3, -1, 2**31 - 1, -2**31])
@BOTH
def test_a_missing_point_does_not_move_and_a_missing_figure_is_told_apart(newer, index):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C])
    assert host.EditOrgPnt(1, index, 0.0, 0.0) == -2
    assert host.EditOrgPnt(2, index, 0.0, 0.0) == -1
    assert points_of_lines(host) == [[A, B, C]]


@BOTH
def test_a_figure_without_points_has_no_point_to_move(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert host.EditOrgPnt(1, 0, 0.0, 0.0) == -2


@BOTH
def test_the_opening_point_of_a_polygon_takes_its_closing_point_along(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, A])
    assert host.EditOrgPnt(1, 0, float(D[0]), -float(D[1])) == 0
    assert corners(host) == [[D, B, C, D]]


@BOTH
def test_the_closing_point_of_a_polygon_leaves_its_opening_point(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, A])
    assert host.EditOrgPnt(1, 3, float(D[0]), -float(D[1])) == 0
    assert corners(host) == [[A, B, C, D]] * 2


@BOTH
def test_only_the_next_of_several_equal_points_moves_along(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, A, C, A])
    assert host.EditOrgPnt(1, 0, float(D[0]), -float(D[1])) == 0
    assert points_of(host) == [D, B, D, C, A]


@BOTH
def test_a_point_in_the_middle_takes_a_later_equal_one_along(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, B, A])
    assert host.EditOrgPnt(1, 1, float(D[0]), -float(D[1])) == 0
    assert corners(host) == [[A, D, C, D, A]]


@pytest.mark.parametrize("dx, dy", [(1e-9, 0.0), (0.0, 1e-9)])
def test_a_point_that_is_nearly_equal_stays(dx, dy):
    host = one_to_one()
    figure(host, POLYGON, [A, B, C])
    host.AddOrgPnt(1, A[0] + dx, -A[1] + dy)
    assert host.EditOrgPnt(1, 0, float(D[0]), -float(D[1])) == 0
    assert corners(host) == [[D, B, C, A]] * 2


@pytest.mark.parametrize("kind", [LINE, CIRCLE, ELLIPSE])
@BOTH
def test_in_other_figures_an_equal_point_stays(newer, kind):
    host = one_to_one(newer)
    figure(host, kind, [A, B, C, A])
    assert host.EditOrgPnt(1, 0, float(D[0]), -float(D[1])) == 0
    host.EditOrgDatEx(1, LINE, 0, 0, 1)
    assert points_of_lines(host) == [[D, B, C, A]]


# --- Deleting points ---------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("at, expected", [(0, [B, C, D]), (1, [A, C, D]), (2, [A, B, D]), (3, [A, B, C]), (4, [A, B, C])])
@BOTH
def test_a_point_is_deleted_and_the_position_behind_the_last_drops_the_last(newer, at, expected):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C, D])
    assert host.DelOrgPnt(1, at) == 3
    assert count_of(host, 1) == 3
    assert points_of_lines(host) == [expected]


@pytest.mark.parametrize("at", [-1, 5, 2**31 - 1, -2**31])
@BOTH
def test_a_position_outside_deletes_nothing(newer, at):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C, D])
    assert host.DelOrgPnt(1, at) == -1
    assert count_of(host, 1) == 4
    assert points_of_lines(host) == [[A, B, C, D]]


@BOTH
def test_one_position_is_good_for_deleting_and_bad_for_moving(newer):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C])
    assert host.EditOrgPnt(1, 3, 0.0, 0.0) == -2
    assert host.DelOrgPnt(1, 3) == 2
    assert points_of_lines(host) == [[A, B]]


@BOTH
def test_a_ring_stays_closed_at_its_new_first_point(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, D, A])
    assert host.DelOrgPnt(1, 0) == 4
    assert corners(host) == [[B, C, D, B]]
    assert host.DelOrgPnt(1, 0) == 3
    assert corners(host) == [[C, D, C]]


@BOTH
def test_a_ring_that_loses_its_closing_point_is_open(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, D, A])
    assert host.DelOrgPnt(1, 4) == 4
    assert corners(host) == [[A, B, C, D]] * 2
    figure(host, POLYGON, [A, B, C, D, A])
    host.DelOrgDataEx(1)
    assert host.DelOrgPnt(2, 5) == 4, "one position further drops the same point"
    assert corners(host) == [[A, B, C, D]] * 2


@BOTH
def test_a_corner_of_a_ring_goes_alone(newer):
    host = one_to_one(newer)
    figure(host, POLYGON, [A, B, C, D, A])
    assert host.DelOrgPnt(1, 2) == 4
    assert corners(host) == [[A, B, D, A]]


@BOTH
def test_the_second_ring_of_a_polygon_stays_closed_too(newer):
    host = one_to_one(newer)
    inner = [(150, 150), (200, 150), (180, 200), (150, 150)]
    figure(host, POLYGON, [A, B, C, A, *inner])
    assert host.DelOrgPnt(1, 4) == 7
    assert corners(host) == [[A, B, C, A, (200, 150), (180, 200), (200, 150)]]


@BOTH
def test_a_closed_line_is_cut_open(newer):
    host = one_to_one(newer)
    figure(host, LINE, [A, B, C, A])
    assert host.DelOrgPnt(1, 0) == 3
    assert points_of_lines(host) == [[B, C, A]]


@pytest.mark.parametrize("at", [0, 1])
@pytest.mark.parametrize("kind", [LINE, POLYGON, CIRCLE, ELLIPSE])
@BOTH
def test_the_last_point_of_a_figure_goes_with_a_refusal_and_is_counted_on(newer, kind, at):
    host = one_to_one(newer)
    figure(host, kind, [A])
    assert host.DelOrgPnt(1, at) == -1
    assert count_of(host, 1) == 1
    redrawn(host)
    assert host.AddOrgPnt(1, 200.0, -200.0) == 2
    redrawn(host)
    assert host.DelOrgDataEx(1) == 0


@BOTH
def test_a_figure_without_points_has_none_to_delete(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert [host.DelOrgPnt(1, at) for at in (-1, 1, 0)] == [-1, -1, -1]
    assert count_of(host, 1) == 0


# --- Active figures ----------------------------------------------------------------------------------------------------------


@BOTH
def test_a_figure_is_active_or_not_and_the_write_marks_the_control(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    for active in (True, False):
        host.control.modified = False
        set_active(host, 2, active)
        assert (is_active(host, 1), is_active(host, 2)) == (False, active)
        assert host.control.modified is True


@pytest.mark.parametrize("number", [0, -1, 3])
@BOTH
def test_a_missing_figure_is_not_active(newer, number):
    host = painted(newer)
    set_active(host, number, True)
    assert is_active(host, number) is False
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    set_active(host, number, True)
    assert (is_active(host, number), is_active(host, 1)) == (False, False)


# --- Strings -----------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("number", [1, 2, 0, -1])
@pytest.mark.parametrize("text", ["text", ""])
@BOTH
def test_a_string_is_taken_whatever_the_figure(newer, number, text):
    host = painted(newer)
    assert host.SetOrgDatString(number, text, 0.0, 0.0, 10, 0, 1) is True, "no figures at all"
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert host.SetOrgDatString(number, text, 0.0, 0.0, 10, 0, 1) is True


@BOTH
def test_a_string_takes_the_place_of_the_one_before_and_an_empty_one_does_not(newer):
    host = one_to_one(newer)
    host.control.OrgStrVisible = True
    figure(host, LINE, [A, B])
    assert texts(redrawn(host)) == []
    host.SetOrgDatString(1, "first", 5.0, -6.0, 10, 0, 1)
    assert texts(redrawn(host)) == [(5, 6, b"first")]
    host.SetOrgDatString(1, "地図" * 2000, 7.0, -8.0, 10, 0, 1)
    assert texts(redrawn(host)) == [(7, 8, "地図".encode("cp932") * 2000)]
    host.SetOrgDatString(1, "", 9.0, -9.0, 10, 0, 1)
    assert texts(redrawn(host)) == [(7, 8, "地図".encode("cp932") * 2000)]


@BOTH
def test_a_string_has_its_anchor_size_colour_and_background_and_no_height_or_angle(newer):
    host = painted(newer)
    host.MakeOrgDatEx(LINE, 0, 0x99, 1)
    like = ["strX", "strY", "strZ", "strText", "strSize", "strFill", "strAngle", "strColor", "color"]
    for x, y, size, color, fill in ((5.25, -6.5, 12, 0x123456, 1), (-1e300, 1e300, -3, 0xFFFFFFFF, -7), (0.0, 0.0, 0, 0, 256)):
        host.SetOrgDatString(1, "text", x, y, size, color, fill)
        told = {"strX": x, "strY": y, "strZ": 0, "strText": b"text", "strSize": size, "strFill": fill, "strAngle": 0,
                "strColor": color, "color": 0x99}
        assert picked(records(host)[0], like) == told
    host.SetOrgDatString(1, "", 1.0, 1.0, 1, 1, 1)
    assert picked(records(host)[0], like) == told, "an empty string changes nothing"


@BOTH
def test_a_string_goes_to_the_first_figure_of_its_number(newer):
    host = painted(newer)
    for _ in range(3):
        host.MakeOrgDatEx(LINE, 0, 0, 1)
    host.DelOrgDataEx(2)
    assert host.MakeOrgDatEx(LINE, 0, 0, 1) == 3
    host.SetOrgDatString(3, "text", 0.0, 0.0, 10, 0, 1)
    assert [each["strText"] for each in records(host)] == [None, b"text", None]


@BOTH
def test_a_string_goes_with_its_figure(newer):
    host = one_to_one(newer)
    host.control.OrgStrVisible = True
    for number in (1, 2, 3):
        figure(host, LINE, [A, B])
        host.SetOrgDatString(number, f"text {number}", 5.0, -6.0, 10, 0, 1)
    host.DelOrgDataEx(2)
    assert texts(redrawn(host)) == [(5, 6, b"text 1"), (5, 6, b"text 3")]
    host.MakeOrgDatEx(LINE, 0, 0, 1)
    assert texts(redrawn(host)) == [(5, 6, b"text 1"), (5, 6, b"text 3")], "a new figure has no string"


# --- What the operations leave alone -----------------------------------------------------------------------------------------


def test_the_older_names_answer_true_where_the_newer_answer_nothing():
    control = painted().control
    for figures in (0, 1):
        assert [control.MoveOnOrgPnt(1, 0), control.MoveOffOrgPnt(99, -5), control.SetOrgTopDrawID(1)] == [True] * 3, figures
        assert [control.OrvMoveOnOrgPnt(1, 0), control.OrvMoveOffOrgPnt(99, -5), control.OrvSetOrgTopDrawID(1)] == [None] * 3
        control.MakeOrgDatEx(LINE, 0, 0, 1)


@pytest.mark.parametrize("number", [5, 0, -7, 2**31 - 1])
@BOTH
def test_the_top_figure_is_stored_unchecked(newer, number):
    host = painted(newer)
    host.SetOrgTopDrawID(number)
    assert view(host, "OrgTopDrawID") == number


@BOTH
def test_a_drag_is_noted_until_it_ends_whatever_its_arguments(newer):
    host = painted(newer)
    state = ["OrgMoveID", "OrgMoveIndex", "OrgMoving"]
    for number, index in ((3, 8), (-1, -2)):
        host.MoveOnOrgPnt(number, index)
        assert picked(dump(host)["view"], state) == {"OrgMoveID": number, "OrgMoveIndex": index, "OrgMoving": 1}
    host.MoveOffOrgPnt(77, 88)
    assert view(host, "OrgMoving") == 0


@BOTH
def test_no_operation_draws_or_touches_the_layers(newer):
    host = one_to_one(newer)
    host.add_block("A", 1, LINE)
    host.add_item("A", 1, 1, [(0, 0), (10, -10)])
    drain(host)
    before = picked(dump(host), ["layers", "blocks", "digIndex", "blockCnt"])
    figure(host, POLYGON, [A, B, C, A], active=True)
    figure(host, LINE, [A, B])
    host.EditOrgDatEx(1, POLYGON, 2, 3, 0)
    host.InsOrgPnt(1, 1, 0.0, 0.0)
    host.EditOrgPnt(1, 1, 1.0, 1.0)
    host.DelOrgPnt(1, 1)
    host.SetOrgDatString(1, "text", 0.0, 0.0, 10, 0, 1)
    host.MoveOnOrgPnt(1, 0)
    host.MoveOffOrgPnt(1, 0)
    host.DelOrgDataEx(2)
    assert verbs(host) == []
    assert picked(dump(host), ["layers", "blocks", "digIndex", "blockCnt"]) == before
    host.SetOrgTopDrawID(1)
    assert verbs(host) == []
    assert host.control.message_boxes == []


# --- The nearest vertex of the active figures --------------------------------------------------------------------------------


@BOTH
def test_the_nearest_vertex_is_one_of_an_active_figure(newer):
    host = one_to_one(newer)
    figure(host, LINE, [(200, 100), (210, 100), (220, 100)])
    figure(host, LINE, [(100, 300), (200, 300), (320, 300), (600, 300)])
    assert host.GetOrgNearLine(205, 100)[0] == -1, "none is active"
    set_active(host, 2, True)
    assert host.GetOrgNearLine(205, 100) == (2, 1, 0)
    assert host.GetOrgNearLine(310, 300) == (2, 2, 1)
    assert host.GetOrgNearLine(370, 300) == (2, 2, 1), "170 to the one before, 230 to the one behind"
    assert host.GetOrgNearLine(440, 300) == (2, 2, 3)


@BOTH
def test_a_vertex_that_is_being_dragged_is_passed_over(newer):
    host = one_to_one(newer)
    figure(host, LINE, [(0, 300), (200, 300), (320, 300), (700, 300)], active=True)
    assert host.GetOrgNearLine(210, 300)[1] == 1
    host.MoveOnOrgPnt(1, 1)
    assert host.GetOrgNearLine(210, 300)[1] == 2
    host.MoveOnOrgPnt(2, 1)
    assert host.GetOrgNearLine(210, 300)[1] == 1, "another figure's"
    host.MoveOnOrgPnt(1, 1)
    host.MoveOffOrgPnt(7, 7)
    assert host.GetOrgNearLine(210, 300)[1] == 1
