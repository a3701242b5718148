// Looks for all layers at once, so that a map that brings no colours can be read at the first glance.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "hosts/viewer/layer_state.h"

namespace orvane {

struct LayerPreset {
    QString name;
    std::function<std::vector<LayerChange>(const CDigMem& store)> make;
};

std::vector<LayerPreset> LayerPresets();

}  // namespace orvane
