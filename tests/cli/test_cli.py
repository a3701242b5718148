"""The command line as a person uses it: what it prints, what it writes, and its exit status."""

import json
import os
import pathlib
import pty
import struct
import subprocess
import zlib

import pytest

PROGRAM = os.path.join(os.environ["ORVANE_BIN_DIR"], "orvane4")
SAMPLE = os.path.join(os.environ["ORVANE_SOURCE_DIR"], "samples", "tokyo.geojson")
CREDIT = "「国土数値情報（行政区域データ）」（国土交通省）を加工して作成"
DONE, NOT_IMPORTED, USAGE, PARTLY, NOT_WRITTEN = range(5)


def run(*args, **kwargs):
    return subprocess.run([PROGRAM, *map(str, args)], capture_output=True, text=True, encoding="utf-8", timeout=120, **kwargs)


def geojson(path, *geometries):
    features = [{"type": "Feature", "properties": {}, "geometry": geometry} for geometry in geometries]
    path.write_text(json.dumps({"type": "FeatureCollection", "features": features}), encoding="utf-8")
    return path


def line(*points):
    return {"type": "LineString", "coordinates": points}


def read_png(path):
    """Width, height and rows of RGB triples of an 8-bit PNG without interlace, with a reader of our own."""
    data = pathlib.Path(path).read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    at, packed, header = 8, b"", None
    while at < len(data):
        (length,) = struct.unpack(">I", data[at : at + 4])
        kind, body = data[at + 4 : at + 8], data[at + 8 : at + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            packed += body
        at += 12 + length
    width, height, depth, colour, _, _, interlace = header
    assert depth == 8 and colour in (2, 6) and interlace == 0
    size = 3 if colour == 2 else 4
    raw, rows, before = zlib.decompress(packed), [], bytearray(width * size)
    for y in range(height):
        start = y * (width * size + 1)
        kind, row = raw[start], bytearray(raw[start + 1 : start + 1 + width * size])
        for i in range(len(row)):
            a = row[i - size] if i >= size else 0
            b, c = before[i], before[i - size] if i >= size else 0
            p = a + b - c
            paeth = min((abs(p - a), 0, a), (abs(p - b), 1, b), (abs(p - c), 2, c))[2]
            row[i] = (row[i] + (0, a, b, (a + b) // 2, paeth)[kind]) & 255
        rows.append([tuple(row[x * size : x * size + 3]) for x in range(width)])
        before = row
    return width, height, rows


def test_help_tells_the_commands_and_the_exit_status():
    done = run("--help")
    assert done.returncode == DONE
    assert "import" in done.stdout and "render" in done.stdout and "Exit status" in done.stdout
    for command in ("import", "render"):
        assert "--zone" in run(command, "--help").stdout
    for command in ("import", "render", "convert", "info", "check"):
        assert command in done.stdout and "Exit status" in run(command, "--help").stdout


def test_version_is_told():
    done = run("--version")
    assert done.returncode == DONE and done.stdout.startswith("orvane4 ")


def test_wrong_usage_has_its_own_status():
    for args in ([], ["paint"], ["render", SAMPLE], ["render", SAMPLE, "-o", "x.png", "--width", "0"], ["import", "--zone", "nine", SAMPLE]):
        done = run(*args)
        assert done.returncode == USAGE, args


def test_import_tells_what_would_be_stored_and_whose_data_it_is():
    done = run("import", SAMPLE)
    assert done.returncode == DONE, done.stderr
    assert "EPSG:6677" in done.stdout
    assert ["tokyo", "polygons", "53", "4693"] in [row.split() for row in done.stdout.splitlines()]
    assert CREDIT in done.stdout
    assert "Zone 9 was taken" in done.stderr


def test_import_by_an_attribute_makes_a_layer_for_each_value():
    done = run("import", SAMPLE, "--by", "N03_004")
    names = {row.split()[0] for row in done.stdout.splitlines() if "polygons" in row}
    assert len(names) == 53 and {"千代田区", "奥多摩町", "調布市"} <= names


def test_the_last_of_several_names_is_the_archive_and_no_other_is_taken_for_one(tmp_path):
    last = geojson(tmp_path / "last.geojson", line([139.7, 35.6], [139.8, 35.7]))
    before = last.read_bytes()
    done = run("import", SAMPLE, last)
    assert done.returncode == USAGE and "does not end in .Ovb or .Ovt" in done.stderr
    assert last.read_bytes() == before and len(list(tmp_path.iterdir())) == 1
    done = run("import", "--check", SAMPLE, last)
    assert done.returncode == DONE and "\nlast" in done.stdout


def test_errors_are_one_clear_line_and_a_status(tmp_path):
    notes = tmp_path / "notes.txt"
    notes.write_text("nothing that is a map\n")
    table = tmp_path / "bare.csv"
    table.write_text('WKT,A\n"POINT(139.7 35.6)",1\n')
    for args, status, words in (
        (["import", tmp_path / "none.shp"], NOT_IMPORTED, "no such file"),
        (["import", notes], NOT_IMPORTED, "cannot read"),
        (["import", table], NOT_IMPORTED, "no coordinate system"),
        (["import", SAMPLE, "--zone", "20"], USAGE, "no such zone: 20"),
        (["import", SAMPLE, "--assume", "999999"], USAGE, "no such coordinate system"),
        (["import", SAMPLE, "--by", "NAME"], NOT_IMPORTED, "no attribute NAME; it has N03_001"),
    ):
        done = run(*args)
        errors = [row for row in done.stderr.splitlines() if row.startswith("error: ")]
        assert done.returncode == status, (args, done.stderr)
        assert len(errors) == 1 and words in errors[0]
        assert done.stdout == ""


def test_geometry_that_cannot_be_stored_is_counted_and_changes_the_status(tmp_path):
    source = geojson(tmp_path / "mixed.geojson", line([139.7, 35.6], [139.8, 35.7]), line([139.7, 35.6], [139.7, 35.6]), None)
    done = run("import", source)
    assert done.returncode == PARTLY
    assert "left out: 1 lines of one place" in done.stdout and "left out: 1 features without geometry" in done.stdout
    assert "1 geometries could not be stored" in done.stderr


def test_a_feature_without_geometry_alone_is_no_loss(tmp_path):
    source = geojson(tmp_path / "rows.geojson", line([139.7, 35.6], [139.8, 35.7]), None)
    assert run("import", source).returncode == DONE


def test_render_draws_the_sample_with_north_up(tmp_path):
    picture = tmp_path / "東京.png"
    done = run("render", SAMPLE, "-o", picture, "--width", "600", "--height", "400")
    assert done.returncode == DONE, done.stderr
    width, height, rows = read_png(picture)
    assert (width, height) == (600, 400)
    white = (255, 255, 255)
    assert rows[0][1:-1] == [(0, 0, 0)] * (width - 2) and rows[-1] == [white] * width, "the rim of the client area"
    inked = [(x, y) for y in range(1, height) for x in range(1, width) if rows[y][x] != white]
    assert 0.25 < len(inked) / (width * height) < 0.75
    assert min(x for x, _ in inked) < 30 and max(x for x, _ in inked) > 570, "the data fills the width"
    # The prefecture is long from west to east; its north-western town lies higher than its south-eastern shore.
    west = [y for x, y in inked if x < 100]
    east = [y for x, y in inked if x > 450]
    assert min(west) < min(east) and max(west) < max(east)


def test_render_goes_beyond_the_desktop(tmp_path):
    picture = tmp_path / "large.png"
    assert run("render", SAMPLE, "-o", picture, "--width", "2400", "--height", "100").returncode == DONE
    assert read_png(picture)[:2] == (2400, 100)


def test_a_picture_that_cannot_be_written_has_its_own_status(tmp_path):
    done = run("render", SAMPLE, "-o", tmp_path / "no" / "folder.png")
    assert done.returncode == NOT_WRITTEN and "cannot write" in done.stderr


def test_no_colour_and_no_bar_where_the_error_stream_is_no_terminal():
    done = run("import", SAMPLE)
    assert "\x1b" not in done.stderr and "\r" not in done.stderr
    assert done.stderr.splitlines()[0] == f"importing {SAMPLE}"


def test_a_terminal_gets_a_progress_bar():
    leader, follower = pty.openpty()
    process = subprocess.Popen([PROGRAM, "import", SAMPLE], stdout=subprocess.DEVNULL, stderr=follower)
    os.close(follower)
    shown = b""
    while True:
        try:
            part = os.read(leader, 4096)
        except OSError:
            break
        if not part:
            break
        shown += part
    os.close(leader)
    assert process.wait(timeout=60) == DONE
    assert b"[##############################] 100 %" in shown


@pytest.mark.parametrize("zone", [9, 19])
def test_a_zone_can_be_given_and_the_odd_one_is_warned_of(zone):
    done = run("import", SAMPLE, "--zone", zone)
    assert done.returncode == DONE
    assert f"EPSG:{6668 + zone}" in done.stdout
    assert ("latitude 28" in done.stderr) == (zone == 19)
