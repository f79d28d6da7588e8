// The headless part of opening a model: side files, the engine read and the
// frame set-up, in the order the viewer does them. The CLI opens models
// through this too, so both agree on every frame value.
#pragma once

#include <string>

struct OpenedModel {
    std::string path;
    int type = -1;          // engine read type
    bool isObj = false;
    int fileLoaded = 0;
    std::string prjPath;    // "" when the model has none
    int epsg = -1;
    std::string offsetPath; // the side file the Offset came from, "" when none
    std::string offsetProblem;  // why its line was not all taken, "" when it was
};

// The engine's read type for a model file by extension (any case), -1 when unknown.
int ModelTypeOfExtension(const std::string& path);

// The offset side file: "offset.txt" in the model's folder, else the model's
// ".zuz"; either in any case. "" when neither exists.
std::string FindOffsetFile(const std::string& modelPath);

// Reads the first line of an offset file, commas taken as blanks, into
// Offset, number by number; the first word that is not a finite number
// ("abc", "nan", "1e400") ends the reading, and that entry and the ones
// after it keep the value they had. `problem` then gets a message naming
// the file, its line and the word. False when the file cannot be read.
bool ReadOffsetFile(const std::string& path, double Offset[3], std::string* problem = nullptr);

// The model's ".prj" (any case), "" when none.
std::string FindPrjFile(const std::string& modelPath);

// The frame set-up after the engine has read the model; the order matters.
// The OBJ quarter turn, the bounds in the map frame, the model's centre
// (unless OriginalobjectCenter is set already: such a model counts as
// centred), the coordinate system from prjPath or else the first "*.prj" of
// the model's folder, the geographic centre and the state under it, and the
// move into the local frame.
void SetUpModelFrame(const std::string& modelPath, bool isObj, const std::string& prjPath);

// Reads the model into the engine and sets up the frames (frameState()):
// the Offset is only ever replaced by a side file, never reset. Returns
// false with fileLoaded 0 when the engine could not read the file.
bool OpenModelHeadless(const std::string& modelPath, OpenedModel& opened);
