// "Clean the model": a new OBJ without the faces that lie in the regions
// marked on the model ("_Todelete.txt"), beside the model.
#pragma once

#include <string>
#include <vector>

#include "CleanRegions.h"

struct CleanResult {
    std::string output;  // "" when nothing was written
    long long dropped = 0;
    long long faces = 0;
};

// The pass. regions: map frame, as read from the list; center: the model's centre as read.
CleanResult CleanObjFile(const std::string& input, const std::string& output, const std::vector<CLEAN>& regions,
                         const double center[3]);

// The menu item: the regions of the model's list, the name asked, the pass,
// the ".PRJ" beside the output and the closing message.
CleanResult CleanTheModelFromFile();

// The older form on a list of vertex numbers (1-based, rising, one a line)
// in the same file: a face with two or more of them goes. Reached by no menu.
CleanResult CleanTheModel();
