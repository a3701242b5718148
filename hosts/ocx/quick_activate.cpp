#include "hosts/ocx/quick_activate.h"

#include "hosts/ocx/control_object.h"

namespace orvane {

HRESULT QuickActivatePart::QuickActivate(QACONTAINER* container, QACONTROL* control) {
    if (container == nullptr || control == nullptr) return E_POINTER;
    if (container->cbSize < sizeof(QACONTAINER) || control->cbSize < sizeof(QACONTROL)) return E_UNEXPECTED;
    const Com<IUnknown> keep(&object_.Outer());
    const ULONG size = control->cbSize;
    *control = QACONTROL{};
    control->cbSize = size;
    return Guarded([&] {
        ConnectionPoint& changes = object_.events.Changes();
        ConnectionPoint& events = object_.events.Events();
        HRESULT heard = S_OK;
        if (container->pPropertyNotifySink != nullptr) {
            heard = changes.Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie);
        }
        if (SUCCEEDED(heard) && container->pUnkEventSink != nullptr) {
            heard = events.Advise(container->pUnkEventSink, &control->dwEventCookie);
        }
        if (FAILED(heard)) {  // all or nothing
            if (control->dwPropNotifyCookie != 0) changes.Unadvise(std::exchange(control->dwPropNotifyCookie, 0));
            return heard;
        }
        if (container->pClientSite != nullptr) object_.oleObject.SetClientSite(container->pClientSite);
        if (container->pAdviseSink != nullptr) object_.view.SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
        object_.oleObject.GetMiscStatus(DVASPECT_CONTENT, &control->dwMiscStatus);
        object_.view.GetViewStatus(&control->dwViewStatus);
        return S_OK;
    });
}

HRESULT QuickActivatePart::SetContentExtent(LPSIZEL himetric) { return object_.oleObject.SetExtent(DVASPECT_CONTENT, himetric); }

HRESULT QuickActivatePart::GetContentExtent(LPSIZEL himetric) { return object_.oleObject.GetExtent(DVASPECT_CONTENT, himetric); }

}  // namespace orvane
