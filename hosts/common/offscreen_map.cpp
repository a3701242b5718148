#include "hosts/common/offscreen_map.h"

#include <algorithm>

#include "hosts/common/automation.h"
#include "hosts/common/raster_library.h"

namespace orvane {

OffscreenMap::OffscreenMap(std::int32_t width_px, std::int32_t height_px)
    : window_(device_, width_px, height_px), ctrl_(COrvane4Ctrl::Create(window_, files_)) {
    ctrl_->rasters.SetMaker(RasterLibraryMaker());
    device_.SetBitmapFiles(std::make_shared<BitmapFiles>(files_));
    window_.desktopRect.right = std::max(window_.desktopRect.right, width_px);
    window_.desktopRect.bottom = std::max(window_.desktopRect.bottom, height_px);
    Automation(*ctrl_).Call("OrvInit");
    Paint();
}

void OffscreenMap::Paint() {
    const Rect client = window_.ClientRect();
    ctrl_->OnDraw(*window_.AcquireDC(), client, client);
}

const QImage& OffscreenMap::Image() const { return static_cast<const QtBitmap&>(*window_.ClientBitmap()).Image(); }

bool OffscreenMap::SavePng(const std::string& fileName) const { return Image().save(QString::fromUtf8(fileName.c_str()), "PNG"); }

}  // namespace orvane
