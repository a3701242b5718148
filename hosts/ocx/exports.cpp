// The entries that COM and regsvr32 call.
#include "hosts/ocx/class_factory.h"
#include "hosts/ocx/control_window.h"
#include "hosts/ocx/module.h"
#include "hosts/ocx/registration.h"

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) { return orvane::GetFactory(clsid, iid, out); }

HRESULT WINAPI DllCanUnloadNow() {
    if (!orvane::ModuleIsUnused()) return S_FALSE;
    orvane::ForgetWindowClass();  // its procedure goes with the module
    return S_OK;
}

/// For the machine, which takes the rights of an administrator.
HRESULT WINAPI DllRegisterServer() { return orvane::RegisterControl(false); }
HRESULT WINAPI DllUnregisterServer() { return orvane::UnregisterControl(false); }

/// What regsvr32 /i calls: "user" registers for this user alone, anything else for the machine.
HRESULT WINAPI DllInstall(BOOL install, PCWSTR arguments) {
    const bool forUser = arguments != nullptr && lstrcmpiW(arguments, L"user") == 0;
    return install ? orvane::RegisterControl(forUser) : orvane::UnregisterControl(forUser);
}
}
