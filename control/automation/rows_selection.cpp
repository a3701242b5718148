// Members of the active set, which is the selection.
#include "control/automation/call.h"
#include "control/automation/member_row.h"
#include "select/active_items.h"

namespace orvane {
namespace {

void ResetDigActiveAll(Call& call) { call.Store().ClearActive(); }

void GetDigActDatCnt(Call& call) { call.ReturnI4(GetActDatCnt(call.Store())); }

void GetDigActDat(Call& call) {
    const auto count = static_cast<std::size_t>(GetActDatCnt(call.Store()));
    const std::span<std::string> code = call.BytesOut(0, count);
    const std::span<std::int32_t> meshNo = call.I4Out(1, count);
    const std::span<std::int32_t> datID = call.I4Out(2, count);
    call.ReturnBool(true);
    if (code.size() < count || meshNo.size() < count || datID.size() < count) return;
    std::size_t i = 0;
    ForEachActDat(call.Store(), [&](std::string_view datCode, std::int32_t datMeshNo, std::int32_t ID) {
        code[i] = datCode;
        meshNo[i] = datMeshNo;
        datID[i] = ID;
        ++i;
    });
}

void OrvSetActDat(Call& call) { call.ReturnBool(SetActDat(call.Store(), call.Bytes(0), call.I4(1), call.I4(2))); }

void SetDataSelectMode(Call& call) {
    call.ctrl.dataSelectMode = static_cast<std::uint8_t>(call.Bool01(0));
    call.ctrl.SetModified(true);
}

void GetDataSelectMode(Call& call) { call.ReturnBool(call.ctrl.dataSelectMode != 0); }

constexpr MemberRow kRows[] = {
    {"ResetDigActiveAll", 61, "void ()", "Takes every feature of the active layers out of the active set.", ResetDigActiveAll, "",
     "OrvResetActiveAll", 129},
    {"GetDigActDatCnt", 101, "long ()", "Number of active features in layers that are shown and active and in blocks in view.",
     GetDigActDatCnt, "0", "OrvGetActDatCnt", 131},
    // The answer is true whatever the count, so a set of none is no failure either.
    {"GetDigActDat", 102, "VARIANT_BOOL (out BSTR* code[active], out long* meshNo[active], out long* ID[active])",
     "Reads layer code, mesh number and ID of every active feature, those drawn first first.", GetDigActDat, "true",
     "OrvGetActDat", 132, "VARIANT_BOOL (out BSTR* code[active], out long* grpNo[active], out long* datID[active])"},
    {"SetDataSelectMode", 105, "void (VARIANT_BOOL nNewValue)", "Switches the picking of features by clicks on or off.",
     SetDataSelectMode, "", "OrvSetDatSelMode", 133},
    {"GetDataSelectMode", 106, "VARIANT_BOOL ()", "Whether clicks pick features.", GetDataSelectMode, "false", "OrvGetDatSelMode",
     201},
    {"OrvSetActDat", 239, "VARIANT_BOOL (BSTR code[50], long grpNo, long datID)",
     "Puts one feature of an active layer into the active set; the others stay in it.", OrvSetActDat, "false"},
};

}  // namespace

std::span<const MemberRow> SelectionRows() { return kRows; }

}  // namespace orvane
