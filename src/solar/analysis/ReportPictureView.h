// The report's picture looks at the panels, wherever the operator's view
// was: from the south and above, so that panels facing the sun face the
// reader, close enough to tell them apart. The view is put back afterwards.
#pragma once

// The camera as the operator left it.
struct ReportCameraView {
    double angles[3] = {0, 0, 0};
    double viewPoint[3] = {0, 0, 0};
    double distance = 0;
    bool valid = false;
};

// Points the camera at the bounding box of the live panels, 50 degrees down
// from the horizon, looking north; the view before, to be put back. Without
// panels the camera stays and the answer is not valid.
ReportCameraView LookAtPanelsForPicture();
void RestoreCameraView(const ReportCameraView& view);
