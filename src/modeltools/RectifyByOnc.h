// "Rectify by ONC": an OBJ in a local frame placed in map coordinates from
// control pairs, with a scale, a turn about the vertical and a shift fitted
// by least squares; Z keeps its direction so buildings stay upright.
#pragma once

#include <string>

struct RectifyFit {
    int pairs = 0;
    double scale = 0;
    double r11 = 1, r12 = 0, r21 = 0, r22 = 1;
    double rotationDegrees = 0;
    double tx = 0, ty = 0, tz = 0;
    // The world centroid of the pairs: the centre of the radius filter.
    double cRx = 0, cRy = 0;
    double rmsError = 0, maxError = 0;
};

struct RectifyResult {
    bool written = false;    // OBJOUT is in place
    bool cancelled = false;  // stopped by the operator: neither file written
    std::string error;       // the log's ERROR line without its line feed, "" when none
    RectifyFit fit;
    int verticesTransformed = 0;
    long facesKept = 0;
    long facesDropped = 0;
};

// Writes OBJOUT and its log OBJOUT + ".rectify.log". Failures are told in
// the log only. Radius (map units) above 0 drops the faces reaching further
// than that from the world centroid of the pairs.
RectifyResult RectifyOBJByONC(const std::string& OBJIN, const std::string& OBJOUT, const std::string& ONCFile,
                              double Radius);

// The log written beside an output.
std::string RectifyLogPath(const std::string& OBJOUT);
