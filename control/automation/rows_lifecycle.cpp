// Members that start and end the control's work, and the two stock methods.
#include "control/automation/call.h"

namespace orvane {
namespace {

constexpr MemberRow kRows[] = {
    {"RDMInit", 29, "VARIANT_BOOL (BSTR code)",
     "Starts over with an empty map and the view's starting values; any text serves as code.",
     [](Call& c) { c.ReturnBool(c.ctrl.RDMInit()); }, "false", "OrvInit", 121, "VARIANT_BOOL ()"},
    {"RDMTerm", 25, "void ()", "Closes the raster images; the map stays as it is.", [](Call& c) { c.ctrl.RDMTerm(); }, "",
     "OrvTerm", 122},
    {"Refresh", -550, "void ()", "Asks for a paint of the whole control and returns.", [](Call& c) { c.ctrl.Refresh(); }, ""},
    {"AboutBox", -552, "void ()", "Does nothing.", [](Call&) {}, ""},
};

}  // namespace

std::span<const MemberRow> LifecycleRows() { return kRows; }

}  // namespace orvane
