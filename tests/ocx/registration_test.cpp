// The module's entries: registration for the machine and for the user, factories, and use without registration.
#include <comcat.h>

#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"
#include "tests/ocx/client.h"

namespace orvane::test {
namespace {

class Module {
public:
    Module() : module_(LoadLibraryW(ControlFile().c_str())) { EXPECT_NE(module_, nullptr); }
    ~Module() { FreeLibrary(module_); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    template <class Function>
    Function Entry(const char* name) const {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }
    HRESULT Run(const char* name) const { return Entry<HRESULT(WINAPI*)()>(name)(); }
    HRESULT Install(bool install, const wchar_t* arguments) const {
        return Entry<HRESULT(WINAPI*)(BOOL, PCWSTR)>("DllInstall")(install, arguments);
    }

private:
    HMODULE module_;
};

std::wstring RegistryText(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t text[512] = L"";
    DWORD bytes = sizeof text;
    return RegGetValueW(root, (L"Software\\Classes\\" + key).c_str(), name, RRF_RT_REG_SZ, nullptr, text, &bytes) == ERROR_SUCCESS
               ? text
               : L"(nothing)";
}

bool HasKey(HKEY root, const std::wstring& key) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, (L"Software\\Classes\\" + key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
    RegCloseKey(opened);
    return true;
}

const std::wstring kClassKey = L"CLSID\\{" + WideAscii(kControlGuid) + L"}";

class RegistrationTest : public ComTest {
protected:
    Module module;
};

TEST_F(RegistrationTest, the_machine_knows_the_control_by_its_programmatic_id) {
    ASSERT_EQ(module.Run("DllRegisterServer"), S_OK);
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, L"ORVANE4.Orvane4Ctrl.1\\CLSID"), L"{" + WideAscii(kControlGuid) + L"}");
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, L"ORVANE4.Orvane4Ctrl\\CurVer"), L"ORVANE4.Orvane4Ctrl.1");
    EXPECT_EQ(lstrcmpiW(RegistryText(HKEY_LOCAL_MACHINE, kClassKey + L"\\InprocServer32").c_str(), ControlFile().c_str()), 0);
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, kClassKey + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, kClassKey + L"\\TypeLib"), L"{" + WideAscii(kLibraryGuid) + L"}");
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, kClassKey + L"\\Control"));
    Com<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(ToGuid(kLibraryGuid), 1, 0, 0, library.Out()), S_OK);
}

TEST_F(RegistrationTest, it_is_in_the_category_of_controls_and_in_none_of_safety) {
    ASSERT_EQ(module.Run("DllRegisterServer"), S_OK);
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, kClassKey + L"\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}"));
    for (const wchar_t* safety : {L"{7DD95801-9882-11CF-9FA9-00AA006C42C4}", L"{7DD95802-9882-11CF-9FA9-00AA006C42C4}"}) {
        EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, kClassKey + L"\\Implemented Categories\\" + safety));
    }
}

TEST_F(RegistrationTest, removal_takes_all_of_it_out_and_may_be_done_twice) {
    ASSERT_EQ(module.Run("DllRegisterServer"), S_OK);
    EXPECT_EQ(module.Run("DllUnregisterServer"), S_OK);
    for (const std::wstring& key :
         {kClassKey, std::wstring(L"ORVANE4.Orvane4Ctrl.1"), std::wstring(L"ORVANE4.Orvane4Ctrl"),
          L"TypeLib\\{" + WideAscii(kLibraryGuid) + L"}", L"CLSID\\{" + WideAscii(kPropertyPageGuid) + L"}",
          L"Interface\\{" + WideAscii(kMembersGuid) + L"}", L"Interface\\{" + WideAscii(kEventsGuid) + L"}"}) {
        EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, key)) << key.size();
    }
    EXPECT_EQ(module.Run("DllUnregisterServer"), S_OK);
    EXPECT_EQ(module.Run("DllRegisterServer"), S_OK);
}

TEST_F(RegistrationTest, the_names_stay_while_the_other_width_is_registered) {
    BOOL isGuest = FALSE;
    IsWow64Process(GetCurrentProcess(), &isGuest);
    if (sizeof(void*) == 4 && !isGuest) GTEST_SKIP() << "this system has one width only";
    constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    for (const bool user : {false, true}) {
        const HKEY root = user ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
        const auto put = [&](bool in) {
            return user ? module.Install(in, L"user") : module.Run(in ? "DllRegisterServer" : "DllUnregisterServer");
        };
        ASSERT_EQ(put(true), S_OK);
        HKEY other = nullptr;
        const std::wstring key = L"Software\\Classes\\" + kClassKey + L"\\InprocServer32";
        if (RegOpenKeyExW(root, key.c_str(), 0, KEY_READ | kOtherView, &other) == ERROR_SUCCESS) {
            RegCloseKey(other);  // here both widths share this part of the registry
            EXPECT_EQ(put(false), S_OK);
            EXPECT_FALSE(HasKey(root, L"ORVANE4.Orvane4Ctrl.1"));
            continue;
        }
        ASSERT_EQ(RegCreateKeyExW(root, key.c_str(), 0, nullptr, 0, KEY_WRITE | kOtherView, nullptr, &other, nullptr),
                  ERROR_SUCCESS);
        RegCloseKey(other);
        EXPECT_EQ(put(false), S_OK);
        EXPECT_FALSE(HasKey(root, kClassKey));
        for (const char* guid : {kMembersGuid, kEventsGuid}) EXPECT_FALSE(HasKey(root, L"Interface\\{" + WideAscii(guid) + L"}"));
        EXPECT_EQ(RegistryText(root, L"ORVANE4.Orvane4Ctrl.1\\CLSID"), L"{" + WideAscii(kControlGuid) + L"}");
        EXPECT_TRUE(HasKey(root, L"ORVANE4.Orvane4Ctrl"));
        RegDeleteKeyExW(root, key.c_str(), kOtherView, 0);
        RegDeleteKeyExW(root, (L"Software\\Classes\\" + kClassKey).c_str(), kOtherView, 0);
        EXPECT_EQ(put(false), S_OK);
        EXPECT_FALSE(HasKey(root, L"ORVANE4.Orvane4Ctrl.1"));
        EXPECT_FALSE(HasKey(root, L"ORVANE4.Orvane4Ctrl"));
    }
    EXPECT_EQ(module.Run("DllRegisterServer"), S_OK);
}

TEST_F(RegistrationTest, a_user_without_rights_registers_for_himself) {
    ASSERT_EQ(module.Install(true, L"user"), S_OK);
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, L"ORVANE4.Orvane4Ctrl.1\\CLSID"), L"{" + WideAscii(kControlGuid) + L"}");
    EXPECT_EQ(module.Install(false, L"USER"), S_OK);
    for (const std::wstring& key :
         {kClassKey, std::wstring(L"ORVANE4.Orvane4Ctrl.1"), std::wstring(L"ORVANE4.Orvane4Ctrl"),
          L"TypeLib\\{" + WideAscii(kLibraryGuid) + L"}", L"CLSID\\{" + WideAscii(kPropertyPageGuid) + L"}",
          L"Interface\\{" + WideAscii(kMembersGuid) + L"}", L"Interface\\{" + WideAscii(kEventsGuid) + L"}"}) {
        EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, key)) << key.size();
    }
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, L"ORVANE4.Orvane4Ctrl.1")) << "the machine's entries stay";
}

TEST_F(RegistrationTest, any_other_word_or_none_installs_for_the_machine) {
    for (const wchar_t* words : {static_cast<const wchar_t*>(nullptr), L"", L"users", L"machine"}) {
        ASSERT_EQ(module.Install(false, words), S_OK);
        EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, kClassKey));
        ASSERT_EQ(module.Install(true, words), S_OK);
        EXPECT_EQ(RegistryText(HKEY_LOCAL_MACHINE, L"ORVANE4.Orvane4Ctrl.1\\CLSID"), L"{" + WideAscii(kControlGuid) + L"}");
        EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, kClassKey));
    }
}

TEST_F(RegistrationTest, a_module_that_is_locked_stays_in_memory) {
    void* out = nullptr;
    const auto get = module.Entry<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    ASSERT_EQ(get(ToGuid(kControlGuid), IID_IClassFactory, &out), S_OK);
    Com<IClassFactory> factory;
    *factory.Out() = static_cast<IClassFactory*>(out);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Reset();
    EXPECT_EQ(module.Run("DllCanUnloadNow"), S_FALSE);
    ASSERT_EQ(get(ToGuid(kControlGuid), IID_IClassFactory, &out), S_OK);
    *factory.Out() = static_cast<IClassFactory*>(out);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Reset();
    EXPECT_EQ(module.Run("DllCanUnloadNow"), S_OK);
}

TEST_F(RegistrationTest, factories_make_the_control_and_its_page_and_nothing_else) {
    const auto get = module.Entry<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    void* out = nullptr;
    EXPECT_EQ(get(IID_IDispatch, IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(get(ToGuid(kControlGuid), IID_IClassFactory, nullptr), E_POINTER);
    ASSERT_EQ(get(ToGuid(kControlGuid), IID_IClassFactory, &out), S_OK);
    Com<IClassFactory> factory;
    *factory.Out() = static_cast<IClassFactory*>(out);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStorage, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(module.Run("DllCanUnloadNow"), S_FALSE);
    factory.Reset();
    EXPECT_EQ(module.Run("DllCanUnloadNow"), S_OK) << "nothing of the module is in use";
}

/// An object that has the control inside and answers for it.
class Outer final : public IUnknown {
public:
    virtual ~Outer() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid != IID_IUnknown) return inner->QueryInterface(iid, out);
        AddRef();
        *out = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    ULONG refs = 1;
    Com<IUnknown> inner;
};

TEST_F(RegistrationTest, it_can_be_part_of_another_object) {
    Outer outer;
    void* made = nullptr;
    EXPECT_EQ(CoCreateInstance(ToGuid(kControlGuid), &outer, CLSCTX_INPROC_SERVER, IID_IDispatch, &made), CLASS_E_NOAGGREGATION);
    ASSERT_EQ(CoCreateInstance(ToGuid(kControlGuid), &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, &made), S_OK);
    *outer.inner.Out() = static_cast<IUnknown*>(made);
    {
        const Com<IOleObject> object = Query<IOleObject>(&outer, IID_IOleObject);
        ASSERT_TRUE(object);
        EXPECT_EQ(outer.refs, 2U);
        const Com<IUnknown> identity = Query<IUnknown>(object.Get(), IID_IUnknown);
        EXPECT_EQ(identity.Get(), &outer);
        Client client(Query<IDispatch>(&outer, IID_IDispatch));
        EXPECT_TRUE(client.Call(L"OrvInit").Bool());
    }
    EXPECT_EQ(outer.refs, 1U);
    outer.inner.Reset();
}

TEST_F(RegistrationTest, every_interface_leads_back_to_the_same_object) {
    Client control = Client::New();
    const Com<IUnknown> identity = control.As<IUnknown>(IID_IUnknown);
    for (const IID& iid : {IID_IOleObject,
                           IID_IOleControl,
                           IID_IOleWindow,
                           IID_IOleInPlaceObject,
                           IID_IOleInPlaceActiveObject,
                           IID_IViewObject,
                           IID_IViewObject2,
                           IID_IViewObjectEx,
                           IID_IPersist,
                           IID_IPersistStream,
                           IID_IPersistStreamInit,
                           IID_IPersistStorage,
                           IID_IPersistPropertyBag,
                           IID_IConnectionPointContainer,
                           IID_IProvideClassInfo,
                           IID_IProvideClassInfo2,
                           IID_IQuickActivate,
                           IID_ISpecifyPropertyPages,
                           IID_IPerPropertyBrowsing,
                           IID_ISupportErrorInfo,
                           IID_IDataObject,
                           IID_IDispatch}) {
        const Com<IUnknown> part = control.As<IUnknown>(iid);
        ASSERT_TRUE(part);
        const Com<IUnknown> back = Query<IUnknown>(part.Get(), IID_IUnknown);
        EXPECT_EQ(back.Get(), identity.Get());
    }
    EXPECT_FALSE(control.As<IUnknown>(IID_IClassFactory));
}

TEST_F(RegistrationTest, a_program_with_the_manifest_needs_no_registration) {
    ASSERT_EQ(module.Run("DllUnregisterServer"), S_OK);
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    const std::wstring manifest = OwnFolder() + L"orvane4.manifest";
    wanted.lpSource = manifest.c_str();
    const HANDLE context = CreateActCtxW(&wanted);
    ASSERT_NE(context, INVALID_HANDLE_VALUE);
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(context, &cookie));
    {
        Client control = Client::New();
        if (control.Get() != nullptr) {
            EXPECT_TRUE(control.Call(L"OrvInit").Bool());
        }
    }
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
    EXPECT_EQ(module.Run("DllRegisterServer"), S_OK);
}

}  // namespace
}  // namespace orvane::test
