#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "geo/geo_conv.h"
#include "store/view_params.h"
#include "tests/control/automation_rig.h"
#include "tests/values/value_table.h"

namespace orvane {

namespace {

constexpr std::int32_t kBlock = 533945;
constexpr std::int32_t kLastLineType = 75;
constexpr double kAngles_deg[] = {0, 30, 45, 90, 123.456, 359};

Variant Doubles(std::vector<double> values) { return MakeArray(std::move(values)); }

/// A map that is being made, with its middle somewhere.
struct Maker {
    AutomationRig& rig;
    double x = 0;
    double y = 0;
};

void AddItem(const Maker& map, const std::string& code, std::int32_t datID, const std::vector<DigPnt>& pnts) {
    std::vector<double> x, y, z;
    for (const DigPnt& pnt : pnts) {
        x.push_back(map.x + pnt.x);
        y.push_back(map.y + pnt.y);
        z.push_back(pnt.z);
    }
    map.rig.Run("OrvAddDatEx", code, kBlock, datID, 0, Doubles(x), Doubles(y), Doubles(z));
}

/// A layer of each type with a few items, and lines of all line types.
void MakeMap(const Maker& map) {
    AutomationRig& rig = map.rig;
    rig.Run("OrvReadLineTypeData", "samples/gallery/line_types.txt");
    rig.Run("OrvGetSymbolData", "samples/gallery/symbols.txt");
    for (const std::int32_t type : {3, 10, 4, 8, 2, 1, 5}) {
        const std::string code = "T" + std::to_string(type);
        rig.Run("OrvAddLayer", code, kBlock, type, 1);
        for (std::int32_t id = 1; id <= 12; ++id) {
            const double x = id * 91.25 - 600, y = id * 57.5 + type * 31 - 500;
            const double radius = 20 + id * 3.75;
            if (type == 1 || type == 4 || type == 5) {
                AddItem(map, code, id, {{x, y, radius}});
            } else if (type == 8) {
                AddItem(map, code, id, {{x, y, 0}, {x + radius * 2, y + radius, 0}});
            } else if (type != 10) {
                AddItem(map, code, id, {{x, y, 0}, {x + 60, y + 20.5, 0}, {x + 40.25, y + 77, 0}, {x - 15, y + 33.125, 0}});
            }
            if (type == 5)
                rig.Run("OrvSetDatString", code, kBlock, id, map.x + x, map.y + y, "\x93\x8c\x8b\x9e " + std::to_string(id));
        }
    }
    for (std::int32_t type = 0; type <= kLastLineType; ++type) {
        const std::string code = "L" + std::to_string(type);
        rig.Run("OrvAddLayer", code, kBlock, 2, 1);
        const double y = type * 11.5 - 430;
        AddItem(map, code, 1, {{-300, y, 0}, {-100, y + 61, 0}, {-40, y + 11, 0}, {250.5, y - 40.75, 0}});
        rig.Run("OrvSetLayLineType", code, type);
        rig.Run("OrvSetLayLineSize", code, 1 + type % 4);
    }
    for (std::int32_t type = 0; type <= 30; ++type) {
        const std::string code = "P" + std::to_string(type);
        rig.Run("OrvAddLayer", code, kBlock, 1, 1);
        AddItem(map, code, 1, {{type * 35.5 - 530, 430 - type * 3.25, 12.345}});
        rig.Run("OrvSetLayLineType", code, type);
        rig.Run("OrvSetLayLineSize", code, 9 + type);
    }
    const std::int32_t figure = rig.Run("OrvMakeOrgDatEx", 2, 3, 255, 0).Long();
    for (int i = 0; i < 9; ++i) rig.Run("OrvAddOrgPnt", figure, map.x + i * 77.5 - 350, map.y + i * i * 11.25 - 350);
}

void TellVerbs(ValueTable& table, AutomationRig& rig, const std::string& name) {
    for (std::size_t i = 0; i < rig.verbs->Size(); ++i) table.Exact(name + "_" + std::to_string(i), rig.verbs->Line(i));
    rig.verbs->Clear();
}

void TellTurns(ValueTable& table) {
    for (int k = 0; k <= 72; ++k) {
        double x = 1234.5 + k * 17, y = -98.75 * k;
        RotateView(x, y, k * 5.0);
        const std::string at = "_" + std::to_string(k);
        table.Ulp("turned" + at, {x, y});
        ViewParams view;
        view.Rotate = k * 5.0;
        view.ScaleX = view.ScaleY = 1;
        view.DotPerM = 3779;
        const DeviceTransform transform(view, 100.25, -200.5, 0, 0, 1000, 2000);
        const DigPnt device = transform.ToDeviceF(33.5, 44.25);
        table.Ulp("device" + at, {device.x, device.y});
        const Point pixel = transform.ToDevice(33.5, 44.25);
        table.Exact("pixel" + at, {static_cast<double>(pixel.x), static_cast<double>(pixel.y)});
    }
}

/// The map in a turned view.
void TellTurnedMaps(ValueTable& table) {
    AutomationRig rig;
    rig.Start();
    MakeMap({rig});
    for (const double angle : kAngles_deg) {
        rig.Put("Rotate", angle);
        rig.Run("OrvDspFit");
        const std::string name = "map_at_" + std::to_string(static_cast<int>(angle));
        rig.verbs->Clear();
        rig.Run("OrvReDraw");
        TellVerbs(table, rig, name);
        double x = 0, y = 0;
        rig.ctrl->FullInverse(317, 211, x, y);
        table.Ulp(name + "_inverse", {x, y});
        table.Exact(name + "_screen", {rig.Run("OrvGetScreenPosX", 317).Double(), rig.Run("OrvGetScreenPosY", 211).Double()});
    }
}

/// The map from the mesh frame to a plane zone and back.
void TellFrames(ValueTable& table) {
    AutomationRig rig;
    rig.Start();
    const MeshPoint tokyo = GeoConv().DmsToMeshPoint({{35, 40, 12, 3456}, {139, 44, 28, 8869}});
    MakeMap({rig, tokyo.x, tokyo.y});
    rig.Put("AreaRight", 1e7);
    rig.Put("AreaBottom", 1e7);
    rig.Put("AreaLeft", -1e7);
    rig.Put("AreaTop", -1e7);
    for (const std::int32_t mode : {1, 0}) {
        rig.Run("OrvChgGeoFrame", mode, 9);
        const std::string name = mode == 1 ? "plane" : "mesh";
        for (const char* code : {"T2", "T3", "T8", "T5"}) {
            for (std::int32_t id = 1; id <= 12; ++id) {
                const Ran points = rig.Run("OrvGetDatPnt", code, kBlock, id);
                for (std::size_t i = 0; i < points.Doubles(3).size(); ++i) {
                    table.Ulp(name + "_" + code + "_" + std::to_string(id) + "_" + std::to_string(i),
                              {points.Doubles(3)[i], points.Doubles(4)[i]});
                }
            }
        }
        rig.Run("OrvDspFit");
        rig.verbs->Clear();
        rig.Run("OrvReDraw");
        TellVerbs(table, rig, "map_in_" + name);
    }
}

}  // namespace

void TellMaps(ValueTable& table) {
    TellTurns(table);
    TellTurnedMaps(table);
    TellFrames(table);
}

}  // namespace orvane
