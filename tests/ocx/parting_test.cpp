// A container that takes the control down, or lets it go, in the middle of what the control does.
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

using PartingTest = ComTest;

/// Lets the control go to its last reference, without taking its window down.
void LetGo(Container& form) {
    form.control.As<IOleObject>(IID_IOleObject)->SetClientSite(nullptr);
    form.control.Reset();
}

void EndForm(Container& form) { DestroyWindow(std::exchange(form.form, nullptr)); }

/// Ends the form's window, and lets the control go before or after a message to the control's.
void ExpectPartingAt(bool before, UINT message) {
    Container form;
    form.filter.offered = true;
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    const HWND window = form.ControlWindow();
    bool done = false;
    std::size_t later = 0;
    form.filter.onMessage = [&](bool isBefore, UINT now) {
        if (done && isBefore) ++later;
        if (done || isBefore != before || now != message) return;
        done = true;
        LetGo(form);
    };
    EndForm(form);
    EXPECT_TRUE(done);
    EXPECT_EQ(later, 0U) << "the control is gone, and asks for nothing any more";
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(form.References(), 1U);
}

TEST_F(PartingTest, a_container_lets_the_control_go_before_the_last_word_to_its_window) { ExpectPartingAt(true, WM_DESTROY); }

TEST_F(PartingTest, a_container_lets_the_control_go_after_the_last_word_to_its_window) { ExpectPartingAt(false, WM_DESTROY); }

TEST_F(PartingTest, the_last_reference_alone_goes_in_the_last_message) {
    Container form;
    form.filter.offered = true;
    ASSERT_EQ(form.Activate(), S_OK);
    form.filter.onMessage = [&](bool before, UINT message) {
        if (!before && message == WM_DESTROY) form.control.Reset();
    };
    EndForm(form);
    EXPECT_EQ(form.control.Get(), nullptr);
    EXPECT_EQ(form.References(), 1U);
}

TEST_F(PartingTest, a_last_word_that_the_container_keeps_to_itself_ends_the_window_all_the_same) {
    Container form;
    form.filter.offered = true;
    form.filter.swallowed = WM_DESTROY;
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    DestroyWindow(form.ControlWindow());
    EXPECT_EQ(form.ControlWindow(), nullptr);
    form.told.clear();
    EXPECT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(form.TimesTold("OnUIActivate"), 1);
    EXPECT_NE(form.ControlWindow(), nullptr);
}

/// A window on the control that lets the control go when it ends, after the control's own window has had its last word.
LRESULT CALLBACK GuestProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) LetGo(*reinterpret_cast<Container*>(GetWindowLongPtrW(window, GWLP_USERDATA)));
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(PartingTest, a_window_on_the_control_lets_it_go_when_it_ends) {
    WNDCLASSW wanted{};
    wanted.lpfnWndProc = GuestProc;
    wanted.hInstance = GetModuleHandleW(nullptr);
    wanted.lpszClassName = L"OrvaneTestGuest";
    ASSERT_NE(RegisterClassW(&wanted), 0);
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    const HWND guest = CreateWindowExW(0, wanted.lpszClassName, L"", WS_CHILD | WS_VISIBLE, 5, 5, 20, 20, form.ControlWindow(),
                                       nullptr, wanted.hInstance, nullptr);
    ASSERT_NE(guest, nullptr);
    SetWindowLongPtrW(guest, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&form));
    EndForm(form);
    EXPECT_EQ(form.control.Get(), nullptr);
    EXPECT_EQ(form.References(), 1U);
    UnregisterClassW(wanted.lpszClassName, wanted.hInstance);
}

TEST_F(PartingTest, another_container_gets_a_control_that_is_not_active) {
    Container form;
    Container other;
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    const Com<IOleObject> object = form.control.As<IOleObject>(IID_IOleObject);
    EXPECT_EQ(object->SetClientSite(&form), S_OK);
    EXPECT_NE(form.ControlWindow(), nullptr) << "its own container once more changes nothing";
    EXPECT_EQ(object->SetClientSite(&other), S_OK);
    EXPECT_EQ(form.ControlWindow(), nullptr);
    EXPECT_EQ(form.TimesTold("OnUIDeactivate"), 1);
    EXPECT_EQ(form.TimesTold("OnInPlaceDeactivate"), 1);
    EXPECT_EQ(form.References(), 1U);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
    EXPECT_EQ(other.References(), 2U) << "as the site of its own control";
}

TEST_F(PartingTest, a_container_that_gives_the_focus_while_the_interface_is_taken_hears_of_it_once) {
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    ::SetFocus(form.form);
    form.onTold = [&](const std::string& word) {
        if (word == "OnUIActivate") ::SetFocus(form.ControlWindow());
    };
    EXPECT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(form.TimesTold("OnUIActivate"), 1);
    EXPECT_EQ(form.TimesTold("SetActiveObject"), 1);
    form.onTold = nullptr;
}

/// Takes the interface, which the container ends at a word; then takes it in peace.
void ExpectInterfaceTakenAnew(const std::string& at) {
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    ::SetFocus(form.form);
    form.told.clear();
    form.onTold = [&](const std::string& word) {
        if (word == at) form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->InPlaceDeactivate();
    };
    EXPECT_EQ(form.Activate(OLEIVERB_UIACTIVATE), E_FAIL) << at;
    EXPECT_EQ(form.ControlWindow(), nullptr) << at;
    EXPECT_FALSE(form.WasTold("SetActiveObject")) << at;
    form.onTold = nullptr;
    form.told.clear();
    EXPECT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK) << at;
    EXPECT_EQ(form.TimesTold("OnUIActivate"), 1) << at;
    EXPECT_EQ(form.TimesTold("SetActiveObject"), 1) << at;
}

TEST_F(PartingTest, a_container_that_deactivates_while_the_interface_is_taken_gets_no_active_object) {
    ExpectInterfaceTakenAnew("OnUIActivate");
    ExpectInterfaceTakenAnew("OnFocus(true)");
}

}  // namespace
}  // namespace orvane::test
