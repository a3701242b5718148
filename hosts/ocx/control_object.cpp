#include "hosts/ocx/control_object.h"

#include <objsafe.h>

#include <algorithm>

#include "control/automation/table.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/raster_object.h"

namespace orvane {

namespace {

constexpr GUID kIidMembers = ToGuid(kMembersGuid);

}  // namespace

IUnknown& OuterOf(ControlObject& object) { return object.Outer(); }

ControlObject::ControlObject(IUnknown* outer)
    : outer_(outer), extent_(kStartExtent), window_(files_), ctrl_(COrvane4Ctrl::Create(window_, files_)) {
    LockModule();
    SetExtent(extent_);
    window_.onPicture = [this] { pictureChanged_ = pictureChanged_ || paints_ == 0; };
    window_.onModal = [this](bool begins) { inPlace.EnableFrame(!begins); };
    ctrl_->SetEvents(&events);
    ctrl_->rasters.SetMaker(MakeRasterObject);
}

ControlObject::~ControlObject() {
    refs_ = 1;  // what the container does at the end may count once more, and must not come here again
    window_.onPicture = nullptr;
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

void ControlObject::ChangeExtent(SIZEL himetric) {
    if (himetric.cx == extent_.cx && himetric.cy == extent_.cy) return;
    SetExtent(himetric);
    ctrl_->SetModified(true);
    pictureChanged_ = true;
    const Com<IOleInPlaceSite> site(inPlace.Site());
    if (window_.Handle() == nullptr || !site) return ctrl_->RDMReDraw();
    // The window takes its size from the container, which answers by SetObjectRects.
    RECT place{};
    GetWindowRect(window_.Handle(), &place);
    MapWindowPoints(nullptr, GetParent(window_.Handle()), reinterpret_cast<POINT*>(&place), 2);
    const SIZE pixels = PixelsOf(himetric);
    place.right = place.left + pixels.cx;
    place.bottom = place.top + pixels.cy;
    site->OnPosRectChange(&place);
}

void ControlObject::FollowWindow(SIZE pixels) {
    // A size that comes out at the same pixels stays what it was, to the hundredth.
    const SIZE now = PixelsOf(extent_);
    if (pixels.cx == now.cx && pixels.cy == now.cy) return;
    extent_ = HimetricOf(pixels);
    window_.SetSizeWithout((std::max)(LONG{1}, pixels.cx), (std::max)(LONG{1}, pixels.cy));
    ctrl_->SetModified(true);
}

void ControlObject::PropertyWritten(DISPID dispid) {
    const Member* member = Surface().Find(static_cast<std::int32_t>(dispid));
    if (member == nullptr) return;
    // The map itself tells of the scale, and two properties keep nothing.
    for (const char* silent : {"Zoom", "MemHandle", "MemCnt"}) {
        if (member->name == silent) return;
    }
    events.PropertyChanged(dispid);
    // One value under two names.
    const char* const twin = member->name == "StrVisible" ? "DigStrVisible" : member->name == "DigStrVisible" ? "StrVisible" : "";
    if (const Member* other = Surface().Find(twin)) events.PropertyChanged(other->dispid);
}

CallIn::CallIn(ControlObject& object)
    : keep_(&object.Outer()), object_(object), zoom_(object.Ctrl().store.view.Zoom), notices_(object.events.Notices()) {
    ++object_.calls_;
}

CallIn::~CallIn() {
    Guarded([&] {
        if (zoom_ != object_.Ctrl().store.view.Zoom && notices_ == object_.events.Notices()) {
            object_.events.PropertyChanged(Surface().Find("Zoom")->dispid);
        }
        if (object_.calls_ == 1 && std::exchange(object_.pictureChanged_, false)) {
            object_.view.TellChange();
            object_.data.TellChange();
        }
        return S_OK;
    });
    --object_.calls_;
}

}  // namespace orvane
