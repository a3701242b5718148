// What a layer or one of its sub layers shows and allows, as one value that can be read, compared and written back.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/qt/orvane_widget.h"
#include "store/cdigmem.h"

namespace orvane {

/// The images that stand in place of a point layer's symbols.
struct LayerImages {
    std::string file;         ///< code page 932
    std::string active;       ///< that of selected features
    std::int32_t width = 0;   ///< pixels
    std::int32_t height = 0;  ///< pixels
    double leastScale = 0;
    double greatestScale = 0;
    std::uint8_t mode = 0;  ///< 0 hides them
    std::int32_t position = 0;
    friend bool operator==(const LayerImages&, const LayerImages&) = default;
};

struct LayerState {
    std::string name;  ///< code page 932
    bool shown = true;
    bool active = true;    ///< of layers only
    bool editable = true;  ///< of layers only
    std::int32_t key = 0;  ///< of layers only: the greatest is drawn first
    std::int32_t lineType = 0;
    std::int32_t lineSize = 1;  ///< pixels
    std::int32_t pgnType = 0;
    std::int32_t pntType = 0;
    Rgb color = 0;
    Rgb color2 = 0;
    bool noOutline = false;
    bool covers = true;
    LayerImages images;
    friend bool operator==(const LayerState&, const LayerState&) = default;
};

/// A layer's state before and after. `subLayNo` 0 is the layer itself.
struct LayerChange {
    std::string code;
    std::int32_t subLayNo = 0;
    LayerState before;
    LayerState after;
};

LayerState StateOf(const LayerDef& layer);
LayerState StateOf(const SubLayDef& sub);
/// A change to begin with: both sides are the state as it is. Without a sub layer of that number it is the layer's own.
LayerChange Unchanged(const LayerDef& layer, std::int32_t subLayNo = 0);
/// What layers, those of `codes` or all without any, and their sub layers look like now, as the state before and after.
std::vector<LayerChange> LooksOf(const CDigMem& store, const std::set<std::string>& codes = {});
/// Those of one layer and its sub layers.
std::vector<LayerChange> LooksOf(const LayerDef& layer);
/// Gives them the looks back that they had; layers that are gone are passed over.
void PutLooksBack(OrvaneWidget& map, std::vector<LayerChange> looks);
/// The sub layers that layers have now and had not when `before` was told.
std::vector<LayerChange> NewSubLayers(const CDigMem& store, const std::vector<LayerChange>& before);
/// Takes these sub layers out of their layers.
void RemoveSubLayers(OrvaneWidget& map, std::span<const LayerChange> subLayers);
/// Positions of the layers that have a block, from the one drawn last to the one drawn first.
std::vector<std::int32_t> DrawnLayers(CDigMem& store);
/// Keys of their own for these layers, in their order now. Nothing where they have them already, with room for another one over
/// them: where keys are equal, the order hangs on every record of the table, with those of layers that are removed or come later.
std::vector<LayerChange> OwnKeys(CDigMem& store);
/// Gives the layers keys of their own, before the first work that makes or removes a layer or moves one. The map looks as before,
/// so this is no step of the history.
void GiveOwnKeys(OrvaneWidget& map);
/// Gives layers the keys that one side of these changes has.
void GiveKeys(OrvaneWidget& map, std::span<const LayerChange> changes, bool after);
/// A key that puts a layer over all others. REQUIRES: keys of their own.
std::int32_t KeyOverAll(CDigMem& store);
/// Writes one side of the changes and repaints once. A sub layer that is not there is made. Of what a change leaves as it is, the
/// key is not written: the layers may have got keys of their own since.
void WriteLayerStates(OrvaneWidget& map, std::span<const LayerChange> changes, bool after);

}  // namespace orvane
