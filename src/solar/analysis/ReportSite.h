// What a report needs to know of the open model and the window, gathered by
// the caller (the window or the CLI) so that the report itself reaches into
// no host.
#pragma once

#include <QString>
#include <string>

struct ReportSite {
    std::string modelFileName;  // the open model's full path
    QString customer;           // "Customer.TXT" of the model's folder, or empty
    int epsg = 0;               // the model's EPSG code
    bool modelOpen = false;     // a model is in the engine
    int viewWidth = 1280;       // the scene picture's size
    int viewHeight = 800;
    // An hourly climate list to use instead of the model folder's
    // "PVGIST_H.csv" or a download; empty for the usual way.
    std::string climateFile;
};
