// A button that shows a colour and asks for another one.
#pragma once

#include <QPushButton>

#include "platform/values.h"

namespace orvane {

QColor ToQColor(Rgb color);
Rgb ToRgb(const QColor& color);
/// A patch of the colour for buttons and lists.
QIcon ColorIcon(Rgb color, int side_px = 16);

class ColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit ColorButton(const QString& title, QWidget* parent = nullptr);
    Rgb Color() const { return color_; }
    /// Shows a colour without a signal.
    void Show(Rgb color);

signals:
    void Chosen(orvane::Rgb color);

private:
    void Ask();

    QString title_;
    Rgb color_ = 0;
};

}  // namespace orvane
