// The raster server of Windows: found by its programmatic id, called by its dispatch identifiers. The server here is our own: it
// writes down what it is asked, and draws a chequer.
#include <functional>
#include <vector>

#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

constexpr wchar_t kClass[] = L"{A86BAC80-2571-45A1-8C0A-2442DBF6133E}";

struct Asked {
    unsigned id = 0;
    std::vector<Value> args;
};

struct Log {
    std::vector<Asked> calls;
    bool ready = false;
    bool initAnswer = true;
    bool drawAnswer = true;
    int alive = 0;
    std::function<void(unsigned)> onCall;

    std::vector<unsigned> Ids() const {
        std::vector<unsigned> ids;
        for (const Asked& each : calls) ids.push_back(each.id);
        return ids;
    }
} server_log;

void DrawChequer(HDC dc, const RECT& place) {
    const HBRUSH blue = CreateSolidBrush(RGB(0, 0, 255));
    for (int y = place.top; y < place.bottom; y += 8) {
        for (int x = place.left; x < place.right; x += 8) {
            if (((x - place.left) / 8 + (y - place.top) / 8) % 2 != 0) continue;
            const RECT square{x, y, x + 8, y + 8};
            FillRect(dc, &square, blue);
        }
    }
    DeleteObject(blue);
}

class Server final : public IDispatch {
public:
    Server() { ++server_log.alive; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        if (*out == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --refs_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return Give(count, 0U); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        ADD_FAILURE() << "no name is looked up";
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        Asked asked;
        asked.id = static_cast<unsigned>(dispid);
        for (UINT i = params->cArgs; i > 0; --i) {
            Value copy;
            VariantCopy(&copy.v, &params->rgvarg[i - 1]);
            asked.args.push_back(std::move(copy));
        }
        server_log.calls.push_back(asked);
        EXPECT_EQ(flags, asked.id >= 0x68030000 ? DISPATCH_PROPERTYGET : DISPATCH_METHOD);
        if (server_log.onCall) server_log.onCall(asked.id);
        Answer(asked, *result);
        return S_OK;
    }

private:
    virtual ~Server() { --server_log.alive; }
    static void Answer(const Asked& asked, VARIANT& result) {
        bool answer = true;
        if (asked.id == 0x60030002) answer = server_log.ready;
        if (asked.id == 0x60030003) answer = server_log.ready = server_log.initAnswer;
        if (asked.id == 0x60030007) {
            answer = server_log.drawAnswer;
            const auto dc = reinterpret_cast<HDC>(static_cast<LONG_PTR>(asked.args[0].v.lVal));
            DrawChequer(dc, {asked.args[5].Int(), asked.args[6].Int(), asked.args[7].Int(), asked.args[8].Int()});
        }
        result.vt = VT_BOOL;
        result.boolVal = answer ? VARIANT_TRUE : VARIANT_FALSE;
        if (asked.id >= 0x68030000) {
            result.vt = VT_I4;
            result.lVal = asked.id == 0x68030001 ? 640 : 480;
        }
    }
    ULONG refs_ = 1;
};

class Factory final : public ComObject<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        auto* const made = new Server;
        const HRESULT given = made->QueryInterface(iid, out);
        made->Release();
        return given;
    }
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return S_OK; }

private:
    bool Supports(REFIID iid) const override { return iid == IID_IClassFactory; }
};

class RasterTest : public ComTest {
protected:
    void SetUp() override {
        server_log = Log{};
        WriteKey(L"OV4Raster.OV4Rast\\CLSID", kClass);
        CLSID clsid{};
        CLSIDFromString(kClass, &clsid);
        Com<IClassFactory> factory;
        *factory.Out() = new Factory;
        ASSERT_EQ(CoRegisterClassObject(clsid, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_), S_OK);
        control.MakeTriangle();
    }
    void TearDown() override {
        control.Reset();
        CoRevokeClassObject(cookie_);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\OV4Raster.OV4Rast");
        EXPECT_EQ(server_log.alive, 0) << "every server is released";
        server_log = Log{};
    }
    static void WriteKey(const wchar_t* key, const wchar_t* value) {
        HKEY opened = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, (std::wstring(L"Software\\Classes\\") + key).c_str(), 0, nullptr, 0, KEY_WRITE,
                        nullptr, &opened, nullptr);
        RegSetValueExW(opened, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                       static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t)));
        RegCloseKey(opened);
    }
    Client control = Client::New();

private:
    DWORD cookie_ = 0;
};

using Ids = std::vector<unsigned>;

TEST_F(RasterTest, loading_asks_whether_it_is_ready_starts_it_and_loads) {
    EXPECT_TRUE(control.Call(L"OrvInitRast", {2}).Bool());
    EXPECT_TRUE(control.Call(L"OrvLoadRast", {0, L"C:\\\x5730\x56f3.tif"}).Bool());
    EXPECT_EQ(server_log.Ids(), (Ids{0x60030002, 0x60030003, 0x60030004}));
    EXPECT_EQ(server_log.calls[2].args[0].Text(), L"C:\\\x5730\x56f3.tif");
    server_log.calls.clear();
    EXPECT_TRUE(control.Call(L"OrvLoadRast", {0, L"b"}).Bool());
    EXPECT_EQ(server_log.Ids(), (Ids{0x60030002, 0x60030004})) << "the same instance, with no close in between";
    EXPECT_EQ(server_log.alive, 1);
}

TEST_F(RasterTest, a_server_that_does_not_start_loads_nothing) {
    server_log.initAnswer = false;
    control.Call(L"OrvInitRast", {1});
    EXPECT_FALSE(control.Call(L"OrvLoadRast", {0, L"a"}).Bool());
    EXPECT_EQ(server_log.Ids(), (Ids{0x60030002, 0x60030003}));
}

TEST_F(RasterTest, control_points_size_and_rotation_travel_in_their_types) {
    control.Call(L"OrvInitRast", {1});
    control.Call(L"OrvLoadRast", {0, L"a"});
    server_log.calls.clear();
    EXPECT_TRUE(control.Call(L"OrvSetRastCP1", {0, 1, 2, 3.5, 4.5}).Bool());
    EXPECT_TRUE(control.Call(L"OrvSetRastCP2", {0, 5, 6, 7.5, 8.5}).Bool());
    EXPECT_TRUE(control.Call(L"OrvCalcCorrect2Rast", {0}).Bool());
    long width = 0;
    long height = 0;
    control.Call(L"OrvGetRastImgSize", {0, Ref(width), Ref(height)});
    EXPECT_EQ(width, 640);
    EXPECT_EQ(height, 480);
    control.Put(L"Rotate", 12.5);
    EXPECT_TRUE(control.Call(L"OrvCloseRast", {0}).Bool());
    EXPECT_EQ(server_log.Ids(),
              (Ids{0x6003000A, 0x6003000B, 0x6003000E, 0x68030001, 0x68030000, 0x60030002, 0x60030009, 0x60030005}));
    const std::vector<Value>& first = server_log.calls[0].args;
    ASSERT_EQ(first.size(), 4U);
    EXPECT_EQ(first[0].v.vt, VT_I4);
    EXPECT_EQ(first[1].v.lVal, 2);
    EXPECT_EQ(first[2].v.vt, VT_R8);
    EXPECT_EQ(first[3].v.dblVal, 4.5);
    EXPECT_EQ(server_log.calls[6].args[0].v.dblVal, 12.5);
}

TEST_F(RasterTest, it_paints_on_the_context_that_it_is_given) {
    Container form(320, 240);
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(50);
    form.control.Call(L"OrvInitRast", {1});
    form.control.Call(L"OrvLoadRast", {0, L"a"});
    form.control.Call(L"OrvDspRastMode", {false});  // beneath the layers, so that it stays in the composed map
    server_log.calls.clear();
    form.control.Call(L"OrvReDraw");
    ASSERT_FALSE(server_log.calls.empty());
    const Asked& draw = server_log.calls.back();
    EXPECT_EQ(draw.id, 0x60030007U);
    ASSERT_EQ(draw.args.size(), 12U);
    const VARTYPE types[] = {VT_I4, VT_R8, VT_R8, VT_R8, VT_R8, VT_I4, VT_I4, VT_I4, VT_I4, VT_R8, VT_R8, VT_I2};
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(draw.args[i].v.vt, types[i]) << i;
    EXPECT_EQ(draw.args[11].v.iVal, 1);
    const auto base = reinterpret_cast<HDC>(static_cast<LONG_PTR>(form.control.Get(L"GetDC").Int()));
    EXPECT_EQ(GetPixel(base, 2, 2), static_cast<COLORREF>(RGB(0, 0, 255)));
    EXPECT_EQ(GetPixel(base, 10, 10), static_cast<COLORREF>(RGB(0, 0, 255)));
    // A failing image never stops the frame: the second one is drawn, and the layers after it.
    form.control.Call(L"OrvTermRast");
    form.control.Call(L"OrvInitRast", {2});
    form.control.Call(L"OrvLoadRast", {0, L"a"});
    form.control.Call(L"OrvLoadRast", {1, L"b"});
    EXPECT_TRUE(form.control.Call(L"OrvAddLayer", {L"L", 3, 2, 0}).Bool());
    EXPECT_TRUE(form.control.Call(L"OrvAddDatEx", {L"L", 3, 1, 0, Doubles({0, 100}), Doubles({0, 100}), Doubles({0, 0})}).Bool());
    EXPECT_TRUE(form.control.Call(L"OrvSetLayColor", {L"L", 0x00FF00}).Bool());
    form.control.Call(L"OrvDspFit");
    server_log.drawAnswer = false;
    server_log.calls.clear();
    form.control.Call(L"OrvReDraw");
    EXPECT_EQ(server_log.Ids(), (Ids{0x60030007, 0x60030007}));
    int green = 0;
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 320; ++x) green += GetPixel(base, x, y) == static_cast<COLORREF>(RGB(0, 255, 0)) ? 1 : 0;
    }
    EXPECT_GT(green, 50) << "the outlines of the layer";
    form.Close();
}

TEST_F(RasterTest, without_the_server_the_operator_is_told) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\OV4Raster.OV4Rast");
    control.Call(L"OrvInitRast", {1});
    {
        BoxCloser closer;
        EXPECT_FALSE(control.Call(L"OrvLoadRast", {0, L"a"}).Bool());
        ASSERT_EQ(closer.Texts().size(), 1U);
        EXPECT_EQ(closer.Texts()[0],
                  L"OV4Raster.DLL \x3092\x30ec\x30b8\x30b9\x30c8\x30ea\x767b\x9332\x3057\x3066\x4e0b\x3055\x3044\x3002");
    }
    WriteKey(L"OV4Raster.OV4Rast\\CLSID", kClass);
    EXPECT_TRUE(control.Call(L"OrvLoadRast", {0, L"a"}).Bool()) << "a later load tries again";
}

TEST_F(RasterTest, a_table_is_made_once_until_it_ends) {
    EXPECT_FALSE(control.Call(L"OrvTermRast").Bool()) << "there is none yet";
    EXPECT_TRUE(control.Call(L"RastInit", {0}).Bool());
    EXPECT_FALSE(control.Call(L"OrvLoadRast", {0, L"a"}).Bool()) << "a table without slots";
    EXPECT_TRUE(control.Call(L"RastInit", {2}).Bool()) << "which does not count as one";
    EXPECT_FALSE(control.Call(L"OrvInitRast", {3}).Bool());
    EXPECT_FALSE(control.Call(L"OrvLoadRast", {2, L"a"}).Bool()) << "the table stays as long as it was";
    EXPECT_TRUE(server_log.calls.empty());
    EXPECT_TRUE(control.Call(L"OrvLoadRast", {1, L"a"}).Bool());
    EXPECT_TRUE(control.Call(L"OrvTermRast").Bool());
    EXPECT_FALSE(control.Call(L"RastTerm").Bool());
}

TEST_F(RasterTest, term_of_the_map_ends_the_images_and_leaves_the_map) {
    Container form(320, 240);
    form.control.Call(L"OrvTerm");  // a new control: nothing to end
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    form.control.Call(L"OrvInitRast", {1});
    form.control.Call(L"OrvLoadRast", {0, L"a"});
    ASSERT_EQ(server_log.alive, 1);
    form.control.Call(L"RDMTerm");  // before the first paint
    EXPECT_EQ(server_log.alive, 0);
    Pump(50);
    form.control.Call(L"OrvInitRast", {1});
    form.control.Call(L"OrvLoadRast", {0, L"a"});
    form.control.Call(L"OrvTerm");
    EXPECT_EQ(server_log.alive, 0);
    server_log.calls.clear();
    form.control.Call(L"OrvReDraw");
    EXPECT_TRUE(server_log.calls.empty()) << "only the images are gone";
    EXPECT_EQ(form.control.Call(L"OrvGetLayDatCnt", {L"A", 3}).Int(), 1);
    form.Close();
}

TEST_F(RasterTest, term_closes_what_is_ready_and_releases_it) {
    control.Call(L"OrvInitRast", {3});
    control.Call(L"OrvLoadRast", {1, L"a"});
    server_log.calls.clear();
    EXPECT_TRUE(control.Call(L"OrvTermRast").Bool());
    EXPECT_EQ(server_log.Ids(), (Ids{0x60030002, 0x60030005}));
    EXPECT_EQ(server_log.alive, 0);
}

TEST_F(RasterTest, a_server_may_release_the_control_while_it_paints) {
    Container form(320, 240);
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(50);
    form.control.Call(L"OrvInitRast", {2});
    form.control.Call(L"OrvLoadRast", {0, L"a"});
    form.control.Call(L"OrvLoadRast", {1, L"b"});
    // The call goes to an object that nobody holds any more once the server has let it go.
    IDispatch* const last = form.control.Get();
    const DISPID redraw = form.control.IdOf(L"OrvReDraw");
    const int alive = server_log.alive;
    server_log.onCall = [&](unsigned id) {
        if (id != 0x60030007) return;
        form.Close();
        EXPECT_EQ(server_log.alive, alive) << "the map stays until the call returns";
    };
    DISPPARAMS none{};
    EXPECT_EQ(last->Invoke(redraw, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(form.control.Get(), nullptr);
    EXPECT_EQ(server_log.alive, 0) << "and ends with it";
}

}  // namespace
}  // namespace orvane::test
