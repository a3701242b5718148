// The control on a form: activation, size, ambient properties, closing.
#include "tests/ocx/container.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/ole_object.h"
// container.h brings the system headers, which come first
#include <objsafe.h>

#include <algorithm>

namespace orvane::test {
namespace {

using ContainerTest = ComTest;

TEST_F(ContainerTest, activation_makes_a_child_window_in_the_place_that_the_container_tells) {
    Container form(400, 300);
    form.place = {10, 20, 210, 170};
    ASSERT_EQ(form.Activate(), S_OK);
    const HWND window = form.ControlWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetParent(window), form.form);
    RECT client{};
    GetClientRect(window, &client);
    EXPECT_EQ(client.right, 200);
    EXPECT_EQ(client.bottom, 150);
    POINT corner{0, 0};
    MapWindowPoints(window, form.form, &corner, 1);
    EXPECT_EQ(corner.x, 10);
    EXPECT_EQ(corner.y, 20);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_TRUE(form.WasTold("OnInPlaceActivate"));
    EXPECT_TRUE(form.WasTold("ShowObject"));
    EXPECT_FALSE(form.WasTold("OnUIActivate"));
    EXPECT_EQ(form.Activate(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(form.ControlWindow(), window) << "an active control keeps its window";
}

TEST_F(ContainerTest, a_container_that_refuses_gets_no_window) {
    Container form;
    form.refusesActivation = true;
    EXPECT_TRUE(FAILED(form.Activate()));
    EXPECT_EQ(form.ControlWindow(), nullptr);
    EXPECT_FALSE(form.WasTold("OnInPlaceActivate"));
}

TEST_F(ContainerTest, activation_of_the_interface_takes_the_focus_and_gives_it_back) {
    Container form;
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_TRUE(form.WasTold("OnUIActivate"));
    EXPECT_TRUE(form.WasTold("SetActiveObject"));
    EXPECT_EQ(::GetFocus(), form.ControlWindow());
    EXPECT_TRUE(form.WasTold("OnFocus(true)"));
    ::SetFocus(form.form);
    EXPECT_TRUE(form.WasTold("OnFocus(false)"));
    const Com<IOleInPlaceObject> object = form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    EXPECT_EQ(object->UIDeactivate(), S_OK);
    EXPECT_TRUE(form.WasTold("SetActiveObject(null)"));
    EXPECT_TRUE(form.WasTold("OnUIDeactivate"));
    EXPECT_EQ(object->InPlaceDeactivate(), S_OK);
    EXPECT_TRUE(form.WasTold("OnInPlaceDeactivate"));
    EXPECT_EQ(form.ControlWindow(), nullptr);
    EXPECT_EQ(form.Activate(), S_OK) << "and again";
    EXPECT_NE(form.ControlWindow(), nullptr);
}

TEST_F(ContainerTest, verbs_that_no_control_has_are_refused) {
    Container form;
    EXPECT_EQ(form.Activate(-99), E_NOTIMPL);
    EXPECT_EQ(form.Activate(99), OLEOBJ_S_INVALIDVERB);
    EXPECT_NE(form.ControlWindow(), nullptr) << "an unknown verb does what the first one does";
    form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->InPlaceDeactivate();
    form.refusesActivation = true;
    EXPECT_EQ(form.Activate(99), E_FAIL);
    form.refusesActivation = false;
    EXPECT_EQ(form.Activate(OLEIVERB_PROPERTIES), S_OK);
    EXPECT_TRUE(form.WasTold("ShowPropertyFrame"));
    ASSERT_EQ(form.Activate(), S_OK);
    EXPECT_EQ(form.Activate(OLEIVERB_HIDE), S_OK);
    EXPECT_FALSE(IsWindowVisible(form.ControlWindow()));
    Client loose = Client::New();
    EXPECT_EQ(loose.As<IOleObject>(IID_IOleObject)->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_FAIL)
        << "without a container there is nowhere to be";
}

TEST_F(ContainerTest, a_new_size_reaches_the_window_and_a_clip_cuts_it) {
    Container form(400, 300);
    ASSERT_EQ(form.Activate(), S_OK);
    form.Resize(300, 200);
    RECT client{};
    GetClientRect(form.ControlWindow(), &client);
    EXPECT_EQ(client.right, 300);
    const RECT clip{0, 0, 50, 60};
    const Com<IOleInPlaceObject> object = form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    EXPECT_EQ(object->SetObjectRects(&form.place, &clip), S_OK);
    GetClientRect(form.ControlWindow(), &client);
    EXPECT_EQ(client.right, 300) << "the control keeps its size";
    RECT shown{};
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    EXPECT_NE(GetWindowRgn(form.ControlWindow(), region), ERROR);
    GetRgnBox(region, &shown);
    DeleteObject(region);
    EXPECT_EQ(shown.right, 50);
    EXPECT_EQ(shown.bottom, 60);
    EXPECT_EQ(object->SetObjectRects(nullptr, nullptr), E_POINTER);
    const RECT elsewhere{1000, 1000, 1010, 1010};
    EXPECT_EQ(object->SetObjectRects(&form.place, &elsewhere), S_OK);
    const HRGN empty = CreateRectRgn(0, 0, 9, 9);
    EXPECT_EQ(GetWindowRgn(form.ControlWindow(), empty), NULLREGION) << "nothing of it lies within the clip";
    DeleteObject(empty);
    EXPECT_EQ(object->SetObjectRects(&form.place, &form.place), S_OK);
    const HRGN none = CreateRectRgn(0, 0, 9, 9);
    EXPECT_EQ(GetWindowRgn(form.ControlWindow(), none), ERROR) << "all of it, so that it has no region";
    DeleteObject(none);
}

TEST_F(ContainerTest, the_extent_is_kept_for_the_container) {
    Client control = Client::New();
    const Com<IOleObject> object = control.As<IOleObject>(IID_IOleObject);
    SIZEL size{5000, 4000};
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    size = {};
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(size.cx, 5000);
    EXPECT_EQ(object->SetExtent(DVASPECT_ICON, &size), DV_E_DVASPECT);
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
    size.cx = -1;
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), E_INVALIDARG);
    const Com<IViewObjectEx> view = control.As<IViewObjectEx>(IID_IViewObjectEx);
    RECTL rect{};
    EXPECT_EQ(view->GetRect(DVASPECT_CONTENT, &rect), S_OK);
    EXPECT_EQ(rect.right, 5000);
    DWORD hit = 0;
    const RECT bounds{0, 0, 10, 10};
    EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, POINT{5, 5}, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
    DWORD status = 0;
    EXPECT_EQ(view->GetViewStatus(&status), S_OK);
    EXPECT_NE(status & VIEWSTATUS_OPAQUE, 0U);
}

TEST_F(ContainerTest, it_tells_what_kind_of_object_it_is) {
    Client control = Client::New();
    const Com<IOleObject> object = control.As<IOleObject>(IID_IOleObject);
    DWORD status = 0;
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(status, kMiscStatus);
    EXPECT_NE(status & OLEMISC_SIMPLEFRAME, 0U);
    CLSID clsid{};
    EXPECT_EQ(object->GetUserClassID(&clsid), S_OK);
    EXPECT_TRUE(clsid == ToGuid(kControlGuid));
    LPOLESTR name = nullptr;
    EXPECT_EQ(object->GetUserType(USERCLASSTYPE_FULL, &name), S_OK);
    EXPECT_STREQ(name, L"Orvane4 Control");
    CoTaskMemFree(name);
    Com<IEnumOLEVERB> verbs;
    ASSERT_EQ(object->EnumVerbs(verbs.Out()), S_OK);
    OLEVERB verb{};
    ULONG count = 0;
    EXPECT_EQ(verbs->Next(1, &verb, &count), S_OK);
    EXPECT_EQ(verb.lVerb, OLEIVERB_PROPERTIES);
    CoTaskMemFree(verb.lpszVerbName);
    EXPECT_EQ(verbs->Next(1, &verb, &count), S_FALSE);
}

TEST_F(ContainerTest, at_design_time_it_takes_no_input) {
    Container form;
    form.userMode = false;
    form.Connect();
    const Com<IOleControl> control = form.control.As<IOleControl>(IID_IOleControl);
    EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE), S_OK);
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(50);
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 5, 5);
    form.Mouse(WM_LBUTTONUP, 0, 5, 5);
    EXPECT_TRUE(form.listener.events.empty());
    form.userMode = true;
    EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 5, 5);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 1);
    form.uiDead = true;
    EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD), S_OK);
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 5, 5);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 1) << "the program is stopped for the moment";
    form.uiDead = false;
    EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD), S_OK);
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 5, 5);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 2);
}

TEST_F(ContainerTest, a_container_of_simple_frames_sees_every_message_before_and_after) {
    Container form;
    form.filter.offered = true;
    form.Connect();
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(20);
    form.filter.seen.clear();
    std::size_t seenBefore = 0;
    form.listener.onEvent = [&](const HeardEvent& event) {
        if (event.name == "MouseDown") seenBefore = form.filter.Of(WM_LBUTTONDOWN).size();
    };
    form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 7, 9);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 1);
    const std::vector<MessageFilter::Seen> seen = form.filter.Of(WM_LBUTTONDOWN);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seenBefore, 1U) << "the event is told between the two";
    for (const MessageFilter::Seen& each : seen) {
        EXPECT_EQ(each.window, form.ControlWindow());
        EXPECT_EQ(each.lParam, MAKELPARAM(7, 9));
        EXPECT_EQ(each.cookie, seen[0].cookie) << "what the first call left comes back";
    }
    EXPECT_TRUE(seen[0].before);
    EXPECT_FALSE(seen[1].before);
}

TEST_F(ContainerTest, a_message_that_the_container_takes_for_itself_never_reaches_the_control) {
    Container form;
    form.filter.offered = true;
    form.filter.swallowed = WM_LBUTTONDOWN;
    form.filter.answer = 4711;
    form.Connect();
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(20);
    form.filter.seen.clear();
    EXPECT_EQ(SendMessageW(form.ControlWindow(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(7, 9)), 4711);
    EXPECT_EQ(form.listener.CountOf("MouseDown"), 0);
    ASSERT_EQ(form.filter.Of(WM_LBUTTONDOWN).size(), 1U) << "and there is no after";
    EXPECT_TRUE(form.filter.Of(WM_LBUTTONDOWN)[0].before);
    form.Close();
    EXPECT_EQ(form.References(), 1U) << "each message lets the filter go";
}

TEST_F(ContainerTest, close_saves_what_was_changed_only_where_it_is_asked_to) {
    Container form;
    const Com<IOleObject> object = form.control.As<IOleObject>(IID_IOleObject);
    DWORD cookie = 0;
    EXPECT_EQ(object->Advise(&form, &cookie), S_OK);
    EXPECT_EQ(object->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    EXPECT_FALSE(form.WasTold("SaveObject"));
    form.control.Put(L"DebugMode", true);
    EXPECT_EQ(object->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    EXPECT_TRUE(form.WasTold("SaveObject"));
    EXPECT_TRUE(form.WasTold("OnClose"));
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(form.TimesTold("SaveObject"), 1);
    EXPECT_EQ(object->Close(OLECLOSE_PROMPTSAVE), S_OK);
    EXPECT_EQ(form.TimesTold("SaveObject"), 2) << "whether to ask the operator is the container's business";
    EXPECT_EQ(object->Unadvise(cookie), S_OK);
}

TEST_F(ContainerTest, a_form_that_was_lost_leaves_nothing_active_behind) {
    Container form;
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    DestroyWindow(form.ControlWindow());
    EXPECT_EQ(form.ControlWindow(), nullptr);
    form.told.clear();
    EXPECT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(form.TimesTold("OnInPlaceActivate"), 1);
    EXPECT_EQ(form.TimesTold("OnUIActivate"), 1) << "the interface is taken anew";
    form.Close();
    EXPECT_EQ(form.References(), 1U);
}

/// Deactivates a control that has the focus, from which the container deactivates it once more at each of these words.
void ExpectDeactivationToldOnce(Container& form, const std::vector<std::string>& words) {
    const Com<IOleInPlaceObject> object = form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    form.onTold = [&](const std::string& word) {
        if (std::find(words.begin(), words.end(), word) != words.end()) object->InPlaceDeactivate();
    };
    EXPECT_EQ(object->InPlaceDeactivate(), S_OK);
    EXPECT_TRUE(form.WasTold("OnFocus(false)"));
    EXPECT_EQ(form.TimesTold("OnInPlaceDeactivate"), 1);
    form.onTold = nullptr;
}

TEST_F(ContainerTest, deactivation_is_told_once_whatever_the_last_messages_bring) {
    Container form;
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    ExpectDeactivationToldOnce(form, {"OnFocus(false)", "OnUIDeactivate"});
}

TEST_F(ContainerTest, the_last_message_of_a_focus_deactivates_no_second_time) {
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    ::SetFocus(form.ControlWindow());
    form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->UIDeactivate();
    ExpectDeactivationToldOnce(form, {"OnFocus(false)"});
}

TEST_F(ContainerTest, a_form_that_goes_first_takes_the_window_with_it) {
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    DestroyWindow(form.form);
    EXPECT_EQ(form.ControlWindow(), nullptr);
    EXPECT_EQ(form.control.Get(L"Zoom").Int(), 10000);
    form.control.Call(L"OrvReDraw");
    form.Close();
}

TEST_F(ContainerTest, the_container_is_let_go_to_the_last_reference) {
    Container form;
    form.Connect();
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    Pump(20);
    form.Close();
    EXPECT_EQ(form.References(), 1U);
    EXPECT_EQ(form.listener.refs, 1U);
}

TEST_F(ContainerTest, quick_activation_sets_and_answers_all_at_once) {
    Container form;
    form.control.As<IOleObject>(IID_IOleObject)->SetClientSite(nullptr);
    QACONTAINER container{};
    container.cbSize = sizeof container;
    container.pClientSite = &form;
    container.pPropertyNotifySink = &form.listener;
    container.pUnkEventSink = static_cast<IDispatch*>(&form.listener);
    Com<IStream> deaf;  // an object that has no IDispatch
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, deaf.Out()), S_OK);
    QACONTROL told{};
    told.cbSize = sizeof told;
    const Com<IQuickActivate> quick = form.control.As<IQuickActivate>(IID_IQuickActivate);
    ASSERT_TRUE(quick);
    ASSERT_EQ(quick->QuickActivate(&container, &told), S_OK);
    EXPECT_EQ(told.dwMiscStatus, kMiscStatus);
    EXPECT_NE(told.dwEventCookie, 0U);
    form.control.Put(L"Zoom", 500);
    EXPECT_EQ(form.listener.CountOf("OnZoomChange"), 1);
    EXPECT_EQ(quick->QuickActivate(nullptr, &told), E_POINTER);
    QACONTROL refused{};
    refused.cbSize = sizeof refused;
    container.pUnkEventSink = deaf.Get();
    const ULONG references = form.listener.refs;
    EXPECT_EQ(quick->QuickActivate(&container, &refused), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(refused.dwEventCookie, 0U);
    EXPECT_EQ(refused.dwPropNotifyCookie, 0U);
    EXPECT_EQ(form.listener.refs, references) << "nobody listens by halves";
    const Com<IConnectionPointContainer> points = form.control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    Com<IConnectionPoint> point;
    points->FindConnectionPoint(ToGuid(kEventsGuid), point.Out());
    EXPECT_EQ(point->Unadvise(told.dwEventCookie), S_OK);
    points->FindConnectionPoint(IID_IPropertyNotifySink, point.Out());
    EXPECT_EQ(point->Unadvise(told.dwPropNotifyCookie), S_OK);
}

TEST_F(ContainerTest, no_option_of_safety_is_granted) {
    Client control = Client::New();
    const Com<IObjectSafety> safety = control.As<IObjectSafety>(IID_IObjectSafety);
    ASSERT_TRUE(safety);
    DWORD supported = 9;
    DWORD enabled = 9;
    EXPECT_EQ(safety->GetInterfaceSafetyOptions(IID_IDispatch, &supported, &enabled), S_OK);
    EXPECT_EQ(supported, 0U);
    EXPECT_EQ(enabled, 0U);
    for (const DWORD option : {INTERFACESAFE_FOR_UNTRUSTED_CALLER, INTERFACESAFE_FOR_UNTRUSTED_DATA}) {
        EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, option, option), E_FAIL);
    }
    EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, INTERFACESAFE_FOR_UNTRUSTED_CALLER, 0), S_OK);
}

TEST_F(ContainerTest, the_property_page_shows_one_label_under_general) {
    Client control = Client::New();
    const Com<ISpecifyPropertyPages> pages = control.As<ISpecifyPropertyPages>(IID_ISpecifyPropertyPages);
    CAUUID list{};
    ASSERT_EQ(pages->GetPages(&list), S_OK);
    ASSERT_EQ(list.cElems, 1U);
    void* made = nullptr;
    ASSERT_EQ(CoCreateInstance(list.pElems[0], nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, &made), S_OK);
    CoTaskMemFree(list.pElems);
    Com<IPropertyPage> page;
    *page.Out() = static_cast<IPropertyPage*>(made);
    PROPPAGEINFO info{};
    info.cb = sizeof info;
    ASSERT_EQ(page->GetPageInfo(&info), S_OK);
    EXPECT_STREQ(info.pszTitle, L"General");
    CoTaskMemFree(info.pszTitle);
    Container form;
    const RECT place{0, 0, 200, 60};
    IUnknown* object = control.Get();
    EXPECT_EQ(page->SetObjects(1, &object), S_OK);
    ASSERT_EQ(page->Activate(form.form, &place, FALSE), S_OK);
    const HWND label = GetWindow(form.form, GW_CHILD);
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(GetWindow(label, GW_HWNDNEXT), nullptr);
    EXPECT_GT(GetWindowTextLengthW(label), 0);
    EXPECT_EQ(page->Show(SW_SHOW), S_OK);
    EXPECT_EQ(page->IsPageDirty(), S_FALSE);
    EXPECT_EQ(page->Apply(), S_OK);
    EXPECT_EQ(page->Deactivate(), S_OK);
    EXPECT_EQ(GetWindow(form.form, GW_CHILD), nullptr);
}

TEST_F(ContainerTest, enumerations_are_browsed_by_their_names) {
    Client control = Client::New();
    control.Call(L"OrvInit");
    control.Put(L"RunMode", 200);
    const Com<IPerPropertyBrowsing> browsing = control.As<IPerPropertyBrowsing>(IID_IPerPropertyBrowsing);
    BSTR text = nullptr;
    EXPECT_EQ(browsing->GetDisplayString(3, &text), S_OK);
    EXPECT_STREQ(text, L"OrvRMEditPntMove");
    SysFreeString(text);
    control.Put(L"RunMode", 51);
    EXPECT_EQ(browsing->GetDisplayString(3, &text), S_FALSE) << "a value without a name";
    EXPECT_EQ(browsing->GetDisplayString(8, &text), S_FALSE) << "no enumeration";
    CALPOLESTR names{};
    CADWORD cookies{};
    ASSERT_EQ(browsing->GetPredefinedStrings(19, &names, &cookies), S_OK);
    ASSERT_EQ(names.cElems, 2U);
    EXPECT_STREQ(names.pElems[1], L"OrvAPMCircle");
    Value value;
    EXPECT_EQ(browsing->GetPredefinedValue(19, cookies.pElems[1], &value.v), S_OK);
    EXPECT_EQ(value.Int(), 1);
    EXPECT_EQ(browsing->GetPredefinedValue(19, 2, &value.v), E_INVALIDARG);
    for (ULONG i = 0; i < names.cElems; ++i) CoTaskMemFree(names.pElems[i]);
    CoTaskMemFree(names.pElems);
    CoTaskMemFree(cookies.pElems);
    CLSID page{};
    EXPECT_EQ(browsing->MapPropertyToPage(3, &page), PERPROP_E_NOPAGEAVAILABLE);
}

}  // namespace
}  // namespace orvane::test
