"""What the tests of archives share: sets of files packed from the tables of the format, and the store after a read."""

import os
import pathlib
import sys

from map_rig import dump, painted, picked

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
GOLDEN = ROOT / "tests" / "golden" / "archive"
sys.path.insert(0, str(GOLDEN))
import archive_bytes  # noqa: E402
from archive_sets import box, blk, grid, item, lay, text  # noqa: E402,F401

VERSIONS = ("1.10", "1.00")
EXTENSIONS = ("Ovl", "Ovb", "Ovi", "Ovm", "Ovt")
OTHER = {"1.10": "1.00", "1.00": "1.10"}


def layers_of(blocks):
    """A point layer for each code, in order of appearance."""
    return [lay(code) for code in dict.fromkeys(each["code"] for each in blocks)]


def write_set(folder, *blocks, base="map", version="1.10", layers=None, text_data=False, without=(), **replaced):
    """Writes the set of these blocks and gives the name to read it by. `replaced` gives files their bytes, by extension."""
    layers = layers_of(blocks) if layers is None else layers
    files = archive_bytes.files(version, layers, blocks)
    if text_data:
        files["Ovt"] = archive_bytes.text_file(version, blocks)
    files.update(replaced)
    for extension, content in files.items():
        if extension not in without:
            (folder / f"{base}.{extension}").write_bytes(content)
    return str(folder / f"{base}.{'ovt' if text_data else 'ovb'}")


def names(folder):
    return sorted(os.listdir(folder))


def contents(folder, base="map"):
    """{extension: bytes} of the files of a set."""
    told = {extension: folder / f"{base}.{extension}" for extension in EXTENSIONS}
    return {extension: path.read_bytes() for extension, path in told.items() if path.is_file()}


def read(host, name):
    return host.control.OrvGetOFileB(name)


def read_part(host, name, codes, area=(0, 0, 0, 0)):
    return host.control.OrvGetOFileBEx(name, *map(float, area), codes)


def save(host, name, version=""):
    return host.control.OrvPutOFileB(str(name), version)


def after_read(name):
    """A fresh host after a read of its own, and the answer."""
    host = painted()
    return host, read(host, name)


def held(host):
    """The blocks in use with their items, in the order of the array: (code, mesh number, [IDs])."""
    return [(each["code"], each["meshNo"], [dat["datID"] for dat in each["dats"] or []])
            for each in dump(host)["blocks"] if each["blkState"] >= 0]


def codes(host):
    return [each["code"] for each in dump(host)["layers"]]


def tables(host):
    """What an archive can change: layers, blocks and index."""
    return {name: dump(host)[name] for name in ("layers", "blocks", "blockCnt", "digIndex")}


# --- The store after a read --------------------------------------------------------------------------------------------------


def expected_layer(each, version):
    lost = {"color2": 0, "imgPos": 0} if version == "1.00" else {}
    return {**each, **lost, "actFlg": 0, "editFlg": 0, "subLayCnt": 0, "subLayMax": 0, "subLays": []}


def as_text(value):
    return float("%.6f" % value)


def expected_string(it, number):
    narrowed = {name: archive_bytes.as_byte(it[name]) for name in ("size", "style", "pos")}
    return {**it, **narrowed, **{name: number(it[name]) for name in ("x", "y", "z", "angle")}}


def expected_mesh(mesh, text_data):
    return {**mesh, "useFlag": [int(each != 0) for each in mesh["useFlag"]] if text_data else mesh["useFlag"]}


def expected_item(each, version, text_data=False):
    number = as_text if text_data else float
    points = [tuple(map(number, point)) for point in each["pnts"] or []]
    mesh = each["meshAttr"] if version == "1.10" else None
    return {"datID": each["datID"], "lineTag": archive_bytes.as_byte(each["lineTag"]), "subLayNo": 0, "pntCnt": len(points),
            "clipFlg": 1, "drawnFlg": 0, "active": 0, "rect": each["rect"], "orgRect": each["rect"], "pnts": points,
            "orgPnts": None, "meshAttr": expected_mesh(mesh, text_data) if mesh else None,
            "str": expected_string(each["str"], number) if each["str"] else None}


def expected_block(each, version="1.10", text_data=False):
    """A block that a read has made. Its bounds are whole numbers, and an origin comes with a path only."""
    first, whole = [float(side) for side in each["items"][0]["rect"]], box(each["items"])
    bounds = dict(zip(("minX", "minY", "maxX", "maxY"), whole)) | dict(zip(("orgMinX", "orgMinY", "orgMaxX", "orgMaxY"), first))
    origin = {name: each[name] if each["path"] else 0.0 for name in ("GX", "GY")}
    return {"blkState": 1, "path": each["path"], "code": each["code"], "meshNo": each["meshNo"], "blkFlg": 0, "inView": 0,
            **origin,
            "orgGX": 0.0, "orgGY": 0.0, **bounds, "datCnt": len(each["items"]), "recCnt": 0, "datMax": 1000,
            "dats": [expected_item(dat, version, text_data) for dat in each["items"]]}


def assert_like(found, expected):
    """Every field that is expected, deep into lists and records; a record may hold more than that."""
    if isinstance(expected, dict):
        assert found is not None
        assert {name: type(found[name]) for name in expected if name not in found} == {}
        for name, value in expected.items():
            assert_like(found[name], value)
    elif isinstance(expected, (list, tuple)):
        assert len(found) == len(expected)
        for pair in zip(found, expected):
            assert_like(*pair)
    else:
        assert found == expected


def assert_read(host, layers, blocks, version="1.10", text_data=False):
    """The store holds these layers and blocks and nothing else, in this order and as a read makes them."""
    whole = dump(host)
    assert_like(whole["layers"], [expected_layer(each, version) for each in layers])
    assert_like(whole["blocks"], [expected_block(each, version, text_data) for each in blocks])
    order = [each["code"] for each in layers]
    assert whole["digIndex"] == [(at, order.index(each["code"])) for at, each in enumerate(blocks)]


def bounds_of(host, code, mesh_no):
    found = next(each for each in dump(host)["blocks"] if (each["code"], each["meshNo"]) == (code, mesh_no))
    return tuple(picked(found, ("minX", "minY", "maxX", "maxY")).values())
