// The items of a data file held against what the rest of the archive says of them.
#pragma once

#include <string>
#include <vector>

#include "files/archive_findings.h"
#include "files/archive_items.h"
#include "files/archive_parts.h"

namespace orvane {

/// What the other files tell, for the items to be held against.
struct ArcExpected {
    std::vector<std::string> codes;  ///< of the layers, sorted
    const IdxFile* index = nullptr;  ///< null: none that can be used
};

class DataCheck {
public:
    DataCheck(ArcReport& report, const ArcExpected& expected);

    /// Whether all items went through; false when `progress` cancelled.
    bool CheckBin(InputFile& file, ArcVersion version, const ArcProgress& progress);
    bool CheckText(InputFile& file, ArcVersion version, const ArcProgress& progress);
    /// Whether an item of the key was there, once the items went through.
    bool HasBlock(std::string_view code, std::int32_t meshNo) const;

private:
    /// Counts one item and looks at its key.
    void Take(const DatRec& head, const DigDat& dat);
    void NewRun(const DatRec& head);
    /// Each key once, sorted.
    void TidyKeys();
    void HoldAgainstIndex(const DatRec& head, std::uint64_t offset);
    void HoldAgainstBlock(const DatRec& head, std::int32_t number);
    bool GoesOn(const ArcProgress& progress, double done) const;

    struct Key {
        std::string code;
        std::int32_t meshNo = 0;
        friend auto operator<=>(const Key&, const Key&) = default;
    };

    ArcReport& report_;
    ArcFindings findings_;
    const ArcExpected& expected_;
    std::unique_ptr<PackedSource> idxItems_;
    bool idxEnded_ = false;
    std::size_t block_ = 0;         ///< of the index, that the next item belongs to
    std::int32_t blockMeshNo_ = 0;  ///< of that block's first item
    std::int64_t runs_ = 0;         ///< of items with one key
    Key last_;                      ///< key of the last run
    std::vector<Key> keys_;         ///< of all blocks, in the order met until they are tidied
    std::size_t tidyAt_ = 2 * static_cast<std::size_t>(kMaxDigIndex);
};

}  // namespace orvane
