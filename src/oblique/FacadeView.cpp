#include "FacadeView.h"

#include <QDate>
#include <QFileInfo>
#include <QStringList>
#include <cmath>
#include <cstdio>

#include "FacadeStore.h"
#include "ObliqueGeometry.h"
#include "app/model/SceneLayers.h"
#include "app/model/Viewport.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SessionPaths.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"

namespace {

constexpr double BEHIND_CAMERA = 30;
constexpr double CAMERA_DISTANCE = 7;
constexpr double EYE_RAISE = 3;
constexpr double TESSMAP_FIELD_OF_VIEW = 60;
constexpr double OUT_OF_MODEL = -9990;
constexpr int RED = 255;

std::string tempFile(const char* name) { return sessionPaths().ORVO_T + name; }

}  // namespace

void Markez(double XX, double YY, double ZZ) {
    int hitFlag = 0;
    double centre[3] = {0, 0, 0};
    char layer[AT3D_NAME_SIZE] = {}, clone[AT3D_NAME_SIZE] = {};
    float rgb[3] = {0, 0, 0};
    const int width = mainFormHost().viewPanelWidth(), height = mainFormHost().viewPanelHeight();
    At3d_Get_Mesh_Location_At_Point(width / 2, height / 2 - viewerSettings().StatusbarHeight, &hitFlag, centre, layer,
                                    clone, rgb);
    const double DX = XX - (centre[0] + OC(0)), DY = YY - (centre[1] + OC(1)), DZ = ZZ - (centre[2] + OC(2));
    const std::string saved = SaveViewport(tempFile("M.vpt"));
    if (saved.empty()) return;
    QStringList lines = StringFromFile(QString::fromStdString(saved)).split('\n');
    if (lines.size() < 2) return;
    double x = 0, y = 0, z = 0;
    std::sscanf(lines[1].toUtf8().constData(), "%lf%lf%lf", &x, &y, &z);
    lines[1] = QString::asprintf("%.2lf %.2lf %.2lf", x + DX, y + DY, z + DZ);
    const QString moved = QString::fromStdString(tempFile("MM.vpt"));
    if (StringToFile(lines.join('\n'), moved)) RestoreViewport(moved.toStdString());
}

bool ShowFacadeOnModel() {
    const FacadeState& s = facadeState();
    const double camera[3] = {s.Facade1X, s.Facade1Y, s.Facade1Z};
    const double target[3] = {s.Facade2X, s.Facade2Y, s.Facade2Z};
    const double L = std::sqrt((camera[0] - target[0]) * (camera[0] - target[0]) +
                               (camera[1] - target[1]) * (camera[1] - target[1]) +
                               (camera[2] - target[2]) * (camera[2] - target[2]));
    if (L == 0) return false;
    double VP[3];
    for (int a = 0; a < 3; ++a) VP[a] = target[a] + (camera[a] - target[a]) / L * (L + BEHIND_CAMERA);
    double az = 0, inclination = 0;
    AzimuthFromXYZ(camera[0], camera[1], camera[2], target[0], target[1], target[2], az, inclination);
    double fov = 0;
    At3d_GetCameraFieldOfView(&fov);
    const QString text = QString::asprintf("%lf %lf\n%lf %lf %lf\n%lf %lf %lf\n", CAMERA_DISTANCE, fov, VP[0], VP[1],
                                           VP[2] + EYE_RAISE, 0.0, 0.0, az);
    const QString file = QString::fromStdString(tempFile("Facade.vpt"));
    return StringToFile(text, file) && RestoreViewport(file.toStdString());
}

void FromTessmap1Click() {
    const QString file = QString::fromStdString(startupState().MONITOREDFOLDER) + "Handover.xyz";
    const QFileInfo info(file);
    if (!info.exists()) {
        MyShowMessage(file + "\not found");
        return;
    }
    if (info.lastModified().date() != QDate::currentDate()) {
        MyShowMessage(file + "\nNot from today");
        return;
    }
    double x = 0, y = 0, z = 0;
    std::sscanf(StringFromFile(file).toUtf8().constData(), "%lf%lf%lf", &x, &y, &z);
    At3d_SetCameraFieldOfView(0, TESSMAP_FIELD_OF_VIEW);
    Markez(x, y, z);
}

void MarkALocationClick() {
    QString value;
    if (!MyInputQuery("Mark a location", "Enter the coordinate", value)) return;
    double x = 0, y = 0;
    if (std::sscanf(value.toUtf8().constData(), "%lf%lf", &x, &y) != 2) return;
    const double z = GetZFromXY(x, y);
    if (z < OUT_OF_MODEL) {
        MyShowMessage("Out of model");
        return;
    }
    AddSphere(x, y, z, 1, RED);
    Markez(x, y, z);
}
