// The eleven enumerations of the type library. Their odd spellings are names that hosts compile against.
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr EnumValueRow kOrvMode1[] = {{"OrvMOn", 0}, {"OrvMOff", 1}};

constexpr EnumValueRow kOrvFillMode[] = {{"OrvFMMask", 0}, {"OrvFMCopy", 1}};

constexpr EnumValueRow kOrvLType[] = {
    {"OrvLTPoint", 1}, {"OrvLTLine", 2},    {"OrvLTPolygon", 3}, {"OrvLTCircle", 4},
    {"OrvLTText", 5},  {"OrvLTEllipse", 8}, {"OrvLTMesh", 10},
};

constexpr EnumValueRow kOrvRunMode[] = {
    {"OrvRMNomal", 0},        {"OrvRMPan", 10},      {"OrvRMAddEdit", 100}, {"OrvRMEditPntMove", 200}, {"OrvRMEditPntAdd", 210},
    {"OrvRMEditPntDel", 220}, {"OrvRMMoveDat", 250}, {"OrvRMCopyDat", 260}, {"OrvRMDeleteDat", 300},
};

constexpr EnumValueRow kOrvScrMode[] = {{"OrvSMOff", 0}, {"OrvSMOn", 10}};

constexpr EnumValueRow kOrvActPntType[] = {{"OrvAPMOff", 0}, {"OrvAPMCircle", 1}};

constexpr EnumValueRow kOrvRectZoomMode[] = {{"OrvRZMOff", 0}, {"OrvRZMZoomUp", 10}, {"OrvRZMZoomDown", 20}};

// Two of its members carry the prefix of the rectangle zoom.
constexpr EnumValueRow kOrvWheelZoomMode[] = {{"OrvWZMOff", 0}, {"OrvRZMCenter", 1}, {"OrvRZMMouse", 2}};

constexpr EnumValueRow kSymbolPos[] = {
    {"OrvSymPosC", 0}, {"OrvSymPosLT", 1}, {"OrvSymPosLB", 2}, {"OrvSymPosRT", 3}, {"OrvSymPosRB", 4},
};

constexpr EnumValueRow kStringPos[] = {
    {"OrvStrPosLT", 0}, {"OrvStrPosLC", 1}, {"OrvStrPosLB", 2}, {"OrvStrPosCT", 3}, {"OrvStrPosCC", 4},
    {"OrvStrPosCB", 5}, {"OrvStrPosRT", 6}, {"OrvStrPosRC", 7}, {"OrvStrPosRB", 8},
};

constexpr EnumValueRow kChkOperater[] = {
    {"OrvEquals", 0},  {"OrvDisjoint", 1}, {"OrvIntersects", 2}, {"OrvTouches", 3},
    {"OrvCrosses", 4}, {"OrvWithin", 5},   {"OrvContains", 6},   {"OrvOverlaps", 7},
};

constexpr EnumRow kRows[] = {
    {"T_OrvMode1", "Switch whose on is 0 and whose off is 1.", kOrvMode1},
    {"T_OrvFillMode", "How a filled area meets the picture: masked with it, or copied over it.", kOrvFillMode},
    {"T_OrvLType", "Kind of data that a layer, or an overlay figure, holds.", kOrvLType},
    {"T_OrvRunMode", "What the mouse does: select, pan, or one of the edit tools.", kOrvRunMode},
    {"T_OrvScrMode", "Whether holding the right button scrolls the map.", kOrvScrMode},
    {"T_OrvActPntType", "Whether the vertices of active data are marked with circles.", kOrvActPntType},
    {"T_OrvRectZoomMode", "What dragging a rectangle does: nothing, zoom in on it, or zoom out to it.", kOrvRectZoomMode},
    {"T_OrvWheelZoomMode", "What the wheel does: nothing, zoom about the centre, or zoom about the cursor.", kOrvWheelZoomMode},
    {"T_SymbolPos", "Which point of a layer's image stands on the data point: centre or a corner.", kSymbolPos},
    {"T_StringPos", "Which point of a text stands on its anchor: left, centre or right; top, centre or bottom.", kStringPos},
    {"T_ChkOperater", "Spatial relation that a test asks for.", kChkOperater},
};

}  // namespace

std::span<const EnumRow> EnumRows() { return kRows; }

}  // namespace orvane
