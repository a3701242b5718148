// A store with a view in which numbers can be followed by eye, and a context that writes down what is drawn on it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/record/record_context.h"
#include "render/draw_scratch.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

using Coordinates = std::initializer_list<std::pair<double, double>>;

/// One pixel is one map unit, and the client area of 200 x 100 pixels shows map x from 0 to 200 and map y from 0 to 100: map (x,
/// y) comes to pixel (x, 100 - y).
class RenderRig {
public:
    static constexpr std::int32_t kMesh = 1;

    RenderRig();

    /// A layer with one block; returns the layer's position, which is also the block's. The greater `index` is drawn first.
    std::int32_t AddLayer(std::string_view code, std::int32_t layType, std::int32_t index = 1, double GX = 0, double GY = 0);
    /// An item at the end of the layer's block, found by the area search and with a mark in `drawnFlg` that drawing never leaves.
    void AddItem(std::string_view code, Coordinates coordinates, std::int32_t lineTag = 0);
    /// A sub layer of the layer, shown, otherwise with all values 0.
    SubLayDef& AddSubLayer(std::int32_t layer, std::int32_t subLayNo);
    /// A line type at the end of the table, with no fields but these.
    LineTypeDef& AddLineType(std::int32_t id, std::int32_t kind, std::initializer_list<std::int32_t> list = {});

    LayerDef& Layer(std::int32_t layer) { return store.MutableLayer(layer); }
    DigBlock& Block(std::int32_t block) { return store.MutableBlock(block); }
    DigDat& Item(std::int32_t block, std::size_t i) { return store.MutableBlock(block).dats[i]; }

    /// The index entry at a position, to break it.
    DigIndex& Slot(std::size_t pos);

    /// What was drawn since the last call, a verb a line without the context's name.
    std::vector<std::string> Verbs();
    /// The same of lines that begin with `verb`.
    std::vector<std::string> Verbs(std::string_view verb);

    std::vector<std::string> DrawLines(std::int32_t block = 0, bool honourClip = true);
    std::vector<std::string> DrawPolygons(std::int32_t block = 0, bool honourClip = true);

    CDigMem store;
    std::shared_ptr<VerbList> list = std::make_shared<VerbList>();
    RecordContext dc{list, "dc"};
    FrameTarget frame;
    DrawScratch scratch;
};

/// Drawing writes 0 or 1; what reads as this was left alone.
inline constexpr std::uint8_t kUntouched = 9;

}  // namespace orvane
