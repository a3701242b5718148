// The control drawn with a window, without one, into metafiles, and handed out as data.
#include "hosts/ocx/form_window.h"
#include "tests/ocx/canvas.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

class DrawTest : public ComTest {
protected:
    static void MakeMap(Client& control) {
        control.MakeTriangle();
        EXPECT_TRUE(control.Call(L"OrvAddLayer", {L"L", 3, 2, 0}).Bool());
        EXPECT_TRUE(control.Call(L"OrvAddDatEx", {L"L", 3, 1, 0, Doubles({0, 100}), Doubles({0, 100}), Doubles({0, 0})}).Bool());
        EXPECT_TRUE(control.Call(L"OrvSetLayColor", {L"L", 0x0000FF}).Bool());  // red
    }
    /// The map in all of the picture.
    static void DrawFitted(Client& control, Canvas& canvas) {
        const RECTL whole{0, 0, canvas.width, canvas.height};
        EXPECT_EQ(Draw(control, canvas, whole), S_OK);
        control.Call(L"OrvDspFit");
        EXPECT_EQ(Draw(control, canvas, whole), S_OK);
    }
    /// The same outline, whose pixels a player may place a little differently.
    static void ExpectAlike(const Canvas& played, const Canvas& direct) {
        EXPECT_GT(played.CountOf(kRed), 50);
        EXPECT_NEAR(played.CountOf(kRed), direct.CountOf(kRed), direct.CountOf(kRed) / 4);
    }
    static HRESULT Draw(Client& control, Canvas& canvas, const RECTL& bounds) {
        const Deadline deadline("drawing");
        return control.As<IViewObject>(IID_IViewObject)
            ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0);
    }
};

TEST_F(DrawTest, before_any_init_the_bounds_are_white_and_nothing_else) {
    Client control = Client::New();
    Canvas canvas(100, 80);
    EXPECT_EQ(Draw(control, canvas, {10, 20, 60, 70}), S_OK);
    EXPECT_EQ(canvas.At(10, 20), kWhite);
    EXPECT_EQ(canvas.At(59, 69), kWhite);
    EXPECT_EQ(canvas.At(60, 69), kBackground);
    EXPECT_EQ(canvas.At(9, 20), kBackground);
    EXPECT_EQ(canvas.CountOf(kWhite), 50 * 50);
}

TEST_F(DrawTest, bad_requests_are_refused) {
    Client control = Client::New();
    const Com<IViewObject> view = control.As<IViewObject>(IID_IViewObject);
    const RECTL bounds{0, 0, 10, 10};
    EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, nullptr, &bounds, nullptr, nullptr, 0), DV_E_DVASPECT);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, 5, nullptr, nullptr, nullptr, nullptr, &bounds, nullptr, nullptr, 0), DV_E_LINDEX);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, &bounds, nullptr, nullptr, 0), E_INVALIDARG);
    Canvas canvas(10, 10);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, nullptr, nullptr, nullptr, 0), E_INVALIDARG);
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, 0, nullptr), S_OK);
}

TEST_F(DrawTest, a_map_is_drawn_without_a_window) {
    Client control = Client::New();
    MakeMap(control);
    Canvas canvas(320, 240);
    DrawFitted(control, canvas);
    EXPECT_EQ(canvas.CountOf(kBackground), 0);
    EXPECT_GT(canvas.CountOf(kRed), 50) << "the outline is red";
    EXPECT_GT(canvas.CountOf(kWhite), 1000);
}

TEST_F(DrawTest, at_design_time_it_draws_the_same_map_and_makes_no_window) {
    Canvas running(320, 240);
    Canvas designed(320, 240);
    Container form;
    for (const bool userMode : {true, false}) {
        form.userMode = userMode;
        EXPECT_EQ(form.control.As<IOleControl>(IID_IOleControl)->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE), S_OK);
        MakeMap(form.control);
        DrawFitted(form.control, userMode ? running : designed);
    }
    EXPECT_EQ(form.ControlWindow(), nullptr);
    EXPECT_FALSE(form.WasTold("OnInPlaceActivate"));
    EXPECT_GT(designed.CountOf(kRed), 50);
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 320; ++x) ASSERT_EQ(designed.At(x, y), running.At(x, y)) << x << " " << y;
    }
}

TEST_F(DrawTest, the_context_keeps_its_own_state_and_the_rest_of_its_picture) {
    Client control = Client::New();
    MakeMap(control);
    Canvas canvas(400, 300);
    SetMapMode(canvas.dc, MM_ANISOTROPIC);
    SetViewportOrgEx(canvas.dc, 30, 20, nullptr);
    EXPECT_EQ(Draw(control, canvas, {0, 0, 320, 240}), S_OK);
    POINT corner{};
    GetViewportOrgEx(canvas.dc, &corner);
    EXPECT_EQ(corner.x, 30);
    EXPECT_EQ(GetMapMode(canvas.dc), MM_ANISOTROPIC);
    EXPECT_EQ(canvas.At(29, 100), kBackground);
    EXPECT_EQ(canvas.At(31, 21), kWhite);
    EXPECT_EQ(canvas.At(351, 100), kBackground);
    Canvas direct(320, 240);
    EXPECT_EQ(Draw(control, direct, {0, 0, 320, 240}), S_OK);
    int different = 0;
    for (int y = 1; y < 240; ++y) {  // the rim is not copied from the composed picture
        for (int x = 1; x < 320; ++x) different += canvas.At(30 + x, 20 + y) != direct.At(x, y) ? 1 : 0;
    }
    EXPECT_EQ(different, 0);
}

TEST_F(DrawTest, other_bounds_stretch_the_picture) {
    Client control = Client::New();
    Canvas canvas(200, 200);
    EXPECT_EQ(Draw(control, canvas, {100, 100, 200, 150}), S_OK);
    EXPECT_EQ(canvas.CountOf(kWhite), 100 * 50);
}

TEST_F(DrawTest, with_a_window_the_screen_shows_the_same_map) {
    Container form(320, 240);
    ASSERT_EQ(form.Activate(), S_OK);
    MakeMap(form.control);
    Pump(50);
    form.control.Call(L"OrvDspFit");
    Pump(50);
    Canvas screen(320, 240);
    const HDC window = ::GetDC(form.ControlWindow());
    BitBlt(screen.dc, 0, 0, 320, 240, window, 0, 0, SRCCOPY);
    ReleaseDC(form.ControlWindow(), window);
    EXPECT_GT(screen.CountOf(kRed), 50);
    Canvas canvas(320, 240);
    EXPECT_EQ(Draw(form.control, canvas, {0, 0, 320, 240}), S_OK);
    EXPECT_EQ(canvas.CountOf(kRed), screen.CountOf(kRed));
}

TEST_F(DrawTest, a_window_that_grows_shows_the_whole_map_anew) {
    Container form(320, 240);
    form.place = {0, 0, 100, 80};
    ASSERT_EQ(form.Activate(), S_OK);
    MakeMap(form.control);
    Pump(50);
    form.Resize(320, 240);
    Pump(50);
    form.control.Call(L"OrvDspFit");
    Pump(50);
    Canvas screen(320, 240);
    const HDC window = ::GetDC(form.ControlWindow());
    BitBlt(screen.dc, 0, 0, 320, 240, window, 0, 0, SRCCOPY);
    ReleaseDC(form.ControlWindow(), window);
    EXPECT_EQ(screen.At(319, 239), kWhite);
    EXPECT_GT(screen.CountOf(kRed), 50);
}

TEST_F(DrawTest, an_enhanced_metafile_plays_the_same_picture) {
    Client control = Client::New();
    MakeMap(control);
    Canvas direct(320, 240);
    DrawFitted(control, direct);
    FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
    STGMEDIUM medium{};
    const Com<IDataObject> data = control.As<IDataObject>(IID_IDataObject);
    ASSERT_EQ(data->QueryGetData(&format), S_OK);
    ASSERT_EQ(data->GetData(&format, &medium), S_OK);
    Canvas played(320, 240);
    const RECT whole{0, 0, 320, 240};
    EXPECT_TRUE(PlayEnhMetaFile(played.dc, medium.hEnhMetaFile, &whole));
    ReleaseStgMedium(&medium);
    ExpectAlike(played, direct);
}

TEST_F(DrawTest, a_page_of_a_metafile_device_takes_the_control_where_it_is_told) {
    Client control = Client::New();
    MakeMap(control);
    const HDC page = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(OleDraw(control.Get(), DVASPECT_CONTENT, page, std::initializer_list<RECT>{{40, 30, 360, 270}}.begin()), S_OK);
    const HENHMETAFILE file = CloseEnhMetaFile(page);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(file, sizeof header, &header);
    // Played where its frame says, each pixel stands where it was drawn.
    const auto pixel = [](LONG frame, LONG device, LONG mm) { return MulDiv(frame, device, mm * 100); };
    const RECT where{pixel(header.rclFrame.left, header.szlDevice.cx, header.szlMillimeters.cx),
                     pixel(header.rclFrame.top, header.szlDevice.cy, header.szlMillimeters.cy),
                     pixel(header.rclFrame.right, header.szlDevice.cx, header.szlMillimeters.cx),
                     pixel(header.rclFrame.bottom, header.szlDevice.cy, header.szlMillimeters.cy)};
    Canvas played(400, 300);
    EXPECT_TRUE(PlayEnhMetaFile(played.dc, file, &where));
    DeleteEnhMetaFile(file);
    EXPECT_EQ(played.At(44, 34), kWhite);
    EXPECT_EQ(played.At(355, 265), kWhite);
    EXPECT_EQ(played.At(36, 150), kBackground);
    EXPECT_EQ(played.At(364, 150), kBackground);
    EXPECT_EQ(played.At(200, 274), kBackground);
}

TEST_F(DrawTest, an_old_metafile_and_a_bitmap_are_handed_out_too) {
    Client control = Client::New();
    const Com<IDataObject> data = control.As<IDataObject>(IID_IDataObject);
    FORMATETC format{CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
    STGMEDIUM medium{};
    ASSERT_EQ(data->GetData(&format, &medium), S_OK);
    const auto* const picture = static_cast<const METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
    EXPECT_EQ(picture->mm, MM_ANISOTROPIC);
    EXPECT_NEAR(picture->xExt, 8467, 30);
    Canvas played(100, 50);
    SetMapMode(played.dc, MM_ANISOTROPIC);
    SetViewportExtEx(played.dc, 100, 50, nullptr);
    PlayMetaFile(played.dc, picture->hMF);
    GlobalUnlock(medium.hMetaFilePict);
    ReleaseStgMedium(&medium);
    EXPECT_EQ(played.CountOf(kWhite), 100 * 50) << "the whole picture, white before any init";

    format.cfFormat = CF_BITMAP;
    EXPECT_EQ(data->GetData(&format, &medium), DV_E_TYMED);
    format.tymed = TYMED_GDI;
    ASSERT_EQ(data->GetData(&format, &medium), S_OK);
    BITMAP facts{};
    EXPECT_NE(GetObjectW(medium.hBitmap, sizeof facts, &facts), 0);
    EXPECT_EQ(facts.bmWidth, 320);
    EXPECT_EQ(facts.bmHeight, 240);
    ReleaseStgMedium(&medium);
    format.cfFormat = CF_TEXT;
    EXPECT_EQ(data->GetData(&format, &medium), DV_E_FORMATETC);
    EXPECT_EQ(data->GetData(&format, nullptr), E_POINTER);
    Com<IEnumFORMATETC> formats;
    ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.Out()), S_OK);
    FORMATETC each[4];
    ULONG count = 0;
    EXPECT_EQ(formats->Next(4, each, &count), S_FALSE);
    EXPECT_EQ(count, 3U);
}

TEST_F(DrawTest, a_new_size_without_a_window_shows_the_map_in_all_of_it) {
    Client control = Client::New();
    MakeMap(control);
    const Value points = Doubles({-1000, 1000});
    EXPECT_TRUE(control.Call(L"OrvAddDatEx", {L"L", 3, 2, 0, points, Doubles({1000, -1000}), Doubles({0, 0})}).Bool());
    Canvas shown(640, 480);
    Draw(control, shown, {0, 0, 320, 240});
    control.Put(L"Zoom", 2000);
    control.Call(L"OrvMapJumpToXY", {0.0, 0.0});
    SIZEL size{16933, 12700};  // twice as large
    EXPECT_EQ(control.As<IOleObject>(IID_IOleObject)->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(Draw(control, shown, {0, 0, 640, 480}), S_OK);
    int below = 0;
    for (int y = 245; y < 475; ++y) {
        for (int x = 0; x < 640; ++x) below += shown.At(x, y) == kRed ? 1 : 0;
    }
    EXPECT_GT(below, 100) << "the line goes on where there was no room before";
}

TEST_F(DrawTest, an_old_metafile_plays_the_map) {
    Client control = Client::New();
    MakeMap(control);
    Canvas direct(320, 240);
    DrawFitted(control, direct);
    FORMATETC format{CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
    STGMEDIUM medium{};
    ASSERT_EQ(control.As<IDataObject>(IID_IDataObject)->GetData(&format, &medium), S_OK);
    const auto* const picture = static_cast<const METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
    Canvas played(320, 240);
    SetMapMode(played.dc, MM_ANISOTROPIC);
    SetViewportExtEx(played.dc, 320, 240, nullptr);
    PlayMetaFile(played.dc, picture->hMF);
    GlobalUnlock(medium.hMetaFilePict);
    ReleaseStgMedium(&medium);
    ExpectAlike(played, direct);
}

TEST_F(DrawTest, a_second_init_brings_an_empty_map_into_the_buffers_that_are_there) {
    Container form(320, 240);
    ASSERT_EQ(form.Activate(), S_OK);
    MakeMap(form.control);
    Pump(50);
    form.control.Call(L"OrvDspFit");
    const int handle = form.control.Get(L"GetDC").Int();
    EXPECT_TRUE(form.control.Call(L"RDMInit", {L""}).Bool());
    EXPECT_EQ(form.control.Get(L"GetDC").Int(), handle);
    Pump(50);
    Canvas shown(320, 240);
    EXPECT_EQ(Draw(form.control, shown, {0, 0, 320, 240}), S_OK);
    EXPECT_EQ(shown.CountOf(kRed), 0);
    EXPECT_EQ(form.control.Call(L"OrvGetLayDatCnt", {L"L", 3}).Int(), 0);
    EXPECT_TRUE(form.control.Call(L"RDMInit", {L"123"}).Bool()) << "any code serves";
}

TEST_F(DrawTest, after_term_the_map_is_drawn_as_before) {
    Client control = Client::New();
    MakeMap(control);
    Canvas shown(320, 240);
    Draw(control, shown, {0, 0, 320, 240});
    control.Call(L"OrvDspFit");
    control.Call(L"OrvTerm");
    control.Call(L"OrvReDraw");
    EXPECT_EQ(Draw(control, shown, {0, 0, 320, 240}), S_OK);
    EXPECT_GT(shown.CountOf(kRed), 50);
}

/// Draws into logical bounds of a context with a transformation of the container's, and looks where that is on the picture.
void ExpectWhiteThrough(const XFORM& transformation, const RECTL& bounds, const RECT& wanted) {
    Client control = Client::New();
    Canvas canvas(200, 200);
    const int saved = SaveDC(canvas.dc);
    SetGraphicsMode(canvas.dc, GM_ADVANCED);
    ASSERT_TRUE(SetWorldTransform(canvas.dc, &transformation));
    EXPECT_EQ(control.As<IViewObject>(IID_IViewObject)
                  ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0),
              S_OK);
    XFORM after{};
    EXPECT_TRUE(GetWorldTransform(canvas.dc, &after));
    EXPECT_EQ(after.eM11, transformation.eM11) << "the container's own is there again";
    EXPECT_EQ(after.eDx, transformation.eDx);
    RestoreDC(canvas.dc, saved);
    EXPECT_EQ(canvas.At(wanted.left, wanted.top), kWhite);
    EXPECT_EQ(canvas.At(wanted.right - 1, wanted.bottom - 1), kWhite);
    EXPECT_EQ(canvas.CountOf(kWhite), (wanted.right - wanted.left) * (wanted.bottom - wanted.top));
}

TEST_F(DrawTest, a_transformation_of_the_container_is_gone_through_once) {
    ExpectWhiteThrough({2, 0, 0, 2, 0, 0}, {10, 20, 60, 70}, {20, 40, 120, 140});
    ExpectWhiteThrough({1, 0, 0, 1, 50, 60}, {10, 20, 60, 70}, {60, 80, 110, 130});
    const SIZE own = PixelsOf({8467, 6350});
    ExpectWhiteThrough({0.5F, 0, 0, 0.5F, 3, 5}, {0, 0, 2 * (own.cx / 4), 2 * (own.cy / 4)},
                       {3, 5, 3 + own.cx / 4, 5 + own.cy / 4});
}

TEST_F(DrawTest, only_what_there_is_to_tell_of_can_be_listened_to) {
    Container form;
    const Com<IDataObject> data = form.control.As<IDataObject>(IID_IDataObject);
    FORMATETC format{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    FORMATETC text{CF_TEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    FORMATETC any{0, nullptr, static_cast<DWORD>(-1), -1, static_cast<DWORD>(-1)};
    DWORD cookie = 7;
    EXPECT_EQ(data->DAdvise(&text, 0, &form, &cookie), DV_E_FORMATETC);
    EXPECT_EQ(cookie, 0U);
    EXPECT_EQ(data->DAdvise(nullptr, 0, &form, &cookie), E_POINTER);
    EXPECT_EQ(data->DAdvise(&format, 0, nullptr, &cookie), E_POINTER);
    EXPECT_EQ(data->DAdvise(&format, 0, &form, nullptr), E_POINTER);
    EXPECT_EQ(form.References(), 2U) << "as the site, and nowhere else";
    EXPECT_EQ(data->DAdvise(&any, ADVF_NODATA, &form, &cookie), S_OK) << "any format may be asked for at once";
    form.control.Call(L"Refresh");
    EXPECT_TRUE(form.WasTold("OnDataChange"));
    EXPECT_EQ(data->DUnadvise(cookie), S_OK);
}

TEST_F(DrawTest, whoever_looks_at_it_without_a_window_hears_of_changes) {
    Container form;
    form.control.As<IViewObject>(IID_IViewObject)->SetAdvise(DVASPECT_CONTENT, 0, &form);
    FORMATETC format{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    DWORD cookie = 0;
    const Com<IDataObject> data = form.control.As<IDataObject>(IID_IDataObject);
    EXPECT_EQ(data->DAdvise(&format, ADVF_NODATA, &form, &cookie), S_OK);
    form.control.Call(L"Refresh");
    EXPECT_TRUE(form.WasTold("OnViewChange"));
    EXPECT_TRUE(form.WasTold("OnDataChange"));
    EXPECT_EQ(data->DUnadvise(cookie), S_OK);
    form.control.As<IViewObject>(IID_IViewObject)->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
}

TEST_F(DrawTest, the_stock_methods_ask_for_a_paint_and_show_nothing) {
    Container form(320, 240);
    ASSERT_EQ(form.Activate(), S_OK);
    MakeMap(form.control);
    Pump(50);
    const HWND window = form.ControlWindow();
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    form.control.Call(L"AboutBox");
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    form.control.Call(L"Refresh");
    RECT asked{};
    EXPECT_TRUE(GetUpdateRect(window, &asked, FALSE));
    EXPECT_EQ(asked.right, 320);
    EXPECT_EQ(asked.bottom, 240);
    EXPECT_EQ(form.control.Call(L"OrvGetLayDatCnt", {L"L", 3}).Int(), 1);
}

TEST_F(DrawTest, a_container_asks_what_is_hit) {
    Client control = Client::New();
    const Com<IViewObjectEx> view = control.As<IViewObjectEx>(IID_IViewObjectEx);
    const RECT bounds{10, 20, 110, 70};
    DWORD hit = 99;
    for (const auto& [at, wanted] : {std::pair{POINT{10, 20}, HITRESULT_HIT},
                                     {POINT{109, 69}, HITRESULT_HIT},
                                     {POINT{110, 69}, HITRESULT_OUTSIDE},
                                     {POINT{9, 20}, HITRESULT_OUTSIDE}}) {
        EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, at, 0, &hit), S_OK);
        EXPECT_EQ(hit, static_cast<DWORD>(wanted)) << at.x;
    }
    const RECT touching{100, 60, 300, 300};
    const RECT beside{110, 20, 120, 70};
    EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &touching, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
    EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &beside, 0, &hit), S_OK);
    EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_OUTSIDE));
    EXPECT_EQ(view->QueryHitPoint(DVASPECT_ICON, &bounds, POINT{}, 0, &hit), DV_E_DVASPECT);
    EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, nullptr, &beside, 0, &hit), E_POINTER);
    LOGPALETTE* palette = nullptr;
    EXPECT_EQ(view->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, &palette), S_FALSE);
    EXPECT_EQ(palette, nullptr);
}

TEST_F(DrawTest, the_device_context_of_the_map_and_a_context_of_the_host_cross_as_numbers) {
    Container form(320, 240);
    EXPECT_EQ(form.control.Get(L"GetDC").Int(), 0);
    ASSERT_EQ(form.Activate(), S_OK);
    MakeMap(form.control);
    Pump(50);
    form.control.Call(L"OrvDspFit");
    const auto base = reinterpret_cast<HDC>(static_cast<LONG_PTR>(form.control.Get(L"GetDC").Int()));
    ASSERT_EQ(GetObjectType(base), static_cast<DWORD>(OBJ_MEMDC));
    Canvas copy(320, 240);
    BitBlt(copy.dc, 0, 0, 320, 240, base, 0, 0, SRCCOPY);
    EXPECT_GT(copy.CountOf(kRed), 50);
    Canvas own(320, 240);
    const int handle = static_cast<int>(reinterpret_cast<LONG_PTR>(own.dc));
    form.control.Call(L"OrvUserDcDrawEx", {handle, 0, 0, 240, 320, 50.0, 50.0, 2000, 0});
    EXPECT_GT(own.CountOf(kRed), 50);
    form.control.Call(L"OrvUserDcDrawEx", {12345, 0, 0, 240, 320, 50.0, 50.0, 2000, 0});  // no context of anybody's
}

}  // namespace
}  // namespace orvane::test
