// The fourteen events. Three are the stock mouse events, which keep the platform's negative dispids.
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr EventRow kRows[] = {
    {"OnZoomChange", 1, "(long Zoom)", "The scale denominator changed, by the property, a fit, the wheel or a rectangle zoom."},
    {"OnDataCmd", 2, "(BSTR execName, BSTR sendName, BSTR SendParm, long datNo, BSTR layCd)",
     "Never fired; declared so that hosts of the older family still connect."},
    {"MouseDown", -605, "(short Button, short Shift, OLE_XPOS_PIXELS x, OLE_YPOS_PIXELS y)",
     "A mouse button went down at a client pixel."},
    {"MouseUp", -607, "(short Button, short Shift, OLE_XPOS_PIXELS x, OLE_YPOS_PIXELS y)",
     "A mouse button was released at a client pixel."},
    {"MouseMove", -606, "(short Button, short Shift, OLE_XPOS_PIXELS x, OLE_YPOS_PIXELS y)",
     "The cursor moved to a client pixel."},
    {"OnOrgDataClick", 3, "(long ID, long x, long y)", "The left button went down on an overlay figure, at a client pixel."},
    {"OnOrgNearPtClick", 4, "(long idx, short cnt, double nearX, double nearY, long px, long py)",
     "Click that asks for the nearest overlay vertex: its map position and the client pixel clicked."},
    {"OnOrgPointClick", 5, "(long ID, short idx, long x, long y)", "The left button went down on a vertex of an overlay figure."},
    {"OnHintStart", 6, "(long datNo, BSTR code, long meshNo, long x, long y)",
     "The cursor rested over a feature, at a screen pixel; the host may show a hint."},
    {"OnDataClick", 7, "(long datNo, BSTR code, long meshNo, long x, long y)",
     "The left button picked in the map at a client pixel; 0 and an empty code where selection is off."},
    {"OnNearPtClick", 8, "(long idx, short cnt, long meshNo, double nearX, double nearY, long px, long py)",
     "Click that asks for the nearest vertex of the data: its map position and the client pixel clicked."},
    {"OnDataDblClick", 9, "(long datNo, BSTR code, long meshNo, long x, long y)",
     "Double click at a client pixel, with the active feature."},
    {"OnEditorEnd", 10, "(BSTR code, long meshNo, long datID, long cnt, long editType)",
     "An edit tool wrote its result, with the point count, or was cancelled (editType 999)."},
    {"OnEditorStart", 11, "(BSTR code, long meshNo, long datID, long cnt, long editType)",
     "An edit tool took up a feature, with its point count, or began to draw one."},
};

}  // namespace

std::span<const EventRow> EventRows() { return kRows; }

}  // namespace orvane
