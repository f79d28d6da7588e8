#include "BillboardPlacing.h"

#include "BillboardMenu.h"
#include "BillboardState.h"
#include "Billboards.h"
#include "MeasureForms.h"
#include "MeasureState.h"
#include "Measuring.h"
#include "app/model/ModelSession.h"
#include "app/services/ToolkitColor.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"

namespace {

constexpr double ICON_PIVOT = 0.25;
constexpr double SPHERE_PIVOT = 0.01;
const QString BILLBOARD_HELP = "\tShift+Click for Billboard";

void setBillboardMode(bool on) {
    dispatchState().BILLBOARDMODE = on;
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    SetHelpCaption(on ? BILLBOARD_HELP : modelSession().RegularHelp);
}

QString billboardId(int index) {
    char id[AT3D_NAME_SIZE] = {};
    return At3d_Measure_Billboard_Get_ID(index, id) ? QString::fromUtf8(id) : QString();
}

// Moves billboard index by dx, dy in plan, its foot onto the ground there.
void moveBillboard(int index, double dx, double dy) {
    BILLBOARD_DATA data{};
    if (Get_Billboard_Data(index, &data)) {
        data.position[0] += dx;
        data.position[1] += dy;
        const double ground = GetZFromXYLocal(data.position[0], data.position[1]);
        if (ground > -9990) {
            data.pivot[2] += ground - data.position[2];
            data.position[2] = ground;
        }
        data.pivot[0] += dx;
        data.pivot[1] += dy;
        Replace_Billboard_Data(index, &data);
    }
    delete[] data.imagePtr;
}

}  // namespace

void DoBillboardClick() {
    const bool on = ControlChecked("DoBillboard");
    SetControlChecked("SimanTactiModeBtn", false);
    if (measureForms().showIconsForm) measureForms().showIconsForm(false);
    ReleaseMeasureTools();
    setBillboardMode(on);
}

void SimanTactiModeBtnClick() {
    const bool on = ControlChecked("SimanTactiModeBtn");
    SetControlChecked("DoBillboard", false);
    ReleaseMeasureTools();
    if (measureForms().showIconsForm) measureForms().showIconsForm(on);
    setBillboardMode(on);
}

void ReleaseBillboardTools() {
    const bool wasOn = dispatchState().BILLBOARDMODE;
    SetControlChecked("DoBillboard", false);
    SetControlChecked("SimanTactiModeBtn", false);
    if (measureForms().showIconsForm) measureForms().showIconsForm(false);
    dispatchState().BILLBOARDMODE = false;
    if (wasOn) SetHelpCaption(modelSession().RegularHelp);
}

bool PlaceBillboardAtClick(double mapX, double mapY, double mapZ) {
    BillboardState& b = billboardState();
    MeasureState& m = measureState();
    const bool textMode = ControlChecked("DoBillboard");
    double pivotHeight = ICON_PIVOT;
    if (textMode) {
        bool accepted = false;
        {
            HoldEngineInput hold;
            accepted = measureForms().billboardDialog && measureForms().billboardDialog(b.dialog);
        }
        if (!accepted) {
            At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
            ReleaseBillboardTools();
            SSetTextAt3(3, "No billboard placed");
            return false;
        }
        m.SelectedName = b.dialog.text.isEmpty() ? QString("Orvo") : b.dialog.text;
        pivotHeight = b.dialog.pivotHeight;
        b.IsBillboardStatic = b.dialog.isStatic;
        b.IsBillboardIcon = false;
    } else {
        m.SelectedName = b.icons.text;
        b.IsBillboardStatic = false;
        b.IsBillboardIcon = true;
        b.ICONNAME = b.icons.name;
        if (b.ICONNAME.contains("SPHERE")) pivotHeight = SPHERE_PIVOT;
    }
    float rgb[3];
    ToolkitColorToRgb(b.ColorPanel, rgb);
    const double position[3] = {mapX - OC(0), mapY - OC(1), mapZ - OC(2)};
    double pivot[3];
    BillboardPivot(position, pivotHeight, pivot);
    const bool made = MakeBillboard(position, pivot, m.SelectedName, rgb, false, b.IsBillboardIcon) != 0;
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    if (textMode) ReleaseBillboardTools();
    SSetTextAt3(3, made ? "Billboard placed: " + m.SelectedName : QString("No billboard placed"));
    At3d_RenderOpenGLScene();
    return made;
}

void MoveBillboardsToClick(bool hit, double mapX, double mapY) {
    DispatchState& d = dispatchState();
    BillboardState& b = billboardState();
    const int selected = d.GlobalSelectedIdx;
    BILLBOARD_DATA data{};
    const bool known = hit && d.GlobalMeasureOrBilboard == 2 && Get_Billboard_Data(selected, &data);
    delete[] data.imagePtr;
    int moved = 0;
    if (known) {
        b.GlobalMoveBillboard[0] = mapX - OC(0) - data.position[0];
        b.GlobalMoveBillboard[1] = mapY - OC(1) - data.position[1];
        if (d.MOVEBILLBOARD == 1) {
            moveBillboard(selected, b.GlobalMoveBillboard[0], b.GlobalMoveBillboard[1]);
            moved = 1;
        } else {
            const QString group = StripID(billboardId(selected));
            for (int i = 0; i < At3d_Measure_Billboard_Get_Count(); ++i)
                if (StripID(billboardId(i)) == group) {
                    moveBillboard(i, b.GlobalMoveBillboard[0], b.GlobalMoveBillboard[1]);
                    ++moved;
                }
        }
    }
    SSetTextAt3(3, QString("%1 billboard(s) moved").arg(moved));
    SetControlChecked("SelectMeasuringBtn", true);
    SelectMeasuringBtnClick();
    d.MOVEBILLBOARD = 0;
    At3d_RenderOpenGLScene();
}
