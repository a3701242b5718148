// Members that draw: the repaint, frames on a context of the host, and where rasters stand in the order.
#include "control/automation/call.h"

namespace orvane {
namespace {

void DrawOnUserDc(Call& c) {
    c.ctrl.UserDcDraw(c.I4(0), c.I4(1), c.I4(2), c.I4(3), c.I4(4), c.I4(5));
    c.ReturnI4(0);
}

void DrawOnUserDcEx(Call& c) {
    c.ctrl.UserDcDrawEx(c.I4(0), c.I4(1), c.I4(2), c.I4(3), c.I4(4), c.R8(5), c.R8(6), c.I4(7), c.I4(8));
    c.ReturnI4(0);
}

constexpr MemberRow kRows[] = {
    {"RDMReDraw", 26, "void ()", "Composes the whole map anew and shows it; nothing before the first paint.",
     [](Call& c) { c.ctrl.RDMReDraw(); }, "", "OrvReDraw", 123},
    {"UserDcDraw", 66, "long (OLE_HANDLE userDC, long top, long left, long bottom, long right, long type)",
     "Draws the map on a device context, centred on the view's corner; the rectangle is read as left, top, right, bottom.",
     DrawOnUserDc, "0", "OrvUserDcDraw", 124, "void (OLE_HANDLE userDC, long top, long left, long bottom, long right, long type)",
     nullptr, ""},
    {"UserDcDrawEx", 67,
     "long (OLE_HANDLE userDC, long top, long left, long bottom, long right, double x, double y, long Zoom, long type)",
     "Draws the map on a device context, centred on a map point, y upward, at a scale; type 0 whitens it first.", DrawOnUserDcEx,
     "0", "OrvUserDcDrawEx", 125,
     "void (OLE_HANDLE userDC, long top, long left, long bottom, long right, double x, double y, long Zoom, long type)", nullptr,
     ""},
    {"RastDspMode", 113, "void (VARIANT_BOOL mode)", "Draws raster images above everything (true) or beneath the layers (false).",
     [](Call& c) { c.ctrl.rastOnTop = c.Bool01(0); }, "", "OrvDspRastMode", 173},
};

}  // namespace

std::span<const MemberRow> FrameRows() { return kRows; }

}  // namespace orvane
