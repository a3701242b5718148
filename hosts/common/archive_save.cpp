#include "hosts/common/archive_save.h"

#include <algorithm>
#include <filesystem>

#include "files/archive_parts.h"
#include "hosts/common/archive_losses.h"
#include "hosts/common/archive_swap.h"
#include "hosts/common/text_limits.h"
#include "hosts/common/write_watch.h"
#include "platform/cp932.h"
#include "platform/file_names.h"
#include "platform/files_std.h"

namespace orvane {
namespace {

/// The words of a finding as UTF-8: names are the system's bytes, codes those of the code page.
std::string Shown(const std::string& words) { return IsUtf8(words) ? words : DecodeCp932Shown(words); }

/// Gives each step its share of the whole progress, and remembers that it was cancelled.
class Steps {
public:
    explicit Steps(const HostProgress& progress) : progress_(progress) {}
    ArcProgress Step(double from, double to) {
        return [this, from, to](double done) {
            if (progress_ && !progress_(from + (to - from) * done)) cancelled_ = true;
            return !cancelled_;
        };
    }
    bool Cancelled() const { return cancelled_; }

private:
    const HostProgress& progress_;
    bool cancelled_ = false;
};

ArcCounts CountStore(const CDigMem& store, const std::vector<std::string>& leaveOut = {}) {
    ArcCounts counts;
    counts.layers = store.LayerCnt();
    for (const std::string& code : leaveOut) counts.layers -= store.FindLayDef(code) >= 0;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (block.blkState != 1) continue;
        ++counts.blocks;
        if (!block.path.empty()) ++counts.paths;
        const std::uint64_t key = ArcKeyNumber(block.code.View(), block.meshNo);
        for (const DigDat& dat : block.dats) {
            ++counts.items;
            counts.keySum += key;
            counts.points += (std::max)(dat.pntCnt, 0);
            if (dat.str != nullptr) ++counts.texts;
            if (dat.meshAttr != nullptr) ++counts.meshes;
        }
    }
    return counts;
}

/// What keeps the written set from being the store's, or an empty text.
std::string WhatIsWrong(const ArcReport& report, const ArcCounts& store) {
    if (!report.finished) return "it could not be looked through";
    for (const ArcFinding& finding : report.findings) {
        // That this form is never read back is what was asked for.
        if (finding.severity == ArcSeverity::Error && finding.fault != ArcFault::NeverRead) {
            return finding.words;
        }
    }
    const ArcCounts& written = report.counts;
    const auto differs = [](const char* what, std::int64_t has, std::int64_t should) {
        return has == should ? std::string()
                             : "it holds " + std::to_string(has) + " " + what + " where the map has " + std::to_string(should);
    };
    std::string wrong = differs("layers", written.layers, store.layers);
    // In text, blocks show only by what their items tell.
    if (wrong.empty() && !report.text) wrong = differs("blocks", written.blocks, store.blocks);
    if (wrong.empty()) wrong = differs("items", written.items, store.items);
    if (wrong.empty() && written.keySum != store.keySum) wrong = "its items have other codes or mesh numbers than the map's";
    if (wrong.empty()) wrong = differs("points", written.points, store.points);
    if (wrong.empty()) wrong = differs("texts", written.texts, store.texts);
    if (wrong.empty() && report.version == "1.10") wrong = differs("grids", written.meshes, store.meshes);
    if (wrong.empty()) wrong = differs("paths", written.paths, store.paths);
    return wrong;
}

/// Base name of the set that is meant by `path`: behind links, where they lead to one.
std::string BaseOf(const std::string& path) {
    const std::string base(ResolveArcName(path).base);
    return ArchiveBehindLinks(base).value_or(base);
}

/// The file that is read for `path`: behind a link, siblings that a save has made have no link of their own.
std::string FileOf(const std::string& path) {
    const std::string_view base = ResolveArcName(path).base;
    const std::string file = BaseOf(path) + path.substr(base.size());
    std::error_code error;
    return std::filesystem::exists(file, error) ? file : path;
}

SetLooks LooksOfBase(const std::string& base, FolderMoves& moves, Files& files) {
    SetLooks looks;
    for (const std::string& extension : ArchivePlace(moves, base).Extensions()) {
        looks.emplace_back(base + extension, FileFacts{});
        // One that is gone by now keeps the facts of nothing, which no file has.
        files.Facts(looks.back().first, looks.back().second);
    }
    return looks;
}

SetLooks LooksOfSet(const std::string& path, FolderMoves& moves, Files& files) { return LooksOfBase(BaseOf(path), moves, files); }

/// One save, step by step; each step answers an error or an empty text.
class Save {
public:
    Save(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress, Files& files,
         FolderMoves& moves, const std::vector<std::string>& leaveOut, const SetLooks* mayReplace)
        : store_(store),
          leaveOut_(leaveOut),
          mayReplace_(mayReplace),
          disk_(files),
          files_(files),
          moves_(moves),
          oneSet_(ArchiveBehindLinks(std::string(ResolveArcName(path).base)).has_value()),
          base_(BaseOf(path)),
          text_(ResolveArcName(path).text),
          version_(version.empty() ? "1.10" : version),
          steps_(progress),
          place_(moves, base_) {}

    SavedArchive Run() {
        SavedArchive result;
        result.error = WhatCannotBeSaved();
        if (!result.error.empty()) return result;
        result.error = TakePlace();
        if (!result.error.empty()) return result;
        const std::vector<std::string> before = place_.Extensions();
        if (mayReplace_ != nullptr && !before.empty() && LooksOfBase(base_, moves_, disk_) != *mayReplace_) {
            result.others = true;
            result.error = "another program has saved it since";
            return result;
        }
        keepsBinary_ = !text_ || Contains(before, kBinExt);
        result.error = WriteAndSwap(result.counts);
        if (!result.error.empty()) {
            if (!place_.Restore()) result.error += "; the archive that was there will be brought back at its next opening";
            return result;
        }
        result.saved = true;
        result.looks = LooksOfBase(base_, moves_, disk_);
        result.notes = ArchiveLosses(store_, text_, version_, leaveOut_);
        const std::vector<std::string> now = place_.Extensions();
        for (const std::string& extension : before) {
            if (!Contains(now, extension)) result.notes.push_back(base_ + extension + " was of the former set and is gone");
        }
        return result;
    }

private:
    static bool Contains(const std::vector<std::string>& extensions, std::string_view one) {
        return std::any_of(extensions.begin(), extensions.end(), [=](const std::string& e) { return EqualAnyCase(e, one); });
    }

    std::string WhatCannotBeSaved() const {
        if (!oneSet_) return "its files are links that do not lead to one archive";
        if (version_ != "1.00" && version_ != "1.10") return "no such version of an archive: " + version_;
        if (store_.LayerCnt() == 0 || CountStore(store_).blocks == 0) return "the map has no layers or no data to save";
        const ArcVersion version = version_ == "1.00" ? ArcVersion::V100 : ArcVersion::V110;
        if (BinDataSize_bytes(store_, version) > kMaxBinData_bytes) return "the map has more data than an archive can hold";
        return text_ ? WhatTextCannotHold(store_) : std::string();
    }

    /// `what`, with the system's reason where it gave one.
    std::string Because(const std::string& what) const { return what + (place_.Cause().empty() ? "" : ": " + place_.Cause()); }

    std::string TakePlace() {
        const FileLock::Outcome claimed = place_.Claim();
        if (claimed == FileLock::Outcome::Busy) return "another program is saving it";
        if (claimed == FileLock::Outcome::Failed) {
            const std::string& inTheWay = place_.LeftBehind();
            return inTheWay == place_.Folder() ? Because("cannot write into the folder " + inTheWay)
                                               : Because("cannot take over " + inTheWay);
        }
        if (const std::string other = place_.NoFileInTheWay(); !other.empty())
            return other + (moves_.HasFolder(other) ? " is a folder" : " is a device or a pipe");
        if (place_.Restore()) return {};
        return Because("what an earlier save left behind in " + place_.LeftBehind() + " cannot be cleared away");
    }

    std::string WriteAndSwap(ArcCounts& counts) {
        if (!place_.MakeWaiting()) return Because("cannot write into the folder " + place_.Folder());
        std::string wrong = WriteSet(counts);
        if (steps_.Cancelled()) return "cancelled";
        if (!files_.Failure().empty()) wrong = files_.Failure();
        if (!wrong.empty()) return Shown(WithOwnNames(std::move(wrong)));
        return place_.Swap() ? std::string() : Because("the new files cannot be put in their place");
    }

    /// With the names that the files will have in place of those under which they are written.
    std::string WithOwnNames(std::string words) const {
        const std::string waiting = place_.WaitingBase();
        for (std::size_t at = words.find(waiting); at != std::string::npos; at = words.find(waiting, at + base_.size())) {
            words.replace(at, waiting.size(), base_);
        }
        return words;
    }

    std::string WriteSet(ArcCounts& counts) {
        const std::string waiting = place_.WaitingBase();
        const std::string binary = waiting + std::string(kBinExt);
        const std::string textual = waiting + std::string(kTextExt);
        // What the writer answers is no measure: it is false for a map whose blocks have no path, though all was written. A text
        // archive is read only beside an index, which a save of the binary form makes.
        const double half = text_ ? 0.3 : 0.6;
        ArcWrite(store_, files_, binary, version_, steps_.Step(0, half));
        if (text_ && !steps_.Cancelled()) ArcWrite(store_, files_, textual, version_, steps_.Step(half, 0.6));
        if (steps_.Cancelled()) return {};
        // The writer knows the map's records alone. Data name their layers by code, so that the file of layers can be another.
        const ArcVersion form = version_ == "1.00" ? ArcVersion::V100 : ArcVersion::V110;
        if (!leaveOut_.empty()) ArcWriteLayers(store_, files_, waiting + std::string(kLayerExt), form, leaveOut_);
        const ArcCounts wanted = CountStore(store_, leaveOut_);
        ArcReport report = ArcCheck(files_, binary, steps_.Step(0.6, text_ ? 0.8 : 1));
        std::string wrong = WhatIsWrong(report, wanted);
        if (text_ && wrong.empty()) {
            report = ArcCheck(files_, textual, steps_.Step(0.8, 1));
            wrong = WhatIsWrong(report, wanted);
        }
        counts = report.counts;
        if (wrong.empty() && !keepsBinary_ && !moves_.RemoveFile(binary)) wrong = "a file of no use cannot be removed";
        return wrong;
    }

    CDigMem& store_;
    const std::vector<std::string>& leaveOut_;
    const SetLooks* mayReplace_;
    Files& disk_;  ///< as it is, for what the watch need not see
    WriteWatch files_;
    FolderMoves& moves_;
    bool oneSet_;
    std::string base_;
    bool text_;
    std::string version_;
    Steps steps_;
    ArchivePlace place_;
    bool keepsBinary_ = true;
};

}  // namespace

bool IsArchiveName(std::string_view path) { return ResolveArcName(path).hasExtension; }

SetLooks LooksOfSet(const std::string& path) {
    StdFiles files;
    FolderMoves moves;
    return LooksOfSet(path, moves, files);
}

SavedArchive SaveArchive(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress,
                         const std::vector<std::string>& leaveOut, const SetLooks* mayReplace) {
    StdFiles files;
    FolderMoves moves;
    return SaveArchive(store, path, version, progress, files, moves, leaveOut, mayReplace);
}

SavedArchive SaveArchive(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress,
                         Files& files, FolderMoves& moves, const std::vector<std::string>& leaveOut, const SetLooks* mayReplace) {
    if (!IsArchiveName(path)) {
        SavedArchive refused;
        refused.error = path + " is not the name of an archive, which ends in .Ovb or .Ovt";
        return refused;
    }
    return Save(store, path, version, progress, files, moves, leaveOut, mayReplace).Run();
}

bool ArchiveStands(const std::string& path) {
    FolderMoves moves;
    return !ArchivePlace(moves, std::string(ResolveArcName(path).base)).Extensions().empty();
}

std::vector<std::string> ArchiveFiles(const std::string& path) {
    FolderMoves moves;
    const std::string base(ResolveArcName(path).base);
    std::vector<std::string> files = {path};
    for (const std::string& extension : ArchivePlace(moves, base).Extensions()) files.push_back(base + extension);
    return files;
}

ReadyArchive ReadyToRead(const std::string& path, FolderMoves& moves) {
    ArchivePlace place(moves, BaseOf(path));
    ReadyArchive ready;
    ready.state = place.MakeReady();
    if (ready.state == PlaceState::Moving) ready.words = "another program is just saving " + path + "; try again";
    if (ready.state == PlaceState::Broken) {
        ready.words = "what a save of " + path + " left behind in " + place.LeftBehind() + " cannot be cleared away";
        if (!place.Cause().empty()) ready.words += ": " + place.Cause();
    }
    return ready;
}

std::vector<std::string> FindingLines(const ArcReport& report) {
    std::vector<std::string> lines;
    for (const ArcFinding& finding : report.findings) {
        std::string line = finding.severity == ArcSeverity::Error ? "error: " : "warning: ";
        line += Shown(finding.words);
        if (finding.more > 0) line += " (and " + std::to_string(finding.more) + " more like it)";
        lines.push_back(std::move(line));
    }
    if (!report.finished) lines.emplace_back("error: the look through the archive did not come to its end");
    return lines;
}

namespace {

/// The first fault of these lines, without its mark; empty when there is none.
std::string FirstError(const std::vector<std::string>& lines) {
    constexpr std::string_view kMark = "error: ";
    const auto found = std::find_if(lines.begin(), lines.end(), [=](const std::string& line) { return line.starts_with(kMark); });
    return found == lines.end() ? std::string() : found->substr(kMark.size());
}

}  // namespace

CheckedArchive CheckArchive(const std::string& path, const HostProgress& progress, FolderMoves& moves) {
    constexpr int kMostTries = 3;
    CheckedArchive checked;
    StdFiles files;
    for (int tries = 0; tries < kMostTries; ++tries) {
        const ReadyArchive ready = ReadyToRead(path, moves);
        checked.words = ready.words;
        checked.moving = ready.state == PlaceState::Moving;
        if (checked.moving) return checked;
        const SetLooks looks = LooksOfSet(path, moves, files);
        checked.report = ArcCheck(files, FileOf(path), progress);
        if (!checked.report.finished || LooksOfSet(path, moves, files) == looks) return checked;
    }
    checked.moving = true;
    checked.words = path + " is saved by another program again and again while it is looked at";
    return checked;
}

OpenedArchive OpenArchive(CDigMem& store, const std::string& path, const HostProgress& progress,
                          const std::function<void()>& beforeReading) {
    FolderMoves moves;
    return OpenArchive(store, path, progress, beforeReading, moves);
}

OpenedArchive OpenArchive(CDigMem& store, const std::string& path, const HostProgress& progress,
                          const std::function<void()>& beforeReading, FolderMoves& moves) {
    OpenedArchive result;
    StdFiles files;
    const ReadyArchive ready = ReadyToRead(path, moves);
    result.place = ready.state;
    if (ready.state == PlaceState::Moving) {
        result.error = ready.words;
        return result;
    }
    const SetLooks looks = result.looks = LooksOfSet(path, moves, files);
    Steps steps(progress);
    const std::string file = FileOf(path);
    result.report = ArcCheck(files, file, steps.Step(0, 0.4));
    result.cancelled = steps.Cancelled();
    if (result.cancelled) {
        result.error = "cancelled";
        return result;
    }
    const std::vector<std::string> lines = FindingLines(result.report);
    if (!ready.words.empty()) result.warnings.push_back("warning: " + ready.words);
    result.warnings.insert(result.warnings.end(), lines.begin(), lines.end());
    result.error = FirstError(lines);
    if (result.error.empty()) result.error = path + " cannot be read into a map";
    if (ready.state == PlaceState::BeingSaved) result.error += "; another program is saving it";
    if (!ready.words.empty()) result.error += "; " + ready.words;
    const ArcName name = ResolveArcName(file);
    // What cannot bring anything is not begun: the map that the host shows may stay.
    const ArcReport& report = result.report;
    const bool brings = report.counts.items > 0 || !report.HasErrors();
    if (!brings || report.Has(ArcFault::NeverRead) || ArcGetVersion(files, name.base, name.text).empty()) return result;
    result.begun = true;
    if (beforeReading) beforeReading();
    const std::int64_t itemsBefore = CountStore(store).items;
    const bool read = ArcRead(store, files, file, {}, steps.Step(0.4, 1));
    result.cancelled = steps.Cancelled();
    // Nothing but layers is answered with false, though nothing is wrong. With a fault, the items that came before it are what
    // can be had of the archive.
    const bool salvaged = report.HasErrors() && CountStore(store).items > itemsBefore;
    result.opened = !result.cancelled && (read || report.counts.items == 0 || salvaged);
    if (result.opened) result.error.clear();
    // Its files are opened one after the other, so that what came in may be of two sets.
    if (LooksOfSet(path, moves, files) != looks) {
        result.opened = false;
        result.error = path + " was saved by another program while it was read; open it again";
    }
    if (result.cancelled) result.error = "cancelled";
    return result;
}

}  // namespace orvane
