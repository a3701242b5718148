// IObjectSafety: scripts of unknown origin must not have this control, whose members read and write files.
#pragma once

#include "hosts/ocx/part.h"
// part.h brings the system headers, which come first
#include <objsafe.h>

namespace orvane {

class SafetyPart final : public Part<IObjectSafety> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE GetInterfaceSafetyOptions(REFIID, DWORD* supported, DWORD* enabled) override {
        if (supported == nullptr || enabled == nullptr) return E_POINTER;
        *supported = *enabled = 0;
        return S_OK;
    }
    /// Every option that is asked for is refused.
    HRESULT STDMETHODCALLTYPE SetInterfaceSafetyOptions(REFIID, DWORD mask, DWORD wanted) override {
        return (mask & wanted) != 0 ? E_FAIL : S_OK;
    }
};

}  // namespace orvane
