#include "Billboards.h"

#include <QDateTime>
#include <algorithm>

#include "BillboardPicture.h"
#include "BillboardState.h"
#include "MeasurementFiles.h"
#include "Measuring.h"
#include "app/model/ModelSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/services/ToolkitColor.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "scene/engine_interface.h"

namespace {

// Heights of a plain billboard by the dialog's size choice, times the base.
constexpr double SIZE_HEIGHTS[3] = {0.9, 2, 4};
constexpr double ICON_FONT_SCALE = 0.8;
constexpr double PANEL_LABEL_HEIGHT = 0.5;
constexpr float STEM_WIDTH = 4;
constexpr int STROBE_INTERVAL_MS = 500;

// Milliseconds of the clock, never the same twice: icon ids must stay unique.
qint64 uniqueClock() {
    static qint64 last = 0;
    last = std::max(last + 1, QDateTime::currentMSecsSinceEpoch());
    return last;
}

double cameraZAngle() {
    double x = 0, y = 0, z = 0;
    At3d_GetCameraAngles(&x, &y, &z);
    return z;
}

bool isSphereOrCrane(const QString& iconName) { return iconName.contains("SPHERE") || iconName.contains("CRANE"); }

// Spheres and cranes are markers, not pictures: a blinking ball, listed in
// the model's "SpheresAndCranes.csv".
int addSphereOrCrane(const QString& name, const double* position, double height) {
    const int before = At3d_Sphere_Marker_Get_Count();
    float rgb1[3], rgb2[3];
    ToolkitColorToRgb(viewerSettings().SphereColor, rgb1);
    ToolkitColorToRgb(255, rgb2);
    const QByteArray id = name.toUtf8();
    At3d_Sphere_Marker_Add(id.constData(), height, position, rgb1, rgb2, 1, STROBE_INTERVAL_MS, 1, 1);
    const int after = At3d_Sphere_Marker_Get_Count();
    SSetTextAt3(3, QString::asprintf("Bef %d Aft %d", before, after));
    At3d_RenderOpenGLScene();
    const QString csv = QString::fromStdString(modelSession().MEASUREMENTSFOLDER) + SPHERES_AND_CRANES_FILE;
    Save3DMeasurings(csv, QString::asprintf("%s,%lf,%lf,%lf,%lf,%f,%f,%f,%d,%d,%d,%d", id.constData(),
                                            position[0] + OC(0), position[1] + OC(1), position[2] + OC(2), height,
                                            rgb1[0], rgb1[1], rgb1[2], 1, STROBE_INTERVAL_MS, 1, 1));
    const int count = ++billboardState().KamaSpheresandCranes;
    QString strip = StatusStripText();
    const qsizetype bang = strip.lastIndexOf('!');
    if (bang >= 0) strip.truncate(bang);
    SSetTextAt3W(strip + "! " + QString::number(count) + " Spheres and Cranes");
    return 1;
}

}  // namespace

QString StripID(const QString& id) {
    const qsizetype bar = id.indexOf('|');
    return bar < 0 ? id : id.left(bar);
}

void BillboardPivot(const double position[3], double pivotHeight, double pivot[3]) {
    DAzim(position[0], position[1], pivotHeight, cameraZAngle() - 180, pivot[0], pivot[1]);
    pivot[2] = position[2];
}

int MakeBillboard(const double* position, const double* pivot, const QString& Name, const float* rgbcolor,
                  bool ismeasuring, bool IsIcon) {
    if (position[0] + position[1] + position[2] == 0) {
        PrintRunLog("MakeBillboard: no billboard at the origin\n");
        return 0;
    }
    BillboardState& b = billboardState();
    const QColor color(int(rgbcolor[0] * 255), int(rgbcolor[1] * 255), int(rgbcolor[2] * 255));
    const int alphaFlag = ismeasuring ? 2 : 1;
    const int typeFlag = ismeasuring ? 1 : 0;
    const QImage* icon = IsIcon ? &b.icons.SelectedImage : nullptr;
    const int fontPixels = IsIcon && !icon->isNull() ? int(icon->height() * ICON_FONT_SCALE) : BILLBOARD_FONT_PIXELS;

    QString tempName = Name;
    if (IsIcon) {
        // Icons set one after another would all carry the same name: the operator names each anew.
        if (!tempName.isEmpty() && tempName == b.LastIconName) {
            QString answer = tempName;
            if (MyInputQuery("Set icon name", "Name", answer)) tempName = answer;
            b.icons.text = tempName;
        }
        b.LastIconName = tempName;
        if (tempName.isEmpty()) PrintRunLog("WARNING: tempName is empty - no text will be drawn!\n");
    } else if (tempName.isEmpty()) {
        tempName = QString("Billboard_%1").arg(At3d_Measure_Billboard_Get_Count() + 1);
    }

    const double base = modelSession().INDOOR ? 0.2 : 1;
    double height = IsIcon ? b.icons.sizeNumber / 100.0 : SIZE_HEIGHTS[std::clamp(b.dialog.sizeIndex, 0, 2)] * base;
    if (IsIcon && isSphereOrCrane(b.ICONNAME)) return addSphereOrCrane(tempName + "|" + b.ICONNAME, position, height);

    BillboardPicture picture;
    if (!RenderBillboardPicture(tempName, color, icon, fontPixels, picture)) {
        PrintRunLog("MakeBillboard: no picture for \"%s\"\n", tempName.toUtf8().constData());
        return 0;
    }
    // An arrow keeps its direction, and so does a measure's label.
    const bool isStatic = b.IsBillboardStatic || tempName == ">>>" || ismeasuring;
    const double rotation[3] = {0, isStatic ? cameraZAngle() : 0, 0};
    QString id = tempName;
    if (IsIcon) id += "|" + b.ICONNAME + QString::number(uniqueClock());
    if (b.ISPANEL) height = PANEL_LABEL_HEIGHT;
    const QByteArray idBytes = id.toUtf8();
    const int added = At3d_Measure_Billboard_Add_Item(
        idBytes.constData(), picture.rgba.data(), picture.width, picture.height, alphaFlag, 2,
        isStatic ? 1 : 0, 1, 1, typeFlag, rgbcolor, STEM_WIDTH, height, position, pivot, rotation);
    PrintRunLog("Billboard %s: %dx%d alpha %d type %d static %d height %.2f at %.2f %.2f %.2f pivot %.2f %.2f %.2f "
                "transparent %d\n",
                idBytes.constData(), picture.width, picture.height, alphaFlag, typeFlag, isStatic ? 1 : 0,
                height, position[0], position[1], position[2], pivot[0], pivot[1], pivot[2],
                picture.transparentPixels);
    ShowDeleteGroupInSolarMode();
    At3d_RenderOpenGLScene();
    return added ? 1 : 0;
}
