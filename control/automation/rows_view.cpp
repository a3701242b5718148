// Members that move the view and convert between client pixels and map units. Pixels run right and down from the client area's
// left top corner; map y runs upward.
#include "control/automation/call.h"

namespace orvane {
namespace {

void JumpToXY(Call& c) {
    c.ctrl.JumpTo(c.R8(0), c.R8(1));
    c.ReturnI4(0);
}

void JumpToData(Call& c) {
    c.ctrl.MapJumpToData(c.Bytes(1), c.I4(2), c.I4(0), c.Bool(3));
    c.ReturnI4(0);
}

/// The newer twin names the feature by its key in the usual order.
void JumpToKey(Call& c) { c.ctrl.MapJumpToData(c.Bytes(0), c.I4(1), c.I4(2), c.Bool(3)); }

void Scroll(Call& c) {
    c.ctrl.MoveView(c.R8(0), -c.R8(1), true);
    c.ReturnI4(1);
}

/// Both axes alike, and not negated for y: the caller's edge is taken as it is.
void ScreenPosEx(Call& c) { c.ReturnR8(c.Store().view.PixToWorldF(c.I4(0)) + c.R8(1)); }

constexpr MemberRow kRows[] = {
    {"RectZoom", 27, "void (short mode)", "Makes the next rectangle dragged with the left button a zoom: 10 in, 20 out, 0 off.",
     [](Call& c) { c.ctrl.rectZoomMode = c.I4(0); }, "", "OrvRectZoom", 179, "void (T_OrvRectZoomMode mode)"},
    {"RDMScrl", 28, "long (double x, double y)", "Moves the view by map units, y upward, within the area limits, and repaints.",
     Scroll, "1", "OrvScrl", 128, "void (double x, double y)", nullptr, ""},
    {"MapJumpToData", 55, "long (long datNo, BSTR code, long meshNo, VARIANT_BOOL active)",
     "Makes a feature active or not, centres the view on the mean of its points and repaints.", JumpToData, "0",
     "OrvMapJumpToData", 184, "void (BSTR code, long grpNo, long datNo, VARIANT_BOOL active)", JumpToKey, ""},
    {"GetScreenPosX", 57, "double (long x)", "Map x of a client pixel, in an unturned and unstretched view.",
     [](Call& c) { c.ReturnR8(c.ctrl.ScreenToWorldX(c.I4(0))); }, "0", "OrvGetScreenPosX", 180},
    {"GetScreenPosY", 58, "double (long y)", "Map y, upward, of a client pixel, in an unturned and unstretched view.",
     [](Call& c) { c.ReturnR8(c.ctrl.ScreenToWorldY(c.I4(0))); }, "0", "OrvGetScreenPosY", 181},
    {"MapJumpToXY", 62, "long (double x, double y)",
     "Centres the view on a map point, y upward, within the area limits; repaints.", JumpToXY, "0", "OrvMapJumpToXY", 127,
     "void (double x, double y)", nullptr, ""},
    {"GetScreenPosXEx", 107, "double (long ScreenX, double GeoX)", "Pixels as map units at the present scale, added to GeoX.",
     ScreenPosEx, "0", "OrvGetScreenPosXEx", 182},
    {"GetScreenPosYEx", 108, "double (long ScreenY, double GeoY)",
     "Pixels as map units at the present scale, added to GeoY; nothing is negated.", ScreenPosEx, "0", "OrvGetScreenPosYEx", 183,
     "double (long ScreenX, double GeoX)"},
    {"DspFit", 109, "void ()", "Fits all data into the window and repaints.", [](Call& c) { c.ctrl.DspFit(0); }, "", "OrvDspFit",
     126},
    {"OrvDspFit2", 219, "void (short rate)", "Fits all data with a margin of up to 50 percent on each side and repaints.",
     [](Call& c) { c.ctrl.DspFit(c.I2(0)); }, ""},
    {"OrvWheelZoomMode", 205, "void (T_OrvWheelZoomMode mode, double rate)",
     "Sets what the wheel zooms about and how far a step goes; rates outside 0.01 to 0.5 keep the old one.",
     [](Call& c) { c.ctrl.SetWheelZoom(c.I4(0), c.R8(1)); }, ""},
};

}  // namespace

std::span<const MemberRow> ViewRows() { return kRows; }

}  // namespace orvane
