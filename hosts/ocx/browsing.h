// What a form designer shows of the properties: the page of the control, and the values of enumerations by their names.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class BrowsingPart final : public Part<ISpecifyPropertyPages, IPerPropertyBrowsing> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE GetPages(CAUUID* pages) override;
    /// The name of the property's present value; S_FALSE where it is no enumeration or the value has no name.
    HRESULT STDMETHODCALLTYPE GetDisplayString(DISPID dispid, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE MapPropertyToPage(DISPID dispid, CLSID* page) override;
    HRESULT STDMETHODCALLTYPE GetPredefinedStrings(DISPID dispid, CALPOLESTR* names, CADWORD* cookies) override;
    HRESULT STDMETHODCALLTYPE GetPredefinedValue(DISPID dispid, DWORD cookie, VARIANT* value) override;
};

}  // namespace orvane
