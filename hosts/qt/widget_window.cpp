#include "hosts/qt/widget_window.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>

#include "hosts/qt/qt_values.h"

namespace orvane {

namespace {

int DevicePixels(double logical, double ratio) { return qRound(logical * ratio); }

// A screen that does not know its size in millimetres counts as one of 96 dots an inch.
DeviceNumbers NumbersOf(const QScreen& screen) {
    constexpr double kMmPerInch = 25.4;
    const double ratio = screen.devicePixelRatio();
    const auto millimetres = [](double told_mm, int pixels) {
        return told_mm >= 1 ? qRound(told_mm) : qRound(pixels * kMmPerInch / 96);
    };
    DeviceNumbers numbers;
    numbers.horzRes_px = DevicePixels(screen.size().width(), ratio);
    numbers.vertRes_px = DevicePixels(screen.size().height(), ratio);
    numbers.horzSize_mm = std::max(1, millimetres(screen.physicalSize().width(), numbers.horzRes_px));
    numbers.vertSize_mm = std::max(1, millimetres(screen.physicalSize().height(), numbers.vertRes_px));
    numbers.logPixelsX_dpi = numbers.logPixelsY_dpi = std::max(1, qRound(screen.logicalDotsPerInch() * ratio));
    return numbers;
}

Qt::CursorShape QtShape(CursorShape shape) {
    switch (shape) {
        case CursorShape::Cross:
            return Qt::CrossCursor;
        case CursorShape::SizeAll:
        case CursorShape::Scroll:
            return Qt::SizeAllCursor;
        case CursorShape::Hand:
            return Qt::PointingHandCursor;
        case CursorShape::Pan:
            return Qt::ClosedHandCursor;
        case CursorShape::Wait:
            return Qt::WaitCursor;
        case CursorShape::Arrow:
            break;
    }
    return Qt::ArrowCursor;
}

QMessageBox::Icon QtIcon(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Stop:
            return QMessageBox::Critical;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Information:
            return QMessageBox::Information;
        case MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

WidgetWindow::WidgetWindow(QWidget& widget, Files& files) : widget_(&widget), desktop_(NumbersOf(*widget.screen())) {
    desktop_.SetBitmapFiles(std::make_shared<BitmapFiles>(files));
    Resize();
}

WidgetWindow::~WidgetWindow() { Detach(); }

// The object may be inside its own tick, where it must not be deleted.
void WidgetWindow::LaterDeleter::operator()(QTimer* timer) const {
    timer->stop();
    timer->disconnect();
    timer->deleteLater();
}

void WidgetWindow::Detach() {
    onTimer = nullptr;
    timers_.clear();
    widget_ = nullptr;
}

double WidgetWindow::Ratio() const { return widget_ ? widget_->devicePixelRatioF() : 1.0; }

bool WidgetWindow::Resize() {
    if (!widget_) return false;
    const double ratio = Ratio();
    const QSize size(std::max(1, DevicePixels(widget_->width(), ratio)), std::max(1, DevicePixels(widget_->height(), ratio)));
    if (size == picture_.size()) return false;
    QImage next(size, QImage::Format_RGB32);
    next.fill(Qt::white);
    if (!picture_.isNull()) QPainter(&next).drawImage(0, 0, picture_);
    picture_ = std::move(next);
    return true;
}

bool WidgetWindow::TakePaintRequest() { return std::exchange(paintAsked_, false); }

std::unique_ptr<DeviceContext> WidgetWindow::AcquireDC() {
    if (widget_) widget_->update();  // what is drawn now is shown once the event loop is back
    auto dc = std::make_unique<QtContext>(picture_);
    dc->SetBitmapFiles(desktop_.Pictures());
    return dc;
}

Rect WidgetWindow::DesktopRect() const {
    QSize all(0, 0);
    if (widget_) all = widget_->screen()->virtualSize();
    const double ratio = qGuiApp->devicePixelRatio();
    return {0, 0, std::max(DevicePixels(all.width(), ratio), picture_.width()),
            std::max(DevicePixels(all.height(), ratio), picture_.height())};
}

Rect WidgetWindow::WindowRect() const {
    const Point corner = ClientToScreen({0, 0});
    return {corner.x, corner.y, corner.x + picture_.width(), corner.y + picture_.height()};
}

Point WidgetWindow::ClientToScreen(Point client) const {
    if (!widget_) return client;
    const QPointF corner = widget_->mapToGlobal(QPointF(0, 0)) * Ratio();
    return {client.x + qRound(corner.x()), client.y + qRound(corner.y())};
}

Point WidgetWindow::ScreenToClient(Point screen) const {
    const Point corner = ClientToScreen({0, 0});
    return {screen.x - corner.x, screen.y - corner.y};
}

Point WidgetWindow::Follow(QPointF inWidget, QPointF onDesktop) {
    const double ratio = Ratio();
    mouseOnDesktop_ = onDesktop;
    const Point client{qFloor(inWidget.x() * ratio), qFloor(inWidget.y() * ratio)};
    mouseOnScreen_ = ClientToScreen(client);
    return client;
}

// Qt tells the cursor in whole units of the desktop, which on a scaled screen are several pixels: while it says that the mouse
// stands where its last event was, the pixel of that event is the better answer.
Point WidgetWindow::CursorPos() const {
    const QPoint told = QCursor::pos();
    const QPointF away = QPointF(told) - mouseOnDesktop_;
    if (std::abs(away.x()) < 1 && std::abs(away.y()) < 1) return mouseOnScreen_;
    const QPointF pos = QPointF(told) * Ratio();
    return {qRound(pos.x()), qRound(pos.y())};
}

void WidgetWindow::Invalidate() {
    paintAsked_ = true;
    if (widget_) widget_->update();
}

void WidgetWindow::SetCursorShape(CursorShape shape) {
    cursor_ = shape;
    ShowCursorShape();
}

void WidgetWindow::ShowCursorShape() {
    if (!widget_ || shown_ == cursor_) return;
    shown_ = cursor_;
    widget_->setCursor(QtShape(cursor_));
}

void WidgetWindow::StartTimer(std::int32_t id, std::int32_t period_ms) {
    if (!widget_) return;
    std::unique_ptr<QTimer, LaterDeleter>& timer = timers_[id];
    if (timer == nullptr) {
        timer.reset(new QTimer);
        timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(timer.get(), &QTimer::timeout, [this, id] {
            const std::function<void(std::int32_t)> tick = onTimer;  // a tick may end this window
            if (tick) tick(id);
        });
    }
    timer->start(period_ms);
}

void WidgetWindow::StopTimer(std::int32_t id) {
    const auto found = timers_.find(id);
    if (found != timers_.end()) found->second->stop();
}

void WidgetWindow::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    // The program goes on while the box waits, and may delete the widget with all that it owns.
    const QPointer<QMessageBox> box(new QMessageBox(QtIcon(icon), ToQString(title), ToQString(text), QMessageBox::Ok, widget_));
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}

void WidgetWindow::ShowWaitCursor(bool on) {
    if (on) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

void WidgetWindow::PumpMessages() { QCoreApplication::processEvents(); }

double WidgetWindow::Clock_s() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace orvane
