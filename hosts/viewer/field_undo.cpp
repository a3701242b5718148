#include "hosts/viewer/field_undo.h"

#include <QFontComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <utility>

namespace orvane {

namespace {

bool IsUndoOrRedo(const QKeyEvent& key) {
    const bool isControlY = key.keyCombination() == (Qt::CTRL | Qt::Key_Y);
    return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo) || isControlY;
}

/// A number or font that is told only when it is whole differs from its text until then.
bool IsHalfTyped(const QWidget& field) {
    if (const auto* whole = qobject_cast<const QSpinBox*>(&field)) return whole->cleanText() != QString::number(whole->value());
    if (const auto* number = qobject_cast<const QDoubleSpinBox*>(&field))
        return number->cleanText() != number->textFromValue(number->value());
    const auto* font = qobject_cast<const QFontComboBox*>(&field);
    return font != nullptr && font->currentText() != font->currentFont().family();
}

class UndoHand : public QObject {
public:
    UndoHand(QWidget& form, std::function<bool(const QWidget&)> hasEntered)
        : QObject(&form), hasEntered_(std::move(hasEntered)) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isPress = event->type() == QEvent::KeyPress;
        if (!isPress && event->type() != QEvent::ShortcutOverride) return false;
        if (!IsUndoOrRedo(static_cast<QKeyEvent&>(*event))) return false;
        // The line of a number or a font is a part of it.
        const auto* line = static_cast<const QWidget*>(watched);
        const bool isPart = qobject_cast<const QLineEdit*>(line) != nullptr && line->focusProxy() != nullptr;
        const QWidget& field = isPart ? *line->focusProxy() : *line;
        if (IsHalfTyped(field) || hasEntered_(field)) return false;
        // A field that claims the keys keeps them from the actions. Where no action takes them, they do nothing in it either.
        event->setAccepted(isPress);
        return true;
    }

private:
    std::function<bool(const QWidget&)> hasEntered_;
};

}  // namespace

void LetMapUndo(QWidget& form, std::function<bool(const QWidget& field)> hasEntered) {
    auto* hand = new UndoHand(form, std::move(hasEntered));
    for (QWidget* field : form.findChildren<QWidget*>()) {
        const bool isLine = qobject_cast<QLineEdit*>(field) != nullptr;
        const bool isFont = qobject_cast<QFontComboBox*>(field) != nullptr;
        if (isLine || isFont || qobject_cast<QAbstractSpinBox*>(field) != nullptr) field->installEventFilter(hand);
    }
}

}  // namespace orvane
