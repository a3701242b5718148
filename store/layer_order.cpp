#include "store/layer_order.h"

#include <algorithm>
#include <utility>

#include "store/guarded_alloc.h"

namespace orvane {
namespace {

using Ranked = LayerOrder::Ranked;

bool Descends(const GrowArray<Ranked>& ranked) {
    return std::is_sorted(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) { return a.key > b.key; });
}

bool HasEqualNeighbours(const GrowArray<Ranked>& ranked) {
    return std::adjacent_find(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) { return a.key == b.key; }) !=
           ranked.end();
}

/// The display order is defined as what this loop gives; where keys are equal no other sort gives the same.
void ExchangeSort(GrowArray<Ranked>& ranked) {
    for (std::size_t i = 0; i < ranked.size(); ++i) {
        for (std::size_t j = i + 1; j < ranked.size(); ++j) {
            if (ranked[i].key < ranked[j].key) std::swap(ranked[i], ranked[j]);
        }
    }
}

}  // namespace

void LayerOrder::Clear() {
    noted_.Clear();
    changed_.Clear();
    ranked_.Clear();
    sortedCnt_ = 0;
    stale_ = false;
}

bool LayerOrder::Reserve(std::size_t n) { return EnsureRoom(noted_, n) && EnsureRoom(changed_, n) && EnsureRoom(ranked_, n); }

void LayerOrder::Add() {
    const auto layer = static_cast<std::int32_t>(noted_.size());
    if (noted_.PushBack(Noted{})) KeyChanged(layer);
}

void LayerOrder::KeyChanged(std::int32_t layer) {
    Noted& noted = noted_[static_cast<std::size_t>(layer)];
    if (noted.changed) return;
    noted.changed = changed_.PushBack(layer);
}

void LayerOrder::Sort(const GrowArray<LayerDef>& layers) {
    if (sortedCnt_ != noted_.size()) stale_ = true;
    sortedCnt_ = noted_.size();
    for (const std::int32_t layer : changed_) {
        Noted& noted = noted_[static_cast<std::size_t>(layer)];
        const std::int32_t key = layers[static_cast<std::size_t>(layer)].layIndex;
        if (noted.key != key) stale_ = true;
        noted = {key, false};
    }
    changed_.Truncate(0);
}

std::span<const Ranked> LayerOrder::Layers() {
    if (stale_) {
        stale_ = false;
        CollectNoted();
        if (!Descends(ranked_)) {
            std::sort(ranked_.begin(), ranked_.end(), [](const Ranked& a, const Ranked& b) { return a.key > b.key; });
            if (HasEqualNeighbours(ranked_)) {
                CollectNoted();
                ExchangeSort(ranked_);
            }
        }
    }
    return {ranked_.data(), ranked_.size()};
}

void LayerOrder::CollectNoted() {
    ranked_.Truncate(0);
    for (std::size_t i = 0; i < sortedCnt_; ++i) {
        if (!ranked_.PushBack(Ranked{noted_[i].key, static_cast<std::int32_t>(i)})) return;
    }
}

}  // namespace orvane
