// The session's folders: where the user's files, temporary files and the
// installation's data live. Start-up fills them; tests point them at scratch folders.
#pragma once

#include <string>

struct SessionPaths {
    std::string USERFOLDER;  // the user's home, ending in "/"
    std::string ORVO_;       // the program's folder under USERFOLDER
    std::string ORVO_T;      // temporary files, ending in "/"
    std::string CTQ_Path;    // the installation's data folder, ending in "/"
};

SessionPaths& sessionPaths();
void resetSessionPaths();
