// The order of the layers that the last sort of the index gave.
#pragma once

#include <cstdint>
#include <span>

#include "store/records.h"

namespace orvane {

/// Sorting is asked for with every block that is made, and looked at far less often: a sort only notes the keys as they are then,
/// and the order is worked out when somebody asks for it. Keys that change later, and layers that come later, wait for the next
/// sort.
class LayerOrder {
public:
    /// A layer with its key at the last sort; the greatest key is drawn first.
    struct Ranked {
        std::int32_t key = 0;
        std::int32_t layer = 0;
    };

    /// Forgets all layers and gives the memory back.
    void Clear();
    /// Room for `n` layers in all, so that nothing else here can fail. False changes nothing.
    [[nodiscard]] bool Reserve(std::size_t n);
    /// One more layer behind the last. REQUIRES: room for it.
    void Add();
    /// The layer's key was written; the next sort looks at it again. REQUIRES: a layer that was added.
    void KeyChanged(std::int32_t layer);
    /// Notes the keys as they are now. `layers` holds a record for each layer added.
    void Sort(const GrowArray<LayerDef>& layers);
    /// The layers that took part in the last sort, drawn first to drawn last.
    std::span<const Ranked> Layers();

private:
    struct Noted {
        std::int32_t key = 0;
        bool changed = false;
    };

    void CollectNoted();

    GrowArray<Noted> noted_;           ///< by layer: the key at the last sort
    GrowArray<std::int32_t> changed_;  ///< layers whose key may differ from the noted one
    GrowArray<Ranked> ranked_;
    std::size_t sortedCnt_ = 0;
    bool stale_ = false;
};

}  // namespace orvane
