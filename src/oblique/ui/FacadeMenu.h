// The "Facade photos" group of the Photos menu, and the facade step of a
// click that looks for photographs.
#pragma once

class QMenu;
class QWidget;

void AddFacadeMenu(QWidget* form, QMenu* photos);
