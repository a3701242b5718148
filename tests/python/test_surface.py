"""The surface as its table tells it: names, dispids, arguments, enumerations, stubs; compared with what hosts rely on."""

import enum
import inspect
import pathlib

import orvane4
import pytest
from map_rig import painted, surface_lines

MEMBERS = orvane4.members()
SIGNATURES, PAIRS = surface_lines()

PROPERTIES = {
    "ExecRun": (1, "VARIANT_BOOL"), "DebugMode": (2, "VARIANT_BOOL"), "RunMode": (3, "T_OrvRunMode"),
    "ScrollMode": (4, "T_OrvScrMode"),
    "ScaleX": (5, "double"), "ScaleY": (6, "double"), "Rotate": (7, "double"), "Zoom": (8, "long"),
    "MapDraw": (9, "VARIANT_BOOL"),
    "ScaleBarMode": (10, "short"), "MemHandle": (11, "OLE_HANDLE"), "MemCnt": (12, "long"), "GetDC": (13, "OLE_HANDLE"),
    "ActiveColor": (14, "OLE_COLOR"), "AreaTop": (15, "double"), "AreaBottom": (16, "double"), "AreaLeft": (17, "double"),
    "AreaRight": (18, "double"), "ActivePointType": (19, "T_OrvActPntType"), "OrgStrVisible": (20, "VARIANT_BOOL"),
    "LineTagMode": (21, "VARIANT_BOOL"), "DigStrVisible": (22, "VARIANT_BOOL"), "StrVisible": (23, "VARIANT_BOOL"),
    "CutSameString": (24, "VARIANT_BOOL"),
}

MOUSE = [("Button", "short"), ("Shift", "short"), ("x", "OLE_XPOS_PIXELS"), ("y", "OLE_YPOS_PIXELS")]
PICK = [("datNo", "long"), ("code", "BSTR"), ("meshNo", "long"), ("x", "long"), ("y", "long")]
EDITOR = [("code", "BSTR"), ("meshNo", "long"), ("datID", "long"), ("cnt", "long"), ("editType", "long")]
EVENTS = {
    "OnZoomChange": (1, [("Zoom", "long")]),
    "OnDataCmd": (2, [("execName", "BSTR"), ("sendName", "BSTR"), ("SendParm", "BSTR"), ("datNo", "long"), ("layCd", "BSTR")]),
    "MouseDown": (-605, MOUSE),
    "MouseUp": (-607, MOUSE),
    "MouseMove": (-606, MOUSE),
    "OnOrgDataClick": (3, [("ID", "long"), ("x", "long"), ("y", "long")]),
    "OnOrgNearPtClick": (4, [("idx", "long"), ("cnt", "short"), ("nearX", "double"), ("nearY", "double"), ("px", "long"),
                             ("py", "long")]),
    "OnOrgPointClick": (5, [("ID", "long"), ("idx", "short"), ("x", "long"), ("y", "long")]),
    "OnHintStart": (6, PICK),
    "OnDataClick": (7, PICK),
    "OnNearPtClick": (8, [("idx", "long"), ("cnt", "short"), ("meshNo", "long"), ("nearX", "double"), ("nearY", "double"),
                          ("px", "long"), ("py", "long")]),
    "OnDataDblClick": (9, PICK),
    "OnEditorEnd": (10, EDITOR),
    "OnEditorStart": (11, EDITOR),
}

ENUMERATIONS = {
    "T_OrvMode1": {"OrvMOn": 0, "OrvMOff": 1},
    "T_OrvFillMode": {"OrvFMMask": 0, "OrvFMCopy": 1},
    "T_OrvLType": {"OrvLTPoint": 1, "OrvLTLine": 2, "OrvLTPolygon": 3, "OrvLTCircle": 4, "OrvLTText": 5, "OrvLTEllipse": 8,
                   "OrvLTMesh": 10},
    "T_OrvRunMode": {"OrvRMNomal": 0, "OrvRMPan": 10, "OrvRMAddEdit": 100, "OrvRMEditPntMove": 200, "OrvRMEditPntAdd": 210,
                     "OrvRMEditPntDel": 220, "OrvRMMoveDat": 250, "OrvRMCopyDat": 260, "OrvRMDeleteDat": 300},
    "T_OrvScrMode": {"OrvSMOff": 0, "OrvSMOn": 10},
    "T_OrvActPntType": {"OrvAPMOff": 0, "OrvAPMCircle": 1},
    "T_OrvRectZoomMode": {"OrvRZMOff": 0, "OrvRZMZoomUp": 10, "OrvRZMZoomDown": 20},
    "T_OrvWheelZoomMode": {"OrvWZMOff": 0, "OrvRZMCenter": 1, "OrvRZMMouse": 2},
    "T_SymbolPos": {"OrvSymPosC": 0, "OrvSymPosLT": 1, "OrvSymPosLB": 2, "OrvSymPosRT": 3, "OrvSymPosRB": 4},
    "T_StringPos": {"OrvStrPosLT": 0, "OrvStrPosLC": 1, "OrvStrPosLB": 2, "OrvStrPosCT": 3, "OrvStrPosCC": 4, "OrvStrPosCB": 5,
                    "OrvStrPosRT": 6, "OrvStrPosRC": 7, "OrvStrPosRB": 8},
    "T_ChkOperater": {"OrvEquals": 0, "OrvDisjoint": 1, "OrvIntersects": 2, "OrvTouches": 3, "OrvCrosses": 4, "OrvWithin": 5,
                      "OrvContains": 6, "OrvOverlaps": 7},
}


def of_kind(kind):
    return {member["name"]: member for member in MEMBERS if member["kind"] == kind}


def written(member):
    """Result and arguments as surface_members.txt writes them."""
    words = [f"{arg['kind']} {arg['name']}" for arg in member["args"]]
    directed = [f"{arg['direction']} {word}" if "*" in arg["kind"] else word for arg, word in zip(member["args"], words)]
    return member["result"] or "void", ", ".join(directed)


def agrees(told, relied_on):
    """Whether a text is the one relied on, in which a `?` stands for any one word."""
    if relied_on == "?":
        return True
    told_words, relied_words = told.split(" "), relied_on.split(" ")
    return len(told_words) == len(relied_words) and all(r in ("?", t) for t, r in zip(told_words, relied_words))


def test_there_are_24_properties_219_methods_14_events_and_11_enumerations():
    assert len(of_kind("property")) == 24
    assert len(of_kind("method")) == 219
    assert len(of_kind("event")) == 14
    assert len(MEMBERS) == 24 + 219 + 14, "every name stands as its own entry, once"
    assert len(ENUMERATIONS) == 11


def test_every_method_has_its_dispid():
    assert {name: member["dispid"] for name, member in of_kind("method").items()} == {name: d for d, _, name, _ in SIGNATURES}


def test_every_method_has_the_result_and_the_arguments_that_hosts_pass():
    methods = of_kind("method")
    wrong = []
    for _, result, name, args in SIGNATURES:
        told_result, told_args = written(methods[name])
        if not agrees(told_result, result) or not agrees(told_args, args):
            wrong.append(f"{name}: {told_result} ({told_args}) instead of {result} ({args})")
    assert not wrong, "\n" + "\n".join(wrong)


def test_every_property_has_its_dispid_and_type():
    assert {name: (member["dispid"], member["result"]) for name, member in of_kind("property").items()} == PROPERTIES


def test_every_event_has_its_dispid_and_arguments():
    told = {name: (member["dispid"], [(arg["name"], arg["kind"]) for arg in member["args"]])
            for name, member in of_kind("event").items()}
    assert told == EVENTS


def test_no_dispid_stands_twice_within_an_interface():
    for interface in (("property", "method"), ("event",)):
        dispids = [member["dispid"] for member in MEMBERS if member["kind"] in interface]
        assert len(dispids) == len(set(dispids))


def test_the_two_parameterised_properties_stand_among_the_methods():
    indexed = [name for name, member in of_kind("method").items() if member.get("indexed")]
    assert sorted(indexed) == ["OrgDataActive", "OrvOrgDataActive"]
    assert not any(member.get("indexed") for member in MEMBERS if member["kind"] != "method")


def test_every_member_has_one_line_of_help():
    for member in MEMBERS:
        assert member["help"].strip() and "\n" not in member["help"], member["name"]


def test_the_enumerations_are_python_enumerations_with_their_odd_spellings():
    for name, values in ENUMERATIONS.items():
        each = getattr(orvane4, name)
        assert isinstance(each, enum.EnumMeta), name
        assert {key: int(value) for key, value in each.__members__.items()} == values
    told = {name for name, value in vars(orvane4).items() if isinstance(value, enum.EnumMeta) and name.startswith("T_")}
    assert told == set(ENUMERATIONS)


def test_an_enumeration_value_is_taken_where_a_number_is():
    host = painted()
    assert host.control.OrvMakeLayer("A", orvane4.T_OrvLType.OrvLTPolygon) is True
    host.control.RunMode = orvane4.T_OrvRunMode.OrvRMPan
    assert host.control.RunMode == 10


@pytest.mark.parametrize("member", [m for m in MEMBERS if m["kind"] != "event"], ids=lambda member: member["name"])
def test_every_member_is_an_attribute_of_the_control_with_its_help_line(member):
    attribute = inspect.getattr_static(orvane4.Orvane4Ctrl, member["name"])
    assert member["help"] in (attribute.__doc__ or "")


def test_both_names_of_a_pair_have_their_own_entry():
    methods = of_kind("method")
    assert len(PAIRS) == 85
    for older, newer in PAIRS:
        assert older in methods and newer in methods


def test_the_type_stubs_name_every_property_and_method():
    stubs = (pathlib.Path(orvane4.__file__).parent / "orvane4.pyi").read_text(encoding="utf-8")
    for member in MEMBERS:
        if member["kind"] != "event":
            assert f"def {member['name']}(" in stubs or f"{member['name']}:" in stubs, member["name"]
    for name in ENUMERATIONS:
        assert f"class {name}" in stubs
    compile(stubs, "orvane4.pyi", "exec")
