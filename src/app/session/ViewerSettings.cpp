#include "ViewerSettings.h"

ViewerSettings& viewerSettings() {
    static ViewerSettings settings;
    return settings;
}

void resetViewerSettings() { viewerSettings() = ViewerSettings{}; }
