#include "SolarConfiguration.h"

#include <string>

#include "MainFormState.h"
#include "SessionSettings.h"
#include "ViewerSettings.h"

void CofigireforSolarPlanning1Click() {
    const bool solar = ControlChecked("CofigireforSolarPlanning1");
    viewerSettings().ConfiguredForSolar = solar;
    WriteSessionSetting("Viewer3D", "ConfiguredForSolar", solar ? "YES" : "NO");
    for (std::string_view name : SOLAR_HIDDEN_CONTROLS) SetControlVisible(std::string(name), !solar);
}
