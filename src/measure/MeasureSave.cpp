#include "MeasureSave.h"

#include <QRandomGenerator>
#include <QString>
#include <algorithm>

#include "Billboards.h"
#include "MeasureDisplay.h"
#include "MeasureForms.h"
#include "MeasureState.h"
#include "Measuring.h"
#include "app/model/CameraTools.h"
#include "app/model/ModelSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/services/ToolkitColor.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/GeoState.h"
#include "geo/Units.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelPicking.h"
#include "solar/design/PlacementSnap.h"

namespace {

constexpr float LINE_WIDTHS[3] = {2, 4, 8};
constexpr double LABEL_PIVOT = 1.5;
constexpr double INDOOR_LABEL_PIVOT = 0.2;

// A line that starts on a panel proposes the move onto the panel or point at its other end.
void snapPanels(MeasureDialogValues& values) {
    const DispatchState& d = dispatchState();
    if (GetPanelIndexFromCoordinates(d.GlobalX1, d.GlobalY1, d.GlobalZ1) < 0) return;
    SnapTile({d.GlobalX1, d.GlobalY1, d.GlobalZ1, 0}, {d.GlobalX2, d.GlobalY2, d.GlobalZ2, 0});
    values.caption = placementSnapState().GlobalSnappedTCaption;
}

void takeAsScale() {
    MeasureState& m = measureState();
    QString answer = QString::asprintf("%.2f", m.Dist2D);
    bool ok = false;
    const double wanted =
        MyInputQuery("Scaling", "Specify the correct distance, in meters. (e.g. 2.23)", answer) ? answer.toDouble(&ok)
                                                                                                : 0;
    if (ok && wanted > 0 && m.Dist2D > 0) {
        frameState().SCALE *= wanted / m.Dist2D;
        ApplyScale();
        SSetTextAt3(3, QString::asprintf("Scale %.6f", frameState().SCALE));
    }
}

void addLabel(const QString& name, const float rgb[3]) {
    const DispatchState& d = dispatchState();
    const MeasureState& m = measureState();
    const double position[3] = {(d.GlobalX1 + d.GlobalX2) / 2 - OC(0), (d.GlobalY1 + d.GlobalY2) / 2 - OC(1),
                                (d.GlobalZ1 + d.GlobalZ2) / 2 - OC(2)};
    const QString figure = geoState().IMPERIAL ? Imperial(m.Dist3D, false) : QString::asprintf("%.2lf", m.Dist3D);
    double pivot[3];
    BillboardPivot(position, modelSession().INDOOR ? INDOOR_LABEL_PIVOT : LABEL_PIVOT, pivot);
    MakeBillboard(position, pivot, name.isEmpty() ? figure : name + " " + figure, rgb, true, false);
}

// The tools go back to rest; the status strip keeps what the line showed.
void endMeasuring() {
    const QString strip = StatusStripText();
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    SSetTextAt3W(strip);
    SetHelpCaption(modelSession().RegularHelp);
    ReleaseMeasureTools();
    SetControlChecked("DoBillboard", false);
    dispatchState().BILLBOARDMODE = false;
    At3d_RenderOpenGLScene();
}

}  // namespace

void DoSaveMeasuring() {
    MeasureState& m = measureState();
    if (viewerSettings().MEASUREOROBSERVER != 1) {
        SetControlChecked("LookAtBtn", true);
        LookAtBtnClick();
        return;
    }
    m.SelectedName = "";
    MeasureDialogValues values;
    values.toTarget = QString::asprintf("%.2f", m.Dist3D);
    values.onGround = QString::asprintf("%.2f", m.Dist2D);
    values.elevation = QString::asprintf("%.2f", m.DDZ);
    values.show = m.SHOWBILLBOARD;
    snapPanels(values);

    int Mok = 0;
    {
        HoldEngineInput hold;
        Mok = measureForms().measureDialog ? measureForms().measureDialog(values) : 0;
    }
    if (Mok == MOK_SCALE) {
        takeAsScale();
        endMeasuring();
        return;
    }
    if (Mok != MOK_SAVE) {
        SSetTextAt3(3, "Measure not kept");
        endMeasuring();
        return;
    }
    if (m.LastmeasuredArea != 0) {
        SSetTextAt3(2, QString::asprintf("Volume is %.1fm\u00b3  (%.1fm\u00b2X%.2fm) ", m.LastmeasuredArea * m.MeasuredDistance,
                                         m.LastmeasuredArea, m.MeasuredDistance));
        m.LastmeasuredArea = m.MeasuredArea;
    }
    float rgb[3];
    ToolkitColorToRgb(values.color, rgb);
    const float width = LINE_WIDTHS[std::clamp(values.widthIndex, 0, 2)];
    const QString name =
        values.name.isEmpty() ? "Random_" + QString::number(QRandomGenerator::global()->bounded(1000000)) : values.name;
    const int before = At3d_MeasureList_Get_Count();
    At3d_MeasureList_Add_Current(name.toUtf8().constData(), width, rgb);
    PrintRunLog("Measure \"%s\": items %d -> %d\n", name.toUtf8().constData(), before, At3d_MeasureList_Get_Count());
    m.SHOWBILLBOARD = values.show;
    if (values.show) addLabel(values.name, rgb);
    ShowDeleteGroupInSolarMode();
    SSetTextAt3(3, "Measure kept: " + name);
    endMeasuring();
}
