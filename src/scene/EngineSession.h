// The main form's thin wrappers around the engine: start and stop, the
// counted no-draw switch, the frame helpers and the list record readers.
#pragma once

#include "engine_interface.h"

struct EngineSession {
    int dllOpen = 0;
    int MYLIBFLAG_NO_DRAW_COUNT = 0;
    int MYLIBFLAG_NO_DRAW = 0;
    int renderModeCounter = 0;
    int fileLoaded = 0;
};

EngineSession& engineSession();
void resetEngineSession();

// Starts the engine once and sets the start flags; the dialogs' part of the
// start belongs to the main window. Returns dllOpen.
int Start_DLL(void* viewPanel, int width, int height, int useTexturesFlag, int alwaysShowCameraCursorFlag,
              int touchScreenInputFlag);
void Stop_DLL();
// Counts every call, writes the no-draw flag and remembers its value.
void At3d_WriteFlag_LIBFLAG_NO_DRAW(int flag);
// (ogl x, y, z) -> (x, -z, y), and back.
void OGL2DLL(double ogl_X, double ogl_Y, double ogl_Z, double* dll);
void DLL2OGL(double dll_X, double dll_Y, double dll_Z, double* ogl);
int Get_MeasureList_Item(int index, MEASURE_DATA* ptr);
// Fills data from billboard index; allocates data->imagePtr (free with
// delete[]), releasing any image the record held before.
int Get_Billboard_Data(int index, BILLBOARD_DATA* data);
int Replace_Billboard_Data(int index, const BILLBOARD_DATA* data);
// The render-mode switch: flag 79 cycles through 8, 3, 0.
void Togglerendermode1Click();

// LIBFLAG_HOLD_INPUT raised while a modal dialog opened from a click is up:
// the engine leaves the mouse alone until it is gone.
class HoldEngineInput {
public:
    HoldEngineInput() { At3d_WriteFlag(LIBFLAG_HOLD_INPUT, 1); }
    ~HoldEngineInput() { At3d_WriteFlag(LIBFLAG_HOLD_INPUT, 0); }
    HoldEngineInput(const HoldEngineInput&) = delete;
    HoldEngineInput& operator=(const HoldEngineInput&) = delete;
};
