#include "platform/record/verb_list.h"

#include <algorithm>
#include <limits>

#include "platform/record/verb_table.h"
#include "platform/record/verb_text.h"

namespace orvane {

namespace {

VerbValue TakeValue(VerbReader& reader, VerbValueKind kind) {
    switch (kind) {
        case VerbValueKind::Int:
            return std::int64_t{reader.Int()};
        case VerbValueKind::Hex:
            return std::int64_t{reader.Bits()};
        case VerbValueKind::Rect:
            return reader.TakeRect();
        case VerbValueKind::Text:
        case VerbValueKind::Pixels:
            return std::string(reader.Text());
        case VerbValueKind::Points: {
            const PointRun run = reader.Points();
            return std::vector<Point>(run.pts, run.pts + run.count);
        }
        case VerbValueKind::Counts: {
            const CountRun run = reader.Counts();
            return std::vector<std::int32_t>(run.counts, run.counts + run.count);
        }
        case VerbValueKind::Pen:
            return reader.TakePen();
        case VerbValueKind::Brush:
            return reader.TakeBrush();
        case VerbValueKind::Font:
            return reader.TakeFont();
        case VerbValueKind::Bitmap:
            return BitmapNumber{reader.Int()};
        case VerbValueKind::Context:
            return ContextNumber{reader.Int()};
    }
    return std::int64_t{0};
}

}  // namespace

VerbCall VerbList::Call(std::size_t i) const {
    const VerbRow& row = RowOf(records_[i].verb);
    VerbCall call{records_[i].context, row.name, {}};
    VerbReader reader(*this, records_[i]);
    for (std::size_t k = 0; k < row.valueCnt; ++k) call.values.push_back(TakeValue(reader, row.kinds[k]));
    return call;
}

std::string VerbList::Line(std::size_t i) const {
    const VerbCall call = Call(i);
    const VerbRow& row = RowOf(records_[i].verb);
    std::string line = ContextName(call.context) + " " + std::string(call.name);
    for (std::size_t k = 0; k < row.valueCnt; ++k) {
        const auto* context = std::get_if<ContextNumber>(&call.values[k]);
        line += " " + (context != nullptr ? ContextName(context->value) : ValueText(call.values[k], row.kinds[k]));
    }
    return line;
}

std::vector<std::string> VerbList::Lines() const {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < Size(); ++i) lines.push_back(Line(i));
    return lines;
}

std::string VerbList::ContextName(std::int32_t number) const {
    const auto found = labels_.find(number);
    return found != labels_.end() ? found->second : std::to_string(number);
}

std::vector<std::int32_t> VerbList::ContextsLabelled(std::string_view label) const {
    std::vector<std::int32_t> numbers;
    for (const auto& [number, given] : labels_) {
        if (given == label) numbers.push_back(number);
    }
    return numbers;
}

void VerbList::SetLabel(std::int32_t context, std::string label) {
    if (label.empty()) {
        labels_.erase(context);
    } else {
        labels_[context] = std::move(label);
    }
}

void VerbList::Clear() {
    records_.clear();
    numbers_.clear();
    points_.clear();
    pens_.clear();
    brushes_.clear();
    fonts_.clear();
    texts_.clear();
    for (const std::int32_t context : retired_) labels_.erase(context);
    retired_.clear();
}

void VerbList::Append(std::int32_t context, Verb verb, const std::vector<VerbValue>& values) {
    Add(ContextNumber{context}, verb);
    if (!recording_) return;
    for (const VerbValue& value : values) {
        std::visit([this](const auto& v) { Put(v); }, value);
    }
}

void VerbList::Put(const PointRun& run) {
    const std::int64_t most = (std::numeric_limits<std::int32_t>::max)();
    const std::int64_t count = run.pts == nullptr ? 0 : std::clamp<std::int64_t>(run.count, 0, most);
    numbers_.push_back(static_cast<std::int32_t>(count));
    points_.insert(points_.end(), run.pts, run.pts + count);
}

void VerbList::Put(std::string_view text) {
    const std::uint64_t first = texts_.size();
    const std::size_t most = (std::numeric_limits<std::int32_t>::max)();
    const std::size_t length = (std::min)(text.size(), most);
    numbers_.insert(numbers_.end(), {static_cast<std::int32_t>(static_cast<std::uint32_t>(first)),
                                     static_cast<std::int32_t>(first >> 32), static_cast<std::int32_t>(length)});
    texts_.insert(texts_.end(), text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
}

void VerbList::Put(const CountRun& run) {
    const std::int32_t count = run.counts == nullptr ? 0 : (std::max)(run.count, 0);
    numbers_.push_back(count);
    numbers_.insert(numbers_.end(), run.counts, run.counts + count);
}

}  // namespace orvane
