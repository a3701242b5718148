// IOleObject: what a container does with any embedded object.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class OleObjectPart final : public Part<IOleObject> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** out) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD saveOption) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** out) override;
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD reserved, IDataObject** out) override;
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                                     LPCRECT place) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** out) override;
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* out) override;
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* out) override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* himetric) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* himetric) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** out) override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* out) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    IOleClientSite* Site() const { return site_.Get(); }
    /// Tells who asked that the control has been saved.
    void TellSaved();
    /// Shows the property pages by the container's means, or the system's.
    HRESULT ShowProperties(HWND parent);

private:
    Com<IOleClientSite> site_;
    Com<IOleAdviseHolder> listeners_;
};

/// The status word of the control for containers, the same in the registry.
inline constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_INSIDEOUT | OLEMISC_CANTLINKINSIDE |
                                     OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST | OLEMISC_SIMPLEFRAME;

}  // namespace orvane
