// An empty store after Init, and short ways to fill it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "store/cdigmem.h"

namespace orvane {

class StoreTest : public ::testing::Test {
protected:
    StoreTest() { store.Init(); }
    ~StoreTest() override { ArrayFaults::Clear(); }

    /// A block with its origin at (0, 0).
    void MakeBlock(std::string_view code, std::int32_t meshNo, std::int32_t layType = kLayLine, std::int32_t index = 0) {
        ASSERT_TRUE(store.DigMemAlloc2(code, meshNo, layType, "", index, 0, 0));
    }
    void AddItem(std::string_view code, std::int32_t meshNo, std::int32_t datID, const std::vector<DigPnt>& pnts = {}) {
        ASSERT_TRUE(store.AddDigDat(code, meshNo, datID, 0));
        for (const DigPnt& pnt : pnts) ASSERT_TRUE(store.AddDigDatPnt(code, meshNo, datID, pnt));
    }
    const DigBlock& BlockOf(std::string_view code, std::int32_t meshNo) {
        return store.Block(store.FindBlock(code, meshNo).block);
    }
    const LayerDef& LayerOf(std::string_view code) { return store.Layer(store.FindLayDef(code)); }
    const DigDat& Item(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
        return *store.FindDat(code, meshNo, datID);
    }
    /// The item at a position, for blocks whose IDs repeat.
    const DigDat& ItemAt(std::string_view code, std::int32_t meshNo, std::size_t pos) { return BlockOf(code, meshNo).dats[pos]; }
    /// Codes of the index's layers with their mesh numbers, in order.
    std::vector<std::string> IndexNames() {
        std::vector<std::string> names;
        for (const DigIndex& entry : store.Index()) {
            names.push_back(std::string(store.Layer(entry.layer).code.View()) + std::to_string(store.Block(entry.block).meshNo));
        }
        return names;
    }
    std::vector<std::int32_t> ItemIDs(std::string_view code, std::int32_t meshNo) {
        std::vector<std::int32_t> ids;
        for (const DigDat& dat : BlockOf(code, meshNo).dats) ids.push_back(dat.datID);
        return ids;
    }

    CDigMem store;
};

using Names = std::vector<std::string>;

}  // namespace orvane
