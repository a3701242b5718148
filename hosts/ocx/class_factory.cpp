#include "hosts/ocx/class_factory.h"

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/property_page.h"

namespace orvane {

namespace {

using Maker = HRESULT (*)(IUnknown* outer, REFIID iid, void** out);

HRESULT MakePage(IUnknown* outer, REFIID iid, void** out) {
    *out = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return Guarded([&] {
        auto* const page = new PropertyPage;
        const HRESULT given = page->QueryInterface(iid, out);
        page->Release();
        return given;
    });
}

class Factory final : public ComObject<IClassFactory> {
public:
    explicit Factory(Maker maker) : maker_(maker) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        return out == nullptr ? E_POINTER : maker_(outer, iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL lock) override {
        if (lock) {
            LockModule();
        } else {
            UnlockModule();
        }
        return S_OK;
    }

private:
    bool Supports(REFIID iid) const override { return iid == IID_IClassFactory; }

    Maker maker_;
};

}  // namespace

HRESULT GetFactory(REFCLSID clsid, REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    const bool isControl = clsid == ToGuid(kControlGuid);
    if (!isControl && clsid != ToGuid(kPropertyPageGuid)) return CLASS_E_CLASSNOTAVAILABLE;
    return Guarded([&] {
        auto* const factory = new Factory(isControl ? ControlObject::Create : MakePage);
        const HRESULT given = factory->QueryInterface(iid, out);
        factory->Release();
        return given;
    });
}

}  // namespace orvane
