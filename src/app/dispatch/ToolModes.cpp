#include "ToolModes.h"

#include "app/model/ModelSession.h"
#include "app/session/MainFormState.h"
#include "scene/engine_interface.h"

void SelectMeasuringBtnClick() {
    const bool on = ControlChecked("SelectMeasuringBtn");
    for (const char* other : {"MeasureButton", "SelectObservertargetBtn"}) SetControlChecked(other, false);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    At3d_WriteFlag(LIBFLAG_SELECT_MEASURE, on ? 1 : 0);
    if (!on) SetHelpCaption(modelSession().RegularHelp);
}
