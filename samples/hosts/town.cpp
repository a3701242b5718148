#include "hosts/common/automation.h"
#include "hosts/common/offscreen_map.h"
#include "platform/variant_array.h"
using namespace orvane;

int main(int, char** argv) {
    OffscreenMap map(800, 600);  // the control on a window without a screen
    const Automation c(map.Control());
    c.Call("OrvAddLayer", {Variant("TOWN"), Variant(1), Variant(kLayPolygon), Variant(0)});
    c.Call("OrvSetLayColor", {Variant("TOWN"), Variant(0x80C0A0)});  // blue, green, red
    c.Call("OrvAddDatEx", {Variant("TOWN"), Variant(1), Variant(7), Variant(0), MakeArray<double>({0, 900, 400, 0}),
                           MakeArray<double>({0, 100, 700, 0}), MakeArray<double>({0, 0, 0, 0})});
    c.Call("OrvDspFit2", {Variant(5)});  // 5 per cent of margin
    return map.SavePng(argv[1]) ? 0 : 1;
}
