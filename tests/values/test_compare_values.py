"""What tools/compare_values lets pass and what not."""

import os
import pathlib
import subprocess

import pytest

TOOL = pathlib.Path(os.environ["ORVANE_SOURCE_DIR"]) / "tools" / "compare_values"
ONE, TABLE = 0x3FF0000000000000, "exact a 3ff0000000000000\nulp b 3ff0000000000000 c000000000000000\nexact c text of some words\n"


def passes(tmp_path, first, second):
    (tmp_path / "first").write_text(first)
    (tmp_path / "second").write_text(second)
    return subprocess.run([TOOL, tmp_path / "first", tmp_path / "second"], capture_output=True).returncode == 0


def test_equal_tables_pass(tmp_path):
    assert passes(tmp_path, TABLE, TABLE)


@pytest.mark.parametrize("units, passed", [(1, True), (4, True), (5, False), (-4, True), (-5, False)])
def test_a_number_behind_a_sine_may_lie_four_units_away(tmp_path, units, passed):
    assert passes(tmp_path, TABLE, TABLE.replace("ulp b 3ff0000000000000", f"ulp b {ONE + units:016x}")) is passed


def test_the_units_go_on_across_zero(tmp_path):
    below = "ulp a 8000000000000002\n"
    assert passes(tmp_path, below, "ulp a 0000000000000002\n")
    assert not passes(tmp_path, below, "ulp a 0000000000000003\n")


@pytest.mark.parametrize("second", [
    TABLE.replace("a 3ff0000000000000", "a 3ff0000000000001"), TABLE.replace("words", "word"), TABLE.replace("exact c", "exact d"),
    TABLE.replace("ulp b", "exact b"), TABLE.replace(" c000000000000000", ""), TABLE.replace("exact c text of some words\n", ""), ""])
def test_nothing_else_may_differ(tmp_path, second):
    assert not passes(tmp_path, TABLE, second)
    assert not passes(tmp_path, second, TABLE)


def test_two_empty_tables_and_a_name_that_stands_twice_are_no_result(tmp_path):
    assert not passes(tmp_path, "", "")
    assert not passes(tmp_path, "exact a 1\nexact a 1\n", "exact a 1\nexact a 1\n")
