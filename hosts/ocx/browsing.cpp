#include "hosts/ocx/browsing.h"

#include <cstring>

#include "control/automation/invoke.h"
#include "hosts/ocx/control_object.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

constexpr GUID kClassPage = ToGuid(kPropertyPageGuid);

const EnumRow* EnumOf(DISPID dispid) {
    const Member* member = Surface().Find(static_cast<std::int32_t>(dispid));
    return member == nullptr || member->kind != MemberKind::Property ? nullptr : member->result.enumeration;
}

LPOLESTR TaskCopy(std::string_view ascii) {
    const std::wstring text = WideAscii(ascii);
    auto* const copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
    if (copy != nullptr) std::memcpy(copy, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    return copy;
}

}  // namespace

HRESULT BrowsingPart::GetPages(CAUUID* pages) {
    if (pages == nullptr) return E_POINTER;
    pages->cElems = 0;
    pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID)));
    if (pages->pElems == nullptr) return E_OUTOFMEMORY;
    pages->pElems[0] = kClassPage;
    pages->cElems = 1;
    return S_OK;
}

HRESULT BrowsingPart::GetDisplayString(DISPID dispid, BSTR* out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Guarded([&]() -> HRESULT {
        const EnumRow* row = EnumOf(dispid);
        if (row == nullptr) return S_FALSE;
        std::int32_t value = 0;
        Invoke(object_.Ctrl(), static_cast<std::int32_t>(dispid), InvokeKind::Get, {}).value.ToI4(value);
        for (const EnumValueRow& each : row->values) {
            if (each.value != value) continue;
            *out = NewBstr(WideAscii(each.name));
            return *out == nullptr ? E_OUTOFMEMORY : S_OK;
        }
        return S_FALSE;
    });
}

HRESULT BrowsingPart::MapPropertyToPage(DISPID, CLSID* page) {
    if (page != nullptr) *page = GUID{};
    return page == nullptr ? E_POINTER : PERPROP_E_NOPAGEAVAILABLE;  // the page edits nothing
}

HRESULT BrowsingPart::GetPredefinedStrings(DISPID dispid, CALPOLESTR* names, CADWORD* cookies) {
    if (names == nullptr || cookies == nullptr) return E_POINTER;
    *names = CALPOLESTR{};
    *cookies = CADWORD{};
    return Guarded([&]() -> HRESULT {
        const EnumRow* row = EnumOf(dispid);
        if (row == nullptr) return S_FALSE;
        const std::size_t count = row->values.size();
        names->pElems = static_cast<LPOLESTR*>(CoTaskMemAlloc(count * sizeof(LPOLESTR)));
        cookies->pElems = static_cast<DWORD*>(CoTaskMemAlloc(count * sizeof(DWORD)));
        bool whole = names->pElems != nullptr && cookies->pElems != nullptr;
        for (std::size_t i = 0; whole && i < count; ++i) {
            names->pElems[i] = TaskCopy(row->values[i].name);
            cookies->pElems[i] = static_cast<DWORD>(i);
            whole = names->pElems[i] != nullptr;
            names->cElems = static_cast<ULONG>(i + (whole ? 1 : 0));
        }
        cookies->cElems = names->cElems;
        if (whole) return S_OK;
        for (ULONG i = 0; i < names->cElems; ++i) CoTaskMemFree(names->pElems[i]);
        CoTaskMemFree(names->pElems);
        CoTaskMemFree(cookies->pElems);
        *names = CALPOLESTR{};
        *cookies = CADWORD{};
        return E_OUTOFMEMORY;
    });
}

HRESULT BrowsingPart::GetPredefinedValue(DISPID dispid, DWORD cookie, VARIANT* value) {
    if (value == nullptr) return E_POINTER;
    VariantInit(value);
    const EnumRow* row = EnumOf(dispid);
    if (row == nullptr || cookie >= row->values.size()) return E_INVALIDARG;
    value->vt = VT_I4;
    value->lVal = row->values[cookie].value;
    return S_OK;
}

}  // namespace orvane
