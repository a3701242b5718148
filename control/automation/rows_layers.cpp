// Members that make layers and blocks, delete blocks and set how layers look. Unless the help says more, they answer whether the
// layer exists, and none of them repaints but the switch of a layer's display.
#include "control/automation/call.h"

namespace orvane {
namespace {

/// No layer before the first paint: hosts learn from the refusal that the control is not on the screen yet.
void MakeLayer(Call& c) { c.ReturnBool(c.ctrl.CurrentDrawState() >= 1 && c.Store().MakeLayer(c.Bytes(0), c.I4(1))); }

void MakeBlock(Call& c) { c.ReturnBool(c.Store().DigMemAlloc(c.Bytes(0), c.I4(1), c.I4(2), c.Bytes(3), c.I4(4))); }

void MakeBlockAt(Call& c) {
    c.ReturnBool(c.Store().DigMemAlloc2(c.Bytes(0), c.I4(1), c.I4(2), c.Bytes(3), c.I4(4), c.R8(5), c.R8(6)));
}

void AddLayer(Call& c) { c.ReturnBool(c.Store().DigMemAlloc2(c.Bytes(0), c.I4(1), c.I4(2), "", c.I4(3), 0, 0)); }

/// Repaints even when there is no such layer, and then has nothing to complain of either.
void ShowLayer(Call& c) {
    c.Store().SetLayDspFlg(c.Bytes(0), c.Bool(1));
    c.ctrl.RedrawWindow(0);
    c.ReturnBool(true);
}

/// In spite of its older name this is the outline switch.
void SetOutline(Call& c) { c.ReturnBool(c.Store().SetLayOutLine(c.Bytes(0), c.I4(1) != 0)); }

constexpr MemberRow kRows[] = {
    {"MakeLayer", 96, "VARIANT_BOOL (BSTR code, long Laytype)",
     "Makes an empty layer; false before the first paint, for a bad type and for a code that exists.", MakeLayer, "false",
     "OrvMakeLayer", 203, "VARIANT_BOOL (BSTR code, T_OrvLType Laytype)"},
    {"DigMemAlloc", 78, "VARIANT_BOOL (BSTR code, long meshNo, long Laytype, BSTR path[511], long index)",
     "Makes a block, and its layer where that is new; the origin follows from the mesh number.", MakeBlock, "false"},
    {"DigMemAlloc2", 100,
     "VARIANT_BOOL (BSTR Laycode[50], long grpNo, long Laytype, BSTR path[511], long index, double GX, double GY)",
     "Makes a block, and its layer where that is new; an origin is cut to whole map units.", MakeBlockAt, "false", "OrvAddLayer",
     134, "VARIANT_BOOL (BSTR code, long grpNo, T_OrvLType Laytype, long index)", AddLayer},
    {"DigMemDelete", 81, "VARIANT_BOOL (BSTR code, long meshNo)", "Deletes a block with its data; the layer stays.",
     [](Call& c) { c.ReturnBool(c.Store().DigMemDelete(c.Bytes(0), c.I4(1))); }, "false", "OrvDelLayGrpDat", 135,
     "VARIANT_BOOL (BSTR code, long grpNo)"},
    {"DigMemDeleteLay", 82, "long (BSTR code)", "Deletes all blocks of a layer; gives their number. The layer stays.",
     [](Call& c) { c.ReturnI4(c.Store().DigMemDeleteLay(c.Bytes(0))); }, "0", "OrvDelLayDat", 136},
    {"DigMemDeleteMeshNo", 83, "long (long meshNo)", "Deletes the blocks of all layers in a mesh number; gives their number.",
     [](Call& c) { c.ReturnI4(c.Store().DigMemDeleteMeshNo(c.I4(0))); }, "0", "OrvDelGrpDat", 137, "long (long grpNo)"},
    {"RDMSortIndex", 56, "void ()", "Puts the blocks into the drawing order that the layers' index keys ask for.",
     [](Call& c) { c.Store().SortDigIndex(); }, "", "OrvSortLayer", 130},
    {"SetLayIndex", 64, "long (BSTR code, long index)",
     "Sets a layer's order key, the greatest drawn first; it counts from the next sort on. 1, or 0 for no layer.",
     [](Call& c) { c.ReturnI4(c.Store().SetLayIndex(c.Bytes(0), c.I4(1))); }, "0", "OrvSetLayIndex", 185},
    {"SetLayer", 30, "VARIANT_BOOL (BSTR code, VARIANT_BOOL disp)", "Shows or hides a layer and repaints; true in any case.",
     ShowLayer, "true", "OrvSetLayDspMode", 186, "void (BSTR code, VARIANT_BOOL disp)", nullptr, ""},
    {"SetLayColor", 35, "VARIANT_BOOL (BSTR code[50], OLE_COLOR color)", "Sets the colour of a layer.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayColor(c.Bytes(0), c.Color(1))); }, "false", "OrvSetLayColor", 190,
     "VARIANT_BOOL (BSTR code, OLE_COLOR color)"},
    {"OrvSetLayColor2", 229, "VARIANT_BOOL (BSTR code[50], OLE_COLOR color)",
     "Sets the outline colour of a layer's closed shapes.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayColor2(c.Bytes(0), c.Color(1))); }, "false"},
    {"SetLayLineSize", 72, "VARIANT_BOOL (BSTR code, long size)", "Sets the line width of a layer, in pixels on the screen.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayLineSize(c.Bytes(0), c.I4(1))); }, "false", "OrvSetLayLineSize", 188},
    {"SetLayLineType", 68, "VARIANT_BOOL (BSTR code, long type)",
     "Sets the symbol of a point layer, the hatch of a polygon layer, the line type of any other.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayLineType(c.Bytes(0), c.I4(1))); }, "false", "OrvSetLayLineType", 187},
    {"SetLayFillMode", 34, "VARIANT_BOOL (BSTR code, short mode)",
     "Outline of a layer's closed shapes: 0 on, any other number off.", SetOutline, "false", "OrvSetLayFillMode", 189},
    {"OrvSetLayOutLineMode", 207, "VARIANT_BOOL (BSTR code, T_OrvMode1 mode)", "Outline of a layer's closed shapes on or off.",
     SetOutline, "false"},
    {"SetLayPgnMode", 99, "VARIANT_BOOL (BSTR code, short mode)",
     "How a layer's polygons are filled: 0 lets what lies beneath show through, any other number covers it.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayPgnMode(c.Bytes(0), c.I4(1) != 0)); }, "false", "OrvSetLayPgnMode", 174,
     "VARIANT_BOOL (BSTR code, T_OrvFillMode mode)"},
    {"SetLayPgnLine", 116, "VARIANT_BOOL (BSTR code, long outline, long linetype)",
     "Outline of a layer's closed shapes, 0 on and any other number off, and its line type.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayPgnLine(c.Bytes(0), c.I4(1) != 0, c.I4(2))); }, "false", "OrvSetLayPgnLine", 175,
     "VARIANT_BOOL (BSTR code, T_OrvMode1 outline, long linetype)"},
    {"SetLayActive", 36, "VARIANT_BOOL (BSTR code, VARIANT_BOOL active)", "Whether features of a layer may become active.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayActive(c.Bytes(0), c.Bool(1))); }, "false", "OrvSetLayActMode", 191},
    {"SetLayEditFlg", 98, "VARIANT_BOOL (BSTR code, VARIANT_BOOL editflag)", "Whether the edit tools may change a layer's data.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayEditFlg(c.Bytes(0), c.Bool(1))); }, "false", "OrvSetLayEditFlg", 204},
    {"OrvSetLayerName", 211, "VARIANT_BOOL (BSTR code[50], BSTR layerName[4])", "Names a layer; four bytes of the name are kept.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayerName(c.Bytes(0), c.Bytes(1))); }, "false"},
};

}  // namespace

std::span<const MemberRow> LayerRows() { return kRows; }

}  // namespace orvane
