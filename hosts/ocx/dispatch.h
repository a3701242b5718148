// Late-bound calls: IDispatch on the one automation table.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class DispatchPart final : public Part<IDispatch, ISupportErrorInfo> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID lcid, ITypeInfo** out) override;
    /// Names of members, and behind one the names of its arguments, whose numbers are their positions.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* out) override;
    /// Arguments stand by position; named ones are refused. A member that fails answers its failure value with S_OK, as it does
    /// when a text holds a character that code page 932 does not have. Only the write of a read-only property raises an
    /// exception.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT* argError) override;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;
};

}  // namespace orvane
