// A list of the events that the control fired, as a host hears them.
#pragma once

#include <QCheckBox>
#include <QDockWidget>
#include <QPlainTextEdit>

#include "hosts/qt/orvane_widget.h"

namespace orvane {

class EventLog : public QDockWidget {
    Q_OBJECT

public:
    /// `map` must outlive the log.
    EventLog(OrvaneWidget& map, QWidget* parent);

    QString Text() const { return lines_->toPlainText(); }

private:
    void Connect(OrvaneWidget& map);

    QPlainTextEdit* lines_;
    QCheckBox* moves_;
};

}  // namespace orvane
