#include "FacadeMenu.h"

#include <QAction>
#include <QMenu>

#include "TFormOBLI.h"
#include "TFormPhoto.h"
#include "app/session/MainFormState.h"
#include "oblique/FacadeContainer.h"
#include "oblique/FacadeStore.h"
#include "oblique/FacadeView.h"
#include "oblique/ObliqueHooks.h"
#include "scene/engine_interface.h"

namespace {

QAction* addItem(QWidget* form, QMenu* menu, const char* name, const QString& caption, const QString& hint) {
    auto* action = new QAction(caption, form);
    action->setObjectName(name);
    if (!hint.isEmpty()) action->setStatusTip(hint), action->setToolTip(hint);
    menu->addAction(action);
    return action;
}

}  // namespace

void AddFacadeMenu(QWidget* form, QMenu* photos) {
    QMenu* facades = photos->addMenu("Facade photos");
    facades->setObjectName("FacadePhotosMnu");
    // The solar configuration hides the group by this name.
    facades->menuAction()->setObjectName("AddFacacephotos1");
    facades->menuAction()->setStatusTip("Handle facade images captured by vertical flight");
    QObject::connect(addItem(form, facades, "CreateContainer1", "Create container",
                             "Create the container file (FAC) from the images"),
                     &QAction::triggered, form, [] { CreateContainer1Click(); });
    QAction* show = addItem(form, facades, "ShowHideFacadeImageLocation", "Show location", "");
    show->setCheckable(true);
    show->setChecked(true);
    SetControlChecked("ShowHideFacadeImageLocation", true);
    QObject::connect(show, &QAction::triggered, form, [](bool checked) {
        SetControlChecked("ShowHideFacadeImageLocation", checked);
        At3d_MeasureList_Set_Visible_All(checked ? 1 : 0);
        At3d_RenderOpenGLScene();
    });
    // Its action is still to come: the item shows what is planned.
    addItem(form, facades, "Cleanfacades1", "Clean facades", "Delete  all images tooo close or too far");
    QObject::connect(addItem(form, facades, "FromTessmap1", "From Tessmap", ""), &QAction::triggered, form,
                     [] { FromTessmap1Click(); });
    QObject::connect(addItem(form, facades, "Markalocation1", "Mark a location", ""), &QAction::triggered, form,
                     [] { MarkALocationClick(); });

    InstallObliqueWindow(form);
    obliqueHooks().showPhotoBigWindow = [form](const QString& JPG, double DistXY, double DistZ) {
        FormPhoto(form)->ShowPhotoBigWindow(JPG, DistXY, DistZ);
    };
    obliqueHooks().facadeLookup = [form](const TGIS_Point3D& point) {
        double dxy = 0, dz = 0;
        const QString picture = FacadeOfClick(point, dxy, dz);
        if (!picture.isEmpty()) FormPhoto(form)->ShowPhotoBigWindow(picture, dxy, dz);
    };
}
