// The map store: every layer definition, every block of data and the index that orders them.
//
// It keeps records and the operations on records; who draws, picks, reads or writes them is no concern of it. Nothing here
// throws. No pointer or reference into the store outlives a call that can grow or delete something, nor a call of host code.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "store/records.h"
#include "store/store_keys.h"
#include "store/view_params.h"

namespace orvane {

/// One image setting as the automation surface gives it; names are code page 932 bytes.
struct ImageSettings {
    std::string_view imgfname;
    std::string_view imgactfname;
    std::int32_t bmWidth = 0;
    std::int32_t bmHeight = 0;
    double imgMinScl = 0;
    double imgMaxScl = 0;
};

/// One sub layer setting with its types told apart, as the extended call gives it.
struct SubLayerSettings {
    std::string_view layerName;
    bool disp = false;
    std::int32_t lineType = 0;
    std::int32_t lineSize = 0;
    std::int32_t pgnType = 0;
    std::int32_t pntType = 0;
    Rgb color = 0;
    bool outLine = false;
    bool fillMode = true;
};

/// What GetDigDatInfoEx tells of an item.
struct DatInfo {
    std::int32_t type = 0;
    std::int32_t lineTag = 0;
    std::int32_t cnt = 0;
    bool active = false;
};

class CDigMem {
public:
    CDigMem();
    ~CDigMem();
    CDigMem(const CDigMem&) = delete;
    CDigMem& operator=(const CDigMem&) = delete;

    // --- State that the control and the subjects share ------------------------------------------------------------------
    ViewParams view;
    Rgb ActiveColor = 0;
    std::int32_t ActivePointType = 0;
    std::int32_t LineTagMode = 0;
    std::int32_t DigStrVisible = 0;
    std::int32_t CutSameString = 0;
    Rgb bgColor = 0xFFFFFF;
    GrowArray<SymbolDef> symbols;  ///< at most kMaxSymbols
    GrowArray<LineTypeDef> lineTypes;

    // --- Lifecycle (lifecycle.cpp) --------------------------------------------------------------------------------------
    /// Frees what was there and starts an empty store. Always 1.
    std::int32_t Init();
    /// Frees all data; layer records and the index wait for the next Init.
    void FreeAll();
    bool InitDone() const { return initDone_; }
    /// How often the store was emptied by Init or FreeAll: long work that calls host code compares it to learn that its records
    /// are gone.
    std::uint32_t ResetCount() const { return resetCount_; }

    // --- Tables ---------------------------------------------------------------------------------------------------------
    std::int32_t LayerCnt() const { return static_cast<std::int32_t>(layers_.size()); }
    /// The record at a position from 0 to 9999; behind the used ones it reads as an unused record.
    const LayerDef& Layer(std::int32_t pos) const;
    /// REQUIRES: 0 <= pos < LayerCnt(). Do not change `code` or `layIndex` through it.
    LayerDef& MutableLayer(std::int32_t pos) { return layers_[static_cast<std::size_t>(pos)]; }
    std::int32_t BlockCnt() const { return static_cast<std::int32_t>(blocks_.size()); }
    /// REQUIRES: 0 <= pos < BlockCnt(). Do not change `code`, `meshNo`, `datCnt`, the item array or a `datID` through the mutable
    /// one.
    const DigBlock& Block(std::int32_t pos) const { return blocks_[static_cast<std::size_t>(pos)]; }
    DigBlock& MutableBlock(std::int32_t pos) { return blocks_[static_cast<std::size_t>(pos)]; }
    /// Always 0: there is one kind of mesh numbers only.
    std::int32_t MeshKind() const { return 0; }

    // --- Index and lookups (index.cpp) ----------------------------------------------------------------------------------
    /// Position in the index of the first slot with that key, or -1. An empty code matches nothing.
    std::int32_t FindDigIndex(std::string_view code, std::int32_t meshNo);
    /// Block and layer position of that slot, without asking for its position: (-1, -1) when there is none.
    DigIndex FindBlock(std::string_view code, std::int32_t meshNo) const;
    /// Number of used slots.
    std::int32_t GetDigIndexCnt();
    /// The used slots in drawing order: position 0 is drawn first. Valid until the next call that makes or deletes a block.
    /// A block made with a new code but no layer leaves an entry whose layer lies behind the used records: read it through
    /// Layer().
    std::span<const DigIndex> Index();
    /// Takes one slot out; later slots move down. Positions outside the used run do nothing.
    void DelDigIndex(std::int32_t pos);
    /// Gives the index its display order by the layers' keys. The work is put off until somebody looks.
    void SortDigIndex();
    /// Position of the layer, or -1.
    std::int32_t FindLayDef(std::string_view code) const;

    // --- Layers (layers.cpp) --------------------------------------------------------------------------------------------
    /// Puts an empty layer behind the others, its display key its position plus 1. False, with nothing changed, before Init, for
    /// a bad type, a code that exists or has over 50 bytes, a full table or no memory. An empty code is taken but makes nothing.
    bool MakeLayer(std::string_view code, std::int32_t layType);

    // Every setter answers whether the layer exists; without it nothing changes. Numbers are kept as they come, in and out of
    // range alike.

    /// Sets the display key, the greatest drawn first; it counts from the next sort on. 1, or 0 for no layer.
    std::int32_t SetLayIndex(std::string_view code, std::int32_t index);
    /// Shows the layer or hides it.
    bool SetLayDspFlg(std::string_view code, bool disp);
    /// The colour of lines, symbols and fills; the second is that of a closed shape's outline.
    bool SetLayColor(std::string_view code, Rgb color);
    bool SetLayColor2(std::string_view code, Rgb color);
    /// Line width in pixels on the screen.
    bool SetLayLineSize(std::string_view code, std::int32_t size);
    /// Writes the symbol, the hatch or the line type, by the layer's type.
    bool SetLayLineType(std::string_view code, std::int32_t type);
    /// Whether closed shapes go without an outline.
    bool SetLayOutLine(std::string_view code, bool outLineOff);
    /// Whether polygons cover what lies beneath; otherwise it shows through.
    bool SetLayPgnMode(std::string_view code, bool copy);
    /// The outline switch with the line type that it is drawn in, which for polygons SetLayLineType does not reach.
    bool SetLayPgnLine(std::string_view code, bool outLineOff, std::int32_t lineType);
    /// Whether items may become active; the other, whether the edit tools may change them.
    bool SetLayActive(std::string_view code, bool active);
    bool SetLayEditFlg(std::string_view code, bool edit);
    /// The name that people see, cut to 256 bytes; members that keep less of it cut it before.
    bool SetLayerName(std::string_view code, std::string_view layerName);

    // --- Sub layers (sub_layers.cpp) ------------------------------------------------------------------------------------
    // Settings go to the first record with the number. False, with nothing changed, when the layer or, but for the two setters
    // that add, the record is missing.

    /// Sets or adds a record; `lineType` is its symbol, hatch or line type by the layer's type, the other two types become 0.
    /// It covers what lies beneath.
    bool SetSubLayer(std::string_view code, std::int32_t subLayNo, std::string_view layerName, bool disp, std::int32_t lineType,
                     std::int32_t lineSize, Rgb color, bool outLine);
    /// Sets or adds a record with each type given, line size in pixels. The second colour goes back to 0; images stay as they
    /// were. False also when there is no memory for one more.
    bool SetSubLayerEx(std::string_view code, std::int32_t subLayNo, const SubLayerSettings& settings);
    /// The colour of lines, symbols and fills; the second is that of a closed shape's outline.
    bool SetSubLayColor(std::string_view code, std::int32_t subLayNo, Rgb color);
    bool SetSubLayColor2(std::string_view code, std::int32_t subLayNo, Rgb color);
    /// First record of the layer with that number, or null.
    static const SubLayDef* FindSubLay(const LayerDef& layer, std::int32_t subLayNo);

    // --- Images of point layers (layer_images.cpp): found through the index, so a layer without a block is not found ------
    // All answer false, with nothing changed, for a layer that is no point layer, has no block or, where a sub layer is asked
    // for, no such record; of records with the same number the first is met.

    /// Gives the layer its images, sizes in pixels, names cut to 511 bytes. They do not show until DspLayImage says so.
    bool SetLayImage(std::string_view code, const ImageSettings& settings);
    /// Whether images stand in place of the symbols.
    bool DspLayImage(std::string_view code, bool mode);
    /// The point of the image that stands on the data point: 0 the centre, 1 to 4 left top, left bottom, right top, right bottom.
    bool SetLayImagePos(std::string_view code, std::int32_t pos);
    /// The same three for one sub layer, whose image setter also puts the position back to the centre.
    bool SetSubLayImage(std::string_view code, std::int32_t subLayNo, const ImageSettings& settings);
    bool DspSubLayImage(std::string_view code, std::int32_t subLayNo, bool mode);
    bool SetSubLayImagePos(std::string_view code, std::int32_t subLayNo, std::int32_t pos);

    // --- Blocks (blocks.cpp) --------------------------------------------------------------------------------------------
    // Both makes answer false, with nothing changed, before Init, for a key that exists, a code over 50 bytes, a new code when
    // the layer table is full, or no memory. A full index loses what stood at position 0.

    /// Makes an empty block with its origin, in map units, from the mesh number, and its layer where the code is new; `index` is
    /// the display key of a new layer only. A layer that exists takes `layType` only when a deleted block's slot is used again.
    /// A new code with a bad type gets the block but no layer. `path` keeps 511 bytes.
    bool DigMemAlloc(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path, std::int32_t index);
    /// The same with the origin given, in map units with y to the north, truncated to whole numbers.
    bool DigMemAlloc2(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path, std::int32_t index,
                      double GX, double GY);
    /// Deletes the block with its items and its index entry; the layer stays. False when there is none.
    bool DigMemDelete(std::string_view code, std::int32_t meshNo);
    /// These delete all blocks of a code, or of a mesh number in every layer, and answer how many. The layers stay.
    std::int32_t DigMemDeleteLay(std::string_view code);
    std::int32_t DigMemDeleteMeshNo(std::int32_t meshNo);

    // --- Items (items.cpp) ----------------------------------------------------------------------------------------------
    // Where an ID stands more than once, searches go from the first up, but for SetDigDatPnts. A missing block or item answers
    // false and changes nothing.

    /// Puts an item without points behind the others; an ID that exists is not refused. `lineTag` -1 hides it always, above 0
    /// while LineTagMode is 1. False also when there is no memory.
    bool AddDigDat(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t lineTag);
    /// Gives the item, looked for from the last down, all its points at once, in AddDigDatPnt's units. The block's bounds grow by
    /// them and forget nothing, unless it is the item at position 0. False, also for no points, leaves the item as it was.
    bool SetDigDatPnts(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const DigPnt> pnts);
    /// Deletes the first item with the ID; later ones move down. The block's bounds stay as wide as they were.
    bool DelDigDat(std::string_view code, std::int32_t meshNo, std::int32_t datID);
    /// One more than the greatest ID in the block, at least 1; -1 when the greatest possible one is taken. 0 with `found` false
    /// when there is no such block (the caller tells the operator).
    std::int32_t FreeDigDatID(std::string_view code, std::int32_t meshNo, bool& found);
    /// Gives the first item with the ID a sub layer's look; 0 or less is the layer's own. True for a missing item too, false only
    /// for a missing block or, above 0, a missing sub layer.
    bool SetDigDatSubLayer(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t subLayNo);
    /// The same for many items, pair by pair to the end of the shorter list, without asking whether the sub layers exist. True
    /// when at least one item was found.
    bool SetDatSubLayerEx(std::string_view code, std::int32_t meshNo, std::span<const std::int32_t> datID,
                          std::span<const std::int32_t> subLayNo);
    /// Sets both fields of the first item with the ID.
    bool SetDigDatInfoEx(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t lineTag, bool active);

    // --- Points (points.cpp) --------------------------------------------------------------------------------------------
    // Points are local to the block, in map units, y to the north; z is the radius in a circle layer, else a height. Bounds widen
    // with points and narrow only where it is said. A missing item or point answers false and changes nothing.

    /// Puts a point behind those of the last item with the ID, so that a host adds to what it has just made. False also when
    /// there is no memory. The first point of the item at position 0 sets the block's bounds anew.
    bool AddDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, DigPnt pnt);
    /// Overwrites one point. This and the next two meet the first item with the ID; a circle's radius does not widen bounds here.
    bool EditDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt);
    /// Overwrites the point at `pntIdx`, from 0 to the count, and makes the item one cleared point longer; the edit tools do
    /// their own splicing. An index behind that answers false although the item did grow; any other false changes nothing.
    bool InsertDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt);
    /// Deletes one point; later ones move down. The answer is whether points are left, so it is false also when the last one
    /// went. A mesh item keeps its grid.
    bool DelDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx);

    // --- Meshes (meshes.cpp) --------------------------------------------------------------------------------------------
    // All three meet the last item with the ID, in a mesh layer only, and change nothing when they answer false.

    /// Gives the item a grid in place of its points and former grid: all points used, all colours 0. `pnts` holds hcnt * vcnt
    /// points, row after row, local to the block in map units; more are left alone, fewer are refused, as is no memory.
    bool SetMeshDat(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t hcnt, std::int32_t vcnt,
                    std::span<const DigPnt> pnts);
    /// Whether each grid point is used, and its colour. As many values as the item has points, not more than its grid; any other
    /// count is refused. Flags are kept as 0 or 1.
    bool SetMeshUseFlag(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const std::uint8_t> useFlag);
    bool SetMeshColor(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const std::uint32_t> colors);

    // --- Copies (copies.cpp) --------------------------------------------------------------------------------------------
    /// Copies the first item with the ID behind the items of a block whose layer has the same type, at the same local
    /// coordinates, and counts that block's bounds anew. A text's font and its size are not copied, nor what there is no memory
    /// for. The new datID, or 0 with nothing changed.
    std::int32_t CopyData(std::string_view srcCode, std::int32_t srcMeshNo, std::int32_t srcDatID, std::string_view dstCode,
                          std::int32_t dstMeshNo);
    /// Copies the first item with `srcID` behind the others of its block, under an ID that is not asked whether it exists. Bounds
    /// are left alone; the copy is not active. False, with nothing changed, for a missing item or no memory for the record.
    bool CopyDatInBlock(std::string_view code, std::int32_t meshNo, std::int32_t srcID, std::int32_t newID);

    // --- Reads (reads.cpp) ----------------------------------------------------------------------------------------------
    // Of items with the same ID the first is read.

    /// Number of items in the block, 0 also for no block.
    std::int32_t GetLayDatCnt(std::string_view code, std::int32_t meshNo) const;
    /// datID at a position, -1 when there is none; the position datCnt itself reads as 0.
    std::int32_t GetDigDatInfo(std::string_view code, std::int32_t meshNo, std::int32_t idx) const;
    /// Tells of an item. False leaves `out` as it was.
    bool GetDigDatInfoEx(std::string_view code, std::int32_t meshNo, std::int32_t datID, DatInfo& out) const;
    /// The path that the block was made with, empty when there is no block. Good until a block is made or deleted.
    std::string_view GetLayPath(std::string_view code, std::int32_t meshNo) const;
    /// Number of points of the item, or -1 when it is missing: how long the buffers of GetDigDatPnt must be.
    std::int32_t PntCnt(std::string_view code, std::int32_t meshNo, std::int32_t datID) const;
    /// Map coordinates of all points; `z` may be null and is copied unchanged. REQUIRES: arrays of PntCnt values.
    bool GetDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, double* x, double* y, double* z) const;
    /// First item with that ID from the first up, or null.
    const DigDat* FindDat(std::string_view code, std::int32_t meshNo, std::int32_t datID) const;

    // --- The active set (active_set.cpp) --------------------------------------------------------------------------------
    /// Takes every item out of the active set; returns how many were in it.
    std::int32_t ClearActive();
    /// Finds the item from the first up, sets `active` and gives the mean of its points in map sense.
    /// False when it is missing. `hasPoints` is false, and the mean untouched, when it has none.
    bool ActivateForJump(std::string_view code, std::int32_t meshNo, std::int32_t datID, bool active, bool& hasPoints,
                         double& meanX, double& meanY);

private:
    friend struct StoreTestAccess;

    /// A block with the layer of its index entry.
    struct Found {
        DigBlock* block = nullptr;
        const LayerDef* layer = nullptr;
    };
    struct FoundConst {
        const DigBlock* block = nullptr;
        const LayerDef* layer = nullptr;
    };
    Found FindForChange(std::string_view code, std::int32_t meshNo);
    FoundConst FindForRead(std::string_view code, std::int32_t meshNo) const;
    /// First item with that ID, or null, also when there is no such block.
    static DigDat* FindDatForChange(const Found& found, std::int32_t datID);
    static const DigDat* FindDat(const DigBlock& block, std::int32_t datID);
    /// Last item with that ID in a mesh layer, or null.
    static DigDat* FindMeshDat(const Found& found, std::int32_t datID);

    LayerDef* FindLayer(std::string_view code);
    LayerDef* FindImageLayer(std::string_view code);
    static SubLayDef* FindSubLayForChange(LayerDef* layer, std::int32_t subLayNo);
    void AppendLayer(const FixedText<kMaxCode>& code, std::int32_t layType);

    bool MakeBlock(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path, std::int32_t index,
                   std::int32_t gx, std::int32_t gy);
    void DeleteBlock(std::int32_t pos);

    /// Puts the item behind all others. False, with the block and `dat` as they were, when it cannot grow.
    static bool AppendDat(DigBlock& block, DigDat&& dat);
    /// Position of the first item with that ID, or -1; FindDatDown gives the last.
    static std::int32_t FindDatUp(const DigBlock& block, std::int32_t datID);
    static std::int32_t FindDatDown(const DigBlock& block, std::int32_t datID);
    /// One more than the greatest ID; -1 when there is no greater one.
    static std::int32_t NextDatID(const DigBlock& block);

    bool initDone_ = false;
    std::uint32_t resetCount_ = 0;
    GrowArray<LayerDef> layers_;
    GrowArray<DigBlock> blocks_;
    StoreKeys keys_{layers_, blocks_};
};

}  // namespace orvane
