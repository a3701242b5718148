"""Line types: the file that defines them, and the ticks, dashes, waves, shapes and end marks that they put along a line.

It is long because the file, the pens and each walker share one small model of a pattern line.
"""

import math

import orvane4
import pytest
from drawing_rig import (ACTIVE_RED, GREY, activate, add_sub_layer, at_scale, drawn_on, figures, file_of, fine_device, of, put,
                         redrawn,
                         scrolled, with_layer)
from map_rig import LINE, R2_COPYPEN, Host, drawn_by, item, one_to_one, verbs, view

CLIENT = (0, 0, 800, 600)
AD_COUNTERCLOCKWISE, AD_CLOCKWISE = 1, 2
PS_SOLID, PS_USERSTYLE, PS_WIDE_USERSTYLE = 0, 7, 0x10207
LEVEL = [(100, 300), (200, 300)]


def read(host, tmp_path, *lines, end="\r\n"):
    content = b"".join((line if isinstance(line, bytes) else line.encode("cp932")) + end.encode() for line in lines)
    return host.control.OrvReadLineTypeData(file_of(tmp_path, "types.txt", content))


def numbers(host):
    (found,) = host.control.OrvGetLineType()
    return list(found)


def off(pixel):
    """The place of a pixel; left of and above the window a place goes to the pixel that is found by cutting toward zero."""
    return pixel - 0.6 if pixel < 0 else pixel


def typed(tmp_path, *lines, points=LEVEL, number=9, **settings):
    """A host with one line in the line type 9, which the lines of the file define."""
    host = with_layer(LINE, [(off(x), off(y)) for x, y in points], SetLayLineType=number, **settings)
    assert read(host, tmp_path, *lines) == len(lines)
    return host


def pattern(tmp_path, line, points=LEVEL, **settings):
    """What a line in that line type draws."""
    return figures(redrawn(typed(tmp_path, line, points=points, **settings)))


# --- The file ------------------------------------------------------------------------------------------------------------------

COMPLETE = {
    "SYS": "SYS,9,name", "USERA": "USERA,9,name,2,4,6", "USERA of none": "USERA,9,name,0", "USERB": "USERB,9,name,20,6,90.0,1,1",
    "USERC": "USERC,9,name,2,12,6,5,90.0,3", "USERD": "USERD,9,name,2,16,6,5,60.0,2,3", "USERE": "USERE,9,name,1,9,3",
    "USERF": "USERF,9,name,2,1,2,10,10", "USERG": "USERG,9,name,7,12,0", "USERH": "USERH,9,name,2,0,2,9,9,1"}


@pytest.mark.parametrize("line", COMPLETE.values(), ids=COMPLETE)
def test_a_record_with_all_its_fields_is_kept(tmp_path, line):
    host = at_scale()
    assert read(host, tmp_path, line) == 1
    assert numbers(host) == [9]


@pytest.mark.parametrize("line", COMPLETE.values(), ids=COMPLETE)
def test_a_record_with_a_field_too_many_or_too_few_is_dropped_and_the_next_one_takes_its_place(tmp_path, line):
    host = at_scale()
    shorter = line.rsplit(",", 1)[0]
    assert read(host, tmp_path, "SYS,1,first", line + ",1", shorter, "SYS,2,last") == 2
    assert numbers(host) == [1, 2]


def test_records_stand_in_the_order_of_the_file_and_numbers_may_repeat(tmp_path):
    host = at_scale()
    assert read(host, tmp_path, "SYS,5,a", "SYS,3,b", "SYS,5,c", "SYS,-4,d") == 4
    assert numbers(host) == [5, 3, 5, -4]


def test_without_a_file_there_are_no_line_types():
    assert numbers(at_scale()) == []


@pytest.mark.parametrize("end", ["\n", "\r\n"], ids=["LF", "CR LF"])
def test_comments_and_empty_lines_are_skipped(tmp_path, end):
    host = at_scale()
    assert read(host, tmp_path, "'SYS,1,comment", "", "SYS,2,two", "", "'", "SYS,3,three,", "SYS,4,four", end=end) == 3
    assert numbers(host) == [2, 3, 4]


def test_the_last_line_needs_no_line_break(tmp_path):
    host = at_scale()
    assert host.control.OrvReadLineTypeData(file_of(tmp_path, "types.txt", b"SYS,1,a\r\nUSERB,2,b,20,6,90,0,1")) == 2
    assert numbers(host) == [1, 2]


@pytest.mark.parametrize("key, kept", [("SYS", True), ("SYSTEM", True), ("SYS ", True), ("sys", False), (" SYS", False),
                                       ("SY", False),
                                       ("'SYS", False), (",SYS", False), ("USERA", False), ("USERI", False), ("X", False)])
def test_only_the_first_three_characters_make_a_standard_record(tmp_path, key, kept):
    host = at_scale()
    assert read(host, tmp_path, key + ",9,name") == int(kept)


@pytest.mark.parametrize("key, kept", [("USERB", True), ("USERBLACK", True), ("USERB'", True), ("userb", False), ("USER", False),
                                       (" USERB", False), ("USERI", False), ("USER1", False)])
def test_only_the_first_five_characters_make_a_record_of_the_user(tmp_path, key, kept):
    host = at_scale()
    assert read(host, tmp_path, key + ",9,name,20,6,90.0,1,1") == int(kept)


def test_empty_fields_do_not_exist_and_shift_the_rest(tmp_path):
    host = at_scale()
    assert read(host, tmp_path, "SYS,,7,name", "SYS,8,,,name,,", "SYS,,,9", "SYS,1,,") == 2
    assert numbers(host) == [7, 8]


@pytest.mark.parametrize("text, number", [("12abc", 12), (" 12", 12), ("-3", -3), ("+4", 4), ("abc", 0), ("1.9", 1), ("0x10", 0)])
def test_numbers_end_at_the_first_other_character(tmp_path, text, number):
    host = at_scale()
    assert read(host, tmp_path, f"SYS,{text},name") == 1
    assert numbers(host) == [number]


@pytest.mark.parametrize("name", ["missing.txt", "", "no/such/folder.txt", "."])
def test_a_file_that_cannot_be_opened_gives_0_and_the_definitions_are_gone(tmp_path, name):
    host = typed(tmp_path, "SYS,9,dots", "USERB,3,rail,20,6,90,0,1", number=3)
    assert host.control.OrvReadLineTypeData(str(tmp_path / name) if name else "") == 0
    assert numbers(host) == []
    (drawn,) = drawn_by(redrawn(host), "Polyline")
    assert drawn.pen[0] == 3, "without any line type 3 is a standard pen again"


def test_a_file_replaces_the_whole_table(tmp_path):
    host = at_scale()
    assert read(host, tmp_path, "SYS,1,a", "SYS,2,b") == 2
    assert read(host, tmp_path, "SYS,3,c") == 1
    assert numbers(host) == [3]
    assert read(host, tmp_path) == 0
    assert numbers(host) == []


def test_starting_over_empties_the_table(tmp_path):
    host = at_scale()
    assert read(host, tmp_path, "SYS,1,a") == 1
    assert host.control.OrvInit()
    assert numbers(host) == []


@pytest.mark.parametrize("line", [
    "USERA,9,x,-1", "USERA,9,x,-1,5", "USERA,9,x,2147483647,1", "USERA,9,x,99999999999,1", "USERF,9,x,-2147483648",
    "USERF,9,x,-2",
    "USERH,9,x,1,2,10,0", "USERH,9,x,0,0", "USERH,9,x,-1,0,0", "USERC,9,x,0,5,90,0", "USERD,9,x,0,5,90,0,0",
    "USERC,9,x,-1,5,90,0",
    "USERB,9,x,0,6,90,0,1", "USERB,9,x,-20,6,90,0,1", "USERB,9,x,2147483647,2147483647,1e300,3,1",
    "USERB,9,x,1,-2147483648,nan,1,1",
    "USERG,9,x,7,0,0", "USERG,9,x,7,2147483647,0", "USERG,9,x,7,-5,3", "USERG,9,x,99,10,0", "USERG,9,x,7,10,9",
    "USERE,9,x,3,2147483647,3",
    "USERE,9,x,1,-2147483648,3", "USERE,9,x,5,0,3", "USERH,9,x,2,0,2,2147483647,1,0", "USERH,9,x,2,0,99,10,10,0",
    "USERC,9,x,2,2147483647,2147483647,5,90,0", "USERD,9,x,2,10,-10,5,90,1,0", "USERD,9,x,1,10,5,90,0,7",
    "USERD,9,x,2,-4,10,5,90,3,3",
    "USERA,9,x,2,-5,2147483647", "SYS,9," + "n" * 1900, "SYS,9," + "n" * 9000, b"\xff" * 4000, b"SYS,9,\0name", "," * 2000,
    "USERB" * 400,
    "USERA,9,x,1000," + ",".join("1" * 1000)], ids=range(38))
@pytest.mark.parametrize("device", ["record", "qt"])
def test_a_record_that_no_one_should_write_does_no_harm(tmp_path, line, device):
    host = with_layer(LINE, LEVEL, [(100, 100), (150, 150), (150, 100)], device=device, SetLayLineType=9)
    read(host, tmp_path, line, "SYS,77,last")
    assert numbers(host)[-1:] == [77]
    activate(host)
    host.RDMReDraw()
    host.control.OrvDrawLine(orvane4.Context(400, 300).handle, 0, 0, 300, 400, 10, 10, 200, 100, 9, 1, 0)


# --- Pens ----------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("number, style", [(0, 0), (1, 1), (2, 2), (3, 3), (4, 4), (5, 0), (-1, 0)])
def test_a_standard_record_gives_the_standard_pen_of_its_number(tmp_path, number, style):
    (drawn,) = drawn_by(redrawn(typed(tmp_path, f"SYS,{number},a", number=number)), "Polyline")
    assert drawn.pen == (style, 1, GREY)


@pytest.mark.parametrize("number", [1, 2, 3, 4])
def test_a_standard_number_that_the_file_lacks_is_solid(tmp_path, number):
    (drawn,) = drawn_by(redrawn(typed(tmp_path, "SYS,0,solid", number=number)), "Polyline")
    assert drawn.pen == (0, 1, GREY)


def test_the_last_record_of_a_number_counts(tmp_path):
    host = typed(tmp_path, "USERB,3,rail,20,6,90,0,1", "SYS,3,dash dot", number=3)
    drawn = redrawn(host)
    assert [name for name, *_ in figures(drawn)] == ["Polyline"]
    assert drawn_by(drawn, "Polyline")[0].pen[0] == 3


def dashes(drawn, context="base"):
    """The pens with dashes that were chosen, as (style, width, dashes)."""
    chosen = [values[0] for values in of(drawn, "SelectObject", context) if values[0][0] == "Pen" and values[0][4]]
    return [(style, width, lengths) for _, style, width, _, lengths in chosen]


@pytest.mark.parametrize("size, style, width", [(1, PS_USERSTYLE, 1), (0, PS_USERSTYLE, 1), (2, PS_WIDE_USERSTYLE, 2),
                                                (5, PS_WIDE_USERSTYLE, 5)])
def test_a_dash_list_becomes_a_pen(tmp_path, size, style, width):
    drawn = redrawn(typed(tmp_path, "USERA,9,dash,4,6,2,3,1", SetLayLineSize=size))
    assert dashes(drawn) == [(style, width, (6, 2, 3, 1))]
    assert figures(drawn) == [("Polyline", ((100, 300), (200, 300)))]


def test_the_dashes_of_a_pen_grow_by_whole_times_on_a_finer_device(tmp_path):
    host = typed(tmp_path, "USERA,9,dash,2,6,2", SetLayLineSize=1)
    assert dashes(drawn_on(host, fine_device(300)), "device") == [(PS_WIDE_USERSTYLE, 3, (18, 6))]


def test_of_a_long_dash_list_ten_values_reach_the_pen(tmp_path):
    values = list(range(1, 13))
    drawn = redrawn(typed(tmp_path, "USERA,9,dash,12," + ",".join(map(str, values))))
    ((_, _, lengths),) = dashes(drawn)
    assert list(lengths[:10]) == values[:10] and not set(lengths[10:]) & {11, 12}


@pytest.mark.parametrize("line", [line for key, line in COMPLETE.items() if key[-1] in "BCDEFGH"])
def test_all_other_kinds_have_a_solid_pen_and_an_active_line_the_active_one(tmp_path, line):
    host = typed(tmp_path, line, SetLayLineSize=2, SetLayColor=0x123456)
    activate(host)
    chosen = [values[0][1:4] for values in of(redrawn(host), "SelectObject") if values[0][0] == "Pen"]
    assert (PS_SOLID, 2, 0x123456) in chosen and (PS_SOLID, 3, ACTIVE_RED) in chosen


# --- Walking along a line ------------------------------------------------------------------------------------------------------


def tick_end(length, angle, a, b):
    """The end of a tick that stands at b, turned by an angle against the direction from a to b."""
    t = math.atan2(a[1] - b[1], b[0] - a[0]) + angle * 0.017453292

    def rounded(v):
        return int(v + 0.5) if v > 0 else int(v - 0.5)

    return b[0] + rounded(length * math.cos(t)), b[1] - rounded(length * math.sin(t))


def seen(a, b, clip):
    """Whether the box of a pitch, which is a pixel wider where it lies right of or below the origin, meets the clip."""
    left, right, top, bottom = min(a[0], b[0]), max(a[0], b[0]), min(a[1], b[1]), max(a[1], b[1])
    top, left, bottom, right = top - (top < 0), left - (left < 0), bottom + (bottom > 0), right + (right > 0)
    return max(left, clip[0]) < min(right, clip[2]) and max(top, clip[1]) < min(bottom, clip[3])


def pitches(start, end, pitch):
    """The pitches on a level, upright or diagonal stretch, each as its two ends."""
    dx, dy = end[0] - start[0], end[1] - start[1]
    count = max(abs(dx), abs(dy))
    assert dx == 0 or dy == 0 or abs(dx) == abs(dy)
    step = int(count * pitch / math.hypot(dx, dy)) if count else 0
    found, last = [], start
    for calls in range(1, count + 1):
        if step > 0 and calls % step == 0:
            gone = calls - 1
            here = start[0] + gone * (dx > 0) - gone * (dx < 0), start[1] + gone * (dy > 0) - gone * (dy < 0)
            found.append((last, here))
            last = here
    return found


def settled(drawn):
    """The figures without moves from which nothing starts: of several in a row the last one counts."""
    return [each for each, after in zip(drawn, [*drawn[1:], ("",)]) if (each[0], after[0]) != ("MoveToEx", "MoveToEx")]


def walked(points, pitch, figure, clip=CLIENT, base=True, moves=True):
    """What is drawn along a line. figure(a, b, angle) gives the figures of one pitch."""
    drawn = [("MoveToEx", *points[0])]
    for start, end in zip(points, points[1:]):
        angle = math.atan2(start[1] - end[1], end[0] - start[0])
        for a, b in pitches(start, end, pitch):
            drawn += figure(a, b, angle) if seen(a, b, clip) else [("MoveToEx", *b)] if moves else []
        drawn.append(("LineTo" if base else "MoveToEx", *end))
    return drawn


LINES = {"right": [(100, 300), (200, 300)], "left": [(300, 300), (171, 300)], "down": [(100, 100), (100, 237)],
         "up": [(100, 300), (100, 200)],
         "diagonal": [(100, 100), (220, 220)], "back": [(400, 400), (300, 500)],
         "corner": [(100, 100), (153, 100), (153, 201), (90, 201)]}
EACH_LINE = pytest.mark.parametrize("points", LINES.values(), ids=LINES)


class Side:
    """The side on which figures stand: by its number, or one after the other."""

    def __init__(self, direction):
        self.direction, self.state = direction, 1

    def tick(self):
        if self.direction == 3:
            self.state = -self.state
        return {0: 1, 2: -1, 3: self.state}[self.direction]

    def figure(self):
        now = {0: 1, 2: -1}.get(self.direction, self.state)
        self.state = -now if self.direction == 3 else now
        return now


# --- Ticks ---------------------------------------------------------------------------------------------------------------------


def ticks(direction, length, angle):
    side = Side(direction)

    def figure(a, b, _):
        if direction != 1:
            return [("Polyline", (b, tick_end(length, angle * side.tick(), a, b)))]
        p, q = tick_end(length, angle, a, b), tick_end(length, -angle, a, b)
        return [("Polyline", (p, q) if abs(angle) == 90.0 else (p, b, q))]

    return figure


def test_ticks_stand_a_pitch_apart_the_first_one_pixel_early(tmp_path):
    assert pattern(tmp_path, "USERB,9,rail,20,6,90.0,0,1") == [
        ("MoveToEx", 100, 300), ("Polyline", ((119, 300), (119, 294))), ("Polyline", ((139, 300), (139, 294))),
        ("Polyline", ((159, 300), (159, 294))), ("Polyline", ((179, 300), (179, 294))), ("Polyline", ((199, 300), (199, 294))),
        ("LineTo", 200, 300)]


@EACH_LINE
@pytest.mark.parametrize("direction", [0, 1, 2, 3])
@pytest.mark.parametrize("angle", [90.0, -90.0, 60.0, 45.5, 0.0, 135.0])
@pytest.mark.parametrize("base", [0, 1])
def test_ticks_of_every_direction_and_angle(tmp_path, points, direction, angle, base):
    drawn = pattern(tmp_path, f"USERB,9,rail,20,8,{angle},{direction},{base}", points)
    assert drawn == walked(points, 20, ticks(direction, 8, angle), base=base == 1)


@pytest.mark.parametrize("base", [2, -1])
def test_only_the_base_number_1_draws_the_line_itself(tmp_path, base):
    assert pattern(tmp_path, f"USERB,9,rail,20,6,90,0,{base}")[-1] == ("MoveToEx", 200, 300)


@pytest.mark.parametrize("length, count", [(19, 0), (20, 1), (39, 1), (40, 2)])
def test_a_stretch_shorter_than_a_pitch_has_no_tick(tmp_path, length, count):
    drawn = pattern(tmp_path, "USERB,9,rail,20,6,90,0,1", [(100, 300), (100 + length, 300)])
    assert [name for name, *_ in drawn].count("Polyline") == count


def test_patterns_start_afresh_at_every_corner(tmp_path):
    points = [(100, 100), (115, 100), (115, 115), (100, 115), (100, 100), (119, 100), (119, 140)]
    drawn = pattern(tmp_path, "USERB,9,rail,20,6,90,0,1", points)
    assert [each[1] for each in drawn if each[0] == "Polyline"] == [((119, 119), (125, 119)), ((119, 139), (125, 139))]


def test_alternating_ticks_go_on_around_corners_beginning_on_the_right(tmp_path):
    points = [(100, 300), (120, 300), (120, 320)]
    drawn = pattern(tmp_path, "USERB,9,rail,20,6,90,3,1", points)
    assert [each[1] for each in drawn if each[0] == "Polyline"] == [((119, 300), (119, 306)), ((120, 319), (126, 319))]


def test_a_stretch_on_which_a_pitch_is_no_step_is_left_out_and_the_next_one_starts_from_the_old_place(tmp_path):
    drawn = pattern(tmp_path, "USERB,9,rail,1,3,90,0,1", [(100, 100), (150, 150), (250, 150)])
    assert [each for each in drawn if each[0] != "Polyline"] == [("MoveToEx", 100, 100), ("LineTo", 250, 150)]
    assert [name for name, *_ in drawn].count("Polyline") == 100


@pytest.mark.parametrize("line", ["USERB,9,x,0,6,90,0,1", "USERB,9,x,-20,6,90,0,1", "USERC,9,x,0,5,90,0", "USERG,9,x,7,0,0",
                                  "USERD,9,x,2,6,-6,5,90,0,1", "USERH,9,x,2,0,2,0,5,0"])
def test_without_a_pitch_nothing_of_the_line_is_drawn(tmp_path, line):
    assert pattern(tmp_path, line) == [("MoveToEx", 100, 300)]


def test_ticks_grow_by_whole_times_on_a_finer_device(tmp_path):
    points = [(50, 100), (250, 100)]
    host = typed(tmp_path, "USERB,9,rail,20,6,90,0,1", points=points)
    drawn = figures(drawn_on(host, fine_device(383)), "device")
    assert drawn == walked(points, 60, ticks(0, 18, 90.0), clip=(0, 0, 400, 300))


def test_ticks_are_drawn_in_the_pen_of_the_line(tmp_path):
    drawn = drawn_by(redrawn(typed(tmp_path, "USERB,9,rail,20,6,90,0,1", SetLayColor=0x123456, SetLayLineSize=2)), "Polyline")
    assert {each.pen for each in drawn} == {(0, 2, 0x123456)} and {each.rop2 for each in drawn} == {R2_COPYPEN}


# --- Clipping ------------------------------------------------------------------------------------------------------------------

ACROSS = {"level": [(-205, 300), (1000, 300)], "upright": [(300, -205), (300, 900)], "top row": [(100, 0), (300, 0)],
          "second row": [(100, 1), (300, 1)], "left column": [(0, 100), (0, 300)], "second column": [(1, 100), (1, 300)],
          "last row": [(100, 599), (300, 599)], "above": [(100, -1), (300, -1), (300, 100)],
          "diagonal": [(-100, -100), (700, 700)]}


@pytest.mark.parametrize("points", ACROSS.values(), ids=ACROSS)
def test_ticks_off_the_window_are_left_out(tmp_path, points):
    assert pattern(tmp_path, "USERB,9,rail,20,6,90,3,1", points) == walked(points, 20, ticks(3, 6, 90.0), moves=False)


def test_nothing_stands_along_the_topmost_row_and_the_leftmost_column(tmp_path):
    for points in (ACROSS["top row"], ACROSS["left column"]):
        names = [name for name, *_ in pattern(tmp_path, "USERB,9,rail,20,6,90,0,1", points)]
        assert names == ["MoveToEx", "LineTo"]


def test_a_very_long_line_has_its_ticks_in_the_window_at_once(tmp_path):
    drawn = pattern(tmp_path, "USERB,9,rail,20,6,90,0,1", [(-1000000000, 300), (1000000000, 300)])
    assert [each[1][0] for each in drawn if each[0] == "Polyline"] == [(x, 300) for x in range(19, 820, 20)]


@pytest.mark.parametrize("line", COMPLETE.values(), ids=COMPLETE)
@pytest.mark.parametrize("far", [1e8, 2e9, 1e300])
def test_very_long_lines_of_every_kind_do_no_harm(tmp_path, line, far):
    host = typed(tmp_path, line, points=[(-far, -far / 3), (far, far / 2), (far, -far)])
    assert len(figures(redrawn(host))) < 100000


# --- Dashes --------------------------------------------------------------------------------------------------------------------


def cut(a, b):
    return int(a / b)


def ticked_dashes(lengths, length, angle, direction, pos):
    side, pitch = Side(direction), sum(lengths)

    def both(a, b, centre):
        p, q = tick_end(length, angle, a, b), tick_end(length, -angle, a, b)
        return ("Polyline", (p, q) if abs(angle) == 90.0 else (p, centre, q))

    def figure(a, b, _):
        dx, dy = b[0] - a[0], b[1] - a[1]
        drawn, c, m = [], a, None
        for i, d in enumerate(lengths):
            c = c[0] + cut(d * dx, pitch), c[1] + cut(d * dy, pitch)
            if i == 0:
                m = a[0] + cut(d // 2 * dx, pitch), a[1] + cut(d // 2 * dy, pitch)
            if i % 2:
                drawn.append(("MoveToEx", *c))
                continue
            drawn.append(("LineTo", *c))
            if direction == 1:
                # The middle of the three points takes its x for both coordinates, except at the start of a dash.
                drawn += [both(c, a, a)] if pos in (1, 3) else []
                drawn += [both(a, c, (c[0], c[0]))] if pos in (2, 3) else []
                drawn += [both(a, m, (m[0], m[0]))] if pos == 0 else []
                continue
            sign = side.tick()
            drawn += [("Polyline", (a, tick_end(length, -angle * sign, c, a)))] if pos in (1, 3) else []
            drawn += [("Polyline", (c, tick_end(length, angle * sign, a, c)))] if pos in (2, 3) else []
            drawn += [("Polyline", (m, tick_end(length, angle * sign, a, m)))] if pos == 0 else []
        return drawn

    return pitch, figure


def unordered(drawn):
    """The figures with each joined pair of ticks in a fixed order, for where the order of the two is open."""

    def sorted_ends(first, *middle, last):
        return min(first, last), *middle, max(first, last)

    return [(name, sorted_ends(*values[0][:-1], last=values[0][-1])) if name == "Polyline" else (name, *values)
            for name, *values in drawn]


def test_ticked_dashes_by_hand(tmp_path):
    # A pitch of 18 pixels: the first ends at 117, 17 pixels on, of which a dash of 12 in 18 takes 11 and its half 5.
    assert pattern(tmp_path, "USERC,9,dash,2,12,6,5,90.0,0", [(100, 300), (120, 300)]) == [
        ("MoveToEx", 100, 300), ("LineTo", 111, 300), ("Polyline", ((105, 300), (105, 295))), ("MoveToEx", 116, 300),
        ("LineTo", 120, 300)]


@EACH_LINE
@pytest.mark.parametrize("direction", [0, 1, 2, 3])
@pytest.mark.parametrize("angle", [90.0, 60.0])
def test_dashes_with_a_tick_in_the_middle(tmp_path, points, direction, angle):
    pitch, figure = ticked_dashes([12, 6], 5, angle, direction, 0)
    assert pattern(tmp_path, f"USERC,9,dash,2,12,6,5,{angle},{direction}", points) == walked(points, pitch, figure)


@EACH_LINE
@pytest.mark.parametrize("pos", [0, 1, 2, 3])
@pytest.mark.parametrize("direction", [0, 1, 2, 3])
@pytest.mark.parametrize("angle", [90.0, -60.0])
@pytest.mark.parametrize("lengths", [[16, 6], [10, 4, 6, 3], [20]], ids=str)
def test_dashes_with_ticks_at_every_place(tmp_path, points, pos, direction, angle, lengths):
    pitch, figure = ticked_dashes(lengths, 5, angle, direction, pos)
    line = f"USERD,9,dash,{len(lengths)},{','.join(map(str, lengths))},5,{angle},{direction},{pos}"
    drawn, expected = pattern(tmp_path, line, points), walked(points, pitch, figure)
    if direction == 1 and pos in (1, 3):
        drawn, expected = unordered(drawn), unordered(expected)
    assert drawn == expected


@pytest.mark.parametrize("points", ACROSS.values(), ids=ACROSS)
def test_dashes_off_the_window_only_move_on(tmp_path, points):
    pitch, figure = ticked_dashes([16, 6], 5, 60.0, 3, 3)
    assert settled(pattern(tmp_path, "USERD,9,dash,2,16,6,5,60,3,3", points)) == settled(walked(points, pitch, figure))


def test_dashes_grow_by_whole_times_on_a_finer_device(tmp_path):
    points = [(50, 100), (250, 100)]
    host = typed(tmp_path, "USERD,9,dash,2,10,5,4,60,0,3", points=points)
    pitch, figure = ticked_dashes([30, 15], 12, 60.0, 0, 3)
    assert figures(drawn_on(host, fine_device(300)), "device") == walked(points, pitch, figure, clip=(0, 0, 400, 300))


# --- Waves ---------------------------------------------------------------------------------------------------------------------


def arc_box(a, b, angle, pitch, side):
    radius, distance = pitch * 1.25 / 2.0, pitch * 3.0 / 8.0
    t = -90.0 * side * 0.017453292 + angle
    x = a[0] + (b[0] - a[0]) / 2.0 + math.cos(t) * distance
    y = a[1] + (b[1] - a[1]) / 2.0 - math.sin(t) * distance
    return int(x - radius), int(y - radius), int(x + radius + 0.5), int(y + radius + 0.5)


def triangle_tip(a, b, pitch, side):
    m = int(a[0] + (b[0] - a[0]) / 2.0), int(a[1] + (b[1] - a[1]) / 2.0)
    return tick_end(int(math.sqrt(3.0) * pitch / 2.0 / 2.0), 90.0 * side, a, m)


def square_corners(a, b, pitch, side):
    return tick_end(pitch // 2, -90.0 * side, b, a), tick_end(pitch // 2, 90.0 * side, a, b)


def waves(shape, pitch, direction):
    side = Side(direction)

    def figure(a, b, angle):
        now = side.figure()
        if shape == 7:
            way = AD_CLOCKWISE if now == 1 else AD_COUNTERCLOCKWISE
            return [("SetArcDirection", way), ("ArcTo", *arc_box(a, b, angle, pitch, now), *a, *b)]
        tops = [triangle_tip(a, b, pitch, now)] if shape == 8 else square_corners(a, b, pitch, now)
        return [("LineTo", *each) for each in (a, *tops, b)]

    return figure


def without_arc_direction(drawn):
    return [each for each in drawn if each[0] != "SetArcDirection"]


def test_waves_by_hand(tmp_path):
    # The pitch of 12 goes from 100 to 111: the middle is 105.5, the centre 4.5 below, the radius 7.5.
    assert pattern(tmp_path, "USERG,9,wave,7,12,0", [(100, 300), (115, 300)]) == [
        ("MoveToEx", 100, 300), ("SetArcDirection", AD_CLOCKWISE), ("ArcTo", 98, 297, 113, 312, 100, 300, 111, 300),
        ("LineTo", 115, 300)]


@EACH_LINE
@pytest.mark.parametrize("direction", [0, 1, 2, 3])
@pytest.mark.parametrize("pitch", [12, 17])
def test_waves_of_arcs(tmp_path, points, direction, pitch):
    assert pattern(tmp_path, f"USERG,9,wave,7,{pitch},{direction}", points) == walked(points, pitch, waves(7, pitch, direction))


@EACH_LINE
@pytest.mark.parametrize("shape", [8, 9])
@pytest.mark.parametrize("direction", [0, 1, 2, 3])
@pytest.mark.parametrize("pitch", [12, 20])
def test_waves_of_triangles_and_squares(tmp_path, points, shape, direction, pitch):
    drawn = without_arc_direction(pattern(tmp_path, f"USERG,9,wave,{shape},{pitch},{direction}", points))
    assert drawn == walked(points, pitch, waves(shape, pitch, direction))


def test_alternating_triangles_stand_left_and_right_in_turn(tmp_path):
    drawn = without_arc_direction(pattern(tmp_path, "USERG,9,wave,8,20,3", [(100, 300), (160, 300)]))
    # trunc(sqrt(3) * 20 / 2 / 2) is 8. Pitches: 100 to 119, 119 to 139, 139 to 159.
    tips = [drawn[each] for each in (2, 5, 8)]
    assert tips == [("LineTo", 109, 292), ("LineTo", 129, 308), ("LineTo", 149, 292)]


def test_waves_of_the_direction_1_keep_the_side_they_start_with(tmp_path):
    drawn = pattern(tmp_path, "USERG,9,wave,7,12,1", [(100, 300), (200, 300), (200, 400)])
    assert {each for each in drawn if each[0] == "SetArcDirection"} == {("SetArcDirection", AD_CLOCKWISE)}


@pytest.mark.parametrize("points", ACROSS.values(), ids=ACROSS)
def test_waves_off_the_window_only_move_on_and_keep_their_side(tmp_path, points):
    assert settled(pattern(tmp_path, "USERG,9,wave,7,12,3", points)) == settled(walked(points, 12, waves(7, 12, 3)))


# --- Shapes --------------------------------------------------------------------------------------------------------------------


def shapes(shape, pitch, direction):
    side, left_out = Side(direction), [False]

    def figure(a, b, angle):
        left_out[0] = not left_out[0]
        if not left_out[0]:
            return []
        now = side.figure()
        if shape == 6:
            return [("Chord", *arc_box(a, b, angle, pitch, now), *a, *b)]
        tops = [triangle_tip(a, b, pitch, now)] if shape == 3 else square_corners(a, b, pitch, now)
        return [("Polygon", (a, *tops, b))]

    return figure


@EACH_LINE
@pytest.mark.parametrize("shape", [2, 3, 6])
@pytest.mark.parametrize("direction", [0, 1, 2, 3])
def test_shapes_stand_at_every_second_pitch(tmp_path, points, shape, direction):
    drawn = without_arc_direction(pattern(tmp_path, f"USERH,9,teeth,2,9,{shape},14,77,{direction}", points))
    assert drawn == walked(points, 14, shapes(shape, 14, direction))


def test_boxes_by_hand(tmp_path):
    drawn = without_arc_direction(pattern(tmp_path, "USERH,9,boxes,2,0,2,10,0,3", [(100, 300), (140, 300)]))
    # Pitches end at 109, 119, 129, 139; the second and the fourth are left out, the third lies on the other side.
    assert drawn == [("MoveToEx", 100, 300), ("Polygon", ((100, 300), (100, 295), (109, 295), (109, 300))),
                     ("Polygon", ((119, 300), (119, 305), (129, 305), (129, 300))), ("LineTo", 140, 300)]


def test_leaving_out_goes_on_around_corners(tmp_path):
    drawn = pattern(tmp_path, "USERH,9,boxes,2,0,2,10,0,0", [(100, 300), (110, 300), (110, 310), (120, 310)])
    assert [each[1][0] for each in drawn if each[0] == "Polygon"] == [(100, 300), (110, 310)]


def test_shapes_are_filled_with_the_brush_of_the_line(tmp_path):
    host = typed(tmp_path, "USERH,9,boxes,2,0,2,10,0,0", SetLayColor=0x123456)
    assert {each.brush for each in drawn_by(redrawn(host), "Polygon")} == {("solid", 0x123456)}
    activate(host)
    looks = {(each.brush, each.pen) for each in drawn_by(redrawn(host), "Polygon")}
    assert looks == {(("solid", ACTIVE_RED), (0, 3, ACTIVE_RED))}


@pytest.mark.parametrize("points", ACROSS.values(), ids=ACROSS)
def test_shapes_off_the_window_only_move_on_and_are_not_counted(tmp_path, points):
    drawn = without_arc_direction(pattern(tmp_path, "USERH,9,boxes,2,0,2,14,0,3", points))
    assert settled(drawn) == settled(walked(points, 14, shapes(2, 14, 3)))


# --- The kind that shows nothing ------------------------------------------------------------------------------------------------


def test_a_line_of_the_invisible_kind_draws_nothing_and_counts_as_drawn(tmp_path):
    host = typed(tmp_path, "USERF,9,x,2,1,2,10,10")
    assert figures(redrawn(host)) == [("MoveToEx", 100, 300)]
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


# --- End marks -----------------------------------------------------------------------------------------------------------------


def turned(points, centre, angle):
    a, (cx, cy) = -angle, centre
    return tuple((int(cx + (x - cx) * math.cos(a) - (y - cy) * math.sin(a)),
                  int(cy + (x - cx) * math.sin(a) + (y - cy) * math.cos(a)))
                 for x, y in points)


def end_mark(shape, size, at, start, end, other):
    """A mark at a point, on the stretch from start to end; other is the neighbour of the point."""
    (x, y), half = at, size // 2
    angle = math.atan2(start[1] - end[1], end[0] - start[0])
    if shape == 1:
        return [("BeginPath",), ("Ellipse", x - half, y + half, x + half, y - half), ("EndPath",), ("FillPath",)]
    if shape == 5:
        return [("Polyline", (tick_end(size, 135.0, other, at), at, tick_end(size, -135.0, other, at)))]
    t = int(math.sqrt(3.0) * size / 2.0 / 2.0)
    corners = {2: [(x - half, y + half), (x + half, y + half), (x + half, y - half), (x - half, y - half)],
               3: [(x, y - t), (x + half, y + t), (x - half, y + t)],
               4: [(x - half, y), (x, y + half), (x + half, y), (x, y - half)]}[shape]
    return [("Polygon", turned(corners + corners[:1], at, angle))]


BENT = {"right": [(100, 300), (200, 300)], "left": [(200, 300), (100, 300)], "up": [(100, 300), (100, 200)],
        "bent": [(100, 100), (200, 150), (180, 260)],
        "diagonal": [(100, 100), (200, 200)]}


@pytest.mark.parametrize("points", BENT.values(), ids=BENT)
@pytest.mark.parametrize("shape", [1, 2, 3, 4, 5])
@pytest.mark.parametrize("pos", [1, 2, 3])
@pytest.mark.parametrize("size", [9, 12])
def test_marks_at_the_ends_of_a_line(tmp_path, points, shape, pos, size):
    expected = [("Polyline", tuple(points))]
    if pos in (1, 3):
        expected += end_mark(shape, size, points[0], points[0], points[1], points[1])
    if pos in (2, 3):
        expected += end_mark(shape, size, points[-1], points[-2], points[-1], points[-2])
    assert pattern(tmp_path, f"USERE,9,mark,{shape},{size},{pos}", points) == expected


def test_end_marks_by_hand(tmp_path):
    assert pattern(tmp_path, "USERE,9,arrow,5,10,2")[1:] == [("Polyline", ((193, 293), (200, 300), (193, 307)))]
    assert pattern(tmp_path, "USERE,9,box,2,9,1")[1:] == [("Polygon", ((96, 304), (104, 304), (104, 296), (96, 296), (96, 304)))]


@pytest.mark.parametrize("pos", [0, 4, -1])
@pytest.mark.parametrize("shape", [1, 5])
def test_end_marks_of_any_other_place_are_not_drawn(tmp_path, shape, pos):
    assert pattern(tmp_path, f"USERE,9,mark,{shape},10,{pos}") == [("Polyline", tuple(LEVEL))]


@pytest.mark.parametrize("shape", [0, 6, 7, -1])
def test_end_marks_of_any_other_shape_are_not_drawn(tmp_path, shape):
    assert pattern(tmp_path, f"USERE,9,mark,{shape},10,3") == [("Polyline", tuple(LEVEL))]


def test_end_marks_are_filled_with_the_brush_of_the_line_and_grow_with_the_device(tmp_path):
    host = typed(tmp_path, "USERE,9,mark,1,9,1", SetLayColor=0x123456)
    drawn = drawn_on(host, fine_device(300))
    assert of(drawn, "Ellipse", "device") == [(100 - 13, 300 + 13, 100 + 13, 300 - 13)]
    assert drawn_by(drawn, "FillPath", "device")[0].brush == ("solid", 0x123456)


# --- Lines of a layer -----------------------------------------------------------------------------------------------------------


def test_the_line_type_of_a_sub_layer_stays_for_the_items_behind_it(tmp_path):
    host = with_layer(LINE, [(100, 100), (140, 100)], [(100, 200), (140, 200)], SetLayColor=0x123456)
    assert read(host, tmp_path, "USERB,9,rail,20,6,90,0,1") == 1
    add_sub_layer(host, 3, line_type=9, size=4, color=0x445566)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    drawn = redrawn(host)
    expected = [walked(points, 20, ticks(0, 6, 90.0)) for points in ([(100, 100), (140, 100)], [(100, 200), (140, 200)])]
    assert figures(drawn) == expected[0] + expected[1]
    assert [each.pen for each in drawn_by(drawn, "LineTo")] == [(0, 4, 0x445566), (0, 1, 0x123456)]


def test_a_scroll_draws_patterns_too(tmp_path):
    host = typed(tmp_path, "USERB,9,rail,20,6,90,0,1", points=[(700, 300), (820, 300)])
    redrawn(host)
    assert figures(scrolled(host, 50, 30), "top") == walked([(650, 270), (770, 270)], 20, ticks(0, 6, 90.0))


# --- One line on a host's device ------------------------------------------------------------------------------------------------


def line_on(host, context, *places, number=9, width=1, color=0x123456, clip=(0, 0, 300, 400)):
    """One line by the host. The clip is top, left, bottom, right."""
    assert host.control.OrvDrawLine(context.handle, *clip, *places, number, width, color) is None
    return [each._replace(context="device") for each in verbs(context)]


def host_device(dpi=96):
    return orvane4.Context(400, 300, 1920, 508, dpi)


def test_a_single_line_has_the_pen_asked_for_and_a_black_brush():
    host = one_to_one()
    drawn = line_on(host, host_device(), 10, 20, 110, 70, number=2, width=4)
    (line,) = drawn_by(drawn, "Polyline", "device")
    assert line.verb.values[0] == ((10, 20), (110, 70))
    assert (line.pen, line.brush, line.rop2) == ((2, 4, 0x123456), ("solid", 0), R2_COPYPEN)
    assert figures(drawn, "device") == [("Polyline", ((10, 20), (110, 70)))]


@pytest.mark.parametrize("dpi, w", [(300, 3), (191, 1), (192, 2)])
def test_a_single_line_is_wider_on_a_finer_device_and_the_views_ratio_comes_back(dpi, w):
    host = one_to_one()
    before = view(host, "DpiRatio")
    (line,) = drawn_by(line_on(host, host_device(dpi), 10, 20, 110, 70, number=0, width=4), "Polyline", "device")
    assert line.pen == (0, 4 * w, 0x123456)
    assert view(host, "DpiRatio") == before == 1.0


def test_a_single_line_with_end_marks_and_one_with_dashes(tmp_path):
    host = one_to_one()
    assert read(host, tmp_path, "USERE,9,box,2,9,1", "USERA,8,dash,2,4,6") == 2
    drawn = line_on(host, host_device(), 100, 200, 200, 200)
    mark = end_mark(2, 9, (100, 200), (100, 200), (200, 200), None)
    assert figures(drawn, "device") == [("Polyline", ((100, 200), (200, 200)))] + mark
    assert drawn_by(drawn, "Polygon", "device")[0].brush == ("solid", 0)
    drawn = line_on(host, host_device(300), 100, 200, 200, 200, number=8)
    assert dashes(drawn, "device") == [(PS_WIDE_USERSTYLE, 3, (12, 18))]


def test_the_pattern_of_a_single_line_is_kept_in_a_rectangle_read_by_name(tmp_path):
    host = one_to_one()
    assert read(host, tmp_path, "USERB,9,rail,20,6,90,0,1") == 1
    drawn = line_on(host, host_device(), 10, 100, 390, 100, clip=(50, 100, 150, 250))
    assert figures(drawn, "device") == walked([(10, 100), (390, 100)], 20, ticks(0, 6, 90.0), clip=(100, 50, 250, 150),
                                              moves=False)
    drawn = line_on(host, host_device(), 10, 200, 390, 200, clip=(50, 100, 150, 250))
    assert [name for name, *_ in figures(drawn, "device")] == ["MoveToEx", "LineTo"]


def test_on_a_finer_device_only_the_right_and_the_bottom_of_that_rectangle_grow(tmp_path):
    host = one_to_one()
    assert read(host, tmp_path, "USERG,9,wave,7,10,0") == 1
    for places in ((0, 100, 390, 100), (100, 0, 100, 290)):
        drawn = line_on(host, host_device(300), *places, clip=(60, 70, 80, 90))
        expected = walked([places[:2], places[2:]], 30, waves(7, 30, 0), clip=(70, 60, 270, 240))
        assert settled(figures(drawn, "device")) == settled(expected)


def test_a_single_line_of_the_invisible_kind_shows_nothing(tmp_path):
    host = one_to_one()
    assert read(host, tmp_path, "USERF,9,x,1,1,10") == 1
    assert figures(line_on(host, host_device(), 10, 20, 110, 70), "device") == [("MoveToEx", 10, 20)]


def test_a_single_line_gives_the_context_its_pen_and_brush_back():
    context = host_device()
    chosen = [values[0][:4] for values in of(line_on(one_to_one(), context, 10, 20, 110, 70, number=0), "SelectObject", "device")]
    assert set(chosen[2:]) == {("Pen", 0, 1, 0), ("Brush", 0, 0xFFFFFF, 0)}


@pytest.mark.parametrize("handle", [0, 12345678, -1])
def test_a_single_line_on_an_unknown_context_does_no_harm(handle):
    host = one_to_one()
    assert host.control.OrvDrawLine(handle, 0, 0, 300, 400, 10, 10, 20, 20, 0, 1, 0) is None
    assert not figures(verbs(host)) and view(host, "DpiRatio") == 1.0


@pytest.mark.parametrize("ready", ["new", "started"])
def test_a_single_line_before_the_first_paint_does_no_harm(ready):
    host = Host(True)
    if ready == "started":
        assert host.init()
    assert host.control.OrvDrawLine(host_device().handle, 0, 0, 300, 400, 10, 10, 20, 20, 0, 1, 0) is None


@pytest.mark.parametrize("line", COMPLETE.values(), ids=COMPLETE)
def test_single_lines_of_any_length_and_width_do_no_harm(tmp_path, line):
    host = one_to_one()
    assert read(host, tmp_path, line) == 1
    least, most = -2**31, 2**31 - 1
    for places in ((least, least, most, most), (0, 0, 0, 0), (least, 10, most, 10), (10, most, 10, least)):
        clip = (least, least, most, most) if places[0] == 0 else (0, 0, 300, 400)
        drawn = line_on(host, host_device(300), *places, width=most, clip=clip)
        assert len(drawn) < 100000


def test_the_pattern_starts_afresh_with_every_line(tmp_path):
    host = typed(tmp_path, "USERB,9,rail,20,6,90,0,1")
    put(host, 2, (100, 400), (140, 400))
    assert figures(redrawn(host)) == [*walked(LEVEL, 20, ticks(0, 6, 90.0)),
                                      *walked([(100, 400), (140, 400)], 20, ticks(0, 6, 90.0))]
