// The window in which pixels of an image are picked.
#pragma once

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <array>
#include <functional>
#include <optional>

#include "hosts/viewer/image_panel.h"
#include "hosts/viewer/image_preview.h"

namespace orvane {

/// A pixel is picked by a click, or by a cross that the arrows move by a pixel of the image, with Shift by a twentieth of its
/// width; Space and Enter pick there.
class ImageView : public QWidget {
    Q_OBJECT

public:
    explicit ImageView(QImage image);
    void Mark(std::size_t which, QPoint pixel);
    QSize sizeHint() const override { return {560, 420}; }

signals:
    void Picked(QPoint pixel);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRectF Frame() const;
    /// The middle of a pixel of the image in the widget.
    QPointF PlaceOf(QPoint pixel) const;

    QImage image_;
    QPoint at_;  ///< the pixel of the cross
    std::array<std::optional<QPoint>, 2> marks_;
};

/// First a pixel, then its place, twice. It stays open beside the map.
class ImagePlacing : public QDialog {
    Q_OBJECT

public:
    using Done = std::function<void(const std::array<ImagePoint, 2>& points)>;
    ImagePlacing(const ImagePreview& image, ShapeTool& shapes, Done done, QWidget* parent);
    ImageView& View() { return *view_; }

private:
    void TakePixel(QPoint pixel);
    void TakePlace(QPointF place);
    void ShowNext();
    /// Gives the keyboard to the image, in which the next point is picked.
    void WakeImage();

    ImagePreview image_;
    ShapeTool& shapes_;
    Done done_;
    ImageView* view_;
    QLabel* words_;
    std::array<ImagePoint, 2> points_;
    std::size_t at_ = 0;
    bool wantsPlace_ = false;
};

}  // namespace orvane
