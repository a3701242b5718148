#include "files/archive.h"

#include <algorithm>

#include "files/archive_parts.h"
#include "files/archive_set_files.h"
#include "platform/file_names.h"

namespace orvane {
namespace {

/// Full names of the files of a set. Their extensions are written so, however the data file was named.
std::string SiblingName(std::string_view base, std::string_view extension) { return std::string(base) + std::string(extension); }

std::string DataName(std::string_view base, bool text) { return SiblingName(base, text ? kTextExt : kBinExt); }

/// The known version whose text it is, or an empty text: what is returned outlives every buffer.
std::string_view KnownVersion(std::string_view text) {
    for (const ArcVersion version : {ArcVersion::V100, ArcVersion::V110}) {
        if (text == VersionText(version)) return VersionText(version);
    }
    return {};
}

/// The version behind a title of the file's first bytes, or an empty text. In a text file the first line ends it.
std::string_view VersionBehind(InputFile& file, std::string_view title, bool text) {
    char header[kHeaderSize];
    std::string_view line(header, file.ReadAt(0, header, sizeof header));
    if (text) line = line.substr(0, line.find('\n'));
    return line.size() < title.size() ? std::string_view() : KnownVersion(line.substr(title.size(), kVersionSize));
}

/// Whether the sibling says the version. A missing one may pass.
bool Agrees(Files& files, const std::string& name, std::string_view title, std::string_view version, bool mayMiss) {
    OpenError cause = OpenError::None;
    const std::unique_ptr<InputFile> file = files.OpenRead(name, &cause);
    if (file == nullptr) return mayMiss && cause == OpenError::Missing;
    return VersionBehind(*file, title, false) == version;
}

/// One read of an archive, step by step.
class ArchiveRead {
public:
    ArchiveRead(CDigMem& store, Files& files, const ArcName& name, ArcVersion version, const ArcProgress& progress)
        : store_(store), files_(files), name_(name), is100_(version == ArcVersion::V100), watch_(store, progress) {}

    bool Run(const ArcFilter& filter) {
        const bool layersRead = ReadLayers();
        const bool isWhole = name_.text || (!filter.HasArea() && filter.codes.empty());
        const bool ok = isWhole ? layersRead && ReadWhole() : ReadFiltered(filter, layersRead);
        return ok && ArcReadManage(store_, files_, SiblingName(name_.base, kManageExt));
    }

private:
    bool ReadLayers() {
        const std::string name = SiblingName(name_.base, kLayerExt);
        return is100_ ? ArcReadLayers100(store_, files_, name) : ArcReadLayers110(store_, files_, name);
    }

    bool ReadWhole() {
        const std::string name = DataName(name_.base, name_.text);
        if (name_.text)
            return is100_ ? ArcReadText100(store_, files_, name, watch_) : ArcReadText110(store_, files_, name, watch_);
        return is100_ ? ArcReadBin100(store_, files_, name, watch_) : ArcReadBin110(store_, files_, name, watch_);
    }

    /// Whatever stands in the way of the index, a layer file that cannot be read included, all data is read instead.
    bool ReadFiltered(const ArcFilter& filter, bool layersRead) {
        IdxFile index;
        if (!layersRead || !ArcReadIndex(files_, SiblingName(name_.base, kIndexExt), index)) return ReadWhole();
        if (index.nItems < 1) return true;
        GrowArray<IdxSelected> selected;
        if (!SelectIdxItems(index, filter, selected)) return false;
        index = IdxFile();
        const std::span<const IdxSelected> items(selected.data(), selected.size());
        const std::string name = DataName(name_.base, false);
        return is100_ ? ArcReadBinSel100(store_, files_, name, items, watch_)
                      : ArcReadBinSel110(store_, files_, name, items, watch_);
    }

    CDigMem& store_;
    Files& files_;
    const ArcName& name_;
    bool is100_;
    ArcWatch watch_;
};

bool WriteData(const CDigMem& store, Files& files, const ArcName& name, ArcVersion version, IdxTables& tables, ArcWatch& watch) {
    const std::string file = DataName(name.base, name.text);
    if (version == ArcVersion::V100) {
        return name.text ? ArcWriteText100(store, files, file, tables, watch) : ArcWriteBin100(store, files, file, tables, watch);
    }
    return name.text ? ArcWriteText110(store, files, file, tables, watch) : ArcWriteBin110(store, files, file, tables, watch);
}

bool WriteSet(CDigMem& store, Files& files, const ArcName& name, ArcVersion version, const ArcProgress& progress) {
    if (!name.text && BinDataSize_bytes(store, version) > kMaxBinData_bytes) return false;
    if (!ArcWriteLayers(store, files, SiblingName(name.base, kLayerExt), version)) return false;
    IdxTables tables;
    ArcWatch watch(store, progress);
    if (!WriteData(store, files, name, version, tables, watch)) return false;
    const bool hasIndex = !name.text && !tables.failed;
    if (hasIndex && !ArcWriteIndex(files, SiblingName(name.base, kIndexExt), version, tables)) return false;
    return ArcWriteManage(store, files, SiblingName(name.base, kManageExt), version);
}

/// Runs `work`; what it cannot allocate is a failure like any other.
template <class Result, class Work>
Result Guarded(Result failure, Work work) {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

}  // namespace

bool HasTitle(InputFile& file, std::string_view title) {
    char header[kHeaderSize];
    const std::size_t held = (std::min)(file.ReadAt(0, header, sizeof header), title.size());
    return EqualAnyCase(std::string_view(header, held), title.substr(0, held));
}

void WriteHeader(PackedSink& sink, std::string_view title, ArcVersion version) {
    FieldWriter<kHeaderSize> header;
    header.Text(std::string(title).append(VersionText(version)), kHeaderSize);
    sink.Write(header);
}

ArcName ResolveArcName(std::string_view filename) {
    const std::size_t at = filename.size() - (std::min)(filename.size(), kBinExt.size());
    const std::string_view ending = filename.substr(at);
    if (EqualAnyCase(ending, kBinExt)) return {filename.substr(0, at), false, true};
    if (EqualAnyCase(ending, kTextExt)) return {filename.substr(0, at), true, true};
    return {filename, false, false};
}

std::string_view ArcGetDataVersion(Files& files, std::string_view base, bool text) {
    return Guarded(std::string_view(), [&] {
        const std::unique_ptr<InputFile> file = files.OpenRead(DataName(base, text));
        return file == nullptr ? std::string_view() : VersionBehind(*file, text ? kTextTitle : kBinTitle, text);
    });
}

std::string_view ArcGetVersion(Files& files, std::string_view base, bool text) {
    return Guarded(std::string_view(), [&] {
        const std::string_view version = ArcGetDataVersion(files, base, text);
        ArcSetFiles set(files, base, text);
        const bool agree = !version.empty() && Agrees(set, SiblingName(base, kIndexExt), kIndexTitle, version, false) &&
                           Agrees(set, SiblingName(base, kLayerExt), kLayerTitle, version, false) &&
                           Agrees(set, SiblingName(base, kManageExt), kManageTitle, version, true);
        return agree ? version : std::string_view();
    });
}

bool ArcRead(CDigMem& store, Files& files, std::string_view filename, const ArcFilter& filter, const ArcProgress& progress) {
    const ArcName name = ResolveArcName(filename);
    if (!store.InitDone() || !name.hasExtension) return false;
    return Guarded(false, [&] {
        const std::string_view version = ArcGetVersion(files, name.base, name.text);
        if (version.empty()) return false;
        const ArcVersion known = version == VersionText(ArcVersion::V100) ? ArcVersion::V100 : ArcVersion::V110;
        ArcSetFiles set(files, name.base, name.text);
        return ArchiveRead(store, set, name, known, progress).Run(filter);
    });
}

bool ArcWrite(CDigMem& store, Files& files, std::string_view filename, std::string_view version, const ArcProgress& progress) {
    if (version.empty()) version = VersionText(ArcVersion::V110);
    const bool is100 = version == VersionText(ArcVersion::V100);
    if (!store.InitDone() || KnownVersion(version).empty()) return false;
    return Guarded(false, [&] {
        const ArcVersion known = is100 ? ArcVersion::V100 : ArcVersion::V110;
        return WriteSet(store, files, ResolveArcName(filename), known, progress);
    });
}

}  // namespace orvane
