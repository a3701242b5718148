// A container of our own: one form window with one control on it, which writes down all that the control tells it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/ocx/client.h"

namespace orvane::test {

struct HeardEvent {
    std::string name;
    std::vector<Value> args;  // in their declared order
};

/// Hears events and changes of properties.
class Listener final : public IDispatch, public IPropertyNotifySink {
public:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return Give(count, 0U); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) override;
    HRESULT STDMETHODCALLTYPE OnChanged(DISPID dispid) override;
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }

    std::vector<std::string> Names() const;
    int CountOf(const std::string& name) const;
    /// The last event of that name; an empty one with no arguments when there was none.
    HeardEvent Last(const std::string& name) const;

    ULONG refs = 1;
    std::vector<HeardEvent> events;
    std::vector<DISPID> changes;
    HRESULT answer = S_OK;                           // what every handler answers
    std::function<void(const HeardEvent&)> onEvent;  // the handler's own work
};

/// What a container is told of each message to the control's window.
class MessageFilter final : public ISimpleFrameSite {
public:
    explicit MessageFilter(IUnknown& site) : site_(site) {}
    MessageFilter(const MessageFilter&) = delete;
    MessageFilter& operator=(const MessageFilter&) = delete;
    virtual ~MessageFilter() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override { return site_.QueryInterface(iid, out); }
    ULONG STDMETHODCALLTYPE AddRef() override { return site_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return site_.Release(); }
    HRESULT STDMETHODCALLTYPE PreMessageFilter(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* answer,
                                               DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE PostMessageFilter(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* answer,
                                                DWORD cookie) override;

    bool offered = false;                                      // whether the site has this interface
    UINT swallowed = WM_NULL;                                  // a message that the control does not get
    LRESULT answer = 0;                                        // what its sender gets then
    std::function<void(bool before, UINT message)> onMessage;  // the container's own work
    struct Seen {
        bool before;
        HWND window;
        UINT message;
        LPARAM lParam;
        DWORD cookie;
    };
    std::vector<Seen> seen;
    /// Those of one message. The system sends others in between, as the pointer stands over the window.
    std::vector<Seen> Of(UINT message) const;

private:
    IUnknown& site_;
};

/// The site of the control and the form around it.
class Container final : public IOleClientSite,
                        public IOleInPlaceSite,
                        public IOleInPlaceFrame,
                        public IOleControlSite,
                        public IDispatch,
                        public IAdviseSink {
public:
    /// A form of that client size with a new control, which is not active yet.
    explicit Container(int width_px = 400, int height_px = 300);
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    virtual ~Container();

    /// Makes the control's window at the left top with the given size.
    HRESULT Activate(LONG verb = OLEIVERB_INPLACEACTIVATE);
    void Resize(int width_px, int height_px);
    /// Listens to events and properties.
    void Connect();
    void Disconnect();
    /// Takes the control down and lets it go.
    void Close();
    HWND ControlWindow() const;
    /// One message at the control's window, as the system sends it.
    void Mouse(UINT message, WPARAM flags, int x, int y);
    void Key(WPARAM key);

    // What the container tells by itself.
    bool userMode = true;
    bool uiDead = false;
    bool followsWishes = true;  // whether a wish for another size is granted
    bool refusesActivation = false;
    HRESULT acceleratorAnswer = S_FALSE;
    std::vector<std::string> told;  // what the control called, in order
    std::vector<DWORD> aspects;     // of each change of the view
    DWORD acceleratorKeys = 0;      // shift, control and menu, as the last key came with them
    std::function<void(const std::string&)> onTold;
    Client control;
    Listener listener;
    MessageFilter filter{*static_cast<IOleClientSite*>(this)};
    HWND form = nullptr;
    RECT place{};

    // IUnknown. The container is no counted object: it ends with its scope.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs_; }
    ULONG References() const { return refs_; }

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return Tell("SaveObject"); }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** out) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override { return Tell("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(WINBOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    // IOleWindow, IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override { return Give(out, form); }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(WINBOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return refusesActivation ? S_FALSE : S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Tell("OnInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Tell("OnUIActivate"); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT placeOut,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(WINBOOL) override { return Tell("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return Tell("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT wish) override;
    // IOleInPlaceFrame
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) override;
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(WINBOOL on) override {
        return Tell(on ? "EnableModeless(true)" : "EnableModeless(false)");
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }
    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(WINBOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** out) override {
        return GiveInterface(out, static_cast<IDispatch*>(nullptr));
    }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD held) override {
        acceleratorKeys = held;
        return Tell("TranslateAccelerator"), acceleratorAnswer;
    }
    HRESULT STDMETHODCALLTYPE OnFocus(WINBOOL got) override { return Tell(got ? "OnFocus(true)" : "OnFocus(false)"); }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return Tell("ShowPropertyFrame"); }
    // IDispatch: ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return Give(count, 0U); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override;
    // IAdviseSink
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override { Tell("OnDataChange"); }
    void STDMETHODCALLTYPE OnViewChange(DWORD aspect, LONG) override {
        aspects.push_back(aspect);
        Tell("OnViewChange");
    }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override { Tell("OnSave"); }
    void STDMETHODCALLTYPE OnClose() override { Tell("OnClose"); }

    bool WasTold(const std::string& word) const { return TimesTold(word) > 0; }
    long TimesTold(const std::string& word) const;

private:
    HRESULT Tell(const char* word) {
        told.emplace_back(word);
        if (onTold) onTold(told.back());
        return S_OK;
    }

    ULONG refs_ = 1;
    DWORD eventCookie_ = 0;
    DWORD changeCookie_ = 0;
};

}  // namespace orvane::test
