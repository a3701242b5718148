#include "hosts/viewer/history_steps.h"

#include <QCoreApplication>
#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/selecting.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

/// The progress of a step. Once the operator gives it up, what was done is taken back, which cannot be given up in turn.
class StepProgress {
    Q_DECLARE_TR_FUNCTIONS(HistoryStep)

public:
    explicit StepProgress(const StepContext& context)
        : window_(*context.map.window()), mayCancel_(context.mayCancel), there_(window_, tr("Changing the map…"), mayCancel_) {}

    bool Tell(double done) {
        if (!back_ && (there_.Tell(done) || !mayCancel_)) return true;
        if (!back_) back_.emplace(window_, tr("Taking it back…"), false);
        back_->Tell(1 - done);
        return false;
    }
    bool Cancelled() const { return back_.has_value(); }

private:
    QWidget& window_;
    bool mayCancel_;
    WorkProgress there_;
    std::optional<WorkProgress> back_;
};

class ItemStep : public HistoryStep {
public:
    ItemStep(StepContext& context, const QString& text, std::vector<ItemChange> changes, bool done,
             std::map<BlockKey, BlockBox> before)
        : HistoryStep(context, text, done), changes_(std::move(changes)), before_(std::move(before)) {
        if (done) after_ = BoundsNow();
    }

private:
    std::map<BlockKey, BlockBox> BoundsNow() const {
        std::vector<BlockKey> keys;
        for (const ItemChange& change : changes_) {
            BlockKey key{change.code, change.meshNo};
            if (keys.empty() || keys.back() != key) keys.push_back(std::move(key));
        }
        return BoundsOf(Map().Control().store, keys);
    }
    /// The rectangles that the calls have made, for a redo.
    void NoteRects() {
        for (ItemChange& change : changes_) {
            if (!change.after) continue;
            const ItemPlace place{{change.code, change.meshNo, change.after->datID}, change.position};
            const std::int32_t at = PositionNow(Map().Control().store, place);
            if (at >= 0) change.after->rect = BlockOf(Map().Control().store, place.key)->dats[static_cast<std::size_t>(at)].rect;
        }
    }
    /// What is shown and selected comes back by itself; the rest of the selection is put back.
    bool Write(bool forward, const std::map<BlockKey, BlockBox>& found) {
        StepProgress progress(Context());
        const std::vector<ItemPlace> selected = SelectedPlaces(Map().Control().store);
        const std::vector<ItemPlace> unseen = UnseenSelection(Map().Control().store);
        if (PerformChanges(Map(), changes_, forward, [&](double done) { return progress.Tell(done); })) return true;
        PutBounds(Map().Control().store, found);
        SelectOnly(Map(), selected);
        AddToSelection(Map(), unseen);
        Map().Call("OrvReDraw");
        return false;
    }
    /// What stays selected when features that are there are edited: what was, without those. Features that come or go are news.
    std::vector<ItemPlace> OthersSelected() const {
        std::set<ItemPlace> edited;
        for (const ItemChange& change : changes_) {
            if (!change.before || !change.after) return {};
            edited.insert({{change.code, change.meshNo, change.before->datID}, change.position});
        }
        std::vector<ItemPlace> others = SelectedPlaces(Map().Control().store);
        std::erase_if(others, [&](const ItemPlace& place) { return edited.contains(place); });
        return others;
    }
    StepResult Perform(bool forward) override {
        const std::map<BlockKey, BlockBox> found = BoundsNow();
        // The operator who edits goes on with what is selected; who undoes wants to see what changed.
        std::vector<ItemPlace> places = after_ ? std::vector<ItemPlace>() : OthersSelected();
        if (!Write(forward, found)) return StepResult::Cancelled;
        if (!after_) {
            before_ = found;
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
        PutBounds(Map().Control().store, bounds);
        for (const ItemChange& change : changes_) {
            const std::optional<ItemCopy>& now = forward ? change.after : change.before;
            if (now) places.push_back({{change.code, change.meshNo, now->datID}, change.position});
        }
        SelectOnly(Map(), places);
        Map().Call("OrvReDraw");
        return StepResult::Done;
    }

    std::vector<ItemChange> changes_;
    // A feature that was far away for a step would leave its block that wide.
    std::map<BlockKey, BlockBox> before_;
    std::optional<std::map<BlockKey, BlockBox>> after_;  ///< nothing until the step was done once
};

class BlockStep : public HistoryStep {
public:
    BlockStep(StepContext& context, const QString& text, BlockWork work, std::vector<BlockKey> keys)
        : HistoryStep(context, text, work == BlockWork::Made), work_(work), keys_(std::move(keys)) {}

private:
    StepResult Perform(bool forward) override {
        StepProgress progress(Context());
        const auto told = [&](double done) { return progress.Tell(done); };
        const bool done = forward == (work_ == BlockWork::Made) ? Bring(told) : Take(told);
        if (done) return StepResult::Done;
        return progress.Cancelled() ? StepResult::Cancelled : StepResult::Stuck;
    }
    bool Bring(const std::function<bool(double)>& told) {
        if (!MakeBlocks(Map(), gone_, told)) return false;
        gone_.clear();
        // A layer of the same code that was made meanwhile has left its looks in the record.
        PutLooksBack(Map(), std::exchange(looks_, {}));
        return true;
    }
    bool Take(const std::function<bool(double)>& told) {
        const CDigMem& store = Map().Control().store;
        std::optional<std::vector<BlockCopy>> copies = BlockCopies(store, keys_, told);
        if (!copies) return false;
        gone_ = std::move(*copies);
        std::set<std::string> codes;
        for (const BlockKey& key : keys_) codes.insert(key.code);
        looks_ = LooksOf(store, codes);
        DeleteBlocks(Map(), keys_);
        if (work_ == BlockWork::Removed) TakeSubLayers();
        return true;
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
        RemoveSubLayers(Map(), subLayers);
    }

    BlockWork work_;
    std::vector<BlockKey> keys_;
    std::vector<BlockCopy> gone_;
    std::vector<LayerChange> looks_;
};

class SubLayerStep : public HistoryStep {
public:
    SubLayerStep(StepContext& context, const QString& text, std::vector<LayerChange> made)
        : HistoryStep(context, text, true), made_(std::move(made)) {}
    int id() const override { return kInAnyFrame; }

private:
    const SubLayDef* Find(const LayerChange& one) const {
        const CDigMem& store = Map().Control().store;
        const std::int32_t pos = store.FindLayDef(one.code);
        return pos < 0 ? nullptr : CDigMem::FindSubLay(store.Layer(pos), one.subLayNo);
    }
    StepResult Perform(bool forward) override {
        if (forward) return Bring();
        for (LayerChange& one : made_) {
            if (const SubLayDef* sub = Find(one)) one.before = one.after = StateOf(*sub);
        }
        RemoveSubLayers(Map(), made_);
        return StepResult::Done;
    }
    StepResult Bring() {
        const auto isThere = [this](const LayerChange& one) { return Find(one) != nullptr; };
        if (std::any_of(made_.begin(), made_.end(), isThere)) return StepResult::Stuck;
        WriteLayerStates(Map(), made_, true);
        if (std::all_of(made_.begin(), made_.end(), isThere)) return StepResult::Done;
        RemoveSubLayers(Map(), made_);
        return StepResult::Stuck;
    }

    std::vector<LayerChange> made_;
};

class SubLayerRemoval : public HistoryStep {
public:
    SubLayerRemoval(StepContext& context, const QString& text, std::string code, std::int32_t subLayNo)
        : HistoryStep(context, text, false), code_(std::move(code)), subLayNo_(subLayNo) {}
    int id() const override { return kInAnyFrame; }

private:
    std::vector<LayerChange> SubLayers() const {
        std::vector<LayerChange> all = LooksOf(Map().Control().store, {code_});
        std::erase_if(all, [](const LayerChange& one) { return one.subLayNo == 0; });
        return all;
    }
    StepResult Perform(bool forward) override {
        std::vector<LayerChange> all = SubLayers();
        const auto at = std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.subLayNo == subLayNo_; });
        if ((at != all.end()) != forward) return StepResult::Stuck;
        if (forward) {
            place_ = at - all.begin();
            gone_ = *at;
            RemoveSubLayers(Map(), {&gone_, 1});
            return StepResult::Done;
        }
        // One that is made stands behind the others, so those that stood behind it are made once more.
        const std::vector<LayerChange> behind(all.begin() + (std::min)(place_, std::ssize(all)), all.end());
        std::vector<LayerChange> tail{gone_};
        tail.insert(tail.end(), behind.begin(), behind.end());
        RemoveSubLayers(Map(), behind);
        WriteLayerStates(Map(), tail, false);
        return StepResult::Done;
    }

    std::string code_;
    std::int32_t subLayNo_;
    LayerChange gone_;
    std::ptrdiff_t place_ = 0;  ///< among the sub layers
};

class LayerStep : public HistoryStep {
public:
    LayerStep(StepContext& context, const QString& text, std::vector<LayerChange> changes)
        : HistoryStep(context, text, false), changes_(std::move(changes)) {}
    int id() const override { return kInAnyFrame; }

private:
    StepResult Perform(bool forward) override {
        WriteLayerStates(Map(), changes_, forward);
        return StepResult::Done;
    }

    std::vector<LayerChange> changes_;
};

}  // namespace

StepResult HistoryStep::Do() {
    const StepResult result = Perform(true);
    done_ = result == StepResult::Done;
    return result;
}

void HistoryStep::redo() {
    if (!std::exchange(done_, false)) Run(true);
}

void HistoryStep::Run(bool forward) {
    if (std::exchange(isOmitted_, false)) return;
    if (context_.result == StepResult::Done) context_.result = Perform(forward);
    isOmitted_ = context_.result != StepResult::Done;
}

std::unique_ptr<HistoryStep> MakeItemStep(StepContext& context, const QString& text, std::vector<ItemChange> changes, bool done,
                                          std::map<BlockKey, BlockBox> before) {
    return std::make_unique<ItemStep>(context, text, std::move(changes), done, std::move(before));
}

std::unique_ptr<HistoryStep> MakeBlockStep(StepContext& context, const QString& text, BlockWork work,
                                           std::vector<BlockKey> keys) {
    return std::make_unique<BlockStep>(context, text, work, std::move(keys));
}

std::unique_ptr<HistoryStep> MakeSubLayerStep(StepContext& context, const QString& text, std::vector<LayerChange> made) {
    return std::make_unique<SubLayerStep>(context, text, std::move(made));
}

std::unique_ptr<HistoryStep> MakeSubLayerRemoval(StepContext& context, const QString& text, const std::string& code,
                                                 std::int32_t subLayNo) {
    return std::make_unique<SubLayerRemoval>(context, text, code, subLayNo);
}

std::unique_ptr<HistoryStep> MakeLayerStep(StepContext& context, const QString& text, std::vector<LayerChange> changes) {
    return std::make_unique<LayerStep>(context, text, std::move(changes));
}

}  // namespace orvane
