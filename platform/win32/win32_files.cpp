#include "platform/win32/win32_files.h"

#include <windows.h>
// windows.h comes first
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/cp932.h"
#include "platform/file_names.h"
#include "platform/win32/wide.h"

namespace orvane {

namespace {

/// A handle that is closed in the end.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : handle_(handle) {}
    FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&&) = delete;
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { Close(); }

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }
    bool Close() {
        const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
        return handle != INVALID_HANDLE_VALUE && CloseHandle(handle) != 0;
    }

private:
    HANDLE handle_;
};

// A single call moves at most this much; the system's count has 32 bits.
constexpr std::size_t kLargestPart_bytes = std::size_t{1} << 30;

class Win32InputFile final : public InputFile {
public:
    Win32InputFile(FileHandle file, std::uint64_t size_bytes) : file_(std::move(file)), size_bytes_(size_bytes) {}

    std::uint64_t Size_bytes() const override { return size_bytes_; }

    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t size) override {
        if (offset >= size_bytes_) return 0;
        auto left = static_cast<std::size_t>((std::min)(static_cast<std::uint64_t>(size), size_bytes_ - offset));
        std::size_t done = 0;
        while (left > 0) {
            OVERLAPPED place{};
            place.Offset = static_cast<DWORD>(offset + done);
            place.OffsetHigh = static_cast<DWORD>((offset + done) >> 32);
            DWORD got = 0;
            const auto wanted = static_cast<DWORD>((std::min)(left, kLargestPart_bytes));
            if (!ReadFile(file_.Get(), static_cast<char*>(buffer) + done, wanted, &got, &place) || got == 0) break;
            done += got;
            left -= got;
        }
        return done;
    }

private:
    FileHandle file_;
    std::uint64_t size_bytes_;
};

class Win32OutputFile final : public OutputFile {
public:
    explicit Win32OutputFile(FileHandle file) : file_(std::move(file)) {}

    bool Write(const void* data, std::size_t size) override {
        const auto* from = static_cast<const char*>(data);
        while (size > 0) {
            DWORD taken = 0;
            const auto part = static_cast<DWORD>((std::min)(size, kLargestPart_bytes));
            if (!file_.IsOpen() || !WriteFile(file_.Get(), from, part, &taken, nullptr) || taken == 0) {
                whole_ = false;
                return false;
            }
            from += taken;
            size -= taken;
        }
        return file_.IsOpen();
    }

    bool Close() override { return file_.Close() && whole_; }

private:
    FileHandle file_;
    bool whole_ = true;
};

/// The forms in which a name is tried, in order.
std::vector<std::wstring> WideNames(std::string_view name) {
    std::vector<std::wstring> names;
    // A name that the system would cut short at a zero character is no name.
    if (name.empty() || name.find('\0') != std::string_view::npos) return names;
    if (DecodeCp932(name)) names.push_back(WideShown(name));
    auto asUtf8 = WideFromUtf8(name);
    if (asUtf8 && (names.empty() || names.front() != *asUtf8)) names.push_back(std::move(*asUtf8));
    return names;
}

// Nothing below throws out: a name without memory for it is a name that cannot be opened.
template <class Result, class Work>
Result Guarded(Result failure, Work work) {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

bool IsMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_BAD_NETPATH || error == ERROR_BAD_NET_NAME || error == ERROR_INVALID_DRIVE;
}

std::optional<WIN32_FILE_ATTRIBUTE_DATA> AttributesOf(const std::wstring& name) {
    WIN32_FILE_ATTRIBUTE_DATA told{};
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &told)) return std::nullopt;
    return told;
}

// Pipes, consoles and the printer's port open as files too; to read one would wait for ever.
bool IsDiskFile(const FileHandle& file) { return file.IsOpen() && GetFileType(file.Get()) == FILE_TYPE_DISK; }

std::int64_t UnixTime_ns(const FILETIME& time) {
    constexpr std::int64_t kTicksTo1970 = 116444736000000000;  // of 100 ns, from 1601
    const auto ticks = static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
    return (ticks - kTicksTo1970) * 100;
}

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

/// The name in code page 932, or else in UTF-8; nothing for one that is no text at all.
std::optional<std::string> HostName(const wchar_t* name) {
    auto utf8 = Utf8FromWide(name);
    if (!utf8) return std::nullopt;
    auto bytes = EncodeCp932(*utf8);
    return bytes ? bytes : utf8;
}

}  // namespace

std::unique_ptr<InputFile> Win32Files::OpenRead(std::string_view name, OpenError* cause) {
    OpenError why = OpenError::Other;
    auto opened = Guarded(std::unique_ptr<InputFile>(), [&]() -> std::unique_ptr<InputFile> {
        why = OpenError::Missing;
        for (const std::wstring& wide : WideNames(name)) {
            FileHandle file(
                CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (!file.IsOpen()) {
                if (IsMissing(GetLastError())) continue;
                why = OpenError::Other;
                return nullptr;
            }
            LARGE_INTEGER size{};
            why = OpenError::Other;
            if (!IsDiskFile(file) || !GetFileSizeEx(file.Get(), &size)) return nullptr;
            auto made = std::make_unique<Win32InputFile>(std::move(file), static_cast<std::uint64_t>(size.QuadPart));
            why = OpenError::None;
            return made;
        }
        return nullptr;
    });
    if (cause != nullptr) *cause = why;
    return opened;
}

std::unique_ptr<OutputFile> Win32Files::Create(std::string_view name) {
    return Guarded(std::unique_ptr<OutputFile>(), [&]() -> std::unique_ptr<OutputFile> {
        const auto create = [](const std::wstring& wide) -> std::unique_ptr<OutputFile> {
            FileHandle file(CreateFileW(wide.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
            return IsDiskFile(file) ? std::make_unique<Win32OutputFile>(std::move(file)) : nullptr;
        };
        // A file that is there is the one that is meant.
        const std::vector<std::wstring> names = WideNames(name);
        for (const std::wstring& wide : names) {
            if (AttributesOf(wide)) return create(wide);
        }
        for (const std::wstring& wide : names) {
            if (auto file = create(wide)) return file;
        }
        return nullptr;
    });
}

bool Win32Files::Facts(std::string_view name, FileFacts& out) {
    return Guarded(false, [&] {
        for (const std::wstring& wide : WideNames(name)) {
            const auto told = AttributesOf(wide);
            if (!told) continue;
            FileFacts facts;
            facts.directory = (told->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            facts.size_bytes = facts.directory ? 0 : Joined(told->nFileSizeHigh, told->nFileSizeLow);
            facts.changeTime_ns = UnixTime_ns(told->ftLastWriteTime);
            out = facts;
            return true;
        }
        return false;
    });
}

std::vector<std::string> Win32Files::List(std::string_view directory, std::string_view pattern) {
    return Guarded(std::vector<std::string>(), [&] {
        std::vector<std::string> names;
        for (const std::wstring& folder : WideNames(directory)) {
            // The system's own patterns also match the short names that it keeps, so all names are looked at here.
            const bool ended = folder.back() == L'\\' || folder.back() == L'/' || folder.back() == L':';
            WIN32_FIND_DATAW entry{};
            const HANDLE search = FindFirstFileW((folder + (ended ? L"*" : L"\\*")).c_str(), &entry);
            if (search == INVALID_HANDLE_VALUE) continue;
            const std::unique_ptr<void, decltype(&FindClose)> closer(search, &FindClose);
            do {
                if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
                auto host = HostName(entry.cFileName);
                if (host && MatchAnyCase(pattern, *host)) names.push_back(std::move(*host));
            } while (FindNextFileW(search, &entry));
            break;
        }
        std::sort(names.begin(), names.end());
        return names;
    });
}

}  // namespace orvane
