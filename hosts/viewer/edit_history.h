// Undo and redo of every edit, built on what the control tells its host: an edit's begin and end.
//
// A feature is kept as it was read when the tool began, or when the tool was given it. At the end it is read again, and the pair
// goes onto the stack. Which feature it was is what the begin told: the end of a deletion may name the layer of an older edit.
#pragma once

#include <QObject>
#include <QUndoStack>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "hosts/viewer/history_steps.h"
#include "hosts/viewer/layer_record.h"
#include "hosts/viewer/shared_number.h"

namespace orvane {

class EditHistory : public QObject {
    Q_OBJECT

public:
    /// `map` must outlive the history.
    EditHistory(OrvaneWidget& map, QObject* parent);

    QUndoStack& Stack() { return stack_; }
    /// Another map was opened: nothing of it can be undone.
    void Forget();
    /// Something was changed that the stack does not hold, as an import.
    void NoteOtherChange();
    /// The map stands on the disk as it is now.
    void NoteSaved();
    bool IsModified() const { return other_ || !stack_.isClean(); }

    /// Starts an edit tool, a number of T_OrvRunMode, on a feature or on the one that the operator picks. A tool that runs is
    /// cancelled first. False when the control refuses. A copy begins with a pick alone: given its feature, the control would
    /// take that for the copy, and delete it when the tool is cancelled. Tools work on no feature that shares its number: one
    /// that is given is refused, and one that is picked gives the tool up; both are said.
    bool StartTool(std::int32_t runMode, const std::optional<ItemKey>& item = std::nullopt);
    /// A feature as it is, or as it was before the tool that works on it now began.
    std::optional<ItemCopy> BeforeTool(const ItemPlace& place) const;
    /// Ends a tool that runs without a result.
    void CancelTool();
    /// Whether the map may be edited now. While it may not, no tool starts and no feature or block is changed, undone or
    /// remembered: such steps are in the coordinates of the map's own frame. Looks of layers and images are of any frame.
    void LetEdit(bool on);
    bool MayEdit() const { return mayEdit_; }
    /// Makes changes and remembers them as one step; false when the operator cancelled them or the map may not be edited. Those
    /// that change nothing are left out.
    bool Change(const QString& text, std::vector<ItemChange> changes);
    /// Remembers as one step that these features were made just now.
    /// `before`: the bounds that their blocks had.
    void NoteAdded(const QString& text, const std::vector<ItemPlace>& added, std::map<BlockKey, BlockBox> before = {});
    /// The same of blocks, of features that came into other blocks and of sub layers, as one step, with `keys` that the layers
    /// get in it.
    void NoteImport(const QString& text, std::vector<BlockKey> made, const std::vector<ItemPlace>& added,
                    std::vector<LayerChange> subLayers = {}, std::map<BlockKey, BlockBox> before = {},
                    std::vector<LayerChange> keys = {}, std::vector<LayerRecord> records = {});
    /// Remembers as one step that these sub layers were made just now.
    void NoteSubLayers(const QString& text, std::vector<LayerChange> made);
    /// Deletes all blocks of a layer and its sub layers, as one step; its record and its look stay.
    /// False, and nothing is removed, where two of the blocks share their key, as older files may have it: they would not come
    /// back. Cancelled work is no failure.
    bool RemoveLayer(const QString& text, const std::string& code);
    /// Takes a sub layer that no feature has out of its layer. REQUIRES: no other one of the layer has its number.
    void RemoveSubLayer(const QString& text, const std::string& code, std::int32_t subLayNo);
    /// Remembers as one step that these blocks were made just now. `records`: those of layers without data as they were before.
    void NoteBlocks(const QString& text, std::vector<BlockKey> made, std::vector<LayerRecord> records = {});
    void ChangeLayers(const QString& text, std::vector<LayerChange> changes);
    /// What else the operator may have begun on the map and what ToolEnding() ends: an undo ends it alone.
    void SetBegun(std::function<bool()> hasBegun) { hasBegunElse_ = std::move(hasBegun); }
    /// Whether a tool has begun a figure or taken up a feature, or something else is begun on the map.
    bool HasBegun() const;
    /// Undoes the last step, or ends what is begun, and that alone.
    void Undo();
    void Redo();
    bool CanUndo() const;
    bool CanRedo() const;
    /// Codes of layers that were removed, or whose making was taken back or failed: the control keeps their records. Those that
    /// had no data when the map was opened are not among them.
    std::vector<std::string> RemovedLayers() const;
    /// Codes of all layers without data, which no list shows: what is made or comes in may take them.
    std::vector<std::string> EmptyLayers() const;
    /// The codes of layers without data that an import has brought: its own, as those of a map that is opened.
    void NoteEmptyLayers(const std::set<std::string>& codes) { bornEmpty_.insert(codes.begin(), codes.end()); }

signals:
    /// Something that the operator should know.
    void Said(const QString& words);
    /// A tool is about to start or to be cancelled: what else the operator has begun on the map ends too.
    void ToolEnding();
    /// Whether there is something unsaved may have changed, and so may features and layers.
    void Changed();
    /// The history stands before this step now, counted from 0.
    void Moved(int step);

private:
    struct Kept {
        ItemKey key;
        std::int32_t position = 0;
        std::optional<ItemCopy> item;
        std::map<BlockKey, BlockBox> bounds{};  ///< of its block
    };

    void OnStart(const QString& code, int meshNo, int datID, int editType);
    void OnEnd(const QString& code, int meshNo, int datID, int editType);
    void Keep(const ItemKey& key, bool isNew);
    /// Keeps the feature under the click when it shares its number, and gives the tool up as soon as it can be.
    void GuardShared();
    void PutSharedBack();
    /// Whether the new feature has no point, as one that was ended too early. It is out again then.
    bool TakeOutPointless(const ItemKey& key);
    /// A cancelled tool writes a tag of 0 to the feature whose number it has, loaded or not. Where there is such a feature, its
    /// tag is kept and put back.
    void GuardUnloaded();
    void PutGuardedBack();
    enum class Work : std::uint8_t { IsDone, Waits };
    /// Does its work where that waits, which the operator can cancel: false then, and nothing has happened.
    bool Push(std::unique_ptr<HistoryStep> step, Work work = Work::IsDone);
    /// Undoes or redoes a step, and goes back where it comes to nothing.
    void Move(void (QUndoStack::*there)(), void (QUndoStack::*back)());
    void TellMoved();
    void TellWhyNot(StepResult result);
    /// Whether the step at that place of the stack may be done or undone now.
    bool MayPerform(int step) const;
    QString Words(int editType) const;

    OrvaneWidget& map_;
    StepContext steps_;
    QUndoStack stack_;
    std::optional<Kept> kept_;
    std::optional<Kept> guarded_;
    std::optional<SharedNumber> shared_;  ///< of the feature that a tool was refused on
    std::set<std::string> bornEmpty_;     ///< codes of layers without data in the map as it was opened
    std::function<bool()> hasBegunElse_;
    bool isMoving_ = false;  ///< an undo or redo runs, and may go back yet
    bool mayEdit_ = true;
    bool other_ = false;
};

}  // namespace orvane
