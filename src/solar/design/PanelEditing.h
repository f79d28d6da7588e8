// Working on placed panels through the measure dialog: a line drawn from a
// panel offers to move, lift, delete or duplicate it or its construction
// group, or to show its figures. Points are in the map frame.
#pragma once

#include <QString>
#include <QStringList>

#include "PanelStruct.h"

// A construction group moves at most this many panels at once.
constexpr int MAX_PANELS_MOVED = 250;

// What the dialog was opened on.
enum PanelDialogKind { NO_PANEL = 0, ON_PANEL = 1, ON_ROOF_POLYGON = 2 };

struct PanelEditState {
    // The layer under the line's start, and the line's ends.
    QString GlobalLayerName;
    TGIS_Point3D lineStart{}, lineEnd{};
    int GlobalSelectedPanelIndex = -1;
    TGIS_Point3D GlobalNeighbourPanelCenter{};
    // 1 the panel, 2 its construction group, 0 nothing chosen.
    int PanelOrGroup = 0;
    // The move SnapTile proposed; a Z of -9999 marks none.
    TGIS_Point3D GlobalMovePanels_PXX{0, 0, -9999, 0};
    QString GlobalPanelInfo;
    bool FromShowInfo = false;
    // The panels' labels are shown ("Show panels names").
    bool labelsShown = false;
};

PanelEditState& panelEditState();
void resetPanelEditState();

// The dialog opening on a line from layer (FormActivate): groups the panels,
// finds the panel and its free neighbour places, copies it into
// GlobalPanel and its figures into GlobalPanelInfo. Answers what the line
// started on.
PanelDialogKind PreparePanelDialog(const QString& layer, TGIS_Point3D lineStart, TGIS_Point3D lineEnd);
// The dialog's caption for it: "Panel " or "Roof polygon " and the layer's name.
QString PanelDialogCaption(PanelDialogKind kind, const QString& layer);

// Moves the selected panel (PanelOrGroup 1) or its construction group (2,
// at most 250 panels) by the vector, rewriting each panel's file. With IDX2
// a panel under the line's end the vector is a snap and goes as it is;
// without a vector (DZIN below -9990) the corner of the panel nearest to the
// line's start is put down on the roof and moved onto the line's end.
// Answers the panels moved.
int MovePanels(double DXIN, double DYIN, double DZIN, int IDX2);
// The dialog's move buttons: labels off while moving, the snap vector of the line.
int DoMovepanels();
// The corners, centre and reference points moved by the vector, the panel's
// geographic centre anew, and its file rewritten.
void UpdatePanelCornersAfterTranslation(float DX, float DY, float DZ, PANEL& p);
// The height change that keeps a move of DX, DY on the panel's roof plane; 0
// for a flat roof or a degenerate plane.
double GetDZ2TranslatePanel(const PANEL& panel, float DX, float DY);
// Asks how much to lift (default 0.5 m) and lifts the roof polygon along its
// normal, or the panel or group along the panel's upward normal. Answers the
// lift, 0 when cancelled or nothing moved.
double LiftPanels();
// Takes the panel, or every panel of its construction letter, out of the
// scene and the store; their files become ".DA-". Answers how many went.
int DeletePanels();
// A copy of panel source centred on the target, numbered above every panel
// and in a group of its own; its file is written. The file, or "" with the
// reason shown.
QString DuplicatePanel(int sourcePanelIndex, double targetX, double targetY, double targetZ);
// The dialog's duplicate button: copies to the free places beside the panel
// while the store has room, and adds the new files to the scene.
QStringList DuplicateBtnClick();
// Shows (true) or takes away the panels' labels.
void ShowpanelsNamesMnuClick(bool show);
// Every panel layer out of the scene and the store emptied; the files stay.
// Answers the count.
int DeleteAllPanels();
