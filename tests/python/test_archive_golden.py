"""Archives kept as files, packed by hand from the tables of the format: read, they give the maps they were made from; saved,
those maps give the same bytes."""

import struct

import archive_rig
import pytest
from archive_rig import (EXTENSIONS, GOLDEN, VERSIONS, after_read, archive_bytes, assert_read, contents, dump, expected_item,
                         layers_of, names, painted, read, save, tables, write_set)
from map_rig import CIRCLE, ELLIPSE, LINE, MESH, POINT, POLYGON, TEXT
import archive_sets  # noqa: E402  (the rig makes its folder known)
from archive_sets import FULL_BLOCKS, FULL_LAYERS, GOTHIC, LONG_CODE, MADE_BLOCKS, MADE_LAYERS, ROAD

DIGITS = {"1.10": "110", "1.00": "100"}
EACH_VERSION = pytest.mark.parametrize("version", VERSIONS)

LAYER_OFFSETS = {
    "1.00": {"layerName": 51, "layIndex": 307, "layType": 311, "color": 315, "lineType": 319, "lineSize": 323, "pgnType": 327,
             "pntType": 331, "dspFlg": 335, "outLine": 336, "spareFlg": 337, "fillMode": 338, "imgMode": 339, "imgfname": 340,
             "imgactfname": 852, "bmWidth": 1364, "bmHeight": 1368, "imgMinScl": 1372, "imgMaxScl": 1380},
    "1.10": {"layerName": 51, "layIndex": 307, "layType": 311, "color": 315, "color2": 319, "lineType": 323, "lineSize": 327,
             "pgnType": 331, "pntType": 335, "dspFlg": 339, "outLine": 340, "spareFlg": 341, "fillMode": 342, "imgMode": 343,
             "imgPos": 344, "imgfname": 348, "imgactfname": 860, "bmWidth": 1372, "bmHeight": 1376, "imgMinScl": 1380,
             "imgMaxScl": 1388},
}


def kept(version, base="v"):
    return contents(GOLDEN, base + DIGITS[version])


def made_by_members():
    """The map of `v110` and `v100`, made as a host makes it. Rectangles and bounds come from the control."""
    host = painted()
    c = host.control
    c.DigMemAlloc2("P1", 533945, POINT, "D:\\map\\P533945.pnt", 5, -30000.0, 40000.0)
    c.OrvAddLayer(ROAD, 1, LINE, 3)
    c.DigMemAlloc2(LONG_CODE, -5, POLYGON, "C:\\表\\面.pgn", 9, 7.9, -8.9)
    c.DigMemAlloc2("C", 1, CIRCLE, "", 1, 500.0, 600.0)
    c.OrvAddLayer("T", 1, TEXT, -2147483648)
    c.DigMemAlloc2("E", 1, ELLIPSE, "e", 2147483647, 0.0, 0.0)
    c.OrvAddLayer("M", 1, MESH, 4)
    assert c.OrvMakeLayer("NO DATA", LINE)
    set_looks(c)
    for block in MADE_BLOCKS:
        for each in block["items"]:
            add_item(host, block["code"], block["meshNo"], each)
    set_texts(c)
    # What the files have no place for.
    c.OrvSetLayActMode("C", False)
    c.OrvSetLayEditFlg("C", True)
    assert c.OrvSetSubLayer("E", "sub", 3, True, 0, 1, 0, 0) and c.OrvSetDatSubLayer("E", 1, 1, 3)
    c.SetDigDatInfoEx("C", 1, 1, 0, True)
    return host


def set_looks(c):
    assert c.OrvSetLayerName("P1", "Points") and c.OrvSetLayColor("P1", 0x112233) and c.OrvSetLayColor2("P1", 0x445566)
    assert c.OrvSetLayLineType("P1", 3)
    assert c.OrvSetLayImage("P1", "画像\\表.bmp", "img\\active.bmp", 32, 24, 100.5, 50000.25)
    assert c.OrvDspLayImage("P1", True) and c.OrvSetLayImagePos("P1", 4)
    c.OrvSetLayDspMode(ROAD, False)
    assert c.OrvSetLayColor(ROAD, 0x00FF80) and c.OrvSetLayLineType(ROAD, 7) and c.OrvSetLayLineSize(ROAD, 3)
    assert c.OrvSetLayLineType(LONG_CODE, 9) and c.OrvSetLayPgnLine(LONG_CODE, 0, 2) and c.OrvSetLayPgnMode(LONG_CODE, 0)
    assert c.OrvSetLayIndex("NO DATA", 8)


def add_item(host, code, mesh_no, each):
    c, points = host.control, each["pnts"] or []
    if each["meshAttr"]:
        mesh = each["meshAttr"]
        assert c.OrvAddMeshDat(code, mesh_no, each["datID"], mesh["hcnt"], mesh["vcnt"], *map(list, zip(*points)))
        signed = [struct.unpack("<i", struct.pack("<I", color))[0] for color in mesh["meshColor"]]
        assert c.OrvSetMeshColor(code, mesh_no, each["datID"], signed)
        if set(mesh["useFlag"]) != {255}:
            assert c.OrvSetMeshUseFlag(code, mesh_no, each["datID"], mesh["useFlag"])
    else:
        assert c.OrvAddDat(code, mesh_no, each["datID"], each["lineTag"])
        for point in points:
            assert c.OrvAddDatPnt(code, mesh_no, each["datID"], *point)


def set_texts(c):
    assert c.OrvSetDatString("P1", 533945, 2, -3.9, -7.5, "two, and a comma")
    assert c.OrvSetDatString("T", 1, 1, 1.5, -2.5, "道路 A")
    assert c.OrvSetStrStyle("T", 1, 1, GOTHIC, 300, 7, 8, 12.5, True, True, True, 0x112233, 0xFF445566)
    assert c.OrvSetDatString("T", 1, 2, 3.0, 4.0, "")
    assert c.OrvSetDatString("M", 1, 1, 7.0, 8.0, "grid")


# --- The files themselves ----------------------------------------------------------------------------------------------------


def test_the_kept_files_are_what_the_packer_makes():
    told = archive_sets.kept_files()
    assert {path.name: path.read_bytes() for path in GOLDEN.glob("*.Ov?")} == told
    assert len(told) == 18


@EACH_VERSION
def test_every_record_has_its_size(version):
    it = MADE_BLOCKS[6]["items"][0]
    assert {len(archive_bytes.header(kind, version)) for kind in ("Ovm", "Ovi", "Ovl", "Ovb")} == {40}
    assert len(archive_bytes.layer_record(version, MADE_LAYERS[0])) == {"1.00": 1388, "1.10": 1412}[version]
    assert len(archive_bytes.head(version, b"A", 1, it)) == {"1.00": 81, "1.10": 86}[version]
    assert len(archive_bytes.mesh_part(it)) == 9 + 5 * 6
    assert len(archive_bytes.string_part(it)) == 115 + len("grid")
    assert len(archive_bytes.block_record(b"A", (0,) * 4, 0, 0)) == 91 and len(archive_bytes.item_record((0,) * 4, 0)) == 20
    assert len(archive_bytes.manage_record(MADE_BLOCKS[0])) == 583


@EACH_VERSION
def test_every_layer_field_stands_at_its_offset(version):
    plain = {**MADE_LAYERS[3], "dspFlg": 0, "outLine": 0, "spareFlg": 0, "fillMode": 0}
    before = archive_bytes.layer_record(version, plain)
    for name, offset in LAYER_OFFSETS[version].items():
        other = b"z" if isinstance(plain[name], bytes) else plain[name] + 1
        after = archive_bytes.layer_record(version, {**plain, name: other})
        changed = [at for at, (a, b) in enumerate(zip(before, after)) if a != b]
        width = 8 if isinstance(plain[name], float) else 4
        assert changed and offset <= changed[0] < offset + width and changed[-1] < offset + width, name


# --- Reading -----------------------------------------------------------------------------------------------------------------


@EACH_VERSION
def test_a_kept_archive_reads_as_the_map_it_was_made_from(version):
    host, ok = after_read(str(GOLDEN / f"v{DIGITS[version]}.Ovb"))
    assert ok is True
    assert_read(host, MADE_LAYERS, MADE_BLOCKS, version)


@EACH_VERSION
def test_fields_filled_to_the_last_byte_and_ends_of_ranges_come_in_whole_and_noise_is_ignored(version):
    host, ok = after_read(str(GOLDEN / f"full{DIGITS[version]}.Ovb"))
    assert ok is True
    assert_read(host, FULL_LAYERS, FULL_BLOCKS, version)


def test_a_kept_text_archive_reads_as_its_map_with_six_decimals_and_single_bits():
    host, ok = after_read(str(GOLDEN / "v110.Ovt"))
    assert ok is True
    assert_read(host, MADE_LAYERS, MADE_BLOCKS, "1.10", text_data=True)


def test_a_kept_text_archive_of_version_100_is_refused_after_its_layers():
    host, ok = after_read(str(GOLDEN / "v100.Ovt"))
    assert ok is False
    assert_read(host, MADE_LAYERS, [], "1.00")


@EACH_VERSION
def test_the_members_read_what_an_archive_gave(version):
    host, _ = after_read(str(GOLDEN / f"v{DIGITS[version]}.ovb"))
    c = host.control
    assert c.OrvGetLayDatCnt("P1", 533945) == 2
    assert c.OrvGetDatInfoEx("P1", 533945, 2) == (True, POINT, -1, 1, 0)
    assert c.OrvGetDatPntEx("P1", 533945, 2) == (True, [-30003.9], [39992.5], [12.5])
    assert c.OrvGetDatPnt(LONG_CODE, -5, -1) == (True, [7.0, 107.0, 107.0, 7.0], [-8.0, -8.0, 42.5, -8.0])
    assert c.GetLayPath(LONG_CODE, -5) == "C:\\表\\面.pgn"
    assert c.OrvGetDatPnt("C", 1, 1) == (True, [10.5], [20.5]), "the origin of a block without a path is lost"


@EACH_VERSION
@pytest.mark.parametrize("base", ["v", "full"])
def test_a_map_from_an_archive_can_be_drawn_whatever_its_grids_claim(version, base):
    host, ok = after_read(str(GOLDEN / f"{base}{DIGITS[version]}.ovb"))
    assert ok is True
    host.control.OrvDspFit()
    host.control.OrvReDraw()
    assert len(dump(host)["blocks"]) == len(MADE_BLOCKS if base == "v" else FULL_BLOCKS)


# --- Saving ------------------------------------------------------------------------------------------------------------------


@EACH_VERSION
@pytest.mark.parametrize("extension", ["Ovl", "Ovb", "Ovi", "Ovm"])
def test_a_map_made_by_members_saves_to_the_bytes_of_the_kept_binary_archive(tmp_path, version, extension):
    host = made_by_members()
    assert save(host, tmp_path / "map.ovb", version) is True
    assert names(tmp_path) == ["map.Ovb", "map.Ovi", "map.Ovl", "map.Ovm"]
    assert contents(tmp_path)[extension] == kept(version)[extension]


@EACH_VERSION
@pytest.mark.parametrize("extension", ["Ovl", "Ovt", "Ovm"])
def test_a_map_made_by_members_saves_to_the_bytes_of_the_kept_text_archive(tmp_path, version, extension):
    host = made_by_members()
    assert save(host, tmp_path / "map.ovt", version) is True
    assert names(tmp_path) == ["map.Ovl", "map.Ovm", "map.Ovt"]
    assert contents(tmp_path)[extension].split(b"\n") == kept(version)[extension].split(b"\n")


@EACH_VERSION
def test_a_noisy_archive_read_and_saved_gives_the_same_bytes_without_the_noise(tmp_path, version):
    host, ok = after_read(str(GOLDEN / f"full{DIGITS[version]}.Ovb"))
    assert ok is True and save(host, tmp_path / "map.ovb", version) is True
    lost = {"color2": 0, "imgPos": 0} if version == "1.00" else {}
    layers = [{**each, **lost} for each in FULL_LAYERS]
    assert contents(tmp_path) == archive_bytes.files(version, layers, FULL_BLOCKS)


@EACH_VERSION
def test_a_save_changes_nothing_in_the_map(tmp_path, version):
    host = made_by_members()
    before = dump(host)
    assert save(host, tmp_path / "map.ovb", version) and save(host, tmp_path / "map.ovt", version)
    assert dump(host) == before


def test_a_map_saved_and_read_is_the_same_map_but_for_what_the_format_drops(tmp_path):
    host = made_by_members()
    assert save(host, tmp_path / "map.ovb") is True
    back, ok = after_read(str(tmp_path / "map.ovb"))
    assert ok is True
    assert_read(back, MADE_LAYERS, MADE_BLOCKS)
    other, _ = after_read(str(GOLDEN / "v110.Ovb"))
    assert tables(back) == tables(other)


@EACH_VERSION
def test_one_line_of_text_holds_one_record(tmp_path, version):
    """The kept text file is split here by its own lines, so that it cannot agree with a wrong packer by joining two wrongs."""
    lines = (GOLDEN / f"v{DIGITS[version]}.Ovt").read_bytes().split(b"\r\n")
    assert lines[0] == b"Orva Data Text Version " + version.encode() and lines[-1] == b""
    assert lines[1:3] == [b"DH,P1,533945,1,20,10,21,10,1,0,0" + (b",0,0" if version == "1.10" else b""),
                          b"P,10.250000,20.750000,0.0"]
    counts = {key: sum(line.startswith(key + b",") for line in lines) for key in (b"DH", b"P", b"MH", b"M1", b"M2", b"SH", b"FN",
                                                                                  b"S")}
    meshes = 2 if version == "1.10" else 0
    assert counts == {b"DH": 11, b"P": 22, b"MH": meshes, b"M1": 4 * meshes, b"M2": 4 * meshes, b"SH": 4, b"FN": 4, b"S": 4}
    assert {line[:3] for line in lines if line} <= {b"Orv", b"DH,", b"MH,", b"M1,", b"M2,", b"SH,", b"FN,"} | {
        line[:3] for line in lines if line[:2] in (b"P,", b"S,")}


def test_a_text_read_and_saved_again_keeps_every_line_but_use_flags_and_heights_that_became_0(tmp_path):
    host, _ = after_read(str(GOLDEN / "v110.Ovt"))
    assert save(host, tmp_path / "map.ovt") is True
    changed = {b"M1,255": b"M1,1", b"P,5.500000,6.500000,0.000000": b"P,5.500000,6.500000,0.0"}
    expected = [changed.get(line, line) for line in kept("1.10")["Ovt"].split(b"\r\n")]
    assert contents(tmp_path)["Ovt"].split(b"\r\n") == expected
    assert contents(tmp_path)["Ovm"] == kept("1.10")["Ovm"] and contents(tmp_path)["Ovl"] == kept("1.10")["Ovl"]


@EACH_VERSION
def test_a_second_read_of_the_same_archive_adds_every_item_once_more(tmp_path, version):
    name = str(GOLDEN / f"v{DIGITS[version]}.Ovb")
    host, _ = after_read(name)
    assert read(host, name) is True
    whole = dump(host)
    assert len(whole["layers"]) == len(MADE_LAYERS) and len(whole["blocks"]) == len(MADE_BLOCKS)
    for found, block in zip(whole["blocks"], MADE_BLOCKS):
        expected = [expected_item(each, version) for each in block["items"]] * 2
        archive_rig.assert_like(found["dats"], expected)


def test_sets_of_the_rig_are_sets_as_the_kept_ones(tmp_path):
    write_set(tmp_path, *MADE_BLOCKS, layers=MADE_LAYERS, text_data=True)
    assert contents(tmp_path) == kept("1.10") and set(contents(tmp_path)) == set(EXTENSIONS)
    assert layers_of(MADE_BLOCKS)[0]["code"] == b"P1"
