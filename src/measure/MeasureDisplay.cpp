#include "MeasureDisplay.h"

#include <QFileInfo>
#include <QStringList>

#include "MeasureState.h"
#include "Measuring.h"
#include "DigitiseState.h"
#include "app/services/FileHelpers.h"
#include "app/services/SessionPaths.h"
#include "app/services/Viewers.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/GeoState.h"
#include "geo/Units.h"
#include "scene/EngineSession.h"

void Display_Measure_Data(int index, const MEASURE_DATA& item) {
    MeasureState& m = measureState();
    m.SelectedName = QString::fromUtf8(item.id);
    if (m.SelectedName.contains("AREA")) {
        // An area's line keeps the area in its distance.
        DisplayDistancesInAt3W(geoState().IMPERIAL ? "Area: " + Imperial(item.distance, true)
                                                   : QString::asprintf("Area: %.2lfm\u00b2", item.distance));
        return;
    }
    viewerSettings().SelectedIDX = index;
    m.SelectedX1 = item.vertex1[0] + OC(0);
    m.SelectedY1 = item.vertex1[1] + OC(1);
    m.SelectedZ1 = item.vertex1[2] + OC(2);
    m.SelectedX2 = item.vertex2[0] + OC(0);
    m.SelectedY2 = item.vertex2[1] + OC(1);
    m.SelectedZ2 = item.vertex2[2] + OC(2);
    ShowDeleteGroupInSolarMode();
    m.Dist3D = distance(m.SelectedX1, m.SelectedY1, m.SelectedZ1, m.SelectedX2, m.SelectedY2, m.SelectedZ2);
    m.Dist2D = distance(m.SelectedX1, m.SelectedY1, m.SelectedX2, m.SelectedY2);
    m.AzimuthToTarget = azimD(m.SelectedX1, m.SelectedY1, m.SelectedX2, m.SelectedY2);
    m.DDZ = m.SelectedZ2 - m.SelectedZ1;
    if (item.obstruction_Flag)
        m.SightObstructionDistance = distance(item.vertex1[0], item.vertex1[1], item.vertex1[2], item.obstruction[0],
                                              item.obstruction[1], item.obstruction[2]);
    DisplayDistancesInAt3W("");
}

QString DistancesText() {
    const MeasureState& m = measureState();
    const QString name = QFileInfo(m.SelectedName).fileName();
    QString text;
    if (geoState().IMPERIAL)
        text = name + " Dist 2D:" + Imperial(m.Dist2D, false) + "   3D:" + Imperial(m.Dist3D, false) +
               "   DZ:" + Imperial(m.DDZ, false);
    else
        text = QString::asprintf("%s Distance 2D: %.2lfm \t3D: %.2lfm  \tDZ: %.2lf", name.toUtf8().constData(),
                                 m.Dist2D, m.Dist3D, m.DDZ);
    double slope = 0;
    if (SlopeDegrees(m.DDZ, m.Dist2D, slope))
        text += QString::asprintf(" Slope %.1f\u00b0  Azimuth %.1lf ", slope, m.AzimuthToTarget);
    return text;
}

void DisplayDistancesInAt3W(const QString& text) {
    if (!text.isEmpty()) {
        SSetTextAt3W(text);
        measureState().GlobalAreaText = "";
        return;
    }
    SSetTextAt3W(DistancesText());
}

QString Displaymeasurings1Click() {
    QStringList lines{"Name,X1,Y1,Z1,X2,Y2,Z2,Distance2D,Distance3D,DZ,Azimuth"};
    const int count = At3d_MeasureList_Get_Count();
    for (int i = 0; i < count; ++i) {
        MEASURE_DATA item{};
        if (!Get_MeasureList_Item(i, &item)) continue;
        double a[3], b[3];
        for (int k = 0; k < 3; ++k) {
            a[k] = item.vertex1[k] + OC(k);
            b[k] = item.vertex2[k] + OC(k);
        }
        QString name = QString::fromUtf8(item.id);
        name.replace(',', ' ');
        lines << name + QString::asprintf(",%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.1f", a[0], a[1], a[2],
                                          b[0], b[1], b[2], distance(a[0], a[1], b[0], b[1]),
                                          distance(a[0], a[1], a[2], b[0], b[1], b[2]), b[2] - a[2],
                                          azimD(a[0], a[1], b[0], b[1]));
    }
    const QString file = QString::fromStdString(sessionPaths().ORVO_T) + "Measurement.csv";
    if (!StringToFile(lines.join('\n') + '\n', file)) return {};
    ShowOrvoCSVFile("Measurements", file, true, true, false);
    return file;
}

void Clearmeasurings1Click() {
    At3d_MeasureList_Clear();
    At3d_Measure_Billboard_Delete_All();
    At3d_Sphere_Marker_Delete_All();
    digitiseState().NWPW = 0;
    At3d_RenderOpenGLScene();
}
