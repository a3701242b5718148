// What a form keeps of the control: the scale and the size, in every form of keeping.
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
        const auto found = values.find(name);
        if (found == values.end()) return E_INVALIDARG;
        VariantClear(value);
        return VariantCopy(value, &found->second.v);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        Value copy;
        VariantCopy(&copy.v, value);
        values[name] = copy;
        return answer;
    }
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
