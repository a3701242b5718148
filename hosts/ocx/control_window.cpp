#include "hosts/ocx/control_window.h"

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/module.h"

namespace orvane {

namespace {

constexpr wchar_t kClassName[] = L"Orvane4Ctrl";

/// Both halves have a sign: a captured mouse may stand left of the window.
Point PointOf(LPARAM position) {
    return {static_cast<std::int16_t>(LOWORD(position)), static_cast<std::int16_t>(HIWORD(position))};
}

/// The time of one paint. The system asks again for ever where its end is left out.
class PaintTime {
public:
    explicit PaintTime(HWND window) : window_(window) { BeginPaint(window, &paint_); }
    ~PaintTime() {
        if (paint_.hdc != nullptr) EndPaint(window_, &paint_);
    }
    PaintTime(const PaintTime&) = delete;
    PaintTime& operator=(const PaintTime&) = delete;
    const PAINTSTRUCT& Told() const { return paint_; }

private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

void Paint(ControlObject& object, HWND window) {
    const ControlObject::Painting painting(object);
    const PaintTime paint(window);
    if (paint.Told().hdc == nullptr) return;
    RECT client{};
    GetClientRect(window, &client);
    const auto context = object.Form().ContextOn(paint.Told().hdc);
    const auto rect = [](const RECT& r) { return Rect{r.left, r.top, r.right, r.bottom}; };
    object.Ctrl().OnDraw(*context, rect(client), rect(paint.Told().rcPaint));
}

/// What the operator does. False for a message that is none of it.
bool PassInput(ControlObject& object, UINT message, WPARAM wParam, LPARAM lParam) {
    COrvane4Ctrl& ctrl = object.Ctrl();
    const auto flags = static_cast<std::uint32_t>(LOWORD(wParam));
    switch (message) {
        case WM_LBUTTONDOWN:
            ctrl.OnLButtonDown(flags, PointOf(lParam));
            return true;
        case WM_LBUTTONUP:
            ctrl.OnLButtonUp(flags, PointOf(lParam));
            return true;
        case WM_LBUTTONDBLCLK:
            ctrl.OnLButtonDblClk(flags, PointOf(lParam));
            return true;
        case WM_RBUTTONDOWN:
            ctrl.OnRButtonDown(flags, PointOf(lParam));
            return true;
        case WM_RBUTTONUP:
            ctrl.OnRButtonUp(flags, PointOf(lParam));
            return true;
        case WM_MOUSEMOVE:
            // A form gives the mouse its plain shape back with each move, before the control says what it is to be there.
            if (flags == 0 && !ctrl.scrollActive) object.Form().ExpectCursorShape(CursorShape::Arrow);
            ctrl.OnMouseMove(flags, PointOf(lParam));
            return true;
        case WM_MOUSEWHEEL:
            ctrl.OnMouseWheel(flags, GET_WHEEL_DELTA_WPARAM(wParam), PointOf(lParam));
            return true;
        case WM_KEYDOWN:
            ctrl.OnKeyDown(static_cast<std::uint32_t>(wParam));
            return false;  // the system makes characters of keys
        default:
            return false;
    }
}

LRESULT Handle(ControlObject& object, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (object.oleControl.TakesInput() && PassInput(object, message, wParam, lParam)) return 0;
    switch (message) {
        case WM_PAINT:
            Paint(object, window);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            // The picture was composed for the size before.
            object.Ctrl().RDMReDraw();
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lParam) != HTCLIENT) return DefWindowProcW(window, message, wParam, lParam);
            object.Form().ShowCursorShape();
            return 1;
        case WM_TIMER:
            object.Ctrl().OnTimer(static_cast<std::int32_t>(wParam));
            return 0;
        case WM_MOUSEACTIVATE:
            if (object.oleControl.TakesInput()) object.inPlace.Activate(true, nullptr);
            return MA_ACTIVATE;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            object.inPlace.FocusChanged(message == WM_SETFOCUS);
            return 0;
        case WM_DESTROY:
            object.inPlace.WindowGone(window);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

/// A container that lets controls stand on this one sees every message before and after.
LRESULT HandleFiltered(ControlObject& object, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const Com<ISimpleFrameSite> filter = Query<ISimpleFrameSite>(object.oleObject.Site(), IID_ISimpleFrameSite);
    LRESULT answer = 0;
    DWORD cookie = 0;
    if (filter && filter->PreMessageFilter(window, message, wParam, lParam, &answer, &cookie) == S_FALSE) return answer;
    answer = Handle(object, window, message, wParam, lParam);
    if (filter) filter->PostMessageFilter(window, message, wParam, lParam, &answer, cookie);
    return answer;
}

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
        static_cast<ControlObject*>(create->lpCreateParams)->Form().Attach(window);
    }
    auto* const object = reinterpret_cast<ControlObject*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (object == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    const bool ends = message == WM_DESTROY || message == WM_NCDESTROY;
    LRESULT answer = 0;
    Guarded([&] {
        const CallIn call(*object);
        // Whoever lets the control go from here on ends it with this message, while windows on it and the system still have
        // some to send.
        if (ends) SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        answer = HandleFiltered(*object, window, message, wParam, lParam);
        if (ends) object->inPlace.WindowGone(window);  // also where the container keeps the message to itself
        return S_OK;
    });
    return answer;
}

bool RegisterWindowClass() {
    WNDCLASSEXW wanted{};
    wanted.cbSize = sizeof wanted;
    // A picture that was composed for another size is of no use, so a new size brings a paint of the whole.
    wanted.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    wanted.lpfnWndProc = WindowProc;
    wanted.hInstance = ModuleInstance();
    wanted.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wanted.lpszClassName = kClassName;
    return RegisterClassExW(&wanted) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

HWND MakeControlWindow(ControlObject& object, HWND parent, const RECT& place) {
    if (!RegisterWindowClass()) return nullptr;
    return CreateWindowExW(0, kClassName, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr, ModuleInstance(), &object);
}

void ForgetWindowClass() { UnregisterClassW(kClassName, ModuleInstance()); }

}  // namespace orvane
