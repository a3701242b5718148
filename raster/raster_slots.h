// The raster images of a control: a table of slots, each with a server of its own once an image was loaded into it.
//
// A server and a message box run host code, which may do anything to this table, also make it anew. So each call holds the server
// that it talks to, and looks the slot up again afterwards.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/grow_array.h"
#include "platform/window.h"
#include "raster/raster_server.h"
#include "store/frame_target.h"
#include "store/view_params.h"

namespace orvane {

struct RastSlot {
    std::int32_t index = 0;
    std::int32_t dispFlg = 0;  ///< 1 draws the image
    std::shared_ptr<RasterServer> rastDisp;
};

class RasterSlots {
public:
    /// Who makes the servers from now on; without one no image can be loaded.
    void SetMaker(RasterServerMaker maker) { maker_ = std::move(maker); }

    std::int32_t Count() const { return rcnt_; }
    bool IsOn() const { return rastOn_; }

    /// Makes a table of `count` empty slots. False while one with slots stands, and for a negative count, with a message.
    bool RastInit(std::int32_t count, Window& window);
    /// Closes all images and gives the table up. False when there are no slots.
    bool RastTerm();
    /// Gives the table up without a word to the servers.
    void Forget();
    /// Loads an image into a slot, whose server is made where it has none, and shows it. False for a bad index, without a server
    /// (with a message), and when the server refuses.
    bool RastLoad(std::int32_t index, std::string_view filename, Window& window);
    // For a bad index each of these answers false and does nothing. A server's own answer does not count.
    bool RastClose(std::int32_t index);
    bool RastSetDispFlg(std::int32_t index, bool disp);
    bool RastSetCP1(std::int32_t index, std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY);
    bool RastSetCP2(std::int32_t index, std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY);
    bool RastCalcCorrect2(std::int32_t index);
    /// An empty slot has an image of 0 by 0.
    bool RastImageSize(std::int32_t index, std::int32_t& width_px, std::int32_t& height_px);
    /// Tells the rotation to every image that is ready.
    void RastRotateAll(double angle_deg);
    /// Paints the shown images in the order of the slots, each into both strips, or once where these are one.
    void RastDraw(const ViewParams& view, const FrameTarget& frame);

private:
    bool IsValid(std::int32_t index) const { return index >= 0 && index < rcnt_; }
    std::size_t Position(std::int32_t index) const;
    RastSlot* Find(std::int32_t index);
    std::shared_ptr<RasterServer> ServerOf(std::int32_t index);
    /// The slot, made where it is not kept yet; null without memory.
    RastSlot* Make(std::int32_t index);
    bool MakeServer(std::int32_t index, Window& window);
    /// Calls `work(server)` for each slot with a server in the order of the slots, until the table is another one.
    template <class Work>
    void ForEachServer(Work work);

    RasterServerMaker maker_;
    // Only slots that ever had a server or were switched on, by ascending index: the number that the host asks for is no reason
    // to take memory.
    GrowArray<RastSlot> slots_;
    std::int32_t rcnt_ = 0;
    bool rastOn_ = false;
    std::uint32_t tableNo_ = 0;  // of the table that stands
};

}  // namespace orvane
