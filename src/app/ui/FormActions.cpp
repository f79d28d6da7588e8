#include "FormActions.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>

#include "app/session/MainFormState.h"

QAction* AddMenuItem(QWidget* form, QMenu* menu, const char* name, const QString& text, std::function<void()> handler) {
    QAction* item = menu->addAction(text);
    item->setObjectName(name);
    QObject::connect(item, &QAction::triggered, form, [handler] { handler(); });
    return item;
}

QAction* AddCheckMenuItem(QWidget* form, QMenu* menu, const char* name, const QString& text,
                          std::function<void()> handler) {
    QAction* item = AddMenuItem(form, menu, name, text, std::move(handler));
    item->setCheckable(true);
    return item;
}

QAction* AddToolButton(QWidget* form, QToolBar* tools, const char* name, const QString& text, bool checkable,
                       std::function<void()> handler) {
    QAction* action = tools->addAction(text);
    action->setObjectName(name);
    action->setCheckable(checkable);
    QObject::connect(action, &QAction::triggered, form, [name = std::string(name), action, handler] {
        if (action->isCheckable()) SetControlChecked(name, action->isChecked());
        handler();
    });
    return action;
}
