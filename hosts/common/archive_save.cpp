#include "hosts/common/archive_save.h"

#include <algorithm>

#include "files/archive_parts.h"
#include "hosts/common/archive_losses.h"
#include "hosts/common/archive_swap.h"
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

ArcCounts CountStore(const CDigMem& store) {
    ArcCounts counts;
    counts.layers = store.LayerCnt();
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (block.blkState != 1) continue;
        ++counts.blocks;
        if (!block.path.empty()) ++counts.paths;
        for (const DigDat& dat : block.dats) {
            ++counts.items;
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
            return Shown(finding.words);
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
    if (wrong.empty()) wrong = differs("points", written.points, store.points);
    if (wrong.empty()) wrong = differs("texts", written.texts, store.texts);
    if (wrong.empty() && report.version == "1.10") wrong = differs("grids", written.meshes, store.meshes);
    if (wrong.empty()) wrong = differs("paths", written.paths, store.paths);
    return wrong;
}

/// One save, step by step; each step answers an error or an empty text.
class Save {
public:
    Save(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress, Files& files,
         FolderMoves& moves)
        : store_(store),
          files_(files),
          moves_(moves),
          base_(ResolveArcName(path).base),
          text_(ResolveArcName(path).text),
          version_(version.empty() ? "1.10" : version),
          steps_(progress),
          place_(moves, base_) {}

    SavedArchive Run() {
        SavedArchive result;
        result.error = WhatCannotBeSaved();
        if (!result.error.empty()) return result;
        if (!place_.Restore()) {
            result.error = "a save of " + base_ + " that was broken off cannot be cleared away";
            return result;
        }
        const std::vector<std::string> before = place_.Extensions();
        keepsBinary_ = !text_ || Contains(before, kBinExt);
        result.error = WriteAndSwap(result.counts);
        if (!result.error.empty()) {
            if (!place_.Restore()) result.error += "; the archive that was there will be brought back at its next opening";
            return result;
        }
        result.saved = true;
        result.notes = ArchiveLosses(store_, text_, version_);
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
        if (version_ != "1.00" && version_ != "1.10") return "no such version of an archive: " + version_;
        if (store_.LayerCnt() == 0 || CountStore(store_).blocks == 0) return "the map has no layers or no data to save";
        const ArcVersion version = version_ == "1.00" ? ArcVersion::V100 : ArcVersion::V110;
        if (BinDataSize_bytes(store_, version) > kMaxBinData_bytes) return "the map has more data than an archive can hold";
        return {};
    }

    std::string WriteAndSwap(ArcCounts& counts) {
        if (!place_.MakeWaiting()) return "cannot write into the folder of " + base_;
        std::string wrong = WriteSet(counts);
        if (steps_.Cancelled()) return "cancelled";
        if (!wrong.empty()) return "the archive was not written: " + wrong;
        return place_.Swap() ? std::string() : "the archive could not be put in its place";
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
        const ArcCounts wanted = CountStore(store_);
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
    Files& files_;
    FolderMoves& moves_;
    std::string base_;
    bool text_;
    std::string version_;
    Steps steps_;
    ArchivePlace place_;
    bool keepsBinary_ = true;
};

}  // namespace

bool IsArchiveName(std::string_view path) { return ResolveArcName(path).hasExtension; }

SavedArchive SaveArchive(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress) {
    StdFiles files;
    FolderMoves moves;
    return SaveArchive(store, path, version, progress, files, moves);
}

SavedArchive SaveArchive(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress,
                         Files& files, FolderMoves& moves) {
    if (!IsArchiveName(path)) {
        SavedArchive refused;
        refused.error = path + " is not the name of an archive, which ends in .Ovb or .Ovt";
        return refused;
    }
    return Save(store, path, version, progress, files, moves).Run();
}

bool ArchiveStands(const std::string& path) {
    FolderMoves moves;
    return !ArchivePlace(moves, std::string(ResolveArcName(path).base)).Extensions().empty();
}

bool RestoreArchive(const std::string& path, FolderMoves& moves) {
    return ArchivePlace(moves, std::string(ResolveArcName(path).base)).Restore();
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

OpenedArchive OpenArchive(CDigMem& store, const std::string& path, const HostProgress& progress,
                          const std::function<void()>& beforeReading) {
    OpenedArchive result;
    FolderMoves moves;
    StdFiles files;
    const bool restored = RestoreArchive(path, moves);
    Steps steps(progress);
    result.report = ArcCheck(files, path, steps.Step(0, 0.4));
    result.cancelled = steps.Cancelled();
    if (result.cancelled) {
        result.error = "cancelled";
        return result;
    }
    const std::vector<std::string> lines = FindingLines(result.report);
    if (!restored) result.warnings.emplace_back("a save of " + path + " that was broken off could not be cleared away");
    result.warnings.insert(result.warnings.end(), lines.begin(), lines.end());
    const ArcName name = ResolveArcName(path);
    // What cannot bring anything is not begun: the map that the host shows may stay.
    const ArcReport& report = result.report;
    const bool brings = report.counts.items > 0 || !report.HasErrors();
    if (!brings || report.Has(ArcFault::NeverRead) || ArcGetVersion(files, name.base, name.text).empty()) {
        result.error = lines.empty() ? "cannot read " + path : lines.front().substr(lines.front().find(' ') + 1);
        return result;
    }
    result.begun = true;
    if (beforeReading) beforeReading();
    const bool read = ArcRead(store, files, path, {}, steps.Step(0.4, 1));
    result.cancelled = steps.Cancelled();
    // Nothing but layers is answered with false, though nothing is wrong.
    result.opened = !result.cancelled && (read || report.counts.items == 0);
    if (result.cancelled) {
        result.error = "cancelled";
    } else if (!result.opened) {
        result.error = lines.empty() ? path + " cannot be read into a map" : lines.front().substr(lines.front().find(' ') + 1);
    }
    return result;
}

}  // namespace orvane
