#include "platform/files_std.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <system_error>

#include "platform/file_names.h"

namespace orvane {

namespace {

namespace fs = std::filesystem;

class StdInputFile : public InputFile {
public:
    bool Open(const fs::path& path) {
        // The readers above bring buffers of their own; a second one would only copy.
        stream_.rdbuf()->pubsetbuf(nullptr, 0);
        stream_.open(path, std::ios::in | std::ios::binary);
        if (!stream_.is_open() || !stream_.seekg(0, std::ios::end)) return false;
        const std::streamoff end = stream_.tellg();
        if (end < 0) return false;
        size_bytes_ = static_cast<std::uint64_t>(end);
        return true;
    }

    std::uint64_t Size_bytes() const override { return size_bytes_; }

    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t size) override {
        if (offset >= size_bytes_) return 0;
        const auto wanted = (std::min)(static_cast<std::uint64_t>(size), size_bytes_ - offset);
        // An earlier read that failed must not spoil this one.
        stream_.clear();
        if (!stream_.seekg(static_cast<std::streamoff>(offset))) return 0;
        stream_.read(static_cast<char*>(buffer), static_cast<std::streamsize>(wanted));
        return static_cast<std::size_t>(stream_.gcount());
    }

private:
    std::ifstream stream_;
    std::uint64_t size_bytes_ = 0;
};

class StdOutputFile : public OutputFile {
public:
    bool Open(const fs::path& path) {
        stream_.open(path, std::ios::out | std::ios::binary | std::ios::trunc);
        return stream_.is_open();
    }

    bool Write(const void* data, std::size_t size) override {
        if (size > static_cast<std::size_t>((std::numeric_limits<std::streamsize>::max)())) return false;
        return stream_.is_open() && stream_.write(static_cast<const char*>(data), static_cast<std::streamsize>(size)).good();
    }

    bool Close() override {
        if (!stream_.is_open()) return false;
        stream_.close();
        return stream_.good();
    }

private:
    std::ofstream stream_;
};

// Runs `work` so that nothing the standard library throws (a name that is no path, memory that cannot be had) gets out.
template <class Result, class Work>
Result Guarded(Result failure, Work work) {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

// Also true for what the system will not let us look at: it is there, and opening it fails for another cause than missing.
bool Exists(const fs::path& path) {
    std::error_code error;
    return fs::status(path, error).type() != fs::file_type::not_found;
}

// The entry of a folder whose name is the one that is meant; among several the first by name, so that the answer never depends on
// the order of the folder.
template <class IsMeant>
fs::path EntryThat(const fs::path& folder, IsMeant isMeant) {
    std::error_code error;
    std::string best;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string found = entry->path().filename().string();
        if ((best.empty() || found < best) && isMeant(found)) best = found;
    }
    return best.empty() ? fs::path() : folder / best;
}

// The entry of a folder whose name differs in case only, else one that is the same name to the host: code page 932 has one wave
// dash where systems have two.
fs::path EntryLike(const fs::path& folder, const std::string& name, const StdFiles::NameConverter& toHost) {
    fs::path inAnyCase = EntryThat(folder, [&](const std::string& found) { return EqualAnyCase(found, name); });
    const auto wanted = toHost && inAnyCase.empty() ? toHost(name) : std::nullopt;
    if (!wanted) return inAnyCase;
    return EntryThat(folder, [&](const std::string& found) { return toHost(found) == wanted; });
}

fs::path ExistingPath(const std::string& name, const StdFiles::NameConverter& toHost) {
    const fs::path path(name);
    if (Exists(path)) return path;
    fs::path reached = path.root_path();
    for (const fs::path& part : path.relative_path()) {
        fs::path next = reached / part;
        // An empty last part stands for a separator at the end, which only a folder may have.
        if (!part.empty() && !Exists(next)) next = EntryLike(reached, part.string(), toHost);
        if (next.empty() || !Exists(next)) return {};
        reached = std::move(next);
    }
    return reached;
}

bool IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// The file beside `path` with another extension in place of the last `own` bytes, in any case of its own.
fs::path SiblingOf(const fs::path& path, std::size_t own, std::string_view extension) {
    const std::string name = path.filename().string();
    const std::string stem = name.substr(0, name.size() - (std::min)(name.size(), own));
    const fs::path folder = path.parent_path();
    if (const fs::path exact = folder / (stem + std::string(extension)); Exists(exact)) return exact;
    std::error_code error;
    std::string best;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string found = entry->path().filename().string();
        if (!found.starts_with(stem) || !EqualAnyCase(std::string_view(found).substr(stem.size()), extension)) continue;
        if (!Exists(entry->path())) continue;  // a link to nothing
        if (best.empty() || found < best) best = found;
    }
    return best.empty() ? fs::path() : folder / best;
}

// Opens what `find` finds.
template <class FindPath>
std::unique_ptr<InputFile> OpenFound(FindPath find, OpenError* cause) {
    OpenError why = OpenError::Other;
    auto file = Guarded(std::unique_ptr<InputFile>(), [&]() -> std::unique_ptr<InputFile> {
        const fs::path path = find();
        if (path.empty()) {
            why = OpenError::Missing;
            return nullptr;
        }
        // Only a plain file has a size and places to read at; to open a pipe would wait for its writer.
        std::error_code error;
        if (!fs::is_regular_file(path, error)) return nullptr;
        auto opened = std::make_unique<StdInputFile>();
        if (!opened->Open(path)) return nullptr;
        why = OpenError::None;
        return opened;
    });
    if (cause != nullptr) *cause = why;
    return file;
}

// A name that the system would cut short at a zero byte is no name.
bool IsBadName(std::string_view name) { return name.empty() || name.find('\0') != std::string_view::npos; }

}  // namespace

std::vector<std::string> StdFiles::SystemNames(std::string_view name) const {
    if (IsBadName(name)) return {};
    std::vector<std::string> names;
    const auto converted = toSystem ? toSystem(name) : std::nullopt;
    if (converted && !IsBadName(*converted) && *converted != name) names.push_back(*converted);
    names.emplace_back(name);
    return names;
}

std::string StdFiles::HostName(const std::string& systemName) const {
    return toHost ? toHost(systemName).value_or(systemName) : systemName;
}

fs::path StdFiles::Find(std::string_view name) const {
    for (const std::string& systemName : SystemNames(name)) {
        fs::path found = Guarded(fs::path(), [&] { return ExistingPath(systemName, toHost); });
        if (!found.empty()) return found;
    }
    return {};
}

std::string StdFiles::SystemPath(std::string_view name) const {
    if (IsBadName(name)) return {};
    return Guarded(std::string(), [&] { return Find(name).string(); });
}

std::unique_ptr<InputFile> StdFiles::OpenRead(std::string_view name, OpenError* cause) {
    return OpenFound([&] { return Find(name); }, cause);
}

std::unique_ptr<InputFile> StdFiles::OpenSibling(std::string_view base, std::string_view own, std::string_view extension,
                                                 OpenError* cause) {
    return OpenFound(
        [&] {
            const fs::path beside = Find(std::string(base).append(own));
            return beside.empty() ? Find(std::string(base).append(extension)) : SiblingOf(beside, own.size(), extension);
        },
        cause);
}

std::unique_ptr<OutputFile> StdFiles::Create(std::string_view name) {
    return Guarded(std::unique_ptr<OutputFile>(), [&]() -> std::unique_ptr<OutputFile> {
        const auto open = [](const fs::path& path) -> std::unique_ptr<OutputFile> {
            auto opened = std::make_unique<StdOutputFile>();
            if (IsFolder(path) || !opened->Open(path)) return nullptr;
            return opened;
        };
        // A file that is there in another case is the one that is meant.
        const fs::path existing = Find(name);
        if (!existing.empty()) return open(existing);
        for (const std::string& systemName : SystemNames(name)) {
            const fs::path path(systemName);
            const fs::path folder = path.has_parent_path() ? ExistingPath(path.parent_path().string(), toHost) : fs::path();
            if (path.has_parent_path() && folder.empty()) continue;
            auto file = open(folder / path.filename());
            if (file != nullptr) return file;
        }
        return nullptr;
    });
}

bool StdFiles::Facts(std::string_view name, FileFacts& out) {
    return Guarded(false, [&] {
        const fs::path path = Find(name);
        if (path.empty()) return false;
        std::error_code error;
        FileFacts facts;
        facts.directory = IsFolder(path);
        if (fs::is_regular_file(path, error)) facts.size_bytes = fs::file_size(path, error);
        if (error) return false;
        const fs::file_time_type changed = fs::last_write_time(path, error);
        if (error) return false;
        const auto sinceEpoch = std::chrono::file_clock::to_sys(changed).time_since_epoch();
        facts.changeTime_ns = std::chrono::duration_cast<std::chrono::nanoseconds>(sinceEpoch).count();
        out = facts;
        return true;
    });
}

std::vector<std::string> StdFiles::List(std::string_view directory, std::string_view pattern) {
    return Guarded(std::vector<std::string>(), [&] {
        std::vector<std::string> names;
        const fs::path folder = Find(directory);
        const std::vector<std::string> patterns = SystemNames(pattern);
        if (folder.empty()) return names;
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            const bool wanted =
                std::any_of(patterns.begin(), patterns.end(), [&](const std::string& one) { return MatchAnyCase(one, name); });
            if (wanted && !IsFolder(entry->path())) names.push_back(HostName(name));
        }
        std::sort(names.begin(), names.end());
        return names;
    });
}

}  // namespace orvane
