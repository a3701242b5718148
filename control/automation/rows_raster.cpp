// Members of the raster slots, which are numbered from 0.
#include "control/automation/call.h"
#include "control/automation/member_row.h"

namespace orvane {
namespace {

void RastInit(Call& c) { c.ReturnBool(c.ctrl.rasters.RastInit(c.I4(0), c.ctrl.window())); }

void RastTerm(Call& c) { c.ReturnBool(c.ctrl.rasters.RastTerm()); }

void RastLoad(Call& c) { c.ReturnBool(c.ctrl.rasters.RastLoad(c.I4(0), c.Bytes(1), c.ctrl.window())); }

void RastClose(Call& c) { c.ReturnBool(c.ctrl.rasters.RastClose(c.I4(0))); }

void RastSetDispFlg(Call& c) { c.ctrl.rasters.RastSetDispFlg(c.I4(0), c.Bool(1)); }

void RastSetCP1(Call& c) { c.ReturnBool(c.ctrl.rasters.RastSetCP1(c.I4(0), c.I4(1), c.I4(2), c.R8(3), c.R8(4))); }

void RastSetCP2(Call& c) { c.ReturnBool(c.ctrl.rasters.RastSetCP2(c.I4(0), c.I4(1), c.I4(2), c.R8(3), c.R8(4))); }

void RastCalcCorrect2(Call& c) { c.ReturnBool(c.ctrl.rasters.RastCalcCorrect2(c.I4(0))); }

void RastImageSize(Call& c) {
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
    if (!c.ctrl.rasters.RastImageSize(c.I4(0), width_px, height_px)) return;
    c.SetI4(1, width_px);
    c.SetI4(2, height_px);
}

constexpr MemberRow kRows[] = {
    {"RastInit", 73, "VARIANT_BOOL (long Rcnt)",
     "Makes a table of Rcnt empty raster slots, which take no memory until they are used; false while one with slots stands.",
     RastInit, "false", "OrvInitRast", 164},
    {"RastTerm", 74, "VARIANT_BOOL ()", "Closes all rasters and gives up the table of slots.", RastTerm, "false", "OrvTermRast",
     165},
    {"RastLoad", 75, "VARIANT_BOOL (long idx, BSTR filename)", "Loads an image into a slot and shows it.", RastLoad, "false",
     "OrvLoadRast", 166, "VARIANT_BOOL (long index, BSTR filename)"},
    {"RastClose", 76, "VARIANT_BOOL (long idx)", "Closes the image of a slot.", RastClose, "false", "OrvCloseRast", 167,
     "VARIANT_BOOL (long index)"},
    {"RastSetDispFlg", 77, "void (long idx, VARIANT_BOOL dispSw)", "Shows or hides the image of a slot.", RastSetDispFlg, "",
     "OrvRastSetDispMode", 168, "void (long index, VARIANT_BOOL dispSw)"},
    {"RastSetCP1", 88, "VARIANT_BOOL (long idx, long bmpX, long bmpY, double GeoX, double GeoY)",
     "Sets the first control point of an image: image pixel, y downward, and map position, y upward.", RastSetCP1, "false",
     "OrvSetRastCP1", 169, "VARIANT_BOOL (long index, long bmpX, long bmpY, double GeoX, double GeoY)"},
    {"RastSetCP2", 89, "VARIANT_BOOL (long idx, long bmpX, long bmpY, double GeoX, double GeoY)",
     "Sets the second control point of an image: image pixel, y downward, and map position, y upward.", RastSetCP2, "false",
     "OrvSetRastCP2", 170, "VARIANT_BOOL (long index, long bmpX, long bmpY, double GeoX, double GeoY)"},
    {"RastCalcCorrect2", 90, "VARIANT_BOOL (long idx)", "Places an image on the map by its two control points.", RastCalcCorrect2,
     "false", "OrvCalcCorrect2Rast", 171, "VARIANT_BOOL (long index)"},
    {"RastImageSize", 112, "void (long idx, out long* imgWidth, out long* imgHeight)", "Reads the size of an image in pixels.",
     RastImageSize, "", "OrvGetRastImgSize", 172, "void (long index, out long* imgWidth, out long* imgHeight)"},
};

}  // namespace

std::span<const MemberRow> RasterRows() { return kRows; }

}  // namespace orvane
