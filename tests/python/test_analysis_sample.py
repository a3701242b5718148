"""The notebook of samples/analysis, run as a reader would, and what it tells beside plain sums over the sample map."""

import math
import os
import pathlib
import re
import subprocess
import sys

import orvane4

SAMPLES = pathlib.Path(os.environ["ORVANE_SOURCE_DIR"]) / "samples"
PLACE, RADIUS, CORNERS = (3158000.0, 4283000.0), 7000.0, 72


def circle():
    angles = [2 * math.pi * i / CORNERS for i in range(CORNERS)]
    return [(PLACE[0] + RADIUS * math.cos(a), PLACE[1] + RADIUS * math.sin(a)) for a in angles]


def contains(ring, x, y):
    """Whether a ray to the right crosses the ring an odd number of times."""
    odd = False
    for (x1, y1), (x2, y2) in zip(ring, ring[1:] + ring[:1]):
        if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
            odd = not odd
    return odd


def area(ring):
    return abs(sum(x1 * y2 - x2 * y1 for (x1, y1), (x2, y2) in zip(ring, ring[1:] + ring[:1]))) / 2


def districts():
    """The outer ring of each feature of the sample map."""
    c = orvane4.Orvane4Ctrl()
    c.OrvInit()
    c.paint()
    assert c.OrvGetOFileB(str(SAMPLES / "tokyo_mesh.Ovb"))
    rings = []
    for block in c.dump()["blocks"]:
        for dat in block["dats"]:
            points = [(x, y) for x, y, _ in dat["pnts"]]
            rings.append(points[: points.index(points[0], 1)])
    return rings


def test_the_notebook_tells_the_districts_and_areas_that_plain_sums_find(tmp_path):
    picture = tmp_path / "districts.png"
    script = SAMPLES / "analysis" / "districts.py"
    told = subprocess.run([sys.executable, script, picture], check=True, timeout=120, capture_output=True, text=True).stdout
    intersects, within, overlaps, home = map(int, re.search(r"intersects (\d+) contains (\d+) overlaps (\d+) .* (\d+)\n", told).groups())
    count, pieces_km2, circle_km2 = re.search(r"pieces (\d+) of ([\d.]+) km2, circle ([\d.]+) km2", told).groups()
    merged, merged_km2, parts_km2 = re.search(r"merged (\d) of ([\d.]+) km2, its districts ([\d.]+) km2", told).groups()

    disc = circle()
    inside = [all(contains(disc, x, y) for x, y in ring) for ring in districts()]
    meets = [any(contains(disc, x, y) for x, y in ring) or any(contains(ring, x, y) for x, y in disc) for ring in districts()]
    assert (within, intersects) == (sum(inside), sum(meets))
    assert 0 < within < intersects == within + overlaps
    assert home == sum(contains(ring, *PLACE) for ring in districts()) == 1

    # The circle lies on land, which the districts cover without a gap: the pieces make up the whole of it.
    assert int(count) == intersects
    assert float(circle_km2) == round(area(disc) / 1e6, 4)
    assert abs(float(pieces_km2) - float(circle_km2)) < 2e-4
    assert int(merged) == 1
    sum_km2 = sum(area(ring) for ring, is_inside in zip(districts(), inside) if is_inside) / 1e6
    assert abs(float(merged_km2) - sum_km2) < 2e-4 and abs(float(parts_km2) - sum_km2) < 2e-4
    assert picture.read_bytes()[:8] == b"\x89PNG\r\n\x1a\n" and picture.stat().st_size > 5000
