#include "BillboardMenu.h"

#include <QStringList>
#include <vector>

#include "BillboardState.h"
#include "Billboards.h"
#include "Digitising.h"
#include "Measuring.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/SessionPaths.h"
#include "app/services/Viewers.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"

namespace {

constexpr int KIND_MEASURE = 1;
constexpr int KIND_BILLBOARD = 2;
constexpr int KIND_SPHERE = 3;

QString billboardId(int index) {
    char id[AT3D_NAME_SIZE] = {};
    return At3d_Measure_Billboard_Get_ID(index, id) ? QString::fromUtf8(id) : QString();
}

// The billboards of the selected one's group, highest index first.
std::vector<int> selectedGroup() {
    const QString group = StripID(billboardId(dispatchState().GlobalSelectedIdx));
    std::vector<int> members;
    for (int i = At3d_Measure_Billboard_Get_Count() - 1; i >= 0; --i)
        if (StripID(billboardId(i)) == group) members.push_back(i);
    return members;
}

void startMove(int mode) {
    dispatchState().MOVEBILLBOARD = mode;
    SetHelpCaption("\tShift+Click for new location");
}

// Polygon number of a segment id "POL_<number>-<vertex>"; -1 when it isn't one.
int polygonNumberOf(const QString& id) {
    const qsizetype at = id.indexOf("POL_");
    if (at < 0) return -1;
    const qsizetype start = at + 4;
    const qsizetype dash = id.indexOf('-', start);
    bool ok = false;
    const int number = id.mid(start, dash < 0 ? -1 : dash - start).toInt(&ok);
    return ok ? number : -1;
}

}  // namespace

void SelectMeasuringBtnClick() {
    const bool on = ControlChecked("SelectMeasuringBtn");
    ReleaseMeasureTools();
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    At3d_WriteFlag(LIBFLAG_SELECT_MEASURE, on ? 1 : 0);
    SetHelpCaption(on ? QString("\tRight click on a measure, billboard or sphere to select it")
                      : modelSession().RegularHelp);
}

void MovethisoneClick() { startMove(1); }
void MoveAllgroup1Click() { startMove(2); }

void HideThisoneClick() {
    const DispatchState& d = dispatchState();
    if (d.GlobalMeasureOrBilboard != KIND_BILLBOARD) return;
    At3d_Measure_Billboard_Set_Visible_One(d.GlobalSelectedIdx, 0, 0);
    At3d_RenderOpenGLScene();
}

void HidegroupClick() {
    if (dispatchState().GlobalMeasureOrBilboard != KIND_BILLBOARD) return;
    for (int index : selectedGroup()) At3d_Measure_Billboard_Set_Visible_One(index, 0, 0);
    At3d_RenderOpenGLScene();
}

void DeleteThisOneClick() {
    const DispatchState& d = dispatchState();
    switch (d.GlobalMeasureOrBilboard) {
    case KIND_SPHERE: {
        char name[AT3D_NAME_SIZE] = {};
        if (At3d_Sphere_Marker_Get_Name(d.GlobalSelectedIdx, name)) At3d_Sphere_Marker_Delete_One(name);
        break;
    }
    case KIND_BILLBOARD: At3d_Measure_Billboard_Delete_Item(d.GlobalSelectedIdx, 0); break;
    case KIND_MEASURE: {
        MEASURE_DATA item{};
        if (!Get_MeasureList_Item(d.GlobalSelectedIdx, &item)) break;
        const int polygon = polygonNumberOf(QString::fromUtf8(item.id));
        if (polygon >= 0)
            DeletePolygonFromView(polygon);
        else
            At3d_MeasureList_Delete_Item(d.GlobalSelectedIdx, 0);
        break;
    }
    default: return;
    }
    Unselect1Click();
}

void DeleteGroupClick() {
    const int kind = dispatchState().GlobalMeasureOrBilboard;
    if (kind == KIND_BILLBOARD) {
        for (int index : selectedGroup()) At3d_Measure_Billboard_Delete_Item(index, 0);
    } else if (kind == KIND_SPHERE) {
        At3d_Sphere_Marker_Delete_All();
    } else {
        DeleteThisOneClick();
        return;
    }
    Unselect1Click();
}

void Showwall1Click() {
    At3d_Measure_Billboard_Set_Visible_All(1);
    At3d_RenderOpenGLScene();
}

void Unselect1Click() {
    DispatchState& d = dispatchState();
    At3d_MeasureList_Cancel_Selected_Line();
    At3d_Measure_Billboard_Cancel_Selected();
    At3d_Sphere_Marker_Cancel_Selected();
    d.GlobalMeasureOrBilboard = 0;
    d.GlobalSelectedIdx = -1;
    viewerSettings().SelectedIDX = -1;
    At3d_RenderOpenGLScene();
}

void ShowMeasurementsAndBillboardsClick() {
    const int show = ControlChecked("ShowMeasurementsAndBillboards") ? 1 : 0;
    for (int flag : {LIBFLAG_SHOW_MEASURES, LIBFLAG_SHOW_BILLBOARDS, LIBFLAG_SHOW_SPHERES}) At3d_WriteFlag(flag, show);
    At3d_RenderOpenGLScene();
}

void ShowHideMeasuringBilboard(int flag) {
    billboardState().measureLabelsShown = flag != 0;
    const int count = At3d_Measure_Billboard_Get_Count();
    for (int i = 0; i < count; ++i) {
        int width = 0, height = 0, alpha = 0;
        char id[AT3D_NAME_SIZE] = {};
        if (At3d_Measure_Billboard_Get_Image_Size(i, id, &width, &height, &alpha) && alpha == 2)
            At3d_Measure_Billboard_Set_Visible_One(i, 0, flag ? 1 : 0);
    }
    At3d_RenderOpenGLScene();
}

QString ListIconsMnuClick() {
    QStringList lines{"Name,Group,X,Y,Z,Height,Visible"};
    const int count = At3d_Measure_Billboard_Get_Count();
    for (int i = 0; i < count; ++i) {
        BILLBOARD_DATA data{};
        const bool read = Get_Billboard_Data(i, &data);
        delete[] data.imagePtr;
        if (!read) continue;
        QString name = QString::fromUtf8(data.id);
        name.replace(',', ' ');
        lines << name + "," + StripID(name) +
                     QString::asprintf(",%.3f,%.3f,%.3f,%.2f,%d", data.position[0] + OC(0), data.position[1] + OC(1),
                                       data.position[2] + OC(2), data.height, data.visibleFlag);
    }
    const QString file = QString::fromStdString(sessionPaths().ORVO_T) + "Billboards.csv";
    if (!StringToFile(lines.join('\n') + '\n', file)) return {};
    ShowOrvoCSVFile("Billboards", file, true, true, false);
    return file;
}
