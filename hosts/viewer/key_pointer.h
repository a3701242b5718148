// A pointer that the keys move over the map, for who works without a mouse.
#pragma once

#include <QWidget>

#include "hosts/viewer/shape_tool.h"

namespace orvane {

/// A cross over the map that clicks there for the operator; the map hears what a mouse would tell it. The arrows move it by a
/// pixel, with Shift by kLargeStep.
///
/// It comes with the first arrow while a drawing or editing tool, a shape or a rectangle to zoom by runs, because all they need
/// is a place. Where a click selects, the arrows scroll the map, so that it comes when it is asked for and stays until Escape.
///
/// Space clicks. Enter ends the figure of a tool as a double click does. Without a tool Enter holds the button, the arrows drag,
/// and Space or Enter lets go; a rectangle to zoom by is held by Space as well. Where a click selects, Ctrl and Shift with these
/// keys are those of the click, and H asks what lies there.
class KeyPointer : public QWidget {
    Q_OBJECT

public:
    /// It lies on `map`, which must outlive it, as must `shapes`.
    KeyPointer(OrvaneWidget& map, const ShapeTool& shapes);

    static constexpr int kLargeStep = 25;  ///< pixels of the form

    /// Shows it. REQUIRES: clicks select, or any of what it comes with runs.
    void Start();

signals:
    /// What the operator wants to know of, in the words of OnHintStart.
    void HintAsked(int datNo, const QString& code, int meshNo, int screenX_px, int screenY_px);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool HasTool() const;
    bool HasRectangle() const;
    bool IsSelecting() const;
    bool IsWanted() const { return HasTool() || HasRectangle() || IsSelecting(); }
    /// Whether the key is one of this pointer now.
    bool Knows(const QKeyEvent& key) const;
    void Take(const QKeyEvent& key);
    void Click(Qt::KeyboardModifiers modifiers);
    void HoldOrLetGo(Qt::KeyboardModifiers modifiers);
    void GiveUpHold();
    void PutAway();
    void AskHint();
    void MoveBy(QPoint step);
    void Send(QEvent::Type type, QPoint at, Qt::KeyboardModifiers modifiers = {});

    OrvaneWidget& map_;
    const ShapeTool& shapes_;
    bool asked_ = false;  ///< for where clicks select
    bool isHeld_ = false;
    QPoint at_;       ///< in the map's widget
    QPoint clicked_;  ///< where the last click was, or the button was pressed that is held
};

}  // namespace orvane
