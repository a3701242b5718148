// Members of the raster slots, which are numbered from 0.
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr MemberRow kRows[] = {
    {"RastInit", 73, "VARIANT_BOOL (long Rcnt)", "Makes a table of Rcnt empty raster slots; false while one with slots stands.",
     nullptr, "false", "OrvInitRast", 164},
    {"RastTerm", 74, "VARIANT_BOOL ()", "Closes all rasters and gives up the table of slots.", nullptr, "false", "OrvTermRast",
     165},
    {"RastLoad", 75, "VARIANT_BOOL (long idx, BSTR filename)", "Loads an image into a slot and shows it.", nullptr, "false",
     "OrvLoadRast", 166, "VARIANT_BOOL (long index, BSTR filename)"},
    {"RastClose", 76, "VARIANT_BOOL (long idx)", "Closes the image of a slot.", nullptr, "false", "OrvCloseRast", 167,
     "VARIANT_BOOL (long index)"},
    {"RastSetDispFlg", 77, "void (long idx, VARIANT_BOOL dispSw)", "Shows or hides the image of a slot.", nullptr, "",
     "OrvRastSetDispMode", 168, "void (long index, VARIANT_BOOL dispSw)"},
    {"RastSetCP1", 88, "VARIANT_BOOL (long idx, long bmpX, long bmpY, double GeoX, double GeoY)",
     "Sets the first control point of an image: image pixel, y downward, and map position, y upward.", nullptr, "false",
     "OrvSetRastCP1", 169, "VARIANT_BOOL (long index, long bmpX, long bmpY, double GeoX, double GeoY)"},
    {"RastSetCP2", 89, "VARIANT_BOOL (long idx, long bmpX, long bmpY, double GeoX, double GeoY)",
     "Sets the second control point of an image: image pixel, y downward, and map position, y upward.", nullptr, "false",
     "OrvSetRastCP2", 170, "VARIANT_BOOL (long index, long bmpX, long bmpY, double GeoX, double GeoY)"},
    {"RastCalcCorrect2", 90, "VARIANT_BOOL (long idx)", "Places an image on the map by its two control points.", nullptr, "false",
     "OrvCalcCorrect2Rast", 171, "VARIANT_BOOL (long index)"},
    {"RastImageSize", 112, "void (long idx, out long* imgWidth, out long* imgHeight)", "Reads the size of an image in pixels.",
     nullptr, "", "OrvGetRastImgSize", 172, "void (long index, out long* imgWidth, out long* imgHeight)"},
};

}  // namespace

std::span<const MemberRow> RasterRows() { return kRows; }

}  // namespace orvane
