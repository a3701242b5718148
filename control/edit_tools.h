// The edit tools: what a click, a mouse move and a key do to the edit record, and what goes into the store at the end.
//
// No tool changes the store while it works, but for hiding its item behind the rubber figure. Each event runs host code, which
// may empty the store, start another tool or delete the item; so tools keep keys, look everything up again and go on: what is
// gone takes no write.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "control/ctrl.h"

namespace orvane {

/// The three keys of an item.
struct EditKey {
    FixedText<kMaxCode> code;
    std::int32_t meshNo = 0;
    std::int32_t datID = 0;
};

/// One use of the tools, made for one call of the control.
class EditTools {
public:
    /// `dc` is the window's context at hand; without one each repaint acquires its own.
    explicit EditTools(COrvane4Ctrl& ctrl, DeviceContext* dc = nullptr)
        : ctrl_(ctrl), store_(ctrl.store), edit_(ctrl.edit), dc_(dc) {}
    EditTools(const EditTools&) = delete;
    EditTools& operator=(const EditTools&) = delete;

    // edit_start.cpp
    std::int32_t Start(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t editType);
    void Cancel();

    // edit_mouse.cpp. Positions are client pixels.
    void Click(Point at);
    void Move(std::uint32_t flags, Point at);

    // edit_add.cpp, edit_points.cpp, edit_point_move.cpp
    void FinishAdd();
    void FinishPointAdd();
    void DeleteKey();

private:
    /// An item that was picked or asked for.
    struct Picked {
        EditKey key;
        std::int32_t type = 0;
        std::int32_t cnt = 0;  ///< its points
    };
    enum class CircleLoad : std::uint8_t {
        CentreAndRim,  ///< two points: the centre, and the one on the circle east of it
        AsItStands,
    };

    // edit_start.cpp
    void DropRunningTool();
    std::int32_t StartAdd(std::string_view code, std::int32_t meshNo, std::int32_t datID);
    std::int32_t StartOnItem(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int16_t mode);

    // edit_mouse.cpp
    void MoveHeldPoint(std::int32_t index, const DigPnt& world);
    void ShapeCursor(Point at);
    void DrawRubberBand(std::uint32_t flags, Point at);
    void MoveWholeFigure(const DigPnt& world);

    // edit_add.cpp
    void ClickAdd(Point at);
    void AddPointItem(const DigPnt& world);
    void CommitTwoPoints();
    void MakeMissingBlock();
    EditKey NewItemKey();
    void WriteNewItem(const EditKey& item);
    void EndAdd(const EditKey& item);

    // edit_point_move.cpp
    void ClickPointMove(Point at);
    void PickToMove(Point at);
    void DropHeldPoint(const DigPnt& world);
    void CommitPointMove();
    void DeleteWholeItem();
    void DeleteHeldPoint();

    // edit_points.cpp
    void ClickPointAdd(Point at);
    void ClickPointDelete(Point at);
    void PickForPoints(Point at);
    bool InsertPoint(const DigPnt& world);
    void DeletePoint(std::int32_t index);
    void CommitPointDelete();

    // edit_whole.cpp
    void ClickMoveOrCopy(Point at, std::int16_t mode);
    void PickToCarry(Point at, std::int16_t mode);
    bool CopyPicked(Picked& picked);
    void CommitCarry(const DigPnt& world, std::int16_t mode);
    void ClickDelete(Point at);

    // edit_item.cpp: what they share
    DigPnt World(Point at) const { return {ctrl_.ScreenToWorldX(at.x), ctrl_.ScreenToWorldY(at.y), 0}; }
    EditKey Edited() const { return {edit_.EditCode, edit_.EditMesh, edit_.EditDatId}; }
    /// Makes the item under the cursor the only active one. Nothing where there is none.
    std::optional<Picked> Pick(Point at);
    /// The same for the tools that load what they pick: nothing also for an item of more points than they can hold.
    std::optional<Picked> PickToLoad(Point at);
    /// Copies the item's points into the record and into a rubber figure, and hides it. False, with nothing changed, when it is
    /// missing, too long or without memory.
    bool Load(const EditKey& key, CircleLoad circle, std::int32_t activePointType);
    /// Room in the record; points that come about are (0, 0). False, with nothing changed, without memory.
    [[nodiscard]] bool ReservePnts(std::int32_t cnt);
    /// Points of the record: reads of a missing one give (0, 0), writes pass it over.
    DigPnt PntAt(std::int32_t index) const;
    void SetPnt(std::int32_t index, const DigPnt& pnt);
    bool IsHeldPnt(std::int32_t index) const { return index >= 0 && index < edit_.EditCnt; }
    void CloseUpPnts(std::int32_t index);
    double CircleRadius() const;

    /// A red active figure without points becomes the rubber figure. False, with the record as it was, without memory.
    bool MakeFigure(std::int32_t type, std::int32_t line);
    /// The rubber figure's number, -1 for none.
    std::int32_t Figure() const { return edit_.EditOrgResets == store_.ResetCount() ? edit_.EditOrgId : -1; }
    void DropFigure();
    /// The vertex of the rubber figure under the cursor, -1 for none.
    std::int32_t PickVertex(Point at) const;

    /// Gives the item its tag back and takes it out of the active set.
    void ShowItem(const EditKey& item) {
        store_.SetDigDatInfoEx(item.code.View(), item.meshNo, item.datID, edit_.EditTag, false);
    }
    DigPnt Local(const EditKey& item, const DigPnt& world, double z) const;
    void AddPnt(const EditKey& item, const DigPnt& local);
    /// Writes all points with z 0. A circle takes none.
    void WritePnts(const EditKey& item);
    void WriteCircle(const EditKey& item, const DigPnt& centre, double radius);

    void Fire(std::int32_t event, const EditKey& item, std::int32_t cnt, std::int32_t editType);
    void Repaint(std::int32_t mode);
    /// Empties what tells that something is loaded; code, mesh number, ID and tag stay.
    void EndEdit();
    /// EndEdit with the run mode and the repaint, for the tools that do it behind their last event.
    void EndTool();

    COrvane4Ctrl& ctrl_;
    CDigMem& store_;
    EditRecord& edit_;
    DeviceContext* dc_;
};

}  // namespace orvane
