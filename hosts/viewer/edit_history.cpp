#include "hosts/viewer/edit_history.h"

#include <algorithm>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/selecting.h"
#include "hosts/viewer/tool_figure.h"

namespace orvane {

namespace {

QString SharedWords(std::int32_t datID) {
    return EditHistory::tr(
               "Other features of its layer and group have the number %1 too, so that no tool can tell them apart. "
               "N gives it a number of its own; the Delete key and its form (F4) work as it is.")
        .arg(datID);
}

bool IsSameFigure(const ItemCopy& a, const ItemCopy& b) {
    return SamePoints(a.pnts, b.pnts) && a.text == b.text && a.grid == b.grid;
}

}  // namespace

EditHistory::EditHistory(OrvaneWidget& map, QObject* parent) : QObject(parent), map_(map), steps_{map} {
    connect(&map_, &OrvaneWidget::OnEditorStart, this,
            [this](const QString& code, int meshNo, int datID, int, int editType) { OnStart(code, meshNo, datID, editType); });
    connect(&map_, &OrvaneWidget::OnEditorEnd, this,
            [this](const QString& code, int meshNo, int datID, int, int editType) { OnEnd(code, meshNo, datID, editType); });
    connect(&stack_, &QUndoStack::indexChanged, this, [this] {
        if (!isMoving_) TellMoved();
    });
    connect(&stack_, &QUndoStack::cleanChanged, this, &EditHistory::Changed);
    new FirstPress(map_, this);
}

void EditHistory::Forget() {
    kept_.reset();
    guarded_.reset();
    shared_.reset();
    stack_.clear();
    other_ = false;
    const std::vector<std::string> empty = EmptyLayers();
    bornEmpty_ = std::set<std::string>(empty.begin(), empty.end());
    emit Changed();
}

std::vector<std::string> EditHistory::EmptyLayers() const {
    CDigMem& store = map_.Control().store;
    const std::set<std::int32_t> withData = LayersWithData(store);
    std::vector<std::string> codes;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        if (withData.count(i) == 0) codes.emplace_back(store.Layer(i).code.View());
    }
    return codes;
}

std::vector<std::string> EditHistory::RemovedLayers() const {
    std::vector<std::string> codes = EmptyLayers();
    std::erase_if(codes, [&](const std::string& code) { return bornEmpty_.count(code) != 0; });
    return codes;
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
    PutSharedBack();
}

std::optional<ItemCopy> EditHistory::BeforeTool(const ItemPlace& place) const {
    const bool isKept = kept_ && kept_->item && kept_->key == place.key && kept_->position == place.position;
    if (map_.RunMode() >= kRunAddEdit && isKept) return kept_->item;
    return CopyAt(map_.Control().store, place);
}

void EditHistory::LetEdit(bool on) {
    if (!on) CancelTool();
    mayEdit_ = on;
}

bool EditHistory::StartTool(std::int32_t runMode, const std::optional<ItemKey>& item) {
    CancelTool();
    if (!mayEdit_ || (item && runMode == kRunCopyDat)) return false;
    if (!item) {
        const bool started = map_.Call("OrvDatEditor", {QString(), 0, 0, runMode}).toInt() == 0;
        GuardUnloaded();
        return started;
    }
    if (runMode != kRunAddEdit && SharedBy(map_.Control().store, {*item, 0})) {
        emit Said(SharedWords(item->datID));
        return false;
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
    const BlockKey block{key.code, key.meshNo};
    kept_ = Kept{key, PositionOf(store, key), isNew ? std::nullopt : CopyOf(store, key), BoundsOf(store, {&block, 1})};
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

// The tool goes on when the host has heard of its begin, so that it cannot be given up before; a deletion is over by then.
void EditHistory::GuardShared() {
    const std::vector<ItemPlace> picked = SelectedPlaces(map_.Control().store, 1);
    shared_ = picked.empty() ? std::nullopt : SharedBy(map_.Control().store, picked.front());
    if (!shared_) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (shared_) CancelTool();
        },
        Qt::QueuedConnection);
}

void EditHistory::PutSharedBack() {
    const std::optional<SharedNumber> shared = std::exchange(shared_, std::nullopt);
    if (!shared) return;
    PutBack(map_, *shared);
    emit Said(SharedWords(shared->picked.key.datID));
    emit Changed();
}

bool EditHistory::TakeOutPointless(const ItemKey& key) {
    const std::optional<ItemCopy> made = CopyOf(map_.Control().store, key);
    if (!made || !made->pnts.empty()) return false;
    PerformChanges(map_, Deletion(map_.Control().store, key), true);
    emit Said(tr("Nothing was drawn: the figure was ended before it had its points."));
    return true;
}

void EditHistory::OnStart(const QString& code, int meshNo, int datID, int editType) {
    if (editType != kRunAddEdit) GuardShared();
    Keep({CodeOf(map_.Control().store, code), meshNo, datID}, editType == kRunAddEdit || editType == kRunCopyDat);
}

void EditHistory::OnEnd(const QString& code, int meshNo, int datID, int editType) {
    const std::optional<Kept> kept = std::exchange(kept_, std::nullopt);
    if (editType == kEditCancelled) PutGuardedBack();
    if (editType == kEditCancelled || shared_ || !mayEdit_) return;
    ItemKey key;
    if (editType == kRunAddEdit) {
        key = {CodeOf(map_.Control().store, code), meshNo, datID};  // the begin does not know the number yet
        if (TakeOutPointless(key)) return;
    }
    if (!kept) return;
    if (editType != kRunAddEdit) key = kept->key;
    const CDigMem& store = map_.Control().store;
    ItemChange change{key.code, key.meshNo, kept->position, kept->item, std::nullopt};
    if (editType != kRunDeleteDat) change.after = CopyOf(store, key);
    if (!change.before) change.position = PositionOf(store, key);
    if (change.before == change.after) return;
    std::vector<ItemChange> changes;
    changes.push_back(std::move(change));
    const bool sameBlock = key.code == kept->key.code && key.meshNo == kept->key.meshNo;
    Push(MakeItemStep(steps_, Words(editType), std::move(changes), true,
                      sameBlock ? kept->bounds : std::map<BlockKey, BlockBox>()));
}

void EditHistory::TellMoved() {
    emit Moved(stack_.index());
    emit Changed();
}

// What is given up never was on the stack, so that what can be done again stays.
bool EditHistory::Push(std::unique_ptr<HistoryStep> step, Work work) {
    const StepResult result = work == Work::Waits ? step->Do() : StepResult::Done;
    if (result == StepResult::Done) {
        stack_.push(step.release());
        return true;
    }
    TellWhyNot(result);
    return false;
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

bool EditHistory::Change(const QString& text, std::vector<ItemChange> changes) {
    if (!mayEdit_) return false;
    std::erase_if(changes, [](const ItemChange& change) { return change.before == change.after; });
    for (ItemChange& change : changes) {
        // It may be that of the feature before.
        if (change.after && !(change.before && IsSameFigure(*change.before, *change.after))) change.after->rect.reset();
    }
    return changes.empty() || Push(MakeItemStep(steps_, text, std::move(changes), false), Work::Waits);
}

void EditHistory::NoteAdded(const QString& text, const std::vector<ItemPlace>& added, std::map<BlockKey, BlockBox> before) {
    std::vector<ItemChange> changes;
    for (const ItemPlace& place : added) {
        std::optional<ItemCopy> copy = CopyAt(map_.Control().store, place);
        if (copy) changes.push_back({place.key.code, place.key.meshNo, place.position, std::nullopt, std::move(copy)});
    }
    if (!changes.empty()) Push(MakeItemStep(steps_, text, std::move(changes), true, std::move(before)));
}

void EditHistory::NoteBlocks(const QString& text, std::vector<BlockKey> made, std::vector<LayerRecord> records) {
    std::unique_ptr<HistoryStep> taken = MakeRecordStep(steps_, text, std::move(records));
    const bool isMacro = taken != nullptr && !made.empty();
    if (isMacro) stack_.beginMacro(text);
    if (taken != nullptr) Push(std::move(taken));
    if (!made.empty()) Push(MakeBlockStep(steps_, text, BlockWork::Made, std::move(made)));
    if (isMacro) stack_.endMacro();
}

void EditHistory::NoteImport(const QString& text, std::vector<BlockKey> made, const std::vector<ItemPlace>& added,
                             std::vector<LayerChange> subLayers, std::map<BlockKey, BlockBox> before,
                             std::vector<LayerChange> keys, std::vector<LayerRecord> records) {
    if (added.empty() && subLayers.empty() && keys.empty()) return NoteBlocks(text, std::move(made), std::move(records));
    stack_.beginMacro(text);
    NoteBlocks(text, std::move(made), std::move(records));
    NoteAdded(text, added, std::move(before));
    NoteSubLayers(text, std::move(subLayers));
    ChangeLayers(text, std::move(keys));
    stack_.endMacro();
}

void EditHistory::NoteSubLayers(const QString& text, std::vector<LayerChange> made) {
    if (!made.empty()) Push(MakeSubLayerStep(steps_, text, std::move(made)));
}

void EditHistory::ChangeLayers(const QString& text, std::vector<LayerChange> changes) {
    std::erase_if(changes, [](const LayerChange& change) { return change.before == change.after; });
    if (!changes.empty()) Push(MakeLayerStep(steps_, text, std::move(changes)), Work::Waits);
}

bool EditHistory::RemoveLayer(const QString& text, const std::string& code) {
    CancelTool();
    if (!mayEdit_) return true;
    std::vector<BlockKey> keys = BlockKeys(map_.Control().store);
    std::erase_if(keys, [&](const BlockKey& key) { return key.code != code; });
    if (AnyKeyTwice(keys)) return false;
    if (keys.empty()) return true;
    // The layer's record stays, but no archive has it.
    const std::vector<LayerChange> own = OwnKeys(map_.Control().store);
    GiveKeys(map_, own, true);
    const bool isGone = Push(MakeBlockStep(steps_, text, BlockWork::Removed, std::move(keys)), Work::Waits);
    if (!isGone) GiveKeys(map_, own, false);
    return true;
}

void EditHistory::RemoveSubLayer(const QString& text, const std::string& code, std::int32_t subLayNo) {
    CancelTool();  // which may have begun a feature of it
    Push(MakeSubLayerRemoval(steps_, text, code, subLayNo), Work::Waits);
}

bool EditHistory::CanUndo() const { return stack_.canUndo() && MayPerform(stack_.index() - 1); }

bool EditHistory::CanRedo() const { return stack_.canRedo() && MayPerform(stack_.index()); }

bool EditHistory::MayPerform(int step) const {
    const QUndoCommand* command = stack_.command(step);
    return mayEdit_ || (command != nullptr && command->id() == kInAnyFrame);
}

bool EditHistory::HasBegun() const { return HasFigure(map_) || (hasBegunElse_ && hasBegunElse_()); }

// What is begun and not done yet is the last thing that the operator did.
void EditHistory::Undo() {
    const bool hasBegun = HasBegun();
    CancelTool();
    if (hasBegun) return emit Changed();
    if (CanUndo()) Move(&QUndoStack::undo, &QUndoStack::redo);
}

void EditHistory::Redo() {
    CancelTool();
    if (CanRedo()) Move(&QUndoStack::redo, &QUndoStack::undo);
}

// A step that came to nothing still is what comes next: whatever stands in its way may go.
void EditHistory::Move(void (QUndoStack::*there)(), void (QUndoStack::*back)()) {
    isMoving_ = true;
    (stack_.*there)();
    const StepResult result = std::exchange(steps_.result, StepResult::Done);
    if (result != StepResult::Done) {
        steps_.mayCancel = false;
        (stack_.*back)();
        steps_.mayCancel = true;
        steps_.result = StepResult::Done;
    }
    isMoving_ = false;
    TellMoved();
    if (result != StepResult::Done) TellWhyNot(result);
}

void EditHistory::TellWhyNot(StepResult result) {
    if (result == StepResult::Cancelled) {
        emit Said(tr("Cancelled: the map is as it was."));
    } else {
        emit Said(
            tr("What was taken away cannot come back now: there is no room for it, or something else stands in its place."));
    }
}

}  // namespace orvane
