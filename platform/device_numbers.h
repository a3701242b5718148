// The numbers of a device, as a context tells them. They start as those of the off-screen desktop.
#pragma once

#include <cstdint>

#include "platform/gdi_constants.h"

namespace orvane {

struct DeviceNumbers {
    std::int32_t technology = 1;  ///< 1 is a raster display
    std::int32_t horzSize_mm = 508;
    std::int32_t vertSize_mm = 286;
    std::int32_t horzRes_px = 1920;
    std::int32_t vertRes_px = 1080;
    std::int32_t logPixelsX_dpi = 96;
    std::int32_t logPixelsY_dpi = 96;

    /// 0 for a number that is not kept.
    std::int32_t Get(DeviceCap index) const {
        switch (index) {
            case DeviceCap::Technology:
                return technology;
            case DeviceCap::HorzSize:
                return horzSize_mm;
            case DeviceCap::VertSize:
                return vertSize_mm;
            case DeviceCap::HorzRes:
                return horzRes_px;
            case DeviceCap::VertRes:
                return vertRes_px;
            case DeviceCap::LogPixelsX:
                return logPixelsX_dpi;
            case DeviceCap::LogPixelsY:
                return logPixelsY_dpi;
        }
        return 0;
    }

    friend bool operator==(const DeviceNumbers&, const DeviceNumbers&) = default;
};

}  // namespace orvane
