"""The data of an archive, item by item: what survives a save in each version and form, and what a reader makes of each record."""

import pytest
from archive_rig import (VERSIONS, after_read, archive_bytes, blk, bounds_of, codes, contents, dump, grid, held, item, lay, names,
                         painted, read, save, text, write_set)
from map_rig import LINE, MESH, POINT, TEXT, picked

EACH_VERSION = pytest.mark.parametrize("version", VERSIONS)
READABLE = pytest.mark.parametrize("version, ending", [("1.10", "ovb"), ("1.00", "ovb"), ("1.10", "ovt")])
PATH = ("p", 1, 0.0, 0.0)


def there_and_back(host, folder, version, ending):
    """The map after a save and a read into a fresh one. A text archive gets the index that a binary save leaves beside it."""
    assert save(host, folder / "map.ovb", version) is True
    if ending == "ovt":
        assert save(host, folder / "map.ovt", version) is True
    back, ok = after_read(str(folder / f"map.{ending}"))
    assert ok is True
    return back


def one_item(lay_type=POINT, points=((1, 2),), tag=0):
    host = painted()
    assert host.control.DigMemAlloc2("A", 1, lay_type, *PATH)
    host.add_item("A", 1, 7, points, tag)
    return host


def first_item(host):
    return dump(host)["blocks"][0]["dats"][0]


# --- What survives -----------------------------------------------------------------------------------------------------------


@READABLE
@pytest.mark.parametrize("tag, kept", [(200, -56), (-1, -1), (127, 127), (128, -128), (-128, -128), (-129, 127), (255, -1), (256,
                                                                                                                             0),
                                       (2147483647, -1), (-2147483648, 0)])
def test_a_line_tag_is_cut_to_a_signed_byte(tmp_path, version, ending, tag, kept):
    assert first_item(there_and_back(one_item(tag=tag), tmp_path, version, ending))["lineTag"] == kept


@READABLE
@pytest.mark.parametrize("number, kept", [(127, 127), (128, -128), (300, 44), (-1, -1), (256, 0), (-2147483648, 0)])
def test_size_style_and_anchor_of_a_text_are_cut_to_signed_bytes(tmp_path, version, ending, number, kept):
    host = one_item(TEXT)
    assert host.control.OrvSetDatString("A", 1, 7, 1.0, 2.0, "abc")
    assert host.control.OrvSetStrStyle("A", 1, 7, "Face", number, number, number, 0.0, False, True, False, 0, 0)
    back = first_item(there_and_back(host, tmp_path, version, ending))
    assert picked(back["str"], ("size", "style", "pos", "text")) == {"size": kept, "style": kept, "pos": kept, "text": b"abc"}


@READABLE
def test_sub_layer_and_active_state_of_an_item_are_lost(tmp_path, version, ending):
    host = one_item()
    assert host.control.OrvSetSubLayer("A", "s", 3, True, 0, 1, 0, 0) and host.control.OrvSetDatSubLayer("A", 1, 7, 3)
    host.control.SetDigDatInfoEx("A", 1, 7, 4, True)
    told = {"subLayNo": 0, "active": 0, "clipFlg": 1, "drawnFlg": 0, "lineTag": 4, "rect": (1, 2, 1, 2), "orgRect": (1, 2, 1, 2)}
    assert picked(first_item(there_and_back(host, tmp_path, version, ending)), told) == told


@READABLE
def test_an_item_without_points_writes_none_and_comes_back_without(tmp_path, version, ending):
    host = one_item(points=())
    host.add_item("A", 1, 8, [(3, 4)])
    back = there_and_back(host, tmp_path, version, ending)
    assert held(back) == [(b"A", 1, [7, 8])]
    assert (first_item(back)["pntCnt"], first_item(back)["pnts"] or []) == (0, [])
    data = contents(tmp_path)
    assert len(data["Ovb"]) == 40 + 2 * archive_bytes.HEAD_SIZE[version] + 24
    if ending == "ovt":
        assert data["Ovt"].count(b"\r\nP,") == 1


@READABLE
def test_an_empty_text_stays_a_text(tmp_path, version, ending):
    host = one_item()
    assert host.control.OrvSetDatString("A", 1, 7, 5.0, 6.0, "")
    back = there_and_back(host, tmp_path, version, ending)
    assert picked(first_item(back)["str"], ("text", "x", "y", "size")) == {"text": b"", "x": 5.0, "y": 6.0, "size": 10}
    data = contents(tmp_path)
    assert data["Ovb"].endswith(b"\0\0\0\0") and len(data["Ovb"]) == 40 + archive_bytes.HEAD_SIZE[version] + 24 + 115
    if ending == "ovt":
        assert data["Ovt"].endswith(b"\r\nFN,\r\nS,\r\n")


def test_a_mesh_saved_as_version_100_comes_back_with_its_points_alone(tmp_path):
    host = painted()
    assert host.control.DigMemAlloc2("M", 1, MESH, *PATH)
    assert host.control.OrvAddMeshDat("M", 1, 7, 2, 2, [0, 1, 0, 1], [0, 0, 1, 1], [5, 6, 7, 8])
    back = there_and_back(host, tmp_path, "1.00", "ovb")
    assert picked(first_item(back), ("pntCnt", "meshAttr")) == {"pntCnt": 4, "meshAttr": None}
    assert first_item(back)["pnts"] == [(0, 0, 5), (1, 0, 6), (0, 1, 7), (1, 1, 8)]
    assert len(contents(tmp_path)["Ovb"]) == 40 + 81 + 4 * 24
    whole = first_item(there_and_back(host, tmp_path, "1.10", "ovb"))
    assert whole["meshAttr"] == {"hcnt": 2, "vcnt": 2, "useFlag": [255] * 4, "meshColor": [0] * 4}


@EACH_VERSION
def test_second_colour_and_image_place_come_back_from_the_newer_version_only(tmp_path, version):
    host = one_item()
    assert host.control.OrvSetLayColor2("A", 0x123456) and host.control.OrvSetLayImagePos("A", 4)
    back = dump(there_and_back(host, tmp_path, version, "ovb"))["layers"][0]
    assert (back["color2"], back["imgPos"]) == ((0x123456, 4) if version == "1.10" else (0, 0))


def test_text_writes_a_height_of_0_in_short_and_keeps_six_decimals(tmp_path):
    host = one_item(LINE, [(1.23456789, -0.0000004, 0.0), (1e15, 2.5, -0.0), (0.5, 0.25, 0.0000001), (0, 0, -12.5)])
    text_back = there_and_back(host, tmp_path, "1.10", "ovt")
    lines = contents(tmp_path)["Ovt"].split(b"\r\n")[2:6]
    assert lines == [b"P,1.234568,-0.000000,0.0", b"P,1000000000000000.000000,2.500000,0.0", b"P,0.500000,0.250000,0.000000",
                     b"P,0.000000,0.000000,-12.500000"]
    assert first_item(text_back)["pnts"] == [(1.234568, 0, 0), (1e15, 2.5, 0), (0.5, 0.25, 0), (0, 0, -12.5)]
    assert first_item(after_read(str(tmp_path / "map.ovb"))[0])["pnts"] == first_item(host)["pnts"]


def test_a_use_flag_of_255_stays_a_byte_in_binary_and_becomes_1_in_text(tmp_path):
    host = painted()
    assert host.control.DigMemAlloc2("M", 1, MESH, *PATH)
    assert host.control.OrvAddMeshDat("M", 1, 7, 2, 1, [0, 1], [0, 0], [0, 0])
    assert first_item(there_and_back(host, tmp_path, "1.10", "ovb"))["meshAttr"]["useFlag"] == [255, 255]
    assert first_item(there_and_back(host, tmp_path, "1.10", "ovt"))["meshAttr"]["useFlag"] == [1, 1]
    assert b"\r\nM1,255\r\nM1,255\r\nM2,0\r\n" in contents(tmp_path)["Ovt"]


def test_a_text_with_a_line_break_survives_in_binary_and_not_in_text(tmp_path):
    host = one_item()
    assert host.control.OrvSetDatString("A", 1, 7, 0.0, 0.0, "one\r\ntwo")
    host.add_item("A", 1, 8, [(3, 4)])
    assert first_item(there_and_back(host, tmp_path, "1.10", "ovb"))["str"]["text"] == b"one\r\ntwo"
    back = there_and_back(host, tmp_path, "1.10", "ovt")
    assert held(back) == [(b"A", 1, [7])], "what stands behind the break is no item, and so the end"
    # The writer turns each line feed into a line end, so the carriage return before it stays with the text.
    assert first_item(back)["str"]["text"] == b"one\r"


def test_a_text_of_commas_and_japanese_characters_comes_back_from_text(tmp_path):
    host = one_item()
    content = "S,DH,表ソ,,能 "
    assert host.control.OrvSetDatString("A", 1, 7, 0.0, 0.0, content)
    assert host.control.OrvSetFontName("A", 1, "ＭＳ 明朝")
    back = first_item(there_and_back(host, tmp_path, "1.10", "ovt"))["str"]
    assert (back["text"], back["fntname"]) == (content.encode("cp932"), "ＭＳ 明朝".encode("cp932"))


@pytest.mark.parametrize("length", [64, 65, 200])
def test_a_font_name_has_64_bytes_in_the_binary_file(tmp_path, length):
    host = one_item()
    assert host.control.OrvSetDatString("A", 1, 7, 0.0, 0.0, "abc") and host.control.OrvSetFontName("A", 1, "f" * length)
    back = first_item(there_and_back(host, tmp_path, "1.10", "ovb"))["str"]
    assert (back["fntname"], back["text"]) == (b"f" * 64, b"abc")
    assert len(contents(tmp_path)["Ovb"]) == 40 + 86 + 24 + 115 + 3


# --- Blocks that a read makes ------------------------------------------------------------------------------------------------


@READABLE
def test_a_read_block_has_whole_bounds_and_keeps_those_of_its_first_item_aside(tmp_path, version, ending):
    host = one_item(LINE, [(1.5, 2.5), (3.75, 4.25)])
    host.add_item("A", 1, 8, [(-7.5, 90.5)])
    back = there_and_back(host, tmp_path, version, ending)
    first, second = (each["rect"] for each in dump(host)["blocks"][0]["dats"])
    told = {"minX": second[0], "minY": first[1], "maxX": first[2], "maxY": second[3], "orgMinX": first[0], "orgMinY": first[1],
            "orgMaxX": first[2], "orgMaxY": first[3], "blkFlg": 0, "inView": 0, "recCnt": 0, "datCnt": 2, "datMax": 1000,
            "blkState": 1}
    assert picked(dump(back)["blocks"][0], told) == told
    assert (first, second) == ((1, 2, 4, 4), (-7, 90, -7, 91))


@EACH_VERSION
@pytest.mark.parametrize("count, capacity", [(1, 1000), (1000, 1000), (1001, 2000), (2001, 3000)])
def test_items_take_room_in_steps_of_1000(tmp_path, version, count, capacity):
    name = write_set(tmp_path, blk(b"A", 1, *(item(each, (each, each)) for each in range(count))), version=version)
    host, ok = after_read(name)
    assert ok is True and picked(dump(host)["blocks"][0], ("datCnt", "datMax")) == {"datCnt": count, "datMax": capacity}
    assert held(host) == [(b"A", 1, list(range(count)))]


def test_items_behind_1000_that_the_map_has_take_1000_more(tmp_path):
    host = painted()
    host.add_block("A", 1, POINT)
    for dat_id in range(1000):
        host.AddDigDat("A", 1, dat_id, 0)
    assert read(host, write_set(tmp_path, blk(b"A", 1, item(5, (0, 0))))) is True
    assert picked(dump(host)["blocks"][0], ("datCnt", "datMax")) == {"datCnt": 1001, "datMax": 2000}


def test_items_of_one_block_need_not_stand_together(tmp_path):
    host, ok = after_read(write_set(tmp_path, blk(b"A", 1, item(1, (0, 0))), blk(b"A", 2, item(2, (0, 0))), blk(b"A", 1,
                                                                                                                item(3, (9, 9)))))
    assert ok is True and held(host) == [(b"A", 1, [1, 3]), (b"A", 2, [2])]
    assert bounds_of(host, b"A", 1) == (0, 0, 9, 9)


@pytest.mark.parametrize("text_data", [False, True])
def test_every_item_of_a_code_without_a_layer_makes_a_block_of_its_own(tmp_path, text_data):
    blocks = [blk(b"A", 1, item(1, (0, 0))), blk(b"Z", 1, item(2, (1, 1)), item(3, (2, 2)), path=b"z"), blk(b"A", 1,
                                                                                                            item(4, (3, 3)))]
    host, ok = after_read(write_set(tmp_path, *blocks, layers=[lay(b"A")], text_data=text_data))
    assert ok is True
    assert held(host) == [(b"A", 1, [1, 4]), (b"Z", 1, [2]), (b"Z", 1, [3])] and dump(host)["blockCnt"] == 3
    assert dump(host)["digIndex"] == [(0, 0), (1, 1), (2, 1)], "two entries for the first unused layer"
    assert host.control.OrvGetLayDatCnt("Z", 1) == 0 and host.control.OrvGetLayDatCnt("A", 1) == 2
    assert [each["path"] for each in dump(host)["blocks"]] == [b"", b"", b""], "nor does the manage file find them"


def test_a_layer_made_later_takes_the_place_that_the_lost_blocks_point_at(tmp_path):
    host, _ = after_read(write_set(tmp_path, blk(b"Z", 1, item(2, (1, 1)), item(3, (2, 2))), layers=[lay(b"A")]))
    assert host.control.OrvGetLayDatCnt("Z", 1) == 0
    assert host.control.OrvMakeLayer("Z", POINT) and codes(host) == [b"A", b"Z"]
    assert host.control.OrvGetLayDatCnt("Z", 1) == 1 and host.control.OrvGetDatInfo("Z", 1, 0) == 2, "the first entry of the two"


@EACH_VERSION
def test_data_of_a_header_alone_answer_false_though_nothing_is_wrong(tmp_path, version):
    name = write_set(tmp_path, version=version, layers=[lay(b"A")])
    host, ok = after_read(name)
    assert ok is False and codes(host) == [b"A"] and held(host) == []
    assert names(tmp_path) == ["map.Ovb", "map.Ovi", "map.Ovl"]


def test_a_text_file_of_its_first_line_alone_answers_false(tmp_path):
    host, ok = after_read(write_set(tmp_path, layers=[lay(b"A")], text_data=True))
    assert ok is False and codes(host) == [b"A"]


@EACH_VERSION
@pytest.mark.parametrize("value", [0, 1, 2, 128, 255])
def test_flags_of_a_text_become_bits_and_use_flags_stay_bytes(tmp_path, version, value):
    it = item(1, (0, 0), mesh=grid(1, 1, [value], [7]) if version == "1.10" else None, text=text(b"abc", fill=1, uline=1,
                                                                                                 strike=1))
    record = bytearray(archive_bytes.data_record(version, b"A", 1, it))
    at = len(record) - 115 - 3
    for field in (91, 93, 94):
        assert record[at + field] == 1
        record[at + field] = value
    name = write_set(tmp_path, blk(b"A", 1, it), version=version, Ovb=archive_bytes.header("Ovb", version) + bytes(record))
    host, ok = after_read(name)
    assert ok is True
    assert picked(first_item(host)["str"], ("fill", "uline", "strike")) == dict.fromkeys(("fill", "uline", "strike"),
                                                                                         int(value != 0))
    if version == "1.10":
        assert first_item(host)["meshAttr"]["useFlag"] == [value]


# --- Lines of text -----------------------------------------------------------------------------------------------------------

THREE = blk(b"A", 1, item(1, (1, 2)), item(2, (3, 4)), item(3, (5, 6)))
LINES = [b"Orva Data Text Version 1.10", b"DH,A,1,1,2,1,2,1,1,0,0,0,0", b"P,1.0,2.0,0.0", b"DH,A,1,2,4,3,4,3,1,0,0,0,0",
         b"P,3.0,4.0,0.0",
         b"DH,A,1,3,6,5,6,5,1,0,0,0,0", b"P,5.0,6.0,0.0"]


def read_lines(folder, lines, line_end=b"\r\n", last=True):
    content = line_end.join(lines) + (line_end if last else b"")
    return after_read(write_set(folder, THREE, text_data=True, Ovt=content))


@pytest.mark.parametrize("line_end", [b"\r\n", b"\n"])
@pytest.mark.parametrize("last", [True, False])
def test_lines_end_in_either_way_and_the_last_may_lack_its_end(tmp_path, line_end, last):
    host, ok = read_lines(tmp_path, LINES, line_end, last)
    assert ok is True and held(host) == [(b"A", 1, [1, 2, 3])]
    assert [each["pnts"] for each in dump(host)["blocks"][0]["dats"]] == [[(1, 2, 0)], [(3, 4, 0)], [(5, 6, 0)]]


@pytest.mark.parametrize("line", [b"dh,A,1,2,4,3,4,3,1,0,0,0,0", b"", b"XX", b"D", b" DH,A,1,2,4,3,4,3,1,0,0,0,0", b"P,1,2,3",
                                  b"# DH"])
def test_a_line_that_does_not_begin_an_item_ends_the_read_quietly(tmp_path, line):
    host, ok = read_lines(tmp_path, [*LINES[:3], line, *LINES[3:]])
    assert ok is True and held(host) == [(b"A", 1, [1])]
    host, ok = read_lines(tmp_path, [LINES[0], line, *LINES[1:]])
    assert ok is False and held(host) == [] and codes(host) == [b"A"]


@pytest.mark.parametrize("point", [b"p,3.0,4.0,0.0", b"P,3.0,4.0", b"P", b"", b"PP,3.0,4.0,0.0", b"DH,A,1,3,6,5,6,5,1,0,0,0,0",
                                   b"Q,1,2,3"])
def test_a_point_line_that_is_none_ends_the_read_with_the_items_before_it(tmp_path, point):
    host, ok = read_lines(tmp_path, [*LINES[:4], point, *LINES[5:]])
    assert ok is True and held(host) == [(b"A", 1, [1])]


@pytest.mark.parametrize("fields", range(1, 13))
def test_a_head_that_lacks_a_field_ends_the_read(tmp_path, fields):
    short = b",".join(LINES[3].split(b",")[:fields])
    host, ok = read_lines(tmp_path, [*LINES[:3], short, *LINES[4:]])
    assert ok is True and held(host) == [(b"A", 1, [1])]


def test_empty_fields_do_not_count(tmp_path):
    host, ok = read_lines(tmp_path, [LINES[0], b"DH,,A,1,,,7,2,1,2,1,1,0,0,0,0", b"P,,1.5,,2.5,0.0", *LINES[3:]])
    assert ok is True and held(host) == [(b"A", 1, [7, 2, 3])]
    assert first_item(host)["pnts"] == [(1.5, 2.5, 0)]


def test_a_comma_in_a_code_shifts_the_fields(tmp_path):
    host, ok = read_lines(tmp_path, [LINES[0], b"DH,A,B,9,8,7,6,5,0,0,0,0,0,0"])
    assert ok is True and held(host) == [(b"A", 0, [9])]
    assert first_item(host)["rect"] == (7, 8, 5, 6)


def test_numbers_are_taken_as_far_as_they_go(tmp_path):
    host, ok = read_lines(tmp_path, [LINES[0], b"DH,A,1x,7y,+2,-3,4.9,zero,1,0,0,0,0", b"P,abc,1.5x,-2e1"])
    assert ok is True and held(host) == [(b"A", 1, [7])]
    assert (first_item(host)["rect"], first_item(host)["pnts"]) == ((-3, 2, 0, 4), [(0, 1.5, -20)])


MESH_LINES = [LINES[0], b"DH,A,1,1,0,0,0,1,2,0,1,1,0", b"P,0.0,0.0,0.0", b"P,1.0,0.0,0.0", b"MH,2,1,0", b"M1,1", b"M1,0",
              b"M2,-1", b"M2,5",
              b"SH,1,2,3,10,0,0,0,0,0,45.5,-1,16777215", b"FN,Face", b"S,abc"]


@pytest.mark.parametrize("flags, kept", [((b"1", b"0"), [1, 0]), ((b"255", b"-1"), [1, 1]), ((b"256", b"x"), [1, 0])])
def test_a_use_flag_of_text_is_one_bit(tmp_path, flags, kept):
    lines = list(MESH_LINES)
    lines[5:7] = [b"M1," + each for each in flags]
    host, ok = read_lines(tmp_path, lines)
    assert ok is True
    assert first_item(host)["meshAttr"] == {"hcnt": 2, "vcnt": 1, "useFlag": kept, "meshColor": [0xFFFFFFFF, 5]}
    assert picked(first_item(host)["str"], ("x", "y", "z", "angle", "fcolor", "fntname", "text")) == {
        "x": 1, "y": 2, "z": 3, "angle": 45.5, "fcolor": 0xFFFFFFFF, "fntname": b"Face", "text": b"abc"}


@pytest.mark.parametrize("at", range(4, 12))
@pytest.mark.parametrize("instead", [b"", b"XX,1,2,3", None], ids=["empty", "other", "missing"])
def test_a_mesh_or_text_line_that_is_none_ends_the_read_with_the_items_before_it(tmp_path, at, instead):
    lines = [*MESH_LINES[:at], *([] if instead is None else [instead]), *MESH_LINES[at + 1:], *LINES[5:]]
    host, ok = read_lines(tmp_path, [*LINES[:3], *lines[1:]])
    assert ok is True and held(host) == [(b"A", 1, [1])]


@pytest.mark.parametrize("at, line", [(4, b"MH,2,1"), (4, b"mh,2,1,0"), (5, b"M1"), (7, b"m2,1"),
                                      (9, b"SH,1,2,3,10,0,0,0,0,0,45.5,-1"),
                                      (9, b"sh,1,2,3,10,0,0,0,0,0,45.5,-1,0"), (10, b"FN"), (10, b"fn,Face"), (11, b"S"),
                                      (11, b"s,abc")])
def test_a_line_with_a_field_missing_or_its_key_in_lower_case_ends_the_read(tmp_path, at, line):
    lines = [*MESH_LINES[:at], line, *MESH_LINES[at + 1:], *LINES[5:]]
    host, ok = read_lines(tmp_path, [*LINES[:3], *lines[1:]])
    assert ok is True and held(host) == [(b"A", 1, [1])]


def test_an_empty_font_name_and_an_empty_text_shift_nothing(tmp_path):
    host, ok = read_lines(tmp_path, [*MESH_LINES[:10], b"FN,", b"S,", *LINES[5:]])
    assert ok is True and held(host) == [(b"A", 1, [1, 3])]
    assert picked(first_item(host)["str"], ("fntname", "text")) == {"fntname": b"", "text": b""}


def test_what_stands_behind_the_version_on_the_first_line_is_ignored(tmp_path):
    host, ok = read_lines(tmp_path, [LINES[0] + b" and more", *LINES[1:]])
    assert ok is True and held(host) == [(b"A", 1, [1, 2, 3])]


def test_text_of_version_100_is_written_and_never_read(tmp_path):
    host = one_item()
    assert save(host, tmp_path / "map.ovb", "1.00") is True and save(host, tmp_path / "map.ovt", "1.00") is True
    assert contents(tmp_path)["Ovt"] == b"Orva Data Text Version 1.00\r\nDH,A,1,7,2,1,2,1,1,0,0\r\nP,1.000000,2.000000,0.0\r\n"
    back, ok = after_read(str(tmp_path / "map.ovt"))
    assert ok is False and codes(back) == [b"A"] and held(back) == []
