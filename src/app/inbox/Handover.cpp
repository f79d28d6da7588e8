#include "Handover.h"

#include <QFile>
#include <QTimer>
#include <cstdio>

#include "app/services/RunLog.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"

namespace {

// Time for the window to come forward before the other side is told.
constexpr int HANDOVER_DELAY_MS = 111;

}  // namespace

void WriteHandoverFile() {
    const std::string path = startupState().MONITOREDFOLDER + "Handover.tmp";
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (!file) {
        PrintRunLog("Cannot write %s\n", path.c_str());
        return;
    }
    std::fprintf(file, "%lf %lf \n", dispatchState().FromModel_X, dispatchState().FromModel_Y);
    std::fclose(file);
}

void HandOverClickedPoint() {
    mainFormHost().showMainForm();
    QTimer::singleShot(HANDOVER_DELAY_MS, [] { WriteHandoverFile(); });
}
