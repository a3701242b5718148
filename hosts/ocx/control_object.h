// The control as a COM object: the map control with its form, and the parts that speak to a container.
#pragma once

#include "control/ctrl.h"
#include "hosts/ocx/browsing.h"
#include "hosts/ocx/data_object.h"
#include "hosts/ocx/dispatch.h"
#include "hosts/ocx/events.h"
#include "hosts/ocx/form_window.h"
#include "hosts/ocx/in_place.h"
#include "hosts/ocx/object_safety.h"
#include "hosts/ocx/ole_control.h"
#include "hosts/ocx/ole_object.h"
#include "hosts/ocx/persist.h"
#include "hosts/ocx/quick_activate.h"
#include "hosts/ocx/view_object.h"
#include "platform/win32/win32_files.h"

namespace orvane {

/// It is the inner IUnknown, which counts; where the control is aggregated, all its interfaces answer as the outer object.
///
/// Whoever calls in keeps a reference to Outer() while host code may run: the object, its window and the map then stay until the
/// outermost call returns, whatever the host releases meanwhile.
class ControlObject final : public IUnknown {
public:
    /// Makes a control and hands out one of its interfaces; with an `outer` object only IUnknown may be asked for.
    static HRESULT Create(IUnknown* outer, REFIID iid, void** out);
    ControlObject(const ControlObject&) = delete;
    ControlObject& operator=(const ControlObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override;

    IUnknown& Outer() { return outer_ == nullptr ? static_cast<IUnknown&>(*this) : *outer_; }
    COrvane4Ctrl& Ctrl() { return *ctrl_; }
    FormWindow& Form() { return window_; }

    /// The size that the container gave, in hundredths of a millimetre.
    SIZEL Extent() const { return extent_; }
    void SetExtent(SIZEL himetric);
    /// A property was written by the host.
    void PropertyWritten(DISPID dispid);
    /// What the control shows without a window is another picture.
    void ViewChanged();

    DispatchPart dispatch{*this};
    EventsPart events{*this};
    OleObjectPart oleObject{*this};
    OleControlPart oleControl{*this};
    InPlacePart inPlace{*this};
    ViewObjectPart view{*this};
    PersistPart persist{*this};
    BrowsingPart browsing{*this};
    SafetyPart safety{*this};
    QuickActivatePart quickActivate{*this};
    DataObjectPart data{*this};

private:
    explicit ControlObject(IUnknown* outer);
    ~ControlObject();
    void* Find(REFIID iid);

    std::atomic<ULONG> refs_{1};
    IUnknown* outer_;  // not counted: it owns this
    SIZEL extent_;
    Win32Files files_;
    FormWindow window_;
    ControlPtr ctrl_;
};

}  // namespace orvane
