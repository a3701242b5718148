#include "hosts/viewer/work_progress.h"

#include <QCoreApplication>
#include <QEvent>

#include "control/ctrl.h"

namespace orvane {

int WorkProgress::running_ = 0;
int WorkProgress::patience_ms_ = 700;

WorkProgress::WorkProgress(QWidget& window, const QString& text, bool canCancel)
    : dialog_(text, canCancel ? QCoreApplication::translate("WorkProgress", "Cancel") : QString(), 0, 100, &window),
      window_(window) {
    dialog_.setWindowTitle("ORVANE4");
    dialog_.setWindowModality(Qt::WindowModal);
    dialog_.setMinimumDuration(patience_ms_);
    dialog_.setAutoReset(false);
    dialog_.setAutoClose(false);
    sinceBegin_.start();
    sinceLook_.start();
    ++running_;
    QCoreApplication::instance()->installEventFilter(this);
}

WorkProgress::~WorkProgress() {
    QCoreApplication::instance()->removeEventFilter(this);
    --running_;
}

bool WorkProgress::Tell(double fraction) {
    const int percent = static_cast<int>(fraction * 100);
    constexpr int kLookEvery_ms = 100;
    if (percent != dialog_.value()) {
        dialog_.setValue(percent);  // which runs the event loop
        sinceLook_.restart();
    } else if (sinceBegin_.hasExpired(patience_ms_) && (patience_ms_ == 0 || sinceLook_.hasExpired(kLookEvery_ms))) {
        QCoreApplication::processEvents();
        sinceLook_.restart();
    }
    return !dialog_.wasCanceled();
}

// Until the dialog shows, nothing else keeps the operator from pressing keys in the window.
bool WorkProgress::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride: {
            const auto* widget = qobject_cast<QWidget*>(watched);
            return widget != nullptr && widget->window() == &window_;
        }
        default:
            return false;
    }
}

MapWork::MapWork(OrvaneWidget& map, QWidget& window, const QString& text, bool canCancel)
    : map_(map), progress_(window, text, canCancel) {
    map_.Control().SetProgress([this](double done) { return !(cancelled_ = cancelled_ || !progress_.Tell(done)); });
}

MapWork::~MapWork() { map_.Control().SetProgress({}); }

}  // namespace orvane
