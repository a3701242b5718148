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
    assert f"error: cannot read the raster image {bad}: " in done.stderr
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


def test_without_the_program_that_reads_images_it_is_told_which_one_is_missing(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED]], (0, 1000, 1000))
    env = {**os.environ, "ORVANE_RASTER_READER": "/no/such/program"}
    done = run("render", cross, "--zone", 9, "-o", tmp_path / "out.png", "--raster", image, env=env)
    assert done.returncode == NOT_IMPORTED
    assert "needs the program /no/such/program, which is not there or cannot be run" in done.stderr


@pytest.mark.parametrize("name", ["図\u301c.png", "図\uff5e.png", "é.png"])
def test_an_image_is_found_by_names_that_code_page_932_knows_in_part(tmp_path, cross, name):
    image = png(tmp_path / name, [[RED, GREEN], [BLUE, YELLOW]], (0, 1000, 500))
    done, rows = render(tmp_path, cross, "--raster", image)
    assert done.returncode == DONE, done.stderr
    assert rows[20][60] == RED


def test_the_option_takes_one_file_each_time(tmp_path, cross):
    assert run("render", cross, "-o", tmp_path / "out.png", "--raster").returncode == USAGE


def test_an_image_lies_by_two_control_points(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED, GREEN], [BLUE, YELLOW]])
    done, rows = render(tmp_path, cross, "--raster", image, "--raster-cp1", "0,0,0,1000", "--raster-cp2", "2,2,1000,0")
    assert done.returncode == DONE, done.stderr
    assert [rows[y][x] for x, y in ((60, 20), (140, 20), (60, 180), (140, 180))] == [RED, GREEN, BLUE, YELLOW]


def test_the_points_stand_in_the_order_of_the_images(tmp_path, cross):
    first = png(tmp_path / "a.png", [[RED]])
    second = png(tmp_path / "b.png", [[BLUE]])
    own = png(tmp_path / "c.png", [[GREEN]], (0, 200, 200))
    _, rows = render(tmp_path, cross, "--raster", first, "--raster", second, "--raster", own,
                     "--raster-cp1", "0,0,0,1e3", "--raster-cp2", "1,1,1000,0",
                     "--raster-cp1", "0,0,-0.5,1000.5", "--raster-cp2", "1,1,499.5,500.5")
    assert (rows[20][60], rows[20][140], rows[180][15]) == (BLUE, RED, GREEN)


@pytest.mark.parametrize("points", [["--raster-cp1", "0,0,0,0"],
                                    ["--raster-cp1", "0,0,0", "--raster-cp2", "1,1,1,1"],
                                    ["--raster-cp1", "0,0,0,0", "--raster-cp2", "1,1,1,1,1"],
                                    ["--raster-cp1", "0.5,0,0,0", "--raster-cp2", "1,1,1,1"],
                                    ["--raster-cp1", "0,0,nan,0", "--raster-cp2", "1,1,1,1"],
                                    ["--raster-cp1", "0,0,0,0", "--raster-cp2", "1,99999999999,1,1"]])
def test_control_points_that_are_none_are_told(tmp_path, cross, points):
    image = png(tmp_path / "flag.png", [[RED]], (0, 1000, 1000))
    done, _ = render(tmp_path, cross, "--raster", image, *points)
    assert done.returncode == USAGE
    assert "control point" in done.stderr


def test_equal_control_points_are_told(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED]], (0, 1000, 1000))
    done, _ = render(tmp_path, cross, "--raster", image, "--raster-cp1", "0,0,5,5", "--raster-cp2", "0,0,6,6")
    assert done.returncode == NOT_IMPORTED
    assert "are one point" in done.stderr


def test_a_raster_that_composes_others_is_drawn(tmp_path, cross):
    png(tmp_path / "flag.png", [[RED]])
    vrt = tmp_path / "flag.vrt"
    vrt.write_text('<VRTDataset rasterXSize="1" rasterYSize="1"><GeoTransform>0,1000,0,1000,0,-1000</GeoTransform>'
                   '<VRTRasterBand dataType="Byte" band="1"><SimpleSource><SourceFilename relativeToVRT="1">flag.png</SourceFilename>'
                   "<SourceBand>1</SourceBand></SimpleSource></VRTRasterBand></VRTDataset>")
    done, rows = render(tmp_path, cross, "--raster", vrt)
    assert done.returncode == DONE, done.stderr
    assert rows[60][20] == WHITE, "the first band alone, as grey"


def test_a_raster_by_a_name_that_is_no_file_is_refused_unless_any_source_will_do(tmp_path, cross):
    image = png(tmp_path / "flag.png", [[RED]], (0, 1000, 1000))
    name = f"/vsisubfile/0,{image}"
    points = ["--raster-cp1", "0,0,0,1000", "--raster-cp2", "1,1,1000,0"]
    done, _ = render(tmp_path, cross, "--raster", name, *points)
    assert done.returncode == NOT_IMPORTED
    assert f"error: cannot read the raster image {name}: there is no such file or folder" in done.stderr
    out = tmp_path / "any.png"
    env = {**os.environ, "ORVANE_RASTER_SOURCES": "any"}
    assert run("render", cross, "--zone", 9, "-o", out, "--raster", name, *points, env=env).returncode == DONE


def short_tiff(path):
    """A grey TIFF of 4 x 4 pixels over the map, whose only strip would lie beyond the end of the file."""
    geo = struct.pack("<3d6d", 250, 250, 0, 0, 0, 0, 0, 1000, 0)
    tags = [(256, 4, 1, 4), (257, 4, 1, 4), (258, 3, 1, 8), (259, 3, 1, 1), (262, 3, 1, 1), (273, 4, 1, 1 << 20), (277, 3, 1, 1),
            (278, 4, 1, 4), (279, 4, 1, 16), (33550, 12, 3, 8), (33922, 12, 6, 32)]
    body = b"".join(struct.pack("<HHII", *tag) for tag in tags)
    head = b"II*\0" + struct.pack("<I", 8 + len(geo))
    path.write_bytes(head + geo + struct.pack("<H", len(tags)) + body + struct.pack("<I", 0))
    return path


def test_an_image_that_fails_when_it_is_drawn_is_told_with_the_reason(tmp_path, cross):
    image = short_tiff(tmp_path / "short.tif")
    good = png(tmp_path / "flag.png", [[RED]], (0, 1000, 1000))
    done, _ = render(tmp_path, cross, "--raster", good, "--raster", image)
    assert done.returncode == NOT_IMPORTED
    assert f"error: cannot draw the raster image {image}: " in done.stderr
    assert "flag.png" not in done.stderr
    assert not (tmp_path / "out.png").exists()
