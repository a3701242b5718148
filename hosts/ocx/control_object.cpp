#include "hosts/ocx/control_object.h"

#include <objsafe.h>

#include "control/automation/table.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/raster_object.h"

namespace orvane {

namespace {

constexpr GUID kIidMembers = ToGuid(kMembersGuid);
constexpr SIZEL kStartExtent{8467, 6350};  // 320 x 240 pixels on a screen of 96 dots an inch

}  // namespace

IUnknown& OuterOf(ControlObject& object) { return object.Outer(); }

ControlObject::ControlObject(IUnknown* outer)
    : outer_(outer), extent_(kStartExtent), window_(files_), ctrl_(COrvane4Ctrl::Create(window_, files_)) {
    LockModule();
    SetExtent(extent_);
    window_.onInvalidate = [this] { ViewChanged(); };
    ctrl_->SetEvents(&events);
    ctrl_->rasters.SetMaker(MakeRasterObject);
}

ControlObject::~ControlObject() {
    refs_ = 1;  // what the container does at the end may count once more, and must not come here again
    window_.onInvalidate = nullptr;
    inPlace.Drop();
    ctrl_->SetEvents(nullptr);
    ctrl_.reset();
    events.DropListeners();
    UnlockModule();
}

HRESULT ControlObject::Create(IUnknown* outer, REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (outer != nullptr && iid != IID_IUnknown) return CLASS_E_NOAGGREGATION;
    return Guarded([&] {
        auto* const made = new ControlObject(outer);
        const HRESULT given = made->QueryInterface(iid, out);
        made->Release();
        return given;
    });
}

ULONG ControlObject::Release() {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
}

HRESULT ControlObject::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid == IID_IUnknown) {
        *out = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
    }
    *out = Find(iid);
    if (*out == nullptr) return E_NOINTERFACE;
    Outer().AddRef();
    return S_OK;
}

void* ControlObject::Find(REFIID iid) {
    const struct {
        const IID& iid;
        void* part;
    } parts[] = {
        {IID_IDispatch, static_cast<IDispatch*>(&dispatch)},
        {kIidMembers, static_cast<IDispatch*>(&dispatch)},
        {IID_ISupportErrorInfo, static_cast<ISupportErrorInfo*>(&dispatch)},
        {IID_IConnectionPointContainer, static_cast<IConnectionPointContainer*>(&events)},
        {IID_IProvideClassInfo, static_cast<IProvideClassInfo*>(&events)},
        {IID_IProvideClassInfo2, static_cast<IProvideClassInfo2*>(&events)},
        {IID_IOleObject, static_cast<IOleObject*>(&oleObject)},
        {IID_IOleControl, static_cast<IOleControl*>(&oleControl)},
        {IID_IOleWindow, static_cast<IOleInPlaceObject*>(&inPlace)},
        {IID_IOleInPlaceObject, static_cast<IOleInPlaceObject*>(&inPlace)},
        {IID_IOleInPlaceActiveObject, static_cast<IOleInPlaceActiveObject*>(&inPlace)},
        {IID_IViewObject, static_cast<IViewObject*>(&view)},
        {IID_IViewObject2, static_cast<IViewObject2*>(&view)},
        {IID_IViewObjectEx, static_cast<IViewObjectEx*>(&view)},
        {IID_IPersist, static_cast<IPersistStreamInit*>(&persist)},
        {IID_IPersistStream, static_cast<IPersistStreamInit*>(&persist)},  // the same methods come first in both
        {IID_IPersistStreamInit, static_cast<IPersistStreamInit*>(&persist)},
        {IID_IPersistStorage, static_cast<IPersistStorage*>(&persist)},
        {IID_IPersistPropertyBag, static_cast<IPersistPropertyBag*>(&persist)},
        {IID_ISpecifyPropertyPages, static_cast<ISpecifyPropertyPages*>(&browsing)},
        {IID_IPerPropertyBrowsing, static_cast<IPerPropertyBrowsing*>(&browsing)},
        {IID_IObjectSafety, static_cast<IObjectSafety*>(&safety)},
        {IID_IQuickActivate, static_cast<IQuickActivate*>(&quickActivate)},
        {IID_IDataObject, static_cast<IDataObject*>(&data)},
    };
    for (const auto& each : parts) {
        if (each.iid == iid) return each.part;
    }
    return nullptr;
}

void ControlObject::SetExtent(SIZEL himetric) {
    extent_ = himetric;
    const SIZE pixels = PixelsOf(himetric);
    window_.SetSizeWithout(pixels.cx, pixels.cy);
}

void ControlObject::PropertyWritten(DISPID dispid) {
    // The map itself tells of the scale.
    const Member* zoom = Surface().Find("Zoom");
    if (zoom == nullptr || zoom->dispid != dispid) events.PropertyChanged(dispid);
}

void ControlObject::ViewChanged() {
    view.TellChange();
    data.TellChange();
}

}  // namespace orvane
