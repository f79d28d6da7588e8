#include "Measuring.h"

#include <cmath>

#include "MeasureDisplay.h"
#include "MeasureSave.h"
#include "MeasureState.h"
#include "app/model/ModelSession.h"
#include "app/services/RunLog.h"
#include "app/services/SunGlobalLog.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "scene/engine_interface.h"

namespace {

constexpr double kPi = 3.141592654;

void setTool(bool measure) {
    viewerSettings().MEASUREOROBSERVER = measure ? 1 : 0;
    dispatchState().BILLBOARDMODE = false;
    for (int field = 0; field < 3; ++field) SSetTextAt3(field, "");
    At3d_StatusBar_Set_Text("");
    // One picking tool at a time.
    SetControlChecked(measure ? "SelectObservertargetBtn" : "MeasureButton", false);
    SetControlChecked("SelectMeasuringBtn", false);
    At3d_WriteFlag(LIBFLAG_SELECT_MEASURE, 0);
}

void armPicking(bool down) {
    if (down) {
        At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
        At3d_WriteFlag(LIBFLAG_MEASURE_287, 0);
        SetHelpCaption(MEASURE_HELP);
        SSetTextAt3(3, "Click the first point");
    } else {
        At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
        SetHelpCaption(modelSession().RegularHelp);
    }
}

void toMap(const double local[3], double& x, double& y, double& z) {
    x = local[0] + OC(0);
    y = local[1] + OC(1);
    z = local[2] + OC(2);
}

QString pointText(const char* format, double x, double y, double z) { return QString::asprintf(format, x, y, z); }

}  // namespace

void MeasureButtonClick() {
    setTool(true);
    At3d_MeasureList_Cancel_Selected_Line();
    viewerSettings().SelectedIDX = -1;
    const bool down = ControlChecked("MeasureButton");
    armPicking(down);
    if (!down) return;
    SetControlChecked("ShowMeasurementsAndBillboards", true);
    for (int flag : {LIBFLAG_SHOW_MEASURES, LIBFLAG_SHOW_BILLBOARDS, LIBFLAG_SHOW_SPHERES}) At3d_WriteFlag(flag, 1);
}

void SelectObservertargetBtnClick() {
    setTool(false);
    armPicking(ControlChecked("SelectObservertargetBtn"));
}

void ReleaseMeasureTools() {
    const bool wasArmed = ControlChecked("MeasureButton") || ControlChecked("SelectObservertargetBtn");
    SetControlChecked("MeasureButton", false);
    SetControlChecked("SelectObservertargetBtn", false);
    if (wasArmed) armPicking(false);
}

void NoteRubberbandClick() {
    const int mode = At3d_ReadFlag(LIBFLAG_MESH_LOCATION);
    if (mode != MESH_LOCATION_MEASURE && mode != MESH_LOCATION_CONTINUE) return;
    int first = 0, second = 0;
    double xyz[3];
    At3d_Get_Mesh_Location(1, &first, xyz, nullptr, nullptr, nullptr);
    At3d_Get_Mesh_Location(2, &second, xyz, nullptr, nullptr, nullptr);
    const bool startsLine = first != AT3D_HIT || (second == AT3D_HIT && mode == MESH_LOCATION_MEASURE);
    SSetTextAt3(3, startsLine ? "First point taken: click the second point" : "Second point taken");
}

void Display_Rubberband_Data(int item) {
    RubberbandState& r = rubberbandState();
    switch (item) {
    case AT3D_NOTIFY_RUBBERBAND:
        r.hitFlag0 = r.hitFlag1 = r.hitFlag2 = r.hitFlagObstruction = 0;
        Get_Locations1();
        Get_LocationsObserver();
        measureState().SelectedName = "";
        Get_Locations2();
        DisplayDistancesInAt3W("");
        DoSaveMeasuring();
        return;
    case 4:
        Get_Locations1();
        Get_Locations2();
        return;
    case 5:
    case 6:
        r.hitFlagObstruction = 0;
        Get_Locations2();
        if (item == 6) Get_LocationsObserver();
        return;
    case 7:
        r.hitFlagObstruction = 0;
        Get_LocationsObserver();
        Get_Locations2();
        return;
    default: DisplayDistancesInAt3W(""); return;
    }
}

void Get_Locations1() {
    RubberbandState& r = rubberbandState();
    float rgb[3];
    At3d_Get_Mesh_Location(1, &r.hitFlag1, r.xyzArray1, &r.screenX1, &r.screenY1, rgb);
    // The layer the line starts on: a panel's offers the panel buttons.
    int hit = 0;
    double xyz[3];
    char layer[AT3D_NAME_SIZE] = {};
    At3d_Get_Mesh_Location_At_Point(r.screenX1, r.screenY1, &hit, xyz, layer, nullptr, rgb);
    dispatchState().GlobalLayerName = hit == AT3D_HIT ? QString::fromUtf8(layer) : QString();
    ShowDeleteGroupInSolarMode();
}

void Get_LocationsObserver() {
    RubberbandState& r = rubberbandState();
    float rgb[3];
    int hit = 0;
    // The observer stands above the first point only while an elevation is set.
    if (At3d_Get_Mesh_Location(4, &hit, r.xyzArrayObserver, &r.screenXObserver, &r.screenYObserver, rgb) &&
        hit == AT3D_HIT) {
        r.hitFlagObserver = AT3D_HIT;
        return;
    }
    for (int i = 0; i < 3; ++i) r.xyzArrayObserver[i] = r.xyzArray1[i];
    r.screenXObserver = r.screenX1;
    r.screenYObserver = r.screenY1;
    r.hitFlagObserver = 1;
}

void Get_LocationsObstruction() {
    RubberbandState& r = rubberbandState();
    float rgb[3];
    At3d_Get_Mesh_Location(3, &r.hitFlagObstruction, r.xyzArrayObstruction, &r.screenXObstruction,
                           &r.screenYObstruction, rgb);
}

void Get_Locations2() {
    RubberbandState& r = rubberbandState();
    MeasureState& m = measureState();
    DispatchState& d = dispatchState();
    float rgb[3];
    if (!At3d_Get_Mesh_Location(2, &r.hitFlag2, r.xyzArray2, &r.screenX2, &r.screenY2, rgb)) return;
    r.hitFlag2 = AT3D_HIT;
    int hit = 0;
    double xyz[3];
    char layer[AT3D_NAME_SIZE] = {}, clone[AT3D_NAME_SIZE] = {};
    At3d_Get_Mesh_Location_At_Point(r.screenX2, r.screenY2, &hit, xyz, layer, clone, rgb);
    m.GlobalLayerName2 = QString::fromUtf8(layer);
    CheckObstruction();
    Calculate_Distances();
    const QString first = pointText(" X1: %.2lf Y1: %.2lf Z1: %.2lf", d.GlobalX1, d.GlobalY1, d.GlobalZ1);
    const QString second = pointText(" X2: %.2lf Y2: %.2lf Z2: %.2lf", d.GlobalX2, d.GlobalY2, d.GlobalZ2);
    SSetTextAt3(0, first);
    SSetTextAt3(1, second);
    PrintSunLog(" In measure  %s\n", first.toUtf8().constData());
    PrintSunLog(" In measure  %s\n", second.toUtf8().constData());
    if (At3d_MeasureList_Get_Count() > 0) {
        m.LocalX1 = d.GlobalX1 - OC(0);
        m.LocalY1 = d.GlobalY1 - OC(1);
        m.LocalZ1 = d.GlobalZ1 - OC(2);
        m.LocalX2 = d.GlobalX2 - OC(0);
        m.LocalY2 = d.GlobalY2 - OC(1);
        m.LocalZ2 = d.GlobalZ2 - OC(2);
        m.MeasuredArea = 0;
        m.MeasuredDistance = distance(m.LocalX1, m.LocalY1, m.LocalZ1, m.LocalX2, m.LocalY2, m.LocalZ2);
        PrintSunLog("-----  In measure MeasuredDistance %.2f\n", m.MeasuredDistance);
    }
}

double Calculate_Length(const double a[3], const double b[3]) {
    return distance(a[0], a[1], a[2], b[0], b[1], b[2]);
}

void Calculate_Distances() {
    RubberbandState& r = rubberbandState();
    MeasureState& m = measureState();
    DispatchState& d = dispatchState();
    const bool observer = r.hitFlagObserver == AT3D_HIT;
    const double* start = observer ? r.xyzArrayObserver : r.xyzArray1;
    r.obstructionDistance = r.hitFlagObstruction == AT3D_HIT ? Calculate_Length(start, r.xyzArrayObstruction) : 0;
    r.rubberbandDistance =
        r.hitFlag1 == AT3D_HIT && r.hitFlag2 == AT3D_HIT ? Calculate_Length(start, r.xyzArray2) : 0;
    toMap(start, d.GlobalX1, d.GlobalY1, d.GlobalZ1);
    toMap(r.xyzArray2, d.GlobalX2, d.GlobalY2, d.GlobalZ2);
    m.Dist2D = distance(d.GlobalX1, d.GlobalY1, d.GlobalX2, d.GlobalY2);
    m.AzimuthToTarget = azimD(d.GlobalX1, d.GlobalY1, d.GlobalX2, d.GlobalY2);
    m.SightObstructionDistance = r.obstructionDistance;
    m.Dist3D = r.rubberbandDistance;
    if (m.Dist3D == 0) m.Dist3D = distance(d.GlobalX1, d.GlobalY1, d.GlobalZ1, d.GlobalX2, d.GlobalY2, d.GlobalZ2);
    m.DDZ = d.GlobalZ2 - d.GlobalZ1;
    SSetTextAt3(2, QString::asprintf("---  %d dist: %.2lf", At3d_MeasureList_Get_Count(), m.Dist3D));
}

void CheckObstruction() {
    RubberbandState& r = rubberbandState();
    MeasureState& m = measureState();
    SSetTextAt3(3, "");
    // The line of sight needs the depth test on in the engine while it is cast.
    const int depthTest = r.depthTestFlag;
    r.depthTestFlag = 1;
    const auto sendLook = [&r] {
        At3d_Set_Mesh_Location_Parameters(r.rgbLineArray, r.rgbPoint1Array, r.rgbPoint2Array, r.lineWidth,
                                          r.pointSize, r.depthTestFlag, r.pointsFlag);
    };
    sendLook();
    float rgb[3];
    const int result =
        At3d_Get_Mesh_Obstruction_Point(r.xyzArrayObstruction, &r.screenXObstruction, &r.screenYObstruction, rgb);
    r.depthTestFlag = depthTest;
    sendLook();
    if (result < 0) {
        r.hitFlagObstruction = 0;
        SSetTextAt3(3, "Error");
    } else if (result == 0) {
        r.hitFlagObstruction = 0;
        SSetTextAt3(3, "No obstruction point");
    } else {
        r.hitFlagObstruction = AT3D_HIT;
        Calculate_Distances();
        SSetTextAt3(3, QString::asprintf("Obstruction at %.1lf m", r.obstructionDistance));
        double x, y, z;
        toMap(r.xyzArrayObstruction, x, y, z);
        PrintRunLog("Obstruction: %.2lf %.2lf %.2lf\n", x, y, z);
    }
    m.haveObstructionMessageFlag = 1;
    double x, y, z;
    toMap(r.xyzArray1, x, y, z);
    SSetTextAt3(0, pointText("%.2lf %.2lf %.2lf", x, y, z));
}

double GetObstruction(const double V1[3], const double V2[3], double V3[3], double skipDistance) {
    const double* center = frameState().OriginalobjectCenter;
    double v1[3], v2[3], hit[3];
    for (int i = 0; i < 3; ++i) {
        v1[i] = V1[i] - center[i];
        v2[i] = V2[i] - center[i];
    }
    if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, skipDistance, hit, 0) <= 0) return 0;
    for (int i = 0; i < 3; ++i) V3[i] = hit[i] + center[i];
    return Calculate_Length(v1, hit);
}

double GetObstructionInMap(const double V1[3], const double V2[3], double V3[3], double skipDistance) {
    const double* offset = frameState().Offset;
    double v1[3], v2[3], hit[3] = {V3[0] - offset[0], V3[1] - offset[1], V3[2] - offset[2]};
    for (int i = 0; i < 3; ++i) {
        v1[i] = V1[i] - offset[i];
        v2[i] = V2[i] - offset[i];
    }
    const double distance = GetObstruction(v1, v2, hit, skipDistance);
    if (distance > 0)
        for (int i = 0; i < 3; ++i) V3[i] = hit[i] + offset[i];
    return distance;
}

bool SlopeDegrees(double DDZ, double Dist2D, double& slope) {
    if (!(Dist2D > 0.001)) return false;
    slope = std::atan(DDZ / Dist2D) * 180 / kPi;
    return true;
}

void Locations_OffClick() {
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    for (int field = 0; field < STATUS_TEXT_COUNT; ++field) SSetTextAt3(field, "");
}

void Locations_MeasureClick() { At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE); }
void Locations_PauseClick() { At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_PAUSE); }
void Locations_ContinueClick() { At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_CONTINUE); }

void ShowDeleteGroupInSolarMode() {
    if (!viewerSettings().ConfiguredForSolar) return;
    if (At3d_MeasureList_Get_Count() > 0 || At3d_Measure_Billboard_Get_Count() > 0)
        SetControlVisible("DeleteThisOne", true);
}
