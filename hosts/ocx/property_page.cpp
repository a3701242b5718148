#include "hosts/ocx/property_page.h"

#include <cstring>

#include "hosts/ocx/module.h"

namespace orvane {

namespace {

constexpr wchar_t kTitle[] = L"General";
constexpr wchar_t kLabel[] = L"The properties of the map control are set by the program.";
constexpr SIZE kSize_px{300, 80};

}  // namespace

PropertyPage::~PropertyPage() { Deactivate(); }

HRESULT PropertyPage::SetPageSite(IPropertyPageSite* site) {
    site_ = Com<IPropertyPageSite>(site);
    return S_OK;
}

HRESULT PropertyPage::Activate(HWND parent, LPCRECT place, WINBOOL) {
    if (place == nullptr) return E_POINTER;
    if (label_ != nullptr) return E_UNEXPECTED;
    label_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", kLabel, WS_CHILD, place->left, place->top,
                             place->right - place->left, place->bottom - place->top, parent, nullptr, ModuleInstance(), nullptr);
    return label_ == nullptr ? E_FAIL : S_OK;
}

HRESULT PropertyPage::Deactivate() {
    if (label_ != nullptr) DestroyWindow(std::exchange(label_, nullptr));
    return S_OK;
}

HRESULT PropertyPage::GetPageInfo(PROPPAGEINFO* info) {
    if (info == nullptr) return E_POINTER;
    if (info->cb < sizeof(PROPPAGEINFO)) return E_INVALIDARG;
    const ULONG size = info->cb;
    *info = PROPPAGEINFO{};
    info->cb = size;
    info->size = kSize_px;
    info->pszTitle = static_cast<LPOLESTR>(CoTaskMemAlloc(sizeof kTitle));
    if (info->pszTitle == nullptr) return E_OUTOFMEMORY;
    std::memcpy(info->pszTitle, kTitle, sizeof kTitle);
    return S_OK;
}

HRESULT PropertyPage::SetObjects(ULONG count, IUnknown** objects) {
    return count > 0 && objects == nullptr ? E_POINTER : S_OK;  // it looks at none of them
}

HRESULT PropertyPage::Show(UINT command) {
    if (label_ == nullptr) return E_UNEXPECTED;
    ShowWindow(label_, static_cast<int>(command));
    return S_OK;
}

HRESULT PropertyPage::Move(LPCRECT place) {
    if (place == nullptr) return E_POINTER;
    if (label_ == nullptr) return E_UNEXPECTED;
    MoveWindow(label_, place->left, place->top, place->right - place->left, place->bottom - place->top, TRUE);
    return S_OK;
}

}  // namespace orvane
