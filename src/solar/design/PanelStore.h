// The one owner of the panel stores: the live panels, the staging store a
// file is read into, the template of the placement under way and the few
// settings of the planner that go with them.
#pragma once

#include <QString>
#include <array>

#include "PanelStruct.h"

struct PanelStore {
    std::array<PANEL, MAX_PANELS> panels{};   // live panels, dense from 0
    int NumPanelsCreated = 0;
    std::array<PANEL, MAX_PANELS> panelsT{};  // filled while a file is read
    int NumPanelsCreatedT = 0;
    PANEL GlobalPanel{};                      // template of the placement under way
    int GlobalPanelGroup = 0;                 // base group of the placement, 1 to 995
    double GLOBALGAP_DISTANCE = 0.02;         // m: picking tolerance and default row gap
    float MinimumPanelRowsGap = 0.6f;         // m
    QString ModuleType;                       // selected catalogue name ("Solvane3D", "ModuleType")
    QString ModelFolder;                      // folder of the open model, ending in "/"
    QString PANELSFOLDER;                     // ModelFolder + "PANELS/"
    QString SHADINGFOLDER;                    // PANELSFOLDER + "SHADING/"
};

PanelStore& panelStore();
void resetPanelStore();

// Points the panel folders at a model's folder (ending in "/") and makes
// them; true when both exist afterwards.
bool SetPanelFoldersForModel(const QString& modelFolder);
