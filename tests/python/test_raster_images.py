"""Raster images as a host uses them, with the server that reads real files: slots, control points, rotation, what is seen."""

import os
import signal
import struct
import subprocess
import sys
import time
import zlib

import pytest
from drawing_rig import BOTH, at_scale
from map_rig import DOTS_PER_M, HEIGHT, LINE, PIXEL_ZOOM, WIDTH

RED, GREEN, BLUE, YELLOW, WHITE, BLACK = (255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 0), (255, 255, 255), (0, 0, 0)
NO_ROOM = "ERROR 6410 : Raster area allocation error!"
NO_SERVER = "OV4Raster.DLL をレジストリ登録して下さい。"
OUT_OF_RANGE = (-2147483648, -1, 2, 2147483647)


def png(path, rows, clear=()):
    """A PNG of RGB rows with opacity; pixels in `clear` are transparent."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    packed = b"".join(b"\0" + b"".join(bytes((*p, 0 if (x, y) in clear else 255)) for x, p in enumerate(row))
                      for y, row in enumerate(rows))
    head = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 6, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(packed)) + chunk(b"IEND", b""))
    return str(path)


@pytest.fixture
def flag(tmp_path):
    """Four fields of 50 x 50 pixels: red, green, blue, yellow."""
    rows = [[RED] * 50 + [GREEN] * 50] * 50 + [[BLUE] * 50 + [YELLOW] * 50] * 50
    return png(tmp_path / "flag.png", rows)


def seen(host, x, y):
    pixels = host.control.pixels()
    at = (y * WIDTH + x) * 4
    return pixels[at + 2], pixels[at + 1], pixels[at]


def window(newer=False, zoom=PIXEL_ZOOM):
    """A control that shows the map from (0, 0) at its left top corner, and keeps pixels."""
    return at_scale(zoom, newer, device="qt")


def shown(flag, newer=False, left=100, top=100, size=100, on_top=True):
    """A window with the flag in slot 0, placed by two control points, its left top corner at a client pixel."""
    host = window(newer)
    host.RastDspMode(on_top)
    assert host.RastInit(2)
    assert host.RastLoad(0, flag)
    assert host.RastSetCP1(0, 0, 0, float(left), -float(top))
    assert host.RastSetCP2(0, 100, 100, float(left + size), -float(top + size))
    assert host.RastCalcCorrect2(0)
    host.RDMReDraw()
    return host


def black_line(host, points):
    host.add_block("A", 1, LINE)
    host.control.OrvSetLayColor("A", 0)
    host.add_item("A", 1, 1, points, 0)


# --- What is seen ------------------------------------------------------------------------------------------------------------


@BOTH
def test_an_image_lies_where_its_two_control_points_say(flag, newer):
    host = shown(flag, newer)
    assert [seen(host, x, y) for x, y in ((101, 101), (199, 101), (101, 199), (199, 199))] == [RED, GREEN, BLUE, YELLOW]
    assert [seen(host, x, y) for x, y in ((99, 150), (200, 150), (150, 99), (150, 200))] == [WHITE] * 4
    assert (seen(host, 149, 149), seen(host, 150, 150)) == (RED, YELLOW)


def test_the_points_turn_and_stretch_the_image(flag):
    host = shown(flag)
    # The image's right edge runs down the map, twice as long: its down is to the left.
    host.RastSetCP1(0, 0, 0, 400.0, -100.0)
    host.RastSetCP2(0, 100, 0, 400.0, -300.0)
    assert host.RastCalcCorrect2(0)
    host.RDMReDraw()
    assert [seen(host, x, y) for x, y in ((390, 110), (390, 290), (210, 110), (210, 290))] == [RED, GREEN, BLUE, YELLOW]


@BOTH
def test_an_image_with_a_georeference_needs_no_control_point(flag, tmp_path, newer):
    # A world file tells the centre of the first pixel: two units a pixel from (200, -100).
    (tmp_path / "flag.pgw").write_text("2\n0\n0\n-2\n201\n-101\n")
    host = window(newer)
    assert host.RastInit(1) and host.RastLoad(0, flag)
    host.RDMReDraw()
    assert [seen(host, x, y) for x, y in ((201, 101), (399, 101), (201, 299), (399, 299))] == [RED, GREEN, BLUE, YELLOW]
    assert host.RastCalcCorrect2(0)
    host.RDMReDraw()
    assert seen(host, 201, 101) == RED


def test_an_image_without_a_place_is_not_drawn_and_the_map_is(flag):
    host = window()
    black_line(host, [(10.0, -10.0), (300.0, -10.0)])
    assert host.RastInit(1) and host.RastLoad(0, flag)
    host.RDMReDraw()
    assert seen(host, 100, 10) == BLACK
    assert seen(host, 50, 50) == WHITE


def test_equal_control_points_answer_true_and_change_nothing(flag):
    host = shown(flag)
    assert host.RastSetCP2(0, 0, 0, 500.0, -500.0)
    assert host.RastCalcCorrect2(0), "the answer of the server does not count"
    host.RDMReDraw()
    assert seen(host, 101, 101) == RED


def test_transparent_pixels_show_what_lies_under_them(tmp_path):
    name = png(tmp_path / "hole.png", [[RED] * 4] * 4, clear={(1, 1), (2, 1), (1, 2), (2, 2)})
    host = shown(name)
    black_line(host, [(50.0, -102.0), (300.0, -102.0)])
    host.RDMReDraw()
    assert [seen(host, x, 102) for x in (99, 100, 101, 102, 103, 104)] == [BLACK, RED, BLACK, BLACK, RED, BLACK]


@BOTH
def test_the_image_lies_over_the_layers_or_under_them(flag, newer):
    host = shown(flag, newer)
    black_line(host, [(50.0, -120.0), (300.0, -120.0)])
    host.RDMReDraw()
    assert (seen(host, 80, 120), seen(host, 120, 120)) == (BLACK, RED)
    host.RastDspMode(False)
    host.RDMReDraw()
    assert (seen(host, 80, 120), seen(host, 120, 120)) == (BLACK, BLACK)
    size = host.RastImageSize(0)
    assert tuple(size) == (100, 100), "the table is not touched"


def test_later_slots_lie_over_earlier_ones(flag, tmp_path):
    host = shown(flag)
    assert host.RastLoad(1, png(tmp_path / "black.png", [[BLACK]]))
    host.RastSetCP1(1, 0, 0, 100.0, -100.0)
    host.RastSetCP2(1, 1, 1, 120.0, -120.0)
    assert host.RastCalcCorrect2(1)
    host.RDMReDraw()
    assert (seen(host, 119, 119), seen(host, 120, 120)) == (BLACK, RED)


@BOTH
def test_a_hidden_image_is_not_drawn(flag, newer):
    host = shown(flag, newer)
    host.RastSetDispFlg(0, False)
    host.RDMReDraw()
    assert seen(host, 150, 150) == WHITE
    host.RastSetDispFlg(0, True)
    host.RDMReDraw()
    assert seen(host, 150, 150) == YELLOW


def test_the_image_turns_with_the_map(flag):
    host = shown(flag)
    corners = [(100.0, -100.0), (200.0, -100.0), (200.0, -200.0), (100.0, -200.0), (100.0, -100.0)]
    black_line(host, corners)
    host.control.Rotate = 30.0
    host.MapJumpToXY(150.0, -150.0)
    pixels = host.control.pixels()
    x, y = WIDTH // 2, HEIGHT // 2
    colours = {tuple(pixels[((y + dy) * WIDTH + x + dx) * 4 + k] for k in (2, 1, 0)) for dx, dy in ((0, -20), (20, 0), (0, 20), (-20, 0))}
    assert colours == {RED, GREEN, BLUE, YELLOW}
    # The outline of the layer lies on the image's edge: no white is inside it, and no colour outside.
    host.RastDspMode(False)
    host.RDMReDraw()
    pixels = host.control.pixels()
    row = [tuple(pixels[(y * WIDTH + at) * 4 + k] for k in (2, 1, 0)) for at in range(WIDTH)]
    inked = [at for at, colour in enumerate(row) if colour == BLACK]
    left, right = inked[1], inked[-1]
    assert WHITE not in row[left:right]
    assert set(row[2 : left - 1]) == {WHITE} and set(row[right + 2 : WIDTH - 2]) == {WHITE}


def test_an_image_loaded_into_a_new_slot_is_not_turned_until_the_rotation_is_set_again(flag):
    host = shown(flag)
    host.control.Rotate = 180.0
    assert host.RastLoad(1, flag)
    host.RastSetCP1(1, 0, 0, 300.0, -100.0)
    host.RastSetCP2(1, 100, 100, 400.0, -200.0)
    host.RastCalcCorrect2(1)
    host.RDMReDraw()
    assert (seen(host, 150, 150), seen(host, 310, 110)) == (WHITE, RED)
    host.control.Rotate = 180.0
    host.RDMReDraw()
    assert seen(host, 310, 110) == WHITE


def test_a_scroll_shows_what_a_whole_frame_shows(flag):
    host = shown(flag)
    for dx, dy in ((37, 0), (0, -23), (-60, 41), (120, 77)):
        host.RDMScrl(float(dx), float(dy))
    scrolled = host.control.pixels()
    host.RDMReDraw()
    assert host.control.pixels() == scrolled


# --- Slots -------------------------------------------------------------------------------------------------------------------


@BOTH
def test_init_twice_without_term_is_refused_and_the_table_stays(flag, newer):
    host = shown(flag, newer)
    assert not host.RastInit(5)
    assert not host.RastLoad(2, flag)
    assert tuple(host.RastImageSize(0)) == (100, 100)


@BOTH
def test_init_of_zero_is_true_and_a_real_count_goes_through(flag, newer):
    host = window(newer)
    assert host.RastInit(0)
    assert not host.RastLoad(0, flag)
    assert host.RastInit(1)
    assert host.RastLoad(0, flag)


@BOTH
def test_term_with_no_table_is_false(newer):
    host = window(newer)
    assert not host.RastTerm()
    assert host.RastInit(1) and host.RastTerm() and not host.RastTerm()


@BOTH
def test_load_with_the_index_of_the_count_is_false(flag, newer):
    host = window(newer)
    assert host.RastInit(2)
    assert not host.RastLoad(2, flag)
    assert host.RastLoad(1, flag)


@BOTH
def test_a_negative_count_is_refused_with_a_message(newer):
    host = window(newer)
    assert not host.RastInit(-1)
    assert host.control.message_boxes[-1][0] == NO_ROOM
    assert not host.RastTerm()


@BOTH
def test_the_greatest_count_has_a_last_slot_that_works(flag, newer):
    host = window(newer)
    assert host.RastInit(2147483647)
    assert host.RastLoad(2147483646, flag)
    assert not host.RastLoad(2147483647, flag)
    assert tuple(host.RastImageSize(2147483646)) == (100, 100)
    assert host.RastTerm()


@BOTH
@pytest.mark.parametrize("index", OUT_OF_RANGE)
def test_an_index_out_of_range_is_answered_and_changes_nothing(flag, newer, index):
    host = shown(flag, newer)
    before = host.control.pixels()
    assert not host.RastLoad(index, flag)
    assert not host.RastClose(index)
    assert not host.RastSetCP1(index, 1, 2, 3.0, 4.0)
    assert not host.RastSetCP2(index, 1, 2, 3.0, 4.0)
    assert not host.RastCalcCorrect2(index)
    host.RastSetDispFlg(index, False)
    assert tuple(host.RastImageSize(index)) == (None, None), "the outputs are left alone"
    assert tuple(host.RastImageSize(0)) == (100, 100)
    assert tuple(host.RastImageSize(1)) == (0, 0)
    host.RDMReDraw()
    assert host.control.pixels() == before
    assert host.control.message_boxes == []
    assert host.RastTerm(), "the table is still there"


@BOTH
def test_a_closed_image_is_gone_and_its_slot_takes_another(flag, newer):
    host = shown(flag, newer)
    assert host.RastClose(0)
    assert tuple(host.RastImageSize(0)) == (0, 0)
    host.RDMReDraw()
    assert seen(host, 150, 150) == WHITE
    assert host.RastLoad(0, flag)


@pytest.mark.parametrize("ending", ["RDMInit", "RDMTerm", "RastTerm"])
def test_after_the_end_of_the_table_no_image_is_drawn(flag, ending):
    host = shown(flag)
    host.RDMInit("0") if ending == "RDMInit" else getattr(host, ending)()
    assert not host.RastLoad(0, flag)
    host.control.paint()
    host.RDMReDraw()
    assert seen(host, 150, 150) == WHITE
    assert host.RastInit(1) and host.RastLoad(0, flag)


@pytest.mark.parametrize("content", [b"", b"no picture", b"\x89PNG\r\n\x1a\n", b"II*\0\x08\0\0\0"], ids=["empty", "text", "png", "tiff"])
def test_a_file_that_is_no_image_is_refused_and_the_next_is_taken(flag, tmp_path, content):
    bad = tmp_path / "bad.tif"
    bad.write_bytes(content)
    host = shown(flag)
    assert not host.RastLoad(0, str(bad))
    assert tuple(host.RastImageSize(0)) == (0, 0)
    assert not host.RastLoad(0, str(tmp_path / "missing.tif"))
    assert host.control.message_boxes == []
    host.RDMReDraw()
    assert seen(host, 150, 150) == WHITE
    assert host.RastLoad(0, flag)


def test_a_file_is_found_by_a_japanese_name_in_any_case(flag, tmp_path):
    os.rename(flag, tmp_path / "地図.PNG")
    host = window()
    assert host.RastInit(1)
    assert host.RastLoad(0, str(tmp_path / "地図.png"))


def test_without_the_server_the_message_is_shown_and_the_map_works_on():
    code = f"""
import orvane4
c = orvane4.Orvane4Ctrl(width=100, height=100, device="qt")
c.OrvInit()
c.paint()
assert c.RastInit(1)
assert not c.RastLoad(0, "a.tif")
assert c.message_boxes == [({NO_SERVER!r}, "ORVANE4", 0)], c.message_boxes
c.Zoom = {DOTS_PER_M}
c.MapJumpToXY(50.0, -50.0)
assert c.OrvAddLayer("A", 1, 2, 1) and c.OrvSetLayColor("A", 0)
assert c.OrvAddDatEx("A", 1, 1, 0, [0.0, 100.0], [-50.0, -50.0], [0.0, 0.0])
c.OrvReDraw()
pixels = c.pixels()
assert pixels[(50 * 100 + 50) * 4 : (50 * 100 + 50) * 4 + 3] == bytes(3)
assert not c.RastLoad(0, "a.tif") and len(c.message_boxes) == 2  # a later load tries again
"""
    subprocess.run([sys.executable, "-c", code], check=True, timeout=60,
                   env={**os.environ, "ORVANE_RASTER_SERVER": "/no/such/library.so"})


def test_without_the_program_that_reads_images_the_message_is_shown(flag):
    code = f"""
import orvane4
c = orvane4.Orvane4Ctrl(width=100, height=100, device="qt")
c.OrvInit()
assert c.RastInit(1) and not c.RastLoad(0, {flag!r})
assert c.message_boxes == [({NO_SERVER!r}, "ORVANE4", 0)], c.message_boxes
"""
    subprocess.run([sys.executable, "-c", code], check=True, timeout=60,
                   env={**os.environ, "ORVANE_RASTER_READER": "/no/such/program"})


def readers_of(pid):
    """The processes that this one has started to read images."""
    found = []
    for entry in os.listdir("/proc"):
        try:
            with open(f"/proc/{entry}/stat") as stat:
                name, rest = stat.read().rsplit(")", 1)
        except (OSError, ValueError):
            continue
        if "(orvane4_raster_" in name and int(rest.split()[1]) == pid and rest.split()[0] != "Z":
            found.append(int(entry))
    return found


def is_gone(pid):
    """Waits for the end of a process, as long as a broken program may take."""
    for _ in range(2000):
        try:
            with open(f"/proc/{pid}/stat") as stat:
                if stat.read().rsplit(")", 1)[1].split()[0] == "Z":
                    return True
        except OSError:
            return True
        time.sleep(0.01)
    return False


LOADED = """
import os, sys
import orvane4
c = orvane4.Orvane4Ctrl(width=100, height=100, device="qt")
c.OrvInit()
assert c.RastInit(1) and c.RastLoad(0, {name!r})
print("loaded", flush=True)
sys.stdin.readline()
"""


@pytest.mark.parametrize("how", ["ends", "is killed"])
def test_the_reader_of_images_ends_with_its_host(flag, how):
    host = subprocess.Popen([sys.executable, "-c", LOADED.format(name=flag)], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    assert host.stdout.readline() == b"loaded\n"
    (reader,) = readers_of(host.pid)
    if how == "ends":
        host.communicate(b"\n", timeout=60)
        assert host.returncode == 0
    else:
        host.kill()
        host.communicate(timeout=60)
    assert is_gone(reader)


def test_a_reader_that_was_killed_is_replaced_at_the_next_draw(flag):
    host = shown(flag)
    for _ in range(2):
        (reader,) = readers_of(os.getpid())
        os.kill(reader, signal.SIGKILL)
        host.RDMReDraw()
        assert [seen(host, x, y) for x, y in ((101, 101), (199, 101), (101, 199), (199, 199))] == [RED, GREEN, BLUE, YELLOW]
        assert readers_of(os.getpid()) != [reader]


def test_a_forked_program_draws_by_a_reader_of_its_own(flag):
    host = shown(flag)
    before = readers_of(os.getpid())
    child = os.fork()
    if child == 0:
        host.RDMReDraw()
        own = readers_of(os.getpid())
        os._exit(0 if seen(host, 150, 150) == YELLOW and len(own) == 1 and own != before else 1)
    assert os.waitpid(child, 0)[1] == 0
    host.RDMReDraw()
    assert seen(host, 150, 150) == YELLOW
    assert readers_of(os.getpid()) == before
