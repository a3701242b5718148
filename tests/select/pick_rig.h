// A store whose map units are the pixels of the screen, y to the north; all of its items count as drawn.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "select/pick.h"
#include "store/cdigmem.h"
#include "store/dat_lookup.h"

namespace orvane {

class PickRig {
public:
    static constexpr std::int32_t kMesh = 3;

    PickRig() {
        store.Init();
        store.view.Zoom = 10000;
        store.view.DotPerM = 10000;
        store.view.ScaleX = store.view.ScaleY = 1;
        store.view.DpiRatio = 1;
        place.client = {0, 0, 1000, 800};
    }

    /// A layer that every search looks at, with one block at the origin. The layer with the lowest key is on top.
    LayerDef& AddLayer(std::string_view code, std::int32_t layType, std::int32_t index, double GX = 0, double GY = 0) {
        EXPECT_TRUE(store.DigMemAlloc2(code, kMesh, layType, "", index, GX, GY));
        LayerDef& layer = Layer(code);
        layer.dspFlg = layer.actFlg = layer.editFlg = 1;
        Block(code).inView = 1;
        return layer;
    }
    LayerDef& Layer(std::string_view code) { return store.MutableLayer(store.FindLayDef(code)); }
    DigBlock& Block(std::string_view code) { return store.MutableBlock(store.FindBlock(code, kMesh).block); }

    /// An item that the last frame drew, numbered from 1 in its block.
    DigDat& AddItem(std::string_view code, std::vector<DigPnt> pnts) {
        DigBlock& block = Block(code);
        const std::int32_t ID = block.datCnt + 1;
        EXPECT_TRUE(store.AddDigDat(code, kMesh, ID, 0));
        if (!pnts.empty()) {
            EXPECT_TRUE(store.SetDigDatPnts(code, kMesh, ID, pnts));
        }
        DigDat& dat = Item(code, ID);
        dat.drawnFlg = dat.clipFlg = 1;
        return dat;
    }
    DigDat& Item(std::string_view code, std::int32_t ID) { return Block(code).dats[static_cast<std::size_t>(ID) - 1]; }
    bool Active(std::string_view code, std::int32_t ID) { return Item(code, ID).active == 1; }

    /// Points by pixels: x to the right, y down.
    static DigPnt At(double x_px, double y_px, double z = 0) { return {x_px, -y_px, z}; }
    /// A closed rectangle of pixels.
    static std::vector<DigPnt> BoxRing(double left, double top, double right, double bottom) {
        return {At(left, top), At(right, top), At(right, bottom), At(left, bottom), At(left, top)};
    }

    std::int32_t Click(std::int32_t x, std::int32_t y) { return SelectAtPoint(store, {x, y}, place, 0, false); }
    std::int32_t ShiftClick(std::int32_t x, std::int32_t y, std::int32_t cycle) {
        return SelectAtPoint(store, {x, y}, place, cycle, false);
    }
    std::int32_t CtrlClick(std::int32_t x, std::int32_t y) { return SelectAtPoint(store, {x, y}, place, 0, true); }
    std::int32_t Hint(std::int32_t x, std::int32_t y) { return PickForHint(store, {x, y}, place).datID; }
    /// Which pixels around (x, y) meet something, row by row from (x - reach, y - reach), '#' for a hit.
    std::vector<std::string> HitMap(std::int32_t x, std::int32_t y, std::int32_t reach) {
        std::vector<std::string> rows;
        for (std::int32_t row = y - reach; row <= y + reach; ++row) {
            rows.emplace_back();
            for (std::int32_t column = x - reach; column <= x + reach; ++column)
                rows.back() += Click(column, row) > 0 ? '#' : '.';
        }
        return rows;
    }

    CDigMem store;
    PickPlace place;
};

}  // namespace orvane
