"""The examples of README.md are the programs of samples/hosts, to the letter."""

import os
import pathlib
import re

import pytest

ROOT = pathlib.Path(os.environ["ORVANE_SOURCE_DIR"])


@pytest.mark.parametrize("language, name", [("cpp", "town.cpp"), ("cpp", "form.cpp"), ("python", "town.py")])
def test_the_readme_shows_the_example_that_is_built(language, name):
    readme = (ROOT / "README.md").read_text(encoding="utf-8")
    blocks = re.findall(rf"```{language}\n(.*?)```", readme, re.DOTALL)
    assert (ROOT / "samples/hosts" / name).read_text(encoding="utf-8") in blocks


def test_the_files_that_the_readme_names_exist():
    readme = (ROOT / "README.md").read_text(encoding="utf-8")
    named = [n for n in re.findall(r"`([\w./-]+)`", readme) if "/" in n and not n.startswith("build/")]
    missing = [n for n in named if not (ROOT / n).exists()]
    assert named and missing == []
