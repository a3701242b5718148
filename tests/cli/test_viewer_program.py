"""The viewer's command line; what its window does is tested in C++."""

import os
import subprocess

PROGRAM = os.path.join(os.environ["ORVANE_BIN_DIR"], "orvane4_viewer")


def run(*args):
    return subprocess.run([PROGRAM, *args], capture_output=True, text=True, encoding="utf-8", timeout=60)


def test_help_tells_the_keys():
    done = run("--help")
    assert done.returncode == 0
    assert "Home" in done.stdout and "arrows" in done.stdout and "--zone" in done.stdout


def test_a_number_that_is_none_is_refused_before_a_window_opens():
    done = run("--zone", "nine")
    assert done.returncode == 2 and "--zone needs a number" in done.stderr


def test_an_unknown_option_is_refused():
    assert run("--paint").returncode != 0
