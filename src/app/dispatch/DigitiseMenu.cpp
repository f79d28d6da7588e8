#include "DigitiseMenu.h"

#include <QString>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "measure/BillboardPlacing.h"
#include "measure/DigitiseState.h"
#include "measure/Measuring.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "solar/design/RoofPlane.h"

namespace {

constexpr double ROOF_BLOCK_DEPTH = 0.1;
constexpr int ROOF_COLOR = 255;
const QString CLICK_HELP = "\tClick to digitize. Rightclick to finish.";

void clearPoints() {
    DigitiseState& g = digitiseState();
    g.NWPS = 0;
    g.NWPW = 0;
}

// Every item starts from a clean kind, arms the clicks and puts the other
// tools away: the engine's own picking would take the clicks otherwise.
DispatchState& armed() {
    DispatchState& d = dispatchState();
    d.IsLine = d.IsFacade = d.IsFlytrough = false;
    d.IsPolygon = 0;
    d.DigitizeForMeasuring = false;
    d.DIGITIZELINEORPOLYGON = 0;
    d.GLOBALZUZ4DIGITIZING = 0;
    d.MOVEBILLBOARD = 0;
    panelFormState().BlockDepth = 0;
    ReleaseMeasureTools();
    ReleaseBillboardTools();
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    d.DigiArmed = true;
    SSetTextAt3(3, "Digitizing: click the first point");
    return d;
}

// The number typed, or fallback when the query is cancelled or the text isn't one.
double askNumber(const QString& caption, const QString& prompt, const QString& proposed, double fallback) {
    QString value = proposed;
    HoldEngineInput hold;
    if (!MyInputQuery(caption, prompt, value)) return fallback;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? number : fallback;
}

}  // namespace

void DigitizeBtnClick() {
    clearPoints();
    roofState().ROOF = 0;
    panelStore().GlobalPanel.Length = 0;
}

void MyLineClick() {
    DispatchState& d = dispatchState();
    d.DIGITIZELINEORPOLYGON = d.IsLine || d.IsFlytrough ? 1 : d.IsPolygon ? 2 : 0;
    d.DigitizeForMeasuring = false;
    ViewerSettings& settings = viewerSettings();
    if (d.IsFacade) {
        settings.DistToFacade = askNumber("Distance from the facade", "Specify the value (m)",
                                          QString::asprintf("%.1f", settings.DistToFacade), settings.DistToFacade);
        MyShowMessage("Click upper left, two points on the facade and lower right");
    }
    if (d.IsFlytrough) {
        settings.FlytroughAlt = askNumber("Fly above model", "Specify the value (m)", "100", settings.FlytroughAlt);
        clearPoints();
    }
    SetHelpCaption(CLICK_HELP);
}

void Roofs1Click() {
    DispatchState& d = armed();
    panelStore().GlobalPanel.DTilt = 0;
    panelFormState().BlockDepth = ROOF_BLOCK_DEPTH;
    d.DIGITIZELINEORPOLYGON = 2;
    viewerSettings().GlobalColor = ROOF_COLOR;
    clearPoints();
    SetHelpCaption(" \t Click to start 4+ points for flat plane or 3 points for panels. Rightclick to finish.");
}

void Line1Click() {
    armed().IsLine = true;
    MyLineClick();
}

void Eelevatedpolygon1Click() {
    DispatchState& d = armed();
    d.IsPolygon = 1;
    constexpr float DEFAULT_LIFT = 0.2f;
    d.GLOBALZUZ4DIGITIZING = static_cast<float>(
        askNumber("Elevated polygon", "Height above the surface (m)", QString::number(DEFAULT_LIFT), DEFAULT_LIFT));
    MyLineClick();
}

void PolygonMnuClick() {
    armed().IsPolygon = 1;
    MyLineClick();
}

void Polygonwiththickness1Click() {
    armed().IsPolygon = 2;
    MyLineClick();
}

void FlytrroughDigitizeClick() {
    armed().IsFlytrough = true;
    MyLineClick();
}

void AreaMnuClick() {
    armed().DigitizeForMeasuring = true;
    clearPoints();
    SetHelpCaption("\tClick on the  vertex points. Rightclick to finish.");
}

void BlockMenuClick() {
    DispatchState& d = armed();
    constexpr double DEFAULT_BLOCK_HEIGHT = 5;
    panelFormState().BlockDepth =
        askNumber("Block creating", "Block height (in meters)", "5", DEFAULT_BLOCK_HEIGHT);
    {
        HoldEngineInput hold;
        dialogService().chooseColor("Block colour", viewerSettings().GlobalColor);
    }
    d.DIGITIZELINEORPOLYGON = 2;
    clearPoints();
    SetHelpCaption("\t Click to start.Rightclick to finish.");
}

void Facade1Click() {
    armed().IsFacade = true;
    MyLineClick();
}

void AbortpopupClick() {
    DispatchState& d = dispatchState();
    d.DigiArmed = false;
    SSetTextAt3(3, "Digitizing stopped");
    if (!d.BILLBOARDMODE) SetHelpCaption(modelSession().RegularHelp);
}
