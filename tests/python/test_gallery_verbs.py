"""Each scene of the gallery draws the verbs that its list keeps: a change of any verb shows in review as a change of that list.

`tools/gallery --verbs-only` writes the lists anew, once the change is meant.
"""

import os
import pathlib
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "samples" / "gallery"))
import scenes  # noqa: E402


@pytest.mark.parametrize("name", scenes.SCENES)
def test_scene_draws_the_verbs_of_its_list(name):
    folder = os.getcwd()
    os.chdir(ROOT)
    try:
        told = scenes.lines(scenes.draw(name, "record"))
    finally:
        os.chdir(folder)
    kept = (ROOT / "tests" / "golden" / "gallery" / f"{name}.txt").read_text(encoding="ascii").splitlines()
    assert told == kept


def test_every_list_belongs_to_a_scene():
    kept = {path.stem for path in (ROOT / "tests" / "golden" / "gallery").glob("*.txt")}
    assert kept == set(scenes.SCENES)
