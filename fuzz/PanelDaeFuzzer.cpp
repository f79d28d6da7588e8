// A panel COLLADA file read the three ways the planner reads one: the
// panels it carries, the panel of the information dialog, its EPSG code.
#include <QString>
#include <cstdint>

#include "FuzzSupport.h"
#include "app/services/SessionPaths.h"
#include "solar/design/PanelDaeEpsg.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelDaeReader.h"
#include "solar/design/PanelStore.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    sessionPaths().ORVO_T = zvfuzz::scratchPath("TMP/");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = QString::fromStdString(zvfuzz::writeFile("Panel-1_1.dae", data, size));
    resetPanelStore();
    GetPanelsFromDae(path);
    ReadPanelDAE(path);
    GetEPSGFromDAE(path);
    return 0;
}
