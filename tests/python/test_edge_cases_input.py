"""The mouse, the wheel and the keys as a host in Python sees them: what comes back, in which order, and when nothing does."""

import pytest
from map_rig import LINE, drain, one_to_one, painted, verbs, view

LEFT, RIGHT, SHIFT, CTRL = 1, 2, 4, 8
DELETE, ESCAPE = 46, 27
EVENTS = ("OnZoomChange", "MouseDown", "MouseUp", "MouseMove", "OnHintStart", "OnDataClick", "OnDataDblClick", "OnEditorStart",
          "OnEditorEnd")


@pytest.fixture(params=[False, True], ids=["older", "newer"])
def host(request):
    """A map with one line from pixel (100, 50) to (200, 50)."""
    made = one_to_one(request.param)
    made.add_block("A", 1, LINE)
    made.add_item("A", 1, 7, [(100, -50), (200, -50)])
    made.RDMReDraw()
    drain(made)
    return made


def listen(host):
    told = []
    for name in EVENTS:
        host.control.connect(name, lambda *args, name=name: told.append((name, *args)))
    return told


def click(host, x, y, keys=0):
    host.control.mouse("ldown", LEFT | keys, x, y)
    host.control.mouse("lup", keys, x, y)


def selected(host):
    return host.GetDigActDatCnt()


def test_a_click_selects_and_tells_client_coordinates_between_down_and_up(host):
    told = listen(host)
    click(host, 150, 50)
    assert told == [("MouseDown", 1, 0, 150, 50), ("OnDataClick", 7, "A", 1, 150, 50), ("MouseUp", 1, 0, 150, 50)]
    assert selected(host) == 1


def test_a_click_on_empty_map_clears_the_selection_repaints_and_tells_the_stock_events_alone(host):
    click(host, 150, 50)
    drain(host)
    told = listen(host)
    click(host, 400, 400)
    assert told == [("MouseDown", 1, 0, 400, 400), ("MouseUp", 1, 0, 400, 400)]
    assert selected(host) == 0
    assert any(context == "base" and name == "PatBlt" for context, name, _ in verbs(host))


def test_with_selection_off_a_click_is_told_twice_with_zeros(host):
    host.SetDataSelectMode(False)
    told = listen(host)
    click(host, 150, 50)
    assert [event for event in told if event[0] == "OnDataClick"] == [("OnDataClick", 0, "", 0, 150, 50)] * 2
    assert [event[0] for event in told] == ["OnDataClick", "MouseDown", "OnDataClick", "MouseUp"]


def test_the_button_up_after_a_double_click_tells_mouse_up_alone(host):
    click(host, 150, 50)
    told = listen(host)
    host.control.mouse("ldbl", LEFT, 150, 50)
    host.control.mouse("lup", 0, 150, 50)
    assert told == [("OnDataDblClick", 7, "A", 1, 150, 50), ("MouseUp", 1, 0, 150, 50)]


def test_a_double_click_with_ctrl_or_shift_is_ignored(host):
    click(host, 150, 50)
    told = listen(host)
    host.control.mouse("ldbl", LEFT | CTRL, 150, 50)
    host.control.mouse("ldbl", LEFT | SHIFT, 150, 50)
    assert told == []


def test_in_debug_mode_a_double_click_shows_the_key(host):
    click(host, 150, 50)
    host.control.DebugMode = True
    told = listen(host)
    host.control.mouse("ldbl", LEFT, 150, 50)
    assert [text for text, _, _ in host.control.message_boxes] == ["\n ID[7]--LayCode[A] MeshNo[1]"]
    assert told == []


def test_the_hint_comes_after_more_than_one_whole_second_with_screen_coordinates(host):
    told = listen(host)
    host.control.clock = 100.9
    host.control.cursor_pos = (150, 50)
    host.control.mouse("move", 0, 150, 50)
    assert host.control.timers == {2: 10}
    host.control.clock = 101.99
    host.control.tick(2)
    assert host.control.timers == {2: 10}
    host.control.clock = 102
    host.control.tick(2)
    assert told == [("MouseMove", 0, 0, 150, 50), ("OnHintStart", 7, "A", 1, 150, 50)]
    assert host.control.timers == {}
    host.control.tick(2)
    assert len(told) == 2


def test_a_pan_dragged_out_goes_on_when_the_cursor_comes_back_with_mouse_moves_meanwhile(host):
    host.control.RunMode = 10
    told = listen(host)
    host.control.cursor_pos = (400, 300)
    host.control.mouse("ldown", LEFT, 400, 300)
    assert (host.control.cursor, host.control.captured, host.control.timers) == ("pan", True, {11: 100})
    host.control.mouse("move", LEFT, 410, 300)
    assert [event[0] for event in told] == ["MouseDown"]
    host.control.cursor_pos = (-5, 300)
    host.control.tick(11)
    assert host.control.cursor == "arrow"
    host.control.mouse("move", LEFT, -5, 300)
    assert told[-1] == ("MouseMove", 1, 0, -5, 300)
    host.control.cursor_pos = (380, 300)
    host.control.tick(11)
    assert view(host, "ViewX") == 20
    host.control.mouse("lup", 0, 380, 300)
    assert (host.control.captured, host.control.timers) == (False, {})


def test_a_right_drag_scrolls_with_its_own_cursor(host):
    host.control.ScrollMode = 10
    host.control.cursor_pos = (600, 300)
    host.control.mouse("rdown", RIGHT, 600, 300)
    assert (host.control.cursor, host.control.timers) == ("scroll", {1: 30})
    host.control.mouse("move", RIGHT, 500, 300)
    host.control.tick(1)
    assert view(host, "ViewX") == 10
    host.control.mouse("rup", 0, 500, 300)
    assert (host.control.cursor, host.control.timers) == ("arrow", {})


def test_a_wheel_step_at_zoom_one_gives_two_and_a_step_back_stays_at_one(host):
    host.control.Zoom = 1
    host.control.wheel(0, 120, 400, 300)
    assert host.control.Zoom == 1
    host.control.wheel(0, -120, 400, 300)
    assert host.control.Zoom == 2


def test_a_zoom_drag_of_less_than_five_pixels_leaves_its_mode_set(host):
    host.RectZoom(10)
    host.control.mouse("ldown", LEFT, 300, 300)
    host.control.mouse("move", LEFT, 304, 304)
    host.control.mouse("lup", 0, 304, 304)
    assert view(host, "RectZoomMode") == 10
    assert [(context, name) for context, name, _ in verbs(host)] == [("window", "BitBlt")]


def test_a_small_selection_drag_restores_the_picture_and_tells_no_item(host):
    told = listen(host)
    host.control.mouse("ldown", LEFT, 149, 49)
    host.control.mouse("move", LEFT, 152, 52)
    host.control.mouse("lup", 0, 152, 52)
    assert [event[0] for event in told] == ["MouseDown", "MouseUp"]
    assert selected(host) == 0
    assert [(context, name) for context, name, _ in verbs(host)] == [("window", "BitBlt")]


def test_a_rectangle_follows_the_cursor_at_the_tick_and_selects_what_lies_in_it(host):
    host.control.mouse("ldown", LEFT, 90, 40)
    host.control.mouse("move", LEFT, 210, 60)
    assert host.control.timers == {3: 100}
    host.control.tick(3)
    drawn = [each for each in verbs(host) if each.name in ("BitBlt", "Polyline")]
    assert [each.name for each in drawn] == ["BitBlt", "Polyline"]
    assert drawn[1].values[0] == ((90, 40), (90, 60), (210, 60), (210, 40), (90, 40))
    host.control.mouse("lup", 0, 210, 60)
    assert selected(host) == 1
    assert host.control.timers == {}


def test_in_the_delete_mode_a_click_on_nothing_tells_mouse_down_alone(host):
    host.control.RunMode = 300
    told = listen(host)
    host.control.mouse("ldown", LEFT, 400, 400)
    assert told == [("MouseDown", 1, 0, 400, 400)]
    assert host.control.RunMode == 300


def test_a_mouse_move_right_after_an_init_composes_the_map():
    host = painted()
    assert host.init()
    host.control.MapDraw = False
    host.control.paint()
    host.control.MapDraw = True
    host.control.RunMode = 50
    host.MoveOnOrgPnt(1, 0)
    drain(host)
    host.control.mouse("move", LEFT, 10, 10)
    assert any(context == "base" and name == "PatBlt" for context, name, _ in verbs(host))


def test_delete_lays_the_overlay_anew_and_escape_composes_the_map(host):
    host.control.key(DELETE)
    drawn = [(context, name) for context, name, _ in verbs(host)]
    assert ("top", "BitBlt") in drawn and ("base", "PatBlt") not in drawn
    host.control.key(ESCAPE)
    assert ("base", "PatBlt") in [(context, name) for context, name, _ in verbs(host)]
    host.control.key(65)
    assert verbs(host) == []


# --- The calls themselves ----------------------------------------------------------------------------------------------------


def test_what_a_handler_raises_comes_out_of_the_message(host):
    def fail(*_):
        raise KeyError("mine")

    host.control.connect("MouseDown", fail)
    with pytest.raises(KeyError, match="mine"):
        host.control.mouse("ldown", LEFT, 10, 10)
    assert host.control.captured


def test_an_unknown_mouse_message_is_refused(host):
    with pytest.raises(ValueError, match="ldown"):
        host.control.mouse("middle", LEFT, 10, 10)


def test_a_tick_of_a_timer_that_does_not_run_does_nothing(host):
    for timer in (1, 2, 3, 11, 99):
        host.control.tick(timer)
    assert verbs(host) == []


def test_a_handler_may_send_messages_and_start_the_control_over(host):
    told = listen(host)

    def again(*_):
        host.init()
        host.control.mouse("move", 0, 1, 1)
        host.control.paint()

    host.control.connect("OnDataClick", again)
    click(host, 150, 50)
    assert told[-1] == ("MouseUp", 1, 0, 150, 50)
    assert selected(host) == 0
