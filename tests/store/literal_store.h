// A second store for comparison: tables of full size, linear walks, and the sort run after each make, exactly as the operations
// are described and with no regard to cost. It keeps what the index and the lookups depend on and nothing else.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "store/cdigmem.h"

namespace orvane {

class LiteralStore {
public:
    struct Layer {
        std::string code;
        std::int32_t layIndex = 0;
        std::int32_t layType = 0;
    };
    struct Block {
        std::int32_t blkState = 0;
        std::string code;
        std::int32_t meshNo = 0;
    };

    LiteralStore() : layers_(static_cast<std::size_t>(kMaxLayers)), digIndex_(static_cast<std::size_t>(kMaxDigIndex)) {}

    const std::vector<Layer>& Layers() const { return layers_; }
    const std::vector<Block>& Blocks() const { return blocks_; }

    /// Takes over the state of the other store.
    void CopyFrom(CDigMem& store) {
        for (std::int32_t i = 0; i < kMaxLayers; ++i) {
            const LayerDef& layer = store.Layer(i);
            layers_[Pos(i)] = {std::string(layer.code.View()), layer.layIndex, layer.layType};
        }
        blocks_.clear();
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
            const DigBlock& block = store.Block(i);
            blocks_.push_back({block.blkState, std::string(block.code.View()), block.meshNo});
        }
        const std::span<const DigIndex> index = store.Index();
        std::fill(digIndex_.begin(), digIndex_.end(), DigIndex{});
        std::copy(index.begin(), index.end(), digIndex_.begin());
    }

    std::int32_t FindLayDef(const std::string& code) const {
        for (std::int32_t i = 0; i < kMaxLayers && !layers_[Pos(i)].code.empty(); ++i) {
            if (layers_[Pos(i)].code == code) return i;
        }
        return -1;
    }

    std::int32_t FindDigIndex(const std::string& code, std::int32_t meshNo) const {
        for (std::int32_t i = 0; i < kMaxDigIndex; ++i) {
            const DigIndex& slot = digIndex_[Pos(i)];
            if (slot.block < 0 || slot.layer < 0) return -1;
            const std::string& layerCode = layers_[Pos(slot.layer)].code;
            if (blocks_[Pos(slot.block)].meshNo == meshNo && layerCode == code && !code.empty()) return i;
        }
        return -1;
    }

    std::vector<DigIndex> Index() const {
        std::vector<DigIndex> used;
        for (const DigIndex& slot : digIndex_) {
            if (slot.block < 0 || slot.layer < 0) break;
            used.push_back(slot);
        }
        return used;
    }

    void DelDigIndex(std::int32_t pos) {
        while (true) {
            if (pos >= kMaxDigIndex - 1) {
                digIndex_[Pos(pos)] = {-1, -1};
                return;
            }
            const DigIndex overwritten = digIndex_[Pos(pos)];
            digIndex_[Pos(pos)] = digIndex_[Pos(pos + 1)];
            if (overwritten.block < 0 || overwritten.layer < 0) return;
            ++pos;
        }
    }

    void SortDigIndex() {
        std::vector<std::pair<std::int32_t, std::int32_t>> keys;
        for (std::int32_t i = 0; i < kMaxLayers; ++i) {
            if (!layers_[Pos(i)].code.empty()) keys.emplace_back(layers_[Pos(i)].layIndex, i);
        }
        for (std::size_t i = 0; i < keys.size(); ++i) {
            for (std::size_t j = i + 1; j < keys.size(); ++j) {
                if (keys[i].first < keys[j].first) std::swap(keys[i], keys[j]);
            }
        }
        const std::vector<DigIndex> used = Index();
        std::vector<DigIndex> list;
        for (const auto& [key, layer] : keys) {
            for (const DigIndex& slot : used) {
                if (slot.layer == layer) list.push_back(slot);
            }
        }
        std::copy(list.begin(), list.end(), digIndex_.begin());
    }

    bool MakeLayer(const std::string& code, std::int32_t layType) {
        if (!TypeOk(layType)) return false;
        const std::int32_t pos = PlaceOfLayer(code);
        if (pos < 0 || (!layers_[Pos(pos)].code.empty())) return false;
        layers_[Pos(pos)] = {code, pos + 1, layType};
        return true;
    }

    bool MakeBlock(const std::string& code, std::int32_t meshNo, std::int32_t layType, std::int32_t index) {
        if (FindDigIndex(code, meshNo) >= 0) return false;
        const std::int32_t layer = PlaceOfLayer(code);
        if (layer < 0) return false;
        std::int32_t block = 0;
        while (block < static_cast<std::int32_t>(blocks_.size()) && blocks_[Pos(block)].blkState != -2) ++block;
        const bool isReused = block < static_cast<std::int32_t>(blocks_.size());
        if (!isReused) blocks_.emplace_back();
        blocks_[Pos(block)] = {1, code, meshNo};
        const bool isNew = layers_[Pos(layer)].code.empty();
        if (isNew && TypeOk(layType)) layers_[Pos(layer)] = {code, layer + 1, layType};
        if (!isNew && isReused) layers_[Pos(layer)].layType = layType;
        std::int32_t slot = 0;
        while (slot < kMaxDigIndex && digIndex_[Pos(slot)].block >= 0) ++slot;
        digIndex_[Pos(slot < kMaxDigIndex ? slot : 0)] = {block, layer};
        if (isNew) layers_[Pos(layer)].layIndex = index;
        SortDigIndex();
        return true;
    }

    bool SetLayIndex(const std::string& code, std::int32_t index) {
        const std::int32_t pos = FindLayDef(code);
        if (pos >= 0) layers_[Pos(pos)].layIndex = index;
        return pos >= 0;
    }

    bool DigMemDelete(const std::string& code, std::int32_t meshNo) {
        const std::int32_t pos = FindDigIndex(code, meshNo);
        if (pos >= 0) DeleteBlock(digIndex_[Pos(pos)].block);
        return pos >= 0;
    }

    template <class Which>
    std::int32_t DeleteWhere(Which which) {
        std::int32_t deleted = 0;
        for (std::int32_t i = 0; i < static_cast<std::int32_t>(blocks_.size()); ++i) {
            if (blocks_[Pos(i)].blkState < 0 || !which(blocks_[Pos(i)])) continue;
            DeleteBlock(i);
            ++deleted;
        }
        return deleted;
    }

private:
    static std::size_t Pos(std::int32_t i) { return static_cast<std::size_t>(i); }
    static bool TypeOk(std::int32_t layType) { return layType >= 1 && layType <= 10 && layType != 9; }

    /// The layer's position or the first unused record; -1 in a full table.
    std::int32_t PlaceOfLayer(const std::string& code) const {
        for (std::int32_t i = 0; i < kMaxLayers; ++i) {
            if (layers_[Pos(i)].code.empty() || layers_[Pos(i)].code == code) return i;
        }
        return -1;
    }

    void DeleteBlock(std::int32_t block) {
        const std::int32_t pos = FindDigIndex(blocks_[Pos(block)].code, blocks_[Pos(block)].meshNo);
        if (pos >= 0) DelDigIndex(pos);
        blocks_[Pos(block)] = {-2, "", 0};
    }

    std::vector<Layer> layers_;
    std::vector<Block> blocks_;
    std::vector<DigIndex> digIndex_;
};

}  // namespace orvane
