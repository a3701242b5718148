// Members that read what is stored, and those that only hosts of the first days still call.
#include "control/automation/call.h"

namespace orvane {
namespace {

void DatInfoOut(Call& c) {
    DatInfo info;
    const bool found = c.Store().GetDigDatInfoEx(c.Bytes(0), c.I4(1), c.I4(2), info);
    if (found) {
        c.SetI4(3, info.type);
        c.SetI4(4, info.lineTag);
        c.SetI4(5, info.cnt);
        c.SetI4(6, info.active ? 1 : 0);
    }
    c.ReturnBool(found);
}

/// Map coordinates into the host's buffers: x, y and, where the member has it, z.
void PointsOut(Call& c) {
    const std::int32_t cnt = c.Store().PntCnt(c.Bytes(0), c.I4(1), c.I4(2));
    if (cnt < 0) return;
    const auto count = static_cast<std::size_t>(cnt);
    double* const x = c.R8Out(3, count).data();
    double* const y = c.R8Out(4, count).data();
    double* const z = c.ArgCnt() > 5 ? c.R8Out(5, count).data() : nullptr;
    c.ReturnBool(c.Store().GetDigDatPnt(c.Bytes(0), c.I4(1), c.I4(2), x, y, z));
}

/// There is no such information any more; its texts are empty.
void NoInfo(Call& c) {
    c.SetBytes(0, "");
    c.SetBytes(1, "");
    c.ReturnBool(false);
}

constexpr MemberRow kRows[] = {
    {"GetLayDatCnt", 52, "long (BSTR code, long meshNo)", "Number of features in a block; 0 when there is no such block.",
     [](Call& c) { c.ReturnI4(c.Store().GetLayDatCnt(c.Bytes(0), c.I4(1))); }, "0", "OrvGetLayDatCnt", 192,
     "long (BSTR code, long grpNo)"},
    {"GetDigDatInfo", 53, "long (BSTR code, long meshNo, long idx)", "ID of the feature at a position counted from 0, or -1.",
     [](Call& c) { c.ReturnI4(c.Store().GetDigDatInfo(c.Bytes(0), c.I4(1), c.I4(2))); }, "-1", "OrvGetDatInfo", 195,
     "long (BSTR code, long grpNo, long index)"},
    {"GetDigDatInfoEx", 60,
     "VARIANT_BOOL (BSTR code, long meshNo, long ID, out long* type, out long* lineTag, out long* cnt, out long* active)",
     "Reads the layer type, line tag, point count and active state (0 or 1) of a feature.", DatInfoOut, "false",
     "OrvGetDatInfoEx", 196,
     "VARIANT_BOOL (BSTR code, long grpNo, long datID, out long* type, out long* lineTag, out long* cnt, out long* active)"},
    {"GetDigDatPnt", 59, "VARIANT_BOOL (BSTR code, long meshNo, long ID, out double* px[points], out double* py[points])",
     "Reads all points of a feature as map coordinates, y upward.", PointsOut, "false", "OrvGetDatPnt", 197,
     "VARIANT_BOOL (BSTR code[50], long grpNo, long datID, out double* px[points], out double* py[points])"},
    {"OrvGetDatPntEx", 234,
     "VARIANT_BOOL (BSTR code[50], long grpNo, long datNo, out double* px[points], out double* py[points], "
     "out double* pz[points])",
     "Reads all points of a feature as map coordinates, y upward, with z as it was stored.", PointsOut, "false"},
    {"SetDigDatInfoEx", 95, "long (BSTR code, long meshNo, short datID, long tag, VARIANT_BOOL active)",
     "Sets the line tag and the active state of a feature whose ID fits in 16 bits; 1, or 0 when it is missing.",
     [](Call& c) { c.ReturnI4(c.Store().SetDigDatInfoEx(c.Bytes(0), c.I4(1), c.I4(2), c.I4(3), c.Bool01(4) == 1) ? 1 : 0); },
     "0"},
    {"GetLayPath", 54, "BSTR (BSTR code, long meshNo)", "Name of the file that a block came from, or an empty text.",
     [](Call& c) { c.ReturnBytes(c.Store().GetLayPath(c.Bytes(0), c.I4(1))); }, "empty"},
    {"GetLayerInfo", 32, "VARIANT_BOOL (out BSTR* layerName, out BSTR* layerInfo)",
     "Always false, with empty texts; kept for hosts of the older family.", NoInfo, "false"},
    {"GetDataInfo", 33, "VARIANT_BOOL (out BSTR* dataName, out BSTR* dataInfo)",
     "Always false, with empty texts; kept for hosts of the older family.", NoInfo, "false"},
    {"MapJumpToParm", 31, "long ()", "Always -1; kept for hosts of the older family.", [](Call& c) { c.ReturnI4(-1); }, "-1"},
    {"RunToData", 37, "VARIANT_BOOL ()", "Always true; kept for hosts of the older family.", [](Call& c) { c.ReturnBool(true); },
     "true"},
    {"RDMDatReadEx", 38, "VARIANT_BOOL ()", "Always false; kept for hosts of the older family.",
     [](Call& c) { c.ReturnBool(false); }, "false"},
};

}  // namespace

std::span<const MemberRow> ReadRows() { return kRows; }

}  // namespace orvane
