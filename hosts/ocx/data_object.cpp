#include "hosts/ocx/data_object.h"

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/enumerator.h"
#include "hosts/ocx/memory_picture.h"

namespace orvane {

namespace {

struct OfferedFormat {
    CLIPFORMAT format;
    DWORD medium;
};
constexpr OfferedFormat kOffered[] = {{CF_ENHMETAFILE, TYMED_ENHMF}, {CF_METAFILEPICT, TYMED_MFPICT}, {CF_BITMAP, TYMED_GDI}};

HRESULT Check(const FORMATETC* asked) {
    if (asked == nullptr) return E_POINTER;
    if (asked->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (asked->lindex != -1) return DV_E_LINDEX;
    for (const OfferedFormat& each : kOffered) {
        if (each.format == asked->cfFormat) return (each.medium & asked->tymed) != 0 ? S_OK : DV_E_TYMED;
    }
    return DV_E_FORMATETC;
}

/// Every format at once, as a container writes it that wants to hear of any change.
bool IsAnyFormat(const FORMATETC& asked) {
    constexpr auto kAny = static_cast<DWORD>(-1);
    return asked.cfFormat == 0 && asked.dwAspect == kAny && asked.lindex == -1 && asked.tymed == kAny;
}

struct FormatRules {
    static REFIID Iid() { return IID_IEnumFORMATETC; }
    static bool Copy(const FORMATETC& from, FORMATETC& to) {
        to = from;
        return true;
    }
    static void Free(FORMATETC&) {}
};

RECTL Whole(SIZE size) { return {0, 0, size.cx, size.cy}; }

}  // namespace

HRESULT DataObjectPart::QueryGetData(FORMATETC* format) { return Check(format); }

HRESULT DataObjectPart::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (medium == nullptr) return E_POINTER;
    *medium = STGMEDIUM{};
    const HRESULT known = Check(format);
    if (known != S_OK) return known;
    const Com<IUnknown> keep(&object_.Outer());
    return Guarded([&] {
        if (format->cfFormat == CF_ENHMETAFILE) return EnhancedMetafile(*medium);
        return format->cfFormat == CF_METAFILEPICT ? OldMetafile(*medium) : Picture(*medium);
    });
}

HRESULT DataObjectPart::EnhancedMetafile(STGMEDIUM& medium) {
    const Rect client = object_.Form().ClientRect();
    const HDC screen = GetDC(nullptr);
    const SIZEL extent = FrameOf({client.right, client.bottom}, {GetDeviceCaps(screen, HORZRES), GetDeviceCaps(screen, VERTRES)},
                                 {GetDeviceCaps(screen, HORZSIZE), GetDeviceCaps(screen, VERTSIZE)});
    ReleaseDC(nullptr, screen);
    const RECT frame{0, 0, extent.cx, extent.cy};
    const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
    if (dc == nullptr) return E_OUTOFMEMORY;
    const HRESULT drawn = object_.view.DrawOn(dc, Whole({client.right, client.bottom}), nullptr);
    const HENHMETAFILE made = CloseEnhMetaFile(dc);
    if (made == nullptr || FAILED(drawn)) {
        DeleteEnhMetaFile(made);
        return FAILED(drawn) ? drawn : E_OUTOFMEMORY;
    }
    medium.tymed = TYMED_ENHMF;
    medium.hEnhMetaFile = made;
    return S_OK;
}

HRESULT DataObjectPart::OldMetafile(STGMEDIUM& medium) {
    const Rect client = object_.Form().ClientRect();
    const SIZEL extent = HimetricOf({client.right, client.bottom});
    const HDC dc = CreateMetaFileW(nullptr);
    if (dc == nullptr) return E_OUTOFMEMORY;
    const RECTL whole = Whole({client.right, client.bottom});
    const HRESULT drawn = object_.view.DrawOn(dc, whole, &whole);
    const HMETAFILE made = CloseMetaFile(dc);
    const HGLOBAL memory = made == nullptr || FAILED(drawn) ? nullptr : GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
    auto* const picture = memory == nullptr ? nullptr : static_cast<METAFILEPICT*>(GlobalLock(memory));
    if (picture == nullptr) {
        GlobalFree(memory);
        DeleteMetaFile(made);
        return FAILED(drawn) ? drawn : E_OUTOFMEMORY;
    }
    *picture = {MM_ANISOTROPIC, extent.cx, extent.cy, made};
    GlobalUnlock(memory);
    medium.tymed = TYMED_MFPICT;
    medium.hMetaFilePict = memory;
    return S_OK;
}

HRESULT DataObjectPart::Picture(STGMEDIUM& medium) {
    const Rect client = object_.Form().ClientRect();
    MemoryPicture picture({client.right, client.bottom});
    if (!picture.IsThere()) return E_OUTOFMEMORY;
    const HRESULT drawn = object_.view.DrawOn(picture.Dc(), Whole({client.right, client.bottom}), nullptr);
    if (FAILED(drawn)) return drawn;
    medium.tymed = TYMED_GDI;
    medium.hBitmap = picture.Take();
    return S_OK;
}

HRESULT DataObjectPart::GetCanonicalFormatEtc(FORMATETC* asked, FORMATETC* out) {
    if (asked == nullptr || out == nullptr) return E_POINTER;
    *out = *asked;
    out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

HRESULT DataObjectPart::EnumFormatEtc(DWORD direction, IEnumFORMATETC** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    return Guarded([&] {
        std::vector<FORMATETC> formats;
        for (const OfferedFormat& each : kOffered) {
            formats.push_back({each.format, nullptr, DVASPECT_CONTENT, -1, each.medium});
        }
        *out = new Enumerator<IEnumFORMATETC, FORMATETC, FormatRules>(std::move(formats));
        return S_OK;
    });
}

HRESULT DataObjectPart::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) {
    if (format == nullptr || sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    const HRESULT known = IsAnyFormat(*format) ? S_OK : Check(format);
    if (known != S_OK) return known;
    const Com<IUnknown> keep(&object_.Outer());
    if (!listeners_) {
        const HRESULT made = CreateDataAdviseHolder(listeners_.Out());
        if (FAILED(made)) return made;
    }
    return listeners_->Advise(this, format, flags, sink, cookie);
}

HRESULT DataObjectPart::DUnadvise(DWORD cookie) {
    const Com<IUnknown> keep(&object_.Outer());
    return listeners_ ? listeners_->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT DataObjectPart::EnumDAdvise(IEnumSTATDATA** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return listeners_ ? listeners_->EnumAdvise(out) : S_OK;
}

// Each connection asked for itself whether it wants the data with the word.
void DataObjectPart::TellChange() {
    if (const Com<IDataAdviseHolder> listeners = listeners_) listeners->SendOnDataChange(this, 0, 0);
}

}  // namespace orvane
