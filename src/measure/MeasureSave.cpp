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
#include "app/services/DialogService.h"
#include "solar/analysis/ShadowAnalysis.h"
#include "solar/design/PanelEditing.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelPicking.h"
#include "solar/design/PlacementSnap.h"

namespace {

constexpr float LINE_WIDTHS[3] = {2, 4, 8};
constexpr double LABEL_PIVOT = 1.5;
constexpr double INDOOR_LABEL_PIVOT = 0.2;

// A line that starts on a panel or a roof polygon offers the panel buttons,
// and the move that snaps the panel onto the panel or point at its other end.
void preparePanelButtons(MeasureDialogValues& values) {
    const DispatchState& d = dispatchState();
    const TGIS_Point3D start{d.GlobalX1, d.GlobalY1, d.GlobalZ1, 0}, end{d.GlobalX2, d.GlobalY2, d.GlobalZ2, 0};
    const PanelDialogKind kind = PreparePanelDialog(d.GlobalLayerName, start, end);
    PanelEditState& edit = panelEditState();
    edit.GlobalMovePanels_PXX = {0, 0, -9999, 0};
    QString snap;
    if (kind == ON_PANEL || GetPanelIndexFromCoordinates(start.X, start.Y, start.Z) >= 0) {
        edit.GlobalMovePanels_PXX = SnapTile(start, end);
        snap = placementSnapState().GlobalSnappedTCaption;
    }
    values.panelKind = kind;
    values.caption = kind == NO_PANEL ? snap : PanelDialogCaption(kind, d.GlobalLayerName) + snap;
    const TGIS_Point3D& neighbour = edit.GlobalNeighbourPanelCenter;
    values.duplicateVisible = neighbour.X != 0 || neighbour.Y != 0 || neighbour.Z != 0;
}

// The panel buttons' work once the dialog has closed; false for a measure's answer.
bool doPanelAction(int Mok) {
    PanelEditState& edit = panelEditState();
    switch (Mok) {
    case MOK_MOVE_PANEL:
    case MOK_MOVE_GROUP:
        edit.PanelOrGroup = Mok == MOK_MOVE_PANEL ? 1 : 2;
        SSetTextAt3(3, QString("%1 panel(s) moved").arg(DoMovepanels()));
        return true;
    case MOK_DELETE_PANEL:
    case MOK_DELETE_GROUP:
        edit.PanelOrGroup = Mok == MOK_DELETE_PANEL ? 1 : 2;
        At3d_MeasureList_Clear();
        SSetTextAt3(3, QString("%1 panel(s) deleted").arg(DeletePanels()));
        return true;
    case MOK_LIFT_PANEL:
    case MOK_LIFT_GROUP:
        edit.PanelOrGroup = Mok == MOK_LIFT_PANEL ? 1 : 2;
        if (Mok == MOK_LIFT_PANEL) {
            At3d_MeasureList_Clear();
            At3d_Measure_Billboard_Delete_All();
            At3d_Sphere_Marker_Delete_All();
        }
        SSetTextAt3(3, QString::asprintf("Lifted %.2f m", LiftPanels()));
        return true;
    case MOK_SHOW_INFO:
        edit.FromShowInfo = true;
        dialogService().showMessage(edit.GlobalPanelInfo, "In ShowInfo");
        return true;
    case MOK_SHOW_SHADING: ShowPanelShadingBtnClick(edit.GlobalLayerName); return true;
    case MOK_DUPLICATE: SSetTextAt3(3, QString("%1 panel(s) made").arg(DuplicateBtnClick().size())); return true;
    default: return false;
    }
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
    preparePanelButtons(values);

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
    if (doPanelAction(Mok)) {
        endMeasuring();
        return;
    }
    if (Mok != MOK_SAVE) {
        // The dialog's Cancel also ends a roof capture left open.
        panelFormState().BlockDepth = 0;
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
