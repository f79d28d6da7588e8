#include "MeasureControls.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "FormActions.h"
#include "catalog/ui/TFormIO.h"
#include "app/dispatch/AppMessage.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "measure/BillboardMenu.h"
#include "measure/BillboardPlacing.h"
#include "measure/BillboardState.h"
#include "measure/MeasureDisplay.h"
#include "measure/MeasurementMenus.h"
#include "measure/Measuring.h"
#include "scene/engine_interface.h"

void CreateMeasureMenu(QWidget* form, QMenuBar* bar) {
    QMenu* menu = bar->addMenu("&Measurements");
    menu->setObjectName("MeasurementsMnu");
    AddMenuItem(form, menu, "Displaymeasurings1", "Display measurings", [] { Displaymeasurings1Click(); });
    AddMenuItem(form, menu, "Clearmeasurings1", "Clear measurings", Clearmeasurings1Click);
    menu->addSeparator();
    AddMenuItem(form, menu, "SaveMeasurements1", "Save measurements", [] { DoSaveMeasurements({}); });
    AddMenuItem(form, menu, "SaveBillboards1", "Save billboards", [] { DoSaveBillboards({}); });
    AddMenuItem(form, menu, "SaveAll1", "Save all", SaveAllClick);
    AddMenuItem(form, menu, "ImportMeasurements1", "Import measurements", [] { DoImportMeasurements({}); });
    menu->addSeparator();
    AddMenuItem(form, menu, "SavePolygonMnu", "Save polygon", [] { SavePolygonMnuClick(); });
    AddMenuItem(form, menu, "ImportPolygonMnu", "Import polygon", [] { ImportPolygonMnuClick(); });
    menu->addSeparator();
    AddMenuItem(form, menu, "ListIconsMnu", "List icons", [] { ListIconsMnuClick(); });
    QAction* labels = AddCheckMenuItem(form, menu, "ShowMeasuringBillboards1", "Show measuring billboards", [] {
        const bool show = !billboardState().measureLabelsShown;
        ShowHideMeasuringBilboard(show ? 1 : 0);
        SetControlChecked("ShowMeasuringBillboards1", show);
    });
    labels->setChecked(true);
    QMenu* locations = menu->addMenu("Locations");
    AddMenuItem(form, locations, "Locations_Off", "Off", Locations_OffClick);
    AddMenuItem(form, locations, "Locations_Measure", "Measure", Locations_MeasureClick);
    AddMenuItem(form, locations, "Locations_Pause", "Pause", Locations_PauseClick);
    AddMenuItem(form, locations, "Locations_Continue", "Continue", Locations_ContinueClick);
}

void CreateMeasureToolButtons(QWidget* form, QToolBar* tools) {
    tools->addSeparator();
    AddToolButton(form, tools, "MeasureButton", "Measure", true, MeasureButtonClick);
    AddToolButton(form, tools, "SelectObservertargetBtn", "Observer and target", true, SelectObservertargetBtnClick);
    AddToolButton(form, tools, "DoBillboard", "Billboard", true, DoBillboardClick);
    AddToolButton(form, tools, "SimanTactiModeBtn", "Icons", true, SimanTactiModeBtnClick);
    QAction* showAll = AddToolButton(form, tools, "ShowMeasurementsAndBillboards", "Show measures", true,
                                     ShowMeasurementsAndBillboardsClick);
    showAll->setChecked(true);
    SetControlChecked("ShowMeasurementsAndBillboards", true);
    QAction* deleteSelected = AddToolButton(form, tools, "DeleteThisOne", "Delete selected", false, DeleteThisOneClick);
    // The delete button is the solar planner's: it shows once there is something to delete.
    SetControlVisible("DeleteThisOne", false);
    deleteSelected->setVisible(false);
    auto* picture = new QLabel;
    picture->setObjectName("SatamImage");
    picture->setAccessibleName("Selected icon");
    // A fixed size: choosing an icon must not resize the tool bar and with it the view.
    picture->setFixedSize(32, 32);
    tools->addWidget(picture);
}

QMenu* CreatePopupMenu1(QWidget* form) {
    auto* menu = new QMenu(form);
    menu->setObjectName("PopupMenu1");
    QMenu* move = menu->addMenu("Move");
    move->setObjectName("Move1");
    AddMenuItem(form, move, "Movethisone", "This one", MovethisoneClick);
    AddMenuItem(form, move, "MoveAllgroup1", "All group", MoveAllgroup1Click);
    QMenu* hide = menu->addMenu("Hide");
    hide->setObjectName("Hide1");
    AddMenuItem(form, hide, "HideThisone", "This one", HideThisoneClick);
    AddMenuItem(form, hide, "Hidegroup", "Group", HidegroupClick);
    QMenu* remove = menu->addMenu("Delete");
    remove->setObjectName("Delete1");
    AddMenuItem(form, remove, "DeleteThisOneItem", "This one", DeleteThisOneClick);
    AddMenuItem(form, remove, "DeleteGroup", "Group", DeleteGroupClick);
    AddMenuItem(form, menu, "Showwall1", "Show all", Showwall1Click);
    QMenu* links = menu->addMenu("Hyperlinks");
    links->setObjectName("Hyperlinks1");
    AddMenuItem(form, links, "Assignlinks1", "Assign links", Assignlinks1Click);
    AddMenuItem(form, menu, "Unselect1", "Unselect", Unselect1Click);
    return menu;
}

void PreparePopupMenu1(QMenu* menu) {
    const PopupMenu1Items items = PopupMenu1Popup();
    for (QMenu* sub : menu->findChildren<QMenu*>()) {
        if (sub->objectName() == "Move1") sub->menuAction()->setVisible(items.Move);
        if (sub->objectName() == "Hide1") sub->menuAction()->setVisible(items.ShowAll);
        if (sub->objectName() == "Hyperlinks1") sub->menuAction()->setVisible(items.Hyperlinks);
    }
    for (QAction* action : menu->actions())
        if (action->objectName() == "Showwall1") action->setVisible(items.ShowAll);
}

QMenu* CreateShiftRightClickPopupmenu(QWidget* form) {
    auto* menu = new QMenu(form);
    menu->setObjectName("ShiftRightClickPopupmenu");
    AddMenuItem(form, menu, "CopyThePoint", "Copy the point", [] {
        const DispatchState& d = dispatchState();
        QGuiApplication::clipboard()->setText(
            QString::asprintf("%.3f %.3f %.3f", d.FromModel_X, d.FromModel_Y, d.FromModel_Z));
    });
    AddMenuItem(form, menu, "BillboardHere", "Billboard here", [] {
        const DispatchState& d = dispatchState();
        SetControlChecked("DoBillboard", true);
        PlaceBillboardAtClick(d.FromModel_X, d.FromModel_Y, d.FromModel_Z);
    });
    return menu;
}
