// Members that set the text of a feature and its look.
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr MemberRow kRows[] = {
    {"SetDigDatString", 91, "VARIANT_BOOL (BSTR code, long meshNo, long datID, double x, double y, BSTR Str)",
     "Gives a feature a text in the default look, anchored at block-local map units, y upward.", nullptr, "false",
     "OrvSetDatString", 146, "VARIANT_BOOL (BSTR code, long grpNo, long datID, double x, double y, BSTR Str)"},
    {"SetDigDatStrStyle", 111,
     "VARIANT_BOOL (BSTR code, long meshNo, long datID, BSTR fntname, long size, long style, long pos, double angle, "
     "VARIANT_BOOL fill, VARIANT_BOOL uline, VARIANT_BOOL strike, OLE_COLOR fcolor, OLE_COLOR bcolor)",
     "Sets the whole look of a text that a feature has already: size in points, angle in degrees.", nullptr, "false",
     "OrvSetStrStyle", 149,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID, BSTR fntname, long size, long style, T_StringPos pos, double angle, "
     "VARIANT_BOOL fill, VARIANT_BOOL uline, VARIANT_BOOL strike, OLE_COLOR fcolor, OLE_COLOR bcolor)"},
    {"OrvSetFontStyleAll", 221,
     "VARIANT_BOOL (BSTR code, long grpNo, BSTR fntname, long size, long style, T_StringPos pos, double angle, "
     "VARIANT_BOOL fill, VARIANT_BOOL uline, VARIANT_BOOL strike, OLE_COLOR fcolor, OLE_COLOR bcolor)",
     "Sets the whole look of every text in a block: size in points, angle in degrees.", nullptr, "false"},
    {"OrvSetFontName", 222, "VARIANT_BOOL (BSTR code, long grpNo, BSTR fntname)", "Sets the font face of every text in a block.",
     nullptr, "false"},
    {"OrvSetFontSize", 223, "VARIANT_BOOL (BSTR code, long grpNo, long size)",
     "Sets the size, in points, of every text in a block.", nullptr, "false"},
    {"OrvSetFontStyle", 224,
     "VARIANT_BOOL (BSTR code, long grpNo, long style, T_StringPos pos, double angle, VARIANT_BOOL fill, VARIANT_BOOL uline, "
     "VARIANT_BOOL strike)",
     "Sets style bits, anchor, angle in degrees, background and lines of every text in a block.", nullptr, "false"},
    {"OrvSetFontColor", 225, "VARIANT_BOOL (BSTR code, long grpNo, OLE_COLOR fcolor, OLE_COLOR bcolor)",
     "Sets the text colour and the background colour of every text in a block.", nullptr, "false"},
};

}  // namespace

std::span<const MemberRow> TextRows() { return kRows; }

}  // namespace orvane
