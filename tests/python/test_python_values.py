"""What Python itself can hand over: sequences that make items on demand, lists that hold themselves, odd texts and numbers."""

import array
import collections

import numpy
import orvane4
import pytest
from map_rig import LINE, painted


def line_control():
    control = painted().control
    assert control.OrvAddLayer("A", 1, LINE, 0)
    return control


class Doubling:
    """A sequence that keeps none of its items."""

    def __len__(self):
        return 500

    def __getitem__(self, i):
        if not 0 <= i < 500:
            raise IndexError(i)
        return i * 2.5e6


@pytest.mark.parametrize(
    "values",
    [range(10**6, 10**6 + 500), array.array("d", [k * 1e6 for k in range(500)]), Doubling(), collections.deque(range(500))],
    ids=["range", "array", "own class", "deque"],
)
def test_items_that_a_sequence_makes_on_demand_arrive_unharmed(values):
    control = line_control()
    assert control.AddDigDatEx("A", 1, 7, 0, values, values, values)
    expected = [float(value) for value in values]
    assert control.OrvGetDatPntEx("A", 1, 7) == (True, expected, expected, expected)


def test_a_forced_array_takes_items_and_rows_that_are_made_on_demand():
    control = line_control()
    forced = orvane4.Array(Doubling(), "R8")
    assert control.AddDigDatEx("A", 1, 7, 0, forced, forced, forced)
    assert control.OrvGetDatPnt("A", 1, 7)[1] == [k * 2.5e6 for k in range(500)]
    rows = orvane4.Array(numpy.arange(40000.0).reshape(200, 200), "R8", dims=2)
    assert not control.AddDigDatEx("A", 1, 8, 0, rows, rows, rows)


def test_a_list_that_holds_itself_raises_and_does_nothing():
    control = line_control()
    before = control.dump()
    endless = []
    endless.append(endless)
    with pytest.raises(RecursionError):
        control.AddDigDatEx("A", 1, 7, 0, endless, endless, endless)
    assert control.dump() == before


def test_a_sequence_that_shrinks_while_it_is_read_raises():
    values = []

    class Shrinks:
        def __float__(self):
            values.clear()
            return 1.0

    values += [Shrinks(), 2, 3]
    with pytest.raises(IndexError):
        orvane4.Array(values, "R8")


@pytest.mark.parametrize("text", ["\U0001f600", "\ud800"])
def test_a_text_without_bytes_raises_a_value_error(text):
    with pytest.raises(ValueError):
        line_control().OrvAddLayer(text, 1, LINE, 0)


@pytest.mark.parametrize("number, error", [(2**31, ValueError), (1.5, TypeError), ("1", TypeError)])
def test_an_element_that_is_no_32_bit_number_raises_in_an_array_of_longs(number, error):
    with pytest.raises(error):
        orvane4.Array([number], "I4")


def test_recorded_contexts_are_the_window_the_buffers_or_numbers():
    fresh = orvane4.Orvane4Ctrl(device="record")
    fresh.OrvInit()
    fresh.paint()
    names = {context for context, _, _ in fresh.verbs()}
    assert {"window", "base", "top"} <= names
    assert all(isinstance(name, int) for name in names - {"window", "base", "top"})


def test_a_control_whose_handler_refers_to_it_is_collected():
    import gc
    import weakref

    class Listener:
        pass

    listener = Listener()
    gone = weakref.ref(listener)
    listener.control = orvane4.Orvane4Ctrl(40, 30, device="record")
    listener.control.connect("OnZoomChange", lambda zoom, keeps=listener: None)
    del listener
    gc.collect()
    assert gone() is None


def test_a_colour_reads_back_without_sign():
    c = orvane4.Orvane4Ctrl(40, 30, device="record")
    c.ActiveColor = 0xFFFFFFFF
    assert c.ActiveColor == 0xFFFFFFFF


def test_a_member_is_called_by_name_or_dispid_only():
    c = orvane4.Orvane4Ctrl(40, 30, device="record")
    with pytest.raises(TypeError):
        c.invoke(8.5)
