// The map as a widget: it owns the control and the form that the control stands on.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "control/ctrl.h"
#include "hosts/common/host_files.h"
#include "hosts/viewer/widget_window.h"

namespace orvane {

class MapWidget : public QWidget, private ControlEvents {
public:
    explicit MapWidget(QWidget* parent = nullptr);
    ~MapWidget() override;

    COrvane4Ctrl& Control() { return *ctrl_; }
    /// The pixels of the client area.
    const QImage& Picture() const { return window_.Picture(); }
    /// Paints at once what was asked for, so that the control has its buffers before a call that needs them.
    void PaintNow();

    std::function<void(std::int32_t zoom)> onZoomChange;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override;

    HostFiles files_;
    WidgetWindow window_;
    ControlPtr ctrl_;
};

}  // namespace orvane
