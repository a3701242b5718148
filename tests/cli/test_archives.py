"""Archives on the command line: what is written, what is told of them, and the exit status."""

import errno
import json
import os
import resource
import shutil
import signal
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


def test_check_brings_back_a_set_that_was_moved_aside_as_the_others_do(sample):
    before = contents(sample.parent)
    aside = sample.parent / ".tokyo.ov-away"
    aside.mkdir()
    for name in before:
        (sample.parent / name).rename(aside / name)
    done = run("check", sample)
    assert done.returncode == DONE and done.stdout.splitlines()[-1] == "no fault"
    assert contents(sample.parent) == before


def limit_files():
    """Files may not grow beyond 20,000 bytes, as on a disk that fills up."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))


def test_a_write_that_fails_is_told_with_the_systems_reason_and_the_name_that_was_given(imported, sample):
    before = contents(sample.parent)
    done = run("convert", imported / "tokyo.Ovb", sample, preexec_fn=limit_files)
    assert done.returncode == NOT_WRITTEN and contents(sample.parent) == before
    assert f"cannot write {sample}: {os.strerror(errno.EFBIG)}" in done.stderr and ".ov-" not in done.stderr


def test_json_is_valid_for_a_name_of_any_bytes(imported, tmp_path):
    path = os.fsencode(tmp_path) + b"/\xff\xfe.Ovb"
    done = subprocess.run([PROGRAM, "convert", imported / "tokyo.Ovb", path], capture_output=True, timeout=120)
    assert done.returncode == DONE
    done = subprocess.run([PROGRAM, "info", "--json", path], capture_output=True, timeout=120)
    assert done.returncode == DONE
    assert json.loads(done.stdout.decode("utf-8"))["archive"].endswith("/\ufffd\ufffd.Ovb")


@pytest.mark.parametrize("args", [["info"], ["info", "--json"], ["check"]])
def test_an_output_that_cannot_be_written_is_told_and_has_a_status(imported, args):
    with open("/dev/full", "w", encoding="utf-8") as full:
        done = subprocess.run([PROGRAM, *args, imported / "tokyo.Ovb"], stdout=full, stderr=subprocess.PIPE, timeout=120)
    assert done.returncode == NOT_WRITTEN and b"standard output cannot be written" in done.stderr


def test_an_import_that_loses_shapes_replaces_no_archive(sample, tmp_path):
    before = contents(sample.parent)
    source = tmp_path / "s.geojson"
    lines = [[[139.7, 35.6], [139.8, 35.7]], [[139.7, 35.6], [139.7, 35.6]]]
    features = [{"type": "Feature", "properties": {}, "geometry": {"type": "LineString", "coordinates": x}} for x in lines]
    source.write_text(json.dumps({"type": "FeatureCollection", "features": features}), encoding="utf-8")
    done = run("import", source, sample)
    assert done.returncode == NOT_WRITTEN and "takes the place of no other archive" in done.stderr
    assert contents(sample.parent) == before
    assert run("import", source, tmp_path / "new.Ovb").returncode == PARTLY


def test_another_archives_sibling_is_never_taken(imported, tmp_path):
    for base in ("map", "Map"):
        assert run("convert", imported / "tokyo.Ovb", tmp_path / f"{base}.Ovb").returncode == DONE
    record = b"tokyo".ljust(51, b"\0") + struct.pack("<i", 1) + b"p".ljust(512, b"\0") + struct.pack("<dd", 5, 7)
    (tmp_path / "Map.Ovm").write_bytes(b"Orva Data Manage Version 1.10".ljust(40, b"\0") + record)
    assert info(tmp_path / "map.Ovb")["blocks"][0]["origin"] == [0, 0]
    assert info(tmp_path / "Map.Ovb")["blocks"][0]["origin"] == [5, 7]


@pytest.mark.parametrize("name", ["tokyo.Ovb", "other.OVT", "x.ovi"])
def test_an_export_never_takes_an_archives_name(sample, name):
    before = contents(sample.parent)
    done = run("export", sample, sample.parent / name, "--format", "GeoPackage", "--overwrite")
    assert done.returncode == USAGE and "archive's file" in done.stderr
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
