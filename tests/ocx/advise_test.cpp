// What an advise sink is owed: a word of each save, and the data with a change unless it wants none.
#include <algorithm>

#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

/// Looks at the data and keeps what media came.
class DataSink final : public IAdviseSink {
public:
    virtual ~DataSink() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = iid == IID_IUnknown || iid == IID_IAdviseSink ? static_cast<IAdviseSink*>(this) : nullptr;
        return *out == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM* medium) override {
        BITMAP facts{};
        if (medium->tymed == TYMED_GDI) GetObjectW(medium->hBitmap, sizeof facts, &facts);
        widths.push_back(static_cast<int>(facts.bmWidth));
    }
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override {}
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override {}

    std::vector<int> widths;  // of each bitmap that came, 0 for none
};

/// Takes every value, or refuses it.
class AnyBag final : public IPropertyBag {
public:
    virtual ~AnyBag() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override { return *out = nullptr, E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT*, IErrorLog*) override { return E_INVALIDARG; }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return answer; }

    HRESULT answer = S_OK;
};

class AdviseTest : public ComTest {
protected:
    void SetUp() override { ASSERT_EQ(Object()->Advise(&form, &cookie_), S_OK); }
    void TearDown() override {
        if (cookie_ != 0) Object()->Unadvise(cookie_);
    }
    void ExpectSaves(long count, const char* what) {
        EXPECT_EQ(form.TimesTold("OnSave"), count) << what;
        form.told.clear();
    }
    static Com<IStream> NewStream() {
        Com<IStream> stream;
        EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()), S_OK);
        return stream;
    }
    Com<IOleObject> Object() { return form.control.As<IOleObject>(IID_IOleObject); }

    Container form{400, 300};
    DWORD cookie_ = 0;
};

TEST_F(AdviseTest, a_save_to_a_stream_or_a_bag_is_told_when_it_is_complete) {
    const Com<IPersistStreamInit> stream = form.control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    EXPECT_EQ(stream->Save(NewStream().Get(), TRUE), S_OK);
    ExpectSaves(1, "a stream");
    EXPECT_EQ(stream->Save(nullptr, TRUE), E_POINTER);
    ExpectSaves(0, "no stream");
    const Com<IPersistPropertyBag> bag = form.control.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    AnyBag values;
    EXPECT_EQ(bag->Save(&values, TRUE, TRUE), S_OK);
    ExpectSaves(1, "a bag");
    values.answer = E_ACCESSDENIED;
    EXPECT_EQ(bag->Save(&values, TRUE, TRUE), E_ACCESSDENIED);
    ExpectSaves(0, "a bag that refuses");
    values.answer = S_OK;
    EXPECT_EQ(stream->Save(NewStream().Get(), FALSE), S_OK);
    EXPECT_EQ(bag->Save(&values, FALSE, TRUE), S_OK);
    ExpectSaves(0, "copies");
}

TEST_F(AdviseTest, a_save_to_a_storage_is_told_when_the_container_has_ended_it) {
    Com<IStorage> storage;
    ASSERT_EQ(
        StgCreateDocfile(nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_CREATE | STGM_DELETEONRELEASE, 0, storage.Out()),
        S_OK);
    const Com<IPersistStorage> persist = form.control.As<IPersistStorage>(IID_IPersistStorage);
    EXPECT_EQ(persist->Save(storage.Get(), TRUE), S_OK);
    ExpectSaves(0, "the container may still fail");
    EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
    ExpectSaves(1, "ended");
    EXPECT_EQ(persist->HandsOffStorage(), S_OK);
    EXPECT_EQ(persist->SaveCompleted(storage.Get()), S_OK);
    ExpectSaves(0, "nothing was saved in the time without a storage");
    EXPECT_EQ(persist->Save(storage.Get(), FALSE), S_OK);
    EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
    ExpectSaves(0, "a copy");
}

TEST_F(AdviseTest, who_hears_of_a_save_may_let_the_control_go) {
    Com<IPersistStreamInit> stream = form.control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    form.onTold = [&](const std::string& word) {
        if (word != "OnSave" || cookie_ == 0) return;
        Object()->Unadvise(std::exchange(cookie_, 0));
        stream = {};  // the last reference but those of the form
        form.Close();
    };
    IPersistStreamInit* const caller = stream.Get();
    EXPECT_EQ(caller->Save(NewStream().Get(), TRUE), S_OK);
    form.onTold = nullptr;
    EXPECT_EQ(form.control.Get(), nullptr);
}

// Wine's own holder of connections asks each of them alone, so that here the word of the control itself makes no difference.
TEST_F(AdviseTest, data_comes_with_a_change_to_whoever_did_not_refuse_it) {
    const Com<IDataObject> data = form.control.As<IDataObject>(IID_IDataObject);
    FORMATETC format{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    DataSink takes, refuses;
    DWORD first = 0, second = 0;
    form.control.MakeTriangle();
    ASSERT_EQ(data->DAdvise(&format, 0, &takes, &first), S_OK);
    ASSERT_EQ(data->DAdvise(&format, ADVF_NODATA, &refuses, &second), S_OK);
    form.control.Call(L"Refresh");
    EXPECT_EQ(takes.widths, std::vector<int>{320});
    EXPECT_EQ(refuses.widths, std::vector<int>{0});
    EXPECT_EQ(data->DUnadvise(first), S_OK);
    EXPECT_EQ(data->DUnadvise(second), S_OK);
}

}  // namespace
}  // namespace orvane::test
