"""Which districts does a circle around a place meet, which lie in it, and what of them? A notebook in cells (# %%).

    PYTHONPATH=build/release/python python3 samples/analysis/districts.py districts.png

The map: 「国土数値情報（行政区域データ）」（国土交通省）を加工して作成
"""

# %% The map: the municipalities of mainland Tokyo in mesh-frame units, about a metre each, one block for each sheet
import math
import pathlib
import sys

import orvane4

SAMPLES = pathlib.Path(__file__).resolve().parent.parent
picture = sys.argv[1]

c = orvane4.Orvane4Ctrl(width=1000, height=700)
c.OrvInit()
c.paint()
if not c.OrvGetOFileB(str(SAMPLES / "tokyo_mesh.Ovb")):
    sys.exit("the sample map cannot be read")
c.OrvSetLayColor("tokyo", 0xD8E0D0)  # blue, green, red
c.OrvSetLayActMode("tokyo", True)  # its features may be selected
c.AreaLeft, c.AreaRight = -1e7, 1e7  # how far the view may go; y counts downward here
c.AreaTop, c.AreaBottom = -1e7, 1e7
c.OrvDspFit2(2)  # what is tested is what is displayed
sheets = sorted({block["meshNo"] for block in c.dump()["blocks"]})

# %% A place, and a circle of 7 km around it
PLACE = (3158000.0, 4283000.0)
RADIUS = 7000.0
angles = [2 * math.pi * i / 72 for i in range(72)]
x = [PLACE[0] + RADIUS * math.cos(a) for a in angles]
y = [PLACE[1] + RADIUS * math.sin(a) for a in angles]
x.append(x[0])
y.append(y[0])

# %% Select by relation. The query stands on the left: "the circle contains the district"
def selected(relation):
    """Makes the districts in a relation to the circle active, and tells which they are: (sheet, ID)."""
    c.OrvTestArea(x, y, len(x), relation)
    if c.OrvGetActDatCnt() == 0:
        return []
    _, _, sheet, ids = c.OrvGetActDat()
    return sorted(zip(sheet, ids))


touched = selected(orvane4.OrvIntersects)
crossed = selected(orvane4.OrvOverlaps)
c.OrvTestPoint(*PLACE, orvane4.OrvWithin)
home = c.OrvGetActDatCnt()
within = selected(orvane4.OrvContains)  # the last one stays for the union below
print(f"intersects {len(touched)} contains {len(within)} overlaps {len(crossed)} around the place {home}")

# %% Merge what is selected now into one polygon of a layer of its own
c.OrvAddLayer("merged", 1, orvane4.OrvLTPolygon, 1)
merged, merged_ids = c.OrvActPolygonBuffering(1, "merged", 1)

# %% Cut the districts with the circle: a piece for each that it meets
c.OrvAddLayer("circle", 1, orvane4.OrvLTPolygon, 2)
c.OrvAddDatEx("circle", 1, 1, 0, x, y, [0.0] * len(x))
c.OrvAddLayer("pieces", 1, orvane4.OrvLTPolygon, 3)
pieces = []
for sheet in sheets:
    count, districts, _, ids = c.OrvPolygonBuffering(0, "tokyo", sheet, "circle", 1, "pieces", 1)
    if count > 0:
        pieces += zip([sheet] * count, districts, ids)


# %% Areas: rings stand one behind the other, holes run the other way round
def area(code, sheet, feature):
    _, px, py = c.OrvGetDatPnt(code, sheet, feature)
    total, opener = 0.0, 0
    for i in range(1, len(px)):
        if i - opener >= 2 and (px[i], py[i]) == (px[opener], py[opener]):
            total += abs(sum(px[k] * py[k + 1] - px[k + 1] * py[k] for k in range(opener, i))) / 2
            opener = i + 1
    return total


print(f"pieces {len(pieces)} of {sum(area('pieces', 1, piece) for _, _, piece in pieces) / 1e6:.4f} km2,"
      f" circle {area('circle', 1, 1) / 1e6:.4f} km2")
print(f"merged {merged} of {sum(area('merged', 1, i) for i in merged_ids or []) / 1e6:.4f} km2,"
      f" its districts {sum(area('tokyo', sheet, i) for sheet, i in within) / 1e6:.4f} km2")

# %% The picture: the districts, what was merged, the pieces in it
c.OrvSetLayDspMode("circle", False)
c.OrvSetLayColor("merged", 0x90C8F0)
c.OrvSetLayColor("pieces", 0x4090E0)
c.OrvDspFit2(2)
c.save_png(picture)
