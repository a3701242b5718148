"""The module `orvane4` as the tests know it, whose controls are those of Windows: each call goes to the bridge as a line.

ORVANE_BRIDGE is the command that starts the bridge. What only the native module has (the dump of the store, lists of drawing verbs,
timers by hand, messages kept) skips the test that asks for it: this is about members and events.
"""

import atexit
import enum
import os
import shlex
import struct
import subprocess
import sys

import pytest

_MESSAGES = {"move": 0x200, "ldown": 0x201, "lup": 0x202, "ldbl": 0x203, "rdown": 0x204, "rup": 0x205}
_TYPES = {"I2": 2, "I4": 3, "R4": 4, "R8": 5, "BSTR": 8, "BOOL": 11, "VARIANT": 12}
_ELEMENTS = {"float64": "R8", "float32": "R4", "int32": "I4", "int16": "I2", "bool": "BOOL"}
_UNSIGNED = ("OLE_COLOR",)


class Array:
    """An automation array of a forced element type and lower bound."""

    def __init__(self, values, type, dims=1, lower=0):
        if dims != 1 or type not in _TYPES:
            pytest.skip("the bridge passes arrays of one dimension")
        self.values, self.type, self.lower = list(values), _TYPES[type], lower


def _written(value):
    if value is None:
        return ["n"]
    if isinstance(value, Array):
        return ["a", str(value.type), str(value.lower), str(len(value.values))] + [w for v in value.values for w in _written(v)]
    if isinstance(value, bool):
        return ["b1" if value else "b0"]
    if isinstance(value, bytes):
        value = value.decode("cp932")
    if isinstance(value, str):
        units = value.encode("utf-16-be")
        return ["s" + units.hex()]
    if getattr(value, "shape", ()) != ():
        if len(value.shape) != 1:
            pytest.skip("the bridge passes arrays of one dimension")
        return _written(Array(value.tolist(), _ELEMENTS.get(value.dtype.name, "VARIANT")))
    if hasattr(value, "__index__"):
        number = value.__index__()
        if -(2**31) <= number < 2**31:
            return [f"i{number}"]
        value = float(number)
    if isinstance(value, float):
        return ["d" + struct.pack(">d", value).hex()]
    if hasattr(value, "__iter__"):
        return _written(Array(value, "VARIANT"))
    raise TypeError("that value cannot be passed to the control")


def _read(words):
    word = next(words)
    rest = word[1:]
    if word[0] == "n":
        return None
    if word[0] == "b":
        return rest == "1"
    if word[0] == "i":
        return int(rest)
    if word[0] == "d":
        return struct.unpack(">d", bytes.fromhex(rest))[0]
    if word[0] == "s":
        return bytes.fromhex(rest).decode("utf-16-be", "surrogatepass")
    next(words), next(words)
    return [_read(words) for _ in range(int(next(words)))]


def _read_all(words):
    words = iter(words)
    values = []
    while True:
        try:
            values.append(_read(words))
        except StopIteration:
            return values


class _Member:
    def __init__(self, words):
        self.kind, self.name, dispid, indexed, self.result, *self.directions = words
        self.dispid = int(dispid)
        self.indexed = indexed == "1"
        self.inputs = sum(d != "out" for d in self.directions)
        self.outputs = sum(d != "in" for d in self.directions)


class _Bridge:
    """The process at the other end, and the events that it tells while a call runs."""

    def __init__(self):
        self.process = subprocess.Popen(shlex.split(os.environ["ORVANE_BRIDGE"]), stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        encoding="ascii", errors="replace")
        atexit.register(self.process.stdin.close)
        self.owner = None

    def send(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def ask(self, line, remarks=None):
        """The words of the answer. What a handler raised meanwhile comes out once the answer is read: left in the pipe, it would be
        taken for that of the next question, and so on to the end of the process."""
        self.send(line)
        raised = None
        while True:
            answer = self.process.stdout.readline()
            if not answer:
                pytest.exit("the bridge has ended at: " + line, 3)
            verb, *words = answer.split() or [""]
            if raised is not None and verb in ("@ok", "@error"):
                raise raised
            if verb == "@ok":
                return words
            if verb == "@error":
                return _refused(words)
            if verb == "@event":
                try:
                    self.tell(words)
                except BaseException as error:  # also a test that is skipped there
                    raised = raised or error
            elif verb.startswith("@") and remarks is not None:
                remarks.append((verb, words))
            else:
                sys.stderr.write(answer)

    def tell(self, words):
        try:
            for handler in list(self.owner._handlers.get(words[0], [])) if self.owner else []:
                handler(*_read_all(words[1:]))
        finally:
            self.send("return")


def _refused(words):
    code = words[0] if words else ""
    if code in ("80020005", "8002000e", "80020004"):
        raise TypeError("the control refused a value: " + code)
    if code == "8002000b":
        raise ValueError("an array is too short")
    if code in ("80020003", "80020009"):
        raise AttributeError("it cannot be written")
    raise RuntimeError("the bridge answered " + " ".join(words))


_bridge = _Bridge()
_table = []
_bridge.ask("table", _table)
_members = {m.name.lower(): m for m in (_Member(words) for verb, words in _table if verb == "@member") if m.kind != "event"}
_by_dispid = {m.dispid: m for m in _members.values()}
_events = {words[1] for verb, words in _table if verb == "@member" and words[0] == "event"}
for _verb, _words in _table:
    if _verb == "@enum":
        _made = enum.IntEnum(_words[0], [(name, int(value)) for name, value in zip(_words[1::2], _words[2::2])])
        globals()[_words[0]] = _made
        globals().update({each.name: each for each in _made})


def code_page():
    """Of the process at the other end."""
    return _read_all(_bridge.ask("page"))[0]


class Orvane4Ctrl:
    """The control on a form of a Windows process. One lives at a time: a new one ends the one before."""

    def __init__(self, width=800, height=600, device="qt"):
        self._handlers = {}
        _bridge.owner = self
        _bridge.ask(f"new {width} {height}")

    def _call(self, member, args, put=False):
        if _bridge.owner is not self:
            pytest.skip("the bridge holds one control at a time")
        if len(args) != member.inputs + (1 if put else 0):
            raise TypeError(f"{member.name} takes {member.inputs} arguments")
        words = [w for arg in args for w in _written(arg)]
        values = _read_all(_bridge.ask(" ".join(["call", member.name, "put" if put else "get", *words])))
        if put:
            return None
        if member.result in _UNSIGNED and values and values[0] is not None:
            values[0] &= 0xFFFFFFFF
        if not values:
            return None
        return values[0] if len(values) == 1 and member.result != "void" else tuple(values)

    def __getattr__(self, name):
        member = _members.get(name.lower())
        if name.startswith("set_") and name[4:].lower() in _members:
            return lambda *args: self._call(_members[name[4:].lower()], args, True)
        if member is None or member.name != name:
            if name.startswith("__"):
                raise AttributeError(name)
            pytest.skip(f"the bridge has no {name}")
        return self._call(member, ()) if member.kind == "property" else lambda *args: self._call(member, args)

    def __setattr__(self, name, value):
        member = _members.get(name.lower())
        if member is None or member.kind != "property":
            if not name.startswith("_"):
                pytest.skip(f"the bridge has no {name}")
            return object.__setattr__(self, name, value)
        return self._call(member, (value,), True)

    def invoke(self, which, *args):
        if isinstance(which, str):
            member = _members.get(which.lower())
        else:
            member = _by_dispid.get(which)
        if member is None:
            raise AttributeError(f"the control has no member {which}")
        writes = len(args) == member.inputs + 1 and (member.kind == "property" or member.indexed)
        return self._call(member, args, writes)

    def connect(self, event, handler):
        if event not in _events:
            raise AttributeError(f"the control has no event {event}")
        self._handlers.setdefault(event, []).append(handler)

    def paint(self):
        _bridge.ask("paint")

    def resize(self, width, height):
        _bridge.ask(f"resize {width} {height}")

    def mouse(self, message, flags, x, y):
        _bridge.ask(f"mouse {_MESSAGES[message]} {flags} {x} {y}")

    def wheel(self, flags, delta, x, y):
        _bridge.ask(f"wheel {flags} {delta} {x} {y}")

    def key(self, vk):
        _bridge.ask(f"key {vk}")

    @property
    def message_boxes(self):
        """Text, title and icon of each box so far; the bridge tells the text alone."""
        return [(text, None, None) for text in _read_all(_bridge.ask("boxes"))]

    def verbs(self):
        # Tests that only empty the list before they begin may go on.
        if sys._getframe(1).f_code.co_name == "drain":
            return []
        pytest.skip("the control of Windows keeps no list of verbs")


def __getattr__(name):
    if name.startswith("__"):
        raise AttributeError(name)
    pytest.skip(f"the bridge has no {name}", allow_module_level=True)
