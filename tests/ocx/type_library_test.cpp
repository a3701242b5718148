// The type library in the control's file beside the table of members, entry by entry.
#include <map>
#include <set>

#include "control/automation/table.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"
#include "tests/ocx/client.h"

namespace orvane::test {
namespace {

std::string Narrow(BSTR text) {
    std::string out;
    for (const wchar_t c : View(text)) out += static_cast<char>(c);
    return out;
}

struct Documentation {
    std::string name;
    std::string help;
};

template <class T>
Documentation DocumentationOf(T& holder, long id) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    EXPECT_EQ(holder.GetDocumentation(id, &name, &help, nullptr, nullptr), S_OK);
    Documentation both{Narrow(name), Narrow(help)};
    SysFreeString(name);
    SysFreeString(help);
    return both;
}

/// The name of a type as the interface language writes it.
std::string TypeName(ITypeInfo& info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_VOID:
            return "void";
        case VT_BOOL:
            return "VARIANT_BOOL";
        case VT_I2:
            return "short";
        case VT_I4:
            return "long";
        case VT_R8:
            return "double";
        case VT_BSTR:
            return "BSTR";
        case VT_VARIANT:
            return "VARIANT";
        case VT_PTR:
            return TypeName(info, *type.lptdesc) + "*";
        case VT_USERDEFINED: {
            Com<ITypeInfo> referred;
            if (FAILED(info.GetRefTypeInfo(type.hreftype, referred.Out()))) return "?";
            return DocumentationOf(*referred.Get(), MEMBERID_NIL).name;
        }
        default:
            return "vt " + std::to_string(type.vt);
    }
}

struct DumpedArg {
    std::string name;
    std::string type;
    USHORT flags = 0;
};
struct Dumped {
    std::string name;
    std::string help;
    std::string type;
    std::vector<DumpedArg> args;
    long dispid = 0;
    INVOKEKIND kind = INVOKE_FUNC;
};

Dumped DumpFunction(ITypeInfo& info, UINT index) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(info.GetFuncDesc(index, &function), S_OK);
    Dumped out;
    const Documentation words = DocumentationOf(info, function->memid);
    out.name = words.name;
    out.help = words.help;
    out.dispid = function->memid;
    out.kind = function->invkind;
    out.type = TypeName(info, function->elemdescFunc.tdesc);
    std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1);
    UINT count = 0;
    info.GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count);
    for (int i = 0; i < function->cParams; ++i) {
        const ELEMDESC& element = function->lprgelemdescParam[i];
        const auto at = static_cast<std::size_t>(i) + 1;
        out.args.push_back({at < count ? Narrow(names[at]) : "", TypeName(info, element.tdesc), element.paramdesc.wParamFlags});
    }
    for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
    info.ReleaseFuncDesc(function);
    return out;
}

class TypeLibraryTest : public ComTest {
protected:
    TypeLibraryTest() { EXPECT_EQ(LoadTypeLibEx(ControlFile().c_str(), REGKIND_NONE, library.Out()), S_OK); }

    std::vector<Dumped> Functions(const char* guid) {
        Com<ITypeInfo> info;
        EXPECT_EQ(library->GetTypeInfoOfGuid(ToGuid(guid), info.Out()), S_OK);
        TYPEATTR* attributes = nullptr;
        info->GetTypeAttr(&attributes);
        std::vector<Dumped> functions;
        for (UINT i = 0; i < attributes->cFuncs; ++i) {
            Dumped each = DumpFunction(*info.Get(), i);
            // IUnknown's and IDispatch's own seven stand in every dispatch interface.
            if (each.dispid < 0x60000000) functions.push_back(each);
        }
        EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
        EXPECT_EQ(attributes->cVars, 0);
        info->ReleaseTypeAttr(attributes);
        return functions;
    }

    static void ExpectArgs(const Member& member, const Dumped& dumped, std::size_t more) {
        ASSERT_EQ(dumped.args.size(), member.args.size() + more) << member.name;
        for (std::size_t i = 0; i < member.args.size(); ++i) {
            const Arg& arg = member.args[i];
            constexpr USHORT kDirections[] = {PARAMFLAG_FIN, PARAMFLAG_FOUT, PARAMFLAG_FIN | PARAMFLAG_FOUT};
            if (dumped.kind != INVOKE_PROPERTYPUT) {  // a write gives only the name of its value
                EXPECT_EQ(dumped.args[i].name, arg.name) << member.name;
            }
            EXPECT_EQ(dumped.args[i].type, arg.type.name + (arg.pointer ? "*" : "")) << member.name << " " << arg.name;
            EXPECT_EQ(dumped.args[i].flags, kDirections[static_cast<std::size_t>(arg.direction)])
                << member.name << " " << arg.name;
        }
    }

    static void ExpectMember(const Member& member, const Dumped& dumped) {
        const bool put = dumped.kind == INVOKE_PROPERTYPUT;
        EXPECT_EQ(dumped.name, member.name);
        EXPECT_EQ(dumped.dispid, member.dispid) << member.name;
        EXPECT_EQ(dumped.help, member.help);
        EXPECT_EQ(dumped.type, put ? "void" : member.result.name) << member.name;
        ExpectArgs(member, dumped, put ? 1 : 0);
        if (put && !dumped.args.empty()) {
            EXPECT_EQ(dumped.args.back().type, member.result.name) << member.name;
        }
    }

    Com<ITypeLib> library;
};

TEST_F(TypeLibraryTest, has_every_property_and_method_of_the_table_and_no_other) {
    int properties = 0;
    int methods = 0;
    int writes = 0;
    std::set<std::string> seen;
    for (const Dumped& each : Functions(kMembersGuid)) {
        const Member* member = Surface().Find(each.name);
        ASSERT_NE(member, nullptr) << each.name;
        ExpectMember(*member, each);
        const bool isProperty = member->kind == MemberKind::Property || member->indexed;
        EXPECT_EQ(each.kind != INVOKE_FUNC, isProperty) << each.name;
        if (each.kind == INVOKE_PROPERTYPUT) {
            ++writes;
            EXPECT_FALSE(member->readOnly) << each.name;
            continue;
        }
        EXPECT_TRUE(seen.insert(each.name).second) << each.name << " stands twice";
        (member->kind == MemberKind::Property ? properties : methods)++;
    }
    EXPECT_EQ(properties, 24);
    EXPECT_EQ(methods, 219);
    EXPECT_EQ(writes, 23 + 2);  // all but GetDC, and the two with an argument
}

TEST_F(TypeLibraryTest, has_every_event) {
    const std::vector<Dumped> functions = Functions(kEventsGuid);
    EXPECT_EQ(functions.size(), 14U);
    for (const Dumped& each : functions) {
        const Member* event = Surface().FindEvent(each.name);
        ASSERT_NE(event, nullptr) << each.name;
        Member asMethod = *event;
        asMethod.result.name = "void";
        ExpectMember(asMethod, each);
    }
}

TEST_F(TypeLibraryTest, has_the_eleven_enumerations_with_their_values) {
    int found = 0;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        library->GetTypeInfoType(i, &kind);
        if (kind != TKIND_ENUM) continue;
        ++found;
        Com<ITypeInfo> info;
        library->GetTypeInfo(i, info.Out());
        const Documentation words = DocumentationOf(*info.Get(), MEMBERID_NIL);
        const EnumRow* row = Surface().FindEnum(words.name);
        ASSERT_NE(row, nullptr) << words.name;
        EXPECT_EQ(words.help, row->help);
        TYPEATTR* attributes = nullptr;
        info->GetTypeAttr(&attributes);
        ASSERT_EQ(attributes->cVars, row->values.size()) << words.name;
        for (UINT k = 0; k < attributes->cVars; ++k) {
            VARDESC* value = nullptr;
            info->GetVarDesc(k, &value);
            EXPECT_EQ(DocumentationOf(*info.Get(), value->memid).name, row->values[k].name);
            EXPECT_EQ(value->lpvarValue->lVal, row->values[k].value) << row->values[k].name;
            info->ReleaseVarDesc(value);
        }
        info->ReleaseTypeAttr(attributes);
    }
    EXPECT_EQ(found, 11);
}

TEST_F(TypeLibraryTest, names_the_library_and_the_control_with_its_two_interfaces) {
    EXPECT_EQ(DocumentationOf(*library.Get(), -1).name, "ORVANE4Lib");
    Com<ITypeInfo> control;
    ASSERT_EQ(library->GetTypeInfoOfGuid(ToGuid(kControlGuid), control.Out()), S_OK);
    TYPEATTR* attributes = nullptr;
    control->GetTypeAttr(&attributes);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCONTROL, 0);
    ASSERT_EQ(attributes->cImplTypes, 2);
    control->ReleaseTypeAttr(attributes);
    INT flags = 0;
    control->GetImplTypeFlags(0, &flags);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    control->GetImplTypeFlags(1, &flags);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
}

TEST_F(TypeLibraryTest, is_what_the_control_and_its_class_information_tell) {
    Client control = Client::New();
    UINT count = 0;
    EXPECT_EQ(control.Get()->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    Com<ITypeInfo> info;
    ASSERT_EQ(control.Get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out()), S_OK);
    EXPECT_EQ(DocumentationOf(*info.Get(), MEMBERID_NIL).name, "_DOrvane4");
    EXPECT_EQ(control.Get()->GetTypeInfo(1, LOCALE_USER_DEFAULT, info.Out()), DISP_E_BADINDEX);

    const Com<IProvideClassInfo2> about = control.As<IProvideClassInfo2>(IID_IProvideClassInfo2);
    ASSERT_TRUE(about);
    GUID source{};
    EXPECT_EQ(about->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
    EXPECT_TRUE(source == ToGuid(kEventsGuid));
    EXPECT_EQ(about->GetGUID(0, &source), E_INVALIDARG);
    ASSERT_EQ(about->GetClassInfo(info.Out()), S_OK);
    EXPECT_EQ(DocumentationOf(*info.Get(), MEMBERID_NIL).name, "Orvane4Ctrl");
}

}  // namespace
}  // namespace orvane::test
