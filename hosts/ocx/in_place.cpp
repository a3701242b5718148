#include "hosts/ocx/in_place.h"

#include <algorithm>
#include <limits>

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/control_window.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

HRESULT InPlacePart::GetWindow(HWND* out) {
    if (out == nullptr) return E_POINTER;
    *out = object_.Form().Handle();
    return *out == nullptr ? E_FAIL : S_OK;
}

HRESULT InPlacePart::Activate(bool ui, const MSG* message) {
    const Com<IOleClientSite> client(object_.oleObject.Site());
    if (!client) return E_FAIL;
    const bool isNew = object_.Form().Handle() == nullptr;
    if (isNew) {
        const HRESULT made = MakeWindow(*client.Get());
        if (FAILED(made)) return made;
        client->ShowObject();
    }
    if (object_.Form().Handle() == nullptr) return E_FAIL;  // the host took it down again meanwhile
    ShowWindow(object_.Form().Handle(), SW_SHOWNOACTIVATE);
    if (object_.Form().Handle() == nullptr) return E_FAIL;  // or when it heard of that
    if (isNew && message != nullptr) PassOn(*message);
    return ui && !uiActive_ ? TakeUi(Com<IOleInPlaceSite>(site_)) : S_OK;
}

namespace {

/// Whether a button goes down. Where a container activates when it goes up, the map has not seen it go down.
bool IsPress(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDOWN || message == WM_RBUTTONDBLCLK ||
           message == WM_MBUTTONDOWN || message == WM_MBUTTONDBLCLK;
}

}  // namespace

/// A click that the container took before there was a window is the map's. It comes by the queue, when the container's own work
/// is done; a key that activates a control means the container.
void InPlacePart::PassOn(const MSG& message) {
    if (!IsPress(message.message)) return;
    POINT at{static_cast<std::int16_t>(LOWORD(message.lParam)), static_cast<std::int16_t>(HIWORD(message.lParam))};
    MapWindowPoints(message.hwnd, object_.Form().Handle(), &at, 1);
    PostMessageW(object_.Form().Handle(), message.message, message.wParam, MAKELPARAM(at.x, at.y));
}

HRESULT InPlacePart::MakeWindow(IOleClientSite& client) {
    const Com<IOleInPlaceSite> site = Query<IOleInPlaceSite>(&client, IID_IOleInPlaceSite);
    if (!site || site->CanInPlaceActivate() != S_OK) return E_FAIL;
    const HRESULT told = site->OnInPlaceActivate();
    if (FAILED(told)) return told;
    HWND parent = nullptr;
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    RECT place{};
    RECT clip{};
    Com<IOleInPlaceFrame> frame;
    Com<IOleInPlaceUIWindow> document;
    if (FAILED(site->GetWindow(&parent)) || FAILED(site->GetWindowContext(frame.Out(), document.Out(), &place, &clip, &info)) ||
        object_.Form().Handle() != nullptr) {
        site->OnInPlaceDeactivate();
        return E_FAIL;
    }
    site_ = site;
    frame_ = frame;
    document_ = document;
    if (MakeControlWindow(object_, parent, place) == nullptr) {
        Drop();
        site->OnInPlaceDeactivate();
        return E_FAIL;
    }
    SetObjectRects(&place, &clip);
    return S_OK;
}

HRESULT InPlacePart::TakeUi(const Com<IOleInPlaceSite>& site) {
    if (!site) return E_FAIL;
    const HWND window = object_.Form().Handle();
    // Each of these words runs code of the container's, which may give the focus or take the control down.
    const auto stays = [&] { return uiActive_ && object_.Form().Handle() == window; };
    uiActive_ = true;
    const HRESULT told = site->OnUIActivate();
    if (FAILED(told)) {
        if (stays()) uiActive_ = false;
        return told;
    }
    if (stays() && !IsChild(window, ::GetFocus()) && ::GetFocus() != window) ::SetFocus(window);
    const std::wstring name = WideAscii(kControlTitle);
    if (const Com<IOleInPlaceFrame> frame = frame_; stays() && frame) {
        frame->SetActiveObject(this, name.c_str());
        frame->SetBorderSpace(nullptr);
    }
    if (const Com<IOleInPlaceUIWindow> document = document_; stays() && document) {
        document->SetActiveObject(this, name.c_str());
        document->SetBorderSpace(nullptr);
    }
    return uiActive_ ? S_OK : E_FAIL;
}

HRESULT InPlacePart::UIDeactivate() {
    if (!std::exchange(uiActive_, false)) return S_OK;
    const Com<IUnknown> keep(&object_.Outer());
    const Com<IOleInPlaceSite> site = site_;
    if (const Com<IOleInPlaceUIWindow> document = document_) document->SetActiveObject(nullptr, nullptr);
    if (const Com<IOleInPlaceFrame> frame = frame_) frame->SetActiveObject(nullptr, nullptr);
    if (site) site->OnUIDeactivate(FALSE);
    return S_OK;
}

HRESULT InPlacePart::InPlaceDeactivate() {
    const Com<IUnknown> keep(&object_.Outer());
    if (!site_) return S_OK;
    UIDeactivate();
    // Given up before the window goes: its last messages run code of the host's, which may come here again.
    const Com<IOleInPlaceSite> site = std::exchange(site_, Com<IOleInPlaceSite>());
    Drop();
    if (site) site->OnInPlaceDeactivate();
    return S_OK;
}

HRESULT InPlacePart::Hide() {
    UIDeactivate();
    if (object_.Form().Handle() != nullptr) ShowWindow(object_.Form().Handle(), SW_HIDE);
    return S_OK;
}

void InPlacePart::Drop() {
    uiActive_ = false;
    if (object_.Form().Handle() != nullptr) DestroyWindow(object_.Form().Handle());
    site_.Reset();
    frame_.Reset();
    document_.Reset();
}

void InPlacePart::WindowGone(HWND window) {
    if (object_.Form().Handle() != window) return;
    object_.Form().Detach();
    uiActive_ = false;
    site_.Reset();
    frame_.Reset();
    document_.Reset();
}

void InPlacePart::EnableFrame(bool on) {
    if (!on) stopped_.push_back(frame_);
    if (stopped_.empty()) return;
    const Com<IOleInPlaceFrame> frame = stopped_.back();
    if (on) stopped_.pop_back();
    if (frame) frame->EnableModeless(on ? TRUE : FALSE);
}

HRESULT InPlacePart::SetObjectRects(LPCRECT place, LPCRECT clip) {
    if (place == nullptr) return E_POINTER;
    return Guarded([&] {
        const CallIn call(object_);
        return PlaceWindow(*place, clip);
    });
}

HRESULT InPlacePart::PlaceWindow(const RECT& place, LPCRECT clip) {
    const HWND window = object_.Form().Handle();
    if (window == nullptr) return S_OK;
    RECT shown{};
    HRGN region = nullptr;
    // What the container covers is cut off; the control keeps its size.
    if (clip != nullptr) IntersectRect(&shown, &place, clip);
    if (clip != nullptr && !EqualRect(&shown, &place)) {
        if (!IsRectEmpty(&shown)) OffsetRect(&shown, -place.left, -place.top);
        region = CreateRectRgnIndirect(&shown);
    }
    const auto length = [](LONG from, LONG to) {
        constexpr std::int64_t kMost = (std::numeric_limits<std::int16_t>::max)();
        return static_cast<int>(std::clamp(std::int64_t{to} - from, std::int64_t{0}, kMost));
    };
    const SIZE size{length(place.left, place.right), length(place.top, place.bottom)};
    object_.FollowWindow(size);
    SetWindowRgn(window, region, TRUE);
    SetWindowPos(window, nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    return S_OK;
}

HRESULT InPlacePart::TranslateAccelerator(LPMSG message) {
    if (message == nullptr) return E_POINTER;
    const Com<IUnknown> keep(&object_.Outer());
    const Com<IOleControlSite> site = Query<IOleControlSite>(object_.oleObject.Site(), IID_IOleControlSite);
    if (!site) return S_FALSE;
    DWORD modifiers = 0;
    if (GetKeyState(VK_SHIFT) < 0) modifiers |= 1;
    if (GetKeyState(VK_CONTROL) < 0) modifiers |= 2;
    if (GetKeyState(VK_MENU) < 0) modifiers |= 4;
    return site->TranslateAccelerator(message, modifiers);
}

void InPlacePart::FocusChanged(bool got) {
    const Com<IOleControlSite> site = Query<IOleControlSite>(object_.oleObject.Site(), IID_IOleControlSite);
    if (got && object_.oleControl.TakesInput()) Activate(true, nullptr);
    if (site) site->OnFocus(got ? TRUE : FALSE);
}

}  // namespace orvane
