#include "hosts/ocx/ole_object.h"

#include <cstring>

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/enumerator.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

constexpr GUID kClassControl = ToGuid(kControlGuid);
constexpr GUID kClassPage = ToGuid(kPropertyPageGuid);

/// A text that the caller frees as COM memory.
LPOLESTR TaskText(std::wstring_view text) {
    auto* const copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
    if (copy == nullptr) return nullptr;
    std::memcpy(copy, text.data(), text.size() * sizeof(wchar_t));
    copy[text.size()] = L'\0';
    return copy;
}

struct VerbRules {
    static REFIID Iid() { return IID_IEnumOLEVERB; }
    static bool Copy(const OLEVERB& from, OLEVERB& to) {
        to = from;
        to.lpszVerbName = TaskText(from.lpszVerbName);
        return to.lpszVerbName != nullptr;
    }
    static void Free(OLEVERB& item) { CoTaskMemFree(item.lpszVerbName); }
};

}  // namespace

HRESULT OleObjectPart::SetClientSite(IOleClientSite* site) {
    const Com<IUnknown> keep(&object_.Outer());
    if (site == nullptr) object_.inPlace.Drop();
    // A window on another container's form is of no use to this one.
    if (site != nullptr && site != site_.Get()) object_.inPlace.InPlaceDeactivate();
    site_ = Com<IOleClientSite>(site);
    object_.oleControl.ReadAmbients();
    return S_OK;
}

HRESULT OleObjectPart::GetClientSite(IOleClientSite** out) { return GiveInterface(out, site_.Get()); }

HRESULT OleObjectPart::Close(DWORD saveOption) {
    const Com<IUnknown> keep(&object_.Outer());
    // An object on a form has no say of its own in what the operator wants to keep: a prompt is the container's.
    if (saveOption != OLECLOSE_NOSAVE && object_.Ctrl().Modified()) {
        if (const Com<IOleClientSite> site = site_) site->SaveObject();
    }
    object_.inPlace.InPlaceDeactivate();
    if (const Com<IOleAdviseHolder> listeners = listeners_) listeners->SendOnClose();
    return S_OK;
}

HRESULT OleObjectPart::GetMoniker(DWORD assign, DWORD which, IMoniker** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    const Com<IUnknown> keep(&object_.Outer());
    const Com<IOleClientSite> site = site_;
    return site ? site->GetMoniker(assign, which, out) : E_UNEXPECTED;
}

HRESULT OleObjectPart::GetClipboardData(DWORD, IDataObject** out) {
    return GiveInterface(out, static_cast<IDataObject*>(&object_.data));
}

HRESULT OleObjectPart::DoVerb(LONG verb, LPMSG message, IOleClientSite*, LONG, HWND parent, LPCRECT) {
    const Com<IUnknown> keep(&object_.Outer());
    return Guarded([&]() -> HRESULT {
        switch (verb) {
            case OLEIVERB_PRIMARY:
            case OLEIVERB_SHOW:
            case OLEIVERB_OPEN:
            case OLEIVERB_INPLACEACTIVATE:
                return object_.inPlace.Activate(false, message);
            case OLEIVERB_UIACTIVATE:
                return object_.inPlace.Activate(true, message);
            case OLEIVERB_HIDE:
                return object_.inPlace.Hide();
            case OLEIVERB_DISCARDUNDOSTATE:
                return S_OK;
            case OLEIVERB_PROPERTIES:
                return ShowProperties(parent);
            default:
                break;
        }
        if (verb < 0) return E_NOTIMPL;
        // A verb that an older container remembers does what the first one does.
        const HRESULT shown = object_.inPlace.Activate(false, message);
        return FAILED(shown) ? shown : OLEOBJ_S_INVALIDVERB;
    });
}

HRESULT OleObjectPart::ShowProperties(HWND parent) {
    const Com<IOleControlSite> site = Query<IOleControlSite>(site_.Get(), IID_IOleControlSite);
    if (site && site->ShowPropertyFrame() == S_OK) return S_OK;
    IUnknown* self = &object_.Outer();
    CLSID page = kClassPage;
    return OleCreatePropertyFrame(parent, 0, 0, WideAscii(kControlTitle).c_str(), 1, &self, 1, &page, LOCALE_USER_DEFAULT, 0,
                                  nullptr);
}

HRESULT OleObjectPart::EnumVerbs(IEnumOLEVERB** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Guarded([&]() -> HRESULT {
        std::vector<OLEVERB> verbs(1);
        verbs[0] = {OLEIVERB_PROPERTIES, TaskText(L"P&roperties"), 0, OLEVERBATTRIB_ONCONTAINERMENU};
        if (verbs[0].lpszVerbName == nullptr) return E_OUTOFMEMORY;
        *out = new Enumerator<IEnumOLEVERB, OLEVERB, VerbRules>(std::move(verbs));
        return S_OK;
    });
}

HRESULT OleObjectPart::GetUserClassID(CLSID* out) { return Give(out, kClassControl); }

HRESULT OleObjectPart::GetUserType(DWORD, LPOLESTR* out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Guarded([&] {
        *out = TaskText(WideAscii(kControlTitle));
        return *out == nullptr ? E_OUTOFMEMORY : S_OK;
    });
}

HRESULT OleObjectPart::SetExtent(DWORD aspect, SIZEL* himetric) {
    if (himetric == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (himetric->cx < 0 || himetric->cy < 0) return E_INVALIDARG;
    return Guarded([&] {
        const CallIn call(object_);
        object_.ChangeExtent(*himetric);
        return S_OK;
    });
}

HRESULT OleObjectPart::GetExtent(DWORD aspect, SIZEL* himetric) {
    if (himetric == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *himetric = object_.Extent();
    return S_OK;
}

HRESULT OleObjectPart::Advise(IAdviseSink* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    const Com<IUnknown> keep(&object_.Outer());
    if (!listeners_) {
        const HRESULT made = CreateOleAdviseHolder(listeners_.Out());
        if (FAILED(made)) return made;
    }
    return listeners_->Advise(sink, cookie);
}

HRESULT OleObjectPart::Unadvise(DWORD cookie) {
    const Com<IUnknown> keep(&object_.Outer());
    return listeners_ ? listeners_->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT OleObjectPart::EnumAdvise(IEnumSTATDATA** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return listeners_ ? listeners_->EnumAdvise(out) : S_OK;
}

void OleObjectPart::TellSaved() {
    if (const Com<IOleAdviseHolder> listeners = listeners_) listeners->SendOnSave();
}

HRESULT OleObjectPart::GetMiscStatus(DWORD aspect, DWORD* out) {
    return aspect == DVASPECT_CONTENT ? Give(out, kMiscStatus) : Give(out, DWORD{0});
}

}  // namespace orvane
