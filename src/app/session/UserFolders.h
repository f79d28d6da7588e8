// The per-user folder tree and the installation's fixed paths.
#pragma once

#include <string>

// USERFOLDER is home + "/", or the program's own folder when the program
// runs from a USB stick, so that the stick carries its data with it. Then
// ORVO_, ORVO_T, ImagesFolder, MONITOREDFOLDER and the settings file's name.
void DeriveUserFolders(const std::string& home, const std::string& executablePath, bool executableOnUsb);

// The same for this process: $HOME and the program's path, the stick test
// by the program's mount.
void DeriveUserFoldersOfProcess(const std::string& executablePath);

// CTQ_Path (the installation's "data/" beside the program's folder), LOGO,
// NORTHARROW, ORVODECAL and BrandingFileName.
void SetInstallationPaths(const std::string& executablePath);
