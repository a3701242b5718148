"""The rules of the folders and of size, as functions of a file's path and text. Each returns a list of faults, in words.

A linker finds an include against the arrows only when something of it is called; these rules find it in the text.
"""

import ast
import re

MAX_FILE_LINES = 600
MAX_FUNCTION_LINES = 80
REASON = "long because"

# What each folder may include besides itself. Whatever is missing here is upward or sideways.
_BASE = ["platform"]
_NUMBERS = ["analysis/geometry", "geo"] + _BASE
_STORE = ["store"] + _NUMBERS
_SUBJECTS = ["render", "select", "files", "raster", "analysis"]
_CONTROL = ["control"] + _SUBJECTS + _STORE
BACK_ENDS = ["platform/record", "platform/qt", "platform/win32"]
_HOSTS = ["hosts/common", "foreign"] + _CONTROL + BACK_ENDS
MAY_INCLUDE = {
    "platform": [],
    **{back_end: _BASE for back_end in BACK_ENDS},
    "geo": _BASE,
    "analysis/geometry": _BASE,
    "store": _NUMBERS,
    **{subject: _STORE for subject in _SUBJECTS},
    "control": _SUBJECTS + _STORE,
    "foreign": _CONTROL,
    **{f"hosts/{host}": _HOSTS for host in ["common", "cli", "qt", "python", "ocx"]},
    "hosts/viewer": ["hosts/qt"] + _HOSTS,  # it is the first user of the widget
    "samples/hosts": ["hosts/qt"] + _HOSTS,
}
# They look at everything.
ONLOOKERS = ["tests", "bench", "fuzz"]
# The core knows the standard library and no system header.
CORE = ["platform", "platform/record", "geo", "analysis/geometry", "store", *_SUBJECTS, "control"]

STANDARD_HEADERS = set(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
    clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore
    set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view syncstream
    system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector
    version""".split()
)

_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
# A comment, a raw string, a string or a character. A quote between digits is a separator of 1'000 and opens nothing.
_OPAQUE = re.compile(
    r"""//[^\n]*|/\*.*?\*/|R"(?P<raw>[^()\s\\]{0,16})\(.*?\)(?P=raw)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'""",
    re.DOTALL,
)


def folder_of(path):
    """The folder of the rules that `path` (from the project's root, with slashes) stands in, or None."""
    known = [*MAY_INCLUDE, *ONLOOKERS]
    holders = [folder for folder in known if path.startswith(folder + "/")]
    return max(holders, key=len, default=None)


def include_faults(path, text, exists):
    """Upward, sideways, system and unknown includes. `exists(path)` tells whether the project has such a file."""
    folder = folder_of(path)
    if folder is None:
        return [f"{path}: stands in no folder that the rules know"]
    faults = []
    for bracket, name in _INCLUDE.findall(_without_comments(text)):
        if bracket == "<":
            if folder in CORE and name not in STANDARD_HEADERS:
                faults.append(f"{path}: includes <{name}>, and the core knows the standard library only")
            continue
        target = folder_of(name)
        if not exists(name):
            faults.append(f'{path}: includes "{name}", which is no file by its path from the root')
        elif folder not in ONLOOKERS and target != folder and target not in MAY_INCLUDE[folder]:
            faults.append(f'{path}: includes "{name}", and no arrow leads from {folder} to {target}')
    return faults


def length_faults(path, text):
    """Files and functions that are too long and do not say why in their head comment."""
    faults = []
    lines = text.count("\n")
    if lines > MAX_FILE_LINES and REASON not in _comment_at_top(text):
        faults.append(f"{path}: {lines} lines, and its head comment has no reason ({REASON} ...)")
    functions = _python_functions(text) if path.endswith(".py") else _cpp_functions(text)
    for name, first, last, comment in functions:
        if last - first + 1 > MAX_FUNCTION_LINES and REASON not in comment:
            faults.append(f"{path}:{first}: {name} has {last - first + 1} lines, and no reason above it ({REASON} ...)")
    return faults


def _blank(match):
    return re.sub(r"[^\n]", " ", match.group())


def _without_comments(text):
    return _OPAQUE.sub(lambda match: _blank(match) if match.group().startswith("/") else match.group(), text)


def code_only(text):
    """Gives `text` with comments, strings, characters and preprocessor lines blanked; every line keeps its number."""
    text = _OPAQUE.sub(_blank, text)
    return re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", _blank, text, flags=re.MULTILINE)


def _comment_at_top(text):
    return re.match(r'\A(?:\s*(?://[^\n]*\n|/\*.*?\*/|#[ !][^\n]*\n|""".*?"""))*', text, re.DOTALL).group()


def _comment_above(lines, first):
    """The comment lines that end right above line `first` (counted from 1)."""
    begin = first - 1
    while begin > 0 and re.match(r"\s*(//|#|/\*|\*|\S.*\*/\s*$)", lines[begin - 1]):
        begin -= 1
    return "\n".join(lines[begin : first - 1])


def _python_functions(text):
    lines = text.splitlines()
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, (ast.FunctionDef, ast.AsyncFunctionDef)):
            comment = _comment_above(lines, node.lineno) + (ast.get_docstring(node) or "")
            yield node.name, node.lineno, node.end_lineno, comment


def _kind(head):
    """What the brace after `head` opens: "scope" (namespace, class), "function", or "data"."""
    head = re.sub(r"\btemplate\s*<[^{}()]*>", " ", head).strip()
    is_type = re.match(r"(?:\w+\s+)*?(?:namespace|class|struct|union|enum)\b", head)
    if is_type and not re.search(r"\)\s*(?:const|noexcept|override|final|\s)*$", head):
        return "scope"
    if head == "extern":
        return "scope"
    is_lambda = re.search(r"=\s*\[[^\]]*\]", head)
    if ")" not in head or (re.search(r"(?<!operator)(?<![=<>!])=(?!=)[^()]*$|^=", head) and not is_lambda):
        return "data"
    return "function"


def _cpp_functions(text):
    """(name, first line, last line, comment above) of each function that no other function holds.

    Reads braces and the words before them, not the language: enough for code that clang-format has laid out.
    """
    code = code_only(text)
    lines = text.splitlines()
    open_braces = []  # (kind, where its head begins)
    head_at = 0
    parens = 0
    for at, char in enumerate(code):
        if char in "()":
            parens += 1 if char == "(" else -1
        elif char == "{":
            inside = open_braces[-1][0] if open_braces else "scope"
            kind = _kind(code[head_at:at]) if inside == "scope" and parens == 0 else "inner"
            open_braces.append((kind, head_at))
            if kind != "inner":
                head_at = at + 1
        elif char == "}" and open_braces:
            kind, begin = open_braces.pop()
            follows = re.match(r"\s*([,{]?)", code[at + 1 :]).group(1)
            if kind in ("function", "data") and follows:
                head_at = begin  # a member initialiser: the body is still to come
            elif kind != "inner":
                head_at = at + 1
            if kind == "function" and not follows:
                head = code[begin:at]
                first = code.count("\n", 0, begin + len(head) - len(head.lstrip())) + 1
                name = re.search(r"([\w:~]+)\s*\(|$", head).group(1) or "a function"
                yield name, first, code.count("\n", 0, at) + 1, _comment_above(lines, first)
        elif char == ";" and parens == 0 and (not open_braces or open_braces[-1][0] == "scope"):
            head_at = at + 1
