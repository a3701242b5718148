// IQuickActivate: all that a container sets and asks when it loads a control, in one call.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class QuickActivatePart final : public Part<IQuickActivate> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    HRESULT STDMETHODCALLTYPE SetContentExtent(LPSIZEL himetric) override;
    HRESULT STDMETHODCALLTYPE GetContentExtent(LPSIZEL himetric) override;
};

}  // namespace orvane
