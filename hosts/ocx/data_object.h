// IDataObject: a copy of what the control shows, as a metafile or as a bitmap.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class DataObjectPart final : public Part<IDataObject> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override;
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** out) override;
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** out) override;

    void TellChange();

private:
    HRESULT EnhancedMetafile(STGMEDIUM& medium);
    HRESULT OldMetafile(STGMEDIUM& medium);
    HRESULT Picture(STGMEDIUM& medium);

    Com<IDataAdviseHolder> listeners_;
};

}  // namespace orvane
