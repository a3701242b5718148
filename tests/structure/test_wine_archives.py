"""tools/wine finds out where Debian comes from, also on a machine whose apt keeps no lists."""

import os
import pathlib
import subprocess

import pytest

ROOT = pathlib.Path(os.environ["ORVANE_SOURCE_DIR"])
LINE = "deb http://archive.example/debian bookworm main"
# apt in a word: it knows the archive where there is a list in its folder, and an update puts one there unless OFFLINE is set.
APT = """#!/usr/bin/env bash
lists=$MACHINE
for argument in "$@"; do
    case $argument in
        Dir::State::lists=*) lists=${argument#*=} ;;
        update) echo update >>"$LOG"; if [ -z "${OFFLINE:-}" ]; then : >"$lists/list"; else echo "E: no network"; exit 100; fi ;;
        indextargets) if [ -e "$lists/list" ]; then echo "@ARCHIVE@"; fi ;;
    esac
done
""".replace("@ARCHIVE@", LINE)


@pytest.fixture
def machine(tmp_path):
    (tmp_path / "bin").mkdir()
    (tmp_path / "lists").mkdir()
    (tmp_path / "books").mkdir()
    apt = tmp_path / "bin" / "apt-get"
    apt.write_text(APT.replace("$LOG", str(tmp_path / "log")))
    apt.chmod(0o755)
    return tmp_path


def list_archives(machine, **variables):
    parts = "/^debian_archives() {/,/^}/p;/^list_archives() {/,/^}/p"
    script = f"set -euo pipefail; eval \"$(sed -n '{parts}' tools/wine)\"; list_archives '{machine}/books'"
    environment = os.environ | {"PATH": f"{machine}/bin:{os.environ['PATH']}", "MACHINE": str(machine / "lists")} | variables
    done = subprocess.run(["bash", "-c", script], cwd=ROOT, env=environment, capture_output=True, text=True)
    return done, (machine / "books" / "sources.list").read_text()


def test_a_machine_with_lists_is_asked_and_nothing_is_fetched(machine):
    (machine / "lists" / "list").touch()
    done, sources = list_archives(machine)
    assert (done.returncode, done.stdout, sources) == (0, "", LINE + "\n")
    assert not (machine / "log").exists()


def test_a_machine_without_lists_fetches_them_apart_and_says_so(machine):
    done, sources = list_archives(machine)
    assert (done.returncode, sources) == (0, LINE + "\n")
    assert "apt-get update" in done.stdout
    assert list((machine / "lists").iterdir()) == []


def test_no_archive_at_all_ends_in_words(machine):
    done, sources = list_archives(machine, OFFLINE="yes")
    assert (done.returncode, sources) == (1, "")
    assert "no network" in done.stderr
    assert "apt knows no archive of Debian" in done.stderr
