"""tools/suite_results lets no test of the Windows suites be left out unseen."""

import os
import pathlib
import subprocess

import pytest

ROOT = pathlib.Path(os.environ["ORVANE_SOURCE_DIR"])
LISTED = next(line.split()[:2] for line in (ROOT / "tests/wine_skips.list").read_text().splitlines() if not line.startswith("#"))
RAN = '<testcase name="runs" classname="Suite" status="run" result="completed"/>'
SKIPPED = '<testcase name="{1}" classname="{0}" status="run" result="skipped"><skipped message="a.cpp:1&#x0A;why"/></testcase>'


def told(tmp_path, cases, width="64"):
    results = tmp_path / "results.xml"
    results.write_text(f'<testsuites><testsuite name="Suite">{cases}</testsuite></testsuites>')
    done = subprocess.run([ROOT / "tools/suite_results", width, results], capture_output=True, text=True)
    return done.returncode, done.stderr


def test_a_suite_whose_tests_all_ran_passes(tmp_path):
    assert told(tmp_path, RAN) == (0, "")


def test_a_skipped_test_fails_with_its_reason(tmp_path):
    assert told(tmp_path, RAN + SKIPPED.format("Suite", "rests")) == (1, "Suite.rests is skipped: why\n")


def test_a_listed_test_must_be_skipped_in_its_width_and_in_no_other(tmp_path):
    width, name = LISTED
    suite, test = name.split(".")
    assert told(tmp_path, RAN + SKIPPED.format(suite, test), width) == (0, "")
    other = {"64": "32", "32": "64"}[width]
    assert told(tmp_path, RAN + SKIPPED.format(suite, test), other) == (1, f"{name} is skipped: why\n")
    run = f'<testcase name="{test}" classname="{suite}" status="run" result="completed"/>'
    assert told(tmp_path, run, width) == (1, f"{name} runs, and stands in wine_skips.list\n")


@pytest.mark.parametrize("cases", ["", SKIPPED.format(*LISTED[1].split("."))])
def test_a_run_of_no_tests_fails(tmp_path, cases):
    assert told(tmp_path, cases, LISTED[0]) == (1, "no test ran\n")


def test_a_disabled_test_fails(tmp_path):
    disabled = '<testcase name="DISABLED_rests" classname="Suite" status="notrun" result="suppressed"/>'
    assert told(tmp_path, RAN + disabled) == (1, "Suite.DISABLED_rests is not run\n")


def test_a_failed_test_fails(tmp_path):
    failed = '<testcase name="falls" classname="Suite" status="run" result="completed"><failure message="no"/></testcase>'
    assert told(tmp_path, failed) == (1, "Suite.falls fails\n")


def test_results_that_were_not_told_to_the_end_fail(tmp_path):
    code, error = told(tmp_path, "<testcase")
    assert code == 1 and error.startswith("the program did not tell its results: ")
    done = subprocess.run([ROOT / "tools/suite_results", "64", tmp_path / "none.xml"], capture_output=True, text=True)
    assert done.returncode == 1 and done.stderr.startswith("the program did not tell its results: ")


def test_the_driver_starts_no_suite_without_looking_at_its_results():
    driver = (ROOT / "tools/windows_tests").read_text()
    assert "_test.exe" not in driver
    assert 'run "$bin/$name.exe"' in driver
    assert driver.count("suite win32_test") >= 2 and driver.count("suite ocx_test") >= 3
