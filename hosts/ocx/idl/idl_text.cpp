#include "hosts/ocx/idl/idl_text.h"

#include <algorithm>
#include <string_view>

#include "hosts/ocx/guids.h"

namespace orvane {

namespace {

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    return out + '"';
}

std::string Attributes(const char* guid, std::string_view help, std::string_view more = {}) {
    return "[uuid(" + std::string(guid) + "), helpstring(" + Quoted(help) + ")" + std::string(more) + "]";
}

std::string ArgText(const Arg& arg) {
    constexpr const char* kDirections[] = {"[in] ", "[out] ", "[in, out] "};
    return kDirections[static_cast<std::size_t>(arg.direction)] + arg.type.name + (arg.pointer ? "* " : " ") + arg.name;
}

std::string ArgList(const Member& member, const std::string& last = {}) {
    std::string list;
    const auto add = [&](const std::string& text) { list += (list.empty() ? "" : ", ") + text; };
    for (const Arg& arg : member.args) add(ArgText(arg));
    if (!last.empty()) add(last);
    return "(" + list + ")";
}

class Idl {
public:
    explicit Idl(const AutomationTable& surface) : surface_(surface) {}

    std::string Text() {
        Line("// Made by tools/make_idl from the table of members. Change the table, not this file.");
        Line("import \"types.idl\";");
        Line("");
        Line(Attributes(kLibraryGuid, kControlTitle, ", version(1.0)"));
        Line("library " + std::string(kLibraryName) + " {");
        Line("    importlib(\"stdole2.tlb\");");
        for (const EnumRow& row : surface_.Enums()) Enumeration(row);
        Members();
        Events();
        Control();
        Line("}");
        return std::move(text_);
    }

private:
    void Line(const std::string& line) { text_ += line + "\n"; }

    void Enumeration(const EnumRow& row) {
        const auto* const found = std::find_if(std::begin(kEnumGuids), std::end(kEnumGuids),
                                               [&](const EnumGuid& each) { return each.name == row.name; });
        if (found == std::end(kEnumGuids)) return;  // the dump of the library will miss it
        Line("");
        Line("    typedef " + Attributes(found->guid, row.help));
        Line("    enum " + std::string(row.name) + " {");
        for (const EnumValueRow& value : row.values) {
            Line("        " + std::string(value.name) + " = " + std::to_string(value.value) +
                 (&value == &row.values.back() ? "" : ","));
        }
        Line("    } " + std::string(row.name) + ";");
    }

    void Function(const Member& member, const char* attribute, const std::string& result, const std::string& args) {
        Line("        [id(" + std::to_string(member.dispid) + ")" + attribute + ", helpstring(" + Quoted(member.help) + ")]");
        Line("        " + result + " " + member.name + args + ";");
    }

    /// What can be written tells its change to who asks for it.
    void Property(const Member& member) {
        const bool writable = !member.readOnly;
        Function(member, writable ? ", propget, bindable" : ", propget", member.result.name, ArgList(member));
        if (!writable) return;
        Function(member, ", propput, bindable", "void", ArgList(member, "[in] " + member.result.name + " newValue"));
    }

    void Members() {
        Line("");
        Line("    " + Attributes(kMembersGuid, "Members of the map control"));
        Line("    dispinterface _DOrvane4 {");
        Line("    properties:");
        Line("    methods:");
        for (const Member& member : surface_.Properties()) Property(member);
        for (const Member& member : surface_.Methods()) {
            if (member.indexed) {
                Property(member);
            } else {
                Function(member, "", member.result.name, ArgList(member));
            }
        }
        Line("    };");
    }

    void Events() {
        Line("");
        Line("    " + Attributes(kEventsGuid, "Events of the map control"));
        Line("    dispinterface _DOrvane4Events {");
        Line("    properties:");
        Line("    methods:");
        for (const Member& event : surface_.Events()) Function(event, "", "void", ArgList(event));
        Line("    };");
    }

    void Control() {
        Line("");
        Line("    " + Attributes(kControlGuid, kControlTitle, ", control"));
        Line("    coclass Orvane4Ctrl {");
        Line("        [default] dispinterface _DOrvane4;");
        Line("        [default, source] dispinterface _DOrvane4Events;");
        Line("    };");
    }

    const AutomationTable& surface_;
    std::string text_;
};

}  // namespace

std::string IdlText(const AutomationTable& surface) { return Idl(surface).Text(); }

}  // namespace orvane
