"""The file of symbols: what becomes of its lines, told by what a layer of file symbols draws."""

import pytest
from drawing_rig import BOTH, add_sub_layer, figures, file_of, put, redrawn, with_layer
from map_rig import POINT

PX, PY, HALF = 400, 300, 10
# With a half side of 10 a design unit of 20 is a pixel.
STEP = 20
END = "32000,0,0,0,0\r\n"


def told(*strokes):
    """The lines of one symbol after another, each as (number, x1, y1, x2, y2), pixels to the right and up."""
    return "".join(",".join(str(value) for value in (number, *(STEP * each for each in places))) + "\r\n" for number,
                   *places in strokes)


def host_with(tmp_path, content, newer=False):
    """A host that has read a file, at a scale where symbols are largest."""
    host = with_layer(POINT, newer=newer, zoom=3000, SetLayLineType=9999)
    assert read(host, tmp_path, content) is True
    return host


def read(host, tmp_path, content, name="symbols.txt"):
    return host.ReadSymbolData(file_of(tmp_path, name, content if isinstance(content, bytes) else content.encode("cp932")))


def symbol(host, number):
    """The strokes of a file symbol in pixels to the right and upward, or None where the square shows that it is not there."""
    host.control.OrvDelLayDat("A")
    assert host.add_block("A", 1, POINT)
    add_sub_layer(host, 1, pnt=9999, size=number)
    put(host, 1, (PX, PY), sub=1)
    drawn = figures(redrawn(host))
    if any(name == "Polygon" for name, *_ in drawn):
        return None
    starts, ends = drawn[::2], drawn[1::2]
    assert {name for name, *_ in starts} <= {"MoveToEx"} and {name for name, *_ in ends} <= {"LineTo"}
    return [(x1 - PX, PY - y1, x2 - PX, PY - y2) for (_, x1, y1), (_, x2, y2) in zip(starts, ends)]


@BOTH
def test_lines_of_one_number_are_the_strokes_of_a_symbol(tmp_path, newer):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (1, 2, 3, 4, 5), (2, 1, 1, 1, 1)) + END, newer)
    assert symbol(host, 1) == [(0, 0, 5, 5), (2, 3, 4, 5)]
    assert symbol(host, 2) == [(1, 1, 1, 1)]
    assert symbol(host, 3) is None


def test_a_file_with_one_symbol_and_nothing_behind_it_has_no_symbol(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (1, 2, 3, 4, 5)))
    assert symbol(host, 1) is None


def test_the_last_symbol_of_a_file_is_dropped(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (2, 2, 3, 4, 5), (2, 1, 1, 3, 3)))
    assert symbol(host, 1) == [(0, 0, 5, 5)]
    assert symbol(host, 2) is None


def test_of_two_groups_with_one_number_the_earlier_is_found(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (2, 2, 3, 4, 5), (1, 9, 9, 9, 9)) + END)
    assert symbol(host, 1) == [(0, 0, 5, 5)]


def test_two_groups_with_one_number_side_by_side_are_one(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (1, 9, 9, 9, 9)) + END)
    assert symbol(host, 1) == [(0, 0, 5, 5), (9, 9, 9, 9)]


@pytest.mark.parametrize("number", [0, -1, -2, 1, 32767, 9999, 2**31 - 1])
def test_any_number_may_be_the_first_of_a_file(tmp_path, number):
    host = host_with(tmp_path, told((number, 0, 0, 5, 5), (number, 1, 2, 3, 4), (77, 1, 1, 2, 2)) + END)
    size = 6 / 10 if number == 9999 else 1
    assert symbol(host, number) == [tuple(int(each * size + 0.5) for each in stroke) for stroke in ((0, 0, 5, 5), (1, 2, 3, 4))]
    assert symbol(host, 77) == [(1, 1, 2, 2)]


def test_the_first_character_of_a_file_belongs_to_its_first_number(tmp_path):
    host = host_with(tmp_path, told((12, 0, 0, 5, 5)) + END)
    assert symbol(host, 12) == [(0, 0, 5, 5)] and symbol(host, 2) is None


def test_fields_behind_the_fifth_are_ignored(tmp_path):
    host = host_with(tmp_path, "1,0,0,100,100,200,200,name\r\n1,20,40,60,80,\r\n" + END)
    assert symbol(host, 1) == [(0, 0, 5, 5), (1, 2, 3, 4)]


def test_empty_fields_do_not_count(tmp_path):
    host = host_with(tmp_path, ",1,,20,40,,,60,80\r\n" + END)
    assert symbol(host, 1) == [(1, 2, 3, 4)]


def test_a_symbol_number_behind_which_the_file_has_no_line_break_ends_the_symbol_before(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5)) + END.strip())
    assert symbol(host, 1) == [(0, 0, 5, 5)]


@pytest.mark.parametrize("end", [b"\x1a", b"\0", b"\x1a\r\n", b"\0\0\0"])
def test_what_stands_behind_the_end_mark_is_not_read(tmp_path, end):
    behind = told((3, 1, 1, 2, 2), (4, 1, 1, 2, 2)).encode()
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (2, 1, 2, 3, 4)).encode() + end + behind)
    assert symbol(host, 1) == [(0, 0, 5, 5)]
    assert symbol(host, 2) is None, "an end mark does not end a symbol as a further number does"
    assert symbol(host, 3) is None


@pytest.mark.parametrize("content", [b"", b"\x1a", b"\0"])
@BOTH
def test_an_empty_file_gives_an_empty_table_and_true(tmp_path, newer, content):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5)) + END, newer)
    assert read(host, tmp_path, content, "empty.txt") is True
    assert symbol(host, 1) is None


@pytest.mark.parametrize("name", ["missing.txt", "", "no/such/folder.txt", "x" * 3000])
@BOTH
def test_a_missing_file_clears_the_table_and_gives_true(tmp_path, newer, name):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5)) + END, newer)
    assert host.ReadSymbolData(str(tmp_path / name) if name else "") is True
    assert symbol(host, 1) is None


def test_a_folder_in_place_of_a_file_clears_the_table_and_gives_true(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5)) + END)
    assert host.ReadSymbolData(str(tmp_path)) is True
    assert symbol(host, 1) is None


@BOTH
def test_a_file_replaces_the_whole_table(tmp_path, newer):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5), (2, 1, 1, 2, 2)) + END, newer)
    assert read(host, tmp_path, told((2, 7, 7, 7, 7)) + END, "other.txt") is True
    assert symbol(host, 1) is None
    assert symbol(host, 2) == [(7, 7, 7, 7)]


@BOTH
def test_starting_over_empties_the_table(tmp_path, newer):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5)) + END, newer)
    assert host.init()
    again = with_layer(POINT, newer=newer, zoom=3000, SetLayLineType=9999)
    assert symbol(again, 1) is None, "each control has a table of its own"
    host.control.paint()
    for side, limit in (("AreaLeft", -1e9), ("AreaTop", -1e9), ("AreaRight", 1e9), ("AreaBottom", 1e9)):
        setattr(host.control, side, limit)
    host.control.Zoom = 3000
    host.MapJumpToXY(400 * host.unit, -300 * host.unit)
    assert host.add_block("A", 1, POINT)
    host.control.SetLayLineType("A", 9999)
    assert symbol(host, 1) is None


def test_signs_are_read(tmp_path):
    host = host_with(tmp_path, "1,-200,+200,0,-100\r\n" + END)
    # To the left and below -10 + 0.5 is cut to -9, and -5 + 0.5 to -4.
    assert symbol(host, 1) == [(-9, 10, 0, -4)]


@pytest.mark.parametrize("content", [
    b",", b",,,,,\r\n", b"\r\n\r\n\r\n", b"1\r\n2\r\n", b"1,2\r\n1,2,3\r\n2,2,3,4\r\n", b"a,b,c,d,e\r\nf,g,h,i,j\r\n", b"\r",
    b"\n", b"1,0,0,1,1",
    b"\xff" * 5000, b"1," * 5000, b"\x82,\x83,\x84,\x85,\x86\r\n",
    b"1,99999999999999999999,0,-99999999999999999999,0\r\n2,0,0,0,0\r\n",
    b"99999999999999999999,0,0,1,1\r\n-99999999999999999999,0,0,1,1\r\n0,0,0,0,0\r\n",
    b"1,0,0,0," + b"9" * 5000 + b"\r\n2,0,0,0,0\r\n"],
    ids=range(15))
def test_a_damaged_file_does_no_harm_and_gives_true(tmp_path, content):
    host = host_with(tmp_path, content)
    for number in (0, 1, 2):
        symbol(host, number)
    assert read(host, tmp_path, told((1, 0, 0, 5, 5)) + END) is True
    assert symbol(host, 1) == [(0, 0, 5, 5)]


def test_an_empty_line_between_symbols_does_no_harm(tmp_path):
    host = host_with(tmp_path, told((1, 0, 0, 5, 5)) + "\r\n" + told((2, 1, 1, 2, 2)) + END)
    assert symbol(host, 2) == [(1, 1, 2, 2)]


def test_twenty_thousand_strokes_of_a_symbol_are_kept(tmp_path):
    host = host_with(tmp_path, "1,0,0,20,20\r\n" * 19998 + END)
    assert symbol(host, 1) == [(0, 0, 1, 1)] * 19998


def test_a_thousand_symbols_are_kept(tmp_path):
    host = host_with(tmp_path, told(*((number, 1, 2, 3, 4) for number in range(1, 1001))) + END)
    assert [symbol(host, number) for number in (1, 500, 1000)] == [[(1, 2, 3, 4)]] * 3


@pytest.mark.parametrize("lines", [["1,0,0,20,20\r\n"] * 60000, [f"{number},0,0,20,20\r\n" for number in range(5000)]],
                         ids=["strokes", "symbols"])
def test_more_strokes_or_symbols_than_there_is_room_for_do_no_harm(tmp_path, lines):
    host = host_with(tmp_path, "".join(lines) + END)
    for number in (0, 1, 999, 1000, 4999):
        symbol(host, number)
