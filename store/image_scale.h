// How far the images of point layers stretch with the map. Drawing and picking share the rule.
#pragma once

#include "store/records.h"

namespace orvane {

/// The factor on an image's sizes: the pixels of one map unit, held between the look's two bounds. The upper bound is asked
/// first, so it wins where the two are crossed.
inline double ImageScale(const ImageLook& look, double pixPerUnit) {
    if (pixPerUnit > look.imgMaxScl) return look.imgMaxScl;
    if (pixPerUnit < look.imgMinScl) return look.imgMinScl;
    return pixPerUnit;
}

}  // namespace orvane
