// The add tool: each click is a point of a new item.
#include <array>

#include "analysis/geometry/plane.h"
#include "control/edit_tools.h"

namespace orvane {
namespace {

/// Display key of a layer whose first block the add tool makes.
constexpr std::int32_t kNewLayerKey = 9999;

bool HasTwoPoints(std::int32_t layType) { return layType == kLayCircle || layType == kLayEllipse; }

}  // namespace

void COrvane4Ctrl::FinishAddTool() {
    const Scope scope(*this);
    EditTools(*this).FinishAdd();
}

std::int32_t COrvane4Ctrl::GetFreeDigDatID(std::string_view code, std::int32_t meshNo) {
    const Scope scope(*this);
    bool found = false;
    const std::int32_t id = store.FreeDigDatID(code, meshNo, found);
    if (found) return id;
    window_.ShowMessage("ERROR 1094 : DigDat Index Not Found !", "ORVANE4", MessageIcon::Exclamation);
    return -1;
}

void EditTools::ClickAdd(Point at) {
    const DigPnt world = World(at);
    if (edit_.EditType == kLayPoint) return AddPointItem(world);
    // A point beyond what the record holds is not taken: neither record nor figure change, and no event is fired.
    if (edit_.EditCnt >= kMaxEditPnt || !ReservePnts(edit_.EditCnt + 1)) return;
    store_.AddOrgPnt(Figure(), world.x, world.y);
    SetPnt(edit_.EditCnt++, world);
    if (edit_.EditCnt == 1) {
        // Once more: this one trails the cursor from now on.
        store_.AddOrgPnt(Figure(), world.x, world.y);
        Fire(kOnEditorStart, {edit_.EditCode, edit_.EditMesh, -1}, 0, kRunAddEdit);
    } else if (edit_.EditCnt == 2 && HasTwoPoints(edit_.EditType)) {
        CommitTwoPoints();
    }
}

void EditTools::AddPointItem(const DigPnt& world) {
    Fire(kOnEditorStart, {edit_.EditCode, edit_.EditMesh, -1}, 0, kRunAddEdit);
    MakeMissingBlock();
    const EditKey item = NewItemKey();
    WriteNewItem(item);
    AddPnt(item, Local(item, world, 0));
    EndAdd(item);
}

/// No block is made for a circle or an ellipse: without one nothing is written, and the host hears of an end all the same.
void EditTools::CommitTwoPoints() {
    ctrl_.runMode = kRunNormal;
    const EditKey item = NewItemKey();
    WriteNewItem(item);
    if (edit_.EditType == kLayCircle) {
        AddPnt(item, Local(item, PntAt(0), CircleRadius()));
    } else {
        AddPnt(item, Local(item, PntAt(0), 0));
        AddPnt(item, Local(item, PntAt(1), 0));
    }
    EndAdd(item);
}

void EditTools::FinishAdd() {
    MakeMissingBlock();
    const EditKey item = NewItemKey();
    WriteNewItem(item);
    if (edit_.EditType != kLayCircle) {
        for (std::int32_t i = 0; i < edit_.EditCnt; ++i) AddPnt(item, Local(item, PntAt(i), 0));
    }
    if (edit_.EditType == kLayPolygon && edit_.EditCnt > 0) {
        // Closed by hand, the figure stays as it was drawn.
        const std::span<const DigPnt> drawn{edit_.EditPnt.data(), static_cast<std::size_t>(edit_.EditCnt)};
        std::array<std::int32_t, kMaxEditPnt> ringCounts;
        if (SplitRings(drawn, ringCounts.data(), false) == 0) AddPnt(item, Local(item, PntAt(0), 0));
    }
    if (edit_.EditType != kLayCircle) store_.SetDigDatInfoEx(item.code.View(), item.meshNo, item.datID, 0, true);
    EndAdd(item);
}

void EditTools::MakeMissingBlock() {
    const std::string_view code = edit_.EditCode.View();
    if (store_.FindBlock(code, edit_.EditMesh).block >= 0) return;
    store_.DigMemAlloc2(code, edit_.EditMesh, edit_.EditType, "", kNewLayerKey, 0, 0);
}

/// With the number that the host asked for, or else a free one.
EditKey EditTools::NewItemKey() {
    EditKey item = Edited();
    if (item.datID < 1) item.datID = ctrl_.GetFreeDigDatID(item.code.View(), item.meshNo);
    return item;
}

void EditTools::WriteNewItem(const EditKey& item) {
    ctrl_.runMode = kRunNormal;
    store_.AddDigDat(item.code.View(), item.meshNo, item.datID, 0);
}

void EditTools::EndAdd(const EditKey& item) {
    edit_.EditBusy = 0;
    DropFigure();
    Fire(kOnEditorEnd, item, edit_.EditCnt, kRunAddEdit);
    Repaint(0);
}

}  // namespace orvane
