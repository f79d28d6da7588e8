// The point of a Shift+right click handed to the other programs: the window
// comes to the front, and a moment later the point lands in the inbox folder.
#pragma once

// Writes MONITOREDFOLDER + "Handover.tmp" with the clicked point's east and north.
void WriteHandoverFile();

// The click's route: raise the window, write the file 111 ms later.
void HandOverClickedPoint();
