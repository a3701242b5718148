// The steps of the history: each can be done and undone by automation calls, and given up halfway where it takes long.
#pragma once

#include <QUndoCommand>
#include <map>
#include <memory>
#include <vector>

#include "hosts/viewer/block_copy.h"
#include "hosts/viewer/item_changes.h"
#include "hosts/viewer/layer_state.h"

namespace orvane {

/// What is not done has left the map as it was.
enum class StepResult : std::uint8_t {
    Done,
    Cancelled,
    Stuck,  ///< there is no room for what is to come back, or something else stands in its place
};

/// What the steps of one history have in common. It must outlive them.
struct StepContext {
    OrvaneWidget& map;
    bool mayCancel = true;                 ///< not while the stack goes back to where it was
    StepResult result = StepResult::Done;  ///< of an undo or redo so far; when it is another, the steps that are left do nothing
};

class HistoryStep : public QUndoCommand {
public:
    /// `done`: whether the map has it already.
    HistoryStep(StepContext& context, const QString& text, bool done) : QUndoCommand(text), context_(context), done_(done) {}

    /// Does it before it is put on a stack.
    StepResult Do();
    void undo() override { Run(false); }
    void redo() override;

protected:
    virtual StepResult Perform(bool forward) = 0;
    StepContext& Context() { return context_; }
    OrvaneWidget& Map() const { return context_.map; }

private:
    void Run(bool forward);

    StepContext& context_;
    bool done_;
    bool isOmitted_ = false;  ///< the last undo or redo came to nothing, and so does the way back
};

/// Changes of features. `before`: the bounds of blocks that it has changed already.
std::unique_ptr<HistoryStep> MakeItemStep(StepContext& context, const QString& text, std::vector<ItemChange> changes, bool done,
                                          std::map<BlockKey, BlockBox> before = {});

/// Blocks that were made, and are there, or that are to be removed with their sub layers. They are copied when they go, so that a
/// map that nobody takes back is in memory once.
enum class BlockWork : std::uint8_t { Made, Removed };
std::unique_ptr<HistoryStep> MakeBlockStep(StepContext& context, const QString& text, BlockWork work, std::vector<BlockKey> keys);

/// Sub layers that were made, and are there. What they look like is kept when they go. It is of any frame, see kInAnyFrame.
std::unique_ptr<HistoryStep> MakeSubLayerStep(StepContext& context, const QString& text, std::vector<LayerChange> made);

/// A sub layer that is to be removed, of any frame too. REQUIRES: no other one of its layer has its number.
std::unique_ptr<HistoryStep> MakeSubLayerRemoval(StepContext& context, const QString& text, const std::string& code,
                                                 std::int32_t subLayNo);

/// Looks of layers and sub layers, of any frame too.
std::unique_ptr<HistoryStep> MakeLayerStep(StepContext& context, const QString& text, std::vector<LayerChange> changes);

/// QUndoCommand::id() of steps that can be done and undone whatever frame the map is in.
inline constexpr int kInAnyFrame = 1;

}  // namespace orvane
