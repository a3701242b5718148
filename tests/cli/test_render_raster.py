"""Raster images under and over the map that `orvane4 render` draws."""

import json
import os
import struct
import zlib

import pytest
from test_cli import DONE, NOT_IMPORTED, USAGE, read_png, run

RED, GREEN, BLUE, YELLOW, BLACK, WHITE = (255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 0), (0, 0, 0), (255, 255, 255)


def png(path, rows, place=None):
    """A PNG of RGB rows; `place` is the left top corner and the size of a pixel in map units, told by a world file."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    packed = zlib.compress(b"".join(b"\0" + b"".join(map(bytes, row)) for row in rows))
    head = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", packed) + chunk(b"IEND", b""))
    if place:
        x, y, size = place
        path.with_suffix(".pgw").write_text(f"{size}\n0\n0\n{-size}\n{x + size / 2}\n{y - size / 2}\n")
    return path


@pytest.fixture
def cross(tmp_path):
    """A map of two lines in zone 9, from (0, 0) to (1000, 1000) and across."""
    lines = [[[0, 0], [1000, 1000]], [[0, 1000], [1000, 0]]]
    features = [{"type": "Feature", "properties": {}, "geometry": {"type": "LineString", "coordinates": c}} for c in lines]
    crs = {"type": "name", "properties": {"name": "urn:ogc:def:crs:EPSG::6677"}}
    path = tmp_path / "cross.geojson"
    path.write_text(json.dumps({"type": "FeatureCollection", "crs": crs, "features": features}))
    return path


def render(tmp_path, cross, *args):
    out = tmp_path / "out.png"
    done = run("render", cross, "--zone", 9, "-o", out, "--width", 200, "--height", 200, *args)
    return done, read_png(out)[2] if done.returncode == DONE else None


def test_a_raster_lies_under_the_layers(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED, GREEN], [BLUE, YELLOW]], (0, 1000, 500))
    done, rows = render(tmp_path, cross, "--raster", image)
    assert done.returncode == DONE, done.stderr
    assert [rows[y][x] for x, y in ((60, 20), (140, 20), (60, 180), (140, 180))] == [RED, GREEN, BLUE, YELLOW]
    assert rows[2][100] == WHITE
    assert rows[50][50] not in (RED, GREEN, BLUE, YELLOW), "the line is seen"


def test_a_raster_lies_over_the_layers_when_asked_to(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED, GREEN], [BLUE, YELLOW]], (0, 1000, 500))
    _, rows = render(tmp_path, cross, "--raster", image, "--raster-over")
    assert (rows[50][50], rows[150][50]) == (RED, BLUE)


def test_the_later_of_several_rasters_lies_over_the_earlier(tmp_path, cross):
    under = png(tmp_path / "a.png", [[RED]], (0, 1000, 1000))
    over = png(tmp_path / "b.png", [[BLUE]], (0, 1000, 500))
    _, rows = render(tmp_path, cross, "--raster", under, "--raster", over)
    assert (rows[20][60], rows[20][140]) == (BLUE, RED)


@pytest.mark.parametrize("content", [None, b"", b"no picture"], ids=["missing", "empty", "text"])
def test_a_raster_that_cannot_be_read_is_told(tmp_path, cross, content):
    bad = tmp_path / "bad.png"
    if content is not None:
        bad.write_bytes(content)
    done, _ = render(tmp_path, cross, "--raster", bad)
    assert done.returncode == NOT_IMPORTED
    assert done.stderr.endswith(f"error: cannot read the raster image {bad}\n")
    assert not (tmp_path / "out.png").exists()


def test_a_raster_that_does_not_say_where_it_lies_is_told(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED]])
    done, _ = render(tmp_path, cross, "--raster", image)
    assert done.returncode == NOT_IMPORTED
    assert done.stderr.endswith(f"error: {image} does not say where it lies\n")


def test_without_the_library_it_is_told_which_one_is_missing(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED]], (0, 1000, 1000))
    out = tmp_path / "out.png"
    env = {**os.environ, "ORVANE_RASTER_SERVER": "/no/such/library.so"}
    done = run("render", cross, "--zone", 9, "-o", out, "--raster", image, env=env)
    assert done.returncode == NOT_IMPORTED
    assert "/no/such/library.so" in done.stderr
    assert run("render", cross, "--zone", 9, "-o", out, env=env).returncode == DONE, "the vector map works on"


def test_the_option_takes_one_file_each_time(tmp_path, cross):
    assert run("render", cross, "-o", tmp_path / "out.png", "--raster").returncode == USAGE
