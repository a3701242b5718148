"""Writes the type stubs of the module from its own automation table: make_stubs.py OUT."""

import sys

import orvane4

PYTHON_TYPES = {
    "void": "None",
    "VARIANT_BOOL": "bool",
    "short": "int",
    "long": "int",
    "OLE_COLOR": "int",
    "OLE_HANDLE": "int",
    "OLE_XPOS_PIXELS": "int",
    "OLE_YPOS_PIXELS": "int",
    "double": "float",
    "BSTR": "str | bytes",
    "VARIANT": "Any",
}

HEAD = '''"""Type stubs of orvane4, made from its automation table."""

import enum
from collections.abc import Callable, Sequence
from typing import Any

class Array:
    """An automation array of a forced element type, lower bound or number of dimensions."""
    def __init__(self, values: Sequence[Any], type: str, dims: int = 1, lower: int = 0) -> None: ...

class Context:
    """A device context of the host with its own resolution."""
    def __init__(
        self, width: int, height: int, horzres: int = 1920, horzsize: int = 508, logpixels: int = 96
    ) -> None: ...
    @property
    def handle(self) -> int: ...
    def verbs(self) -> list[tuple[Any, ...]]: ...
    def pixels(self) -> bytes: ...

def members() -> list[dict[str, Any]]: ...

# Coordinates: anything that makes an array of numbers; the answers are NumPy arrays of the same shape.
def geo_to_plane(latitude: Any, longitude: Any, zone: int) -> tuple[Any, Any]: ...
def plane_to_geo(x: Any, y: Any, zone: int) -> tuple[Any, Any]: ...
def mesh_to_plane(x: Any, y: Any, zone: int) -> tuple[Any, Any]: ...
def plane_to_mesh(x: Any, y: Any, zone: int) -> tuple[Any, Any]: ...
def geo_to_mesh(latitude: Any, longitude: Any) -> tuple[Any, Any]: ...
def mesh_to_geo(x: Any, y: Any) -> tuple[Any, Any]: ...
def mesh_number(x: Any, y: Any) -> Any: ...
def mesh_origin(mesh: Any) -> tuple[Any, Any]: ...
'''

RIG = '''
class Orvane4Ctrl:
    """The map control on an off-screen window."""
    def __init__(self, width: int = 800, height: int = 600, device: str = "qt") -> None: ...
    def invoke(self, name_or_dispid: str | int, *args: Any) -> Any: ...
    def connect(self, event: str, callable: Callable[..., Any]) -> None: ...
    def on_progress(self, callable: Callable[[float], Any] | None) -> None: ...
    def paint(self) -> None: ...
    def resize(self, width: int, height: int) -> None: ...
    def mouse(self, message: str, flags: int, x: int, y: int) -> None: ...
    def wheel(self, flags: int, delta: int, x: int, y: int) -> None: ...
    def key(self, vk: int) -> None: ...
    def tick(self, timer_id: int) -> None: ...
    def pixels(self) -> bytes: ...
    def save_png(self, path: str) -> None: ...
    def verbs(self) -> list[tuple[Any, ...]]: ...
    def dump(self) -> dict[str, Any]: ...
    @property
    def message_boxes(self) -> list[tuple[str | bytes, str | bytes, int]]: ...
    modified: bool
    @property
    def timers(self) -> dict[int, int]: ...
    @property
    def cursor(self) -> str: ...
    @property
    def captured(self) -> bool: ...
    cursor_pos: tuple[int, int]
    clock: float
'''


def value_type(kind: str, is_buffer: bool = False, is_output: bool = False, is_result: bool = False) -> str:
    bare = kind.rstrip("*")
    enumeration = "int" if is_output or is_result else f"{bare} | int"
    name = PYTHON_TYPES.get(bare, enumeration if bare.startswith("T_") else "Any")
    if is_buffer:
        name = f"list[{name}]" if is_output else f"Sequence[{name}]"
    return f"{name} | None" if is_output else name


def result_type(member: dict) -> str:
    outputs = [value_type(a["kind"], a["buffer"], True) for a in member["args"] if a["direction"] != "in"]
    results = [] if member["result"] == "void" else [value_type(member["result"], is_result=True)]
    if not results and not outputs:
        return "None"
    if results and not outputs:
        return results[0]
    return f"tuple[{', '.join(results + outputs)}]"


def method_stub(member: dict, name: str, value: str | None = None) -> str:
    args = ["self"]
    args += [f"{a['name']}: {value_type(a['kind'], a['buffer'])}" for a in member["args"] if a["direction"] != "out"]
    if value is not None:
        args.append(f"value: {value}")
    result = "None" if value is not None else result_type(member)
    return f'    def {name}({", ".join(args)}, /) -> {result}:\n        """{member["help"]}"""\n'


def enum_stubs() -> str:
    text = ""
    for name in dir(orvane4):
        enum = getattr(orvane4, name)
        if not name.startswith("T_"):
            continue
        text += f'\nclass {name}(enum.IntEnum):\n    """{enum.__doc__}"""\n'
        text += "".join(f"    {e.name} = {e.value}\n" for e in enum)
        text += "".join(f"\n{e.name} = {name}.{e.name}" for e in enum) + "\n"
    return text


def main() -> None:
    text = HEAD + enum_stubs() + RIG
    for member in orvane4.members():
        if member["kind"] == "property":
            kind = value_type(member["result"])
            read = value_type(member["result"], is_result=True)
            text += f'    @property\n    def {member["name"]}(self) -> {read}:\n        """{member["help"]}"""\n'
            if not member["readonly"]:
                text += f'    @{member["name"]}.setter\n    def {member["name"]}(self, value: {kind}) -> None: ...\n'
        elif member["kind"] == "method":
            text += method_stub(member, member["name"])
            if member["indexed"]:
                text += method_stub(member, "set_" + member["name"], value_type(member["result"]))
    with open(sys.argv[1], "w", encoding="utf-8") as out:
        out.write(text)


if __name__ == "__main__":
    main()
