// Connects the solar planner's logic to the window: the real sun for row
// spacing, the panel form for a placement, and the add-models path for the
// panel files it writes.
#pragma once

class QWidget;

void InstallSolarHooks(QWidget* parent);
