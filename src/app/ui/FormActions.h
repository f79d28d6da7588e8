// Menu items and tool buttons of the main form: each is a QAction named
// after its control, with the caption as its text (so it is also the
// accessible name). A checkable menu item's handler toggles its own state;
// a checkable tool button's state goes to the form state before its
// handler runs, since the logic reads it from there.
#pragma once

#include <QString>
#include <functional>

class QAction;
class QMenu;
class QToolBar;
class QWidget;

QAction* AddMenuItem(QWidget* form, QMenu* menu, const char* name, const QString& text, std::function<void()> handler);
QAction* AddCheckMenuItem(QWidget* form, QMenu* menu, const char* name, const QString& text,
                          std::function<void()> handler);
QAction* AddToolButton(QWidget* form, QToolBar* tools, const char* name, const QString& text, bool checkable,
                       std::function<void()> handler);
