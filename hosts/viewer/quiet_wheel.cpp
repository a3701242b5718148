#include "hosts/viewer/quiet_wheel.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace orvane {

namespace {

class WheelKeeper : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
        event->ignore();  // so that it goes on to the parent
        return true;
    }
};

}  // namespace

void KeepWheelFromFields(QWidget& form) {
    auto* keeper = new WheelKeeper(&form);
    for (QWidget* field : form.findChildren<QWidget*>()) {
        if (qobject_cast<QAbstractSpinBox*>(field) == nullptr && qobject_cast<QComboBox*>(field) == nullptr) continue;
        // The wheel must not bring the keyboard either.
        if (field->focusPolicy() == Qt::WheelFocus) field->setFocusPolicy(Qt::StrongFocus);
        field->installEventFilter(keeper);
    }
}

}  // namespace orvane
