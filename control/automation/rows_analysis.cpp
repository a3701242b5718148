// Relation tests, which answer through the active set, and polygon overlay, which answers with new features.
#include <array>

#include "analysis/overlay.h"
#include "analysis/relation.h"
#include "control/automation/call.h"
#include "control/automation/member_row.h"

namespace orvane {
namespace {

// The host may set another progress function while it is asked, so each call keeps its own.

/// False only when the host has ended the test.
bool Relate(Call& c, const RelationQuery& query, std::int32_t op) {
    const COrvane4Ctrl::WorkProgress progress = c.ctrl.Progress();
    if (!c.Store().InitDone()) return true;
    return TestRelation(c.Store(), {c.ctrl.viewX, c.ctrl.viewY, c.ctrl.pendX, c.ctrl.pendY}, query, op, progress);
}

/// But for a test that was ended the answer tells of the number of points alone, and so does whether the active set is touched.
void RelateArray(Call& c, ShapeType type, std::int32_t fewest) {
    if (c.I4(2) < fewest) return;
    c.ReturnI4(Relate(c, {type, c.R8In(0), c.R8In(1)}, c.I4(3)) ? 1 : 0);
}

void OrvTestArea(Call& c) { RelateArray(c, ShapeType::Polygon, 3); }

void OrvTestLine(Call& c) { RelateArray(c, ShapeType::Line, 2); }

void OrvTestPoint(Call& c) {
    const std::array<double, 2> at{c.R8(0), c.R8(1)};
    Relate(c, {ShapeType::Point, {&at[0], 1}, {&at[1], 1}}, c.I4(2));
    c.ReturnI4(1);
}

/// Shows the wait cursor as long as it lives.
class WaitCursor {
public:
    explicit WaitCursor(Window& window) : window_(window) { window_.ShowWaitCursor(true); }
    ~WaitCursor() { window_.ShowWaitCursor(false); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    Window& window_;
};

// Without a result the host's variants stay as they are, whatever they hold.

void OverlayOfBlocks(Call& c) {
    const WaitCursor cursor(c.ctrl.window());
    const COrvane4Ctrl::WorkProgress progress = c.ctrl.Progress();
    OverlayIds ids;
    std::int32_t results = 0;
    if (c.I4(0) == static_cast<std::int32_t>(OverlayMode::Intersection)) {
        results = PolygonBuffering(c.Store(), {c.Bytes(1), c.I4(2)}, {c.Bytes(3), c.I4(4)}, {c.Bytes(5), c.I4(6)}, ids, progress);
    }
    if (results > 0) {
        c.SetI4Array(7, ids.datIDA);
        c.SetI4Array(8, ids.datIDB);
        c.SetI4Array(9, ids.datIDC);
    }
    c.ReturnI4(results);
}

void OverlayOfActive(Call& c) {
    const WaitCursor cursor(c.ctrl.window());
    const COrvane4Ctrl::WorkProgress progress = c.ctrl.Progress();
    std::int32_t datIDC = 0;
    const std::int32_t result =
        ActPolygonBuffering(c.Store(), static_cast<OverlayMode>(c.I4(0)), {c.Bytes(1), c.I4(2)}, datIDC, progress);
    if (result > 0) c.SetI4Array(3, {&datIDC, 1});
    c.ReturnI4(result);
}

constexpr MemberRow kRows[] = {
    {"OrvTestArea", 236, "long (in double* x[pcnt], in double* y[pcnt], long pcnt, T_ChkOperater oprmode)",
     "Activates the displayed features in a relation to an area of map points; 0 below 3 points or when ended.", OrvTestArea,
     "0"},
    {"OrvTestLine", 237, "long (in double* x[pcnt], in double* y[pcnt], long pcnt, T_ChkOperater opmode)",
     "Activates the displayed features in a relation to a line of map points; 0 below 2 points or when ended.", OrvTestLine, "0"},
    {"OrvTestPoint", 238, "long (double x, double y, T_ChkOperater opmode)",
     "Activates the displayed features in a relation to a map point, y upward.", OrvTestPoint, "1"},
    {"OrvPolygonBuffering", 212,
     "long (long mode, BSTR codeA[50], long grpNoA, BSTR codeB[50], long grpNoB, BSTR codeC[50], long grpNoC, out VARIANT* "
     "datIDA, "
     "out VARIANT* datIDB, out VARIANT* datIDC)",
     "Stores the intersections of two blocks' polygons in a third; gives their number and the IDs of each pair.", OverlayOfBlocks,
     "0"},
    {"OrvActPolygonBuffering", 213, "long (long mode, BSTR code[50], long grpNo, out VARIANT* datIDC)",
     "Stores the intersection (mode 0) or union (mode 1) of the active polygons as one new polygon.", OverlayOfActive, "0"},
};

}  // namespace

std::span<const MemberRow> AnalysisRows() { return kRows; }

}  // namespace orvane
