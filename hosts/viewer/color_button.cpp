#include "hosts/viewer/color_button.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>

namespace orvane {

QColor ToQColor(Rgb color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF), static_cast<int>(color >> 16 & 0xFF)};
}

Rgb ToRgb(const QColor& color) {
    return static_cast<Rgb>(color.red()) | static_cast<Rgb>(color.green()) << 8 | static_cast<Rgb>(color.blue()) << 16;
}

QIcon ColorIcon(Rgb color, int side_px) {
    QPixmap patch(side_px, side_px);
    patch.fill(ToQColor(color));
    QPainter painter(&patch);
    painter.setPen(Qt::gray);  // white on a white field is a colour too
    painter.drawRect(0, 0, side_px - 1, side_px - 1);
    painter.end();
    return patch;
}

ColorButton::ColorButton(const QString& title, QWidget* parent) : QPushButton(parent), title_(title) {
    setAccessibleName(title);
    connect(this, &QPushButton::clicked, this, &ColorButton::Ask);
    Show(0);
}

void ColorButton::Show(Rgb color) {
    color_ = color;
    setIcon(ColorIcon(color));
    setText(ToQColor(color).name());
}

void ColorButton::Ask() {
    const QColor chosen = QColorDialog::getColor(ToQColor(color_), window(), title_);
    if (!chosen.isValid()) return;
    Show(ToRgb(chosen));
    emit Chosen(color_);
}

}  // namespace orvane
