// The tools that move, copy and delete whole items.
#include "control/edit_tools.h"

namespace orvane {

void EditTools::ClickMoveOrCopy(Point at, std::int16_t mode) {
    if (edit_.EditPhase == 0) return PickToCarry(at, mode);
    if (edit_.EditPhase == 1) CommitCarry(World(at), mode);
}

void EditTools::PickToCarry(Point at, std::int16_t mode) {
    std::optional<Picked> picked = PickToLoad(at);
    if (!picked || (mode == kRunCopyDat && !CopyPicked(*picked))) return;
    Fire(kOnEditorStart, picked->key, picked->cnt, mode);
    const DigPnt world = World(at);
    edit_.EditAnchorX = edit_.EditLastX = world.x;
    edit_.EditAnchorY = edit_.EditLastY = world.y;
    Load(picked->key, CircleLoad::CentreAndRim, 0);
}

/// From here on the copy is the item at hand; the one under the cursor stays where it is, and active.
bool EditTools::CopyPicked(Picked& picked) {
    EditKey& key = picked.key;
    const std::int32_t copyID = ctrl_.GetFreeDigDatID(key.code.View(), key.meshNo);
    if (copyID < 1 || !store_.CopyDatInBlock(key.code.View(), key.meshNo, key.datID, copyID)) return false;
    key.datID = copyID;
    picked.cnt = store_.PntCnt(key.code.View(), key.meshNo, copyID);
    return true;
}

void EditTools::CommitCarry(const DigPnt& world, std::int16_t mode) {
    const EditKey item = Edited();
    DropFigure();
    ShowItem(item);
    edit_.EditLastX = world.x;
    edit_.EditLastY = world.y;
    const double dx = edit_.EditLastX - edit_.EditAnchorX;
    const double dy = edit_.EditLastY - edit_.EditAnchorY;
    // Of a circle the centre alone moves, so its radius is taken before.
    const double radius = CircleRadius();
    const bool isCircle = edit_.EditType == kLayCircle;
    const std::int32_t movedCnt = isCircle ? 1 : edit_.EditCnt;
    for (std::int32_t i = 0; i < movedCnt; ++i) SetPnt(i, {PntAt(i).x + dx, PntAt(i).y + dy, 0});
    WritePnts(item);
    if (isCircle) WriteCircle(item, PntAt(0), radius);
    Fire(kOnEditorEnd, item, edit_.EditCnt, mode);
    EndTool();
    edit_.EditBusy = 1;
}

/// The item is never loaded, so the code that the end tells is the one that an earlier tool left in the record.
void EditTools::ClickDelete(Point at) {
    if (edit_.EditPhase != 0) return;
    const std::optional<Picked> picked = Pick(at);
    if (!picked) return;
    const EditKey& item = picked->key;
    Fire(kOnEditorStart, item, picked->cnt, kRunDeleteDat);
    store_.DelDigDat(item.code.View(), item.meshNo, item.datID);
    DropFigure();
    ctrl_.runMode = kRunNormal;
    edit_.EditCnt = 0;
    edit_.EditPntIdx = -1;
    edit_.EditBusy = 0;
    Fire(kOnEditorEnd, {edit_.EditCode, item.meshNo, item.datID}, 0, kRunDeleteDat);
    Repaint(0);
}

}  // namespace orvane
