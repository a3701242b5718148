"""Hosts that call back from their handlers: every event may init, delete, switch modes or send the next message."""

import pytest
from input_rig import (ALL_CLICKS, CTRL, DELETE_KEY, ESCAPE, HINT_TIMER, LEFT, NORMAL, PAN, PAN_TIMER, RIGHT, SHIFT, SHIFT_CLICKS,
                       click, drag, listening, move, names, press, release, selected, shown, tick, timers)
from map_rig import LINE, POINT, POLYGON, block, dump, item, items
from overlay_rig import figure

SPOT = (200, 150)


def everything(newer=False):
    """A host with points that may be edited, an active line and a polygon as figures, and a layer of lines."""
    host = shown(POINT, [SPOT], [SPOT], [(400, 300)], newer=newer, SetLayEditFlg=True)
    assert host.add_block("L", 1, LINE, 5)
    host.add_item("L", 1, 1, [(100, -500), (300, -500)])
    assert host.SetLayEditFlg("L", True)
    figure(host, LINE, [(500, 100), (600, 100)], active=True)
    figure(host, POLYGON, [(500, 300), (700, 300), (700, 500), (500, 300)])
    host.RDMReDraw()
    return host


def in_mode(mode, do):
    def act(host):
        host.control.RunMode = mode
        do(host)
    return act


def rest(host):
    host.control.clock, host.control.cursor_pos = 10.0, SPOT
    move(host, *SPOT)
    host.control.clock = 20.0
    tick(host, HINT_TIMER)


def without_selection(host):
    host.control.SetDataSelectMode(False)
    click(host, *SPOT)


def zoom_out_by_rectangle(host):
    host.control.OrvRectZoom(20)
    drag(host, (100, 100), (500, 250))


def zoom_in_by_rectangle(host):
    host.control.OrvRectZoom(10)
    drag(host, (100, 100), (500, 250))


def tool(edit_type, *clicks, code=""):
    def act(host):
        assert host.control.DigDatEditor(code, 1, 0, edit_type) == 0
        for x, y in clicks:
            click(host, x, y)
            move(host, x + 3, y + 3)
        host.control.mouse("ldbl", LEFT, 300, 300)
    return act


# What the hand does, and an event that this brings.
CAUSES = {
    "click": ("OnDataClick", lambda host: click(host, *SPOT)),
    "shift click": ("OnDataClick", lambda host: click(host, *SPOT, SHIFT)),
    "click without selection": ("OnDataClick", without_selection),
    "double click": ("OnDataDblClick", lambda host: (click(host, *SPOT), host.control.mouse("ldbl", LEFT, *SPOT))),
    "hint": ("OnHintStart", rest),
    "wheel": ("OnZoomChange", lambda host: host.control.wheel(0, 120, 400, 300)),
    "wheel at the cursor": ("OnZoomChange", lambda host: (host.control.OrvWheelZoomMode(2, 0.2),
                                                          host.control.wheel(0, -120, 100, 100))),
    "zoom in": ("OnZoomChange", zoom_in_by_rectangle),
    "zoom out": ("OnZoomChange", zoom_out_by_rectangle),
    "figure": ("OnOrgDataClick", in_mode(ALL_CLICKS, lambda host: click(host, 650, 400))),
    "point of a figure": ("OnOrgPointClick", in_mode(ALL_CLICKS, lambda host: click(host, 600, 100))),
    "nearest point of the figures": ("OnOrgNearPtClick", in_mode(SHIFT_CLICKS, lambda host: click(host, 590, 150, SHIFT))),
    "nearest point of the data": ("OnNearPtClick", in_mode(SHIFT_CLICKS, lambda host: click(host, 210, 160, SHIFT | CTRL))),
    "button down": ("MouseDown", lambda host: click(host, *SPOT)),
    "button up": ("MouseUp", lambda host: click(host, *SPOT)),
    "right button": ("MouseDown", lambda host: (host.control.mouse("rdown", RIGHT, 5, 5), host.control.mouse("rup", 0, 5, 5))),
    "move": ("MouseMove", lambda host: move(host, *SPOT)),
    "move with a dragged point": ("MouseMove", in_mode(ALL_CLICKS, lambda host: (host.MoveOnOrgPnt(1, 0), move(host, 5, 5)))),
    "pan": ("MouseDown", in_mode(PAN, lambda host: click(host, *SPOT))),
    "start of adding a point": ("OnEditorStart", tool(100, SPOT, code="A")),
    "end of adding a point": ("OnEditorEnd", tool(100, SPOT, code="A")),
    "start of adding a line": ("OnEditorStart", tool(100, (10, 10), (90, 90), code="L")),
    "end of adding a line": ("OnEditorEnd", tool(100, (10, 10), (90, 90), code="L")),
    "start of moving a point": ("OnEditorStart", tool(200, SPOT, (300, 300))),
    "end of moving a point": ("OnEditorEnd", tool(200, SPOT, (300, 300))),
    "start of adding points": ("OnEditorStart", tool(210, (200, 500), (200, 520))),
    "end of adding points": ("OnEditorEnd", tool(210, (200, 500), (200, 520))),
    "start of deleting points": ("OnEditorStart", tool(220, (200, 500), (700, 50))),
    "end of deleting points": ("OnEditorEnd", tool(220, (200, 500), (700, 50))),
    "start of moving": ("OnEditorStart", tool(250, (200, 500), (700, 50))),
    "end of moving": ("OnEditorEnd", tool(250, (200, 500), (700, 50))),
    "start of copying": ("OnEditorStart", tool(260, (200, 500), (700, 50))),
    "end of copying": ("OnEditorEnd", tool(260, (200, 500), (700, 50))),
    "start of deleting": ("OnEditorStart", tool(300, SPOT)),
    "end of deleting": ("OnEditorEnd", tool(300, SPOT)),
    "cancel": ("OnEditorEnd", lambda host: (host.control.DigDatEditor("L", 1, 1, 200), host.control.key(ESCAPE))),
    "delete key": ("OnEditorEnd", lambda host: (host.control.DigDatEditor("L", 1, 1, 200), host.control.key(DELETE_KEY))),
}


def delete_blocks(host):
    host.DigMemDeleteLay("A")
    host.DigMemDeleteLay("L")


def delete_items(host):
    for code, count in (("A", 9), ("L", 3)):
        for dat_id in range(1, count):
            host.DelDigDat(code, 1, dat_id)


def delete_figures(host):
    for number in (5, 4, 3, 2, 1):
        host.DelOrgDataEx(number)


def next_messages(host):
    for kind, flags in (("move", 0), ("ldown", LEFT), ("move", LEFT), ("lup", 0), ("ldbl", LEFT), ("lup", 0), ("rdown", RIGHT),
                        ("rup", 0), ("ldown", LEFT | SHIFT), ("lup", SHIFT), ("ldown", LEFT | CTRL), ("lup", CTRL)):
        host.control.mouse(kind, flags, *SPOT)
    for key in (DELETE_KEY, ESCAPE):
        host.control.key(key)
    host.control.wheel(0, 120, *SPOT)
    for number in (1, 2, 3, 11):
        host.control.tick(number)


def many_items(host):
    for dat_id in range(1000, 3500):
        host.AddDigDat("A", 1, dat_id, 0)


def many_figures(host):
    for _ in range(40):
        figure(host, LINE, [(0, 0), (9, 9)], active=True)


# What the host does in its handler.
ANSWERS = {
    "inits": lambda host: host.init(),
    "inits and paints": lambda host: (host.init(), host.control.paint()),
    "deletes the blocks": delete_blocks,
    "deletes the items": delete_items,
    "deletes the figures": delete_figures,
    "switches to panning": lambda host: setattr(host.control, "RunMode", PAN),
    "switches to the normal mode": lambda host: setattr(host.control, "RunMode", NORMAL),
    "switches to a tool": lambda host: host.control.DigDatEditor("L", 1, 1, 210),
    "starts adding": lambda host: host.control.DigDatEditor("A", 1, 0, 100),
    "cancels": lambda host: host.control.OrvCancelOrgEdit(),
    "sends the next messages": next_messages,
    "adds many items": many_items,
    "adds many figures": many_figures,
    "repaints": lambda host: host.RDMReDraw(),
    "resizes to a pixel": lambda host: host.control.resize(1, 1),
    "terminates": lambda host: host.control.OrvTerm(),
    "switches drawing off": lambda host: setattr(host.control, "MapDraw", False),
}


@pytest.mark.parametrize("answer", ANSWERS.values(), ids=ANSWERS)
@pytest.mark.parametrize("event, act", CAUSES.values(), ids=CAUSES)
def test_a_handler_may_do_anything_and_the_control_lives_on(event, act, answer):
    host = everything()
    if "OnDataDblClick" == event:
        click(host, *SPOT)
    calls, over = [], []

    def handler(*args):
        calls.append(args)
        if not over and len(calls) <= 3:
            answer(host)

    host.control.connect(event, handler)
    act(host)
    assert calls, "the event was heard"
    over.append(True)
    host.control.resize(800, 600)
    host.init()
    host.control.paint()
    host.control.RunMode = NORMAL
    host.control.SetDataSelectMode(True)
    host.control.Zoom = 3779
    host.MapJumpToXY(400.0, -300.0)
    host.add_block("Z", 1, POINT)
    host.add_item("Z", 1, 4, [(100, -100)])
    host.RDMReDraw()
    move(host, 100, 100)
    click(host, 100, 100)
    if selected(host, "Z") != [4]:
        click(host, 100, 100)
    assert selected(host, "Z") == [4], "and picks as before"


# --- What still happens behind the handler -------------------------------------------------------------------------------------


def test_the_mouse_is_told_after_a_handler_that_inits():
    for event, down_or_up in (("OnDataClick", "MouseUp"), ("MouseDown", "MouseUp")):
        host = everything()
        heard = []
        host.control.connect(event, lambda *args, host=host: host.init())
        host.control.connect(down_or_up, lambda *args, heard=heard: heard.append(args))
        click(host, *SPOT)
        if event == "OnDataClick":
            assert heard == [(1, 0, *SPOT)]


def test_without_selection_a_handler_of_the_click_sees_mouse_down_come_after_it():
    host = everything()
    host.control.SetDataSelectMode(False)
    heard = listening(host)
    host.control.connect("OnDataClick", lambda *args: delete_blocks(host))
    click(host, *SPOT)
    assert names(heard) == ["OnDataClick", "MouseDown", "OnDataClick", "MouseUp"]


def test_a_handler_of_the_click_may_delete_the_item_that_it_was_told():
    host = everything()
    host.control.connect("OnDataClick", lambda dat_id, code, mesh, x, y: host.DelDigDat(code, mesh, dat_id))
    click(host, *SPOT)
    assert item(host, "A", 1, 2) is None
    click(host, *SPOT)
    assert [each["datID"] for each in items(host, "A", 1)] == [3]
    click(host, *SPOT)
    assert len(items(host, "A", 1)) == 1


def test_a_handler_of_the_hint_may_delete_the_block_and_the_timer_still_ends():
    host = everything()
    host.control.connect("OnHintStart", lambda *args: delete_blocks(host))
    rest(host)
    assert block(host, "A", 1) is None and timers(host) == {}


def test_a_handler_of_mouse_move_may_begin_a_pan_and_the_figure_is_then_not_dragged():
    host = everything()
    host.MoveOnOrgPnt(1, 0)
    host.control.RunMode = ALL_CLICKS

    def handler(*args):
        host.control.RunMode = PAN
        press(host, 50, 50)

    host.control.connect("MouseMove", handler)
    move(host, 5, 5)
    assert timers(host).get(PAN_TIMER) == 100
    assert tuple(dump(host)["orgDats"][0]["pnts"][0])[:2] == (500, -100)


def test_a_run_mode_written_at_mouse_down_decides_the_button_up():
    host = everything()
    host.control.connect("MouseDown", lambda *args: setattr(host.control, "RunMode", 7))
    heard = listening_to_clicks(host)
    click(host, *SPOT)
    assert heard == [] and selected(host) == []
    host.control.connect("MouseDown", lambda *args: setattr(host.control, "RunMode", NORMAL))
    click(host, *SPOT)
    assert heard == [(2, "A", 1, *SPOT)]


def listening_to_clicks(host):
    heard = []
    host.control.connect("OnDataClick", lambda *args: heard.append(args))
    return heard


def test_selection_switched_off_at_mouse_down_makes_the_button_up_tell_zeros():
    host = everything()
    host.control.connect("MouseDown", lambda *args: host.control.SetDataSelectMode(False))
    heard = listening_to_clicks(host)
    click(host, *SPOT)
    assert heard == [(0, "", 0, *SPOT)] and selected(host) == []


def test_an_error_in_a_handler_comes_out_of_the_mouse_call_and_the_control_works_on():
    host = everything()

    heard = []

    def handler(dat_id, *args):
        heard.append(dat_id)
        if len(heard) == 1:
            raise KeyError("the host's own")

    host.control.connect("OnDataClick", handler)
    press(host, *SPOT)
    with pytest.raises(KeyError):
        release(host, *SPOT)
    click(host, 400, 300)
    assert heard == [2, 3]


def test_a_control_may_be_given_up_in_its_own_handler():
    holder = [everything()]
    heard = []

    def handler(*args):
        heard.append(args)
        holder.clear()

    holder[0].control.connect("OnDataClick", handler)
    click(holder[0], *SPOT)
    assert len(heard) == 1 and holder == []
