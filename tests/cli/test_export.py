"""orvane4 export as a person uses it: an archive in, files of other systems out."""

import json
import os
import sqlite3
import subprocess

import pytest

PROGRAM = os.path.join(os.environ["ORVANE_BIN_DIR"], "orvane4")
SAMPLE = os.path.join(os.environ["ORVANE_SOURCE_DIR"], "samples", "tokyo.geojson")
DONE, NOT_READ, USAGE, PARTLY, NOT_WRITTEN = range(5)


def run(*args):
    return subprocess.run([PROGRAM, *map(str, args)], capture_output=True, text=True, encoding="utf-8", timeout=120)


@pytest.fixture(scope="module")
def archive(tmp_path_factory):
    """The sample as an archive of one layer."""
    path = tmp_path_factory.mktemp("archive") / "tokyo.Ovb"
    run("import", SAMPLE, path)
    if not path.exists():
        pytest.skip("this version cannot write an archive")
    return path


@pytest.fixture(scope="module")
def towns(tmp_path_factory):
    """The same with a layer for each municipality."""
    path = tmp_path_factory.mktemp("archive") / "towns.Ovb"
    run("import", SAMPLE, "--by", "N03_004", path)
    if not path.exists():
        pytest.skip("this version cannot write an archive")
    return path


def test_help_tells_formats_and_status():
    done = run("export", "--help")
    assert done.returncode == DONE
    for word in ("GeoPackage", "GeoJSON", "Shapefile", "FlatGeobuf", "--datum", "--zone", "--layer", "--overwrite", "Exit status"):
        assert word in done.stdout
    assert "export" in run("--help").stdout


def test_a_geopackage_has_the_items_and_the_coordinate_system(archive, tmp_path):
    out = tmp_path / "東京.gpkg"
    done = run("export", archive, out, "--datum", "JGD2011", "--zone", "9")
    assert done.returncode == DONE, done.stderr
    assert "GeoPackage, EPSG:6677" in done.stdout and f"tokyo: 53 features in {out}" in done.stdout
    with sqlite3.connect(out) as db:
        assert db.execute("select count(*), min(datID), max(datID), min(code) from tokyo").fetchone() == (53, 1, 53, "tokyo")
        assert db.execute("select srs_id from gpkg_contents").fetchall() == [(6677,)]
        box = db.execute("select min_x, min_y, max_x, max_y from gpkg_contents").fetchone()
    # West of the zone's origin, which lies at 139 degrees 50 minutes, and some 20 to 60 km to its south.
    assert -90_000 < box[0] < -70_000 and 0 < box[2] < 20_000 and -70_000 < box[1] < box[3] < -5_000
    assert os.listdir(tmp_path) == [out.name]


def test_an_export_that_is_imported_again_has_the_same_items(archive, tmp_path):
    for name in ("back.gpkg", "back.geojson", "back.fgb", "back.shp"):
        assert run("export", archive, tmp_path / name, "--datum", "JGD2011", "--zone", "9").returncode == DONE
        done = run("import", "--check", tmp_path / name)
        assert done.returncode == DONE, done.stderr
        rows = [row.split()[1:] for row in done.stdout.splitlines() if "polygons" in row]
        assert rows == [["polygons", "53", "4693"]], name


def test_without_a_datum_and_a_zone_none_is_named(archive, tmp_path):
    out = tmp_path / "out.geojson"
    done = run("export", archive, out)
    assert done.returncode == DONE
    assert "no coordinate system" in done.stdout and "longitude and latitude" in done.stderr
    collection = json.loads(out.read_text(encoding="utf-8"))
    assert "crs" not in collection and len(collection["features"]) == 53
    properties = collection["features"][0]["properties"]
    assert properties["code"] == "tokyo" and properties["datID"] == 1 and properties["meshNo"] == 1
    assert properties["color"].startswith("#") and properties["text"] is None


def test_layers_are_chosen_by_code(towns, tmp_path):
    out = tmp_path / "out.gpkg"
    done = run("export", towns, out, "--layer", "調布市", "--layer", "千代田区")
    assert done.returncode == DONE, done.stderr
    with sqlite3.connect(out) as db:
        names = {row[0] for row in db.execute("select table_name from gpkg_contents")}
    assert names == {"調布市", "千代田区"}


def test_many_layers_fill_a_folder_of_files(towns, tmp_path):
    out = tmp_path / "towns"
    done = run("export", towns, out, "--format", "flatgeobuf")
    assert done.returncode == DONE, done.stderr
    assert len(os.listdir(out)) == 53 and (out / "奥多摩町.fgb").exists()
    done = run("export", towns, tmp_path / "towns.fgb")
    assert done.returncode == USAGE and "holds one layer, and there are 53" in done.stderr
    assert os.listdir(tmp_path) == ["towns"]


def test_an_output_that_exists_is_kept_unless_told(archive, tmp_path):
    out = tmp_path / "out.fgb"
    out.write_text("mine")
    done = run("export", archive, out)
    assert done.returncode == NOT_WRITTEN and "exists; --overwrite replaces it" in done.stderr
    assert out.read_text() == "mine"
    assert run("export", archive, out, "--overwrite").returncode == DONE
    assert out.read_bytes().startswith(b"fgb") and os.listdir(tmp_path) == ["out.fgb"]


@pytest.mark.parametrize(
    "args, status, words",
    [
        (["out.gpkg", "--zone", "9"], USAGE, "both, a datum and a zone"),
        (["out.gpkg", "--datum", "JGD2011"], USAGE, "both, a datum and a zone"),
        (["out.gpkg", "--datum", "WGS84", "--zone", "9"], USAGE, "no such datum: WGS84"),
        (["out.gpkg", "--datum", "tokyo", "--zone", "20"], USAGE, "no such zone: 20"),
        (["out.gpkg", "--format", "CSV"], USAGE, "no such format: CSV"),
        (["out.gpkg", "--layer", "nowhere"], USAGE, "no such layer: nowhere"),
        (["out"], USAGE, "cannot tell a format"),
        (["no/out.gpkg"], NOT_WRITTEN, "there is no folder"),
    ],
)
def test_what_is_wrong_is_one_line_and_a_status(archive, tmp_path, args, status, words):
    done = run("export", archive, tmp_path / args[0], *args[1:])
    errors = [row for row in done.stderr.splitlines() if row.startswith("error: ")]
    assert done.returncode == status and len(errors) == 1 and words in errors[0], done.stderr
    assert done.stdout == "" and os.listdir(tmp_path) == []


def test_an_archive_that_cannot_be_read_has_its_own_status(tmp_path):
    (tmp_path / "bad.Ovb").write_bytes(b"nothing")
    for name, status in (("none.Ovb", NOT_READ), ("bad.Ovb", NOT_READ), ("bad", USAGE)):
        done = run("export", tmp_path / name, tmp_path / "out.gpkg")
        errors = [row for row in done.stderr.splitlines() if row.startswith("error: ")]
        assert done.returncode == status and len(errors) == 1, (name, done.stderr)
    assert os.listdir(tmp_path) == ["bad.Ovb"]


def test_wrong_usage_has_its_own_status(tmp_path):
    for args in ([], [tmp_path / "a.Ovb"], [tmp_path / "a.Ovb", tmp_path / "out.gpkg", "--zone", "nine"]):
        assert run("export", *args).returncode == USAGE
