// Opening a model in the viewer: the menu's "Open", the common path that
// start-up and the model browser take, and the reading proper.
#pragma once

#include <QStringList>
#include <string>

#include "ModelSession.h"

// The dialog ReadModelDlg: its title and filter.
inline constexpr const char* READ_MODEL_TITLE = "Open the  model(s). ";
inline constexpr const char* READ_MODEL_FILTER =
    "OBJ file (*.OBJ;*.OBJ.ZIP;*.3DS;*.DAE;*.DXF;*.STL;*.COB;*.ATM;*.shp;*.kml;*.xml)|*.obj;*.obj.zip;*.3ds;*.dxf;"
    "*.dae;*.stl;*.cob;*.shp;*.atm;metadata.xml;*.kml;*.xml|*.XML|*.xml";
inline constexpr const char* REGULAR_HELP =
    "\tLMouse or arrows to rotate,  RMouse to pan, Wheel or +/- or both buttons to zoom";

// "Open": forgets the command line's model, empties the list of imported
// files, the measure list, the billboards and the sphere markers, and opens
// through ReadModelBtnClick, so the file dialog asks.
// The file dialog ReadModelDlg, starting in the last model's folder: one or
// more models, the first opened and the rest added; empty on cancel.
QStringList AskForModels();

void OpenFrommenuClick();

// Opens GlobalARGVforDebug, or asks with the file dialog when it is empty:
// clears the scene, reads the model, draws the first frame and writes the
// model's "Home.vpt". A cancelled dialog leaves an empty scene.
void ReadModelBtnClick();

// The reading proper; leaves INPUTFILENAME empty when nothing was chosen
// and does nothing while the engine is not open.
void Read_3D_File();

// Solarpath (the model's "Reports/" folder, made now), the run log's name
// PID_model_ComprehensiveLog.LOG and the log opened on it, unbuffered, unless
// one is open already. False when the log cannot be written.
bool OpenSolarRunLog(const std::string& modelPath, int processId);

// The engine's read type and the kind flags of a file: OBJ for anything
// that is not DXF, ATM, 3DS, COB, STL or DAE.
int ReadTypeOfModel(const std::string& path, ModelKind& kind);
