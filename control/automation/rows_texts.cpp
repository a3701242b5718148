// Members that set the text of a feature and its look. None repaints.
#include "control/automation/call.h"
#include "control/automation/member_row.h"

namespace orvane {
namespace {

/// The ten arguments of a whole look, from position `k` on.
TextLook LookAt(const Call& c, std::size_t k) {
    TextLook look;
    look.fntname = c.Bytes(k);
    look.size = c.I4(k + 1);
    look.style = c.I4(k + 2);
    look.pos = c.I4(k + 3);
    look.angle = c.R8(k + 4);
    look.fill = c.Bool(k + 5);
    look.uline = c.Bool(k + 6);
    look.strike = c.Bool(k + 7);
    look.fcolor = c.Color(k + 8);
    look.bcolor = c.Color(k + 9);
    return look;
}

void SetString(Call& c) { c.ReturnBool(c.Store().SetDigDatString(c.Bytes(0), c.I4(1), c.I4(2), c.R8(3), c.R8(4), c.Bytes(5))); }

void SetStyleOfBlock(Call& c) {
    TextLook look;
    look.style = c.I4(2);
    look.pos = c.I4(3);
    look.angle = c.R8(4);
    look.fill = c.Bool(5);
    look.uline = c.Bool(6);
    look.strike = c.Bool(7);
    c.ReturnBool(c.Store().SetFontStyle(c.Bytes(0), c.I4(1), look));
}

constexpr MemberRow kRows[] = {
    {"SetDigDatString", 91, "VARIANT_BOOL (BSTR code, long meshNo, long datID, double x, double y, BSTR Str)",
     "Gives a feature a text in the default look, anchored at block-local map units, y upward.", SetString, "false",
     "OrvSetDatString", 146, "VARIANT_BOOL (BSTR code, long grpNo, long datID, double x, double y, BSTR Str)"},
    {"SetDigDatStrStyle", 111,
     "VARIANT_BOOL (BSTR code, long meshNo, long datID, BSTR fntname, long size, long style, long pos, double angle, "
     "VARIANT_BOOL fill, VARIANT_BOOL uline, VARIANT_BOOL strike, OLE_COLOR fcolor, OLE_COLOR bcolor)",
     "Sets the whole look of a text that a feature has already: size in points, angle in degrees.",
     [](Call& c) { c.ReturnBool(c.Store().SetDigDatStrStyle(c.Bytes(0), c.I4(1), c.I4(2), LookAt(c, 3))); }, "false",
     "OrvSetStrStyle", 149,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID, BSTR fntname, long size, long style, T_StringPos pos, double angle, "
     "VARIANT_BOOL fill, VARIANT_BOOL uline, VARIANT_BOOL strike, OLE_COLOR fcolor, OLE_COLOR bcolor)"},
    {"OrvSetFontStyleAll", 221,
     "VARIANT_BOOL (BSTR code, long grpNo, BSTR fntname, long size, long style, T_StringPos pos, double angle, "
     "VARIANT_BOOL fill, VARIANT_BOOL uline, VARIANT_BOOL strike, OLE_COLOR fcolor, OLE_COLOR bcolor)",
     "Sets the whole look of every text in a block: size in points, angle in degrees.",
     [](Call& c) { c.ReturnBool(c.Store().SetFontStyleAll(c.Bytes(0), c.I4(1), LookAt(c, 2))); }, "false"},
    {"OrvSetFontName", 222, "VARIANT_BOOL (BSTR code, long grpNo, BSTR fntname)", "Sets the font face of every text in a block.",
     [](Call& c) { c.ReturnBool(c.Store().SetFontName(c.Bytes(0), c.I4(1), c.Bytes(2))); }, "false"},
    {"OrvSetFontSize", 223, "VARIANT_BOOL (BSTR code, long grpNo, long size)",
     "Sets the size, in points, of every text in a block.",
     [](Call& c) { c.ReturnBool(c.Store().SetFontSize(c.Bytes(0), c.I4(1), c.I4(2))); }, "false"},
    {"OrvSetFontStyle", 224,
     "VARIANT_BOOL (BSTR code, long grpNo, long style, T_StringPos pos, double angle, VARIANT_BOOL fill, VARIANT_BOOL uline, "
     "VARIANT_BOOL strike)",
     "Sets style bits, anchor, angle in degrees, background and lines of every text in a block.", SetStyleOfBlock, "false"},
    {"OrvSetFontColor", 225, "VARIANT_BOOL (BSTR code, long grpNo, OLE_COLOR fcolor, OLE_COLOR bcolor)",
     "Sets the text colour and the background colour of every text in a block.",
     [](Call& c) { c.ReturnBool(c.Store().SetFontColor(c.Bytes(0), c.I4(1), c.Color(2), c.Color(3))); }, "false"},
};

}  // namespace

std::span<const MemberRow> TextRows() { return kRows; }

}  // namespace orvane
