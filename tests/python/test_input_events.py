"""What a host hears of the mouse: each event with its arguments, their order, and the moments at which none is fired."""

import pytest
from input_rig import (ALL_CLICKS, CTRL, HINT_TIMER, LEFT, NORMAL, PAN, RIGHT, SHIFT, SHIFT_CLICKS, add_layer, at_scale, click,
                       double_click, drag, listening, move, names, own, press, put, ready, release, selected, shown, taken, tick)
from map_rig import LINE, PIXEL_ZOOM, POINT, POLYGON, Host, composed, drain, dump, verbs, view
from overlay_rig import figure

BOTH = pytest.mark.parametrize("newer", [False, True], ids=["older names", "newer names"])
SPOT = (200, 150)
EMPTY = (600, 500)


def with_spot(**settings):
    return shown(POINT, [SPOT], **settings)


# --- The mouse itself ----------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("kind, flags, event", [("ldown", 1, "MouseDown"), ("lup", 0, "MouseUp"), ("rdown", 2, "MouseDown"),
                                                ("rup", 0, "MouseUp")])
@pytest.mark.parametrize("keys, shift", [(0, 0), (SHIFT, 1), (CTRL, 2), (SHIFT | CTRL, 3)])
def test_a_button_tells_which_it_is_the_keys_held_and_the_client_position(kind, flags, event, keys, shift):
    host = shown(POINT)
    heard = listening(host)
    host.control.mouse(kind, flags | keys, 31, 47)
    assert heard == [(event, 1 if kind[0] == "l" else 2, shift, 31, 47)]


@pytest.mark.parametrize("flags, button", [(0, 0), (SHIFT, 0), (CTRL, 0), (LEFT | SHIFT, 0), (LEFT | CTRL, 0), (LEFT | RIGHT, 0),
                                           (RIGHT | SHIFT, 0), (SHIFT | CTRL, 0)])
def test_a_mouse_move_tells_no_key_and_no_button_beside_the_left_one_alone(flags, button):
    host = shown(POINT)
    heard = listening(host)
    move(host, 31, 47, flags)
    assert heard == [("MouseMove", button, 0, 31, 47)]


def test_a_mouse_move_with_the_left_button_alone_tells_button_1_where_no_rectangle_is_tracked():
    host = shown(POINT, select=False)
    heard = listening(host)
    move(host, 31, 47, LEFT)
    assert heard == [("MouseMove", 1, 0, 31, 47)]


def test_the_capture_is_held_from_button_down_to_button_up():
    host = shown(POINT)
    for down, flags, up in (("ldown", LEFT, "lup"), ("rdown", RIGHT, "rup")):
        host.control.mouse(down, flags, 10, 10)
        assert host.control.captured
        host.control.mouse(up, 0, 10, 10)
        assert not host.control.captured


# --- Clicks on data ------------------------------------------------------------------------------------------------------------


@BOTH
def test_a_click_on_an_item_tells_its_key_and_the_client_position_between_mouse_down_and_mouse_up(newer):
    host = shown(POINT, [(400, 400)], newer=newer)
    add_layer(host, "roads", POINT, 5, [SPOT], mesh=533945, first=77)
    host.RDMReDraw()
    heard = listening(host)
    click(host, 203, 148)
    assert heard == [("MouseDown", 1, 0, 203, 148), ("OnDataClick", 77, "roads", 533945, 203, 148),
                     ("MouseUp", 1, 0, 203, 148)]


def test_the_item_is_selected_and_painted_before_the_click_is_told():
    host = with_spot()
    seen = []
    drain(host)
    host.control.connect("OnDataClick", lambda *args: seen.append((selected(host), composed(verbs(host)))))
    click(host, *SPOT)
    assert seen == [([1], True)]


def test_a_click_on_empty_map_clears_the_active_set_repaints_and_fires_no_data_click():
    host = with_spot()
    click(host, *SPOT)
    assert selected(host) == [1]
    heard = listening(host)
    drain(host)
    click(host, *EMPTY)
    assert selected(host) == [] and composed(verbs(host))
    assert heard == [("MouseDown", 1, 0, *EMPTY), ("MouseUp", 1, 0, *EMPTY)]


@pytest.mark.parametrize("keys, shift", [(SHIFT, 1), (CTRL, 2)])
def test_a_click_on_empty_map_with_shift_or_ctrl_keeps_the_active_set(keys, shift):
    host = with_spot()
    click(host, *SPOT)
    heard = listening(host)
    drain(host)
    click(host, *EMPTY, keys)
    assert selected(host) == [1] and composed(verbs(host))
    assert heard == [("MouseDown", 1, shift, *EMPTY), ("OnDataClick", 1, "A", 1, *EMPTY), ("MouseUp", 1, shift, *EMPTY)], \
        "the click tells the first active item, which is still the one of before"


@pytest.mark.parametrize("at", [SPOT, EMPTY], ids=["on an item", "on empty map"])
def test_without_selection_a_click_fires_twice_with_zeros_at_button_down_and_at_button_up(at):
    host = with_spot(select=False)
    heard = listening(host)
    drain(host)
    click(host, *at)
    assert heard == [("OnDataClick", 0, "", 0, *at), ("MouseDown", 1, 0, *at), ("OnDataClick", 0, "", 0, *at),
                     ("MouseUp", 1, 0, *at)]
    assert selected(host) == [] and not composed(verbs(host))


@pytest.mark.parametrize("keys", [SHIFT, CTRL, SHIFT | CTRL])
def test_without_selection_the_keys_make_no_difference_to_the_two_data_clicks(keys):
    host = with_spot(select=False)
    heard = listening(host)
    click(host, *SPOT, keys)
    assert own(heard) == [("OnDataClick", 0, "", 0, *SPOT)] * 2


def test_without_selection_a_zoom_rectangle_in_waiting_takes_the_data_click_of_button_down_away():
    host = with_spot(select=False)
    host.control.OrvRectZoom(10)
    heard = listening(host)
    click(host, *SPOT)
    assert names(heard) == ["MouseDown", "OnDataClick", "MouseUp"]


@pytest.mark.parametrize("mode", [1, 49, 52, 100, 102, 999, -1])
def test_an_unknown_run_mode_is_like_the_normal_one_at_button_down_and_selects_nothing_at_button_up(mode):
    host = with_spot(select=False)
    host.control.RunMode = mode
    heard = listening(host)
    click(host, *SPOT)
    assert names(taken(heard)) == ["OnDataClick", "MouseDown", "MouseUp"]
    host.control.SetDataSelectMode(True)
    drain(host)
    click(host, *SPOT)
    assert names(heard) == ["MouseDown", "MouseUp"]
    assert selected(host) == [] and verbs(host) == []
    assert host.control.RunMode == mode


def test_an_item_of_number_0_is_told_and_one_below_0_is_selected_in_silence():
    host = shown(POINT)
    for dat_id, x in ((0, 100), (-1, 200), (-7, 300)):
        put(host, dat_id, (x, 100))
    host.RDMReDraw()
    heard = listening(host)
    click(host, 100, 100)
    assert own(taken(heard)) == [("OnDataClick", 0, "A", 1, 100, 100)]
    for x, dat_id in ((200, -1), (300, -7)):
        click(host, x, 100)
        assert selected(host) == [dat_id]
        assert names(taken(heard)) == ["MouseDown", "MouseUp"]


def test_the_click_tells_the_first_active_item_and_not_the_one_under_the_cursor():
    host = shown(POINT, [(100, 100)], [(200, 100)])
    heard = listening(host)
    click(host, 200, 100)
    click(host, 100, 100, CTRL)
    assert own(heard) == [("OnDataClick", 2, "A", 1, 200, 100), ("OnDataClick", 1, "A", 1, 100, 100)]
    assert selected(host) == [1, 2]
    taken(heard)
    click(host, 200, 100, CTRL)
    assert own(heard) == [("OnDataClick", 1, "A", 1, 200, 100)] and selected(host) == [1]


def test_the_code_of_a_click_is_text_of_the_map_s_code_page():
    host = shown(POINT)
    add_layer_of_japanese_name(host)
    heard = listening(host)
    click(host, *SPOT)
    assert own(heard) == [("OnDataClick", 1, "道路", 1, *SPOT)]


def add_layer_of_japanese_name(host):
    assert host.add_block("道路", 1, POINT, 5)
    put(host, 1, SPOT, code="道路")
    host.RDMReDraw()


# --- Double clicks -------------------------------------------------------------------------------------------------------------


def test_a_double_click_tells_the_first_active_item_after_the_click_was_told():
    host = with_spot()
    heard = listening(host)
    double_click(host, *SPOT)
    assert own(heard) == [("OnDataClick", 1, "A", 1, *SPOT), ("OnDataDblClick", 1, "A", 1, *SPOT)]
    assert names(heard)[:3] == ["MouseDown", "OnDataClick", "MouseUp"]


def test_the_button_up_after_a_double_click_fires_only_mouse_up():
    host = shown(POINT, [SPOT], [SPOT])
    heard = listening(host)
    click(host, *SPOT)
    host.control.mouse("ldbl", LEFT, *SPOT)
    taken(heard)
    drain(host)
    release(host, *EMPTY)
    assert heard == [("MouseUp", 1, 0, *EMPTY)]
    assert selected(host) == [2] and verbs(host) == [], "nothing is selected, cleared or painted"
    release(host, *EMPTY)
    assert selected(host) == [], "the next button up selects again"


def test_a_double_click_without_an_active_item_tells_nothing_of_data():
    host = with_spot()
    heard = listening(host)
    double_click(host, *EMPTY)
    assert own(heard) == []


def test_a_double_click_tells_the_active_item_wherever_the_cursor_is_and_even_in_a_hidden_layer():
    host = with_spot()
    click(host, *SPOT)
    host.SetLayer("A", False)
    heard = listening(host)
    host.control.mouse("ldbl", LEFT, *EMPTY)
    assert own(heard) == [("OnDataDblClick", 1, "A", 1, *EMPTY)]


@pytest.mark.parametrize("keys", [SHIFT, SHIFT | CTRL, CTRL])
@pytest.mark.parametrize("mode", [NORMAL, PAN, SHIFT_CLICKS, 7])
def test_a_double_click_with_shift_or_ctrl_is_ignored_altogether(keys, mode):
    host = with_spot()
    click(host, *SPOT)
    host.control.RunMode = mode
    heard = listening(host)
    drain(host)
    host.control.mouse("ldbl", LEFT | keys, *SPOT)
    assert heard == [] and verbs(host) == [] and host.control.message_boxes == []


def test_the_button_up_after_an_ignored_double_click_still_selects():
    host = shown(POINT, [SPOT], [SPOT])
    click(host, *SPOT)
    host.control.mouse("ldbl", LEFT | CTRL, *SPOT)
    release(host, *SPOT, CTRL)
    assert selected(host) == [1], "both are toggled"


def test_with_debug_mode_a_double_click_shows_the_key_in_a_box_and_fires_no_event():
    host = with_spot()
    click(host, *SPOT)
    host.control.DebugMode = True
    heard = listening(host)
    host.control.mouse("ldbl", LEFT, *SPOT)
    assert own(heard) == []
    (box,) = host.control.message_boxes
    assert box[0] == "\n ID[1]--LayCode[A] MeshNo[1]"


def test_with_debug_mode_a_double_click_on_nothing_shows_no_box():
    host = with_spot()
    host.control.DebugMode = True
    host.control.mouse("ldbl", LEFT, *SPOT)
    assert host.control.message_boxes == []


@pytest.mark.parametrize("mode", [NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 7])
def test_a_double_click_is_told_in_every_mode_that_is_no_tool(mode):
    host = with_spot()
    click(host, *SPOT)
    host.control.RunMode = mode
    heard = listening(host)
    host.control.mouse("ldbl", LEFT, *EMPTY)
    assert own(heard) == [("OnDataDblClick", 1, "A", 1, *EMPTY)]


# --- Events that belong to other rows ------------------------------------------------------------------------------------------


def test_the_rest_on_an_item_is_told_with_the_position_of_the_cursor_on_the_screen():
    host = with_spot()
    control = host.control
    heard = listening(host)
    control.clock, control.cursor_pos = 10.0, SPOT
    move(host, *SPOT)
    control.clock = 12.0
    tick(host, HINT_TIMER)
    assert own(heard) == [("OnHintStart", 1, "A", 1, *SPOT)]


def test_a_zoom_by_the_wheel_is_told_with_the_new_zoom():
    host = with_spot()
    heard = listening(host)
    host.control.wheel(0, 120, 400, 300)
    assert own(heard) == [("OnZoomChange", int(PIXEL_ZOOM * 0.8))] and host.control.Zoom == int(PIXEL_ZOOM * 0.8)


@BOTH
def test_a_click_on_a_figure_is_told_with_its_number(newer):
    host = shown(LINE, newer=newer)
    figure(host, POLYGON, [(10, 10), (20, 10), (20, 20), (10, 10)])
    figure(host, POLYGON, [(100, 100), (300, 100), (300, 300), (100, 300), (100, 100)])
    host.control.RunMode = ALL_CLICKS
    heard = listening(host)
    press(host, 200, 200)
    assert heard == [("OnOrgDataClick", 2, 200, 200)], "and mouse down is not fired"


def test_a_click_on_a_point_of_an_active_figure_is_told_with_figure_and_point():
    host = shown(LINE)
    figure(host, LINE, [(100, 100), (200, 100), (300, 150)], active=True)
    host.control.RunMode = ALL_CLICKS
    heard = listening(host)
    press(host, 301, 151)
    assert heard == [("OnOrgPointClick", 1, 2, 301, 151)]


@pytest.mark.parametrize("mode", [SHIFT_CLICKS, ALL_CLICKS])
def test_a_shift_click_tells_the_nearest_point_of_the_figures(mode):
    host = shown(LINE)
    figure(host, LINE, [(100, 100), (200, 100), (300, 150)])
    host.control.RunMode = mode
    heard = listening(host)
    press(host, 180, 140, SHIFT)
    assert heard == [("OnOrgNearPtClick", 1, 1, 200.0, -100.0, 180, 140)]


@pytest.mark.parametrize("mode", [SHIFT_CLICKS, ALL_CLICKS])
def test_a_ctrl_and_shift_click_tells_the_nearest_point_of_the_data(mode):
    host = shown(LINE, [(100, 100), (200, 100)], [(300, 200), (400, 250), (500, 200)])
    host.control.RunMode = mode
    heard = listening(host)
    press(host, 410, 280, SHIFT | CTRL)
    assert heard == [("OnNearPtClick", 2, 1, 1, 400.0, -250.0, 410, 280)]


def test_the_tools_tell_their_start_and_end():
    host = shown(POINT)
    assert host.control.DigDatEditor("A", 1, 5, 100) == 0
    heard = listening(host)
    press(host, *SPOT)
    assert heard == [("OnEditorStart", "A", 1, -1, 0, 100), ("OnEditorEnd", "A", 1, 5, 0, 100), ("MouseDown", 1, 0, *SPOT)], \
        "the tool acts before the mouse is told"


def test_the_data_command_is_declared_and_never_fired():
    host = with_spot()
    host.control.ExecRun = True
    heard = listening(host)
    for mode in (NORMAL, PAN, SHIFT_CLICKS, ALL_CLICKS, 7):
        host.control.RunMode = mode
        for keys in (0, SHIFT, CTRL, SHIFT | CTRL):
            double_click(host, *SPOT, keys)
    assert "OnDataCmd" not in names(heard) and "MouseDown" in names(heard)


# --- Before there is a picture -------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("initialised", [False, True], ids=["before init", "before the first paint"])
def test_before_the_first_paint_the_left_button_and_the_move_do_nothing_and_the_right_button_is_told(initialised):
    host = Host(False)
    if initialised:
        host.init()
    heard = listening(host)
    drain(host)
    before = dump(host)
    for kind, flags in (("ldown", LEFT), ("move", 0), ("move", LEFT), ("move", RIGHT), ("lup", 0), ("ldbl", LEFT)):
        host.control.mouse(kind, flags, 10, 20)
        assert not host.control.captured, kind
    assert heard == [] and dump(host) == before
    host.control.mouse("rdown", RIGHT, 10, 20)
    host.control.mouse("rup", 0, 10, 20)
    assert heard == [("MouseDown", 2, 0, 10, 20), ("MouseUp", 2, 0, 10, 20)]


@pytest.mark.parametrize("initialised", [False, True], ids=["before init", "before the first paint"])
def test_keys_wheel_and_timers_before_the_first_paint_do_no_harm(initialised):
    host = Host(False)
    if initialised:
        host.init()
    host.control.ScrollMode = 10
    heard = listening(host)
    host.control.mouse("rdown", RIGHT, 10, 20)
    host.control.cursor_pos = (10, 20)
    for number in (1, 2, 3, 11, 0, -1, 12):
        host.control.tick(number)
    for key in (27, 46, 65, 0):
        host.control.key(key)
    host.control.wheel(0, 120, 10, 10)
    host.control.mouse("rup", 0, 10, 20)
    assert names(own(heard)) == [] and view(host, "DrawState") == (0 if initialised else -1)


def test_a_rectangle_of_selection_fires_neither_a_data_click_nor_a_mouse_move():
    host = with_spot()
    heard = listening(host)
    drag(host, (150, 100), (250, 200))
    assert selected(host) == [1]
    assert names(heard) == ["MouseDown", "MouseUp"]


def test_two_controls_hear_their_own_events_only():
    first, second = with_spot(), with_spot()
    one, two = listening(first), listening(second)
    click(second, *SPOT)
    assert one == [] and len(two) == 3
    assert selected(first) == [] and selected(second) == [1]


def test_selection_can_be_asked_and_switched_and_marks_the_control_modified():
    host = ready(at_scale())
    control = host.control
    for newer in (False, True):
        setter, getter = (("OrvSetDatSelMode", "OrvGetDatSelMode") if newer else ("SetDataSelectMode", "GetDataSelectMode"))
        for value in (False, True):
            control.modified = False
            getattr(control, setter)(value)
            assert getattr(control, getter)() is value and control.modified is True


@pytest.mark.parametrize("name, value", [("RunMode", 51), ("RunMode", -3), ("ScrollMode", 10), ("ScrollMode", 77),
                                         ("ExecRun", False), ("DebugMode", True)])
def test_the_modes_are_plain_properties_that_mark_the_control_modified(name, value):
    control = ready(at_scale()).control
    control.modified = False
    setattr(control, name, value)
    assert getattr(control, name) == value and control.modified is True


def test_selection_is_on_in_a_new_control_and_init_keeps_what_the_host_chose():
    host = Host(False)
    assert view(host, "DataSelectMode") == 1
    host.control.SetDataSelectMode(False)
    host.init()
    assert host.control.GetDataSelectMode() is False


def test_init_leaves_run_mode_and_scroll_mode_as_they_are_and_sets_the_others():
    host = at_scale()
    control = host.control
    control.RunMode, control.ScrollMode, control.ExecRun, control.DebugMode = 51, 10, False, True
    control.OrvRectZoom(20)
    host.init()
    assert (control.RunMode, control.ScrollMode, control.ExecRun, control.DebugMode) == (51, 10, True, False)
    assert (view(host, "RectZoomMode"), view(host, "ScrollActive")) == (0, 0)
