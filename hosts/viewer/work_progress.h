// Work that takes time: the operator sees how far it is, may cancel it, and can do nothing else meanwhile.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProgressDialog>
#include <functional>

#include "hosts/qt/orvane_widget.h"

namespace orvane {

class WorkProgress : public QObject {
public:
    /// `window` is the main window; one without a cancel button is for work that cannot be broken off.
    WorkProgress(QWidget& window, const QString& text, bool canCancel = true);
    ~WorkProgress() override;

    /// To be told the part that is done, 0 to 1; false when the operator cancelled. It runs the event loop, also for work that
    /// tells the same part time and again.
    bool Tell(double fraction);
    std::function<bool(double)> Teller() {
        return [this](double fraction) { return Tell(fraction); };
    }
    /// From here on the work is not broken off any more: what it makes would be neither the old map nor the new one.
    void HoldCancel() { dialog_.setCancelButton(nullptr); }
    /// Whether some work runs in the program.
    static bool IsRunning() { return running_ > 0; }

    /// How long work may take before it shows, for tests that cancel it.
    static void SetPatience(int patience_ms) { patience_ms_ = patience_ms; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static int running_;
    static int patience_ms_;
    QProgressDialog dialog_;
    QWidget& window_;
    QElapsedTimer sinceBegin_;
    QElapsedTimer sinceLook_;  ///< for events
};

/// Work inside calls of the map's control: what they tell of it goes to the operator while this lives.
class MapWork {
public:
    /// `window` is the one that has the keyboard. Half of some work is no state to go on from, so that it cannot be cancelled.
    MapWork(OrvaneWidget& map, QWidget& window, const QString& text, bool canCancel = true);
    ~MapWork();
    MapWork(const MapWork&) = delete;
    MapWork& operator=(const MapWork&) = delete;

    bool Cancelled() const { return cancelled_; }

private:
    OrvaneWidget& map_;
    WorkProgress progress_;
    bool cancelled_ = false;
};

}  // namespace orvane
