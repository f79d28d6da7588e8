// The menu items that attach a ".prj" to the model and show it.
#pragma once

#include <string>

// Asks for the ".prj" of a similar model (in the same coordinate system),
// proposing the first "*.prj" of the model's folder, and copies the file
// chosen beside the model under the model's name with extension ".PRJ".
// False on cancel or when the copy fails.
bool AddPRJ1Click(const std::string& modelPath);

// Copies the model's ".PRJ" to ORVO_T as the model's name with extension
// ".txt", gives that copy in textCopy, and opens it in the desktop's text
// viewer 222 ms later (through the event loop). Without a ".PRJ" it shows
// "No PRJ exists for this model", runs AddPRJ1Click and returns false.
bool ShowPRJ1Click(const std::string& modelPath, std::string& textCopy);
