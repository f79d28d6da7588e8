// Placing and moving billboards with Shift+click: the text and icon modes
// of the tool buttons, the new billboard at the clicked point, and the move
// of a selected billboard or its group.
#pragma once

// Follow the checked state of "DoBillboard" (text) and "SimanTactiModeBtn"
// (icons): the next Shift+click places a billboard. Text mode ends after
// one; icon mode stays, so that a row of icons can be set.
void DoBillboardClick();
void SimanTactiModeBtnClick();
// Ends both modes and releases their buttons.
void ReleaseBillboardTools();

// A Shift+left click with BILLBOARDMODE at a mesh point (map frame): the
// text mode asks the billboard dialog first. True when a billboard stands.
bool PlaceBillboardAtClick(double mapX, double mapY, double mapZ);

// The Shift+click with MOVEBILLBOARD set. With hit, the selected billboard
// (1) or its whole group (2) moves to the map point X, Y, each onto the
// ground there; without, nothing moves. Either way the move ends and the
// selection tool is armed again.
void MoveBillboardsToClick(bool hit, double mapX, double mapY);
