// What the control's edit tool that runs has at hand, and the press that such a tool begins with.
#pragma once

#include <QObject>

#include "hosts/qt/orvane_widget.h"

namespace orvane {

/// Whether an edit tool runs that has put a point or taken up a feature.
bool HasFigure(const OrvaneWidget& map);

/// Makes a press the first one of a tool where Qt takes it for the second of a double click, because the one before it was
/// shortly before the tool began: it would end a figure that has no point yet.
class FirstPress : public QObject {
public:
    /// `map` must outlive it.
    FirstPress(OrvaneWidget& map, QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    OrvaneWidget& map_;
};

}  // namespace orvane
