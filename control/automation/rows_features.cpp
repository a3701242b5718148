// Members that add, copy, change and delete features. Coordinates go into the store as they are given, local to the block's
// origin; none of these members repaints.
#include "control/automation/arrays.h"
#include "control/automation/call.h"

namespace orvane {
namespace {

DigPnt PointAt(const Call& c, std::size_t k) { return {c.R8(k), c.R8(k + 1), c.R8(k + 2)}; }

/// The feature is made before the arrays are looked at, and stays without points when they are refused.
void AddWithPoints(Call& c) {
    if (!c.Store().AddDigDat(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3))) return;
    GrowArray<DigPnt> points;
    if (!ReadPoints(c.Value(4), c.Value(5), c.Value(6), points)) return;
    c.ReturnBool(c.Store().SetDigDatPnts(c.Bytes(0), c.I4(1), c.I4(2), {points.data(), points.size()}));
}

/// The same for a grid; arrays with more elements than the grid has points are read as far as the grid goes.
void AddMesh(Call& c) {
    if (!c.Store().AddDigDat(c.Bytes(0), c.I4(1), c.I4(2), 0)) return;
    GrowArray<DigPnt> points;
    if (!ReadPoints(c.Value(5), c.Value(6), c.Value(7), points)) return;
    const std::int64_t needed = std::int64_t{c.I4(3)} * c.I4(4);
    if (needed < 1 || needed > static_cast<std::int64_t>(points.size())) return;
    const std::span<const DigPnt> grid{points.data(), static_cast<std::size_t>(needed)};
    c.ReturnBool(c.Store().SetMeshDat(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3), c.I4(4), grid));
}

void SetUseFlags(Call& c) {
    GrowArray<std::uint8_t> flags;
    if (!ReadFlags(c.Value(3), flags)) return;
    c.ReturnBool(c.Store().SetMeshUseFlag(c.Bytes(0), c.I4(1), c.I4(2), {flags.data(), flags.size()}));
}

void SetColors(Call& c) {
    GrowArray<std::uint32_t> colors;
    if (!ReadColors(c.Value(3), colors)) return;
    c.ReturnBool(c.Store().SetMeshColor(c.Bytes(0), c.I4(1), c.I4(2), {colors.data(), colors.size()}));
}

void SetSubLayers(Call& c) {
    GrowArray<std::int32_t> datIDs;
    GrowArray<std::int32_t> subLayNos;
    if (!ReadLongs(c.Value(2), c.Value(3), datIDs, subLayNos)) return;
    c.ReturnBool(
        c.Store().SetDatSubLayerEx(c.Bytes(0), c.I4(1), {datIDs.data(), datIDs.size()}, {subLayNos.data(), subLayNos.size()}));
}

constexpr MemberRow kRows[] = {
    {"AddDigDat", 79, "VARIANT_BOOL (BSTR code, long meshNo, long datID, long lineTag)",
     "Adds a feature without points to a block; IDs may repeat.",
     [](Call& c) { c.ReturnBool(c.Store().AddDigDat(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3))); }, "false", "OrvAddDat", 138,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID, long lineTag)"},
    {"AddDigDatEx", 110,
     "VARIANT_BOOL (BSTR code[50], long meshNo, long datID, long lineTag, VARIANT* x, VARIANT* y, VARIANT* Z)",
     "Adds a feature with points from three arrays of block coordinates; refused arrays leave it without points.", AddWithPoints,
     "false", "OrvAddDatEx", 139,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID, long lineTag, VARIANT* x, VARIANT* y, VARIANT* Z)"},
    {"DelDigDat", 84, "VARIANT_BOOL (BSTR code, long meshNo, long datID)", "Deletes a feature.",
     [](Call& c) { c.ReturnBool(c.Store().DelDigDat(c.Bytes(0), c.I4(1), c.I4(2))); }, "false", "OrvDelDat", 140,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID)"},
    {"AddDigDatPnt", 80, "VARIANT_BOOL (BSTR code, long meshNo, long datID, double x, double y, double Z)",
     "Adds a point, in block coordinates with y upward, behind the last one of a feature.",
     [](Call& c) { c.ReturnBool(c.Store().AddDigDatPnt(c.Bytes(0), c.I4(1), c.I4(2), PointAt(c, 3))); }, "false", "OrvAddDatPnt",
     141, "VARIANT_BOOL (BSTR code, long grpNo, long datID, double x, double y, double Z)"},
    {"EditDigDatPnt", 85, "VARIANT_BOOL (BSTR code, long meshNo, long datID, long pntIdx, double x, double y, double Z)",
     "Moves the point at a position counted from 0; the bounds only grow.",
     [](Call& c) { c.ReturnBool(c.Store().EditDigDatPnt(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3), PointAt(c, 4))); }, "false",
     "OrvEditDatPnt", 142, "VARIANT_BOOL (BSTR code, long grpNo, long datID, long pntIdx, double x, double y, double Z)"},
    {"InsertDigDatPnt", 86, "VARIANT_BOOL (BSTR code, long meshNo, long datID, long pntIdx, double x, double y, double Z)",
     "Lengthens a feature by one point and overwrites the one at a position; nothing moves up.",
     [](Call& c) { c.ReturnBool(c.Store().InsertDigDatPnt(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3), PointAt(c, 4))); }, "false",
     "OrvInsertDatPnt", 143, "VARIANT_BOOL (BSTR code, long grpNo, long datID, long pntIdx, double x, double y, double Z)"},
    {"DelDigDatPnt", 87, "VARIANT_BOOL (BSTR code, long meshNo, long datID, long pntIdx)",
     "Deletes the point at a position; false also when that was the last one left.",
     [](Call& c) { c.ReturnBool(c.Store().DelDigDatPnt(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3))); }, "false", "OrvDelDatPnt", 144,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID, long pntIdx)"},
    {"GetFreeDigDatID", 94, "long (BSTR code, long meshNo, long sType)",
     "An ID above all others of the block; -1 and a message when there is no block. sType has no effect.",
     [](Call& c) { c.ReturnI4(c.ctrl.GetFreeDigDatID(c.Bytes(0), c.I4(1))); }, "-1", "OrvGetFreeDatID", 202,
     "long (BSTR code, long grpNo, long sType)"},
    {"SetDigDatSubLayer", 71, "VARIANT_BOOL (BSTR code, long meshNo, long ID, long subLayNo)",
     "Gives a feature the look of a sub layer; 0 takes it back to the layer's.",
     [](Call& c) { c.ReturnBool(c.Store().SetDigDatSubLayer(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3))); }, "false",
     "OrvSetDatSubLayer", 145, "VARIANT_BOOL (BSTR code, long grpNo, long datID, long subLayNo)"},
    {"OrvSetDatSubLayerEx", 235, "VARIANT_BOOL (BSTR code[50], long grpNo, VARIANT* datID, VARIANT* subLayNo)",
     "Gives many features of a block their sub layers, from two arrays; true when one of them was found.", SetSubLayers, "false"},
    {"OrvCopyData", 220, "long (BSTR srccode[50], long srcgrpNo, long srcdatID, BSTR dstcode[50], long dstgrpNo)",
     "Copies a feature into a block of a layer of the same type; gives the new ID, or 0.",
     [](Call& c) { c.ReturnI4(c.Store().CopyData(c.Bytes(0), c.I4(1), c.I4(2), c.Bytes(3), c.I4(4))); }, "0"},
    {"OrvAddMeshDat", 226,
     "VARIANT_BOOL (BSTR code[50], long grpNo, long datID, long hcnt, long vcnt, VARIANT* x, VARIANT* y, VARIANT* Z)",
     "Adds a grid of hcnt by vcnt points to a mesh layer, row after row; refused arrays leave an empty feature.", AddMesh,
     "false"},
    {"OrvSetMeshUseFlag", 227, "VARIANT_BOOL (BSTR code[50], long grpNo, long datID, VARIANT* UseFlag)",
     "Sets the use flag of every point of a grid.", SetUseFlags, "false"},
    {"OrvSetMeshColor", 228, "VARIANT_BOOL (BSTR code[50], long grpNo, long datID, VARIANT* MeshColor)",
     "Sets the colour of every point of a grid; single-precision elements carry it bit by bit.", SetColors, "false"},
};

}  // namespace

std::span<const MemberRow> FeatureRows() { return kRows; }

}  // namespace orvane
