"""The reference page is a view of the table, so it must say what the table says."""

import importlib.machinery
import importlib.util
import os
import pathlib
import subprocess
import sys

import orvane4

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOL = ROOT / "tools" / "make_reference"


def run(*args):
    return subprocess.run([sys.executable, str(TOOL), "--module-dir", str(pathlib.Path(orvane4.__file__).parent), *args],
                          capture_output=True, text=True, env={**os.environ, "PYTHONDONTWRITEBYTECODE": "1"}, check=False)


def tool():
    loader = importlib.machinery.SourceFileLoader("make_reference", str(TOOL))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("make_reference", loader))
    sys.dont_write_bytecode = True
    loader.exec_module(module)
    return module


def test_the_reference_page_says_what_the_table_says():
    done = run("--check")
    assert done.returncode == 0, done.stderr


def test_a_page_that_is_out_of_date_fails_the_check_and_stays(tmp_path):
    page = tmp_path / "reference.md"
    page.write_text("old", encoding="utf-8")
    done = run("--check", "--output", str(page))
    assert done.returncode == 1 and "out of date" in done.stderr
    assert page.read_text(encoding="utf-8") == "old"


def test_a_missing_module_is_told_in_one_line(tmp_path):
    env = {key: value for key, value in os.environ.items() if key != "PYTHONPATH"}
    done = subprocess.run([sys.executable, str(TOOL), "--module-dir", str(tmp_path)], capture_output=True, text=True, env=env, check=False)
    assert done.returncode == 1
    assert "build it first" in done.stderr and "Traceback" not in done.stderr


def test_every_member_stands_on_the_page_once_with_its_signature_and_help():
    page = tool().reference(orvane4.members())
    for member in orvane4.members():
        rows = [line for line in page.splitlines() if line.startswith(f"| {member['dispid']} |") and member["name"] in line]
        assert any(member["help"] in row for row in rows), member["name"]
    assert "`VARIANT_BOOL OrvGetDatPnt(BSTR code, long grpNo, long datID, out double* px, out double* py)`" in page
    assert "`long Zoom`" in page and "`OnZoomChange(long Zoom)`" in page
