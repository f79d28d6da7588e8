// Reading the panels of any COLLADA file that carries panel data blocks (a
// panels model, a model with panels, a single panel file) into the staging
// store panelsT; AddPanelsT then takes them over.
#pragma once

#include <QString>
#include <QStringList>

// Appends the file's panels to panelsT and returns how many were added; 0
// when the file can't be read. Blocks with <panel_info> are read as such;
// files that lost those tags are read node by node from the <technique>
// profiles "solar_panel_data" and "solar_panel_specs". power_rating_stc is
// taken as kilowatts, as the writers put it. The reference points PP are not
// read: panels restored here have none.
int GetPanelsFromDae(const QString& filename);

// GetPanelsFromDae for the open model: each panel read keeps its own file in
// the model's PANELS folder. A file there holding one panel is that panel's
// file, whatever its record says; the panels of any other file (a panels
// model, a model with panels, a file from elsewhere) get PANELSFOLDER plus
// the file name their record gives, or their name's "Panel-N_G.dae" when the
// record names none or the file itself. The file read is never written over.
int ReadPanelsOfModelFile(const QString& filename);
// The COLLADA files of the model's PANELS folder (".dae" in any case), in name order.
QStringList PanelFilesOfModel();
