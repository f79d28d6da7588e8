// The group lines of DXF text files: a code right-aligned in three places,
// then its value, each on a line of its own.
#pragma once

#include <string>

// A coordinate in the shortest text that reads back to the same double; 0 for NaN or infinity.
std::string DxfNumber(double v);
// Appends one group (code line and value line) to out.
void DxfGroup(std::string& out, int code, const std::string& value);
