#include "hosts/viewer/edit_history.h"

#include <QUndoCommand>
#include <algorithm>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/selecting.h"
#include "hosts/viewer/tool_figure.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

/// Half a step is no state to go on from.
constexpr bool kNoCancel = false;

QString SharedWords(std::int32_t datID) {
    return EditHistory::tr(
               "Other features of its layer and group have the number %1 too, so that no tool can tell them apart. "
               "The Delete key and its form (F4) can.")
        .arg(datID);
}

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
    /// `before`: the bounds of blocks that it has changed already.
    ItemStep(OrvaneWidget& map, const QString& text, std::vector<ItemChange> changes, bool done,
             std::map<BlockKey, BlockBox> before = {})
        : Step(text, done), map_(map), changes_(std::move(changes)), before_(std::move(before)) {
        if (done) after_ = BoundsNow();
    }

private:
    std::map<BlockKey, BlockBox> BoundsNow() const {
        std::vector<BlockKey> keys;
        for (const ItemChange& change : changes_) {
            BlockKey key{change.code, change.meshNo};
            if (keys.empty() || keys.back() != key) keys.push_back(std::move(key));
        }
        return BoundsOf(map_.Control().store, keys);
    }
    /// The rectangles that the calls have made, for a redo.
    void NoteRects() {
        for (ItemChange& change : changes_) {
            if (!change.after) continue;
            const ItemPlace place{{change.code, change.meshNo, change.after->datID}, change.position};
            const std::int32_t at = PositionNow(map_.Control().store, place);
            if (at >= 0) change.after->rect = BlockOf(map_.Control().store, place.key)->dats[static_cast<std::size_t>(at)].rect;
        }
    }
    void Perform(bool forward) override {
        const std::map<BlockKey, BlockBox> found = BoundsNow();
        const bool first = !after_;
        if (first) before_ = found;
        {
            const MapWork work(map_, *map_.window(), EditHistory::tr("Changing the map…"), kNoCancel);
            PerformChanges(map_, changes_, forward);
        }
        if (first) {
            after_ = BoundsNow();
            NoteRects();
        }
        // What was widened by anything but steps holds more than this step knows of.
        const std::map<BlockKey, BlockBox>& known = forward ? before_ : *after_;
        std::map<BlockKey, BlockBox> bounds = forward ? *after_ : before_;
        std::erase_if(bounds, [&](const auto& one) {
            const auto was = known.find(one.first);
            const auto is = found.find(one.first);
            return was == known.end() || is == found.end() || was->second != is->second;
        });
        PutBounds(map_.Control().store, bounds);
        // What changed is what the operator wants to see.
        std::vector<ItemPlace> places;
        for (const ItemChange& change : changes_) {
            const std::optional<ItemCopy>& now = forward ? change.after : change.before;
            if (now) places.push_back({{change.code, change.meshNo, now->datID}, change.position});
        }
        SelectOnly(map_, places);
        map_.Call("OrvReDraw");
    }

    OrvaneWidget& map_;
    std::vector<ItemChange> changes_;
    // A feature that was far away for a step would leave its block that wide.
    std::map<BlockKey, BlockBox> before_;
    std::optional<std::map<BlockKey, BlockBox>> after_;  ///< nothing until the step was done once
};

/// Sub layers that were made. What they look like is kept when they go.
class SubLayerStep : public Step {
public:
    /// They are there already. `failed` hears that they could not come back.
    SubLayerStep(OrvaneWidget& map, const QString& text, std::vector<LayerChange> made, std::function<void()> failed)
        : Step(text, true), map_(map), made_(std::move(made)), failed_(std::move(failed)) {}
    int id() const override { return EditHistory::kInAnyFrame; }

private:
    const SubLayDef* Find(const LayerChange& one) const {
        const CDigMem& store = map_.Control().store;
        const std::int32_t pos = store.FindLayDef(one.code);
        return pos < 0 ? nullptr : CDigMem::FindSubLay(store.Layer(pos), one.subLayNo);
    }
    void Perform(bool forward) override {
        if (forward) return Bring();
        if (!areThere_) return;  // they could not come back, so that what stands there is another's
        areThere_ = false;
        for (LayerChange& one : made_) {
            if (const SubLayDef* sub = Find(one)) one.before = one.after = StateOf(*sub);
        }
        RemoveSubLayers(map_, made_);
    }
    void Bring() {
        const auto isThere = [this](const LayerChange& one) { return Find(one) != nullptr; };
        if (std::any_of(made_.begin(), made_.end(), isThere)) return failed_();
        WriteLayerStates(map_, made_, true);
        areThere_ = std::all_of(made_.begin(), made_.end(), isThere);
        if (areThere_) return;
        RemoveSubLayers(map_, made_);
        failed_();
    }

    OrvaneWidget& map_;
    std::vector<LayerChange> made_;
    std::function<void()> failed_;
    bool areThere_ = true;
};

/// Blocks that were made, or removed. They are copied when they go, so that a map that nobody takes back is in memory once.
class BlockStep : public Step {
public:
    enum class Kind : std::uint8_t { Made, Removed };

    /// What was made is there already; what is removed goes now. `failed` hears that blocks could not come back.
    BlockStep(OrvaneWidget& map, const QString& text, Kind kind, std::vector<BlockKey> keys, std::function<void()> failed)
        : Step(text, kind == Kind::Made), map_(map), kind_(kind), keys_(std::move(keys)), failed_(std::move(failed)) {}

private:
    void Perform(bool forward) override {
        const MapWork work(map_, *map_.window(), EditHistory::tr("Changing the map…"), kNoCancel);
        forward == (kind_ == Kind::Made) ? Bring() : Take();
    }
    void Bring() {
        if (!MakeBlocks(map_, gone_)) return failed_();
        gone_.clear();
        // A layer of the same code that was made meanwhile has left its looks in the record.
        PutLooksBack(map_, std::exchange(looks_, {}));
    }
    void Take() {
        if (!gone_.empty()) return;  // they could not come back, so that what stands there is another's
        const CDigMem& store = map_.Control().store;
        std::set<std::string> codes;
        for (const BlockKey& key : keys_) codes.insert(key.code);
        looks_ = LooksOf(store, codes);
        gone_ = BlockCopies(store, keys_);
        DeleteBlocks(map_, keys_);
        if (kind_ == Kind::Removed) TakeSubLayers();
    }
    /// What is made on the record of a removed layer has none of its sub layers. Such as share a number stay: no look tells them
    /// apart, so they would not come back.
    void TakeSubLayers() {
        std::map<std::pair<std::string, std::int32_t>, int> counts;
        for (const LayerChange& look : looks_) ++counts[{look.code, look.subLayNo}];
        std::vector<LayerChange> subLayers = looks_;
        std::erase_if(subLayers, [&](const LayerChange& look) {
            return look.subLayNo == 0 || counts[{look.code, look.subLayNo}] > 1;
        });
        RemoveSubLayers(map_, subLayers);
    }

    OrvaneWidget& map_;
    Kind kind_;
    std::vector<BlockKey> keys_;
    std::function<void()> failed_;
    std::vector<BlockCopy> gone_;
    std::vector<LayerChange> looks_;
};

class LayerStep : public Step {
public:
    LayerStep(OrvaneWidget& map, const QString& text, std::vector<LayerChange> changes)
        : Step(text, false), map_(map), changes_(std::move(changes)) {}
    int id() const override { return EditHistory::kInAnyFrame; }

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
    stack_.push(
        new ItemStep(map_, Words(editType), std::move(changes), true, sameBlock ? kept->bounds : std::map<BlockKey, BlockBox>()));
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
    for (ItemChange& change : changes) {
        if (change.after) change.after->rect.reset();  // it may be that of the feature before
    }
    if (!changes.empty()) stack_.push(new ItemStep(map_, text, std::move(changes), false));
}

void EditHistory::NoteAdded(const QString& text, const std::vector<ItemPlace>& added, std::map<BlockKey, BlockBox> before) {
    std::vector<ItemChange> changes;
    for (const ItemPlace& place : added) {
        std::optional<ItemCopy> copy = CopyAt(map_.Control().store, place);
        if (copy) changes.push_back({place.key.code, place.key.meshNo, place.position, std::nullopt, std::move(copy)});
    }
    if (!changes.empty()) stack_.push(new ItemStep(map_, text, std::move(changes), true, std::move(before)));
}

void EditHistory::PushBlocks(const QString& text, bool made, std::vector<BlockKey> keys) {
    if (keys.empty()) return;
    const auto kind = made ? BlockStep::Kind::Made : BlockStep::Kind::Removed;
    stack_.push(new BlockStep(map_, text, kind, std::move(keys), [this] { stuck_ = true; }));
}

void EditHistory::NoteBlocks(const QString& text, std::vector<BlockKey> made) { PushBlocks(text, true, std::move(made)); }

void EditHistory::NoteImport(const QString& text, std::vector<BlockKey> made, const std::vector<ItemPlace>& added,
                             std::vector<LayerChange> subLayers, std::map<BlockKey, BlockBox> before) {
    if (added.empty() && subLayers.empty()) return NoteBlocks(text, std::move(made));
    stack_.beginMacro(text);
    NoteBlocks(text, std::move(made));
    NoteAdded(text, added, std::move(before));
    NoteSubLayers(text, std::move(subLayers));
    stack_.endMacro();
}

void EditHistory::NoteSubLayers(const QString& text, std::vector<LayerChange> made) {
    if (!made.empty()) stack_.push(new SubLayerStep(map_, text, std::move(made), [this] { stuck_ = true; }));
}

void EditHistory::ChangeLayers(const QString& text, std::vector<LayerChange> changes) {
    std::erase_if(changes, [](const LayerChange& change) { return change.before == change.after; });
    if (!changes.empty()) stack_.push(new LayerStep(map_, text, std::move(changes)));
}

bool EditHistory::RemoveLayer(const QString& text, const std::string& code) {
    CancelTool();
    if (!mayEdit_) return true;
    std::vector<BlockKey> keys = BlockKeys(map_.Control().store);
    std::erase_if(keys, [&](const BlockKey& key) { return key.code != code; });
    if (AnyKeyTwice(keys)) return false;
    PushBlocks(text, false, std::move(keys));
    return true;
}

bool EditHistory::CanUndo() const { return stack_.canUndo() && MayPerform(stack_.index() - 1); }

bool EditHistory::CanRedo() const { return stack_.canRedo() && MayPerform(stack_.index()); }

bool EditHistory::MayPerform(int step) const {
    const QUndoCommand* command = stack_.command(step);
    return mayEdit_ || (command != nullptr && command->id() == kInAnyFrame);
}

void EditHistory::Undo() {
    CancelTool();
    if (!CanUndo()) return;
    stack_.undo();
    // The step still is what comes next: whatever stands in its way may go.
    if (TellWhenStuck()) stack_.redo();
}

void EditHistory::Redo() {
    CancelTool();
    if (!CanRedo()) return;
    stack_.redo();
    if (TellWhenStuck()) stack_.undo();
}

bool EditHistory::TellWhenStuck() {
    if (!std::exchange(stuck_, false)) return false;
    emit Said(tr("What was taken away cannot come back now: there is no room for it, or something else stands in its place."));
    return true;
}

}  // namespace orvane
