// The property page "General", which holds one fixed label and edits nothing.
#pragma once

#include "hosts/ocx/com_base.h"

namespace orvane {

class PropertyPage final : public ComObject<IPropertyPage> {
public:
    HRESULT STDMETHODCALLTYPE SetPageSite(IPropertyPageSite* site) override;
    HRESULT STDMETHODCALLTYPE Activate(HWND parent, LPCRECT place, WINBOOL modal) override;
    HRESULT STDMETHODCALLTYPE Deactivate() override;
    HRESULT STDMETHODCALLTYPE GetPageInfo(PROPPAGEINFO* info) override;
    HRESULT STDMETHODCALLTYPE SetObjects(ULONG count, IUnknown** objects) override;
    HRESULT STDMETHODCALLTYPE Show(UINT command) override;
    HRESULT STDMETHODCALLTYPE Move(LPCRECT place) override;
    HRESULT STDMETHODCALLTYPE IsPageDirty() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE Apply() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Help(LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*) override { return S_FALSE; }

private:
    ~PropertyPage() override;
    bool Supports(REFIID iid) const override { return iid == IID_IPropertyPage; }

    Com<IPropertyPageSite> site_;
    HWND label_ = nullptr;
};

}  // namespace orvane
