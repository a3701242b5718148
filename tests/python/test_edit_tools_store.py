"""What the tools leave in the records: rectangles and bounds, hidden tags, repeated numbers, blocks, layers and codes."""

import pytest
from edit_rig import (ADD, EMPTY, END, LOADING, PICKING, SPOT, START, STROKE, another_layer, begin, cancelled, clean, editable,
                      figures, finish, marked, mode, numbers, pick, rubber, shape, tag_and_active, told)
from input_rig import ADD_POINT, COPY, DELETE, DELETE_POINT, MOVE, MOVE_POINT, listening, move, press
from map_rig import CIRCLE, EMPTY_RECT, LINE, MESH, POINT, POLYGON, TEXT, block, bounds, index_keys, item, layer, sub_layers

ROAD = "道路"


def rect(host, dat_id=1):
    return item(host, "A", 1, dat_id)["rect"]


# --- Rectangles and bounds ---------------------------------------------------------------------------------------------------


def test_a_moved_item_covers_its_old_and_its_new_place():
    host = editable(LINE, STROKE)
    pick(host, MOVE, (200, 100))
    press(host, 230, 170)
    assert rect(host) == (100, -370, 330, -99) and bounds(host, "A", 1) == (100, -370, 330, -100)


def test_a_copy_covers_its_new_place_alone():
    host = editable(LINE, STROKE)
    seen = []
    host.control.connect(START, lambda *args: seen.append(rect(host, 2)))
    pick(host, COPY, (200, 100))
    assert seen == [EMPTY_RECT] and bounds(host, "A", 1) == (100, -300, 300, -100)
    press(host, 230, 170)
    assert rect(host, 2) == (130, -370, 330, -170) and rect(host, 1) == (100, -300, 300, -99)
    assert bounds(host, "A", 1) == (100, -370, 330, -100)


def test_a_cancelled_copy_leaves_the_bounds():
    host = editable(LINE, STROKE)
    pick(host, COPY, (200, 100))
    move(host, 600, 500)
    cancelled(host)
    assert bounds(host, "A", 1) == (100, -300, 300, -100)


def test_a_drawn_circle_covers_its_radius():
    host = editable(CIRCLE)
    begin(host, ADD)
    press(host, 400, 300)
    press(host, 450, 300)
    assert rect(host) == (350, -350, 450, -249) and bounds(host, "A", 1) == (350, -350, 450, -250)


def test_a_moved_circle_grows_by_its_centre_without_the_radius():
    host = editable(CIRCLE, [(400, 300, 50)])
    pick(host, MOVE, (400, 300))
    press(host, 600, 300)
    assert bounds(host, "A", 1) == (350, -350, 600, -250)


# --- Tags --------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("tag", [0, 1, 5, -1, -2, 2147483647, -2147483648])
@pytest.mark.parametrize("tool", [MOVE_POINT, DELETE_POINT, MOVE])
def test_any_tag_comes_back_at_the_commit(tag, tool):
    host = marked(editable(LINE, STROKE), tag)
    begin(host, tool, 1)
    assert tag_and_active(host)[0] == -1
    press(host, *EMPTY)
    assert tag_and_active(host) == (tag, False)


def test_a_tag_that_the_host_writes_meanwhile_is_overwritten():
    host = marked(editable(LINE, STROKE), 5)
    begin(host, MOVE_POINT, 1)
    marked(host, 9, True)
    press(host, *EMPTY)
    assert tag_and_active(host) == (5, False)


def test_a_drawn_line_has_tag_0():
    host = editable(LINE)
    begin(host, ADD)
    press(host, 10, 10)
    finish(host, 10, 10)
    assert tag_and_active(host) == (0, True)


# --- Numbers -----------------------------------------------------------------------------------------------------------------


def test_of_items_with_one_number_the_pick_marks_the_one_hit_and_the_tool_loads_the_first():
    host = editable(LINE, STROKE)
    host.add_item("A", 1, 1, [(100, -500), (300, -500)])
    host.RDMReDraw()
    heard = listening(host)
    pick(host, MOVE_POINT, (200, 500))
    assert told(heard) == [(START, "A", 1, 1, 4, 200)] and rubber(host) == STROKE
    assert [each["lineTag"] for each in block(host, "A", 1)["dats"]] == [-1, 0]


def test_a_copy_behind_a_gap_takes_one_more_than_the_greatest_number():
    host = editable(POINT, SPOT)
    for number in (-7, 500):
        host.add_item("A", 1, number, [(9000, 9000)])
    heard = listening(host)
    pick(host, COPY, SPOT[0])
    assert told(heard) == [(START, "A", 1, 501, 1, 260)]


def test_a_pick_of_an_item_with_a_number_below_0_ends_the_click():
    """Such a number cannot be told from no item at all."""
    for tool in PICKING:
        host = editable(LINE)
        host.add_item("A", 1, -7, [(100, -100), (300, -100)])
        host.RDMReDraw()
        heard = listening(host)
        pick(host, tool, (200, 100))
        assert told(heard) == [] and mode(host) == tool and figures(host) == [] and numbers(host) == [-7]
        assert tag_and_active(host, -7) == (0, True)


@pytest.mark.parametrize("tool", LOADING)
def test_a_pick_of_an_item_with_number_0_is_taken(tool):
    host = editable(LINE)
    host.add_item("A", 1, 0, [(100, -100), (300, -100)])
    host.RDMReDraw()
    heard = listening(host)
    pick(host, tool, (200, 100))
    assert told(heard)[0][:4] == (START, "A", 1, 1 if tool == COPY else 0)


def test_numbers_beyond_16_bits_are_edited_as_any():
    host = editable(LINE)
    host.add_item("A", 1, 2000000000, [(100, -100), (300, -100)])
    begin(host, MOVE_POINT, 2000000000)
    heard = listening(host)
    press(host, *EMPTY)
    assert told(heard) == [(END, "A", 1, 2000000000, 2, 200)]


# --- Blocks, layers and codes ------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("code", [ROAD, "L" * 50, "a b", "ｱ"])
def test_codes_are_told_as_the_store_has_them(code):
    host = editable(POINT)
    another_layer(host, code, LINE, [(100, 500), (300, 500)])
    heard = listening(host)
    begin(host, MOVE, code="")
    press(host, 200, 500)
    press(host, 210, 510)
    begin(host, ADD, code=code)
    for at in ((10, 10), (20, 20)):
        press(host, *at)
    finish(host, 20, 20)
    assert {event[1] for event in told(heard)} == {code} and shape(host, 1, code)[0] == (110, 510)
    assert shape(host, 2, code) == [(10, 10), (20, 20)]


@pytest.mark.parametrize("kind", [POINT, LINE, POLYGON])
def test_a_layer_without_a_block_gets_one_and_keeps_its_index(kind):
    host = editable(LINE, STROKE)
    assert host.control.MakeLayer("N", kind)
    before = layer(host, "N")["layIndex"]
    begin(host, ADD, code="N", mesh=12)
    press(host, 10, 10)
    finish(host, 10, 10)
    assert block(host, "N", 12)["datCnt"] == 1 and ("N", 12) in index_keys(host)
    assert layer(host, "N")["layIndex"] == before and layer(host, "N")["layType"] == kind


@pytest.mark.parametrize("tool", PICKING)
@pytest.mark.parametrize("kind", [TEXT, MESH])
def test_texts_and_meshes_are_never_picked(tool, kind):
    host = editable(kind)
    if kind == TEXT:
        host.add_item("A", 1, 1, [(200, -100)])
    else:
        xs, ys = [100.0, 300.0, 100.0, 300.0], [-50.0, -50.0, -200.0, -200.0]
        assert host.control.OrvAddMeshDat("A", 1, 1, 2, 2, xs, ys, [0.0] * 4)
    host.RDMReDraw()
    heard = listening(host)
    pick(host, tool, (200, 100))
    assert told(heard) == [] and mode(host) == tool and not tag_and_active(host)[1]


def test_a_named_text_is_moved_as_a_line_of_one_point():
    host = editable(TEXT)
    host.add_item("A", 1, 1, [(200, -100)])
    begin(host, MOVE_POINT, 1)
    heard = listening(host)
    for at in ((200, 100), (250, 140), EMPTY):
        move(host, *at)
        press(host, *at)
    assert told(heard) == [(END, "A", 1, 1, 1, 200)] and shape(host) == [(250, 140)] and clean(host)


def test_named_mesh_data_is_written_back_with_its_colours_kept_and_its_heights_gone():
    host = editable(MESH)
    xs, ys = [100.0, 300.0, 100.0, 300.0], [-50.0, -50.0, -200.0, -200.0]
    assert host.control.OrvAddMeshDat("A", 1, 1, 2, 2, xs, ys, [7.0] * 4)
    assert host.control.OrvSetMeshColor("A", 1, 1, [1, 2, 3, 4])
    begin(host, MOVE_POINT, 1)
    for at in ((300, 50), (350, 60), EMPTY):
        press(host, *at)
    found = item(host, "A", 1, 1)
    assert found["pnts"] == [(100, -50, 0), (350, -60, 0), (100, -200, 0), (300, -200, 0)]
    assert list(found["meshAttr"]["meshColor"]) == [1, 2, 3, 4]


def test_drawing_on_a_mesh_layer_makes_an_item_without_a_grid():
    host = editable(MESH)
    begin(host, ADD)
    for at in ((10, 10), (90, 90)):
        press(host, *at)
    finish(host, 90, 90)
    host.RDMReDraw()
    assert shape(host) == [(10, 10), (90, 90)] and item(host, "A", 1, 1)["meshAttr"] is None


@pytest.mark.parametrize("tool", LOADING)
@pytest.mark.parametrize("kind", [LINE, POLYGON, CIRCLE])
def test_a_named_item_without_points_can_be_edited_to_no_effect(tool, kind):
    host = editable(kind)
    assert host.AddDigDat("A", 1, 1, 5)
    begin(host, tool, 1)
    assert rubber(host) == [] and tag_and_active(host)[0] == -1
    heard = listening(host)
    for place in ((0, 0), EMPTY):
        move(host, *place)
        press(host, *place)
    finish(host, *EMPTY)
    if kind == CIRCLE and tool == DELETE_POINT:
        cancelled(host)
    assert [name for name, *_ in told(heard)] == [END] and clean(host)
    assert shape(host) == [] and tag_and_active(host) == (5, False)


def test_the_text_of_an_item_stays_where_it_is_and_a_copy_takes_it_along():
    host = editable(LINE, STROKE)
    assert host.SetDigDatString("A", 1, 1, 200.0, -100.0, "name")
    before = item(host, "A", 1, 1)["str"]
    assert (before["x"], before["y"]) == (200, -100)
    for tool, number in ((MOVE, 1), (COPY, 2)):
        pick(host, tool, tuple(map(int, shape(host)[0])))
        press(host, 230, 370)
        assert item(host, "A", 1, 1)["str"] == before
        host.RDMReDraw()
    copied = item(host, "A", 1, number)["str"]
    assert (copied["x"], copied["y"]) == (200, -100), "texts are moved by no tool"


def test_items_of_hidden_sub_layers_are_not_picked():
    host = editable(POINT, SPOT)
    assert host.control.OrvSetSubLayerEx("A", "", 3, False, 0, 1, 0, 0, 0, 1, 1)
    assert host.SetDigDatSubLayer("A", 1, 1, 3) and len(sub_layers(host, "A")) == 1
    host.RDMReDraw()
    heard = listening(host)
    pick(host, DELETE, SPOT[0])
    assert told(heard) == [] and numbers(host) == [1]


# --- The remembered segment --------------------------------------------------------------------------------------------------


def test_a_remembered_segment_past_the_end_of_a_shorter_figure_takes_no_point():
    rings = [(100, 100), (500, 100), (500, 500), (100, 500), (100, 100), (200, 200), (400, 200), (400, 400), (200, 400),
             (200, 200)]
    host = editable(POLYGON, rings)
    another_layer(host, "L", LINE, STROKE)
    begin(host, ADD_POINT, 1)
    move(host, 204, 230)
    begin(host, ADD_POINT, 1, "L")
    heard = listening(host)
    press(host, 204, 230)
    assert rubber(host) == STROKE and told(heard) == [] and mode(host) == ADD_POINT
    finish(host, *EMPTY)
    assert told(heard) == [(END, "L", 1, 1, 4, 210)] and shape(host, 1, "L") == STROKE


def test_a_click_without_a_move_inserts_at_the_segment_that_the_last_move_found_in_any_figure():
    host = editable(LINE, STROKE, [(100, 500), (300, 500), (500, 500), (700, 500)])
    begin(host, ADD_POINT, 1)
    move(host, 304, 270)
    begin(host, ADD_POINT, 2)
    press(host, 320, 520)
    assert rubber(host) == [(100, 500), (300, 500), (320, 520), (500, 500), (700, 500)]
