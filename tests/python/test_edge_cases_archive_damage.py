"""Archives that are cut off, that lie about their counts or are no files at all: no crash, no hang, no memory beyond what a file
can justify, and what was whole before the damage is kept."""

import os
import random
import struct
import subprocess
import sys

import pytest
from archive_rig import (EXTENSIONS, GOLDEN, VERSIONS, after_read, archive_bytes, blk, codes, contents, dump, grid, held, item,
                         lay,
                         layers_of, painted, read, read_part, save, text, write_set)

EACH_VERSION = pytest.mark.parametrize("version", VERSIONS)
INT_MIN, INT_MAX = -2147483648, 2147483647
HUGE = [INT_MAX, INT_MAX - 1, 1 << 30, 1 << 28, 100000]
PLAIN = item(1, (1, 2), (3, 4))
RICH = item(2, (5, 6), (7, 8), mesh=grid(2, 1, [255, 1], [3, 4]), text=text(b"abc", fntname=b"Face"))
BARE = item(3)
TEXTED = item(4, (9, 9), text=text(b""))
MIXED = blk(b"A", 1, PLAIN, RICH, BARE, TEXTED, path=b"p", origin=(1.0, 2.0))


def ids(host):
    return [dat_id for _, _, each in held(host) for dat_id in each]


def restarted(host):
    assert host.control.OrvInit()
    return host


def ways(name):
    """Both ways to read all of a binary set: whole, and by its one code through the index."""
    return [lambda host: read(host, name), lambda host: read_part(host, name, ["A"])]


# --- Files cut off -----------------------------------------------------------------------------------------------------------


@EACH_VERSION
def test_of_a_data_file_cut_anywhere_the_whole_items_are_kept(tmp_path, version):
    host = painted()
    whole = archive_bytes.data_file(version, [MIXED])
    ends, at = [], archive_bytes.HEADER_SIZE
    for record in archive_bytes.data_records(version, [MIXED]):
        at += len(record)
        ends.append(at)
    assert ends[-1] == len(whole)
    for size in range(len(whole) + 1):
        expected = [dat_id for dat_id, end in zip((1, 2, 3, 4), ends) if end <= size]
        for way in ways(write_set(tmp_path, MIXED, version=version, Ovb=whole[:size])):
            ok = way(restarted(host))
            assert (ok, ids(host)) == (bool(expected), expected), size
            assert codes(host) == ([b"A"] if size >= 29 else []), size


@EACH_VERSION
def test_of_a_layer_file_cut_anywhere_the_whole_records_are_kept(tmp_path, version):
    host = painted()
    whole, size = archive_bytes.layer_file(version, [lay(b"A"), lay(b"B")]), archive_bytes.LAYER_SIZE[version]
    for cut in [*range(0, 45), 40 + size - 1, 40 + size, 40 + size + 1, 40 + 2 * size - 1, 40 + 2 * size]:
        name = write_set(tmp_path, MIXED, version=version, Ovl=whole[:cut])
        assert read(restarted(host), name) is (cut >= 40), cut
        assert codes(host) == [b"A", b"B"][:max(0, cut - 40) // size], cut
        ok = read_part(restarted(host), name, ["A"])
        assert (ok, ids(host)) == ((True, [1, 2, 3, 4]) if cut >= 35 else (False, [])), cut


@EACH_VERSION
def test_of_a_manage_file_cut_anywhere_the_whole_records_are_kept(tmp_path, version):
    host = painted()
    whole = archive_bytes.manage_file(version, [MIXED, blk(b"A", 2, path=b"other")])
    for cut in [*range(0, 45), 40 + 582, 40 + 583, 40 + 584, 40 + 2 * 583 - 1, 40 + 2 * 583]:
        for way in ways(write_set(tmp_path, MIXED, version=version, Ovm=whole[:cut])):
            ok = way(restarted(host))
            assert ok is (cut >= 40), cut
            assert ids(host) == ([1, 2, 3, 4] if cut >= 29 else []), "a short one is seen when the data are in already"
            assert [each["path"] for each in dump(host)["blocks"]] == ([] if cut < 29 else [b"p" if cut >= 40 + 583 else b""])


@EACH_VERSION
def test_an_index_cut_anywhere_behind_its_version_hinders_no_read(tmp_path, version):
    host = painted()
    whole = archive_bytes.index_file(version, [MIXED])
    for cut in range(len(whole) + 1):
        for way in ways(write_set(tmp_path, MIXED, version=version, Ovi=whole[:cut])):
            ok = way(restarted(host))
            assert (ok, ids(host)) == ((True, [1, 2, 3, 4]) if cut >= 28 else (False, [])), cut
            assert codes(host) == ([b"A"] if cut >= 28 else []), cut


def test_of_a_text_file_cut_anywhere_the_whole_items_are_kept(tmp_path):
    host = painted()
    whole = archive_bytes.text_file("1.10", [MIXED])
    lines_of_items = [len(archive_bytes.text_lines("1.10", b"A", 1, each)) for each in MIXED["items"]]
    for size in range(len(whole) + 1):
        complete, lines = 0, whole[:size].count(b"\n") - 1
        for count in lines_of_items:
            lines -= count
            complete += lines >= 0
        ok = read(restarted(host), write_set(tmp_path, MIXED, text_data=True, Ovt=whole[:size]))
        # The line that is cut may still be taken for a line, and then it ends one more item.
        assert ids(host) in ([1, 2, 3, 4][:complete], [1, 2, 3, 4][:complete + 1]), size
        assert ok is (ids(host) != []) and codes(host) == ([b"A"] if size >= 27 else []), size


def test_what_the_map_had_before_a_damaged_read_stays(tmp_path):
    host = painted()
    host.add_block("A", 1, 1)
    host.add_item("A", 1, 99, [(1.25, 2.5)])
    before = dump(host)["blocks"][0]["dats"][0]
    whole = archive_bytes.data_file("1.10", [MIXED])
    for size in (0, 28, 40, 60, 200):
        read(host, write_set(tmp_path, MIXED, Ovb=whole[:size]))
        assert dump(host)["blocks"][0]["dats"][0] == before
    assert ids(host) == [99, 1]


# --- Counts that lie ---------------------------------------------------------------------------------------------------------


def liar(**claims):
    return {**RICH, "claims": claims}


@EACH_VERSION
@pytest.mark.parametrize("count", HUGE)
@pytest.mark.parametrize("field", ["pntCnt", "textLen"])
def test_an_item_that_claims_more_than_the_file_holds_is_not_stored_and_those_before_it_stay(tmp_path, version, count, field):
    for first in ([PLAIN], []):
        block = blk(b"A", 1, *first, liar(**{field: count}), TEXTED)
        for way in ways(write_set(tmp_path, block, version=version)):
            host = painted()
            assert way(host) is bool(first) and ids(host) == [1] * len(first)


@EACH_VERSION
@pytest.mark.parametrize("length", [-1, -2, INT_MIN])
def test_a_text_of_negative_length_is_not_stored(tmp_path, version, length):
    for way in ways(write_set(tmp_path, blk(b"A", 1, PLAIN, liar(textLen=length)), version=version)):
        host = painted()
        assert way(host) is True and ids(host) == [1]


@EACH_VERSION
@pytest.mark.parametrize("count", [-1, INT_MIN])
def test_a_negative_point_count_brings_no_points(tmp_path, version, count):
    lying = {**BARE, "claims": {"pntCnt": count}}
    for way in ways(write_set(tmp_path, blk(b"A", 1, PLAIN, lying), version=version)):
        host = painted()
        assert way(host) is True and ids(host) in ([1], [1, 3])
        host.control.OrvReDraw()
        assert not dump(host)["blocks"][0]["dats"][-1]["pnts"] or ids(host) == [1]


def test_a_grid_with_a_negative_point_count_is_harmless(tmp_path):
    lying = item(5, mesh=grid(2, 2, [], []), pntCnt=-4)
    for way in ways(write_set(tmp_path, blk(b"A", 1, PLAIN, lying, TEXTED), layers=[lay(b"A", 10)])):
        host = painted()
        assert way(host) is True and ids(host)[0] == 1
        host.control.OrvReDraw()


@pytest.mark.parametrize("count", [*HUGE, 3])
def test_a_text_item_that_claims_more_points_than_there_are_lines_is_not_stored(tmp_path, count):
    host, ok = after_read(write_set(tmp_path, blk(b"A", 1, PLAIN, liar(pntCnt=count), TEXTED), text_data=True))
    assert ok is True and ids(host) == [1]


@pytest.mark.parametrize("count", [-1, INT_MIN])
def test_a_text_item_with_a_negative_point_count_is_harmless(tmp_path, count):
    lying = {**BARE, "claims": {"pntCnt": count}}
    host, ok = after_read(write_set(tmp_path, blk(b"A", 1, PLAIN, lying), text_data=True))
    assert ok is True and ids(host) in ([1], [1, 3])


@EACH_VERSION
@pytest.mark.parametrize("n_blocks, n_items", [(INT_MAX, 4), (1, INT_MAX), (INT_MAX, INT_MAX), (1, 5), (2, 4), (-1, 4), (INT_MIN,
                                                                                                                         4)])
def test_an_index_that_claims_what_it_cannot_hold_makes_the_read_a_whole_one(tmp_path, version, n_blocks, n_items):
    content = archive_bytes.index_file(version, [MIXED])
    content = content[:40] + struct.pack("<ii", n_blocks, n_items) + content[48:]
    host = painted()
    assert read_part(host, write_set(tmp_path, MIXED, version=version, Ovi=content), ["no such"]) is True
    assert ids(host) == [1, 2, 3, 4]


@pytest.mark.parametrize("n_items", [-1, INT_MIN])
def test_a_negative_count_of_items_in_the_index_is_harmless(tmp_path, n_items):
    content = archive_bytes.index_file("1.10", [MIXED])
    content = content[:44] + struct.pack("<i", n_items) + content[48:]
    host = painted()
    assert read_part(host, write_set(tmp_path, MIXED, Ovi=content), ["A"]) is True
    assert ids(host) in ([], [1, 2, 3, 4])


def index_of(version, count, first, item_offsets, area=(0, 0, 9, 9)):
    block = archive_bytes.block_record(b"A", area, count, first)
    records = [archive_bytes.item_record((1, 1, 2, 2), at) for at in item_offsets]
    return archive_bytes.header("Ovi", version) + struct.pack("<ii", 1, len(records)) + block + b"".join(records)


@EACH_VERSION
@pytest.mark.parametrize("count, first", [(5, 0), (4, 1), (1, 4), (1, -1), (INT_MAX, 0), (INT_MAX, INT_MAX), (INT_MIN, 0), (-1,
                                                                                                                            3),
                                          (1, INT_MIN), (2, INT_MAX), (4, -2)])
def test_an_index_block_whose_items_lie_outside_the_table_is_harmless(tmp_path, version, count, first):
    records = archive_bytes.data_records(version, [MIXED])
    places = [40 + sum(map(len, records[:at])) for at in range(4)]
    for area in ((0, 0, 0, 0), (0, 0, 5, 5)):
        host = painted()
        answer = read_part(host, write_set(tmp_path, MIXED, version=version, Ovi=index_of(version, count, first, places)), ["A"],
                           area)
        assert answer is (ids(host) != []) and set(ids(host)) <= {1, 2, 3, 4} and len(ids(host)) <= 4


@EACH_VERSION
@pytest.mark.parametrize("place", [-1, INT_MIN, INT_MAX, "end", "last byte"])
def test_an_index_place_outside_the_data_ends_the_read_with_the_items_before_it(tmp_path, version, place):
    size = len(archive_bytes.data_file(version, [MIXED]))
    bad = {"end": size, "last byte": size - 1}.get(place, place)
    for places, expected in (((40, bad, 40), [1]), ((bad, 40), [])):
        host = painted()
        name = write_set(tmp_path, MIXED, version=version, Ovi=index_of(version, len(places), 0, places))
        assert read_part(host, name, ["A"]) is bool(expected) and ids(host) == expected


@EACH_VERSION
@pytest.mark.parametrize("place", [0, 1, 39, 41, 100, 150])
def test_an_index_place_amid_a_record_is_harmless(tmp_path, version, place):
    host = painted()
    answer = read_part(host, write_set(tmp_path, MIXED, version=version, Ovi=index_of(version, 1, 0, [place])), ["A"])
    assert answer is (held(host) != [])
    host.control.OrvReDraw()


def test_an_index_of_another_archive_is_harmless(tmp_path):
    other = blk(b"A", 1, *(item(each, (each, each), (0, 0)) for each in range(50)))
    host = painted()
    answer = read_part(host, write_set(tmp_path, MIXED, Ovi=archive_bytes.index_file("1.10", [other])), ["A"])
    assert answer is (held(host) != []) and ids(host)[:1] == [1]


# --- Strings without an end --------------------------------------------------------------------------------------------------


@EACH_VERSION
@pytest.mark.parametrize("filler", [b"z", b"\x95", b"\xff"])
def test_strings_without_a_terminator_end_with_their_fields(tmp_path, version, filler):
    name = write_set(tmp_path, MIXED, version=version)
    files = contents(tmp_path)
    changes = {"Ovl": (40, 51), "Ovb": (40, 51), "Ovi": (48, 51), "Ovm": (40, 51)}
    for extension, (at, size) in changes.items():
        written = files[extension][:at] + filler * size + files[extension][at + size:]
        (tmp_path / f"map.{extension}").write_bytes(written)
    for way in ways(name):
        host = painted()
        way(host)
        found = [*codes(host), *(code for code, _, _ in held(host))]
        assert all(len(code) <= 50 for code in found) and found != []
        save(host, tmp_path / "again.ovb", version)
        host.control.OrvReDraw()


@EACH_VERSION
def test_names_paths_and_fonts_without_a_terminator_end_with_their_fields(tmp_path, version):
    layer = bytearray(archive_bytes.layer_record(version, lay(b"A")))
    layer[51:51 + 256] = b"n" * 256
    images = 348 if version == "1.10" else 340
    layer[images:images + 1024] = b"i" * 1024
    manage = bytearray(archive_bytes.manage_record(MIXED))
    manage[55:55 + 512] = b"p" * 512
    record = bytearray(archive_bytes.data_record(version, b"A", 1, TEXTED))
    record[-115 + 24:-115 + 24 + 65] = b"f" * 65
    parts = {"Ovl": bytes(layer), "Ovm": bytes(manage), "Ovb": bytes(record)}
    block = blk(b"A", 1, TEXTED)
    name = write_set(tmp_path, block, version=version, **{
        extension: archive_bytes.header(extension, version) + content for extension, content in parts.items()})
    host, ok = after_read(name)
    assert ok is True
    found, held_block = dump(host)["layers"][0], dump(host)["blocks"][0]
    lengths = [len(found["layerName"]), len(found["imgfname"]), len(found["imgactfname"]), len(held_block["path"]),
               len(held_block["dats"][0]["str"]["fntname"])]
    assert all(told in (size - 1, size) for told, size in zip(lengths, (256, 512, 512, 512, 65))), lengths
    assert found["color"] == 0xDCDCDC and (held_block["GX"], held_block["GY"]) == (1.0, 2.0)


@pytest.mark.parametrize("length", [1000, 1023, 1024, 1025, 2000, 100000])
@pytest.mark.parametrize("what", ["text", "font", "code", "point", "tail"])
def test_an_overlong_line_is_taken_whole_or_ends_the_read(tmp_path, length, what):
    long = b"z" * length
    lines = archive_bytes.text_file("1.10", [blk(b"A", 1, PLAIN, {**TEXTED, "str": text(b"T", fntname=b"F")}, BARE)])
    old, new = {"text": (b"S,T", b"S," + long), "font": (b"FN,F", b"FN," + long), "code": (b"DH,A,1,3", b"DH," + long + b",1,3"),
                "point": (b"P,9.000000", b"P,9.000000" + b"0" * length), "tail": (b"S,T", b"S,T\r\n" + long)}[what]
    assert old in lines
    host, ok = after_read(write_set(tmp_path, MIXED, text_data=True, Ovt=lines.replace(old, new)))
    assert ok is True and ids(host)[0] == 1
    assert ids(host) in ([1], [1, 4], [1, 4, 3])
    found = [each for block in dump(host)["blocks"] for each in block["dats"] if each["datID"] == 4]
    if found and what == "text":
        assert found[0]["str"]["text"] == long
    if found and what == "point":
        assert found[0]["pnts"] == [(9.0, 9.0, 0.0)]


# --- No files at all ---------------------------------------------------------------------------------------------------------

READER = """
import sys
sys.path.insert(0, sys.argv[1])
import archive_rig
host = archive_rig.painted()
def peak():
    return next(int(line.split()[1]) for line in open("/proc/self/status") if line.startswith("VmPeak"))
before = peak()
answers = [archive_rig.read(host, sys.argv[2]), archive_rig.read_part(host, sys.argv[2], ["A"])]
print(answers, peak() - before)
"""


def read_apart(name, timeout=60):
    """Reads whole and in part in a process of its own: the answers, and by how many kilobytes its memory grew at the most."""
    done = subprocess.run([sys.executable, "-B", "-c", READER, os.path.dirname(__file__), name], capture_output=True, text=True,
                          timeout=timeout, check=False)
    assert done.returncode == 0, done.stderr
    answers, kilobytes = done.stdout.rsplit(" ", 1)
    return answers, int(kilobytes)


ON_LINUX = pytest.mark.skipif(not sys.platform.startswith("linux"), reason="pipes, devices and memory as Linux shows them")


@ON_LINUX
@pytest.mark.parametrize("extension", EXTENSIONS)
@pytest.mark.parametrize("kind", ["pipe", "endless zeros"])
def test_a_pipe_or_an_endless_device_in_place_of_a_file_neither_hangs_nor_reads(tmp_path, extension, kind):
    name = write_set(tmp_path, MIXED, text_data=extension == "Ovt", without=[extension])
    instead = tmp_path / f"map.{extension}"
    os.mkfifo(instead) if kind == "pipe" else os.symlink("/dev/zero", instead)
    answers, kilobytes = read_apart(name)
    assert answers == "[False, False]" and kilobytes < 64 * 1024


LIES = {
    "points": {"Ovb": archive_bytes.data_file("1.10", [blk(b"A", 1, liar(pntCnt=INT_MAX))])},
    "grid points": {"Ovb": archive_bytes.data_file("1.10", [blk(b"A", 1, {**liar(pntCnt=INT_MAX), "pnts": None})])},
    "text": {"Ovb": archive_bytes.data_file("1.10", [blk(b"A", 1, liar(textLen=INT_MAX))])},
    "index blocks": {"Ovi": archive_bytes.header("Ovi", "1.10") + struct.pack("<ii", INT_MAX, 1)},
    "index items": {"Ovi": archive_bytes.header("Ovi", "1.10") + struct.pack("<ii", 1, INT_MAX)},
    "short layers": {"Ovl": archive_bytes.header("Ovl", "1.10")[:36]},
    "short manage": {"Ovm": archive_bytes.header("Ovm", "1.10")[:36]},
    "points of text": {"Ovt": archive_bytes.text_file("1.10", [blk(b"A", 1, liar(pntCnt=INT_MAX))])},
    "one line": {"Ovt": b"Orva Data Text Version 1.10" + b"z" * 5000000},
}


@ON_LINUX
@pytest.mark.parametrize("lie", LIES)
def test_a_lie_of_a_few_bytes_takes_no_memory(tmp_path, lie):
    name = write_set(tmp_path, MIXED, text_data="Ovt" in LIES[lie], **LIES[lie])
    _, kilobytes = read_apart(name)
    assert kilobytes < 64 * 1024


# --- Bytes changed at random -------------------------------------------------------------------------------------------------


@EACH_VERSION
@pytest.mark.parametrize("extension", EXTENSIONS)
def test_bytes_changed_at_random_never_crash_a_read_a_drawing_or_a_save(tmp_path, version, extension):
    numbers = random.Random(f"{version} {extension}")
    files = contents(GOLDEN, "v" + version.replace(".", ""))
    host = painted()
    for _ in range(40):
        changed = dict(files)
        content = bytearray(files[extension])
        for _ in range(numbers.randint(1, 8)):
            content[numbers.randrange(30, len(content))] = numbers.choice([0, 1, 0x7F, 0x80, 0xFF, numbers.randrange(256)])
        changed[extension] = bytes(content)
        name = write_set(tmp_path, layers=layers_of([MIXED]), version=version, **changed)
        name = name.replace(".ovb", ".ovt") if extension == "Ovt" else name
        restarted(host)
        assert read(host, name) in (True, False) and read_part(host, name, ["P1", "M"], (0, 0, 50, 50)) in (True, False)
        host.control.OrvReDraw()
        assert save(host, tmp_path / "again.ovb", version) in (True, False)
        assert save(host, tmp_path / "again.ovt", version) in (True, False)
