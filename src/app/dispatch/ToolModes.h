// The selection tool: a right click on a measure, billboard or sphere
// selects it, which the engine tells by a notification.
#pragma once

// Follows the checked state of "SelectMeasuringBtn"; the picking tools are
// released while it is on.
void SelectMeasuringBtnClick();
