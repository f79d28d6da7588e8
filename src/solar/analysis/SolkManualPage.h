// The text of the planner's manual page, with its pictures as base64 JPEG
// ("" for a picture the page shows a placeholder for).
#pragma once

#include <array>
#include <string>

#include "ManualSelections.h"

using ManualImages = std::array<std::string, MANUAL_PICTURE_COUNT>;

std::string SolkManualPage(const ManualImages& images);
