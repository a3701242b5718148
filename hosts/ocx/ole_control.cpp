#include "hosts/ocx/ole_control.h"

#include "hosts/ocx/control_object.h"

namespace orvane {

namespace {

bool AmbientFlag(IDispatch* ambients, DISPID dispid, bool otherwise) {
    if (ambients == nullptr) return otherwise;
    DISPPARAMS none{};
    VARIANT value;
    VariantInit(&value);
    const HRESULT told =
        ambients->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    const bool known = SUCCEEDED(told) && SUCCEEDED(VariantChangeType(&value, &value, 0, VT_BOOL));
    const bool flag = known ? value.boolVal != VARIANT_FALSE : otherwise;
    VariantClear(&value);
    return flag;
}

}  // namespace

HRESULT OleControlPart::GetControlInfo(CONTROLINFO* info) {
    if (info == nullptr) return E_POINTER;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return S_OK;
}

HRESULT OleControlPart::OnAmbientPropertyChange(DISPID dispid) {
    const Com<IUnknown> keep(&object_.Outer());
    if (dispid == DISPID_UNKNOWN || dispid == DISPID_AMBIENT_USERMODE || dispid == DISPID_AMBIENT_UIDEAD) ReadAmbients();
    return S_OK;
}

HRESULT OleControlPart::FreezeEvents(BOOL freeze) {
    object_.events.Freeze(freeze != FALSE);
    return S_OK;
}

void OleControlPart::ReadAmbients() {
    const Com<IDispatch> ambients = Query<IDispatch>(object_.oleObject.Site(), IID_IDispatch);
    userMode_ = AmbientFlag(ambients.Get(), DISPID_AMBIENT_USERMODE, true);
    uiDead_ = AmbientFlag(ambients.Get(), DISPID_AMBIENT_UIDEAD, false);
}

}  // namespace orvane
