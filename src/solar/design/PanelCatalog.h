// The module catalogue "Panels.csv" of the installation's data folder: read
// once, kept as lines, and matched by name to fill a panel's catalogue fields.
#pragma once

#include <QString>
#include <QStringList>

#include "PanelStruct.h"

struct PanelCatalog {
    QString GlobalPanelsCSV;      // the catalogue file found under CTQ_Path
    QStringList g_panelSpecs;     // its lines, the header first
    int g_specCount = 0;
    bool PanelsInitialized = false;
    QString GlobalPanelJPGName;   // texture path of the model matched last
    QString PanelImageTexture;    // its picture, "PNEG.JPG" or "PDEF.JPG", as the form shows it
};

PanelCatalog& panelCatalog();
void resetPanelCatalog();

// "Panels.csv" in any case, directly in root first, then in its subfolders;
// "" when there is none.
QString FindPanelsCsv(const QString& root);

// Once per session: the module type from the settings, then the catalogue
// from CTQ_Path. A failure is told to the operator and answers false.
bool InitializePanels();

// Replaces the lines in memory by those of csvPath; false, with no lines,
// when the file can't be read.
bool LoadPanelSpecifications(const QString& csvPath);

// Fills panel from the first catalogue line whose name matches moduleType,
// with the texture of that model; no match leaves panel as it was.
void AddPanelSpecsFromCSV(PANEL& panel, const QString& moduleType);

// The module names of the catalogue in memory for the operator to choose
// from: sorted and without duplicates, both without regard to case, and only
// those of lines that can be matched.
QStringList CatalogModelNames();

// The index in names of the module moduleType stands for: its own entry, or
// failing that the entry of the line it matches loosely; -1 when none.
int CatalogModelIndex(const QStringList& names, const QString& moduleType);

// The installation's copy of a panel texture ("PNEG.JPG", "PDEF.JPG") under
// CTQ_Path, whatever its case; "" when missing.
QString FindInstalledPanelTexture(const QString& name);
