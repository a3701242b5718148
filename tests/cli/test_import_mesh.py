"""orvane4 import --frame mesh, and the sample that it made."""

import json
import os
import subprocess

PROGRAM = os.path.join(os.environ["ORVANE_BIN_DIR"], "orvane4")
SAMPLES = os.path.join(os.environ["ORVANE_SOURCE_DIR"], "samples")
DONE, USAGE = 0, 2


def run(*args):
    return subprocess.run([PROGRAM, *map(str, args)], capture_output=True, text=True, encoding="utf-8", timeout=120)


def info(path):
    result = run("info", "--json", path)
    assert result.returncode == DONE, result.stderr
    return json.loads(result.stdout)


def point(path, longitude, latitude):
    geometry = {"type": "Point", "coordinates": [longitude, latitude]}
    feature = {"type": "Feature", "properties": {}, "geometry": geometry}
    path.write_text(json.dumps({"type": "FeatureCollection", "features": [feature]}), encoding="utf-8")
    return path


def test_the_sample_is_what_the_import_makes_of_its_source(tmp_path):
    made = tmp_path / "made.Ovb"
    result = run("import", "--frame", "mesh", os.path.join(SAMPLES, "tokyo.geojson"), made)
    assert result.returncode == DONE, result.stderr
    assert "mesh frame, 22 sheets, datum Tokyo" in result.stdout
    for suffix in ("Ovb", "Ovi", "Ovl"):
        with open(tmp_path / f"made.{suffix}", "rb") as ours, open(os.path.join(SAMPLES, f"tokyo_mesh.{suffix}"), "rb") as theirs:
            assert ours.read() == theirs.read(), suffix


def test_the_sample_lies_on_the_sheets_of_tokyo():
    left, bottom, right, top = info(os.path.join(SAMPLES, "tokyo_mesh.Ovb"))["bounds"]
    # Mainland Tokyo: 138 56' to 139 55' E, 35 30' to 35 54' N.
    assert (138.9 - 100) * 80000 < left < (139.0 - 100) * 80000 < right < (140.0 - 100) * 80000
    assert 35.45 * 120000 < bottom < 35.55 * 120000 < top < 35.95 * 120000


def test_the_datum_is_shifted_unless_it_is_to_be_kept(tmp_path):
    source = point(tmp_path / "a.geojson", 139.7, 35.7)
    bounds = []
    for name, options in (("shifted", []), ("kept", ["--keep-datum"])):
        made = tmp_path / f"{name}.Ovb"
        assert run("import", "--frame", "mesh", *options, source, made).returncode == DONE
        bounds.append(info(made)["bounds"])
    (shifted_x, shifted_y, *_), (kept_x, kept_y, *_) = bounds
    assert abs(kept_x - 39.7 * 80000) <= 1 and abs(kept_y - 35.7 * 120000) <= 1, "bounds are whole numbers"
    # Tokyo's latitudes are about 12 seconds less there and its longitudes 12 more.
    assert 200 < shifted_x - kept_x < 300
    assert -430 < shifted_y - kept_y < -350


def test_keeping_the_datum_goes_with_the_mesh_frame_alone(tmp_path):
    source = point(tmp_path / "a.geojson", 139.7, 35.7)
    for options in ([], ["--frame", "plane"]):
        result = run("import", "--keep-datum", *options, source, tmp_path / "a.Ovb")
        assert result.returncode == USAGE
        assert "--keep-datum goes with --frame mesh" in result.stderr
    assert not (tmp_path / "a.Ovb").exists()


def test_a_zone_goes_with_the_plane_alone(tmp_path):
    source = point(tmp_path / "a.geojson", 139.7, 35.7)
    result = run("import", "--frame", "mesh", "--zone", 9, source, tmp_path / "a.Ovb")
    assert result.returncode == USAGE
    assert "no zone" in result.stderr
    assert run("import", "--frame", "sphere", source).returncode == USAGE
