#include "Timer1Timer.h"

#include <QString>
#include <chrono>
#include <cstdio>

#include "app/session/DispatchState.h"
#include "app/model/ModelSession.h"
#include "app/services/OrvoIni.h"
#include "app/session/MainFormState.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"

namespace {

// The extent is "xmin xmax ymin ymax zmin zmax flag" in the map frame; true
// when the model's X, Y range misses it.
bool outsideProjectExtent() {
    const std::string text = ORVOINI().readString("Orvo", "Last Extent", "");
    double ProjectMinMax[6] = {0, 0, 0, 0, 0, 0};
    int flag = 0;
    if (std::sscanf(text.c_str(), "%lf%lf%lf%lf%lf%lf%d", &ProjectMinMax[0], &ProjectMinMax[1], &ProjectMinMax[2],
                    &ProjectMinMax[3], &ProjectMinMax[4], &ProjectMinMax[5], &flag) < 4)
        return false;
    // The open already moved the model's extent by Offset.
    const double* model = frameState().OriginalModelMinMax;
    return model[1] < ProjectMinMax[0] || model[0] > ProjectMinMax[1] || model[3] < ProjectMinMax[2] ||
           model[2] > ProjectMinMax[3];
}

}  // namespace

void Timer1Timer() {
    DispatchState& d = dispatchState();
    d.Elapsed = static_cast<int>(
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - d.Start).count());
    if (!engineSession().fileLoaded) {
        SetHelpCaption(QString::asprintf("Waiting for the model to be loaded: %5d seconds", d.Elapsed));
        return;
    }
    const bool outside = outsideProjectExtent();
    // Other tools own the label once the model is in; only a change is told.
    if (outside == d.outsideProjectExtent && !mainFormState().LabelForHelpCaption.startsWith("Waiting")) return;
    d.outsideProjectExtent = outside;
    const QString help = modelSession().RegularHelp;
    SetHelpCaption(d.outsideProjectExtent ? help + "  The model lies outside the project extent." : help);
}
