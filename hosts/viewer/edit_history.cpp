#include "hosts/viewer/edit_history.h"

#include <QUndoCommand>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

/// Half a step is no state to go on from.
constexpr bool kNoCancel = false;

/// A step whose work may be done already when it is put on the stack.
class Step : public QUndoCommand {
public:
    Step(const QString& text, bool done) : QUndoCommand(text), done_(done) {}
    void undo() override { Perform(false); }
    void redo() override {
        if (!std::exchange(done_, false)) Perform(true);
    }

protected:
    virtual void Perform(bool forward) = 0;

private:
    bool done_;
};

class ItemStep : public Step {
public:
    ItemStep(OrvaneWidget& map, const QString& text, std::vector<ItemChange> changes, bool done)
        : Step(text, done), map_(map), changes_(std::move(changes)) {}

private:
    void Perform(bool forward) override {
        {
            const MapWork work(map_, *map_.window(), EditHistory::tr("Changing the map…"), kNoCancel);
            PerformChanges(map_, changes_, forward);
        }
        // What changed is what the operator wants to see.
        map_.Call("OrvResetActiveAll");
        for (const ItemChange& change : changes_) {
            const std::optional<ItemCopy>& now = forward ? change.after : change.before;
            if (now) map_.Call("OrvSetActDat", {QByteArray::fromStdString(change.code), change.meshNo, now->datID});
        }
        map_.Call("OrvReDraw");
    }

    OrvaneWidget& map_;
    std::vector<ItemChange> changes_;
};

/// Blocks that were made, or removed. They are copied when they go, so that a map that nobody takes back is in memory once.
class BlockStep : public Step {
public:
    enum class Kind : std::uint8_t { Made, Removed };

    /// What was made is there already; what is removed goes now.
    BlockStep(OrvaneWidget& map, const QString& text, Kind kind, std::vector<BlockKey> keys)
        : Step(text, kind == Kind::Made), map_(map), kind_(kind), keys_(std::move(keys)) {}

private:
    void Perform(bool forward) override {
        const MapWork work(map_, *map_.window(), EditHistory::tr("Changing the map…"), kNoCancel);
        if (forward == (kind_ == Kind::Made)) {
            MakeBlocks(map_, std::exchange(gone_, {}));
        } else {
            gone_ = BlockCopies(map_.Control().store, keys_);
            DeleteBlocks(map_, keys_);
        }
    }

    OrvaneWidget& map_;
    Kind kind_;
    std::vector<BlockKey> keys_;
    std::vector<BlockCopy> gone_;
};

class LayerStep : public Step {
public:
    LayerStep(OrvaneWidget& map, const QString& text, std::vector<LayerChange> changes)
        : Step(text, false), map_(map), changes_(std::move(changes)) {}

private:
    void Perform(bool forward) override { WriteLayerStates(map_, changes_, forward); }

    OrvaneWidget& map_;
    std::vector<LayerChange> changes_;
};

}  // namespace

EditHistory::EditHistory(OrvaneWidget& map, QObject* parent) : QObject(parent), map_(map) {
    connect(&map_, &OrvaneWidget::OnEditorStart, this,
            [this](const QString& code, int meshNo, int datID, int, int editType) { OnStart(code, meshNo, datID, editType); });
    connect(&map_, &OrvaneWidget::OnEditorEnd, this,
            [this](const QString& code, int meshNo, int datID, int, int editType) { OnEnd(code, meshNo, datID, editType); });
    connect(&stack_, &QUndoStack::indexChanged, this, &EditHistory::Changed);
    connect(&stack_, &QUndoStack::cleanChanged, this, &EditHistory::Changed);
}

void EditHistory::Forget() {
    kept_.reset();
    guarded_.reset();
    stack_.clear();
    other_ = false;
    emit Changed();
}

void EditHistory::NoteOtherChange() {
    other_ = true;
    emit Changed();
}

void EditHistory::NoteSaved() {
    other_ = false;
    stack_.setClean();
    emit Changed();
}

void EditHistory::CancelTool() {
    emit ToolEnding();
    if (map_.RunMode() >= kRunAddEdit) map_.Call("OrvCancelOrgEdit");
    kept_.reset();
}

std::optional<ItemCopy> EditHistory::BeforeTool(const ItemKey& key) const {
    if (map_.RunMode() >= kRunAddEdit && kept_ && kept_->item && kept_->key == key) return kept_->item;
    return CopyOf(map_.Control().store, key);
}

void EditHistory::LetEdit(bool on) {
    if (!on) CancelTool();
    mayEdit_ = on;
}

bool EditHistory::StartTool(std::int32_t runMode, const std::optional<ItemKey>& item) {
    CancelTool();
    if (!mayEdit_) return false;
    if (!item) {
        const bool started = map_.Call("OrvDatEditor", {QString(), 0, 0, runMode}).toInt() == 0;
        GuardUnloaded();
        return started;
    }
    // A tool that is given its feature tells no begin, and the Delete key may be the first thing that happens in it.
    if (runMode != kRunAddEdit) Keep(*item, false);
    const QVariant answer =
        map_.Call("OrvDatEditor", {QByteArray::fromStdString(item->code), item->meshNo, item->datID, runMode});
    if (runMode == kRunAddEdit) GuardUnloaded();
    if (answer.toInt() == 0) return true;
    kept_.reset();
    return false;
}

void EditHistory::Keep(const ItemKey& key, bool isNew) {
    const CDigMem& store = map_.Control().store;
    kept_ = Kept{key, PositionOf(store, key), isNew ? std::nullopt : CopyOf(store, key)};
}

void EditHistory::GuardUnloaded() {
    const COrvane4Ctrl& ctrl = map_.Control();
    const ItemKey key{std::string(ctrl.edit.EditCode.View()), ctrl.edit.EditMesh, ctrl.edit.EditDatId};
    guarded_ = Kept{key, PositionOf(ctrl.store, key), CopyOf(ctrl.store, key)};
}

void EditHistory::PutGuardedBack() {
    const std::optional<Kept> guarded = std::exchange(guarded_, std::nullopt);
    if (!guarded || !guarded->item) return;
    const std::optional<ItemCopy> now = CopyOf(map_.Control().store, guarded->key);
    if (!now || now->lineTag == guarded->item->lineTag) return;
    const ItemChange change{guarded->key.code, guarded->key.meshNo, guarded->position, now, guarded->item};
    PerformChanges(map_, {&change, 1}, true);
}

void EditHistory::OnStart(const QString& code, int meshNo, int datID, int editType) {
    Keep({CodeOf(map_.Control().store, code), meshNo, datID}, editType == kRunAddEdit || editType == kRunCopyDat);
}

void EditHistory::OnEnd(const QString& code, int meshNo, int datID, int editType) {
    const std::optional<Kept> kept = std::exchange(kept_, std::nullopt);
    if (editType == kEditCancelled) PutGuardedBack();
    if (editType == kEditCancelled || !kept || !mayEdit_) return;
    ItemKey key = kept->key;
    if (editType == kRunAddEdit)
        key = {CodeOf(map_.Control().store, code), meshNo, datID};  // the begin does not know the number yet
    const CDigMem& store = map_.Control().store;
    ItemChange change{key.code, key.meshNo, kept->position, kept->item, std::nullopt};
    if (editType != kRunDeleteDat) change.after = CopyOf(store, key);
    if (!change.before) change.position = PositionOf(store, key);
    if (change.before == change.after) return;
    std::vector<ItemChange> changes;
    changes.push_back(std::move(change));
    stack_.push(new ItemStep(map_, Words(editType), std::move(changes), true));
}

QString EditHistory::Words(int editType) const {
    switch (editType) {
        case kRunAddEdit:
            return tr("drawing");
        case kRunCopyDat:
            return tr("copying");
        case kRunMoveDat:
            return tr("moving");
        case kRunDeleteDat:
            return tr("deleting");
        default:
            return tr("reshaping");
    }
}

void EditHistory::Change(const QString& text, std::vector<ItemChange> changes) {
    if (!mayEdit_) return;
    std::erase_if(changes, [](const ItemChange& change) { return change.before == change.after; });
    if (!changes.empty()) stack_.push(new ItemStep(map_, text, std::move(changes), false));
}

void EditHistory::NoteAdded(const QString& text, const std::vector<ItemKey>& added) {
    std::vector<ItemChange> changes;
    for (const ItemKey& key : added) {
        const CDigMem& store = map_.Control().store;
        changes.push_back({key.code, key.meshNo, PositionOf(store, key), std::nullopt, CopyOf(store, key)});
    }
    if (!changes.empty()) stack_.push(new ItemStep(map_, text, std::move(changes), true));
}

void EditHistory::NoteBlocks(const QString& text, std::vector<BlockKey> made) {
    if (!made.empty()) stack_.push(new BlockStep(map_, text, BlockStep::Kind::Made, std::move(made)));
}

void EditHistory::ChangeLayers(const QString& text, std::vector<LayerChange> changes) {
    std::erase_if(changes, [](const LayerChange& change) { return change.before == change.after; });
    if (!changes.empty()) stack_.push(new LayerStep(map_, text, std::move(changes)));
}

bool EditHistory::RemoveLayer(const QString& text, const std::string& code) {
    CancelTool();
    std::vector<BlockKey> keys = BlockKeys(map_.Control().store);
    std::erase_if(keys, [&](const BlockKey& key) { return key.code != code; });
    if (AnyKeyTwice(keys)) return false;
    if (!keys.empty()) stack_.push(new BlockStep(map_, text, BlockStep::Kind::Removed, std::move(keys)));
    return true;
}

void EditHistory::Undo() {
    CancelTool();
    if (mayEdit_) stack_.undo();
}

void EditHistory::Redo() {
    CancelTool();
    if (mayEdit_) stack_.redo();
}

}  // namespace orvane
