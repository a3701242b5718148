#include <cmath>

#include "analysis/geometry/plane.h"
#include "select/pick_figure.h"
#include "select/top_down.h"

namespace orvane {

namespace {

/// The search over the vertices of one item after the other.
class NearestVertex {
public:
    NearestVertex(double x, double y) : x_(x), y_(y) {}

    void Look(const DigBlock& block, const DigDat& dat) {
        for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
            const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
            const double x = pnt.x + block.GX;
            const double y = pnt.y + block.GY;
            // A vector is never shorter than its longer side, so most vertices need no length.
            if (std::fabs(x - x_) >= distance_ || std::fabs(y - y_) >= distance_) continue;
            const double distance = Pythag(x - x_, y - y_);
            if (!(distance < distance_)) continue;
            distance_ = distance;
            best_ = NearDatVertex{dat.datID, i, block.meshNo, x, y};
        }
    }
    const std::optional<NearDatVertex>& Best() const { return best_; }

private:
    double x_, y_;
    double distance_ = 10000.0;
    std::optional<NearDatVertex> best_;
};

}  // namespace

std::optional<NearDatVertex> NearDataPoint(CDigMem& store, double x, double y) {
    if (!store.InitDone()) return std::nullopt;
    NearestVertex nearest(x, y);
    for (const DigIndex& slot : TopDown(store.Index())) {
        const DigBlock& block = store.Block(slot.block);
        if (store.Layer(slot.layer).dspFlg == 0 && block.inView != 1) continue;
        for (const DigDat& dat : block.dats) {
            if (dat.drawnFlg == 1) nearest.Look(block, dat);
        }
    }
    return nearest.Best();
}

}  // namespace orvane
