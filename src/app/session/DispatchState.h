// The input modes and the mouse as the dispatcher keeps them: there is no
// one mode variable, only these flags, set by the tool buttons and menus.
// The roof capture's BlockDepth and ROOF belong to the panel form and the
// roof work (panelFormState(), roofState()).
#pragma once

#include <QString>
#include <QStringList>
#include <chrono>

struct DispatchState {
    bool DigiArmed = false;
    bool BILLBOARDMODE = false;
    int MOVEBILLBOARD = 0;
    bool DigitizeForMeasuring = false;
    int DIGITIZELINEORPOLYGON = 0;
    bool IsLine = false;
    bool IsFacade = false;
    bool IsFlytrough = false;
    int IsPolygon = 0;
    // Lift of digitised vertices: the elevated polygon's, 0 for every other kind.
    float GLOBALZUZ4DIGITIZING = 0;
    bool keep_goingAVI = false;
    int KamaFTWP = 0;
    double GlobalFlyDeltaZ = 0;
    double GlobalFlyTroughSKEW = 0;
    int GlobalMeasureOrBilboard = 0;
    int GlobalSelectedIdx = -1;

    bool MouseLB = false;
    bool MouseRB = false;
    int MousexPos = 0, MouseyPos = 0;
    int LastMousexPos = 0, LastMouseyPos = 0;
    char LRUD = ' ';
    int KamaLMouseMove = 0;
    double CAMERAXANGLE = 0, CAMERAYANGLE = 0, CAMERAZANGLE = 0;
    double CAMERASTEPANGLE = 5;

    // What the last click on the mesh found: map frame after the pick,
    // local once the point became the session's point. A measured line
    // leaves both its ends here in the map frame.
    double GlobalX1 = 0, GlobalY1 = 0, GlobalZ1 = 0;
    double GlobalX2 = 0, GlobalY2 = 0, GlobalZ2 = 0;
    double FromModel_X = 0, FromModel_Y = 0, FromModel_Z = 0;
    QString GlobalLayerName, GlobalLayerName1;
    float rgbArray2[3] = {0, 0, 0};
    // Text the last click put on the clipboard; the window copies it there.
    QString clipboardText;
    // Map points taken with a right click, "%lf %lf %lf" each; emptied by every open.
    QStringList TDigitizedPoints;

    std::chrono::steady_clock::time_point Start = std::chrono::steady_clock::now();
    int Elapsed = 0;
    bool outsideProjectExtent = false;
};

DispatchState& dispatchState();
void resetDispatchState();
