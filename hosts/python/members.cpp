#include "hosts/python/members.h"

#include "control/automation/table.h"
#include "hosts/python/values.h"

namespace orvane::python {

namespace {

const char* KindName(MemberKind kind) {
    switch (kind) {
        case MemberKind::Property:
            return "property";
        case MemberKind::Method:
            return "method";
        case MemberKind::Event:
            break;
    }
    return "event";
}

const char* DirectionName(Direction direction) {
    switch (direction) {
        case Direction::In:
            return "in";
        case Direction::Out:
            return "out";
        case Direction::InOut:
            break;
    }
    return "inout";
}

py::dict MemberDict(const Member& member) {
    py::list args;
    for (const Arg& arg : member.args) {
        py::dict a;
        a["name"] = arg.name;
        a["kind"] = arg.type.name + (arg.pointer ? "*" : "");
        a["direction"] = DirectionName(arg.direction);
        a["buffer"] = arg.IsBuffer();
        args.append(a);
    }
    py::dict d;
    d["name"] = member.name;
    d["kind"] = KindName(member.kind);
    d["dispid"] = member.dispid;
    d["args"] = args;
    d["result"] = member.result.name;
    d["help"] = member.help;
    d["indexed"] = member.indexed;
    d["readonly"] = member.readOnly;
    d["twin"] = member.twin;
    return d;
}

py::cpp_function MemberFunction(const py::class_<Rig>& cls, const Member& member, InvokeKind kind, const std::string& name) {
    const Member* called = &member;
    return py::cpp_function([called, kind](Rig& rig, const py::args& args) { return rig.Call(*called, args, kind); },
                            py::name(name.c_str()), py::is_method(cls), py::doc(member.help.c_str()));
}

}  // namespace

void BindMembers(py::class_<Rig>& cls) {
    for (const Member& member : Surface().Methods()) {
        cls.attr(member.name.c_str()) = MemberFunction(cls, member, InvokeKind::Method, member.name);
        if (!member.indexed) continue;
        const std::string setter = "set_" + member.name;
        cls.attr(setter.c_str()) = MemberFunction(cls, member, InvokeKind::Put, setter);
    }
    const py::object property = py::module_::import("builtins").attr("property");
    for (const Member& member : Surface().Properties()) {
        const py::object get = MemberFunction(cls, member, InvokeKind::Get, member.name);
        // A read-only one keeps its setter, so that the control's own refusal is what a host sees.
        const py::object put = MemberFunction(cls, member, InvokeKind::Put, member.name);
        cls.attr(member.name.c_str()) = property(get, put, py::none(), member.help);
    }
}

void BindEnums(py::module_& module) {
    const py::object intEnum = py::module_::import("enum").attr("IntEnum");
    for (const EnumRow& row : Surface().Enums()) {
        py::list values;
        for (const EnumValueRow& value : row.values) values.append(py::make_tuple(value.name, value.value));
        const py::object made = intEnum(row.name, values, py::arg("module") = "orvane4");
        made.attr("__doc__") = row.help;
        module.attr(row.name) = made;
        for (const EnumValueRow& value : row.values) module.attr(value.name) = made.attr(value.name);
    }
}

py::list MemberList() {
    py::list out;
    for (const Member& member : Surface().Properties()) out.append(MemberDict(member));
    for (const Member& member : Surface().Methods()) out.append(MemberDict(member));
    for (const Member& member : Surface().Events()) out.append(MemberDict(member));
    return out;
}

}  // namespace orvane::python
