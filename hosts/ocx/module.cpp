#include "hosts/ocx/module.h"

namespace orvane {

namespace {

HINSTANCE instance = nullptr;
std::atomic<long> useCnt{0};

}  // namespace

void LockModule() { ++useCnt; }
void UnlockModule() { --useCnt; }
bool ModuleIsUnused() { return useCnt == 0; }

HINSTANCE ModuleInstance() { return instance; }

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(instance, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        if (path.size() > 0x8000) return {};
        path.resize(path.size() * 2);
    }
}

HRESULT LoadOwnTypeLib(ITypeLib** out) { return LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, out); }

HRESULT LoadTypeInfo(REFGUID guid, ITypeInfo** out) {
    return Guarded([&] {
        Com<ITypeLib> library;
        const HRESULT loaded = LoadOwnTypeLib(library.Out());
        return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(guid, out);
    });
}

}  // namespace orvane

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        orvane::instance = instance;
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}
