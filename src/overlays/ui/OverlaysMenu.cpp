#include "OverlaysMenu.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "overlays/ShapeFiles.h"
#include "overlays/TacticalGridCells.h"
#include "overlays/WebMapServices.h"
#include "app/services/DialogService.h"
#include "geo/Frames.h"

namespace {

QAction* addItem(QMainWindow* form, QMenu* menu, const char* name, const QString& caption, void (*handler)()) {
    QAction* item = menu->addAction(caption);
    item->setObjectName(name);
    QObject::connect(item, &QAction::triggered, form, [handler] { handler(); });
    return item;
}

}  // namespace

void AddOverlaysMenu(QMainWindow* form) {
    QMenu* map = form->menuBar()->addMenu("&Map");
    map->setObjectName("MapMenu");
    addItem(form, map, "Importshapefile1", "Import shape file", Importshapefile1Click);
    addItem(form, map, "Realshapefile1", "Read shape file", ReadShapeFileTatukAskForFile);
    map->addSeparator();
    addItem(form, map, "ImportTacticalGridMnu", "Import tactical grid", ImportTacticalGridMnuClick);
    map->addSeparator();
    addItem(form, map, "ViewGoogleMap1", "View Google map", ViewGoogleMap);
    addItem(form, map, "TerrainElevationFromWeb1", "Terrain elevation from the web", [] {
        const double height = GetTerrainElevationFromWeb(frameState().OCENTERLat, frameState().OCENTERLon);
        if (height != -9999) dialogService().showMessage(QString::asprintf("%.2f", height), "Terrain elevation");
    });
    addItem(form, map, "DownloadOrthophoto1", "Download orthophoto", DownloadOrthophoto1Click);
}
