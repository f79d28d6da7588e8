#include "UserFolders.h"

#include <cstdlib>
#include <filesystem>

#include "DriveType.h"
#include "StartupState.h"
#include "app/services/SessionPaths.h"

namespace {

std::string folderOfProgram(const std::string& executablePath) {
    std::error_code ec;
    const std::filesystem::path absolute = std::filesystem::absolute(executablePath, ec);
    return absolute.parent_path().string() + "/";
}

}  // namespace

void DeriveUserFolders(const std::string& home, const std::string& executablePath, bool executableOnUsb) {
    SessionPaths& paths = sessionPaths();
    StartupState& state = startupState();
    paths.USERFOLDER = executableOnUsb ? folderOfProgram(executablePath) : home + "/";
    paths.ORVO_ = paths.USERFOLDER + "Orvo_/";
    paths.ORVO_T = paths.ORVO_ + "TMP/";
    state.ImagesFolder = paths.ORVO_T + "Temp/";
    state.MONITOREDFOLDER = paths.ORVO_ + "JFR/";
    state.ORVOINIFILENAME = paths.ORVO_ + "Orvo.ini";
}

void DeriveUserFoldersOfProcess(const std::string& executablePath) {
    const char* home = std::getenv("HOME");
    DeriveUserFolders(home && *home ? home : ".", executablePath, DriveTypeOf(executablePath) == DriveKind::Removable);
}

void SetInstallationPaths(const std::string& executablePath) {
    SessionPaths& paths = sessionPaths();
    StartupState& state = startupState();
    std::error_code ec;
    const std::filesystem::path programFolder = std::filesystem::absolute(executablePath, ec).parent_path();
    paths.CTQ_Path = (programFolder.parent_path() / "data").string() + "/";
    state.LOGO = paths.CTQ_Path + "LOGO.PNG";
    state.NORTHARROW = paths.ORVO_T + "NA.PNG";
    state.ORVODECAL = paths.ORVO_T + "OrvoDecal.png";
    state.BrandingFileName = paths.CTQ_Path + "Branding/Branding.csv";
}
