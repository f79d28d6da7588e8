#include "RectifyMenu.h"

#include "ObjFacePass.h"

#include <QString>
#include <cmath>
#include <cstdio>

#include "RectifyByOnc.h"
#include "RectifyConvert.h"
#include "RectifyText.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/DispatchState.h"
#include "scene/FileNameCase.h"

RectifyState& rectifyState() {
    static RectifyState state;
    return state;
}

void resetRectifyState() { rectifyState() = RectifyState{}; }

std::string RectifybyONC1Click() {
    QString obj = QString::fromStdString(modelSession().GlobalModelFileName);
    if (!OrvoOpenFile(obj, "OBJ", "OBJ file (*.OBJ|*.OBJ", "Open the OBJ file (input)", "")) return {};
    QString onc = QString::fromStdString(modelSession().GlobalONCFileName);
    if (!OrvoOpenFile(onc, "ONC", "ONC file (*.ONC|*.ONC", "Open the ONC file (input)", "")) return {};
    const std::string input = obj.toStdString();
    const std::string output = WithExtension(input, "_rectified.OBJ");
    const RectifyResult result = RectifyOBJByONC(input, output, onc.toStdString(), 35);
    if (!result.written) return {};
    // The projection holds for the output too, as it now lies in map coordinates.
    CopyModelPrj(input, output);
    return output;
}

namespace {

double distance2D(const double* a, const double* b) { return std::hypot(a[0] - b[0], a[1] - b[1]); }
double distance3D(const double* a, const double* b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2]));
}

// The point at distance d from a towards b, in the plane.
void interpolate(const double* a, const double* b, double d, double* out) {
    const double s = distance2D(a, b);
    out[0] = s > 0 ? a[0] + (b[0] - a[0]) * d / s : a[0];
    out[1] = s > 0 ? a[1] + (b[1] - a[1]) * d / s : a[1];
}

// The point at signed distance d from the second point, at right angles to
// the side from the first; a side of length 0 gives the first point.
void x3y3dDouble(const double* first, const double* second, double d, double* out) {
    const double dx = second[0] - first[0], dy = second[1] - first[1];
    const double s = std::hypot(dx, dy);
    if (s == 0) {
        out[0] = first[0], out[1] = first[1];
        return;
    }
    out[0] = second[0] + dy * d / s;
    out[1] = second[1] - dx * d / s;
}

std::string convertRoute() {
    QString onc = QString::fromStdString(modelSession().GlobalONCFileName);
    if (!OrvoOpenFile(onc, "ONC", "Transformation  file(*.ONC)|*.ONC", "Please select the transformation file (output)",
                      ""))
        return {};
    std::string text;
    ReadWholeFile(onc.toStdString(), text);
    TextLines lines(text);
    std::string_view line;
    int count = 0;
    while (lines.next(line)) ++count;
    if (count < 4) {
        MyShowMessage("4 point pairs needed");
        return {};
    }
    const std::string model = modelSession().GlobalModelFileName;
    const std::string output = WithExtension(model, "_converted.OBJ");
    return ConvertOBJ(model, output, onc.toStdString()) ? output : std::string();
}

void templateRoute(double perpendicular) {
    const QStringList& points = dispatchState().TDigitizedPoints;
    if (points.size() < 3) {
        MyShowMessage("You need at least 3 digitized points.");
        return;
    }
    RectifyTemplate t;
    for (int i = 0; i < 3; ++i) {
        const QByteArray line = points[points.size() - 3 + i].toUtf8();
        double* p = t.from[i];
        p[0] = p[1] = p[2] = 0;
        std::sscanf(line.constData(), "%lf%lf%lf", &p[0], &p[1], &p[2]);
    }
    const double* P1 = t.from[0];
    const double* P2 = t.from[1];
    const double* P3 = t.from[2];
    t.to[0][0] = P1[0];
    t.to[0][1] = P1[1];
    interpolate(P1, P2, perpendicular, t.to[1]);
    // The template lies either way round: the turn from P1 over P2 to P3 says which.
    const double crossZ = (P1[0] - P2[0]) * (P3[1] - P2[1]) - (P1[1] - P2[1]) * (P3[0] - P2[0]);
    if (crossZ < 0) perpendicular = -perpendicular;
    x3y3dDouble(t.to[0], t.to[1], perpendicular, t.to[2]);
    t.perpendicular = perpendicular;
    static const int ends[3][2] = {{0, 1}, {1, 2}, {0, 2}};
    for (int k = 0; k < 3; ++k) {
        const int a = ends[k][0], b = ends[k][1];
        t.fromDistance2D[k] = distance2D(t.from[a], t.from[b]);
        t.fromDistance3D[k] = distance3D(t.from[a], t.from[b]);
        t.toDistance2D[k] = distance2D(t.to[a], t.to[b]);
        t.toDistance3D[k] = distance3D(t.to[a], t.to[b]);
    }
    t.valid = true;
    rectifyState().templatePairs = t;
}

}  // namespace

std::string RectifyModel() {
    QString value = "100";
    double perpendicular = 0;
    if (MyInputQuery("Defining template size.", "Template size in cm.  Cancel for OC2NC", value)) {
        bool ok = false;
        const int cm = value.trimmed().toInt(&ok);
        perpendicular = (ok ? cm : 100) / 100.0;
    }
    if (perpendicular == 0) return convertRoute();
    templateRoute(perpendicular);
    return {};
}

std::string Rectify1Click() { return RectifyModel(); }
