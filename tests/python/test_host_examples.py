"""The host examples of README.md run, and both hosts draw the same picture."""

import os
import pathlib
import subprocess
import sys

BIN = pathlib.Path(os.environ["ORVANE_BIN_DIR"])
EXAMPLES = pathlib.Path(os.environ["ORVANE_SOURCE_DIR"]) / "samples" / "hosts"


def test_the_host_in_cpp_and_the_host_in_python_draw_the_same_picture(tmp_path):
    by_cpp, by_python = tmp_path / "cpp.png", tmp_path / "python.png"
    subprocess.run([BIN / "town", by_cpp], check=True, timeout=60)
    subprocess.run([sys.executable, EXAMPLES / "town.py", by_python], check=True, timeout=60)
    assert by_cpp.read_bytes() == by_python.read_bytes()
    assert len(by_cpp.read_bytes()) > 1000
