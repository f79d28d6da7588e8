#include "DigitisedShape.h"

#include <QFile>
#include <QStringList>
#include <cmath>
#include <gdal_priv.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

#include "app/model/AddModels.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "app/services/ShapeFileWriter.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "motion/Flythrough.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PlacementDae.h"
#include "solar/design/RoofCapture.h"

namespace {

// The four points or more of a roof capture: a roof polygon file, loaded at once.
bool roofPath(const TGIS_Point3D* P, int NP) {
    RoofPlaneCapture capture;
    const bool made = CreateRoofPlaneFromPoints(P, NP, startupState().CountOfReports, capture);
    panelFormState().BlockDepth = 0;
    if (!made) return false;
    AddCompleteModels({capture.fileName});
    return true;
}

bool panelPath(const TGIS_Point3D* P, int NP) {
    QStringList files;
    return CreatePanelsFromPoints(P, NP, files) && !files.isEmpty();
}

bool writeOutline(GDALDataset* dataset, const TGIS_Point3D* P, int NP, int TC, bool ISPOLYGON) {
    OGRSpatialReference srs;
    const QString wkt = modelSession().PRJ.empty() ? QString() : StringFromFile(QString::fromStdString(modelSession().PRJ));
    const bool withSrs = !wkt.isEmpty() && srs.SetFromUserInput(wkt.toUtf8().constData()) == OGRERR_NONE;
    if (withSrs) srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    char** options = CSLSetNameValue(nullptr, "ENCODING", "UTF-8");
    OGRLayer* layer = dataset->CreateLayer("Outline", withSrs ? &srs : nullptr,
                                           ISPOLYGON ? wkbPolygon25D : wkbLineString25D, options);
    CSLDestroy(options);
    if (!layer) return false;
    OGRFieldDefn color("Color", OFTReal);
    color.SetWidth(20);
    color.SetPrecision(0);
    OGRFieldDefn maxZ(MAX_ALLOWED_Z_FIELD, OFTReal);
    maxZ.SetWidth(20);
    maxZ.SetPrecision(2);
    if (layer->CreateField(&color) != OGRERR_NONE || layer->CreateField(&maxZ) != OGRERR_NONE) return false;
    OGRFeature* feature = OGRFeature::CreateFeature(layer->GetLayerDefn());
    feature->SetField("Color", static_cast<double>(TC));
    feature->SetField(MAX_ALLOWED_Z_FIELD, NO_HEIGHT_LIMIT);
    if (ISPOLYGON) {
        OGRLinearRing ring;
        for (int i = 0; i < NP; ++i) ring.addPoint(P[i].X, P[i].Y, P[i].Z);
        ring.closeRings();
        OGRPolygon polygon;
        polygon.addRing(&ring);
        feature->SetGeometry(&polygon);
    } else {
        OGRLineString line;
        for (int i = 0; i < NP; ++i) line.addPoint(P[i].X, P[i].Y, P[i].Z);
        feature->SetGeometry(&line);
    }
    const bool ok = layer->CreateFeature(feature) == OGRERR_NONE;
    OGRFeature::DestroyFeature(feature);
    return ok;
}

}  // namespace

bool RoofCaptureActive() { return std::trunc(10.1 * panelFormState().BlockDepth) == 1; }

bool CreateSHPfileFromPoints(const TGIS_Point3D* P, int NP, int TC, const QString& SHP, bool ISPOLYGON) {
    const int minimum = ISPOLYGON ? 3 : 2;
    if (NP < minimum) {
        PrintRunLog("CreateSHPfileFromPoints: %d points are too few for %s\n", NP, QFile::encodeName(SHP).constData());
        return false;
    }
    // TODO(#15): a facade line goes to the facade's own files.
    // A flythrough line becomes the way point file in place of the outline.
    if (dispatchState().IsFlytrough && !ISPOLYGON)
        return CreateFlytroughWaypointFile(P, NP, viewerSettings().FlytroughAlt, cameraState().roaming_FieldOfView,
                                           SHP);
    // The outline is kept as a shape in every case, a roof capture's too.
    const bool written =
        WriteShapeFileStaged(SHP, [&](GDALDataset* dataset) { return writeOutline(dataset, P, NP, TC, ISPOLYGON); });
    if (!written) PrintRunLog("CreateSHPfileFromPoints: can not write %s\n", QFile::encodeName(SHP).constData());
    if (RoofCaptureActive() && ISPOLYGON) return NP >= 4 ? roofPath(P, NP) : panelPath(P, NP);
    return written;
}
