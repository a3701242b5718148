// Relation tests, which answer through the active set, and polygon overlay, which answers with new features.
#include "control/automation/member_row.h"

namespace orvane {
namespace {

constexpr MemberRow kRows[] = {
    {"OrvTestArea", 236, "long (in double* x[pcnt], in double* y[pcnt], long pcnt, T_ChkOperater oprmode)",
     "Activates the displayed features in a relation to an area of map points; 0 below 3 points.", nullptr, "0"},
    {"OrvTestLine", 237, "long (in double* x[pcnt], in double* y[pcnt], long pcnt, T_ChkOperater opmode)",
     "Activates the displayed features in a relation to a line of map points; 0 below 2 points.", nullptr, "0"},
    // It never refuses, so even without a worker its answer is the one it always gives.
    {"OrvTestPoint", 238, "long (double x, double y, T_ChkOperater opmode)",
     "Activates the displayed features in a relation to a map point, y upward.", nullptr, "1"},
    {"OrvPolygonBuffering", 212,
     "long (long mode, BSTR codeA[50], long grpNoA, BSTR codeB[50], long grpNoB, BSTR codeC[50], long grpNoC, out VARIANT* "
     "datIDA, "
     "out VARIANT* datIDB, out VARIANT* datIDC)",
     "Stores the intersections of two blocks' polygons in a third; gives their number and the IDs of each pair.", nullptr, "0"},
    {"OrvActPolygonBuffering", 213, "long (long mode, BSTR code[50], long grpNo, out VARIANT* datIDC)",
     "Stores the intersection (mode 0) or union (mode 1) of the active polygons as one new polygon.", nullptr, "0"},
};

}  // namespace

std::span<const MemberRow> AnalysisRows() { return kRows; }

}  // namespace orvane
