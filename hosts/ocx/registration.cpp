#include "hosts/ocx/registration.h"

#include <string>
#include <vector>

#include "hosts/ocx/guids.h"
#include "hosts/ocx/module.h"
#include "hosts/ocx/ole_object.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

constexpr wchar_t kCategoryControl[] = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr wchar_t kDispatchMarshaller[] = L"{00020420-0000-0000-C000-000000000046}";
// Both widths share one entry of the type library, each with a key of its own below.
constexpr const wchar_t* kWidthKey = sizeof(void*) == 8 ? L"win64" : L"win32";

struct Entry {
    std::wstring key;  // below Software\Classes
    const wchar_t* name;
    std::wstring value;
};

std::wstring Braced(const char* guid) { return L"{" + WideAscii(guid) + L"}"; }

std::wstring ClassKey(const char* guid) { return L"CLSID\\" + Braced(guid); }

std::wstring LibraryKey() { return L"TypeLib\\" + Braced(kLibraryGuid); }

void AppendLibrary(std::vector<Entry>& entries) {
    const std::wstring path = ModulePath();
    const std::wstring version = LibraryKey() + L"\\1.0";
    entries.push_back({version, nullptr, WideAscii(kControlTitle)});
    entries.push_back({version + L"\\0\\" + kWidthKey, nullptr, path});
    entries.push_back({version + L"\\FLAGS", nullptr, L"0"});
    entries.push_back({version + L"\\HELPDIR", nullptr, path.substr(0, path.find_last_of(L'\\'))});
    const struct {
        const char* guid;
        const wchar_t* name;
    } interfaces[] = {{kMembersGuid, L"_DOrvane4"}, {kEventsGuid, L"_DOrvane4Events"}};
    for (const auto& each : interfaces) {
        const std::wstring key = L"Interface\\" + Braced(each.guid);
        entries.push_back({key, nullptr, each.name});
        entries.push_back({key + L"\\ProxyStubClsid32", nullptr, kDispatchMarshaller});
        entries.push_back({key + L"\\TypeLib", nullptr, Braced(kLibraryGuid)});
        entries.push_back({key + L"\\TypeLib", L"Version", L"1.0"});
    }
}

std::vector<Entry> Entries() {
    const std::wstring path = ModulePath();
    const std::wstring control = ClassKey(kControlGuid);
    const std::wstring page = ClassKey(kPropertyPageGuid);
    const std::wstring title = WideAscii(kControlTitle);
    const std::wstring progId = WideAscii(kProgId);
    const std::wstring anyVersion = WideAscii(kProgIdAnyVersion);
    std::vector<Entry> entries{
        {control, nullptr, title},
        {control + L"\\InprocServer32", nullptr, path},
        {control + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {control + L"\\ProgID", nullptr, progId},
        {control + L"\\VersionIndependentProgID", nullptr, anyVersion},
        {control + L"\\Control", nullptr, L""},
        {control + L"\\MiscStatus", nullptr, L"0"},
        {control + L"\\MiscStatus\\1", nullptr, std::to_wstring(kMiscStatus)},
        {control + L"\\TypeLib", nullptr, Braced(kLibraryGuid)},
        {control + L"\\Version", nullptr, L"1.0"},
        {control + L"\\Implemented Categories\\" + kCategoryControl, nullptr, L""},
        {progId, nullptr, title},
        {progId + L"\\CLSID", nullptr, Braced(kControlGuid)},
        {anyVersion, nullptr, title},
        {anyVersion + L"\\CLSID", nullptr, Braced(kControlGuid)},
        {anyVersion + L"\\CurVer", nullptr, progId},
        {page, nullptr, title + L" Property Page"},
        {page + L"\\InprocServer32", nullptr, path},
        {page + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
    };
    AppendLibrary(entries);
    return entries;
}

HKEY Root(bool forUser) { return forUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }
std::wstring Below(const std::wstring& key) { return L"Software\\Classes\\" + key; }

HRESULT Write(HKEY root, const Entry& entry) {
    HKEY key = nullptr;
    LSTATUS done = RegCreateKeyExW(root, Below(entry.key).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    if (done != ERROR_SUCCESS) return HRESULT_FROM_WIN32(done);
    const auto bytes = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    done = RegSetValueExW(key, entry.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.value.c_str()), bytes);
    RegCloseKey(key);
    return HRESULT_FROM_WIN32(done);
}

/// Nothing to delete is as good as deleted.
HRESULT DeleteTree(HKEY root, const std::wstring& key) {
    const LSTATUS gone = RegDeleteTreeW(root, Below(key).c_str());
    return gone == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(gone);
}

/// Whether the control of the other width is registered. A system that has one width only shows its own class under either view.
bool HasOtherWidth(HKEY root) {
    constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    BOOL isGuest = FALSE;
    if (sizeof(void*) == 4 && (!IsWow64Process(GetCurrentProcess(), &isGuest) || !isGuest)) return false;
    HKEY key = nullptr;
    const std::wstring server = Below(ClassKey(kControlGuid) + L"\\InprocServer32");
    if (RegOpenKeyExW(root, server.c_str(), 0, KEY_READ | kOtherView, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

/// The library of the other width stays.
HRESULT DeleteLibrary(HKEY root) {
    const HRESULT own = DeleteTree(root, LibraryKey() + L"\\1.0\\0\\" + kWidthKey);
    HKEY widths = nullptr;
    const LSTATUS opened = RegOpenKeyExW(root, Below(LibraryKey() + L"\\1.0\\0").c_str(), 0, KEY_READ, &widths);
    if (FAILED(own) || opened != ERROR_SUCCESS) return own;
    DWORD others = 0;
    RegQueryInfoKeyW(widths, nullptr, nullptr, nullptr, &others, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    RegCloseKey(widths);
    return others > 0 ? S_OK : DeleteTree(root, LibraryKey());
}

}  // namespace

HRESULT RegisterControl(bool forUser) {
    return Guarded([&] {
        for (const Entry& entry : Entries()) {
            const HRESULT written = Write(Root(forUser), entry);
            if (FAILED(written)) return written;
        }
        return S_OK;
    });
}

HRESULT UnregisterControl(bool forUser) {
    return Guarded([&] {
        HRESULT result = DeleteLibrary(Root(forUser));
        const auto remove = [&](const std::wstring& key) {
            const HRESULT gone = DeleteTree(Root(forUser), key);
            if (FAILED(gone)) result = gone;
        };
        for (const std::wstring& key : {ClassKey(kControlGuid), ClassKey(kPropertyPageGuid),
                                        L"Interface\\" + Braced(kMembersGuid), L"Interface\\" + Braced(kEventsGuid)}) {
            remove(key);
        }
        // The names stand once for both widths. Asked last: a part of the registry that the widths share shows one class twice.
        if (HasOtherWidth(Root(forUser))) return result;
        remove(WideAscii(kProgId));
        remove(WideAscii(kProgIdAnyVersion));
        return result;
    });
}

}  // namespace orvane
