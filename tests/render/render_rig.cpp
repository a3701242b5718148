#include "tests/render/render_rig.h"

#include <gtest/gtest.h>

#include "render/line_polygon.h"

namespace orvane {

RenderRig::RenderRig() {
    store.Init();
    store.view.ScaleX = store.view.ScaleY = 1;
    store.view.Zoom = 1000;
    store.view.DotPerM = 1000;
    store.view.DpiRatio = 1;
    store.ActiveColor = 0x0000FF;
    frame.dc = &dc;
    frame.reference = &dc;
    frame.x = 0;
    frame.y = -100;
    frame.client = frame.stripA = frame.stripB = {0, 0, 200, 100};
}

std::int32_t RenderRig::AddLayer(std::string_view code, std::int32_t layType, std::int32_t index, double GX, double GY) {
    EXPECT_TRUE(store.DigMemAlloc2(code, kMesh, layType, "", index, GX, GY));
    const DigIndex made = store.FindBlock(code, kMesh);
    EXPECT_EQ(made.block, made.layer);
    Block(made.block).inView = 1;
    return made.layer;
}

void RenderRig::AddItem(std::string_view code, Coordinates coordinates, std::int32_t lineTag) {
    const DigIndex at = store.FindBlock(code, kMesh);
    const std::int32_t datID = store.Block(at.block).datCnt + 1;
    std::vector<DigPnt> pnts;
    for (const auto& [x, y] : coordinates) pnts.push_back({x, y, 0});
    EXPECT_TRUE(store.AddDigDat(code, kMesh, datID, lineTag));
    if (!pnts.empty()) {
        EXPECT_TRUE(store.SetDigDatPnts(code, kMesh, datID, pnts));
    }
    DigDat& dat = Item(at.block, static_cast<std::size_t>(datID - 1));
    dat.clipFlg = 1;
    dat.drawnFlg = kUntouched;
}

SubLayDef& RenderRig::AddSubLayer(std::int32_t layer, std::int32_t subLayNo) {
    GrowArray<SubLayDef>& subLays = Layer(layer).subLays;
    SubLayDef def;
    def.subLayNo = subLayNo;
    def.dspFlg = 1;
    EXPECT_TRUE(subLays.PushBack(std::move(def)));
    Layer(layer).subLayCnt = static_cast<std::int32_t>(subLays.size());
    return subLays[subLays.size() - 1];
}

LineTypeDef& RenderRig::AddLineType(std::int32_t id, std::int32_t kind, std::initializer_list<std::int32_t> list_) {
    LineTypeDef def;
    def.ltId = id;
    def.ltKind = kind;
    def.ltCnt = static_cast<std::int32_t>(list_.size());
    for (const std::int32_t value : list_) EXPECT_TRUE(def.ltList.PushBack(value));
    EXPECT_TRUE(store.lineTypes.PushBack(std::move(def)));
    return store.lineTypes[store.lineTypes.size() - 1];
}

DigIndex& RenderRig::Slot(std::size_t pos) { return const_cast<DigIndex&>(store.Index()[pos]); }

std::vector<std::string> RenderRig::Verbs() { return Verbs(""); }

std::vector<std::string> RenderRig::Verbs(std::string_view verb) {
    std::vector<std::string> lines;
    for (const std::string& line : list->Lines()) {
        const std::string told = line.substr(line.find(' ') + 1);
        if (told.starts_with(verb)) lines.push_back(told);
    }
    list->Clear();
    return lines;
}

std::vector<std::string> RenderRig::DrawLines(std::int32_t block, bool honourClip) {
    DrawLineBlock(store, frame, block, block, honourClip, scratch);
    return Verbs();
}

std::vector<std::string> RenderRig::DrawPolygons(std::int32_t block, bool honourClip) {
    DrawPolygonBlock(store, frame, block, block, honourClip, scratch);
    return Verbs();
}

}  // namespace orvane
