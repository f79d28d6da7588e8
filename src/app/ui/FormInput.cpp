#include "FormInput.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include "app/session/DispatchState.h"
#include "app/dispatch/KeyCodes.h"
#include "app/dispatch/Timer1Timer.h"
#include "app/dispatch/ViewPanelClick.h"
#include "app/session/ViewerSettings.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewPanelGL.h"

namespace {

QWidget* notifyTarget = nullptr;

// The engine names the form it was given as an untyped window; the one form is known here.
void postNotification(void*, int message, int wParam, int lParam) {
    if (notifyTarget) QCoreApplication::postEvent(notifyTarget, new EngineNotifyEvent(message, wParam, lParam));
}

int heldButtons(Qt::MouseButtons buttons) {
    return (buttons & Qt::LeftButton ? MK_LBUTTON : 0) | (buttons & Qt::RightButton ? MK_RBUTTON : 0);
}

}  // namespace

FormInput::FormInput(QWidget* form, ViewPanelGL* surface) : QObject(form), form_(form), surface_(surface) {
    notifyTarget = form;
    At3d_Set_Notify_Function(postNotification);
    // Keys not taken by the focused control travel up to the form, where they are seen once.
    form->installEventFilter(this);
    surface->installEventFilter(this);
    connect(&timer1_, &QTimer::timeout, this, [] { Timer1Timer(); });
    timer1_.start(TIMER1_INTERVAL_MS);
}

FormInput::~FormInput() {
    At3d_Set_Notify_Function(nullptr);
    notifyTarget = nullptr;
}

bool FormInput::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Wheel:
        return watched == surface_ && mouseEvent(event);
    case QEvent::KeyPress: return watched == form_ && keyEvent(static_cast<QKeyEvent*>(event));
    default: return false;
    }
}

bool FormInput::mouseEvent(QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        AppMsg msg;
        msg.message = WM_MOUSEWHEEL;
        msg.wParam = static_cast<QWheelEvent*>(event)->angleDelta().y();
        msg.overMainForm = surface_->window() == form_;
        return AppMessage(msg).Handled;
    }
    auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint at = mouse->position().toPoint();
    AppMsg msg;
    msg.x = at.x();
    msg.y = at.y();
    if (event->type() == QEvent::MouseMove) {
        msg.message = WM_MOUSEMOVE;
        msg.wParam = heldButtons(mouse->buttons());
        msg.shift = mouse->modifiers() & Qt::ShiftModifier;
        return AppMessage(msg).Handled;
    }
    if (mouse->button() == Qt::LeftButton) {
        msg.message = event->type() == QEvent::MouseButtonPress ? WM_LBUTTONDOWN : WM_LBUTTONUP;
        AppMessage(msg);
    }
    if (event->type() != QEvent::MouseButtonPress) return false;
    // The view starts a move from here, whatever a drag passed over before.
    DispatchState& d = dispatchState();
    d.LastMousexPos = at.x();
    d.LastMouseyPos = at.y();
    // The engine sees the press only while it picks or selects.
    surface_->setEngineMouseInput(At3d_ReadFlag(LIBFLAG_MESH_LOCATION) != 0 ||
                                  At3d_ReadFlag(LIBFLAG_SELECT_MEASURE) != 0);
    ClickInput click;
    click.Button = mouse->button() == Qt::RightButton ? 2 : 1;
    click.Shift = mouse->modifiers() & Qt::ShiftModifier;
    click.Alt = mouse->modifiers() & Qt::AltModifier;
    click.Ctrl = mouse->modifiers() & Qt::ControlModifier;
    click.X = at.x();
    // The panel's y counts the engine's strip; the surface's starts above it.
    click.Y_IN = at.y() + viewerSettings().StatusbarHeight;
    ViewPanelMouseActivate(click);
    copyClickToClipboard();
    // A Shift+right click asks for the point's menu, as the engine's message 1033 does.
    if (click.Button == 2 && click.Shift) {
        const QPoint screen = surface_->mapToGlobal(at);
        AppMsg popup;
        popup.message = MSG_SHIFT_RIGHT_POPUP;
        popup.x = screen.x();
        popup.y = screen.y();
        showPopup(AppMessage(popup).popup, screen);
    }
    return false;
}

bool FormInput::keyEvent(QKeyEvent* event) {
    const int code = KeyCodeFromQt(event->key(), event->modifiers() & Qt::KeypadModifier);
    if (!code) return false;
    AppMsg msg;
    msg.message = WM_KEYDOWN;
    msg.wParam = code;
    msg.shift = event->modifiers() & Qt::ShiftModifier;
    return AppMessage(msg).Handled;
}

void FormInput::engineNotification(const EngineNotifyEvent& event) {
    AppMsg msg;
    msg.message = event.message;
    msg.wParam = event.wParam;
    msg.lParam = event.lParam;
    showPopup(AppMessage(msg).popup, QCursor::pos());
}

void FormInput::showPopup(AppPopup popup, QPoint at) {
    if (popup != AppPopup::None && popup_) popup_(popup, at);
}

void FormInput::copyClickToClipboard() {
    QString& text = dispatchState().clipboardText;
    if (text.isEmpty()) return;
    QGuiApplication::clipboard()->setText(text);
    text.clear();
}
