#include "hosts/viewer/layer_presets.h"

#include <QCoreApplication>
#include <array>

namespace orvane {

namespace {

// Blue, green, red.
constexpr std::array<Rgb, 8> kCalm{0xC8E6C8, 0xE6D2BE, 0xBEDCF0, 0xDCC8E6, 0xD2E6DC, 0xC8D2F0, 0xE6E6BE, 0xD7D7D7};
constexpr std::array<Rgb, 8> kStrong{0x3C3CD2, 0xB45A1E, 0x3C9628, 0x1E82E6, 0x96329B, 0x8C8C14, 0x5A46A0, 0x505050};
constexpr Rgb kDarkGrey = 0x505050;
constexpr Rgb kLightGrey = 0xE1E1E1;

bool IsClosed(std::int32_t layType) { return layType == kLayPolygon || layType == kLayCircle || layType == kLayEllipse; }

template <class Edit>
std::vector<LayerChange> ForAll(const CDigMem& store, Edit edit) {
    std::vector<LayerChange> changes;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        LayerChange change = Unchanged(layer);
        edit(change.after, layer.layType, static_cast<std::size_t>(i));
        changes.push_back(std::move(change));
    }
    return changes;
}

std::vector<LayerChange> Calm(const CDigMem& store) {
    return ForAll(store, [](LayerState& state, std::int32_t layType, std::size_t nth) {
        const bool closed = IsClosed(layType);
        state.color = closed ? kCalm[nth % kCalm.size()] : kStrong[nth % kStrong.size()];
        state.color2 = kDarkGrey;
        state.noOutline = false;
        state.lineSize = 1;
        state.covers = true;
        state.pgnType = 0;
    });
}

std::vector<LayerChange> Strong(const CDigMem& store) {
    return ForAll(store, [](LayerState& state, std::int32_t layType, std::size_t nth) {
        state.color = kStrong[nth % kStrong.size()];
        state.color2 = 0;
        state.noOutline = false;
        state.lineSize = layType == kLayLine ? 2 : 1;
        state.covers = true;
        state.pgnType = 0;
    });
}

std::vector<LayerChange> Outlines(const CDigMem& store) {
    constexpr std::int32_t kHollow = 7;
    return ForAll(store, [](LayerState& state, std::int32_t layType, std::size_t nth) {
        state.color = kStrong[nth % kStrong.size()];
        state.color2 = state.color;
        state.noOutline = false;
        state.lineSize = 1;
        if (layType == kLayPolygon) state.pgnType = kHollow;
    });
}

std::vector<LayerChange> Grey(const CDigMem& store) {
    return ForAll(store, [](LayerState& state, std::int32_t layType, std::size_t) {
        state.color = IsClosed(layType) ? kLightGrey : kDarkGrey;
        state.color2 = kDarkGrey;
        state.noOutline = false;
        state.lineSize = 1;
        state.pgnType = 0;
    });
}

std::vector<LayerChange> Hatched(const CDigMem& store) {
    return ForAll(store, [](LayerState& state, std::int32_t layType, std::size_t nth) {
        state.color = kStrong[nth % kStrong.size()];
        state.color2 = kDarkGrey;
        state.noOutline = false;
        if (layType == kLayPolygon) state.pgnType = static_cast<std::int32_t>(1 + nth % 6);
    });
}

}  // namespace

std::vector<LayerPreset> LayerPresets() {
    const auto name = [](const char* text) { return QCoreApplication::translate("LayerPresets", text); };
    return {{name(QT_TRANSLATE_NOOP("LayerPresets", "Calm colours")), Calm},
            {name(QT_TRANSLATE_NOOP("LayerPresets", "Strong colours")), Strong},
            {name(QT_TRANSLATE_NOOP("LayerPresets", "Hatched areas")), Hatched},
            {name(QT_TRANSLATE_NOOP("LayerPresets", "Outlines only")), Outlines},
            {name(QT_TRANSLATE_NOOP("LayerPresets", "Grey, as a background")), Grey}};
}

}  // namespace orvane
