// Finds the items of a large block by datID, overlay figures by ID and sub layers by number, at the cost of one probe.
#pragma once

#include <cstdint>
#include <memory>

#include "store/pos_table.h"
#include "store/records.h"

namespace orvane {

/// First and last position of each ID, as walks from either end would meet them. It is a memory aid only: its owner drops it when
/// any but the last item is deleted or when there is no memory for it, and walks instead.
class DatLookup {
public:
    /// Blocks up to this size are walked.
    static constexpr std::int32_t kWalkedItems = 64;

    /// Reads all items once. Null when the memory cannot be had.
    static std::unique_ptr<DatLookup> Build(const GrowArray<DigDat>& dats);
    static std::unique_ptr<DatLookup> Build(const GrowArray<OrgDat>& orgDats);
    static std::unique_ptr<DatLookup> Build(const GrowArray<SubLayDef>& subLays);
    /// An item was added at `pos`, behind all others. False when there is no memory; drop the object then.
    [[nodiscard]] bool Append(std::int32_t datID, std::int32_t pos);
    /// The last item was deleted, and no other has its ID.
    void DropLast(std::int32_t datID);
    /// Position of the first item with the ID, or -1.
    std::int32_t First(std::int32_t datID) const;
    /// The same for the walk from the last item down.
    std::int32_t Last(std::int32_t datID) const;
    /// The greatest ID, and at least 0; -1 when nobody knows since it was dropped.
    std::int32_t MaxID() const { return maxID_; }
    /// Tells it anew.
    void NoteMaxID(std::int32_t maxID) { maxID_ = maxID; }

private:
    template <class Record>
    static std::unique_ptr<DatLookup> BuildFrom(const GrowArray<Record>& records, std::int32_t Record::*id);

    PosTable table_;
    std::size_t idCnt_ = 0;
    std::int32_t maxID_ = 0;
};

}  // namespace orvane
