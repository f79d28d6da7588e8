// Saving every panel of the scene in one panels model, and restoring them
// from one. The model is in the map frame and carries each panel's data
// block, so it reads back as the panels' own files do.
#pragma once

#include <QString>
#include <QStringList>

// "Panels_yyyymmdd_hhmmss.dae" in the model's folder (ending in "/"): the
// file written, or "" ("No panels to save" when there are none).
QString Save3Click(const QString& modelFolder);
// Asks for a panels model in the model's folder, takes every panel out of the
// scene and loads the model's panels instead. The file, or "" when cancelled.
QString Restore1Click(const QString& modelFolder);
// The same without the question.
bool RestorePanelsModel(const QString& file);

// The model's PANELS folder made to hold the panels of the store and no
// others: each panel's own file written anew, and every other panel file
// there set aside as ".DA-". For a restore that later work reads from the folder.
struct PanelFolderChanges {
    QStringList written;
    QStringList setAside;
};
PanelFolderChanges MatchPanelFolderToStore();
