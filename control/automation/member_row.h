// The form in which the automation surface is written down: one row a member, or a pair of twins.
//
// A signature is written in the words of the interface language and parsed once at start:
//
//     "VARIANT_BOOL (BSTR code, long meshNo, long ID, out long* type, out double* px[points], VARIANT* x)"
//
// Result and argument types: VARIANT_BOOL, short, long, double, BSTR, OLE_COLOR, OLE_HANDLE, an enumeration's name, VARIANT; void
// as a result; in the stock events OLE_XPOS_PIXELS and OLE_YPOS_PIXELS, a long each. A pointer is `in`, `out` or `inout`;
// `VARIANT*` without a word is an input array. A buffer behind a bare pointer has its length rule in brackets: [points] the
// item's points, [active] the number of active items, [linetypes] the number of line types, [NAME] the value of the count
// argument of that name; a pointer without brackets is one value. A BSTR in with a number in brackets is cut to so many bytes:
// "BSTR code[50]".
#pragma once

#include <cstdint>
#include <span>

namespace orvane {

class Call;
using Worker = void (*)(Call& call);

struct MemberRow {
    const char* name;
    std::int32_t dispid;
    const char* signature;
    const char* help;  ///< one line
    Worker worker;     ///< null: not built yet, answers `failure`
    /// What the member answers when it fails, as text: "" for no result, "false", "0", "-1", "true" or "1" where even a stub
    /// succeeds, "empty".
    const char* failure;

    // The twin under its newer name, where there is one. Null signature or worker: the same as above.
    const char* twin = nullptr;
    std::int32_t twinDispid = 0;
    const char* twinSignature = nullptr;
    Worker twinWorker = nullptr;
    const char* twinFailure = nullptr;
    bool indexed = false;  ///< a property with an argument, which stands among the methods
};

struct PropertyRow {
    const char* name;
    std::int32_t dispid;
    const char* type;  ///< an enumeration that is kept in 16 bits is followed by "short"
    const char* help;
    Worker get;
    Worker put;  ///< null: read-only
};

struct EventRow {
    const char* name;
    std::int32_t dispid;
    const char* signature;  ///< "(long Zoom)"
    const char* help;
};

struct EnumValueRow {
    const char* name;
    std::int32_t value;
};

struct EnumRow {
    const char* name;
    const char* help;
    std::span<const EnumValueRow> values;
};

// One function a subject; together they are the surface (table.cpp joins them).
std::span<const PropertyRow> PropertyRows();     // rows_properties.cpp
std::span<const EventRow> EventRows();           // rows_events.cpp
std::span<const EnumRow> EnumRows();             // rows_enums.cpp
std::span<const MemberRow> LifecycleRows();      // rows_lifecycle.cpp: init, term, Refresh, AboutBox
std::span<const MemberRow> ViewRows();           // rows_view.cpp
std::span<const MemberRow> FrameRows();          // rows_frame.cpp
std::span<const MemberRow> ReadRows();           // rows_reads.cpp
std::span<const MemberRow> LayerRows();          // rows_layers.cpp
std::span<const MemberRow> SubLayerRows();       // rows_sub_layers.cpp: sub layers and images
std::span<const MemberRow> FeatureRows();        // rows_features.cpp
std::span<const MemberRow> TextRows();           // rows_texts.cpp
std::span<const MemberRow> OverlayFigureRows();  // rows_overlay_figures.cpp
std::span<const MemberRow> LineTypeRows();       // rows_line_types.cpp
std::span<const MemberRow> SelectionRows();      // rows_selection.cpp
std::span<const MemberRow> EditorRows();         // rows_editor.cpp
std::span<const MemberRow> CoordinateRows();     // rows_coordinates.cpp: frame change and sheet origin
std::span<const MemberRow> AnalysisRows();       // rows_analysis.cpp: relation tests and polygon overlay
std::span<const MemberRow> FileRows();           // rows_files.cpp: exchange, archive, legacy and symbol files
std::span<const MemberRow> RasterRows();         // rows_raster.cpp

}  // namespace orvane
