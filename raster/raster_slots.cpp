#include "raster/raster_slots.h"

#include <algorithm>
#include <utility>

#include "platform/rect.h"
#include "platform/trace.h"
#include "store/strips.h"

namespace orvane {

namespace {

constexpr std::string_view kNoRoom = "ERROR 6410 : Raster area allocation error!";
// "OV4Raster.DLL" and that it be registered, in code page 932.
constexpr std::string_view kNoServer =
    "OV4Raster.DLL "
    "\x82\xF0\x83\x8C\x83\x57\x83\x58\x83\x67\x83\x8A\x93\x6F\x98\x5E\x82\xB5\x82\xC4\x89\xBA\x82\xB3\x82\xA2\x81\x42";
constexpr std::string_view kTitle = "ORVANE4";

RasterPart PartOf(const ViewParams& view, const FrameTarget& frame, const Rect& strip) {
    RasterPart part;
    part.X1 = view.PixToWorldF(strip.left) + frame.x;
    part.X2 = view.PixToWorldF(strip.right) + frame.x;
    part.Y1 = -(view.PixToWorldF(strip.top) + frame.y);
    part.Y2 = -(view.PixToWorldF(strip.bottom) + frame.y);
    part.pixels = strip;
    part.PendX = frame.pendX;
    part.PendY = frame.pendY;
    return part;
}

void DrawStrip(RasterServer& server, const ViewParams& view, const FrameTarget& frame, const Rect& strip) {
    if (!RectsMeet(frame.client, strip) && !RectNearEqual(ToBox(frame.client), ToBox(strip))) return;
    if (!server.SrvDraw(*frame.dc, PartOf(view, frame, strip), 1)) Trace("RastDraw Error!!!\n");
}

}  // namespace

std::size_t RasterSlots::Position(std::int32_t index) const {
    const auto at = std::lower_bound(slots_.begin(), slots_.end(), index,
                                     [](const RastSlot& slot, std::int32_t wanted) { return slot.index < wanted; });
    return static_cast<std::size_t>(at - slots_.begin());
}

RastSlot* RasterSlots::Find(std::int32_t index) {
    const std::size_t at = Position(index);
    return at < slots_.size() && slots_[at].index == index ? &slots_[at] : nullptr;
}

std::shared_ptr<RasterServer> RasterSlots::ServerOf(std::int32_t index) {
    const RastSlot* slot = Find(index);
    return slot == nullptr ? nullptr : slot->rastDisp;
}

template <class Work>
void RasterSlots::ForEachServer(Work work) {
    const std::uint32_t table = tableNo_;
    // A call may load into another slot, so the next one is looked for by its index.
    for (std::size_t at = 0; at < slots_.size();) {
        const std::int32_t index = slots_[at].index;
        const std::shared_ptr<RasterServer> server = slots_[at].rastDisp;
        const std::int32_t dispFlg = slots_[at].dispFlg;
        if (server != nullptr) work(*server, dispFlg);
        if (tableNo_ != table) return;
        at = Position(index);
        while (at < slots_.size() && slots_[at].index <= index) ++at;
    }
}

bool RasterSlots::RastInit(std::int32_t count, Window& window) {
    if (rcnt_ > 0) return false;
    if (count < 0) {
        window.ShowMessage(kNoRoom, kTitle, MessageIcon::None);
        return false;
    }
    Forget();
    rcnt_ = count;
    rastOn_ = true;
    return true;
}

bool RasterSlots::RastTerm() {
    if (rcnt_ == 0) return false;
    const std::uint32_t table = tableNo_;
    ForEachServer([](RasterServer& server, std::int32_t) {
        if (server.SrvIsReady()) server.SrvClose();
    });
    if (tableNo_ == table) Forget();
    return true;
}

void RasterSlots::Forget() {
    ++tableNo_;
    rcnt_ = 0;
    rastOn_ = false;
    // What a server does at its end finds the table gone.
    const GrowArray<RastSlot> ending = std::exchange(slots_, GrowArray<RastSlot>());
}

RastSlot* RasterSlots::Make(std::int32_t index) {
    if (RastSlot* slot = Find(index)) return slot;
    const std::size_t at = Position(index);
    if (!slots_.PushBack(RastSlot{index, 0, nullptr})) return nullptr;
    const auto first = slots_.begin() + static_cast<std::ptrdiff_t>(at);
    std::rotate(first, slots_.end() - 1, slots_.end());
    return &slots_[at];
}

bool RasterSlots::MakeServer(std::int32_t index, Window& window) {
    const std::uint32_t table = tableNo_;
    const std::shared_ptr<RasterServer> server(maker_ ? maker_() : nullptr);
    if (server == nullptr) {
        window.ShowMessage(kNoServer, kTitle, MessageIcon::None);
        return false;
    }
    if (tableNo_ != table || ServerOf(index) != nullptr) return false;  // the making ran host code
    RastSlot* const slot = Make(index);
    if (slot == nullptr) {
        window.ShowMessage(kNoRoom, kTitle, MessageIcon::None);
        return false;
    }
    slot->rastDisp = server;
    return true;
}

bool RasterSlots::RastLoad(std::int32_t index, std::string_view filename, Window& window) {
    if (!IsValid(index)) return false;
    if (ServerOf(index) == nullptr && !MakeServer(index, window)) return false;
    const std::uint32_t table = tableNo_;
    const std::shared_ptr<RasterServer> server = ServerOf(index);
    if (!server->SrvIsReady() && !server->SrvInit()) return false;
    const bool loaded = server->SrvLoad(filename);
    RastSlot* slot = tableNo_ == table ? Find(index) : nullptr;
    if (slot != nullptr) slot->dispFlg = 1;
    return loaded;
}

bool RasterSlots::RastClose(std::int32_t index) {
    if (!IsValid(index)) return false;
    if (const std::shared_ptr<RasterServer> server = ServerOf(index)) server->SrvClose();
    return true;
}

// An empty slot keeps the switch too: a server that then cannot be initialised is drawn by it.
bool RasterSlots::RastSetDispFlg(std::int32_t index, bool disp) {
    if (!IsValid(index)) return false;
    if (RastSlot* slot = disp ? Make(index) : Find(index)) slot->dispFlg = disp ? 1 : 0;
    return true;
}

bool RasterSlots::RastSetCP1(std::int32_t index, std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) {
    if (!IsValid(index)) return false;
    if (const std::shared_ptr<RasterServer> server = ServerOf(index)) server->SrvSetCP1(bmpX, bmpY, GeoX, GeoY);
    return true;
}

bool RasterSlots::RastSetCP2(std::int32_t index, std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) {
    if (!IsValid(index)) return false;
    if (const std::shared_ptr<RasterServer> server = ServerOf(index)) server->SrvSetCP2(bmpX, bmpY, GeoX, GeoY);
    return true;
}

bool RasterSlots::RastCalcCorrect2(std::int32_t index) {
    if (!IsValid(index)) return false;
    if (const std::shared_ptr<RasterServer> server = ServerOf(index)) server->SrvCalcCorrect2();
    return true;
}

bool RasterSlots::RastImageSize(std::int32_t index, std::int32_t& width_px, std::int32_t& height_px) {
    if (!IsValid(index)) return false;
    const std::shared_ptr<RasterServer> server = ServerOf(index);
    width_px = server == nullptr ? 0 : server->SrvImgWidth();
    height_px = server == nullptr ? 0 : server->SrvImgHeight();
    return true;
}

void RasterSlots::RastRotateAll(double angle_deg) {
    ForEachServer([angle_deg](RasterServer& server, std::int32_t) {
        if (server.SrvIsReady()) server.SrvRotate(angle_deg);
    });
}

void RasterSlots::RastDraw(const ViewParams& view, const FrameTarget& frame) {
    if (!rastOn_) return;
    const Rect first = NormalizeRect(frame.stripA);
    const Rect second = NormalizeRect(frame.stripB);
    ForEachServer([&](RasterServer& server, std::int32_t dispFlg) {
        if (dispFlg != 1) return;
        DrawStrip(server, view, frame, first);
        if (first != second) DrawStrip(server, view, frame, second);
    });
}

}  // namespace orvane
