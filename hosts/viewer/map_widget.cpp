#include "hosts/viewer/map_widget.h"

#include <QPaintEvent>
#include <QPainter>

#include "hosts/common/automation.h"

namespace orvane {

MapWidget::MapWidget(QWidget* parent) : QWidget(parent), window_(*this, files_), ctrl_(COrvane4Ctrl::Create(window_, files_)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    ctrl_->SetEvents(this);
    Automation(*ctrl_).Call("OrvInit");
}

MapWidget::~MapWidget() = default;

void MapWidget::PaintNow() {
    if (!window_.TakePaintRequest()) return;
    const Rect client = window_.ClientRect();
    ctrl_->OnDraw(*window_.AcquireDC(), client, client);
}

// The control paints only when it asked for it: after a scroll its base buffer is behind, and a paint nobody asked for would
// bring the old picture back.
void MapWidget::paintEvent(QPaintEvent*) {
    PaintNow();
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(0, 0, window_.Picture());
}

void MapWidget::resizeEvent(QResizeEvent*) {
    if (!window_.Resize()) return;
    PaintNow();
    Automation(*ctrl_).Call("OrvReDraw");
}

void MapWidget::Fire(std::int32_t eventDispid, std::span<const Variant> args) {
    std::int32_t zoom = 0;
    if (eventDispid == kOnZoomChange && !args.empty() && args[0].ToI4(zoom) && onZoomChange) onZoomChange(zoom);
}

}  // namespace orvane
