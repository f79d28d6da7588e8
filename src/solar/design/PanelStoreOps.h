// Operations on the live store as a whole: the soft delete, sorting and listing.
#pragma once

#include <QString>

// Sets a panel file aside: renamed to ".DA-" beside itself (found whatever
// its case), so that nothing reads it as a panel but nothing is lost.
void SoftDeleteFile(const QString& fileName);
// Renames the first panel of that name (case ignored) to ".DA-" on disk and
// takes its record out of the store. The scene's layer stays.
void DeletePanelByName(const QString& panelName);
// Orders the live panels by N, then G.
void SortPanels();
// Shows the names in a message box.
void ListPanels();
