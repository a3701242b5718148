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

/// The size of a new control, in hundredths of a millimetre: 320 x 240 pixels on a screen of 96 dots an inch.
inline constexpr SIZEL kStartExtent{8467, 6350};

/// It is the inner IUnknown, which counts; where the control is aggregated, all its interfaces answer as the outer object.
///
/// Whoever calls in keeps a reference to Outer() while host code may run, by itself or by a CallIn: the object and the map
/// then stay until the outermost call returns, whatever the host releases meanwhile. The window goes when the host ends it.
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
    /// Another size, which a form keeps: the picture is composed anew, and an active control asks its container for the room.
    void ChangeExtent(SIZEL himetric);
    /// The size that the container gives the window is the control's from now on.
    void FollowWindow(SIZE pixels);
    /// A property was written by the host.
    void PropertyWritten(DISPID dispid);

    /// While it lives, what is drawn is no new picture: the container has asked to see the one there is.
    class Painting {
    public:
        explicit Painting(ControlObject& object) : object_(object) { ++object_.paints_; }
        ~Painting() { --object_.paints_; }
        Painting(const Painting&) = delete;
        Painting& operator=(const Painting&) = delete;

    private:
        ControlObject& object_;
    };

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
    void SetExtent(SIZEL himetric);
    friend class CallIn;

    std::atomic<ULONG> refs_{1};
    IUnknown* outer_;  // not counted: it owns this
    SIZEL extent_;
    Win32Files files_;
    FormWindow window_;
    ControlPtr ctrl_;
    long calls_ = 0;
    long paints_ = 0;
    bool pictureChanged_ = false;
};

/// A call of the host or a message of the window, while it lasts. It keeps the object, and when the outermost one ends, whoever
/// looks at the control hears once that it shows something else, and that the scale has changed where nobody was told yet.
class CallIn {
public:
    explicit CallIn(ControlObject& object);
    ~CallIn();
    CallIn(const CallIn&) = delete;
    CallIn& operator=(const CallIn&) = delete;

private:
    Com<IUnknown> keep_;
    ControlObject& object_;
    std::int32_t zoom_;
    unsigned long notices_;
};

}  // namespace orvane
