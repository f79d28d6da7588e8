// Fitting a traced roof quadrilateral to its known area: the corner table
// "Corner,X,Y,Z,U,V,L" is scaled about its centroid onto an anchor point.
#pragma once

#include <QString>

struct PtRec {
    double x = 0, y = 0, z = 0, u = 0, v = 0;
    int srcIdx = 0;
};

// Reads CSV, writes its name with "_adjusted.csv" and returns that path;
// "" after telling the operator what was wrong.
QString AdjustCSV(const QString& CSV);
