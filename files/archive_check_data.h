// The items of a data file held against what the rest of the archive says of them.
#pragma once

#include <cmath>
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
    bool HasLayer(std::string_view code) const;

private:
    /// How far points reach; nothing yet where the low side lies above the high one.
    struct Reach {
        double minX = HUGE_VAL, minY = HUGE_VAL, maxX = -HUGE_VAL, maxY = -HUGE_VAL;
    };

    /// Counts one item and looks at its key.
    void Take(const DatRec& head, const DigDat& dat);
    void NewRun(const DatRec& head);
    /// Each key once, sorted.
    void TidyKeys();
    void HoldAgainstIndex(const DatRec& head, const DigDat& dat, std::uint64_t offset);
    /// Finds the item's block of the index.
    void HoldAgainstBlock(const DatRec& head, const DigDat& dat, std::int32_t number);
    void Widen(const DatRec& head, const DigDat& dat);
    /// Holds the bounds of `block_` against what its items reach, once they all went through.
    void EndBlock();
    /// Whether a map has room for as many blocks as a read makes.
    void CountReadBlocks();
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
    Reach reach_;                   ///< of that block's items so far
    std::int64_t runs_ = 0;         ///< of items with one key
    Key last_;                      ///< key of the last run
    std::uint64_t lastNumber_ = 0;  ///< of that key
    bool lastHasLayer_ = false;     ///< its code
    std::int64_t strayItems_ = 0;   ///< of codes without a layer
    std::vector<Key> keys_;         ///< of all blocks, in the order met until they are tidied
    std::size_t tidyAt_ = 2 * static_cast<std::size_t>(kMaxDigIndex);
};

}  // namespace orvane
