// What a control loads from bytes that no control wrote: cut off, of another version, with sizes and scales out of all measure.
#include <algorithm>
#include <array>
#include <limits>

#include "tests/ocx/canvas.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

using Record = std::vector<unsigned char>;
constexpr std::int32_t kVersion = 0x00010000;
constexpr std::int32_t kMost = (std::numeric_limits<std::int32_t>::max)();
constexpr std::int32_t kLeast = (std::numeric_limits<std::int32_t>::min)();

/// Numbers one behind the other, low byte first.
Record BytesOf(std::initializer_list<std::int32_t> numbers) {
    Record bytes;
    for (const std::int32_t number : numbers) {
        for (unsigned i = 0; i < 4; ++i)
            bytes.push_back(static_cast<unsigned char>(static_cast<std::uint32_t>(number) >> (8 * i)));
    }
    return bytes;
}

const Record kGood = BytesOf({kVersion, 7000, 5000, 2500});

Com<IStream> StreamOf(const Record& bytes) {
    Com<IStream> stream;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()), S_OK);
    ULONG written = 0;
    EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return stream;
}

Com<IStorage> NewStorage() {
    Com<ILockBytes> bytes;
    Com<IStorage> storage;
    EXPECT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Out()), S_OK);
    EXPECT_EQ(StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.Out()),
              S_OK);
    return storage;
}

Com<IStorage> StorageOf(const Record& bytes) {
    Com<IStorage> storage = NewStorage();
    Com<IStream> stream;
    EXPECT_EQ(storage->CreateStream(L"CONTENTS", STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.Out()), S_OK);
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    return storage;
}

/// A bag that holds what it was given, of any type.
class AnyBag final : public IPropertyBag {
public:
    virtual ~AnyBag() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override { return *out = nullptr, E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        if (answer != S_OK) return answer;
        return VariantCopy(value, name == std::wstring(L"Zoom")       ? &zoom.v
                                  : name == std::wstring(L"_Version") ? &version.v
                                                                      : &size.v);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return S_OK; }
    Value zoom{2500};
    Value size{6000};
    Value version{kVersion};
    HRESULT answer = S_OK;
};

class PersistBitsTest : public ComTest {
protected:
    void SetUp() override {
        SIZEL size{3000, 2000};
        control.As<IOleObject>(IID_IOleObject)->SetExtent(DVASPECT_CONTENT, &size);
        control.Put(L"Zoom", 777);
    }
    HRESULT Load(const Record& bytes) {
        return control.As<IPersistStreamInit>(IID_IPersistStreamInit)->Load(StreamOf(bytes).Get());
    }
    HRESULT LoadStorage(const Com<IStorage>& storage) {
        return control.As<IPersistStorage>(IID_IPersistStorage)->Load(storage.Get());
    }
    HRESULT LoadBag(AnyBag& bag) { return control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(&bag, nullptr); }
    SIZEL Extent() {
        SIZEL size{};
        control.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &size);
        return size;
    }
    int Zoom() { return control.Get(L"Zoom").Int(); }
    void ExpectAsBefore(const char* what) {
        EXPECT_EQ(Zoom(), 777) << what;
        EXPECT_EQ(Extent().cx, 3000) << what;
        EXPECT_EQ(Extent().cy, 2000) << what;
        EXPECT_EQ(control.As<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty(), S_OK) << what;
    }
    /// Shows it, as a form does that has loaded it.
    void Draw() {
        control.MakeTriangle();
        Canvas canvas(50, 40);
        const RECTL bounds{0, 0, 50, 40};
        EXPECT_EQ(control.As<IViewObject>(IID_IViewObject)
                      ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0),
                  S_OK);
        EXPECT_GT(canvas.CountOf(kWhite), 0);
    }
    Client control = Client::New();
};

TEST_F(PersistBitsTest, the_good_record_loads_by_every_way) {
    EXPECT_EQ(Load(kGood), S_OK);
    EXPECT_EQ(Zoom(), 2500);
    EXPECT_EQ(Extent().cx, 7000);
    EXPECT_EQ(Extent().cy, 5000);
    SetUp();
    EXPECT_EQ(LoadStorage(StorageOf(kGood)), S_OK);
    EXPECT_EQ(Zoom(), 2500);
    SetUp();
    AnyBag bag;
    EXPECT_EQ(LoadBag(bag), S_OK);
    EXPECT_EQ(Zoom(), 2500);
    EXPECT_EQ(Extent().cx, 6000);
}

TEST_F(PersistBitsTest, a_record_cut_off_anywhere_is_refused_and_loads_nothing) {
    for (std::size_t length = 0; length < kGood.size(); ++length) {
        const Record cut(kGood.begin(), kGood.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(Load(cut), E_FAIL) << length;
        EXPECT_EQ(LoadStorage(StorageOf(cut)), E_FAIL) << length;
        ExpectAsBefore("cut off");
    }
}

TEST_F(PersistBitsTest, what_follows_the_record_stays_in_the_stream) {
    Record longer = kGood;
    longer.push_back(0x5A);
    const Com<IStream> stream = StreamOf(longer);
    EXPECT_EQ(control.As<IPersistStreamInit>(IID_IPersistStreamInit)->Load(stream.Get()), S_OK);
    unsigned char next = 0;
    ULONG got = 0;
    EXPECT_EQ(stream->Read(&next, 1, &got), S_OK);
    EXPECT_EQ(next, 0x5A);
    EXPECT_EQ(Zoom(), 2500);
}

TEST_F(PersistBitsTest, every_other_version_is_refused_and_loads_nothing) {
    for (const std::int32_t version : {0, 1, kVersion - 1, kVersion + 1, 0x00020000, 0x01000000, 0x00000100, -1, kLeast, kMost}) {
        const Record foreign = BytesOf({version, 7000, 5000, 2500});
        EXPECT_EQ(Load(foreign), STG_E_OLDFORMAT) << version;
        EXPECT_EQ(LoadStorage(StorageOf(foreign)), STG_E_OLDFORMAT) << version;
        ExpectAsBefore("another version");
    }
    for (unsigned bit = 0; bit < 32; ++bit) {
        Record flipped = kGood;
        flipped[bit / 8] = static_cast<unsigned char>(flipped[bit / 8] ^ (1U << bit % 8));
        EXPECT_EQ(Load(flipped), STG_E_OLDFORMAT) << "bit " << bit;
    }
    ExpectAsBefore("a flipped bit of the version");
}

TEST_F(PersistBitsTest, a_size_below_0_is_left_out_and_the_scale_is_taken) {
    for (const auto& [cx, cy] : {std::pair{-1, 5000}, {7000, -1}, {kLeast, kLeast}, {-7000, -5000}}) {
        SetUp();
        EXPECT_EQ(Load(BytesOf({kVersion, cx, cy, 2500})), S_OK);
        EXPECT_EQ(Extent().cx, 3000) << cx;
        EXPECT_EQ(Extent().cy, 2000) << cy;
        EXPECT_EQ(Zoom(), 2500);
    }
    Draw();
}

TEST_F(PersistBitsTest, a_size_of_0_and_one_out_of_all_measure_are_kept_and_drawn) {
    for (const auto& [cx, cy] : {std::pair{0, 0}, {1, 1}, {kMost, kMost}, {kMost, 0}, {0, kMost}}) {
        control = Client::New();
        EXPECT_EQ(Load(BytesOf({kVersion, cx, cy, 2500})), S_OK);
        EXPECT_EQ(Extent().cx, cx);
        EXPECT_EQ(Extent().cy, cy);
        Draw();
    }
}

TEST_F(PersistBitsTest, every_bit_of_size_and_scale_may_be_flipped) {
    const Deadline deadline("flipped bits", 200);
    for (unsigned bit = 32; bit < 128; ++bit) {
        Record flipped = kGood;
        flipped[bit / 8] = static_cast<unsigned char>(flipped[bit / 8] ^ (1U << bit % 8));
        control = Client::New();
        EXPECT_EQ(Load(flipped), S_OK) << "bit " << bit;
        const std::uint32_t zoom = bit < 96 ? 2500U : 2500U ^ 1U << (bit - 96);
        EXPECT_EQ(static_cast<std::uint32_t>(Zoom()), zoom) << "taken unchecked, bit " << bit;
        if (bit % 8 == 7) Draw();
    }
}

TEST_F(PersistBitsTest, a_scale_without_sense_is_taken_and_ends_with_the_next_init) {
    for (const std::int32_t zoom : {0, -1, kLeast, kMost}) {
        EXPECT_EQ(Load(BytesOf({kVersion, 7000, 5000, zoom})), S_OK);
        EXPECT_EQ(Zoom(), zoom);
        Canvas canvas(50, 40);
        const RECTL bounds{0, 0, 50, 40};
        EXPECT_EQ(control.As<IViewObject>(IID_IViewObject)
                      ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0),
                  S_OK);
        Draw();
        EXPECT_EQ(Zoom(), 10000);
    }
}

TEST_F(PersistBitsTest, a_load_into_a_control_on_a_form_survives_any_size_and_scale) {
    Container form(200, 150);
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(20);
    const Com<IPersistStreamInit> persist = form.control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    for (const std::int32_t size : {0, 1, 32767, kMost, kLeast}) {
        for (const std::int32_t zoom : {0, -1, kMost, kLeast, 1}) {
            EXPECT_EQ(persist->Load(StreamOf(BytesOf({kVersion, size, size, zoom})).Get()), S_OK);
            RedrawWindow(form.ControlWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            form.control.Call(L"OrvReDraw");
        }
    }
    form.Resize(200, 150);
    form.control.MakeTriangle();
    form.control.Call(L"OrvDspFit");
    EXPECT_GT(form.control.Get(L"Zoom").Int(), 0);
}

TEST_F(PersistBitsTest, a_storage_without_its_stream_or_with_another_thing_of_that_name_is_refused) {
    EXPECT_EQ(LoadStorage(NewStorage()), STG_E_FILENOTFOUND);
    const Com<IStorage> folder = NewStorage();
    Com<IStorage> inner;
    ASSERT_EQ(folder->CreateStorage(L"CONTENTS", STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, inner.Out()), S_OK);
    EXPECT_TRUE(FAILED(LoadStorage(folder)));
    ExpectAsBefore("no stream");
}

TEST_F(PersistBitsTest, a_bag_with_values_of_other_types_loads_what_converts_and_the_default_for_the_rest) {
    AnyBag bag;
    bag.size = Value(L"4321");
    bag.zoom = Value(1234.4);
    bag.version = Value(0x00020000);
    EXPECT_EQ(LoadBag(bag), S_OK) << "a bag tells values by name, whatever the version";
    EXPECT_EQ(Extent().cx, 4321);
    EXPECT_EQ(Zoom(), 1234);
    Value none;
    Value null;
    null.v.vt = VT_NULL;
    Value far_(1e300);
    for (const Value& wrong : {null, far_, Value(L"words"), Doubles({1, 2})}) {
        SetUp();
        bag.size = bag.zoom = wrong;
        EXPECT_EQ(LoadBag(bag), S_OK) << wrong.v.vt;
        EXPECT_EQ(Zoom(), 10000) << wrong.v.vt;
        EXPECT_EQ(Extent().cx, 8467) << wrong.v.vt;
    }
    bag.zoom = none;
    EXPECT_EQ(LoadBag(bag), S_OK);
    EXPECT_EQ(Zoom(), 0) << "an empty value is a number all the same";
    bag.size = Value(-5);
    SetUp();
    EXPECT_EQ(LoadBag(bag), S_OK);
    EXPECT_EQ(Extent().cx, 3000) << "no size";
    bag.answer = E_FAIL;
    EXPECT_EQ(LoadBag(bag), S_OK);
    EXPECT_EQ(Zoom(), 10000);
}

}  // namespace
}  // namespace orvane::test
