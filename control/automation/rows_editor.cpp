// Members that start and cancel the edit tools.
#include "control/automation/call.h"
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr MemberRow kRows[] = {
    {"DigDatEditor", 93, "long (BSTR code, long meshNo, long datID, long editType)",
     "Starts an edit tool, on the feature named or on the one that the operator picks; 0, or -1 when refused.",
     [](Call& c) { c.ReturnI4(c.ctrl.DigDatEditor(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3))); }, "-1", "OrvDatEditor", 200,
     "long (BSTR code, long grpNo, long datID, T_OrvRunMode editType)"},
    {"OrvCancelOrgEdit", 206, "void ()", "Cancels the running edit tool, as the ESC key does.",
     [](Call& c) { c.ctrl.CancelOrgEdit(); }, ""},
};

}  // namespace

std::span<const MemberRow> EditorRows() { return kRows; }

}  // namespace orvane
