"""The bridge itself: whatever a test does in a handler, the next one gets the answers to its own questions."""

import os

import orvane4
import pytest


@pytest.fixture
def control():
    made = orvane4.Orvane4Ctrl(width=200, height=150)
    assert made.OrvInit() is True
    made.paint()
    return made


def test_the_process_has_the_code_page_that_the_driver_asked_for():
    assert orvane4.code_page() == int(os.environ["ORVANE_ACP"])


class Stop(Exception):
    pass


def stop(*_):
    raise Stop


def ask_for_what_is_not_there(control):
    return lambda *_: control.verbs_of_another_kind


def test_what_a_handler_raises_comes_out_of_the_call_and_leaves_no_answer_behind(control):
    control.connect("OnZoomChange", stop)
    with pytest.raises(Stop):
        control.Zoom = 5000
    assert control.Zoom == 5000
    assert control.OrvInit() is True


def test_a_test_that_is_skipped_inside_of_a_handler_leaves_no_answer_behind(control):
    control.connect("OnZoomChange", ask_for_what_is_not_there(control))
    with pytest.raises(pytest.skip.Exception):
        control.Zoom = 5000
    assert control.OrvInit() is True
    assert orvane4.Orvane4Ctrl(width=100, height=100).OrvInit() is True


def test_of_two_handlers_that_raise_the_first_is_heard_and_both_events_are_answered(control):
    told = []

    def outer(zoom):
        told.append(zoom)
        if zoom == 5000:
            control.Zoom = 6000
        raise Stop(zoom)

    control.connect("OnZoomChange", outer)
    with pytest.raises(Stop, match="6000"):
        control.Zoom = 5000
    assert told == [5000, 6000]
    assert control.Zoom == 6000
    assert control.Rotate == 0.0


def test_a_call_that_is_refused_inside_of_a_handler_leaves_no_answer_behind(control):
    control.connect("OnZoomChange", lambda zoom: control.OrvSetLayColor("A", "no colour"))
    with pytest.raises(TypeError):
        control.Zoom = 5000
    assert control.OrvInit() is True
