// "Rectify" without a template: the OBJ scaled and shifted onto map
// coordinates from the first three pairs of an ONC file, without any turn.
// Streamed, so it serves models too large to hold whole.
#pragma once

#include <string>

// Asks "Continue with transformation?" after showing the two scales found;
// true when ConvertedOBJ was written. Every failure is told in a box; a
// failed or cancelled run leaves no output.
bool ConvertOBJ(const std::string& OriginalOBJ, const std::string& ConvertedOBJ, const std::string& ONC);
