#include "hosts/ocx/view_object.h"

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/memory_picture.h"

namespace orvane {

namespace {

constexpr DWORD kShownAspects = DWORD{DVASPECT_CONTENT} | DWORD{DVASPECT_OPAQUE};

/// Maps the client area of the control onto the container's rectangle while it lives.
class Mapping {
public:
    Mapping(HDC dc, SIZE client, const RECTL& bounds, const RECTL* metafileBounds) : dc_(dc), saved_(SaveDC(dc)) {
        if (metafileBounds != nullptr) {
            MapInMetafile(client, bounds, *metafileBounds);
        } else {
            MapOnDevice(client, bounds);
        }
        IntersectClipRect(dc_, 0, 0, client.cx, client.cy);
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() {
        if (saved_ != 0) RestoreDC(dc_, saved_);
    }

private:
    void MapOnDevice(SIZE client, const RECTL& bounds) {
        POINT corners[2] = {{bounds.left, bounds.top}, {bounds.right, bounds.bottom}};
        LPtoDP(dc_, corners, 2);
        // The corners have gone through the container's own transformation, and must not do so again.
        if (GetGraphicsMode(dc_) == GM_ADVANCED) ModifyWorldTransform(dc_, nullptr, MWT_IDENTITY);
        const SIZE size{corners[1].x - corners[0].x, corners[1].y - corners[0].y};
        const bool sameSize = size.cx == client.cx && size.cy == client.cy;
        SetMapMode(dc_, sameSize ? MM_TEXT : MM_ANISOTROPIC);
        SetWindowOrgEx(dc_, 0, 0, nullptr);
        SetViewportOrgEx(dc_, corners[0].x, corners[0].y, nullptr);
        if (sameSize) return;
        SetWindowExtEx(dc_, client.cx, client.cy, nullptr);
        SetViewportExtEx(dc_, size.cx, size.cy, nullptr);
    }
    /// Only the window of a metafile may be set: it is laid so that `bounds` becomes the client area.
    void MapInMetafile(SIZE client, const RECTL& bounds, const RECTL& whole) {
        const auto scale = [](LONG value, LONG to, LONG from) { return from == 0 ? value : MulDiv(value, to, from); };
        const LONG width = bounds.right - bounds.left;
        const LONG height = bounds.bottom - bounds.top;
        SetWindowOrgEx(dc_, scale(whole.left - bounds.left, client.cx, width), scale(whole.top - bounds.top, client.cy, height),
                       nullptr);
        SetWindowExtEx(dc_, scale(whole.right - whole.left, client.cx, width), scale(whole.bottom - whole.top, client.cy, height),
                       nullptr);
    }

    HDC dc_;
    int saved_;
};

}  // namespace

HRESULT ViewObjectPart::DrawOn(HDC dc, const RECTL& bounds, const RECTL* metafileBounds) {
    const Com<IUnknown> keep(&object_.Outer());
    const ControlObject::Painting painting(object_);
    return Guarded([&] {
        const Rect client = object_.Form().ClientRect();
        const bool inOldMetafile = GetObjectType(dc) == OBJ_METADC;
        // Who tells nothing of the whole has laid the window itself, and `bounds` lies in it.
        if (inOldMetafile && metafileBounds == nullptr) return CopyTo(dc, bounds, {client.right, client.bottom});
        const Mapping mapping(dc, {client.right, client.bottom}, bounds, metafileBounds);
        if (inOldMetafile) return CopyTo(dc, {0, 0, client.right, client.bottom}, {client.right, client.bottom});
        const auto context = object_.Form().ContextOn(dc);
        object_.Ctrl().OnDraw(*context, client, client);
        return S_OK;
    });
}

HRESULT ViewObjectPart::CopyTo(HDC dc, const RECTL& place, SIZE client) {
    if (place.left == place.right || place.top == place.bottom) return S_OK;
    const MemoryPicture picture(client);
    if (!picture.IsThere()) return E_OUTOFMEMORY;
    const HRESULT drawn = DrawOn(picture.Dc(), {0, 0, client.cx, client.cy}, nullptr);
    if (FAILED(drawn)) return drawn;
    return StretchBlt(dc, place.left, place.top, place.right - place.left, place.bottom - place.top, picture.Dc(), 0, 0,
                      client.cx, client.cy, SRCCOPY)
               ? S_OK
               : E_FAIL;
}

HRESULT ViewObjectPart::Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC dc, LPCRECTL bounds,
                             LPCRECTL metafileBounds, WINBOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE) return DV_E_DVASPECT;
    if (index != -1 && index != 0) return DV_E_LINDEX;
    if (dc == nullptr || bounds == nullptr) return E_INVALIDARG;
    return DrawOn(dc, *bounds, GetObjectType(dc) == OBJ_METADC ? metafileBounds : nullptr);
}

HRESULT ViewObjectPart::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return S_FALSE;
}

HRESULT ViewObjectPart::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    if (aspects != 0 && (aspects & kShownAspects) == 0) return DV_E_DVASPECT;
    const Com<IUnknown> keep(&object_.Outer());
    const Com<IAdviseSink> before = std::exchange(sink_, Com<IAdviseSink>(sink));
    aspects_ = aspects;
    flags_ = flags;
    if ((flags & ADVF_PRIMEFIRST) != 0) TellChange();
    return S_OK;
}

HRESULT ViewObjectPart::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** out) {
    if (aspects != nullptr) *aspects = aspects_;
    if (flags != nullptr) *flags = flags_;
    return out == nullptr ? S_OK : GiveInterface(out, sink_.Get());
}

void ViewObjectPart::TellChange() {
    const Com<IAdviseSink> sink = sink_;
    if (!sink) return;
    const DWORD asked = aspects_ & kShownAspects;
    if (asked == 0) return;
    if ((flags_ & ADVF_ONLYONCE) != 0) sink_.Reset();
    for (const DWORD aspect : {DWORD{DVASPECT_CONTENT}, DWORD{DVASPECT_OPAQUE}}) {
        if ((asked & aspect) != 0) sink->OnViewChange(aspect, -1);
    }
}

HRESULT ViewObjectPart::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL himetric) {
    return object_.oleObject.GetExtent(aspect, himetric);
}

HRESULT ViewObjectPart::GetRect(DWORD aspect, LPRECTL himetric) {
    if (himetric == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE) return DV_E_DVASPECT;
    const SIZEL extent = object_.Extent();
    *himetric = {0, 0, extent.cx, extent.cy};
    return S_OK;
}

HRESULT ViewObjectPart::GetViewStatus(DWORD* status) {
    return Give(status, static_cast<DWORD>(VIEWSTATUS_OPAQUE | VIEWSTATUS_DVASPECTOPAQUE));
}

HRESULT ViewObjectPart::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT at, LONG, DWORD* result) {
    if (bounds == nullptr || result == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *result = PtInRect(bounds, at) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

HRESULT ViewObjectPart::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT place, LONG, DWORD* result) {
    if (bounds == nullptr || place == nullptr || result == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    RECT shared{};
    *result = IntersectRect(&shared, bounds, place) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

}  // namespace orvane
