// What opening a model leaves in the session: the model's files and the
// names derived from them, its folders, its kind, its comment and counts.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "geo/GisTypes.h"

// The kind flags: exactly one is set by the open.
struct ModelKind {
    bool IsOBJ = false;
    bool IsDXF = false;
    bool IsATM = false;
    bool Is3DS = false;
    bool IsTRUETYPE = false;
    bool IsSTL = false;
    bool IsDAE = false;
};

struct ModelSession {
    std::string INPUTFILENAME;
    std::string GlobalModelFileName;
    // The model file read last: the open one, or the last one added to it.
    std::string LastPathFileName;
    QStringList INPUTFILES;
    // Model files in the scene, shown by "List models imported".
    QStringList TSImportedFiles;
    QString Customer;
    std::string GlobalONCFileName;
    std::string TodeleteVerticesFile;
    std::string WhereIsTheOPK;
    bool FLIPPED = false;
    bool IsRemoteDrive = false;
    // The folders beside the model; its panel folders are the panel store's.
    std::string MEASUREMENTSFOLDER;
    std::string SCREENSHOTSFOLDER;
    std::string JPG;
    std::string MTL;
    std::string PRJ;
    std::string GRAY;
    std::string SEPIA;
    ModelKind kind;
    QString ModelComment;
    QString State;
    double readSeconds = 0;

    // Photographs of the model: the catalogues found and the counts of each kind.
    int KamaOblique = 0;
    int KamaOPK = 0;
    int KamaFacades = 0;
    int KamaOblixExtents = 0;
    std::string OPKfile;
    bool INDOOR = false;
    QString ShowObliques;
    QString RegularHelp_;
    QString RegularHelp;

    std::string ModuleType;
    std::string Solarpath;
    TGIS_Point ConvexHullCenterPoint;
    bool CENTERSPHEREVISIBLE = false;
    // The running number in the names of sphere markers ("S1", "S2", ...).
    int SphereNumber = 0;
    // The tactical grid beside the model ("" when none) and whether its names are Hebrew.
    std::string TacticalGridFile;
    bool HebrewGrid = false;

    // The texture cap of the open: the exponent handed to the engine and why it was lowered.
    int user_Max_Texture_Size = 0;
    int powerOf2_Max_Texture_Size = 11;
    int MemoryGB = 0;
    QString ResolutionRemark;
    QString ResolutionReason;
};

ModelSession& modelSession();
void resetModelSession();

// The model's folder, ending in "/".
std::string ModelFolder();
// The folders beside a model, found in any case or made: "Measurements/",
// "Screenshots/", and the panel store's "PANELS/" with its "SHADING/"; and
// the names of its side files (".ONC", "_Todelete.txt", "WhereIsTheOPK.txt"). The
// window's open and the commands that work on a model's files both set them
// here. False when the panel folders can't be made.
bool SetModelFolders(const std::string& modelPath);
