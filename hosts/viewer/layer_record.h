// The record of a layer without data. The control takes none away, so that what is made or comes in under its code takes it over,
// and gives it back when it goes.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/viewer/history_steps.h"
#include "hosts/viewer/layer_state.h"

namespace orvane {

struct LayerRecord {
    std::string code;
    std::int32_t layType = 0;
    std::array<std::int32_t, 3> types{};  ///< lineType, pgnType and pntType: calls set the one that a type of layer has
    std::vector<LayerChange> looks;       ///< of the layer and its sub layers
};

/// Those of the codes that have a record.
std::vector<LayerRecord> RecordsOf(const CDigMem& store, std::span<const std::string> codes);
/// Gives layers without data these types and looks. Layers that are gone or have data are passed over.
void PutRecords(OrvaneWidget& map, const std::vector<LayerRecord>& records);

/// The records as they are now, which were these before. Null where nothing became another. Its undo comes behind that of what
/// took the records over, and its redo before.
std::unique_ptr<HistoryStep> MakeRecordStep(StepContext& context, const QString& text, std::vector<LayerRecord> before);

}  // namespace orvane
