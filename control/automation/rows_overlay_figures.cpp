// Members that make and change overlay figures, which stand above the map and belong to no layer. All positions are map
// coordinates with y upward. The older twins speak of 16-bit numbers where the newer ones have an enumeration or a long.
#include "control/automation/call.h"
#include "control/automation/member_row.h"
#include "select/near_org_point.h"

namespace orvane {
namespace {

// Type and line width are kept in 16 bits under both names: of a longer number its low 16 bits count.

void Make(Call& c) { c.ReturnI4(c.Store().MakeOrgDat(c.I2(0), c.I2(1), c.Color(2), c.I4(3))); }

void Edit(Call& c) { c.ReturnBool(c.Store().EditOrgDat(c.I4(0), c.I2(1), c.I2(2), c.Color(3), c.I4(4))); }

/// `setNumber` writes an output of the called twin's width.
template <class SetNumber>
void Read(Call& c, SetNumber setNumber) {
    const OrgDat* dat = c.Store().FindOrgDat(c.I4(0));
    if (dat == nullptr) return;
    setNumber(1, static_cast<std::int16_t>(dat->type));
    setNumber(2, dat->line);
    c.SetI4(3, static_cast<std::int32_t>(dat->color));
    setNumber(4, std::int16_t{dat->fill});
    c.ReturnI4(dat->pntCnt);
}

void ReadShort(Call& c) {
    Read(c, [&](std::size_t i, std::int16_t v) { c.SetI2(i, v); });
}

void ReadLong(Call& c) {
    Read(c, [&](std::size_t i, std::int16_t v) { c.SetI4(i, v); });
}

void MoveOn(Call& c) {
    c.ctrl.orgMoveID = c.I4(0);
    c.ctrl.orgMoveIndex = c.I4(1);
    c.ctrl.orgMoving = true;
    c.ReturnBool(true);
}

void MoveOff(Call& c) {
    c.ctrl.orgMoving = false;
    c.ReturnBool(true);
}

/// True whatever became of it: hosts have never been told.
void SetString(Call& c) {
    c.Store().SetOrgDatString(c.I4(0), c.Bytes(1), c.R8(2), c.R8(3), c.I4(4), c.Color(5), c.I4(6));
    c.ReturnBool(true);
}

void SetTopDrawID(Call& c) {
    c.ctrl.orgTopDrawID = c.I4(0);
    c.ReturnBool(true);
}

/// The vertex that the mouse drags at the moment is not met.
void NearLine(Call& c) {
    const double x = c.ctrl.ScreenToWorldX(c.I4(2));
    const double y = c.ctrl.ScreenToWorldY(c.I4(3));
    const std::optional<NearOrgVertex> met = NearOrgPoint(c.Store(), x, y, true, c.ctrl.DraggedVertex());
    if (!met) return c.ReturnI4(-1);
    c.SetI4(0, met->vertex.index);
    c.SetI4(1, met->neighbour);
    c.ReturnI4(met->vertex.ID);
}

/// A write marks the control as modified like that of any other property, even where there is no such figure.
void Active(Call& c) {
    if (c.kind != InvokeKind::Put) return c.ReturnBool(c.Store().OrgDataActive(c.I4(0)));
    c.Store().SetOrgDataActive(c.I4(0), c.Bool01(1) == 1);
    c.ctrl.SetModified(true);
}

constexpr MemberRow kRows[] = {
    {"AddOrgPnt", 39, "long (long ID, double x, double y)",
     "Adds a point behind the last one of a figure; gives the new point count.",
     [](Call& c) { c.ReturnI4(c.Store().AddOrgPnt(c.I4(0), c.R8(1), c.R8(2))); }, "-1", "OrvAddOrgPnt", 152,
     "long (long datID, double x, double y)"},
    {"DelOrgDataEx", 40, "long (long ID)", "Deletes a figure; the others keep their numbers.",
     [](Call& c) { c.ReturnI4(c.Store().DelOrgData(c.I4(0))); }, "-1", "OrvDelOrgDataEx", 153, "long (long datID)"},
    {"EditOrgPnt", 41, "long (long ID, long index, double x, double y)",
     "Moves a point of a figure, and the point that closes its ring; -1 no such figure, -2 no such point.",
     [](Call& c) { c.ReturnI4(c.Store().EditOrgPnt(c.I4(0), c.I4(1), c.R8(2), c.R8(3))); }, "-1", "OrvEditOrgPnt", 154,
     "long (long datID, long index, double x, double y)"},
    {"MakeOrgDatEx", 42, "long (short type, short line, OLE_COLOR color, short fill)",
     "Makes a figure without points; gives its number.", Make, "-1", "OrvMakeOrgDatEx", 150,
     "long (T_OrvLType type, long line, long color, T_OrvFillMode fill)"},
    {"EditOrgDatEx", 43, "VARIANT_BOOL (long ID, short type, short line, OLE_COLOR color, short fill)",
     "Changes type, line, colour and fill of a figure.", Edit, "false", "OrvEditOrgDatEx", 151,
     "VARIANT_BOOL (long datID, T_OrvLType type, long line, OLE_COLOR color, T_OrvFillMode fill)"},
    {"InsOrgPnt", 44, "long (long ID, long cnt, double x, double y)",
     "Inserts a point before position cnt of a figure; gives the new point count.",
     [](Call& c) { c.ReturnI4(c.Store().InsOrgPnt(c.I4(0), c.I4(1), c.R8(2), c.R8(3))); }, "-1", "OrvInsOrgPnt", 155,
     "long (long datID, long cnt, double x, double y)"},
    {"DelOrgPnt", 45, "long (long ID, long cnt)", "Takes the point at position cnt out of a figure; gives the new point count.",
     [](Call& c) { c.ReturnI4(c.Store().DelOrgPnt(c.I4(0), c.I4(1))); }, "-1", "OrvDelOrgPnt", 156,
     "long (long datID, long cnt)"},
    {"GetOrgDatEx", 46, "long (long ID, out short* type, out short* line, out OLE_COLOR* color, out short* fill)",
     "Reads type, line, colour and fill of a figure; gives its point count.", ReadShort, "-1", "OrvGetOrgDatEx", 157,
     "long (long datID, out long* type, out long* line, out OLE_COLOR* color, out long* fill)", ReadLong},
    {"MoveOnOrgPnt", 47, "VARIANT_BOOL (long ID, long index)", "Lets the mouse drag a point of a figure from now on.", MoveOn,
     "true", "OrvMoveOnOrgPnt", 158, "void (long datID, long index)", nullptr, ""},
    {"MoveOffOrgPnt", 48, "VARIANT_BOOL (long ID, long index)",
     "Ends the dragging of a figure's point; the arguments are not used.", MoveOff, "true", "OrvMoveOffOrgPnt", 159,
     "void (long datID, long index)", nullptr, ""},
    {"GetOrgID", 49, "long (long cnt)", "Number of the figure at a position counted from 0.",
     [](Call& c) { c.ReturnI4(c.Store().GetOrgID(c.I4(0))); }, "-1", "OrvGetOrgID", 160, "long (long index)"},
    {"GetOrgNearLine", 50, "long (out long* idx1, out long* idx2, long px, long py)",
     "Active figure with the vertex nearest to a client pixel; gives that vertex and its nearer neighbour.", NearLine, "-1",
     "OrvGetOrgNearLine", 161},
    {"SetOrgDatString", 65, "VARIANT_BOOL (long ID, BSTR Text, double x, double y, long size, OLE_COLOR color, long fill)",
     "Gives a figure a text anchored at a map position; true even when there is no such figure.", SetString, "true",
     "OrvSetOrgDatString", 163,
     "VARIANT_BOOL (long datID, BSTR Text, double x, double y, long size, OLE_COLOR color, long fill)"},
    {"SetOrgTopDrawID", 69, "VARIANT_BOOL (long ID)", "Names the figure that is drawn above all others.", SetTopDrawID, "true",
     "OrvSetOrgTopDrawID", 162, "void (long datID)", nullptr, ""},
    {"OrgDataActive", 240, "VARIANT_BOOL (long ID)", "Whether a figure is active, which shows it in the active colour.", Active,
     "false", "OrvOrgDataActive", 241, "VARIANT_BOOL (long datID)", nullptr, nullptr, true},
};

}  // namespace

std::span<const MemberRow> OverlayFigureRows() { return kRows; }

}  // namespace orvane
