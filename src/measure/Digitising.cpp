#include "Digitising.h"

#include <QDateTime>
#include <cmath>
#include <cstring>
#include <vector>

#include "DigitiseState.h"
#include "DigitisedShape.h"
#include "MeasureDisplay.h"
#include "MeasureState.h"
#include "MeasurementFiles.h"
#include "PolygonArea.h"
#include "app/model/ModelSession.h"
#include "app/services/FileDialogs.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/services/ToolkitColor.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelFormLogic.h"

namespace {

constexpr double kPi = 3.141592654;
constexpr int CIRCLE_DIVISIONS = 36;
constexpr float OUTLINE_WIDTH = 4;
constexpr float AREA_WIDTH = 2;
// A vertex this close in plan to the one before adds no segment.
constexpr double SAME_VERTEX = 0.001;
// A mesh height below this was not found.
constexpr double NO_HEIGHT = -9990;
// The map height given to a circle's vertex where the mesh has none.
constexpr double CIRCLE_FALLBACK_Z = 0.1;

void addSegmentItem(const QString& id, float width, const WAYPOINT& a, const WAYPOINT& b) {
    float rgb[3];
    ToolkitColorToRgb(viewerSettings().GlobalColor, rgb);
    const double v1[3] = {a.X, a.Y, a.Z}, v2[3] = {b.X, b.Y, b.Z};
    const QByteArray name = id.toUtf8();
    At3d_MeasureList_Add_Item(name.constData(), 1, 0, 0, width, rgb, v1, v2, v1, v1);
}

QString outlineId(int vertex) {
    return QString::asprintf("POL_%d-%d", digitiseState().GlobalPolygonMumber, vertex);
}

bool appendVertex(const WAYPOINT& p) {
    DigitiseState& g = digitiseState();
    if (g.NWPW >= MAX_WAYPOINTS) return false;
    g.WaypointW[g.NWPW++] = p;
    return true;
}

// The segment between two clicked points, cut into stations no longer than
// DeltaStation; a measured area's edges stay whole.
void drawClickedSegment(const WAYPOINT& a, const WAYPOINT& b) {
    DigitiseState& g = digitiseState();
    const DispatchState& d = dispatchState();
    const double lift = d.GLOBALZUZ4DIGITIZING;
    const double dist = d.DigitizeForMeasuring ? 0 : std::hypot(b.X - a.X, b.Y - a.Y);
    const int NN = static_cast<int>(dist / viewerSettings().DeltaStation) + 1;
    const double dx = (b.X - a.X) / NN, dy = (b.Y - a.Y) / NN, dz = (b.Z - a.Z) / NN;
    if (g.NWPW == 0) {
        const QTime now = QTime::currentTime();
        g.GlobalPolygonMumber = now.hour() * 3600 + now.minute() * 60 + now.second();
        appendVertex({a.X, a.Y, a.Z + lift});
    }
    for (int I = 1; I <= NN; ++I) {
        if (!appendVertex({a.X + I * dx, a.Y + I * dy, a.Z + I * dz + lift})) return;
        const QString id = d.DigitizeForMeasuring ? QString::asprintf("AREA_%d", g.NWPW - 1) : outlineId(g.NWPW - 1);
        addSegmentItem(id, d.DigitizeForMeasuring ? AREA_WIDTH : OUTLINE_WIDTH, g.WaypointW[g.NWPW - 2],
                       g.WaypointW[g.NWPW - 1]);
    }
    if (!viewerSettings().ConfiguredForSolar) SetControlVisible("SelectMeasuringBtn", true);
}

// The local height of the mesh under a local point; fallback where it has none.
double meshHeight(double X, double Y, double fallback) {
    const double Z = GetZFromXY(X + OC(0), Y + OC(1));
    return Z < NO_HEIGHT ? fallback : Z - OC(2);
}

// The last edge once more, its stations on the mesh itself.
void drawLastEdgeOnMesh() {
    DigitiseState& g = digitiseState();
    const WAYPOINT a = g.WaypointS[g.NWPS - 2], b = g.WaypointS[g.NWPS - 1];
    const double dist = std::hypot(b.X - a.X, b.Y - a.Y);
    const int NN = static_cast<int>(dist / viewerSettings().DeltaStation) + 1;
    const double dx = (b.X - a.X) / NN, dy = (b.Y - a.Y) / NN, dz = (b.Z - a.Z) / NN;
    for (int I = 1; I <= NN; ++I) {
        const double X = a.X + I * dx, Y = a.Y + I * dy;
        const WAYPOINT p{X, Y, meshHeight(X, Y, a.Z + I * dz)};
        if (g.NWPW > 0) {
            const WAYPOINT& previous = g.WaypointW[g.NWPW - 1];
            if (std::hypot(p.X - previous.X, p.Y - previous.Y) <= SAME_VERTEX) continue;
        }
        if (!appendVertex(p)) return;
        if (g.NWPW > 1) addSegmentItem(outlineId(g.NWPW - 1), OUTLINE_WIDTH, g.WaypointW[g.NWPW - 2], p);
    }
}

// Two clicks of a closed outline: the centre and a point of the rim.
void drawCircle() {
    Clearmeasurings1Click();
    const DigitiseState& g = digitiseState();
    const WAYPOINT centre = g.WaypointS[0], rim = g.WaypointS[1];
    const double rad = std::hypot(rim.X - centre.X, rim.Y - centre.Y);
    const double fallback = CIRCLE_FALLBACK_Z - OC(2);
    const auto onRim = [&](double angle) {
        const double X = centre.X + rad * std::cos(angle), Y = centre.Y + rad * std::sin(angle);
        return WAYPOINT{X, Y, meshHeight(X, Y, fallback)};
    };
    for (int i = 0; i < CIRCLE_DIVISIONS; ++i) {
        const double ang1 = 2 * kPi / CIRCLE_DIVISIONS * i, ang2 = 2 * kPi / CIRCLE_DIVISIONS * (i + 1);
        addSegmentItem(outlineId(i), OUTLINE_WIDTH, onRim(ang1), onRim(ang2));
    }
}

DigitiseResult finishArea() {
    DigitiseState& g = digitiseState();
    DigitiseResult result;
    result.outcome = DigitiseOutcome::AreaMeasured;
    if (g.NWPW == 0) return result;
    appendVertex(g.WaypointW[0]);
    addSegmentItem(QString::asprintf("AREA_%d", g.NWPW - 1), AREA_WIDTH, g.WaypointW[g.NWPW - 2],
                   g.WaypointW[g.NWPW - 1]);
    std::vector<MyPoint> V(std::size_t(g.NWPW) + 2);
    for (int i = 0; i < g.NWPW; ++i) V[std::size_t(i)] = {g.WaypointW[i].X, g.WaypointW[i].Y, g.WaypointW[i].Z};
    result.area = area3D_Polygon(g.NWPW, V.data());
    // A height measured next turns the area into a volume.
    measureState().MeasuredArea = measureState().LastmeasuredArea = result.area;
    const QString caption = QString::asprintf("The 3D  area is %.1f m\u00b2", result.area);
    SSetTextAt3W(caption);
    QString factor = "1";
    if (MyInputQuery(caption, "Factor to calculate volume", factor)) {
        bool ok = false;
        const double f = factor.toDouble(&ok);
        if (ok)
            SSetTextAt3W(caption + QString::asprintf("\tThe volume is  %.2f m\u00b3    (With  factor= %.2f)",
                                                     result.area * f, f));
    }
    return result;
}

DigitiseResult saveOutline() {
    const DispatchState& d = dispatchState();
    DigitiseResult result;
    const bool isroof = std::trunc(10.1 * panelFormState().BlockDepth) == 1 && d.DIGITIZELINEORPOLYGON == 2;
    QString file = QString::fromStdString(modelSession().MEASUREMENTSFOLDER) +
                   QDateTime::currentDateTime().toString("yyyyMMdd_hhmmss") + (d.IsLine ? ".LIN" : ".POL");
    if (!isroof) {
        HoldEngineInput hold;
        // An elevated polygon goes under its proposed name without asking.
        const bool asked = d.GLOBALZUZ4DIGITIZING == 0;
        const bool named = !asked || (d.IsLine ? OrvoSaveFile(file, "LIN", "Line file (*.LIN)|*.lin",
                                                              "Open the Line  file (output)", 1)
                                               : OrvoSaveFile(file, "POL", "Polygon file (*.POL)|*.pol",
                                                              "Open the polygon  file (output)", 1));
        if (!named) {
            DeletePolygonFromView(digitiseState().GlobalPolygonMumber);
            At3d_RenderOpenGLScene();
            result.outcome = DigitiseOutcome::Cancelled;
            return result;
        }
    }
    result.outcome = ExportMeasureData(file, true) > 0 ? DigitiseOutcome::Saved : DigitiseOutcome::NotSaved;
    if (result.outcome == DigitiseOutcome::Saved) result.file = file;
    return result;
}

DigitiseResult finish() {
    DigitiseState& g = digitiseState();
    DispatchState& d = dispatchState();
    d.DigiArmed = false;
    if (!d.BILLBOARDMODE) SetHelpCaption(modelSession().RegularHelp);
    if (d.DigitizeForMeasuring) return finishArea();
    if (d.DIGITIZELINEORPOLYGON == 2) {
        const bool isroof = std::trunc(10 * panelFormState().BlockDepth) == 1;
        if (isroof && g.NWPS < 3) {
            MyShowMessage("At least 3 point needed");
            return {DigitiseOutcome::TooFewPoints, {}, 0};
        }
        if (g.NWPS < MAX_WAYPOINTS) g.WaypointS[g.NWPS++] = g.WaypointS[0];
    }
    drawLastEdgeOnMesh();
    if (d.DIGITIZELINEORPOLYGON == 2 && g.NWPS == 3) drawCircle();
    At3d_RenderOpenGLScene();
    return saveOutline();
}

QString statusOf(const DigitiseResult& result, int points) {
    switch (result.outcome) {
    case DigitiseOutcome::PointAdded: return QString("Point %1 of the outline. Right click to finish.").arg(points);
    case DigitiseOutcome::TooFewPoints: return "At least 3 point needed";
    case DigitiseOutcome::AreaMeasured: return QString::asprintf("Area %.1f m\u00b2", result.area);
    case DigitiseOutcome::Saved: return "Saved " + result.file;
    case DigitiseOutcome::Cancelled: return "Outline not saved";
    case DigitiseOutcome::NotSaved: return "The outline could not be saved";
    }
    return {};
}

}  // namespace

DigitiseResult DigitiseClick(int button, double X, double Y, double Z) {
    DigitiseState& g = digitiseState();
    const DispatchState& d = dispatchState();
    if (g.NWPS < MAX_WAYPOINTS) g.WaypointS[g.NWPS++] = {X, Y, Z};
    DigitiseResult result;
    if (g.NWPS >= 2) {
        drawClickedSegment(g.WaypointS[g.NWPS - 2], g.WaypointS[g.NWPS - 1]);
        At3d_RenderOpenGLScene();
        const bool finishingNow = button == 2 || (button == 1 && d.IsFacade && g.NWPS == 4);
        if (finishingNow) result = finish();
    }
    SSetTextAt3(3, statusOf(result, g.NWPS));
    return result;
}

void DeletePolygonFromView(int pol) {
    const QByteArray key = QString::asprintf("POL_%d-", pol).toUtf8();
    for (int i = At3d_MeasureList_Get_Count() - 1; i >= 0; --i) {
        char id[AT3D_NAME_SIZE] = {};
        if (At3d_MeasureList_Get_Item(i, id, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      nullptr) &&
            std::strstr(id, key.constData()))
            At3d_MeasureList_Delete_Item(i, 0);
    }
}

int KamaPolygonLaticesInScene() {
    int count = 0;
    const int items = At3d_MeasureList_Get_Count();
    for (int i = 0; i < items; ++i) {
        char id[AT3D_NAME_SIZE] = {};
        if (At3d_MeasureList_Get_Item(i, id, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      nullptr) &&
            std::strstr(id, "POL_"))
            ++count;
    }
    return count;
}
