// Lends the window's measure dialog, billboard dialog and icons form to measuring.
#pragma once

class QWidget;

void InstallMeasureHooks(QWidget* parent);
