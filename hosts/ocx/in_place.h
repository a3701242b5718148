// The control as a window in its container.
#pragma once

#include <vector>

#include "hosts/ocx/part.h"

namespace orvane {

class InPlacePart final : public Part<IOleInPlaceObject, IOleInPlaceActiveObject> {
public:
    using Part::Part;

    // IOleWindow
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    // IOleInPlaceObject
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
    // IOleInPlaceActiveObject
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

    /// Makes the window, where there is none, in the place that the container tells; with `ui` also takes menus and focus. A new
    /// window gets the click, if `message` is one, that the container took in its place; null without any.
    HRESULT Activate(bool ui, const MSG* message);
    HRESULT Hide();
    /// The container lets go: the window ends without a word to it.
    void Drop();

    // --- From the window --------------------------------------------------------------------------------------------------
    void FocusChanged(bool got);
    /// The window ends, by the system where its parent goes: nothing of the form is held any more. Nothing happens where it is
    /// the control's no longer.
    void WindowGone(HWND window);
    /// Around a message box: the container's frame takes no input meanwhile.
    void EnableFrame(bool on);
    IOleInPlaceSite* Site() const { return site_.Get(); }

private:
    HRESULT MakeWindow(IOleClientSite& client);
    void PassOn(const MSG& message);
    HRESULT PlaceWindow(const RECT& place, LPCRECT clip);
    HRESULT TakeUi(const Com<IOleInPlaceSite>& site);

    Com<IOleInPlaceSite> site_;
    Com<IOleInPlaceFrame> frame_;
    Com<IOleInPlaceUIWindow> document_;
    std::vector<Com<IOleInPlaceFrame>> stopped_;  // one for each box that is open, null without a frame
    bool uiActive_ = false;
};

}  // namespace orvane
