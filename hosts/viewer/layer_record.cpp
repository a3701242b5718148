#include "hosts/viewer/layer_record.h"

#include <algorithm>
#include <utility>

#include "control/ctrl.h"

namespace orvane {

namespace {

bool IsSame(const LayerRecord& a, const LayerRecord& b) {
    const auto isSameLook = [](const LayerChange& one, const LayerChange& other) {
        return one.subLayNo == other.subLayNo && one.before == other.before;
    };
    return a.layType == b.layType && a.types == b.types &&
           std::equal(a.looks.begin(), a.looks.end(), b.looks.begin(), b.looks.end(), isSameLook);
}

class RecordStep : public HistoryStep {
public:
    RecordStep(StepContext& context, const QString& text, std::vector<LayerRecord> before, std::vector<LayerRecord> after)
        : HistoryStep(context, text, true), before_(std::move(before)), after_(std::move(after)) {}

private:
    StepResult Perform(bool forward) override {
        PutRecords(Map(), forward ? after_ : before_);
        return StepResult::Done;
    }

    std::vector<LayerRecord> before_;
    std::vector<LayerRecord> after_;
};

}  // namespace

std::vector<LayerRecord> RecordsOf(const CDigMem& store, std::span<const std::string> codes) {
    std::vector<LayerRecord> records;
    for (const std::string& code : codes) {
        const std::int32_t pos = store.FindLayDef(code);
        if (pos < 0) continue;
        const LayerDef& layer = store.Layer(pos);
        records.push_back({code, layer.layType, {layer.lineType, layer.pgnType, layer.pntType}, LooksOf(layer)});
    }
    return records;
}

void PutRecords(OrvaneWidget& map, const std::vector<LayerRecord>& records) {
    CDigMem& store = map.Control().store;
    const std::set<std::int32_t> withData = LayersWithData(store);
    for (const LayerRecord& record : records) {
        const std::int32_t pos = store.FindLayDef(record.code);
        if (pos < 0 || withData.count(pos) != 0) continue;
        store.MutableLayer(pos).layType = record.layType;
        PutLooksBack(map, record.looks);
        LayerDef& layer = store.MutableLayer(store.FindLayDef(record.code));
        layer.lineType = record.types[0];
        layer.pgnType = record.types[1];
        layer.pntType = record.types[2];
    }
}

std::unique_ptr<HistoryStep> MakeRecordStep(StepContext& context, const QString& text, std::vector<LayerRecord> before) {
    std::vector<LayerRecord> changed;
    std::vector<LayerRecord> after;
    for (LayerRecord& record : before) {
        std::vector<LayerRecord> now = RecordsOf(context.map.Control().store, {&record.code, 1});
        if (now.empty()) continue;
        // Sub layers that came since are a step of their own.
        std::erase_if(now.front().looks, [&](const LayerChange& look) {
            return std::none_of(record.looks.begin(), record.looks.end(),
                                [&](const LayerChange& old) { return old.subLayNo == look.subLayNo; });
        });
        if (IsSame(record, now.front())) continue;
        changed.push_back(std::move(record));
        after.push_back(std::move(now.front()));
    }
    if (changed.empty()) return nullptr;
    return std::make_unique<RecordStep>(context, text, std::move(changed), std::move(after));
}

}  // namespace orvane
