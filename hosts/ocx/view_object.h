// IViewObjectEx: the control drawn on a context of the container's, without a window of its own.
#pragma once

#include "hosts/ocx/part.h"

namespace orvane {

class ViewObjectPart final : public Part<IViewObjectEx> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* drawAspect, DVTARGETDEVICE* target, HDC targetDc, HDC dc,
                                   LPCRECTL bounds, LPCRECTL metafileBounds, WINBOOL(CALLBACK* goOn)(ULONG_PTR),
                                   ULONG_PTR goOnArg) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** out) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** out) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, LPSIZEL himetric) override;
    HRESULT STDMETHODCALLTYPE GetRect(DWORD aspect, LPRECTL himetric) override;
    HRESULT STDMETHODCALLTYPE GetViewStatus(DWORD* status) override;
    HRESULT STDMETHODCALLTYPE QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT at, LONG closeHint, DWORD* result) override;
    HRESULT STDMETHODCALLTYPE QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT place, LONG closeHint, DWORD* result) override;
    HRESULT STDMETHODCALLTYPE GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) override {
        return E_NOTIMPL;
    }

    /// Draws the control into a rectangle of a context in its logical units. A metafile of the old kind tells no place of its
    /// own, so `metafileBounds` gives what it holds in all, and its window is laid so; null leaves the window as it is, and is
    /// the only value for other contexts.
    HRESULT DrawOn(HDC dc, const RECTL& bounds, const RECTL* metafileBounds);
    /// Tells who looks, of each aspect that they asked for and that changes.
    void TellChange();

private:
    /// A metafile of the old kind keeps all of a bitmap that a part is copied from, and players do not agree where that part
    /// lies. So it gets one that is the picture and nothing else, stretched to `place` in its logical units.
    HRESULT CopyTo(HDC dc, const RECTL& place, SIZE client);

    Com<IAdviseSink> sink_;
    DWORD aspects_ = 0;
    DWORD flags_ = 0;
};

}  // namespace orvane
