#include "hosts/viewer/image_placing.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/key_cross.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

ImageView::ImageView(QImage image) : image_(std::move(image)), at_(image_.rect().center()) {
    setMinimumSize(200, 150);
    setCursor(Qt::CrossCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("The image"));
    setToolTip(tr("The arrows move the cross by a pixel, with Shift further; Space picks."));
}

QRectF ImageView::Frame() const {
    const QSizeF fitted = QSizeF(image_.size()).scaled(size(), Qt::KeepAspectRatio);
    return {QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted};
}

QPointF ImageView::PlaceOf(QPoint pixel) const {
    const QRectF frame = Frame();
    return {frame.left() + (pixel.x() + 0.5) * frame.width() / image_.width(),
            frame.top() + (pixel.y() + 0.5) * frame.height() / image_.height()};
}

void ImageView::Mark(std::size_t which, QPoint pixel) {
    marks_[which] = pixel;
    update();
}

void ImageView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(Frame(), image_);
    painter.setPen(QPen(Qt::red, 2));
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        if (!marks_[i]) continue;
        const QPointF at = PlaceOf(*marks_[i]);
        painter.drawLine(at - QPointF(8, 0), at + QPointF(8, 0));
        painter.drawLine(at - QPointF(0, 8), at + QPointF(0, 8));
        painter.drawText(at + QPointF(6, -6), QString::number(i + 1));
    }
    if (hasFocus()) DrawCross(painter, PlaceOf(at_));
}

void ImageView::mousePressEvent(QMouseEvent* event) {
    const QRectF frame = Frame();
    const QPoint pixel(static_cast<int>((event->position().x() - frame.left()) / frame.width() * image_.width()),
                       static_cast<int>((event->position().y() - frame.top()) / frame.height() * image_.height()));
    if (event->button() != Qt::LeftButton || !image_.rect().contains(pixel)) return;
    at_ = pixel;
    emit Picked(pixel);
}

void ImageView::keyPressEvent(QKeyEvent* event) {
    const int part = (std::max)(image_.width() / 20, 1);
    const QPoint step = StepOfArrow(event->key()) * (event->modifiers().testFlag(Qt::ShiftModifier) ? part : 1);
    if (!step.isNull()) {
        at_.setX(std::clamp(at_.x() + step.x(), 0, image_.width() - 1));
        at_.setY(std::clamp(at_.y() + step.y(), 0, image_.height() - 1));
        update();
    } else if (event->key() == Qt::Key_Space || IsEnterKey(event->key())) {
        emit Picked(at_);
    } else {
        QWidget::keyPressEvent(event);
    }
}

ImagePlacing::ImagePlacing(const ImagePreview& image, ShapeTool& shapes, Done done, QWidget* parent)
    : QDialog(parent, Qt::Tool),
      image_(image),
      shapes_(shapes),
      done_(std::move(done)),
      view_(new ImageView(image.picture)),
      words_(new QLabel) {
    setObjectName("placing");
    view_->setObjectName("image");
    setWindowTitle(tr("Place the image"));
    setAttribute(Qt::WA_DeleteOnClose);
    words_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(words_);
    column->addWidget(view_, 1);
    connect(view_, &ImageView::Picked, this, &ImagePlacing::TakePixel);
    connect(this, &QDialog::finished, this, [this] {
        if (std::exchange(wantsPlace_, false)) shapes_.Cancel();
    });
    // The click on the map can be given up there, or another shape be begun: then the point is picked anew.
    connect(&shapes_, &ShapeTool::Changed, this, [this] {
        if (shapes_.IsRunning() || !std::exchange(wantsPlace_, false)) return;
        ShowNext();
        // Not at once: another shape or a tool that is about to start has the keyboard then.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!wantsPlace_ && shapes_.IsMapFree()) WakeImage();
            },
            Qt::QueuedConnection);
    });
    view_->setFocus();
    ShowNext();
}

void ImagePlacing::WakeImage() {
    activateWindow();
    view_->setFocus();
}

void ImagePlacing::ShowNext() {
    words_->setText(
        wantsPlace_ ? tr("Point %1: now click the same place on the map.").arg(at_ + 1)
                    : tr("Point %1: click a place in the image that you know on the map, far from the other one.").arg(at_ + 1));
}

void ImagePlacing::TakePixel(QPoint pixel) {
    shapes_.Cancel();  // first, because the end of a click that still waits is heard above
    points_[at_].pixel = image_.PixelOf(pixel);
    view_->Mark(at_, pixel);
    wantsPlace_ = true;
    ShowNext();
    // The window may be closed before the click.
    shapes_.Start(1, [self = QPointer<ImagePlacing>(this)](const std::vector<QPointF>& points) {
        if (self && !points.empty()) self->TakePlace(points.front());
    });
    parentWidget()->activateWindow();
}

void ImagePlacing::TakePlace(QPointF place) {
    points_[at_].place = place;
    wantsPlace_ = false;
    if (++at_ < points_.size()) {
        WakeImage();
        return ShowNext();
    }
    const Done done = done_;
    const std::array<ImagePoint, 2> points = points_;
    close();
    done(points);
}

namespace {

ImagePreview ReadPreview(QWidget& window, const QString& path) {
    WorkProgress progress(window, ImagePanel::tr("Reading the image…"));
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);  // the first part of a large image can take seconds
    ImagePreview image = PreviewOf(path, progress.Teller());
    QGuiApplication::restoreOverrideCursor();
    return image;
}

}  // namespace

void ImagePanel::AskPlace() {
    if (WorkProgress::IsRunning()) return;
    const int row = list_->currentRow();
    if (!IsRow(row)) {
        QMessageBox::information(window(), "ORVANE4", tr("Choose an image of the list first, or add one."));
        return;
    }
    StopPlacing();
    const int id = images_[SlotOf(row)].id;
    const QString path = images_[SlotOf(row)].path;
    const ImagePreview image = ReadPreview(*map_.window(), path);
    if (image.picture.isNull() && image.why.isEmpty()) return;  // the operator gave it up
    if (image.picture.isNull()) {
        QMessageBox::warning(window(), "ORVANE4",
                             tr("%1 cannot be shown to pick places in: %2.\nLook whether the file is there and whole, or place "
                                "a smaller copy of it.")
                                 .arg(path, image.why));
        return;
    }
    auto* placing = new ImagePlacing(
        image, shapes_,
        [this, id](const std::array<ImagePoint, 2>& points) {
            if (!Place(RowOf(id), points)) {
                QMessageBox::warning(window(), "ORVANE4",
                                     tr("The two points are one. Place the image again with two that lie apart."));
            }
        },
        window());
    placing_ = placing;
    placing->show();
    placing->activateWindow();
}

}  // namespace orvane
