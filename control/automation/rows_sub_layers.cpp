// Members that set sub layers, the looks a feature may have in place of its layer's, and the images of point layers.
#include "control/automation/call.h"

namespace orvane {
namespace {

/// The newer twins give a name behind the code; with the older ones a sub layer has none. `k` is the place of the number.
struct SubLayerKey {
    explicit SubLayerKey(const Call& c)
        : k(c.member.newer ? 2 : 1), layerName(c.member.newer ? c.Bytes(1) : std::string_view()) {}
    std::size_t k;
    std::string_view layerName;
};

void SetSubLayer(Call& c) {
    const auto [k, layerName] = SubLayerKey(c);
    c.ReturnBool(c.Store().SetSubLayer(c.Bytes(0), c.I4(k), layerName, c.Bool(k + 1), c.I4(k + 2), c.I4(k + 3), c.Color(k + 4),
                                       c.I4(k + 5) != 0));
}

void SetSubLayerEx(Call& c) {
    const auto [k, layerName] = SubLayerKey(c);
    SubLayerSettings settings;
    settings.layerName = layerName;
    settings.disp = c.Bool(k + 1);
    settings.lineType = c.I4(k + 2);
    settings.lineSize = c.I4(k + 3);
    settings.pgnType = c.I4(k + 4);
    settings.pntType = c.I4(k + 5);
    settings.color = c.Color(k + 6);
    settings.outLine = c.I4(k + 7) != 0;
    settings.fillMode = c.I4(k + 8) != 0;
    c.ReturnBool(c.Store().SetSubLayerEx(c.Bytes(0), c.I4(k), settings));
}

/// The six values of an image, from position `k` on.
ImageSettings ImageAt(const Call& c, std::size_t k) {
    return {c.Bytes(k), c.Bytes(k + 1), c.I4(k + 2), c.I4(k + 3), c.R8(k + 4), c.R8(k + 5)};
}

constexpr MemberRow kRows[] = {
    {"SetSubLayer", 104,
     "VARIANT_BOOL (BSTR code, long subLayNo, VARIANT_BOOL disp, long linetype, long linesize, OLE_COLOR color, long fillmode)",
     "Sets or adds a sub layer; linetype is its symbol, hatch or line type by the layer's type.", SetSubLayer, "false",
     "OrvSetSubLayer", 193,
     "VARIANT_BOOL (BSTR code[50], BSTR layerName[255], long subLayNo, VARIANT_BOOL disp, long linetype, long linesize, "
     "OLE_COLOR color, T_OrvMode1 outline)"},
    {"SetSubLayerEx", 118,
     "VARIANT_BOOL (BSTR code, long subLayNo, VARIANT_BOOL disp, long linetype, long linesize, long polygontype, long pointtype, "
     "OLE_COLOR color, long fillmode, long pgn_mode)",
     "Sets or adds a sub layer with line type, hatch and symbol each given.", SetSubLayerEx, "false", "OrvSetSubLayerEx", 194,
     "VARIANT_BOOL (BSTR code[50], BSTR layerName[255], long subLayNo, VARIANT_BOOL disp, long linetype, long linesize, "
     "long pgntype, long pnttype, OLE_COLOR color, T_OrvMode1 outline, T_OrvFillMode pgn_mode)"},
    {"OrvSetSubLayColor", 230, "VARIANT_BOOL (BSTR code[50], long subNo, OLE_COLOR color)", "Sets the colour of a sub layer.",
     [](Call& c) { c.ReturnBool(c.Store().SetSubLayColor(c.Bytes(0), c.I4(1), c.Color(2))); }, "false"},
    {"OrvSetSubLayColor2", 231, "VARIANT_BOOL (BSTR code[50], long subNo, OLE_COLOR color)",
     "Sets the outline colour of a sub layer's closed shapes.",
     [](Call& c) { c.ReturnBool(c.Store().SetSubLayColor2(c.Bytes(0), c.I4(1), c.Color(2))); }, "false"},
    {"SetLayImage", 103,
     "VARIANT_BOOL (BSTR code, BSTR imgfname[511], BSTR imgactfname[511], long bmWidth, long bmHeight, double imgMinScl, "
     "double imgMaxScl)",
     "Gives a point layer with data its images, their size in pixels and scale range; they do not show yet.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayImage(c.Bytes(0), ImageAt(c, 1))); }, "false", "OrvSetLayImage", 147},
    {"DspLayImage", 117, "VARIANT_BOOL (BSTR code, VARIANT_BOOL mode)",
     "Shows the images of a point layer with data in place of its symbols, or not.",
     [](Call& c) { c.ReturnBool(c.Store().DspLayImage(c.Bytes(0), c.Bool(1))); }, "false", "OrvDspLayImage", 148},
    {"OrvSetLayImagePos", 232, "VARIANT_BOOL (BSTR code, T_SymbolPos pos)",
     "Sets where the images of a point layer with data stand at their points.",
     [](Call& c) { c.ReturnBool(c.Store().SetLayImagePos(c.Bytes(0), c.I4(1))); }, "false"},
    {"OrvSetSubLayImage", 217,
     "VARIANT_BOOL (BSTR code, long subNo, BSTR imgfname[511], BSTR imgactfname[511], long bmWidth, long bmHeight, "
     "double imgMinScl, double imgMaxScl)",
     "Gives a sub layer of a point layer its images; they do not show yet and stand centred.",
     [](Call& c) { c.ReturnBool(c.Store().SetSubLayImage(c.Bytes(0), c.I4(1), ImageAt(c, 2))); }, "false"},
    {"OrvDspSubLayImage", 218, "VARIANT_BOOL (BSTR code, long subNo, VARIANT_BOOL mode)",
     "Shows the images of a sub layer in place of its symbols, or not.",
     [](Call& c) { c.ReturnBool(c.Store().DspSubLayImage(c.Bytes(0), c.I4(1), c.Bool(2))); }, "false"},
    {"OrvSetSubLayImagePos", 233, "VARIANT_BOOL (BSTR code, long subNo, T_SymbolPos pos)",
     "Sets where the images of a sub layer stand at their points.",
     [](Call& c) { c.ReturnBool(c.Store().SetSubLayImagePos(c.Bytes(0), c.I4(1), c.I4(2))); }, "false"},
};

}  // namespace

std::span<const MemberRow> SubLayerRows() { return kRows; }

}  // namespace orvane
