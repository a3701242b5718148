// Who hears of what: of a new picture, a new size, a property that changed.
#include <limits>

#include "hosts/ocx/form_window.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

class NoticeTest : public ComTest {
protected:
    Container form{400, 300};
    DWORD cookie_ = 0;

    /// Looks at the view and at the data.
    void Look() {
        FORMATETC format{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
        EXPECT_EQ(View()->SetAdvise(DVASPECT_CONTENT, 0, &form), S_OK);
        EXPECT_EQ(Data()->DAdvise(&format, ADVF_NODATA, &form, &cookie_), S_OK);
    }
    void TearDown() override {
        View()->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
        if (cookie_ != 0) Data()->DUnadvise(cookie_);
    }
    /// Draws it once, as a container does that shows it without a window.
    void Paint() {
        const HDC dc = CreateCompatibleDC(nullptr);
        const RECTL bounds{0, 0, 320, 240};
        EXPECT_EQ(View()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0), S_OK);
        DeleteDC(dc);
    }
    Com<IViewObject> View() { return form.control.As<IViewObject>(IID_IViewObject); }
    Com<IDataObject> Data() { return form.control.As<IDataObject>(IID_IDataObject); }
    Com<IOleObject> Object() { return form.control.As<IOleObject>(IID_IOleObject); }
    SIZEL Extent() {
        SIZEL size{};
        Object()->GetExtent(DVASPECT_CONTENT, &size);
        return size;
    }
    bool IsDirty() { return form.control.As<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty() == S_OK; }
    void ExpectToldOnce(const char* what) {
        EXPECT_EQ(form.TimesTold("OnViewChange"), 1) << what;
        EXPECT_EQ(form.TimesTold("OnDataChange"), 1) << what;
        form.told.clear();
    }
};

TEST_F(NoticeTest, a_picture_that_is_composed_without_a_window_is_told_once_a_call) {
    form.control.MakeTriangle();
    Paint();
    Look();
    form.control.Call(L"OrvReDraw");
    ExpectToldOnce("OrvReDraw");
    form.control.Call(L"OrvDspFit");
    ExpectToldOnce("OrvDspFit");
    form.control.Call(L"OrvMapJumpToXY", {10.0, 10.0});
    ExpectToldOnce("OrvMapJumpToXY");
    form.control.Call(L"Refresh");
    ExpectToldOnce("Refresh");
    form.control.Get(L"Zoom");
    form.control.Put(L"Zoom", 3000);  // no setter redraws
    Paint();
    EXPECT_EQ(form.told, std::vector<std::string>()) << "neither a question nor a look is a new picture";
}

TEST_F(NoticeTest, an_active_control_tells_it_too) {
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(20);
    Look();
    form.told.clear();
    form.control.Call(L"OrvReDraw");
    ExpectToldOnce("OrvReDraw");
    POINT screen{100, 100};
    ClientToScreen(form.ControlWindow(), &screen);
    form.Mouse(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), screen.x, screen.y);
    ExpectToldOnce("the wheel");
    form.Resize(200, 100);
    ExpectToldOnce("another size");
}

TEST_F(NoticeTest, a_listener_may_compose_the_picture_again) {
    form.control.MakeTriangle();
    Paint();
    Look();
    form.onTold = [&](const std::string& word) {
        if (word == "OnViewChange") form.control.Call(L"OrvReDraw");
    };
    form.control.Call(L"OrvReDraw");
    EXPECT_EQ(form.TimesTold("OnViewChange"), 1);
    form.onTold = nullptr;
}

TEST_F(NoticeTest, the_view_is_told_by_the_aspects_that_were_asked_for) {
    View()->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
    EXPECT_EQ(View()->SetAdvise(DVASPECT_ICON, 0, &form), DV_E_DVASPECT);
    form.control.Call(L"Refresh");
    EXPECT_TRUE(form.aspects.empty());
    View()->SetAdvise(DVASPECT_OPAQUE, 0, &form);
    form.control.Call(L"Refresh");
    EXPECT_EQ(form.aspects, std::vector<DWORD>{DVASPECT_OPAQUE});
    form.aspects.clear();
    View()->SetAdvise(DWORD{DVASPECT_CONTENT} | DWORD{DVASPECT_OPAQUE} | DWORD{DVASPECT_ICON}, ADVF_ONLYONCE, &form);
    form.control.Call(L"Refresh");
    form.control.Call(L"Refresh");
    EXPECT_EQ(form.aspects, (std::vector<DWORD>{DVASPECT_CONTENT, DVASPECT_OPAQUE}));
}

TEST_F(NoticeTest, a_new_size_without_a_window_composes_the_map_for_it) {
    form.control.MakeTriangle();
    Paint();
    form.control.As<IPersistStreamInit>(IID_IPersistStreamInit)->InitNew();
    ASSERT_FALSE(IsDirty());
    Look();
    SIZEL size{5000, 4000};
    EXPECT_EQ(Object()->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    ExpectToldOnce("SetExtent");
    EXPECT_TRUE(IsDirty()) << "the size is kept with the form";
    EXPECT_EQ(Object()->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(form.told, std::vector<std::string>()) << "the same size again is no news";
}

TEST_F(NoticeTest, a_new_size_of_an_active_control_is_a_wish_to_the_container) {
    form.place = {10, 20, 210, 170};
    ASSERT_EQ(form.Activate(), S_OK);
    Look();
    form.told.clear();
    SIZEL size = HimetricOf({120, 80});
    EXPECT_EQ(Object()->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(form.TimesTold("OnPosRectChange"), 1);
    EXPECT_EQ(form.place.left, 10);
    EXPECT_EQ(form.place.right, 130);
    EXPECT_EQ(form.place.bottom, 100);
    RECT client{};
    GetClientRect(form.ControlWindow(), &client);
    EXPECT_EQ(client.right, 120);
    EXPECT_EQ(form.TimesTold("OnViewChange"), 1);
    EXPECT_EQ(Extent().cx, size.cx);
}

TEST_F(NoticeTest, the_extent_follows_the_window) {
    ASSERT_EQ(form.Activate(), S_OK);
    form.Resize(192, 96);
    EXPECT_EQ(Extent().cx, HimetricOf({192, 96}).cx);
    EXPECT_EQ(Extent().cy, HimetricOf({192, 96}).cy);
    EXPECT_TRUE(IsDirty());
    SIZEL size = HimetricOf({192, 96});
    size.cx += 3;  // the same pixels
    EXPECT_EQ(Object()->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    form.Resize(192, 96);
    EXPECT_EQ(Extent().cx, size.cx) << "the same pixels change nothing";
    const RECT wrong{0, 0, (std::numeric_limits<LONG>::max)(), -5};
    EXPECT_EQ(form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->SetObjectRects(&wrong, nullptr), S_OK);
    EXPECT_GE(Extent().cx, 0);
    EXPECT_EQ(Extent().cy, 0);
}

TEST_F(NoticeTest, a_metafile_is_measured_by_the_true_size_of_its_device) {
    // 1920 pixels on 480 mm are a quarter of a millimetre each, whatever the dots an inch.
    const SIZEL frame = FrameOf({400, 300}, {1920, 1080}, {480, 270});
    EXPECT_EQ(frame.cx, 10000);
    EXPECT_EQ(frame.cy, 7500);
    EXPECT_EQ(FrameOf({1, 1}, {0, 0}, {0, 0}).cx, 100) << "a device without a size";
    FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
    STGMEDIUM medium{};
    ASSERT_EQ(Data()->GetData(&format, &medium), S_OK);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(medium.hEnhMetaFile, sizeof header, &header);
    const double width_px = (header.rclFrame.right - header.rclFrame.left) * static_cast<double>(header.szlDevice.cx) /
                            (header.szlMillimeters.cx * 100.0);
    EXPECT_NEAR(width_px, 320, 1);
    ReleaseStgMedium(&medium);
}

TEST_F(NoticeTest, properties_that_keep_nothing_are_not_told) {
    form.Connect();
    form.control.Put(L"MemHandle", 5);
    form.control.Put(L"MemCnt", 5);
    EXPECT_EQ(form.listener.changes, std::vector<DISPID>());
}

TEST_F(NoticeTest, one_value_under_two_names_is_told_under_both) {
    form.Connect();
    form.control.Put(L"StrVisible", true);
    EXPECT_EQ(form.listener.changes, (std::vector<DISPID>{23, 22}));
    form.listener.changes.clear();
    form.control.Put(L"DigStrVisible", false);
    EXPECT_EQ(form.listener.changes, (std::vector<DISPID>{22, 23}));
}

TEST_F(NoticeTest, an_init_that_brings_the_scale_back_tells_it) {
    form.Connect();
    form.control.Call(L"OrvInit");
    form.control.Put(L"Zoom", 500);
    form.listener.changes.clear();
    form.listener.events.clear();
    form.control.Call(L"OrvInit");
    EXPECT_EQ(form.listener.changes, std::vector<DISPID>{8});
    EXPECT_EQ(form.listener.Names(), std::vector<std::string>()) << "an init is no zoom";
    form.control.Call(L"OrvInit");
    EXPECT_EQ(form.listener.changes.size(), 1U) << "and a second one changes nothing";
}

TEST_F(NoticeTest, a_write_that_does_not_convert_changes_and_tells_nothing) {
    form.Connect();
    form.control.Call(L"OrvInit");
    form.listener.changes.clear();
    EXPECT_EQ(form.control.Try(L"Zoom", DISPATCH_PROPERTYPUT, {L"\xe9"}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(form.control.Try(L"Zoom", DISPATCH_PROPERTYPUT, {L"no number"}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(form.control.Try(L"Zoom", DISPATCH_PROPERTYPUT, {1e20}), DISP_E_OVERFLOW);
    EXPECT_EQ(form.control.Try(L"ScaleBarMode", DISPATCH_PROPERTYPUT, {40000}), DISP_E_OVERFLOW);
    EXPECT_EQ(form.control.Get(L"Zoom").Int(), 10000);
    EXPECT_EQ(form.listener.changes, std::vector<DISPID>());
}

TEST_F(NoticeTest, the_frame_takes_no_input_while_a_message_is_open) {
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.Call(L"OrvInit");
    form.told.clear();
    {
        const BoxCloser closer;
        form.control.Call(L"OrvGetFreeDatID", {L"no layer", 1, 0});
    }
    EXPECT_EQ(form.told, (std::vector<std::string>{"EnableModeless(false)", "EnableModeless(true)"}));
}

TEST_F(NoticeTest, a_form_that_closes_under_a_message_gets_its_frame_back) {
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.Call(L"OrvInit");
    form.told.clear();
    form.onTold = [&](const std::string& word) {
        if (word == "EnableModeless(false)") Object()->Close(OLECLOSE_NOSAVE);
    };
    {
        const BoxCloser closer;
        form.control.Call(L"OrvGetFreeDatID", {L"no layer", 1, 0});
    }
    EXPECT_EQ(form.TimesTold("EnableModeless(true)"), 1);
    form.onTold = nullptr;
}

}  // namespace
}  // namespace orvane::test
