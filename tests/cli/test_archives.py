"""Archives on the command line: what is written, what is told of them, and the exit status."""

import json
import os
import shutil
import struct
import subprocess

import pytest

PROGRAM = os.path.join(os.environ["ORVANE_BIN_DIR"], "orvane4")
SAMPLE = os.path.join(os.environ["ORVANE_SOURCE_DIR"], "samples", "tokyo.geojson")
DONE, NOT_READ, USAGE, PARTLY, NOT_WRITTEN = range(5)
ITEMS, POINTS = 53, 4693
# Of version 1.10: a head of 86 bytes an item, 24 bytes a point, a header of 40.
BINARY_SIZE = 40 + ITEMS * 86 + POINTS * 24


def run(*args, **kwargs):
    return subprocess.run([PROGRAM, *map(str, args)], capture_output=True, text=True, encoding="utf-8", timeout=120, **kwargs)


def names(folder):
    return sorted(path.name for path in folder.iterdir())


def contents(folder):
    return {path.name: path.read_bytes() for path in folder.iterdir()}


@pytest.fixture(scope="module")
def imported(tmp_path_factory):
    folder = tmp_path_factory.mktemp("imported")
    done = run("import", SAMPLE, folder / "tokyo.Ovb")
    assert done.returncode == DONE, done.stderr
    return folder


@pytest.fixture
def sample(imported, tmp_path):
    """An archive of the sample that a test may damage."""
    folder = tmp_path / "sample"
    shutil.copytree(imported, folder)
    return folder / "tokyo.Ovb"


def info(path):
    done = run("info", path, "--json")
    assert done.returncode == DONE, done.stderr
    return json.loads(done.stdout)


def test_import_writes_an_archive_with_every_item(imported):
    assert names(imported) == ["tokyo.Ovb", "tokyo.Ovi", "tokyo.Ovl"]
    assert (imported / "tokyo.Ovb").stat().st_size == BINARY_SIZE
    assert (imported / "tokyo.Ovb").read_bytes()[:29] == b"Orva Data Binary Version 1.10"


def test_import_tells_what_an_archive_does_not_keep(tmp_path):
    done = run("import", SAMPLE, tmp_path / "a.Ovb")
    assert "not kept by an archive: 1 switches of layers whose items may become active" in done.stderr


def test_import_writes_the_version_that_is_asked_for(tmp_path):
    assert run("import", SAMPLE, tmp_path / "a.Ovb", "--version", "1.00").returncode == DONE
    assert info(tmp_path / "a.Ovb")["version"] == "1.00"
    assert run("import", SAMPLE, tmp_path / "b.Ovb", "--version", "1.20").returncode == USAGE


def test_an_import_that_fails_leaves_the_archive_that_is_there(sample):
    before = contents(sample.parent)
    assert run("import", sample.parent / "none.shp", sample).returncode == NOT_READ
    assert contents(sample.parent) == before


def test_info_tells_layers_blocks_items_and_bounds(imported):
    told = info(imported / "tokyo.Ovb")
    assert (told["form"], told["version"], told["layerCount"], told["blockCount"]) == ("binary", "1.10", 1, 1)
    assert (told["items"], told["points"]) == (ITEMS, POINTS)
    left, bottom, right, top = told["bounds"]
    assert left < right and bottom < top and right - left > 80000
    layer = told["layers"][0]
    assert (layer["code"], layer["name"], layer["type"], layer["items"]) == ("tokyo", "tokyo", "polygons", ITEMS)
    block = told["blocks"][0]
    assert (block["code"], block["meshNo"], block["path"], block["origin"]) == ("tokyo", 1, "", [0, 0])
    text = run("info", imported / "tokyo.Ovb").stdout
    assert f"layers 1, blocks 1, items {ITEMS}, points {POINTS}" in text
    assert ["tokyo", "polygons", "1", str(ITEMS), str(POINTS), "tokyo"] in [row.split() for row in text.splitlines()]


def test_info_json_holds_any_code(tmp_path):
    source = tmp_path / "s.geojson"
    point = {"type": "Point", "coordinates": [139.7, 35.6]}
    feature = {"type": "Feature", "properties": {"n": 'a"b\\東京'}, "geometry": point}
    source.write_text(json.dumps({"type": "FeatureCollection", "features": [feature]}), encoding="utf-8")
    assert run("import", source, tmp_path / "a.Ovb", "--by", "n").returncode == DONE
    assert info(tmp_path / "a.Ovb")["layers"][0]["name"] == 'a"b\\東京'


@pytest.mark.parametrize("version", ["1.00", "1.10"])
def test_binary_data_converts_to_either_version_and_back_byte_for_byte(imported, tmp_path, version):
    assert run("convert", imported / "tokyo.Ovb", tmp_path / "a.Ovb", "--version", version).returncode == DONE
    assert run("check", tmp_path / "a.Ovb").returncode == DONE
    assert info(tmp_path / "a.Ovb")["version"] == version
    assert run("convert", tmp_path / "a.Ovb", tmp_path / "b.Ovb").returncode == DONE
    assert (tmp_path / "b.Ovb").read_bytes() == (imported / "tokyo.Ovb").read_bytes()


def test_text_converts_and_comes_back(imported, tmp_path):
    done = run("convert", imported / "tokyo.Ovb", tmp_path / "a.Ovt")
    assert done.returncode == DONE and "with the .Ovi file of its version beside it" in done.stderr
    assert names(tmp_path) == ["a.Ovi", "a.Ovl", "a.Ovt"]
    lines = (tmp_path / "a.Ovt").read_bytes().split(b"\r\n")
    assert lines[0] == b"Orva Data Text Version 1.10" and lines[1].startswith(b"DH,tokyo,1,1,")
    assert len([row for row in lines if row.startswith(b"P,")]) == POINTS
    assert run("check", tmp_path / "a.Ovt").returncode == DONE
    assert run("convert", tmp_path / "a.Ovt", tmp_path / "b.Ovb").returncode == DONE
    assert info(tmp_path / "b.Ovb")["points"] == POINTS


def test_text_without_its_index_is_not_read(imported, tmp_path):
    run("convert", imported / "tokyo.Ovb", tmp_path / "a.Ovt")
    (tmp_path / "a.Ovi").unlink()
    done = run("info", tmp_path / "a.Ovt")
    assert done.returncode == NOT_READ and "a.Ovi is missing" in done.stderr


def test_text_of_version_100_is_written_and_never_read_back(imported, tmp_path):
    done = run("convert", imported / "tokyo.Ovb", tmp_path / "a.Ovt", "--version", "1.00")
    assert done.returncode == DONE and "never read back" in done.stderr
    assert run("info", tmp_path / "a.Ovt").returncode == NOT_READ
    done = run("check", tmp_path / "a.Ovt")
    assert done.returncode == PARTLY and "never read back" in done.stdout


def test_an_archive_converts_onto_itself(sample):
    assert run("convert", sample, sample, "--version", "1.00").returncode == DONE
    assert names(sample.parent) == ["tokyo.Ovb", "tokyo.Ovi", "tokyo.Ovl"]
    assert info(sample)["items"] == ITEMS


def test_the_extension_may_have_any_case_and_the_siblings_have_theirs(imported, tmp_path):
    assert run("convert", imported / "tokyo.Ovb", tmp_path / "a.OVB").returncode == DONE
    assert names(tmp_path) == ["a.Ovb", "a.Ovi", "a.Ovl"]
    assert run("check", tmp_path / "a.ovb").returncode == DONE


@pytest.mark.parametrize("name", ["東京", "é", "ソ 表"])
def test_names_of_any_characters_are_the_systems_own(imported, tmp_path, name):
    folder = tmp_path / name
    folder.mkdir()
    assert run("convert", imported / "tokyo.Ovb", folder / f"{name}.Ovb").returncode == DONE
    assert names(folder) == [f"{name}.Ovb", f"{name}.Ovi", f"{name}.Ovl"]
    assert info(folder / f"{name}.Ovb")["items"] == ITEMS


def test_check_finds_nothing_in_a_whole_archive(imported):
    done = run("check", imported / "tokyo.Ovb")
    assert done.returncode == DONE and done.stdout.splitlines()[-1] == "no fault"
    assert f"items {ITEMS}, points {POINTS}" in done.stdout


def test_check_tells_every_kind_of_fault_with_its_status(sample):
    index = bytearray(sample.with_suffix(".Ovi").read_bytes())
    struct.pack_into("<i", index, 48 + 91 + 16, 41)  # the first item's offset
    struct.pack_into("<i", index, 48 + 91 + 20, 0)  # the second item's left
    sample.with_suffix(".Ovi").write_bytes(index + b"xyz")
    with open(sample, "ab") as data:
        data.write(b"half an item")
    done = run("check", sample)
    assert done.returncode == PARTLY
    for words in ("item 0 at offset 41, but it stands at 40", "the rectangle (0 ", "has 3 bytes behind", "the last 12 bytes"):
        assert words in done.stdout, words


def test_check_of_what_is_not_there_or_no_archive(tmp_path):
    assert run("check", tmp_path / "none.Ovb").returncode == NOT_READ
    assert run("check", tmp_path / "none").returncode == USAGE
    (tmp_path / "folder.Ovb").mkdir()
    assert run("check", tmp_path / "folder.Ovb").returncode == NOT_READ


def test_a_damaged_archive_converts_as_far_as_it_goes_but_replaces_nothing(sample, tmp_path):
    os.truncate(sample, BINARY_SIZE - 1)
    before = contents(sample.parent)
    done = run("convert", sample, tmp_path / "rescued.Ovb")
    assert done.returncode == PARTLY and "warning: the last" in done.stderr
    assert info(tmp_path / "rescued.Ovb")["items"] == ITEMS - 1
    assert run("convert", sample, sample).returncode == NOT_WRITTEN
    assert contents(sample.parent) == before


def test_an_archive_that_cannot_be_written_has_its_own_status(imported, tmp_path):
    done = run("convert", imported / "tokyo.Ovb", tmp_path / "no" / "folder.Ovb")
    assert done.returncode == NOT_WRITTEN and "was not written" in done.stderr


def test_a_save_that_was_broken_off_is_undone_at_the_next_start(sample):
    before = contents(sample.parent)
    aside = sample.parent / ".tokyo.ov-old"
    aside.mkdir()
    for name in before:
        (sample.parent / name).rename(aside / name)
    sample.write_bytes(b"part of a new archive")
    assert run("info", sample).returncode == DONE
    assert contents(sample.parent) == before


def test_render_draws_an_archive(imported, tmp_path):
    picture = tmp_path / "map.png"
    assert run("render", imported / "tokyo.Ovb", "-o", picture, "--width", "300", "--height", "200").returncode == DONE
    assert picture.read_bytes()[:8] == b"\x89PNG\r\n\x1a\n" and picture.stat().st_size > 2000
    done = run("render", imported / "tokyo.Ovb", SAMPLE, "-o", picture)
    assert done.returncode == USAGE and "drawn alone" in done.stderr


def test_no_bar_where_the_error_stream_is_no_terminal(imported):
    done = run("info", imported / "tokyo.Ovb")
    assert "\x1b" not in done.stderr and done.stderr.splitlines()[0] == f"reading {imported / 'tokyo.Ovb'}"
