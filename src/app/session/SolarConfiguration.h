// A machine configured for solar planning shows a reduced tool set: these
// controls are hidden while the configuration is on.
#pragma once

#include <array>
#include <string_view>

inline constexpr std::array<std::string_view, 36> SOLAR_HIDDEN_CONTROLS = {
    // Tool controls.
    "FOVSpinButton", "SatamImage", "ObsElevSpinButton", "ObserverElevationlabel", "OELabel", "CenterToGridBtn",
    "ShowMeasurementsAndBillboards", "BackfaceCullingBtn", "DepthFlagBtn", "InvertObserverTarget", "LookAtBtn",
    "SelectMeasuringBtn", "SimanTactiModeBtn", "DoBillboard", "SelectObservertargetBtn",
    // Menu items.
    "Importshapefile1", "AddFacacephotos1", "ImportTacticalGridMnu", "Createpanorama1", "Cleanthemodel1",
    "Cropthemodel1", "ExportONC1", "Rectifymodel1", "Createplane1", "SaveLocalizedModel", "Findmodelshift1",
    "GotoLatLon1", "Shiftthemodel1", "ShiftRotatethemodel1", "Compressthemodel1", "Explore3Dmodels1",
    "Findunanalyzedmodels1", "AddPRJ1", "ShowPRJ1", "Cleantemporaryfiles1", "Realshapefile1"};

// Takes ConfiguredForSolar from the check of the menu item
// "CofigireforSolarPlanning1", writes it to the settings file as "YES" or
// "NO", and shows or hides the controls above to match.
void CofigireforSolarPlanning1Click();
