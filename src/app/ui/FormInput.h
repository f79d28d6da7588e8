// The main form's input hook: mouse, wheel and keys on the form become the
// dispatcher's messages, the engine's notifications arrive as posted events,
// and Timer1Timer ticks. The logic lives in app/dispatch.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <functional>

#include "app/dispatch/AppMessage.h"

class QKeyEvent;
class QMouseEvent;
class QWidget;
class ViewPanelGL;

// The event that carries an engine notification to the form.
constexpr QEvent::Type ENGINE_NOTIFY_EVENT = static_cast<QEvent::Type>(QEvent::User + 1031);

class EngineNotifyEvent : public QEvent {
public:
    EngineNotifyEvent(int message, int wParam, int lParam)
        : QEvent(ENGINE_NOTIFY_EVENT), message(message), wParam(wParam), lParam(lParam) {}
    const int message, wParam, lParam;
};

class FormInput : public QObject {
    Q_OBJECT

public:
    // Watches the form and its drawing surface and routes the engine's
    // notifications to the form.
    FormInput(QWidget* form, ViewPanelGL* surface);
    ~FormInput() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    // An engine notification posted to the form.
    void engineNotification(const EngineNotifyEvent& event);
    // Shows the menu a handled message asks for, at a point of the screen.
    void setPopupHandler(std::function<void(AppPopup, QPoint)> handler) { popup_ = std::move(handler); }

private:
    bool mouseEvent(QEvent* event);
    bool keyEvent(QKeyEvent* event);
    void copyClickToClipboard();

    QWidget* form_;
    ViewPanelGL* surface_;
    void showPopup(AppPopup popup, QPoint at);

    QTimer timer1_;
    std::function<void(AppPopup, QPoint)> popup_;
};
