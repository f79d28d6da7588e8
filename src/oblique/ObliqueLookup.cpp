#include "ObliqueLookup.h"

#include <QFileInfo>
#include <cmath>
#include <cstdio>

#include "ObliqueCatalogue.h"
#include "ObliqueGeometry.h"
#include "ObliqueHooks.h"
#include "ObliqueRecords.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/SessionPaths.h"
#include "app/services/Viewers.h"
#include "app/session/CameraState.h"
#include "app/session/MainFormState.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "measure/Measuring.h"
#include "scene/FileNameCase.h"

namespace {

// The azimuth filter lets through cameras looking within this much of the view.
constexpr int AZIMUTH_TOLERANCE = 40;
// Cameras this steep show the point from any side.
constexpr int STEEP_INCL = 80;

// The photographs of the OPK list near the point and looking the way of the view.
void opkCandidates(const TGIS_Point3D& p, double ViewAz) {
    ObliqueStore& store = obliqueStore();
    const ModelSession& model = modelSession();
    for (const QString& line : store.TSOPK) {
        char name[1024];
        double x, y, z, tx, ty, tz;
        float az, pitch, fpc, DX, DY, DZ, DIST;
        int rotation = 0;
        if (std::sscanf(line.toUtf8().constData(), "%1023s%lf%lf%lf%lf%lf%lf%f%f%f%f%f%f%f%d", name, &x, &y, &z, &tx,
                        &ty, &tz, &az, &pitch, &fpc, &DX, &DY, &DZ, &DIST, &rotation) < 7)
            continue;
        const double Dist = distance(p.X, p.Y, x, y);
        const double AAz = azimD(x, y, tx, ty);
        const int dif = static_cast<int>(GetAngleBetweenAzimuths(AAz, ViewAz));
        if (dif > 10 || Dist > 15) continue;
        const std::string picture = FindFileNoCase((store.DIR_OPK + name + ".jpg").toStdString());
        if (picture.empty()) continue;
        if (store.relevants == MAX_OOO) break;
        // No matrix: these are shown, not projected.
        OBLIQUE O;
        O.Proj = QString::fromStdString(picture);
        O.RotationDeg = rotation;
        O.Qxorg = x;
        O.Qyorg = y;
        O.Qzorg = static_cast<float>(z);
        O.fpc = static_cast<float>(-Dist);
        O.Azimuth = static_cast<int>(AAz);
        O.Incl = 0;
        store.OOO[store.relevants++] = O;
    }
    SSetTextAt3(2, QString::asprintf(" %d images. Azimuth %d  %d relevants", model.KamaOPK, static_cast<int>(ViewAz),
                                     store.relevants));
}

}  // namespace

void StretchOblique(const TGIS_Point3D& point) {
    ObliqueStore& store = obliqueStore();
    const ModelSession& model = modelSession();
    // A measure on a scaled model still finds the unscaled photographs.
    const double SCALE = frameState().SCALE;
    TGIS_Point3D p = point;
    p.X = (point.X - OC(0)) / SCALE + OC(0);
    p.Y = (point.Y - OC(1)) / SCALE + OC(1);
    p.Z = (point.Z - OC(2)) / SCALE + OC(2);
    store.ForOBLIpoint = p;
    double ViewAz = cameraState().cameraZAngle;
    if (ViewAz < 0) ViewAz += 360;

    store._Oblisimun.clear();
    const int candidates = GetO8s(TGIS_Point{p.X, p.Y});
    store.relevants = 0;

    if (model.KamaOPK == 0 && candidates > 0) {
        // A model this near the origin has no real map position: its azimuths say nothing.
        const bool anyDirection =
            ControlChecked("ShowObliques360degrees1") || std::fabs(OC(0)) + std::fabs(OC(1)) < 10000;
        QStringList ranked;
        for (int i = 0; i < candidates; ++i) {
            const OBLIQUE& O = store.GotO8[i];
            if (!QFileInfo::exists(EcwFromJpg(O.Proj))) continue;
            const int dif = static_cast<int>(GetAngleBetweenAzimuths(O.Azimuth, ViewAz));
            const bool ok = dif < AZIMUTH_TOLERANCE || anyDirection || O.Incl > STEEP_INCL;
            if (!model.FLIPPED && !ok && O.Incl < STEEP_INCL) continue;
            double px, py;
            Ob_World2Pic(p.X, p.Y, p.Z, O, px, py);
            const double pxc = (O.Xmin + O.Xmax) / 2.0, pyc = (O.Ymin + O.Ymax) / 2.0;
            // The point must fall inside the photograph: this decides that it shows it.
            if (std::fabs(px - pxc) > (O.Xmax - O.Xmin) / 2.0 || std::fabs(py - pyc) > (O.Ymax - O.Ymin) / 2.0)
                continue;
            const int DistFromCenter = static_cast<int>(std::hypot(px - pxc, py - pyc));
            ranked << QString::asprintf("%08d %d", DistFromCenter, i);
        }
        // Nearest to the centre first; equal distances in the text order of the places.
        ranked.sort();
        SSetTextAt3(2, QString::asprintf(" %d Oblique images. Azimuth %.0f  %d relevants   ", candidates, ViewAz,
                                         static_cast<int>(ranked.size())));
        for (const QString& key : ranked) store.OOO[store.relevants++] = store.GotO8[key.section(' ', 1, 1).toInt()];
    }
    if (model.KamaOPK != 0) opkCandidates(p, ViewAz);

    ObliqueHooks& hooks = obliqueHooks();
    if (store.relevants != 0) {
        if (hooks.showObliqueBigWindow) hooks.showObliqueBigWindow(0, -9);
    } else if (hooks.closeObliqueWindow) {
        hooks.closeObliqueWindow();
    }
    if (model.KamaFacades != 0 && hooks.facadeLookup) hooks.facadeLookup(p);
}

QStringList CountRelevantObliques(const TGIS_Point3D& point) {
    ObliqueStore& store = obliqueStore();
    QStringList report{"Distance,Res (cm/pix) ,Image"};
    const int candidates = GetO8s(TGIS_Point{point.X, point.Y});
    for (int i = 0; i < candidates; ++i) {
        const OBLIQUE& O = store.GotO8[i];
        if (!QFileInfo::exists(EcwFromJpg(O.Proj))) continue;
        if (i % 5 == 0) SSetTextAt3(2, QString::asprintf("Checking image %d out of %d", i, candidates));
        const double V1[3] = {point.X, point.Y, point.Z};
        const double V2[3] = {O.Qxorg, O.Qyorg, O.Qzorg};
        double V3[3];
        if (GetObstructionInMap(V1, V2, V3, 0.5) != 0) continue;
        const double d = distance(point.X, point.Y, point.Z, O.Qxorg, O.Qyorg, O.Qzorg);
        const double res = (O.QW_mm / O.Width) * d / O.fpc * 100;
        // What stands before a "!" in a picture name is a prefix, not the picture.
        QString name = QFileInfo(O.Proj).fileName();
        if (const qsizetype bang = name.indexOf('!'); bang >= 0) name = name.mid(bang + 1);
        report << QString::asprintf("%8.2f %8.2f    %s", d, res, name.toUtf8().constData());
    }
    return report;
}

QString CountRelevantObliquesClick(const TGIS_Point3D& point) {
    const QStringList report = CountRelevantObliques(point);
    const QString file = QString::fromStdString(sessionPaths().ORVO_T) + "txt.txt";
    const bool written = StringToFile(report.join('\n') + '\n', file);
    if (written) ShowOrvoTextFile(file);
    SSetTextAt3(2, QString::asprintf("%.2lf %.2lf %.2lf ", point.X, point.Y, point.Z) + " Visible from " +
                       QString::number(report.size() - 1) + " Cameras out of " +
                       QString::number(modelSession().KamaOblique));
    return written ? file : QString();
}
