#include "control/frame_data.h"

#include <algorithm>
#include <cstring>

#include "geo/geo_conv.h"
#include "platform/to_int.h"
#include "platform/trace.h"
#include "store/item_bounds.h"

namespace orvane {
namespace {

class Carrier {
public:
    explicit Carrier(std::int32_t zone) : zone_(zone) {}

    /// East and north of the plane go to x and y. A place without a plane position stays.
    void Carry(double& x, double& y) const {
        const std::optional<PlaneXY> plane = conv_.MeshToPlane({x, y}, zone_);
        if (!plane) return;
        y = plane->x;
        x = plane->y;
    }
    void Carry(std::int32_t& x, std::int32_t& y) const {
        const std::optional<PlaneXY> plane = conv_.MeshToPlane({static_cast<double>(x), static_cast<double>(y)}, zone_);
        if (!plane) return;
        x = ToInt(plane->y);
        y = ToInt(plane->x);
    }
    void Carry(DigBlock& block) const {
        block.orgGX = block.GX;
        block.orgGY = block.GY;
        block.orgMinX = block.minX;
        block.orgMinY = block.minY;
        block.orgMaxX = block.maxX;
        block.orgMaxY = block.maxY;
        block.orgKept = true;
        if (block.GX != 0 || block.GY != 0) Carry(block.GX, block.GY);
        Carry(block.minX, block.minY);
        Carry(block.maxX, block.maxY);
        for (DigDat& dat : block.dats) Carry(dat);
    }

private:
    /// The copy of the points comes first: without it the item must stay as it is, or there would be no way back.
    static bool KeepPoints(DigDat& dat) {
        if (dat.pntCnt <= 0) {
            dat.orgPntCnt = 0;  // an older copy would come over points that are added from now on
            return true;
        }
        const auto pntCnt = static_cast<std::size_t>(dat.pntCnt);
        if (!dat.orgPnts.Resize(static_cast<std::size_t>(dat.orgPntCnt), pntCnt, false)) {
            dat.orgPnts.Free();  // an older copy, which would take later changes back
            dat.orgPntCnt = 0;
            return false;
        }
        std::memcpy(dat.orgPnts.Get(), dat.pnts.Get(), pntCnt * sizeof(DigPnt));
        dat.orgPntCnt = dat.pntCnt;
        return true;
    }

    void Carry(DigDat& dat) const {
        dat.orgKept = KeepPoints(dat);
        if (dat.str != nullptr) dat.str->orgKept = dat.orgKept;
        if (!dat.orgKept) return;
        dat.orgRect = dat.rect;
        Carry(dat.rect.left, dat.rect.top);
        Carry(dat.rect.right, dat.rect.bottom);
        if (DigStr* const str = dat.str.get()) {
            str->orgX = str->x;
            str->orgY = str->y;
            str->orgZ = str->z;
            Carry(str->x, str->y);
        }
        DigPnt* const pnts = dat.pnts.Change();
        for (std::int32_t i = 0; i < dat.pntCnt; ++i) Carry(pnts[i].x, pnts[i].y);  // z stays: no radius of a circle is carried
        CheckItemRect(dat);
    }

    GeoConv conv_;
    std::int32_t zone_;
};

void Restore(DigDat& dat) {
    if (dat.orgKept) dat.rect = dat.orgRect;
    if (DigStr* const str = dat.str.get(); str != nullptr && str->orgKept) {
        str->x = str->orgX;
        str->y = str->orgY;
        str->z = str->orgZ;
    }
    const std::int32_t kept = (std::min)(dat.pntCnt, dat.orgPntCnt);
    if (dat.orgPnts && kept > 0) {
        std::memcpy(dat.pnts.Change(), dat.orgPnts.Get(), static_cast<std::size_t>(kept) * sizeof(DigPnt));
    }
    CheckItemRect(dat);
}

void Restore(DigBlock& block) {
    if (block.orgKept) {
        block.GX = block.orgGX;
        block.GY = block.orgGY;
        block.minX = block.orgMinX;
        block.minY = block.orgMinY;
        block.maxX = block.orgMaxX;
        block.maxY = block.orgMaxY;
    }
    for (DigDat& dat : block.dats) Restore(dat);
}

}  // namespace

void DataToPlane(CDigMem& store, std::int32_t zone) {
    const Carrier carrier(zone);
    for (const DigIndex& entry : store.Index()) carrier.Carry(store.MutableBlock(entry.block));
    Trace("cnt=[%ld]\n");
}

void DataToMesh(CDigMem& store) {
    for (const DigIndex& entry : store.Index()) Restore(store.MutableBlock(entry.block));
}

}  // namespace orvane
