// The control's interfaces are objects of their own, one subject each, that make up one COM object: they share its life and its
// identity, which is the outer object's where the control is aggregated.
#pragma once

#include "hosts/ocx/com_base.h"

namespace orvane {

class ControlObject;

/// What a part needs of the whole, without knowing it.
IUnknown& OuterOf(ControlObject& object);

template <class... Interfaces>
class Part : public Interfaces... {
public:
    explicit Part(ControlObject& object) : object_(object) {}
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    virtual ~Part() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        return OuterOf(object_).QueryInterface(iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return OuterOf(object_).AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return OuterOf(object_).Release(); }

protected:
    ControlObject& object_;
};

}  // namespace orvane
