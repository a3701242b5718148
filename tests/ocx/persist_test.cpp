// What a form keeps of the control: the scale and the size, in every form of keeping.
#include <algorithm>
#include <functional>
#include <map>

#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

class Bag final : public IPropertyBag {
public:
    virtual ~Bag() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override { return *out = nullptr, E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        if (onCall) onCall();
        const auto found = values.find(name);
        if (found == values.end()) return E_INVALIDARG;
        VariantClear(value);
        return VariantCopy(value, &found->second.v);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        Value copy;
        VariantCopy(&copy.v, value);
        values[name] = copy;
        if (onCall) onCall();
        return answer;
    }
    std::function<void()> onCall;
    std::map<std::wstring, Value> values;
    HRESULT answer = S_OK;
};

class PersistTest : public ComTest {
protected:
    Client saved = Client::New();
    Client loaded = Client::New();
    void SetUp() override {
        saved.Call(L"OrvInit");
        saved.Put(L"Zoom", 2500);
        saved.Put(L"ScaleX", 3.0);
        SIZEL size{7000, 5000};
        saved.As<IOleObject>(IID_IOleObject)->SetExtent(DVASPECT_CONTENT, &size);
    }
    void ExpectLoaded() {
        EXPECT_EQ(loaded.Get(L"Zoom").Int(), 2500);
        EXPECT_NE(loaded.Get(L"ScaleX").Double(), 3.0) << "nothing but the scale and the size is kept";
        SIZEL size{};
        loaded.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &size);
        EXPECT_EQ(size.cx, 7000);
        EXPECT_EQ(size.cy, 5000);
    }
};

TEST_F(PersistTest, a_new_control_has_the_starting_scale) {
    EXPECT_EQ(loaded.As<IPersistStreamInit>(IID_IPersistStreamInit)->InitNew(), S_OK);
    EXPECT_EQ(loaded.Get(L"Zoom").Int(), 10000);
    EXPECT_EQ(loaded.As<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty(), S_FALSE);
}

TEST_F(PersistTest, a_stream_keeps_it) {
    Com<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()), S_OK);
    EXPECT_EQ(saved.As<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty(), S_OK);
    EXPECT_EQ(OleSaveToStream(saved.As<IPersistStream>(IID_IPersistStream).Get(), stream.Get()), S_OK);
    EXPECT_EQ(saved.As<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty(), S_FALSE);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    void* made = nullptr;
    ASSERT_EQ(OleLoadFromStream(stream.Get(), IID_IDispatch, &made), S_OK);
    Com<IDispatch> object;
    *object.Out() = static_cast<IDispatch*>(made);
    loaded = Client(object);
    ExpectLoaded();
    EXPECT_EQ(loaded.Call(L"OrvInit").Bool(), true);
    EXPECT_EQ(loaded.Get(L"Zoom").Int(), 10000) << "what was kept lasts until the host's init";
}

TEST_F(PersistTest, a_stream_that_is_damaged_loads_nothing) {
    Com<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()), S_OK);
    const Com<IPersistStreamInit> persist = loaded.As<IPersistStreamInit>(IID_IPersistStreamInit);
    loaded.Put(L"Zoom", 777);
    EXPECT_EQ(persist->Load(stream.Get()), E_FAIL);
    const unsigned char other[16] = {9, 9, 9, 9};
    stream->Write(other, sizeof other, nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    EXPECT_EQ(persist->Load(stream.Get()), STG_E_OLDFORMAT);
    EXPECT_EQ(persist->Load(static_cast<IStream*>(nullptr)), E_POINTER);
    EXPECT_EQ(loaded.Get(L"Zoom").Int(), 777);
}

TEST_F(PersistTest, a_compound_file_keeps_it) {
    Com<ILockBytes> bytes;
    Com<IStorage> storage;
    ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Out()), S_OK);
    ASSERT_EQ(StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.Out()),
              S_OK);
    const Com<IPersistStorage> from = saved.As<IPersistStorage>(IID_IPersistStorage);
    EXPECT_EQ(OleSave(from.Get(), storage.Get(), FALSE), S_OK);
    const Com<IPersistStorage> to = loaded.As<IPersistStorage>(IID_IPersistStorage);
    EXPECT_EQ(to->Load(storage.Get()), S_OK);
    ExpectLoaded();
    EXPECT_EQ(to->InitNew(static_cast<IStorage*>(nullptr)), E_POINTER);
}

TEST_F(PersistTest, a_storage_that_is_another_one_leaves_the_control_changed) {
    const auto make = [](Com<IStorage>& storage) {
        Com<ILockBytes> bytes;
        ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Out()), S_OK);
        ASSERT_EQ(
            StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.Out()),
            S_OK);
    };
    Com<IStorage> copy;
    Com<IStorage> own;
    make(copy);
    make(own);
    const Com<IPersistStorage> persist = saved.As<IPersistStorage>(IID_IPersistStorage);
    EXPECT_EQ(persist->Save(copy.Get(), FALSE), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_OK) << "the save has not ended";
    EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_OK) << "a copy was saved, the original is as it was";
    EXPECT_EQ(persist->Save(own.Get(), TRUE), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_OK);
    EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_FALSE);
    saved.Put(L"ScaleX", 4.0);
    EXPECT_EQ(persist->SaveCompleted(nullptr), E_UNEXPECTED);
    EXPECT_EQ(persist->IsDirty(), S_OK) << "no save has gone before";
    EXPECT_EQ(persist->HandsOffStorage(), S_OK);
    EXPECT_EQ(persist->SaveCompleted(own.Get()), S_OK) << "it had no storage meanwhile";
    EXPECT_EQ(persist->IsDirty(), S_OK);
    EXPECT_EQ(persist->Save(copy.Get(), FALSE), S_OK);
    EXPECT_EQ(persist->SaveCompleted(copy.Get()), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_FALSE) << "the other storage is the control's own from now on";
}

TEST_F(PersistTest, a_bag_of_what_differs_holds_the_size) {
    Bag bag;
    const Com<IPersistPropertyBag> from = saved.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    EXPECT_EQ(from->Save(&bag, TRUE, FALSE), S_OK);
    EXPECT_EQ(bag.values[L"_ExtentX"].Int(), 7000);
    EXPECT_EQ(bag.values[L"_ExtentY"].Int(), 5000);
    EXPECT_EQ(loaded.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(&bag, nullptr), S_OK);
    ExpectLoaded();
    Bag plain;
    EXPECT_EQ(Client::New().As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Save(&plain, TRUE, FALSE), S_OK);
    EXPECT_EQ(plain.values.count(L"_ExtentX"), 0U) << "the size of a new control goes without saying";
    EXPECT_EQ(loaded.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(&plain, nullptr), S_OK);
    SIZEL size{};
    loaded.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &size);
    EXPECT_EQ(size.cx, 8467);
    EXPECT_EQ(size.cy, 6350);
}

/// A control on a form whose last reference ends inside a call of its own. It holds the form's site for as long as it lives.
template <class Interface>
class LastCall {
public:
    explicit LastCall(REFIID iid) : object_(form.control.As<Interface>(iid).Detach()) { form.control.Reset(); }
    Interface* operator->() const { return object_; }
    void End() {
        if (!std::exchange(ended_, true)) object_->Release();
        EXPECT_GT(form.References(), 1U) << "the object lives as long as the call";
    }
    ~LastCall() {
        EXPECT_TRUE(ended_);
        EXPECT_EQ(form.References(), 1U) << "and no longer";
    }
    Container form;

private:
    Interface* object_;
    bool ended_ = false;
};

TEST_F(PersistTest, a_bag_may_release_the_control) {
    for (const bool loads : {true, false}) {
        Bag bag;
        LastCall<IPersistPropertyBag> control(IID_IPersistPropertyBag);
        bag.onCall = [&] { control.End(); };
        EXPECT_EQ(loads ? control->Load(&bag, nullptr) : control->Save(&bag, TRUE, TRUE), S_OK);
    }
}

/// A stream of a host's, of which the control uses two methods.
class Stream final : public IStream {
public:
    virtual ~Stream() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override { return *out = nullptr, E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(void* out, ULONG count, ULONG* got) override {
        onCall();
        *got = (std::min)(count, static_cast<ULONG>(sizeof bytes - at));
        std::copy_n(bytes + at, *got, static_cast<unsigned char*>(out));
        at += *got;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG count, ULONG* written) override {
        onCall();
        return *written = count, S_OK;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

    unsigned char bytes[16] = {0, 0, 1, 0, 0x10, 0x20, 0, 0, 0x10, 0x20, 0, 0, 0xD2, 4, 0, 0};  // 8208 x 8208, scale 1234
    std::size_t at = 0;
    std::function<void()> onCall = [] {};
};

TEST_F(PersistTest, a_stream_may_release_the_control) {
    for (const bool loads : {true, false}) {
        Stream stream;
        LastCall<IPersistStreamInit> control(IID_IPersistStreamInit);
        stream.onCall = [&] { control.End(); };
        EXPECT_EQ(loads ? control->Load(&stream) : control->Save(&stream, TRUE), S_OK);
    }
}

TEST_F(PersistTest, whoever_looks_no_more_may_release_the_control) {
    /// Ends the control with the reference to itself.
    class Sink final : public IAdviseSink {
    public:
        virtual ~Sink() = default;
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
            *out = iid == IID_IUnknown || iid == IID_IAdviseSink ? this : nullptr;
            return *out == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
        ULONG STDMETHODCALLTYPE Release() override {
            if (--refs == 1) control->End();
            return refs;
        }
        void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
        void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override {}
        void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
        void STDMETHODCALLTYPE OnSave() override {}
        void STDMETHODCALLTYPE OnClose() override {}
        ULONG refs = 1;
        LastCall<IViewObject>* control = nullptr;
    } sink;
    LastCall<IViewObject> control(IID_IViewObject);
    sink.control = &control;
    EXPECT_EQ(control->SetAdvise(DVASPECT_CONTENT, 0, &sink), S_OK);
    EXPECT_EQ(control->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, nullptr), S_OK);
}

TEST_F(PersistTest, a_load_on_an_active_form_asks_for_the_room_and_tells_the_scale) {
    Container form(400, 300);
    form.Connect();
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    ComTest::Pump(20);
    form.listener.changes.clear();
    Stream stream;
    EXPECT_EQ(form.control.As<IPersistStreamInit>(IID_IPersistStreamInit)->Load(&stream), S_OK);
    EXPECT_EQ(form.control.Get(L"Zoom").Int(), 1234);
    EXPECT_EQ(form.listener.changes, std::vector<DISPID>{8});
    EXPECT_EQ(form.listener.CountOf("OnZoomChange"), 0) << "nobody has zoomed";
    EXPECT_EQ(form.TimesTold("OnPosRectChange"), 1);
    RECT client{};
    GetClientRect(form.ControlWindow(), &client);
    EXPECT_EQ(client.right, client.bottom);
    EXPECT_NEAR(client.right, 8208.0 * GetDeviceCaps(::GetDC(nullptr), LOGPIXELSX) / 2540, 1);
    SIZEL size{};
    form.control.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &size);
    EXPECT_EQ(size.cx, 8208) << "to the hundredth, and not what the pixels make of it";
    EXPECT_EQ(form.control.As<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty(), S_FALSE);
}

TEST_F(PersistTest, a_property_bag_keeps_it_by_name_and_converts) {
    Bag bag;
    EXPECT_EQ(saved.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Save(&bag, TRUE, TRUE), S_OK);
    EXPECT_EQ(bag.values.size(), 4U);
    EXPECT_EQ(bag.values[L"Zoom"].Int(), 2500);
    EXPECT_EQ(bag.values[L"_Version"].Int(), 0x00010000);
    bag.values[L"Zoom"] = L"2500";
    const Com<IPersistPropertyBag> persist = loaded.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    EXPECT_EQ(persist->Load(&bag, nullptr), S_OK);
    ExpectLoaded();
    bag.values.erase(L"Zoom");
    EXPECT_EQ(persist->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(loaded.Get(L"Zoom").Int(), 10000) << "a missing value loads as its default";
    bag.values[L"Zoom"] = L"no number";
    EXPECT_EQ(persist->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(loaded.Get(L"Zoom").Int(), 10000);
    bag.answer = E_FAIL;
    EXPECT_EQ(persist->Save(&bag, TRUE, TRUE), E_FAIL);
    EXPECT_EQ(persist->Load(nullptr, nullptr), E_POINTER);
}

}  // namespace
}  // namespace orvane::test
