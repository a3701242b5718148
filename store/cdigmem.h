// The map store: every layer definition, every block of data and the index that orders them.
//
// It keeps records and the operations on records; who draws, picks, reads or writes them is no concern of it. Nothing here
// throws. No pointer or reference into the store outlives a call that can grow or delete something, nor a call of host code.
#pragma once

#include <cstdint>
#include <memory>
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

/// What shows of a layer and how, as a file keeps it; the second colour is not among it.
struct LayerDisplay {
    bool disp = false;
    std::int32_t pntType = 0;
    std::int32_t pgnType = 0;
    std::int32_t lineType = 0;
    std::int32_t lineSize = 0;  ///< pixels
    bool outLine = false;
    Rgb color = 0;
    bool active = false;
    bool fillMode = false;
};

/// The whole look of a text.
struct TextLook {
    std::string_view fntname;  ///< code page 932 bytes
    std::int32_t size = 10;    ///< points
    std::int32_t style = 0;    ///< bit 0 bold, bit 1 italic, bit 2 halo
    std::int32_t pos = 0;      ///< which point of the text stands on the anchor
    double angle = 0;          ///< degrees
    bool fill = false;
    bool uline = false;
    bool strike = false;
    Rgb fcolor = 0;
    Rgb bcolor = 0xFFFFFF;
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
    /// Writes all of these at once, each type into its own field whatever the layer's type is.
    bool SetLayDisplay(std::string_view code, const LayerDisplay& display);
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
    /// Goes up whenever a sub layer may have been changed: work that lets host code run compares it to learn that what it set
    /// still stands.
    std::uint32_t SubLayChangeCount() const { return subLayChangeCount_; }
    /// Takes the record out; those behind it move up, and items keep its number. For hosts that take back what they made: no
    /// member of the automation surface does it.
    bool RemoveSubLayer(std::string_view code, std::int32_t subLayNo);
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
    /// The image of a sub layer with the switch that shows it; the position stays. Unlike the calls above it takes a layer of any
    /// type, with or without a block.
    bool SetSubLayImageMode(std::string_view code, std::int32_t subLayNo, const ImageSettings& settings, bool imgMode);

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

    // --- Records that file readers make (reader_records.cpp) --------------------------------------------------------------
    // A bare block has no index entry yet, and no lookup meets it: its reader fills it through MutableBlock (code, number, items
    // and their count as well) and then either indexes it or drops it. Positions stay good, references do not.

    enum class BlockPlace : std::uint8_t {
        LowestFreeSlot,  ///< or the end, where no slot is free
        End,
    };
    /// Makes a bare block, in use and cleared. Its position, or -1, with nothing changed, before Init and without memory.
    std::int32_t MakeBareBlock(BlockPlace place);
    /// Puts a bare block into the first empty index slot, without a sort, under the layer of its code; without such a layer the
    /// entry points behind the used layer records and lookups do not meet it. Its key may be there already: lookups meet the
    /// first. False, with nothing changed, when the index is full or there is no memory.
    bool IndexBareBlock(std::int32_t pos);
    /// Takes a bare block off the end of the block array with its items; one that others have come behind since becomes a free
    /// slot.
    void DropBareBlock(std::int32_t pos);
    /// Makes a bare block a free slot, for one that came to stand in one.
    void FreeBareBlock(std::int32_t pos);
    /// Whether another block can be indexed.
    bool IndexHasRoom() const { return keys_.EntryCnt() < kMaxDigIndex; }
    /// Puts a whole item behind the others of a block; bounds stay. False, with block and item as they were, when it cannot
    /// grow. REQUIRES: 0 <= pos < BlockCnt().
    bool AppendReadDat(std::int32_t pos, DigDat&& dat) { return AppendDat(MutableBlock(pos), std::move(dat)); }
    /// Puts a whole layer record behind the others; an empty code is taken but makes nothing. False, with nothing changed, before
    /// Init, for a code that exists, a full table or no memory.
    bool AppendReadLayer(LayerDef&& layer);

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
    /// Moves the items of a block: the place i gets the item of place order[i]. For hosts that bring items back to where they
    /// stood: no member of the automation surface does it. False, and nothing is moved, for no such block or what does not tell
    /// each place once. `order` is worked in, and means nothing afterwards.
    bool ReorderDats(std::int32_t block, std::span<std::int32_t> order);
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

    // --- Texts (texts.cpp) ----------------------------------------------------------------------------------------------
    // Items are looked for from the last down. A missing block or item answers false and changes nothing; for the rest of the
    // block, items without a text are passed over, and the answer is whether the block exists.

    /// Gives the item a text in the default look, anchored at (x, y), local to the block in map units, y to the north. The look
    /// of a text that it replaces is not carried over. An empty text is one. Without memory for it the item has none, and the
    /// answer is false.
    bool SetDigDatString(std::string_view code, std::int32_t meshNo, std::int32_t datID, double x, double y,
                         std::string_view text);
    /// Sets the whole look of the text that the item has already; text and anchor stay. False, with nothing changed, also when
    /// it has none or there is no memory.
    bool SetDigDatStrStyle(std::string_view code, std::int32_t meshNo, std::int32_t datID, const TextLook& look);
    /// Sets the whole look of every text in the block. Without memory for the face none is changed and the answer is false.
    bool SetFontStyleAll(std::string_view code, std::int32_t meshNo, const TextLook& look);
    /// The same for the face alone.
    bool SetFontName(std::string_view code, std::int32_t meshNo, std::string_view fntname);
    /// In points.
    bool SetFontSize(std::string_view code, std::int32_t meshNo, std::int32_t size);
    /// Sets `style`, `pos`, `angle`, `fill`, `uline` and `strike`; the other fields of `look` are not read.
    bool SetFontStyle(std::string_view code, std::int32_t meshNo, const TextLook& look);
    bool SetFontColor(std::string_view code, std::int32_t meshNo, Rgb fcolor, Rgb bcolor);

    // --- Overlay figures (overlay_figures.cpp) --------------------------------------------------------------------------
    // Points are map coordinates, y to the north. An ID may stand in several figures: the first one is met. What makes or deletes
    // a figure moves the others in memory, and a repaint does both: keep positions, not references.

    /// The figures in the order in which they are drawn. Valid until one is made or deleted.
    std::span<const OrgDat> OrgDats() const { return {orgDats_.data(), orgDats_.size()}; }
    std::int32_t OrgDatCnt() const { return static_cast<std::int32_t>(orgDats_.size()); }
    /// REQUIRES: 0 <= pos < OrgDatCnt(). Do not change `ID`, `pntCnt` or the size of the point array through it.
    OrgDat& MutableOrgDat(std::int32_t pos) { return orgDats_[static_cast<std::size_t>(pos)]; }
    /// First figure with that ID, or null; IDs below 1 are never found.
    const OrgDat* FindOrgDat(std::int32_t ID) const;
    /// Puts a figure without points behind the others. Its ID is the new number of figures, whether or not an older figure has
    /// it. `fill` fills when it is exactly 1. -1, with nothing changed, before Init or without memory.
    std::int32_t MakeOrgDat(std::int16_t type, std::int16_t line, Rgb color, std::int32_t fill);
    /// Sets those four fields of a figure. False when there is none.
    bool EditOrgDat(std::int32_t ID, std::int16_t type, std::int16_t line, Rgb color, std::int32_t fill);
    /// Deletes a figure; later ones move down and keep their IDs. 0, or -1 when there is none.
    std::int32_t DelOrgData(std::int32_t ID);
    /// Deletes the figure at the end, whose ID an older figure may have as well. Nothing happens when there is none.
    void DropLastOrgDat();
    /// Puts a point behind the others. The new count; -1 for no figure, no memory, or a point figure that has its point.
    std::int32_t AddOrgPnt(std::int32_t ID, double x, double y);
    /// The same for the figure at a position. REQUIRES: 0 <= pos < OrgDatCnt().
    std::int32_t AddOrgPntAt(std::int32_t pos, double x, double y);
    /// Inserts a point before position `cnt`, 0 to the count of points. The new count; -1 as above or for another position.
    std::int32_t InsOrgPnt(std::int32_t ID, std::int32_t cnt, double x, double y);
    /// Takes a point out; the count itself as position takes the last one. In a polygon the point that closed the ring goes to
    /// the new first one. The new count; -1 for no figure, a bad position and a figure with one point or none, which keeps it.
    std::int32_t DelOrgPnt(std::int32_t ID, std::int32_t cnt);
    /// Moves a point, and in a polygon the next later one at the very same place with it. 0; -1 no figure, -2 no such point.
    std::int32_t EditOrgPnt(std::int32_t ID, std::int32_t index, double x, double y);
    /// Moves all points of a figure by a distance in map units. False when there is none.
    bool ShiftOrgPnts(std::int32_t ID, double dx, double dy);
    /// ID of the figure at a position from 0, -1 when there is none.
    std::int32_t GetOrgID(std::int32_t pos) const;
    /// Whether a figure is active: shown in ActiveColor and met by the searches that look at active figures only. A missing one
    /// is not, and the write passes it over.
    bool OrgDataActive(std::int32_t ID) const;
    void SetOrgDataActive(std::int32_t ID, bool active);
    /// Gives a figure a string at (x, y). 0; -1, with nothing changed, for no figure, an empty text or no memory.
    std::int32_t SetOrgDatString(std::int32_t ID, std::string_view text, double x, double y, std::int32_t size, Rgb color,
                                 std::int32_t fill);

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
    SubLayDef* FindSubLayForChange(LayerDef* layer, std::int32_t subLayNo);
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

    OrgDat* FindOrgDatForChange(std::int32_t ID) { return const_cast<OrgDat*>(FindOrgDat(ID)); }

    bool initDone_ = false;
    std::uint32_t resetCount_ = 0;
    std::uint32_t subLayChangeCount_ = 0;
    GrowArray<LayerDef> layers_;
    GrowArray<DigBlock> blocks_;
    StoreKeys keys_{layers_, blocks_};
    GrowArray<OrgDat> orgDats_;
    mutable std::unique_ptr<DatLookup> orgLookup_;  ///< a cache: finds figures once they are many; null until needed
};

}  // namespace orvane
