#include "tests/ocx/container.h"

#include <algorithm>
#include <iterator>

#include "control/automation/table.h"
#include "hosts/ocx/guids.h"

namespace orvane::test {

HRESULT Listener::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == ToGuid(kEventsGuid)) *out = static_cast<IDispatch*>(this);
    if (iid == IID_IPropertyNotifySink) *out = static_cast<IPropertyNotifySink*>(this);
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT Listener::Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) {
    const Member* event = Surface().FindEvent(static_cast<std::int32_t>(dispid));
    HeardEvent heard;
    heard.name = event == nullptr ? "?" : event->name;
    for (UINT i = params->cArgs; i > 0; --i) {
        Value copy;
        VariantCopy(&copy.v, &params->rgvarg[i - 1]);
        heard.args.push_back(std::move(copy));
    }
    events.push_back(heard);
    if (onEvent) onEvent(heard);
    return answer;
}

HRESULT Listener::OnChanged(DISPID dispid) {
    changes.push_back(dispid);
    return S_OK;
}

std::vector<std::string> Listener::Names() const {
    std::vector<std::string> names;
    for (const HeardEvent& each : events) names.push_back(each.name);
    return names;
}

int Listener::CountOf(const std::string& name) const {
    return static_cast<int>(std::count_if(events.begin(), events.end(), [&](const HeardEvent& e) { return e.name == name; }));
}

HeardEvent Listener::Last(const std::string& name) const {
    for (auto each = events.rbegin(); each != events.rend(); ++each) {
        if (each->name == name) return *each;
    }
    return {};
}

HRESULT MessageFilter::PreMessageFilter(HWND window, UINT message, WPARAM, LPARAM lParam, LRESULT* told, DWORD* cookie) {
    *cookie = static_cast<DWORD>(seen.size()) + 1;
    seen.push_back({true, window, message, lParam, *cookie});
    if (onMessage) onMessage(true, message);
    if (message != swallowed) return S_OK;
    *told = answer;
    return S_FALSE;
}

HRESULT MessageFilter::PostMessageFilter(HWND window, UINT message, WPARAM, LPARAM lParam, LRESULT*, DWORD cookie) {
    seen.push_back({false, window, message, lParam, cookie});
    if (onMessage) onMessage(false, message);
    return S_OK;
}

std::vector<MessageFilter::Seen> MessageFilter::Of(UINT message) const {
    std::vector<Seen> found;
    std::copy_if(seen.begin(), seen.end(), std::back_inserter(found), [&](const Seen& each) { return each.message == message; });
    return found;
}

Container::Container(int width_px, int height_px) : control(Client::New()) {
    static const bool registered = [] {
        WNDCLASSW wanted{};
        wanted.lpfnWndProc = DefWindowProcW;
        wanted.hInstance = GetModuleHandleW(nullptr);
        wanted.lpszClassName = L"OrvaneTestForm";
        return RegisterClassW(&wanted) != 0;
    }();
    EXPECT_TRUE(registered);
    // Without a frame no window manager has a say, and there is none to wait for.
    form = CreateWindowExW(0, L"OrvaneTestForm", L"form", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 20, 20, width_px, height_px,
                           nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(form, nullptr);
    place = {0, 0, width_px, height_px};
    if (const Com<IOleObject> object = control.As<IOleObject>(IID_IOleObject)) {
        object->SetClientSite(this);
        if (const Com<IPersistStreamInit> persist = control.As<IPersistStreamInit>(IID_IPersistStreamInit)) persist->InitNew();
    }
}

Container::~Container() {
    Close();
    DestroyWindow(form);
}

HRESULT Container::Activate(LONG verb) {
    const Deadline deadline("activation");
    const Com<IOleObject> object = control.As<IOleObject>(IID_IOleObject);
    return object->DoVerb(verb, nullptr, this, 0, form, &place);
}

void Container::Resize(int width_px, int height_px) {
    const Deadline deadline("resizing");
    place.right = place.left + width_px;
    place.bottom = place.top + height_px;
    if (const Com<IOleInPlaceObject> object = control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)) {
        object->SetObjectRects(&place, &place);
    }
}

void Container::Connect() {
    const Com<IConnectionPointContainer> points = control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    Com<IConnectionPoint> point;
    EXPECT_EQ(points->FindConnectionPoint(ToGuid(kEventsGuid), point.Out()), S_OK);
    EXPECT_EQ(point->Advise(static_cast<IDispatch*>(&listener), &eventCookie_), S_OK);
    EXPECT_EQ(points->FindConnectionPoint(IID_IPropertyNotifySink, point.Out()), S_OK);
    EXPECT_EQ(point->Advise(static_cast<IDispatch*>(&listener), &changeCookie_), S_OK);
}

void Container::Disconnect() {
    const Com<IConnectionPointContainer> points = control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    Com<IConnectionPoint> point;
    if (!points) return;
    points->FindConnectionPoint(ToGuid(kEventsGuid), point.Out());
    if (eventCookie_ != 0) point->Unadvise(std::exchange(eventCookie_, 0));
    points->FindConnectionPoint(IID_IPropertyNotifySink, point.Out());
    if (changeCookie_ != 0) point->Unadvise(std::exchange(changeCookie_, 0));
}

void Container::Close() {
    const Deadline deadline("closing");
    if (control.Get() == nullptr) return;
    Disconnect();
    if (const Com<IOleObject> object = control.As<IOleObject>(IID_IOleObject)) {
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
    }
    control.Reset();
}

HWND Container::ControlWindow() const {
    HWND window = nullptr;
    if (const Com<IOleWindow> object = control.As<IOleWindow>(IID_IOleWindow)) object->GetWindow(&window);
    return window;
}

void Container::Mouse(UINT message, WPARAM flags, int x, int y) {
    const Deadline deadline("a mouse message");
    SendMessageW(ControlWindow(), message, flags, MAKELPARAM(x, y));
}

void Container::Key(WPARAM key) {
    const Deadline deadline("a key");
    SendMessageW(ControlWindow(), WM_KEYDOWN, key, 1);
}

HRESULT Container::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) *out = static_cast<IOleClientSite*>(this);
    if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite) *out = static_cast<IOleInPlaceSite*>(this);
    if (iid == IID_IOleControlSite) *out = static_cast<IOleControlSite*>(this);
    if (iid == IID_IDispatch) *out = static_cast<IDispatch*>(this);
    if (iid == IID_IAdviseSink) *out = static_cast<IAdviseSink*>(this);
    if (iid == IID_ISimpleFrameSite && filter.offered) *out = static_cast<ISimpleFrameSite*>(&filter);
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT Container::GetContainer(IOleContainer** out) {
    if (out != nullptr) *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT Container::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT placeOut, LPRECT clip,
                                    LPOLEINPLACEFRAMEINFO info) {
    *frame = static_cast<IOleInPlaceFrame*>(this);
    (*frame)->AddRef();
    *document = nullptr;
    *placeOut = place;
    *clip = place;
    info->fMDIApp = FALSE;
    info->hwndFrame = form;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

HRESULT Container::SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) {
    return Tell(active == nullptr ? "SetActiveObject(null)" : "SetActiveObject");
}

HRESULT Container::Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if (result == nullptr) return E_POINTER;
    if (dispid != DISPID_AMBIENT_USERMODE && dispid != DISPID_AMBIENT_UIDEAD) return DISP_E_MEMBERNOTFOUND;
    const bool flag = dispid == DISPID_AMBIENT_USERMODE ? userMode : uiDead;
    result->vt = VT_BOOL;
    result->boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT Container::OnPosRectChange(LPCRECT wish) {
    if (followsWishes) Resize(wish->right - wish->left, wish->bottom - wish->top);
    return Tell("OnPosRectChange");
}

long Container::TimesTold(const std::string& word) const { return static_cast<long>(std::count(told.begin(), told.end(), word)); }

}  // namespace orvane::test
