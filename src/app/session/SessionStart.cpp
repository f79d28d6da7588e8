#include "SessionStart.h"

#include <QDir>
#include <QString>
#include <cstdio>
#include <unistd.h>

#include "CameraState.h"
#include "DroneCameras.h"
#include "MainFormState.h"
#include "RubberbandState.h"
#include "SessionSettings.h"
#include "StartupState.h"
#include "UserFolders.h"
#include "ViewerSettings.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "scene/EngineSession.h"

namespace {

std::string readComputerName() {
    char name[16] = {};
    if (gethostname(name, sizeof name - 1) != 0 || !name[0]) return "Unknown";
    return name;
}

// A missing folder is made; the message names `shown`.
bool ensureFolder(const std::string& folder, const std::string& shown) {
    const QString path = QString::fromStdString(folder);
    if (QDir(path).exists() || OrvoCreateDir(path)) return true;
    MyShowMessage("Can not create directory " + QString::fromStdString(shown));
    return false;
}

void openRunLog() {
    StartupState& state = startupState();
    state.PROCESSPID = static_cast<int>(getpid());
    state.LogFile = sessionPaths().ORVO_T + std::to_string(state.PROCESSPID + state.CountOfReports) + "_3DV.txt";
    resetRunLog();
    runLog().fp_prt = std::fopen(state.LogFile.c_str(), "w");
    PrintRunLog("Creating fp_prt %s\n", state.LogFile.c_str());
}

}  // namespace

void LoadCustomIcons() {
    StartupState& state = startupState();
    const QString folder = QString::fromStdString(sessionPaths().CTQ_Path) + "CustomIcons/";
    if (!QDir(folder).exists()) {
        SetControlVisible("SimanTactiModeBtn", false);
        return;
    }
    state.SatamsList = Find_Files(folder + "*.bmp", false);
    SetControlVisible("SimanTactiModeBtn", !state.SatamsList.isEmpty());
}

void SetSessionDefaults() {
    resetViewerSettings();
    resetRubberbandState();
    resetCameraState();
    const RubberbandState& r = rubberbandState();
    At3d_Set_Mesh_Location_Observer_Parameters(r.rgbLineObserverArray, r.rgbPointObserverArray, r.observerWidth,
                                               r.observerSize, r.observerLineFlag, r.observerPointFlag);
}

int Form_Setup(void* form, void* viewPanel, int width, int height) {
    for (int field = 0; field < STATUS_TEXT_COUNT; ++field) SSetTextAt3(field, "");
    const ViewerSettings& s = viewerSettings();
    if (!Start_DLL(viewPanel, width, height, s.useTexturesFlag, s.alwaysShowCameraCursorFlag, s.touchScreenInputFlag))
        return 0;
    At3d_Init_Mesh_Location(form, AT3D_NOTIFY_MESSAGE);
    const RubberbandState& r = rubberbandState();
    At3d_Set_Mesh_Location_Parameters(r.rgbLineArray, r.rgbPoint1Array, r.rgbPoint2Array, r.lineWidth, r.pointSize,
                                      r.depthTestFlag, r.pointsFlag);
    At3d_Set_Mesh_Obstruction_Parameters(r.rgbObstructionArray, r.pointObstructionSize, r.obstructionDisplayFlag,
                                         r.obstructionSkipDistance);
    return engineSession().dllOpen;
}

void SetRendererName(const std::string& glRenderer) {
    const bool intel = QString::fromStdString(glRenderer).toUpper().contains("INTEL");
    startupState().IntelGPU = intel;
    if (intel) SetControlVisible("Highaccuracy1", false);
}

bool FormCreateSession(const std::string& executablePath, const std::string& glRenderer) {
    StartupState& state = startupState();
    const SessionPaths& paths = sessionPaths();
    state.TScam = DroneCameraTable();
    state.COMPUTERNAME = readComputerName();
    // The temporary folder's failure names ORVO_, as it always has.
    if (!ensureFolder(paths.ORVO_, paths.ORVO_) || !ensureFolder(paths.ORVO_T, paths.ORVO_) ||
        !ensureFolder(state.MONITOREDFOLDER, state.MONITOREDFOLDER))
        return false;
    SetRendererName(glRenderer);
    openRunLog();
    ORVOINI().load(state.ORVOINIFILENAME);
    ReadSessionSettings();
    SetInstallationPaths(executablePath);
    // A machine planning solar has no tactical icons.
    if (!viewerSettings().ConfiguredForSolar) LoadCustomIcons();
    return true;
}

bool AskToExit() { return MyMessageBox("Do you really want to exit?", "Closing Viewer", 308) == IDYES; }

void EndSession() {
    resetRunLog();
    At3d_Stop();
}
