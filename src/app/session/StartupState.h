// What the process entry captures and start-up derives: the program's
// names, the command line, the machine and the fixed paths of the session.
#pragma once

#include <QStringList>
#include <array>
#include <string>

// The command line keeps this many arguments; more are dropped silently.
constexpr int GLOBAL_ARGS_MAX = 20;

struct StartupState {
    std::string GlobalEXE = "Zorvex64";
    // The model to open without asking; empty lets the file dialog ask.
    std::string GlobalARGVforDebug;
    std::array<std::string, GLOBAL_ARGS_MAX> GlobalArgs{};
    int NGlobalARGS = 0;
    std::string COMPUTERNAME = "Unknown";
    int PROCESSPID = 0;
    bool IntelGPU = false;
    int CountOfReports = 0;
    std::string ImagesFolder;
    std::string MONITOREDFOLDER;
    std::string ORVOINIFILENAME;
    std::string LogFile;
    std::string LOGO;
    std::string NORTHARROW;
    std::string ORVODECAL;
    std::string BrandingFileName;
    // Bitmaps offered as tactical icons, from the installation's "CustomIcons/".
    QStringList SatamsList;
    // The drone camera table, filled when the main form is created.
    QStringList TScam;
};

StartupState& startupState();
void resetStartupState();
