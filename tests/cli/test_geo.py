"""orvane4 geo: lines of coordinates in, lines of coordinates out."""

import os
import subprocess

import pytest

PROGRAM = os.path.join(os.environ["ORVANE_BIN_DIR"], "orvane4")
DONE, NOT_READ, USAGE, PARTLY = 0, 1, 2, 3


def run(text, *args):
    return subprocess.run([PROGRAM, "geo", *map(str, args)], input=text, capture_output=True, text=True, timeout=120)


def convert(text, *args):
    result = run(text, *args)
    assert (result.returncode, result.stderr) == (DONE, "")
    return result.stdout


def numbers(text):
    return [float(word) for word in text.split()]


def test_the_origin_of_a_zone_is_zero():
    text = convert("36 139.8333333333333\n", "--from", "deg", "--to", "plane", "--zone", 9)
    assert text == "0.0000 0.0000\n", "nor has zero a sign"


def test_degrees_go_to_the_plane_and_back():
    plane = convert("35.5 139.25\n", "--from", "deg", "--to", "plane", "--zone", 9)
    north, east = numbers(plane)
    assert -56000 < north < -55000 and -54000 < east < -52000
    back = numbers(convert(plane, "--from", "plane", "--to", "deg", "--zone", 9))
    assert back == pytest.approx([35.5, 139.25], abs=2e-9)


def test_degrees_minutes_and_seconds():
    assert convert("35 40 0 139 37 30\n", "--from", "dms", "--to", "mesh") == "533945 0.0000 0.0000\n"
    assert convert("533945\n", "--from", "mesh", "--to", "dms") == "35 40 00.0000 139 37 30.0000\n"
    assert convert("35.1 139.2\n", "--from", "deg", "--to", "dms") == "35 06 00.0000 139 12 00.0000\n"
    assert numbers(convert("35 6 0.36 139 12 0\n", "--from", "dms", "--to", "deg")) == pytest.approx([35.1001, 139.2], abs=1e-9)


def test_sheets_and_the_mesh_frame():
    assert convert("533945 2500 5000\n", "--from", "mesh", "--to", "frame") == "3172500.0000 4285000.0000\n"
    assert convert("3172500,4285000\n", "--from", "frame", "--to", "mesh") == "533945 2500.0000 5000.0000\n"
    latitude, longitude = numbers(convert("533945 2500 5000\n", "--from", "mesh", "--to", "deg"))
    assert latitude == pytest.approx(35 + 42.5 / 60, abs=1e-9)
    assert longitude == pytest.approx(139 + (37.5 + 7.5 / 4) / 60, abs=1e-9)


def test_a_sheets_corner_is_the_same_place_by_either_way_into_the_plane():
    by_mesh = convert("533945\n", "--from", "mesh", "--to", "plane", "--zone", 9)
    assert by_mesh == convert("35 40 0 139 37 30\n", "--from", "dms", "--to", "plane", "--zone", 9)
    assert convert(by_mesh, "--from", "plane", "--to", "mesh", "--zone", 9).startswith("533945 ")


def test_blanks_tabs_commas_and_both_line_ends_are_taken():
    text = "3170000 4280000\n\t3170000,4280000\r\n3170000 , +4280000\n3170000 4280000"
    assert convert(text, "--from", "frame", "--to", "mesh") == "533945 0.0000 0.0000\n" * 4


def test_an_empty_line_gives_an_empty_line():
    assert convert("\n3170000 4280000\n \n", "--from", "frame", "--to", "mesh") == "\n533945 0.0000 0.0000\n\n"
    assert convert("", "--from", "frame", "--to", "mesh") == ""


def test_a_bad_line_is_told_by_its_number_and_leaves_its_place():
    result = run("3170000 4280000\nnonsense\n1\n3170000 4280000\n", "--from", "frame", "--to", "mesh")
    assert result.returncode == PARTLY
    assert result.stdout == "533945 0.0000 0.0000\n*\n*\n533945 0.0000 0.0000\n"
    lines = result.stderr.splitlines()
    assert lines[0].startswith("error: line 2: two numbers expected")
    assert lines[1].startswith("error: line 3: ")
    assert lines[2] == "error: 2 of 4 lines could not be converted"


@pytest.mark.parametrize(
    "form, line",
    [
        ("deg", "91 139"), ("deg", "36 181"), ("deg", "nan 139"), ("deg", "inf 139"), ("deg", "36 139 1"), ("deg", "36x 139"),
        ("deg", "+-36 139"), ("dms", "35 60 0 139 0 0"), ("dms", "35 0 60 139 0 0"), ("dms", "35.5 0 0 139 0 0"),
        ("dms", "35 0 0 139 0"), ("dms", "-35 0 0 139 0 0"), ("dms", "90 0 1 139 0 0"), ("mesh", "533985"), ("mesh", "533948"),
        ("mesh", "1000000"), ("mesh", "533945 1"), ("mesh", "5339.5"), ("mesh", "53394"), ("mesh", "0533945"),
        ("mesh", "533945.0"), ("mesh", "53394e1"), ("mesh", "-53394"), ("mesh", "530945"), ("mesh", "538045"),
        ("mesh", "533945 -1 0"), ("mesh", "533945 0 -0.1"), ("mesh", "533945 10000.1 0"), ("mesh", "533945 0 1e9"), ("frame", "1 2 3 4 5 6 7"), ("frame", "1e999 0"),
    ],
)  # fmt: skip
def test_lines_that_are_no_coordinates_are_refused(form, line):
    result = run(line + "\n", "--from", form, "--to", "frame")
    assert (result.returncode, result.stdout) == (PARTLY, "*\n")


@pytest.mark.parametrize(
    "line, told",
    [
        ("53394 1 1", "a sheet number of six digits expected"),
        ("533985", "no such sheet: its row and column, the last two digits, are 0 to 7"),
        ("530945", "no such sheet: sheets lie between longitudes 110 and 180"),
        ("533945 10001 0", "no place in the sheet: x and y inside are 0 to 10000"),
        ("533945 0 -1", "no place in the sheet: x and y inside are 0 to 10000"),
    ],
)
def test_what_is_wrong_with_a_sheet_is_told(line, told):
    result = run(f"533945 1 1\n{line}\n", "--from", "mesh", "--to", "frame")
    assert (result.returncode, result.stdout) == (PARTLY, "3170001.0000 4280001.0000\n*\n")
    assert result.stderr.startswith(f"error: line 2: {told}")


def test_a_sheet_reaches_from_zero_to_ten_thousand_and_its_number_may_begin_with_zero():
    text = "533945 0 0\n533945 10000 10000\n053945 0 0\n"
    assert convert(text, "--from", "mesh", "--to", "frame") == (
        "3170000.0000 4280000.0000\n3180000.0000 4290000.0000\n3170000.0000 440000.0000\n"
    )
    assert convert("3170000 440000\n", "--from", "frame", "--to", "mesh") == "053945 0.0000 0.0000\n"


@pytest.mark.parametrize("x, y", [(799999, 4280000), (6400000, 4280000), (3170000, -1), (3170000, 8000000), (-1, -1)])
def test_a_place_of_the_mesh_frame_without_a_sheet_has_no_plane(x, y):
    result = run(f"{x} {y}\n", "--from", "frame", "--to", "plane", "--zone", 9)
    assert (result.returncode, result.stdout) == (PARTLY, "*\n")


# South of the equator, west of 110 E, beyond the pole of the series, and so far that the angles are no numbers.
@pytest.mark.parametrize("x, y", [(-4000000, 0), (0, -3000000), (0, 1e300), (1e300, 0), (-1e300, -1e300)])
@pytest.mark.parametrize("to", ["mesh", "frame"])
def test_a_plane_place_without_a_sheet_is_in_no_mesh_frame(x, y, to):
    result = run(f"{x} {y}\n", "--from", "plane", "--to", to, "--zone", 9)
    assert (result.returncode, result.stdout) == (PARTLY, "*\n")


def test_a_byte_order_mark_before_the_first_line_is_passed_over():
    assert convert("\ufeff3170000 4280000\n", "--from", "frame", "--to", "mesh") == "533945 0.0000 0.0000\n"
    assert convert("\ufeff\n3170000 4280000\n", "--from", "frame", "--to", "mesh") == "\n533945 0.0000 0.0000\n"
    result = run("3170000 4280000\n\ufeff3170000 4280000\n", "--from", "frame", "--to", "mesh")
    assert (result.returncode, result.stdout) == (PARTLY, "533945 0.0000 0.0000\n*\n")


def test_the_help_names_the_forms_and_tells_their_limits():
    text = " ".join(run("", "--help").stdout.split())
    assert "{deg,dms,plane,mesh,frame}" in text
    assert "->" not in text
    assert "of the north and the east only" in text
    assert "0.2 millimetres" in text and "700 kilometres north and south" in text and "160 kilometres east and west" in text


def test_a_form_is_told_by_its_name_and_not_by_a_number():
    assert run("", "--from", "0", "--to", "1").returncode == USAGE


@pytest.mark.parametrize("line, to", [("36 109", "mesh"), ("-1 140", "mesh"), ("67 140", "mesh"), ("-1 140", "dms")])
def test_a_place_without_coordinates_in_the_other_form_is_refused(line, to):
    result = run(line + "\n", "--from", "deg", "--to", to)
    assert (result.returncode, result.stdout) == (PARTLY, "*\n")
    assert "no coordinates in the other form" in result.stderr


def test_the_first_bad_lines_are_told_and_all_are_counted():
    result = run("x\n" * 100, "--from", "frame", "--to", "mesh")
    assert len(result.stderr.splitlines()) == 21
    assert result.stderr.endswith("error: 100 of 100 lines could not be converted\n")


def test_a_line_without_end_is_refused_and_the_next_one_converted():
    result = run("1" * 3_000_000 + "\n3170000 4280000\n", "--from", "frame", "--to", "mesh")
    assert (result.returncode, result.stdout) == (PARTLY, "*\n533945 0.0000 0.0000\n")
    assert "too long" in result.stderr


def test_a_line_of_more_blanks_than_a_line_may_have_is_too_long_and_not_empty():
    result = run(" " * 100_000 + "36 140\n", "--from", "deg", "--to", "dms")
    assert (result.returncode, result.stdout) == (PARTLY, "*\n")


def test_input_that_cannot_be_read_is_an_error_and_no_crash(tmp_path):
    folder = os.open(tmp_path, os.O_RDONLY)
    try:
        command = [PROGRAM, "geo", "--from", "deg", "--to", "deg"]
        result = subprocess.run(command, stdin=folder, capture_output=True, text=True, timeout=60)
    finally:
        os.close(folder)
    assert (result.returncode, result.stdout) == (NOT_READ, "")
    assert result.stderr == "error: the input cannot be read\n"


def test_a_plane_needs_its_zone():
    assert run("", "--from", "deg", "--to", "plane").returncode == USAGE
    assert run("", "--from", "plane", "--to", "deg").returncode == USAGE
    for zone in (0, 20, -1):
        result = run("", "--from", "deg", "--to", "plane", "--zone", zone)
        assert result.returncode == USAGE
        assert "1 to 19" in result.stderr


def test_an_unknown_form_is_wrong_usage():
    assert run("", "--from", "deg", "--to", "utm").returncode == USAGE
    assert run("").returncode == USAGE


def test_who_types_gets_each_answer_before_the_next_line():
    with subprocess.Popen(
        [PROGRAM, "geo", "--from", "frame", "--to", "mesh"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
    ) as process:
        for _ in range(3):
            process.stdin.write("3170000 4280000\n")
            process.stdin.flush()
            assert process.stdout.readline() == "533945 0.0000 0.0000\n"
        process.stdin.close()
        assert process.wait(timeout=60) == DONE


def test_a_hundred_thousand_lines_come_out_in_order():
    text = "".join(f"{3170000 + i % 10000} {4280000 + i // 10000}\n" for i in range(100_000))
    lines = convert(text, "--from", "frame", "--to", "mesh").splitlines()
    assert len(lines) == 100_000
    assert lines[12345] == "533945 2345.0000 1.0000"
