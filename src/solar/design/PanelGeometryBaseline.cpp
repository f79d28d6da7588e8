#include "PanelGeometryBaseline.h"

#include <algorithm>
#include <cmath>

#include "PanelGeometryVector.h"
#include "app/services/OrvoDialogs.h"

namespace {

constexpr double kTileClearance = 0.02;  // m between tiles and the panels' lower edge

void levelToHigher(TGIS_Point3D* PA) {
    const double z = std::max(PA[0].Z, PA[1].Z);
    PA[0].Z = z;
    PA[1].Z = z;
}

// Turns the baseline in the roof plane until it runs level, keeping its length.
void fixSkew(TGIS_Point3D* PA, int NP) {
    bool done = false;
    if (NP >= 3) {
        const TGIS_Point3D n = pgv::cross(pgv::sub(PA[1], PA[0]), pgv::sub(PA[2], PA[0]));
        const double nl = pgv::length(n);
        if (nl > 0.0001) {
            const TGIS_Point3D u = pgv::scale(n, 1.0 / nl);
            const double originalDist = pgv::length(pgv::sub(PA[1], PA[0]));
            if (std::fabs(u.Z) > 0.0001) {
                TGIS_Point3D level = pgv::make(-u.Y, u.X, 0);
                level = pgv::normalized(level, 0.0001, level);
                const TGIS_Point3D plus = pgv::add(PA[0], pgv::scale(level, originalDist));
                const TGIS_Point3D minus = pgv::sub(PA[0], pgv::scale(level, originalDist));
                PA[1] = pgv::planDistance(plus, PA[1]) <= pgv::planDistance(minus, PA[1]) ? plus : minus;
                PA[1].Z = PA[0].Z;
                done = true;
            }
        }
    }
    if (!done) PA[1].Z = PA[0].Z;
    if (std::fabs(PA[0].Z - PA[1].Z) > 0.01) {
        levelToHigher(PA);
        MyShowMessage("Baseline Z mismatch after rotation — forced equality.");
    }
}

// Raises the lower end instead, and the third point with the first.
void fixTilt(TGIS_Point3D* PA, const TGIS_Point3D* PB, int NP) {
    levelToHigher(PA);
    if (NP >= 3) PA[2].Z += PA[0].Z - PB[0].Z;
    if (std::fabs(PA[0].Z - PA[1].Z) > 1e-9) {
        levelToHigher(PA);
        MyShowMessage("Baseline Z mismatch after TILT correction — forced equality.");
    }
}

}  // namespace

bool CorrectTiledBaseline(TGIS_Point3D* PA, const TGIS_Point3D* PB, int NP) {
    const double dist = pgv::planDistance(PA[0], PA[1]);
    const double DZ = std::fabs(PB[0].Z - PB[1].Z);
    const double DZperMeter = dist != 0 ? DZ / dist : 0;
    if (DZperMeter * 100 > 1) {
        const double SkewAngle = dist != 0 ? std::atan(DZ / dist) / pgv::kDeg : 0;
        const QString title = QString::asprintf("Skew: %.2f°  Height diff: %.1fcm  Tilt/m: %.2fcm", SkewAngle,
                                                DZ * 100, DZperMeter * 100);
        switch (OrvoMessageBox("Please select what to fix", title, "Skew,Tilt,None", 1)) {
        case 0:
            return false;
        case 1:
            fixSkew(PA, NP);
            break;
        case 2:
            fixTilt(PA, PB, NP);
            break;
        default:
            for (int i = 0; i < std::min(NP, 3); ++i) PA[i] = PB[i];
            break;
        }
        if (std::fabs(PA[0].Z - PA[1].Z) > 1e-9) levelToHigher(PA);
    } else if (std::fabs(PA[0].Z - PA[1].Z) > 0.01) {
        levelToHigher(PA);
    }
    for (int i = 0; i < std::min(NP, 3); ++i) PA[i].Z += kTileClearance;
    return true;
}
