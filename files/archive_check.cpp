#include "files/archive_check.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <utility>

#include "files/archive_check_data.h"
#include "files/archive_findings.h"
#include "files/archive_parts.h"
#include "files/archive_set_files.h"

namespace orvane {
namespace {

std::string Number(std::uint64_t value) { return std::to_string(value); }

/// One look through an archive, file by file.
class SetCheck {
public:
    SetCheck(Files& files, const ArcName& name, ArcReport& report)
        : files_(files), name_(name), report_(report), findings_(report) {}

    void Run(const ArcProgress& progress) {
        const std::unique_ptr<InputFile> data = OpenData();
        CheckLayers();
        IdxFile index;
        const bool hasIndex = CheckIndex(index);
        const bool known = data != nullptr && !report_.version.empty();
        ArcExpected expected{std::move(codes_), hasIndex && !name_.text ? &index : nullptr};
        DataCheck items(report_, expected);
        if (known) {
            const bool finished =
                name_.text ? items.CheckText(*data, version_, progress) : items.CheckBin(*data, version_, progress);
            if (!finished) return;
            if (report_.counts.items == 0 && !report_.HasErrors()) {
                findings_.Warning(ArcFault::NoItems,
                                  [] { return std::string("no items: a read answers false, though layers come in"); });
            }
        }
        CheckManage(known ? &items : nullptr);
        report_.finished = true;
    }

private:
    std::string Sibling(std::string_view extension) const { return std::string(name_.base) + std::string(extension); }

    std::unique_ptr<InputFile> Open(std::string_view extension, bool mayMiss = false) {
        OpenError cause = OpenError::None;
        std::unique_ptr<InputFile> file = files_.OpenRead(Sibling(extension), &cause);
        if (file != nullptr || (mayMiss && cause == OpenError::Missing)) return file;
        const bool missing = cause == OpenError::Missing;
        findings_.Error(missing ? ArcFault::Missing : ArcFault::NotOpened,
                        [&] { return Sibling(extension) + (missing ? " is missing" : " cannot be opened"); });
        return nullptr;
    }

    /// Whether a binary file's records can be looked at: its header is whole and begins with the title. The version is held
    /// against the data file's.
    bool CheckHeader(InputFile& file, std::string_view extension, std::string_view title) {
        if (file.Size_bytes() < kHeaderSize || !HasTitle(file, title)) {
            findings_.Error(ArcFault::Title, [&] { return Sibling(extension) + " does not begin with the header of its kind"; });
            return false;
        }
        char bytes[kVersionSize];
        const std::string_view told(bytes, file.ReadAt(title.size(), bytes, sizeof bytes));
        if (!report_.version.empty() && told != report_.version) {
            findings_.Error(ArcFault::Version, [&] {
                return Sibling(extension) + " is not of version " + report_.version + ", as the data file is";
            });
            return false;
        }
        return true;
    }

    std::unique_ptr<InputFile> OpenData() {
        report_.text = name_.text;
        const std::string_view extension = name_.text ? kTextExt : kBinExt;
        std::unique_ptr<InputFile> data = Open(extension);
        if (data == nullptr) return nullptr;
        report_.version = ArcGetDataVersion(files_, name_.base, name_.text);
        version_ = report_.version == VersionText(ArcVersion::V100) ? ArcVersion::V100 : ArcVersion::V110;
        const std::string_view title = name_.text ? kTextTitle : kBinTitle;
        if (!HasTitle(*data, title) || data->Size_bytes() < (name_.text ? title.size() : kHeaderSize)) {
            findings_.Error(ArcFault::Title, [&] { return Sibling(extension) + " does not begin with the header of its kind"; });
            return nullptr;
        }
        if (report_.version.empty()) {
            findings_.Error(ArcFault::Version, [&] { return Sibling(extension) + " tells no version that is known"; });
        } else if (name_.text && version_ == ArcVersion::V100) {
            findings_.Error(ArcFault::NeverRead,
                            [] { return std::string("text of version 1.00 can be written, but is never read back"); });
        }
        return data;
    }

    /// The records behind the header of a file of nothing but them, one by one; what is left over is told.
    template <class Take>
    void EachRecord(InputFile& file, std::string_view extension, std::size_t size, Take take) {
        PackedSource source(file);
        source.Seek(kHeaderSize);
        const std::uint64_t left = source.Remaining() % size;
        while (source.Remaining() >= size) {
            const unsigned char* record = source.Take(size);
            if (record == nullptr) {
                findings_.Error(ArcFault::NotOpened, [&] { return Sibling(extension) + " cannot be read to its end"; });
                return;
            }
            take(record);
        }
        if (left == 0) return;
        findings_.Error(ArcFault::LeftOver,
                        [&] { return Sibling(extension) + " has " + Number(left) + " bytes behind its last whole record"; });
    }

    void CheckLayers() {
        const std::unique_ptr<InputFile> file = Open(kLayerExt);
        if (file == nullptr || !CheckHeader(*file, kLayerExt, kLayerTitle) || report_.version.empty()) return;
        EachRecord(*file, kLayerExt, LayerRecSize(version_), [this](const unsigned char* record) {
            codes_.emplace_back(FieldReader(record).Text(kCodeField));
            ++report_.counts.layers;
        });
        std::sort(codes_.begin(), codes_.end());
        for (std::size_t i = 0; i < codes_.size(); ++i) {
            const bool again = i > 0 && codes_[i] == codes_[i - 1];
            if (!again && !codes_[i].empty()) continue;
            findings_.Warning(ArcFault::Layer, [&] {
                return codes_[i].empty() ? std::string("a layer record has no code: a read drops it")
                                         : "layer \"" + codes_[i] + "\" stands more than once: a read takes the first";
            });
        }
        codes_.erase(std::unique(codes_.begin(), codes_.end()), codes_.end());
        if (codes_.size() > static_cast<std::size_t>(kMaxLayers)) {
            findings_.Error(ArcFault::Counts, [&] { return Number(codes_.size()) + " layers are more than a map can have"; });
        }
        if (report_.counts.layers == 0) {
            findings_.Warning(ArcFault::Counts, [&] { return Sibling(kLayerExt) + " has no layer"; });
        }
    }

    /// Whether the index can be held against the data.
    bool CheckIndex(IdxFile& index) {
        const std::unique_ptr<InputFile> file = Open(kIndexExt);
        if (file == nullptr || !CheckHeader(*file, kIndexExt, kIndexTitle) || name_.text) return false;
        if (!CheckIndexCounts(*file)) return false;
        CheckRanges(*file);
        return ArcReadIndex(files_, Sibling(kIndexExt), index);
    }

    bool CheckIndexCounts(InputFile& file) {
        unsigned char counts[kIdxTablesAt - kHeaderSize];
        if (file.ReadAt(kHeaderSize, counts, sizeof counts) != sizeof counts) {
            findings_.Error(ArcFault::Counts, [&] { return Sibling(kIndexExt) + " ends before its counts"; });
            return false;
        }
        nBlocks_ = LoadLittle<std::int32_t>(counts);
        nItems_ = LoadLittle<std::int32_t>(counts + sizeof nBlocks_);
        const bool sane = nBlocks_ >= 0 && nItems_ >= 0;
        const std::uint64_t needed = !sane ? 0
                                           : kIdxTablesAt + static_cast<std::uint64_t>(nBlocks_) * kIdxBlockRecSize +
                                                 static_cast<std::uint64_t>(nItems_) * kIdxItemRecSize;
        if (!sane || needed > file.Size_bytes()) {
            findings_.Error(ArcFault::Counts, [&] {
                return Sibling(kIndexExt) + " cannot hold the " + std::to_string(nBlocks_) + " blocks and " +
                       std::to_string(nItems_) + " items that it counts";
            });
            return false;
        }
        report_.counts.blocks = nBlocks_;
        if (needed < file.Size_bytes()) {
            findings_.Error(ArcFault::LeftOver, [&] {
                return Sibling(kIndexExt) + " has " + Number(file.Size_bytes() - needed) + " bytes behind its last whole record";
            });
        }
        if (nBlocks_ > kMaxDigIndex) {
            findings_.Error(ArcFault::Counts, [&] { return std::to_string(nBlocks_) + " blocks are more than a map can have"; });
        }
        return true;
    }

    /// Each block's items come behind those of the block before, and together they are all.
    void CheckRanges(InputFile& file) {
        PackedSource source(file);
        source.Seek(kIdxTablesAt);
        std::int64_t next = 0;
        for (std::int32_t i = 0; i < nBlocks_; ++i) {
            const unsigned char* record = source.Take(kIdxBlockRecSize);
            if (record == nullptr) return;
            const auto count = LoadLittle<std::int32_t>(record + kIdxBlockRecSize - 8);
            const auto first = LoadLittle<std::int32_t>(record + kIdxBlockRecSize - 4);
            if (count < 0 || first != next || first > nItems_ || count > nItems_ - first) {
                findings_.Error(ArcFault::BlockRange, [&] {
                    return "block " + std::to_string(i) + " of the index claims " + std::to_string(count) +
                           " items from number " + std::to_string(first) + " on, where " + std::to_string(next) + " of " +
                           std::to_string(nItems_) + " are taken";
                });
            }
            next = std::int64_t{first} + count;
        }
        if (next != nItems_) {
            findings_.Error(ArcFault::BlockRange, [&] {
                return "the blocks of the index end at item " + std::to_string(next) + " of " + std::to_string(nItems_);
            });
        }
    }

    /// `items` is null when the data could not be looked at.
    void CheckManage(const DataCheck* items) {
        const std::unique_ptr<InputFile> file = Open(kManageExt, true);
        if (file == nullptr || !CheckHeader(*file, kManageExt, kManageTitle)) return;
        std::set<std::pair<std::string, std::int32_t>> seen;
        EachRecord(*file, kManageExt, kManageRecSize, [&](const unsigned char* record) {
            ++report_.counts.paths;
            FieldReader fields(record);
            const std::string code(fields.Text(kCodeField));
            const auto meshNo = fields.Get<std::int32_t>();
            fields.Text(kPathField);
            const auto GX = fields.Get<double>();
            const auto GY = fields.Get<double>();
            const std::string what = "path and origin of code \"" + code + "\", mesh number " + std::to_string(meshNo);
            if (!std::isfinite(GX) || !std::isfinite(GY)) {
                findings_.Warning(ArcFault::Origin, [&] { return what + ", are of no place: the origin is no number"; });
            }
            if (!seen.emplace(code, meshNo).second) {
                findings_.Warning(ArcFault::PathTwice, [&] { return what + ", stand more than once: a read takes the last"; });
            }
            if (items == nullptr || (items->HasBlock(code, meshNo) && items->HasLayer(code))) return;
            findings_.Warning(ArcFault::NoBlock, [&] {
                return what + ", belong to no " + (items->HasLayer(code) ? "item" : "layer") + ": a read drops them";
            });
        });
    }

    Files& files_;
    const ArcName& name_;
    ArcReport& report_;
    ArcFindings findings_;
    ArcVersion version_ = ArcVersion::V110;
    std::vector<std::string> codes_;  ///< of the layers, sorted
    std::int32_t nBlocks_ = 0;
    std::int32_t nItems_ = 0;
};

}  // namespace

bool ArcReport::LosesData() const {
    constexpr ArcFault kIndexAlone[] = {ArcFault::BlockRange, ArcFault::BlockItems, ArcFault::ItemOffset, ArcFault::ItemRect};
    return std::any_of(findings.begin(), findings.end(), [&](const ArcFinding& finding) {
        return finding.severity == ArcSeverity::Error &&
               std::find(std::begin(kIndexAlone), std::end(kIndexAlone), finding.fault) == std::end(kIndexAlone);
    });
}

bool ArcReport::HasErrors() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const ArcFinding& finding) { return finding.severity == ArcSeverity::Error; });
}

bool ArcReport::Has(ArcFault fault) const {
    return std::any_of(findings.begin(), findings.end(), [=](const ArcFinding& finding) { return finding.fault == fault; });
}

ArcReport ArcCheck(Files& files, std::string_view filename, const ArcProgress& progress) {
    ArcReport report;
    try {
        const ArcName name = ResolveArcName(filename);
        if (name.hasExtension) {
            ArcSetFiles set(files, name.base, name.text);
            SetCheck(set, name, report).Run(progress);
        } else {
            ArcFindings(report).Error(ArcFault::Name, [&] {
                return std::string(filename) + " is not the name of an archive, which ends in .Ovb or .Ovt";
            });
            report.finished = true;
        }
    } catch (...) {
        report.finished = false;
    }
    return report;
}

}  // namespace orvane
