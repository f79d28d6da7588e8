// The pan and zoom script embedded in interactive drawings.
#pragma once

#include <QString>

// Drag moves the viewBox, the wheel zooms about the cursor; printing is unaffected.
QString Csv2SvgPanZoomScript();
