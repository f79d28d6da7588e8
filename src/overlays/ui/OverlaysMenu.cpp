#include "OverlaysMenu.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "overlays/ShapeFiles.h"
#include "overlays/TacticalGridCells.h"

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
}
