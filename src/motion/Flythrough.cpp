#include "Flythrough.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cstdio>
#include <cmath>
#include <gdal_priv.h>
#include <memory>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

#include "app/model/CameraTools.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/GdalDrivers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/services/ShapeFileWriter.h"
#include "app/services/Viewers.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "scene/engine_interface.h"

namespace {

constexpr double kPi = 3.141592654;
// The colour of a new way point (toolkit colour: blue).
constexpr double WAYPOINT_COLOR = 0xFF0000;
constexpr double NEW_PITCH = -45;
constexpr double NO_POI_Z = -9999;
// "MaxAllowedZ" of the digitised shapes: no height limit. A shape file's
// field names hold 10 characters, hence "MaxAllowed".
constexpr double NO_HEIGHT_LIMIT = 99999;
constexpr const char* MAX_ALLOWED_Z_FIELD = "MaxAllowed";
// The Z of a position found on no segment.
constexpr double NO_POSITION_Z = -9999;
constexpr double NO_POSITION_LIMIT = -9990;
// The camera looks at a point this far ahead.
constexpr double TARGET_DISTANCE = 10;
constexpr float FIRST_STATION = 0.1f;
// Stations are looked up a little ahead, so that a way point's own station
// falls on the segment that starts there.
constexpr float STATION_LEAD = 0.05f;
constexpr float END_MARGIN = 0.1f;
constexpr double FLY_PITCH_MAX = 20, FLY_PITCH_MIN = -90, FLY_PITCH_STEP = 5;
constexpr double FLY_FOV_MIN = 30, FLY_FOV_MAX = 100, FLY_FOV_STEP = 2;
constexpr double FLY_DELTA_Z_STEP = 2;
const QString WALK_HELP =
    "\t W forward S back,  +/- to zoom, <-/-> to skew, PgUp/PgDn for Up/Down, Up/Down arrows for pitch ";

FlythroughState& state() {
    static FlythroughState s;
    return s;
}

std::function<void(const QString&)>& captionHook() {
    static std::function<void(const QString&)> hook;
    return hook;
}

void setFormCaption(const QString& caption) {
    state().FormCaption = caption;
    if (captionHook()) captionHook()(caption);
}

QByteArray fileName(const QString& path) { return QFile::encodeName(path); }

double planDistance(const TGIS_Point3D& a, const TGIS_Point3D& b) { return std::hypot(b.X - a.X, b.Y - a.Y); }

TGIS_Point3D between(const TGIS_Point3D& a, const TGIS_Point3D& b, double t) {
    return {a.X + (b.X - a.X) * t, a.Y + (b.Y - a.Y) * t, a.Z + (b.Z - a.Z) * t, a.M + (b.M - a.M) * t};
}

// Numbers of width 20 and no decimals, as every way point field is kept.
bool addNumberField(OGRLayer* layer, const char* name, int decimals = 0) {
    OGRFieldDefn field(name, OFTReal);
    field.SetWidth(20);
    field.SetPrecision(decimals);
    return layer->CreateField(&field) == OGRERR_NONE;
}

bool modelSrs(OGRSpatialReference& srs) {
    const std::string& prj = modelSession().PRJ;
    const QString wkt = prj.empty() ? QString() : StringFromFile(QString::fromStdString(prj));
    if (wkt.isEmpty() || srs.SetFromUserInput(wkt.toUtf8().constData()) != OGRERR_NONE) return false;
    srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return true;
}

QStringList fieldNames(OGRLayer* layer) {
    QStringList names;
    OGRFeatureDefn* definition = layer->GetLayerDefn();
    for (int i = 0; i < definition->GetFieldCount(); ++i)
        names << QString::fromUtf8(definition->GetFieldDefn(i)->GetNameRef());
    return names;
}

bool writeWaypoints(GDALDataset* dataset, const std::vector<TGIS_Point3D>& path, double fov, double& length) {
    OGRSpatialReference srs;
    const bool withSrs = modelSrs(srs);
    char** options = CSLSetNameValue(nullptr, "ENCODING", "UTF-8");
    OGRLayer* layer = dataset->CreateLayer("FlyTrough", withSrs ? &srs : nullptr, wkbPoint25D, options);
    CSLDestroy(options);
    if (!layer) return false;
    if (!addNumberField(layer, "Color") || !addNumberField(layer, MAX_ALLOWED_Z_FIELD, 2)) return false;
    for (const QString& name : FlytroughFieldsToAdd(fieldNames(layer)).added)
        if (!addNumberField(layer, name.toUtf8().constData())) return false;
    double STA = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (i > 0) STA += planDistance(path[i - 1], path[i]);
        OGRFeature* feature = OGRFeature::CreateFeature(layer->GetLayerDefn());
        OGRPoint point(path[i].X, path[i].Y, path[i].Z);
        feature->SetGeometry(&point);
        feature->SetField("Color", WAYPOINT_COLOR);
        feature->SetField(MAX_ALLOWED_Z_FIELD, NO_HEIGHT_LIMIT);
        feature->SetField("STA", STA);
        feature->SetField("DeltaH", 0.0);
        feature->SetField("Pitch", NEW_PITCH);
        feature->SetField("SKEW", 0.0);
        feature->SetField("Traversed", 0.0);
        feature->SetField("FOV", fov);
        feature->SetField("POIX", 0.0);
        feature->SetField("POIY", 0.0);
        feature->SetField("POIZ", NO_POI_Z);
        const bool ok = layer->CreateFeature(feature) == OGRERR_NONE;
        OGRFeature::DestroyFeature(feature);
        if (!ok) return false;
    }
    length = STA;
    return true;
}

struct GdalClose {
    void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using DatasetPtr = std::unique_ptr<GDALDataset, GdalClose>;

DatasetPtr openVector(const QString& file) {
    EnsureGdalDrivers();
    return DatasetPtr(static_cast<GDALDataset*>(
        GDALOpenEx(fileName(file).constData(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr)));
}

double fieldOf(OGRFeature* feature, const char* name) {
    const int index = feature->GetFieldIndex(name);
    return index < 0 ? 0 : feature->GetFieldAsDouble(index);
}

void setFieldIfAny(OGRFeature* feature, const char* name, double value) {
    const int index = feature->GetFieldIndex(name);
    if (index >= 0) feature->SetField(index, value);
}

// The layer's shapes in path order: shapes are numbered 1 to the last uid.
std::vector<OGRFeature*> featuresInOrder(OGRLayer* layer) {
    std::vector<OGRFeature*> features;
    layer->ResetReading();
    while (OGRFeature* feature = layer->GetNextFeature()) features.push_back(feature);
    return features;
}

void destroyAll(std::vector<OGRFeature*>& features) {
    for (OGRFeature* feature : features) OGRFeature::DestroyFeature(feature);
    features.clear();
}

float interpolate(float at1, float at2, float ddd, float DDD) { return at1 + (at2 - at1) * ddd / DDD; }

// The same way point copied forward: what the operator set carries on to
// the points not yet reached.
void carrySettings(FLYTROUGHWAYPOINT& to, const FLYTROUGHWAYPOINT& from) {
    to.SKEW = from.SKEW;
    to.DeltaH = from.DeltaH;
    to.FOV = from.FOV;
    to.Pitch = from.Pitch;
}

bool writeUpdatedLayer(const QString& output) {
    FlythroughState& s = state();
    DatasetPtr input = openVector(s.FTLL);
    OGRLayer* source = input ? input->GetLayer(0) : nullptr;
    if (!source) {
        PrintRunLog("CompleteFTWP: can not read %s\n", fileName(s.FTLL).constData());
        return false;
    }
    std::vector<OGRFeature*> features = featuresInOrder(source);
    for (std::size_t i = 0; i < features.size() && i < s.FTWP.size(); ++i) {
        const FLYTROUGHWAYPOINT& w = s.FTWP[i];
        setFieldIfAny(features[i], "SKEW", w.SKEW);
        setFieldIfAny(features[i], "Traversed", w.Traversed);
        setFieldIfAny(features[i], "STA", w.Sta);
        setFieldIfAny(features[i], "FOV", w.FOV);
        setFieldIfAny(features[i], "DeltaH", w.DeltaH);
        setFieldIfAny(features[i], "Pitch", w.Pitch);
    }
    const bool written = WriteShapeFileStaged(output, [&](GDALDataset* dataset) {
        char** options = CSLSetNameValue(nullptr, "ENCODING", "UTF-8");
        OGRLayer* layer =
            dataset->CreateLayer("FlyTrough", source->GetSpatialRef(), source->GetGeomType(), options);
        CSLDestroy(options);
        if (!layer) return false;
        OGRFeatureDefn* definition = source->GetLayerDefn();
        for (int i = 0; i < definition->GetFieldCount(); ++i)
            if (layer->CreateField(definition->GetFieldDefn(i)) != OGRERR_NONE) return false;
        for (OGRFeature* feature : features) {
            OGRFeature* copy = OGRFeature::CreateFeature(layer->GetLayerDefn());
            copy->SetFrom(feature);
            const bool ok = layer->CreateFeature(copy) == OGRERR_NONE;
            OGRFeature::DestroyFeature(copy);
            if (!ok) return false;
        }
        return true;
    });
    destroyAll(features);
    if (!written) PrintRunLog("CompleteFTWP: can not write %s\n", fileName(output).constData());
    return written;
}

}  // namespace

FlythroughState& flythroughState() { return state(); }
void resetFlythroughState() { state() = FlythroughState{}; }
void SetFlythroughCaptionHook(std::function<void(const QString&)> hook) { captionHook() = std::move(hook); }

FlytroughFields FlytroughFieldsToAdd(const QStringList& existing) {
    FlytroughFields fields;
    for (const QString& name : FLYTROUGH_FIELD_LOOKUPS) {
        if (existing.contains(name, Qt::CaseInsensitive)) continue;
        fields.added << (name == "TTraversed" ? QString("Traversed") : name);
        ++fields.count;
    }
    return fields;
}

// GDAL/OGR offers simplification and densification of lines but no
// smoothing, so the smoothing of the way points is this corner cutting.
std::vector<TGIS_Point3D> SmoothLine(const std::vector<TGIS_Point3D>& line, int rounds) {
    std::vector<TGIS_Point3D> points = line;
    for (int round = 0; round < rounds && points.size() > 2; ++round) {
        std::vector<TGIS_Point3D> cut;
        cut.push_back(points.front());
        const std::size_t last = points.size() - 2;
        for (std::size_t i = 0; i <= last; ++i) {
            if (i > 0) cut.push_back(between(points[i], points[i + 1], 0.25));
            if (i < last) cut.push_back(between(points[i], points[i + 1], 0.75));
        }
        cut.push_back(points.back());
        points = std::move(cut);
    }
    return points;
}

bool CreateFlytroughWaypointFile(const TGIS_Point3D* P, int NP, double FlytroughAlt, double fov, const QString& SHP,
                                 WaypointFileSummary* summary) {
    if (NP < 2) {
        PrintRunLog("Flytrough: %d points are too few for %s\n", NP, fileName(SHP).constData());
        return false;
    }
    // A new layer lacks every way point field, so the count is never 0 and
    // the line is always smoothed.
    const int SMOOTH = FlytroughFieldsToAdd({"Color", MAX_ALLOWED_Z_FIELD}).count > 0 ? 3 : 0;
    std::vector<TGIS_Point3D> path = SmoothLine(std::vector<TGIS_Point3D>(P, P + NP), SMOOTH);
    for (TGIS_Point3D& p : path) p.Z += FlytroughAlt;
    double length = 0;
    const bool written = WriteShapeFileStaged(
        SHP, [&](GDALDataset* dataset) { return writeWaypoints(dataset, path, fov, length); });
    if (!written) {
        PrintRunLog("Flytrough: can not write %s\n", fileName(SHP).constData());
        return false;
    }
    PrintRunLog("Flytrough: %d way points, %.2f m in %s\n", int(path.size()), length, fileName(SHP).constData());
    if (summary) *summary = {int(path.size()), length};
    return true;
}

void FlytroughVieportClick() {
    FlythroughState& s = state();
    if (!ControlChecked("FlytroughVieport")) {
        EndFlytrough();
        return;
    }
    s.keptHelp = mainFormState().LabelForHelpCaption;
    QString FN;
    if (!OrvoOpenFile(FN, "SHP", "Shape file(*.SHP) | *.SHP", "Open the shape file(input)",
                      QString::fromStdString(modelSession().MEASUREMENTSFOLDER)))
        return;
    OpenFlytroughFile(FN);
}

bool OpenFlytroughFile(const QString& FN) {
    FlythroughState& s = state();
    DispatchState& d = dispatchState();
    s.FTLL = FN;
    DatasetPtr dataset = openVector(FN);
    OGRLayer* layer = dataset ? dataset->GetLayer(0) : nullptr;
    if (!layer) {
        PrintRunLog("Flytrough: can not open %s\n", fileName(FN).constData());
        return false;
    }
    d.GlobalFlyTroughSKEW = 0;
    cameraState().roaming_FieldOfView = 80;
    std::vector<OGRFeature*> features = featuresInOrder(layer);
    const auto refuse = [&](const QString& message) {
        if (!message.isEmpty()) MyShowMessage(message);
        destroyAll(features);
        return false;
    };
    const OGRGeometry* first = features.empty() ? nullptr : features.front()->GetGeometryRef();
    if (!first || wkbFlatten(first->getGeometryType()) != wkbPoint) return refuse("The file has to be points");
    std::vector<TGIS_Point3D> points;
    for (OGRFeature* feature : features) {
        const auto* point = dynamic_cast<const OGRPoint*>(feature->GetGeometryRef());
        points.push_back(point ? TGIS_Point3D{point->getX(), point->getY(), point->getZ(), 0} : TGIS_Point3D{});
    }
    // From the geometry, not from the stations of the file.
    float length = 0;
    for (std::size_t i = 1; i < points.size(); ++i) length += float(planDistance(points[i - 1], points[i]));
    s.FlytroughLength = length;
    QString duration = "40";
    if (!MyInputQuery(QString::asprintf("The path length is %.0fm", double(length)),
                      "Please define the requested video duration (seconds)", duration))
        return refuse({});
    float seconds = 0;
    std::sscanf(duration.toUtf8().constData(), "%f", &seconds);
    s.AviDuration = seconds;
    s.DeltaFlytroughSta = length / (seconds * float(viewerSettings().FRAMERATE));

    s.FTWP.assign(features.size(), FLYTROUGHWAYPOINT{});
    for (std::size_t I = 0; I < features.size(); ++I) {
        FLYTROUGHWAYPOINT& w = s.FTWP[I];
        w.P = points[I];
        w.Sta = float(fieldOf(features[I], "Sta"));
        w.Pitch = float(fieldOf(features[I], "Pitch"));
        w.SKEW = float(fieldOf(features[I], "SKEW"));
        w.FOV = float(fieldOf(features[I], "FOV"));
        w.DeltaH = float(fieldOf(features[I], "DeltaH"));
        w.Traversed = int(fieldOf(features[I], "Traversed"));
        w.Index = int(I);
    }
    destroyAll(features);
    d.KamaFTWP = int(s.FTWP.size());
    for (int I = 0; I + 1 < d.KamaFTWP; ++I) {
        s.FTWP[I].Azim = float(azimD(s.FTWP[I].P.X, s.FTWP[I].P.Y, s.FTWP[I + 1].P.X, s.FTWP[I + 1].P.Y));
        // The last way point holds the last segment's heading.
        s.FTWP[I + 1].Azim = s.FTWP[I].Azim;
    }
    SSetTextAt3(3, QString::asprintf("Flytrough  Length %.0fm", double(length)));
    SetHelpCaption(WALK_HELP);
    s.FlytroughSta = FIRST_STATION;
    OrvoSetObserverFlyTrough(GetPointOnFlytrough(s.FlytroughSta));
    return true;
}

void EndFlytrough() {
    FlythroughState& s = state();
    dispatchState().KamaFTWP = 0;
    s.FTWP.clear();
    SetControlChecked("LookAtBtn", false);
    LookAtBtnClick();
    SSetTextAt3(3, "");
    SetHelpCaption(s.keptHelp);
}

FLYTROUGHWAYPOINT GetPointOnFlytrough(float sta_in) {
    FlythroughState& s = state();
    if (s.TSCSV.isEmpty()) s.TSCSV << "Sta,st1,st2,Az1,Az2,DeltaAzim,Skew";
    FLYTROUGHWAYPOINT result;
    result.P.Z = NO_POSITION_Z;
    float sta = sta_in + STATION_LEAD;
    if (sta > s.FlytroughLength) sta = s.FlytroughLength - END_MARGIN;
    const int kama = dispatchState().KamaFTWP;
    for (int I = 0; I + 1 < kama && I + 1 < int(s.FTWP.size()); ++I) {
        const FLYTROUGHWAYPOINT& a = s.FTWP[I];
        const FLYTROUGHWAYPOINT& b = s.FTWP[I + 1];
        const float st1 = a.Sta, st2 = b.Sta;
        if (!(sta >= st1 && sta <= st2)) continue;
        result = a;
        result.Sta = sta;
        const float Az1 = a.Azim + a.SKEW, Az2 = b.Azim + b.SKEW;
        float DeltaAzim = Az2 - Az1;
        if (DeltaAzim > 180) DeltaAzim -= 360;
        if (DeltaAzim < -180) DeltaAzim += 360;
        const float ddd = sta - st1, DDD = st2 - st1;
        // Two way points on one station: the start's values stand.
        const float Skew = DDD != 0 ? DeltaAzim * ddd / DDD : 0;
        s.TSCSV << QString::asprintf("%.2f,%.2f,%.2f,%.2f,%.2f,%.2f,%.2f", double(sta), double(st1), double(st2),
                                     double(Az1), double(Az2), double(DeltaAzim), double(Skew));
        result.Azim = Az1 + Skew;
        if (DDD != 0) {
            result.Pitch = interpolate(a.Pitch, b.Pitch, ddd, DDD);
            result.DeltaH = interpolate(a.DeltaH, b.DeltaH, ddd, DDD);
            result.FOV = interpolate(a.FOV, b.FOV, ddd, DDD);
        }
        PrintRunLog("%5d %8d sta  %010.2f  A1 %10.2f A2 %10.2f DeltaAzim %10.2f Skew %10.2f Az %10.2f DH %.2f\n",
                    ++s.traceCalls, I, double(sta), double(Az1), double(Az2), double(DeltaAzim), double(Skew),
                    double(result.Azim), double(result.DeltaH));
        // Stations are plan lengths but the step runs along the slope.
        const double dx = b.P.X - a.P.X, dy = b.P.Y - a.P.Y, dz = b.P.Z - a.P.Z;
        const double length = std::sqrt(dx * dx + dy * dy + dz * dz);
        if (length > 0 && ddd <= length) {
            result.P.X = a.P.X + dx / length * ddd;
            result.P.Y = a.P.Y + dy / length * ddd;
            result.P.Z = a.P.Z + dz / length * ddd;
        }
        break;
    }
    return result;
}

void OrvoSetObserverFlyTrough(FLYTROUGHWAYPOINT PQ) {
    CameraState& c = cameraState();
    RubberbandState& r = rubberbandState();
    if (!ControlChecked("LookAtBtn")) {
        SetControlChecked("LookAtBtn", true);
        if (!viewerSettings().ConfiguredForSolar) SetControlVisible("LookAtBtn", true);
    }
    double* eye = r.xyzArray1;
    double* target = r.xyzArray2;
    eye[0] = PQ.P.X - OC(0);
    eye[1] = PQ.P.Y - OC(1);
    eye[2] = PQ.P.Z - OC(2) + PQ.DeltaH;
    // Between way points Azim already holds the start's skew, so it counts
    // twice there; at a way point reached by key it counts once.
    const double azDeg = double(PQ.Azim) + double(PQ.SKEW);
    DAzim(eye[0], eye[1], TARGET_DISTANCE, azDeg, target[0], target[1]);
    target[2] = eye[2] + std::tan(double(PQ.Pitch) * kPi / 180) * TARGET_DISTANCE;
    // PQ.FOV is the record's only: the camera keeps roaming_FieldOfView.
    At3d_Set_Roaming_Data(c.roamingCameraName.c_str(), eye, target, &c.roaming_Up_Rotation, &c.roaming_FieldOfView);
    c.activeCameraName = c.roamingCameraName;
    At3d_Switch_OGL_Camera(c.activeCameraName.c_str());
    SetRoamingColor();
    c.activeCameraID = 1;
    c.cameraZAngle = azDeg;
    const QString status =
        QString::asprintf("%d Sta %.1f   H %.1f   FOV %.0lf Heading %.1f Skew %.0f DH %.2f Pitch %.0f", PQ.Index,
                          double(PQ.Sta), eye[2] + OC(2), c.roaming_FieldOfView, double(PQ.Azim), double(PQ.SKEW),
                          double(PQ.DeltaH), double(PQ.Pitch));
    SSetTextAt3(0, status);
    PrintRunLog("%s\n", status.toUtf8().constData());
    At3d_RenderOpenGLScene();
    DisplayAzimuth();
}

void FlyTroughKey(FlyKey key) {
    FlythroughState& s = state();
    DispatchState& d = dispatchState();
    double& fov = cameraState().roaming_FieldOfView;
    FLYTROUGHWAYPOINT PQ = GetPointOnFlytrough(s.FlytroughSta);
    const int IDX = PQ.Index;
    if (IDX < 0 || IDX >= int(s.FTWP.size())) return;
    FLYTROUGHWAYPOINT& at = s.FTWP[std::size_t(IDX)];
    switch (key) {
    case FlyKey::PageUp:
    case FlyKey::PageDown:
        // The running value, not an addition to the way point's own.
        d.GlobalFlyDeltaZ += key == FlyKey::PageUp ? FLY_DELTA_Z_STEP : -FLY_DELTA_Z_STEP;
        at.DeltaH = PQ.DeltaH = float(d.GlobalFlyDeltaZ);
        break;
    case FlyKey::Left:
    case FlyKey::Right: {
        const double step = viewerSettings().GlobalVideoRotationStep;
        d.GlobalFlyTroughSKEW += key == FlyKey::Right ? step : -step;
        at.SKEW = PQ.SKEW = float(d.GlobalFlyTroughSKEW);
        break;
    }
    case FlyKey::Up:
    case FlyKey::Down: {
        const double pitch = at.Pitch + (key == FlyKey::Up ? FLY_PITCH_STEP : -FLY_PITCH_STEP);
        if (pitch > FLY_PITCH_MAX || pitch < FLY_PITCH_MIN) return;
        at.Pitch = PQ.Pitch = float(pitch);
        break;
    }
    case FlyKey::NumPlus:
        if (fov < FLY_FOV_MIN) return;
        fov -= FLY_FOV_STEP;
        at.FOV = PQ.FOV = float(fov);
        break;
    case FlyKey::NumMinus:
        if (fov > FLY_FOV_MAX) return;
        fov += FLY_FOV_STEP;
        at.FOV = PQ.FOV = float(fov);
        break;
    case FlyKey::Forward: {
        if (IDX >= d.KamaFTWP - 1) return;
        FLYTROUGHWAYPOINT& next = s.FTWP[std::size_t(IDX) + 1];
        if (next.Traversed == 0) carrySettings(next, at);
        next.Traversed += 1;
        PQ = next;
        s.FlytroughSta = next.Sta;
        break;
    }
    case FlyKey::Back:
        if (IDX < 1) return;
        PQ = s.FTWP[std::size_t(IDX) - 1];
        s.FlytroughSta = PQ.Sta;
        break;
    }
    OrvoSetObserverFlyTrough(PQ);
}

bool DoOneStepFlyTrough() {
    FlythroughState& s = state();
    const float duration = float(s.AVIframe) / float(viewerSettings().FRAMERATE);
    if (duration >= s.AviDuration) return false;
    setFormCaption(QString::asprintf("Frame %d duration %.2f   Sta %.2f  out of %.2f ", s.AVIframe, double(duration),
                                     double(s.FlytroughSta), double(s.FlytroughLength)));
    s.FlytroughSta += s.DeltaFlytroughSta;
    if (s.FlytroughSta >= s.FlytroughLength) return false;
    const FLYTROUGHWAYPOINT PQ = GetPointOnFlytrough(s.FlytroughSta);
    s.GlobalFTWP = PQ;
    if (PQ.P.Z < NO_POSITION_LIMIT) return false;
    OrvoSetObserverFlyTrough(PQ);
    return true;
}

bool DoOneStepCircle() {
    FlythroughState& s = state();
    const float duration = float(s.AVIframe) / float(viewerSettings().FRAMERATE);
    if (duration >= s.AviDuration) return false;
    setFormCaption(QString::asprintf("Frame %d duration %.2f ", s.AVIframe, double(duration)));
    const double step = viewerSettings().GlobalVideoRotationStep;
    if (cameraState().activeCameraID != 0) {
        At3d_Move_Roaming_Turn(-step);
        SetStatusbar4Roaming();
    } else {
        At3d_RotateCamera(1, 0, 0, -step);
        GetCameraAnglesClick();
        dispatchState().CAMERAZANGLE = cameraState().cameraZAngle;
        DisplayAzimuth();
    }
    return true;
}

int CompleteFTWP() {
    FlythroughState& s = state();
    const int kama = std::min(dispatchState().KamaFTWP, int(s.FTWP.size()));
    int traversed = 0;
    for (int I = 0; I < kama; ++I) traversed += s.FTWP[std::size_t(I)].Traversed;
    if (kama == 0 || traversed == 0) return 0;
    int filled = 0;
    for (int I = 1; I < kama; ++I) {
        FLYTROUGHWAYPOINT& w = s.FTWP[std::size_t(I)];
        if (w.Traversed != 0) continue;
        carrySettings(w, s.FTWP[std::size_t(I) - 1]);
        w.Traversed += 1;
        ++filled;
    }
    QString name = QFileInfo(s.FTLL).dir().filePath("V.shp");
    if (!OrvoSaveFile(name, "SHP", "Polygon/Line file (*.SHP)|*.SHP", "Specify the updated flytrough file (output)",
                      1))
        return filled;
    writeUpdatedLayer(name);
    return filled;
}

void ShowFlytroughwaypints1Click() {
    const FlythroughState& s = state();
    const int kama = dispatchState().KamaFTWP;
    QByteArray text = "Sta,DH,Pitch,FOV,Azim,Skew,Traversed\n";
    for (int I = 0; I < kama && I < int(s.FTWP.size()); ++I) {
        const FLYTROUGHWAYPOINT& w = s.FTWP[std::size_t(I)];
        text += QString::asprintf("%.2f,%.0f,%.0f,%.0f,%.1f,%.1f,%d\n", double(w.Sta), double(w.DeltaH),
                                  double(w.Pitch), double(w.FOV), double(w.Azim), double(w.SKEW), w.Traversed)
                    .toUtf8();
    }
    const QString file = QString::fromStdString(sessionPaths().ORVO_T) + "FTWP.csv";
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(text) != text.size() || !out.commit()) {
        PrintRunLog("Can not write %s\n", fileName(file).constData());
        return;
    }
    ShowOrvoCSVFile(QString::number(kama) + " Flytrough waypoints", file, false, true, false);
}
