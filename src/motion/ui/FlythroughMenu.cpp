#include "FlythroughMenu.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>

#include "app/session/MainFormState.h"
#include "motion/Flythrough.h"
#include "motion/ui/VideoMenu.h"

void AddFlythroughMenuItems(QMainWindow* form, QMenu* menu) {
    QAction* walk = menu->addAction("Flytrough");
    walk->setObjectName("FlytroughVieport");
    walk->setCheckable(true);
    QObject::connect(walk, &QAction::triggered, form, [walk] {
        // The check mark is the state: the video reads it, and a failed
        // opening leaves it on.
        SetControlChecked("FlytroughVieport", walk->isChecked());
        FlytroughVieportClick();
    });
    QAction* show = menu->addAction("Show Flytrough waypints");
    show->setObjectName("ShowFlytroughwaypints1");
    QObject::connect(show, &QAction::triggered, form, [] { ShowFlytroughwaypints1Click(); });
    AddVideoMenuItems(form, menu);
    QPointer<QMainWindow> window(form);
    SetFlythroughCaptionHook([window](const QString& caption) {
        if (window) window->setWindowTitle(caption);
    });
}
