"""A host that is told how far an overlay or a relation test has come, and ends it."""

import gc
import math
import weakref

import pytest

import orvane4


def ring(x, y, corners=60000):
    """A ring of so many corners that its overlay asks several times."""
    angles = [2 * math.pi * i / corners for i in range(corners)]
    reach = [1000.0 if i % 2 == 0 else 999.0 for i in range(corners)]
    xs = [x + r * math.cos(a) for r, a in zip(reach, angles)]
    ys = [y + r * math.sin(a) for r, a in zip(reach, angles)]
    return xs + xs[:1], ys + ys[:1]


@pytest.fixture
def control():
    c = orvane4.Orvane4Ctrl(width=800, height=600, device="record")
    assert c.OrvInit()
    c.paint()
    for code in "ABC":
        assert c.OrvAddLayer(code, 1, orvane4.OrvLTPolygon, 0)
        c.OrvSetLayActMode(code, True)
    for code, x in (("A", 0.0), ("B", 500.0)):
        xs, ys = ring(x, 0.0)
        assert c.OrvAddDatEx(code, 1, 1, 0, xs, ys, [0.0] * len(xs))
    c.AreaLeft = c.AreaTop = -1e6
    c.AreaRight = c.AreaBottom = 1e6
    c.OrvDspFit2(5)
    return c


def overlay(c):
    return c.OrvPolygonBuffering(0, "A", 1, "B", 1, "C", 1)


def stored(c):
    return next(block["datCnt"] for block in c.dump()["blocks"] if block["code"] == b"C")


def test_an_overlay_that_is_ended_answers_0_and_stores_nothing(control):
    shares = []
    control.on_progress(lambda done: shares.append(done) or len(shares) < 2)
    assert overlay(control) == (0, None, None, None)
    assert len(shares) == 2 and all(0 <= share <= 1 for share in shares)
    assert stored(control) == 0
    control.on_progress(None)
    assert overlay(control)[0] == 1
    assert stored(control) == 1 and len(shares) == 2


def test_anything_but_false_lets_the_work_go_on(control):
    for answer in (None, True, 0, 1):
        control.on_progress(lambda done, answer=answer: answer)
        assert overlay(control)[0] == 1
    assert stored(control) == 4


def test_the_overlay_of_active_features_that_is_ended_stores_nothing(control):
    xs, ys = [-3e3, 3e3, 3e3, -3e3, -3e3], [-3e3, -3e3, 3e3, 3e3, -3e3]
    assert control.OrvTestArea(xs, ys, 5, orvane4.OrvContains) == 1
    assert control.OrvGetActDatCnt() == 2
    control.on_progress(lambda done: False)
    for mode in (0, 1):
        assert control.OrvActPolygonBuffering(mode, "C", 1) == (0, None)
    assert stored(control) == 0


def test_a_relation_test_that_is_ended_answers_0_and_leaves_nothing_active(control):
    n = 1100000  # the query alone is more work than goes by between two questions
    xs, ys = [float(i % 7) for i in range(n)], [float(i % 5) for i in range(n)]
    assert control.OrvTestLine(xs, ys, n, orvane4.OrvWithin) == 1
    assert control.OrvGetActDatCnt() == 2
    asked = []
    control.on_progress(lambda done: bool(asked.append(done)))  # append answers None
    assert control.OrvTestLine(xs, ys, n, orvane4.OrvWithin) == 0
    assert len(asked) == 1 and control.OrvGetActDatCnt() == 0


def test_what_the_callable_raises_ends_the_work_and_comes_out_of_the_member(control):
    def fail(done):
        raise LookupError("no more")

    control.on_progress(fail)
    with pytest.raises(LookupError, match="no more"):
        overlay(control)
    assert stored(control) == 0


def test_only_a_callable_or_none_is_taken():
    c = orvane4.Orvane4Ctrl(width=80, height=60, device="record")
    with pytest.raises(TypeError):
        c.on_progress(1)


def test_a_control_whose_callable_refers_to_it_is_collected():
    class Owner:
        pass

    owner = Owner()
    owner.control = orvane4.Orvane4Ctrl(width=80, height=60, device="record")
    owner.control.on_progress(lambda done, owner=owner: True)
    gone = weakref.ref(owner)
    del owner
    gc.collect()
    assert gone() is None
