#include "ManualSelections.h"

#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"

namespace {

constexpr const char* SECTION = "UserSelections";

struct PictureRole {
    const char* key;
    const char* prompt;
    const char* name;
};

constexpr PictureRole ROLES[MANUAL_PICTURE_COUNT] = {
    {"ModelPath", "Open the 3D Model image file", "3D Model"},
    {"GraphPath", "Open the Graph image file", "Graph"},
    {"PanelsPath", "Open the Panels image file", "Panels"},
    {"PanelsToolsPath", "Open the Panels tools image file", "Panels tools"},
    {"IconsPath", "Open the Toolbar Icons image file", "Toolbar Icons"},
    {"MenuPath", "Open the Main Menu image file", "Menu"},
    {"ReferenceplanePath", "Open the Reference Plane image file", "Reference Plane"},
};

}  // namespace

const char* ManualPictureKey(int picture) { return ROLES[picture].key; }
const char* ManualPicturePrompt(int picture) { return ROLES[picture].prompt; }
const char* ManualPictureName(int picture) { return ROLES[picture].name; }

ManualPictures LoadSelections() {
    ManualPictures pictures;
    for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i)
        pictures[static_cast<std::size_t>(i)] = QString::fromStdString(ORVOINI().readString(SECTION, ROLES[i].key, ""));
    return pictures;
}

void SaveSelections(const ManualPictures& pictures) {
    OrvoIni& ini = ORVOINI();
    for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i)
        ini.writeString(SECTION, ROLES[i].key, pictures[static_cast<std::size_t>(i)].toStdString());
    if (!ini.path().empty() && !ini.save()) PrintRunLog("Could not write %s to %s\n", SECTION, ini.path().c_str());
}
