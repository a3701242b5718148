"""Archives as sets of files: which names they go by, how a version is chosen and recognised, and what a save writes."""

import os

import pytest
from archive_rig import (EXTENSIONS, OTHER, VERSIONS, after_read, archive_bytes, blk, bounds_of, codes, contents, dump, held,
                         item, lay,
                         names, painted, read, read_part, save, tables, write_set)
from map_rig import LINE, POINT

EACH_VERSION = pytest.mark.parametrize("version", VERSIONS)
BINARY = ["map.Ovb", "map.Ovi", "map.Ovl"]
A1 = blk(b"A", 1, item(1, (10, 20)), item(2, (30, 40)), path=b"a.pnt", origin=(100.0, 200.0))
B1 = blk(b"B", 1, item(3, (5, 6)))
IN_A = (b"A", 1, [1, 2])
IN_B = (b"B", 1, [3])


def small_map(path="a.pnt"):
    """One point layer with one item, in a block that has a path unless it is empty."""
    host = painted()
    assert host.control.DigMemAlloc2("A", 1, POINT, path, 1, 100.0, 200.0)
    host.add_item("A", 1, 1, [(10, 20)])
    return host


def versions_of(folder, base="map"):
    return {extension: content[len(title):][:4].decode() for extension, content in contents(folder, base).items()
            for title in [archive_bytes.TITLES[extension]]}


def wrong_title(content):
    return b"x" + content[1:]


# --- Names -------------------------------------------------------------------------------------------------------------------


def test_a_bare_name_is_not_read_though_the_files_exist(tmp_path):
    write_set(tmp_path, A1)
    host, ok = after_read(str(tmp_path / "map"))
    assert ok is False and held(host) == [] and codes(host) == []
    assert read(host, str(tmp_path / "map.ovb")) is True


@pytest.mark.parametrize("name", ["", "a", "ovb", "map.Ovl", "map.Ovi", "map.Ovm", "map.ovbx", "map.ov", "map.Ovb.", "map.Ovb ",
                                  "map_ovb"])
def test_a_name_with_another_ending_is_not_read(tmp_path, monkeypatch, name):
    write_set(tmp_path, A1, text_data=True)
    monkeypatch.chdir(tmp_path)
    host, ok = after_read(name)
    assert ok is False and codes(host) == []
    assert read_part(host, name, ["A"]) is False and codes(host) == []


@pytest.mark.parametrize("ending", ["ovb", "OVB", "Ovb", "oVB", "ovt", "OVT", "Ovt", "OvT"])
def test_the_ending_of_a_name_counts_in_any_case_and_the_files_carry_the_exact_extensions(tmp_path, ending):
    host = small_map()
    data = "Ovb" if ending.lower() == "ovb" else "Ovt"
    assert save(host, tmp_path / f"map.{ending}") is True
    assert names(tmp_path) == sorted(["map.Ovl", "map.Ovm", f"map.{data}"] + (["map.Ovi"] if data == "Ovb" else []))
    if data == "Ovt":
        assert save(host, tmp_path / "map.ovb") is True
    _, ok = after_read(str(tmp_path / f"map.{ending}"))
    assert ok is True


def test_a_save_to_a_bare_name_writes_the_binary_set_of_that_name(tmp_path):
    assert save(small_map(), tmp_path / "map") is True
    assert names(tmp_path) == [*BINARY, "map.Ovm"]
    assert after_read(str(tmp_path / "map"))[1] is False
    assert after_read(str(tmp_path / "map.Ovb"))[1] is True


@pytest.mark.parametrize("name", ["map.dat", "map.Ovl", "map.Ov", "a", "map.ovb.x"])
def test_a_save_under_another_ending_keeps_the_whole_name_as_base(tmp_path, name):
    assert save(small_map(), tmp_path / name) is True
    assert names(tmp_path) == [f"{name}.Ovb", f"{name}.Ovi", f"{name}.Ovl", f"{name}.Ovm"]


def test_only_the_last_ending_is_taken_off(tmp_path):
    assert save(small_map(), tmp_path / "map.ovt.ovb") is True
    assert names(tmp_path) == [f"map.ovt.{each}" for each in ("Ovb", "Ovi", "Ovl", "Ovm")]


@pytest.mark.parametrize("name", [".ovb", ""])
def test_a_name_that_is_an_ending_alone_or_nothing_has_an_empty_base(tmp_path, monkeypatch, name):
    monkeypatch.chdir(tmp_path)
    assert save(small_map(), name) is True
    assert names(tmp_path) == [".Ovb", ".Ovi", ".Ovl", ".Ovm"]
    assert after_read(".OVB")[1] is True


def test_a_second_byte_that_looks_like_a_separator_is_part_of_its_character(tmp_path):
    folder = tmp_path / "表ソ"
    folder.mkdir()
    host = small_map()
    assert save(host, folder / "能.ovb") is True
    assert names(folder) == ["能.Ovb", "能.Ovi", "能.Ovl", "能.Ovm"] and names(tmp_path) == ["表ソ"]
    back, ok = after_read(str(folder / "能.OVB"))
    assert ok is True and held(back) == [(b"A", 1, [1])]


def padded(folder, name, length):
    """A name of that length for a file in a folder."""
    steps = length - len(str(folder)) - len("/") - len(name)
    assert steps > 0
    return str(folder) + "/" + "/" * (steps % 2) + "./" * (steps // 2) + name


@pytest.mark.parametrize("behind", ["", "x", ".ovt", "y" * 1000])
def test_a_name_to_read_is_cut_at_2047_characters(tmp_path, behind):
    write_set(tmp_path, A1)
    name = padded(tmp_path, "map.ovb", 2047)
    assert len(name) == 2047
    host, ok = after_read(name + behind)
    assert ok is True and held(host) == [IN_A]
    assert read_part(painted(), name + behind, ["A"]) is True


def test_a_name_whose_ending_is_cut_off_is_not_read(tmp_path):
    write_set(tmp_path, A1)
    host, ok = after_read(padded(tmp_path, "map.ovb", 2048))
    assert ok is False and codes(host) == []


def test_a_name_to_save_is_not_cut(tmp_path):
    assert save(small_map(), padded(tmp_path, "map.ovb", 2500)) is True
    assert names(tmp_path) == [*BINARY, "map.Ovm"]


def test_files_whose_names_came_over_in_another_case_are_found(tmp_path):
    write_set(tmp_path, A1)
    for name in names(tmp_path):
        os.rename(tmp_path / name, tmp_path / name.upper())
    host, ok = after_read(str(tmp_path / "map.ovb"))
    assert ok is True and held(host) == [IN_A]
    assert dump(host)["blocks"][0]["path"] == b"a.pnt"


# --- The version of a save ---------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("asked, written", [("", "1.10"), ("1.10", "1.10"), ("1.00", "1.00")])
def test_no_version_asked_for_is_the_newer_one(tmp_path, asked, written):
    host = small_map()
    assert save(host, tmp_path / "map.OVB", asked) is True and save(host, tmp_path / "map.OVT", asked) is True
    assert versions_of(tmp_path) == {extension: written for extension in EXTENSIONS}


@pytest.mark.parametrize("asked", ["1", "1.0", "1.1", "1.01", "1.20", "2.00", "1.10 ", " 1.10", "1.100", "1.000", "V1.10", "x",
                                   " "])
@pytest.mark.parametrize("name", ["map.ovb", "map.ovt", "map"])
def test_any_other_version_writes_nothing(tmp_path, asked, name):
    assert save(small_map(), tmp_path / name, asked) is False
    assert names(tmp_path) == []


def test_a_refused_version_leaves_the_files_of_an_earlier_save(tmp_path):
    host = small_map()
    assert save(host, tmp_path / "map.ovb") is True
    before = contents(tmp_path)
    host.add_item("A", 1, 2, [(1, 1)])
    assert save(host, tmp_path / "map.ovb", "1.2") is False
    assert contents(tmp_path) == before


# --- What a save writes ------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("name", ["map.ovb", "map.ovt", "map"])
def test_a_map_without_a_layer_writes_no_file(tmp_path, name):
    assert save(painted(), tmp_path / name) is False
    assert names(tmp_path) == []


@pytest.mark.parametrize("name", ["map.ovb", "map.ovt"])
def test_a_map_of_layers_alone_writes_the_layer_file_and_answers_false(tmp_path, name):
    host = painted()
    assert host.control.OrvMakeLayer("A", LINE)
    assert save(host, tmp_path / name) is False
    assert names(tmp_path) == ["map.Ovl"]
    assert len(contents(tmp_path)["Ovl"]) == 40 + 1412


@pytest.mark.parametrize("name, data", [("map.ovb", "Ovb"), ("map.ovt", "Ovt")])
def test_a_map_whose_blocks_are_all_deleted_leaves_a_data_file_of_its_header_alone(tmp_path, name, data):
    host = small_map()
    assert host.DigMemDelete("A", 1)
    assert save(host, tmp_path / name) is False
    assert names(tmp_path) == sorted([f"map.{data}", "map.Ovl"])
    assert contents(tmp_path)[data] == (archive_bytes.header("Ovb", "1.10") if data == "Ovb"
                                        else b"Orva Data Text Version 1.10\r\n")


@EACH_VERSION
def test_a_map_without_paths_is_written_whole_and_answers_false_all_the_same(tmp_path, version):
    host = small_map(path="")
    assert save(host, tmp_path / "map.ovb", version) is False
    assert names(tmp_path) == BINARY
    back, ok = after_read(str(tmp_path / "map.ovb"))
    assert ok is True and held(back) == [(b"A", 1, [1])]
    assert back.control.OrvGetDatPnt("A", 1, 1) == (True, [10.0], [20.0]), "its origin is lost, and so its items move"
    assert host.control.OrvGetDatPnt("A", 1, 1) == (True, [110.0], [220.0])


def test_blocks_made_by_the_newer_name_have_no_path_and_save_with_false(tmp_path):
    host = painted()
    assert host.control.OrvAddLayer("A", 1, POINT, 1)
    host.add_item("A", 1, 1, [(10, 20)])
    assert save(host, tmp_path / "map.ovb") is False and save(host, tmp_path / "map.ovt") is False
    assert names(tmp_path) == [*BINARY, "map.Ovt"]


def test_only_blocks_with_a_path_stand_in_the_manage_file(tmp_path):
    host = small_map()
    host.control.OrvAddLayer("B", 1, POINT, 1)
    assert host.control.DigMemAlloc2("A", -2, POINT, "x", 1, -5.0, 7.0)
    assert save(host, tmp_path / "map.ovb") is True
    expected = [blk(b"A", 1, path=b"a.pnt", origin=(100.0, 200.0)), blk(b"A", -2, path=b"x", origin=(-5.0, 7.0))]
    assert contents(tmp_path)["Ovm"] == archive_bytes.manage_file("1.10", expected)


def test_a_block_without_items_takes_part_in_the_index_and_writes_no_data(tmp_path):
    host = painted()
    for code in ("A", "B", "C"):
        assert host.control.DigMemAlloc2(code, 1, POINT, code, 1, 0.0, 0.0)
    host.add_item("A", 1, 1, [(1, 2)])
    host.add_item("C", 1, 2, [(3, 4)])
    assert save(host, tmp_path / "map.ovb") is True
    told = archive_bytes.index_file("1.10", [blk(code, 1, *items) for code, *items in (
        (b"A", item(1, (1, 2))), (b"?",), (b"C", item(2, (3, 4))))])
    written, code_at = contents(tmp_path)["Ovi"], 48 + 91
    assert len(written) == len(told)
    assert written[:code_at] == told[:code_at]
    assert written[code_at + 51:] == told[code_at + 51:], "all but the code of the empty block, which has no meaning"
    assert held(after_read(str(tmp_path / "map.ovb"))[0]) == [(b"A", 1, [1]), (b"C", 1, [2])]


def test_a_map_of_one_empty_block_saves_and_its_read_answers_false(tmp_path):
    host = painted()
    assert host.control.DigMemAlloc2("A", 1, POINT, "a", 1, 0.0, 0.0)
    assert save(host, tmp_path / "map.ovb") is True
    assert contents(tmp_path)["Ovb"] == archive_bytes.header("Ovb", "1.10")
    back, ok = after_read(str(tmp_path / "map.ovb"))
    assert ok is False and held(back) == [] and codes(back) == [b"A"]


def test_blocks_are_written_in_the_order_of_the_array_and_not_of_the_drawing(tmp_path):
    host = painted()
    for dat_id, code in enumerate(("A", "B", "C"), 1):
        assert host.control.DigMemAlloc2(code, 1, POINT, code, dat_id, 0.0, 0.0)
        host.add_item(code, 1, dat_id, [(dat_id, dat_id)])
    assert host.DigMemDelete("B", 1) and host.control.DigMemAlloc2("D", 1, POINT, "D", 9, 0.0, 0.0)
    host.add_item("D", 1, 4, [(4, 4)])
    assert host.DigMemDelete("A", 1)
    assert save(host, tmp_path / "map.ovb") is True
    expected = [blk(code, 1, item(dat_id, (dat_id, dat_id)), path=code) for dat_id, code in ((4, b"D"), (3, b"C"))]
    assert {extension: contents(tmp_path)[extension] for extension in ("Ovb", "Ovi", "Ovm")} == {
        extension: content for extension, content in archive_bytes.files("1.10", [lay(b"A")], expected).items()
        if extension != "Ovl"}


def test_a_save_over_longer_files_leaves_nothing_of_them(tmp_path):
    host = small_map()
    assert save(host, tmp_path / "map.ovb") and save(host, tmp_path / "map.ovt")
    clean = contents(tmp_path)
    for name in names(tmp_path):
        (tmp_path / name).write_bytes(b"z" * 100000)
    assert save(host, tmp_path / "map.ovb") and save(host, tmp_path / "map.ovt")
    assert contents(tmp_path) == clean


def test_a_text_save_leaves_the_index_of_an_earlier_binary_save_and_is_read_with_it(tmp_path):
    host = small_map()
    assert save(host, tmp_path / "map.ovt") is True
    assert after_read(str(tmp_path / "map.ovt"))[1] is False, "a text archive alone is not read"
    assert save(host, tmp_path / "map.ovb") is True
    host.add_item("A", 1, 2, [(7, 8)])
    assert save(host, tmp_path / "map.ovt") is True
    back, ok = after_read(str(tmp_path / "map.ovt"))
    assert ok is True and held(back) == [IN_A]


def test_a_text_save_beside_an_index_of_the_other_version_is_not_read(tmp_path):
    host = small_map()
    assert save(host, tmp_path / "map.ovb", "1.00") is True and save(host, tmp_path / "map.ovt", "1.10") is True
    assert versions_of(tmp_path) == {"Ovl": "1.10", "Ovb": "1.00", "Ovi": "1.00", "Ovm": "1.10", "Ovt": "1.10"}
    back, ok = after_read(str(tmp_path / "map.ovt"))
    assert ok is False and codes(back) == []


def test_a_save_without_paths_leaves_the_manage_file_of_an_earlier_one(tmp_path):
    assert save(small_map(), tmp_path / "map.ovb") is True
    stale = contents(tmp_path)["Ovm"]
    assert save(small_map(path=""), tmp_path / "map.ovb") is False
    assert contents(tmp_path)["Ovm"] == stale
    back, ok = after_read(str(tmp_path / "map.ovb"))
    assert ok is True and dump(back)["blocks"][0]["path"] == b"a.pnt", "and a read takes its word"
    assert save(small_map(path=""), tmp_path / "map.ovb", "1.00") is False
    back, ok = after_read(str(tmp_path / "map.ovb"))
    assert ok is False and codes(back) == [], "of the other version it stands in the way of every read"


@pytest.mark.parametrize("name, blocked, left", [
    ("map.ovb", "Ovl", []), ("map.ovb", "Ovb", ["Ovl"]), ("map.ovb", "Ovi", ["Ovl", "Ovb"]), ("map.ovb", "Ovm", ["Ovl", "Ovb",
                                                                                                                 "Ovi"]),
    ("map.ovt", "Ovl", []), ("map.ovt", "Ovt", ["Ovl"]), ("map.ovt", "Ovm", ["Ovl", "Ovt"]),
])
@pytest.mark.parametrize("by", ["folder", "full disk"])
def test_a_file_that_cannot_be_written_ends_the_save_and_the_files_before_it_stay(tmp_path, name, blocked, left, by):
    host = small_map()
    assert save(host, tmp_path / "clean.ovb") and save(host, tmp_path / "clean.ovt")
    if by == "folder":
        (tmp_path / f"map.{blocked}").mkdir()
    elif os.path.exists("/dev/full"):
        os.symlink("/dev/full", tmp_path / f"map.{blocked}")
    else:
        pytest.skip("no device that is always full")
    before = dump(host)
    assert save(host, tmp_path / name) is False
    clean = contents(tmp_path, "clean")
    assert contents(tmp_path) == {extension: clean[extension] for extension in left}
    assert dump(host) == before


def test_a_save_into_a_folder_that_is_not_there_answers_false(tmp_path):
    assert save(small_map(), tmp_path / "no such folder" / "map.ovb") is False
    assert names(tmp_path) == []


def test_a_save_before_the_first_init_answers_false(tmp_path):
    from map_rig import Host
    assert save(Host(True), tmp_path / "map.ovb") is False
    assert names(tmp_path) == []


# --- Recognising the version -------------------------------------------------------------------------------------------------


@EACH_VERSION
@pytest.mark.parametrize("extension", ["Ovl", "Ovi", "Ovm"])
@pytest.mark.parametrize("text_data", [False, True], ids=["binary", "text"])
def test_a_sibling_of_the_other_version_fails_the_read_before_anything_is_merged(tmp_path, version, extension, text_data):
    content = archive_bytes.files(OTHER[version], [lay(b"A")], [A1])[extension]
    name = write_set(tmp_path, A1, version=version, text_data=text_data, **{extension: content})
    host, ok = after_read(name)
    assert ok is False and codes(host) == [] and held(host) == []
    assert read_part(host, name, ["A"]) is False and codes(host) == []


@pytest.mark.parametrize("extension", ["Ovl", "Ovb", "Ovi"])
def test_a_missing_sibling_fails_the_read_before_anything_is_merged(tmp_path, extension):
    name = write_set(tmp_path, A1, without=[extension])
    host, ok = after_read(name)
    assert ok is False and codes(host) == []
    assert read_part(host, name, ["A"]) is False and codes(host) == []


@EACH_VERSION
def test_a_missing_manage_file_is_no_error(tmp_path, version):
    name = write_set(tmp_path, A1, version=version, without=["Ovm"])
    host, ok = after_read(name)
    assert ok is True and held(host) == [IN_A]
    assert (dump(host)["blocks"][0]["path"], dump(host)["blocks"][0]["GX"]) == (b"", 0.0)
    assert read_part(painted(), name, ["A"]) is True


def test_a_text_archive_needs_no_binary_data_but_the_index(tmp_path):
    name = write_set(tmp_path, A1, text_data=True, without=["Ovb"])
    host, ok = after_read(name)
    assert ok is True and held(host) == [IN_A]
    (tmp_path / "map.Ovi").unlink()
    assert after_read(name)[1] is False


@pytest.mark.parametrize("version", ["1.20", "1.0\0", "0.00", "1,10", "    "])
def test_a_set_of_one_unknown_version_is_not_read(tmp_path, version):
    changed = {extension: content.replace(b"1.10", version.encode(), 1)
               for extension, content in archive_bytes.files("1.10", [lay(b"A")], [A1]).items()}
    changed["Ovt"] = archive_bytes.text_file("1.10", [A1]).replace(b"1.10", version.encode(), 1)
    name = write_set(tmp_path, A1, **changed)
    for each in (name, name.replace(".ovb", ".ovt")):
        host, ok = after_read(each)
        assert ok is False and codes(host) == []


@pytest.mark.parametrize("extension", ["Ovl", "Ovb", "Ovi", "Ovm"])
@pytest.mark.parametrize("by", ["folder", "link to itself"])
def test_a_sibling_that_is_there_and_cannot_be_opened_fails_the_read(tmp_path, extension, by):
    name = write_set(tmp_path, A1, without=[extension])
    blocked = tmp_path / f"map.{extension}"
    blocked.mkdir() if by == "folder" else os.symlink(blocked, blocked)
    host, ok = after_read(name)
    assert ok is False and codes(host) == [] and held(host) == []
    assert read_part(host, name, ["A"]) is False and codes(host) == []


def test_a_title_is_compared_without_regard_to_case(tmp_path):
    changed = {extension: content[:20].swapcase() + content[20:]
               for extension, content in archive_bytes.files("1.10", [lay(b"A")], [A1]).items()}
    name = write_set(tmp_path, A1, **changed)
    host, ok = after_read(name)
    assert ok is True and held(host) == [IN_A] and dump(host)["blocks"][0]["path"] == b"a.pnt"
    assert held_by_part(name, ["A"]) == (True, [IN_A])
    text = archive_bytes.text_file("1.10", [A1])
    assert after_read(write_set(tmp_path, A1, text_data=True, Ovt=text[:20].swapcase() + text[20:]))[1] is True


def held_by_part(name, wanted):
    host = painted()
    return read_part(host, name, wanted), held(host)


@EACH_VERSION
def test_a_wrong_title_fails_its_own_file_and_leaves_what_was_merged_before(tmp_path, version):
    files = archive_bytes.files(version, [lay(b"A"), lay(b"B")], [A1, B1])
    told = {"Ovl": (False, [], []), "Ovb": (False, [b"A", b"B"], []), "Ovi": (True, [b"A", b"B"], [IN_A, IN_B]),
            "Ovm": (False, [b"A", b"B"], [IN_A, IN_B])}
    for extension, expected in told.items():
        name = write_set(tmp_path, A1, B1, base=extension, version=version, **{extension: wrong_title(files[extension])})
        host, ok = after_read(name)
        assert (ok, codes(host), held(host)) == expected, extension


def test_a_whole_read_looks_at_nothing_of_the_index_but_its_header(tmp_path):
    content = archive_bytes.header("Ovi", "1.10")
    for body in (b"", b"\xff" * 7, b"\xff" * 8, b"\xff" * 500):
        name = write_set(tmp_path, A1, Ovi=content + body)
        host, ok = after_read(name)
        assert ok is True and held(host) == [IN_A]


# --- Merging -----------------------------------------------------------------------------------------------------------------


def test_layers_that_the_map_has_keep_their_looks_and_their_blocks_take_the_items_behind_their_own(tmp_path):
    host = painted()
    host.add_block("A", 1, LINE, 7)
    host.control.OrvSetLayColor("A", 0x123456)
    host.control.OrvSetSubLayer("A", "s", 3, True, 0, 1, 0, 0)
    host.add_item("A", 1, 2, [(1, 1)])
    kept = dump(host)["layers"][0]
    assert read(host, write_set(tmp_path, A1, B1, layers=[lay(b"A", color=5, layerName=b"other"), lay(b"B")])) is True
    assert dump(host)["layers"][0] == kept and codes(host) == [b"A", b"B"]
    assert held(host) == [(b"A", 1, [2, 1, 2]), IN_B], "equal IDs are no matter"


def test_the_bounds_of_a_block_that_the_map_has_are_widened_by_rectangles(tmp_path):
    host = painted()
    host.add_block("A", 1, POINT)
    host.add_item("A", 1, 9, [(15.5, 35.25)])
    assert read(host, write_set(tmp_path, A1)) is True
    assert bounds_of(host, b"A", 1) == (10.0, 20.0, 30.0, 40.0)
    empty = painted()
    empty.add_block("A", 1, POINT)
    assert read(empty, write_set(tmp_path, A1)) is True
    assert bounds_of(empty, b"A", 1) == (0.0, 0.0, 30.0, 40.0), "an empty block holds the origin"
    assert held(empty) == [IN_A]


def test_path_and_origin_of_a_block_that_the_map_has_become_those_of_the_archive(tmp_path):
    host = painted()
    assert host.control.DigMemAlloc2("A", 1, POINT, "old.pnt", 1, 5.0, 6.0)
    assert read(host, write_set(tmp_path, A1)) is True
    block = dump(host)["blocks"][0]
    assert (block["path"], block["GX"], block["GY"]) == (b"a.pnt", 100.0, 200.0)


def test_a_manage_record_without_a_block_is_dropped_and_of_two_the_later_stands(tmp_path):
    records = [A1, blk(b"A", 2, path=b"no such"), blk(b"a", 1, path=b"other case"), blk(b"A", 1, path=b"later", origin=(0.5,
                                                                                                                        0.25))]
    host, ok = after_read(write_set(tmp_path, A1, Ovm=archive_bytes.manage_file("1.10", records)))
    assert ok is True and held(host) == [IN_A]
    block = dump(host)["blocks"][0]
    assert (block["path"], block["GX"], block["GY"]) == (b"later", 0.5, 0.25)


def test_a_read_takes_free_blocks_first_the_lowest_first(tmp_path):
    host = painted()
    for code in ("P", "Q", "R"):
        host.add_block(code, 1, POINT)
    assert host.DigMemDelete("R", 1) and host.DigMemDelete("P", 1)
    assert read(host, write_set(tmp_path, A1, B1)) is True
    assert [(each["code"], each["meshNo"]) for each in dump(host)["blocks"]] == [(b"A", 1), (b"Q", 1), (b"B", 1)]
    assert dump(host)["blockCnt"] == 3


def test_a_read_does_not_sort_the_index(tmp_path):
    layers = [lay(b"A", index=1), lay(b"B", index=2)]
    host, _ = after_read(write_set(tmp_path, A1, B1, layers=layers))
    assert dump(host)["digIndex"] == [(0, 0), (1, 1)], "though the greater key is drawn first"
    host.control.OrvSortLayer()
    assert dump(host)["digIndex"] == [(1, 1), (0, 0)]


def test_a_read_before_the_first_init_answers_false(tmp_path):
    from map_rig import Host
    host = Host(True)
    before = tables(host)
    assert read(host, write_set(tmp_path, A1)) is False
    assert tables(host) == before
