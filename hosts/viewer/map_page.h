// A page of the map: drawn once, recorded, and performed again on paper, in a PDF or as a picture.
#pragma once

#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <functional>
#include <memory>

#include "hosts/qt/orvane_widget.h"
#include "platform/device_numbers.h"
#include "platform/record/verb_list.h"

namespace orvane {

/// What a page is to show.
struct PageSetup {
    QSize map_mm{190, 267};  ///< of the map on the page
    int dpi = 300;
    int zoom = 10000;  ///< scale denominator
    QPointF centre;    ///< map coordinates, y to the north
};

/// The recorded page with the picture that it made.
struct MapPage {
    std::shared_ptr<VerbList> verbs;
    std::int32_t context = 0;  ///< the number of the page in the list
    DeviceNumbers numbers;
    QImage picture;
    bool IsEmpty() const { return picture.isNull(); }
};

/// Draws the map by UserDcDrawEx on a device of the page's numbers. Empty when there is no memory for it. `drawn` is called when
/// the page is drawn, before the screen is drawn anew.
MapPage RecordPage(OrvaneWidget& map, const PageSetup& setup, const std::function<void()>& drawn = {});
/// Performs a page on a painter with one unit for a pixel of the page, as shapes where the painter can take them. The number of
/// images that had to stand in for shapes. `progress` is told the part that is done, 0 to 1; once it has answered false the page
/// stays as far as it came, and the answer is -1.
int PaintPage(OrvaneWidget& map, const MapPage& page, QPainter& painter, const std::function<bool(double)>& progress = {});

}  // namespace orvane
