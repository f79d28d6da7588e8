#include "DigitiseMenu.h"

#include <QString>

#include "DispatchState.h"
#include "app/model/ModelSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "scene/engine_interface.h"

namespace {

constexpr double ROOF_BLOCK_DEPTH = 0.1;
constexpr double DEFAULT_BLOCK_HEIGHT = 5;
constexpr float DEFAULT_DIGITIZING_LIFT = 0.2f;

// Every item starts from a clean kind and arms the clicks.
DispatchState& armed() {
    DispatchState& d = dispatchState();
    d.IsLine = d.IsFacade = d.IsFlytrough = false;
    d.IsPolygon = 0;
    d.DigitizeForMeasuring = false;
    d.DIGITIZELINEORPOLYGON = 0;
    d.DigiArmed = true;
    return d;
}

double askNumber(const QString& prompt, double fallback) {
    QString value = QString::number(fallback);
    if (!MyInputQuery("Digitize", prompt, value)) return fallback;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? number : fallback;
}

}  // namespace

void DigitizeBtnClick(int roof) {
    DispatchState& d = dispatchState();
    d.NWPW = 0;
    d.NWPS = 0;
    d.ROOF = roof;
}

void Roofs1Click() {
    DispatchState& d = armed();
    d.BlockDepth = ROOF_BLOCK_DEPTH;
    d.DIGITIZELINEORPOLYGON = 2;
    viewerSettings().GlobalColor = 255;
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    SetHelpCaption(" \t Click to start 4+ points for flat plane or 3 points for panels. Rightclick to finish.");
}

void Line1Click() { armed().IsLine = true; }

void Eelevatedpolygon1Click() {
    DispatchState& d = armed();
    d.IsPolygon = 1;
    d.GLOBALZUZ4DIGITIZING = static_cast<float>(askNumber("Elevation above the surface (m)", DEFAULT_DIGITIZING_LIFT));
}

void PolygonMnuClick() { armed().IsPolygon = 1; }
void Polygonwiththickness1Click() { armed().IsPolygon = 2; }
void FlytrroughDigitizeClick() { armed().IsFlytrough = true; }

void AreaMnuClick() {
    armed().DigitizeForMeasuring = true;
    SetHelpCaption("\tClick on the  vertex points. Rightclick to finish.");
}

void BlockMenuClick() {
    DispatchState& d = armed();
    d.BlockDepth = askNumber("Block height (in meters)", DEFAULT_BLOCK_HEIGHT);
    d.DIGITIZELINEORPOLYGON = 2;
    SetHelpCaption("\t Click to start.Rightclick to finish.");
}

void Facade1Click() { armed().IsFacade = true; }

void AbortpopupClick() {
    DispatchState& d = dispatchState();
    d.DigiArmed = false;
    if (!d.BILLBOARDMODE) SetHelpCaption(modelSession().RegularHelp);
}
