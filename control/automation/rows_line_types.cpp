// Members of the line type table. None of them has an older twin.
#include "control/automation/call.h"
#include "files/line_type_file.h"

namespace orvane {
namespace {

void ReadLineTypes(Call& c) { c.ReturnI4(ReadLineTypeData(c.Store(), c.ctrl.files(), c.Bytes(0))); }

void TellLineTypes(Call& c) {
    const GrowArray<LineTypeDef>& lineTypes = c.Store().lineTypes;
    const std::span<std::int32_t> ids = c.I4Out(0, lineTypes.size());
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = lineTypes[i].ltId;
}

void DrawOneLine(Call& c) {
    const Rect clip{c.I4(2), c.I4(1), c.I4(4), c.I4(3)};  // given as top, left, bottom, right
    c.ctrl.DrawLine(c.I4(0), clip, {c.I4(5), c.I4(6)}, {c.I4(7), c.I4(8)}, c.I4(9), c.I4(10), c.Color(11));
}

constexpr MemberRow kRows[] = {
    {"OrvDrawLine", 208,
     "void (OLE_HANDLE userDC, long top, long left, long bottom, long right, long sx, long sy, long ex, long ey, long linetype, "
     "long lineWidth, OLE_COLOR lineColor)",
     "Draws one line in a line type on the host's device context; all positions are device pixels, y downward.", DrawOneLine, ""},
    {"OrvReadLineTypeData", 209, "long (BSTR filename)",
     "Replaces the line type table by a file's; gives the number of line types.", ReadLineTypes, "0"},
    {"OrvGetLineType", 210, "void (out long* linetype[linetypes])",
     "Reads the number of every line type, in the order of the file.", TellLineTypes, ""},
};

}  // namespace

std::span<const MemberRow> LineTypeRows() { return kRows; }

}  // namespace orvane
