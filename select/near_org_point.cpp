#include "select/near_org_point.h"

#include "analysis/geometry/plane.h"

namespace orvane {

namespace {

constexpr double kReach = 10000.0;

double Distance(const OrgDat& figure, std::int32_t index, double x, double y) {
    const DigPnt pnt = index >= 0 && index < figure.pntCnt ? figure.pnts[static_cast<std::size_t>(index)] : DigPnt{};
    return Pythag(pnt.x - x, pnt.y - y);
}

std::int32_t NearerNeighbour(const OrgDat& figure, std::int32_t index, double x, double y) {
    const std::int32_t before = index == 0 ? figure.pntCnt : index - 1;
    const std::int32_t after = index + 1;
    return Distance(figure, before, x, y) >= Distance(figure, after, x, y) ? after : before;
}

}  // namespace

std::optional<NearOrgVertex> NearOrgPoint(const CDigMem& store, double x, double y, bool activeOnly,
                                          const std::optional<OrgVertex>& dragged) {
    std::optional<NearOrgVertex> best;
    double bestDistance = kReach;
    for (const OrgDat& figure : store.OrgDats()) {
        if (activeOnly && figure.active == 0) continue;
        for (std::int32_t i = 0; i < figure.pntCnt; ++i) {
            if (dragged && dragged->ID == figure.ID && dragged->index == i) continue;
            const double distance = Distance(figure, i, x, y);
            if (!(distance < bestDistance)) continue;
            bestDistance = distance;
            const DigPnt& pnt = figure.pnts[static_cast<std::size_t>(i)];
            best = NearOrgVertex{{figure.ID, i}, NearerNeighbour(figure, i, x, y), pnt.x, pnt.y};
        }
    }
    return best;
}

}  // namespace orvane
