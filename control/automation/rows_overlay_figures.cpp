// Members that make and change overlay figures, which stand above the map and belong to no layer. All positions are map
// coordinates with y upward. The older twins speak of 16-bit numbers where the newer ones have an enumeration or a long.
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr MemberRow kRows[] = {
    {"AddOrgPnt", 39, "long (long ID, double x, double y)",
     "Adds a point behind the last one of a figure; gives the new point count.", nullptr, "-1", "OrvAddOrgPnt", 152,
     "long (long datID, double x, double y)"},
    {"DelOrgDataEx", 40, "long (long ID)", "Deletes a figure; the others keep their numbers.", nullptr, "-1", "OrvDelOrgDataEx",
     153, "long (long datID)"},
    {"EditOrgPnt", 41, "long (long ID, long index, double x, double y)",
     "Moves a point of a figure, and the point that closes its ring; -1 no such figure, -2 no such point.", nullptr, "-1",
     "OrvEditOrgPnt", 154, "long (long datID, long index, double x, double y)"},
    {"MakeOrgDatEx", 42, "long (short type, short line, OLE_COLOR color, short fill)",
     "Makes a figure without points; gives its number.", nullptr, "-1", "OrvMakeOrgDatEx", 150,
     "long (T_OrvLType type, long line, long color, T_OrvFillMode fill)"},
    {"EditOrgDatEx", 43, "VARIANT_BOOL (long ID, short type, short line, OLE_COLOR color, short fill)",
     "Changes type, line, colour and fill of a figure.", nullptr, "false", "OrvEditOrgDatEx", 151,
     "VARIANT_BOOL (long datID, T_OrvLType type, long line, OLE_COLOR color, T_OrvFillMode fill)"},
    {"InsOrgPnt", 44, "long (long ID, long cnt, double x, double y)",
     "Inserts a point before position cnt of a figure; gives the new point count.", nullptr, "-1", "OrvInsOrgPnt", 155,
     "long (long datID, long cnt, double x, double y)"},
    {"DelOrgPnt", 45, "long (long ID, long cnt)", "Takes the point at position cnt out of a figure; gives the new point count.",
     nullptr, "-1", "OrvDelOrgPnt", 156, "long (long datID, long cnt)"},
    {"GetOrgDatEx", 46, "long (long ID, out short* type, out short* line, out OLE_COLOR* color, out short* fill)",
     "Reads type, line, colour and fill of a figure; gives its point count.", nullptr, "-1", "OrvGetOrgDatEx", 157,
     "long (long datID, out long* type, out long* line, out OLE_COLOR* color, out long* fill)"},
    {"MoveOnOrgPnt", 47, "VARIANT_BOOL (long ID, long index)", "Lets the mouse drag a point of a figure from now on.", nullptr,
     "true", "OrvMoveOnOrgPnt", 158, "void (long datID, long index)", nullptr, ""},
    {"MoveOffOrgPnt", 48, "VARIANT_BOOL (long ID, long index)",
     "Ends the dragging of a figure's point; the arguments are not used.", nullptr, "true", "OrvMoveOffOrgPnt", 159,
     "void (long datID, long index)", nullptr, ""},
    {"GetOrgID", 49, "long (long cnt)", "Number of the figure at a position counted from 0.", nullptr, "-1", "OrvGetOrgID", 160,
     "long (long index)"},
    {"GetOrgNearLine", 50, "long (out long* idx1, out long* idx2, long px, long py)",
     "Active figure with the vertex nearest to a client pixel; gives that vertex and its nearer neighbour.", nullptr, "-1",
     "OrvGetOrgNearLine", 161},
    {"SetOrgDatString", 65, "VARIANT_BOOL (long ID, BSTR Text, double x, double y, long size, OLE_COLOR color, long fill)",
     "Gives a figure a text anchored at a map position; true even when there is no such figure.", nullptr, "true",
     "OrvSetOrgDatString", 163,
     "VARIANT_BOOL (long datID, BSTR Text, double x, double y, long size, OLE_COLOR color, long fill)"},
    {"SetOrgTopDrawID", 69, "VARIANT_BOOL (long ID)", "Names the figure that is drawn above all others.", nullptr, "true",
     "OrvSetOrgTopDrawID", 162, "void (long datID)", nullptr, ""},
    {"OrgDataActive", 240, "VARIANT_BOOL (long ID)", "Whether a figure is active, which shows it in the active colour.", nullptr,
     "false", "OrvOrgDataActive", 241, "VARIANT_BOOL (long datID)", nullptr, nullptr, true},
};

}  // namespace

std::span<const MemberRow> OverlayFigureRows() { return kRows; }

}  // namespace orvane
