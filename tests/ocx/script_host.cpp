#include "tests/ocx/script_host.h"

#include <activscp.h>

#include "control/automation/table.h"
#include "hosts/ocx/guids.h"

namespace orvane::test {

namespace {

// The libraries of the free compilers lack this one.
#ifdef _WIN64
constexpr GUID kIidParse = ToGuid("C7EF7658-E1EE-480E-97EA-D52CB4D76D17");
#else
constexpr GUID kIidParse = ToGuid("BB1A2AE2-A4F9-11CF-8F20-00805F2CD064");
#endif

class Site final : public IActiveScriptSite {
public:
    explicit Site(IDispatch* map) : map_(map) {}
    virtual ~Site() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown || iid == IID_IActiveScriptSite ? this : nullptr;
        return *out == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD mask, IUnknown** object, ITypeInfo** info) override {
        if ((mask & SCRIPTINFO_IUNKNOWN) != 0) GiveInterface(object, static_cast<IUnknown*>(map_));
        if ((mask & SCRIPTINFO_ITYPEINFO) != 0 && info != nullptr) *info = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO about{};
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        error->GetExceptionInfo(&about);
        error->GetSourcePosition(&context, &line, &column);
        if (words.empty()) {
            code = about.scode;
            words = L"line " + std::to_wstring(line + 1) + L": " + (about.bstrDescription ? about.bstrDescription : L"?");
        }
        for (const BSTR text : {about.bstrSource, about.bstrDescription, about.bstrHelpFile}) SysFreeString(text);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

    HRESULT code = S_OK;
    std::wstring words;

private:
    IDispatch* map_;
};

/// Calls the script's function of an event's name, where it has one.
class EventCaller final : public IDispatch {
public:
    explicit EventCaller(IDispatch* script) : script_(script) {}
    virtual ~EventCaller() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown || iid == IID_IDispatch || iid == ToGuid(kEventsGuid) ? this : nullptr;
        return *out == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                                     UINT*) override {
        const Member* event = Surface().FindEvent(static_cast<std::int32_t>(dispid));
        if (event == nullptr) return DISP_E_MEMBERNOTFOUND;
        std::wstring name = L"Map_" + std::wstring(event->name.begin(), event->name.end());
        LPOLESTR names = name.data();
        DISPID function = 0;
        if (FAILED(script_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &function))) return S_OK;
        return script_->Invoke(function, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, params, result, exception, nullptr);
    }

private:
    IDispatch* script_;
};

}  // namespace

ScriptRun RunScript(const wchar_t* engine, const std::wstring& text, Client& map, const std::function<void()>& during) {
    const Deadline deadline("a script", 40);
    ScriptRun run;
    CLSID clsid{};
    void* made = nullptr;
    if (FAILED(CLSIDFromProgID(engine, &clsid))) return run;
    if (FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, &made))) return run;
    Com<IActiveScript> script;
    *script.Out() = static_cast<IActiveScript*>(made);
    const Com<IActiveScriptParse> parse = Query<IActiveScriptParse>(script.Get(), kIidParse);
    Site site(map.Get());
    script->SetScriptSite(&site);
    parse->InitNew();
    script->AddNamedItem(L"Map", SCRIPTITEM_ISVISIBLE);
    script->SetScriptState(SCRIPTSTATE_STARTED);
    run.result = parse->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 1, SCRIPTTEXT_ISVISIBLE, nullptr, nullptr);
    Com<IDispatch> functions;
    script->GetScriptDispatch(nullptr, functions.Out());
    if (during && functions) {
        EventCaller caller(functions.Get());
        const Com<IConnectionPointContainer> points = map.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
        Com<IConnectionPoint> point;
        DWORD cookie = 0;
        points->FindConnectionPoint(ToGuid(kEventsGuid), point.Out());
        point->Advise(&caller, &cookie);
        during();
        point->Unadvise(cookie);
    }
    functions.Reset();
    script->Close();
    run.code = site.code;
    run.error = site.words;
    return run;
}

void ExpectScript(const wchar_t* engine, const std::wstring& text, Client& map, const std::function<void()>& during) {
    const ScriptRun run = RunScript(engine, text, map, during);
    EXPECT_EQ(run.result, S_OK);
    EXPECT_EQ(run.error, L"");
}

}  // namespace orvane::test
