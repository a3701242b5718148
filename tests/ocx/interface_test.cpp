// What a container asks seldom: who is connected, what is not offered, enumerations walked in other ways than from front to back.
#include <array>

#include "hosts/ocx/guids.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

class InterfaceTest : public ComTest {
protected:
    Com<IOleObject> Object() { return form.control.As<IOleObject>(IID_IOleObject); }
    Com<IDataObject> Data() { return form.control.As<IDataObject>(IID_IDataObject); }
    Com<IViewObjectEx> View() { return form.control.As<IViewObjectEx>(IID_IViewObjectEx); }

    Container form{320, 240};
};

/// How many listeners an enumeration of COM's own tells, and that each is the form.
int CountOfForm(IEnumSTATDATA* listeners, const Container& form) {
    int count = 0;
    STATDATA each{};
    while (listeners != nullptr && listeners->Next(1, &each, nullptr) == S_OK) {
        EXPECT_EQ(each.pAdvSink, static_cast<const IAdviseSink*>(&form));
        each.pAdvSink->Release();
        ++count;
    }
    return count;
}

TEST_F(InterfaceTest, whoever_looks_at_the_view_is_told_back) {
    DWORD aspects = 7;
    DWORD flags = 7;
    Com<IAdviseSink> sink;
    EXPECT_EQ(View()->GetAdvise(&aspects, &flags, sink.Out()), S_OK);
    EXPECT_FALSE(sink);
    EXPECT_EQ(View()->SetAdvise(DVASPECT_OPAQUE, ADVF_ONLYONCE, &form), S_OK);
    EXPECT_EQ(View()->GetAdvise(&aspects, &flags, sink.Out()), S_OK);
    EXPECT_EQ(aspects, static_cast<DWORD>(DVASPECT_OPAQUE));
    EXPECT_EQ(flags, static_cast<DWORD>(ADVF_ONLYONCE));
    EXPECT_EQ(sink.Get(), static_cast<IAdviseSink*>(&form));
    EXPECT_EQ(View()->GetAdvise(nullptr, nullptr, nullptr), S_OK) << "each of the three may be left out";
    EXPECT_EQ(View()->SetAdvise(0, 0, nullptr), S_OK);
    EXPECT_EQ(View()->GetAdvise(nullptr, nullptr, sink.Out()), S_OK);
    EXPECT_FALSE(sink);
}

TEST_F(InterfaceTest, listeners_to_the_data_and_to_the_end_can_be_counted) {
    Com<IEnumSTATDATA> listeners;
    EXPECT_EQ(Data()->EnumDAdvise(listeners.Out()), S_OK);
    EXPECT_FALSE(listeners) << "none yet";
    EXPECT_EQ(Object()->EnumAdvise(listeners.Out()), S_OK);
    EXPECT_FALSE(listeners);
    EXPECT_EQ(Data()->EnumDAdvise(nullptr), E_POINTER);
    EXPECT_EQ(Object()->EnumAdvise(nullptr), E_POINTER);
    EXPECT_EQ(Data()->DUnadvise(1), OLE_E_NOCONNECTION);
    EXPECT_EQ(Object()->Unadvise(1), OLE_E_NOCONNECTION);
    FORMATETC format{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    DWORD data = 0;
    DWORD end = 0;
    ASSERT_EQ(Data()->DAdvise(&format, ADVF_NODATA, &form, &data), S_OK);
    ASSERT_EQ(Object()->Advise(&form, &end), S_OK);
    EXPECT_EQ(Data()->EnumDAdvise(listeners.Out()), S_OK);
    EXPECT_EQ(CountOfForm(listeners.Get(), form), 1);
    EXPECT_EQ(Object()->EnumAdvise(listeners.Out()), S_OK);
    EXPECT_EQ(CountOfForm(listeners.Get(), form), 1);
    listeners.Reset();
    EXPECT_EQ(Data()->DUnadvise(data), S_OK);
    EXPECT_EQ(Object()->Unadvise(end), S_OK);
    EXPECT_EQ(form.References(), 2U) << "as the site, and nowhere else";
}

TEST_F(InterfaceTest, the_site_is_told_back_and_asked_for_names) {
    Com<IOleClientSite> site;
    EXPECT_EQ(Object()->GetClientSite(site.Out()), S_OK);
    EXPECT_EQ(site.Get(), static_cast<IOleClientSite*>(&form));
    Com<IMoniker> moniker;
    EXPECT_EQ(Object()->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, moniker.Out()), E_NOTIMPL)
        << "the site's answer";
    EXPECT_EQ(Object()->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, nullptr), E_POINTER);
    EXPECT_EQ(Object()->SetHostNames(L"program", L"document"), S_OK);
    EXPECT_EQ(Object()->SetClientSite(nullptr), S_OK);
    EXPECT_EQ(Object()->GetClientSite(site.Out()), S_OK);
    EXPECT_FALSE(site);
    EXPECT_EQ(Object()->GetClientSite(nullptr), E_POINTER);
    EXPECT_EQ(Object()->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, moniker.Out()), E_UNEXPECTED);
    EXPECT_EQ(form.Activate(), E_FAIL) << "without a site there is no place for a window";
}

TEST_F(InterfaceTest, what_goes_to_the_clipboard_is_the_data_object_itself) {
    Com<IDataObject> copied;
    ASSERT_EQ(Object()->GetClipboardData(0, copied.Out()), S_OK);
    EXPECT_EQ(copied.Get(), Data().Get());
    EXPECT_EQ(Object()->GetClipboardData(0, nullptr), E_POINTER);
}

TEST_F(InterfaceTest, one_class_is_told_everywhere) {
    const CLSID own = ToGuid(kControlGuid);
    CLSID told{};
    EXPECT_EQ(Object()->GetUserClassID(&told), S_OK);
    EXPECT_EQ(told, own);
    for (const IID& iid : {IID_IPersistStreamInit, IID_IPersistStorage, IID_IPersistPropertyBag}) {
        told = CLSID{};
        EXPECT_EQ(form.control.As<IPersist>(iid)->GetClassID(&told), S_OK);
        EXPECT_EQ(told, own);
    }
    EXPECT_EQ(form.control.As<IPersist>(IID_IPersist)->GetClassID(nullptr), E_POINTER);
}

TEST_F(InterfaceTest, a_save_is_as_long_as_it_is_told_to_be) {
    const Com<IPersistStreamInit> persist = form.control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    ULARGE_INTEGER most{};
    EXPECT_EQ(persist->GetSizeMax(&most), S_OK);
    EXPECT_EQ(persist->GetSizeMax(nullptr), E_POINTER);
    Com<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()), S_OK);
    ASSERT_EQ(persist->Save(stream.Get(), FALSE), S_OK);
    STATSTG state{};
    ASSERT_EQ(stream->Stat(&state, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(state.cbSize.QuadPart, most.QuadPart);
}

TEST_F(InterfaceTest, the_extent_of_quick_activation_is_the_objects) {
    const Com<IQuickActivate> quick = form.control.As<IQuickActivate>(IID_IQuickActivate);
    SIZEL wanted{5000, 4000};
    EXPECT_EQ(quick->SetContentExtent(&wanted), S_OK);
    SIZEL told{};
    EXPECT_EQ(quick->GetContentExtent(&told), S_OK);
    EXPECT_EQ(told.cx, 5000);
    EXPECT_EQ(told.cy, 4000);
    SIZEL own{};
    EXPECT_EQ(Object()->GetExtent(DVASPECT_CONTENT, &own), S_OK);
    EXPECT_EQ(own.cx, 5000);
    EXPECT_EQ(own.cy, 4000);
    wanted.cx = -1;
    EXPECT_EQ(quick->SetContentExtent(&wanted), E_INVALIDARG);
    EXPECT_EQ(quick->SetContentExtent(nullptr), E_POINTER);
    EXPECT_EQ(quick->GetContentExtent(nullptr), E_POINTER);
}

TEST_F(InterfaceTest, keys_go_to_the_container_first_and_the_control_has_no_shortcuts_of_its_own) {
    ASSERT_EQ(form.Activate(OLEIVERB_UIACTIVATE), S_OK);
    const Com<IOleInPlaceActiveObject> active = form.control.As<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    MSG key{form.ControlWindow(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE) << "the container's answer";
    EXPECT_TRUE(form.WasTold("TranslateAccelerator"));
    EXPECT_EQ(active->TranslateAccelerator(nullptr), E_POINTER);
    EXPECT_EQ(active->OnFrameWindowActivate(FALSE), S_OK);
    EXPECT_EQ(active->OnDocWindowActivate(FALSE), S_OK);
    EXPECT_EQ(active->EnableModeless(TRUE), S_OK);
    const RECT border{0, 0, 100, 100};
    EXPECT_EQ(active->ResizeBorder(&border, &form, TRUE), S_OK);
    const Com<IOleControl> control = form.control.As<IOleControl>(IID_IOleControl);
    CONTROLINFO info{sizeof info, reinterpret_cast<HACCEL>(1), 9, 9};
    EXPECT_EQ(control->GetControlInfo(&info), S_OK);
    EXPECT_EQ(info.hAccel, nullptr);
    EXPECT_EQ(info.cAccel, 0);
    EXPECT_EQ(info.dwFlags, 0U);
    EXPECT_EQ(control->GetControlInfo(nullptr), E_POINTER);
    EXPECT_EQ(control->OnMnemonic(&key), S_OK);
    form.Close();
    EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE) << "without a container nobody takes it";
}

TEST_F(InterfaceTest, what_is_not_offered_is_refused_in_the_words_of_each_interface) {
    DWORD cookie = 0;
    EXPECT_EQ(View()->Freeze(DVASPECT_CONTENT, -1, nullptr, &cookie), E_NOTIMPL);
    EXPECT_EQ(View()->Unfreeze(1), E_NOTIMPL);
    DVEXTENTINFO info{sizeof info, DVEXTENT_CONTENT, {100, 100}};
    SIZEL natural{};
    EXPECT_EQ(View()->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &info, &natural), E_NOTIMPL);
    EXPECT_EQ(Object()->SetMoniker(OLEWHICHMK_CONTAINER, nullptr), E_NOTIMPL);
    EXPECT_EQ(Object()->SetColorScheme(nullptr), E_NOTIMPL);
    EXPECT_EQ(Object()->InitFromData(nullptr, FALSE, 0), S_FALSE);
    EXPECT_EQ(Object()->IsUpToDate(), S_OK);
    EXPECT_EQ(Object()->Update(), S_OK);
    const Com<IOleInPlaceObject> inPlace = form.control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    EXPECT_EQ(inPlace->ReactivateAndUndo(), INPLACE_E_NOTUNDOABLE);
    EXPECT_EQ(inPlace->ContextSensitiveHelp(TRUE), E_NOTIMPL);
    FORMATETC format{CF_BITMAP, reinterpret_cast<DVTARGETDEVICE*>(1), DVASPECT_CONTENT, -1, TYMED_GDI};
    STGMEDIUM medium{};
    EXPECT_EQ(Data()->GetDataHere(&format, &medium), DV_E_FORMATETC);
    EXPECT_EQ(Data()->SetData(&format, &medium, FALSE), E_NOTIMPL);
    FORMATETC same{};
    EXPECT_EQ(Data()->GetCanonicalFormatEtc(&format, &same), DATA_S_SAMEFORMATETC);
    EXPECT_EQ(same.ptd, nullptr) << "the picture is the same for every device";
    EXPECT_EQ(same.cfFormat, CF_BITMAP);
    EXPECT_EQ(Data()->GetCanonicalFormatEtc(nullptr, &same), E_POINTER);
    EXPECT_EQ(Data()->GetCanonicalFormatEtc(&same, nullptr), E_POINTER);
    Com<IEnumFORMATETC> formats;
    EXPECT_EQ(Data()->EnumFormatEtc(DATADIR_SET, formats.Out()), E_NOTIMPL);
    EXPECT_FALSE(formats);
}

TEST_F(InterfaceTest, enumerations_skip_start_again_and_have_copies_of_their_own) {
    Com<IEnumFORMATETC> formats;
    ASSERT_EQ(Data()->EnumFormatEtc(DATADIR_GET, formats.Out()), S_OK);
    std::array<FORMATETC, 3> all{};
    ULONG count = 0;
    ASSERT_EQ(formats->Next(3, all.data(), &count), S_OK);
    ASSERT_EQ(count, 3U);
    EXPECT_EQ(formats->Skip(1), S_FALSE) << "at the end";
    EXPECT_EQ(formats->Reset(), S_OK);
    EXPECT_EQ(formats->Skip(1), S_OK);
    Com<IEnumFORMATETC> copy;
    ASSERT_EQ(formats->Clone(copy.Out()), S_OK);
    FORMATETC one{};
    EXPECT_EQ(formats->Next(1, &one, nullptr), S_OK) << "for one the count may be left out";
    EXPECT_EQ(one.cfFormat, all[1].cfFormat);
    EXPECT_EQ(copy->Next(1, &one, nullptr), S_OK) << "a copy stands where the first stood";
    EXPECT_EQ(one.cfFormat, all[1].cfFormat);
    EXPECT_EQ(copy->Skip(5), S_FALSE);
    EXPECT_EQ(formats->Next(1, &one, nullptr), S_OK) << "and goes on alone";
    EXPECT_EQ(one.cfFormat, all[2].cfFormat);
    EXPECT_EQ(formats->Next(2, all.data(), nullptr), E_POINTER);
    EXPECT_EQ(formats->Next(1, nullptr, &count), E_POINTER);
    EXPECT_EQ(formats->Clone(nullptr), E_POINTER);
}

TEST_F(InterfaceTest, a_copied_enumeration_of_verbs_has_texts_of_its_own) {
    Com<IEnumOLEVERB> verbs;
    ASSERT_EQ(Object()->EnumVerbs(verbs.Out()), S_OK);
    Com<IEnumOLEVERB> copy;
    ASSERT_EQ(verbs->Clone(copy.Out()), S_OK);
    verbs.Reset();
    OLEVERB verb{};
    ASSERT_EQ(copy->Next(1, &verb, nullptr), S_OK);
    copy.Reset();
    EXPECT_STREQ(verb.lpszVerbName, L"P&roperties");
    CoTaskMemFree(verb.lpszVerbName);
}

TEST_F(InterfaceTest, a_page_without_its_window_neither_moves_nor_shows) {
    void* made = nullptr;
    ASSERT_EQ(CoCreateInstance(ToGuid(kPropertyPageGuid), nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, &made), S_OK);
    Com<IPropertyPage> page;
    *page.Out() = static_cast<IPropertyPage*>(made);
    const RECT place{10, 20, 110, 60};
    EXPECT_EQ(page->Move(&place), E_UNEXPECTED);
    EXPECT_EQ(page->Show(SW_SHOW), E_UNEXPECTED);
    EXPECT_EQ(page->SetPageSite(nullptr), S_OK);
    EXPECT_EQ(page->Help(L""), E_NOTIMPL);
    EXPECT_EQ(page->TranslateAccelerator(nullptr), S_FALSE);
    EXPECT_EQ(page->SetObjects(1, nullptr), E_POINTER);
    EXPECT_EQ(page->Activate(form.form, nullptr, FALSE), E_POINTER);
    ASSERT_EQ(page->Activate(form.form, &place, FALSE), S_OK);
    EXPECT_EQ(page->Activate(form.form, &place, FALSE), E_UNEXPECTED) << "it is there already";
    const RECT moved{5, 6, 55, 36};
    EXPECT_EQ(page->Move(&moved), S_OK);
    EXPECT_EQ(page->Move(nullptr), E_POINTER);
    RECT now{};
    GetWindowRect(GetWindow(form.form, GW_CHILD), &now);
    MapWindowPoints(nullptr, form.form, reinterpret_cast<POINT*>(&now), 2);
    EXPECT_TRUE(EqualRect(&now, &moved));
    PROPPAGEINFO tooSmall{};
    tooSmall.cb = sizeof tooSmall - 4;
    EXPECT_EQ(page->GetPageInfo(&tooSmall), E_INVALIDARG);
    page.Reset();
    EXPECT_EQ(GetWindow(form.form, GW_CHILD), nullptr) << "the label goes with its page";
}

}  // namespace
}  // namespace orvane::test
