#include "PolygonAngles.h"

#include <cmath>

double polaranglej(double x, double y) {
    if (x == 0 && y == 0) return -1;
    if (x == 0) return y > 0 ? 90 : 270;
    const double theta = std::fabs(std::atan(y / x)) * 57.29578049;
    if (x > 0) return y >= 0 ? theta : 360 - theta;
    return y >= 0 ? 180 - theta : 180 + theta;
}

double signedanglej(double ax, double ay, double orgx, double orgy, double destx, double desty) {
    const double va = polaranglej(orgx - ax, orgy - ay);
    const double wa = polaranglej(destx - ax, desty - ay);
    if (va == -1 || wa == -1) return 180;
    double x = wa - va;
    if (x == 180 || x == -180) return 180;
    if (x < -180) x += 360;
    if (x > 180) x -= 360;
    return x;
}

int inpolygon(const double* xp, const double* yp, int np, double x0, double y0) {
    float sum = 0;
    for (int i = 0; i < np - 1; ++i) {
        const double term = signedanglej(x0, y0, xp[i], yp[i], xp[i + 1], yp[i + 1]);
        if (term == 180) return -1;
        sum += static_cast<float>(term);
    }
    return std::fabs(sum) > 180 ? 0 : 1;
}
