// The start of an edit tool by the host, and its cancel.
#include "control/edit_tools.h"

namespace orvane {

std::int32_t COrvane4Ctrl::DigDatEditor(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t editType) {
    const Scope scope(*this);
    return EditTools(*this).Start(code, meshNo, datID, editType);
}

void COrvane4Ctrl::CancelOrgEdit() {
    const Scope scope(*this);
    EditTools(*this).Cancel();
}

std::int32_t EditTools::Start(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t editType) {
    DropRunningTool();
    if (editType == kRunAddEdit) return StartAdd(code, meshNo, datID);
    // 101 is the add tool at work; it cannot be asked for.
    if (editType == kRunAddCollect || !IsToolMode(editType)) return 0;
    return StartOnItem(code, meshNo, datID, static_cast<std::int16_t>(editType));
}

/// The item of the running tool stays hidden: a host that changes tools in the middle of an edit cancels first.
void EditTools::DropRunningTool() {
    if (ctrl_.runMode < kRunAddEdit) return;
    DropFigure();
    EndEdit();
}

std::int32_t EditTools::StartAdd(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
    if (code.empty() || meshNo < 0) return -1;
    if (datID > 0 && store_.FindDat(code, meshNo, datID) != nullptr) return -1;
    const std::int32_t layer = store_.FindLayDef(code);
    if (layer < 0) return -1;
    const std::int32_t type = store_.Layer(layer).layType;
    if (!MakeFigure(type, type == kLayPolygon ? 1 : store_.Layer(layer).lineSize)) return -1;
    ctrl_.runMode = kRunAddCollect;
    edit_.EditBusy = 1;
    edit_.EditPhase = 0;
    edit_.EditType = type;
    edit_.EditPntIdx = 0;
    edit_.EditCode.Set(code);
    edit_.EditMesh = meshNo;
    edit_.EditDatId = datID;
    edit_.EditTag = 0;
    edit_.EditCnt = edit_.EditSavedCnt = 0;
    store_.ActivePointType = 1;
    return 0;
}

std::int32_t EditTools::StartOnItem(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int16_t mode) {
    edit_.EditBusy = 0;
    edit_.EditPhase = 0;
    edit_.EditPntIdx = 0;
    edit_.EditOrgId = -1;
    edit_.EditDatId = datID;
    edit_.EditTag = 0;
    edit_.EditCnt = edit_.EditSavedCnt = 0;
    if (!code.empty()) {
        const std::int32_t layer = store_.FindLayDef(code);
        if (layer < 0) return -1;
        edit_.EditType = store_.Layer(layer).layType;
        if (meshNo >= 0 && datID > 0) {
            EditKey key{{}, meshNo, datID};
            key.code.Set(code);
            const bool carries = mode == kRunMoveDat || mode == kRunCopyDat;
            const bool taken = mode == kRunDeleteDat ? store_.FindDat(code, meshNo, datID) != nullptr
                                                     : Load(key, CircleLoad::AsItStands, carries ? 0 : 1);
            if (!taken) return -1;
        }
    }
    ctrl_.runMode = mode;
    return 0;
}

/// Acts on the key in the record whether or not an item was loaded: before a pick that is what the start or an earlier tool left.
void EditTools::Cancel() {
    const std::int16_t mode = ctrl_.runMode;
    if (IsToolMode(mode)) {
        const EditKey item = Edited();
        if (mode != kRunEditPntMove || edit_.EditPhase != 0) {
            DropFigure();
            EndEdit();
            ShowItem(item);
            if (mode == kRunCopyDat) store_.DelDigDat(item.code.View(), item.meshNo, item.datID);
        }
        ctrl_.runMode = kRunNormal;
        Fire(kOnEditorEnd, item, 0, kEditCancelled);
    }
    ctrl_.RDMReDraw();
}

}  // namespace orvane
