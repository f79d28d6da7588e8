// The oblique photographs of a model: one photograph's camera (`OBLIQUE`),
// one catalogue folder (`OBLIXEXTENT`) and the stores a lookup fills. The
// counts `KamaOblique`, `KamaOPK`, `KamaOblixExtents`, `OPKfile` and `INDOOR`
// stay in the model session, which the status line and the dispatcher read.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <map>
#include <string>

#include "geo/GisTypes.h"

class GDALDataset;

// The catalogue stores camera positions this much higher than the truth, in
// X, Y and Z alike; targets carry no such offset.
constexpr int SHABESH = 123;

// Limits of the stores: folders of a model, candidates of one lookup,
// photographs ranked for one click.
constexpr int MAX_OBLIX_EXTENTS = 10;
constexpr int MAX_GOTO8 = 300;
constexpr int MAX_OOO = 500;

struct OBLIQUE {
    double q11 = 0, q12 = 0, q13 = 0, q21 = 0, q22 = 0, q23 = 0, q31 = 0, q32 = 0, q33 = 0;
    double Qxtarg = 0, Qytarg = 0;
    double Qxorg = 0, Qyorg = 0;
    float Qztarg = 0, Qzorg = 0;
    double PrincipalXOffset = 0, PrincipalYOffset = 0;
    double RadialK1 = 0, RadialK2 = 0, RadialK3 = 0;
    int RotationDeg = 0;
    int PseudoIndex = -9;
    int PseudoGlobalUid = -9;
    // Negative for a record from an OPK list: then |fpc| is the plan
    // distance from the camera to the clicked point.
    float fpc = 0;
    float QW_mm = 0;
    float QPicX0 = 0, QPicY0 = 0;
    float QScale = 0;
    float QPicX00 = 0, QPicY00 = 0;
    float FPX[4] = {0, 0, 0, 0}, FPY[4] = {0, 0, 0, 0}, FPZ[4] = {0, 0, 0, 0};
    int Azimuth = 0;
    int Ravia = 0;
    int Incl = 0;
    int Width = 0, Height = 0;
    int MMount = 0;
    int Month = 0, Year = 0, Day = 0;
    float Xmin = 0, Xmax = 0, Ymin = 0, Ymax = 0;
    double OX0 = 0, OX1 = 0, OY0 = 0, OY1 = 0;
    bool IsHidden = false;
    bool PrincipalXOffsetASREAD = false;
    QString Proj;
};

struct OBLIXEXTENT {
    int Nimages = 0;
    int N1 = 0, N2 = 0;
    float area = 0;
    TGIS_Extent ext;
    QString FileName;
    QString FirstDate;
};

struct ObliqueStore {
    std::array<OBLIXEXTENT, MAX_OBLIX_EXTENTS> OblixExtents{};
    std::array<OBLIQUE, MAX_GOTO8> GotO8{};
    std::array<OBLIQUE, MAX_OOO> OOO{};
    int relevants = 0;
    QStringList TSOPK;
    QString DIR_OPK;
    QString OBLIXOBLIXTXT;
    TGIS_Point3D ForOBLIpoint;
    // Marks drawn on the photograph on screen; a new click drops them.
    QStringList _Oblisimun;
    // The catalogue layers, open for the model's life, by shape file path.
    std::map<std::string, GDALDataset*> layers;
};

ObliqueStore& obliqueStore();
// Closes the catalogue layers and empties every store (a new model, or a test).
void resetObliqueStore();
