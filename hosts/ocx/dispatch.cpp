#include "hosts/ocx/dispatch.h"

#include <algorithm>
#include <exception>

#include "control/automation/invoke.h"
#include "hosts/ocx/control_object.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/module.h"
#include "hosts/ocx/values.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

constexpr GUID kIidMembers = ToGuid(kMembersGuid);
constexpr std::size_t kLongestName = 64;

bool SameName(std::string_view name, std::wstring_view wanted) {
    const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
    return std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(),
                      [&](char a, wchar_t b) { return lower(static_cast<wchar_t>(static_cast<unsigned char>(a))) == lower(b); });
}

const Member* FindWide(std::wstring_view name) {
    if (name.size() > kLongestName) return nullptr;
    std::string ascii;
    for (const wchar_t c : name) {
        if (c >= 0x80) return nullptr;
        ascii += static_cast<char>(c);
    }
    return Surface().Find(ascii);
}

/// How many arguments a call has, the value of a write among them.
std::size_t ArgCount(const Member& member, bool put) { return member.args.size() + (put ? 1 : 0); }

/// One call between the host's parameters, which stand from last to first and are as many as the member has, and the control's
/// arguments.
class LateCall {
public:
    LateCall(COrvane4Ctrl& ctrl, const Member& member, InvokeKind kind, const DISPPARAMS& params)
        : ctrl_(ctrl), member_(member), kind_(kind), params_(params), args_(ArgCount(member, kind == InvokeKind::Put)) {}

    /// The call was not as declared; `argError` is then the host's number of the argument.
    HRESULT Run(VARIANT* result, UINT* argError) {
        std::size_t at = 0;
        const HRESULT done = Check(at);
        if (done != S_OK && argError != nullptr) *argError = HostIndex(at);
        return done != S_OK ? done : Finish(result, argError);
    }

private:
    UINT HostIndex(std::size_t i) const { return params_.cArgs - 1 - static_cast<UINT>(i); }
    const VARIANT& Given(std::size_t i) const { return params_.rgvarg[HostIndex(i)]; }
    bool IsPutValue(std::size_t i) const { return i == member_.args.size(); }

    /// A text for a number must convert, so that one without bytes is as wrong there as any other that is no number.
    HRESULT Note(Conversion read, ValueKind kind) {
        if (read == Conversion::Missing) return DISP_E_PARAMNOTOPTIONAL;
        if (read == Conversion::NoBytes && kind == ValueKind::Bstr) return unwritable_ = true, S_OK;
        return read == Conversion::Done ? S_OK : DISP_E_TYPEMISMATCH;
    }

    HRESULT Check(std::size_t& at) {
        HRESULT done = S_OK;
        for (at = 0; at < args_.size(); ++at) {
            const bool isValue = IsPutValue(at) || (member_.args[at].IsInput() && !member_.args[at].IsBuffer());
            if (isValue && (done = ReadValue(at)) != S_OK) return done;
        }
        // How long a buffer must be follows from the values, so it comes after all of them.
        for (at = 0; at < member_.args.size(); ++at) {
            if ((done = PrepareBuffer(at)) != S_OK) return done;
        }
        return S_OK;
    }

    HRESULT ReadValue(std::size_t i) {
        const ValueType& type = IsPutValue(i) ? member_.result : member_.args[i].type;
        if (type.kind == ValueKind::Variant) return ReadArrayArgument(i);
        const HRESULT done = Note(FromVariant(Given(i), args_[i].value), type.kind);
        args_[i].value = WrapUnsigned(type, args_[i].value);
        return done;
    }

    /// What is no array, and one that there is no memory for, comes to the member as nothing: the member itself says what it
    /// does then.
    HRESULT ReadArrayArgument(std::size_t i) {
        Conversion read = Conversion::NoValue;
        try {
            read = FromVariant(Given(i), args_[i].value);
        } catch (const std::exception&) {
            read = Conversion::NoValue;
        }
        if (read != Conversion::Done) args_[i].value = Variant();
        return read == Conversion::Missing ? DISP_E_PARAMNOTOPTIONAL : S_OK;
    }

    HRESULT PrepareBuffer(std::size_t i) {
        const Arg& arg = member_.args[i];
        const std::size_t count = arg.IsBuffer() ? BufferLength(ctrl_, member_, i, args_) : 1;
        if (arg.IsBuffer() && arg.IsInput()) {
            return Note(ReadBuffer(arg, Given(i), count, args_[i].buffer), arg.type.kind);
        }
        if (!arg.IsOutput()) return S_OK;
        const HRESULT fits = CheckTarget(arg, Given(i), count);
        if (fits != S_OK || !arg.IsBuffer()) return fits;
        args_[i].buffer = MakeBuffer(arg, count);
        return args_[i].buffer.index() == 0 ? E_OUTOFMEMORY : S_OK;
    }

    HRESULT Finish(VARIANT* result, UINT* argError) {
        const bool hasResult = kind_ != InvokeKind::Put && member_.result.kind != ValueKind::None;
        Variant value = member_.failure;
        if (!unwritable_) {
            InvokeResult called = Invoke(ctrl_, member_, kind_, args_);
            if (called.status != InvokeStatus::Ok) return Refusal(called, argError);
            value = std::move(called.value);
            if (const HRESULT lost = WriteOutputs(argError); lost != S_OK) return lost;
        }
        return result == nullptr || !hasResult || ToVariant(value, *result) ? S_OK : E_OUTOFMEMORY;
    }

    /// Writes all that fits its place, and tells of the first one that does not.
    HRESULT WriteOutputs(UINT* argError) const {
        HRESULT first = S_OK;
        for (std::size_t i = 0; i < member_.args.size(); ++i) {
            if (!member_.args[i].IsOutput()) continue;
            const HRESULT written = WriteOutput(member_.args[i], args_[i], Given(i));
            if (written == S_OK || first != S_OK) continue;
            first = written;
            if (argError != nullptr) *argError = HostIndex(i);
        }
        return first;
    }

    /// Whether what was refused is a number, which then does not fit.
    bool IsTooLarge(std::size_t i) const {
        double number = 0;
        return i < args_.size() && args_[i].value.ToR8(number);
    }

    HRESULT Refusal(const InvokeResult& called, UINT* argError) const {
        if (argError != nullptr) *argError = HostIndex(called.argIndex);
        switch (called.status) {
            case InvokeStatus::BadArgCount:
                return DISP_E_BADPARAMCOUNT;
            case InvokeStatus::TypeMismatch:
                return IsTooLarge(called.argIndex) ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
            case InvokeStatus::BufferTooShort:
                return DISP_E_BADINDEX;
            default:
                return DISP_E_MEMBERNOTFOUND;
        }
    }

    COrvane4Ctrl& ctrl_;
    const Member& member_;
    InvokeKind kind_;
    const DISPPARAMS& params_;
    std::vector<Argument> args_;
    bool unwritable_ = false;  // a text has no bytes: the member fails without being called
};

constexpr wchar_t kReadOnly[] = L"The property can be read only.";

/// Both ways in which hosts ask what went wrong.
HRESULT RaiseReadOnly(EXCEPINFO* exception) {
    Com<ICreateErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(info.Out()))) {
        info->SetGUID(kIidMembers);
        info->SetSource(WideAscii(kProgId).data());
        std::wstring words = kReadOnly;
        info->SetDescription(words.data());
        if (const Com<IErrorInfo> error = Query<IErrorInfo>(info.Get(), IID_IErrorInfo)) SetErrorInfo(0, error.Get());
    }
    if (exception == nullptr) return DISP_E_EXCEPTION;
    *exception = EXCEPINFO{};
    exception->scode = CTL_E_SETNOTSUPPORTED;
    exception->bstrSource = NewBstr(WideAscii(kProgId));
    exception->bstrDescription = NewBstr(kReadOnly);
    return DISP_E_EXCEPTION;
}

/// S_OK, or why a call with these flags and names is none.
HRESULT CheckForm(const Member* member, WORD flags, const DISPPARAMS* params, bool put) {
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    if (params == nullptr || (params->cArgs > 0 && params->rgvarg == nullptr)) return E_INVALIDARG;
    if ((flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0)
        return E_INVALIDARG;
    if (put && member->kind != MemberKind::Property && !member->indexed) return DISP_E_MEMBERNOTFOUND;
    if (put && params->cArgs == 0) return DISP_E_BADPARAMCOUNT;
    const bool hasPutName = put && params->cNamedArgs == 1 && params->rgdispidNamedArgs != nullptr &&
                            params->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    return params->cNamedArgs == 0 || hasPutName ? S_OK : DISP_E_NONAMEDARGS;
}

}  // namespace

HRESULT DispatchPart::GetTypeInfoCount(UINT* count) { return Give(count, 1U); }

HRESULT DispatchPart::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return index != 0 ? DISP_E_BADINDEX : LoadTypeInfo(kIidMembers, out);
}

HRESULT DispatchPart::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* out) {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || out == nullptr || count == 0) return E_INVALIDARG;
    return Guarded([&]() -> HRESULT {
        std::fill_n(out, count, DISPID_UNKNOWN);
        const Member* member = names[0] == nullptr ? nullptr : FindWide(names[0]);
        if (member == nullptr) return DISP_E_UNKNOWNNAME;
        out[0] = member->dispid;
        HRESULT all = S_OK;
        for (UINT i = 1; i < count; ++i) {
            for (std::size_t k = 0; names[i] != nullptr && k < member->args.size(); ++k) {
                if (SameName(member->args[k].name, names[i])) out[i] = static_cast<DISPID>(k);
            }
            if (out[i] == DISPID_UNKNOWN) all = DISP_E_UNKNOWNNAME;
        }
        return all;
    });
}

HRESULT DispatchPart::Invoke(DISPID dispid, REFIID iid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                             EXCEPINFO* exception, UINT* argError) {
    if (result != nullptr) VariantInit(result);
    SetErrorInfo(0, nullptr);  // what an earlier call left is none of this one's
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    return Guarded([&]() -> HRESULT {
        const CallIn call(object_);
        const Member* member = Surface().Find(static_cast<std::int32_t>(dispid));
        const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        const HRESULT form = CheckForm(member, flags, params, put);
        if (form != S_OK) return form;
        if (put && member->readOnly) return RaiseReadOnly(exception);
        if (params->cArgs != ArgCount(*member, put) || params->cArgs > kMaxArgs) return DISP_E_BADPARAMCOUNT;
        const InvokeKind kind = put ? InvokeKind::Put : InvokeKind::Method;
        const HRESULT done = LateCall(object_.Ctrl(), *member, kind, *params).Run(result, argError);
        if (put && done == S_OK) object_.PropertyWritten(member->dispid);
        return done;
    });
}

HRESULT DispatchPart::InterfaceSupportsErrorInfo(REFIID iid) {
    return iid == IID_IDispatch || iid == kIidMembers ? S_OK : S_FALSE;
}

}  // namespace orvane
