#!/usr/bin/env python3
"""Writes platform/cp932_table.cpp: the two-byte characters of code page 932, row by row, from Python's own codec.

    tools/make_cp932_table.py > platform/cp932_table.cpp

The table is published and does not change, so the made file is kept and nothing runs this at build time.
"""

import sys

MISSING = "\ufffd"
LEADS = [*range(0x81, 0xA0), *range(0xE0, 0xFD)]
USER_LEADS = range(0xF0, 0xFA)  # user-defined characters: their code points run on, so cp932.cpp computes them
TRAILS = [*range(0x40, 0x7F), *range(0x80, 0xFD)]


def decode(lead, trail):
    try:
        char = bytes([lead, trail]).decode("cp932")
    except UnicodeDecodeError:
        return MISSING
    assert len(char) == 1 and ord(char) < 0x10000
    return char


def check_user_rows():
    """What cp932.cpp computes must be what the codec says."""
    expected = 0xE000
    for lead in USER_LEADS:
        for trail in TRAILS:
            assert ord(decode(lead, trail)) == expected, (lead, trail)
            expected += 1


def rows():
    for lead in LEADS:
        if lead in USER_LEADS:
            continue
        row = "".join(decode(lead, trail) for trail in TRAILS)
        if row.strip(MISSING):
            yield lead, row


def main():
    check_user_rows()
    out = sys.stdout
    out.write("// Made by tools/make_cp932_table.py from Python's codec; do not edit.\n")
    out.write('#include "platform/cp932_table.h"\n\n')
    out.write("// clang-format off\n")
    out.write("namespace orvane {\n\n")
    out.write("const Cp932Row kCp932Rows[] = {\n")
    count = 0
    for lead, row in rows():
        assert len(row) == 188 and not set(row) & set('"\\')
        out.write(f'    {{0x{lead:02X}, u"{row[:94]}"\n           u"{row[94:]}"}},\n')
        count += 1
    out.write("};\n")
    out.write("const std::size_t kCp932RowCnt = sizeof(kCp932Rows) / sizeof(kCp932Rows[0]);\n\n")
    out.write("}  // namespace orvane\n")
    print(f"{count} rows", file=sys.stderr)


main()
