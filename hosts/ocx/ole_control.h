// IOleControl: what the container tells every control, and asks of it. Also what the control knows of its surroundings.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class OleControlPart final : public Part<IOleControl> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(LPMSG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID dispid) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

    /// Asks the container anew; without one, and where it does not tell, the form runs and takes input.
    void ReadAmbients();
    /// Whether the mouse and the keys are the operator's: the form runs, and its controls are not dead for the moment.
    bool TakesInput() const { return userMode_ && !uiDead_; }

private:
    bool userMode_ = true;
    bool uiDead_ = false;
};

}  // namespace orvane
