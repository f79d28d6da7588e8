#include "ViewPanelClick.h"

#include <QString>
#include <cmath>

#include "app/inbox/Handover.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "app/services/RunLog.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "geo/Units.h"
#include "measure/BillboardPlacing.h"
#include "measure/Digitising.h"
#include "measure/Measuring.h"
#include "oblique/ObliqueLookup.h"
#include "overlays/TacticalGridCells.h"
#include "scene/engine_interface.h"

namespace {

bool obliquesKnown() {
    const ModelSession& model = modelSession();
    return model.KamaOblique > 0 || model.KamaOPK > 0;
}

// The eye the azimuth is taken from: the roaming camera's when one is drawn.
void eyePosition(double eye[3]) {
    const CameraState& c = cameraState();
    double angles[3];
    At3d_GetCameraAngles(&angles[0], &angles[1], &angles[2]);
    At3d_GetCameraViewPoint(&eye[0], &eye[1], &eye[2]);
    if (c.activeCameraID == 0) return;
    double center[3], up = 0, fov = 0;
    At3d_Get_Roaming_Data(c.activeCameraName.c_str(), eye, center, &up, &fov, 1);
}

// Step A: the hit becomes the session's point and its description.
void takeSessionPoint(DispatchState& d, const ClickInput& click, const double local[3]) {
    d.GlobalX1 = local[0];
    d.GlobalY1 = local[1];
    d.GlobalZ1 = local[2];
    d.FromModel_X = local[0] + OC(0);
    d.FromModel_Y = local[1] + OC(1);
    d.FromModel_Z = local[2] + OC(2);
    double eye[3];
    eyePosition(eye);
    const int azimuth = static_cast<int>(azimD(eye[0], eye[1], local[0], local[1]));
    const int red = static_cast<int>(d.rgbArray2[0] * 255), green = static_cast<int>(d.rgbArray2[1] * 255),
              blue = static_cast<int>(d.rgbArray2[2] * 255);
    // The tactical grid's cell of the point; none is known without a grid.
    const int gridCellX = 0, gridCellY = 0;
    const QString grid = EastNorth2String(d.FromModel_X, d.FromModel_Y);
    double lat = 0, lon = 0;
    GPSEastNorth2LatLon(d.FromModel_X, d.FromModel_Y, lat, lon);
    const QString info = QString::asprintf("  X %.2lf Y %.2lf Z %.2lf %.7lf %.7lf [%s] RGB:[%d,%d,%d]", d.FromModel_X,
                                           d.FromModel_Y, d.FromModel_Z, lat, lon,
                                           d.GlobalLayerName1.toUtf8().constData(), red, green, blue) +
                         GetGridName(TGIS_Point{d.FromModel_X, d.FromModel_Y}) +
                         QString::asprintf(" IX: %d IY: %d Az: %d", gridCellX, gridCellY, azimuth);
    PrintRunLog("%s %s\n", info.toUtf8().constData(), grid.toUtf8().constData());
    if (click.Shift) {
        SSetTextAt3(0, info);
        d.clipboardText = info;
    }
    if (click.Button == 2) {
        d.clipboardText = QString::asprintf("  %lf  %lf  %lf  ", d.FromModel_X, d.FromModel_Y, d.FromModel_Z);
        d.TDigitizedPoints << QString::asprintf("%lf %lf %lf", d.FromModel_X, d.FromModel_Y, d.FromModel_Z);
    }
}

// The clicked point in the map frame, as the photographs' cameras are kept,
// with the view's azimuth (0 to 360) that the lookup matches them against.
TGIS_Point3D clickedMapPoint(const DispatchState& d) {
    GetCameraAnglesClick();
    TGIS_Point3D point;
    point.X = d.FromModel_X;
    point.Y = d.FromModel_Y;
    point.Z = d.FromModel_Z;
    point.M = std::fmod(cameraState().cameraZAngle, 360.0);
    if (point.M < 0) point.M += 360;
    return point;
}

// The point under the click, local frame; false off the mesh.
bool pick(DispatchState& d, int x, int y, double xyz[3]) {
    int hitFlag = 0;
    char layerName[AT3D_NAME_SIZE] = {}, cloneItemName[AT3D_NAME_SIZE] = {};
    if (!At3d_Get_Mesh_Location_At_Point(x, y, &hitFlag, xyz, layerName, cloneItemName, d.rgbArray2) || !hitFlag)
        return false;
    d.GlobalLayerName1 = QString::fromUtf8(layerName);
    return true;
}

}  // namespace

ClickRoute ViewPanelMouseActivate(const ClickInput& click) {
    DispatchState& d = dispatchState();
    const int Y = click.Y_IN - viewerSettings().StatusbarHeight;
    PrintRunLog(" Mouse down %d X %d Y %d %s%s%s\n", click.Button, click.X, Y, click.Shift ? "Shift " : "",
                click.Alt ? "Alt " : "", click.Ctrl ? "Ctrl" : "");
    double xyz[3] = {0, 0, 0};
    const bool hit = pick(d, click.X, Y, xyz);
    if (click.Shift && d.MOVEBILLBOARD != 0) {
        MoveBillboardsToClick(hit, xyz[0] + OC(0), xyz[1] + OC(1));
        return ClickRoute::MoveBillboard;
    }
    if (!hit) return ClickRoute::NoMesh;
    d.GlobalX1 = xyz[0] + OC(0);
    d.GlobalY1 = xyz[1] + OC(1);
    d.GlobalZ1 = xyz[2] + OC(2);

    if (!(click.Shift || click.Alt || click.Ctrl || d.DigiArmed)) {
        if (click.Button == 1) NoteRubberbandClick();
        return ClickRoute::None;
    }
    // The session's point comes first: the routes after it work on that point.
    takeSessionPoint(d, click, xyz);
    if (d.DigiArmed) {
        DigitiseClick(click.Button, xyz[0], xyz[1], xyz[2]);
        return ClickRoute::Digitise;
    }
    if (click.Alt && obliquesKnown()) {
        StretchOblique(clickedMapPoint(d));
        return ClickRoute::ObliqueLookup;
    }
    if (click.Ctrl && obliquesKnown()) {
        CountRelevantObliquesClick(clickedMapPoint(d));
        return ClickRoute::ObliqueCount;
    }
    if (click.Button == 1 && click.Shift && d.BILLBOARDMODE) {
        PlaceBillboardAtClick(d.FromModel_X, d.FromModel_Y, d.FromModel_Z);
        return ClickRoute::PlaceBillboard;
    }
    if (click.Button == 2 && click.Shift) {
        HandOverClickedPoint();
        return ClickRoute::Handover;
    }
    return ClickRoute::SessionPoint;
}
