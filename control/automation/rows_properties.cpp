// The twenty-four properties. Nearly every write marks the control as modified; none repaints.
#include "control/automation/call.h"

namespace orvane {
namespace {

/// A write that only keeps a value.
template <class T>
void Keep(Call& call, T& field, T value) {
    field = value;
    call.ctrl.SetModified(true);
}

/// The label switch stands under two names: both read and write the one value.
void GetLabels(Call& c) { c.ReturnBool(c.Store().DigStrVisible != 0); }
void PutLabels(Call& c) { Keep(c, c.Store().DigStrVisible, c.Bool01(0) == 1 ? 1 : 0); }

/// What hosts of the first days asked for; there is nothing to tell and nothing to keep.
void GetNothing(Call& c) { c.ReturnI4(0); }
void PutNothing(Call&) {}

constexpr PropertyRow kRows[] = {
    {"ExecRun", 1, "VARIANT_BOOL", "Kept for the host; it has no effect on the map.",
     [](Call& c) { c.ReturnBool(c.ctrl.execRun); }, [](Call& c) { Keep(c, c.ctrl.execRun, c.Bool(0)); }},
    {"DebugMode", 2, "VARIANT_BOOL", "Lets a double click on a feature show its key in a message instead of firing the event.",
     [](Call& c) { c.ReturnBool(c.ctrl.debugMode); }, [](Call& c) { Keep(c, c.ctrl.debugMode, c.Bool(0)); }},
    {"RunMode", 3, "T_OrvRunMode short", "What the left button does in the map: pick, pan, or one of the edit tools.",
     [](Call& c) { c.ReturnI2(c.ctrl.runMode); }, [](Call& c) { Keep(c, c.ctrl.runMode, c.I2(0)); }},
    {"ScrollMode", 4, "T_OrvScrMode short", "Whether holding the right button scrolls toward the cursor.",
     [](Call& c) { c.ReturnI2(c.ctrl.scrollMode); }, [](Call& c) { Keep(c, c.ctrl.scrollMode, c.I2(0)); }},
    {"ScaleX", 5, "double", "Stretch of the map along x, a factor; 1 draws it true.",
     [](Call& c) { c.ReturnR8(c.Store().view.ScaleX); }, [](Call& c) { c.ctrl.SetScaleX(c.R8(0)); }},
    {"ScaleY", 6, "double", "Stretch of the map along y, a factor; 1 draws it true.",
     [](Call& c) { c.ReturnR8(c.Store().view.ScaleY); }, [](Call& c) { c.ctrl.SetScaleY(c.R8(0)); }},
    {"Rotate", 7, "double", "Turn of the map about the map origin, in degrees.",
     [](Call& c) { c.ReturnR8(c.Store().view.Rotate); }, [](Call& c) { c.ctrl.SetRotate(c.R8(0)); }},
    {"Zoom", 8, "long", "Scale denominator, 1 to 50000000; a write keeps the centre of the view and fires OnZoomChange.",
     [](Call& c) { c.ReturnI4(c.Store().view.Zoom); }, [](Call& c) { c.ctrl.SetZoom(c.I4(0)); }},
    {"MapDraw", 9, "VARIANT_BOOL", "False turns all drawing off until it is true again.",
     [](Call& c) { c.ReturnBool(c.ctrl.mapDraw); }, [](Call& c) { Keep(c, c.ctrl.mapDraw, c.Bool(0)); }},
    {"ScaleBarMode", 10, "short", "How the scale bar shows along the right and bottom edges; 0 is none.",
     [](Call& c) { c.ReturnI2(c.ctrl.scaleBarMode); }, [](Call& c) { Keep(c, c.ctrl.scaleBarMode, c.I2(0)); }},
    {"MemHandle", 11, "OLE_HANDLE", "Always 0; writes are ignored.", GetNothing, PutNothing},
    {"MemCnt", 12, "long", "Always 0; writes are ignored.", GetNothing, PutNothing},
    {"GetDC", 13, "OLE_HANDLE", "Device context of the composed map without overlay figures; 0 before the first paint.",
     [](Call& c) { c.ReturnI4(c.ctrl.BaseDcHandle()); }, nullptr},
    {"ActiveColor", 14, "OLE_COLOR", "Colour in which active features are drawn.",
     [](Call& c) { c.ReturnI4(static_cast<std::int32_t>(c.Store().ActiveColor)); },
     [](Call& c) { Keep(c, c.Store().ActiveColor, Rgb{c.Color(0)}); }},
    {"AreaTop", 15, "double", "Upper limit of the view in map units, as y downward: the northern edge, negated.",
     [](Call& c) { c.ReturnR8(c.ctrl.areaTop); }, [](Call& c) { c.ctrl.SetAreaTop(c.R8(0)); }},
    {"AreaBottom", 16, "double", "Lower limit of the view in map units, as y downward: the southern edge, negated.",
     [](Call& c) { c.ReturnR8(c.ctrl.areaBottom); }, [](Call& c) { c.ctrl.SetAreaBottom(c.R8(0)); }},
    {"AreaLeft", 17, "double", "Left limit of the view in map units, x to the right.",
     [](Call& c) { c.ReturnR8(c.ctrl.areaLeft); }, [](Call& c) { c.ctrl.SetAreaLeft(c.R8(0)); }},
    {"AreaRight", 18, "double", "Right limit of the view in map units, x to the right.",
     [](Call& c) { c.ReturnR8(c.ctrl.areaRight); }, [](Call& c) { c.ctrl.SetAreaRight(c.R8(0)); }},
    {"ActivePointType", 19, "T_OrvActPntType", "How active point features are marked.",
     [](Call& c) { c.ReturnI4(c.Store().ActivePointType); }, [](Call& c) { Keep(c, c.Store().ActivePointType, c.I4(0)); }},
    {"OrgStrVisible", 20, "VARIANT_BOOL", "Whether overlay figures show their texts.",
     [](Call& c) { c.ReturnBool(c.ctrl.orgStrVisible); }, [](Call& c) { Keep(c, c.ctrl.orgStrVisible, c.Bool01(0) == 1); }},
    {"LineTagMode", 21, "VARIANT_BOOL", "While true, features whose lineTag is above 0 are not drawn.",
     [](Call& c) { c.ReturnBool(c.Store().LineTagMode != 0); }, [](Call& c) { Keep(c, c.Store().LineTagMode, c.Bool01(0)); }},
    {"DigStrVisible", 22, "VARIANT_BOOL", "Whether features show their labels; the same value as StrVisible.", GetLabels,
     PutLabels},
    {"StrVisible", 23, "VARIANT_BOOL", "Whether features show their labels; the same value as DigStrVisible.", GetLabels,
     PutLabels},
    {"CutSameString", 24, "VARIANT_BOOL", "Whether only the first of equal texts in a block of a text layer is drawn.",
     [](Call& c) { c.ReturnBool(c.Store().CutSameString != 0); }, [](Call& c) { Keep(c, c.Store().CutSameString, c.Bool01(0)); }},
};

}  // namespace

std::span<const PropertyRow> PropertyRows() { return kRows; }

}  // namespace orvane
