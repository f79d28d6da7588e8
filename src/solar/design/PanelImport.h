// Taking the panels staged from a file (panelsT) into the live store.
#pragma once

// Moves the staged panels into panels, skipping unnamed ones, names already
// alive and whatever no longer fits; empties the staging store, writes the
// counts to the solar log and returns the count added.
int AddPanelsT();
