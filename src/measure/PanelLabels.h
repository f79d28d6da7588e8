// The labels of panels (12B) as billboards: lent to the panel grouping, which
// stands one at each panel's centre.
#pragma once

void InstallPanelLabels();
