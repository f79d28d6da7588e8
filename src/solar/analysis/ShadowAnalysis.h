// The shadow ray analysis of one panel: rays from its test points towards
// the sun of every hour of the sun table, against the mesh itself, the shade
// decision of each hour, its energy, and the panel's shading CSV, which is
// also the cache of the panel's result.
#pragma once

#include <QString>
#include <string>

#include "SolarRecords.h"

// SHADINGFOLDER + base of the panel's Filename + "_Shading.CSV" / "_Shading.dae".
std::string GetShadingCSV(const PANEL& panel);
std::string GetShadingDae(const PANEL& panel);

// Works on r.panel (p is not read beyond the copy the text keeps); the sun
// table must hold the panel's hours and climateInUse() the run's climate.
// Returns the shading CSV's path, or "" when the sun table is not ready (r
// then stays as it came). A valid cached CSV fills r without casting a ray.
// Pass one casts on reportRun().ShadingThreads threads with the same answers
// as a single thread; pass two and every file are written in order.
std::string AnalyzeShadowForPointEx(const PANEL& p, CombinedPanelResults& r, const std::string& panelSunFile,
                                    bool OnlyCenter, int OptimizerType);

// The panel form's button: adds the panel's ray file to the scene, or says
// "No shadeing DAE file found". The panel comes from the layer name.
void ShowPanelShadingBtnClick(const QString& GlobalLayerName);
