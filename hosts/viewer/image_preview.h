// A picture of an image that is small enough to show, whatever the size of the image itself.
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>
#include <QString>
#include <functional>

namespace orvane {

struct ImagePreview {
    QImage picture;  ///< null where the image cannot be shown
    QSize size;      ///< of the image itself, pixels
    QString why;     ///< it cannot be shown; empty with no picture where the reading was given up

    /// The pixel of the image in the middle of one of the picture.
    QPoint PixelOf(QPoint at) const;
};

/// The longest side that a picture has, pixels; an image that is no larger keeps its pixels.
inline constexpr int kMostPreview_px = 2000;

/// Reads the image as the map does, through a server of its own, so that what the map can show can be picked in. `progress` is
/// told the part that is read, 0 to 1; once it has answered false no more is read.
ImagePreview PreviewOf(const QString& path, const std::function<bool(double)>& progress = {});

}  // namespace orvane
