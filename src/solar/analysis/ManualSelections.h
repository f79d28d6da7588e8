// The seven screenshots of the planner's manual, remembered between runs in
// the settings' "UserSelections" section.
#pragma once

#include <QString>
#include <array>

enum ManualPicture {
    MANUAL_MODEL,
    MANUAL_GRAPH,
    MANUAL_PANELS,
    MANUAL_PANELS_TOOLS,
    MANUAL_ICONS,
    MANUAL_MENU,
    MANUAL_REFERENCE_PLANE,
    MANUAL_PICTURE_COUNT,
};

using ManualPictures = std::array<QString, MANUAL_PICTURE_COUNT>;

// The settings key and the file dialog's title of each picture, in the order they are asked.
const char* ManualPictureKey(int picture);
const char* ManualPicturePrompt(int picture);
// How a tab's missing picture is named: "Menu" gives "(Image will be embedded when Menu JPG is available)".
const char* ManualPictureName(int picture);

// An absent key reads empty.
ManualPictures LoadSelections();
void SaveSelections(const ManualPictures& pictures);
