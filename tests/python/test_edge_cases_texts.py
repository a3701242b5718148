"""Texts of features: setting one, its look, and the settings that go over a whole block."""

import pytest
from map_rig import CIRCLE, ELLIPSE, LINE, MESH, POINT, POLYGON, TEXT, block, drain, dump, item, items, painted, picked, verbs

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
PLAIN = {"z": 0, "fntname": b"", "size": 10, "style": 0, "fill": 0, "pos": 0, "angle": 0, "uline": 0, "strike": 0,
         "fcolor": 0, "bcolor": 0xFFFFFF}
# Face, size, style, anchor, angle, background, underline, strike-out, colours; each differs from the plain look.
STYLE = ("Face", 24, 7, 8, 12.5, True, True, True, 0x112233, 0x445566)
STYLED = {"fntname": b"Face", "size": 24, "style": 7, "pos": 8, "angle": 12.5, "fill": 1, "uline": 1, "strike": 1,
          "fcolor": 0x112233, "bcolor": 0x445566}


def with_item(newer=False, lay_type=TEXT):
    host = painted(newer)
    host.add_block("A", 1, lay_type)
    host.add_item("A", 1, 1, [(10, -10)])
    return host


def with_text(newer=False, lay_type=TEXT):
    host = with_item(newer, lay_type)
    assert host.SetDigDatString("A", 1, 1, 3.5, -4.5, "abc") is True
    return host


def text_of(host, dat_id=1, code="A", mesh=1):
    return item(host, code, mesh, dat_id)["str"]


# --- Setting a text ----------------------------------------------------------------------------------------------------------


@BOTH
def test_a_new_text_has_its_anchor_and_the_plain_look(newer):
    host = with_item(newer)
    assert text_of(host) is None
    assert host.SetDigDatString("A", 1, 1, 3.5, -4.5, "abc") is True
    assert picked(text_of(host), [*PLAIN, "x", "y", "text"]) == {**PLAIN, "x": 3.5, "y": -4.5, "text": b"abc"}


@pytest.mark.parametrize("lay_type", [POINT, LINE, POLYGON, CIRCLE, TEXT, ELLIPSE, MESH])
def test_an_item_of_any_layer_type_takes_a_text(lay_type):
    assert text_of(with_text(lay_type=lay_type))["text"] == b"abc"


@BOTH
def test_an_item_without_points_takes_a_text(newer):
    host = painted(newer)
    host.add_block("A", 1, TEXT)
    host.add_item("A", 1, 1, [])
    assert host.SetDigDatString("A", 1, 1, 0.0, 0.0, "abc") is True
    assert text_of(host)["text"] == b"abc"


@BOTH
def test_the_anchor_is_stored_as_given_whatever_the_origin_of_the_block(newer):
    host = painted(newer)
    assert host.control.DigMemAlloc2("A", 1, TEXT, "", 1, 5000.0, -7000.0)
    host.add_item("A", 1, 1, [(10, -10)])
    assert host.SetDigDatString("A", 1, 1, 1e300, -0.125, "abc")
    assert picked(text_of(host), ["x", "y"]) == {"x": 1e300, "y": -0.125}


@BOTH
def test_an_empty_text_is_a_text(newer):
    host = with_item(newer)
    assert host.SetDigDatString("A", 1, 1, 3.5, -4.5, "") is True
    assert picked(text_of(host), [*PLAIN, "x", "y", "text"]) == {**PLAIN, "x": 3.5, "y": -4.5, "text": b""}
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE) is True, "an empty text has a look like any other"
    assert picked(text_of(host), STYLED) == STYLED


@BOTH
def test_a_text_is_kept_in_the_bytes_of_the_code_page(newer):
    host = with_item(newer)
    for text in ("地図", "ソ表", "ﾟ", "x" * 5000):
        assert host.SetDigDatString("A", 1, 1, 0.0, 0.0, text)
        assert text_of(host)["text"] == text.encode("cp932")


@BOTH
def test_a_text_ends_at_its_first_zero_byte(newer):
    host = with_item(newer)
    assert host.SetDigDatString("A", 1, 1, 0.0, 0.0, b"ab\0cd")
    assert text_of(host)["text"] == b"ab"


@BOTH
def test_setting_a_text_again_resets_the_whole_look(newer):
    host = with_text(newer)
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE) is True
    assert host.SetDigDatString("A", 1, 1, 6.0, 7.0, "def") is True
    assert picked(text_of(host), [*PLAIN, "x", "y", "text"]) == {**PLAIN, "x": 6, "y": 7, "text": b"def"}


@pytest.mark.parametrize("code, mesh, dat_id", [("B", 1, 1), ("a", 1, 1), ("", 1, 1), ("A", 2, 1), ("A", 1, 2), ("A", 1, 0),
                                                ("A", 1, -1)])
@BOTH
def test_a_text_for_a_missing_block_or_item_is_refused(newer, code, mesh, dat_id):
    host = with_text(newer)
    before = dump(host)
    assert host.SetDigDatString(code, mesh, dat_id, 0.0, 0.0, "no") is False
    assert host.SetDigDatStrStyle(code, mesh, dat_id, *STYLE) is False
    assert dump(host) == before
    assert host.control.message_boxes == []


@BOTH
def test_a_text_for_an_empty_block_is_refused(newer):
    host = painted(newer)
    host.add_block("A", 1, TEXT)
    assert host.SetDigDatString("A", 1, 0, 0.0, 0.0, "no") is False
    assert host.SetDigDatStrStyle("A", 1, 0, *STYLE) is False
    assert host.MakeLayer("B", TEXT)
    assert host.SetDigDatString("B", 1, 0, 0.0, 0.0, "no") is False, "a layer without a block"


@BOTH
def test_a_text_and_its_look_go_to_the_last_of_the_items_with_that_number(newer):
    host = with_item(newer)
    host.add_item("A", 1, 1, [])
    host.add_item("A", 1, 2, [])
    host.SetDigDatString("A", 1, 1, 0.0, 0.0, "abc")
    host.SetDigDatStrStyle("A", 1, 1, *STYLE)
    first, second, third = items(host, "A", 1)
    assert (first["str"], third["str"]) == (None, None)
    assert picked(second["str"], ["text", *STYLED]) == {"text": b"abc", **STYLED}


@BOTH
def test_a_look_is_refused_when_only_the_first_of_two_items_has_a_text(newer):
    host = with_text(newer)
    host.add_item("A", 1, 1, [])
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE) is False
    assert picked(items(host, "A", 1)[0]["str"], PLAIN) == PLAIN


@BOTH
def test_a_text_changes_nothing_else_of_item_and_block_and_draws_nothing(newer):
    host = with_item(newer)
    rest = {key: value for key, value in item(host, "A", 1, 1).items() if key != "str"}
    sides = picked(block(host, "A", 1), ["minX", "minY", "maxX", "maxY", "datCnt"])
    drain(host)
    host.SetDigDatString("A", 1, 1, 1e6, -1e6, "abc")
    host.SetDigDatStrStyle("A", 1, 1, *STYLE)
    assert {key: value for key, value in item(host, "A", 1, 1).items() if key != "str"} == rest
    assert picked(block(host, "A", 1), sides) == sides
    assert verbs(host) == []


def test_a_code_of_50_characters_reaches_texts():
    host = painted()
    code = "c" * 50
    host.add_block(code, 1, TEXT)
    host.add_item(code, 1, 1, [])
    for newer in (False, True):
        host.newer = newer
        assert host.SetDigDatString(code, 1, 1, 0.0, 0.0, "abc")
        assert host.SetDigDatStrStyle(code, 1, 1, *STYLE)
    assert host.control.OrvSetFontSize(code, 1, 31)
    assert text_of(host, 1, code)["size"] == 31


# --- The look of one text ----------------------------------------------------------------------------------------------------


@BOTH
def test_a_look_before_the_text_is_refused(newer):
    host = with_item(newer)
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE) is False
    assert text_of(host) is None


@BOTH
def test_a_look_is_stored_whole_and_leaves_text_and_anchor(newer):
    host = with_text(newer)
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE) is True
    assert picked(text_of(host), [*STYLED, "x", "y", "z", "text"]) == {**STYLED, "x": 3.5, "y": -4.5, "z": 0, "text": b"abc"}


@pytest.mark.parametrize("place, field", [(5, "fill"), (6, "uline"), (7, "strike")])
@pytest.mark.parametrize("given, kept", [(True, 1), (False, 0), (-1, 1), (1, 1), (2, 1), (0, 0)])
@BOTH
def test_each_switch_of_a_look_becomes_0_or_1_by_itself(newer, place, field, given, kept):
    host = with_text(newer)
    args = ["", 10, 0, 0, 0.0, False, False, False, 0, 0]
    args[place] = given
    assert host.SetDigDatStrStyle("A", 1, 1, *args) is True
    assert picked(text_of(host), ["fill", "uline", "strike"]) == {"fill": 0, "uline": 0, "strike": 0, field: kept}


@pytest.mark.parametrize("field, place, value", [
    ("size", 1, 0), ("size", 1, -12), ("size", 1, 2**31 - 1), ("style", 2, -1), ("style", 2, 0x7FFFFFF8), ("pos", 3, 9),
    ("pos", 3, -1), ("pos", 3, 2**31 - 1), ("angle", 4, -720.25), ("angle", 4, 1e300), ("fcolor", 8, 0xFFFFFFFF),
    ("bcolor", 9, 0x80000001)])
@BOTH
def test_numbers_of_a_look_are_stored_as_given(newer, field, place, value):
    host = with_text(newer)
    args = list(STYLE)
    args[place] = value
    assert host.SetDigDatStrStyle("A", 1, 1, *args) is True
    assert picked(text_of(host), STYLED) == {**STYLED, field: value}


@BOTH
def test_the_nine_anchors_are_stored_by_their_numbers(newer):
    host = with_text(newer)
    for pos in range(9):
        assert host.SetDigDatStrStyle("A", 1, 1, "", 10, 0, pos, 0.0, False, False, False, 0, 0)
        assert text_of(host)["pos"] == pos


@BOTH
def test_a_face_name_is_kept_in_the_bytes_of_the_code_page_and_may_be_long(newer):
    host = with_text(newer)
    for face in ("ＭＳ 明朝", "f" * 200, ""):
        assert host.SetDigDatStrStyle("A", 1, 1, face, *STYLE[1:])
        assert text_of(host)["fntname"] == face.encode("cp932")


# --- Whole blocks ------------------------------------------------------------------------------------------------------------

WHOLE_BLOCK = [
    ("OrvSetFontStyleAll", STYLE, STYLED),
    ("OrvSetFontName", ("Face",), {"fntname": b"Face"}),
    ("OrvSetFontSize", (24,), {"size": 24}),
    ("OrvSetFontStyle", STYLE[2:8], picked(STYLED, ["style", "pos", "angle", "fill", "uline", "strike"])),
    ("OrvSetFontColor", STYLE[8:], picked(STYLED, ["fcolor", "bcolor"])),
]
EACH_SETTING = pytest.mark.parametrize("name, args, told", WHOLE_BLOCK, ids=[name for name, _, _ in WHOLE_BLOCK])


def ten_items_three_texts():
    host = painted()
    host.add_block("A", 1, LINE)
    host.add_block("A", 2, LINE)
    host.add_block("B", 1, TEXT)
    for dat_id in range(1, 11):
        host.add_item("A", 1, dat_id, [(dat_id, 0)])
    for code, mesh, dat_id in (("A", 1, 1), ("A", 1, 5), ("A", 1, 10), ("A", 2, 1), ("B", 1, 1)):
        if (code, mesh) != ("A", 1):
            host.add_item(code, mesh, dat_id, [])
        assert host.SetDigDatString(code, mesh, dat_id, 1.0, 2.0, f"text {dat_id}")
    return host


@EACH_SETTING
def test_a_setting_of_a_block_changes_its_fields_in_every_text_there_is(name, args, told):
    host = ten_items_three_texts()
    assert getattr(host.control, name)("A", 1, *args) is True
    for each in items(host, "A", 1):
        if each["datID"] in (1, 5, 10):
            expected = {**PLAIN, **told, "x": 1, "y": 2, "text": b"text %d" % each["datID"]}
            assert picked(each["str"], expected) == expected
        else:
            assert each["str"] is None
    for code, mesh in (("A", 2), ("B", 1)):
        assert picked(text_of(host, 1, code, mesh), PLAIN) == PLAIN, "other blocks keep theirs"


@EACH_SETTING
def test_a_setting_of_a_block_changes_no_other_field(name, args, told):
    host = with_text()
    assert host.SetDigDatStrStyle("A", 1, 1, "Old", 77, 1, 4, -3.0, True, False, True, 5, 6)
    before = text_of(host)
    assert getattr(host.control, name)("A", 1, *args)
    assert text_of(host) == {**before, **told}


@EACH_SETTING
def test_a_setting_of_a_block_without_items_or_texts_is_true(name, args, told):
    host = painted()
    host.add_block("A", 1, TEXT)
    before = dump(host)
    assert getattr(host.control, name)("A", 1, *args) is True
    assert dump(host) == before
    host.add_item("A", 1, 1, [(0, 0)])
    assert getattr(host.control, name)("A", 1, *args) is True
    assert text_of(host) is None


@pytest.mark.parametrize("code, mesh", [("A", 2), ("B", 1), ("a", 1), ("", 1), ("A", -1)])
@EACH_SETTING
def test_a_setting_of_a_missing_block_is_false(name, args, told, code, mesh):
    host = with_text()
    assert host.MakeLayer("B", TEXT)
    before = dump(host)
    assert getattr(host.control, name)(code, mesh, *args) is False
    assert dump(host) == before
    assert host.control.message_boxes == []


def test_a_setting_of_a_block_reaches_every_one_of_equal_numbers():
    host = painted()
    host.add_block("A", 1, TEXT)
    for _ in range(2):
        host.add_item("A", 1, 7, [])
        assert host.SetDigDatString("A", 1, 7, 0.0, 0.0, "abc")
    assert host.control.OrvSetFontSize("A", 1, 24)
    assert [each["str"]["size"] for each in items(host, "A", 1)] == [24, 24]


@pytest.mark.parametrize("given, kept", [(True, 1), (-1, 1), (2, 1), (0, 0)])
def test_switches_of_a_block_become_0_or_1(given, kept):
    host = with_text()
    assert host.control.OrvSetFontStyleAll("A", 1, "", 10, 0, 0, 0.0, given, given, given, 0, 0)
    assert picked(text_of(host), ["fill", "uline", "strike"]) == {"fill": kept, "uline": kept, "strike": kept}
    assert host.control.OrvSetFontStyle("A", 1, 0, 0, 0.0, given, given, given)
    assert picked(text_of(host), ["fill", "uline", "strike"]) == {"fill": kept, "uline": kept, "strike": kept}


def test_settings_of_a_block_draw_nothing():
    host = with_text()
    drain(host)
    for name, args, _ in WHOLE_BLOCK:
        assert getattr(host.control, name)("A", 1, *args)
    assert verbs(host) == []


# --- The life of a text ------------------------------------------------------------------------------------------------------


@BOTH
def test_a_text_goes_with_its_item_and_the_others_keep_theirs(newer):
    host = painted(newer)
    host.add_block("A", 1, TEXT)
    for dat_id in (1, 2, 3):
        host.add_item("A", 1, dat_id, [])
        host.SetDigDatString("A", 1, dat_id, 0.0, 0.0, f"text {dat_id}")
    assert host.DelDigDat("A", 1, 2)
    assert [(each["datID"], each["str"]["text"]) for each in items(host, "A", 1)] == [(1, b"text 1"), (3, b"text 3")]
    host.add_item("A", 1, 2, [])
    assert text_of(host, 2) is None


@BOTH
def test_a_block_made_again_has_no_texts(newer):
    host = with_text(newer)
    assert host.DigMemDelete("A", 1)
    host.add_block("A", 1, TEXT)
    host.add_item("A", 1, 1, [])
    assert text_of(host) is None
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE) is False


def test_a_copied_item_has_a_text_of_its_own():
    host = with_text()
    host.add_block("B", 1, TEXT)
    assert host.SetDigDatStrStyle("A", 1, 1, *STYLE)
    new_id = host.control.OrvCopyData("A", 1, 1, "B", 1)
    copied = [*(field for field in STYLED if field not in ("fntname", "size")), "x", "y", "text"]
    assert picked(text_of(host, new_id, "B"), copied) == picked(text_of(host), copied)
    assert text_of(host, new_id, "B")["fntname"] == b"", "the face is not copied"
    assert host.SetDigDatString("B", 1, new_id, 0.0, 0.0, "other")
    assert picked(text_of(host), ["text", *STYLED]) == {"text": b"abc", **STYLED}
    assert host.DelDigDat("A", 1, 1)
    assert text_of(host, new_id, "B")["text"] == b"other"
