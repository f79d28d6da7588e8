#include "PhotoMetaMenu.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "oblique/ui/FacadeMenu.h"
#include "photometa/AnalyzeExif.h"

void CreatePhotosMenu(QWidget* form, QMenuBar* bar) {
    QMenu* menu = bar->addMenu("&Photos");
    menu->setObjectName("PhotosMnu");
    auto* analyze = new QAction("Analyze EXIF", form);
    analyze->setObjectName("AnalyzeEXIF1");
    QObject::connect(analyze, &QAction::triggered, form, [] { AnalyzeExifClick(); });
    menu->addAction(analyze);
    AddFacadeMenu(form, menu);
}
