// The window's "Photos" menu: what the operator asks of single photographs.
#pragma once

class QMenuBar;
class QWidget;

void CreatePhotosMenu(QWidget* form, QMenuBar* bar);
