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
    std::int32_t MeshKind() const { return 0; }

    // --- Index and lookups (index.cpp) ----------------------------------------------------------------------------------
    /// Position in the index of the first slot with that key, or -1. An empty code matches nothing.
    std::int32_t FindDigIndex(std::string_view code, std::int32_t meshNo);
    /// Block and layer position of that slot, without asking for its position: (-1, -1) when there is none.
    DigIndex FindBlock(std::string_view code, std::int32_t meshNo) const;
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
    /// False for a bad type, a code that exists, a code over 50 bytes or a full table.
    bool MakeLayer(std::string_view code, std::int32_t layType);
    std::int32_t SetLayIndex(std::string_view code, std::int32_t index);
    bool SetLayDspFlg(std::string_view code, bool disp);
    bool SetLayColor(std::string_view code, Rgb color);
    bool SetLayColor2(std::string_view code, Rgb color);
    bool SetLayLineSize(std::string_view code, std::int32_t size);
    /// Writes the symbol, the hatch or the line type, by the layer's type.
    bool SetLayLineType(std::string_view code, std::int32_t type);
    bool SetLayOutLine(std::string_view code, bool outLineOff);
    bool SetLayPgnMode(std::string_view code, bool copy);
    bool SetLayPgnLine(std::string_view code, bool outLineOff, std::int32_t lineType);
    bool SetLayActive(std::string_view code, bool active);
    bool SetLayEditFlg(std::string_view code, bool edit);
    /// `layerName` as the caller cut it.
    bool SetLayerName(std::string_view code, std::string_view layerName);

    // --- Sub layers (sub_layers.cpp) ------------------------------------------------------------------------------------
    /// Sets or adds a record; `lineType` is shared out by the layer's type.
    bool SetSubLayer(std::string_view code, std::int32_t subLayNo, std::string_view layerName, bool disp, std::int32_t lineType,
                     std::int32_t lineSize, Rgb color, bool outLine);
    /// Sets or adds a record with each type given.
    bool SetSubLayerEx(std::string_view code, std::int32_t subLayNo, const SubLayerSettings& settings);
    bool SetSubLayColor(std::string_view code, std::int32_t subLayNo, Rgb color);
    bool SetSubLayColor2(std::string_view code, std::int32_t subLayNo, Rgb color);
    /// First record of the layer with that number, or null.
    static const SubLayDef* FindSubLay(const LayerDef& layer, std::int32_t subLayNo);

    // --- Images of point layers (layer_images.cpp): found through the index, so a layer without a block is not found ------
    bool SetLayImage(std::string_view code, const ImageSettings& settings);
    bool DspLayImage(std::string_view code, bool mode);
    bool SetLayImagePos(std::string_view code, std::int32_t pos);
    bool SetSubLayImage(std::string_view code, std::int32_t subLayNo, const ImageSettings& settings);
    bool DspSubLayImage(std::string_view code, std::int32_t subLayNo, bool mode);
    bool SetSubLayImagePos(std::string_view code, std::int32_t subLayNo, std::int32_t pos);

    // --- Blocks (blocks.cpp) --------------------------------------------------------------------------------------------
    /// Makes a block with origin from the mesh number.
    bool DigMemAlloc(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path, std::int32_t index);
    /// Makes a block with the origin given, truncated to whole numbers.
    bool DigMemAlloc2(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path, std::int32_t index,
                      double GX, double GY);
    bool DigMemDelete(std::string_view code, std::int32_t meshNo);
    /// Numbers of blocks deleted.
    std::int32_t DigMemDeleteLay(std::string_view code);
    std::int32_t DigMemDeleteMeshNo(std::int32_t meshNo);

    // --- Items (items.cpp) ----------------------------------------------------------------------------------------------
    bool AddDigDat(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t lineTag);
    /// Gives the item, looked for from the last down, all its points at once. False leaves the item as it was.
    bool SetDigDatPnts(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const DigPnt> pnts);
    bool DelDigDat(std::string_view code, std::int32_t meshNo, std::int32_t datID);
    /// One more than the greatest ID in the block, at least 1; -1 when the greatest possible one is taken. 0 with `found` false
    /// when there is no such block (the caller tells the operator).
    std::int32_t FreeDigDatID(std::string_view code, std::int32_t meshNo, bool& found);
    bool SetDigDatSubLayer(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t subLayNo);
    bool SetDatSubLayerEx(std::string_view code, std::int32_t meshNo, std::span<const std::int32_t> datID,
                          std::span<const std::int32_t> subLayNo);
    bool SetDigDatInfoEx(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t lineTag, bool active);

    // --- Points (points.cpp) --------------------------------------------------------------------------------------------
    bool AddDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, DigPnt pnt);
    bool EditDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt);
    /// Overwrites the point at `pntIdx` and makes the item one point longer; the edit tools do their own splicing.
    bool InsertDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt);
    bool DelDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx);

    // --- Meshes (meshes.cpp) --------------------------------------------------------------------------------------------
    /// Gives an item of a mesh layer its grid; `pnts` holds hcnt * vcnt points, row after row.
    bool SetMeshDat(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t hcnt, std::int32_t vcnt,
                    std::span<const DigPnt> pnts);
    bool SetMeshUseFlag(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const std::uint8_t> useFlag);
    bool SetMeshColor(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const std::uint32_t> colors);

    // --- Copies (copies.cpp) --------------------------------------------------------------------------------------------
    /// The new datID, or 0.
    std::int32_t CopyData(std::string_view srcCode, std::int32_t srcMeshNo, std::int32_t srcDatID, std::string_view dstCode,
                          std::int32_t dstMeshNo);
    bool CopyDatInBlock(std::string_view code, std::int32_t meshNo, std::int32_t srcID, std::int32_t newID);

    // --- Reads (reads.cpp) ----------------------------------------------------------------------------------------------
    std::int32_t GetLayDatCnt(std::string_view code, std::int32_t meshNo) const;
    /// datID at a position, -1 when there is none; the position datCnt itself reads as 0.
    std::int32_t GetDigDatInfo(std::string_view code, std::int32_t meshNo, std::int32_t idx) const;
    bool GetDigDatInfoEx(std::string_view code, std::int32_t meshNo, std::int32_t datID, DatInfo& out) const;
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
