"""Texts as they are drawn: the items of text layers with their fonts, anchors and looks, and the labels of all other items."""

import math

import pytest
from drawing_rig import (BLACK, BOTH, WHITE, activate, add_sub_layer, at_scale, bmp, drawn_on, file_of, fine_device, of, put,
                         redrawn,
                         scrolled, with_layer)
from map_rig import (CIRCLE, ELLIPSE, LINE, MESH, PIXEL_ZOOM, POINT, POLYGON, R2_COPYPEN, R2_MASKPEN, TEXT, item, named, verbs)

OPAQUE, TRANSPARENT = 2, 1
TA_LEFT, TA_RIGHT, TA_CENTER, TA_TOP, TA_BOTTOM, TA_BASELINE = 0, 2, 6, 0, 8, 24
DEFAULT_FACE = "標準明朝".encode("cp932")


def add_text(host, dat_id, x, y, words, code="A", at=None, tag=0, **look):
    """An item with one point at a client pixel and a text, anchored there or at another pixel."""
    put(host, dat_id, (x, y), code=code, tag=tag)
    label(host, dat_id, *(at or (x, y)), words, code)
    if look:
        style(host, dat_id, code, **look)


def label(host, dat_id, x, y, words, code="A"):
    assert host.SetDigDatString(code, 1, dat_id, x * host.unit, -y * host.unit, words)


def style(host, dat_id, code="A", face="", size=10, bits=0, pos=0, angle=0.0, fill=False, uline=False, strike=False, color=BLACK,
          back=WHITE):
    assert host.SetDigDatStrStyle(code, 1, dat_id, face, size, bits, pos, angle, fill, uline, strike, color, back)


def with_texts(*texts, newer=False, zoom=PIXEL_ZOOM, **look):
    """A host with a text layer. A text is (x, y, words) in client pixels; the look is that of every one."""
    host = with_layer(TEXT, newer=newer, zoom=zoom)
    for dat_id, (x, y, words) in enumerate(texts, 1):
        add_text(host, dat_id, x, y, words, **look)
    return host


def written(drawn, context="base"):
    return of(drawn, "TextOut", context)


def fonts(drawn, context="base"):
    """The fonts that were chosen, one after another, as (height, width, escapement, ...)."""
    return [each.values[0][1:] for each in named(drawn, "SelectObject", context) if each.values[0][0] == "Font"]


def font(height=-13, angle=0, weight=400, italic=False, uline=False, strike=False, face=DEFAULT_FACE):
    return height, 0, angle, angle, weight, italic, uline, strike, 128, face


def made_fonts(drawn, context="base"):
    """The fonts without the one that the context had before."""
    every = fonts(drawn, context)
    assert not every or every[-1][0] == 0, "the old font comes back at the end"
    return [each for each in every if each[0] != 0]


# --- Texts ---------------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_text_is_written_at_its_anchor_in_the_default_face(newer):
    host = with_texts((400, 300, "地図 map"), newer=newer)
    drawn = redrawn(host)
    assert written(drawn) == [(400, 300, "地図 map".encode("cp932"))]
    assert made_fonts(drawn) == [font()]


def test_the_steps_of_a_text():
    host = with_texts((400, 300, "ABC"), color=0x123456, back=0x654321, pos=4, size=9, uline=True)
    drawn = [each for each in redrawn(host) if each.context == "base"]
    start = next(i for i, each in enumerate(drawn) if each.name == "SetROP2")
    chosen = ("Font", *font(height=-12, uline=True))
    assert [(each.name, *each.values) for each in drawn[start:start + 10]] == [
        ("SetROP2", R2_MASKPEN), ("SetBkMode", TRANSPARENT), ("SetTextAlign", 30), ("SelectObject", chosen),
        ("GetTextExtentPoint32", b"ABC"), ("SetTextColor", 0x123456), ("SetBkColor", 0x654321), ("TextOut", 400, 300, b"ABC"),
        ("SetTextColor", BLACK), ("SetBkColor", WHITE)]


@pytest.mark.parametrize("pos, flags", [
    (0, TA_LEFT | TA_TOP), (1, TA_LEFT | TA_BASELINE), (2, TA_LEFT | TA_BOTTOM), (3, TA_CENTER | TA_TOP),
    (4, TA_CENTER | TA_BASELINE),
    (5, TA_CENTER | TA_BOTTOM), (6, TA_RIGHT | TA_TOP), (7, TA_RIGHT | TA_BASELINE), (8, TA_RIGHT | TA_BOTTOM), (9, 0), (-1, 0),
    (100, 0)])
def test_the_alignment_of_a_text_whose_middle_rows_stand_on_the_baseline(pos, flags):
    host = with_texts((400, 300, "ABC"), pos=pos)
    assert of(redrawn(host), "SetTextAlign") == [(flags,)]


@pytest.mark.parametrize("pos, flags", enumerate([0, 24, 8, 6, 30, 14, 2, 26, 10]))
def test_the_numbers_of_the_alignments(pos, flags):
    host = with_texts((400, 300, "ABC"), pos=pos)
    assert of(redrawn(host), "SetTextAlign") == [(flags,)]


@pytest.mark.parametrize("size, height", [(6, -8), (7, -9), (8, -11), (9, -12), (10, -13), (11, -15), (12, -16), (24, -32),
                                          (100, -133)])
@pytest.mark.parametrize("zoom", [1000, PIXEL_ZOOM, 50000])
def test_the_size_of_a_text_is_in_points_at_every_scale(size, height, zoom):
    host = with_texts((400, 300, "ABC"), size=size, zoom=zoom)
    drawn = redrawn(host)
    assert made_fonts(drawn) == [font(height=height)]
    assert written(drawn) == [(400, 300, b"ABC")]


@pytest.mark.parametrize("dpi, height", [(300, -42), (600, -83), (72, -10)])
def test_the_size_of_a_text_follows_the_device(dpi, height):
    host = with_texts((100, 100, "ABC"))
    drawn = drawn_on(host, fine_device(dpi))
    assert made_fonts(drawn, "device") == [font(height=height)]
    assert written(drawn, "device") == [(100, 100, b"ABC")]


@pytest.mark.parametrize("angle, escapement", [(0.0, 0), (45.25, 453), (90.0, 900), (0.04, 0), (0.05, 1), (-45.25, -452),
                                               (-0.05, 0),
                                               (-90.0, -899), (359.97, 3600), (720.0, 7200)])
def test_the_angle_of_a_text_is_in_tenths_of_degrees_cut_after_adding_a_half(angle, escapement):
    host = with_texts((400, 300, "ABC"), angle=angle)
    assert made_fonts(redrawn(host)) == [font(angle=escapement)]


@pytest.mark.parametrize("bits, weight, italic", [(0, 400, False), (1, 700, False), (2, 400, True), (3, 700, True),
                                                  (8, 400, False),
                                                  (9, 700, False), (-16, 400, False)])
def test_bold_and_italic_are_bits_of_the_style(bits, weight, italic):
    host = with_texts((400, 300, "ABC"), bits=bits)
    drawn = redrawn(host)
    assert made_fonts(drawn) == [font(weight=weight, italic=italic)]
    assert len(written(drawn)) == 1


@pytest.mark.parametrize("uline", [False, True])
@pytest.mark.parametrize("strike", [False, True])
def test_a_text_may_be_underlined_and_struck_out(uline, strike):
    host = with_texts((400, 300, "ABC"), uline=uline, strike=strike)
    assert made_fonts(redrawn(host)) == [font(uline=uline, strike=strike)]


@pytest.mark.parametrize("face, told", [("", DEFAULT_FACE), ("Arial", b"Arial"), ("ＭＳ 明朝", "ＭＳ 明朝".encode("cp932")),
                                        ("x" * 31, b"x" * 31)])
def test_the_face_of_a_text(face, told):
    host = with_texts((400, 300, "ABC"), face=face)
    assert made_fonts(redrawn(host)) == [font(face=told)]


def test_a_long_face_name_is_cut():
    host = with_texts((400, 300, "ABC"), face="abcdefghij" * 5)
    assert made_fonts(redrawn(host)) == [font(face=(b"abcdefghij" * 5)[:32])]


@pytest.mark.parametrize("fill, mode, rop2", [(True, OPAQUE, R2_COPYPEN), (False, TRANSPARENT, R2_MASKPEN)])
def test_a_text_with_a_background_is_opaque_and_covers_what_lies_below(fill, mode, rop2):
    host = with_texts((400, 300, "ABC"), fill=fill)
    drawn = redrawn(host)
    assert of(drawn, "SetBkMode") == [(mode,)] and of(drawn, "SetROP2") == [(rop2,)]


@pytest.mark.parametrize("bits", [4, 5, 6, 12])
def test_a_halo_is_written_four_times_in_the_background_colour_before_the_text(bits):
    host = with_texts((400, 300, "ABC"), bits=bits, color=0x123456, back=0x654321)
    drawn = [each for each in redrawn(host) if each.context == "base"]
    steps = [(each.name, *each.values) for each in drawn if each.name in ("SetTextColor", "SetBkColor", "TextOut")]
    assert steps == [("SetTextColor", 0x123456), ("SetBkColor", 0x654321), ("SetTextColor", 0x654321),
                     ("TextOut", 399, 301, b"ABC"), ("TextOut", 399, 299, b"ABC"), ("TextOut", 401, 301, b"ABC"),
                     ("TextOut", 401, 299, b"ABC"), ("SetTextColor", 0x123456), ("TextOut", 400, 300, b"ABC"),
                     ("SetTextColor", BLACK), ("SetBkColor", WHITE)]


def test_texts_that_share_a_look_share_a_font():
    host = with_texts((100, 100, "A"), (200, 100, "B"), (300, 100, "C"), size=12)
    style(host, 2, size=12, color=0x123456, back=0x654321, pos=5, fill=True, bits=4)
    drawn = redrawn(host)
    assert made_fonts(drawn) == [font(height=-16)], "colours, alignment, background and halo are not the font's"
    assert [words for _, _, words in written(drawn)] == [b"A", b"B", b"B", b"B", b"B", b"B", b"C"]


@pytest.mark.parametrize("other", [{"size": 11}, {"bits": 1}, {"bits": 2}, {"angle": 10.0}, {"uline": True}, {"strike": True},
                                   {"face": "Arial"}], ids=lambda other: next(iter(other)))
def test_a_text_of_another_look_has_a_font_of_its_own_and_the_old_one_comes_back_in_between(other):
    host = with_texts((100, 100, "A"), (200, 100, "B"), (300, 100, "C"))
    style(host, 2, **other)
    every = fonts(redrawn(host))
    old = every[-1]
    assert [each == old for each in every] == [False, True] * 3
    assert every[0] == every[4] == font() and every[2] != every[0]


def test_each_block_makes_its_own_font():
    host = with_texts((100, 100, "A"))
    assert host.add_block("B", 1, TEXT)
    add_text(host, 1, 200, 100, "B", code="B")
    assert made_fonts(redrawn(host)) == [font(), font()]


def test_alignment_background_and_raster_mode_stay_behind_the_last_text():
    host = with_texts((100, 100, "A"), pos=8, fill=True)
    drawn = redrawn(host)
    assert of(drawn, "SetTextAlign") == [(10,)] and of(drawn, "SetBkMode") == [(OPAQUE,)] and of(drawn,
                                                                                                 "SetROP2") == [(R2_COPYPEN,)]


# --- Which texts are written, and where -----------------------------------------------------------------------------------------


def test_a_text_stands_at_its_own_anchor_and_not_at_the_point_of_its_item():
    host = with_layer(TEXT)
    add_text(host, 1, 100, 100, "ABC", at=(400, 300))
    assert written(redrawn(host)) == [(400, 300, b"ABC")]


def test_an_item_without_a_text_is_skipped():
    host = with_texts((400, 300, "ABC"))
    put(host, 2, (100, 100))
    assert written(redrawn(host)) == [(400, 300, b"ABC")]


def test_an_item_out_of_the_searched_area_is_skipped_even_if_its_anchor_is_in_the_window():
    host = with_texts((400, 300, "ABC"))
    add_text(host, 2, 5000, 300, "far", at=(300, 200))
    assert written(redrawn(host)) == [(400, 300, b"ABC")]
    assert item(host, "A", 1, 2)["clipFlg"] == 0


@pytest.mark.parametrize("tag, mode, drawn", [(0, True, 1), (1, True, 1), (1, False, 1), (-1, True, 0), (-1, False, 0),
                                              (-2, True, 1)])
def test_only_the_tag_minus_1_keeps_a_text_out_of_drawing(tag, mode, drawn):
    host = with_layer(TEXT)
    add_text(host, 1, 400, 300, "ABC", tag=tag)
    host.control.LineTagMode = mode
    assert len(written(redrawn(host))) == drawn


def test_a_hidden_sub_layer_hides_a_text_and_leaves_its_drawn_mark():
    host = with_texts((400, 300, "ABC"))
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayer("A", 1, 1, 3)
    assert written(redrawn(host)) == []
    assert item(host, "A", 1, 1)["drawnFlg"] == 1


@pytest.mark.parametrize("number", [3, 99, -3])
def test_a_shown_or_unknown_sub_layer_changes_nothing_of_a_text(number):
    host = with_texts((400, 300, "ABC"))
    plain = redrawn(host)
    add_sub_layer(host, 3, size=5, color=0x445566)
    assert host.control.OrvSetDatSubLayerEx("A", 1, [1], [number])
    assert redrawn(host) == plain


def test_an_active_text_looks_like_any_other():
    host = with_texts((400, 300, "ABC"))
    plain = redrawn(host)
    activate(host)
    assert redrawn(host) == plain


@pytest.mark.parametrize("visible", [False, True])
def test_the_switch_of_labels_has_no_effect_on_text_layers(visible):
    host = with_texts((400, 300, "ABC"))
    host.control.StrVisible = visible
    assert written(redrawn(host)) == [(400, 300, b"ABC")]


@pytest.mark.parametrize("x, y, seen", [(-20, 300, True), (-60, 300, False), (815, 300, True), (860, 300, False), (400, -8, True),
                                        (400, -40, False), (400, 608, True), (400, 640, False)])
@pytest.mark.parametrize("pos", [0, 4, 8])
def test_a_text_is_tested_by_a_box_of_its_size_on_every_side_of_the_anchor(x, y, seen, pos):
    # Four characters of a font 13 pixels high are 26 pixels wide.
    host = with_texts((x - 0.1 if x < 0 else x, y - 0.1 if y < 0 else y, "ABCD"), pos=pos)
    assert len(written(redrawn(host))) == int(seen)
    assert item(host, "A", 1, 1)["drawnFlg"] == 1, "the drawn mark of a text stays as the search left it"


def test_a_scroll_writes_the_texts_that_reach_into_the_strips_and_leaves_the_drawn_marks():
    host = with_texts((400, 300, "mid"), (790, 100, "right"), (100, 590, "low"))
    redrawn(host)
    assert written(scrolled(host, 50, 30), "top") == [(740, 70, b"right"), (50, 560, b"low")]
    assert [item(host, "A", 1, number)["drawnFlg"] for number in (1, 2, 3)] == [1, 1, 1]


def test_the_origin_of_the_block_is_added_to_the_anchor():
    host = at_scale()
    assert host.control.DigMemAlloc2("A", 1, TEXT, "", 1, 100, -50)
    add_text(host, 1, 20, 30, "ABC")
    assert written(redrawn(host)) == [(120, 80, b"ABC")]


def test_a_turned_and_stretched_map_moves_the_anchor_and_does_not_turn_the_text():
    host = with_texts((200, 250, "ABC"), angle=30.0)
    host.control.Rotate = 10.0
    host.control.ScaleX, host.control.ScaleY = 1.5, 2.0
    a = -10.0 * 0.01745328
    x, y = (math.cos(a) * 200 - math.sin(a) * 250) * 1.5, (math.sin(a) * 200 + math.cos(a) * 250) * 2.0
    drawn = redrawn(host)
    assert written(drawn) == [(int(x + 0.5), int(y + 0.5), b"ABC")]
    assert made_fonts(drawn) == [font(angle=300)]


# --- Equal texts ---------------------------------------------------------------------------------------------------------------


def cutting(*texts, **look):
    host = with_texts(*texts, **look)
    host.control.CutSameString = True
    return host


def words_of(drawn, context="base"):
    return [words for _, _, words in written(drawn, context)]


def test_of_equal_texts_in_a_block_only_the_first_is_written():
    host = cutting((100, 100, "same"), (200, 100, "other"), (300, 100, "same"), (400, 100, "Same"), (500, 100, "same "))
    drawn = redrawn(host)
    assert words_of(drawn) == [b"same", b"other", b"Same", b"same "]
    assert written(drawn)[0][:2] == (100, 100)
    assert [item(host, "A", 1, number)["clipFlg"] for number in range(1, 6)] == [1, 1, 0, 1, 1]


def test_without_the_switch_equal_texts_are_all_written():
    host = with_texts((100, 100, "same"), (200, 100, "same"))
    assert words_of(redrawn(host)) == [b"same"] * 2


def test_equal_texts_of_different_looks_are_equal():
    host = cutting((100, 100, "same"), (200, 100, "same"))
    style(host, 2, size=20, color=0x123456)
    assert words_of(redrawn(host)) == [b"same"]


def test_equal_texts_in_different_blocks_are_both_written():
    host = cutting((100, 100, "same"))
    assert host.add_block("A", 2, TEXT) and host.add_block("B", 1, TEXT)
    host.add_item("A", 2, 1, [(200, -100)])
    assert host.SetDigDatString("A", 2, 1, 200.0, -100.0, "same")
    add_text(host, 1, 300, 100, "same", code="B")
    assert words_of(redrawn(host)) == [b"same"] * 3


def test_a_text_that_is_not_written_cuts_no_other():
    host = with_layer(TEXT)
    host.control.CutSameString = True
    add_text(host, 1, -100, 100, "off")
    add_text(host, 2, 100, 100, "off")
    add_text(host, 3, 200, 100, "tagged", tag=-1)
    add_text(host, 4, 300, 100, "tagged")
    assert written(redrawn(host)) == [(100, 100, b"off"), (300, 100, b"tagged")]


def test_a_cut_text_does_not_come_back_with_a_scroll_and_does_with_the_next_search():
    host = cutting((400, 300, "same"), (790, 100, "same"))
    redrawn(host)
    assert words_of(scrolled(host, 50, 30), "top") == [], "the area was not searched again"
    host.control.CutSameString = False
    assert words_of(scrolled(host, 1, 1), "top") == []
    assert words_of(redrawn(host)) == [b"same"] * 2


# --- Labels --------------------------------------------------------------------------------------------------------------------

LABELLED = {"point": (POINT, [(400, 300)]), "line": (LINE, [(370, 270), (430, 330)]),
            "polygon": (POLYGON, [(370, 270), (430, 270), (430, 330), (370, 330), (370, 270)]),
            "circle": (CIRCLE, [(400, 300, 30)]),
            "ellipse": (ELLIPSE, [(370, 270), (430, 330)])}
EACH_LABELLED = pytest.mark.parametrize("kind, pixels", LABELLED.values(), ids=LABELLED)


def labelled(kind, *shapes, newer=False, words="label", tag=0, visible=True, device="record"):
    """A host with items that have labels at (300, 200), (300, 220), ..."""
    host = with_layer(kind, newer=newer, device=device)
    for dat_id, pixels in enumerate(shapes, 1):
        put(host, dat_id, *pixels, tag=tag)
        label(host, dat_id, 300, 180 + 20 * dat_id, words)
    host.control.DigStrVisible = visible
    return host


@EACH_LABELLED
@BOTH
def test_labels_are_written_behind_their_block_as_the_context_stands(kind, pixels, newer):
    host = labelled(kind, pixels, pixels, newer=newer)
    drawn = [each for each in redrawn(host) if each.context == "base"]
    assert [(each.name, *each.values) for each in drawn[-6:]] == [
        ("SetROP2", R2_MASKPEN), ("SetBkMode", TRANSPARENT), ("TextOut", 300, 200, b"label"),
        ("SetROP2", R2_MASKPEN), ("SetBkMode", TRANSPARENT), ("TextOut", 300, 220, b"label")]
    assert not fonts(drawn)
    assert not {each.name for each in drawn} & {"SetTextColor", "SetBkColor", "SetTextAlign", "GetTextExtentPoint32"}


@EACH_LABELLED
def test_without_the_switch_no_label_is_written(kind, pixels):
    host = labelled(kind, pixels, visible=False)
    assert written(redrawn(host)) == []
    host.control.StrVisible = True
    assert len(written(redrawn(host))) == 1
    host.control.DigStrVisible = False
    assert written(redrawn(host)) == []


@EACH_LABELLED
def test_the_look_of_a_label_does_not_matter(kind, pixels):
    host = labelled(kind, pixels)
    plain = redrawn(host)
    style(host, 1, face="Arial", size=30, bits=7, pos=8, angle=45.0, fill=True, uline=True, strike=True, color=0x123456,
          back=0x654321)
    assert redrawn(host) == plain


def test_labels_take_the_alignment_that_a_text_layer_below_left():
    host = labelled(LINE, LABELLED["line"][1])
    assert host.add_block("T", 1, TEXT, 9)
    add_text(host, 1, 100, 100, "text", code="T", pos=8)
    drawn = redrawn(host)
    assert of(drawn, "SetTextAlign") == [(10,)] and words_of(drawn) == [b"text", b"label"]


def test_text_and_mesh_layers_have_no_labels():
    host = with_texts((400, 300, "ABC"))
    host.control.StrVisible = True
    assert len(written(redrawn(host))) == 1
    assert host.add_block("M", 1, MESH)
    assert host.control.OrvAddMeshDat("M", 1, 1, 2, 2, [100.0, 120.0] * 2, [-100.0] * 2 + [-120.0] * 2, [0.0] * 4)
    label(host, 1, 100, 100, "mesh", code="M")
    drawn = redrawn(host)
    assert words_of(drawn) == [b"ABC"] and len(of(drawn, "Polygon")) == 4


def test_a_label_stands_above_its_layer_and_below_the_next_one():
    host = labelled(LINE, LABELLED["line"][1])
    assert host.add_block("B", 1, LINE, 0)
    put(host, 1, (10, 10), (50, 50), code="B")
    assert [each.name for each in redrawn(host) if each.name in ("Polyline", "TextOut")] == ["Polyline", "TextOut", "Polyline"]


@EACH_LABELLED
@pytest.mark.parametrize("tag, mode, drawn", [(0, True, 1), (1, True, 0), (1, False, 1), (-1, True, 0), (-1, False, 0),
                                              (-2, True, 1)])
def test_the_tag_of_an_item_keeps_its_label_out_of_drawing(kind, pixels, tag, mode, drawn):
    host = labelled(kind, pixels, tag=tag)
    host.control.LineTagMode = mode
    assert len(written(redrawn(host))) == drawn


def test_an_image_with_a_tag_above_0_shows_without_its_label(tmp_path):
    host = labelled(POINT, [(400, 300)], tag=1)
    path = file_of(tmp_path, "a.bmp", bmp(8, 8))
    assert host.SetLayImage("A", path, "", 8, 8, 1.0, 1.0) and host.DspLayImage("A", True)
    drawn = redrawn(host)
    assert len(of(drawn, "StretchBlt")) == 2 and written(drawn) == []
    host.control.LineTagMode = False
    drawn = redrawn(host)
    assert len(of(drawn, "StretchBlt")) == 2 and len(written(drawn)) == 1


@EACH_LABELLED
def test_an_item_of_a_hidden_sub_layer_has_no_label_and_one_of_an_unknown_has(kind, pixels):
    host = labelled(kind, pixels, pixels)
    add_sub_layer(host, 3, disp=False)
    assert host.control.OrvSetDatSubLayerEx("A", 1, [1, 2], [3, 99])
    assert written(redrawn(host)) == [(300, 220, b"label")]


@EACH_LABELLED
def test_an_item_off_the_window_has_no_label_wherever_the_label_stands(kind, pixels):
    host = labelled(kind, [(x - 600, y, *rest) for x, y, *rest in pixels], pixels)
    assert written(redrawn(host)) == [(300, 220, b"label")]


def test_the_label_of_an_item_in_the_window_is_written_wherever_it_stands():
    host = labelled(LINE, LABELLED["line"][1])
    label(host, 1, 2000, -2000.2, "far")
    assert written(redrawn(host)) == [(2000, -1999, b"far")]


def test_items_that_leave_no_trace_still_have_their_labels():
    host = labelled(LINE, [(100, 100), (100.2, 100.2)])
    drawn = redrawn(host)
    assert of(drawn, "Polyline") == [] and len(written(drawn)) == 1, "a line on one pixel keeps its drawn mark"


def test_an_item_without_a_label_is_skipped():
    host = labelled(LINE, LABELLED["line"][1])
    put(host, 2, *LABELLED["line"][1])
    assert len(written(redrawn(host))) == 1


def test_equal_labels_are_all_written():
    host = labelled(LINE, *[LABELLED["line"][1]] * 3)
    host.control.CutSameString = True
    assert len(written(redrawn(host))) == 3


def test_the_origin_of_the_block_is_added_to_a_label():
    host = at_scale()
    host.control.StrVisible = True
    assert host.control.DigMemAlloc2("A", 1, POINT, "", 1, 100, -50)
    add_text(host, 1, 20, 30, "ABC")
    assert written(redrawn(host)) == [(120, 80, b"ABC")]


def test_a_scroll_writes_the_labels_of_the_items_that_it_draws():
    host = labelled(CIRCLE, [(400, 300, 30)], [(790, 100, 30)], [(100, 590, 30)])
    redrawn(host)
    assert written(scrolled(host, 50, 30), "top") == [(250, 190, b"label"), (250, 210, b"label")]


def test_a_host_drawing_has_labels_too():
    host = labelled(LINE, [(10, 10), (200, 200)])
    assert written(drawn_on(host, fine_device(300)), "device") == [(300, 200, b"label")]


# --- Texts that no one should give ----------------------------------------------------------------------------------------------


@pytest.mark.parametrize("words", ["", "x" * 100000, "字" * 20000, "\t\r\n\x01\x7f", "%s%n%d"],
                         ids=["empty", "long", "long kanji", "control", "format"])
@pytest.mark.parametrize("kind", [TEXT, POINT])
@pytest.mark.parametrize("device", ["record", "qt"])
def test_texts_of_any_kind_do_no_harm(words, kind, device):
    host = with_layer(kind, device=device)
    host.control.StrVisible = True
    put(host, 1, (100, 100))
    label(host, 1, 100, 100, words)
    host.RDMReDraw()
    if device == "record" and words:
        assert words_of(verbs(host)) == [words.encode("cp932")]


@pytest.mark.parametrize("look", [{"size": 2**31 - 1}, {"size": -2**31}, {"size": 0}, {"size": -10}, {"angle": float("nan")},
                                  {"angle": float("inf")}, {"angle": -1e300}, {"face": "x" * 5000}, {"face": "字" * 40},
                                  {"bits": -1},
                                  {"pos": -2**31}], ids=str)
@pytest.mark.parametrize("device", ["record", "qt"])
def test_looks_of_any_kind_do_no_harm(look, device):
    host = with_layer(TEXT, device=device)
    add_text(host, 1, 400, 300, "ABC", **look)
    add_text(host, 2, 400, 400, "DEF")
    host.RDMReDraw()
    if device == "record":
        assert b"DEF" in words_of(verbs(host))


@pytest.mark.parametrize("x, y", [(float("nan"), 0.0), (float("inf"), 0.0), (1e300, -1e300)])
@pytest.mark.parametrize("kind", [TEXT, POINT])
def test_anchors_anywhere_do_no_harm(x, y, kind):
    host = with_layer(kind)
    host.control.StrVisible = True
    put(host, 1, (100, 100))
    assert host.SetDigDatString("A", 1, 1, x, y, "lost")
    add_text(host, 2, 400, 300, "DEF")
    assert b"DEF" in words_of(redrawn(host))


def test_a_text_is_painted_in_its_colour():
    host = with_layer(TEXT, device="qt")
    add_text(host, 1, 400, 300, "■■■■", size=30, color=0x0000FF)
    host.RDMReDraw()
    pixels = host.control.pixels()
    seen = {tuple(pixels[(y * 800 + x) * 4:(y * 800 + x) * 4 + 3]) for y in range(300, 340, 4) for x in range(400, 540, 4)}
    assert (0, 0, 255) in seen
