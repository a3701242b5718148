"""The project's own sources keep the rules of source_rules.py; and the rules find what they are for."""

import os
import pathlib

import pytest
import source_rules

ROOT = pathlib.Path(__file__).resolve().parents[2]


def project_files(*endings):
    """Paths from the root of the files that the project keeps; builds and hidden folders are none of them."""
    for folder, subfolders, names in os.walk(ROOT):
        subfolders[:] = sorted(name for name in subfolders if not name.startswith(".") and name not in ("build", "__pycache__"))
        for name in sorted(names):
            if name.endswith(endings):
                yield (pathlib.Path(folder) / name).relative_to(ROOT).as_posix()


def read(path):
    return (ROOT / path).read_text(encoding="utf-8")


def is_project_file(path):
    return (ROOT / path).is_file()


def test_the_walk_finds_the_sources():
    found = list(project_files(".h", ".cpp"))
    assert "platform/rect.h" in found and "platform/rect.cpp" in found


def test_every_include_of_the_project_follows_the_arrows():
    faults = [
        fault for path in project_files(".h", ".cpp") for fault in source_rules.include_faults(path, read(path), is_project_file)
    ]
    assert not faults, "\n" + "\n".join(faults)


def test_no_file_or_function_of_the_project_is_too_long_without_a_reason():
    faults = [fault for path in project_files(".h", ".cpp", ".py") for fault in source_rules.length_faults(path, read(path))]
    assert not faults, "\n" + "\n".join(faults)


# From here on the rules themselves are tested, on made-up files.


def faults_of_include(path, line):
    return source_rules.include_faults(path, line + "\n", lambda _: True)


@pytest.mark.parametrize(
    "path, line",
    [
        ("platform/rect.h", '#include "store/records.h"'),
        ("geo/zone.cpp", '#include "store/records.h"'),
        ("store/cdigmem.h", '#include "control/view.h"'),
        ("store/cdigmem.h", '#include "render/line.h"'),
        ("render/line.cpp", '#include "control/view.h"'),
        ("control/view.cpp", '#include "foreign/import.h"'),
        ("foreign/import.cpp", '#include "hosts/common/host_files.h"'),
        ("control/automation/table.cpp", '#  include  "hosts/cli/main.h"'),
    ],
)
def test_an_upward_include_is_a_fault(path, line):
    assert faults_of_include(path, line)


@pytest.mark.parametrize(
    "path, line",
    [
        ("geo/zone.cpp", '#include "analysis/geometry/dig_pnt.h"'),
        ("analysis/geometry/ring.cpp", '#include "geo/zone.h"'),
        ("render/line.cpp", '#include "select/pick.h"'),
        ("analysis/relation.cpp", '#include "render/line.h"'),
        ("platform/qt/window.cpp", '#include "platform/record/context.h"'),
        ("hosts/cli/main.cpp", '#include "hosts/viewer/window.h"'),
    ],
)
def test_a_sideways_include_is_a_fault(path, line):
    assert faults_of_include(path, line)


@pytest.mark.parametrize("back_end", ["record", "qt", "win32"])
@pytest.mark.parametrize(
    "folder", ["platform", "geo", "analysis/geometry", "store", "render", "select", "control", "control/automation", "foreign"]
)
def test_a_platform_back_end_included_from_elsewhere_than_hosts_and_tests_is_a_fault(folder, back_end):
    assert faults_of_include(f"{folder}/a.cpp", f'#include "platform/{back_end}/context.h"')


@pytest.mark.parametrize(
    "path, line",
    [
        ("platform/rect.cpp", '#include "platform/rect.h"'),
        ("platform/record/context.h", '#include "platform/device_context.h"'),
        ("store/cdigmem.h", '#include "analysis/geometry/dig_pnt.h"'),
        ("analysis/relation.cpp", '#include "analysis/geometry/dig_pnt.h"'),
        ("control/automation/table.cpp", '#include "control/view.h"'),
        ("control/view.h", '#include "render/line.h"'),
        ("foreign/import.cpp", '#include "control/view.h"'),
        ("foreign/import.cpp", "#include <gdal_priv.h>"),
        ("hosts/cli/main.cpp", '#include "hosts/common/host_files.h"'),
        ("hosts/python/module.cpp", '#include "platform/record/context.h"'),
        ("tests/render/line_test.cpp", '#include "platform/record/context.h"'),
        ("bench/frame_bench.cpp", '#include "platform/qt/context.h"'),
        ("store/cdigmem.h", "#include <vector>"),
        ("store/cdigmem.h", '// #include "hosts/cli/main.h"'),
        ("store/cdigmem.h", '/*\n#include "hosts/cli/main.h"\n*/'),
    ],
)
def test_a_downward_include_is_no_fault(path, line):
    assert faults_of_include(path, line) == []


@pytest.mark.parametrize("header", ["windows.h", "unistd.h", "QImage", "gdal.h", "stdint.h", "gtest/gtest.h"])
def test_a_header_outside_the_standard_library_is_a_fault_in_the_core(header):
    assert faults_of_include("store/cdigmem.cpp", f"#include <{header}>")


def test_an_include_by_a_path_that_is_not_from_the_root_is_a_fault():
    assert source_rules.include_faults("store/cdigmem.cpp", '#include "records.h"\n', lambda _: False)


def test_a_source_in_an_unknown_folder_is_a_fault():
    assert source_rules.include_faults("misc/a.cpp", "", lambda _: True)


def test_a_file_may_have_600_lines_and_no_more():
    assert source_rules.length_faults("store/a.h", "// Records.\n" + "int a;\n" * 599) == []
    assert source_rules.length_faults("store/a.h", "// Records.\n" + "int a;\n" * 600)


@pytest.mark.parametrize(
    "path, head",
    [
        ("store/a.h", "// Records.\n// long because the table is one.\n#pragma once\n"),
        ("store/a.h", "/* Records,\n   long because the table is one. */\n"),
        ("tools/a.py", '"""Records.\n\nlong because the table is one.\n"""\n'),
    ],
)
def test_a_long_file_may_tell_its_reason_in_its_head_comment(path, head):
    assert source_rules.length_faults(path, head + "a = 1;\n" * 600) == []


def test_a_reason_further_down_is_no_reason():
    assert source_rules.length_faults("store/a.h", "#pragma once\n// long because it is\n" + "int a;\n" * 600)


def body(statements):
    return "    ++i;\n" * statements + "}\n"


FUNCTION_HEADS = [
    "void Draw(int i) {\n",
    "static std::vector<int> Draw(const std::map<int, int>& m,\n" + "    int i) {\n",
    "namespace orvane {\nnamespace {\nvoid Draw(int i) {\n",
    "class Pen {\npublic:\n    int a = 0;\n    void Draw(int i) const override {\n",
    "template <class T, typename U = int>\nauto Draw(T i) -> decltype(i) {\n",
    "Pen::Pen(int i) : a(i), b{i}, c{{i}} {\n",
    "struct Point Draw(int i) {\n",
    'extern "C" {\nint Draw(int i) noexcept {\n',
    "bool operator==(const Pen& a, const Pen& b) {\n",
    "Pen& Pen::operator=(const Pen& other) {\n",
    "const auto kDraw = [](int i) {\n",
    "TEST(Pen, DrawsWhatItShould) {\n",
    "const int kTable[] = {1, 2, 3};\nint Draw(int i) {\n",
    "int Draw(int i) {\n    const char* a = \"}}}\";\n    const char b = '}';  // }\n    const int c = 1'000'000; /* } */\n",
    "#define OPEN(x) \\\n    if (x) {\nint Draw(int i) {\n",
    'const char* kText = R"(\n}\n{ "\n)";\nint Draw(int i) {\n',
]


@pytest.mark.parametrize("head", FUNCTION_HEADS)
def test_a_function_over_80_lines_is_a_fault_however_it_begins(head):
    assert len(source_rules.length_faults("store/a.cpp", head + body(81))) == 1
    assert source_rules.length_faults("store/a.cpp", head + body(70)) == []


def test_a_function_may_have_80_lines_from_its_first_line_to_its_closing_brace():
    assert source_rules.length_faults("store/a.cpp", "void Draw(int i) {\n" + body(78)) == []
    assert source_rules.length_faults("store/a.cpp", "void Draw(int i) {\n" + body(79))


def test_each_long_function_is_a_fault_of_its_own():
    text = "void A(int i) {\n" + body(90) + "int x;\n" + "void B(int i) {\n" + body(10) + "void C(int i) {\n" + body(90)
    faults = source_rules.length_faults("store/a.cpp", text)
    assert [fault.split(": ")[1].split(" ")[0] for fault in faults] == ["A", "C"]


def test_a_long_function_may_tell_its_reason_in_the_comment_above_it():
    assert source_rules.length_faults("store/a.cpp", "// Draws; long because one step a line.\nvoid Draw(int i) {\n" + body(90)) == []
    assert source_rules.length_faults("store/a.cpp", "// long because.\n\nint a;\nvoid Draw(int i) {\n" + body(90))


@pytest.mark.parametrize(
    "text",
    [
        "const Row kRows[] = {\n" + '    {"a", Draw(1)},\n' * 100 + "};\n",
        "namespace orvane {\n" + "int a(int i);\n" * 100 + "}\n",
        "class Pen {\n" + "    int A(int i) { return i; }\n" * 100 + "};\n",
        "enum class Rop : std::uint32_t {\n" + "    a,\n" * 100 + "};\n",
    ],
)
def test_tables_namespaces_and_classes_are_no_functions(text):
    assert source_rules.length_faults("store/a.cpp", text) == []


def test_a_python_function_over_80_lines_is_a_fault():
    assert source_rules.length_faults("tests/python/a.py", "def draw(i):\n" + "    i += 1\n" * 79) == []
    assert source_rules.length_faults("tests/python/a.py", "def draw(i):\n" + "    i += 1\n" * 80)
    assert source_rules.length_faults("tests/python/a.py", "# long because.\ndef draw(i):\n" + "    i += 1\n" * 80) == []
