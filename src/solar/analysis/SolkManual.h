// The planner's user manual: one HTML page of fixed text with up to seven
// screenshots embedded, written beside the 3D model screenshot.
#pragma once

#include <string>

#include "ManualSelections.h"

// The page for these pictures; a picture that is missing or too large shows
// its placeholder. False (and nothing written) when the file can't be written.
bool WriteSOLK_Manual(const std::string& output, const ManualPictures& pictures);

// Asks for the pictures not yet remembered, remembers them, writes
// "SOLK_Manual.html" in the 3D model picture's folder and returns its path;
// empty when a question is cancelled or the page can't be written.
std::string CreateSOLK_Manual();

// The menu item: the manual, opened in the desktop's viewer.
void CreateManualMnuClick();
