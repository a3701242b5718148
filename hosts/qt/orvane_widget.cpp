#include "hosts/qt/orvane_widget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QtDebug>
#include <optional>

#include "control/ctrl.h"
#include "hosts/common/host_files.h"
#include "hosts/qt/member_call.h"
#include "hosts/qt/widget_window.h"

namespace orvane {

/// The control with all that it stands on.
struct OrvaneWidget::Core : ControlEvents {
    explicit Core(OrvaneWidget& widget) : owner(&widget), window(widget, files), ctrl(COrvane4Ctrl::Create(window, files)) {
        ctrl->SetEvents(this);
    }
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override {
        if (owner != nullptr) owner->EmitEvent(eventDispid, args);
    }

    OrvaneWidget* owner;  // null once the widget is gone
    HostFiles files;
    WidgetWindow window;
    ControlPtr ctrl;
};

/// A mouse event in the words of the control.
struct OrvaneWidget::Mouse {
    std::uint32_t flags;
    Point at;
};

namespace {

constexpr int kNotch = 120;

std::uint32_t FlagWord(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    // A middle or a side button held makes a word that equals none of those which mean something.
    constexpr std::uint32_t kMkMButton = 0x10;
    constexpr std::uint32_t kMkXButtons = 0x60;
    std::uint32_t flags = 0;
    if (buttons.testFlag(Qt::LeftButton)) flags |= kMkLButton;
    if (buttons.testFlag(Qt::RightButton)) flags |= kMkRButton;
    if (modifiers.testFlag(Qt::ShiftModifier)) flags |= kMkShift;
    if (modifiers.testFlag(Qt::ControlModifier)) flags |= kMkControl;
    if (buttons.testFlag(Qt::MiddleButton)) flags |= kMkMButton;
    if (buttons & (Qt::BackButton | Qt::ForwardButton)) flags |= kMkXButtons;
    return flags;
}

std::optional<std::uint32_t> VirtualKey(int key) {
    if (key == Qt::Key_Delete) return kVkDelete;
    if (key == Qt::Key_Escape) return kVkEscape;
    return std::nullopt;
}

}  // namespace

OrvaneWidget::OrvaneWidget(QWidget* parent) : QWidget(parent), core_(std::make_shared<Core>(*this)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    core_->window.onTimer = [core = std::weak_ptr<Core>(core_)](std::int32_t id) {
        if (const std::shared_ptr<Core> held = core.lock()) held->ctrl->OnTimer(id);
    };
}

OrvaneWidget::~OrvaneWidget() {
    core_->owner = nullptr;
    core_->window.Detach();
}

QVariant OrvaneWidget::Call(const QString& member, const QVariantList& inputs, QString* error) {
    const std::shared_ptr<Core> held = core_;
    QString why;
    QVariant answer = CallMember(*held->ctrl, member, inputs, why);
    if (error != nullptr) {
        *error = why;
    } else if (!why.isEmpty()) {
        qWarning().noquote() << why;
    }
    return answer;
}

QVariant OrvaneWidget::Get(const char* property) const {
    QString ignored;
    return CallMember(*core_->ctrl, QString::fromLatin1(property), {}, ignored);
}

void OrvaneWidget::Put(const char* property, const QVariant& value) { Call(QString::fromLatin1(property), {value}, nullptr); }

COrvane4Ctrl& OrvaneWidget::Control() const { return *core_->ctrl; }

const QImage& OrvaneWidget::Picture() const { return core_->window.Picture(); }

void OrvaneWidget::PaintNow() {
    const std::shared_ptr<Core> held = core_;
    if (!held->window.TakePaintRequest()) return;
    const Rect client = held->window.ClientRect();
    held->ctrl->OnDraw(*held->window.AcquireDC(), client, client);
}

void OrvaneWidget::TakeNewSize() {
    const std::shared_ptr<Core> held = core_;
    if (!held->window.Resize()) return;
    PaintNow();
    held->ctrl->RDMReDraw();
}

// The control paints only when it asked for it: after a scroll its base buffer is behind, and a paint nobody asked for would
// bring the old picture back.
void OrvaneWidget::paintEvent(QPaintEvent*) {
    const std::shared_ptr<Core> held = core_;
    TakeNewSize();  // a move to a screen of another scaling changes the number of pixels only
    PaintNow();
    if (held->owner == nullptr) return;
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(0, 0, held->window.Picture());
}

void OrvaneWidget::resizeEvent(QResizeEvent*) { TakeNewSize(); }

OrvaneWidget::Mouse OrvaneWidget::Follow(const QMouseEvent& event) {
    return {FlagWord(event.buttons(), event.modifiers()), core_->window.Follow(event.position(), event.globalPosition())};
}

// An event is accepted before the control sees it, because the widget may be gone afterwards. Which button holds the mouse is
// Qt's own affair: from the first press to the last release all moves come here.

void OrvaneWidget::mousePressEvent(QMouseEvent* event) {
    event->accept();
    const std::shared_ptr<Core> held = core_;
    const Mouse mouse = Follow(*event);
    if (event->button() == Qt::LeftButton) held->ctrl->OnLButtonDown(mouse.flags, mouse.at);
    if (event->button() == Qt::RightButton) held->ctrl->OnRButtonDown(mouse.flags, mouse.at);
}

void OrvaneWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    const std::shared_ptr<Core> held = core_;
    const Mouse mouse = Follow(*event);
    if (event->button() == Qt::LeftButton) held->ctrl->OnLButtonUp(mouse.flags, mouse.at);
    if (event->button() == Qt::RightButton) held->ctrl->OnRButtonUp(mouse.flags, mouse.at);
}

// The second press of a double click comes in place of a press, and the control knows a double click of the left button only.
void OrvaneWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    const std::shared_ptr<Core> held = core_;
    const Mouse mouse = Follow(*event);
    if (event->button() == Qt::LeftButton) held->ctrl->OnLButtonDblClk(mouse.flags, mouse.at);
}

void OrvaneWidget::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    const std::shared_ptr<Core> held = core_;
    const Mouse mouse = Follow(*event);
    // A form gives the mouse its plain shape back with each move, before the control says what it is to be there.
    if (event->buttons() == Qt::NoButton && !held->ctrl->scrollActive) held->window.ExpectCursorShape(CursorShape::Arrow);
    held->ctrl->OnMouseMove(mouse.flags, mouse.at);
    held->window.ShowCursorShape();
}

// A wheel of fine steps and a touch pad tell parts of a notch; the control zooms by one step for every message.
void OrvaneWidget::wheelEvent(QWheelEvent* event) {
    const std::shared_ptr<Core> held = core_;
    const int turned = event->angleDelta().y();
    // What the control does nothing with is left to the form, which may scroll.
    const COrvane4Ctrl& ctrl = *held->ctrl;
    event->setAccepted(turned != 0 && ctrl.wheelZoomMode != 0 && ctrl.mapDraw && ctrl.CurrentDrawState() >= 1);
    if (turned == 0) return;
    const std::uint32_t flags = FlagWord(event->buttons(), event->modifiers());
    const Point screen = held->window.ClientToScreen(held->window.Follow(event->position(), event->globalPosition()));
    if ((turned < 0) != (wheelRest_ < 0)) wheelRest_ = 0;
    wheelRest_ += turned;
    const int notches = wheelRest_ / kNotch;
    wheelRest_ %= kNotch;
    const int delta = notches < 0 ? -kNotch : kNotch;
    for (int i = 0; i < qAbs(notches) && held->owner != nullptr; ++i) held->ctrl->OnMouseWheel(flags, delta, screen);
}

void OrvaneWidget::keyPressEvent(QKeyEvent* event) {
    const std::optional<std::uint32_t> key = VirtualKey(event->key());
    if (!key) {
        QWidget::keyPressEvent(event);
        return;
    }
    const std::shared_ptr<Core> held = core_;
    // Without a tool there is nothing to cancel, and a dialog may want the key for itself.
    event->setAccepted(*key != kVkEscape || held->ctrl->runMode >= kRunAddEdit);
    held->ctrl->OnKeyDown(*key);
}

}  // namespace orvane
